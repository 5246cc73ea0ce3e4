// SPDX-License-Identifier: BSD-3-Clause
#include "items/style/printimage.h"
#include "tests/support/colours.h"
#include "tests/support/images.h"
#include "tests/support/printimages.h"

#include <QLinearGradient>
#include <QPainter>
#include <QPainterPath>
#include <QRegularExpression>
#include <QTest>

#include <limits>

using namespace Qt::StringLiterals;
using namespace Colours;
using PrintImages::Drawing;

namespace {

constexpr int height = 11;
const Qt::ImageConversionFlags usualDither = Qt::MonoOnly | Qt::DiffuseAlphaDither;

/// From white on the left to black on the right.
QBrush shadedAcross(int width)
{
    QLinearGradient gradient(0, 0, width, 0);
    gradient.setStops({ { 0.0, white }, { 1.0, black } });
    return gradient;
}

/// Draws the whole width, so that only the area decides what is left.
void drawEverything(QPainter &painter)
{
    painter.drawRect(QRectF(-5, -5, 100, 100));
}

QImage printed(const QSizeF &size, const Drawing &drawArea)
{
    return ditheredPrintImage(size, Qt::NoPen, black, usualDither, drawEverything, drawArea);
}

} // namespace

class tst_PrintImage : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    void imageMatchesItsDefinition_data();
    void imageMatchesItsDefinition();
    void areaDecidesWhatIsLeft();
    void areaMayDropItsOutline();
    void drawingWithoutAnAreaIsTransparent();
    void areaWithoutADrawingIsWhite();
    void sizeIsRounded_data();
    void sizeIsRounded();
    void sizesOutOfBoundsGiveANullImage_data();
    void sizesOutOfBoundsGiveANullImage();
};

void tst_PrintImage::imageMatchesItsDefinition_data()
{
    QTest::addColumn<int>("width");
    QTest::addColumn<Qt::ImageConversionFlags>("dither");
    QTest::addColumn<bool>("outlined");

    // A byte of a one-bit picture holds eight pixels: every rest of a row with none, one and two whole bytes.
    for (int width = 1; width <= 17; ++width) {
        for (const bool outlined : { true, false }) {
            QTest::addRow("%d wide, diffused%s", width, outlined ? ", outlined" : "")
                << width << usualDither << outlined;
            QTest::addRow("%d wide, threshold%s", width, outlined ? ", outlined" : "")
                << width << (Qt::MonoOnly | Qt::ThresholdDither) << outlined;
            QTest::addRow("%d wide, ordered%s", width, outlined ? ", outlined" : "")
                << width << (Qt::MonoOnly | Qt::OrderedDither) << outlined;
        }
    }
}

void tst_PrintImage::imageMatchesItsDefinition()
{
    QFETCH(const int, width);
    QFETCH(const Qt::ImageConversionFlags, dither);
    QFETCH(const bool, outlined);
    const QPen pen(red, 2.0);
    const QBrush brush = shadedAcross(width);
    const auto drawArea = [width, outlined](QPainter &painter) {
        if (!outlined)
            painter.setPen(Qt::NoPen);
        painter.drawEllipse(QRectF(0.5, 1.5, width - 1.0, height - 4.0));
    };
    const auto draw
        = [width](QPainter &painter) { painter.drawRect(QRectF(0, 0, width - 1.0, height - 1.0)); };

    const QImage image = ditheredPrintImage(QSizeF(width, height), pen, brush, dither, draw, drawArea);
    QCOMPARE(image.format(), QImage::Format_ARGB32_Premultiplied);
    const QString difference = Images::difference(image,
        PrintImages::ditheredStepByStep({ width, height }, pen, brush, dither, draw, drawArea), u"print"_s);
    QVERIFY2(difference.isEmpty(), qPrintable(difference));
}

void tst_PrintImage::areaDecidesWhatIsLeft()
{
    // A triangle with its right angle in the upper left corner, as rows of full pixels.
    const QImage image = printed({ 4, 4 }, [](QPainter &painter) {
        painter.setPen(Qt::NoPen);
        for (int row = 0; row < 4; ++row)
            painter.drawRect(0, row, 4 - row, 1);
    });
    const QRgb b = blackPixel;
    const QRgb c = clearPixel;
    const QString difference = Images::difference(image,
        Images::imageOf({ { b, b, b, b }, { b, b, b, c }, { b, b, c, c }, { b, c, c, c } }), u"area"_s);
    QVERIFY2(difference.isEmpty(), qPrintable(difference));
}

void tst_PrintImage::areaMayDropItsOutline()
{
    const auto coveredBy = [](const QImage &image) {
        QRect covered;
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x)
                covered |= image.pixel(x, y) == clearPixel ? QRect() : QRect(x, y, 1, 1);
        }
        return covered;
    };
    // The outline of one pixel lies half a pixel outside on the right and below.
    QCOMPARE(coveredBy(printed({ 20, 20 }, [](QPainter &painter) { painter.drawRect(2, 3, 10, 5); })),
        QRect(2, 3, 11, 6));
    QCOMPARE(coveredBy(printed({ 20, 20 },
                 [](QPainter &painter) {
                     painter.setPen(Qt::NoPen);
                     painter.drawRect(2, 3, 10, 5);
                 })),
        QRect(2, 3, 10, 5));
}

void tst_PrintImage::drawingWithoutAnAreaIsTransparent()
{
    const QImage image = printed({ 9, 9 }, [](QPainter & /*painter*/) {});
    QCOMPARE(Images::coloursOf(image), QSet<QRgb> { clearPixel });
}

void tst_PrintImage::areaWithoutADrawingIsWhite()
{
    const QImage image = ditheredPrintImage(
        { 9, 9 }, QPen(red), black, usualDither, [](QPainter & /*painter*/) {}, drawEverything);
    QCOMPARE(Images::coloursOf(image), QSet<QRgb> { whitePixel });
}

void tst_PrintImage::sizeIsRounded_data()
{
    QTest::addColumn<QSizeF>("size");
    QTest::addColumn<QSize>("pixels");

    QTest::newRow("whole") << QSizeF(12, 7) << QSize(12, 7);
    QTest::newRow("halves go up") << QSizeF(12.5, 0.5) << QSize(13, 1);
    QTest::newRow("less than half goes down") << QSizeF(12.49, 7.49) << QSize(12, 7);
    QTest::newRow("longest side") << QSizeF(65535, 1) << QSize(65535, 1);
}

void tst_PrintImage::sizeIsRounded()
{
    QFETCH(const QSizeF, size);
    QTEST(printed(size, drawEverything).size(), "pixels");
}

void tst_PrintImage::sizesOutOfBoundsGiveANullImage_data()
{
    QTest::addColumn<QSizeF>("size");

    constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();
    constexpr double infinity = std::numeric_limits<double>::infinity();
    QTest::newRow("empty") << QSizeF(0, 0);
    QTest::newRow("rounded to nothing") << QSizeF(0.49, 10);
    QTest::newRow("negative") << QSizeF(10, -10);
    QTest::newRow("no number") << QSizeF(notANumber, 10);
    QTest::newRow("infinite") << QSizeF(10, infinity);
    QTest::newRow("negative infinite") << QSizeF(10, -infinity);
    QTest::newRow("too long a side") << QSizeF(65536, 1);
    QTest::newRow("too many pixels") << QSizeF(16000, 8001);
    QTest::newRow("beyond every integer") << QSizeF(1e300, 1e300);
}

void tst_PrintImage::sizesOutOfBoundsGiveANullImage()
{
    QFETCH(const QSizeF, size);
    int drawings = 0;
    const auto draw = [&drawings](QPainter & /*painter*/) { ++drawings; };
    QVERIFY(ditheredPrintImage(size, Qt::NoPen, black, usualDither, draw, draw).isNull());
    QCOMPARE(drawings, 0);
}

QTEST_MAIN(tst_PrintImage)
#include "tst_printimage.moc"
