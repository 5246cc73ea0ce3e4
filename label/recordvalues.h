// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "items/core/mobratypes.h"
#include "label/problem.h"

#include <QByteArray>

/// The values of an item's record as they are written there: a loaded item has them limited to what can be
/// drawn, or replaced, which would hide that the record is broken.
namespace RecordValues {

/// `where` of each problem is a JSON pointer within the item, and each is told once. The record is whole, and
/// of an item of the given class.
[[nodiscard]] Problems problems(MobraTypes::ShapeType shape, const QByteArray &record, unsigned int version);

} // namespace RecordValues
