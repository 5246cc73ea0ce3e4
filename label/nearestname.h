// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "label/vxlabelexport.h"

#include <QString>
#include <QStringList>

/// The name that a mistyped one was probably meant to be: at most two mistakes away, or the same but for
/// "item" in front, case aside. Empty if there is none.
[[nodiscard]] VX_LABEL_EXPORT QString nearestName(const QString &mistyped, const QStringList &names);
