// SPDX-License-Identifier: BSD-3-Clause
#include "label/itemrecord.h"

#include "items/containers/layeritem.h"
#include "items/core/classfactory.h"
#include "items/core/item.h"
#include "items/core/itemcolors.h"
#include "items/core/record.h"
#include "items/graphics/symbolitem.h"
#include "items/interfaces/fillcoloritem.h"
#include "items/interfaces/icoloritem.h"
#include "items/interfaces/textcoloritem.h"
#include "items/text/richtextitem.h"
#include "label/itemtree.h"
#include "label/labeldocument.h"
#include "label/paintedcolors.h"

#include <QDataStream>
#include <QIODevice>
#include <QtEndian>

namespace {

bool isUnseen(const QColor &color)
{
    return !color.isValid() || color.alpha() == 0;
}

void unifyTextColor(Item &item)
{
    auto *text = dynamic_cast<TextColorItem *>(&item);
    if (!text)
        return;
    // The invalid colour with which a barcode begins is seen.
    if (!text->getItemTextColor().isValid() && item.getItemShape() == MobraTypes::BarcodeShape)
        text->setItemTextColor(ItemColors::black);
    else if (isUnseen(text->getItemTextColor()))
        text->setItemTextColor(ItemColors::transparent);
}

/// The colours of a symbol are all seen but for one, whatever their alpha.
void unifySymbolColors(SymbolItem &symbol)
{
    if (isUnseen(symbol.getItemPenColor()))
        symbol.setItemPenColor(PaintedColors::penOf(symbol));
    if (isUnseen(symbol.getItemFillColor()))
        symbol.setItemFillColor(PaintedColors::fillOf(symbol));
}

void unifyUnseenColors(Item &item)
{
    if (auto *symbol = dynamic_cast<SymbolItem *>(&item)) {
        unifySymbolColors(*symbol);
        return;
    }
    auto *pen = dynamic_cast<IColorItem *>(&item);
    if (pen && isUnseen(pen->getItemPenColor()))
        pen->setItemPenColor(ItemColors::transparent);
    auto *fill = dynamic_cast<FillColorItem *>(&item);
    if (fill && isUnseen(fill->getItemFillColor()))
        fill->setItemFillColor(ItemColors::transparent);
    unifyTextColor(item);
}

/// JSON has no negative zero that Qt would keep. As a double it is one bit and 63 zeros.
QByteArray withoutNegativeZeros(QByteArray record)
{
    const QByteArray zero(sizeof(double), '\0');
    QByteArray negative = zero;
    negative[0] = '\x80';
    return record.replace(negative, zero);
}

/// A symbol leaves a colour of its record unread: its fill, which one of a single colour has not read yet.
void loadUnreadFill(Item &item, QDataStream &stream)
{
    auto *symbol = dynamic_cast<SymbolItem *>(&item);
    if (!symbol || stream.atEnd())
        return;
    QColor fill;
    Record::read(stream, std::tie(fill));
    if (symbol->getSingleColor())
        symbol->setItemFillColor(fill);
}

QByteArray written(Item &item)
{
    QByteArray record;
    QDataStream stream(&record, QIODevice::WriteOnly);
    stream.setVersion(ItemRecord::StreamVersion);
    item.saveItemToData(stream);
    return record;
}

/// Readers of rich text take the weight of an empty text in the scale of older writers and leave out any that
/// is not in it, bold as items write it included: in that scale bold comes back.
QByteArray writtenForReaders(RichTextItem &text)
{
    constexpr qsizetype behindWeight = 2 * sizeof(qint8) + sizeof(qint16); // italic, underline, alignment
    constexpr qint16 boldInOldScale = 75;
    QByteArray record = written(text);
    if (text.getEmptyFontWeight() == QFont::Bold)
        qToBigEndian(boldInOldScale, record.end() - behindWeight - sizeof(boldInOldScale));
    return record;
}

/// Normal and bold are the weights of an empty text that come back; others become the nearer of these.
QByteArray writtenInKnownWeight(RichTextItem &text)
{
    const int weight = text.getEmptyFontWeight();
    const int known = weight > QFont::Medium ? QFont::Bold : QFont::Normal;
    if (weight == known)
        return writtenForReaders(text);
    const std::unique_ptr<Item> copy(text.createItemCopy());
    auto &inKnownWeight = dynamic_cast<RichTextItem &>(*copy);
    inKnownWeight.setEmptyFontWeight(known);
    return writtenForReaders(inKnownWeight);
}

QByteArray written(LayerItem &layer)
{
    QByteArray record;
    QDataStream stream(&record, QIODevice::WriteOnly);
    stream.setVersion(ItemRecord::StreamVersion);
    Record::write(stream, qint16(layer.itemId()), layer.getItemZValue(), ItemTree::isShown(layer));
    stream << layer.objectName();
    return record;
}

/// A layer without a record is as new.
void loadLayer(LayerItem &layer, QDataStream &stream)
{
    if (stream.atEnd())
        return;
    qint16 id;
    double z;
    bool visible;
    Record::read(stream, std::tie(id, z, visible));
    QString name;
    stream >> name;
    layer.setItemId(id);
    layer.setItemZValue(z);
    layer.setItemIsVisible(visible);
    layer.setObjectName(name);
}

/// A copy that writes what the item does not say in its record itself; null if the item does.
std::unique_ptr<Item> copyToWrite(Item &item)
{
    // One that only its container hides is written as one that shows.
    const bool isHiddenFromOutside = !item.getItemIsVisible() && ItemTree::isShown(item);
    // A group has less than no size until a list of members joins it.
    const bool hasNoSize = item.getItemShape() == MobraTypes::GroupShape
        && (item.getItemWidth() < 0.0 || item.getItemHeight() < 0.0);
    if (!isHiddenFromOutside && !hasNoSize)
        return {};
    std::unique_ptr<Item> copy(ClassFactory().create(item.getItemShape()));
    if (!copy || !ItemRecord::load(*copy, written(item), LabelDocument::CurrentVersion))
        return {};
    copy->setItemIsVisible(ItemTree::isShown(item));
    if (hasNoSize) {
        const QSizeF size = ItemTree::graphicsOf(item).childrenBoundingRect().size();
        copy->setItemWidth(size.width());
        copy->setItemHeight(size.height());
    }
    return copy;
}

} // namespace

QByteArray ItemRecord::of(Item &item)
{
    if (auto *layer = dynamic_cast<LayerItem *>(&item))
        return written(*layer);
    if (const std::unique_ptr<Item> copy = copyToWrite(item))
        return of(*copy);
    auto *text = dynamic_cast<RichTextItem *>(&item);
    return text ? writtenInKnownWeight(*text) : written(item);
}

bool ItemRecord::load(Item &item, const QByteArray &record, unsigned int version)
{
    QDataStream stream(record);
    stream.setVersion(StreamVersion);
    if (auto *layer = dynamic_cast<LayerItem *>(&item))
        loadLayer(*layer, stream);
    else
        item.loadItemFromData(stream, version);
    loadUnreadFill(item, stream);
    return stream.status() == QDataStream::Ok && stream.atEnd();
}

std::unique_ptr<Item> ItemRecord::plainCopy(Item &item)
{
    std::unique_ptr<Item> copy(ClassFactory().create(item.getItemShape()));
    if (!copy || !load(*copy, of(item), LabelDocument::CurrentVersion))
        return {};
    unifyUnseenColors(*copy);
    if (copy->getDatasourceField().isEmpty())
        copy->setDatasourceField(QString());
    return copy;
}

QByteArray ItemRecord::comparable(Item &item)
{
    const std::unique_ptr<Item> copy = plainCopy(item);
    return copy ? withoutNegativeZeros(of(*copy)) : QByteArray();
}
