// SPDX-License-Identifier: BSD-3-Clause
#include "label/inkpalette.h"

#include <algorithm>

using Oklab::Color;

namespace {

/// The squared distance in light below which a colour is met: far below a step of 8 bits.
constexpr double metDistance = 1e-10;
/// What an iteration must gain to be followed by another one.
constexpr double leastGain = 1e-8;
constexpr int mostIterations = 12;
constexpr double shortestStep = 1.0 / 16.0;

Mixture between(const Mixture &from, const Mixture &to, double step)
{
    Mixture result;
    for (std::size_t i = 0; i < result.size(); ++i)
        result[i] = from[i] + step * (to[i] - from[i]);
    return result;
}

} // namespace

InkPalette::InkPalette(const QList<QColor> &inks, const QColor &paper)
{
    m_colors.push_back(paper.rgb());
    for (const QColor &ink : inks)
        m_colors.push_back(ink.rgb());
    for (const QRgb color : m_colors) {
        m_mayBe[placeOf(color)] = true;
        m_lights.push_back(Oklab::lightOf(color));
        m_labs.push_back(Oklab::of(m_lights.back()));
    }
}

std::size_t InkPalette::search(QRgb color) const
{
    return std::size_t(std::ranges::find(m_colors, color) - m_colors.begin());
}

std::size_t InkPalette::nearest(const Color &light) const
{
    const Color lab = Oklab::of(light);
    const auto isNearer = [&lab](const Color &left, const Color &right) {
        return Oklab::squaredDistance(left, lab) < Oklab::squaredDistance(right, lab);
    };
    return std::size_t(std::ranges::min_element(m_labs, isNearer) - m_labs.begin());
}

Color InkPalette::lightOf(const Mixture &mixture) const
{
    Color light {};
    for (std::size_t i = 0; i < m_lights.size(); ++i) {
        for (std::size_t channel = 0; channel < light.size(); ++channel)
            light[channel] += mixture[i] * m_lights[i][channel];
    }
    return light;
}

Mixture InkPalette::mixtureFor(const Color &light) const
{
    Mixture mixture = nearestInLight(light);
    if (Oklab::squaredDistance(lightOf(mixture), light) < metDistance)
        return mixture;
    // Mixtures are straight in light and crooked in Oklab: by steps, each of which takes it as straight.
    const Color lab = Oklab::of(light);
    double least = distance(mixture, lab);
    for (int i = 0; i < mostIterations; ++i) {
        const Mixture target = stepTowards(lab, lightOf(mixture));
        double step = 1.0;
        while (step > shortestStep && distance(between(mixture, target, step), lab) >= least)
            step /= 2.0;
        const Mixture better = between(mixture, target, step);
        const double gain = least - distance(better, lab);
        if (gain <= 0.0)
            break;
        mixture = better;
        least -= gain;
        if (gain < leastGain)
            break;
    }
    return mixture;
}

Mixture InkPalette::nearestInLight(const Color &light) const
{
    std::vector<Color> points = m_lights;
    for (Color &point : points) {
        for (std::size_t i = 0; i < point.size(); ++i)
            point[i] -= light[i];
    }
    return mixtureNearestToOrigin(points);
}

/// The best mixture if Oklab went on everywhere as it does at this light.
Mixture InkPalette::stepTowards(const Color &lab, const Color &from) const
{
    const Oklab::Matrix slope = Oklab::slopeAt(from);
    const Color here = Oklab::of(from);
    std::vector<Color> points(m_lights.size());
    for (std::size_t i = 0; i < points.size(); ++i) {
        for (std::size_t row = 0; row < slope.size(); ++row) {
            points[i][row] = here[row] - lab[row];
            for (std::size_t channel = 0; channel < from.size(); ++channel)
                points[i][row] += slope[row][channel] * (m_lights[i][channel] - from[channel]);
        }
    }
    return mixtureNearestToOrigin(points);
}

double InkPalette::distance(const Mixture &mixture, const Color &lab) const
{
    return Oklab::squaredDistance(Oklab::of(lightOf(mixture)), lab);
}
