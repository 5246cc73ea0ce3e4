// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "label/batch/batchoptions.h"

#include <QJsonObject>

namespace BatchHead {

/// The head of the manifest: what the labels of a batch depend on beyond the rows. tellsTime: whether labels
/// show when the batch began.
[[nodiscard]] QJsonObject of(const BatchOptions &options, bool tellsTime);

} // namespace BatchHead
