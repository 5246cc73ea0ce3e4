// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "items/core/vxexport.h"

#include <QColor>
#include <QGraphicsEffect>

#include <cstddef>

class IRichTextItem;
class QGraphicsScene;
class RichTextItem;

/// Draws a frame around a rich text that does not fit in its box, and tells when the frame comes or goes.
class VX_EXPORT RichTextBorderEffect : public QGraphicsEffect
{
    Q_OBJECT

public:
    /// A parent that is a rich text becomes the item.
    explicit RichTextBorderEffect(QObject *parent);
    ~RichTextBorderEffect() override;

    /// The item, which is not owned, must outlive the effect's drawing. Anything else is ignored.
    void setRichTextItem(QObject *object);
    void setRichTextItem(RichTextItem *item);
    void setRichTextItem(IRichTextItem *item);
    void setRichTextItem(std::nullptr_t) { }
    void setColor(const QColor &color);
    /// Tells listeners when the state changes, and the first time in the process in any case.
    void setBorderShown(bool shown);

    /// Gives every rich text of the scene an effect, or enables the one it has.
    static void installEffectOnItems(QGraphicsScene *scene);
    /// Of all items, whatever their effects are.
    static void enableEffectOnItems(QGraphicsScene *scene, bool enable);

Q_SIGNALS:
    void borderShownChanged(bool shown);

protected:
    void draw(QPainter *painter) override;

private:
    static bool s_firstNotification;

    QColor m_color { 238, 210, 2 };
    IRichTextItem *m_item = nullptr;
    bool m_borderShown = false;
};
