// SPDX-License-Identifier: BSD-3-Clause
#include "items/shapes/pentagonitem.h"

#include <cmath>

namespace {

constexpr double cos72 = 0.3090169944;
constexpr double sin72 = 0.9510565163;
constexpr double cos36 = 0.8090169944;
constexpr double sin36 = 0.5877852523;

} // namespace

PentagonItem::PentagonItem()
{
    initialize(MobraTypes::PentagonShape);
}

QString PentagonItem::toDescriptionString() const
{
    return QStringLiteral("pentagon %1").arg(itemId());
}

Item *PentagonItem::createItemCopy()
{
    return copyOutline<PentagonItem>();
}

void PentagonItem::setPolygonShape()
{
    static const QPolygonF points { { 0.0, 34.54915028 }, { 47.55282581, 0.0 }, { 95.10565163, 34.54915028 },
        { 76.94208843, 90.45084972 }, { 18.1635632, 90.45084972 } };
    setReference(points, QSizeF(95.10565163, 90.45084972), 0.25, 0.25);
}

void PentagonItem::calculateOvershoot()
{
    const double width = getItemWidth();
    const double height = getItemHeight();
    const double roofHeight = (1.0 - cos72) * height / (cos36 + 1.0);
    const double wallHeight = height - roofHeight;
    const double wallLean = (sin72 - sin36) * width / 2.0 / sin72;
    const double roofSide = std::hypot(width / 2.0, roofHeight);
    const double wallSide = std::hypot(wallLean, wallHeight);
    // The decimal factors were found by trial.
    setOvershoot(0, Mitered, 0.9 * wallHeight / wallSide);
    setOvershoot(1, Mitered, 1.15 * 2.0 * roofSide / width);
    m_sideInset = 1.3 * wallSide / wallHeight;
    m_sideDrop = 0.9 * (width / 2.0) / roofSide;
}

PolygonItem::Outlines PentagonItem::insetForMiter(const QPolygonF &resized, double half) const
{
    const double foot = getOvershoot(0, Mitered) * half;
    const QPointF side(m_sideInset * half, m_sideDrop * half);
    return { { resized[0] + side, resized[1] + QPointF(0.0, getOvershoot(1, Mitered) * half),
                 resized[2] + QPointF(-side.x(), side.y()), resized[3] + QPointF(-foot, -half),
                 resized[4] + QPointF(foot, -half) },
        resized };
}

void PentagonItem::adjustForPen()
{
    // The width rounded to a whole number decides, also whether there is an outline at all.
    insetOutlines(itemPen().width(), [this](const QPolygonF &resized, double width, int column) -> Outlines {
        if (column == Mitered)
            return insetForMiter(resized, halfPenWidth());
        const double cut = getOvershoot(2, column) * width;
        return { grown(resized, -getOvershoot(0, column) * width, -getOvershoot(1, column) * width),
            grown(resized, cut, cut) };
    });
}
