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
            const int offset = int(place - cell * fine);
            m_reds[byte] = { cell * redStep, offset };
            m_greens[byte] = { cell * greenStep, offset };
            m_blues[byte] = { cell * blueStep, offset };
        }
        for (unsigned int i = 0; i <= fine; ++i)
            m_weights[i].all = float(i) - typename Reals::Vector {};
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
        // From the corner of the cell, first along the axis on which the colour is farthest. Its order says
        // which, without a branch that noise would make the processor guess wrong every other time.
        const unsigned int order = (red.offset >= green.offset ? 1U : 0U)
            | (green.offset >= blue.offset ? 2U : 0U) | (red.offset >= blue.offset ? 4U : 0U);
        const unsigned int second = first + firstSteps[order];
        const unsigned int third = first + firstSteps[order] + secondSteps[order];
        const unsigned int last = first + redStep + greenStep + blueStep;
        const int most = std::max(std::max(red.offset, green.offset), blue.offset);
        const int least = std::min(std::min(red.offset, green.offset), blue.offset);
        const int middle = red.offset + green.offset + blue.offset - most - least;
        // Whole numbers below 2^24, which floats hold exactly.
        const typename Reals::Vector sum = m_numbers[first].all * weight(int(fine) - most)
            + m_numbers[second].all * weight(most - middle) + m_numbers[third].all * weight(middle - least)
            + m_numbers[last].all * weight(least);
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
    /// By the order of the offsets, as lookUp() numbers it: the axes of the first and the second step. Two of
    /// the numbers are of no order.
    static constexpr unsigned int firstSteps[]
        = { blueStep, blueStep, greenStep, 0, 0, redStep, greenStep, redStep };
    static constexpr unsigned int secondSteps[]
        = { greenStep, redStep, blueStep, 0, 0, blueStep, redStep, greenStep };

    struct Reals
    {
        using Vector __attribute__((vector_size(Count * sizeof(float)))) = float;
        Vector all;
    };

    struct Place
    {
        unsigned int cell; ///< its part of the number of the cell's first node
        int offset; ///< 0 to fine of the way to the next node
    };

    /// The number for all that are worked on together.
    [[nodiscard]] const typename Reals::Vector &weight(int number) const
    {
        return m_weights[std::size_t(number)].all;
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
    std::array<Reals, fine + 1> m_weights;
    std::vector<Reals> m_numbers;
    std::vector<uchar> m_known;
    std::vector<uchar> m_ready;
};
