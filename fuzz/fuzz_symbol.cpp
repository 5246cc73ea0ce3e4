// SPDX-License-Identifier: BSD-3-Clause
// Symbols: the first byte chooses the colours, the rest is the text of the drawing. Its colours are exchanged
// as they are step by step, whatever the text is, and a symbol made of it can be shown, copied and saved.
#include "fuzz/fuzzsupport.h"
#include "items/graphics/symbolcolors.h"
#include "items/graphics/symbolitem.h"
#include "tests/support/itemrecords.h"
#include "tests/support/literalrecolouring.h"

#include <QSvgRenderer>

#include <array>

namespace {

using SymbolColors::Inks;

const std::array<Inks, 8> colors { Inks { "#FF0000", "#0000FF", true }, Inks { "#FFFFFF", "#000000", true },
    Inks { "#000000", "#FFFFFF", true }, Inks { "#123456", "", false }, Inks { "#FFFFFF", "", false },
    Inks { "red", "blue", true }, Inks { "#MMM", "#MMMMMM", true }, Inks { ":#FFFFFF", "", false } };

void compareTexts(const QByteArray &svg, const Inks &inks)
{
    Fuzz::require(SymbolColors::colored(svg, inks)
        == LiteralRecolouring::colored(svg, inks.pen, inks.fill, inks.hasFill));
    Fuzz::require(SymbolColors::withFixedStops(svg) == LiteralRecolouring::withFixedStops(svg));
    Fuzz::require(SymbolColors::withoutBackground(svg) == LiteralRecolouring::withoutBackground(svg));
    static_cast<void>(SymbolColors::uncolored(svg, inks));
}

void showSymbol(const QByteArray &svg, const Inks &inks)
{
    SymbolItem item;
    const bool shown = item.reloadItemFromData(svg, inks.hasFill, inks.pen, inks.fill);
    Fuzz::require(item.getItemSize() == QSizeF(100, 100));
    Fuzz::require(item.boundingRect().isValid());
    Fuzz::require(shown || item.getItemFillColor() == QColor(Qt::transparent));
    // A huge picture of a small drawing takes its time, and is no business of a symbol's.
    item.setItemFillColor(Qt::blue);
    item.setItemPenColor(Qt::red);
    item.setItemFillColor(Qt::transparent);
    Fuzz::require(item.getItemSize() == QSizeF(100, 100));
    const QByteArray record = ItemRecords::saved(item);
    SymbolItem loaded;
    ItemRecords::load(loaded, record);
    Fuzz::require(ItemRecords::saved(loaded) == record);
    const std::unique_ptr<Item> copy(item.createItemCopy());
    Fuzz::require(ItemRecords::saved(*copy) == record);
    Fuzz::paint(*copy);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    if (size == 0)
        return -1;
    Fuzz::start();
    const Inks &inks = colors[data[0] % colors.size()];
    const QByteArray svg(reinterpret_cast<const char *>(data + 1), qsizetype(size - 1));
    compareTexts(svg, inks);
    showSymbol(svg, inks);
    return 0;
}
