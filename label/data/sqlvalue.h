// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QString>

#include <optional>

class QVariant;

/// Values of databases as people write them.
namespace SqlValue {

/// The text of a value: empty for NULL, "true" and "false", ISO 8601 for dates and times (without a zone, in
/// that of the machine), numbers without an exponent where that has at most 15 digits before the point.
/// Nothing for bytes that are no UTF-8.
[[nodiscard]] std::optional<QString> text(const QVariant &value);

} // namespace SqlValue
