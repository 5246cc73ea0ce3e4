// SPDX-License-Identifier: BSD-3-Clause
#include "items/graphics/pixmapitem.h"
#include "items/shapes/rectangleitem.h"
#include "tests/support/colours.h"
#include "tests/support/images.h"
#include "tests/support/pictures.h"
#include "tests/support/scenes.h"

#include <QGraphicsScene>
#include <QRegularExpression>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace Colours;
using Images::imageOf;
using Scenes::onlyPixmap;

namespace {

constexpr unsigned int whiteGround = 0xFFFFFFFFU;
const QRectF page(0, 0, 100, 100);

/// Red and blue above, yellow and black below.
QImage fourColours()
{
    return imageOf({ { redPixel, bluePixel }, { yellowPixel, blackPixel } });
}

/// The item in a scene on white.
QImage inScene(QGraphicsScene &scene, const QSize &size)
{
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::white);
    QPainter painter(&image);
    scene.render(&painter, image.rect(), QRectF(QPointF(), size));
    return image;
}

} // namespace

/// How pictures show and print.
class tst_PixmapPainting : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    void picturePaintsItsPixels_data();
    void picturePaintsItsPixels();
    void ratioMakesThePictureSmaller();
    void stretchedPictureFillsItsFrame();
    void blankPaintsNothing();
    void selectionFrameLiesAroundThePixels();
    void coloursAreKeptInEveryInk();

    // The print image
    void printImageShowsThePicture();
    void printImageShowsWhatIsBeneathHalfTransparentPictures();
    void invalidPicturePrintsNothing();
    void renderingEndsRawPrinting();
    void rawImagesArePlacedInTheUnitTransform_data();
    void rawImagesArePlacedInTheUnitTransform();
    void placedImagesAreReleased();
    void otherPlacesCanBeRendered();
    void hostsDriveItByTheMixin();
};

void tst_PixmapPainting::picturePaintsItsPixels_data()
{
    QTest::addColumn<bool>("horizontal");
    QTest::addColumn<bool>("vertical");
    QTest::addColumn<QImage>("expected");
    QTest::newRow("upright") << false << false << fourColours();
    QTest::newRow("mirrored") << true << false
                              << imageOf({ { bluePixel, redPixel }, { blackPixel, yellowPixel } });
    QTest::newRow("upside down") << false << true
                                 << imageOf({ { yellowPixel, blackPixel }, { redPixel, bluePixel } });
    QTest::newRow("both") << true << true
                          << imageOf({ { blackPixel, yellowPixel }, { bluePixel, redPixel } });
}

void tst_PixmapPainting::picturePaintsItsPixels()
{
    QFETCH(const bool, horizontal);
    QFETCH(const bool, vertical);
    QFETCH(const QImage, expected);
    PixMapItem item;
    item.pixmapImportActions(QPixmap::fromImage(fourColours()));
    item.setItemHorizontalMirror(horizontal);
    item.setItemVerticalMirror(vertical);
    const QString difference
        = Images::difference(Images::painted(item, QSize(2, 2)), expected, u"pixels"_s, 1);
    QVERIFY2(difference.isEmpty(), qPrintable(difference));
}

void tst_PixmapPainting::ratioMakesThePictureSmaller()
{
    QPixmap pixmap = QPixmap::fromImage(Pictures::plain({ 20, 10 }, red));
    pixmap.setDevicePixelRatio(2.0);
    PixMapItem item;
    item.pixmapImportActions(pixmap);
    QCOMPARE(item.boundingRect(), QRectF(0, 0, 10, 5));
    const QImage expected = Images::pictureOf({ 20, 10 }, { { QRect(0, 0, 10, 5), red } });
    QCOMPARE(Images::painted(item, QSize(20, 10)), expected);
}

void tst_PixmapPainting::stretchedPictureFillsItsFrame()
{
    QGraphicsScene scene;
    auto *item = new PixMapItem;
    item->pixmapImportActions(QPixmap::fromImage(Pictures::plain({ 10, 10 }, red)));
    item->setItemSize(QSizeF(30, 20));
    item->setPos(5, 6);
    scene.addItem(item);
    const QImage expected = Images::pictureOf({ 50, 40 }, { { QRect(5, 6, 30, 20), red } });
    QCOMPARE(inScene(scene, QSize(50, 40)), expected);
}

void tst_PixmapPainting::blankPaintsNothing()
{
    PixMapItem item;
    item.reloadItemFromFile("/nowhere/at.all");
    QCOMPARE(item.pixmap().size(), QSize(100, 100));
    QCOMPARE(Images::coloursOf(Images::painted(item, QSize(20, 20))), QSet<QRgb> { whitePixel });
}

void tst_PixmapPainting::selectionFrameLiesAroundThePixels()
{
    PixMapItem item;
    item.pixmapImportActions(QPixmap::fromImage(Pictures::plain({ 20, 10 }, transparent)));
    const QImage image = Images::painted(item, QSize(40, 40), QStyle::State_Selected);
    // Orange (239, 127, 15) with alpha 50 on white.
    QVERIFY(Images::largestDifference(image.pixel(10, 5), qRgb(252, 230, 208)) <= 1);
    QCOMPARE(image.pixel(10, 15), whitePixel);
    QCOMPARE(image.pixel(25, 5), whitePixel);
}

void tst_PixmapPainting::coloursAreKeptInEveryInk()
{
    PixMapItem item;
    item.pixmapImportActions(QPixmap::fromImage(fourColours()));
    const unsigned int flags = item.itemFlags();
    QVERIFY(!item.resetItemColors(red, true, true));
    QVERIFY(!item.resetItemColorsNegative(red));
    QCOMPARE(item.itemFlags(), flags);
    QCOMPARE(item.pixmap().toImage().convertToFormat(QImage::Format_ARGB32_Premultiplied), fourColours());
}

// The print image

void tst_PixmapPainting::printImageShowsThePicture()
{
    PixMapItem item;
    item.pixmapImportActions(QPixmap::fromImage(Pictures::plain({ 10, 10 }, red)));
    item.setPos(5, 5);
    const QImage image = item.createItemImage(&item, whiteGround, page, 2.0);
    QCOMPARE(image.size(), QSize(20, 20));
    QCOMPARE(Images::coloursOf(image), QSet<QRgb> { redPixel });
    QCOMPARE(item.getCalculatedItemPosition(), QPointF(10, 10));
}

void tst_PixmapPainting::printImageShowsWhatIsBeneathHalfTransparentPictures()
{
    QGraphicsScene scene;
    auto *beneath = new RectangleItem;
    beneath->setItemPenStyle(Qt::NoPen);
    beneath->setItemFillColor(blue);
    beneath->setItemSize(QSizeF(5, 10));
    scene.addItem(beneath);
    auto *item = new PixMapItem;
    item->pixmapImportActions(QPixmap::fromImage(Pictures::plain({ 10, 10 }, translucentRed)));
    item->setItemZValue(1);
    scene.addItem(item);
    const QImage image = item->createItemImage(item, whiteGround, page, 1.0);
    QVERIFY(Images::largestDifference(image.pixel(2, 5), qRgb(128, 0, 127)) <= 1);
    QVERIFY(Images::largestDifference(image.pixel(7, 5), qRgb(255, 127, 127)) <= 1);
    QCOMPARE(scene.items(Qt::AscendingOrder), (QList<QGraphicsItem *> { beneath, item }));
}

void tst_PixmapPainting::invalidPicturePrintsNothing()
{
    PixMapItem item;
    item.reloadItemFromFile("/nowhere/at.all");
    item.setShouldPrintRaw(true);
    QVERIFY(item.createItemImage(&item, whiteGround, page, 1.0).isNull());
    QVERIFY(item.getShouldPrintRaw());
}

void tst_PixmapPainting::renderingEndsRawPrinting()
{
    PixMapItem item;
    item.pixmapImportActions(QPixmap::fromImage(fourColours()));
    item.setShouldPrintRaw(true);
    QVERIFY(!item.createItemImage(&item, whiteGround, page, 1.0).isNull());
    QVERIFY(!item.getShouldPrintRaw());
}

void tst_PixmapPainting::rawImagesArePlacedInTheUnitTransform_data()
{
    QTest::addColumn<bool>("raw");
    QTest::addColumn<QTransform>("expected");
    QTest::newRow("rendered") << false << QTransform();
    // A quarter turn about the centre (1, 1), without the scales.
    QTest::newRow("raw") << true << QTransform(0, 1, -1, 0, 2, 0);
}

void tst_PixmapPainting::rawImagesArePlacedInTheUnitTransform()
{
    QFETCH(const bool, raw);
    QFETCH(const QTransform, expected);
    PixMapItem item;
    item.pixmapImportActions(QPixmap::fromImage(fourColours()));
    item.setItemSize(QSizeF(6, 8));
    item.setItemRotation(90);
    item.setItemImageList({ fourColours() }, false);
    item.setCalculatedItemPosition(QPointF(3, 4));
    item.setShouldPrintRaw(raw);
    QGraphicsScene scene;
    QVERIFY(item.addItemImageToScene(&scene, 2.5, 0));
    const QGraphicsPixmapItem *placed = onlyPixmap(scene);
    QVERIFY(placed);
    QVERIFY(qFuzzyCompare(placed->transform(), expected));
    QCOMPARE(placed->pos(), QPointF(3, 4));
    QCOMPARE(placed->zValue(), 2.5);
    QCOMPARE(placed->flags(), QGraphicsItem::ItemStacksBehindParent);
}

void tst_PixmapPainting::placedImagesAreReleased()
{
    PixMapItem item;
    item.setImageSize(QSize(2, 2));
    QGraphicsScene scene;
    for (const bool destroy : { false, true }) {
        item.setItemImageList({ fourColours() }, destroy);
        QVERIFY(item.addItemImageToScene(&scene, 0.0, 0));
        QCOMPARE(item.getListOfMonoImages()[0].isNull(), destroy);
    }
    QVERIFY(!item.addItemImageToScene(&scene, 0.0, 0));
}

void tst_PixmapPainting::otherPlacesCanBeRendered()
{
    PixMapItem item;
    item.pixmapImportActions(QPixmap::fromImage(Pictures::plain({ 10, 10 }, red)));
    // Only the item's own place is left empty for one that is invalid.
    for (const bool invalid : { false, true }) {
        item.setImageIsInvalid(invalid);
        const QImage image = item.createItemImage(&item, whiteGround, QRectF(5, 0, 10, 10), page, 1.0);
        QCOMPARE(image, Images::pictureOf({ 10, 10 }, { { QRect(0, 0, 5, 10), red } }));
    }
}

void tst_PixmapPainting::hostsDriveItByTheMixin()
{
    PixMapItem item;
    item.pixmapImportActions(QPixmap::fromImage(fourColours()));
    item.setShouldPrintRaw(true);
    auto *imageable = dynamic_cast<ImageableItem *>(static_cast<Item *>(&item));
    QVERIFY(imageable);
    QCOMPARE(imageable->createItemImage(&item, whiteGround, page, 1.0).size(), QSize(2, 2));
    QVERIFY(!imageable->getShouldPrintRaw());
}

QTEST_MAIN(tst_PixmapPainting)
#include "tst_pixmappainting.moc"
