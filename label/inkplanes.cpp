// SPDX-License-Identifier: BSD-3-Clause
#include "label/inkplanes.h"

#include "items/core/itemcolors.h"
#include "items/core/safeimage.h"

#include <QtEndian>

#include <algorithm>

namespace {

constexpr quint64 ones = 0x0101010101010101U;

/// A bit for each of eight numbers, the first one highest: whether it is this one. None is above 15.
uchar bitsOf(quint64 numbers, quint64 number)
{
    // 16 less the difference keeps its fifth bit only where there is none.
    const quint64 equal = ((ones * 16 - (numbers ^ (ones * number))) >> 4) & ones;
    constexpr quint64 gather = 0x8040201008040201U; // each bit to its place in the highest byte
    return uchar((equal * gather) >> 56);
}

} // namespace

InkPlanes::InkPlanes(QSize size, std::size_t inks)
{
    for (std::size_t ink = 0; ink < inks; ++ink) {
        m_planes.push_back(SafeImage::create(size, QImage::Format_Mono));
        m_planes.back().setColorTable({ ItemColors::whiteRgb, ItemColors::blackRgb });
    }
}

bool InkPlanes::isValid() const
{
    return std::ranges::none_of(m_planes, &QImage::isNull);
}

void InkPlanes::setRow(int y, const uchar *numbers)
{
    for (std::size_t ink = 0; ink < m_planes.size(); ++ink) {
        uchar *bits = m_planes[ink].scanLine(y);
        const int bytes = (m_planes[ink].width() + 7) / 8;
        for (int byte = 0; byte < bytes; ++byte)
            bits[byte] = bitsOf(qFromLittleEndian<quint64>(numbers + std::ptrdiff_t(byte) * 8), ink + 1);
    }
}
