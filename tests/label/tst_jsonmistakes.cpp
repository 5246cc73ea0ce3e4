// SPDX-License-Identifier: BSD-3-Clause
#include "label/labellimits.h"
#include "tests/label/jsontexts.h"

#include <QRegularExpression>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace JsonTexts;

namespace {

struct Form
{
    const char *json;
    const char *name;
};

constexpr Form forms[] = { { "true", "true or false" }, { "1", "a number" }, { "\"x\"", "text" },
    { "[]", "a list" }, { "{}", "an object" }, { "null", "nothing" } };

} // namespace

class tst_JsonMistakes : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    void headMistakesAreNamed_data();
    void headMistakesAreNamed();
    void textMistakesAreNamed_data();
    void textMistakesAreNamed();
    void itemMistakesAreNamed_data();
    void itemMistakesAreNamed();
    void everyItemKeyHasItsType_data();
    void everyItemKeyHasItsType();
    void wholeNumbersFitTheirProperty_data();
    void wholeNumbersFitTheirProperty();
    void realNumbersAreDrawable_data();
    void realNumbersAreDrawable();
    void allProblemsAreReported();
    void onlyAHundredProblemsAreListed();
    void itemsAreLimited();
    void valuesAreLimited();
    void nestingIsLimited();
};

void tst_JsonMistakes::headMistakesAreNamed_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QString>("problem");

    const auto row = [](const char *from, const char *to, const char *problem) {
        QTest::addRow("%s -> %s", from, to) << edited(from, to) << QString::fromUtf8(problem);
    };
    row(R"("format": "vxlabel", )", "", "/format: is missing");
    row(R"("vxlabel")", "1", "/format: is a number, not text");
    row("vxlabel", "svg", R"(/format: "svg" is no format of a label)");
    row(R"("version": 6,)", "", "/version: is missing");
    row(R"("version": 6)", R"("version": "6")", "/version: is text, not a number");
    row(R"("version": 6)", R"("version": 7)",
        "/version: version 7 was made by a newer version of the program");
    row(R"("version": 6)", R"("version": 1e300)",
        "/version: version 1e+300 was made by a newer version of the program");
    row(R"("version": 6)", R"("version": 0)", "/version: 0 is no version of the format");
    row(R"("version": 6)", R"("version": -1)", "/version: -1 is no version of the format");
    row(R"("version": 6)", R"("version": 5.5)", "/version: 5.5 is no version of the format");
    row(R"("page": {"width": 100, "height": 50, "dpi": 300},)", "", "/page: is missing");
    row(R"({"width": 100, "height": 50, "dpi": 300})", "[]", "/page: is a list, not an object");
    row(R"("width": 100, )", "", "/page/width: is missing");
    row(R"("width": 100)", R"("width": "100")", "/page/width: is text, not a number");
    row(R"("width": 100)", R"("width": "nan")", "/page/width: is text, not a number");
    row(R"("width": 100)", R"("width": 1e308)", "/page/width: 1e+308 is out of range");
    row(R"("height": 50)", R"("height": 0)", "/page/height: 0 is out of range");
    row(R"("height": 50, )", "", "/page/height: is missing");
    row(R"("dpi": 300)", R"("dpi": 9)", "/page/dpi: 9 is out of range");
    row(R"(, "dpi": 300)", "", "/page/dpi: is missing");
    row(R"("dpi": 300)", R"("dpi": 300, "unit": "mm")", "/page/unit: is unknown");
    row(R"( "inks": [{"name": "black", "color": "#000000"}],)", "", "/inks: is missing");
    row(R"([{"name": "black", "color": "#000000"}])", "{}", "/inks: is an object, not a list");
    row(R"([{"name": "black", "color": "#000000"}])", "[]", "/inks: there is no ink to print in");
    row(R"({"name": "black", "color": "#000000"})", R"("black")",
        "/inks/0: unknown ink, text instead of an object");
    row(R"("name": "black", )", "", "/inks/0/name: is missing");
    row(R"("name": "black")", R"("name": null)", "/inks/0/name: is nothing, not text");
    row(R"("name": "black")", R"("name": "")", "/inks/0/name: the ink has no name");
    row(R"(, "color": "#000000")", "", "/inks/0/color: is missing");
    row("#000000", "ink", R"(/inks/0/color: "ink" is no colour)");
    row("#000000", "#000", "accepted");
    row("#000000", "black", "accepted");
    row("#000000", "#123456789", R"(/inks/0/color: "#123456789" is no colour)");
    row("#000000", "transparent", "/inks/0/color: the ink's colour is no opaque RGB colour");
    row("#000000", "#ffffff", "/inks/0/color: #ffffff is the paper's colour");
    row(R"("#000000")", R"("#000000", "gloss": 1)", "/inks/0/gloss: is unknown");
    row(R"("#000000"})", R"("#000000"}, {"name": "Black", "color": "#010101"})",
        R"(/inks/1/name: another ink is named "Black")");
    row(R"("paper": "#ffffff", )", "", "/paper: is missing");
    row("#ffffff", "white!", R"(/paper: "white!" is no colour)");
    row("#ffffff", "#80ffffff", "/paper: the paper's colour is no opaque RGB colour");
    row(R"("items": [])", R"("dither": "diffusion", "items": [])", "accepted");
    row(R"("items": [])", R"("dither": "noise", "items": [])", R"(/dither: "noise" is no kind of dithering)");
    row(R"("items": [])", R"("dither": "Ordered", "items": [])",
        R"(/dither: "Ordered" is no kind of dithering)");
    row(R"("items": [])", R"("dither": 1, "items": [])", "/dither: is a number, not text");
    row(R"("items": [])", R"("dither": null, "items": [])", "/dither: is nothing, not text");
    row(R"(, "items": [])", "", "/items: is missing");
    row(R"("items": [])", R"("items": 0)", "/items: is a number, not a list");
    row(R"("items": [])", R"("items": [], "layers": [])", "/layers: is unknown");
    row(R"("items": [])", R"("items": [], "a~b/c": [])", "/a~0b~1c: is unknown");
}

void tst_JsonMistakes::headMistakesAreNamed()
{
    QFETCH(QByteArray, text);
    QFETCH(QString, problem);
    QCOMPARE(problemsOf(text), QStringList(problem));
}

void tst_JsonMistakes::textMistakesAreNamed_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QString>("problem");
    QTest::addColumn<QString>("advice");

    const auto row = [](const char *name, const QByteArray &text, const char *problem, const char *advice) {
        QTest::newRow(name) << text << QString::fromUtf8(problem) << QString::fromUtf8(advice);
    };
    const char *const unfinished = "look before this place for a missing comma, quote or bracket";
    const char *const misspelt = "write text in double quotes, and numbers in digits with a point";
    row("comma", "{\n  \"é\": 1,\n}", "line 3, column 2: no valid JSON, object is missing after a comma",
        "remove the comma before this place");
    row("no comma", "{\n  \"a\": 1\n  \"b\": 2\n}", "line 3, column 4: no valid JSON, unterminated object",
        unfinished);
    row("no comma in a list", "{\"a\": [1 2]}", "line 1, column 11: no valid JSON, missing value separator",
        unfinished);
    row("no colon", R"({"a" 1})", "line 1, column 7: no valid JSON, missing name separator",
        "look before this place for a missing colon or quote");
    row("no quotes", R"({"a": black})", "line 1, column 7: no valid JSON, illegal number", misspelt);
    row("not a number", R"({"version": NaN})", "line 1, column 13: no valid JSON, illegal number", misspelt);
    row("huge number", R"({"version": 1e999})", "line 1, column 18: no valid JSON, illegal number", misspelt);
    row("rest", QByteArray(smallText) + "\nx",
        "line 2, column 1: no valid JSON, garbage at the end of the document", "");
    row("half a document", QByteArray(smallText).chopped(1),
        "line 1, column 167: no valid JSON, unterminated object", unfinished);
    row("Latin-1", "{\"a\": \"\xFC\"}", "line 1, column 8: no valid JSON, invalid UTF8 string",
        "save the file as UTF-8");
    row("list", "[1]", "holds a list, not a label", "");
}

void tst_JsonMistakes::textMistakesAreNamed()
{
    QFETCH(QByteArray, text);
    QFETCH(QString, problem);
    const LoadResult result = read(text);
    QVERIFY(!result.document);
    QCOMPARE(shortTexts(result.problems), QStringList(problem));
    QTEST(result.problems[0].advice, "advice");
}

void tst_JsonMistakes::itemMistakesAreNamed_data()
{
    QTest::addColumn<QByteArray>("item");
    QTest::addColumn<QString>("problem");
    QTest::addColumn<QString>("advice");

    const auto row = [](const char *item, const char *problem, const char *advice) {
        QTest::newRow(item) << QByteArray(item) << QString::fromUtf8(problem) << QString::fromUtf8(advice);
    };
    row("7", "/items/0: is a number, not an object", "");
    row("{}", "/items/0/itemShape: is missing", "add the number of the item's type");
    row(R"({"itemShape": "rectangle"})", "/items/0/itemShape: is text, not a number", "");
    row(R"({"itemShape": 1})", "/items/0/itemShape: 1 is no known type of item", "");
    row(R"({"itemShape": 65578.5})", "/items/0/itemShape: 65578.5 is out of range",
        "use a whole number from 0 to 4294967295");
    row(R"({"itemShape": 65578, "itemwidht": 1})", "/items/0/itemwidht: is unknown",
        R"(did you mean "itemWidth"?)");
    row(R"({"itemShape": 65578, "Visible": true})", "/items/0/Visible: is unknown",
        R"(did you mean "visible"?)");
    row(R"({"itemShape": 65578, "pos": [1, 2]})", "/items/0/pos: is unknown", "remove it");
    row(R"({"itemShape": 65578, "opacity": 1})", "/items/0/opacity: is unknown", "remove it");
    row(R"({"itemShape": 65578, "children": []})", "/items/0/children: this item holds no others",
        R"(move them to "items")");
    row(R"({"itemShape": 65578, "itemFillColor": "#ggg"})", R"(/items/0/itemFillColor: "#ggg" is no colour)",
        R"(write it as "#rrggbb", "#aarrggbb" or "transparent")");
    row(R"({"itemShape": 65578, "itemPenColor": ""})", R"(/items/0/itemPenColor: "" is no colour)",
        R"(write it as "#rrggbb", "#aarrggbb" or "transparent")");
    row(R"({"itemShape": 65557, "itemTextColor": "reddish"})",
        R"(/items/0/itemTextColor: "reddish" is no colour)",
        R"(write it as "#rrggbb", "#aarrggbb" or "transparent")");
    row(R"({"itemShape": 65557, "itemTextColor": 3})", "/items/0/itemTextColor: is a number, not text", "");
    row(R"({"itemShape": 65557, "itemFontSize": 0})", "/items/0/itemFontSize: 0 is no font size",
        "use a whole number from 1 on");
    row(R"({"itemShape": 65558, "itemFontSize": -12})", "/items/0/itemFontSize: -12 is no font size",
        "use a whole number from 1 on");
    row(R"({"itemShape": 65557, "itemSizeLimiting": 300})", "/items/0/itemSizeLimiting: 300 is out of range",
        "use a whole number from -128 to 127");
    QTest::newRow("too complicated") << QByteArray(
        R"({"itemShape": 65558, "itemHtml": ")" + QByteArray("<table><tr><td>").repeated(200) + "\"}")
                                     << u"/items/0/itemHtml: is too complicated to be laid out"_s
                                     << u"shorten or simplify it"_s;
    QTest::newRow("too long") << QByteArray(R"({"itemShape": 65557, "itemText": ")"
        + QByteArray(2'000'001, 'a')
        + "\"}") << u"/items/0/itemText: has 2000001 characters, of which only 2000000 would be kept"_s
                              << u"shorten or simplify it"_s;
    for (const char *list : { "[]", "[1,0,0,0,1,0,0]", "[1,0,0,0,1,0,0,0,1]", "[1,0,0,0,1,0,0,\"nan\"]",
             "[1,0,0,0,1,0,0,null]", "[1,0,0,0,1,0,0,1e8]", "[1,0,0,0,1,0,0,[0]]" }) {
        QTest::newRow(list) << rectangleWith(R"("itemTransform": )" + QByteArray(list))
                            << u"/items/0/itemTransform: is no list of 8 drawable numbers"_s
                            << u"write m11, m12, m13, m21, m22, m23, m31 and m32"_s;
    }
}

void tst_JsonMistakes::itemMistakesAreNamed()
{
    QFETCH(QByteArray, item);
    QFETCH(QString, problem);
    const LoadResult result = read(withItems(item));
    QVERIFY(!result.document);
    QCOMPARE(shortTexts(result.problems), QStringList(problem));
    QCOMPARE(result.problems[0].file, u"a.vxl"_s);
    QTEST(result.problems[0].advice, "advice");
}

void tst_JsonMistakes::everyItemKeyHasItsType_data()
{
    QTest::addColumn<QByteArray>("key");
    QTest::addColumn<QByteArray>("json");
    QTest::addColumn<QString>("problem");

    const QHash<QByteArray, QList<QByteArray>> keys {
        { "a number",
            { "itemShape", "itemId", "itemFlags", "itemQFlags", "itemZValue", "itemRotation",
                "itemHorizontalMirror", "itemVerticalMirror", "itemWidth", "itemHeight", "itemScaleX",
                "itemScaleY", "itemPenWidth", "itemPenStyle", "itemPenCapStyle", "itemPenJoinStyle",
                "itemBrushStyle", "itemPositionX", "itemPositionY", "datasourceId" } },
        { "text", { "itemPenColor", "itemFillColor", "datasourceField" } },
        { "true or false", { "allowOverprint", "visible" } },
    };
    for (auto needed = keys.begin(); needed != keys.end(); ++needed) {
        for (const QByteArray &key : needed.value()) {
            for (const auto &[json, name] : forms) {
                if (needed.key() != name)
                    QTest::addRow("%s: %s", key.constData(), json)
                        << key << QByteArray(json)
                        << u"is %1, not %2"_s.arg(QLatin1String(name), QLatin1String(needed.key()));
            }
        }
    }
    for (const auto &[json, name] : forms)
        QTest::addRow("itemTransform: %s", json)
            << QByteArray("itemTransform") << QByteArray(json) << u"is no list of 8 drawable numbers"_s;
}

void tst_JsonMistakes::everyItemKeyHasItsType()
{
    QFETCH(QByteArray, key);
    QFETCH(QByteArray, json);
    QFETCH(QString, problem);
    const QByteArray member = "\"" + key + "\": " + json;
    const QByteArray item = key == "itemShape" ? "{" + member + "}" : rectangleWith(member);
    QCOMPARE(problemsOf(withItems(item)), QStringList(u"/items/0/%1: %2"_s.arg(QLatin1String(key), problem)));
}

void tst_JsonMistakes::wholeNumbersFitTheirProperty_data()
{
    QTest::addColumn<QByteArray>("key");
    QTest::addColumn<QByteArray>("number");
    QTest::addColumn<bool>("accepted");

    const auto rows
        = [](const char *key, const char *least, const char *most, const char *below, const char *above) {
              for (const char *number : { least, most })
                  QTest::addRow("%s %s", key, number) << QByteArray(key) << QByteArray(number) << true;
              for (const char *number : { below, above, "0.5", "1e300" })
                  QTest::addRow("%s %s", key, number) << QByteArray(key) << QByteArray(number) << false;
          };
    rows("itemId", "-32768", "32767", "-32769", "32768");
    rows("itemPenWidth", "0", "65535", "-1", "65536");
    rows("itemPenStyle", "0", "65535", "-1", "65536");
    rows("itemBrushStyle", "0", "65535", "-1", "65536");
    rows("itemFlags", "0", "4294967295", "-1", "4294967296");
    rows("itemQFlags", "0", "1048575", "-1", "4294967296");
    rows("datasourceId", "-2147483648", "2147483647", "-2147483649", "2147483648");
}

void tst_JsonMistakes::wholeNumbersFitTheirProperty()
{
    QFETCH(QByteArray, key);
    QFETCH(QByteArray, number);
    QFETCH(bool, accepted);
    const LoadResult result = read(withItems(rectangleWith("\"" + key + "\": " + number)));
    QCOMPARE(result.document.has_value(), accepted);
    QCOMPARE(result.problems.size(), accepted ? 0 : 1);
    if (!accepted) {
        QCOMPARE(result.problems[0].where, u"/items/0/"_s + QLatin1String(key));
        QVERIFY(result.problems[0].what.endsWith(u" is out of range"_s));
    }
}

void tst_JsonMistakes::realNumbersAreDrawable_data()
{
    QTest::addColumn<QByteArray>("member");
    QTest::addColumn<QString>("problem");

    const QString range = u" is beyond the drawable range of ±1e+07"_s;
    for (const char *key : { "itemWidth", "itemHeight", "itemScaleX", "itemScaleY", "itemPositionX",
             "itemPositionY", "itemZValue", "itemRotation" }) {
        const QString pointer = u"/items/0/%1: "_s.arg(QLatin1String(key));
        const QByteArray name = "\"" + QByteArray(key) + "\": ";
        QTest::addRow("%s 1e7", key) << name + "1e7" << u"accepted"_s;
        QTest::addRow("%s 10000000.5", key) << name + "10000000.5" << pointer + u"10000000.5"_s + range;
        QTest::addRow("%s 1e308", key) << name + "1e308" << pointer + u"1e+308"_s + range;
        QTest::addRow("%s -1e308", key) << name + "-1e308" << pointer + u"-1e+308"_s + range;
        QTest::addRow("%s nan", key) << name + "\"nan\"" << pointer + u"is text, not a number"_s;
        QTest::addRow("%s inf", key) << name + "\"inf\"" << pointer + u"is text, not a number"_s;
    }
    QTest::newRow("negative width") << QByteArray(R"("itemWidth": -1)")
                                    << u"/items/0/itemWidth: -1 is negative"_s;
    QTest::newRow("negative height") << QByteArray(R"("itemHeight": -0.25)")
                                     << u"/items/0/itemHeight: -0.25 is negative"_s;
    QTest::newRow("no width") << QByteArray(R"("itemWidth": 0)") << u"accepted"_s;
}

void tst_JsonMistakes::realNumbersAreDrawable()
{
    QFETCH(QByteArray, member);
    QFETCH(QString, problem);
    QCOMPARE(problemsOf(withItems(rectangleWith(member))), QStringList(problem));
}

void tst_JsonMistakes::allProblemsAreReported()
{
    const QByteArray text
        = R"({"format": "vxlabel", "version": 6, "page": {"width": "a", "height": 0, "dpi": 300},
        "inks": [1, {"name": "a/b", "color": "#fff"}, {"name": "c", "color": 5}], "paper": 3, "extra": true,
        "items": [{"itemShape": 2}, {"itemShape": 65578, "itemWidth": -1, "nothing": 1}, []]})";
    QCOMPARE(problemsOf(text),
        QStringList({ u"/page/width: is text, not a number"_s,
            u"/inks/0: unknown ink, a number instead of an object"_s,
            u"/inks/2/color: is a number, not text"_s, u"/paper: is a number, not text"_s,
            u"/page/height: 0 is out of range"_s,
            u"/inks/1/name: \"a/b\" holds a character that file names do not take everywhere"_s,
            u"/extra: is unknown"_s, u"/items/0/itemShape: 2 is no known type of item"_s,
            u"/items/1/itemWidth: -1 is negative"_s, u"/items/1/nothing: is unknown"_s,
            u"/items/2: is a list, not an object"_s }));
}

void tst_JsonMistakes::onlyAHundredProblemsAreListed()
{
    const QByteArray hundred = QByteArray("0,").repeated(99) + "0";
    QCOMPARE(read(withItems(hundred)).problems.size(), 100);
    const Problems more = read(withItems(hundred + ",0,0")).problems;
    QCOMPARE(more.size(), 101);
    QCOMPARE(more.last().text(), u"a.vxl: and 2 more problems"_s);
}

void tst_JsonMistakes::itemsAreLimited()
{
    const QByteArray item = R"({"itemShape": 65578},)";
    const LoadResult most = read(withItems(item.repeated(20000).chopped(1)));
    QVERIFY(most.document);
    QCOMPARE(most.document->items().size(), 20000U);
    QCOMPARE(problemsOf(withItems(item.repeated(20001).chopped(1))), QStringList(u"/items: 20001 items"_s));
}

void tst_JsonMistakes::valuesAreLimited()
{
    // A bracket counts for the first member of its container, each comma for another.
    constexpr qint64 limit = LabelLimits::MaxJsonValues;
    const auto list = [](qint64 values) { return "[" + QByteArray("0,").repeated(values).chopped(1) + "]"; };
    QCOMPARE(problemsOf(list(limit)), QStringList(u"holds a list, not a label"_s));
    QCOMPARE(problemsOf(list(limit + 1)), QStringList(u"line 1, column 4000001: more than 2000000 values"_s));
    // Commas and brackets in a text are no values.
    QCOMPARE(problemsOf("[\"" + QByteArray(",[{\\\"").repeated(limit) + "\"]"),
        QStringList(u"holds a list, not a label"_s));
}

void tst_JsonMistakes::nestingIsLimited()
{
    const auto nested = [](int depth) { return QByteArray(depth, '[') + QByteArray(depth, ']'); };
    QCOMPARE(problemsOf(nested(136)), QStringList(u"holds a list, not a label"_s));
    QCOMPARE(problemsOf(nested(137)), QStringList(u"line 1, column 137: nested deeper than 136 levels"_s));
    QCOMPARE(
        problemsOf(nested(1'000'000)), QStringList(u"line 1, column 137: nested deeper than 136 levels"_s));
}

QTEST_MAIN(tst_JsonMistakes)
#include "tst_jsonmistakes.moc"
