// SPDX-License-Identifier: BSD-3-Clause
#include "items/shapes/octagonitem.h"

OctagonItem::OctagonItem()
{
    initialize(MobraTypes::OctagonShape);
}

QString OctagonItem::toDescriptionString() const
{
    return QStringLiteral("octagon %1").arg(itemId());
}

Item *OctagonItem::createItemCopy()
{
    return copyOutline<OctagonItem>();
}

void OctagonItem::setPolygonShape()
{
    static const QPolygonF points { { 27.0, 0.0 }, { 65.0, 0.0 }, { 92.0, 27.0 }, { 92.0, 65.0 },
        { 65.0, 92.0 }, { 27.0, 92.0 }, { 0.0, 65.0 }, { 0.0, 27.0 } };
    setReference(points, QSizeF(92.0, 92.0), 0.13, 0.13);
}

void OctagonItem::calculateOvershoot()
{
    // The octagon is inset evenly on all sides.
}

void OctagonItem::adjustForPen()
{
    insetOutlines(halfPenWidth(), [this](const QPolygonF &resized, double half, int column) -> Outlines {
        const double cut = getOvershoot(2, column) * half;
        return { grown(resized, -2.0 * half, -2.0 * half), grown(resized, cut, cut) };
    });
}
