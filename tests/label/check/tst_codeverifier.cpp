// SPDX-License-Identifier: BSD-3-Clause
#include "items/barcode/barcodeitem.h"
#include "label/check/codeverifier.h"
#include "tests/label/barcodereadings.h"
#include "tests/label/printing.h"
#include "tests/support/barcodesamples.h"

#include <QRegularExpression>
#include <QTest>

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;
using namespace Printing;
using BarcodeReadings::Expected;

namespace {

constexpr double dpi = 254.0;

QString sampleOf(int symbol)
{
    return QString::fromUtf8(
        std::ranges::find(BarcodeSamples::all, symbol, &BarcodeSamples::Sample::symbol)->text);
}

/// A barcode in the middle of a page of 1,000 dots on each side.
LabelDocument labelWith(int symbol, const QString &text, double length, double rotation, const QColor &ink)
{
    LabelDocument document = blackAndRed({ 100, 100 });
    auto item = std::make_unique<BarcodeItem>();
    item->setBarcodeSymbol(short(symbol));
    item->setBarcodeText(text);
    item->setBarcodeHideText(true);
    const QSizeF size(length, length);
    const QPointF corner(500.0 - size.width() / 2.0, 500.0 - size.height() / 2.0);
    Item *added = addItem(document, std::move(item), { corner, size }, { .fill = nothing, .pen = ink });
    added->setItemRotation(rotation);
    return document;
}

QString wordsOf(const Problems &problems)
{
    QStringList words;
    for (const Problem &problem : problems)
        words.append(problem.text());
    return words.join(u'\n');
}

/// What a verifier tells of the label.
QString verified(CodeVerifier &verifier, const LabelDocument &document)
{
    const SeparationOptions options { .dpi = dpi };
    return wordsOf(verifier.verify(document, separated(document, options), options));
}

} // namespace

/// Codes that are read back from the plates of labels.
class tst_CodeVerifier : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    void everySymbologyThatIsReadIsVerified_data();
    void everySymbologyThatIsReadIsVerified();
    void plateOfAnotherTextIsFound_data() { everySymbologyThatIsReadIsVerified_data(); }
    void plateOfAnotherTextIsFound();
    void everyOtherSymbologyIsTold_data();
    void everyOtherSymbologyIsTold();
    void redInkIsTold();
    void negativesAreReadAsWhatBecomesOfThem();
    void textsOfAnyScriptAreVerified_data();
    void textsOfAnyScriptAreVerified();
    void shortPairsAreTold();
    void refusedCodesAreLeftOut();
};

void tst_CodeVerifier::everySymbologyThatIsReadIsVerified_data()
{
    QTest::addColumn<int>("symbol");
    QTest::addColumn<QString>("text");
    for (const Expected &expected : BarcodeReadings::all)
        QTest::addRow("%d %s", expected.symbol, expected.text)
            << expected.symbol
            << (expected.sample ? QString::fromUtf8(expected.sample) : sampleOf(expected.symbol));
}

/// In modules of some dots, and of one or two, at all right angles.
void tst_CodeVerifier::everySymbologyThatIsReadIsVerified()
{
    QFETCH(int, symbol);
    QFETCH(QString, text);
    CodeVerifier verifier;
    for (const double length : { 800.0, 400.0 }) {
        for (const double rotation : { 0.0, 90.0, 180.0, 270.0 }) {
            const LabelDocument document = labelWith(symbol, text, length, rotation, black);
            QCOMPARE(verified(verifier, document), QString());
        }
    }
    QCOMPARE(wordsOf(verifier.takeNotes()), QString());
}

/// The label tells another text than its plates.
void tst_CodeVerifier::plateOfAnotherTextIsFound()
{
    QFETCH(int, symbol);
    QFETCH(QString, text);
    CodeVerifier verifier;
    const SeparationOptions options { .dpi = dpi };
    const LabelDocument document = labelWith(symbol, text, 800.0, 0.0, black);
    const Separation separation = separated(document, options);
    // A digit in the middle: of any check digits, more would have to change.
    QString other = text;
    const qsizetype digit = other.lastIndexOf(QRegularExpression(u"[0-9A-Za-z]"_s), other.size() / 2);
    other[digit] = other[digit] == u'1' ? u'2' : u'1';
    dynamic_cast<BarcodeItem &>(*document.items()[0]).setBarcodeText(other);
    const QString words = wordsOf(verifier.verify(document, separation, options));
    QVERIFY2(words.startsWith(u"/items/0: "_s), qPrintable(words));
    QVERIFY2(words.contains(u"it has to be \""_s + other.left(20)), qPrintable(words));
}

void tst_CodeVerifier::everyOtherSymbologyIsTold_data()
{
    QTest::addColumn<int>("symbol");
    for (const BarcodeSamples::Sample &sample : BarcodeSamples::all) {
        const bool isRead = std::ranges::count(BarcodeReadings::all, sample.symbol, &Expected::symbol) > 0;
        if (!isRead && !BarcodeSamples::isComposite(sample))
            QTest::addRow("%d", sample.symbol) << sample.symbol;
    }
}

void tst_CodeVerifier::everyOtherSymbologyIsTold()
{
    QFETCH(int, symbol);
    CodeVerifier verifier;
    const LabelDocument document = labelWith(symbol, sampleOf(symbol), 800.0, 0.0, black);
    QCOMPARE(verified(verifier, document), QString());
    QVERIFY(wordsOf(verifier.takeNotes()).contains(u" cannot be verified"_s));
    QCOMPARE(verified(verifier, document), QString());
    QCOMPARE(wordsOf(verifier.takeNotes()), QString());
}

/// On the plate of another dark ink, what is under the bars prints as well.
void tst_CodeVerifier::negativesAreReadAsWhatBecomesOfThem()
{
    LabelDocument document = labelWith(58, u"AB12"_s, 400.0, 0.0, black); // a QR Code
    document.setInks({ { u"black"_s, black }, { u"blue"_s, blue } });
    const SeparationOptions options { .dpi = dpi, .negative = true };
    CodeVerifier verifier;
    QCOMPARE(wordsOf(verifier.verify(document, separated(document, options), options)), QString());
}

void tst_CodeVerifier::redInkIsTold()
{
    CodeVerifier verifier;
    QCOMPARE(verified(verifier, labelWith(58, u"A1"_s, 210.0, 0.0, red)), QString());
    const QString notes = wordsOf(verifier.takeNotes());
    QVERIFY2(notes.contains(u"is read in white light only"_s), qPrintable(notes));
}

void tst_CodeVerifier::textsOfAnyScriptAreVerified_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("Latin 1") << u"Gr\u00f6\u00dfe"_s;
    QTest::newRow("Latin 1 that looks like Japanese") << u"\u00df\u00e9b,eBQH8%T6sRuy"_s;
    QTest::newRow("euro") << u"\u20ac 5,00"_s; // in ISO 8859-7
    QTest::newRow("euro and backslashes") << u"\\\u20ac\\000017"_s;
    QTest::newRow("Greek and euros") << u"\u20ac \u03b1\u03b2 \u20ac\u20ac"_s;
    QTest::newRow("Latin 2") << u"\u0141\u00f3d\u017a"_s;
    QTest::newRow("Cyrillic") << u"\u041c\u043e\u0441\u043a\u0432\u0430"_s;
    QTest::newRow("Chinese") << u"\u6771\u4eac"_s;
    QTest::newRow("Shift JIS that does not say so") << u"z\u4e2d6i\"g_\"TZB1"_s; // in QR Codes
    QTest::newRow("several") << u"\u6771\u4eac \u20ac \U0001F642"_s;
}

void tst_CodeVerifier::textsOfAnyScriptAreVerified()
{
    QFETCH(QString, text);
    constexpr std::array symbols { 58, 71, 92, 55 }; // QR Code, Data Matrix, Aztec Code, PDF417
    CodeVerifier verifier;
    for (const int symbol : symbols)
        QCOMPARE(verified(verifier, labelWith(symbol, text, 400.0, 0.0, black)), QString());
    QCOMPARE(wordsOf(verifier.takeNotes()), QString());
}

void tst_CodeVerifier::shortPairsAreTold()
{
    CodeVerifier verifier;
    QCOMPARE(verified(verifier, labelWith(3, u"1234"_s, 400.0, 0.0, black)), QString());
    QCOMPARE(wordsOf(verifier.takeNotes()),
        u"Interleaved 2 of 5 cannot be verified: the reader takes no texts as short as \"1234\"; read a "
        u"print with "
        "your own scanner"_s);
    QCOMPARE(verified(verifier, labelWith(3, u"12345"_s, 400.0, 0.0, black)), QString());
    QCOMPARE(wordsOf(verifier.takeNotes()), QString());
}

void tst_CodeVerifier::refusedCodesAreLeftOut()
{
    CodeVerifier verifier;
    QCOMPARE(verified(verifier, labelWith(13, u"no digits"_s, 400.0, 0.0, black)), QString());
    QCOMPARE(wordsOf(verifier.takeNotes()), QString());
}

QTEST_MAIN(tst_CodeVerifier)
#include "tst_codeverifier.moc"
