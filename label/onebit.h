// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "label/vxlabelexport.h"

#include <QImage>

namespace OneBit {

/// A 32-bit image as QImage::Format_Mono, with the bits of convertToFormat(Format_Mono, MonoOnly |
/// DiffuseAlphaDither), which it falls back to for an image that holds anything but opaque black and opaque
/// white.
[[nodiscard]] VX_LABEL_EXPORT QImage fromBlackAndWhite(const QImage &image);

/// The number of set (black) bits.
[[nodiscard]] VX_LABEL_EXPORT qint64 countBlack(const QImage &mono);

} // namespace OneBit
