// SPDX-License-Identifier: BSD-3-Clause
#include "items/graphics/pixmapitem.h"
#include "tests/support/colours.h"
#include "tests/support/pictures.h"
#include "tests/support/resizing.h"

#include <QPainterPath>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

#include <algorithm>
#include <cmath>
#include <numeric>

using namespace Qt::StringLiterals;
using namespace Colours;
using Pictures::encoded;
using Pictures::plain;
using Pictures::written;

namespace {

QPixmap pixmapOf(const QSize &size, const QColor &colour = red)
{
    return QPixmap::fromImage(plain(size, colour));
}

void compareRects(const QRectF &actual, const QRectF &expected)
{
    constexpr double tolerance = 1e-9;
    for (const double difference : { actual.left() - expected.left(), actual.top() - expected.top(),
             actual.right() - expected.right(), actual.bottom() - expected.bottom() })
        QVERIFY2(std::abs(difference) <= tolerance,
            qPrintable(
                u"%1 %2 %3 %4"_s.arg(actual.x()).arg(actual.y()).arg(actual.width()).arg(actual.height())));
}

} // namespace

/// Loading, sizes and places of pictures.
class tst_PixMapItem : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    void newItem();
    void blankPixmapIsAClearPixel();

    // Loading
    void loadedItemHasTheSizeOfThePicture();
    void bitmapFilesOf32BitsAreRefused();
    void largePictureIsMadeSmaller_data();
    void largePictureIsMadeSmaller();
    void columnsOfALargePictureMerge();
    void transparencyIsLookedFor_data();
    void transparencyIsLookedFor();
    void refusedFileChangesNothing();
    void loadingKeepsTheScales();
    void importedPictureCountsItsRatio_data();
    void importedPictureCountsItsRatio();

    // Reloading
    void reloadedPictureFillsTheFrame();
    void reloadedPictureFillsTheTurnedFrame();
    void reloadedTurnedPictureKeepsItsPlace_data();
    void reloadedTurnedPictureKeepsItsPlace();
    void failedReloadLeavesABlankOfTheSameSize_data();
    void failedReloadLeavesABlankOfTheSameSize();
    void goodReloadAfterAFailedOne();
    void dataNameTheFile_data();
    void dataNameTheFile();
    void sizeOnUpdateTellsOfAnotherSize();

    // Geometry
    void boundingRectIsThePicture_data();
    void boundingRectIsThePicture();
    void opaqueAreaIsEmptyWithTransparency();
    void resizingScalesTheTransform_data();
    void resizingScalesTheTransform();
    void resizingToTheSameSizeChangesNothing();
    void rotationTurnsAboutTheCentreOfThePixels();
    void resizingATurnedPictureKeepsItsPlace();
    void firstResizeInAGroupTakesTheWholeTranslation_data();
    void firstResizeInAGroupTakesTheWholeTranslation();
    void reloadInAGroupTakesTheWholeTranslation();
    void rotationIsNormalised();

    // Datasource
    void datasourceIsThatOfTheItem();
    void bothSignalsExist();

private:
    QTemporaryDir m_folder;
};

void tst_PixMapItem::newItem()
{
    const PixMapItem item;
    QCOMPARE(item.type(), 0x1000C);
    QCOMPARE(item.getItemShape(), MobraTypes::PixmapShape);
    QCOMPARE(item.itemFlags(), 0x03U);
    QCOMPARE(item.itemQFlags(), 0x10FU);
    QCOMPARE(item.shapeMode(), QGraphicsPixmapItem::BoundingRectShape);
    QVERIFY(item.pixmap().isNull());
    QCOMPARE(item.getItemSize(), QSizeF(100, 100));
    QCOMPARE(item.boundingRect(), QRectF());
    QVERIFY(!item.getImageHasTransparency());
    QVERIFY(!item.getImageIsInvalid());
    QVERIFY(!item.getItemData().isValid());
    QCOMPARE(item.toDescriptionString(), u"Pixmap -1"_s);
}

void tst_PixMapItem::blankPixmapIsAClearPixel()
{
    const QImage &blank = PixMapItem::m_blankPixmap;
    QCOMPARE(blank.size(), QSize(1, 1));
    QCOMPARE(blank.format(), QImage::Format_ARGB32_Premultiplied);
    QCOMPARE(blank.bytesPerLine(), 4);
    QCOMPARE(
        QByteArray(reinterpret_cast<const char *>(blank.constBits()), 4), QByteArray("\xFF\xFF\xFF\x00", 4));
}

// Loading

void tst_PixMapItem::loadedItemHasTheSizeOfThePicture()
{
    PixMapItem item;
    QVERIFY(item.loadItemFromFile(written(m_folder, u"größe.png"_s, encoded(plain({ 30, 20 }, red), "PNG"))));
    QCOMPARE(item.pixmap().size(), QSize(30, 20));
    QCOMPARE(item.getItemSize(), QSizeF(30, 20));
    QCOMPARE(item.getItemScaleX(), 1.0);
    QCOMPARE(item.boundingRect(), QRectF(0, 0, 30, 20));
    QCOMPARE(item.pixmap().toImage().pixel(29, 19), redPixel);
    QVERIFY(!item.getImageIsInvalid());
}

void tst_PixMapItem::bitmapFilesOf32BitsAreRefused()
{
    PixMapItem item;
    QVERIFY(!item.loadItemFromFile(written(m_folder, u"deep.bmp"_s, Pictures::bitmapFile(32, '\x40'))));
    QVERIFY(item.pixmap().isNull());
    QVERIFY(item.loadItemFromFile(written(m_folder, u"plain.bmp"_s, Pictures::bitmapFile(24, '\x40'))));
    QCOMPARE(item.pixmap().size(), QSize(2, 2));
    QCOMPARE(item.pixmap().toImage().pixel(1, 1), qRgb(0x40, 0x40, 0x40));
}

void tst_PixMapItem::largePictureIsMadeSmaller_data()
{
    QTest::addColumn<QSize>("size");
    QTest::addColumn<QSize>("expected");
    // 13,824 / 20,000 of 100 is 69.12.
    QTest::newRow("wide") << QSize(20'000, 100) << QSize(13'824, 69);
    QTest::newRow("high") << QSize(100, 20'000) << QSize(69, 13'824);
    QTest::newRow("at the limit") << QSize(13'824, 50) << QSize(13'824, 50);
    QTest::newRow("one more") << QSize(13'825, 50) << QSize(13'824, 49);
    QTest::newRow("a column of pixels") << QSize(1, 20'000) << QSize(1, 13'824);
    QTest::newRow("a line of pixels") << QSize(20'000, 1) << QSize(13'824, 1);
    QTest::newRow("square") << QSize(40, 40) << QSize(40, 40);
    QTest::newRow("one pixel") << QSize(1, 1) << QSize(1, 1);
}

void tst_PixMapItem::largePictureIsMadeSmaller()
{
    QFETCH(const QSize, size);
    QFETCH(const QSize, expected);
    const QImage image = plain(size, red, QImage::Format_RGB32);
    PixMapItem item;
    QVERIFY(item.loadItemFromFile(written(m_folder, u"large.png"_s, encoded(image, "PNG"))));
    QCOMPARE(item.pixmap().size(), expected);
    QCOMPARE(item.getItemSize(), QSizeF(expected));
}

void tst_PixMapItem::columnsOfALargePictureMerge()
{
    QImage image(20'000, 100, QImage::Format_Grayscale8);
    for (int y = 0; y < image.height(); ++y) {
        uchar *row = image.scanLine(y);
        for (int x = 0; x < image.width(); ++x)
            row[x] = x % 2 ? 255 : 0;
    }
    PixMapItem item;
    QVERIFY(item.loadItemFromFile(written(m_folder, u"columns.png"_s, encoded(image, "PNG"))));
    const QImage merged = item.pixmap().toImage().convertToFormat(QImage::Format_Grayscale8);
    QCOMPARE(merged.size(), QSize(13'824, 69));
    // A pixel covers 20,000 / 13,824 = 1.4468 columns. The one that it covers least of gives it at least
    // 0.4468 / 1.4468 of its grey: 78.7 of 255. Fixed point arithmetic may be off by a few.
    constexpr int least = 74;
    const uchar *row = merged.constScanLine(merged.height() / 2);
    const auto [darkest, lightest] = std::minmax_element(row, row + merged.width());
    QVERIFY2(*darkest >= least, qPrintable(QString::number(*darkest)));
    QVERIFY2(*lightest <= 255 - least, qPrintable(QString::number(*lightest)));
    const double average = double(std::accumulate(row, row + merged.width(), 0)) / merged.width();
    QVERIFY2(std::abs(average - 127.5) <= 2, qPrintable(QString::number(average)));
}

void tst_PixMapItem::transparencyIsLookedFor_data()
{
    QTest::addColumn<QImage>("image");
    QTest::addColumn<bool>("transparent");
    QImage almost = plain({ 4, 4 }, red);
    almost.setPixel(3, 3, 0xFEFF0000);
    QTest::newRow("without alpha") << plain({ 4, 4 }, red, QImage::Format_RGB32) << false;
    QTest::newRow("opaque alpha") << plain({ 4, 4 }, red) << false;
    QTest::newRow("one pixel of 254") << almost << true;
    QTest::newRow("clear") << plain({ 4, 4 }, transparent) << true;
}

void tst_PixMapItem::transparencyIsLookedFor()
{
    QFETCH(const QImage, image);
    QFETCH(const bool, transparent);
    PixMapItem loaded;
    loaded.setImageHasTransparency(!transparent);
    loaded.setImageIsInvalid(true);
    QVERIFY(loaded.loadItemFromFile(written(m_folder, u"alpha.png"_s, encoded(image, "PNG"))));
    QCOMPARE(loaded.getImageHasTransparency(), transparent);
    QVERIFY(!loaded.getImageIsInvalid());

    PixMapItem imported;
    imported.setImageHasTransparency(!transparent);
    imported.setImageIsInvalid(true);
    imported.pixmapImportActions(QPixmap::fromImage(image));
    QCOMPARE(imported.getImageHasTransparency(), transparent);
    QVERIFY(!imported.getImageIsInvalid());
}

void tst_PixMapItem::refusedFileChangesNothing()
{
    PixMapItem item;
    item.pixmapImportActions(pixmapOf({ 30, 20 }, translucentRed));
    QVERIFY(!item.loadItemFromFile(m_folder.filePath(u"missing.png"_s).toUtf8()));
    QVERIFY(!item.loadItemFromFile(written(m_folder, u"text.png"_s, "no picture")));
    QCOMPARE(item.pixmap().size(), QSize(30, 20));
    QCOMPARE(item.getItemSize(), QSizeF(30, 20));
    QVERIFY(item.getImageHasTransparency());
    QVERIFY(!item.getImageIsInvalid());
}

void tst_PixMapItem::loadingKeepsTheScales()
{
    PixMapItem item;
    item.pixmapImportActions(pixmapOf({ 30, 20 }));
    item.setItemSize(QSizeF(60, 60));
    item.pixmapImportActions(pixmapOf({ 10, 10 }));
    QCOMPARE(item.getItemSize(), QSizeF(10, 10));
    QCOMPARE(item.getItemScaleX(), 2.0);
    QCOMPARE(item.getItemScaleY(), 3.0);
}

void tst_PixMapItem::importedPictureCountsItsRatio_data()
{
    QTest::addColumn<double>("ratio");
    QTest::addColumn<QSizeF>("size");
    QTest::newRow("1") << 1.0 << QSizeF(30, 21);
    QTest::newRow("2") << 2.0 << QSizeF(15, 11); // 10.5
    QTest::newRow("4") << 4.0 << QSizeF(8, 5); // 7.5 and 5.25
}

void tst_PixMapItem::importedPictureCountsItsRatio()
{
    QFETCH(const double, ratio);
    QPixmap pixmap = pixmapOf({ 30, 21 });
    pixmap.setDevicePixelRatio(ratio);
    PixMapItem item;
    item.pixmapImportActions(pixmap);
    QTEST(item.getItemSize(), "size");
}

// Reloading

void tst_PixMapItem::reloadedPictureFillsTheFrame()
{
    PixMapItem item;
    item.pixmapImportActions(pixmapOf({ 100, 100 }));
    item.setItemSize(QSizeF(200, 200));
    item.setPos(7, 9);
    QVERIFY(
        item.reloadItemFromFile(written(m_folder, u"small.png"_s, encoded(plain({ 50, 20 }, blue), "PNG"))));
    QCOMPARE(item.getItemSize(), QSizeF(200, 200));
    QCOMPARE(item.pixmap().size(), QSize(50, 20));
    QCOMPARE(item.getItemScaleX(), 4.0);
    QCOMPARE(item.getItemScaleY(), 10.0);
    compareRects(item.sceneBoundingRect(), QRectF(7, 9, 200, 200));
}

void tst_PixMapItem::reloadedPictureFillsTheTurnedFrame()
{
    PixMapItem item;
    item.pixmapImportActions(pixmapOf({ 100, 50 }));
    item.setItemRotation(90);
    item.setItemSize(QSizeF(200, 100));
    const QSizeF before = item.sceneBoundingRect().size();
    QVERIFY(
        item.reloadItemFromFile(written(m_folder, u"small.png"_s, encoded(plain({ 20, 20 }, blue), "PNG"))));
    QCOMPARE(item.getItemSize(), QSizeF(200, 100));
    const QSizeF after = item.sceneBoundingRect().size();
    QVERIFY(std::abs(before.width() - 100) < 1e-9 && std::abs(before.height() - 200) < 1e-9);
    QVERIFY(std::abs(after.width() - 100) < 1e-9 && std::abs(after.height() - 200) < 1e-9);
}

void tst_PixMapItem::reloadedTurnedPictureKeepsItsPlace_data()
{
    QTest::addColumn<double>("degrees");
    QTest::addColumn<QString>("file");
    const QString other = u"other.png"_s;
    QVERIFY(!written(m_folder, other, encoded(plain({ 20, 24 }, blue), "PNG")).isEmpty());
    const QString same = u"same.png"_s;
    QVERIFY(!written(m_folder, same, encoded(plain({ 100, 50 }, blue), "PNG")).isEmpty());
    for (const double degrees : { 30.0, 90.0, 180.0, 305.0 }) {
        QTest::addRow("another size at %g", degrees) << degrees << other;
        QTest::addRow("the same size at %g", degrees) << degrees << same;
        QTest::addRow("no picture at %g", degrees) << degrees << u"missing.png"_s;
    }
}

void tst_PixMapItem::reloadedTurnedPictureKeepsItsPlace()
{
    QFETCH(const double, degrees);
    QFETCH(const QString, file);
    PixMapItem item;
    item.pixmapImportActions(pixmapOf({ 100, 50 }));
    item.setPos(7, 9);
    item.setItemRotation(degrees);
    item.setItemSize(QSizeF(200, 120));
    const QPointF corner = item.mapToScene(0, 0);
    const QRectF bounds = item.sceneBoundingRect();
    QVERIFY(item.reloadItemFromFile(m_folder.filePath(file).toUtf8()));
    QVERIFY((item.mapToScene(0, 0) - corner).manhattanLength() < 1e-9);
    compareRects(item.sceneBoundingRect(), bounds);
}

void tst_PixMapItem::failedReloadLeavesABlankOfTheSameSize_data()
{
    QTest::addColumn<QSizeF>("size");
    QTest::addColumn<QSize>("pixels");
    QTest::newRow("whole") << QSizeF(60, 40) << QSize(60, 40);
    QTest::newRow("rounded") << QSizeF(60.5, 40.4) << QSize(61, 40);
    QTest::newRow("less than a pixel") << QSizeF(0.25, 40) << QSize(1, 40);
    // Beyond the limits of an image it is the pixel alone that is stretched.
    QTest::newRow("too wide") << QSizeF(65'536, 2) << QSize(1, 1);
    QTest::newRow("too large") << QSizeF(30'000, 30'000) << QSize(1, 1);
}

void tst_PixMapItem::failedReloadLeavesABlankOfTheSameSize()
{
    QFETCH(const QSizeF, size);
    QFETCH(const QSize, pixels);
    PixMapItem item;
    item.pixmapImportActions(pixmapOf({ 30, 20 }));
    item.setItemSize(size);
    QVERIFY(item.reloadItemFromFile(m_folder.filePath(u"missing.png"_s).toUtf8()));
    QCOMPARE(item.getItemSize(), size);
    QCOMPARE(item.pixmap().size(), pixels);
    QVERIFY(item.getImageIsInvalid());
    QVERIFY(item.getImageHasTransparency());
    QVERIFY(std::abs(item.sceneBoundingRect().width() - size.width()) <= 1e-9 * size.width());
    QVERIFY(std::abs(item.sceneBoundingRect().height() - size.height()) <= 1e-9 * size.height());
    QCOMPARE(qAlpha(item.pixmap().toImage().pixel(0, 0)), 0);
}

void tst_PixMapItem::goodReloadAfterAFailedOne()
{
    PixMapItem item;
    item.pixmapImportActions(pixmapOf({ 30, 20 }));
    QVERIFY(item.reloadItemFromFile("/nowhere/at.all"));
    QVERIFY(
        item.reloadItemFromFile(written(m_folder, u"good.png"_s, encoded(plain({ 15, 20 }, red), "PNG"))));
    QVERIFY(!item.getImageIsInvalid());
    QVERIFY(!item.getImageHasTransparency());
    QCOMPARE(item.getItemSize(), QSizeF(30, 20));
    QCOMPARE(item.getItemScaleX(), 2.0);
    QCOMPARE(item.getItemScaleY(), 1.0);
}

void tst_PixMapItem::dataNameTheFile_data()
{
    QTest::addColumn<QVariant>("data");
    QTest::addColumn<bool>("found");
    const QByteArray path = written(m_folder, u"größe.png"_s, encoded(plain({ 15, 20 }, red), "PNG"));
    QTest::newRow("bytes") << QVariant(path) << true;
    QTest::newRow("text") << QVariant(QString::fromUtf8(path)) << true;
    QTest::newRow("another") << QVariant(path + "x") << false;
    QTest::newRow("nothing") << QVariant() << false;
    QTest::newRow("number") << QVariant(5) << false;
}

void tst_PixMapItem::dataNameTheFile()
{
    QFETCH(const QVariant, data);
    QFETCH(const bool, found);
    PixMapItem item;
    item.pixmapImportActions(pixmapOf({ 30, 20 }));
    item.setItemData(data);
    QCOMPARE(item.getImageIsInvalid(), !found);
    QCOMPARE(item.pixmap().size(), found ? QSize(15, 20) : QSize(30, 20));
    QCOMPARE(item.getItemSize(), QSizeF(30, 20));
    QVERIFY(!item.getItemData().isValid());
}

void tst_PixMapItem::sizeOnUpdateTellsOfAnotherSize()
{
    PixMapItem item;
    item.pixmapImportActions(pixmapOf({ 30, 20 }));
    QVERIFY(!item.setItemSizeOnUpdate(QSizeF(30, 20)));
    QVERIFY(item.setItemSizeOnUpdate(QSizeF(60, 20)));
    QCOMPARE(item.getItemScaleX(), 2.0);
    // The same size again stretches no further.
    QVERIFY(!item.setItemSizeOnUpdate(QSizeF(60, 20)));
    QCOMPARE(item.getItemScaleX(), 2.0);
    compareRects(item.sceneBoundingRect(), QRectF(0, 0, 60, 20));
}

// Geometry

void tst_PixMapItem::boundingRectIsThePicture_data()
{
    QTest::addColumn<bool>("selectable");
    QTest::addColumn<QSize>("size");
    QTest::addColumn<QRectF>("expected");
    QTest::newRow("selectable") << true << QSize(30, 20) << QRectF(0, 0, 30, 20);
    QTest::newRow("not selectable") << false << QSize(30, 20) << QRectF(0, 0, 30, 20);
    QTest::newRow("one pixel") << true << QSize(1, 1) << QRectF(0, 0, 1, 1);
    QTest::newRow("selectable nothing") << true << QSize() << QRectF();
    QTest::newRow("not selectable nothing") << false << QSize() << QRectF();
}

void tst_PixMapItem::boundingRectIsThePicture()
{
    QFETCH(const bool, selectable);
    QFETCH(const QSize, size);
    QFETCH(const QRectF, expected);
    PixMapItem item;
    item.setFlag(QGraphicsItem::ItemIsSelectable, selectable);
    if (size.isValid())
        item.pixmapImportActions(pixmapOf(size));
    QCOMPARE(item.boundingRect(), expected);
    QPainterPath path;
    path.addRect(expected);
    QCOMPARE(item.shape(), path);
}

void tst_PixMapItem::opaqueAreaIsEmptyWithTransparency()
{
    PixMapItem item;
    item.pixmapImportActions(pixmapOf({ 30, 20 }));
    QPainterPath path;
    path.addRect(QRectF(0, 0, 30, 20));
    QCOMPARE(item.opaqueArea(), path);
    item.setImageHasTransparency(true);
    QVERIFY(item.opaqueArea().isEmpty());
}

void tst_PixMapItem::resizingScalesTheTransform_data()
{
    Resizing::addRows();
}

void tst_PixMapItem::resizingScalesTheTransform()
{
    QFETCH(const int, parameters);
    PixMapItem item;
    item.pixmapImportActions(pixmapOf({ 30, 20 }));
    item.setPos(5, 6);
    QVERIFY(Resizing::resize(item, parameters, QSizeF(90, 10)));
    QCOMPARE(item.pixmap().size(), QSize(30, 20));
    QCOMPARE(item.transform(), QTransform(3, 0, 0, 0.5, 0, 0));
    QCOMPARE(item.pos(), QPointF(5, 6));
    compareRects(item.sceneBoundingRect(), QRectF(5, 6, 90, 10));
    QVERIFY(Resizing::resize(item, parameters, QSizeF(30, 20)));
    compareRects(item.sceneBoundingRect(), QRectF(5, 6, 30, 20));
}

void tst_PixMapItem::resizingToTheSameSizeChangesNothing()
{
    PixMapItem item;
    item.pixmapImportActions(pixmapOf({ 30, 20 }));
    item.setTransform(QTransform(1, 2, 3, 4, 5, 6));
    QVERIFY(!item.setItemSize(QSizeF(30, 20)));
    QCOMPARE(item.transform(), QTransform(1, 2, 3, 4, 5, 6));
}

void tst_PixMapItem::rotationTurnsAboutTheCentreOfThePixels()
{
    PixMapItem item;
    item.pixmapImportActions(pixmapOf({ 40, 20 }));
    item.setPos(100, 100);
    item.setItemRotation(90);
    // About (20, 10): (x, y) lies at (30 - y, x - 10).
    compareRects(item.sceneBoundingRect(), QRectF(110, 90, 20, 40));
    QCOMPARE(item.pos(), QPointF(100, 100));
    QVERIFY(std::abs(item.getOldTransformCoefficientM31() - 30) < 1e-9);
    QVERIFY(std::abs(item.getOldTransformCoefficientM32() + 10) < 1e-9);
}

void tst_PixMapItem::resizingATurnedPictureKeepsItsPlace()
{
    PixMapItem item;
    item.pixmapImportActions(pixmapOf({ 40, 20 }));
    item.setItemRotation(30);
    const QPointF position = item.pos();
    const QPointF corner = item.mapToScene(0, 0);
    item.setItemSize(QSizeF(80, 60));
    // The coefficients do not depend on the scale.
    QCOMPARE(item.pos(), position);
    QVERIFY((item.mapToScene(0, 0) - corner).manhattanLength() < 1e-9);
    const QLineF side(item.mapToScene(0, 0), item.mapToScene(40, 0));
    QVERIFY(std::abs(side.length() - 80) < 1e-9);
    QVERIFY(std::abs(side.angleTo(QLineF(0, 0, 1, 0)) - 30) < 1e-9);
}

void tst_PixMapItem::firstResizeInAGroupTakesTheWholeTranslation_data()
{
    Resizing::addRows();
}

void tst_PixMapItem::firstResizeInAGroupTakesTheWholeTranslation()
{
    QFETCH(const int, parameters);
    PixMapItem item;
    item.pixmapImportActions(pixmapOf({ 40, 20 }));
    item.setPos(100, 100);
    item.setItemRotation(90);
    item.itemWasJustAddedToGroup();
    QVERIFY(Resizing::resize(item, parameters, QSizeF(80, 60)));
    // About (20, 10): (x, y), twice as wide and three times as high, lies at (30 - 3y, 2x - 10).
    compareRects(QRectF(item.pos(), QSizeF(1, 1)), QRectF(70, 110, 1, 1));
    compareRects(item.sceneBoundingRect(), QRectF(40, 100, 60, 80));
    QVERIFY(!item.getFirstResizeAfterAddedToGroup());

    // The next one keeps the place.
    QVERIFY(Resizing::resize(item, parameters, QSizeF(40, 20)));
    compareRects(item.sceneBoundingRect(), QRectF(80, 100, 20, 40));
}

void tst_PixMapItem::reloadInAGroupTakesTheWholeTranslation()
{
    PixMapItem item;
    item.pixmapImportActions(pixmapOf({ 40, 20 }));
    item.setPos(100, 100);
    item.setItemRotation(90);
    item.itemWasJustAddedToGroup();
    QVERIFY(
        item.reloadItemFromFile(written(m_folder, u"group.png"_s, encoded(plain({ 10, 10 }, blue), "PNG"))));
    // About (5, 5), four times as wide and twice as high: (10 - 2y, 4x).
    compareRects(QRectF(item.pos(), QSizeF(1, 1)), QRectF(90, 100, 1, 1));
    compareRects(item.sceneBoundingRect(), QRectF(80, 100, 20, 40));
    QVERIFY(!item.getFirstResizeAfterAddedToGroup());
}

void tst_PixMapItem::rotationIsNormalised()
{
    PixMapItem item;
    item.setItemRotation(-90);
    QCOMPARE(item.getItemRotation(), 270.0);
    item.setItemRotation(720);
    QCOMPARE(item.getItemRotation(), 0.0);
}

// Datasource

void tst_PixMapItem::datasourceIsThatOfTheItem()
{
    PixMapItem item;
    QVERIFY(!item.isDatasourceConnected());
    for (const int id : { 0, 7, -2 }) {
        item.setItemDatasourceID(id);
        QCOMPARE(item.getDatasourceId(), id);
        QCOMPARE(item.getItemDatasourceID(), id);
        QVERIFY(item.isDatasourceConnected());
    }
    item.setItemDatasourceID(-1);
    QVERIFY(!item.isDatasourceConnected());
    item.setItemDatasourceField(u"Photo"_s);
    QCOMPARE(item.getDatasourceField(), u"Photo"_s);
    QCOMPARE(item.getItemDatasourceField(), u"Photo"_s);
}

void tst_PixMapItem::bothSignalsExist()
{
    const QMetaObject &meta = PixMapItem::staticMetaObject;
    for (const char *signature :
        { "itemDataChanged(QVariant,int,QString)", "itemDataChanged(QVariant,QString)" })
        QCOMPARE(meta.method(meta.indexOfSignal(signature)).methodType(), QMetaMethod::Signal);
}

QTEST_MAIN(tst_PixMapItem)
#include "tst_pixmapitem.moc"
