// SPDX-License-Identifier: BSD-3-Clause
#include "platform/zint/barcodeencoder.h"
#include "tests/support/barcodes.h"
#include "tests/support/recordingpaintdevice.h"

#include <QFontDatabase>
#include <QPainter>
#include <QRegularExpression>
#include <QTest>

#include <algorithm>
#include <cmath>
#include <limits>

using namespace Qt::StringLiterals;
using Barcodes::barcode;
using Zint::QZint;
using Figure = RecordingPaintDevice::Figure;
using Kind = RecordingPaintDevice::Kind;

namespace {

const QRectF frame(100, 50, 300, 120);

/// What is painted, bars apart from the line. Places are those in the painter's own units.
struct Painting
{
    QRectF bars;
    QRectF line; ///< null if there is none
    QList<Figure> lineFigures;
};

Painting paintingOf(const QZint &code, const QRectF &rect = frame, double scale = 1.0)
{
    RecordingPaintDevice device;
    QPainter painter(&device);
    painter.scale(scale, scale);
    code.render(painter, rect, QZint::IgnoreAspectRatio);
    painter.end();

    Painting painting;
    const QTransform back = QTransform::fromScale(1.0 / scale, 1.0 / scale);
    for (const Figure &figure : device.figures()) {
        const QRectF place = (figure.transform * back).map(figure.path).boundingRect();
        if (figure.kind == Kind::Rect && figure.pen.style() == Qt::NoPen && place.height() > 20.0) {
            painting.bars |= place;
        } else {
            painting.line |= place;
            painting.lineFigures.append(figure);
        }
    }
    return painting;
}

/// A Code 128 with a line of 16 units, without the font's hinting, in a font that the tests bring along.
QZint withLine(const QString &text = u"Hxg 1"_s)
{
    QZint code = barcode(20, text);
    code.setFontStyle(u"Loma"_s);
    code.setFontSize(12);
    return code;
}

QFont fontOf(int pixels)
{
    QFont font(u"Loma"_s);
    font.setPixelSize(pixels);
    font.setHintingPreference(QFont::PreferNoHinting);
    return font;
}

/// Where the outlines of the text lie when it starts at the origin.
QRectF outlineOf(const QString &text, const QFont &font)
{
    QPainterPath path;
    path.addText(0, 0, font, text);
    return path.boundingRect();
}

/// The longest run of dark pixels in any row below the bars, in units.
double longestStroke(const QZint &code)
{
    constexpr double pixelsPerUnit = 4.0;
    QImage image((frame.size() * pixelsPerUnit).toSize(), QImage::Format_RGB32);
    image.fill(Qt::white);
    QPainter painter(&image);
    painter.scale(pixelsPerUnit, pixelsPerUnit);
    code.render(painter, QRectF(QPointF(), frame.size()), QZint::IgnoreAspectRatio);
    painter.end();
    int longest = 0;
    for (int y = int(paintingOf(code).bars.height() * pixelsPerUnit) + 1; y < image.height(); ++y) {
        for (int x = 0, run = 0; x < image.width(); ++x) {
            run = qGray(image.pixel(x, y)) < 128 ? run + 1 : 0;
            longest = std::max(longest, run);
        }
    }
    return longest / pixelsPerUnit;
}

bool isNear(double a, double b, double distance = 0.05)
{
    return std::abs(a - b) <= distance;
}

} // namespace

/// The human-readable line.
class tst_BarcodeText : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { QVERIFY(QFontDatabase::hasFamily(u"Loma"_s)); }
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    void lineLiesBelowTheBars();
    void lineLiesAboveTheBarsIfAsked();
    void lineFollowsTheHorizontalAlignment_data();
    void lineFollowsTheHorizontalAlignment();
    void aPointIsFourThirdsOfAUnit_data();
    void aPointIsFourThirdsOfAUnit();
    void lineLooksAlikeAtEveryResolution();
    void lineIsBoldOrItalicIfAsked();
    void lineIsUnderlinedIfAsked();
    void lineHasTheForegroundColour();
    void asterisksOfCode39AreShownIfAsked_data();
    void asterisksOfCode39AreShownIfAsked();
    void thereMayBeNoLine_data();
    void thereMayBeNoLine();
    void barsKeepTheRectangleThatTheLineWouldFill();
    void longLineIsMadeToFit_data() { lineFollowsTheHorizontalAlignment_data(); }
    void longLineIsMadeToFit();
    void hugeFontsAreLimited();
};

void tst_BarcodeText::lineLiesBelowTheBars()
{
    const Painting painting = paintingOf(withLine());
    QCOMPARE(painting.bars.topLeft(), frame.topLeft());
    QVERIFY(isNear(painting.bars.right(), frame.right()));
    QVERIFY(painting.line.top() > painting.bars.bottom());
    QVERIFY(painting.line.bottom() < frame.bottom());
    // A line of a font is higher than its size, and less than twice as high.
    QVERIFY(frame.bottom() - painting.bars.bottom() > 16.0);
    QVERIFY(frame.bottom() - painting.bars.bottom() < 32.0);
}

void tst_BarcodeText::lineLiesAboveTheBarsIfAsked()
{
    QZint code = withLine();
    const Painting below = paintingOf(code);
    code.setTextAbove(true);
    const Painting above = paintingOf(code);
    QVERIFY(isNear(above.bars.bottom(), frame.bottom()));
    QVERIFY(isNear(above.bars.height(), below.bars.height()));
    QVERIFY(above.line.bottom() < above.bars.top());
    QVERIFY(above.line.top() > frame.top());
    // It stands in its room as it does below.
    QVERIFY(isNear(above.line.top() - frame.top(), below.line.top() - below.bars.bottom()));
    QVERIFY(isNear(above.line.left(), below.line.left()));
}

void tst_BarcodeText::lineFollowsTheHorizontalAlignment_data()
{
    QTest::addColumn<int>("align");
    QTest::addColumn<double>("share"); // of the free room to the left of the line

    QTest::newRow("left") << int(Qt::AlignLeft) << 0.0;
    QTest::newRow("right") << int(Qt::AlignRight) << 1.0;
    QTest::newRow("centred") << int(Qt::AlignHCenter) << 0.5;
    QTest::newRow("justified") << int(Qt::AlignJustify) << 0.0;
    QTest::newRow("none") << 0 << 0.0;
    QTest::newRow("left and bottom") << int(Qt::AlignLeft | Qt::AlignBottom) << 0.0;
    QTest::newRow("right and top") << int(Qt::AlignRight | Qt::AlignTop) << 1.0;
    QTest::newRow("centred both ways") << 132 << 0.5;
    QTest::newRow("all") << -1 << 0.5;
}

void tst_BarcodeText::lineFollowsTheHorizontalAlignment()
{
    QFETCH(int, align);
    QFETCH(double, share);
    QZint code = withLine(u"HHH"_s);
    code.setTextAlign(align);
    const Painting painting = paintingOf(code);
    // An H has about as much room on its left as on its right.
    const double free = frame.width() - painting.line.width();
    QVERIFY(free > 200.0);
    QVERIFY(isNear(painting.line.left(), frame.left() + share * free, 3.0));
    QVERIFY(painting.line.top() > painting.bars.bottom());
}

void tst_BarcodeText::aPointIsFourThirdsOfAUnit_data()
{
    QTest::addColumn<int>("fontSize");
    QTest::addColumn<int>("pixels");

    QTest::newRow("1") << 1 << 1;
    QTest::newRow("7") << 7 << 9;
    QTest::newRow("8") << 8 << 11;
    QTest::newRow("12") << 12 << 16;
    QTest::newRow("30") << 30 << 40;
}

void tst_BarcodeText::aPointIsFourThirdsOfAUnit()
{
    QFETCH(int, fontSize);
    QFETCH(int, pixels);
    QZint code = withLine();
    code.setFontSize(fontSize);
    const QRectF line = paintingOf(code).line;
    const QRectF expected = outlineOf(u"Hxg 1"_s, fontOf(pixels));
    QVERIFY(isNear(line.width(), expected.width()));
    QVERIFY(isNear(line.height(), expected.height()));
}

void tst_BarcodeText::lineLooksAlikeAtEveryResolution()
{
    const Painting screen = paintingOf(withLine());
    for (const double scale : { 0.25, 3.125, 20.0 }) {
        const Painting print = paintingOf(withLine(), frame, scale);
        QVERIFY(isNear(print.line.left(), screen.line.left(), 0.2));
        QVERIFY(isNear(print.line.right(), screen.line.right(), 0.2));
        QVERIFY(isNear(print.line.top(), screen.line.top(), 0.2));
        QVERIFY(isNear(print.line.bottom(), screen.line.bottom(), 0.2));
        QVERIFY(isNear(print.bars.bottom(), screen.bars.bottom()));
    }
}

void tst_BarcodeText::lineIsBoldOrItalicIfAsked()
{
    const QString text = u"l"_s; // a stem, whose advance is the same in bold
    QZint code = withLine(text);
    const QRectF plain = paintingOf(code).line;
    code.setFontBold(true);
    const QRectF bold = paintingOf(code).line;
    code.setFontBold(false);
    code.setFontItalic(true);
    const QRectF italic = paintingOf(code).line;

    QFont font = fontOf(16);
    QVERIFY(isNear(plain.width(), outlineOf(text, font).width()));
    font.setBold(true);
    QVERIFY(isNear(bold.width(), outlineOf(text, font).width()));
    font.setBold(false);
    font.setItalic(true);
    QVERIFY(isNear(italic.width(), outlineOf(text, font).width()));
    QVERIFY(!isNear(plain.width(), bold.width()) && !isNear(plain.width(), italic.width()));
}

void tst_BarcodeText::lineIsUnderlinedIfAsked()
{
    QZint code = withLine(u"HHH"_s);
    const double width = paintingOf(code).line.width();
    QVERIFY(longestStroke(code) < width / 2.0);
    code.setFontUnderline(true);
    QVERIFY(longestStroke(code) > width);
}

void tst_BarcodeText::lineHasTheForegroundColour()
{
    QZint code = withLine();
    QCOMPARE(paintingOf(code).lineFigures.first().brush.color(), QColor(Qt::black));
    code.setFgColor(Qt::darkGreen);
    QCOMPARE(paintingOf(code).lineFigures.first().brush.color(), QColor(Qt::darkGreen));
}

void tst_BarcodeText::asterisksOfCode39AreShownIfAsked_data()
{
    QTest::addColumn<int>("symbol");
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("show");
    QTest::addColumn<QString>("shown");

    QTest::newRow("Code 39") << 8 << u"ABC"_s << false << u"ABC"_s;
    QTest::newRow("Code 39 with asterisks") << 8 << u"ABC"_s << true << u"*ABC*"_s;
    QTest::newRow("HIBC Code 39") << 99 << u"A1B2"_s << false << u"+A1B2M"_s;
    QTest::newRow("HIBC Code 39 with asterisks") << 99 << u"A1B2"_s << true << u"*+A1B2M*"_s;
    QTest::newRow("Code 128") << 20 << u"*ABC*"_s << false << u"*ABC*"_s;
    QTest::newRow("Code 39 Extended") << 9 << u"*a*"_s << false << u"*a*"_s;
}

void tst_BarcodeText::asterisksOfCode39AreShownIfAsked()
{
    QFETCH(int, symbol);
    QFETCH(QString, text);
    QFETCH(bool, show);
    QFETCH(QString, shown);
    QZint code = withLine(text);
    code.setSymbol(symbol);
    code.setShowStartStop(show);
    QCOMPARE(code.error_int(), 0);
    const Painting painting = paintingOf(code);
    QVERIFY(isNear(painting.line.width(), outlineOf(shown, fontOf(16)).width()));
}

void tst_BarcodeText::thereMayBeNoLine_data()
{
    QTest::addColumn<int>("symbol");
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("fontSize");
    QTest::addColumn<bool>("hide");

    QTest::newRow("hidden") << 20 << u"ABC"_s << 12 << true;
    QTest::newRow("none in a QR Code") << 58 << u"ABC"_s << 12 << false;
    QTest::newRow("none in a postal code") << 70 << u"BX11LT1A"_s << 12 << false;
    QTest::newRow("no font size") << 20 << u"ABC"_s << 0 << false;
    QTest::newRow("negative font size") << 20 << u"ABC"_s << -12 << false;
    QTest::newRow("least font size") << 20 << u"ABC"_s << std::numeric_limits<int>::min() << false;
    QTest::newRow("greatest font size") << 20 << u"ABC"_s << std::numeric_limits<int>::max() << false;
    QTest::newRow("font as high as the rectangle") << 20 << u"ABC"_s << 90 << false;
}

void tst_BarcodeText::thereMayBeNoLine()
{
    QFETCH(int, symbol);
    QFETCH(QString, text);
    QFETCH(int, fontSize);
    QFETCH(bool, hide);
    QZint code = withLine(text);
    code.setSymbol(symbol);
    code.setFontSize(fontSize);
    code.setHideText(hide);
    RecordingPaintDevice device;
    QPainter painter(&device);
    code.render(painter, frame, QZint::IgnoreAspectRatio);
    painter.end();
    QVERIFY(!device.figures().isEmpty());
    QCOMPARE(device.otherDrawings(), 0);
    QRectF symbolPlace;
    for (const Figure &figure : device.figures())
        symbolPlace |= figure.transform.map(figure.path).boundingRect();
    QVERIFY(isNear(symbolPlace.top(), frame.top()) && isNear(symbolPlace.bottom(), frame.bottom()));
}

void tst_BarcodeText::barsKeepTheRectangleThatTheLineWouldFill()
{
    QZint code = withLine();
    double lastHeight = frame.height();
    bool hadLine = true;
    for (int fontSize = 1; fontSize < 120; ++fontSize) {
        code.setFontSize(fontSize);
        const Painting painting = paintingOf(code, QRectF(100, 50, 300, 100));
        const bool hasLine = !painting.lineFigures.isEmpty() && painting.bars.height() < 100.0;
        QVERIFY(hadLine || !hasLine); // once there is no room, a larger font finds none either
        if (hasLine && painting.bars.height() > 0.0) {
            QVERIFY(painting.bars.height() < lastHeight + 1e-9);
            lastHeight = painting.bars.height();
        }
        hadLine = hasLine;
    }
    QVERIFY(!hadLine);
    QVERIFY(isNear(paintingOf(code, QRectF(100, 50, 300, 100)).bars.height(), 100.0));
}

void tst_BarcodeText::longLineIsMadeToFit()
{
    QFETCH(int, align);
    const QString text = u"Thirty letters, wide and narrow"_s;
    QZint code = withLine(text);
    code.setTextAlign(align);
    const QRectF narrow(100, 50, 120, 100);
    const QRectF line = paintingOf(code, narrow).line;
    // Letters reach a little beyond their advance.
    QVERIFY(line.left() > 99.0 && line.right() < 221.0);
    QVERIFY(line.width() > 100.0); // sizes of fonts are whole units
    // 16 units make it about twice as wide.
    const QRectF asked = outlineOf(text, fontOf(16));
    QVERIFY(asked.width() > 200.0);
    QVERIFY(isNear(line.height(), asked.height() * line.width() / asked.width(), 0.5));
}

void tst_BarcodeText::hugeFontsAreLimited()
{
    QZint code = withLine(u"H"_s);
    code.setFontSize(7500);
    const QRectF huge(0, 0, 1e6, 1e6);
    const QRectF atLimit = paintingOf(code, huge).line;
    QVERIFY(isNear(atLimit.height(), outlineOf(u"H"_s, fontOf(10'000)).height(), 1.0));
    for (const int fontSize : { 7501, 1'000'000, std::numeric_limits<int>::max() }) {
        code.setFontSize(fontSize);
        QCOMPARE(paintingOf(code, huge).line, atLimit);
    }
}

QTEST_MAIN(tst_BarcodeText)
#include "tst_barcodetext.moc"
