// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "label/bluenoise.h"
#include "label/rowsplitter.h"
#include "label/sharetable.h"

#include <numeric>

/// Every pixel becomes one of the colours of its mixture, each as often as its share: which one tells a
/// pattern of thresholds, with the shares in the order of lightness.
///
/// Count is that of the numbers that are worked on together, at least the colours of the palette.
template <std::size_t Count> class OrderedSplitter final : public RowSplitter
{
public:
    OrderedSplitter(const InkPalette &palette, int width)
        : m_palette(palette)
        , m_width(width)
        , m_darkFirst(palette.count())
        , m_table(palette)
    {
        std::iota(m_darkFirst.begin(), m_darkFirst.end(), uchar(0));
        std::ranges::stable_sort(
            m_darkFirst, {}, [&](uchar number) { return Oklab::of(palette.light(number))[0]; });
    }

    void split(const QRgb *pixels, uchar *numbers) override
    {
        const quint16 *thresholds = BlueNoise::row(m_y++);
        Shares shares {};
        QRgb last = 0; // no opaque colour
        std::size_t exact = 0;
        for (int x = 0; x < m_width; ++x) {
            if (pixels[x] != last) {
                last = pixels[x];
                exact = m_palette.indexOf(last);
                if (exact == m_palette.count())
                    m_table.lookUp(last, shares);
            }
            numbers[x] = exact < m_palette.count()
                ? uchar(exact)
                : numberOf(shares, thresholds[x % BlueNoise::Side] * thresholdStep + thresholdStep / 2);
        }
    }

private:
    using Table = ShareTable<Count>;
    using Shares = typename Table::Shares;

    static constexpr int thresholdStep = Table::Whole / BlueNoise::Count;

    [[nodiscard]] uchar numberOf(const Shares &shares, int threshold) const
    {
        std::size_t place = 0;
        int sum = 0;
        for (std::size_t i = 0; i + 1 < m_darkFirst.size(); ++i) {
            sum += shares.all[m_darkFirst[i]];
            place += threshold >= sum ? 1 : 0;
        }
        return m_darkFirst[place];
    }

    const InkPalette &m_palette;
    int m_width;
    int m_y = 0;
    std::vector<uchar> m_darkFirst; ///< the colours
    Table m_table;
};
