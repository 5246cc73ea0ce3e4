// SPDX-License-Identifier: BSD-3-Clause
#include "label/adjust/inkrecoloring.h"

#include "items/barcode/barcodeitem.h"
#include "items/graphics/imageableitem.h"
#include "items/graphics/symbolitem.h"
#include "items/style/fillableitem.h"
#include "items/text/textitem.h"
#include "label/paintedcolors.h"
#include "label/textcolors.h"
#include "label/wording.h"

using namespace Qt::StringLiterals;

namespace {

/// Sets a colour, if it becomes another one.
template <typename Set> void change(const QColor &color, const InkMapping &inks, Set &&set)
{
    if (const QColor other = inks.colorFor(color); other != color)
        set(other);
}

void recolor(Item &item, const InkMapping &inks)
{
    if (auto *text = dynamic_cast<TextItem *>(&item)) {
        text->document()->blockSignals(true); // it is laid out as it was
        TextColors::replace(
            *text, [&](const QColor &color) { return inks.colorFor(color); },
            [](const QColor &pixel) { return pixel; });
    }
    if (auto *colored = dynamic_cast<ColoredItem *>(&item))
        change(
            PaintedColors::penOf(item), inks, [&](const QColor &color) { colored->setItemPenColor(color); });
    const QColor fill = PaintedColors::fillOf(item);
    if (auto *barcode = dynamic_cast<BarcodeItem *>(&item)) {
        change(PaintedColors::barsOf(*barcode), inks,
            [&](const QColor &color) { barcode->setItemTextColor(color); });
        change(fill, inks, [&](const QColor &color) { barcode->setItemFillColor(color); });
    } else if (auto *symbol = dynamic_cast<SymbolItem *>(&item)) {
        change(fill, inks, [&](const QColor &color) { symbol->setItemFillColor(color); });
    } else if (auto *fillable = dynamic_cast<FillableItem *>(&item)) {
        change(fill, inks, [&](const QColor &color) { fillable->setItemFillColor(color); });
    }
}

bool isPicture(const Item &item)
{
    return item.getItemIsVisible() && dynamic_cast<const ImageableItem *>(&item)
        && !dynamic_cast<const SymbolItem *>(&item);
}

} // namespace

LabelDocument InkRecoloring::recolored(const LabelDocument &document, const InkMapping &inks)
{
    LabelDocument copy = document.withoutItems();
    for (const std::unique_ptr<Item> &item : document.items()) {
        std::unique_ptr<Item> other(item->createItemCopy());
        recolor(*other, inks);
        copy.addItem(std::move(other));
    }
    return copy;
}

Problems InkRecoloring::warnings(const LabelDocument &document, const InkMapping &inks)
{
    Problems warnings;
    for (std::size_t i = 0; i < document.items().size() && !inks.isPlain(); ++i) {
        const Item &item = *document.items()[i];
        if (isPicture(item))
            warnings.append({ {}, u"/items/%1"_s.arg(i),
                u"%1 keeps its colours, whatever replaces the inks"_s.arg(Wording::item(item)),
                u"give --format pdf-plates to print it with other inks"_s });
    }
    return warnings;
}
