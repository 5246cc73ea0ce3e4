// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QColor>
#include <QString>

class Item;

/// How values appear in problems and in documents.
namespace Wording {

/// A text from a document between quotation marks, cut when it is long.
[[nodiscard]] QString quoted(const QString &text);

/// The shortest digits that give the number again.
[[nodiscard]] QString number(double value);

/// "#rrggbb", or "#aarrggbb" for a translucent colour, or "transparent" for one that nobody sees.
[[nodiscard]] QString color(const QColor &color);

/// The colour of such a text. Invalid for any other text, and for one of more than 8 bits per channel.
[[nodiscard]] QColor colorOf(const QString &text);

/// The description of an item on one line.
[[nodiscard]] QString item(const Item &item);

} // namespace Wording
