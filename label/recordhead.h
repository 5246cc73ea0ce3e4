// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "label/problem.h"

#include <QByteArray>

/// The geometry at the beginning of every item's record, as it is written there: a loaded item has it limited
/// to what can be drawn, which would hide that the record is broken.
namespace RecordHead {

/// `where` of each problem is a JSON pointer within the item. The record is whole.
[[nodiscard]] Problems problems(const QByteArray &record, unsigned int version);

} // namespace RecordHead
