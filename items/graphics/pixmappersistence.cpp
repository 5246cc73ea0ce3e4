// SPDX-License-Identifier: BSD-3-Clause
#include "items/core/record.h"
#include "items/graphics/pictureloader.h"
#include "items/graphics/pixmapitem.h"

#include <QIODevice>

Item *PixMapItem::createItemCopy()
{
    auto copy = copyAs<PixMapItem>();
    copy->setPixmap(pixmap());
    copy->copyPrivatePropeties(getOldTransformCoefficientM31(), getOldTransformCoefficientM32(),
        getFirstResizeAfterAddedToGroup(), getImageHasTransparency());
    copy->setImageIsInvalid(getImageIsInvalid());
    return copy.release();
}

void PixMapItem::copyPrivatePropeties(double m31, double m32, bool firstResize, bool transparency)
{
    setOldTransformCoefficientM31(m31);
    setOldTransformCoefficientM32(m32);
    setFirstResizeAfterAddedToGroup(firstResize);
    setImageHasTransparency(transparency);
}

QVariant PixMapItem::getPixmapItemData() const
{
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    stream << pixmap();
    return QString::fromLatin1(bytes.toBase64());
}

void PixMapItem::setPixmapItemData(const QVariant &pixmapData)
{
    const QByteArray bytes = QByteArray::fromBase64(pixmapData.toByteArray());
    QDataStream stream(bytes);
    setPixmap(PictureLoader::readPixmap(stream));
}

void PixMapItem::saveItemToData(QDataStream &stream)
{
    stream << pixmap();
    Record::write(stream, getOldTransformCoefficientM31(), getOldTransformCoefficientM32(),
        getImageHasTransparency(), getFirstResizeAfterAddedToGroup());
    Item::saveItemToData(stream);
}

void PixMapItem::loadItemFromData(QDataStream &stream, unsigned int version)
{
    setPixmap(PictureLoader::readPixmap(stream));
    double m31;
    double m32;
    bool transparency;
    bool firstResize;
    Record::read(stream, std::tie(m31, m32, transparency, firstResize));
    copyPrivatePropeties(m31, m32, firstResize, transparency);
    Item::loadItemFromData(stream, version);
    prepareGeometryChange();
}
