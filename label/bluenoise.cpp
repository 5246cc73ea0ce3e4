// SPDX-License-Identifier: BSD-3-Clause
#include "label/bluenoise.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <vector>

namespace {

using Square = std::array<quint16, BlueNoise::Count>;

/// The dots within the reach of each other, and how much they crowd each other: a Gaussian of 1.5 dots in
/// whole numbers, so that sums are exact.
constexpr int reach = 7;
constexpr double variance = 1.5 * 1.5;

class Pattern
{
public:
    Pattern()
    {
        for (int distance = 0; distance <= reach; ++distance)
            m_weights[std::size_t(distance)] = std::exp(-distance * distance / (2.0 * variance));
    }

    [[nodiscard]] bool isSet(int place) const { return m_dots[std::size_t(place)] != 0; }

    void set(int centre, bool dot)
    {
        m_dots[std::size_t(centre)] = dot;
        const int centreX = centre % BlueNoise::Side;
        const int centreY = centre / BlueNoise::Side;
        for (int y = -reach; y <= reach; ++y) {
            for (int x = -reach; x <= reach; ++x) {
                const int crowd = int(std::lround(1e6 * weight(x) * weight(y)));
                const int place = wrapped(centreY + y) * BlueNoise::Side + wrapped(centreX + x);
                m_crowds[std::size_t(place)] += dot ? crowd : -crowd;
            }
        }
    }

    /// The dot that is crowded most.
    [[nodiscard]] int tightestCluster() const
    {
        int best = -1;
        for (int place = 0; place < BlueNoise::Count; ++place) {
            if (isSet(place) && (best < 0 || crowd(place) > crowd(best)))
                best = place;
        }
        return best;
    }

    /// The place without a dot that is crowded least.
    [[nodiscard]] int largestVoid() const
    {
        int best = -1;
        for (int place = 0; place < BlueNoise::Count; ++place) {
            if (!isSet(place) && (best < 0 || crowd(place) < crowd(best)))
                best = place;
        }
        return best;
    }

private:
    [[nodiscard]] static int wrapped(int coordinate)
    {
        return (coordinate + BlueNoise::Side) % BlueNoise::Side;
    }
    [[nodiscard]] double weight(int distance) const { return m_weights[std::size_t(std::abs(distance))]; }
    [[nodiscard]] int crowd(int place) const { return m_crowds[std::size_t(place)]; }

    std::array<double, reach + 1> m_weights;
    std::array<uchar, BlueNoise::Count> m_dots {};
    std::array<int, BlueNoise::Count> m_crowds {};
};

/// A tenth of all places, scattered, then moved from clusters into voids until that changes nothing.
Pattern startingPattern(int dots)
{
    Pattern pattern;
    quint32 state = 1;
    for (int set = 0; set < dots;) {
        state = state * 1664525U + 1013904223U; // any scatter does
        const int place = int(state >> 20);
        if (pattern.isSet(place))
            continue;
        pattern.set(place, true);
        ++set;
    }
    while (true) {
        const int from = pattern.tightestCluster();
        pattern.set(from, false);
        const int to = pattern.largestVoid();
        pattern.set(to, true);
        if (from == to)
            return pattern;
    }
}

Square thresholds()
{
    constexpr int startingDots = BlueNoise::Count / 10;
    const Pattern start = startingPattern(startingDots);
    Square square {};
    Pattern pattern = start;
    for (int rank = startingDots - 1; rank >= 0; --rank) {
        const int place = pattern.tightestCluster();
        pattern.set(place, false);
        square[std::size_t(place)] = quint16(rank);
    }
    pattern = start;
    for (int rank = startingDots; rank < BlueNoise::Count; ++rank) {
        const int place = pattern.largestVoid();
        pattern.set(place, true);
        square[std::size_t(place)] = quint16(rank);
    }
    return square;
}

} // namespace

const quint16 *BlueNoise::row(int y)
{
    static const Square square = thresholds();
    return &square[std::size_t(y % Side) * Side];
}
