// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "label/vxlabelexport.h"

#include <QImage>

namespace OneBit {

/// An opaque picture in black, white and the greys between them, which the edges of letters have, as
/// QImage::Format_Mono: black is what is darker than the middle. Nothing is dithered.
[[nodiscard]] VX_LABEL_EXPORT QImage fromGreys(const QImage &image);

/// The number of set (black) bits.
[[nodiscard]] VX_LABEL_EXPORT qint64 countBlack(const QImage &mono);

} // namespace OneBit
