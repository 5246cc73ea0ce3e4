// SPDX-License-Identifier: BSD-3-Clause
#include "label/documentfile.h"
#include "tests/label/jsontexts.h"
#include "tests/label/printing.h"
#include "tests/support/symbols.h"

#include <QRegularExpression>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace Printing;
using namespace JsonTexts;

namespace {

SymbolItem &symbolOf(const LabelDocument &document)
{
    return dynamic_cast<SymbolItem &>(*document.items()[0]);
}

LabelDocument documentOf(std::unique_ptr<SymbolItem> symbol)
{
    LabelDocument document = blackAndRed({ 10, 10 });
    document.addItem(std::move(symbol));
    return document;
}

std::unique_ptr<SymbolItem> symbolWith(const QByteArray &svg, const QColor &pen, const QColor &fill)
{
    auto symbol = std::make_unique<SymbolItem>();
    symbol->loadItemFromData(svg);
    symbol->setItemPenFillColorPrePrint(pen, fill);
    return symbol;
}

/// The same document, written and read.
LabelDocument again(const LabelDocument &document, DocumentFormat format)
{
    Problems problems;
    LoadResult result = DocumentFile::loadFromData(DocumentFile::toData(document, format, problems), {});
    problems += result.problems;
    for (const Problem &problem : problems)
        qWarning("%s", qPrintable(problem.text())); // fails the test
    return result.document ? std::move(*result.document) : LabelDocument();
}

/// A symbol with a drawing in Base64, as people write it, with further members.
LoadResult typed(const QByteArray &base64, const QByteArray &members = {})
{
    return read(
        withItems("{\"itemShape\": 65549, \"svgContentsOriginal\": \"" + base64 + "\"" + members + "}"));
}

} // namespace

/// Symbols in documents and on plates.
class tst_SymbolDocuments : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    void singleColourKeepsItsFill_data() { addFormats(); }
    void singleColourKeepsItsFill();
    void unseenColoursShowWhatTheyDid_data() { addFormats(); }
    void unseenColoursShowWhatTheyDid();
    void drawingsAreBase64();
    void typedSymbolsHaveTheSizeOfTheirDrawing();
    void coloursGoToTheirPlates();
    void coloursOfTheDrawingAreReported_data();
    void coloursOfTheDrawingAreReported();
    void drawingsThatDoNotLoadAreReported();
    void negativePlatesLeaveTheInkOut();
    void symbolWithoutFillLetsThingsThrough();

private:
    static void addFormats();
};

void tst_SymbolDocuments::addFormats()
{
    QTest::addColumn<DocumentFormat>("format");
    QTest::newRow("JSON") << DocumentFormat::Json;
    QTest::newRow("binary") << DocumentFormat::Binary;
}

void tst_SymbolDocuments::singleColourKeepsItsFill()
{
    QFETCH(DocumentFormat, format);
    auto symbol = symbolWith(Symbols::halves, red, blue);
    symbol->setSingleColor(true);
    const LabelDocument document = again(documentOf(std::move(symbol)), format);
    QVERIFY(symbolOf(document).getSingleColor());
    QCOMPARE(symbolOf(document).getItemPenColor(), red);
    QCOMPARE(symbolOf(document).getItemFillColor(), blue);
    QVERIFY(symbolOf(document).getSvgContents().contains("fill:#0000FF"));
}

void tst_SymbolDocuments::unseenColoursShowWhatTheyDid()
{
    QFETCH(DocumentFormat, format);
    // Neither is Qt::transparent, and the drawing has no alpha.
    const LabelDocument document
        = again(documentOf(symbolWith(Symbols::halves, QColor(255, 0, 0, 0), QColor(0, 0, 255, 0))), format);
    QVERIFY(symbolOf(document).getSvgContents().contains("fill=\"#FF0000\"/>"));
    QVERIFY(symbolOf(document).getSvgContents().contains("fill:#0000FF"));
}

void tst_SymbolDocuments::drawingsAreBase64()
{
    for (const QByteArray text : { "%%%", "PHN2\\nZz4=", "PHN2=Zz4" }) {
        const LoadResult result = typed(text);
        QVERIFY(!result.document);
        QCOMPARE(result.problems.size(), 1);
        QCOMPARE(result.problems[0].where, u"/items/0/svgContentsOriginal"_s);
        QCOMPARE(result.problems[0].what, u"is no Base64"_s);
    }
}

void tst_SymbolDocuments::typedSymbolsHaveTheSizeOfTheirDrawing()
{
    const auto place = [](const QByteArray &members) {
        const LoadResult result = typed("<svg width=\"30\" height=\"20\"><g/></svg>"_ba.toBase64(), members);
        return result.document ? symbolOf(*result.document).sceneBoundingRect() : QRectF();
    };
    QCOMPARE(place(""), QRectF(0, 0, 30, 20));
    QCOMPARE(place(R"(, "itemScaleX": 3, "itemPositionX": 5)"), QRectF(5, 0, 90, 20));
    QCOMPARE(place(R"(, "itemWidth": 60, "itemHeight": 10, "itemPositionY": 7)"), QRectF(0, 7, 60, 10));
    // Turned by a right angle about (30, 5 + 7).
    const QRectF turned
        = place(R"(, "itemWidth": 60, "itemHeight": 10, "itemPositionY": 7, "itemRotation": 90)");
    QVERIFY(qAbs(turned.x() - 25) < 1e-9 && qAbs(turned.y() + 18) < 1e-9);
    QVERIFY(qAbs(turned.width() - 10) < 1e-9 && qAbs(turned.height() - 60) < 1e-9);
}

void tst_SymbolDocuments::coloursGoToTheirPlates()
{
    const LabelDocument document = documentOf(symbolWith(Symbols::halves, black, red));
    const Separation separation = separatedAtDesign(document);
    QCOMPARE(
        difference(separation.plates[0].image, [](int x, int y) { return x < 20 && y < 20; }), QString());
    QCOMPARE(difference(separation.plates[1].image, [](int x, int y) { return x >= 20 && x < 40 && y < 20; }),
        QString());
    QVERIFY(separation.warnings.isEmpty());

    const Separation other = separatedAtDesign(documentOf(symbolWith(Symbols::halves, blue, red)));
    QVERIFY(isEmpty(other.plates[0].image));
    QCOMPARE(other.warnings.size(), 1);
    QCOMPARE(other.warnings[0].what, u"no ink prints the pen #0000ff of Symbol -1"_s);
}

void tst_SymbolDocuments::coloursOfTheDrawingAreReported_data()
{
    QTest::addColumn<QByteArray>("elements");
    QTest::addColumn<bool>("reported");
    const QByteArray half = "<rect width=\"20\" height=\"20\" ";
    QTest::newRow("ink and paper") << half + "fill=\"#000000\"/>" << false;
    QTest::newRow("grey edges") << QByteArray("<circle cx=\"20\" cy=\"10\" r=\"9\"/>") << false;
    QTest::newRow("other attribute") << half + "fill=\"#00AA00\"/>" << true;
    QTest::newRow("named colour") << half + "style=\"fill:green\"/>" << true;
    QTest::newRow("other stop") << "<linearGradient id=\"a\"><stop offset=\"0\" stop-color=\"#000000\"/>"
                                   "<stop offset=\"1\" stop-color=\"#00AA00\"/></linearGradient>"
            + half + "fill=\"url(#a)\"/>"
                                << true;
    QTest::newRow("never drawn") << "<defs>" + half + "fill=\"#00AA00\"/></defs>" << false;
}

void tst_SymbolDocuments::coloursOfTheDrawingAreReported()
{
    QFETCH(QByteArray, elements);
    QFETCH(bool, reported);
    const QByteArray drawing = Symbols::root + "width=\"40\" height=\"20\">" + elements + "</svg>";
    const Separation separation = separatedAtDesign(documentOf(symbolWith(drawing, red, nothing)));
    QCOMPARE(separation.warnings.size(), reported ? 1 : 0);
    if (!reported)
        return;
    QCOMPARE(separation.warnings[0].where, u"/items/0"_s);
    QCOMPARE(separation.warnings[0].what,
        u"each ink prints what Symbol -1 holds besides its pen and its fill colour"_s);
}

void tst_SymbolDocuments::drawingsThatDoNotLoadAreReported()
{
    const Separation separation = separatedAtDesign(documentOf(
        symbolWith("<svg>" + QByteArray("<g>").repeated(600) + QByteArray("</g>").repeated(600) + "</svg>",
            black, red)));
    QCOMPARE(separation.warnings.size(), 1);
    QCOMPARE(separation.warnings[0].what,
        u"Symbol -1 prints nothing: its picture or drawing could not be loaded"_s);
    QVERIFY(separatedAtDesign(documentOf(std::make_unique<SymbolItem>())).warnings.isEmpty());
}

void tst_SymbolDocuments::negativePlatesLeaveTheInkOut()
{
    const LabelDocument document = documentOf(symbolWith(Symbols::halves, black, red));
    const Separation separation = separatedAtDesign(document, true);
    QCOMPARE(
        difference(separation.plates[0].image, [](int x, int y) { return !(x < 20 && y < 20); }), QString());
    QCOMPARE(
        difference(separation.plates[1].image, [](int x, int y) { return !(x >= 20 && x < 40 && y < 20); }),
        QString());
}

void tst_SymbolDocuments::symbolWithoutFillLetsThingsThrough()
{
    LabelDocument document = blackAndRed({ 10, 10 });
    addRectangle(document, { 0, 0, 60, 20 }, { red });
    document.addItem(symbolWith(Symbols::halves, black, nothing));
    const Separation separation = separatedAtDesign(document);
    QCOMPARE(
        difference(separation.plates[0].image, [](int x, int y) { return x < 20 && y < 20; }), QString());
    QCOMPARE(difference(separation.plates[1].image, [](int x, int y) { return x >= 20 && x < 60 && y < 20; }),
        QString());
}

QTEST_MAIN(tst_SymbolDocuments)
#include "tst_symboldocuments.moc"
