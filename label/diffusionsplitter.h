// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "label/rowsplitter.h"
#include "label/sharetable.h"

#include <limits>

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
        , m_errors(std::size_t(width) + 2)
        , m_nextErrors(std::size_t(width) + 2)
    {
        for (std::size_t i = 0; i < palette.count(); ++i)
            m_dots[i].all[i] = Table::Whole;
        for (std::size_t i = 0; i < Count; ++i)
            m_lowBits[i] = i < palette.count() ? int(Count - 1 - i) : std::numeric_limits<int>::min() / 2;
    }

    void split(const QRgb *pixels, uchar *numbers) override
    {
        if (m_backwards)
            diffuse(pixels, numbers, m_width - 1, -1, -1);
        else
            diffuse(pixels, numbers, 0, m_width, 1);
        m_backwards = !m_backwards;
    }

private:
    using Table = ShareTable<Count>;
    using Shares = typename Table::Shares;
    using Vector = typename Shares::Vector;

    static constexpr int numberBits = 4;
    static_assert(Count <= 1U << numberBits);

    // The shares of a pixel are looked up while those of its neighbours are still added up: that takes the
    // processor little longer than the sums alone.
    void diffuse(const QRgb *pixels, uchar *numbers, int from, int to, int step)
    {
        Vector ahead {}; // for the next pixel
        Vector behind {}; // what the row below has got so far one pixel back,
        Vector below {}; // and at this one
        const Shares *errors = m_errors.data() + 1;
        Shares *nextErrors = m_nextErrors.data() + 1;
        const std::size_t unknown = m_palette.count();
        QRgb last = 0; // no opaque colour
        std::size_t exact = unknown;
        Shares target {};
        for (int x = from; x != to; x += step) {
            if (pixels[x] != last) {
                last = pixels[x];
                exact = m_palette.indexOf(last);
                if (exact == unknown)
                    m_table.lookUp(last, target);
            }
            std::size_t number = exact;
            Vector error {};
            if (exact == unknown) {
                const Vector owed = target.all + errors[x].all + ahead;
                number = mostOf(owed);
                error = owed - m_dots[number].all;
            }
            numbers[x] = uchar(number);
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
        const Vector keys = (owed << numberBits) + m_lowBits;
        int most = keys[0];
        for (std::size_t i = 1; i < Count; ++i)
            most = std::max(most, int(keys[i]));
        return Count - 1 - std::size_t(most & ((1 << numberBits) - 1));
    }

    const InkPalette &m_palette;
    int m_width;
    bool m_backwards = false;
    Table m_table;
    std::array<Shares, Count> m_dots {}; ///< the shares of a dot of each colour
    Vector m_lowBits {}; ///< below a share, how far its colour is from the end; far below 0 if there is none
    std::vector<Shares> m_errors; ///< for this row, with one more at each end
    std::vector<Shares> m_nextErrors;
};
