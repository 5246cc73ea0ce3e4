// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "items/core/vxexport.h"

#include <QImage>

/// The only way in which images for printing and previews are made.
namespace SafeImage {

/// Whether an image may have this size: at least a pixel, and neither a side nor the area beyond the limits.
[[nodiscard]] VX_EXPORT bool fits(QSize size);

/// An uninitialised image of the given sides in pixels, each rounded half away from zero. A null image when a
/// side is not finite or rounds to less than 1, when a side or the area exceeds the limits, or when memory
/// runs out.
[[nodiscard]] VX_EXPORT QImage create(double width, double height, QImage::Format format);

/// The same for whole numbers.
[[nodiscard]] VX_EXPORT QImage create(QSize size, QImage::Format format);

} // namespace SafeImage
