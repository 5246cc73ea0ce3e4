// SPDX-License-Identifier: BSD-3-Clause
#include "label/platepictures.h"

#include "items/core/item.h"
#include "items/core/itemcolors.h"
#include "items/core/safeimage.h"
#include "items/graphics/imageableitem.h"
#include "label/inksplit.h"
#include "label/itemtree.h"
#include "label/onebit.h"
#include "label/printcopy.h"

#include <QBitmap>
#include <QGraphicsPixmapItem>

#include <algorithm>
#include <cmath>

namespace {

QList<QColor> colorsOf(const QList<Ink> &inks)
{
    QList<QColor> colors;
    for (const Ink &ink : inks)
        colors.append(ink.color);
    return colors;
}

/// The item alone, on nothing.
QImage alone(ImageableItem &picture, const QRectF &page, double scaling)
{
    auto &item = dynamic_cast<Item &>(picture);
    const std::unique_ptr<Item> copy(item.createItemCopy());
    auto &unplaced = dynamic_cast<ImageableItem &>(*copy);
    unplaced.setImageHasTransparency(true);
    return unplaced.createItemImage(&ItemTree::graphicsOf(*copy), qRgba(0, 0, 0, 0), page, scaling);
}

/// A bit for each pixel that is not fully transparent. A null image, without memory for it.
QImage coverageOf(const QImage &image)
{
    QImage covered = SafeImage::create(image.size(), QImage::Format_Mono);
    if (!covered.isNull())
        covered.setColorTable({ ItemColors::whiteRgb, ItemColors::blackRgb });
    for (int y = 0; y < covered.height(); ++y) {
        const auto *pixels = reinterpret_cast<const QRgb *>(image.constScanLine(y));
        uchar *bits = covered.scanLine(y);
        std::fill(bits, bits + covered.bytesPerLine(), 0);
        for (int x = 0; x < covered.width(); ++x) {
            if (qAlpha(pixels[x]) != 0)
                bits[x / 8] |= uchar(0x80 >> (x % 8));
        }
    }
    return covered;
}

/// Takes the dots of a plate that lie outside of the bits away.
void keepWithin(QImage &dots, const QImage &covered)
{
    const auto bytes = std::min(dots.bytesPerLine(), covered.bytesPerLine());
    for (int y = 0; y < dots.height(); ++y) {
        uchar *row = dots.scanLine(y);
        const uchar *bits = covered.constScanLine(y);
        for (qsizetype i = 0; i < bytes; ++i)
            row[i] &= bits[i];
    }
}

} // namespace

PlatePictures::PlatePictures(const LabelDocument &document, const SeparationOptions &options)
    : m_scaling(options.dpi / document.designDpi())
{
    const auto isPicture = [](const std::unique_ptr<Item> &item) {
        return item->getItemIsVisible() && dynamic_cast<ImageableItem *>(item.get()) != nullptr;
    };
    if (std::ranges::none_of(document.items(), isPicture))
        return;
    m_scene.setItemIndexMethod(QGraphicsScene::NoIndex);
    copyItems(document);
    for (auto &[index, picture] : m_pictures) {
        if (!picture.item->getImageIsInvalid())
            split(picture, document, options);
    }
}

PlatePictures::~PlatePictures() = default;

/// A picture shows what has a lower z value. Of items of one value, that is what comes before it.
void PlatePictures::copyItems(const LabelDocument &document)
{
    std::vector<std::pair<qsizetype, Item *>> inOrder;
    for (const std::unique_ptr<Item> &item : document.items()) {
        if (item->getItemIsVisible())
            inOrder.emplace_back(&item - document.items().data(), item.get());
    }
    std::ranges::stable_sort(
        inOrder, {}, [](const auto &indexed) { return indexed.second->getItemZValue(); });
    double z = 0.0;
    for (const auto &[index, item] : inOrder) {
        Item *copy = item->createItemCopy();
        PrintCopy::makeStackable(ItemTree::graphicsOf(*copy));
        ItemTree::graphicsOf(*copy).setZValue(z++);
        m_scene.addItem(&ItemTree::graphicsOf(*copy));
        if (auto *picture = dynamic_cast<ImageableItem *>(copy))
            m_pictures[index] = { picture, item->getItemZValue(), {}, {} };
    }
}

void PlatePictures::split(Picture &picture, const LabelDocument &document, const SeparationOptions &options)
{
    const QRectF page(QPointF(), document.pageSizeInUnits());
    // Otherwise a drawing may leave out what lies beneath it, and its place when it is turned.
    picture.item->setImageHasTransparency(true);
    QGraphicsItem &graphics = ItemTree::graphicsOf(dynamic_cast<Item &>(*picture.item));
    const QImage composed = picture.item->createItemImage(&graphics, document.paper().rgb(), page, m_scaling);
    if (composed.isNull())
        return; // off the page
    picture.covered = coverageOf(alone(*picture.item, page, m_scaling));
    std::vector<QImage> plates = splitIntoInks(
        composed, colorsOf(document.inks()), document.paper(), options.dither.value_or(document.dither()));
    m_isValid = m_isValid && !plates.empty() && picture.covered.size() == composed.size();
    if (!m_isValid)
        return;
    QList<QImage> images;
    for (QImage &plate : plates) {
        keepWithin(plate, picture.covered);
        picture.prints.push_back(OneBit::countBlack(plate) > 0);
        if (options.negative)
            plate.invertPixels();
        images.append(plate);
    }
    picture.item->setItemImageList(images, true);
}

bool PlatePictures::prints(qsizetype item, qsizetype ink) const
{
    const auto found = m_pictures.find(item);
    return found != m_pictures.end() && std::size_t(ink) < found->second.prints.size()
        && found->second.prints[std::size_t(ink)];
}

void PlatePictures::place(qsizetype item, qsizetype ink, QGraphicsScene &scene) const
{
    const Picture &picture = m_pictures.at(item);
    QGraphicsScene dots;
    if (!picture.item->addItemImageToScene(&dots, picture.z, int(ink)))
        return;
    auto *image = dynamic_cast<QGraphicsPixmapItem *>(dots.items().constFirst());
    QPixmap pixmap = image->pixmap();
    pixmap.setMask(QBitmap::fromImage(picture.covered));
    pixmap.setDevicePixelRatio(m_scaling);
    image->setPixmap(pixmap);
    // Dot upon dot: between two dots, Qt could draw a row twice or leave one out.
    image->setPos(QPointF(std::round(image->x()), std::round(image->y())) / m_scaling);
    scene.addItem(image);
}
