// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "label/documentfile.h"

/// The `.vxb` format: a magic text, the version, page, inks and paper, then each item as its type code and
/// its record with its length.
namespace BinaryFormat {

[[nodiscard]] VX_LABEL_EXPORT bool hasMagic(const QByteArray &data);

/// The document has no problems().
[[nodiscard]] VX_LABEL_EXPORT QByteArray write(const LabelDocument &document);

[[nodiscard]] VX_LABEL_EXPORT LoadResult read(
    const QByteArray &data, const QString &fileName, BrokenItems broken);

} // namespace BinaryFormat
