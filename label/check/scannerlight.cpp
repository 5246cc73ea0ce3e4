// SPDX-License-Identifier: BSD-3-Clause
#include "label/check/scannerlight.h"

#include <cmath>

namespace {

constexpr double darkest = 0.5;

double linear(int channel)
{
    const double value = channel / 255.0;
    return value <= 0.04045 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
}

} // namespace

double ScannerLight::reflectanceOf(QRgb color, Light light)
{
    const double red = linear(qRed(color));
    return light == Light::Red
        ? red
        : 0.2126 * red + 0.7152 * linear(qGreen(color)) + 0.0722 * linear(qBlue(color));
}

bool ScannerLight::isDark(QRgb color, QRgb background, Light light)
{
    return reflectanceOf(color, light) < darkest * reflectanceOf(background, light);
}
