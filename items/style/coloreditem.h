// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "items/core/item.h"
#include "items/interfaces/icoloritem.h"

#include <QColor>

/// An item with a pen colour.
class VX_EXPORT ColoredItem : public Item, public IColorItem
{
public:
    ColoredItem();
    ~ColoredItem() override;

    QColor getItemPenColor() const override { return m_penColor; }
    void setItemPenColor(const QColor &color) override { m_penColor = color; }
    void setItemPenColorString(const QString &color) override;
    /// "#rrggbb"; the alpha is dropped.
    QString getItemPenColorString() const;

    // Item
    void copyItemProperties(Item *target, bool copySize) override;
    void saveItemToData(QDataStream &stream) override;
    void loadItemFromData(QDataStream &stream, unsigned int version) override;

private:
    QColor m_penColor;
};
