// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "label/rowsplitter.h"
#include "label/sharetable.h"

/// Error diffusion: what a dot prints more or less of each colour than the mixture of its pixel goes to its
/// neighbours, by the weights of Robert Floyd and Louis Steinberg, "An adaptive algorithm for spatial
/// greyscale", 1976. Each dot gets the colour that is owed most. Rows run to and fro, so that patterns do not
/// lean.
///
/// Errors are kept as shares and not as colours. Those of colours would grow far beyond black and white when
/// one ink lies between others, and leave colours wrong; shares stay small in all palettes, and a colour that
/// has no share in an area gets no dot there. No error passes a pixel of exactly a colour of the palette.
///
/// Count is that of the numbers that are worked on together, at least the colours of the palette.
template <std::size_t Count> class DiffusionSplitter final : public RowSplitter
{
public:
    DiffusionSplitter(const InkPalette &palette, int width)
        : m_palette(palette)
        , m_width(width)
        , m_table(palette)
        , m_targets(std::size_t(width))
        , m_errors(std::size_t(width) + 2)
        , m_nextErrors(std::size_t(width) + 2)
    {
        for (std::size_t i = 0; i < palette.count(); ++i)
            m_dots[i].all[i] = Table::Whole;
    }

    void split(const QRgb *pixels, uchar *numbers) override
    {
        findTargets(pixels, numbers);
        if (m_backwards)
            diffuse(numbers, m_width - 1, -1, -1);
        else
            diffuse(numbers, 0, m_width, 1);
        m_backwards = !m_backwards;
    }

private:
    using Table = ShareTable<Count>;
    using Shares = typename Table::Shares;
    using Vector = typename Shares::Vector;

    static constexpr uchar unknown = 0xFF;

    /// The numbers are those of exact colours, or unknown.
    void findTargets(const QRgb *pixels, uchar *numbers)
    {
        QRgb last = 0; // no opaque colour
        for (int x = 0; x < m_width; ++x) {
            if (pixels[x] == last) {
                numbers[x] = numbers[x - 1];
                m_targets[std::size_t(x)] = m_targets[std::size_t(x) - 1];
                continue;
            }
            last = pixels[x];
            const std::size_t exact = m_palette.indexOf(last);
            numbers[x] = exact < m_palette.count() ? uchar(exact) : unknown;
            if (exact == m_palette.count())
                m_table.lookUp(last, m_targets[std::size_t(x)]);
        }
    }

    void diffuse(uchar *numbers, int from, int to, int step)
    {
        Vector ahead {}; // for the next pixel
        Vector behind {}; // what the row below has got so far one pixel back,
        Vector below {}; // and at this one
        const Shares *targets = m_targets.data();
        const Shares *errors = m_errors.data() + 1;
        Shares *nextErrors = m_nextErrors.data() + 1;
        for (int x = from; x != to; x += step) {
            Vector error {};
            if (numbers[x] == unknown) {
                const Vector owed = targets[x].all + errors[x].all + ahead;
                const std::size_t number = mostOf(owed);
                numbers[x] = uchar(number);
                error = owed - m_dots[number].all;
            }
            ahead = (error * 7) >> 4;
            const Vector three = (error * 3) >> 4;
            const Vector five = (error * 5) >> 4;
            nextErrors[x - step].all = behind + three;
            behind = below + five;
            below = error - ahead - three - five;
        }
        // What has left the row at its ends goes straight down instead.
        nextErrors[to - step].all = behind + ahead + below;
        nextErrors[from].all += nextErrors[from - step].all;
        std::swap(m_errors, m_nextErrors);
    }

    /// The first of the colours with the largest share.
    [[nodiscard]] std::size_t mostOf(const Vector &owed) const
    {
        std::size_t most = 0;
        int share = owed[0];
        for (std::size_t i = 1; i < m_palette.count(); ++i) {
            most = owed[i] > share ? i : most;
            share = std::max(share, int(owed[i]));
        }
        return most;
    }

    const InkPalette &m_palette;
    int m_width;
    bool m_backwards = false;
    Table m_table;
    std::array<Shares, Count> m_dots {}; ///< the shares of a dot of each colour
    std::vector<Shares> m_targets;
    std::vector<Shares> m_errors; ///< for this row, with one more at each end
    std::vector<Shares> m_nextErrors;
};
