// SPDX-License-Identifier: BSD-3-Clause
#include "items/graphics/imageableitem.h"
#include "tests/support/colours.h"
#include "tests/support/images.h"
#include "tests/support/oddnumbers.h"
#include "tests/support/scenes.h"

#include <QRegularExpression>
#include <QTest>

#include <utility>

using namespace Qt::StringLiterals;
using namespace Colours;
using Images::imageOf;
using Scenes::onlyPixmap;

namespace {

/// Opaque but for one pixel of the given value.
QImage opaqueBut(QSize size, QImage::Format format, const QPoint &place, QRgb pixel)
{
    QImage image(size, format);
    image.fill(Qt::white);
    image.setPixel(place, pixel);
    return image;
}

/// An item that has been rendered to 3 x 2 dots at (8, 6), with two images to place.
void prepare(ImageableItem &imageable, bool destroyOnFinish)
{
    imageable.setImageSize(QSize(3, 2));
    imageable.setCalculatedItemPosition(QPointF(8.0, 6.0));
    imageable.setRgbFillColor(yellowPixel);
    imageable.setItemImageList(
        { imageOf({ { redPixel, bluePixel } }), imageOf({ { blackPixel } }) }, destroyOnFinish);
}

} // namespace

/// The list of images, their places in the print scene, and the test for transparency.
class tst_ImageableItem : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    void newImageable();
    void accessorsKeepTheirValues();

    // The list
    void listIsReplaced();
    void listIsEmptied();
    void cleanupReleasesOneImageOnlyIfTold_data();
    void cleanupReleasesOneImageOnlyIfTold();
    void cleanupIgnoresImagesThatAreNotThere();

    // Transparency
    void transparency_data();
    void transparency();
    void transparencyIsForgottenWithTheNextImage();
    void transparencyIsSeenAtEveryPlace();

    // Placing
    void imageIsPlaced();
    void imageOfOneBitPerPixelIsPlacedInItsColours_data();
    void imageOfOneBitPerPixelIsPlacedInItsColours();
    void placedImageIsReleasedOnlyIfTold_data();
    void placedImageIsReleasedOnlyIfTold();
    void blockTakesThePlaceOfAMissingImage_data();
    void blockTakesThePlaceOfAMissingImage();
    void nothingIsPlacedWithoutAList();
    void nothingIsPlacedWithoutAScene();
    void blobIsABlackBlock_data();
    void blobIsABlackBlock();
    void oddPlacesStayFinite_data();
    void oddPlacesStayFinite();
    void blockBeyondTheLimitsIsEmpty();
};

void tst_ImageableItem::newImageable()
{
    const ImageableItem imageable;
    QVERIFY(imageable.getListOfMonoImages().isEmpty());
    QCOMPARE(imageable.getImageSize(), QSize(0, 0));
    QCOMPARE(imageable.getRgbFillColor(), 0xFFFFFFFFU);
    QCOMPARE(imageable.getCalculatedItemPosition(), QPointF(0.0, 0.0));
    QVERIFY(!imageable.getImageIsInvalid());
    QVERIFY(!imageable.shouldDestroyImageOnFinish());
    QVERIFY(!imageable.getImageHasTransparency());
    QVERIFY(!imageable.getShouldPrintRaw());
}

void tst_ImageableItem::accessorsKeepTheirValues()
{
    ImageableItem imageable;
    imageable.setImageSize(QSize(3, 4));
    imageable.setRgbFillColor(0x80FF0000U);
    imageable.setCalculatedItemPosition(QPointF(-1.5, 2.5));
    imageable.setImageIsInvalid(true);
    imageable.setImageHasTransparency(true);
    imageable.setShouldPrintRaw(true);
    QCOMPARE(imageable.getImageSize(), QSize(3, 4));
    QCOMPARE(imageable.getRgbFillColor(), 0x80FF0000U);
    QCOMPARE(imageable.getCalculatedItemPosition(), QPointF(-1.5, 2.5));
    QVERIFY(imageable.getImageIsInvalid());
    QVERIFY(imageable.getImageHasTransparency());
    QVERIFY(imageable.getShouldPrintRaw());
}

// The list

void tst_ImageableItem::listIsReplaced()
{
    ImageableItem imageable;
    prepare(imageable, true);
    QCOMPARE(imageable.getListOfMonoImages().size(), 2);
    QVERIFY(imageable.shouldDestroyImageOnFinish());

    const QList<QImage> other { imageOf({ { whitePixel } }) };
    imageable.setItemImageList(other, false);
    QCOMPARE(imageable.getListOfMonoImages(), other);
    QVERIFY(!imageable.shouldDestroyImageOnFinish());
}

void tst_ImageableItem::listIsEmptied()
{
    ImageableItem imageable;
    prepare(imageable, false);
    const QList<QImage> kept = imageable.getListOfMonoImages();
    imageable.clearItemImageList();
    QVERIFY(imageable.getListOfMonoImages().isEmpty());
    QCOMPARE(kept.size(), 2);
}

void tst_ImageableItem::cleanupReleasesOneImageOnlyIfTold_data()
{
    QTest::addColumn<bool>("destroyOnFinish");
    QTest::newRow("kept") << false;
    QTest::newRow("destroyed") << true;
}

void tst_ImageableItem::cleanupReleasesOneImageOnlyIfTold()
{
    QFETCH(const bool, destroyOnFinish);
    ImageableItem imageable;
    prepare(imageable, destroyOnFinish);
    imageable.cleanupImageInList(1);
    QCOMPARE(imageable.getListOfMonoImages().size(), 2);
    QVERIFY(!imageable.getListOfMonoImages()[0].isNull());
    QCOMPARE(imageable.getListOfMonoImages()[1].isNull(), destroyOnFinish);
}

void tst_ImageableItem::cleanupIgnoresImagesThatAreNotThere()
{
    ImageableItem imageable;
    prepare(imageable, true);
    const QList<QImage> before = imageable.getListOfMonoImages();
    for (const int index : { -1, 2, 1000 })
        imageable.cleanupImageInList(index);
    QCOMPARE(imageable.getListOfMonoImages(), before);
    imageable.clearItemImageList();
    imageable.cleanupImageInList(0);
    QVERIFY(imageable.getListOfMonoImages().isEmpty());
}

// Transparency

void tst_ImageableItem::transparency_data()
{
    QTest::addColumn<QImage>("image");
    QTest::addColumn<bool>("transparent");

    constexpr QSize size(5, 4);
    constexpr auto straight = QImage::Format_ARGB32;
    constexpr auto premultiplied = QImage::Format_ARGB32_Premultiplied;
    QTest::newRow("none") << QImage() << false;
    QTest::newRow("opaque") << opaqueBut(size, straight, { 0, 0 }, redPixel) << false;
    QTest::newRow("opaque, premultiplied") << opaqueBut(size, premultiplied, { 0, 0 }, blackPixel) << false;
    QTest::newRow("alpha 254") << opaqueBut(size, straight, { 4, 3 }, 0xFEFFFFFF) << true;
    QTest::newRow("alpha 254, premultiplied") << opaqueBut(size, premultiplied, { 0, 0 }, 0xFEFEFEFE) << true;
    QTest::newRow("alpha 127") << opaqueBut(size, straight, { 2, 1 }, 0x7FFFFFFF) << true;
    QTest::newRow("clear") << opaqueBut(size, straight, { 2, 1 }, clearPixel) << true;
    QTest::newRow("without alpha") << opaqueBut(size, QImage::Format_RGB32, { 2, 1 }, clearPixel) << false;
    // Whose bytes, taken for words of 32 bits, would say something else.
    QTest::newRow("grey") << opaqueBut(size, QImage::Format_Grayscale8, { 2, 1 }, blackPixel) << false;
    QTest::newRow("24 bits") << opaqueBut(size, QImage::Format_RGB888, { 2, 1 }, blackPixel) << false;
    QTest::newRow("alpha alone") << opaqueBut(size, QImage::Format_Alpha8, { 2, 1 }, 0xFE000000) << true;
    QTest::newRow("two bits of alpha, opaque black")
        << opaqueBut(size, QImage::Format_A2RGB30_Premultiplied, { 2, 1 }, blackPixel) << false;
}

void tst_ImageableItem::transparency()
{
    QFETCH(const QImage, image);
    QFETCH(const bool, transparent);
    ImageableItem imageable;
    imageable.checkTransparency(image);
    QCOMPARE(imageable.getImageHasTransparency(), transparent);
}

void tst_ImageableItem::transparencyIsForgottenWithTheNextImage()
{
    ImageableItem imageable;
    imageable.checkTransparency(imageOf({ { clearPixel } }));
    QVERIFY(imageable.getImageHasTransparency());
    imageable.checkTransparency(imageOf({ { redPixel } }));
    QVERIFY(!imageable.getImageHasTransparency());
    imageable.setImageHasTransparency(true);
    imageable.checkTransparency(QImage());
    QVERIFY(!imageable.getImageHasTransparency());
}

void tst_ImageableItem::transparencyIsSeenAtEveryPlace()
{
    // Widths around those of vectors and heights around a few rows, at whose ends a last pixel is easily left
    // out.
    constexpr int height = 6;
    for (int width = 1; width <= 40; ++width) {
        for (int x = 0; x < width; ++x) {
            ImageableItem imageable;
            imageable.checkTransparency(
                opaqueBut(QSize(width, height), QImage::Format_ARGB32, { x, x % height }, 0xFEFFFFFF));
            QVERIFY2(imageable.getImageHasTransparency(), qPrintable(u"%1 of %2"_s.arg(x).arg(width)));
        }
    }
}

// Placing

void tst_ImageableItem::imageIsPlaced()
{
    ImageableItem imageable;
    prepare(imageable, false);
    QGraphicsScene scene;
    QVERIFY(imageable.addItemImageToScene(&scene, 4.5, 0));
    const QGraphicsPixmapItem *placed = onlyPixmap(scene);
    QVERIFY(placed);
    QCOMPARE(placed->pos(), QPointF(8.0, 6.0));
    QCOMPARE(placed->zValue(), 4.5);
    QCOMPARE(placed->transform(), QTransform());
    QCOMPARE(placed->flags(), QGraphicsItem::ItemStacksBehindParent);
    QCOMPARE(placed->pixmap().toImage().pixel(0, 0), redPixel);
    QCOMPARE(placed->pixmap().toImage().pixel(1, 0), bluePixel);
}

void tst_ImageableItem::imageOfOneBitPerPixelIsPlacedInItsColours_data()
{
    QTest::addColumn<QImage::Format>("format");
    QTest::addColumn<QList<QRgb>>("colours");
    for (const auto &[bits, format] :
        { std::pair("first bit left", QImage::Format_Mono), { "first bit right", QImage::Format_MonoLSB } }) {
        QTest::addRow("%s, black and white", bits) << format << QList<QRgb> { blackPixel, whitePixel };
        QTest::addRow("%s, white and black", bits) << format << QList<QRgb> { whitePixel, blackPixel };
        QTest::addRow("%s, an ink on nothing", bits) << format << QList<QRgb> { clearPixel, redPixel };
    }
}

void tst_ImageableItem::imageOfOneBitPerPixelIsPlacedInItsColours()
{
    QFETCH(const QImage::Format, format);
    QFETCH(const QList<QRgb>, colours);
    // One more than a byte holds.
    constexpr QSize size(9, 2);
    const QList<QPoint> ones { { 0, 0 }, { 6, 0 }, { 8, 0 }, { 1, 1 } };
    QImage image(size, format);
    image.setColorTable(colours);
    image.fill(0);
    // Nothing of a clear pixel shows.
    QImage expected = Images::pictureOf(size, {});
    const auto seen = [&](int bit) { return qAlpha(colours[bit]) ? colours[bit] : whitePixel; };
    expected.fill(seen(0));
    for (const QPoint &place : ones) {
        image.setPixel(place, 1);
        expected.setPixel(place, seen(1));
    }
    ImageableItem imageable;
    imageable.setItemImageList({ image }, false);
    QGraphicsScene scene;
    QVERIFY(imageable.addItemImageToScene(&scene, 0.0, 0));
    QImage printed = Images::pictureOf(size, {});
    {
        QPainter painter(&printed);
        scene.render(&painter, printed.rect(), printed.rect());
    }
    const QString difference = Images::difference(printed, expected, u"bits"_s);
    QVERIFY2(difference.isEmpty(), qPrintable(difference));
    // What is handed over to the next pass is still of one bit.
    QCOMPARE(imageable.getListOfMonoImages()[0].format(), format);
}

void tst_ImageableItem::placedImageIsReleasedOnlyIfTold_data()
{
    cleanupReleasesOneImageOnlyIfTold_data();
}

void tst_ImageableItem::placedImageIsReleasedOnlyIfTold()
{
    QFETCH(const bool, destroyOnFinish);
    ImageableItem imageable;
    prepare(imageable, destroyOnFinish);
    QGraphicsScene scene;
    QVERIFY(imageable.addItemImageToScene(&scene, 1.0, 0));
    QCOMPARE(imageable.getListOfMonoImages()[0].isNull(), destroyOnFinish);
    QVERIFY(!imageable.getListOfMonoImages()[1].isNull());
    // What was released leaves the block behind.
    QCOMPARE(imageable.addItemImageToScene(&scene, 1.0, 0), !destroyOnFinish);
}

void tst_ImageableItem::blockTakesThePlaceOfAMissingImage_data()
{
    QTest::addColumn<int>("index");
    QTest::addColumn<QRgb>("fill");
    QTest::newRow("null") << 0 << yellowPixel;
    QTest::newRow("behind the list") << 1 << yellowPixel;
    QTest::newRow("before the list") << -1 << bluePixel;
    QTest::newRow("half transparent black") << 0 << 0x80000000U;
}

void tst_ImageableItem::blockTakesThePlaceOfAMissingImage()
{
    QFETCH(const int, index);
    QFETCH(const QRgb, fill);
    ImageableItem imageable;
    prepare(imageable, false);
    imageable.setRgbFillColor(fill);
    imageable.setItemImageList({ QImage() }, false);
    QGraphicsScene scene;
    QVERIFY(!imageable.addItemImageToScene(&scene, 4.5, index));
    const QGraphicsPixmapItem *placed = onlyPixmap(scene);
    QVERIFY(placed);
    QCOMPARE(placed->pos(), QPointF(8.0, 6.0));
    QCOMPARE(placed->zValue(), 4.5);
    QCOMPARE(placed->flags(), QGraphicsItem::ItemStacksBehindParent);
    QCOMPARE(placed->pixmap().size(), QSize(3, 2));
    QCOMPARE(Images::coloursOf(placed->pixmap().toImage()), QSet<QRgb> { fill });
}

void tst_ImageableItem::nothingIsPlacedWithoutAList()
{
    ImageableItem imageable;
    imageable.setImageSize(QSize(3, 2));
    QGraphicsScene scene;
    QVERIFY(!imageable.addItemImageToScene(&scene, 0.0, 0));
    QVERIFY(!imageable.addBlobToScene(&scene, 0.0, QTransform()));
    QVERIFY(scene.items().isEmpty());
}

void tst_ImageableItem::nothingIsPlacedWithoutAScene()
{
    ImageableItem imageable;
    prepare(imageable, true);
    QVERIFY(!imageable.addItemImageToScene(nullptr, 0.0, 0));
    QVERIFY(!imageable.addBlobToScene(nullptr, 0.0, QTransform()));
    QVERIFY(!imageable.getListOfMonoImages()[0].isNull());
}

void tst_ImageableItem::blobIsABlackBlock_data()
{
    QTest::addColumn<bool>("raw");
    QTest::addColumn<QTransform>("expected");
    const QTransform transform(2, 0, 0, 2, 5, 5);
    QTest::newRow("rendered") << false << QTransform();
    QTest::newRow("raw") << true << transform;
}

void tst_ImageableItem::blobIsABlackBlock()
{
    QFETCH(const bool, raw);
    QFETCH(const QTransform, expected);
    ImageableItem imageable;
    prepare(imageable, true);
    imageable.setShouldPrintRaw(raw);
    QGraphicsScene scene;
    QVERIFY(imageable.addBlobToScene(&scene, 2.5, QTransform(2, 0, 0, 2, 5, 5)));
    const QGraphicsPixmapItem *placed = onlyPixmap(scene);
    QVERIFY(placed);
    QCOMPARE(placed->pos(), QPointF(8.0, 6.0));
    QCOMPARE(placed->zValue(), 2.5);
    QCOMPARE(placed->transform(), expected);
    QCOMPARE(placed->flags(), QGraphicsItem::ItemStacksBehindParent);
    QCOMPARE(placed->pixmap().size(), QSize(3, 2));
    QCOMPARE(Images::coloursOf(placed->pixmap().toImage()), QSet<QRgb> { blackPixel });
    QVERIFY(!imageable.getListOfMonoImages()[0].isNull());
}

void tst_ImageableItem::oddPlacesStayFinite_data()
{
    QTest::addColumn<double>("value");
    for (const OddNumber &number : oddNumbers)
        QTest::newRow(number.name) << number.value;
}

void tst_ImageableItem::oddPlacesStayFinite()
{
    QFETCH(const double, value);
    ImageableItem imageable;
    prepare(imageable, false);
    imageable.setCalculatedItemPosition(QPointF(value, value));
    QGraphicsScene scene;
    QVERIFY(imageable.addItemImageToScene(&scene, value, 0));
    const QGraphicsPixmapItem *placed = onlyPixmap(scene);
    QVERIFY(placed);
    QVERIFY(std::abs(placed->pos().x()) <= 1e7 && std::abs(placed->pos().y()) <= 1e7);
    QVERIFY(!std::isnan(placed->zValue()));
}

void tst_ImageableItem::blockBeyondTheLimitsIsEmpty()
{
    ImageableItem imageable;
    prepare(imageable, false);
    QGraphicsScene scene;
    for (const QSize &size : { QSize(1 << 30, 1 << 30), QSize(-1, 5), QSize(0, 0) }) {
        scene.clear();
        imageable.setImageSize(size);
        QVERIFY(!imageable.addItemImageToScene(&scene, 0.0, -1));
        const QGraphicsPixmapItem *placed = onlyPixmap(scene);
        QVERIFY(placed && placed->pixmap().isNull());
    }
}

QTEST_MAIN(tst_ImageableItem)
#include "tst_imageableitem.moc"
