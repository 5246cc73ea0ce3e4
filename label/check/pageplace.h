// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QMarginsF>
#include <QPolygonF>
#include <QRectF>
#include <QSizeF>

class BarcodeItem;
class Item;
class TextItem;
struct PrintedBarcode;

/// Where on the page the parts of an item lie, in scene units.
namespace PagePlace {

/// How much the item's containers and its own transform stretch its width and its height.
[[nodiscard]] QSizeF stretchOf(const Item &item);
/// All that the item may paint.
[[nodiscard]] QRectF boundsOf(const Item &item);

/// The lines of a text, without the margin of its document, in units of the item: as high as its fonts.
[[nodiscard]] QRectF linesOf(const TextItem &text);
/// What its letters paint, which may be less, and which takes longer.
[[nodiscard]] QRectF lettersOf(const TextItem &text);
/// The same on the page, where they may be mirrored.
[[nodiscard]] QRectF lettersOnPage(const TextItem &text);

/// The corners of the symbol of a barcode, with the white space that is part of it; none without a symbol.
[[nodiscard]] QPolygonF symbolOf(const BarcodeItem &barcode, const PrintedBarcode &printed);
/// Those of the symbol with the free space that scanners need around it.
[[nodiscard]] QPolygonF zoneOf(const BarcodeItem &barcode, const PrintedBarcode &printed);
/// How many modules have to be free beside the symbol, beyond the white space that is part of it.
[[nodiscard]] QMarginsF quietZoneOf(const BarcodeItem &barcode);

} // namespace PagePlace
