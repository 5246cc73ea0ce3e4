// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QString>

class QSqlError;

/// What databases say of failures.
namespace SqlError {

/// Their first line, without the word "error" in front.
[[nodiscard]] QString text(const QSqlError &error);

} // namespace SqlError
