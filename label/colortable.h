// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "label/oklab.h"

#include <algorithm>
#include <functional>
#include <vector>

/// Numbers that follow from a colour, interpolated between those of 33 × 33 × 33 colours, of which only the
/// needed ones are ever computed. Between the four corners of a tetrahedron, so that mixtures of corners are
/// mixtures that the palette has, and greys follow from greys alone. Count is a power of two: all numbers are
/// worked on together.
template <std::size_t Count> class ColorTable
{
public:
    struct Numbers
    {
        using Vector __attribute__((vector_size(Count * sizeof(int)))) = int;
        Vector all;
    };
    /// Writes numbers from 0 to 16384.
    using Source = std::function<void(const Oklab::Color &light, Numbers &numbers)>;

    explicit ColorTable(Source source)
        : m_source(std::move(source))
        , m_numbers(nodes)
        , m_known(nodes)
        , m_ready(nodes)
    {
        for (unsigned int byte = 0; byte < m_reds.size(); ++byte) {
            const unsigned int place = (byte * cells * fine + 127) / 255;
            const unsigned int cell = std::min(place / fine, cells - 1);
            const unsigned int offset = (place - cell * fine) << stepBits;
            m_reds[byte] = { cell * redStep, offset | redStep };
            m_greens[byte] = { cell * greenStep, offset | greenStep };
            m_blues[byte] = { cell * blueStep, offset | blueStep };
        }
        for (unsigned int i = 0; i <= cells; ++i)
            m_lights[i] = Oklab::lightOf(double(i) / cells);
    }

    void lookUp(QRgb color, Numbers &numbers)
    {
        const Place red = m_reds[(color >> 16) & 0xFF];
        const Place green = m_greens[(color >> 8) & 0xFF];
        const Place blue = m_blues[color & 0xFF];
        const unsigned int first = red.cell + green.cell + blue.cell;
        if (!m_ready[first]) [[unlikely]]
            prepare(first);
        // From the corner of the cell, first along the axis on which the colour is farthest.
        unsigned int steps[] = { red.step, green.step, blue.step };
        order(steps[0], steps[1]);
        order(steps[1], steps[2]);
        order(steps[0], steps[1]);
        const unsigned int second = first + (steps[0] & stepMask);
        const unsigned int third = second + (steps[1] & stepMask);
        const unsigned int last = first + redStep + greenStep + blueStep;
        const auto most = float(int(steps[0] >> stepBits));
        const auto middle = float(int(steps[1] >> stepBits));
        const auto least = float(int(steps[2] >> stepBits));
        // Whole numbers below 2^24, which floats hold exactly.
        const typename Reals::Vector sum = m_numbers[first].all * (float(fine) - most)
            + m_numbers[second].all * (most - middle) + m_numbers[third].all * (middle - least)
            + m_numbers[last].all * least;
        numbers.all = (__builtin_convertvector(sum, typename Numbers::Vector) + int(fine) / 2) >> fineBits;
    }

private:
    static constexpr unsigned int cells = 32;
    static constexpr unsigned int fineBits = 8;
    static constexpr unsigned int fine = 1U << fineBits;
    static constexpr unsigned int blueStep = 1;
    static constexpr unsigned int greenStep = cells + 1;
    static constexpr unsigned int redStep = greenStep * (cells + 1);
    static constexpr unsigned int nodes = redStep * (cells + 1);
    static constexpr unsigned int stepBits = 16;
    static constexpr unsigned int stepMask = (1U << stepBits) - 1;

    struct Reals
    {
        using Vector __attribute__((vector_size(Count * sizeof(float)))) = float;
        Vector all;
    };

    struct Place
    {
        unsigned int cell; ///< its part of the number of the cell's first node
        unsigned int step; ///< 0 to fine of the way to the next node, and the step to its number
    };

    static void order(unsigned int &larger, unsigned int &smaller)
    {
        const unsigned int most = std::max(larger, smaller);
        smaller = std::min(larger, smaller);
        larger = most;
    }

    void prepare(unsigned int cell)
    {
        for (const unsigned int red : { 0U, redStep }) {
            for (const unsigned int green : { 0U, greenStep }) {
                for (const unsigned int blue : { 0U, blueStep })
                    compute(cell + red + green + blue);
            }
        }
        m_ready[cell] = 1;
    }

    void compute(unsigned int node)
    {
        if (m_known[node])
            return;
        Numbers numbers {};
        m_source({ m_lights[node / redStep], m_lights[node / greenStep % (cells + 1)],
                     m_lights[node % (cells + 1)] },
            numbers);
        m_numbers[node].all = __builtin_convertvector(numbers.all, typename Reals::Vector);
        m_known[node] = 1;
    }

    Source m_source;
    std::array<Place, 256> m_reds;
    std::array<Place, 256> m_greens;
    std::array<Place, 256> m_blues;
    std::array<double, cells + 1> m_lights;
    std::vector<Reals> m_numbers;
    std::vector<uchar> m_known;
    std::vector<uchar> m_ready;
};
