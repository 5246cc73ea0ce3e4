// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "label/vxlabelexport.h"

#include <QImage>

namespace OneBit {

/// 1 for a light pixel and 0 for a dark one: in a grey, the highest bit of any channel.
[[nodiscard]] constexpr uchar isLight(QRgb grey)
{
    constexpr int highestBitOfGreen = 15;
    return uchar((grey >> highestBitOfGreen) & 1U);
}

/// An opaque picture in black, white and the greys between them, which the edges of letters have, as
/// QImage::Format_Mono: black is what is darker than the middle. Nothing is dithered.
[[nodiscard]] VX_LABEL_EXPORT QImage fromGreys(const QImage &image);

/// The number of set (black) bits.
[[nodiscard]] VX_LABEL_EXPORT qint64 countBlack(const QImage &mono);

/// A plate whose rows end in zeros: what follows the last dot of a row is none, and may hold anything.
[[nodiscard]] QImage withClearPadding(QImage mono);

/// The dots of a plate with the other meaning: 1 is white. What follows the last dot of a row is 1. A null
/// image when memory runs out.
[[nodiscard]] QImage withWhiteSet(const QImage &mono);

} // namespace OneBit
