// SPDX-License-Identifier: BSD-3-Clause
#include "tests/apps/batchlabels.h"
#include "tests/apps/programfolder.h"

#include <QBuffer>
#include <QDir>
#include <QElapsedTimer>
#include <QImage>
#include <QTemporaryDir>
#include <QTest>
#include <QXmlStreamReader>

using namespace Qt::StringLiterals;
using namespace BatchLabels;

namespace {

/// So many rows of sku, name and price, of which every third price is no number.
QByteArray manyRows(int rows)
{
    QByteArray text = "sku,name,price\n";
    for (int i = 1; i <= rows; ++i)
        text += 'S' + QByteArray::number(i) + ",Apple," + (i % 3 == 0 ? "much" : "1.5") + '\n';
    return text;
}

/// A Code 128 without a line. Two characters make 57 modules of two dots, beside which ten are free.
QJsonObject smallCode(const QString &content, int y = 60)
{
    QJsonObject item = code(y, content);
    item[u"itemPositionX"_s] = 30;
    item[u"itemWidth"_s] = 140;
    item[u"barcodeHideText"_s] = true;
    return item;
}

/// Name, price and code of a row of sku, name and price.
QByteArray goodLabel()
{
    return toJson(labelWith(
        { boundText(10, 10, 1, u"name"_s), text(10, 35, u"${price:%.2f} EUR"_s), smallCode(u"${sku}"_s) },
        { QJsonObject { { u"id"_s, 1 }, { u"kind"_s, u"csv"_s }, { u"location"_s, u"prices.csv"_s } } }));
}

QJsonObject boundGraphic(int shape, const QString &column)
{
    return { { u"itemShape"_s, shape }, { u"itemWidth"_s, 40 }, { u"itemHeight"_s, 20 },
        { u"itemPositionX"_s, 150 }, { u"itemPositionY"_s, 10 }, { u"itemDatasourceId"_s, 1 },
        { u"itemDatasourceField"_s, column } };
}

constexpr int svgShape = 0x1000B;
constexpr int pixmapShape = 0x1000C;
constexpr int richTextShape = 0x10016;

/// A picture, a drawing, a code, a text and a box of a row of sku, name, picture and drawing.
QByteArray rowLabel()
{
    QJsonObject drawing = boundGraphic(svgShape, u"drawing"_s);
    drawing[u"itemPositionX"_s] = 100;
    QJsonObject box = boundGraphic(richTextShape, u"name"_s);
    box[u"itemPositionX"_s] = 10;
    box[u"itemPositionY"_s] = 30;
    box[u"itemWidth"_s] = 180;
    box[u"itemFontFamily"_s] = u"DejaVu Sans"_s;
    box[u"itemFontSize"_s] = 10;
    QJsonObject symbol = code(60, u"${sku}"_s);
    symbol[u"itemPositionX"_s] = 25; // dots: with modules of one or two, ten of them are free
    symbol[u"itemWidth"_s] = 150;
    return toJson(labelWith({ boundGraphic(pixmapShape, u"picture"_s), drawing, box, symbol },
        { QJsonObject { { u"id"_s, 1 }, { u"kind"_s, u"csv"_s }, { u"location"_s, u"rows.csv"_s } } }));
}

QByteArray pngOf(const QColor &color)
{
    QImage image(8, 8, QImage::Format_RGB32);
    image.fill(color);
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, "PNG");
    return bytes;
}

} // namespace

/// Labels and rows that are checked before anything is printed.
class tst_VxLabelCheck : public QObject, private ProgramFolder
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void exitCodesTellWhatWasFound_data();
    void exitCodesTellWhatWasFound();
    void faultsOfRowsAreFound_data();
    void faultsOfRowsAreFound();
    void equalFaultsAreToldOnce();
    void someRowsOnlyAreChecked();
    void warningsCountWhenStrict();
    void everyRowIsAnObject();
    void everyRowIsATestCase();
    void hostileValuesMakeSoundXml();
    void picturesAreLookedForInFolders();
    void manyRowsTakeSeconds();
    void verifyReadsWhatIsOnThePlates();
    void rowsThatReadOtherwiseAreNotPrinted_data();
    void rowsThatReadOtherwiseAreNotPrinted();
    void verifyLooksAtTheInksThatArePrinted();
    void symbologiesThatCannotBeReadAreToldOnce();
    void theExampleOfABatchIsSound();

private:
    [[nodiscard]] QByteArray here() const { return QDir(path()).canonicalPath().toUtf8(); }
};

void tst_VxLabelCheck::init()
{
    renew();
    write(u"a.vxl"_s, goodLabel());
    write(u"prices.csv"_s, prices);
}

void tst_VxLabelCheck::exitCodesTellWhatWasFound_data()
{
    QTest::addColumn<QStringList>("arguments"); // beside "check a.vxl"
    QTest::addColumn<QByteArray>("table");
    QTest::addColumn<int>("code");
    QTest::addColumn<QByteArray>("out");
    QTest::addColumn<QByteArray>("err");
    const auto row = [&](const char *name, const QStringList &arguments, const QByteArray &table, int code,
                         const QByteArray &out, const QByteArray &err = {}) {
        QTest::newRow(name) << arguments << table << code << out << err;
    };
    row("nothing wrong", {}, prices, 0, "3 rows checked: nothing found\n");
    row("no rows", {}, "sku,name,price\n", 0, "0 rows checked: nothing found\n");
    row("a short row", {}, "sku,name,price\nA,b\n", 1,
        "@/prices.csv: error [broken-row]: line 2: 2 values for 3 columns; an empty value needs its "
        "delimiter, "
        "too; one with a delimiter in it needs quotes\n1 row checked: 1 error, 0 warnings\n");
    row("no column of the label", {}, "sku,nme,price\nA,b,1\n", 3,
        "a.vxl: error [data-binding]: /items/1: Label Text -1: there is no column \"name\"; did you mean "
        "\"nme\"?\nlabel checked: 1 error, 0 warnings\n");
    row("too fine", { u"--dpi=9600"_s }, prices, 3,
        "a.vxl: error [unprintable-page]: /page: the page has 19200 x 9600 dots at 9600 dpi, which is too "
        "many; "
        "use at most 8000 dpi or a smaller page\nlabel checked: 1 error, 0 warnings\n");
    row("no such layer", { u"--layer=top"_s }, prices, 3,
        "a.vxl: error [unknown-layer]: /items: there is no layer \"top\"\nlabel checked: 1 error, 0 "
        "warnings\n");
    row("an open quote", {}, "sku,name,price\nA,b,1\n\"C,d,1\n", 4,
        "@/prices.csv: error [unreadable-data]: line 3: a value that begins with a quote, and does not end "
        "with "
        "one\n1 row checked: 1 error, 0 warnings\n");
    row("missing data", { u"--data=gone.csv"_s }, prices, 4,
        "gone.csv: error [unreadable-data]: does not exist\nlabel checked: 1 error, 0 warnings\n");
    row("two forms", { u"--json"_s, u"--junit"_s }, prices, 2, "",
        "vxlabel: --json excludes --junit; see vxlabel check --help\n");
}

void tst_VxLabelCheck::exitCodesTellWhatWasFound()
{
    QFETCH(QStringList, arguments);
    QFETCH(QByteArray, table);
    QFETCH(int, code);
    QFETCH(QByteArray, out);
    QFETCH(QByteArray, err);
    write(u"prices.csv"_s, table);
    const ProgramResult result = run(QStringList { u"check"_s, u"a.vxl"_s } + arguments);
    QCOMPARE(result.out, out.replace("@", here()));
    QCOMPARE(result.err, err);
    QCOMPARE(result.code, code);
    QCOMPARE(files(), QStringList({ u"a.vxl"_s, u"prices.csv"_s }));
}

void tst_VxLabelCheck::faultsOfRowsAreFound_data()
{
    QTest::addColumn<QByteArray>("row"); // of sku, name, picture and drawing
    QTest::addColumn<QByteArray>("rule");
    QTest::addColumn<QByteArray>("where");
    QTest::addColumn<QByteArray>("words");
    const auto row
        = [](const char *name, const char *values, const char *rule, const char *where, const char *words) {
              QTest::newRow(name) << QByteArray(values) << QByteArray(rule) << QByteArray(where)
                                  << QByteArray(words);
          };
    row("nothing",
        "A1,Apple,p.png,<svg xmlns='http://www.w3.org/2000/svg' width='9' height='9'><path d='M0 "
        "0h9v9z'/></svg>",
        "", "", "");
    row("a missing picture", "A1,Apple,gone.png,", "refused-picture", "/items/1", "gone.png");
    row("a picture elsewhere", "A1,Apple,../p.png,", "refused-picture", "/items/1", "p.png");
    row("no picture", "A1,Apple,a.vxl,", "refused-picture", "/items/1", "holds nothing that can be shown");
    row("no drawing", "A1,Apple,,<svg", "refused-picture", "/items/2", "no drawing that can be shown");
    row("a long text", "A1,one two three four five six seven,,", "text-overflow", "/items/3",
        "higher than its box");
    row("a letter of no font", "A1,\xCD\xB8,,", "missing-glyph", "/items/3", "U+0378");
    row("a control character", "A1,a\tb\x07,,", "missing-glyph", "/items/3",
        "no font has U+0007, and a box is");
    row("no code", "\xE2\x82\xAC,Apple,,", "code-data", "/items/4", "does not take the text");
    row("a long code", "A123456789012345678901234567890,Apple,,", "module-size", "/items/4", "dots");
}

void tst_VxLabelCheck::faultsOfRowsAreFound()
{
    QFETCH(QByteArray, row);
    QFETCH(QByteArray, rule);
    QFETCH(QByteArray, where);
    QFETCH(QByteArray, words);
    write(u"a.vxl"_s, rowLabel());
    write(u"p.png"_s, pngOf(Qt::black));
    write(u"rows.csv"_s, "sku,name,picture,drawing\nA0,Pear,,\n" + row + '\n');
    const ProgramResult result = run({ u"check"_s, u"a.vxl"_s, u"--json"_s });
    QCOMPARE(result.err, QByteArray());
    QList<QJsonObject> objects = objectsOf(result.out);
    QCOMPARE(objects.takeLast()[u"rows"_s].toInt(), 2);
    QCOMPARE(result.code, rule.isEmpty() ? 0 : 1);
    QVERIFY2(objects.size() == (rule.isEmpty() ? 0 : 1), result.out.constData());
    if (rule.isEmpty())
        return;
    QCOMPARE(objects[0][u"rule"_s].toString().toUtf8(), rule);
    QCOMPARE(objects[0][u"where"_s].toString().toUtf8(), where);
    QCOMPARE(objects[0][u"row"_s].toInt(), 2);
    QCOMPARE(objects[0][u"address"_s].toString().toUtf8(), here() + "/rows.csv:3");
    QVERIFY2(objects[0][u"what"_s].toString().toUtf8().contains(words), result.out.constData());
}

void tst_VxLabelCheck::equalFaultsAreToldOnce()
{
    write(u"prices.csv"_s, manyRows(30));
    const ProgramResult result = run({ u"check"_s, u"a.vxl"_s });
    QCOMPARE(result.out,
        here()
            + "/prices.csv:4: error [unusable-value]: /items/2: Label Text -1: \"much\" is no number for "
              "%.2f "
              "(10 rows: 3, 6, 9, 12, 15, \xE2\x80\xA6)\n30 rows checked: 10 errors, 0 warnings\n");
    QCOMPARE(result.code, 1);
}

void tst_VxLabelCheck::someRowsOnlyAreChecked()
{
    write(u"prices.csv"_s, manyRows(30));
    const ProgramResult result = run({ u"check"_s, u"a.vxl"_s, u"--rows=2,9-10"_s });
    QVERIFY(result.out.contains("/prices.csv:10: error [unusable-value]"));
    QVERIFY(result.out.endsWith("\n3 rows checked: 1 error, 0 warnings\n"));
}

void tst_VxLabelCheck::warningsCountWhenStrict()
{
    QJsonObject item = text(10, 10, u"Font"_s);
    item[u"itemFontFamily"_s] = u"No Such Font"_s;
    write(u"b.vxl"_s, toJson(labelWith({ item })));
    ProgramResult result = run({ u"check"_s, u"b.vxl"_s });
    QVERIFY(result.out.startsWith("b.vxl: warning [substituted-font]: /items/1: "));
    QVERIFY(result.out.endsWith("label checked: 0 errors, 1 warning\n"));
    QCOMPARE(result.code, 0);
    result = run({ u"check"_s, u"b.vxl"_s, u"--strict"_s });
    QVERIFY(result.out.startsWith("b.vxl: error [substituted-font]: /items/1: "));
    QCOMPARE(result.code, 1);
}

void tst_VxLabelCheck::everyRowIsAnObject()
{
    write(u"prices.csv"_s, manyRows(30));
    const QList<QJsonObject> objects = objectsOf(run({ u"check"_s, u"a.vxl"_s, u"--json"_s }).out);
    QCOMPARE(objects.size(), 11);
    QCOMPARE(objects[1],
        QJsonObject({ { u"severity"_s, u"error"_s }, { u"rule"_s, u"unusable-value"_s },
            { u"file"_s, u"a.vxl"_s }, { u"where"_s, u"/items/2"_s }, { u"row"_s, 6 },
            { u"address"_s, QString::fromUtf8(here()) + u"/prices.csv:7"_s }, { u"key"_s, u"S6"_s },
            { u"what"_s, u"Label Text -1: \"much\" is no number for %.2f"_s } }));
    QCOMPARE(objects[10], QJsonObject({ { u"rows"_s, 30 }, { u"errors"_s, 10 }, { u"warnings"_s, 0 } }));
}

void tst_VxLabelCheck::everyRowIsATestCase()
{
    write(u"prices.csv"_s, manyRows(4));
    const ProgramResult result = run({ u"check"_s, u"a.vxl"_s, u"--junit"_s });
    QCOMPARE(result.err, QByteArray());
    QCOMPARE(result.code, 1);
    QStringList names;
    QStringList failures;
    QXmlStreamReader xml(result.out);
    while (!xml.atEnd()) {
        if (xml.readNext() != QXmlStreamReader::StartElement)
            continue;
        if (xml.name() == u"testsuite"_s) {
            QCOMPARE(xml.attributes().value(u"tests"_s), u"5"_s);
            QCOMPARE(xml.attributes().value(u"failures"_s), u"1"_s);
        } else if (xml.name() == u"testcase"_s) {
            names.append(xml.attributes().value(u"name"_s).toString());
            QCOMPARE(xml.attributes().value(u"classname"_s), u"a.vxl"_s);
        } else if (xml.name() == u"failure"_s) {
            QCOMPARE(xml.attributes().value(u"type"_s), u"unusable-value"_s);
            failures.append(names.constLast());
        }
    }
    QVERIFY2(!xml.hasError(), qPrintable(xml.errorString()));
    QCOMPARE(
        names, QStringList({ u"row 1: S1"_s, u"row 2: S2"_s, u"row 3: S3"_s, u"row 4: S4"_s, u"label"_s }));
    QCOMPARE(failures, QStringList { u"row 3: S3"_s });
}

void tst_VxLabelCheck::hostileValuesMakeSoundXml()
{
    write(u"prices.csv"_s,
        "sku,name,price\n\"<&>\"\"]]>\x1B[2J\",Apple,\"</failure>\"\n\xEF\xBF\xBF,\xEF\xBF\xBE,\x01\n");
    const ProgramResult result = run({ u"check"_s, u"a.vxl"_s, u"--junit"_s });
    QXmlStreamReader xml(result.out);
    QStringList names;
    while (!xml.atEnd()) {
        if (xml.readNext() == QXmlStreamReader::StartElement && xml.name() == u"testcase"_s)
            names.append(xml.attributes().value(u"name"_s).toString());
    }
    QVERIFY2(!xml.hasError(), qPrintable(xml.errorString()));
    QCOMPARE(names, QStringList({ u"row 1: <&>\"]]>\\x1b[2J"_s, u"row 2: \uFFFD"_s, u"label"_s }));
}

void tst_VxLabelCheck::picturesAreLookedForInFolders()
{
    write(u"a.vxl"_s, rowLabel());
    write(u"rows.csv"_s, "sku,name,picture,drawing\nA0,Pear,p.png,\n");
    const QTemporaryDir pictures;
    QFile picture(pictures.filePath(u"p.png"_s));
    QVERIFY(picture.open(QIODevice::WriteOnly));
    picture.write(pngOf(Qt::black));
    picture.close();
    QCOMPARE(run({ u"check"_s, u"a.vxl"_s }).code, 1);
    QCOMPARE(run({ u"check"_s, u"a.vxl"_s, u"--search"_s, pictures.path() }).code, 0);
    write(u"rows.csv"_s, "sku,name,picture,drawing\nA0,Pear," + picture.fileName().toUtf8() + ",\n");
    QCOMPARE(run({ u"check"_s, u"a.vxl"_s }).code, 1);
    QCOMPARE(run({ u"check"_s, u"a.vxl"_s, u"--allow-any-path"_s }).code, 0);
}

void tst_VxLabelCheck::manyRowsTakeSeconds()
{
    write(u"prices.csv"_s, manyRows(10'000));
    QElapsedTimer time;
    time.start();
    const ProgramResult result = run({ u"check"_s, u"a.vxl"_s, u"--progress=json"_s });
    QVERIFY2(result.out.endsWith("10000 rows checked: 3333 errors, 0 warnings\n"), result.out);
    QVERIFY2(time.elapsed() < 60'000, QByteArray::number(time.elapsed()).constData());
    QList<QJsonObject> states = objectsOf(result.err);
    states.removeLast(); // a machine may be through before another one
    for (const QJsonObject &state : std::as_const(states)) {
        const qint64 guess = state[u"about"_s].toInteger();
        QVERIFY2(guess > 8'000 && guess < 14'000, result.err); // the numbers of the first rows are shorter
    }
}

void tst_VxLabelCheck::verifyReadsWhatIsOnThePlates()
{
    ProgramResult result = run({ u"check"_s, u"a.vxl"_s, u"--verify"_s });
    QCOMPARE(result.err, QByteArray());
    QCOMPARE(result.out, QByteArray("3 rows checked: nothing found\n"));

    write(u"b.vxl"_s,
        toJson(labelWith({ smallCode(u"A1"_s), rectangle(2, { 60, 60, 40, 20 }, u"#ffffff"_s) })));
    QCOMPARE(run({ u"check"_s, u"b.vxl"_s }).code, 0); // white is not seen beside the code
    result = run({ u"check"_s, u"b.vxl"_s, u"--verify"_s });
    QCOMPARE(result.out,
        QByteArray(
            "b.vxl: error [unreadable-code]: /items/1: barcode -1 (Code 128): cannot be read from the "
            "plates; it has to be \"A1\"; look at the plates: it needs larger modules, free space or dark "
            "ink\nlabel checked: 1 error, 0 warnings\n"));
    QCOMPARE(result.code, 1);
}

void tst_VxLabelCheck::rowsThatReadOtherwiseAreNotPrinted_data()
{
    QTest::addColumn<QJsonArray>("items");
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QByteArray>("words"); // nothing: it reads as it should
    const QByteArray unread = "cannot be read from the plates; it has to be \"A1\"";
    const auto with = [](const QString &key, const QJsonValue &value) {
        QJsonObject item = smallCode(u"${sku}"_s);
        item[key] = value;
        return item;
    };
    QJsonObject other = smallCode(u"B2"_s);
    other[u"itemFillColor"_s] = u"#ffffff"_s;
    QJsonObject upright = smallCode(u"${sku}"_s, 40);
    upright[u"itemWidth"_s] = 80;
    upright[u"itemRotation"_s] = 90;
    const QJsonObject good = smallCode(u"${sku}"_s);
    QTest::newRow("good") << QJsonArray { good } << QStringList() << QByteArray();
    QTest::newRow("finer") << QJsonArray { good } << QStringList { u"--dpi=600"_s } << QByteArray();
    QTest::newRow("negative") << QJsonArray { good } << QStringList { u"--negative"_s } << QByteArray();
    QTest::newRow("overprinted") << QJsonArray { good } << QStringList { u"--overprint"_s } << QByteArray();
    QTest::newRow("red ink") << QJsonArray { with(u"itemTextColor"_s, u"#ff0000"_s) } << QStringList()
                             << QByteArray();
    QTest::newRow("upright") << QJsonArray { upright } << QStringList() << QByteArray();
    QTest::newRow("moved") << QJsonArray { good } << QStringList { u"--offset=1mm,-2mm"_s } << QByteArray();
    QTest::newRow("turned and mirrored")
        << QJsonArray { good } << QStringList { u"--rotate=90"_s, u"--mirror"_s } << QByteArray();
    QTest::newRow("scaled") << QJsonArray { good } << QStringList { u"--scale=1.1"_s } << QByteArray();
    QTest::newRow("moved off") << QJsonArray { good } << QStringList { u"--offset=30mm,0"_s } << unread;
    QTest::newRow("moved off a negative")
        << QJsonArray { good } << QStringList { u"--negative"_s, u"--offset=30mm,0"_s } << unread;
    QTest::newRow("scaled off") << QJsonArray { good } << QStringList { u"--scale=4"_s } << unread;
    QTest::newRow("too small") << QJsonArray { with(u"itemWidth"_s, 40) } << QStringList() << unread;
    QTest::newRow("no ink") << QJsonArray { with(u"itemTextColor"_s, u"#ffffff"_s) } << QStringList()
                            << unread;
    QTest::newRow("an area on it") << QJsonArray { good, rectangle(2, { 60, 60, 40, 20 }, u"#000000"_s) }
                                   << QStringList() << unread;
    QTest::newRow("another code on it") << QJsonArray { good, other } << QStringList()
                                        << QByteArray("reads as \"B2\" from the plates; it has to be \"A1\"");
}

void tst_VxLabelCheck::rowsThatReadOtherwiseAreNotPrinted()
{
    QFETCH(QJsonArray, items);
    QFETCH(QStringList, arguments);
    QFETCH(QByteArray, words);
    write(u"a.vxl"_s, toJson(labelWith(items)));
    write(u"prices.csv"_s, "sku\nA1\n");
    const QStringList batch = QStringList { u"batch"_s, u"a.vxl"_s, u"--data=prices.csv"_s } + arguments;
    QCOMPARE(run(batch + QStringList { u"-o"_s, u"unread/{sku}.{ink}.png"_s }).code, 0);
    const ProgramResult result
        = run(batch + QStringList { u"-o"_s, u"out/{sku}.{ink}.png"_s, u"--verify"_s });
    QCOMPARE(result.code, words.isEmpty() ? 0 : 1);
    const QStringList black { u"A1.black.png"_s, u"A1.red.png"_s, u"manifest.jsonl"_s };
    QCOMPARE(files(u"out"_s), words.isEmpty() ? black : QStringList { u"manifest.jsonl"_s });
    if (words.isEmpty())
        return;
    QVERIFY2(result.err.contains("prices.csv:2: /items/1: barcode -1 (Code 128): " + words), result.err);
    const QString problem = objectsOf(read(u"out/manifest.jsonl"_s))[1][u"problems"_s][0].toString();
    QVERIFY2(problem.toUtf8().contains(words), qPrintable(problem));
}

void tst_VxLabelCheck::verifyLooksAtTheInksThatArePrinted()
{
    const ProgramResult result = run({ u"batch"_s, u"a.vxl"_s, u"--map"_s, u"black=red"_s, u"--verify"_s,
        u"-o"_s, u"out/{sku}.{ink}.png"_s });
    QVERIFY2(result.err.contains("is read in white light only: lasers do not see its ink"), result.err);
    QCOMPARE(result.code, 0);
}

void tst_VxLabelCheck::symbologiesThatCannotBeReadAreToldOnce()
{
    constexpr int postnet = 40;
    QJsonObject bars = smallCode(u"12345"_s);
    bars[u"barcodeSymbol"_s] = postnet;
    write(u"b.vxl"_s, toJson(labelWith({ smallCode(u"${sku}"_s, 20), bars })));
    const QByteArray note
        = "vxlabel: warning: b.vxl: USPS POSTNET cannot be verified: the reader does not know it; read a "
          "print with your own scanner\n";
    const ProgramResult checked = run({ u"check"_s, u"b.vxl"_s, u"--data=prices.csv"_s, u"--verify"_s });
    QCOMPARE(checked.err, note);
    QCOMPARE(checked.out, QByteArray("3 rows checked: nothing found\n"));
    const ProgramResult printed = run(
        { u"batch"_s, u"b.vxl"_s, u"--data=prices.csv"_s, u"--verify"_s, u"-o"_s, u"out/{sku}.{ink}.png"_s });
    QCOMPARE(printed.err, note);
    QCOMPARE(printed.code, 0);
}

void tst_VxLabelCheck::theExampleOfABatchIsSound()
{
    const QString label = sourceFile(u"examples/batch/shelf.vxl"_s);
    const ProgramResult checked
        = run({ u"check"_s, label, u"--data"_s, u"@1"_s, u"--strict"_s, u"--verify"_s });
    QCOMPARE(checked.err, QByteArray());
    QCOMPARE(checked.out, QByteArray("200 rows checked: nothing found\n"));
    QCOMPARE(checked.code, 0);
    expect({ u"batch"_s, label, u"--data"_s, u"@1"_s, u"--rows"_s, u"1-3"_s, u"--verify"_s, u"-o"_s,
               u"out/{ean}.{ink}.png"_s },
        0);
    // 210000100001 to 3: the sums 3 + 3 (1 + n) are 9, 12 and 15, and what they lack of tens are the check
    // digits.
    for (const QString &ean : { u"2100001000011"_s, u"2100001000028"_s, u"2100001000035"_s })
        QVERIFY2(files(u"out"_s).contains(ean + u".black.png"_s), qPrintable(ean));
}

QTEST_MAIN(tst_VxLabelCheck)
#include "tst_vxlabelcheck.moc"
