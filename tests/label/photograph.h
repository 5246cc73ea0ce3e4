// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QImage>

/// A picture of 50 mm × 37.5 mm with what photographs are hard to print for: a sky that fades, clouds, grass,
/// a face in light and shade, a red ball with a highlight and its shadow, a dark edge, and grain.
[[nodiscard]] QImage photograph(double dpi);
