// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "label/vxlabelexport.h"

#include <QRgb>

#include <array>

/// Colours as light and as seen. Everything is computed with sums, products and quotients only, which every
/// machine rounds alike: the same picture has the same dots everywhere.
namespace Oklab {

/// Three numbers: red, green and blue light from 0 to 1, or L, a and b.
using Color = std::array<double, 3>;
using Matrix = std::array<Color, 3>;

/// The light of an sRGB value from 0 to 1, by IEC 61966-2-1.
[[nodiscard]] VX_LABEL_EXPORT double lightOf(double value);
[[nodiscard]] VX_LABEL_EXPORT Color lightOf(QRgb color);

/// Oklab, in which distances are about those that people see: Björn Ottosson, "A perceptual color space for
/// image processing", 2020. Light may be outside 0 to 1, where the cube root goes on as an odd function.
[[nodiscard]] VX_LABEL_EXPORT Color of(const Color &light);

/// How L, a and b change with light. Near black, where the change has no bound, that of a slightly lighter
/// colour.
[[nodiscard]] Matrix slopeAt(const Color &light);

[[nodiscard]] VX_LABEL_EXPORT double squaredDistance(const Color &left, const Color &right);

} // namespace Oklab
