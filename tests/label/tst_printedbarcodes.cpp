// SPDX-License-Identifier: BSD-3-Clause
#include "items/barcode/barcodeitem.h"
#include "tests/label/printing.h"
#include "tests/support/nearness.h"
#include "tests/support/rawsymbols.h"

#include <QRegularExpression>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace Printing;

namespace {

constexpr int ean = 13;
constexpr int eanWithCheckDigit = 14;
constexpr int code128 = 20;
constexpr int flattermarken = 28;
constexpr int pdf417 = 55;
constexpr int maxiCode = 57;
constexpr int ultracode = 144;
constexpr int qrCode = 58; // with this text, 21 modules on each side
const QString qrText = u"QR Code 12345"_s;

/// Adds a black barcode without a line beside it, at ten units to the millimetre.
BarcodeItem *addBarcode(LabelDocument &document, int symbol, const QString &text, const QSizeF &size)
{
    auto item = std::make_unique<BarcodeItem>();
    item->setBarcodeSymbol(short(symbol));
    item->setBarcodeText(text);
    item->setBarcodeHideText(true);
    item->setItemFillColor(nothing);
    item->setItemTextColor(black);
    item->setItemId(7);
    auto *added = item.get();
    addItem(document, std::move(item), { QPointF(150, 150), size }, {});
    return added;
}

QString wordsOf(const Problems &problems)
{
    QStringList words;
    for (const Problem &problem : problems)
        words << problem.where + u" | "_s + problem.what + u" | "_s + problem.advice;
    return words.join(u'\n');
}

} // namespace

/// What becomes of barcodes on the plates of a label, and the warnings of those that will not scan.
class tst_PrintedBarcodes : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    void modulesAreMeasured_data();
    void modulesAreMeasured();
    void smallSymbolsAreWarnedAbout_data();
    void smallSymbolsAreWarnedAbout();
    void adviceIsEnough_data() { smallSymbolsAreWarnedAbout_data(); }
    void adviceIsEnough();
    void stretchedModulesAreWarnedAbout_data();
    void stretchedModulesAreWarnedAbout();
    void refusedTextsAreWarnedAbout_data();
    void refusedTextsAreWarnedAbout();
    void slantedSymbolsAreWarnedAbout_data();
    void slantedSymbolsAreWarnedAbout();
    void smallerSideIsNamed_data();
    void smallerSideIsNamed();
    void hexagonsNeedTwoDots_data();
    void hexagonsNeedTwoDots();
    void lowRowsAreWarnedAbout();
    void coloursOfTheirOwnAreNotPrinted();
    void symbolsWithoutRoomAreWarnedAbout();
    void symbolsWithoutBarsAreWarnedAbout();
    void unknownSymbologiesHaveNoName();
    void barcodesAreThoseOfVisibleItems();
};

void tst_PrintedBarcodes::modulesAreMeasured_data()
{
    QTest::addColumn<int>("symbol");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QSizeF>("size");
    QTest::addColumn<double>("dpi");
    QTest::addColumn<QString>("symbology");
    QTest::addColumn<QSizeF>("modules");
    QTest::addColumn<QSizeF>("dots");
    QTest::addColumn<bool>("squareModules");
    QTest::addColumn<double>("moduleWidth");

    QTest::newRow("QR Code") << qrCode << qrText << QSizeF(63, 63) << 254.0 << u"QR Code"_s << QSizeF(21, 21)
                             << QSizeF(3, 3) << true << 0.3;
    QTest::newRow("a QR Code with room to spare")
        << qrCode << qrText << QSizeF(80, 83) << 254.0 << u"QR Code"_s << QSizeF(21, 21) << QSizeF(3, 3)
        << true << 0.3;
    QTest::newRow("twice the resolution") << qrCode << qrText << QSizeF(32, 32) << 508.0 << u"QR Code"_s
                                          << QSizeF(21, 21) << QSizeF(3, 3) << true << 0.15;
    // Start, eight characters and a check character of 11 modules each, and 13 of the stop character. The
    // bars of a new item are 50 modules high.
    QTest::newRow("Code 128") << code128 << u"Code 128"_s << QSizeF(300, 75) << 254.0 << u"Code 128"_s
                              << QSizeF(123, 50) << QSizeF(2, 1.5) << false << 0.2;
}

void tst_PrintedBarcodes::modulesAreMeasured()
{
    QFETCH(int, symbol);
    QFETCH(QString, text);
    QFETCH(QSizeF, size);
    QFETCH(double, dpi);
    LabelDocument document = blackAndRed({ 60, 60 });
    addBarcode(document, symbol, text, size);
    const Separation separation = separated(document, { dpi });
    QCOMPARE(wordsOf(separation.warnings), QString());
    QCOMPARE(separation.barcodes.size(), std::size_t(1));
    const PrintedBarcode &barcode = separation.barcodes[0];
    QCOMPARE(barcode.item, 0);
    QCOMPARE(barcode.error, 0);
    QVERIFY(barcode.sharp);
    QTEST(barcode.symbology, "symbology");
    QTEST(barcode.modules, "modules");
    QTEST(barcode.dots, "dots");
    QTEST(barcode.squareModules, "squareModules");
    QTEST(barcode.moduleWidth, "moduleWidth");
}

void tst_PrintedBarcodes::smallSymbolsAreWarnedAbout_data()
{
    QTest::addColumn<int>("symbol");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QSizeF>("size");
    QTest::addColumn<int>("rotation");
    QTest::addColumn<QString>("what");
    QTest::addColumn<QString>("advice");
    QTest::addColumn<QSizeF>("enough"); // the size that the advice gives
    QTest::addColumn<double>("enoughDpi");

    // At 254 dpi a unit is a dot of 0.1 mm: 254 x 21 / 20 = 266.7 dpi.
    QTest::newRow("20 dots wide") << qrCode << qrText << QSizeF(20, 20) << 0
                                  << u"(QR Code): 21 modules in 20 dots"_s
                                  << u"make it at least 2.1 mm wide or print at 300 dpi"_s << QSizeF(21, 21)
                                  << 300.0;
    QTest::newRow("turned") << qrCode << qrText << QSizeF(20, 20) << 90
                            << u"(QR Code): 21 modules in 20 dots"_s
                            << u"make it at least 2.1 mm wide or print at 300 dpi"_s << QSizeF(21, 21)
                            << 300.0;
    QTest::newRow("16 dots wide") << qrCode << qrText << QSizeF(16, 42) << 0
                                  << u"(QR Code): 21 modules in 16 dots"_s
                                  << u"make it at least 2.1 mm wide or print at 600 dpi"_s << QSizeF(21, 42)
                                  << 600.0;
    QTest::newRow("15 dots high") << qrCode << qrText << QSizeF(42, 15) << 0
                                  << u"(QR Code): 21 modules in 15 dots"_s
                                  << u"make it at least 2.1 mm high or print at 600 dpi"_s << QSizeF(42, 21)
                                  << 600.0;
    QTest::newRow("bars") << code128 << u"Code 128"_s << QSizeF(100, 50) << 0
                          << u"(Code 128): 123 modules in 100 dots"_s
                          << u"make it at least 12.3 mm wide or print at 600 dpi"_s << QSizeF(123, 50)
                          << 600.0;
    QTest::newRow("beyond all usual resolutions")
        << qrCode << qrText << QSizeF(2, 2) << 0 << u"(QR Code): 21 modules in 2 dots"_s
        << u"make it at least 2.1 mm wide or print at 2667 dpi"_s << QSizeF(21, 21) << 2667.0;
}

void tst_PrintedBarcodes::smallSymbolsAreWarnedAbout()
{
    QFETCH(int, symbol);
    QFETCH(QString, text);
    QFETCH(QSizeF, size);
    QFETCH(int, rotation);
    QFETCH(QString, what);
    QFETCH(QString, advice);
    LabelDocument document = blackAndRed({ 60, 60 });
    addRectangle(document, { 0, 0, 10, 10 }, { black });
    addBarcode(document, symbol, text, size)->setItemRotation(rotation);
    QCOMPARE(
        wordsOf(separatedAtDesign(document).warnings), u"/items/1 | barcode 7 "_s + what + u" | "_s + advice);
}

void tst_PrintedBarcodes::adviceIsEnough()
{
    QFETCH(int, symbol);
    QFETCH(QString, text);
    QFETCH(QSizeF, size);
    QFETCH(int, rotation);
    QFETCH(QSizeF, enough);
    QFETCH(double, enoughDpi);
    LabelDocument larger = blackAndRed({ 60, 60 });
    addBarcode(larger, symbol, text, enough)->setItemRotation(rotation);
    QVERIFY(!wordsOf(separatedAtDesign(larger).warnings).contains(u"modules in"));
    LabelDocument finer = blackAndRed({ 60, 60 });
    addBarcode(finer, symbol, text, size)->setItemRotation(rotation);
    QVERIFY(!wordsOf(separated(finer, { enoughDpi }).warnings).contains(u"modules in"));
}

void tst_PrintedBarcodes::stretchedModulesAreWarnedAbout_data()
{
    QTest::addColumn<QSizeF>("size");
    QTest::addColumn<QString>("dots");
    QTest::newRow("2 x 4") << QSizeF(42, 84) << u"2 x 4"_s;
    QTest::newRow("4 x 2") << QSizeF(84, 42) << u"4 x 2"_s;
    QTest::newRow("2 x 3") << QSizeF(42, 63) << u"2 x 3"_s;
    QTest::newRow("3 x 4 is read") << QSizeF(63, 84) << QString();
    QTest::newRow("2.9 x 3.1 is 2 x 2") << QSizeF(60.9, 65.1) << QString();
}

void tst_PrintedBarcodes::stretchedModulesAreWarnedAbout()
{
    QFETCH(QSizeF, size);
    QFETCH(QString, dots);
    LabelDocument document = blackAndRed({ 60, 60 });
    addBarcode(document, qrCode, qrText, size);
    const QString warning = u"/items/0 | barcode 7 (QR Code): its modules are stretched to %1 dots | "
                            "make it square"_s;
    QCOMPARE(wordsOf(separatedAtDesign(document).warnings), dots.isEmpty() ? QString() : warning.arg(dots));
}

void tst_PrintedBarcodes::refusedTextsAreWarnedAbout_data()
{
    QTest::addColumn<int>("symbol");
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("error");
    QTest::addColumn<QString>("what");
    QTest::newRow("too long") << ean << u"12345678901234567890123"_s << 5
                              << u"(EAN): the text is too long for the symbology"_s;
    QTest::newRow("with a letter") << ean << u"59012341234A"_s << 6
                                   << u"(EAN): the symbology does not take the text"_s;
    QTest::newRow("with a wrong check digit")
        << eanWithCheckDigit << u"5901234123458"_s << 7
        << u"(EAN with check digit): the check digit of the text is wrong"_s;
}

void tst_PrintedBarcodes::refusedTextsAreWarnedAbout()
{
    QFETCH(int, symbol);
    QFETCH(QString, text);
    QFETCH(QString, what);
    LabelDocument document = blackAndRed({ 60, 60 });
    addBarcode(document, symbol, text, { 200, 100 });
    const Separation separation = separatedAtDesign(document);
    QCOMPARE(wordsOf(separation.warnings),
        u"/items/0 | barcode 7 "_s + what + u" | change the text or the symbology"_s);
    QTEST(separation.barcodes.at(0).error, "error");
    QVERIFY(separation.barcodes[0].modules.isEmpty());
    QVERIFY(isEmpty(separation.plates[0].image));
}

void tst_PrintedBarcodes::slantedSymbolsAreWarnedAbout_data()
{
    QTest::addColumn<double>("rotation");
    QTest::addColumn<bool>("warned");
    QTest::newRow("upright") << 0.0 << false;
    QTest::newRow("by 30 degrees") << 30.0 << true;
    QTest::newRow("by 90 degrees") << 90.0 << false;
    QTest::newRow("by 180 degrees") << 180.0 << false;
    QTest::newRow("by 270 degrees") << 270.0 << false;
    QTest::newRow("by 359 degrees") << 359.0 << true;
}

void tst_PrintedBarcodes::slantedSymbolsAreWarnedAbout()
{
    QFETCH(double, rotation);
    QFETCH(bool, warned);
    LabelDocument document = blackAndRed({ 60, 60 });
    addBarcode(document, qrCode, qrText, { 63, 63 })->setItemRotation(rotation);
    const Separation separation = separatedAtDesign(document);
    QCOMPARE(wordsOf(separation.warnings),
        warned ? u"/items/0 | barcode 7 (QR Code): turned as it is, its modules do not fall on whole dots | "
                 "turn it by right angles"_s
               : QString());
    QCOMPARE(separation.barcodes.at(0).sharp, !warned);
}

// In its own proportions, a symbol is as large as the shorter side lets it be.
void tst_PrintedBarcodes::smallerSideIsNamed_data()
{
    QTest::addColumn<int>("symbol");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QSizeF>("size");
    QTest::addColumn<QString>("warning");
    QTest::newRow("low")
        << qrCode << qrText << QSizeF(100, 20)
        << u"(QR Code): 21 modules in 20 dots | make it at least 2.1 mm high or print at 300 dpi"_s;
    QTest::newRow("narrow")
        << qrCode << qrText << QSizeF(20, 100)
        << u"(QR Code): 21 modules in 20 dots | make it at least 2.1 mm wide or print at 300 dpi"_s;
    QTest::newRow("low bars") << code128 << u"Code 128"_s << QSizeF(300, 25)
                              << u"(Code 128): 50 modules in 25 dots | "
                                 "make it at least 5 mm high or print at 600 dpi"_s;
}

void tst_PrintedBarcodes::smallerSideIsNamed()
{
    QFETCH(int, symbol);
    QFETCH(QString, text);
    QFETCH(QSizeF, size);
    QFETCH(QString, warning);
    for (const int mode : { 1, 2 }) {
        LabelDocument document = blackAndRed({ 60, 60 });
        addBarcode(document, symbol, text, size)->setBarcodeAspectRatio(mode);
        QCOMPARE(wordsOf(separatedAtDesign(document).warnings), u"/items/0 | barcode 7 "_s + warning);
    }
}

void tst_PrintedBarcodes::hexagonsNeedTwoDots_data()
{
    QTest::addColumn<QSizeF>("size");
    QTest::addColumn<QString>("warning");
    // 30 modules of width; 33 rows that lie 0.87 modules apart. 59 dots at 254 dpi are 60 at 258.3.
    QTest::newRow("of one dot") << QSizeF(59, 58)
                                << u"/items/0 | barcode 7 (MaxiCode): 30 modules in 30 dots; each needs 2 | "
                                   "make it at least 6 mm wide or print at 300 dpi"_s;
    QTest::newRow("of two dots") << QSizeF(60, 58) << QString();
}

void tst_PrintedBarcodes::hexagonsNeedTwoDots()
{
    QFETCH(QSizeF, size);
    LabelDocument document = blackAndRed({ 60, 60 });
    addBarcode(document, maxiCode, u"MaxiCode 12345"_s, size);
    QTEST(wordsOf(separatedAtDesign(document).warnings), "warning");
}

void tst_PrintedBarcodes::lowRowsAreWarnedAbout()
{
    const QString text = u"PDF417 text 12345"_s;
    const RawSymbols::Symbol symbol = RawSymbols::make(pdf417);
    symbol->option_1 = 0; // as that of a new item
    QCOMPARE(RawSymbols::encode(*symbol, qUtf8Printable(text)), 0);
    const int rows = symbol->rows;
    const double width = 2.0 * symbol->width;

    LabelDocument low = blackAndRed({ 60, 60 });
    addBarcode(low, pdf417, text, { width, 0.75 * rows });
    const Separation separation = separatedAtDesign(low);
    QVERIFY(isNear(separation.barcodes.at(0).lowestBar, 0.75));
    const QString warning = u"/items/0 | barcode 7 (PDF417): its lowest bars have 0.75 of a dot | "
                            "make it at least %1 mm high or print at 600 dpi"_s;
    QCOMPARE(wordsOf(separation.warnings), warning.arg(rows / 10.0));

    LabelDocument high = blackAndRed({ 60, 60 });
    addBarcode(high, pdf417, text, { width, double(rows) });
    QCOMPARE(wordsOf(separatedAtDesign(high).warnings), QString());
}

void tst_PrintedBarcodes::coloursOfTheirOwnAreNotPrinted()
{
    LabelDocument document = blackAndRed({ 60, 60 });
    addBarcode(document, ultracode, u"Ultracode"_s, { 170, 130 });
    const Separation separation = separatedAtDesign(document);
    QCOMPARE(wordsOf(separation.warnings),
        u"/items/0 | barcode 7 (Ultracode): its modules have colours of their own, which no plate has | "
        "choose another symbology"_s);
    QVERIFY(isEmpty(separation.plates[0].image));
    QVERIFY(isEmpty(separation.plates[1].image));
}

void tst_PrintedBarcodes::symbolsWithoutRoomAreWarnedAbout()
{
    LabelDocument document = blackAndRed({ 60, 60 });
    addBarcode(document, qrCode, qrText, { 0, 63 });
    QCOMPARE(wordsOf(separatedAtDesign(document).warnings),
        u"/items/0 | barcode 7 (QR Code): there is no room for the symbol | make it larger"_s);
}

void tst_PrintedBarcodes::symbolsWithoutBarsAreWarnedAbout()
{
    LabelDocument document = blackAndRed({ 60, 60 });
    addBarcode(document, flattermarken, u"0"_s, { 100, 50 });
    QCOMPARE(wordsOf(separatedAtDesign(document).warnings),
        u"/items/0 | barcode 7 (Flattermarken): the text has no bars | change the text or the symbology"_s);
}

void tst_PrintedBarcodes::unknownSymbologiesHaveNoName()
{
    LabelDocument document = blackAndRed({ 60, 60 });
    addBarcode(document, 999, u"A"_s, { 20, 50 }); // Code 128: three characters of 11 modules, and the stop
    const Separation separation = separatedAtDesign(document);
    QCOMPARE(separation.barcodes.at(0).symbology, QString());
    QCOMPARE(wordsOf(separation.warnings),
        u"/items/0 | barcode 7: 46 modules in 20 dots | make it at least 4.6 mm wide or print at 600 dpi"_s);
}

void tst_PrintedBarcodes::barcodesAreThoseOfVisibleItems()
{
    LabelDocument document = blackAndRed({ 60, 60 });
    addRectangle(document, { 0, 0, 10, 10 }, { black });
    addBarcode(document, qrCode, qrText, { 10, 10 })->setItemIsVisible(false);
    addBarcode(document, qrCode, qrText, { 63, 63 });
    const Separation separation = separatedAtDesign(document);
    QCOMPARE(wordsOf(separation.warnings), QString());
    QCOMPARE(separation.barcodes.size(), std::size_t(1));
    QCOMPARE(separation.barcodes[0].item, 2);
}

QTEST_MAIN(tst_PrintedBarcodes)
#include "tst_printedbarcodes.moc"
