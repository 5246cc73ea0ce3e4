// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "items/core/vxexport.h"

#include <QImage>
#include <QSizeF>

#include <functional>

class QBrush;
class QPainter;
class QPen;

/// A shape rendered for printing: its dithered black-and-white picture, transparent outside the shape's area.
/// size is in print pixels, rounded half away from zero. draw draws the shape with the pen and brush that the
/// painter holds; drawArea draws its area with a solid brush and an outline of one pixel, which it may set to
/// none. A null image when the size is out of bounds.
VX_EXPORT QImage ditheredPrintImage(const QSizeF &size, const QPen &pen, const QBrush &brush,
    Qt::ImageConversionFlags dither, const std::function<void(QPainter &)> &draw,
    const std::function<void(QPainter &)> &drawArea);
