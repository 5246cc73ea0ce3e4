// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QByteArray>
#include <QJsonObject>

#include <optional>

class ProblemLog;

/// From text to JSON values, without trusting the text: the parser needs far more memory than the text that
/// it reads, so the values are counted first.
namespace JsonScan {

/// The object that the text holds. Nothing, with the reason in the log, for a text with too many or too
/// deeply nested values, one that is no JSON, or one that holds something else.
[[nodiscard]] std::optional<QJsonObject> parse(const QByteArray &text, ProblemLog &log);

} // namespace JsonScan
