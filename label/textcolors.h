// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QColor>
#include <QList>

#include <functional>

class Item;
class TextItem;

/// The colours of a text, which may be many: a rich text has them in its letters, lines, paragraphs, tables
/// and pictures.
namespace TextColors {

/// What becomes of a colour; it is asked for visible ones only.
using Change = std::function<QColor(const QColor &)>;

/// The visible colours in which the text is painted, each once; those of pictures are left out. None of an
/// item that is no text or an empty one.
[[nodiscard]] QList<QColor> of(Item &item);

/// Changes each colour of the text and each pixel of its pictures. Letters and layout stay as they are.
void replace(TextItem &text, const Change &change, const Change &changePixel);

} // namespace TextColors
