// SPDX-License-Identifier: BSD-3-Clause
#include "items/graphics/svgitem.h"
#include "tests/support/colours.h"
#include "tests/support/scenes.h"
#include "tests/support/svgtexts.h"

#include <QGraphicsRectItem>
#include <QGraphicsScene>
#include <QRegularExpression>
#include <QTest>

#include <memory>

using namespace Qt::StringLiterals;
using namespace Colours;
using Scenes::onlyPixmap;

namespace {

constexpr unsigned int greenGround = 0xFF00FF00U;
const QRectF page(0, 0, 200, 200);

/// A scene with an SVG item at (50, 60).
struct Page
{
    explicit Page(const QByteArray &svg)
        : item(new SvgItem)
    {
        item->loadItemFromData(svg);
        item->setPos(50, 60);
        item->setZValue(1);
        scene.addItem(item);
    }

    QGraphicsScene scene;
    SvgItem *item;
};

} // namespace

/// The print image of an SVG item, and its place on the page.
class tst_SvgPrinting : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    void opaqueDrawingPrintsRaw();
    void rawImageShowsItsGround();
    void rawImageIsMirrored();
    void rawImageOfAStretchedDrawing();
    void transparentDrawingIsComposed();
    void drawingBeyondThePageIsComposed();
    void invalidDrawingHasNoImage();
    void rawImageIsPlacedInTheItemsTransform();
    void composedImageIsPlacedUpright();
    void placedImagesAreReleased();
    void coloursAreKept();
};

void tst_SvgPrinting::opaqueDrawingPrintsRaw()
{
    Page page1(SvgTexts::redAndBlue);
    const QImage image = page1.item->createItemImage(page1.item, greenGround, page, 2.5);
    QVERIFY(page1.item->getShouldPrintRaw());
    QCOMPARE(image.size(), QSize(100, 50));
    QCOMPARE(image.format(), QImage::Format_ARGB32_Premultiplied);
    QCOMPARE(page1.item->getImageSize(), QSize(100, 50));
    QCOMPARE(page1.item->getCalculatedItemPosition(), QPointF(125, 150));
    QCOMPARE(page1.item->getRgbFillColor(), greenGround);
    QCOMPARE(image.pixel(10, 10), redPixel);
    QCOMPARE(image.pixel(90, 40), bluePixel);
    // Sides are rounded away from zero at halves: 40 × 0.1125 = 4.5
    QCOMPARE(page1.item->createItemImage(page1.item, greenGround, page, 0.1125).size(), QSize(5, 2));
}

// Nothing has looked for transparency in data, so they print raw.
void tst_SvgPrinting::rawImageShowsItsGround()
{
    Page open(SvgTexts::halfRed);
    QCOMPARE(open.item->createItemImage(open.item, greenGround, page, 1.0).pixel(30, 10), greenGround);
    QVERIFY(open.item->getShouldPrintRaw());
    // 255, 0 and 0 times 128 / 255
    const QImage image = open.item->createItemImage(open.item, 0x80FF0000U, page, 1.0);
    QCOMPARE(reinterpret_cast<const QRgb *>(image.constScanLine(10))[30], 0x80800000U);
    // A page of exactly the item's place holds it.
    QVERIFY(!open.item->createItemImage(open.item, greenGround, QRectF(50, 60, 40, 20), 1.0).isNull());
    QVERIFY(open.item->getShouldPrintRaw());
}

void tst_SvgPrinting::rawImageIsMirrored()
{
    Page mirrored(SvgTexts::redAndBlue);
    mirrored.item->setItemHorizontalMirror(true);
    const QImage image = mirrored.item->createItemImage(mirrored.item, greenGround, page, 1.0);
    QVERIFY(mirrored.item->getShouldPrintRaw());
    QCOMPARE(image.pixel(10, 10), bluePixel);
    QCOMPARE(image.pixel(30, 10), redPixel);
}

void tst_SvgPrinting::rawImageOfAStretchedDrawing()
{
    Page stretched(SvgTexts::redAndBlue);
    stretched.item->setItemSize({ 80, 10 });
    const QImage image = stretched.item->createItemImage(stretched.item, greenGround, page, 1.0);
    QCOMPARE(image.size(), QSize(80, 10));
    QCOMPARE(image.pixel(38, 5), redPixel);
    QCOMPARE(image.pixel(42, 5), bluePixel);
}

void tst_SvgPrinting::transparentDrawingIsComposed()
{
    Page composed(SvgTexts::halfRed);
    composed.item->setImageHasTransparency(true);
    auto *below = new QGraphicsRectItem(0, 0, 200, 70);
    below->setPen(Qt::NoPen);
    below->setBrush(blue);
    below->setFlag(QGraphicsItem::ItemStacksBehindParent);
    composed.scene.addItem(below);
    const QImage image = composed.item->createItemImage(composed.item, greenGround, page, 1.0);
    QVERIFY(!composed.item->getShouldPrintRaw());
    QCOMPARE(image.size(), QSize(40, 20));
    QCOMPARE(composed.item->getCalculatedItemPosition(), QPointF(50, 60));
    QCOMPARE(image.pixel(10, 15), redPixel);
    QCOMPARE(image.pixel(30, 5), bluePixel);
    QCOMPARE(image.pixel(30, 15), greenGround);
    QCOMPARE(composed.item->scene(), &composed.scene);
}

void tst_SvgPrinting::drawingBeyondThePageIsComposed()
{
    Page partly(SvgTexts::redAndBlue);
    const QImage image = partly.item->createItemImage(partly.item, greenGround, QRectF(0, 0, 60, 200), 1.0);
    QVERIFY(!partly.item->getShouldPrintRaw());
    QCOMPARE(image.size(), QSize(10, 20));
    // What the last rendering noted does not stay.
    QVERIFY(!partly.item->createItemImage(partly.item, greenGround, page, 1.0).isNull());
    QVERIFY(partly.item->getShouldPrintRaw());
    QVERIFY(partly.item->createItemImage(partly.item, greenGround, QRectF(0, 0, 10, 10), 1.0).isNull());
    QVERIFY(!partly.item->getShouldPrintRaw());
}

void tst_SvgPrinting::invalidDrawingHasNoImage()
{
    Page invalid(SvgTexts::redAndBlue);
    invalid.item->setImageIsInvalid(true);
    QVERIFY(invalid.item->createItemImage(invalid.item, greenGround, page, 1.0).isNull());
}

void tst_SvgPrinting::rawImageIsPlacedInTheItemsTransform()
{
    Page turned(SvgTexts::redAndBlue);
    turned.item->setItemSize({ 80, 40 });
    turned.item->setItemRotation(90);
    QVERIFY(turned.item->sceneBoundingRect().isValid());
    const QImage image = turned.item->createItemImage(turned.item, greenGround, page, 1.0);
    QVERIFY(turned.item->getShouldPrintRaw());
    turned.item->setItemImageList({ image }, false);
    QGraphicsScene printed;
    QVERIFY(turned.item->addItemImageToScene(&printed, 3.0, 0));
    const QGraphicsPixmapItem *pixmap = onlyPixmap(printed);
    QVERIFY(pixmap != nullptr);
    QCOMPARE(pixmap->pos(), turned.item->pos());
    QCOMPARE(pixmap->zValue(), 3.0);
    QCOMPARE(pixmap->transform(), turned.item->getItemUnitTransform());
    QVERIFY(pixmap->flags() & QGraphicsItem::ItemStacksBehindParent);
}

void tst_SvgPrinting::composedImageIsPlacedUpright()
{
    Page turned(SvgTexts::redAndBlue);
    turned.item->setItemRotation(90);
    turned.item->setImageHasTransparency(true);
    const QImage image = turned.item->createItemImage(turned.item, greenGround, page, 1.0);
    turned.item->setItemImageList({ image }, false);
    QGraphicsScene printed;
    QVERIFY(turned.item->addItemImageToScene(&printed, 3.0, 0));
    const QGraphicsPixmapItem *pixmap = onlyPixmap(printed);
    QVERIFY(pixmap != nullptr);
    QCOMPARE(pixmap->pos(), QPointF(60, 50));
    QCOMPARE(pixmap->transform(), QTransform());
}

void tst_SvgPrinting::placedImagesAreReleased()
{
    for (const bool destroyed : { false, true }) {
        Page placed(SvgTexts::redAndBlue);
        const QImage image = placed.item->createItemImage(placed.item, greenGround, page, 1.0);
        placed.item->setItemImageList({ image }, destroyed);
        QGraphicsScene printed;
        QVERIFY(placed.item->addItemImageToScene(&printed, 0.0, 0));
        QCOMPARE(placed.item->getListOfMonoImages().at(0).isNull(), destroyed);
    }
}

void tst_SvgPrinting::coloursAreKept()
{
    SvgItem item;
    QVERIFY(item.loadItemFromData(SvgTexts::redAndBlue));
    QVERIFY(!item.resetItemColors(red, true, true));
    QVERIFY(!item.resetItemColorsNegative(red));
    QCOMPARE(item.itemFlags(), 3U);
}

QTEST_MAIN(tst_SvgPrinting)
#include "tst_svgprinting.moc"
