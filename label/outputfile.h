// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "label/problem.h"

#include <QByteArray>

namespace OutputFile {

/// Writes a file through a temporary beside it and renames that when everything is on disk: the name never
/// holds half a file. Refuses an existing file unless overwrite is set, and a name that is no ordinary file
/// in any case. False, with the reason in problems and nothing left behind, on failure.
[[nodiscard]] VX_LABEL_EXPORT bool write(
    const QString &path, const QByteArray &data, bool overwrite, Problems &problems);

} // namespace OutputFile
