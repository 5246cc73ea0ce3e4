// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "label/problem.h"

#include <QStringList>

/// The names of the columns of a data source.
namespace ColumnNames {

/// Why the names cannot be told apart or asked for: one is empty, or is there twice, or
/// there are too many.
[[nodiscard]] Problems problems(const QStringList &names, const QString &file);

/// That there is no column of a name, and which one was probably meant.
[[nodiscard]] Problem unknown(const QString &name, const QStringList &names);

} // namespace ColumnNames
