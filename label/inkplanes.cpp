// SPDX-License-Identifier: BSD-3-Clause
#include "label/inkplanes.h"

#include "items/core/itemcolors.h"
#include "items/core/safeimage.h"
#include "label/gatheredbits.h"

#include <algorithm>

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
            bits[byte] = equalBits(numbers + std::ptrdiff_t(byte) * 8, ink + 1);
    }
}
