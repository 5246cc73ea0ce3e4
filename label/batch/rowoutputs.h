// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "label/adjust/plateadjuster.h"
#include "label/batch/batchoptions.h"
#include "label/batch/rowoutput.h"

#include <memory>

namespace RowOutputs {

/// What a batch with these options is printed into, of labels whose page has a size in millimetres and whose
/// plates are adjusted already. filePerInk tells whether the names have a place for the ink. Null, with the
/// reasons in problems, if labels do not fit on their sheets.
[[nodiscard]] std::unique_ptr<RowOutput> of(const BatchOptions &options, QSizeF page,
    const PlateAdjuster &adjuster, bool filePerInk, Problems &problems);

} // namespace RowOutputs
