// SPDX-License-Identifier: BSD-3-Clause
#include "tests/label/seencolour.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace {

using namespace SeenColour;

constexpr double degree = std::numbers::pi / 180.0;

/// 0 to 360, and 0 for greys.
double hueOf(double a, double b)
{
    const double hue = a == 0.0 && b == 0.0 ? 0.0 : std::atan2(b, a) / degree;
    return hue < 0.0 ? hue + 360.0 : hue;
}

double seventhPowerRatio(double chroma)
{
    const double power = std::pow(chroma, 7);
    return std::sqrt(power / (power + std::pow(25.0, 7)));
}

double hueStep(double from, double to)
{
    const double step = to - from;
    return step > 180.0 ? step - 360.0 : step < -180.0 ? step + 360.0 : step;
}

double meanHue(double left, double right)
{
    const double sum = left + right;
    if (std::abs(left - right) <= 180.0)
        return sum / 2.0;
    return sum < 360.0 ? (sum + 360.0) / 2.0 : (sum - 360.0) / 2.0;
}

double hueWeight(double hue)
{
    return 1.0 - 0.17 * std::cos((hue - 30.0) * degree) + 0.24 * std::cos(2.0 * hue * degree)
        + 0.32 * std::cos((3.0 * hue + 6.0) * degree) - 0.20 * std::cos((4.0 * hue - 63.0) * degree);
}

std::vector<double> gaussian(double deviation)
{
    const int reach = int(std::ceil(3.0 * deviation));
    std::vector<double> weights;
    double sum = 0.0;
    for (int i = -reach; i <= reach; ++i) {
        weights.push_back(std::exp(-i * i / (2.0 * deviation * deviation)));
        sum += weights.back();
    }
    for (double &weight : weights)
        weight /= sum;
    return weights;
}

/// Blurs lines of a picture; what lies beyond an end is as at the end.
std::vector<Light> blurredLines(const std::vector<Light> &lights, int length, int lines, int step,
    int lineStep, const std::vector<double> &weights)
{
    std::vector<Light> result(lights.size());
    const int reach = int(weights.size()) / 2;
    for (int line = 0; line < lines; ++line) {
        for (int i = 0; i < length; ++i) {
            const int target = i * step + line * lineStep;
            Light sum {};
            for (int offset = -reach; offset <= reach; ++offset) {
                const int place = std::clamp(i + offset, 0, length - 1) * step + line * lineStep;
                const int weight = offset + reach;
                for (std::size_t channel = 0; channel < 3; ++channel)
                    sum[channel] += weights[std::size_t(weight)] * lights[std::size_t(place)][channel];
            }
            result[std::size_t(target)] = sum;
        }
    }
    return result;
}

} // namespace

namespace SeenColour {

double difference(const Lab &left, const Lab &right)
{
    const double meanChroma = (std::hypot(left[1], left[2]) + std::hypot(right[1], right[2])) / 2.0;
    const double stretch = 1.0 + 0.5 * (1.0 - seventhPowerRatio(meanChroma));
    const double leftA = left[1] * stretch;
    const double rightA = right[1] * stretch;
    const double leftChroma = std::hypot(leftA, left[2]);
    const double rightChroma = std::hypot(rightA, right[2]);
    const double leftHue = hueOf(leftA, left[2]);
    const double rightHue = hueOf(rightA, right[2]);
    const bool hasHues = leftChroma * rightChroma != 0.0;
    const double hueDifference = hasHues
        ? 2.0 * std::sqrt(leftChroma * rightChroma) * std::sin(hueStep(leftHue, rightHue) / 2.0 * degree)
        : 0.0;
    const double hue = hasHues ? meanHue(leftHue, rightHue) : leftHue + rightHue;
    const double chroma = (leftChroma + rightChroma) / 2.0;
    const double square = std::pow((left[0] + right[0]) / 2.0 - 50.0, 2);
    const double lightness = (right[0] - left[0]) / (1.0 + 0.015 * square / std::sqrt(20.0 + square));
    const double chromas = (rightChroma - leftChroma) / (1.0 + 0.045 * chroma);
    const double hues = hueDifference / (1.0 + 0.015 * chroma * hueWeight(hue));
    const double turn = 30.0 * std::exp(-std::pow((hue - 275.0) / 25.0, 2));
    const double rotation = -std::sin(2.0 * turn * degree) * 2.0 * seventhPowerRatio(chroma);
    return std::sqrt(lightness * lightness + chromas * chromas + hues * hues + rotation * chromas * hues);
}

Light lightOf(QRgb color)
{
    const auto light = [](int byte) {
        const double value = byte / 255.0;
        return value <= 0.04045 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
    };
    return { light(qRed(color)), light(qGreen(color)), light(qBlue(color)) };
}

Lab labOf(const Light &light)
{
    // The matrix of IEC 61966-2-1; white is the sum of its columns.
    const double x = (0.4124 * light[0] + 0.3576 * light[1] + 0.1805 * light[2]) / 0.9505;
    const double y = 0.2126 * light[0] + 0.7152 * light[1] + 0.0722 * light[2];
    const double z = (0.0193 * light[0] + 0.1192 * light[1] + 0.9505 * light[2]) / 1.0890;
    const auto f
        = [](double t) { return t > 216.0 / 24389.0 ? std::cbrt(t) : (24389.0 / 27.0 * t + 16.0) / 116.0; };
    return { 116.0 * f(y) - 16.0, 500.0 * (f(x) - f(y)), 200.0 * (f(y) - f(z)) };
}

double minuteOfArc(double dpi, double distanceInMillimetres)
{
    return distanceInMillimetres * std::tan(degree / 60.0) * dpi / 25.4;
}

std::vector<Lab> blurred(const QImage &image, double deviation)
{
    std::vector<Light> lights;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x)
            lights.push_back(lightOf(image.pixel(x, y)));
    }
    const std::vector<double> weights = gaussian(deviation);
    lights = blurredLines(lights, image.width(), image.height(), 1, image.width(), weights);
    lights = blurredLines(lights, image.height(), image.width(), image.width(), 1, weights);
    std::vector<Lab> labs;
    labs.reserve(lights.size());
    for (const Light &light : lights)
        labs.push_back(labOf(light));
    return labs;
}

double meanDifference(
    const std::vector<Lab> &left, const std::vector<Lab> &right, const std::vector<std::size_t> &pixels)
{
    double sum = 0.0;
    for (const std::size_t pixel : pixels)
        sum += difference(left[pixel], right[pixel]);
    return sum / double(pixels.size());
}

} // namespace SeenColour
