// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "label/problem.h"

#include <optional>

/// Passwords of databases. They are in files that only their owner can read, never in what is shown or saved.
namespace SqlPassword {

/// What is wrong with a location that has a password, and where passwords belong.
[[nodiscard]] QString refusal();
[[nodiscard]] QString advice();

/// The first line of a file, without its end. Nothing, with the reason in problems, if it is no ordinary
/// file, if others than its owner may read or write it, or if it has no text there.
[[nodiscard]] std::optional<QString> fromFile(const QString &path, Problems &problems);

} // namespace SqlPassword
