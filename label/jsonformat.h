// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "label/documentfile.h"

/// The `.vxl` format: canonical JSON, so that equal documents are equal files and differences are readable.
namespace JsonFormat {

/// UTF-8, keys in alphabetical order, two spaces of indent, a final line feed, no dates. The document has no
/// problems().
[[nodiscard]] VX_LABEL_EXPORT QByteArray write(const LabelDocument &document);

[[nodiscard]] VX_LABEL_EXPORT LoadResult read(
    const QByteArray &data, const QString &fileName, BrokenItems broken);

} // namespace JsonFormat
