// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "label/separation.h"

/// What the printed label will look like, made of exactly the dots of the plates: the only preview there is.
/// An image of QImage::Format_Indexed8 at the plates' resolution. Where inks overprint, the colours multiply
/// like transparent layers.
[[nodiscard]] VX_LABEL_EXPORT QImage proofOf(const Separation &separation);
