// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QColor>

class BarcodeItem;
class Item;

/// What an item paints with, in the form in which inks are compared: eight-bit RGB, and exactly
/// Qt::transparent where nothing is painted, whether for want of a colour, a pen or a fill style.
namespace PaintedColors {

[[nodiscard]] QColor penOf(const Item &item);
[[nodiscard]] QColor fillOf(const Item &item);
/// Whether the fill is painted and a gradient.
[[nodiscard]] bool fillIsGradient(const Item &item);
/// Of a barcode's symbol and its text.
[[nodiscard]] QColor barsOf(const BarcodeItem &barcode);
/// Whether the item is a line without a pen style, whose decorated ends are painted all the same.
[[nodiscard]] bool hasEndsOnly(const Item &item);

} // namespace PaintedColors
