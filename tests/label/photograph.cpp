// SPDX-License-Identifier: BSD-3-Clause
#include "tests/label/photograph.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace {

constexpr double pictureWidth = 50.0;
constexpr double pictureHeight = 37.5;

/// sRGB from 0 to 1.
using Colour = std::array<double, 3>;

Colour mixed(const Colour &from, const Colour &to, double share)
{
    const double part = std::clamp(share, 0.0, 1.0);
    Colour result;
    for (std::size_t i = 0; i < result.size(); ++i)
        result[i] = from[i] + part * (to[i] - from[i]);
    return result;
}

double smooth(double from, double to, double value)
{
    const double part = std::clamp((value - from) / (to - from), 0.0, 1.0);
    return part * part * (3.0 - 2.0 * part);
}

/// A number from 0 to 1 for each place of a grid.
double scatter(int x, int y)
{
    quint32 hash = quint32(x) * 374761393U + quint32(y) * 668265263U;
    hash = (hash ^ (hash >> 13)) * 1274126177U;
    return double((hash ^ (hash >> 16)) & 0xFFFFU) / 65535.0;
}

/// The same without steps.
double noise(double x, double y)
{
    const int column = int(std::floor(x));
    const int row = int(std::floor(y));
    const double right = smooth(0.0, 1.0, x - column);
    const double down = smooth(0.0, 1.0, y - row);
    const double top = std::lerp(scatter(column, row), scatter(column + 1, row), right);
    const double bottom = std::lerp(scatter(column, row + 1), scatter(column + 1, row + 1), right);
    return std::lerp(top, bottom, down);
}

Colour sky(double x, double y)
{
    const Colour blue = mixed({ 0.25, 0.48, 0.80 }, { 0.80, 0.88, 0.94 }, y / 20.0);
    const double cloud = 0.6 * noise(x / 6.0, y / 3.0) + 0.4 * noise(x / 2.0, y);
    return mixed(blue, { 0.98, 0.97, 0.95 }, smooth(0.5, 0.85, cloud));
}

Colour grass(double x, double y)
{
    const double blades = 0.5 * noise(x * 5.0, y * 1.5) + 0.5 * noise(x * 11.0 + 40.0, y * 4.0);
    const Colour green = mixed({ 0.13, 0.23, 0.07 }, { 0.52, 0.62, 0.24 }, blades);
    return mixed({ 0.62, 0.66, 0.42 }, green, smooth(19.5, 27.0, y));
}

/// What a ball lit from the upper left reflects, by the place on it from -1 to 1; from 0 to 1.
double lightOnBall(double x, double y)
{
    const double z = std::sqrt(std::max(0.0, 1.0 - x * x - y * y));
    return std::clamp(-0.45 * x - 0.55 * y + 0.70 * z, 0.0, 1.0);
}

Colour withBall(const Colour &behind, double x, double y)
{
    const Colour shaded = mixed(behind, { 0.05, 0.06, 0.04 },
        0.75 * (1.0 - smooth(0.5, 1.15, std::hypot((x - 40.0) / 7.5, (y - 34.0) / 2.2))));
    const double ballX = (x - 38.0) / 6.0;
    const double ballY = (y - 28.5) / 6.0;
    const double light = lightOnBall(ballX, ballY);
    const Colour red = mixed({ 0.22, 0.02, 0.03 }, { 0.90, 0.12, 0.14 }, light * 1.1);
    const Colour lit = mixed(red, { 1.0, 0.93, 0.90 }, smooth(0.955, 1.0, light));
    return mixed(lit, shaded, smooth(0.985, 1.015, std::hypot(ballX, ballY)));
}

Colour withFace(const Colour &behind, double x, double y)
{
    const double faceX = (x - 15.0) / 7.0;
    const double faceY = (y - 20.0) / 9.5;
    const double hair = std::hypot((x - 15.0) / 8.6, (y - 17.6) / 10.2);
    const Colour strands = mixed({ 0.10, 0.06, 0.04 }, { 0.38, 0.24, 0.14 }, noise(x * 7.0, y * 0.8));
    Colour result = mixed(strands, behind, smooth(0.98, 1.02, hair));
    const Colour skin = mixed(
        { 0.42, 0.24, 0.17 }, { 0.97, 0.80, 0.68 }, 0.12 + 0.95 * lightOnBall(0.9 * faceX, 0.8 * faceY));
    const double cheek = std::min(std::hypot(faceX + 0.5, faceY - 0.3), std::hypot(faceX - 0.5, faceY - 0.3));
    const Colour warm = mixed(skin, { 0.86, 0.45, 0.40 }, 0.35 * (1.0 - smooth(0.05, 0.35, cheek)));
    result = mixed(warm, result, smooth(0.98, 1.02, std::hypot(faceX, faceY)));
    const double eye
        = std::min(std::hypot(x - 12.0, (y - 18.5) * 1.8), std::hypot(x - 18.0, (y - 18.5) * 1.8));
    result = mixed({ 0.12, 0.08, 0.07 }, result, smooth(0.75, 1.05, eye));
    const double mouth = std::hypot((x - 15.0) / 2.6, (y - 24.6 - 0.06 * (x - 15.0) * (x - 15.0)) / 0.7);
    return mixed({ 0.68, 0.26, 0.26 }, result, smooth(0.8, 1.1, mouth));
}

Colour colourAt(double x, double y)
{
    const Colour ground = mixed(sky(x, y), grass(x, y), smooth(19.3, 19.7, y + 0.4 * noise(x * 3.0, 0.0)));
    const Colour scene = withFace(withBall(ground, x, y), x, y);
    return mixed(scene, { 0.02, 0.02, 0.03 }, 0.85 * smooth(40.0, 51.0, x + 0.25 * y - 0.004 * y * y));
}

} // namespace

QImage photograph(double dpi)
{
    const double side = 25.4 / dpi;
    QImage image(int(pictureWidth / side), int(pictureHeight / side), QImage::Format_RGB32);
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            const Colour colour = colourAt((x + 0.5) * side, (y + 0.5) * side);
            const double grain = 0.03 * (scatter(x + 9000, y) - 0.5);
            const auto byte = [grain](double value) {
                return int(std::lround(255.0 * std::clamp(value + grain, 0.0, 1.0)));
            };
            image.setPixel(x, y, qRgb(byte(colour[0]), byte(colour[1]), byte(colour[2])));
        }
    }
    return image;
}
