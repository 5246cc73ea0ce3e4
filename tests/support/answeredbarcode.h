// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "platform/zint/barcodeencoder.h"
#include "platform/zint/geometryof.h"

#include <QImage>
#include <QPainter>

#include <algorithm>
#include <cmath>

namespace Barcodes {

/// Whether the bars lie within a symbol of at most the modules that libzint can write, with whitespace and
/// border.
[[nodiscard]] inline bool isSound(const Zint::SymbolGeometry &geometry)
{
    constexpr double widest = 1152 + 2 * 100 + 2 * 100 + 40;
    constexpr double highest = 200 * 2000 + 2 * 100;
    const QSizeF size = geometry.size;
    if (!(size.width() > 0.0 && size.width() <= widest && size.height() > 0.0 && size.height() <= highest))
        return false;
    const QRectF frame(-0.01, -0.01, size.width() + 0.02, size.height() + 0.02);
    return std::ranges::all_of(geometry.bars, [&frame](const Zint::SymbolGeometry::Bars &bars) {
        return std::ranges::all_of(
            bars.rects, [&frame](const QRectF &bar) { return !bar.isEmpty() && frame.contains(bar); });
    });
}

inline void paint(const Zint::QZint &barcode)
{
    QImage image(40, 30, QImage::Format_RGB32);
    image.fill(Qt::white);
    QPainter painter(&image);
    barcode.render(painter, QRectF(0, 0, 40, 30), Zint::QZint::CenterBarCode);
}

/// Whether the barcode can be painted, and has a sound symbol or one of libzint's errors, and not both. A
/// symbol may be without bars: a zero in Flattermarken is a gap.
[[nodiscard]] inline bool isAnswered(const Zint::QZint &barcode)
{
    paint(barcode);
    const int error = barcode.error_int();
    const auto geometry = Zint::geometryOf(barcode);
    if (error >= 5)
        return error <= 14 && geometry->isEmpty() && barcode.encodedText().isEmpty();
    return (error == 0 || error >= 2) && isSound(*geometry);
}

} // namespace Barcodes
