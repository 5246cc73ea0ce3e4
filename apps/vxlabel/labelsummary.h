// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "label/labeldocument.h"

#include <QByteArray>

/// What a label holds.
namespace LabelSummary {

/// For people: the page, then a line for each item, in millimetres.
[[nodiscard]] QByteArray asTable(const LabelDocument &document);

/// For programs: the page in millimetres and dots, the items in dots of the label's own resolution. Keys in
/// alphabetical order, two spaces of indent.
[[nodiscard]] QByteArray asJson(const LabelDocument &document);

} // namespace LabelSummary
