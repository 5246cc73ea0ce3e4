// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QColor>
#include <QString>

/// The words for what a label's items are painted with.
namespace StyleNames {

/// "#rrggbb", "#aarrggbb" when translucent, or "transparent".
[[nodiscard]] QString color(const QColor &color);
/// "solid", "dash" …; "style 9" for a number without a meaning.
[[nodiscard]] QString pen(int style);
/// "solid", "dense 1" …, "conical gradient"; "style 18" for a number without a meaning.
[[nodiscard]] QString fill(int style);

} // namespace StyleNames
