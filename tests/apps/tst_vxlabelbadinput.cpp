// SPDX-License-Identifier: BSD-3-Clause
#include "tests/apps/programfolder.h"
#include "tests/apps/samplelabels.h"

#include <QFile>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace SampleLabels;

/// Arguments and labels that are not as they should be.
class tst_VxLabelBadInput : public QObject, private ProgramFolder
{
    Q_OBJECT

private Q_SLOTS:
    void init() { renew(); }

    void refusesWrongUsage_data();
    void refusesWrongUsage();
    void refusesToRenderOverTheLabel_data();
    void refusesToRenderOverTheLabel();
    void refusesBadLabels_data();
    void refusesBadLabels();
    void refusesDeclaredItemsThatAreMissing();
    void leavesBrokenItemsOutOnRequest_data();
    void leavesBrokenItemsOutOnRequest();
};

void tst_VxLabelBadInput::refusesWrongUsage_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QByteArray>("complaint");
    const auto row = [](const char *name, const QString &arguments, const QByteArray &complaint) {
        QTest::newRow(name) << arguments.split(u' ', Qt::SkipEmptyParts) << "vxlabel: " + complaint + '\n';
    };
    row("nothing", {}, "a command is missing; see vxlabel --help");
    row("unknown command", u"print"_s, "\"print\" was not expected; see vxlabel --help");
    row("mistyped command", u"seperate a.vxl -o a"_s,
        "\"seperate\" was not expected; did you mean \"separate\"?");
    row("unknown option", u"inspect a.vxl --xml"_s, "\"--xml\" was not expected; see vxlabel inspect --help");
    row("mistyped option", u"separate a.vxl -o a --Negativ"_s,
        "\"--Negativ\" was not expected; did you mean \"--negative\"?");
    row("beginning of a command", u"barc"_s, "\"barc\" was not expected; did you mean \"barcodes\"?");
    row("beginning of several options", u"separate a.vxl -o a --for"_s,
        "\"--for\" was not expected; did you mean \"--force\"?"); // --format is farther
    row("beginning that tells nothing", u"me"_s, "\"me\" was not expected; see vxlabel --help");
    row("mistyped option with its value", u"render a.vxl -o a.png --dihter=ordered"_s,
        "\"--dihter=ordered\" was not expected; did you mean \"--dither\"?");
    row("beginning of an option", u"separate a.vxl -o a --over"_s,
        "\"--over\" was not expected; did you mean \"--overprint\"?");
    row("mistyped option of the program", u"inspect a.vxl --keepgoing"_s,
        "\"--keepgoing\" was not expected; did you mean \"--keep-going\"?");
    row("mistyped dithering", u"render a.vxl -o a.png --dither orderd"_s,
        "--dither: takes diffusion, ordered or threshold, not orderd; did you mean \"ordered\"?");
    row("mistyped format", u"separate a.vxl -o a --format ppm"_s,
        "--format: takes png or pbm, not ppm; did you mean \"pbm\"?");
    row("mistyped way to go on", u"batch a.vxl -o a --on-error stpo"_s,
        "--on-error: takes skip or stop, not stpo; did you mean \"stop\"?");
    row("unknown shell", u"completion powershell"_s,
        "SHELL: takes bash, not powershell; see vxlabel completion --help");
    row("one label too many", u"inspect a.vxl b.vxl c.vxl"_s,
        "\"b.vxl\" was not expected; see vxlabel inspect --help");
    row("no label", u"inspect"_s, "LABEL is required; see vxlabel inspect --help");
    row("no output", u"render a.vxl"_s, "--output is required; see vxlabel render --help");
    const QByteArray resolution = "--dpi: takes a number from 10 to 9600, not ";
    row("resolution of letters", u"render a.vxl -o a.png --dpi fine"_s,
        resolution + "fine; see vxlabel render --help");
    row("resolution that is no number", u"render a.vxl -o a.png --dpi nan"_s,
        resolution + "nan; see vxlabel render --help");
    row("resolution too low", u"separate a.vxl -o a --dpi 9.99"_s,
        resolution + "9.99; see vxlabel separate --help");
    row("resolution too high", u"separate a.vxl -o a --dpi 1e9"_s,
        resolution + "1e9; see vxlabel separate --help");
    row("unknown format", u"separate a.vxl -o a --format gif"_s,
        "--format: takes png or pbm, not gif; see vxlabel separate --help");
    row("unknown dithering", u"separate a.vxl -o a --dither noise"_s,
        "--dither: takes diffusion, ordered or threshold, not noise; see vxlabel separate --help");
    row("unknown dithering of a proof", u"render a.vxl -o a.png --dither 1"_s,
        "--dither: takes diffusion, ordered or threshold, not 1; see vxlabel render --help");
    row("target without format", u"convert a.vxl b.txt"_s,
        "b.txt: the name tells no format; let it end in .vxl or .vxb");
    row("image of another format", u"render a.vxl -o a.jpg"_s,
        "a.jpg: the image is a PNG; let the name end in .png");
    row("image that is the label", u"render a.vxl -o a.vxl --force"_s,
        "a.vxl: the image is a PNG; let the name end in .png");
    QTest::newRow("empty label") << QStringList { u"inspect"_s, QString() }
                                 << QByteArray("vxlabel: LABEL: takes a name; see vxlabel inspect --help\n");
    QTest::newRow("empty output") << QStringList { u"separate"_s, u"a.vxl"_s, u"-o"_s,
        QString() } << QByteArray("vxlabel: --output: takes a name; see vxlabel separate --help\n");
}

void tst_VxLabelBadInput::refusesWrongUsage()
{
    QFETCH(QStringList, arguments);
    QFETCH(QByteArray, complaint);
    const ProgramResult result = run(arguments);
    QCOMPARE(result.err, complaint);
    QCOMPARE(result.out, QByteArray());
    QCOMPARE(result.code, 2);
    QCOMPARE(files(), QStringList());
}

void tst_VxLabelBadInput::refusesToRenderOverTheLabel_data()
{
    QTest::addColumn<QString>("label");
    QTest::addColumn<QString>("output");
    QTest::newRow("no ending") << u"label"_s << u"label"_s;
    QTest::newRow("the ending of an image") << u"label.png"_s << u"label.png"_s;
    QTest::newRow("by another path") << u"label.png"_s << u"./label.png"_s;
}

void tst_VxLabelBadInput::refusesToRenderOverTheLabel()
{
    QFETCH(QString, label);
    QFETCH(QString, output);
    write(label, "anything");
    const ProgramResult result = run({ u"render"_s, label, u"-o"_s, output, u"--force"_s });
    QCOMPARE(result.err, "vxlabel: " + output.toUtf8() + ": is the label itself; choose another name\n");
    QCOMPARE(result.code, 2);
    QCOMPARE(read(label), QByteArray("anything"));
}

void tst_VxLabelBadInput::refusesBadLabels_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QByteArray>("complaint");
    const auto row = [](const char *name, const QByteArray &content, const char *complaint) {
        QTest::newRow(name) << content << QByteArray(complaint);
    };
    const QByteArray small = toJson(smallLabel());
    const auto item = [](const char *key, const QJsonValue &value) {
        return toJson(smallLabelWith({ { QString::fromLatin1(key), value } }));
    };
    const auto page = [](const QJsonValue &width, const QJsonValue &dpi) {
        return toJson(withPage({ { u"width"_s, width }, { u"height"_s, 50 }, { u"dpi"_s, dpi } }));
    };
    const auto inks = [](const QJsonArray &list) { return toJson(document(smallPage(), list, {})); };

    row("empty", {}, "empty");
    row("truncated JSON", small.chopped(small.size() / 2), "line ");
    row("noise", QByteArray::fromHex("ff00fe13372a"), "bad.vxl");
    row("array", "[]", "bad.vxl");
    row("NaN", QByteArray(small).replace("\"itemWidth\": 20", "\"itemWidth\": NaN"), "line ");
    row("width 1e308", item("itemWidth", 1e308), "/items/0/itemWidth");
    row("negative width", item("itemWidth", -1), "/items/0/itemWidth");
    row("width as text", item("itemWidth", u"20"_s), "/items/0/itemWidth");
    row("position 1e308", item("itemPositionX", -1e308), "/items/0/itemPositionX");
    row("colour without meaning", item("itemFillColor", u"reddish"_s), "/items/0/itemFillColor");
    row("unknown shape", item("itemShape", 4711), "/items/0/itemShape");
    row("unknown key", item("itemWidht", 20), "/items/0/itemWidht");
    row("short transform", item("itemTransform", QJsonArray { 1, 0, 0 }), "/items/0/itemTransform");
    row("page of 0 mm", page(0, 300), "/page");
    row("page of 1e9 mm", page(1e9, 300), "/page");
    row("resolution 0", page(100, 0), "/page");
    row("too many dots", page(9'999, 9'600), "dpi");
    row("ink without colour", inks({ QJsonObject { { u"name"_s, u"black"_s } } }), "/inks/0");
    row("ink of unknown colour", inks({ ink(u"black"_s, u"blackish"_s) }), "/inks/0/color");
    row("ink that is no object", inks({ u"black"_s }), "/inks/0");
    row("ink named as a path", inks({ ink(u"../black"_s, u"#000000"_s) }), "/inks/0/name");
    row("no ink", inks({}), "/inks");
    row("newer version", QByteArray(small).replace("\"version\": 6", "\"version\": 7"), "newer");
    row("ten million items", R"({"items":[)" + QByteArray("{},").repeated(9'999'999) + "{}]}", "bad.vxl");
    row("deep", QByteArray(100'000, '[') + QByteArray(100'000, ']'), "bad.vxl");
}

void tst_VxLabelBadInput::refusesBadLabels()
{
    QFETCH(QByteArray, content);
    QFETCH(QByteArray, complaint);
    write(u"bad.vxl"_s, content);
    const ProgramResult result = runCommand(u"python3"_s,
        { toolFile(u"peak_memory.py"_s), u"peak"_s, program(), u"separate"_s, u"bad.vxl"_s, u"-o"_s,
            u"plates"_s });
    QVERIFY2(isOneLine(result.err), result.err.left(1000));
    QVERIFY2(result.err.startsWith("vxlabel: bad.vxl: ") && result.err.contains(complaint), result.err);
    QCOMPARE(result.out, QByteArray());
    QCOMPARE(result.code, 3);
    QCOMPARE(files(), QStringList({ u"bad.vxl"_s, u"peak"_s }));

    const qint64 kibibytes = read(u"peak"_s).toLongLong();
    QVERIFY(kibibytes > 1024);
#ifndef __SANITIZE_ADDRESS__
    QVERIFY2(kibibytes < 512 * 1024, qPrintable(QString::number(kibibytes)));
#endif
}

void tst_VxLabelBadInput::refusesDeclaredItemsThatAreMissing()
{
    QVERIFY(QFile::copy(exampleFile(u"bin-label"_s), path(u"a.vxl"_s)));
    QCOMPARE(run({ u"convert"_s, u"a.vxl"_s, u"a.vxb"_s }).code, 0);
    QByteArray data = read(u"a.vxb"_s);
    // The count stands before the type code of the first item.
    const qsizetype count = data.indexOf(QByteArray::fromHex("0001002a")) - 4;
    QCOMPARE(data.mid(count, 4).toHex(), QByteArray("00000073"));
    write(u"bad.vxb"_s, data.replace(count, 4, QByteArray::fromHex("00989680")));

    const ProgramResult result = run({ u"inspect"_s, u"bad.vxb"_s });
    QVERIFY2(isOneLine(result.err) && result.err.startsWith("vxlabel: bad.vxb: byte "), result.err);
    QCOMPARE(result.out, QByteArray());
    QCOMPARE(result.code, 3);
}

void tst_VxLabelBadInput::leavesBrokenItemsOutOnRequest_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<int>("code");
    QTest::addColumn<QByteArray>("report");
    const QStringList separate { u"separate"_s, u"broken.vxl"_s, u"-o"_s, u"plates"_s };
    const QByteArray rest = "black    0 dots  0.00 %   0.00 mm²\n"
                            "red    200 dots  4.00 %  12.90 mm²\n";
    QTest::newRow("refused") << separate << 3 << QByteArray();
    QTest::newRow("before the command") << QStringList { u"--keep-going"_s } + separate << 1 << rest;
    QTest::newRow("after the command") << separate + QStringList { u"--keep-going"_s } << 1 << rest;
}

void tst_VxLabelBadInput::leavesBrokenItemsOutOnRequest()
{
    QFETCH(QStringList, arguments);
    QFETCH(int, code);
    QFETCH(QByteArray, report);
    write(u"broken.vxl"_s, toJson(smallLabelWith({ { u"itemWidth"_s, u"wide"_s } })));
    const ProgramResult result = run(arguments);
    QVERIFY2(isOneLine(result.err) && result.err.startsWith("vxlabel: broken.vxl: /items/0/itemWidth: "),
        result.err);
    QCOMPARE(result.out, report);
    QCOMPARE(result.code, code);
    QCOMPARE(files(u"plates"_s).size(), code == 1 ? 3 : 0);
}

QTEST_GUILESS_MAIN(tst_VxLabelBadInput)

#include "tst_vxlabelbadinput.moc"
