// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "label/labeldocument.h"

#include <QByteArray>

#include <optional>

/// What loading a document gave.
struct LoadResult
{
    /// Empty when the document was refused.
    std::optional<LabelDocument> document;
    /// Everything that is wrong; empty for a sound document.
    Problems problems;
};

/// Whether a broken or unknown item refuses the document, or is reported and left out.
enum class BrokenItems { Refuse, LeaveOut };

enum class DocumentFormat { Json, Binary };

/// Documents in files: `.vxl` (JSON, for people and version control) and `.vxb` (binary).
namespace DocumentFile {

/// Reads a document; the content tells its format, whatever the file is called. Only ordinary files are read,
/// up to LabelLimits::MaxFileBytes. Memory stays bounded whatever the file claims to hold.
[[nodiscard]] VX_LABEL_EXPORT LoadResult load(const QString &path, BrokenItems broken = BrokenItems::Refuse);

/// The same from memory; fileName is only for messages.
[[nodiscard]] VX_LABEL_EXPORT LoadResult loadFromData(
    const QByteArray &data, const QString &fileName, BrokenItems broken = BrokenItems::Refuse);

/// The format that a file name asks for: ".vxb" is binary, ".vxl" JSON, anything else nothing.
[[nodiscard]] VX_LABEL_EXPORT std::optional<DocumentFormat> formatOf(const QString &path);

/// The document's bytes. Empty, with problems, for a document that has problems().
[[nodiscard]] VX_LABEL_EXPORT QByteArray toData(
    const LabelDocument &document, DocumentFormat format, Problems &problems);

/// Writes a document through a temporary file, so that no half-written one ever has the name. Refuses an
/// existing file unless overwrite is set.
[[nodiscard]] VX_LABEL_EXPORT bool save(
    const LabelDocument &document, const QString &path, bool overwrite, Problems &problems);

} // namespace DocumentFile
