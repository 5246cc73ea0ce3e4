// SPDX-License-Identifier: BSD-3-Clause
#include "items/barcode/barcodeitem.h"
#include "label/check/codecontent.h"
#include "tests/label/barcodereadings.h"
#include "tests/support/barcodesamples.h"

#include <QTest>

#include <algorithm>

using namespace Qt::StringLiterals;
using BarcodeReadings::Expected;

namespace {

void setUp(BarcodeItem &item, int symbol, const QString &text)
{
    item.setBarcodeSymbol(short(symbol));
    item.setBarcodeText(text);
}

QString sampleOf(const Expected &expected)
{
    if (expected.sample)
        return QString::fromUtf8(expected.sample);
    return QString::fromUtf8(
        std::ranges::find(BarcodeSamples::all, expected.symbol, &BarcodeSamples::Sample::symbol)->text);
}

} // namespace

/// What a reader has to read of the text of a barcode.
class tst_CodeContent : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void readingsThatWereWorkedOutByHand_data();
    void readingsThatWereWorkedOutByHand();
    void oneOtherCharacterIsAnotherContent_data() { readingsThatWereWorkedOutByHand_data(); }
    void oneOtherCharacterIsAnotherContent();
    void contentOfOtherTexts_data();
    void contentOfOtherTexts();
    void symbologiesThatAreNotRead_data();
    void symbologiesThatAreNotRead();
};

/// What a decoder reads of a sample of each symbology, as the test of read-back has it.
void tst_CodeContent::readingsThatWereWorkedOutByHand_data()
{
    QTest::addColumn<int>("symbol");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("read");
    for (const Expected &expected : BarcodeReadings::all)
        QTest::addRow("%d %s", expected.symbol, expected.text)
            << expected.symbol << sampleOf(expected) << QString::fromUtf8(expected.text);
}

void tst_CodeContent::readingsThatWereWorkedOutByHand()
{
    QFETCH(int, symbol);
    QFETCH(QString, text);
    QFETCH(QString, read);
    BarcodeItem item;
    setUp(item, symbol, text);
    QVERIFY(CodeContent::formatsOf(item));
    QVERIFY(CodeContent::isThatOf(item, read));
}

void tst_CodeContent::oneOtherCharacterIsAnotherContent()
{
    QFETCH(int, symbol);
    QFETCH(QString, text);
    QFETCH(QString, read);
    BarcodeItem item;
    setUp(item, symbol, text);
    // Of check digits that are not calculated, any is taken.
    const qsizetype changed = read.size() / 2;
    read[changed] = read[changed] == u'7' ? u'8' : u'7';
    QVERIFY2(!CodeContent::isThatOf(item, read), qPrintable(read));
    QVERIFY(!CodeContent::isThatOf(item, QString()));
}

/// Check digits: 3 and 1 in turn from the last digit on, up to the next ten.
void tst_CodeContent::contentOfOtherTexts_data()
{
    QTest::addColumn<int>("symbol");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("read");
    QTest::addColumn<bool>("isContent");
    const auto row = [](const char *name, int symbol, const QString &text, const QString &read, bool is) {
        QTest::newRow(name) << symbol << text << read << is;
    };
    row("EAN-13 of 13 digits", 13, u"5901234123457"_s, u"5901234123457"_s, true);
    row("EAN-13 with zeros", 13, u"123456789"_s, u"0001234567895"_s, true); // 95 and 5
    row("EAN-13 of another check digit", 13, u"590123412345"_s, u"5901234123458"_s, false);
    row("EAN-13 with an add-on", 13, u"590123412345+12"_s, u"5901234123457"_s, true);
    row("EAN-8 of 8 digits", 13, u"96385074"_s, u"96385074"_s, true);
    row("EAN-8 is not EAN-13", 13, u"9638507"_s, u"0000009638507"_s, false);
    row("odd digits in pairs", 3, u"123"_s, u"0123"_s, true);
    row("digits in pairs as they are", 3, u"1234"_s, u"001234"_s, false);
    row("ITF-14 with a zero", 89, u"950600013435"_s, u"09506000134352"_s, true); // 58 and 2
    row("ITF-14 of another check digit", 89, u"950600013435"_s, u"09506000134353"_s, false);
    row("small letters in Code 39", 8, u"abc"_s, u"ABC"_s, true);
    row("small letters in Code 128", 20, u"abc"_s, u"ABC"_s, false);
    row("two identifiers", 16, u"[10]AB[17]260531"_s, u"10AB\u001D17260531"_s, true);
    row("two identifiers, of another value", 16, u"[10]AB[17]260531"_s, u"10AB\u001D17260532"_s, false);
    row("ISBN of ten digits", 69, u"3161484100"_s, u"9783161484100"_s, true);
    row("UPC-E of six digits", 37, u"123456"_s, u"01234565"_s, true);
    row("UPC-E of other digits", 37, u"123456"_s, u"01234575"_s, false);
    row("Code 32", 129, u"01234567"_s, u"0169ZM"_s, false);
}

void tst_CodeContent::contentOfOtherTexts()
{
    QFETCH(int, symbol);
    QFETCH(QString, text);
    QFETCH(QString, read);
    BarcodeItem item;
    setUp(item, symbol, text);
    QTEST(CodeContent::isThatOf(item, read), "isContent");
}

void tst_CodeContent::symbologiesThatAreNotRead_data()
{
    QTest::addColumn<int>("symbol");
    QTest::addColumn<QString>("text");
    QTest::newRow("POSTNET") << 40 << u"12345"_s;
    QTest::newRow("DotCode") << 115 << u"A"_s;
    QTest::newRow("an add-on alone") << 13 << u"12"_s;
    QTest::newRow("two pairs") << 3 << u"1234"_s;
}

void tst_CodeContent::symbologiesThatAreNotRead()
{
    QFETCH(int, symbol);
    QFETCH(QString, text);
    BarcodeItem item;
    setUp(item, symbol, text);
    QVERIFY(!CodeContent::formatsOf(item));
}

QTEST_MAIN(tst_CodeContent)
#include "tst_codecontent.moc"
