// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "items/core/vxexport.h"

#include <QImage>
#include <QSizeF>

#include <functional>

class QBrush;
class QPainter;
class QPen;

/// A shape rendered for printing: its dithered black-and-white picture, transparent outside the shape. size
/// is in print pixels, rounded half away from zero. draw draws the shape once with the pen and brush that the
/// painter holds; it is called twice, the second time to find the shape's area. A null image when the size is
/// out of bounds.
[[nodiscard]] VX_EXPORT QImage ditheredPrintImage(const QSizeF &size, const QPen &pen, const QBrush &brush,
    Qt::ImageConversionFlags dither, const std::function<void(QPainter &)> &draw);
