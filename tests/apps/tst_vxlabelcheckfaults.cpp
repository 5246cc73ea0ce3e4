// SPDX-License-Identifier: BSD-3-Clause
#include "tests/apps/batchlabels.h"
#include "tests/apps/programfolder.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace BatchLabels;

namespace {

/// What a check has to tell of a fault.
struct Fault
{
    const char *name;
    QJsonObject item; ///< that has it
    const char *rule;
    const char *severity;
    const char *words; ///< in what is wrong
};

QJsonObject with(QJsonObject item, const QJsonObject &values)
{
    for (auto value = values.begin(); value != values.end(); ++value)
        item[value.key()] = value.value();
    return item;
}

/// A black symbol on nothing, without a line.
QJsonObject symbol(int number, const QString &content, const QRectF &place, const QJsonObject &values = {})
{
    return with({ { u"itemShape"_s, 0x1001D }, { u"barcodeSymbol"_s, number }, { u"barcodeText"_s, content },
                    { u"itemPositionX"_s, place.x() }, { u"itemPositionY"_s, place.y() },
                    { u"itemWidth"_s, place.width() }, { u"itemHeight"_s, place.height() },
                    { u"itemTextColor"_s, u"#000000"_s }, { u"barcodeHideText"_s, true } },
        values);
}

QJsonObject richText(const QRect &place, const QString &html)
{
    return { { u"itemShape"_s, 0x10016 }, { u"itemHtml"_s, html }, { u"itemPositionX"_s, place.x() },
        { u"itemPositionY"_s, place.y() }, { u"itemWidth"_s, place.width() },
        { u"itemHeight"_s, place.height() } };
}

QJsonObject frame(const QRect &place, const QString &color)
{
    return with(rectangle(1, place, u"#ffffff"_s),
        { { u"itemPenStyle"_s, 1 }, { u"itemPenWidth"_s, 2 }, { u"itemPenColor"_s, color } });
}

constexpr int dataMatrix = 71;
constexpr int qrCode = 58;
constexpr int ean = 13;
constexpr int eanWithCheckDigit = 14;
constexpr int code128 = 20;
constexpr int pdf417 = 55;
constexpr int ultracode = 144;

/// One for each fault. They lie apart from each other on a page of 1,000 x 1,000 dots. A QR Code of few
/// letters has 21 modules on a side, a Data Matrix 10.
QList<Fault> faults()
{
    const QString html = u"<p style=\"font-family:'DejaVu Sans'; font-size:12pt\">%1</p>"_s;
    const QString svg
        = u"<svg xmlns='http://www.w3.org/2000/svg' width='40' height='40'><circle cx='20' cy='20' "
          "r='18' fill='#00aa00'/></svg>"_s;
    const QString linked
        = u"<svg xmlns='http://www.w3.org/2000/svg' xmlns:xlink='http://www.w3.org/1999/xlink' width='40' "
          "height='40'><rect width='40' height='20'/><image xlink:href='photo.png' y='20' width='40' "
          "height='20'/></svg>"_s;
    return {
        { "a line in a colour of no ink", frame({ 20, 20, 60, 40 }, u"#00ff00"_s), "unprintable-colour",
            "error", "no ink prints the pen #00ff00" },
        { "a translucent fill", rectangle(1, { 100, 20, 60, 40 }, u"#80ff0000"_s), "unprintable-colour",
            "error", "no ink prints the fill #80ff0000" },
        { "letters in a colour of no ink",
            with(text(180, 20, u"Blue"_s), { { u"itemTextColor"_s, u"#0000ff"_s } }), "unprintable-colour",
            "error", "no ink prints the text #0000ff" },
        { "bars in a colour of no ink",
            symbol(dataMatrix, u"A"_s, { 260, 20, 40, 40 }, { { u"itemTextColor"_s, u"#0000ff"_s } }),
            "unprintable-colour", "error", "no ink prints the bars #0000ff" },
        { "a symbol of a third colour",
            { { u"itemShape"_s, 0x1000D }, { u"itemPenColor"_s, u"#000000"_s },
                { u"itemFillColor"_s, u"#ffffff"_s }, { u"itemWidth"_s, 40 }, { u"itemHeight"_s, 40 },
                { u"itemPositionX"_s, 340 }, { u"itemPositionY"_s, 20 },
                { u"svgContentsOriginal"_s, QString::fromLatin1(svg.toLatin1().toBase64()) } },
            "symbol-colours", "warning", "besides its pen and its fill" },
        { "a drawing that refers to a picture",
            { { u"itemShape"_s, 0x1000B }, { u"itemWidth"_s, 40 }, { u"itemHeight"_s, 40 },
                { u"itemPositionX"_s, 780 }, { u"itemPositionY"_s, 540 },
                { u"svgContents"_s, QString::fromLatin1(linked.toLatin1().toBase64()) } },
            "drawing-links", "warning", "printed without the files that it refers to" },
        { "letters in a code of digits", symbol(ean, u"12AB56789012"_s, { 420, 20, 200, 40 }), "code-data",
            "error",
            "the symbology does not take the text (Error 284: Invalid character in data (digits and \"+\" "
            "only))" },
        { "a wrong check digit", symbol(eanWithCheckDigit, u"5901234123450"_s, { 640, 20, 200, 40 }),
            "code-data", "error", "(Error 275: Invalid check digit '0', expecting '7')" },
        { "too much for a code", symbol(code128, QString(300, u'x'), { 20, 100, 400, 40 }), "code-data",
            "error", "the text is too long for the symbology (Error 3" },
        { "modules of less than a dot", symbol(qrCode, u"A"_s, { 500, 100, 20, 20 }), "module-size", "error",
            "21 modules in 20 dots" },
        { "stretched modules", symbol(dataMatrix, u"A"_s, { 560, 100, 100, 40 }), "code-stretched", "warning",
            "stretched to 10 x 4 dots" },
        { "a code that is askew",
            symbol(dataMatrix, u"A"_s, { 720, 100, 40, 40 }, { { u"itemRotation"_s, 30 } }), "code-turned",
            "warning", "do not fall on whole dots" },
        { "a code of colours", symbol(ultracode, u"A"_s, { 820, 100, 80, 80 }), "code-colours", "error",
            "colours of their own" },
        { "an option that is none",
            symbol(pdf417, u"A"_s, { 20, 180, 200, 60 }, { { u"barcodeSecurityLevel"_s, 12 } }),
            "code-option", "warning", "Warning 460" },
        { "bars that lasers do not see",
            symbol(dataMatrix, u"A"_s, { 260, 180, 40, 40 }, { { u"itemTextColor"_s, u"#ff0000"_s } }),
            "code-contrast", "warning", "scanners of red light do not see its bars of #ff0000" },
        { "light bars on a dark ground",
            symbol(dataMatrix, u"A"_s, { 340, 180, 40, 40 },
                { { u"itemTextColor"_s, u"#ffffff"_s }, { u"itemFillColor"_s, u"#000000"_s } }),
            "code-contrast", "error", "not darker than their background" },
        { "something in the free space of a code", symbol(qrCode, u"A"_s, { 480, 180, 84, 84 }), "quiet-zone",
            "warning", "rectangle 70 prints in the free space" }, // 4 dots each: 16 are to be free
        { "something on a code", symbol(qrCode, u"A"_s, { 660, 180, 84, 84 }), "quiet-zone", "warning",
            "rectangle 71 prints on the symbol" },
        { "a code at the edge", symbol(qrCode, u"A"_s, { 908, 260, 84, 84 }), "quiet-zone", "warning",
            "over the edge of the label" }, // 8 dots from it
        { "an item beside the label", rectangle(1, { 1100, 300, 40, 40 }, u"#000000"_s), "off-label", "error",
            "lies off the label" },
        { "letters beyond the edge", text(960, 400, u"Beyond the edge"_s), "off-label", "error",
            "of its content lie off the label" },
        { "a frame beyond the edge", frame({ 900, 460, 200, 40 }, u"#000000"_s), "off-label", "warning",
            "the edge of the label cuts 25.4 mm of it" },
        { "a code beyond the edge", symbol(dataMatrix, u"A"_s, { 980, 540, 40, 40 }), "off-label", "error",
            "of its content lie off the label" },
        { "a text higher than its box",
            richText({ 20, 300, 100, 20 }, html.arg(u"one two three four five six"_s)), "text-overflow",
            "error", "higher than its box" },
        { "a text squeezed into its width",
            with(text(260, 300, u"A text of many letters"_s),
                { { u"itemSizeLimiting"_s, 1 }, { u"itemWidth"_s, 60 }, { u"itemHeight"_s, 24 } }),
            "text-squeezed", "warning", "squeezed to" },
        { "a font that is not there",
            with(text(340, 300, u"Font"_s), { { u"itemFontFamily"_s, u"No Such Font"_s } }),
            "substituted-font", "warning", "the font \"No Such Font\" is not there" },
        { "a font of a line that is not there",
            symbol(code128, u"A1"_s, { 440, 300, 200, 40 },
                { { u"barcodeHideText"_s, false }, { u"itemFontFamily"_s, u"No Such Font"_s } }),
            "substituted-font", "warning", "barcode" },
        { "a letter that no font has", text(20, 500, u"A\u0378"_s), "missing-glyph", "error",
            "no font has U+0378" },
        { "a letter of another font", text(120, 500, u"A\u0E01"_s), "missing-glyph", "warning",
            "its font has no U+0E01" }, // Thai, which Loma has and DejaVu Sans has not
        { "an area of less than a dot",
            with(rectangle(1, { 220, 500, 60, 1 }, u"#000000"_s), { { u"itemHeight"_s, 0.4 } }), "hairline",
            "warning", "its fill is 0.4 of a dot wide" },
        { "a line of less than a dot",
            with(frame({ 320, 500, 400, 200 }, u"#000000"_s),
                { { u"itemPenWidth"_s, 1 },
                    { u"itemTransform"_s, QJsonArray { 0.5, 0, 0, 0, 0.5, 0, 0, 0 } } }),
            "hairline", "warning", "its line is 0.5 of a dot wide" },
    };
}

/// What lies in the way of codes, behind the items that have the faults.
QJsonArray obstacles()
{
    return { rectangle(70, { 574, 190, 20, 60 }, u"#000000"_s),
        rectangle(71, { 700, 220, 90, 20 }, u"#000000"_s) };
}

QByteArray faultyLabel()
{
    QJsonArray items;
    for (const Fault &fault : faults())
        items.append(fault.item);
    for (const auto &obstacle : obstacles())
        items.append(obstacle);
    return toJson(document({ { u"width"_s, 254 }, { u"height"_s, 254 }, { u"dpi"_s, 100 } },
        { ink(u"black"_s, u"#000000"_s), ink(u"red"_s, u"#ff0000"_s) }, items));
}

} // namespace

/// A label on which each item has a fault of its own: each is found, and nothing else.
class tst_VxLabelCheckFaults : public QObject, private ProgramFolder
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void everyFaultIsFound_data();
    void everyFaultIsFound();
    void nothingElseIsFound();
    void goodExamplesHaveNone_data();
    void goodExamplesHaveNone();

private:
    QList<QJsonObject> m_findings; ///< in the label
    QJsonObject m_count;
};

void tst_VxLabelCheckFaults::initTestCase()
{
    renew();
    write(u"faulty.vxl"_s, faultyLabel());
    const ProgramResult result = run({ u"check"_s, u"faulty.vxl"_s, u"--json"_s });
    QCOMPARE(result.err, QByteArray());
    QVERIFY2(result.code == 1, result.out.constData());
    m_findings = objectsOf(result.out);
    m_count = m_findings.takeLast();
}

void tst_VxLabelCheckFaults::everyFaultIsFound_data()
{
    QTest::addColumn<QString>("where");
    QTest::addColumn<QString>("rule");
    QTest::addColumn<QString>("severity");
    QTest::addColumn<QString>("words");
    const QList<Fault> all = faults();
    for (qsizetype i = 0; i < all.size(); ++i)
        QTest::newRow(all[i].name) << u"/items/%1"_s.arg(i) << QString::fromUtf8(all[i].rule)
                                   << QString::fromUtf8(all[i].severity) << QString::fromUtf8(all[i].words);
}

void tst_VxLabelCheckFaults::everyFaultIsFound()
{
    QFETCH(QString, where);
    QFETCH(QString, rule);
    QFETCH(QString, severity);
    QFETCH(QString, words);
    QList<QJsonObject> found;
    for (const QJsonObject &finding : std::as_const(m_findings)) {
        if (finding[u"where"_s].toString() == where)
            found.append(finding);
    }
    QCOMPARE(found.size(), 1);
    QCOMPARE(found[0][u"rule"_s].toString(), rule);
    QCOMPARE(found[0][u"severity"_s].toString(), severity);
    QCOMPARE(found[0][u"file"_s].toString(), u"faulty.vxl"_s);
    QVERIFY(!found[0][u"advice"_s].toString().isEmpty() || rule == u"code-option"_s);
    QVERIFY2(found[0][u"what"_s].toString().contains(words), qPrintable(found[0][u"what"_s].toString()));
}

void tst_VxLabelCheckFaults::nothingElseIsFound()
{
    qsizetype errors = 0;
    for (const Fault &fault : faults())
        errors += QByteArray(fault.severity) == "error" ? 1 : 0;
    QVERIFY(faults().size() >= 25);
    QCOMPARE(m_findings.size(), faults().size());
    QCOMPARE(m_count[u"errors"_s].toInteger(), errors);
    QCOMPARE(m_count[u"warnings"_s].toInteger(), faults().size() - errors);
}

void tst_VxLabelCheckFaults::goodExamplesHaveNone_data()
{
    QTest::addColumn<QString>("name");
    for (const QString &name : exampleNames())
        QTest::newRow(qUtf8Printable(name)) << name;
}

void tst_VxLabelCheckFaults::goodExamplesHaveNone()
{
    QFETCH(QString, name);
    const ProgramResult result = run({ u"check"_s, exampleFile(name), u"--strict"_s, u"--verify"_s });
    QCOMPARE(result.err, QByteArray());
    QCOMPARE(result.out, QByteArray("label checked: nothing found\n"));
    QCOMPARE(result.code, 0);
}

QTEST_MAIN(tst_VxLabelCheckFaults)
#include "tst_vxlabelcheckfaults.moc"
