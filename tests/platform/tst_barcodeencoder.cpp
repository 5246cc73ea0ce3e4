// SPDX-License-Identifier: BSD-3-Clause
#include "platform/zint/barcodeencoder.h"
#include "platform/zint/geometryof.h"
#include "tests/support/barcodes.h"
#include "tests/support/barcodesamples.h"
#include "tests/support/encodercalls.h"

#include <QImage>
#include <QPainter>
#include <QRegularExpression>
#include <QTest>

#include <functional>
#include <limits>

using namespace Qt::StringLiterals;
using Barcodes::barcode;
using Zint::QZint;

using Action = std::function<void(QZint &)>;
Q_DECLARE_METATYPE(Action)

namespace {

int painted(const QZint &barcode, const QColor &paper = Qt::white)
{
    QImage image(120, 120, QImage::Format_RGB32);
    image.fill(paper);
    QPainter painter(&image);
    barcode.render(painter, QRectF(0, 0, 120, 120), QZint::IgnoreAspectRatio);
    painter.end();
    int others = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x)
            others += image.pixelColor(x, y) == paper ? 0 : 1;
    }
    return others;
}

} // namespace

/// The barcode's values, when it is encoded, and what comes of it.
class tst_BarcodeEncoder : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    void aNewBarcodeIsAnEmptyCode128();
    void everyValueIsKept();
    void valuesThatMakeNoSenseAreKept();
    void nothingIsEncodedBeforeItIsAskedFor();
    void questionsEncodeOnce();
    void changesEncodeAnew_data();
    void changesEncodeAnew();
    void looksDoNotEncodeAnew_data();
    void looksDoNotEncodeAnew();
    void equalValuesDoNotEncodeAnew();
    void copiesShareTheSymbol();
    void assignmentSharesTheSymbol();
    void geometryOutlivesTheBarcode();
    void errorsAreThoseOfTheEncoder_data();
    void errorsAreThoseOfTheEncoder();
    void maxiCodeChoosesItsMode();
    void encodedTextIsWhatPeopleRead_data();
    void encodedTextIsWhatPeopleRead();
    void samplesAreEncodedAsTheyAre();
};

void tst_BarcodeEncoder::aNewBarcodeIsAnEmptyCode128()
{
    const QZint barcode;
    QCOMPARE(barcode.text(), QString());
    QCOMPARE(barcode.symbol(), 20);
    QCOMPARE(barcode.securityLevel(), -1);
    QCOMPARE(barcode.lineWidth(), 0);
    QCOMPARE(barcode.inputMode(), 1);
    QCOMPARE(barcode.borderType(), 0);
    QCOMPARE(barcode.borderWidth(), 0);
    QCOMPARE(barcode.lineHeight(), 0);
    QCOMPARE(barcode.whitespace(), 0);
    QCOMPARE(barcode.pdf417CodeWords(), 0);
    QCOMPARE(barcode.hideText(), false);
    QCOMPARE(barcode.fontSize(), 7);
    QCOMPARE(barcode.fontStyle(), QString());
    QCOMPARE(barcode.textAlign(), 132);
    QVERIFY(!barcode.fgColor().isValid());
    QVERIFY(!barcode.bgColor().isValid());
    QCOMPARE(barcode.textAbove(), false);
    QCOMPARE(barcode.showStartStop(), false);
    QCOMPARE(barcode.fontBold(), false);
    QCOMPARE(barcode.fontItalic(), false);
    QCOMPARE(barcode.fontUnderline(), false);
    QCOMPARE(barcode.error_int(), 6);
    QCOMPARE(barcode.encodedText(), QString());
}

void tst_BarcodeEncoder::everyValueIsKept()
{
    QZint barcode;
    barcode.setText(u"B123456"_s);
    barcode.setSymbol(58);
    barcode.setSecurityLevel(2);
    barcode.setWidth(3);
    barcode.setInputMode(9);
    barcode.setBorderType(2);
    barcode.setBorderWidth(4);
    barcode.setHeight(50);
    barcode.setWhitespace(5);
    barcode.setPdf417CodeWords(1);
    barcode.setHideText(true);
    barcode.setFontSize(12);
    barcode.setFontStyle(u"Loma"_s);
    barcode.setTextAlign(1);
    barcode.setFgColor(Qt::red);
    barcode.setBgColor(Qt::yellow);
    barcode.setTextAbove(true);
    barcode.setShowStartStop(true);
    barcode.setFontBold(true);
    barcode.setFontItalic(true);
    barcode.setFontUnderline(true);

    const QZint copy = barcode;
    for (const QZint &kept : { barcode, copy }) {
        QCOMPARE(kept.text(), u"B123456"_s);
        QCOMPARE(kept.symbol(), 58);
        QCOMPARE(kept.securityLevel(), 2);
        QCOMPARE(kept.lineWidth(), 3);
        QCOMPARE(kept.inputMode(), 9);
        QCOMPARE(kept.borderType(), 2);
        QCOMPARE(kept.borderWidth(), 4);
        QCOMPARE(kept.lineHeight(), 50);
        QCOMPARE(kept.whitespace(), 5);
        QCOMPARE(kept.pdf417CodeWords(), 1);
        QCOMPARE(kept.hideText(), true);
        QCOMPARE(kept.fontSize(), 12);
        QCOMPARE(kept.fontStyle(), u"Loma"_s);
        QCOMPARE(kept.textAlign(), 1);
        QCOMPARE(kept.fgColor(), QColor(Qt::red));
        QCOMPARE(kept.bgColor(), QColor(Qt::yellow));
        QCOMPARE(kept.textAbove(), true);
        QCOMPARE(kept.showStartStop(), true);
        QCOMPARE(kept.fontBold(), true);
        QCOMPARE(kept.fontItalic(), true);
        QCOMPARE(kept.fontUnderline(), true);
    }
}

void tst_BarcodeEncoder::valuesThatMakeNoSenseAreKept()
{
    QZint barcode;
    const QString text = QString(QChar(0xD800)) + QChar(0);
    barcode.setText(text);
    barcode.setSymbol(std::numeric_limits<short>::min());
    barcode.setHeight(std::numeric_limits<int>::max());
    barcode.setFontSize(-1);
    QCOMPARE(barcode.error_int(), 6);
    QCOMPARE(barcode.text(), text);
    QCOMPARE(barcode.symbol(), -32768);
    QCOMPARE(barcode.lineHeight(), std::numeric_limits<int>::max());
    QCOMPARE(barcode.fontSize(), -1);
}

void tst_BarcodeEncoder::nothingIsEncodedBeforeItIsAskedFor()
{
    const int before = EncoderCalls::encodings();
    QZint code = barcode(58, u"B123456"_s);
    code.setText(u"B12345"_s);
    const QZint copy = code;
    QCOMPARE(copy.text(), u"B12345"_s);
    QCOMPARE(EncoderCalls::encodings(), before);
    QCOMPARE(code.error_int(), 0);
    QCOMPARE(EncoderCalls::encodings(), before + 1);
}

void tst_BarcodeEncoder::questionsEncodeOnce()
{
    const int before = EncoderCalls::encodings();
    const QZint linear = barcode(8, u"ABC"_s);
    QVERIFY(painted(linear) > 0);
    QCOMPARE(linear.encodedText(), u"*ABC*"_s);
    QCOMPARE(linear.error_int(), 0);
    QVERIFY(!Zint::geometryOf(linear)->isEmpty());
    QVERIFY(painted(linear) > 0);
    QCOMPARE(EncoderCalls::encodings(), before + 1);

    // Errors are remembered as well.
    const QZint broken = barcode(13, u"not figures"_s);
    QCOMPARE(broken.error_int(), 6);
    QCOMPARE(broken.error_int(), 6);
    QCOMPARE(painted(broken), 0);
    QCOMPARE(EncoderCalls::encodings(), before + 2);
}

void tst_BarcodeEncoder::changesEncodeAnew_data()
{
    QTest::addColumn<Action>("change");

    QTest::newRow("text") << Action([](QZint &b) { b.setText(u"DEF"_s); });
    QTest::newRow("symbol") << Action([](QZint &b) { b.setSymbol(20); });
    QTest::newRow("security level") << Action([](QZint &b) { b.setSecurityLevel(1); });
    QTest::newRow("width") << Action([](QZint &b) { b.setWidth(1); });
    QTest::newRow("input mode") << Action([](QZint &b) { b.setInputMode(0); });
    QTest::newRow("border type") << Action([](QZint &b) { b.setBorderType(1); });
    QTest::newRow("border width") << Action([](QZint &b) { b.setBorderWidth(1); });
    QTest::newRow("height") << Action([](QZint &b) { b.setHeight(10); });
    QTest::newRow("whitespace") << Action([](QZint &b) { b.setWhitespace(1); });
}

void tst_BarcodeEncoder::changesEncodeAnew()
{
    QFETCH(Action, change);
    QZint code = barcode(8, u"ABC"_s);
    QCOMPARE(code.error_int(), 0);
    const QZint untouched = code;
    const int before = EncoderCalls::encodings();
    change(code);
    QCOMPARE(EncoderCalls::encodings(), before);
    QVERIFY(painted(code) > 0);
    QCOMPARE(code.error_int(), 0);
    QCOMPARE(EncoderCalls::encodings(), before + 1);
    change(code);
    QCOMPARE(code.error_int(), 0);
    QCOMPARE(untouched.encodedText(), u"*ABC*"_s);
    QCOMPARE(EncoderCalls::encodings(), before + 1);
}

void tst_BarcodeEncoder::looksDoNotEncodeAnew_data()
{
    QTest::addColumn<Action>("change");

    QTest::newRow("code words") << Action([](QZint &b) { b.setPdf417CodeWords(1); });
    QTest::newRow("hidden text") << Action([](QZint &b) { b.setHideText(true); });
    QTest::newRow("font size") << Action([](QZint &b) { b.setFontSize(9); });
    QTest::newRow("font family") << Action([](QZint &b) { b.setFontStyle(u"Loma"_s); });
    QTest::newRow("alignment") << Action([](QZint &b) { b.setTextAlign(1); });
    QTest::newRow("foreground") << Action([](QZint &b) { b.setFgColor(Qt::red); });
    QTest::newRow("background") << Action([](QZint &b) { b.setBgColor(Qt::yellow); });
    QTest::newRow("text above") << Action([](QZint &b) { b.setTextAbove(true); });
    QTest::newRow("asterisks") << Action([](QZint &b) { b.setShowStartStop(true); });
    QTest::newRow("bold") << Action([](QZint &b) { b.setFontBold(true); });
    QTest::newRow("italic") << Action([](QZint &b) { b.setFontItalic(true); });
    QTest::newRow("underline") << Action([](QZint &b) { b.setFontUnderline(true); });
}

void tst_BarcodeEncoder::looksDoNotEncodeAnew()
{
    QFETCH(Action, change);
    QZint code = barcode(8, u"ABC"_s);
    QCOMPARE(code.error_int(), 0);
    const int before = EncoderCalls::encodings();
    change(code);
    QVERIFY(painted(code) > 0);
    QCOMPARE(EncoderCalls::encodings(), before);
}

void tst_BarcodeEncoder::equalValuesDoNotEncodeAnew()
{
    QZint code = barcode(8, u"ABC"_s);
    QCOMPARE(code.error_int(), 0);
    const int before = EncoderCalls::encodings();
    code.setText(code.text());
    code.setSymbol(code.symbol());
    code.setSecurityLevel(code.securityLevel());
    code.setWidth(code.lineWidth());
    code.setInputMode(code.inputMode());
    code.setBorderType(code.borderType());
    code.setBorderWidth(code.borderWidth());
    code.setHeight(code.lineHeight());
    code.setWhitespace(code.whitespace());
    QCOMPARE(code.error_int(), 0);
    QCOMPARE(EncoderCalls::encodings(), before);
}

void tst_BarcodeEncoder::copiesShareTheSymbol()
{
    QZint original = barcode(57, u"MaxiCode"_s);
    const auto geometry = Zint::geometryOf(original);
    const int encodings = EncoderCalls::encodings();
    const int drawings = EncoderCalls::drawings();
    QZint copy(original);
    QCOMPARE(Zint::geometryOf(copy), geometry);
    copy.setFgColor(Qt::red);
    QVERIFY(painted(copy) > 0);
    QCOMPARE(EncoderCalls::encodings(), encodings);
    QCOMPARE(EncoderCalls::drawings(), drawings);

    copy.setText(u"other"_s);
    QVERIFY(Zint::geometryOf(copy) != geometry);
    QCOMPARE(Zint::geometryOf(original), geometry);
    QCOMPARE(EncoderCalls::encodings(), encodings + 1);
    QVERIFY(!original.fgColor().isValid());
}

void tst_BarcodeEncoder::assignmentSharesTheSymbol()
{
    const QZint original = barcode(58, u"A"_s);
    QZint other = barcode(20, u"B"_s);
    const auto geometry = Zint::geometryOf(original);
    QVERIFY(Zint::geometryOf(other) != geometry);
    const int before = EncoderCalls::encodings();
    other = original;
    QCOMPARE(other.text(), u"A"_s);
    QCOMPARE(Zint::geometryOf(other), geometry);
    QCOMPARE(EncoderCalls::encodings(), before);
}

void tst_BarcodeEncoder::geometryOutlivesTheBarcode()
{
    const auto geometry = Zint::geometryOf(barcode(58, u"A"_s));
    QCOMPARE(geometry->size, QSizeF(21, 21));
    const auto none = Zint::geometryOf(QZint());
    QVERIFY(none != nullptr);
    QVERIFY(none->isEmpty());
}

void tst_BarcodeEncoder::errorsAreThoseOfTheEncoder_data()
{
    QTest::addColumn<int>("symbol");
    QTest::addColumn<QString>("text");
    QTest::addColumn<Action>("change");
    QTest::addColumn<int>("error");

    const Action none = [](QZint &) {};
    QTest::newRow("none") << 58 << u"B123456"_s << none << 0;
    QTest::newRow("unknown symbology") << 999 << u"A"_s << none << 2;
    QTest::newRow("needs another character set")
        << 58 << u"Жук"_s << Action([](QZint &b) { b.setSymbol(71); }) << 3;
    QTest::newRow("height against the rules")
        << 55 << u"A"_s << Action([](QZint &b) { b.setHeight(1); }) << 4;
    QTest::newRow("too long") << 34 << u"1234567890123456"_s << none << 5;
    QTest::newRow("no text") << 20 << QString() << none << 6;
    QTest::newRow("letters in EAN") << 13 << u"ABC"_s << none << 6;
    QTest::newRow("half a surrogate pair") << 58 << QString(QChar(0xD800)) << none << 6;
    QTest::newRow("wrong check digit") << 69 << u"9781234567890"_s << none << 7;
    QTest::newRow("wrong check digit of EAN") << 14 << u"5901234123450"_s << none << 7;
    QTest::newRow("whitespace") << 58 << u"A"_s << Action([](QZint &b) { b.setWhitespace(101); }) << 8;
    QTest::newRow("negative whitespace")
        << 58 << u"A"_s << Action([](QZint &b) { b.setWhitespace(-1); }) << 8;
    QTest::newRow("border") << 58 << u"A"_s << Action([](QZint &b) { b.setBorderWidth(101); }) << 8;
    QTest::newRow("height") << 58 << u"A"_s << Action([](QZint &b) { b.setHeight(2001); }) << 8;
    QTest::newRow("GS1 in Code 39") << 8 << u"A"_s << Action([](QZint &b) { b.setInputMode(2); }) << 8;
}

void tst_BarcodeEncoder::errorsAreThoseOfTheEncoder()
{
    QFETCH(int, symbol);
    QFETCH(QString, text);
    QFETCH(Action, change);
    QFETCH(int, error);
    QZint code = barcode(symbol, text);
    change(code);
    QCOMPARE(code.error_int(), error);
    const bool drawn = error < 5;
    QCOMPARE(painted(code) > 0, drawn);
    QCOMPARE(!Zint::geometryOf(code)->isEmpty(), drawn);
    if (!drawn)
        QCOMPARE(code.encodedText(), QString());
}

// Mode 0 is that of a second message, without which libzint refuses every text.
void tst_BarcodeEncoder::maxiCodeChoosesItsMode()
{
    QZint chosen = barcode(57, u"MaxiCode 12345"_s);
    QZint zero = chosen;
    zero.setSecurityLevel(0);
    QCOMPARE(zero.error_int(), 0);
    QCOMPARE(Zint::geometryOf(zero)->hexagons.size(), Zint::geometryOf(chosen)->hexagons.size());
    QVERIFY(painted(zero) > 0);
    QCOMPARE(painted(zero), painted(chosen));
    QCOMPARE(zero.securityLevel(), 0);
    zero.setSecurityLevel(7);
    QVERIFY(zero.error_int() >= 5);
}

void tst_BarcodeEncoder::encodedTextIsWhatPeopleRead_data()
{
    QTest::addColumn<int>("symbol");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("encodedText");

    QTest::newRow("Code 128") << 20 << u"Größe 42"_s << u"Größe 42"_s;
    QTest::newRow("start and stop of Code 39") << 8 << u"abc"_s << u"*ABC*"_s;
    QTest::newRow("check digit of EAN") << 13 << u"590123412345"_s << u"5901234123457"_s;
    QTest::newRow("EAN with add-on") << 13 << u"590123412345+12"_s << u"5901234123457+12"_s;
    QTest::newRow("check digit of UPC-A") << 34 << u"01234567890"_s << u"012345678905"_s;
    QTest::newRow("check digit of ITF-14") << 89 << u"0950600013435"_s << u"09506000134352"_s;
    QTest::newRow("application identifiers")
        << 16 << u"[01]09506000134352[10]A"_s << u"(01)09506000134352(10)A"_s;
    QTest::newRow("ISBN of ten digits") << 69 << u"123456789X"_s << u"9781234567897"_s;
    QTest::newRow("unknown symbology") << 999 << u"A"_s << u"A"_s;
    QTest::newRow("QR Code") << 58 << u"B123456"_s << QString();
    QTest::newRow("postal") << 70 << u"BX11LT1A"_s << QString();
}

void tst_BarcodeEncoder::encodedTextIsWhatPeopleRead()
{
    QFETCH(int, symbol);
    QFETCH(QString, text);
    QTEST(barcode(symbol, text).encodedText(), "encodedText");
}

void tst_BarcodeEncoder::samplesAreEncodedAsTheyAre()
{
    for (const BarcodeSamples::Sample &sample : BarcodeSamples::all) {
        const QZint code = barcode(sample.symbol, QString::fromUtf8(sample.text));
        if (BarcodeSamples::isComposite(sample)) {
            QVERIFY(code.error_int() >= 5); // there is no text for the linear part
            QCOMPARE(painted(code), 0);
        } else {
            QCOMPARE(code.error_int(), 0);
            QVERIFY(painted(code) > 0);
        }
    }
}

QTEST_MAIN(tst_BarcodeEncoder)
#include "tst_barcodeencoder.moc"
