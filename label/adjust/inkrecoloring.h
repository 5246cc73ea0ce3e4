// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "label/adjust/inkmapping.h"
#include "label/labeldocument.h"

namespace InkRecoloring {

/// A copy of a document whose items all lie on the page, in the colours in which it is printed: pens, fills,
/// letters, bars, and the colours of symbols. Pictures and drawings keep theirs.
[[nodiscard]] LabelDocument recolored(const LabelDocument &document, const InkMapping &inks);

/// What such a copy shows in other colours than those of its print: visible pictures and drawings.
[[nodiscard]] Problems warnings(const LabelDocument &document, const InkMapping &inks);

} // namespace InkRecoloring
