// SPDX-License-Identifier: BSD-3-Clause
#include "tests/support/answeredbarcode.h"
#include "tests/support/barcodes.h"
#include "tests/support/barcodesamples.h"
#include "tests/support/encodercalls.h"

#include <QRegularExpression>
#include <QTest>

#include <array>
#include <ctime>
#include <limits>
#include <random>

using namespace Qt::StringLiterals;
using Zint::QZint;

namespace {

constexpr int least = std::numeric_limits<int>::min();
constexpr int greatest = std::numeric_limits<int>::max();

QStringList hostileTexts()
{
    QStringList texts { QString(), QString(QChar(0)), QString(300, QChar(0)), QString(QChar(0xDC00)),
        u"\uFFFF"_s, u"\\"_s, u"\\x"_s, u"\\d256"_s, u"\\u12"_s, u"\\U110000"_s, u"\\^1"_s, u"["_s, u"[01]"_s,
        u"[]"_s, u"(01)"_s, u"[0112"_s, u"%s%n%d"_s, u"+"_s, u"123+456"_s, u"123 456+"_s, u"-1"_s, u"*"_s,
        u"\r\n\t"_s, u"\u202E abc"_s };
    for (const int length :
        { 1, 13, 127, 128, 129, 255, 256, 1000, 1360, 1850, 2710, 3832, 7089, 17400, 17401 }) {
        for (const QString &pattern :
            { u"1"_s, u"A"_s, u"aA1?"_s, u"é"_s, u"字"_s, u"\U0001F600"_s, QString(QChar(1)), u"1a"_s })
            texts.append(pattern.repeated(length));
    }
    return texts;
}

} // namespace

/// Any value gives a symbol or an error, in time.
class tst_BarcodeHostile : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    void everySymbolNumberIsAnswered();
    void everyOptionIsAnswered_data();
    void everyOptionIsAnswered();
    void everyTextIsAnswered_data();
    void everyTextIsAnswered();
    void randomValuesAreAnswered();
    void megabytesAreRefusedAtOnce();
    void idlePainterIsLeftAlone();
};

void tst_BarcodeHostile::everySymbolNumberIsAnswered()
{
    QZint code;
    code.setText(u"1234567"_s);
    for (int number = -200; number < 400; ++number) {
        code.setSymbol(number);
        QVERIFY2(Barcodes::isAnswered(code), qPrintable(QString::number(number)));
    }
    for (const int number : { least, -32768, 32767, 65536 + 58, greatest }) {
        code.setSymbol(number);
        QVERIFY(Barcodes::isAnswered(code));
        QCOMPARE(code.error_int(), 2);
    }
}

void tst_BarcodeHostile::everyOptionIsAnswered_data()
{
    QTest::addColumn<int>("value");
    for (const int value : { least, -100'000, -2, -1, 1, 2, 3, 8, 15, 16, 36, 40, 66, 67, 68, 99, 100, 101,
             127, 128, 255, 900, 928, 999, 2000, 2001, 32767, 65536, greatest })
        QTest::addRow("%d", value) << value;
}

void tst_BarcodeHostile::everyOptionIsAnswered()
{
    QFETCH(int, value);
    constexpr std::array<void (QZint::*)(int), 8> setters { &QZint::setSecurityLevel, &QZint::setWidth,
        &QZint::setInputMode, &QZint::setBorderType, &QZint::setBorderWidth, &QZint::setHeight,
        &QZint::setWhitespace, &QZint::setFontSize };
    for (const BarcodeSamples::Sample &sample : BarcodeSamples::all) {
        for (const auto setter : setters) {
            QZint code = Barcodes::barcode(sample.symbol, QString::fromUtf8(sample.text));
            (code.*setter)(value);
            QVERIFY2(Barcodes::isAnswered(code), qPrintable(QString::number(sample.symbol)));
        }
    }
}

void tst_BarcodeHostile::everyTextIsAnswered_data()
{
    QTest::addColumn<int>("symbol");
    for (const BarcodeSamples::Sample &sample : BarcodeSamples::all)
        QTest::addRow("%d", sample.symbol) << sample.symbol;
}

void tst_BarcodeHostile::everyTextIsAnswered()
{
    QFETCH(int, symbol);
    static const QStringList texts = hostileTexts();
    for (const QString &text : texts) {
        for (const int inputMode : { 0, 1 | 8, 2 | 16 }) {
            QZint code = Barcodes::barcode(symbol, text);
            code.setInputMode(inputMode);
            const std::clock_t start = std::clock();
            QVERIFY2(Barcodes::isAnswered(code), qPrintable(text.left(20)));
            QVERIFY(std::clock() - start < 20 * CLOCKS_PER_SEC); // the slowest take a fraction of a second
        }
    }
}

void tst_BarcodeHostile::randomValuesAreAnswered()
{
    std::mt19937 random(146);
    const auto number = [&random] {
        switch (random() % 4) {
        case 0:
            return int(random());
        case 1:
            return int(random() % 300) - 100;
        default:
            return int(random() % 12) - 1;
        }
    };
    const QString characters
        = u"0123456789ABCxyz[]()\\+-*%$ \t\né字"_s + QChar(0) + QChar(0xD83D) + QChar(0xDE00);
    for (int round = 0; round < 4000; ++round) {
        QString text;
        for (auto length = random() % 60; length > 0; --length)
            text += characters.at(qsizetype(random() % std::size_t(characters.size())));
        QZint code = Barcodes::barcode(int(random() % 150), text);
        code.setSecurityLevel(number());
        code.setWidth(number());
        code.setInputMode(number());
        code.setBorderType(number());
        code.setBorderWidth(number());
        code.setHeight(number());
        code.setWhitespace(number());
        code.setFontSize(number());
        QVERIFY2(
            Barcodes::isAnswered(code), qPrintable(u"symbol %1, round %2"_s.arg(code.symbol()).arg(round)));
    }
}

void tst_BarcodeHostile::megabytesAreRefusedAtOnce()
{
    const QString text(8'000'000, u'7');
    QZint code;
    code.setText(text);
    const std::clock_t start = std::clock();
    for (int number = 0; number < 150; ++number) {
        code.setSymbol(number);
        QCOMPARE(code.error_int(), 5);
    }
    QVERIFY(std::clock() - start < CLOCKS_PER_SEC);
}

// Nor does it warn, or encode.
void tst_BarcodeHostile::idlePainterIsLeftAlone()
{
    QZint code;
    code.setSymbol(58);
    code.setText(u"B123456"_s);
    code.setBgColor(Qt::yellow);
    QPainter painter;
    const int before = EncoderCalls::encodings();
    code.render(painter, QRectF(0, 0, 40, 30), QZint::IgnoreAspectRatio);
    QCOMPARE(EncoderCalls::encodings(), before);
    QVERIFY(!painter.isActive());
}

QTEST_MAIN(tst_BarcodeHostile)
#include "tst_barcodehostile.moc"
