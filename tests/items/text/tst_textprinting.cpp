// SPDX-License-Identifier: BSD-3-Clause
#include "items/text/simpletextitem.h"
#include "tests/support/colours.h"
#include "tests/support/images.h"
#include "tests/support/labeltexts.h"
#include "tests/support/nearness.h"

#include <QPainter>
#include <QRegularExpression>
#include <QStyleOptionGraphicsItem>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace Colours;

namespace {

/// A text whose raster has a size of round numbers.
class Sample final : public SimpleTextItem
{
public:
    explicit Sample(QSizeF size)
        : m_size(size)
    {
    }

protected:
    QRectF getReferenceRectangle() const override { return QRectF(QPointF(), m_size); }

private:
    QSizeF m_size;
};

bool isPrinted(const SimpleTextItem &label)
{
    return (label.itemFlags() & 0x01U) != 0;
}

/// What Qt draws of a text on white paper, dark dots black and the others white.
QImage textInOneBit(const SimpleTextItem &label, double scaling)
{
    const QSizeF size = LabelTexts::naturalSizeOf(label) * scaling;
    QImage image(qRound(size.width()), qRound(size.height()), QImage::Format_Grayscale8);
    image.fill(Qt::white);
    QGraphicsTextItem text;
    text.document()->setDocumentMargin(label.document()->documentMargin());
    text.setFont(label.font());
    text.setPlainText(label.toPlainText());
    text.setDefaultTextColor(black);
    QTextOption option = text.document()->defaultTextOption();
    option.setAlignment(label.getItemAlignment());
    text.document()->setDefaultTextOption(option);
    text.setTextWidth(text.boundingRect().width());
    QPainter painter(&image);
    painter.scale(scaling, scaling);
    const QStyleOptionGraphicsItem plain;
    text.paint(&painter, &plain, nullptr);
    painter.end();
    QImage dots(image.size(), QImage::Format_RGB32);
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x)
            dots.setPixel(x, y, qGray(image.pixel(x, y)) < 128 ? blackPixel : whitePixel);
    }
    return dots;
}

/// Whether every pixel that is black in the text has the colour in the picture.
bool textShowsIn(const QImage &picture, const QImage &text, QRgb colour)
{
    for (int y = 0; y < text.height(); ++y) {
        for (int x = 0; x < text.width(); ++x) {
            if (text.pixel(x, y) == blackPixel && picture.pixel(x, y) != colour)
                return false;
        }
    }
    return Images::coloursOf(text).contains(blackPixel);
}

} // namespace

/// Texts reduced to the parts that print in one ink, and their print images.
class tst_TextPrinting : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { LabelTexts::useKnownFont(); }
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    void reduction_data();
    void reduction();
    void outlineReduction_data();
    void outlineReduction();
    void emptyTextGivesNoContrast();
    void negativeReduction_data();
    void negativeReduction();
    void reductionForgetsTheShift();
    void padsEnlargeTheRaster_data();
    void padsEnlargeTheRaster();
    void shiftIsThatOfTheScene();
    void printImageHoldsTheTextInOneBit_data();
    void printImageHoldsTheTextInOneBit();
    void onlyTheBackgroundIsDithered_data();
    void onlyTheBackgroundIsDithered();
    void outlineIsAroundTheText();
};

void tst_TextPrinting::reduction_data()
{
    QTest::addColumn<QColor>("text");
    QTest::addColumn<QColor>("fill");
    QTest::addColumn<QColor>("ink");
    QTest::addColumn<bool>("keepBlack");
    QTest::addColumn<bool>("contrast");
    QTest::addColumn<bool>("printed");
    QTest::addColumn<QColor>("newText");
    QTest::addColumn<QColor>("newFill"); // transparent: there is none any more

    const auto row
        = [](const char *name, const QColor &text, const QColor &fill, const QColor &ink, bool keep,
              bool contrast, bool printed, const QColor &newText, const QColor &newFill) {
              QTest::newRow(name) << text << fill << ink << keep << contrast << printed << newText << newFill;
          };
    row("ink", red, transparent, red, false, false, true, black, transparent);
    row("black in black", black, transparent, black, false, false, true, black, transparent);
    row("another ink", blue, transparent, red, true, true, false, white, transparent);
    row("black", black, transparent, red, false, false, false, white, transparent);
    row("black, kept", black, transparent, red, true, false, false, white, transparent);
    row("black, contrast", black, transparent, red, false, true, false, white, transparent);
    row("black, kept for contrast", black, transparent, red, true, true, true, black, transparent);

    row("black on ink", black, red, red, false, false, true, white, black);
    row("black on ink, kept", black, red, red, true, false, true, black, black);
    row("black on ink, in black", black, red, black, false, false, true, black, white);
    row("black on ink, in black, kept", black, red, black, true, false, true, black, white);
    row("black on another ink, kept", black, blue, red, true, false, false, white, white);

    row("ink on black", red, black, red, false, false, true, black, white);
    row("ink on black, kept", red, black, red, true, false, true, black, black);
    row("ink on black, contrast", red, black, red, false, true, true, black, white);
    row("ink on black, in black", red, black, black, false, false, true, white, black);

    row("white on black", white, black, red, false, false, false, white, white);
    row("white on black, kept", white, black, red, true, false, false, white, white);
    row("white on black, kept for contrast", white, black, red, true, true, true, white, black);
    row("white on black, in black", white, black, black, false, false, true, white, black);
    row("white on ink", white, red, red, false, false, true, white, black);
}

void tst_TextPrinting::reduction()
{
    QFETCH(const QColor, text);
    QFETCH(const QColor, fill);
    QFETCH(const QColor, ink);
    QFETCH(const bool, keepBlack);
    QFETCH(const bool, contrast);
    QFETCH(const bool, printed);
    QFETCH(const QColor, newText);
    QFETCH(const QColor, newFill);
    SimpleTextItem label;
    label.setItemTextColor(text);
    label.setItemFillColor(fill);
    QCOMPARE(label.resetItemColors(ink, keepBlack, contrast), printed);
    QCOMPARE(isPrinted(label), printed);
    QCOMPARE(label.getItemTextColor(), newText);
    QCOMPARE(label.defaultTextColor(), newText);
    if (newFill == transparent)
        QCOMPARE(label.getItemBrush().style(), Qt::NoBrush);
    else
        QCOMPARE(label.getItemBrush(), QBrush(newFill));
}

void tst_TextPrinting::outlineReduction_data()
{
    QTest::addColumn<QColor>("pen");
    QTest::addColumn<QColor>("fill");
    QTest::addColumn<int>("width");
    QTest::addColumn<bool>("keepBlack");
    QTest::addColumn<bool>("printed");
    QTest::addColumn<QColor>("newPen");
    QTest::addColumn<QColor>("newFill");

    QTest::newRow("black around ink, kept") << black << red << 2 << true << true << black << black;
    QTest::newRow("black around ink") << black << red << 2 << false << true << white << black;
    QTest::newRow("ink around black, kept") << red << black << 2 << true << true << black << black;
    QTest::newRow("ink around black") << red << black << 2 << false << true << black << white;
    QTest::newRow("another ink around black, kept") << blue << black << 2 << true << false << white << white;
    QTest::newRow("no width, kept") << red << black << 0 << true << false << white << white;
}

void tst_TextPrinting::outlineReduction()
{
    QFETCH(const QColor, pen);
    QFETCH(const QColor, fill);
    QFETCH(const int, width);
    QFETCH(const bool, keepBlack);
    QFETCH(const bool, printed);
    QFETCH(const QColor, newPen);
    QFETCH(const QColor, newFill);
    SimpleTextItem label;
    label.setItemTextColor(white);
    label.setItemPenWidth(ushort(width));
    label.setItemPenColor(pen);
    label.setItemFillColor(fill);
    QCOMPARE(label.havePenColor(pen), width > 0);
    QVERIFY(label.haveFillColor(fill));
    QCOMPARE(label.resetItemColors(red, keepBlack, false), printed);
    QCOMPARE(isPrinted(label), printed);
    QCOMPARE(label.getItemPenColor(), newPen);
    QCOMPARE(label.getItemFillColor(), newFill);
    QCOMPARE(label.getItemTextColor(), white);
}

void tst_TextPrinting::emptyTextGivesNoContrast()
{
    SimpleTextItem label;
    QVERIFY(label.haveTextColor(black));
    label.setItemText(QString());
    QVERIFY(!label.haveTextColor(black));
    label.setItemFillColor(red);
    QVERIFY(label.resetItemColors(red, true, false)); // for the fill
    QCOMPARE(label.getItemTextColor(), white);
}

void tst_TextPrinting::negativeReduction_data()
{
    QTest::addColumn<QColor>("text");
    QTest::addColumn<QColor>("fill");
    QTest::addColumn<QColor>("ink");
    QTest::addColumn<bool>("printed");
    QTest::addColumn<QColor>("newText");

    const auto row
        = [](const char *name, const QColor &text, const QColor &fill, const QColor &ink, bool printed,
              const QColor &newText) { QTest::newRow(name) << text << fill << ink << printed << newText; };
    row("black", black, transparent, red, true, black);
    row("white", white, transparent, red, true, black);
    row("ink", red, transparent, red, false, white);
    row("ink on ink", red, red, red, false, white);
    row("ink on black", red, black, red, true, white);
    row("black on ink", black, red, red, true, black);
    row("near white of no ink", nearWhite, transparent, transparent, false, white);
    row("near white of no ink, on black", nearWhite, black, transparent, true, white);
    row("white of no ink", white, transparent, transparent, false, white);
    row("white of no ink, on black", white, black, transparent, true, white);
    row("black of no ink", black, transparent, transparent, true, black);
    row("near white", nearWhite, transparent, red, true, black);
}

void tst_TextPrinting::negativeReduction()
{
    QFETCH(const QColor, text);
    QFETCH(const QColor, fill);
    QFETCH(const QColor, ink);
    QFETCH(const bool, printed);
    QFETCH(const QColor, newText);
    SimpleTextItem label;
    label.setItemTextColor(text);
    label.setItemFillColor(fill);
    QCOMPARE(label.resetItemColorsNegative(ink), printed);
    QCOMPARE(isPrinted(label), printed);
    QCOMPARE(label.getItemTextColor(), newText);
    QCOMPARE(label.defaultTextColor(), newText);
}

void tst_TextPrinting::reductionForgetsTheShift()
{
    SimpleTextItem label;
    label.setFramePads(QSizeF(2, 3));
    double x = 0;
    double y = 0;
    label.getItemAbsSize(x, y);
    QCOMPARE(label.ajustTextWithBorderOnImageAmount(), QSizeF(-2, -3));
    label.resetItemColors(red, false, false);
    QCOMPARE(label.ajustTextWithBorderOnImageAmount(), QSizeF(0, 0));
    label.getItemAbsSize(x, y);
    label.resetItemColorsNegative(red);
    QCOMPARE(label.ajustTextWithBorderOnImageAmount(), QSizeF(0, 0));
}

void tst_TextPrinting::padsEnlargeTheRaster_data()
{
    QTest::addColumn<QSizeF>("reference");
    QTest::addColumn<QSizeF>("pads");
    QTest::addColumn<double>("scaling");
    QTest::addColumn<QSize>("size");
    QTest::addColumn<QPointF>("scaledPads");

    QTest::newRow("no pads") << QSizeF(100, 50) << QSizeF(0, 0) << 1.0 << QSize(100, 50) << QPointF(0, 0);
    QTest::newRow("pads") << QSizeF(100, 50) << QSizeF(2, 3) << 1.0 << QSize(104, 56) << QPointF(2, 3);
    QTest::newRow("scaled") << QSizeF(100, 50) << QSizeF(2, 3) << 2.0 << QSize(208, 112) << QPointF(4, 6);
    QTest::newRow("halves") << QSizeF(100.5, 50.25) << QSizeF(0, 0.125) << 1.0 << QSize(101, 51)
                            << QPointF(0, 0.125);
    QTest::newRow("rounded once") << QSizeF(100.25, 50) << QSizeF(0.25, 0.125) << 1.0 << QSize(101, 50)
                                  << QPointF(0.25, 0.125);
}

void tst_TextPrinting::padsEnlargeTheRaster()
{
    QFETCH(const QSizeF, reference);
    QFETCH(const QSizeF, pads);
    QFETCH(const double, scaling);
    QFETCH(const QSize, size);
    QFETCH(const QPointF, scaledPads);
    Sample label(reference);
    label.setFramePads(pads);
    label.setPrintScaling(scaling);
    double x = -1;
    double y = -1;
    QCOMPARE(label.getItemAbsSize(x, y), size);
    QCOMPARE(QPointF(x, y), scaledPads);
}

void tst_TextPrinting::shiftIsThatOfTheScene()
{
    Sample label(QSizeF(100, 50));
    label.setFramePads(QSizeF(2.4, 2.6));
    label.setPos(40, 50);
    label.setTransform(QTransform().rotate(90));
    double x = 0;
    double y = 0;
    label.getItemAbsSize(x, y);
    // Whole pixels: (-2, -3) turned by a quarter.
    const QSizeF shift = label.ajustTextWithBorderOnImageAmount();
    QVERIFY(areNear(QPointF(shift.width(), shift.height()), QPointF(3, -2)));
}

void tst_TextPrinting::printImageHoldsTheTextInOneBit_data()
{
    QTest::addColumn<double>("scaling");
    QTest::addColumn<int>("dither");
    for (const double scaling : { 1.0, 2.0, 3.3 }) {
        for (const auto dither : { Qt::DiffuseDither, Qt::OrderedDither, Qt::ThresholdDither })
            QTest::addRow("scaling %g, dither %x", scaling, uint(dither)) << scaling << int(dither);
    }
}

void tst_TextPrinting::printImageHoldsTheTextInOneBit()
{
    QFETCH(const double, scaling);
    QFETCH(const int, dither);
    SimpleTextItem label;
    label.setPrintScaling(scaling);
    label.setPrintDitherMethod(Qt::ImageConversionFlags(dither));
    label.setItemBrushStyle(MobraTypes::BrushNone);
    const QImage text = textInOneBit(label, scaling);
    label.preparePrintImage();
    const QImage image = label.getPreprintedImage();
    QCOMPARE(Images::coloursOf(image), (QSet<QRgb> { blackPixel, whitePixel }));
    QCOMPARE(Images::difference(image, text, u"text-print"_s), QString());
}

void tst_TextPrinting::onlyTheBackgroundIsDithered_data()
{
    QTest::addColumn<QColor>("text");
    QTest::newRow("black text") << black;
    QTest::newRow("white text") << white;
}

void tst_TextPrinting::onlyTheBackgroundIsDithered()
{
    QFETCH(const QColor, text);
    SimpleTextItem label;
    label.setItemTextColor(text);
    label.setItemPenColor(red); // which is the outline's
    label.setItemFillColor(QColor(128, 128, 128));
    label.setPrintScaling(2.0);
    const QImage glyphs = textInOneBit(label, 2.0);
    label.preparePrintImage();
    const QImage image = label.getPreprintedImage();
    QCOMPARE(image.size(), glyphs.size());
    QCOMPARE(Images::coloursOf(image), (QSet<QRgb> { blackPixel, whitePixel }));
    QVERIFY(textShowsIn(image, glyphs, text.rgb()));
    // Grey needs both colours, well away from the text.
    QCOMPARE(
        Images::coloursOf(image.copy(0, 0, image.width() - 1, 8)), (QSet<QRgb> { blackPixel, whitePixel }));
}

void tst_TextPrinting::outlineIsAroundTheText()
{
    SimpleTextItem label;
    label.setPos(40, 50);
    label.setItemBrushStyle(MobraTypes::BrushNone);
    const QImage text = textInOneBit(label, 1.0);
    label.setItemPenWidth(3);
    QCOMPARE(label.getFramePads(), QSizeF(3, 3));
    label.preparePrintImage();
    const QImage image = label.getPreprintedImage();
    QCOMPARE(image.size(), text.size() + QSize(6, 6));
    QCOMPARE(Images::difference(image.copy(QRect(QPoint(3, 3), text.size())), text, u"text-outlined"_s),
        QString());
    QCOMPARE(Images::coloursOf(image.copy(0, 0, image.width(), 2)), QSet<QRgb> { blackPixel });
    QCOMPARE(Images::coloursOf(image.copy(0, 0, 2, image.height())), QSet<QRgb> { blackPixel });
    // The raster covers the area that the text and its outline covered.
    QCOMPARE(label.pos(), QPointF(37, 47));
}

QTEST_MAIN(tst_TextPrinting)
#include "tst_textprinting.moc"
