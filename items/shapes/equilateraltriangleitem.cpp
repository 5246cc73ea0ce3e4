// SPDX-License-Identifier: BSD-3-Clause
#include "items/shapes/equilateraltriangleitem.h"

#include <cmath>

EquilateralTriangleItem::EquilateralTriangleItem()
{
    initialize(MobraTypes::EquilateralTriangleShape);
}

QString EquilateralTriangleItem::toDescriptionString() const
{
    return QStringLiteral("equilateral triangle %1").arg(itemId());
}

Item *EquilateralTriangleItem::createItemCopy()
{
    return copyOutline<EquilateralTriangleItem>();
}

void EquilateralTriangleItem::setPolygonShape()
{
    static const QPolygonF points { { 50.0, 0.0 }, { 0.0, equilateralHeight }, { 100.0, equilateralHeight } };
    setReference(points, QSizeF(100.0, equilateralHeight), 0.7, 0.65);
}

void EquilateralTriangleItem::calculateOvershoot()
{
    const double slope = 2.0 * getItemHeight() / getItemWidth();
    const double baseAngle = std::atan(slope);
    setOvershoot(0, Mitered, 1.0 / std::tan(baseAngle / 2.0));
    setOvershoot(1, Mitered, 1.0 / std::cos(baseAngle));
    // A bevel cuts the corners off; how much room is left was found by trial.
    setOvershoot(0, Beveled, 1.05 * std::sin(baseAngle));
    setOvershoot(1, Beveled, 1.0 / slope);
}

void EquilateralTriangleItem::adjustForPen()
{
    insetOutlines(halfPenWidth(), [this](const QPolygonF &resized, double half, int column) -> Outlines {
        const QPointF &apex = resized[0];
        const QPointF &left = resized[1];
        const QPointF &right = resized[2];
        const double aside = getOvershoot(0, column) * half;
        const double cut = getOvershoot(2, column) * half;
        return { { apex + QPointF(0.0, getOvershoot(1, column) * half), left + QPointF(aside, -half),
                     right + QPointF(-aside, -half) },
            { apex + QPointF(cut, 0.0), apex - QPointF(0.0, 2.0 * cut), apex - QPointF(cut, 0.0), left,
                right } };
    });
}
