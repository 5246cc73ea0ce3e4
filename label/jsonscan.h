// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QByteArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <optional>

class ProblemLog;

/// From text to JSON values, without trusting the text: the parser needs far more memory than the text that
/// it reads, so the values are counted first.
namespace JsonScan {

/// The list or object that the text holds. Nothing, with the reason in the log, for a text with too many or
/// too deeply nested values, or one that is no JSON. The log counts lines from firstLine.
[[nodiscard]] std::optional<QJsonDocument> parse(
    const QByteArray &text, ProblemLog &log, qint64 firstLine = 1);

/// The object that the text holds; nothing for a list, too.
[[nodiscard]] std::optional<QJsonObject> parseObject(const QByteArray &text, ProblemLog &log);

} // namespace JsonScan
