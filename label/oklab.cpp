// SPDX-License-Identifier: BSD-3-Clause
#include "label/oklab.h"

#include <algorithm>
#include <cmath>

namespace {

using Oklab::Color;
using Oklab::Matrix;

// Both matrices as published with the colour space.
constexpr Matrix conesOfLight { { { 0.4122214708, 0.5363325363, 0.0514459929 },
    { 0.2119034982, 0.6806995451, 0.1073969566 }, { 0.0883024619, 0.2817188376, 0.6299787005 } } };
constexpr Matrix labOfRoots { { { 0.2104542553, 0.7936177850, -0.0040720468 },
    { 1.9779984951, -2.4285922050, 0.4505937099 }, { 0.0259040371, 0.7827717662, -0.8086757660 } } };

/// The root below which the slope at black would grow without end.
constexpr double leastRoot = 0.1;

Color product(const Matrix &matrix, const Color &color)
{
    Color result;
    for (std::size_t row = 0; row < result.size(); ++row)
        result[row] = matrix[row][0] * color[0] + matrix[row][1] * color[1] + matrix[row][2] * color[2];
    return result;
}

/// Halley's iteration, which triples the digits each time, from a line that is at most 6 % off.
double cubeRootOfFraction(double value)
{
    double root = 0.45 + 0.56 * value;
    for (int i = 0; i < 4; ++i) {
        const double cube = root * root * root;
        root *= (cube + 2.0 * value) / (2.0 * cube + value);
    }
    return root;
}

double cubeRoot(double value)
{
    if (value == 0.0)
        return 0.0;
    int exponent = 0;
    double fraction = std::frexp(std::abs(value), &exponent); // 0.5 to 1
    while (exponent % 3 != 0) {
        fraction /= 2.0;
        ++exponent;
    }
    return std::copysign(std::ldexp(cubeRootOfFraction(fraction), exponent / 3), value);
}

/// Newton's iteration for a fifth root of a number from 0 to 1, from above.
double fifthRoot(double value)
{
    double root = 1.0;
    for (int i = 0; i < 60; ++i)
        root = (4.0 * root + value / (root * root * root * root)) / 5.0;
    return root;
}

std::array<double, 256> lights()
{
    std::array<double, 256> table;
    for (std::size_t byte = 0; byte < table.size(); ++byte)
        table[byte] = Oklab::lightOf(double(byte) / 255.0);
    return table;
}

} // namespace

namespace Oklab {

double lightOf(double value)
{
    if (value <= 0.04045)
        return value / 12.92;
    const double base = (value + 0.055) / 1.055;
    const double root = fifthRoot(base);
    return base * base * root * root; // the power 2.4
}

Color lightOf(QRgb color)
{
    static const std::array<double, 256> table = lights();
    return { table[std::size_t(qRed(color))], table[std::size_t(qGreen(color))],
        table[std::size_t(qBlue(color))] };
}

Color of(const Color &light)
{
    Color roots = product(conesOfLight, light);
    std::ranges::transform(roots, roots.begin(), cubeRoot);
    return product(labOfRoots, roots);
}

Matrix slopeAt(const Color &light)
{
    Color slopes = product(conesOfLight, light);
    std::ranges::transform(slopes, slopes.begin(), [](double cone) {
        const double root = std::max(std::abs(cubeRoot(cone)), leastRoot);
        return 1.0 / (3.0 * root * root);
    });
    Matrix matrix {};
    for (std::size_t row = 0; row < 3; ++row) {
        for (std::size_t column = 0; column < 3; ++column) {
            for (std::size_t cone = 0; cone < 3; ++cone)
                matrix[row][column] += labOfRoots[row][cone] * slopes[cone] * conesOfLight[cone][column];
        }
    }
    return matrix;
}

double squaredDistance(const Color &left, const Color &right)
{
    double sum = 0.0;
    for (std::size_t i = 0; i < left.size(); ++i)
        sum += (left[i] - right[i]) * (left[i] - right[i]);
    return sum;
}

} // namespace Oklab
