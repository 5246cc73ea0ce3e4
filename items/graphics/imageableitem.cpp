// SPDX-License-Identifier: BSD-3-Clause
#include "items/graphics/imageableitem.h"

#include "items/core/itemcolors.h"
#include "items/core/limits.h"
#include "items/core/mobratypes.h"
#include "items/core/safeimage.h"
#include "items/graphics/borrowedscene.h"
#include "items/style/fillableitem.h"
#include "items/text/textitem.h"

#include <QGraphicsItem>
#include <QGraphicsItemGroup>
#include <QGraphicsScene>
#include <QPixmap>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>

namespace {

/// The whole scene units around a rectangle; empty for one that is empty or no rectangle.
QRectF wholeUnits(const QRectF &rect)
{
    const double left = std::floor(rect.left());
    const double top = std::floor(rect.top());
    const double right = std::ceil(rect.left() + rect.width());
    const double bottom = std::ceil(rect.top() + rect.height());
    return left < right && top < bottom ? QRectF(left, top, right - left, bottom - top) : QRectF();
}

/// Whether the item only holds others together.
bool isContainer(const QGraphicsItem &item)
{
    return item.type() == MobraTypes::GroupShape || item.type() == MobraTypes::LayerShape
        || item.type() == QGraphicsItemGroup::Type;
}

/// What lies beneath the item within the area, from the bottom.
QList<QGraphicsItem *> neighboursBeneath(const QGraphicsItem &item, const QRectF &area)
{
    QList<QGraphicsItem *> neighbours;
    if (!item.scene())
        return neighbours;
    const QList<QGraphicsItem *> candidates
        = item.scene()->items(area, Qt::IntersectsItemBoundingRect, Qt::AscendingOrder, QTransform());
    for (QGraphicsItem *candidate : candidates) {
        if (isContainer(*candidate) || candidate->isAncestorOf(&item) || item.isAncestorOf(candidate))
            continue;
        if (!(candidate->zValue() < item.zValue()))
            break;
        neighbours.append(candidate);
    }
    return neighbours;
}

/// Adds the neighbour, or its rendering where one ink has to be laid down after the other.
void addNeighbour(BorrowedScene &scene, QGraphicsItem &neighbour)
{
    auto *fillable = dynamic_cast<FillableItem *>(&neighbour);
    const QImage inks = fillable ? fillable->partialColorRender() : QImage();
    if (inks.isNull()) {
        scene.borrow(neighbour);
        return;
    }
    const auto *text = dynamic_cast<const TextItem *>(&neighbour);
    const QSizeF shift = text ? text->ajustTextWithBorderOnImageAmount() : QSizeF(0.0, 0.0);
    scene.addPicture(QPixmap::fromImage(inks), neighbour, QPointF(shift.width(), shift.height()));
}

/// Whether the pixels are words of 32 bits with the alpha in the top 8; opaque colours fill those as well.
bool hasAlphaWords(QImage::Format format)
{
    switch (format) {
    case QImage::Format_RGB32:
    case QImage::Format_ARGB32:
    case QImage::Format_ARGB32_Premultiplied:
        return true;
    default:
        return false;
    }
}

constexpr QRgb opaque = 0xFF000000U;

/// The pixels of a line of the processor's caches.
struct Pixels
{
    static constexpr int Count = 16;
    using Vector __attribute__((vector_size(Count * sizeof(QRgb)))) = QRgb;
    Vector all = ~Vector {};

    void meet(const QRgb *pixels)
    {
        Vector others;
        std::memcpy(&others, pixels, sizeof others);
        all &= others;
    }
    [[nodiscard]] QRgb met() const
    {
        QRgb bits = all[0];
        for (int i = 1; i < Count; ++i)
            bits &= all[i];
        return bits;
    }
};

// Memory answers requests from several rows at once, and early ones, faster than one after the other.
constexpr int rowsAtOnce = 4;
constexpr int requestedAhead = 256; // pixels

/// Whether any of the rows from y on, of 32-bit pixels, has one that is not opaque.
bool rowsHaveTransparency(const QImage &image, int y)
{
    std::array<const QRgb *, rowsAtOnce> rows {};
    for (int i = 0; i < rowsAtOnce; ++i)
        rows[i] = reinterpret_cast<const QRgb *>(image.constScanLine(std::min(y + i, image.height() - 1)));
    const int width = image.width();
    Pixels pixels;
    int x = 0;
    for (; x + Pixels::Count <= width; x += Pixels::Count) {
        for (const QRgb *row : rows) {
            __builtin_prefetch(row + x + requestedAhead);
            pixels.meet(row + x);
        }
    }
    QRgb bits = pixels.met();
    for (; x < width; ++x)
        bits &= rows[0][x] & rows[1][x] & rows[2][x] & rows[3][x];
    return (bits & opaque) != opaque;
}

} // namespace

ImageableItem::ImageableItem()
    : m_rgbFillColor(ItemColors::whiteRgb)
{
}

ImageableItem::~ImageableItem() = default;

QImage ImageableItem::createItemImage(
    QGraphicsItem *item, const unsigned int &rgbFill, const QRectF &printRect, double scale)
{
    if (m_imageIsInvalid || !item)
        return {};
    return createItemImage(item, rgbFill, item->sceneBoundingRect(), printRect, scale);
}

QImage ImageableItem::createItemImage(QGraphicsItem *item, const unsigned int &rgbFill,
    const QRectF &itemRect, const QRectF &printRect, double scale)
{
    const QRectF covered = itemRect.intersected(printRect);
    const QRectF area = wholeUnits(covered);
    if (!item || area.isEmpty())
        return {};
    QImage image
        = SafeImage::create(area.width() * scale, area.height() * scale, QImage::Format_ARGB32_Premultiplied);
    // Even an image of no size has a place, and nothing of the last one stays.
    m_imageSize = image.size();
    m_rgbFillColor = rgbFill;
    m_calculatedItemPosition = area.topLeft() * scale;
    m_imageTransform = QTransform();
    if (image.isNull())
        return image;

    image.fill(qPremultiply(rgbFill));
    {
        BorrowedScene scene(item->scene(), area);
        for (QGraphicsItem *neighbour : neighboursBeneath(*item, covered))
            addNeighbour(scene, *neighbour);
        scene.borrow(*item);
        QPainter painter(&image);
        scene.render(painter);
    }
    return image;
}

void ImageableItem::setItemImageList(const QList<QImage> &images, bool destroyOnFinish)
{
    m_monoImages = images;
    m_destroyImageOnFinish = destroyOnFinish;
}

void ImageableItem::cleanupImageInList(int index)
{
    if (m_destroyImageOnFinish && index >= 0 && index < m_monoImages.size())
        m_monoImages[index] = QImage();
}

void ImageableItem::checkTransparency(const QImage &image)
{
    m_imageHasTransparency = false;
    const QImage pixels
        = hasAlphaWords(image.format()) ? image : image.convertToFormat(QImage::Format_ARGB32);
    for (int y = 0; y < pixels.height() && !m_imageHasTransparency; y += rowsAtOnce)
        m_imageHasTransparency = rowsHaveTransparency(pixels, y);
}

bool ImageableItem::addItemImageToScene(QGraphicsScene *scene, double z, int index)
{
    if (m_monoImages.isEmpty() || !scene)
        return false;
    const QImage image = m_monoImages.value(index);
    if (image.isNull()) {
        place(*scene, block(m_rgbFillColor), z, QTransform());
        return false;
    }
    place(*scene, QPixmap::fromImage(image), z, m_imageTransform);
    cleanupImageInList(index);
    return true;
}

bool ImageableItem::addBlobToScene(QGraphicsScene *scene, double z, QTransform transform)
{
    if (m_monoImages.isEmpty() || !scene)
        return false;
    place(*scene, block(ItemColors::blackRgb), z, m_shouldPrintRaw ? transform : QTransform());
    return true;
}

void ImageableItem::place(
    QGraphicsScene &scene, const QPixmap &pixmap, double z, const QTransform &transform) const
{
    QGraphicsPixmapItem *picture = scene.addPixmap(pixmap);
    picture->setTransform(transform);
    picture->setPos(Limits::geometry(m_calculatedItemPosition));
    picture->setZValue(qIsNaN(z) ? 0.0 : z);
    picture->setFlag(QGraphicsItem::ItemStacksBehindParent);
}

/// A picture of one colour in the size of the image.
QPixmap ImageableItem::block(QRgb color) const
{
    QImage image = SafeImage::create(m_imageSize, QImage::Format_ARGB32_Premultiplied);
    if (!image.isNull())
        image.fill(qPremultiply(color));
    return QPixmap::fromImage(image);
}
