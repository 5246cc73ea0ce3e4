// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "label/vxlabelexport.h"

#include <QtGlobal>

/// Thresholds for dithering in a pattern, by void and cluster: Robert Ulichney, "The void-and-cluster method
/// for dither array generation", SPIE 1913, 1993. However many of the lowest are taken, they lie apart from
/// each other, also across the joints when the square is repeated.
namespace BlueNoise {

inline constexpr int Side = 64;
inline constexpr int Count = Side * Side;

/// Side thresholds, of which the square has each from 0 to Count - 1 once. It repeats in y.
[[nodiscard]] VX_LABEL_EXPORT const quint16 *row(int y);

} // namespace BlueNoise
