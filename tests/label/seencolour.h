// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QImage>

#include <array>
#include <vector>

/// Colours as an eye sees them from some way off, for comparing prints with their originals. By formulas that
/// the library does not use.
namespace SeenColour {

/// L*, a* and b* of CIE 1976, under D65.
using Lab = std::array<double, 3>;

/// The difference of two colours by CIEDE2000 (ISO/CIE 11664-6:2014).
[[nodiscard]] double difference(const Lab &left, const Lab &right);

/// Red, green and blue light from 0 to 1.
using Light = std::array<double, 3>;

[[nodiscard]] Light lightOf(QRgb color);
[[nodiscard]] Lab labOf(const Light &light);

/// The standard deviation in dots of one minute of arc, which is about what an eye can resolve.
[[nodiscard]] double minuteOfArc(double dpi, double distanceInMillimetres);

/// A picture whose light has run together by a Gaussian, as L*, a* and b* row by row.
[[nodiscard]] std::vector<Lab> blurred(const QImage &image, double deviation);

/// The mean of the differences of two pictures of one size at some of their pixels.
[[nodiscard]] double meanDifference(
    const std::vector<Lab> &left, const std::vector<Lab> &right, const std::vector<std::size_t> &pixels);

} // namespace SeenColour
