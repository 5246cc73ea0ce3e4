// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "items/core/itemproperties.h"
#include "items/style/fillableitem.h"

#include <QGraphicsRectItem>
#include <QObject>

#include <memory>

/// The plain rectangle. Its outline lies inside the logical size, so it needs no pen margin, and both scale
/// factors stay 1: a new size lays the rectangle out again.
class VX_EXPORT RectangleItem : public QObject, public QGraphicsRectItem, public FillableItem
{
    Q_OBJECT
    Q_INTERFACES(QGraphicsItem)
    VX_GEOMETRY_PROPERTIES
    VX_FILLED_SHAPE_PROPERTIES

public:
    RectangleItem();
    ~RectangleItem() override;

    // QGraphicsItem
    enum { Type = MobraTypes::RectangleShape };
    int type() const override { return Type; }
    QRectF boundingRect() const override { return sizeRect(); }
    QPainterPath shape() const override;
    QPainterPath opaqueArea() const override;
    void paint(QPainter *painter, const QStyleOptionGraphicsItem *option, QWidget *widget = nullptr) override;

    // Item
    [[nodiscard]] Item *createItemCopy() override;
    QString toDescriptionString() const override;
    void updateItemSize(const QSizeF &size) override;
    void loadItemFromData(QDataStream &stream, unsigned int version) override;
    void loadItemFromJSON(const QVariantMap &map, unsigned int version) override;

    // ContouredItem, FillableItem
    void setItemPenColor(const QColor &color) override;
    void setItemFillColor(const QColor &color) override;
    /// A transparent outline never prints.
    bool resetItemPenColorsNegative(const QColor &printColor) override;
    void preparePrintImage() override;

    using Item::copyPrivatePropeties;
    /// Sets the rectangle's own record of its two colours, not the colours themselves.
    void copyPrivatePropeties(const QColor &fill, const QColor &pen);

protected:
    void announceGeometryChange() override { prepareGeometryChange(); }
    void penChanged() override { updateRect(); }
    void layOut() override { updateRect(); }

private:
    void updateRect();

    struct ColorCopies
    {
        QColor fill;
        QColor pen;
    };

    /// For hosts that reduce the colours and want to know them again in a copy. Null while both equal the
    /// colours themselves.
    std::unique_ptr<ColorCopies> m_colorCopies;
};
