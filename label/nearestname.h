// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QString>
#include <QStringList>

/// The name that a mistyped one was probably meant to be: at most two letters away, case aside. Empty if
/// there is none.
[[nodiscard]] QString nearestName(const QString &mistyped, const QStringList &names);
