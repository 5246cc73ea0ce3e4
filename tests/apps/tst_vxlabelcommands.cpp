// SPDX-License-Identifier: BSD-3-Clause
#include "tests/apps/programfolder.h"
#include "tests/apps/samplelabels.h"

#include <QFile>
#include <QImage>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace SampleLabels;

/// What the commands do when nothing is wrong.
class tst_VxLabelCommands : public QObject, private ProgramFolder
{
    Q_OBJECT

private Q_SLOTS:
    void init() { renew(); }

    void separatesIntoPlates();
    void reportsWhatPrints_data();
    void reportsWhatPrints();
    void writesPlatesAsBitmaps();
    void warnsOfColoursWithoutInk();
    void printsTheLayersThatAreChosen();
    void rendersTheProof_data();
    void rendersTheProof();
    void inspectsForPeople();
    void inspectsTexts();
    void inspectsPictures();
    void inspectsForPrograms();
    void inspectsContainers();
    void inspectsSources();
    void convertsWithoutLoss_data();
    void convertsWithoutLoss();
    void runsWithoutEnvironment();
};

void tst_VxLabelCommands::separatesIntoPlates()
{
    write(u"small.vxl"_s, toJson(smallLabel()));
    const ProgramResult result = run({ u"separate"_s, u"small.vxl"_s, u"-o"_s, u"new/plates"_s });
    QCOMPARE(result.err, QByteArray());
    QCOMPARE(result.code, 0);
    QCOMPARE(files(u"new/plates"_s),
        QStringList({ u"small.black.png"_s, u"small.proof.png"_s, u"small.red.png"_s }));

    const QImage black(path(u"new/plates/small.black.png"_s));
    const QImage red(path(u"new/plates/small.red.png"_s));
    const QImage proof(path(u"new/plates/small.proof.png"_s));
    for (int y = 0; y < 50; ++y) {
        for (int x = 0; x < 100; ++x) {
            const bool isRed = QRect(20, 15, 20, 10).contains(x, y);
            const bool isBlack = QRect(10, 10, 20, 10).contains(x, y) && !isRed;
            QCOMPARE(black.pixelColor(x, y), QColor(isBlack ? Qt::black : Qt::white));
            QCOMPARE(red.pixelColor(x, y), QColor(isRed ? Qt::black : Qt::white));
            QCOMPARE(proof.pixelColor(x, y), QColor(isRed ? Qt::red : isBlack ? Qt::black : Qt::white));
        }
    }
}

void tst_VxLabelCommands::reportsWhatPrints_data()
{
    QTest::addColumn<QStringList>("options");
    QTest::addColumn<QByteArray>("report");
    // The page has 100 x 50 = 5000 dots and 25.4 mm x 12.7 mm = 322.58 mm².
    QTest::newRow("knocked out") << QStringList()
                                 << QByteArray("black  150 dots  3.00 %   9.68 mm²\n"
                                               "red    200 dots  4.00 %  12.90 mm²\n");
    QTest::newRow("overprinted") << QStringList { u"--overprint"_s }
                                 << QByteArray("black  200 dots  4.00 %  12.90 mm²\n"
                                               "red    200 dots  4.00 %  12.90 mm²\n");
    QTest::newRow("negative") << QStringList { u"--negative"_s }
                              << QByteArray("black  4850 dots  97.00 %  312.90 mm²\n"
                                            "red    4800 dots  96.00 %  309.68 mm²\n");
    QTest::newRow("finer") << QStringList { u"--dpi"_s, u"300"_s }
                           << QByteArray("black  1350 dots  3.00 %   9.68 mm²\n"
                                         "red    1800 dots  4.00 %  12.90 mm²\n");
    // What is no picture is the same in all kinds of dithering.
    QTest::newRow("ordered") << QStringList { u"--dither"_s, u"ordered"_s }
                             << QByteArray("black  150 dots  3.00 %   9.68 mm²\n"
                                           "red    200 dots  4.00 %  12.90 mm²\n");
}

void tst_VxLabelCommands::reportsWhatPrints()
{
    QFETCH(QStringList, options);
    QFETCH(QByteArray, report);
    write(u"small.vxl"_s, toJson(smallLabel()));
    const ProgramResult result
        = run(QStringList { u"separate"_s, u"small.vxl"_s, u"-o"_s, u"."_s } + options);
    QCOMPARE(result.out, report);
    QCOMPARE(result.err, QByteArray());
    QCOMPARE(result.code, 0);
}

void tst_VxLabelCommands::writesPlatesAsBitmaps()
{
    write(u"small.vxl"_s, toJson(smallLabel()));
    QCOMPARE(run({ u"separate"_s, u"small.vxl"_s, u"-o"_s, u"."_s, u"--format"_s, u"pbm"_s }).code, 0);
    QCOMPARE(files(),
        QStringList({ u"small.black.pbm"_s, u"small.proof.png"_s, u"small.red.pbm"_s, u"small.vxl"_s }));

    const QByteArray bitmap = read(u"small.black.pbm"_s);
    const QByteArray head = "P4\n100 50\n";
    constexpr int bytesPerRow = 13;
    QVERIFY(bitmap.startsWith(head));
    QCOMPARE(bitmap.size(), head.size() + 50 * bytesPerRow);
    // Dots 10 to 29 of row 10, and 10 to 19 of row 15, where red has taken the others.
    QCOMPARE(bitmap.mid(head.size() + 9 * bytesPerRow, bytesPerRow).toHex(), QByteArray(26, '0'));
    QCOMPARE(bitmap.mid(head.size() + 10 * bytesPerRow, bytesPerRow).toHex(),
        QByteArray("003ffffc000000000000000000"));
    QCOMPARE(bitmap.mid(head.size() + 15 * bytesPerRow, bytesPerRow).toHex(),
        QByteArray("003ff000000000000000000000"));
}

void tst_VxLabelCommands::warnsOfColoursWithoutInk()
{
    write(u"green.vxl"_s, toJson(smallLabelWith({ { u"itemFillColor"_s, u"#00ff00"_s } })));
    const ProgramResult result = run({ u"separate"_s, u"green.vxl"_s, u"-o"_s, u"."_s });
    QCOMPARE(result.code, 0);
    QVERIFY2(isOneLine(result.err), result.err);
    QVERIFY2(result.err.startsWith("vxlabel: warning: green.vxl: ") && result.err.contains("items/0")
            && result.err.contains("#00ff00"),
        result.err);
    QCOMPARE(result.out,
        QByteArray("black    0 dots  0.00 %   0.00 mm²\n"
                   "red    200 dots  4.00 %  12.90 mm²\n"));
}

void tst_VxLabelCommands::printsTheLayersThatAreChosen()
{
    QJsonObject label = smallLabel();
    QJsonArray layers;
    for (const QString &name : { u"left"_s, u"right"_s }) {
        QJsonObject box = label[u"items"_s].toArray()[0].toObject();
        box[u"itemFillColor"_s] = name == u"left" ? u"#000000"_s : u"#ff0000"_s;
        layers.append(QJsonObject {
            { u"itemShape"_s, 65538 }, { u"name"_s, name }, { u"children"_s, QJsonArray { box } } });
    }
    label[u"items"_s] = layers;
    write(u"layers.vxl"_s, toJson(label));
    const ProgramResult left
        = run({ u"separate"_s, u"layers.vxl"_s, u"-o"_s, u"a"_s, u"--layer"_s, u"left"_s });
    QCOMPARE(left.err, QByteArray());
    QVERIFY2(left.out.startsWith("black  200 dots"), left.out);
    QVERIFY2(left.out.contains("red      0 dots"), left.out);
    const ProgramResult both = run({ u"render"_s, u"layers.vxl"_s, u"-o"_s, u"both.png"_s, u"--layer"_s,
        u"left"_s, u"--layer"_s, u"right"_s });
    QCOMPARE(both.code, 0);
    QCOMPARE(QImage(path(u"both.png"_s)).pixelColor(15, 15), QColor(255, 0, 0));
    const ProgramResult none
        = run({ u"render"_s, u"layers.vxl"_s, u"-o"_s, u"none.png"_s, u"--layer"_s, u"lefd"_s });
    QCOMPARE(none.code, 3);
    QCOMPARE(none.err,
        QByteArray("vxlabel: layers.vxl: /items: there is no layer \"lefd\"; did you mean \"left\"?\n"));
    QVERIFY(!files().contains(u"none.png"_s));
}

void tst_VxLabelCommands::rendersTheProof_data()
{
    QTest::addColumn<QStringList>("options");
    QTest::addColumn<QSize>("size");
    QTest::newRow("own resolution") << QStringList() << QSize(100, 50);
    QTest::newRow("double") << QStringList { u"--dpi"_s, u"200"_s } << QSize(200, 100);
    QTest::newRow("odd") << QStringList { u"--dpi=203.2"_s } << QSize(203, 102); // 203.2 x 101.6
}

void tst_VxLabelCommands::rendersTheProof()
{
    QFETCH(QStringList, options);
    QFETCH(QSize, size);
    write(u"small.vxl"_s, toJson(smallLabel()));
    const ProgramResult result
        = run(QStringList { u"render"_s, u"small.vxl"_s, u"-o"_s, u"small.png"_s } + options);
    QCOMPARE(result.code, 0);
    QCOMPARE(result.out, QByteArray());
    QCOMPARE(result.err, QByteArray());
    QCOMPARE(files(), QStringList({ u"small.png"_s, u"small.vxl"_s }));
    const QImage proof(path(u"small.png"_s));
    QCOMPARE(proof.size(), size);
    const auto colorAt = [&](double x, double y) {
        return proof.pixelColor(int(x / 100 * size.width()), int(y / 50 * size.height()));
    };
    QCOMPARE(colorAt(15, 12), QColor(Qt::black));
    QCOMPARE(colorAt(25, 18), QColor(Qt::red));
    QCOMPARE(colorAt(60, 40), QColor(Qt::white));
}

void tst_VxLabelCommands::inspectsForPeople()
{
    write(u"small.vxl"_s, toJson(smallLabelWith({ { u"itemPenStyle"_s, 2 }, { u"itemPenWidth"_s, 3 } })));
    const ProgramResult result = run({ u"inspect"_s, u"small.vxl"_s });
    QCOMPARE(result.err, QByteArray());
    QCOMPARE(result.out,
        QByteArray(
            "page    25.4 x 12.7 mm, 100 x 50 dots at 100 dpi\n"
            "paper   #ffffff\n"
            "inks    black #000000, red #ff0000\n"
            "dither  diffusion\n"
            "items   2\n"
            "\n"
            "index  item         x mm  y mm  width mm  height mm  rotation  pen             fill\n"
            "    0  rectangle 1  2.54  2.54      5.08       2.54         0  dash 3 #000000  solid #000000\n"
            "    1  rectangle 2  5.08  3.81      5.08       2.54         0  none            solid "
            "#ff0000\n"));
    QCOMPARE(result.code, 0);
}

void tst_VxLabelCommands::inspectsTexts()
{
    QJsonObject label = smallLabel();
    const QJsonObject text { { u"itemShape"_s, 65557 }, { u"itemId"_s, 3 },
        { u"itemText"_s, u"two\nlines"_s }, { u"itemTextColor"_s, u"#ff0000"_s }, { u"itemWidth"_s, 20 },
        { u"itemHeight"_s, 10 } };
    const QJsonObject box { { u"itemShape"_s, 65558 }, { u"itemId"_s, 4 }, { u"itemWidth"_s, 20 },
        { u"itemHeight"_s, 10 }, { u"itemHtml"_s, u"a <b>box</b> with twenty-five letters"_s } };
    label[u"items"_s] = QJsonArray { label[u"items"_s].toArray()[0], text, box };
    write(u"texts.vxl"_s, toJson(label));
    const ProgramResult result = run({ u"inspect"_s, u"texts.vxl"_s });
    QCOMPARE(result.err, QByteArray());
    const QByteArrayList lines = result.out.split('\n');
    QCOMPARE(lines.size(), 11);
    QVERIFY2(lines[6].endsWith("fill               text"), lines[6]);
    QVERIFY2(lines[7].endsWith("solid #000000"), lines[7]);
    QVERIFY2(lines[8].contains("Label Text 3") && lines[8].endsWith("  #ff0000 \"two lines\""), lines[8]);
    QVERIFY2(lines[9].endsWith("  #000000 \"a box with twenty-five …\""), lines[9]);

    const ProgramResult json = run({ u"inspect"_s, u"texts.vxl"_s, u"--json"_s });
    const QJsonArray items = QJsonDocument::fromJson(json.out)["items"_L1].toArray();
    QVERIFY(!items[0].toObject().contains("text"_L1));
    QCOMPARE(items[1]["text"_L1].toObject(),
        QJsonObject({ { u"color"_s, u"#ff0000"_s }, { u"content"_s, u"two\nlines"_s } }));
}

void tst_VxLabelCommands::inspectsContainers()
{
    QJsonObject label = smallLabel();
    const QJsonObject box { { u"itemShape"_s, 65578 }, { u"itemId"_s, 3 }, { u"itemPositionX"_s, 10 },
        { u"visible"_s, false } };
    const QJsonObject group { { u"itemShape"_s, 65537 }, { u"itemId"_s, 2 }, { u"itemPositionX"_s, 20 },
        { u"children"_s, QJsonArray { box } } };
    label[u"items"_s] = QJsonArray { QJsonObject { { u"itemShape"_s, 65538 }, { u"itemId"_s, 1 },
        { u"name"_s, u"front"_s }, { u"children"_s, QJsonArray { group } } } };
    write(u"tree.vxl"_s, toJson(label));
    const ProgramResult result = run({ u"inspect"_s, u"tree.vxl"_s });
    QCOMPARE(result.err, QByteArray());
    const QByteArrayList lines = result.out.split('\n');
    QCOMPARE(lines[4], QByteArray("items   3"));
    QCOMPARE(lines[7], QByteArray("    0  Layer item 1 \"front\""));
    QVERIFY2(lines[8].startsWith("  0.0    group 2 "), lines[8]);
    QVERIFY2(lines[9].startsWith("0.0.0      rectangle 3 (hidden)  2.54  0.00 "), lines[9]);

    const ProgramResult json = run({ u"inspect"_s, u"tree.vxl"_s, u"--json"_s });
    const QJsonObject layer = QJsonDocument::fromJson(json.out)["items"_L1][0].toObject();
    QCOMPARE(
        layer.keys(), QStringList({ u"children"_s, u"description"_s, u"index"_s, u"name"_s, u"type"_s }));
    const QJsonObject inner = layer[u"children"_s][0][u"children"_s][0].toObject();
    QCOMPARE(inner[u"description"_s], u"rectangle 3"_s);
    QCOMPARE(inner[u"visible"_s], false);
}

void tst_VxLabelCommands::inspectsPictures()
{
    // A file of one red pixel behind its marker.
    const QString pixel = u"AAAAAYlQTkcNChoKAAAADUlIRFIAAAABAAAAAQgCAAAAkHdT3gAAAAxJREFUeJxj+M/AAAADAQEA"
                          "yf6S7wAAAABJRU5ErkJggg=="_s;
    QJsonObject label = smallLabel();
    label[u"items"_s] = QJsonArray { QJsonObject { { u"itemShape"_s, 65548 }, { u"itemId"_s, 5 },
        { u"itemWidth"_s, 20 }, { u"itemHeight"_s, 10 }, { u"pixmapItemData"_s, pixel } } };
    write(u"picture.vxl"_s, toJson(label));
    const ProgramResult result = run({ u"inspect"_s, u"picture.vxl"_s });
    QCOMPARE(result.err, QByteArray());
    QVERIFY2(result.out.contains("Pixmap 5") && result.out.endsWith("1 x 1 pixels\n"), result.out);

    const ProgramResult json = run({ u"inspect"_s, u"picture.vxl"_s, u"--json"_s });
    QCOMPARE(QJsonDocument::fromJson(json.out)["items"_L1][0]["picture"_L1].toObject(),
        QJsonObject({ { u"width"_s, 1 }, { u"height"_s, 1 }, { u"transparent"_s, false } }));
}

void tst_VxLabelCommands::inspectsForPrograms()
{
    const QJsonObject translucent { { u"itemFillColor"_s, u"#80ff0000"_s }, { u"itemBrushStyle"_s, 2 } };
    QJsonObject label = smallLabelWith(translucent);
    label[u"items"_s] = QJsonArray { label[u"items"_s].toArray()[0] };
    label[u"dither"_s] = u"ordered"_s;
    write(u"small.vxl"_s, toJson(label));
    const ProgramResult result = run({ u"inspect"_s, u"--json"_s, u"small.vxl"_s });
    QCOMPARE(result.err, QByteArray());
    QCOMPARE(result.out, QByteArray(R"({
  "dither": "ordered",
  "inks": [
    {
      "color": "#000000",
      "name": "black"
    },
    {
      "color": "#ff0000",
      "name": "red"
    }
  ],
  "items": [
    {
      "description": "rectangle 1",
      "fill": {
        "color": "#80ff0000",
        "style": "dense 1"
      },
      "index": 0,
      "pen": {
        "color": "#000000",
        "style": "none",
        "width": 1
      },
      "position": {
        "x": 10,
        "y": 10
      },
      "rotation": 0,
      "size": {
        "height": 10,
        "width": 20
      },
      "type": 65578
    }
  ],
  "page": {
    "dots": {
      "height": 50,
      "width": 100
    },
    "dpi": 100,
    "height": 12.7,
    "width": 25.4
  },
  "paper": "#ffffff"
}
)"));
    QCOMPARE(result.code, 0);
}

void tst_VxLabelCommands::inspectsSources()
{
    QJsonObject label = smallLabel();
    label[u"sources"_s] = QJsonArray { QJsonObject { { u"id"_s, 2 }, { u"kind"_s, u"sql"_s },
                                           { u"location"_s, u"sqlite:shop.db"_s },
                                           { u"query"_s, u"SELECT *\nFROM labels"_s } },
        QJsonObject { { u"id"_s, 5 }, { u"kind"_s, u"counter"_s }, { u"start"_s, 100 } } };
    label[u"items"_s] = QJsonArray { QJsonObject { { u"itemShape"_s, 65557 }, { u"itemText"_s, u"x"_s },
        { u"itemDatasourceId"_s, 2 }, { u"itemDatasourceField"_s, u"sku"_s } } };
    write(u"bound.vxl"_s, toJson(label));
    const QByteArray table = run({ u"inspect"_s, u"bound.vxl"_s }).out;
    QVERIFY2(table.contains("\nsource  2 sql, location sqlite:shop.db, query SELECT * FROM labels\n"
                            "source  5 counter, start 100\n"),
        table);
    const QJsonObject json
        = QJsonDocument::fromJson(run({ u"inspect"_s, u"bound.vxl"_s, u"--json"_s }).out).object();
    QCOMPARE(json[u"sources"_s].toArray(), label[u"sources"_s].toArray());
    QCOMPARE(json[u"items"_s][0][u"source"_s].toObject(),
        QJsonObject({ { u"id"_s, 2 }, { u"field"_s, u"sku"_s } }));
}

void tst_VxLabelCommands::convertsWithoutLoss_data()
{
    QTest::addColumn<QString>("name");
    for (const QString &name : exampleNames())
        QTest::newRow(qPrintable(name)) << name;
}

void tst_VxLabelCommands::convertsWithoutLoss()
{
    QFETCH(QString, name);
    convert({ exampleFile(name), u"a.vxl"_s, u"b.vxb"_s, u"c.vxl"_s, u"d.vxb"_s });
    if (!textExampleNames().contains(name)) // those are completed when they are first saved
        QCOMPARE(read(u"a.vxl"_s), readExample(name));
    QVERIFY(read(u"b.vxb"_s) != read(u"a.vxl"_s));
    QCOMPARE(read(u"c.vxl"_s), read(u"a.vxl"_s));
    QCOMPARE(read(u"d.vxb"_s), read(u"b.vxb"_s));
}

void tst_VxLabelCommands::runsWithoutEnvironment()
{
    write(u"small.vxl"_s, toJson(smallLabel()));
    QStringList arguments { u"-i"_s };
    // How a sanitizer treats what others leak belongs to the build, not to the run.
    if (qEnvironmentVariableIsSet("LSAN_OPTIONS"))
        arguments.append(u"LSAN_OPTIONS=%1"_s.arg(qEnvironmentVariable("LSAN_OPTIONS")));
    arguments += { program(), u"render"_s, u"small.vxl"_s, u"-o"_s, u"small.png"_s };
    const ProgramResult result = runCommand(u"/usr/bin/env"_s, arguments);
    QCOMPARE(result.err, QByteArray());
    QCOMPARE(result.out, QByteArray());
    QCOMPARE(result.code, 0);
    QCOMPARE(QImage(path(u"small.png"_s)).size(), QSize(100, 50));
}

QTEST_GUILESS_MAIN(tst_VxLabelCommands)

#include "tst_vxlabelcommands.moc"
