// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QString>

class ProblemLog;

/// What holds for a document in any form. Each is false, with the reason in the log, for a number that breaks
/// the rule.
namespace DocumentRules {

[[nodiscard]] bool acceptsVersion(double version, const QString &where, ProblemLog &log);

bool acceptsItemCount(qint64 count, const QString &where, ProblemLog &log);

/// Items of the page are at level 1, their members at level 2.
[[nodiscard]] bool acceptsLevel(int level, const QString &where, ProblemLog &log);

} // namespace DocumentRules
