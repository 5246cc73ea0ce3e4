// SPDX-License-Identifier: BSD-3-Clause
#include "label/thresholdsplitter.h"

namespace {

constexpr unsigned int bits = 6;
constexpr unsigned int lostBits = 8 - bits;
constexpr uchar unknown = 0xFF;

double middleLight(int value)
{
    constexpr int lost = (1 << lostBits) - 1;
    return Oklab::lightOf(((value & ~lost) + lost / 2.0) / 255.0);
}

} // namespace

ThresholdSplitter::ThresholdSplitter(const InkPalette &palette, int width)
    : m_palette(palette)
    , m_width(width)
    , m_nearest(std::size_t(1) << 3 * bits, unknown)
{
}

void ThresholdSplitter::split(const QRgb *pixels, uchar *numbers)
{
    for (int x = 0; x < m_width; ++x) {
        const std::size_t exact = m_palette.indexOf(pixels[x]);
        numbers[x] = exact < m_palette.count() ? uchar(exact) : nearest(pixels[x]);
    }
}

uchar ThresholdSplitter::nearest(QRgb color)
{
    const auto place = std::size_t(
        qRed(color) >> lostBits << 2 * bits | qGreen(color) >> lostBits << bits | qBlue(color) >> lostBits);
    if (m_nearest[place] == unknown) [[unlikely]] {
        m_nearest[place] = uchar(m_palette.nearest(
            { middleLight(qRed(color)), middleLight(qGreen(color)), middleLight(qBlue(color)) }));
    }
    return m_nearest[place];
}
