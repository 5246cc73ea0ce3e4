// SPDX-License-Identifier: BSD-3-Clause
// Texts from outside: as HTML of a rich text, and as values of a datasource, with the marker of functions and
// without, of both text items.
#include "fuzz/fuzzsupport.h"
#include "items/text/richtextitem.h"
#include "items/text/simpletextitem.h"

namespace {

const QSizeF boxSize(300.0, 200.0);

void showHtml(const QString &text)
{
    RichTextItem box;
    box.setItemSize(boxSize);
    box.setItemHtml(text);
    Fuzz::paint(box);
    RichTextItem again;
    again.setItemSize(boxSize);
    again.setItemHtml(box.itemHtml());
    Fuzz::paint(again);
    Fuzz::require(box.getItemSize() == boxSize && again.getItemSize() == boxSize);
}

/// A second value comes into what the first has left.
template <typename Text> void showData(const QString &text)
{
    Text item;
    item.setItemData(text);
    Fuzz::paint(item);
    item.setItemData(QStringLiteral("!!!###VXFUNCTIONDATASOURCE###!!!") + text);
    Fuzz::paint(item);
    const std::unique_ptr<Item> copy(item.createItemCopy());
    Fuzz::paint(*copy);
    Fuzz::require(!item.document()->isUndoAvailable());
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    Fuzz::start();
    const QString text = QString::fromUtf8(reinterpret_cast<const char *>(data), qsizetype(size));
    showHtml(text);
    showData<RichTextItem>(text);
    showData<SimpleTextItem>(text);
    return 0;
}
