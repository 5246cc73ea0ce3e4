// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "label/vxlabelexport.h"

#include <QByteArray>
#include <QString>

#include <limits>

namespace FileDigest {

/// The SHA-256 in hexadecimal digits, of bytes or of a file, of which no more than some are read; empty for a
/// file that cannot be read.
[[nodiscard]] VX_LABEL_EXPORT QByteArray of(const QByteArray &bytes);
[[nodiscard]] VX_LABEL_EXPORT QByteArray ofFile(
    const QString &path, qint64 most = std::numeric_limits<qint64>::max());

} // namespace FileDigest
