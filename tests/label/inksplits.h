// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "label/inksplit.h"

#include <QString>
#include <QStringList>

#include <cmath>
#include <random>

/// Pictures for being split into inks, and what has become of them.
namespace InkSplits {

using Planes = std::vector<QImage>;

inline constexpr QRgb black = 0xFF000000;
inline constexpr QRgb white = 0xFFFFFFFF;
inline constexpr QRgb red = 0xFFFF0000;

inline const Dither allDithers[] = { Dither::Diffusion, Dither::Ordered, Dither::Threshold };

inline QImage filled(QSize size, QRgb color)
{
    QImage image(size, QImage::Format_RGB32);
    image.fill(color);
    return image;
}

inline QRgb grey(int value)
{
    return qRgb(value, value, value);
}

inline QImage noise(QSize size, unsigned int seed)
{
    std::mt19937 random(seed);
    QImage image(size, QImage::Format_RGB32);
    for (int y = 0; y < size.height(); ++y) {
        for (int x = 0; x < size.width(); ++x)
            image.setPixel(x, y, quint32(random()) | 0xFF000000U);
    }
    return image;
}

/// The dots of a plane: "#" prints.
inline QStringList rowsOf(const QImage &plane)
{
    QStringList rows;
    for (int y = 0; y < plane.height(); ++y) {
        QString row;
        for (int x = 0; x < plane.width(); ++x)
            row += plane.pixelIndex(x, y) == 1 ? u'#' : u'.';
        rows.append(row);
    }
    return rows;
}

inline int dotsIn(const QImage &plane, const QRect &area)
{
    int dots = 0;
    for (int y = area.top(); y <= area.bottom(); ++y) {
        for (int x = area.left(); x <= area.right(); ++x)
            dots += plane.pixelIndex(x, y);
    }
    return dots;
}

/// The share of an area that prints.
inline double coverage(const QImage &plane, const QRect &area)
{
    return double(dotsIn(plane, area)) / (area.width() * area.height());
}

/// How many planes have the dot.
inline int inksAt(const Planes &planes, int x, int y)
{
    int inks = 0;
    for (const QImage &plane : planes)
        inks += plane.pixelIndex(x, y);
    return inks;
}

/// The light that an 8-bit value stands for, by IEC 61966-2-1.
inline double lightOf(int value)
{
    const double fraction = value / 255.0;
    return fraction <= 0.04045 ? fraction / 12.92 : std::pow((fraction + 0.055) / 1.055, 2.4);
}

/// And the nearest value for a light.
inline int valueOf(double light)
{
    const double fraction = light <= 0.0031308 ? light * 12.92 : 1.055 * std::pow(light, 1.0 / 2.4) - 0.055;
    return int(std::lround(fraction * 255.0));
}

} // namespace InkSplits
