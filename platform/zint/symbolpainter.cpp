// SPDX-License-Identifier: BSD-3-Clause
#include "platform/zint/symbolpainter.h"

#include "platform/zint/pixelregion.h"
#include "platform/zint/symbolgeometry.h"

#include <QColor>
#include <QPaintEngine>
#include <QPainter>
#include <QPen>

#include <algorithm>
#include <array>
#include <numbers>
#include <span>

namespace Zint {

namespace {

QColor colourOf(int colour, const QColor &foreground)
{
    static constexpr std::array<Qt::GlobalColor, 8> colours { Qt::cyan, Qt::blue, Qt::magenta, Qt::red,
        Qt::yellow, Qt::green, Qt::black, Qt::white };
    const auto index = std::size_t(colour) - 1;
    return index < colours.size() ? QColor(colours[index]) : foreground;
}

/// Fills dots. Small rectangles take Qt far longer one by one than as one region, tall ones do not; and a
/// region takes memory for every row of dots.
void fillRegion(QPainter &painter, const QRegion &dots, const QColor &colour)
{
    if (dots.boundingRect().height() > MaxRegionHeight) {
        painter.drawRects(dots.begin(), dots.rectCount());
    } else {
        painter.setClipRegion(dots, Qt::IntersectClip);
        painter.fillRect(dots.boundingRect(), colour);
    }
}

/// Fills the dots of the bars, in the units of the device.
void fillDots(QPainter &painter, std::span<const QRectF> bars, const QColor &colour)
{
    const QRegion dots = pixelRegion(bars, painter.deviceTransform());
    painter.save();
    painter.resetTransform();
    painter.setWorldTransform(painter.deviceTransform().inverted()); // of screens of several dots to a pixel
    fillRegion(painter, dots, colour);
    painter.restore();
}

void drawBars(QPainter &painter, const SymbolGeometry &geometry, const QColor &foreground)
{
    const bool hasDots
        = painter.paintEngine()->type() == QPaintEngine::Raster && keepsRectangles(painter.deviceTransform());
    painter.setPen(Qt::NoPen);
    for (const SymbolGeometry::Bars &bars : geometry.bars) {
        const QColor colour = colourOf(bars.colour, foreground);
        painter.setBrush(colour);
        if (hasDots)
            fillDots(painter, bars.rects, colour);
        else
            painter.drawRects(bars.rects.data(), int(bars.rects.size()));
    }
}

void drawHexagon(QPainter &painter, const SymbolGeometry::Hexagon &hexagon)
{
    const double side = hexagon.width / 2.0;
    const double corner = hexagon.width / std::numbers::sqrt3;
    const std::array<QPointF, 6> corners { QPointF(0, -corner), QPointF(side, -corner / 2.0),
        QPointF(side, corner / 2.0), QPointF(0, corner), QPointF(-side, corner / 2.0),
        QPointF(-side, -corner / 2.0) };
    QPolygonF polygon;
    for (const QPointF &point : corners)
        polygon.append(hexagon.centre + point);
    painter.drawConvexPolygon(polygon);
}

void drawCircle(QPainter &painter, const SymbolGeometry::Circle &circle, const QColor &foreground)
{
    const double radius = circle.diameter / 2.0;
    if (circle.lineWidth > 0.0) {
        painter.setPen(QPen(foreground, circle.lineWidth));
        painter.setBrush(Qt::NoBrush);
    } else {
        painter.setPen(Qt::NoPen);
        painter.setBrush(foreground);
    }
    painter.drawEllipse(circle.centre, radius, radius);
}

} // namespace

QRectF placeOf(const SymbolGeometry &geometry, const QRectF &rect, Fit fit)
{
    if (fit == Fit::Stretched)
        return rect;
    QRectF place(rect.topLeft(), geometry.size.scaled(rect.size(), Qt::KeepAspectRatio));
    if (fit == Fit::Centred)
        place.moveCenter(rect.center());
    return place;
}

void paintSymbol(
    QPainter &painter, const SymbolGeometry &geometry, const QRectF &place, const QColor &foreground)
{
    if (geometry.isEmpty())
        return;
    painter.translate(place.topLeft());
    painter.scale(place.width() / geometry.size.width(), place.height() / geometry.size.height());
    drawBars(painter, geometry, foreground);
    painter.setPen(Qt::NoPen);
    painter.setBrush(foreground);
    for (const SymbolGeometry::Hexagon &hexagon : geometry.hexagons)
        drawHexagon(painter, hexagon);
    for (const SymbolGeometry::Circle &circle : geometry.circles)
        drawCircle(painter, circle, foreground);
}

} // namespace Zint
