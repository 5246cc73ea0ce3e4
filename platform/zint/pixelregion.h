// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QRectF>
#include <QRegion>

#include <span>

class QTransform;

namespace Zint {

/// Whether rectangles stay rectangles with upright sides: no rotation but by right angles, and only finite
/// numbers.
[[nodiscard]] bool keepsRectangles(const QTransform &toDevice);

/// The dots of a device whose centres lie within the bars, which must not overlap. The transform keeps
/// rectangles. Bars that meet leave no dot between them and have none in common, whatever the scale.
[[nodiscard]] QRegion pixelRegion(std::span<const QRectF> bars, const QTransform &toDevice);

} // namespace Zint
