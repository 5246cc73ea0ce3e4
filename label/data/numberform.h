// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QString>

#include <optional>

/// One conversion of printf(), checked before it is used. Halves are rounded away from zero, and the width of
/// a text counts characters.
namespace NumberForm {

/// Whether the text is one conversion: flags, a width up to 99, a precision up to 20, and one of d i u x X o
/// f e g s.
[[nodiscard]] bool isValid(const QString &form);
/// The value in that form, which must be valid. Nothing if it is no number, no whole one for d i u x X o, or
/// a negative one for u x X o.
[[nodiscard]] std::optional<QString> apply(const QString &form, const QString &value);
/// How to write a value that cannot be applied, where a common mistake is recognised; otherwise empty.
[[nodiscard]] QString adviceFor(const QString &form, const QString &value);

} // namespace NumberForm
