// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QColor>

/// The colours of tests, written out, and the same as opaque pixels.
namespace Colours {

inline const QColor red(255, 0, 0);
inline const QColor blue(0, 0, 255);
inline const QColor yellow(255, 255, 0);
inline const QColor black(0, 0, 0);
inline const QColor white(255, 255, 255);
inline const QColor nearWhite(255, 255, 254);
inline const QColor transparent(0, 0, 0, 0);
inline const QColor translucentRed(255, 0, 0, 128);

inline constexpr QRgb redPixel = 0xFFFF0000;
inline constexpr QRgb bluePixel = 0xFF0000FF;
inline constexpr QRgb yellowPixel = 0xFFFFFF00;
inline constexpr QRgb blackPixel = 0xFF000000;
inline constexpr QRgb whitePixel = 0xFFFFFFFF;
inline constexpr QRgb clearPixel = 0x00000000;

} // namespace Colours
