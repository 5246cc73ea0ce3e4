// SPDX-License-Identifier: BSD-3-Clause
#include "label/batch/boundcontent.h"

#include "items/barcode/barcodeitem.h"
#include "items/core/itemtexts.h"
#include "items/graphics/pixmapitem.h"
#include "items/graphics/svgitem.h"
#include "items/graphics/symbolitem.h"
#include "items/text/richtextitem.h"
#include "items/text/simpletextitem.h"
#include "label/itemtree.h"
#include "label/wording.h"

#include <QGraphicsItem>

using namespace Qt::StringLiterals;

namespace {

IDatasourceItem &dataOf(Item &item)
{
    return dynamic_cast<IDatasourceItem &>(item);
}

/// In the frame that the item has.
template <typename Graphic> bool loadFile(Graphic &graphic, const QString &file)
{
    const QSizeF frame = graphic.getItemSize();
    if (!graphic.loadItemFromFile(file.toUtf8()))
        return false;
    graphic.setItemSizeOnUpdate(frame);
    return true;
}

bool loadFile(Item &item, const QString &file)
{
    if (auto *picture = dynamic_cast<PixMapItem *>(&item))
        return loadFile(*picture, file);
    if (auto *drawing = dynamic_cast<SvgItem *>(&item))
        return loadFile(*drawing, file);
    return loadFile(dynamic_cast<SymbolItem &>(item), file);
}

bool isDrawing(const Item &item, const QString &value)
{
    return !dynamic_cast<const PixMapItem *>(&item) && value.startsWith(u'<');
}

bool loadDrawing(Item &item, const QString &svg)
{
    if (auto *symbol = dynamic_cast<SymbolItem *>(&item))
        return symbol->reloadItemFromData(svg.toUtf8());
    return dynamic_cast<SvgItem &>(item).reloadItemFromData(svg.toUtf8());
}

bool showGraphic(Item &item, const QString &value, const AssetPaths &assets, Problem &problem)
{
    if (value.isEmpty()) {
        ItemTree::graphicsOf(item).setVisible(false);
        return true;
    }
    if (isDrawing(item, value)) {
        if (loadDrawing(item, value))
            return true;
        problem = { {}, {}, u"the value is no drawing that can be shown"_s, {} };
        return false;
    }
    const std::optional<QString> file = assets.find(value, problem);
    if (!file || loadFile(item, *file))
        return file.has_value();
    problem = { {}, {}, Wording::quoted(value) + u" holds nothing that can be shown"_s,
        dynamic_cast<PixMapItem *>(&item) ? u"use a PNG or JPEG file"_s : u"use an SVG file"_s };
    return false;
}

} // namespace

bool BoundContent::showsFile(const Item &item)
{
    return dynamic_cast<const PixMapItem *>(&item) || dynamic_cast<const SvgItem *>(&item)
        || dynamic_cast<const SymbolItem *>(&item);
}

std::optional<QString> BoundContent::fileFor(
    const Item &item, const QString &value, const AssetPaths &assets, Problem &problem)
{
    return value.isEmpty() || isDrawing(item, value) ? std::nullopt : assets.find(value, problem);
}

bool BoundContent::isPossible(const Item &item)
{
    return dynamic_cast<const IDatasourceItem *>(&item) != nullptr;
}

bool BoundContent::hasHtml(const Item &item)
{
    return dynamic_cast<const RichTextItem *>(&item) != nullptr;
}

QString BoundContent::templateOf(const Item &item)
{
    if (const auto *rich = dynamic_cast<const RichTextItem *>(&item))
        return rich->itemHtml();
    if (const auto *text = dynamic_cast<const SimpleTextItem *>(&item))
        return text->getTextIsVertical() ? text->convertVerticalTextToHorizontal() : text->getItemText();
    const auto *barcode = dynamic_cast<const BarcodeItem *>(&item);
    return barcode ? barcode->getBarcodeText() : QString();
}

void BoundContent::showTemplate(Item &item, const QString &text)
{
    if (auto *rich = dynamic_cast<RichTextItem *>(&item))
        rich->setItemHtml(text);
    else
        dataOf(item).setItemData(text);
}

bool BoundContent::showFunction(Item &item, const QString &text, const AssetPaths &assets, Problem &problem)
{
    if (showsFile(item))
        return showGraphic(item, text, assets, problem);
    dataOf(item).setItemData(ItemTexts::functionMarker + text);
    return true;
}

bool BoundContent::showValue(Item &item, const QString &value, const AssetPaths &assets, Problem &problem)
{
    if (showsFile(item))
        return showGraphic(item, value, assets, problem);
    dataOf(item).setItemData(value);
    return true;
}
