// SPDX-License-Identifier: BSD-3-Clause
#include "platform/zint/barcodesettings.h"
#include "platform/zint/encoderguard.h"
#include "tests/support/barcodes.h"
#include "tests/support/encodercalls.h"
#include "tests/support/rawsymbols.h"

#include <QRegularExpression>
#include <QTest>

#include <random>
#include <string>

using namespace Qt::StringLiterals;

namespace {

/// The codewords of a text in PDF417, which libzint shows as rows: one column, two codewords against damage,
/// and the one that tells their number.
int pdf417Codewords(const std::string &text)
{
    const RawSymbols::Symbol symbol = RawSymbols::make(BARCODE_PDF417);
    symbol->input_mode = DATA_MODE;
    symbol->option_1 = 0;
    symbol->option_2 = 1;
    return RawSymbols::encode(*symbol, text.c_str()) == 0 ? symbol->rows - 3 : -1;
}

/// A text of a few of the characters in runs of all lengths, without so many figures in a row that libzint
/// packs them.
std::string randomText(std::mt19937 &random, const std::string &characters)
{
    std::string text;
    const std::size_t length = 1 + random() % 40;
    const auto keepOneIn = 1 + random() % 4;
    char character = characters.front();
    for (int figures = 0; text.size() < length;) {
        if (random() % keepOneIn == 0)
            character = characters[random() % characters.size()];
        figures = character >= '0' && character <= '9' ? figures + 1 : 0;
        if (figures > 6)
            character = characters.front();
        text += character;
    }
    return text;
}

int errorOf(int symbol, const QString &text, int width = 0)
{
    Zint::QZint barcode = Barcodes::barcode(symbol, text);
    barcode.setWidth(width);
    return barcode.error_int();
}

} // namespace

/// What is refused before libzint sees it.
class tst_EncoderGuard : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    void entriesArePredicted_data();
    void entriesArePredicted();
    void libzintNeverNeedsMoreEntries_data();
    void libzintNeverNeedsMoreEntries();
    void textsAreTooLongBeyondTheLimit_data();
    void textsAreTooLongBeyondTheLimit();
    void refusedTextsNeverReachLibzint();
    void longTextsOfSymbolsAtTheirCapacityAreEncoded_data();
    void longTextsOfSymbolsAtTheirCapacityAreEncoded();
    void halfSurrogatesAreInvalid_data();
    void halfSurrogatesAreInvalid();
};

void tst_EncoderGuard::entriesArePredicted_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<int>("entries");

    QTest::newRow("empty") << ""_qba << 0;
    QTest::newRow("capitals, where it starts") << "ABC DEF"_qba << 7;
    QTest::newRow("small letters") << "abc def"_qba << 9;
    QTest::newRow("figures with signs") << "12,5 $"_qba << 8;
    QTest::newRow("punctuation") << "(?)"_qba << 5;
    QTest::newRow("alternating") << "aAaA"_qba << 12;
    QTest::newRow("a space ends punctuation") << "? ? "_qba << 12;
    QTest::newRow("signs that are both") << "1,;"_qba << 7;
    QTest::newRow("bytes") << QByteArray("\xC3\xA9\x01", 3) << 5;
    QTest::newRow("zero bytes") << QByteArray(2, '\0') << 4;
}

void tst_EncoderGuard::entriesArePredicted()
{
    QFETCH(QByteArray, text);
    QFETCH(int, entries);
    QCOMPARE(Zint::pdf417Entries(text), qsizetype(entries));
}

void tst_EncoderGuard::libzintNeverNeedsMoreEntries_data()
{
    QTest::addColumn<std::string>("characters");

    QTest::newRow("all") << std::string("aA1; ,.#");
    QTest::newRow("letters") << std::string("aA ");
    QTest::newRow("small and punctuation") << std::string("a;,?");
    QTest::newRow("capitals and punctuation") << std::string("A;,.");
    QTest::newRow("figures, signs and punctuation") << std::string("1,;.+");
    QTest::newRow("punctuation and space") << std::string("; ?");
    QTest::newRow("signs of two sub-modes") << std::string(",.:;#");
    QTest::newRow("tabs and line feeds") << std::string("\t\n\r1aA");
}

void tst_EncoderGuard::libzintNeverNeedsMoreEntries()
{
    QFETCH(std::string, characters);
    std::mt19937 random(417);
    int encoded = 0;
    for (int round = 0; round < 3000; ++round) {
        const std::string text = randomText(random, characters);
        const int codewords = pdf417Codewords(text);
        if (codewords < 0)
            continue;
        ++encoded;
        // A codeword holds two entries. Beside them there are at most two codewords to switch to and from
        // figures.
        constexpr int others = 4;
        const qsizetype entries = Zint::pdf417Entries(QByteArrayView(text.data(), qsizetype(text.size())));
        QVERIFY2(2 * codewords <= entries + others, text.c_str());
    }
    QVERIFY(encoded > 2500);
}

void tst_EncoderGuard::textsAreTooLongBeyondTheLimit_data()
{
    QTest::addColumn<int>("symbol");
    QTest::addColumn<int>("width");
    QTest::addColumn<QString>("longest");
    QTest::addColumn<QString>("tooLong");

    const auto alternating = [](int pairs) { return u"aA"_s.repeated(pairs); };
    const QString mixed = alternating(450);
    for (const int symbol : { BARCODE_PDF417, BARCODE_PDF417COMP, BARCODE_MICROPDF417 }) {
        QTest::addRow("%d: plain", symbol) << symbol << 0 << QString(2700, u'A') << QString(2701, u'A');
        QTest::addRow("%d: alternating", symbol) << symbol << 0 << mixed << mixed + u'A';
        QTest::addRow("%d: two bytes each", symbol)
            << symbol << 0 << QString(1349, u'é') << QString(1350, u'é');
    }
    QTest::newRow("92") << BARCODE_AZTEC << 0 << QString(3832, u'1') << QString(3833, u'1');
    QTest::newRow("92: negative size") << BARCODE_AZTEC << -1 << QString(3832, u'1') << QString(3833, u'1');
    QTest::newRow("92: size") << BARCODE_AZTEC << 1 << QString(1500, u'1') << QString(1501, u'1');
    QTest::newRow("58") << BARCODE_QRCODE << 1 << QString(17400, u'1') << QString(17401, u'1');
    QTest::newRow("58: three bytes each")
        << BARCODE_QRCODE << 1 << QString(5800, u'字') << QString(5801, u'字');
    QTest::newRow("no symbology") << 999 << 0 << QString(17400, u'1') << QString(17401, u'1');
}

void tst_EncoderGuard::textsAreTooLongBeyondTheLimit()
{
    QFETCH(int, symbol);
    QFETCH(int, width);
    QFETCH(QString, longest);
    QFETCH(QString, tooLong);
    Zint::BarcodeSettings settings;
    settings.symbol = symbol;
    settings.width = width;
    QVERIFY(!Zint::isTooLong(settings, longest.toUtf8()));
    QVERIFY(Zint::isTooLong(settings, tooLong.toUtf8()));

    const int before = EncoderCalls::encodings();
    const int error = errorOf(symbol, longest, width);
    QVERIFY(error == 0 || error >= ZINT_ERROR);
    QCOMPARE(EncoderCalls::encodings(), before + 1);
    QCOMPARE(errorOf(symbol, tooLong, width), ZINT_ERROR_TOO_LONG);
    QCOMPARE(EncoderCalls::encodings(), before + 1);
}

void tst_EncoderGuard::refusedTextsNeverReachLibzint()
{
    const int before = EncoderCalls::encodings();
    QCOMPARE(errorOf(BARCODE_PDF417, u"aA1?"_s.repeated(340)), ZINT_ERROR_TOO_LONG);
    QCOMPARE(errorOf(BARCODE_AZTEC, QString(2131, QChar(1)), 1), ZINT_ERROR_TOO_LONG);
    QCOMPARE(errorOf(BARCODE_CODE128, QString(4'000'000, u'A')), ZINT_ERROR_TOO_LONG);
    QCOMPARE(errorOf(BARCODE_CODE128, QString(QChar(0xD800))), ZINT_ERROR_INVALID_DATA);
    QCOMPARE(EncoderCalls::encodings(), before);
}

void tst_EncoderGuard::longTextsOfSymbolsAtTheirCapacityAreEncoded_data()
{
    QTest::addColumn<int>("symbol");
    QTest::addColumn<QString>("text");

    // The largest PDF417 holds 1,850 characters of text, 2,710 figures or 1,108 bytes.
    QTest::newRow("PDF417, capitals") << 55 << QString(1840, u'A');
    QTest::newRow("PDF417, words") << 55 << u"lorem ipsum "_s.repeated(153);
    QTest::newRow("PDF417, sentences") << 55 << u"Lorem ipsum dolor sit amet. "_s.repeated(55);
    QTest::newRow("PDF417, figures") << 55 << QString(2698, u'7');
    QTest::newRow("PDF417, prices") << 55 << u"12,50 "_s.repeated(300);
    QTest::newRow("PDF417, bytes") << 55 << QString(1100, u'é');
    QTest::newRow("Aztec, figures") << 92 << QString(3832, u'7');
    QTest::newRow("Aztec, bytes") << 92 << QString(1914, u'é');
    QTest::newRow("QR Code, figures") << 58 << QString(7089, u'7');
    QTest::newRow("Han Xin, figures") << 116 << QString(7827, u'7');
}

void tst_EncoderGuard::longTextsOfSymbolsAtTheirCapacityAreEncoded()
{
    QFETCH(int, symbol);
    QFETCH(QString, text);
    Zint::QZint barcode = Barcodes::barcode(symbol, text);
    barcode.setSecurityLevel(symbol == BARCODE_PDF417 ? 0 : 1);
    QVERIFY(barcode.error_int() < ZINT_ERROR);
}

void tst_EncoderGuard::halfSurrogatesAreInvalid_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("valid");

    QTest::newRow("upper half") << QString(QChar(0xD83D)) << false;
    QTest::newRow("lower half") << QString(QChar(0xDE00)) << false;
    QTest::newRow("upper half at the end") << u"AB"_s + QChar(0xD83D) << false;
    QTest::newRow("halves in the wrong order") << QString(QChar(0xDE00)) + QChar(0xD83D) << false;
    QTest::newRow("two upper halves") << QString(2, QChar(0xD83D)) << false;
    QTest::newRow("a pair") << u"\U0001F600"_s << true;
    QTest::newRow("no character") << u"\uFFFE"_s << true;
    QTest::newRow("null character") << QString(QChar(0)) << true;
    QTest::newRow("byte order mark") << u"\uFEFFA"_s << true;
}

void tst_EncoderGuard::halfSurrogatesAreInvalid()
{
    QFETCH(QString, text);
    QFETCH(bool, valid);
    const std::optional<QByteArray> utf8 = Zint::encoderText(text);
    QCOMPARE(utf8.has_value(), valid);
    if (valid)
        QCOMPARE(QString::fromUtf8(*utf8).size() + text.startsWith(QChar(0xFEFF)), text.size());
    QCOMPARE(errorOf(BARCODE_QRCODE, text) == ZINT_ERROR_INVALID_DATA, !valid);
}

QTEST_APPLESS_MAIN(tst_EncoderGuard)
#include "tst_encoderguard.moc"
