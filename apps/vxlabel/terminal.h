// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "label/problem.h"

#include <QByteArray>

/// Standard output carries what was asked for, standard error what is wrong: one line each.
namespace Terminal {

void complain(const Problem &problem);
/// The same for several; those without a file get this one.
void complain(const Problems &problems, const QString &file);

/// Writes to standard output. False, with a complaint, when it takes no more.
[[nodiscard]] bool print(const QByteArray &text);

} // namespace Terminal
