// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "label/colortable.h"
#include "label/inkpalette.h"

#include <cmath>

/// The share of each colour of a palette in the mixture for a pixel.
template <std::size_t Count> class ShareTable : public ColorTable<Count>
{
public:
    /// All shares of a pixel together.
    static constexpr int Whole = 16384;

    using Shares = typename ColorTable<Count>::Numbers;

    /// The palette must outlive the table.
    explicit ShareTable(const InkPalette &palette)
        : ColorTable<Count>([&palette](const Oklab::Color &light, Shares &shares) {
            const Mixture mixture = palette.mixtureFor(light);
            double sum = 0.0;
            int given = 0;
            // Rounded so that nothing is lost of the whole.
            for (std::size_t i = 0; i < palette.count(); ++i) {
                sum += mixture[i];
                const int upTo = int(std::floor(sum * Whole + 0.5));
                shares.all[i] = upTo - given;
                given = upTo;
            }
        })
    {
    }
};
