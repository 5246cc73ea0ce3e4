// SPDX-License-Identifier: BSD-3-Clause
#include "items/shapes/hexagonitem.h"

#include <cmath>

HexagonItem::HexagonItem()
{
    initialize(MobraTypes::HexagonShape);
}

QString HexagonItem::toDescriptionString() const
{
    return QStringLiteral("hexagon %1").arg(itemId());
}

Item *HexagonItem::createItemCopy()
{
    return copyOutline<HexagonItem>();
}

void HexagonItem::setPolygonShape()
{
    static const QPolygonF points { { 25.0, 0.0 }, { 75.0, 0.0 }, { 100.0, equilateralHeight / 2.0 },
        { 75.0, equilateralHeight }, { 25.0, equilateralHeight }, { 0.0, equilateralHeight / 2.0 } };
    setReference(points, QSizeF(100.0, equilateralHeight), 0.123, 0.123);
}

void HexagonItem::calculateOvershoot()
{
    setOvershoot(0, Mitered, std::hypot(getItemWidth() / getItemHeight() / 2.0, 1.0));
}

void HexagonItem::adjustForPen()
{
    insetOutlines(itemPen().widthF(), [this](const QPolygonF &resized, double width, int column) -> Outlines {
        QPolygonF drawn = grown(resized, -getOvershoot(0, Mitered) * width, -width);
        for (const int side : { 2, 5 })
            drawn[side] = grown(resized[side], -getOvershoot(1, Mitered) * width, -width);
        const double cut = getOvershoot(2, column) * width;
        return { drawn, grown(resized, cut, cut) };
    });
}
