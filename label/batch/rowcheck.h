// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "label/separation.h"

namespace RowCheck {

/// What separate() tells about a document whose items all lie on the page, but for its plates, which are not
/// made: what keeps it from being printed, and its warnings and barcodes at a resolution.
[[nodiscard]] std::optional<Separation> of(const LabelDocument &document, double dpi, Problems &problems);

} // namespace RowCheck
