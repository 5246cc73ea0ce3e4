// SPDX-License-Identifier: BSD-3-Clause
#include "items/shapes/diamonditem.h"

#include <cmath>

DiamondItem::DiamondItem()
{
    initialize(MobraTypes::DiamondShape);
}

QString DiamondItem::toDescriptionString() const
{
    return QStringLiteral("diamond %1").arg(itemId());
}

Item *DiamondItem::createItemCopy()
{
    return copyOutline<DiamondItem>();
}

void DiamondItem::setPolygonShape()
{
    static const QPolygonF points { { 50.0, 0.0 }, { 100.0, 50.0 }, { 50.0, 100.0 }, { 0.0, 50.0 } };
    setReference(points, QSizeF(100.0, 100.0), 0.4, 0.4);
}

void DiamondItem::calculateOvershoot()
{
    const double diagonal = std::hypot(getItemWidth(), getItemHeight());
    setOvershoot(0, Mitered, diagonal / getItemHeight());
    setOvershoot(1, Mitered, diagonal / getItemWidth());
}

void DiamondItem::adjustForPen()
{
    insetOutlines(halfPenWidth(), [this](const QPolygonF &resized, double half, int column) -> Outlines {
        const QPointF aside(getOvershoot(0, column) * half, 0.0);
        const QPointF down(0.0, getOvershoot(1, column) * half);
        const double cut = getOvershoot(2, column) * half;
        return { { resized[0] + down, resized[1] - aside, resized[2] - down, resized[3] + aside },
            grown(resized, cut, cut) };
    });
}
