// SPDX-License-Identifier: BSD-3-Clause
#include "items/shapes/righttriangleitem.h"

#include <cmath>

RightTriangleItem::RightTriangleItem()
{
    initialize(MobraTypes::RightTriangleShape);
}

QString RightTriangleItem::toDescriptionString() const
{
    return QStringLiteral("right triangle %1").arg(itemId());
}

Item *RightTriangleItem::createItemCopy()
{
    return copyOutline<RightTriangleItem>();
}

void RightTriangleItem::setPolygonShape()
{
    static const QPolygonF points { { 0.0, 0.0 }, { 100.0, 100.0 }, { 0.0, 100.0 } };
    setReference(points, QSizeF(100.0, 100.0), 1.5, 1.5);
}

void RightTriangleItem::calculateOvershoot()
{
    // How far a mitre reaches beyond the two acute corners: the cotangents of half their angles.
    const double width = getItemWidth();
    const double height = getItemHeight();
    const double hypotenuse = std::hypot(width, height);
    setOvershoot(0, Mitered, (width + hypotenuse) / height);
    setOvershoot(1, Mitered, (height + hypotenuse) / width);
}

void RightTriangleItem::adjustForPen()
{
    insetOutlines(halfPenWidth(), [this](const QPolygonF &resized, double half, int column) -> Outlines {
        const QPointF &top = resized[0];
        const QPointF &right = resized[1];
        const QPointF &corner = resized[2];
        const double cut = getOvershoot(2, column) * half;
        return { { top + QPointF(half, getOvershoot(1, column) * half),
                     right + QPointF(-getOvershoot(0, column) * half, -half), corner + QPointF(half, -half) },
            { top, top + QPointF(cut, 0.0), right - QPointF(0.0, cut), right, corner } };
    });
}
