// SPDX-License-Identifier: BSD-3-Clause
#include "items/shapes/rectangleitem.h"
#include "tests/support/colours.h"
#include "tests/support/images.h"
#include "tests/support/printimages.h"

#include <QGraphicsPixmapItem>
#include <QGraphicsScene>
#include <QPainter>
#include <QRegularExpression>
#include <QTest>

#include <limits>

using namespace Qt::StringLiterals;
using namespace Colours;
using Images::coloursOf;
using Images::pictureOf;

namespace {

/// The print image made step by step as it is defined, with nothing but Qt.
QImage printImageStepByStep(RectangleItem &item)
{
    const double scaling = item.getScaling();
    const double width = item.getItemWidth() * scaling;
    const double height = item.getItemHeight() * scaling;
    QPen pen = item.getItemPen();
    const double penWidth = pen.widthF() * scaling;
    pen.setWidthF(penWidth);
    item.updateItemBrush();
    const QRectF rect(penWidth / 2, penWidth / 2, width - penWidth, height - penWidth);

    const auto draw = [&rect](QPainter &painter) { painter.drawRect(rect); };
    return PrintImages::ditheredStepByStep(
        { qRound(width), qRound(height) }, pen, item.getItemBrush(), item.getPrintDitherMethod(), draw, draw);
}

} // namespace

class tst_RectanglePrinting : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    void printImageMatchesItsDefinition_data();
    void printImageMatchesItsDefinition();
    void blackFillPrintsBlack_data();
    void blackFillPrintsBlack();
    void emptyFillPrintsTheOutlineOnWhite();
    void gradientPrintsInBlackAndWhite();
    void sizesWithoutPixelsHaveNoPrintImage_data();
    void sizesWithoutPixelsHaveNoPrintImage();
    void reducedGradientReachesThePrintSceneAsItsImage();
    void partialRenderingShowsThePrintImageInItsInk_data();
    void partialRenderingShowsThePrintImageInItsInk();
};

void tst_RectanglePrinting::printImageMatchesItsDefinition_data()
{
    QTest::addColumn<QSizeF>("size");
    QTest::addColumn<double>("scaling");
    QTest::addColumn<int>("penWidth");
    QTest::addColumn<Qt::PenStyle>("penStyle");
    QTest::addColumn<int>("brushStyle");
    QTest::addColumn<int>("dither");

    const struct
    {
        int width;
        Qt::PenStyle style;
    } pens[] = { { 1, Qt::SolidLine }, { 5, Qt::DashLine }, { 12, Qt::SolidLine }, { 3, Qt::NoPen } };
    for (const QSizeF &size : { QSizeF(100, 60), QSizeF(7.5, 3.25) }) {
        for (const double scaling : { 1.0, 2.0, 0.5, 3.0 }) {
            for (const auto &pen : pens) {
                for (const int brush : { 0, 1, 4, 11, 15, 16, 17 }) {
                    for (const int dither : { 0x0A, int(Qt::MonoOnly | Qt::ThresholdDither) })
                        QTest::addRow("%g high, x %g, pen %d of style %d, brush %d, dither %d", size.height(),
                            scaling, pen.width, int(pen.style), brush, dither)
                            << size << scaling << pen.width << pen.style << brush << dither;
                }
            }
        }
    }
}

void tst_RectanglePrinting::printImageMatchesItsDefinition()
{
    QFETCH(const QSizeF, size);
    QFETCH(const double, scaling);
    QFETCH(const int, penWidth);
    QFETCH(const Qt::PenStyle, penStyle);
    QFETCH(const int, brushStyle);
    QFETCH(const int, dither);
    RectangleItem item;
    item.setItemSize(size);
    item.setItemPenColor(QColor(0, 96, 192));
    item.setItemPenWidth(static_cast<ushort>(penWidth));
    item.setItemPenStyle(penStyle);
    item.setItemFillColor(QColor(192, 64, 0));
    item.setItemBrushStyleInt(brushStyle);
    item.setPrintDitherMethod(QFlag(dither));
    item.setPrintScaling(scaling);
    item.preparePrintImage();

    const QImage image = item.getPreprintedImage();
    QCOMPARE(image.format(), QImage::Format_ARGB32_Premultiplied);
    const QString difference = Images::difference(image, printImageStepByStep(item), u"print-image"_s);
    QVERIFY2(difference.isEmpty(), qPrintable(difference));
    QVERIFY((QSet<QRgb> { blackPixel, whitePixel, clearPixel }).contains(coloursOf(image)));
}

void tst_RectanglePrinting::blackFillPrintsBlack_data()
{
    QTest::addColumn<double>("scaling");
    QTest::addColumn<int>("penWidth");
    QTest::addColumn<QRect>("covered");

    QTest::newRow("hairline") << 1.0 << 1 << QRect(0, 0, 20, 10);
    // The mask is drawn with a pen of 1 about the middle of the scaled outline, so wide outlines lose their
    // outer half.
    QTest::newRow("hairline, doubled") << 2.0 << 1 << QRect(1, 1, 39, 19);
    QTest::newRow("pen of 4") << 1.0 << 4 << QRect(2, 2, 17, 7);
    QTest::newRow("no pen") << 1.0 << 0 << QRect(0, 0, 20, 10);
}

void tst_RectanglePrinting::blackFillPrintsBlack()
{
    QFETCH(const double, scaling);
    QFETCH(const int, penWidth);
    QFETCH(const QRect, covered);
    RectangleItem item;
    item.setItemSize(QSizeF(20, 10));
    item.setItemPenWidth(static_cast<ushort>(penWidth));
    item.setItemFillColor(black);
    item.setPrintScaling(scaling);
    item.preparePrintImage();

    QImage expected(qRound(20 * scaling), qRound(10 * scaling), QImage::Format_ARGB32_Premultiplied);
    expected.fill(clearPixel);
    QPainter(&expected).fillRect(covered, black);
    const QString difference = Images::difference(item.getPreprintedImage(), expected, u"print-black"_s);
    QVERIFY2(difference.isEmpty(), qPrintable(difference));
}

void tst_RectanglePrinting::emptyFillPrintsTheOutlineOnWhite()
{
    RectangleItem item;
    item.setItemSize(QSizeF(20, 10));
    item.preparePrintImage();
    const QImage expected
        = pictureOf({ 20, 10 }, { { QRect(0, 0, 20, 10), black }, { QRect(1, 1, 18, 8), white } });
    const QString difference = Images::difference(item.getPreprintedImage(), expected, u"print-outline"_s);
    QVERIFY2(difference.isEmpty(), qPrintable(difference));
}

void tst_RectanglePrinting::gradientPrintsInBlackAndWhite()
{
    RectangleItem item;
    item.setItemPenStyle(Qt::NoPen);
    item.setItemFillColor(black);
    item.setItemBrushStyle(MobraTypes::BrushLinearGradient);
    item.setPrintScaling(2.0);
    item.preparePrintImage();

    const QImage image = item.getPreprintedImage();
    QCOMPARE(image.size(), QSize(200, 200));
    QCOMPARE(coloursOf(image), (QSet<QRgb> { blackPixel, whitePixel }));
    const auto blackIn = [&image](int top, int height) {
        int count = 0;
        for (int y = top; y < top + height; ++y) {
            for (int x = 0; x < image.width(); ++x)
                count += image.pixel(x, y) == blackPixel ? 1 : 0;
        }
        return count;
    };
    // From white at the top to black at the bottom: about an eighth, and about seven eighths, of a quarter's
    // pixels.
    QVERIFY(qAbs(blackIn(0, 50) - 1250) < 150);
    QVERIFY(qAbs(blackIn(150, 50) - 8750) < 150);
}

void tst_RectanglePrinting::sizesWithoutPixelsHaveNoPrintImage_data()
{
    QTest::addColumn<QSizeF>("size");

    QTest::newRow("empty") << QSizeF(0, 0);
    QTest::newRow("no height") << QSizeF(10, 0);
    QTest::newRow("rounded to nothing") << QSizeF(10, 0.4);
    QTest::newRow("negative") << QSizeF(-10, 10);
    QTest::newRow("not a number") << QSizeF(std::numeric_limits<double>::quiet_NaN(), 10);
    QTest::newRow("infinite") << QSizeF(std::numeric_limits<double>::infinity(), 10);
    QTest::newRow("huge") << QSizeF(1e9, 1e9);
}

void tst_RectanglePrinting::sizesWithoutPixelsHaveNoPrintImage()
{
    QFETCH(const QSizeF, size);
    RectangleItem item;
    item.setItemSize(size);
    item.setItemFillColor(red);
    item.setItemBrushStyle(MobraTypes::BrushLinearGradient);
    item.preparePrintImage();
    QVERIFY(item.getPreprintedImage().isNull());
}

void tst_RectanglePrinting::reducedGradientReachesThePrintSceneAsItsImage()
{
    RectangleItem item;
    item.setItemSize(QSizeF(40, 20));
    item.setPos(10, 20);
    item.setItemPenStyle(Qt::NoPen);
    item.setItemFillColor(red);
    item.setItemBrushStyle(MobraTypes::BrushLinearGradient);
    item.setPrintScaling(2.0);
    QVERIFY(item.resetItemColors(red, true, true));
    QCOMPARE(item.itemFlags(), 0x83U);
    QCOMPARE(coloursOf(item.getPreprintedImage()), (QSet<QRgb> { blackPixel, whitePixel }));

    QGraphicsScene scene;
    QVERIFY(item.addItemToPrintScene(&scene, 2.0));
    QCOMPARE(scene.items().size(), 1);
    const auto *pixmap = qgraphicsitem_cast<QGraphicsPixmapItem *>(scene.items().first());
    QVERIFY(pixmap);
    QCOMPARE(pixmap->pos(), QPointF(20, 40));
    QCOMPARE(pixmap->pixmap().size(), QSize(80, 40));
    QVERIFY(!item.scene());
}

void tst_RectanglePrinting::partialRenderingShowsThePrintImageInItsInk_data()
{
    QTest::addColumn<double>("scaling");

    QTest::newRow("plain") << 1.0;
    QTest::newRow("cut from a larger print image") << 2.0;
    QTest::newRow("padded to the size of the item") << 0.5;
}

void tst_RectanglePrinting::partialRenderingShowsThePrintImageInItsInk()
{
    QFETCH(const double, scaling);
    RectangleItem item;
    item.setItemSize(QSizeF(39.5, 20));
    item.setItemPenStyle(Qt::NoPen);
    item.setItemFillColor(red);
    item.setItemBrushStyle(MobraTypes::BrushLinearGradient);
    item.setPrintScaling(scaling);
    item.setItemPalette({ blue, red, QColor(255, 255, 0) });

    RectangleItem blackened;
    item.copyItemProperties(&blackened, true);
    blackened.setItemFillColor(black);
    const QImage printImage = printImageStepByStep(blackened);
    QImage expected(40, 20, QImage::Format_ARGB32_Premultiplied);
    expected.fill(clearPixel);
    for (int y = 0; y < qMin(20, printImage.height()); ++y) {
        for (int x = 0; x < qMin(40, printImage.width()); ++x) {
            if (printImage.pixel(x, y) == blackPixel)
                expected.setPixel(x, y, 0xFFFF0000);
            else if (printImage.pixel(x, y) == whitePixel)
                expected.setPixel(x, y, 0xFFFFFF00);
        }
    }
    const QString difference = Images::difference(item.partialColorRender(), expected, u"partial"_s);
    QVERIFY2(difference.isEmpty(), qPrintable(difference));
}

QTEST_MAIN(tst_RectanglePrinting)
#include "tst_rectangleprinting.moc"
