// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "label/dither.h"
#include "label/inkpalette.h"

#include <memory>

/// Chooses the colour of each dot of a picture, row by row from the top.
class RowSplitter
{
public:
    virtual ~RowSplitter() = default;

    /// Writes the number of a colour of the palette for each of the opaque pixels. A pixel of exactly one of
    /// these colours gets that one.
    virtual void split(const QRgb *pixels, uchar *numbers) = 0;

    /// For rows of a width; the palette must outlive it.
    [[nodiscard]] static std::unique_ptr<RowSplitter> create(
        Dither dither, const InkPalette &palette, int width);
};
