// SPDX-License-Identifier: BSD-3-Clause
#include "label/itemrecord.h"

#include "items/core/classfactory.h"
#include "items/core/item.h"
#include "items/core/itemcolors.h"
#include "items/interfaces/fillcoloritem.h"
#include "items/interfaces/icoloritem.h"
#include "items/interfaces/textcoloritem.h"
#include "label/labeldocument.h"

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

void unifyUnseenColors(Item &item)
{
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

/// Readers of rich text take the weight of an empty text in the scale of older writers and leave out any that
/// is not in it, bold as writers give it included: in that scale bold comes back.
void writeBoldForReaders(QByteArray &record)
{
    constexpr auto behindWeight
        = qsizetype(2 * sizeof(qint8) + sizeof(qint16)); // italic, underline and the alignment
    constexpr qint16 boldInOldScale = 75;
    constexpr int lightestBold = 501; // nearer to 700 than to 400
    const qsizetype at = record.size() - behindWeight - qsizetype(sizeof(qint16));
    if (qFromBigEndian<qint16>(record.constData() + at) >= lightestBold)
        qToBigEndian(boldInOldScale, record.data() + at);
}

} // namespace

QByteArray ItemRecord::of(Item &item)
{
    QByteArray record;
    QDataStream stream(&record, QIODevice::WriteOnly);
    stream.setVersion(StreamVersion);
    item.saveItemToData(stream);
    if (item.getItemShape() == MobraTypes::RichTextShape)
        writeBoldForReaders(record);
    return record;
}

bool ItemRecord::load(Item &item, const QByteArray &record, unsigned int version)
{
    QDataStream stream(record);
    stream.setVersion(StreamVersion);
    item.loadItemFromData(stream, version);
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
