// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "items/style/contoureditem.h"
#include "tests/support/bareshape.h"

#include <QStringList>

/// Writes down which of the virtual operations run.
class ContouredShape : public BareShape<ContouredItem>
{
public:
    QStringList calls;

    void setItemPenColor(const QColor &color) override
    {
        calls << QStringLiteral("colour ") + color.name();
        ContouredItem::setItemPenColor(color);
    }
    void setItemPenWidth(unsigned short width) override
    {
        calls << QStringLiteral("width %1").arg(width);
        ContouredItem::setItemPenWidth(width);
    }
    void setItemPenStyle(Qt::PenStyle style) override
    {
        calls << QStringLiteral("style %1").arg(static_cast<int>(style));
        ContouredItem::setItemPenStyle(style);
    }
    void setItemPenCapStyle(Qt::PenCapStyle style) override
    {
        calls << QStringLiteral("cap %1").arg(static_cast<int>(style));
        ContouredItem::setItemPenCapStyle(style);
    }
    void setItemPenJoinStyle(Qt::PenJoinStyle style) override
    {
        calls << QStringLiteral("join %1").arg(static_cast<int>(style));
        ContouredItem::setItemPenJoinStyle(style);
    }
    void updateItemPen() override
    {
        calls << QStringLiteral("update");
        ContouredItem::updateItemPen();
    }
    Item *createItemCopy() override
    {
        auto *copy = new ContouredShape;
        copyItemProperties(copy, true);
        return copy;
    }
};
