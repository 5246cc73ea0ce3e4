// SPDX-License-Identifier: BSD-3-Clause
#include "items/shapes/rectangleitem.h"
#include "tests/support/colours.h"
#include "tests/support/images.h"
#include "tests/support/printimages.h"

#include <QPainter>
#include <QRegularExpression>
#include <QTest>

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
    item.setItemPenStyle(penStyle);
    PrintImages::prepare(item, size, scaling, penWidth, brushStyle, dither);
    PrintImages::compare(item, printImageStepByStep(item));
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
    // From white at the top to black at the bottom: about an eighth, and about seven eighths, of a quarter's
    // pixels.
    QVERIFY(qAbs(PrintImages::blackPixelsIn(image, { 0, 0, 200, 50 }) - 1250) < 150);
    QVERIFY(qAbs(PrintImages::blackPixelsIn(image, { 0, 150, 200, 50 }) - 8750) < 150);
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
    item.setItemPalette({ blue, red, yellow });

    RectangleItem blackened;
    item.copyItemProperties(&blackened, true);
    blackened.setItemFillColor(black);
    const QImage expected
        = PrintImages::inked(printImageStepByStep(blackened), { 40, 20 }, redPixel, yellowPixel);
    const QString difference = Images::difference(item.partialColorRender(), expected, u"partial"_s);
    QVERIFY2(difference.isEmpty(), qPrintable(difference));
}

QTEST_MAIN(tst_RectanglePrinting)
#include "tst_rectangleprinting.moc"
