// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "label/problem.h"

#include <QByteArray>

/// Standard output carries what was asked for, standard error what is wrong: one line each. What is only to
/// be known is marked as a warning. On a terminal that knows colours, what is wrong begins in red, and a
/// warning in yellow, unless NO_COLOR is set (https://no-color.org).
namespace Terminal {

void complain(const Problem &problem);
/// The same for several; those without a file get this one.
void complain(const Problems &problems, const QString &file);
/// The same for what keeps nothing from being printed.
void warn(const Problems &problems, const QString &file);
/// A complaint of another process of this program, without its line feed.
void passOn(const QByteArray &complaint);

/// Whether standard error is a terminal that understands how to move in a line.
[[nodiscard]] bool canRewriteLines();

/// Writes to standard output; on a terminal, control characters other than line feeds are shown, and do
/// nothing. False, with a complaint, when it takes no more.
[[nodiscard]] bool print(const QByteArray &output);

} // namespace Terminal
