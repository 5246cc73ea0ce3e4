// SPDX-License-Identifier: BSD-3-Clause
#include "platform/zint/dotplacement.h"

#include "platform/zint/pixelregion.h"
#include "platform/zint/symbolgeometry.h"

#include <QLineF>
#include <QTransform>

#include <algorithm>
#include <cmath>

namespace Zint {

namespace {

/// What a module may lack of a whole number of dots: a size in dots is the outcome of several divisions.
constexpr double tolerance = 1e-6;

/// A side in dots.
struct Span
{
    double start;
    double length;
};

/// The whole dots that there are for each module; 0 if there is less than one.
double wholeDots(double length, double modules)
{
    return std::floor(length / modules + tolerance);
}

/// The span of modules of so many dots, in the middle of the given one.
Span onDots(const Span &span, double modules, double dots)
{
    if (dots < 1.0)
        return span;
    const double length = dots * modules;
    // Not at halves, which the bands of a page would round to different dots.
    return { std::ceil(span.start + (span.length - length) / 2.0 - 0.5 - tolerance), length };
}

bool isWhole(double dots)
{
    return dots >= 1.0 - tolerance && std::abs(dots - std::round(dots)) < tolerance;
}

double length(const QTransform &toDots, const QPointF &from, const QPointF &to)
{
    return QLineF(toDots.map(from), toDots.map(to)).length();
}

} // namespace

DotPlacement placeOnDots(
    const SymbolGeometry &geometry, bool squareModules, const QRectF &place, const QTransform &toDots)
{
    const QSizeF modules = geometry.size;
    if (geometry.isEmpty() || !keepsRectangles(toDots)) {
        const double width = length(toDots, place.topLeft(), place.topRight());
        const double height = length(toDots, place.topLeft(), place.bottomLeft());
        return { place, { width / modules.width(), height / modules.height() }, false };
    }
    const QRectF area = toDots.mapRect(place);
    const Span horizontal { area.left(), area.width() };
    const Span vertical { area.top(), area.height() };
    const bool lies = qFuzzyIsNull(toDots.m11()); // turned by a right angle
    Span along = lies ? vertical : horizontal;
    Span across = lies ? horizontal : vertical;
    double wide = wholeDots(along.length, modules.width());
    if (squareModules) {
        double high = wholeDots(across.length, modules.height());
        // Of 2.9 x 3.1 dots, a module had better stay square than become 2 x 3.
        if (std::abs(along.length / modules.width() - across.length / modules.height()) < 1.0)
            wide = high = std::min(wide, high);
        across = onDots(across, modules.height(), high);
    }
    along = onDots(along, modules.width(), wide);

    const QRectF found = lies ? QRectF(across.start, along.start, across.length, along.length)
                              : QRectF(along.start, across.start, along.length, across.length);
    const QSizeF dots(along.length / modules.width(), across.length / modules.height());
    const bool sharp = isWhole(dots.width()) && (!squareModules || isWhole(dots.height()));
    return { toDots.inverted().mapRect(found), dots, sharp };
}

} // namespace Zint
