// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "label/rowsplitter.h"

/// Every pixel becomes the colour that is seen as the nearest, by the middle of the four values that share
/// their highest six bits in each channel.
class ThresholdSplitter final : public RowSplitter
{
public:
    ThresholdSplitter(const InkPalette &palette, int width);

    void split(const QRgb *pixels, uchar *numbers) override;

private:
    [[nodiscard]] uchar nearest(QRgb color);

    const InkPalette &m_palette;
    int m_width;
    std::vector<uchar> m_nearest; ///< by the highest bits of the colour
};
