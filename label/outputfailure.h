// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "label/problem.h"
#include "label/vxlabelexport.h"

#include <QString>

#include <optional>

/// What keeps outputs from being written: which file or folder, why, and what helps.
namespace OutputFailure {

/// Of a file. The reason is in the system's words, as QFile::errorString() has them; the advice follows from
/// it.
[[nodiscard]] VX_LABEL_EXPORT Problem ofFile(const QString &path, const QString &reason);

/// Creates the folder with those above it, where they are not there; empty is the current one. What has kept
/// it from that, or nothing.
[[nodiscard]] VX_LABEL_EXPORT std::optional<Problem> createFolder(const QString &path);

} // namespace OutputFailure
