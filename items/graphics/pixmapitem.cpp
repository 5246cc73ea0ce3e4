// SPDX-License-Identifier: BSD-3-Clause
#include "items/graphics/pixmapitem.h"

#include "items/core/basicconversions.h"
#include "items/core/limits.h"
#include "items/core/safeimage.h"
#include "items/graphics/pictureloader.h"
#include "items/graphics/scaledcontent.h"

#include <QPainter>
#include <QPainterPath>

#include <algorithm>
#include <cmath>

const unsigned char PixMapItem::m_blankPixels[4] = { 0xFF, 0xFF, 0xFF, 0x00 };
const QImage PixMapItem::m_blankPixmap(m_blankPixels, 1, 1, 4, QImage::Format_ARGB32_Premultiplied);

namespace {

/// Makes the picture as much smaller as its sides have to be.
QPixmap withinLimits(const QPixmap &picture)
{
    double width = picture.width();
    double height = picture.height();
    const double ratio = width > height ? width / height : height / width;
    Item::adjustSizes(width, height, 1.0, Limits::MaxPictureSide, 1.0, Limits::MaxPictureSide, ratio);
    return picture.scaled(
        Limits::toInt(width), Limits::toInt(height), Qt::KeepAspectRatio, Qt::SmoothTransformation);
}

} // namespace

PixMapItem::PixMapItem()
{
    setItemShape(MobraTypes::PixmapShape);
    setItemFlags(MobraTypes::FlagImagePrint, true);
    setShapeMode(BoundingRectShape);
    setFlags(ItemIsMovable | ItemIsSelectable | ItemIsFocusable | ItemClipsToShape | ItemStacksBehindParent);
}

PixMapItem::~PixMapItem() = default;

QString PixMapItem::toDescriptionString() const
{
    return QStringLiteral("Pixmap %1").arg(itemId());
}

QRectF PixMapItem::boundingRect() const
{
    // Qt adds a margin for the selection frame to a picture that can be selected, and none without a picture.
    constexpr double margin = 0.5;
    const QRectF rect = QGraphicsPixmapItem::boundingRect();
    const bool hasMargin = (flags() & ItemIsSelectable) && !rect.isEmpty();
    return hasMargin ? rect.adjusted(margin, margin, -margin, -margin) : rect;
}

QPainterPath PixMapItem::shape() const
{
    QPainterPath path;
    path.addRect(boundingRect());
    return path;
}

QPainterPath PixMapItem::opaqueArea() const
{
    return getImageHasTransparency() ? QPainterPath() : shape();
}

void PixMapItem::paint(QPainter *painter, const QStyleOptionGraphicsItem *option, QWidget * /*widget*/)
{
    const QRectF bounds = boundingRect();
    painterMirrorTransform(painter, bounds.width(), bounds.height());
    painter->setRenderHints(QPainter::SmoothPixmapTransform | QPainter::Antialiasing);
    painter->drawPixmap(bounds.topLeft(), pixmap());
    painter->restore();
    paintSelectionFrame(painter, option, bounds);
}

// The picture

bool PixMapItem::loadItemFromFile(const QByteArray &path)
{
    const QByteArray bytes = PictureLoader::bytesOfFile(path);
    if (PictureLoader::isDeepBitmap(bytes))
        return false;
    const QPixmap picture = QPixmap::fromImage(PictureLoader::decoded(bytes));
    if (picture.isNull())
        return false;
    showPicture(withinLimits(picture));
    return true;
}

bool PixMapItem::reloadItemFromFile(const QByteArray &path)
{
    const QSizeF size = getItemSize();
    if (!loadItemFromFile(path))
        showBlank(size);
    setItemSizeOnUpdate(size);
    return true;
}

void PixMapItem::pixmapImportActions(const QPixmap &pixmap)
{
    showPicture(pixmap);
}

void PixMapItem::showPicture(const QPixmap &picture)
{
    setPixmap(picture);
    storeItemSize(naturalSize());
    setImageHasTransparency(false);
    if (picture.hasAlphaChannel())
        checkTransparency(picture.toImage());
    setImageIsInvalid(false);
}

void PixMapItem::showBlank(const QSizeF &size)
{
    const QSize pixels(std::max(1, Limits::toInt(size.width())), std::max(1, Limits::toInt(size.height())));
    setPixmap(QPixmap::fromImage(SafeImage::fits(pixels) ? m_blankPixmap.scaled(pixels) : m_blankPixmap));
    setImageHasTransparency(true);
    setImageIsInvalid(true);
}

/// The picture's size at its device pixel ratio, rounded.
QSizeF PixMapItem::naturalSize() const
{
    const QSizeF size = QSizeF(pixmap().size()) / pixmap().devicePixelRatio();
    return QSizeF(std::round(size.width()), std::round(size.height()));
}

void PixMapItem::setItemData(const QVariant &data)
{
    reloadItemFromFile(data.toByteArray());
}

// Size and place

void PixMapItem::itemSizeChanged()
{
    Item::itemSizeChanged();
    ScaledContent::followSize(*this);
    prepareGeometryChange();
}

bool PixMapItem::setItemSizeOnUpdate(const QSizeF &size)
{
    const bool changed = ScaledContent::fit(*this, size);
    prepareGeometryChange();
    return changed;
}

void PixMapItem::setItemRotation(double degrees)
{
    m_rotation = BasicConversions::normalizeAngle(degrees);
    prepareGeometryChange();
    ScaledContent::followRotation(*this);
}

// Printing

bool PixMapItem::resetItemColors(const QColor & /*printColor*/, bool /*keepBlack*/, bool /*keepOthers*/)
{
    return false;
}

bool PixMapItem::resetItemColorsNegative(const QColor & /*printColor*/)
{
    return false;
}

QImage PixMapItem::createItemImage(
    QGraphicsItem *item, const unsigned int &rgbFill, const QRectF &printRect, double scale)
{
    if (getImageIsInvalid())
        return {};
    setShouldPrintRaw(false);
    return ImageableItem::createItemImage(item, rgbFill, printRect, scale);
}

bool PixMapItem::addItemImageToScene(QGraphicsScene *scene, double z, int index)
{
    setImageTransform(getShouldPrintRaw() ? getItemUnitTransform() : QTransform());
    return ImageableItem::addItemImageToScene(scene, z, index);
}
