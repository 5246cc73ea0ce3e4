// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QRectF>

class QColor;
class QPainter;

namespace Zint {

struct SymbolGeometry;

/// The height in dots up to which bars are filled as one region.
inline constexpr int MaxRegionHeight = 2'000;

/// How a symbol fills a rectangle.
enum class Fit {
    Stretched, ///< in both directions
    TopLeft, ///< in its own proportions, at the top left
    Centred, ///< in its own proportions, in the middle
};

/// Where the symbol lies in the rectangle.
[[nodiscard]] QRectF placeOf(const SymbolGeometry &geometry, const QRectF &rect, Fit fit);

/// Draws the symbol into its place, bars as rectangles: as one path they would take far longer. Changes the
/// painter's pen, brush and transform.
void paintSymbol(
    QPainter &painter, const SymbolGeometry &geometry, const QRectF &place, const QColor &foreground);

} // namespace Zint
