// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "items/core/vxexport.h"

#include <QString>

/// Decides whether HTML may be laid out: some short texts keep Qt busy for hours or end the program.
class VX_EXPORT HtmlGuard
{
public:
    /// Whether the text stays below all limits.
    [[nodiscard]] static bool accepts(const QString &html);
    /// What the HTML would show, without its tags, at most as long as a text may be.
    [[nodiscard]] static QString plainTextOf(const QString &html);
};
