// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "items/core/vxexport.h"

#include <QByteArray>
#include <QString>

#include <optional>

/// Stands before every byte sequence that can reach Qt's SVG renderer, which opens whatever files a drawing
/// names, and which a drawing of a few kilobytes can keep busy for hours or bring to an end.
namespace SvgGuard {

enum class Verdict {
    Clean,
    Links, ///< refers to files; harmless without these references
    Refused,
};

struct Answer
{
    Verdict verdict = Verdict::Refused;
    /// What a renderer may be given: the text itself of a clean drawing, inflated if it was compressed; a
    /// copy without its references to files; nothing of a refused one.
    QByteArray drawing;
    /// Why the drawing is not clean, for people: what it holds, and how much of it is allowed. Otherwise
    /// empty.
    QString reason;
    /// About as many bytes as the renderer takes for the drawing, with its pictures.
    qint64 memory = 0;
};

/// Examines a drawing, plain or compressed. Opens no file. A text that is no SVG may be clean as well: the
/// renderer refuses it without harm.
[[nodiscard]] VX_EXPORT Answer check(const QByteArray &bytes);

/// The text of a drawing: what is compressed inflated, anything else as it is. Nothing when the compressed
/// form is broken or either is too large.
[[nodiscard]] VX_EXPORT std::optional<QByteArray> inflated(const QByteArray &bytes);

} // namespace SvgGuard
