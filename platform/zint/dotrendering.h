// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "platform/zint/barcodeencoder.h"

#include <QRectF>
#include <QSizeF>

class QTransform;

namespace Zint {

/// How the modules of a symbol come to lie on dots.
struct ModuleDots
{
    QSizeF modules; ///< how many the symbol is wide and high, with whitespace and border; empty for no symbol
    QSizeF dots; ///< how many dots each is wide and high
    bool squareModules = false; ///< of bars, only the width counts
    bool sharp = false; ///< whether all modules have the same whole number of dots
    QRectF place; ///< of the symbol in the units of the rectangle, with whitespace and border
};

/// Paints the barcode as QZint::render() does, but with modules of whole dots where there is at least a dot
/// for each: the symbol is a little smaller, in the middle of its place. Letters have hard edges. A symbol
/// with colours of its own is left out: dots have none.
void renderOnDots(const QZint &barcode, QPainter &painter, const QRectF &rect, QZint::AspectRatioMode mode);

/// How renderOnDots() would place the modules on a device with that transform.
[[nodiscard]] ModuleDots moduleDots(
    const QZint &barcode, const QRectF &rect, QZint::AspectRatioMode mode, const QTransform &toDots);

} // namespace Zint
