// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QRgb>

/// What scanners see of a colour.
namespace ScannerLight {

enum class Light {
    Red, ///< of lasers and of most lamps: red, orange and yellow ink look like white paper
    White ///< of cameras
};

/// The share of the light that the colour sends back, from 0 to 1: its red channel, or its luminance, both
/// without the gamma of sRGB (IEC 61966-2-1, ITU-R BT.709).
[[nodiscard]] double reflectanceOf(QRgb color, Light light);

/// Whether a scanner takes the colour for that of bars on such a background: it sends back less than half of
/// what the background does.
[[nodiscard]] bool isDark(QRgb color, QRgb background, Light light);

} // namespace ScannerLight
