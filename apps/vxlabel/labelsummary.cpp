// SPDX-License-Identifier: BSD-3-Clause
#include "apps/vxlabel/labelsummary.h"

#include "apps/vxlabel/stylenames.h"
#include "apps/vxlabel/texttable.h"
#include "items/barcode/barcodeitem.h"
#include "items/containers/layeritem.h"
#include "items/core/item.h"
#include "items/graphics/pixmapitem.h"
#include "items/graphics/svgitem.h"
#include "items/graphics/symbolitem.h"
#include "items/style/fillableitem.h"
#include "items/text/textitem.h"
#include "label/canonicaljson.h"
#include "label/data/datasourcemap.h"
#include "label/itemtree.h"
#include "platform/zint/symbologies.h"

#include <QJsonArray>
#include <QJsonObject>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

/// Some descriptions end in a line feed.
QString descriptionOf(const Item &item)
{
    return item.toDescriptionString().trimmed();
}

QString fixed(double value)
{
    return QString::number(value, 'f', 2);
}

/// A number as short as it can be without losing anything.
QString shortest(double value)
{
    return QString::number(value, 'g', QLocale::FloatingPointShortest);
}

/// The fill of an item that has no fill style.
QString plainFillText(const QColor &color)
{
    return color.isValid() && color.alpha() > 0 ? u"solid "_s + StyleNames::color(color) : u"none"_s;
}

QString penText(const Item &item)
{
    if (const auto *symbol = dynamic_cast<const SymbolItem *>(&item))
        return StyleNames::color(symbol->getItemPenColor());
    const auto *contoured = dynamic_cast<const ContouredItem *>(&item);
    if (!contoured)
        return u"-"_s;
    if (contoured->getItemPenStyle() == Qt::NoPen || contoured->getItemPenWidth() == 0)
        return u"none"_s;
    return u"%1 %2 %3"_s.arg(StyleNames::pen(contoured->getItemPenStyle()),
        QString::number(contoured->getItemPenWidth()), StyleNames::color(contoured->getItemPenColor()));
}

QString fillText(const Item &item)
{
    if (const auto *barcode = dynamic_cast<const BarcodeItem *>(&item))
        return plainFillText(barcode->getItemFillColor());
    if (const auto *symbol = dynamic_cast<const SymbolItem *>(&item))
        return plainFillText(symbol->getItemFillColor());
    const auto *fillable = dynamic_cast<const FillableItem *>(&item);
    if (!fillable)
        return u"-"_s;
    if (fillable->getItemBrushStyle() == MobraTypes::BrushNone)
        return u"none"_s;
    const QString color = StyleNames::color(fillable->getItemFillColor());
    return u"%1 %2"_s.arg(StyleNames::fill(fillable->getItemBrushStyle()), color);
}

/// The beginning of a text on one line.
QString shortened(const QString &text)
{
    constexpr qsizetype longest = 24;
    QString letters = text.left(4 * longest).simplified();
    if (letters.size() > longest)
        letters = letters.first(longest - 1) + u'…';
    return u'"' + letters + u'"';
}

/// Colour and beginning of a text.
QString textText(const QColor &color, const QString &text)
{
    return StyleNames::color(color) + u' ' + shortened(text);
}

QString symbologyName(const BarcodeItem &barcode)
{
    const Zint::Symbology *symbology = Zint::symbologyOf(barcode.getBarcodeSymbol());
    return symbology ? symbology->name : u"symbology %1"_s.arg(barcode.getBarcodeSymbol());
}

QString textText(const Item &item)
{
    if (const auto *text = dynamic_cast<const TextItem *>(&item))
        return textText(text->getItemTextColor(), text->getItemText());
    if (const auto *barcode = dynamic_cast<const BarcodeItem *>(&item))
        return symbologyName(*barcode) + u' '
            + textText(barcode->getItemTextColor(), barcode->getBarcodeText());
    if (const auto *picture = dynamic_cast<const PixMapItem *>(&item))
        return u"%1 x %2 pixels"_s.arg(picture->pixmap().width()).arg(picture->pixmap().height());
    return {};
}

bool hasText(const Item &item)
{
    return !textText(item).isEmpty()
        || std::ranges::any_of(
            ItemTree::membersOf(item), [](const Item *member) { return hasText(*member); });
}

bool hasTexts(const LabelDocument &document)
{
    return std::ranges::any_of(document.items(), [](const auto &item) { return hasText(*item); });
}

/// What an item is called, with the name of a layer, and whether it is hidden.
QString titleOf(const Item &item)
{
    QString title = descriptionOf(item);
    if (const auto *layer = dynamic_cast<const LayerItem *>(&item); layer && !layer->objectName().isEmpty())
        title += u' ' + shortened(layer->objectName());
    return ItemTree::isShown(item) ? title : title + u" (hidden)"_s;
}

QString pageText(const LabelDocument &document)
{
    const QSizeF page = document.pageSize();
    const QSize dots = document.pageSizeInDots(document.designDpi());
    return u"%1 x %2 mm, %3 x %4 dots at %5 dpi"_s.arg(shortest(page.width()), shortest(page.height()))
        .arg(dots.width())
        .arg(dots.height())
        .arg(shortest(document.designDpi()));
}

QString inksText(const LabelDocument &document)
{
    QStringList inks;
    for (const Ink &ink : document.inks())
        inks.append(u"%1 %2"_s.arg(ink.name, StyleNames::color(ink.color)));
    return inks.join(u", ");
}

/// "2 sql, location sqlite:shop.db, query SELECT * FROM labels"
QString sourceText(QJsonObject source)
{
    QString text = u"%1 %2"_s.arg(source.take(u"id"_s).toInt()).arg(source.take(u"kind"_s).toString());
    for (auto member = source.constBegin(); member != source.constEnd(); ++member)
        text += u", %1 %2"_s.arg(member.key(), member.value().toVariant().toString().simplified());
    return text;
}

QString headText(const LabelDocument &document)
{
    TextTable head({ Qt::AlignLeft, Qt::AlignLeft });
    head.addRow({ u"page"_s, pageText(document) });
    head.addRow({ u"paper"_s, StyleNames::color(document.paper()) });
    head.addRow({ u"inks"_s, inksText(document) });
    head.addRow({ u"dither"_s, DitherNames::of(document.dither()) });
    head.addRow({ u"items"_s, QString::number(ItemTree::count(document)) });
    for (const QJsonValue source : DataSourceMap::toJson(document.sources()))
        head.addRow({ u"source"_s, sourceText(source.toObject()) });
    return head.text();
}

/// The item and, below it and indented, those within it, whose places are those in their container.
void addRows(TextTable &table, const Item &item, const QString &index, int level, double unit)
{
    if (dynamic_cast<const LayerItem *>(&item)) // it has no place, and no size
        table.addRow({ index, QString(2 * level, u' ') + titleOf(item) });
    else
        table.addRow({ index, QString(2 * level, u' ') + titleOf(item), fixed(item.getItemPositionX() * unit),
            fixed(item.getItemPositionY() * unit), fixed(item.getItemWidth() * unit),
            fixed(item.getItemHeight() * unit), shortest(item.getItemRotation()), penText(item),
            fillText(item), textText(item) });
    const QList<Item *> members = ItemTree::membersOf(item);
    for (qsizetype i = 0; i < members.size(); ++i)
        addRows(table, *members[i], u"%1.%2"_s.arg(index).arg(i), level + 1, unit);
}

QString itemsText(const LabelDocument &document)
{
    constexpr auto left = Qt::AlignLeft;
    constexpr auto right = Qt::AlignRight;
    const double unit = 25.4 / document.designDpi();
    TextTable table({ right, left, right, right, right, right, right, left, left, left });
    table.addRow({ u"index"_s, u"item"_s, u"x mm"_s, u"y mm"_s, u"width mm"_s, u"height mm"_s, u"rotation"_s,
        u"pen"_s, u"fill"_s, hasTexts(document) ? u"text"_s : QString() });
    for (std::size_t i = 0; i < document.items().size(); ++i)
        addRows(table, *document.items()[i], QString::number(i), 0, unit);
    return table.text();
}

QJsonObject sizeObject(double width, double height)
{
    return { { u"width"_s, width }, { u"height"_s, height } };
}

QJsonObject pageObject(const LabelDocument &document)
{
    const QSizeF page = document.pageSize();
    const QSize dots = document.pageSizeInDots(document.designDpi());
    QJsonObject object = sizeObject(page.width(), page.height());
    object[u"dots"_s] = sizeObject(dots.width(), dots.height());
    object[u"dpi"_s] = document.designDpi();
    return object;
}

QJsonArray inksArray(const LabelDocument &document)
{
    QJsonArray inks;
    for (const Ink &ink : document.inks())
        inks.append(QJsonObject { { u"name"_s, ink.name }, { u"color"_s, StyleNames::color(ink.color) } });
    return inks;
}

QJsonObject itemObject(const Item &item, int index)
{
    QJsonObject object {
        { u"index"_s, index },
        { u"type"_s, qint64(item.getItemShapeInt()) },
        { u"description"_s, descriptionOf(item) },
    };
    const auto *layer = dynamic_cast<const LayerItem *>(&item);
    if (!layer) {
        object[u"position"_s]
            = QJsonObject { { u"x"_s, item.getItemPositionX() }, { u"y"_s, item.getItemPositionY() } };
        object[u"size"_s] = sizeObject(item.getItemWidth(), item.getItemHeight());
        object[u"rotation"_s] = item.getItemRotation();
    }
    if (const auto *contoured = dynamic_cast<const ContouredItem *>(&item)) {
        object[u"pen"_s] = QJsonObject { { u"color"_s, StyleNames::color(contoured->getItemPenColor()) },
            { u"style"_s, StyleNames::pen(contoured->getItemPenStyle()) },
            { u"width"_s, contoured->getItemPenWidth() } };
    }
    if (const auto *fillable = dynamic_cast<const FillableItem *>(&item)) {
        object[u"fill"_s] = QJsonObject { { u"color"_s, StyleNames::color(fillable->getItemFillColor()) },
            { u"style"_s, StyleNames::fill(fillable->getItemBrushStyle()) } };
    }
    if (const auto *text = dynamic_cast<const TextItem *>(&item)) {
        object[u"text"_s] = QJsonObject { { u"color"_s, StyleNames::color(text->getItemTextColor()) },
            { u"content"_s, text->getItemText() } };
    }
    if (const auto *barcode = dynamic_cast<const BarcodeItem *>(&item)) {
        object[u"barcode"_s] = QJsonObject { { u"symbol"_s, barcode->getBarcodeSymbol() },
            { u"symbology"_s, symbologyName(*barcode) },
            { u"color"_s, StyleNames::color(barcode->getItemTextColor()) },
            { u"content"_s, barcode->getBarcodeText() } };
    }
    if (const auto *picture = dynamic_cast<const PixMapItem *>(&item)) {
        object[u"picture"_s] = QJsonObject { { u"width"_s, picture->pixmap().width() },
            { u"height"_s, picture->pixmap().height() },
            { u"transparent"_s, picture->getImageHasTransparency() } };
    }
    if (const auto *svg = dynamic_cast<const SvgItem *>(&item)) {
        object[u"drawing"_s] = QJsonObject { { u"width"_s, svg->boundingRect().width() },
            { u"height"_s, svg->boundingRect().height() }, { u"valid"_s, !svg->svgIsInvalid() },
            { u"transparent"_s, svg->getImageHasTransparency() } };
    }
    if (const auto *symbol = dynamic_cast<const SymbolItem *>(&item)) {
        object[u"symbol"_s] = QJsonObject { { u"penColor"_s, StyleNames::color(symbol->getItemPenColor()) },
            { u"fillColor"_s, StyleNames::color(symbol->getItemFillColor()) },
            { u"singleColor"_s, symbol->getSingleColor() },
            { u"background"_s, symbol->getFillBoundingRectangle() } };
    }
    if (item.getDatasourceId() >= 0)
        object[u"source"_s]
            = QJsonObject { { u"id"_s, item.getDatasourceId() }, { u"field"_s, item.getDatasourceField() } };
    if (layer && !layer->objectName().isEmpty())
        object[u"name"_s] = layer->objectName();
    if (!ItemTree::isShown(item))
        object[u"visible"_s] = false;
    if (ItemTree::isContainer(item)) {
        QJsonArray children;
        for (const Item *member : ItemTree::membersOf(item))
            children.append(itemObject(*member, int(children.size())));
        object[u"children"_s] = children;
    }
    return object;
}

QJsonArray itemsArray(const LabelDocument &document)
{
    QJsonArray items;
    for (const auto &item : document.items())
        items.append(itemObject(*item, int(items.size())));
    return items;
}

} // namespace

namespace LabelSummary {

QByteArray asTable(const LabelDocument &document)
{
    QString text = headText(document);
    if (!document.items().empty())
        text += u'\n' + itemsText(document);
    return text.toUtf8();
}

QByteArray asJson(const LabelDocument &document)
{
    QJsonObject object { { u"page"_s, pageObject(document) },
        { u"paper"_s, StyleNames::color(document.paper()) }, { u"inks"_s, inksArray(document) },
        { u"dither"_s, DitherNames::of(document.dither()) }, { u"items"_s, itemsArray(document) } };
    if (!document.sources().isEmpty())
        object[u"sources"_s] = DataSourceMap::toJson(document.sources());
    return CanonicalJson::write(object);
}

} // namespace LabelSummary
