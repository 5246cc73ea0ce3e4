// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QRectF>
#include <QSizeF>

class QTransform;

namespace Zint {

struct SymbolGeometry;

/// Where the edges of modules are painted.
enum class Edges {
    AsPlaced, ///< where the place has them
    OnDots, ///< between dots, in a place that is a little smaller
};

/// Where a symbol lies on the dots of a device.
struct DotPlacement
{
    QRectF place; ///< in the units before the transform
    QSizeF dots; ///< how many dots a module is wide and high
    bool sharp = false; ///< whether a module is a whole number of dots wide, and high if it is square
};

/// The greatest place in the middle of the given one in which modules begin and end with dots. Modules are
/// those of the width; those of the height count only if they are square, since bars may have any height.
/// Square modules that are stretched by less than a dot are square again. A place with less than a dot for a
/// module, or one that the transform turns by other than right angles, stays as it is.
[[nodiscard]] DotPlacement placeOnDots(
    const SymbolGeometry &geometry, bool squareModules, const QRectF &place, const QTransform &toDots);

} // namespace Zint
