// SPDX-License-Identifier: BSD-3-Clause
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QImage>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

#include <csignal>
#include <memory>

using namespace Qt::StringLiterals;

namespace {

const auto program = QStringLiteral(VX_PROGRAM);
const auto helloProgram = QStringLiteral(VX_HELLO);
const auto sourceFolder = QStringLiteral(VX_SOURCE_DIR);
const QStringList exampleNames { u"bin-label"_s, u"calibration-sheet"_s, u"warning-sign"_s };
constexpr int patience = 120'000;

struct Result
{
    int code = -1;
    QByteArray out;
    QByteArray err;
};

/// No display, no desktop session, no locale.
QProcessEnvironment bareEnvironment()
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    for (const auto &name : { "DISPLAY"_L1, "WAYLAND_DISPLAY"_L1, "XDG_RUNTIME_DIR"_L1, "QT_QPA_PLATFORM"_L1,
             "LANG"_L1, "LC_ALL"_L1 })
        environment.remove(name);
    return environment;
}

QString exampleFile(const QString &name)
{
    return u"%1/examples/%2.vxl"_s.arg(sourceFolder, name);
}

QString toolFile(const QString &name)
{
    return u"%1/tests/tools/%2"_s.arg(sourceFolder, name);
}

/// A solid rectangle without outline, in dots.
QJsonObject rectangle(int id, const QRect &place, const QString &color)
{
    return {
        { u"allowOverprint"_s, true },
        { u"itemBrushStyle"_s, 1 },
        { u"itemFillColor"_s, color },
        { u"itemFlags"_s, 1 },
        { u"itemHeight"_s, place.height() },
        { u"itemHorizontalMirror"_s, 0 },
        { u"itemId"_s, id },
        { u"itemPenCapStyle"_s, 0 },
        { u"itemPenColor"_s, u"#000000"_s },
        { u"itemPenJoinStyle"_s, 0 },
        { u"itemPenStyle"_s, 0 },
        { u"itemPenWidth"_s, 1 },
        { u"itemPositionX"_s, place.x() },
        { u"itemPositionY"_s, place.y() },
        { u"itemQFlags"_s, 263 },
        { u"itemRotation"_s, 0 },
        { u"itemScaleX"_s, 1 },
        { u"itemScaleY"_s, 1 },
        { u"itemShape"_s, 0x1002A },
        { u"itemTransform"_s, QJsonArray { 1, 0, 0, 0, 1, 0, 0, 0 } },
        { u"itemVerticalMirror"_s, 0 },
        { u"itemWidth"_s, place.width() },
        { u"itemZValue"_s, 0 },
    };
}

QJsonObject ink(const QString &name, const QString &color)
{
    return { { u"name"_s, name }, { u"color"_s, color } };
}

/// 100 x 50 dots at 100 dpi.
QJsonObject smallPage()
{
    return { { u"width"_s, 25.4 }, { u"height"_s, 12.7 }, { u"dpi"_s, 100 } };
}

QJsonObject document(const QJsonObject &page, const QJsonArray &inks, const QJsonArray &items)
{
    return { { u"format"_s, u"vxlabel"_s }, { u"version"_s, 6 }, { u"page"_s, page }, { u"inks"_s, inks },
        { u"paper"_s, u"#ffffff"_s }, { u"items"_s, items } };
}

/// A black rectangle of 200 dots and a red one of as many above it, which covers 50 of them.
QJsonObject smallLabel()
{
    return document(smallPage(), { ink(u"black"_s, u"#000000"_s), ink(u"red"_s, u"#ff0000"_s) },
        { rectangle(1, QRect(10, 10, 20, 10), u"#000000"_s),
            rectangle(2, QRect(20, 15, 20, 10), u"#ff0000"_s) });
}

/// The small label with other values under some keys of its first item.
QJsonObject smallLabelWith(const QJsonObject &values)
{
    QJsonObject label = smallLabel();
    QJsonArray items = label[u"items"_s].toArray();
    QJsonObject item = items[0].toObject();
    for (auto value = values.begin(); value != values.end(); ++value)
        item[value.key()] = value.value();
    items[0] = item;
    label[u"items"_s] = items;
    return label;
}

QJsonObject withPage(const QJsonObject &page)
{
    return document(page, { ink(u"black"_s, u"#000000"_s) }, {});
}

QByteArray toJson(const QJsonObject &object)
{
    return QJsonDocument(object).toJson();
}

/// Enough work for several seconds.
QByteArray slowLabel()
{
    QJsonArray inks;
    for (int i = 0; i < 8; ++i)
        inks.append(ink(u"ink %1"_s.arg(i), u"#0000%1"_s.arg(i * 16, 2, 16, QLatin1Char('0'))));
    QJsonArray items;
    for (int i = 0; i < 20'000; ++i)
        items.append(rectangle(1, QRect(0, 0, 2000, 2000), u"#000000"_s));
    return toJson(document({ { u"width"_s, 250 }, { u"height"_s, 250 }, { u"dpi"_s, 300 } }, inks, items));
}

/// Whether a process has installed a handler for a signal.
bool catchesSignal(qint64 pid, int signal)
{
    QFile status(u"/proc/%1/status"_s.arg(pid));
    if (!status.open(QIODevice::ReadOnly))
        return false;
    static const QRegularExpression caught(u"SigCgt:\\s*([0-9a-f]+)"_s);
    const auto mask
        = caught.match(QString::fromLatin1(status.readAll())).captured(1).toULongLong(nullptr, 16);
    return (mask >> (signal - 1) & 1) != 0;
}

bool isOneLine(const QByteArray &text)
{
    return text.count('\n') == 1 && text.endsWith('\n');
}

} // namespace

/// Drives the built program from outside, in a folder of its own for each test.
class tst_VxLabel : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void showsHelp_data();
    void showsHelp();
    void showsItsVersion();
    void refusesWrongUsage_data();
    void refusesWrongUsage();

    void separatesIntoPlates();
    void reportsWhatPrints_data();
    void reportsWhatPrints();
    void writesPlatesAsBitmaps();
    void warnsOfColoursWithoutInk();
    void rendersTheProof_data();
    void rendersTheProof();
    void inspectsForPeople();
    void inspectsForPrograms();
    void convertsWithoutLoss_data();
    void convertsWithoutLoss();
    void runsWithoutEnvironment();

    void refusesBadLabels_data();
    void refusesBadLabels();
    void refusesDeclaredItemsThatAreMissing();
    void leavesBrokenItemsOutOnRequest_data();
    void leavesBrokenItemsOutOnRequest();

    void keepsExistingFiles_data();
    void keepsExistingFiles();
    void keepsExistingFilesOfASet();
    void reportsUnwritableOutput_data();
    void reportsUnwritableOutput();
    void leavesNothingOnAFullDisk_data();
    void leavesNothingOnAFullDisk();
    void refusesTwoOutputsOfOneName();
    void reportsAFullStandardOutput();
    void reportsAClosedStandardOutput();

    void endsOnSignals_data();
    void endsOnSignals();
    void leavesWholeFilesWhenInterrupted();

    void examplesAreWhatTheirToolMakes();
    void examplePlatesAreRight_data();
    void examplePlatesAreRight();
    void helloSavesItsItemPlatesAndProof();

private:
    Result runCommand(const QString &command, const QStringList &arguments) const;
    Result run(const QStringList &arguments) const { return runCommand(program, arguments); }
    std::unique_ptr<QProcess> start(const QString &command, const QStringList &arguments) const;
    QString path(const QString &name) const { return m_folder->filePath(name); }
    void write(const QString &name, const QByteArray &content) const;
    QByteArray read(const QString &name) const;
    QStringList files(const QString &folder = {}) const;

    std::unique_ptr<QTemporaryDir> m_folder;
};

void tst_VxLabel::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
    QVERIFY(m_folder->isValid());
}

std::unique_ptr<QProcess> tst_VxLabel::start(const QString &command, const QStringList &arguments) const
{
    auto process = std::make_unique<QProcess>();
    process->setProcessEnvironment(bareEnvironment());
    process->setWorkingDirectory(m_folder->path());
    process->setStandardInputFile(QProcess::nullDevice());
    process->start(command, arguments);
    return process;
}

Result tst_VxLabel::runCommand(const QString &command, const QStringList &arguments) const
{
    const auto process = start(command, arguments);
    if (!process->waitForFinished(patience) || process->exitStatus() != QProcess::NormalExit)
        return { -1, {}, "no normal end: " + process->readAllStandardError() };
    return { process->exitCode(), process->readAllStandardOutput(), process->readAllStandardError() };
}

void tst_VxLabel::write(const QString &name, const QByteArray &content) const
{
    QFile file(path(name));
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write(content), content.size());
}

QByteArray tst_VxLabel::read(const QString &name) const
{
    QFile file(path(name));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QStringList tst_VxLabel::files(const QString &folder) const
{
    return QDir(path(folder))
        .entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
}

void tst_VxLabel::showsHelp_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QStringList>("contents");
    QTest::newRow("program") << QStringList { u"--help"_s }
                             << QStringList { u"render"_s, u"separate"_s, u"inspect"_s, u"convert"_s,
                                    u"--keep-going"_s };
    QTest::newRow("render") << QStringList { u"render"_s, u"--help"_s }
                            << QStringList { u"Example:\n  vxlabel render "_s, u"--dpi"_s, u"--force"_s };
    QTest::newRow("separate") << QStringList { u"separate"_s, u"--help"_s }
                              << QStringList { u"Example:\n  vxlabel separate "_s, u"--negative"_s,
                                     u"--overprint"_s, u"--format"_s };
    QTest::newRow("inspect") << QStringList { u"inspect"_s, u"--help"_s }
                             << QStringList { u"Example:\n  vxlabel inspect "_s, u"--json"_s };
    QTest::newRow("convert") << QStringList { u"convert"_s, u"--help"_s }
                             << QStringList { u"Example:\n  vxlabel convert "_s, u"TARGET"_s };
}

void tst_VxLabel::showsHelp()
{
    QFETCH(QStringList, arguments);
    QFETCH(QStringList, contents);
    const Result result = run(arguments);
    QCOMPARE(result.code, 0);
    QCOMPARE(result.err, QByteArray());
    const QString text = QString::fromUtf8(result.out);
    for (const QString &content : contents)
        QVERIFY2(text.contains(content), qPrintable(content));
    static const QRegularExpression code(u"^  (\\d+) "_s, QRegularExpression::MultilineOption);
    QStringList codes;
    for (const auto &match : code.globalMatch(text.mid(text.indexOf(u"Exit codes:"))))
        codes.append(match.captured(1));
    QCOMPARE(codes, QStringList({ u"0"_s, u"1"_s, u"2"_s, u"3"_s, u"4"_s, u"5"_s, u"130"_s }));
}

void tst_VxLabel::showsItsVersion()
{
    const Result result = run({ u"--version"_s });
    QCOMPARE(result.code, 0);
    static const QRegularExpression version(u"^vxlabel \\d+\\.\\d+\\.\\d+\\n$"_s);
    QVERIFY2(version.match(QString::fromUtf8(result.out)).hasMatch(), result.out);
    QCOMPARE(result.err, QByteArray());
}

void tst_VxLabel::refusesWrongUsage_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QByteArray>("complaint");
    const auto row = [](const char *name, const QStringList &arguments, const char *what) {
        QTest::newRow(name) << arguments << "vxlabel: " + QByteArray(what) + "; see vxlabel --help\n";
    };
    row("nothing", {}, "a command is missing");
    row("unknown command", { u"print"_s }, "The following argument was not expected: print");
    row("unknown option", { u"inspect"_s, u"a.vxl"_s, u"--xml"_s },
        "The following argument was not expected: --xml");
    row("no label", { u"inspect"_s }, "LABEL is required");
    row("empty label", { u"inspect"_s, QString() }, "LABEL: takes a name");
    row("no output", { u"render"_s, u"a.vxl"_s }, "--output is required");
    row("empty output", { u"separate"_s, u"a.vxl"_s, u"-o"_s, QString() }, "--output: takes a name");
    row("resolution of letters", { u"render"_s, u"a.vxl"_s, u"-o"_s, u"a.png"_s, u"--dpi"_s, u"fine"_s },
        "--dpi: takes a number from 10 to 9600, not fine");
    row("resolution that is no number",
        { u"render"_s, u"a.vxl"_s, u"-o"_s, u"a.png"_s, u"--dpi"_s, u"nan"_s },
        "--dpi: takes a number from 10 to 9600, not nan");
    row("resolution too low", { u"separate"_s, u"a.vxl"_s, u"-o"_s, u"a"_s, u"--dpi"_s, u"9.99"_s },
        "--dpi: takes a number from 10 to 9600, not 9.99");
    row("resolution too high", { u"separate"_s, u"a.vxl"_s, u"-o"_s, u"a"_s, u"--dpi"_s, u"1e9"_s },
        "--dpi: takes a number from 10 to 9600, not 1e9");
    row("unknown format", { u"separate"_s, u"a.vxl"_s, u"-o"_s, u"a"_s, u"--format"_s, u"gif"_s },
        "--format: gif not in {png,pbm}");
    QTest::newRow("target without format") << QStringList { u"convert"_s, u"a.vxl"_s,
        u"b.txt"_s } << QByteArray("vxlabel: b.txt: the name tells no format; let it end in .vxl or .vxb\n");
}

void tst_VxLabel::refusesWrongUsage()
{
    QFETCH(QStringList, arguments);
    QFETCH(QByteArray, complaint);
    const Result result = run(arguments);
    QCOMPARE(result.err, complaint);
    QCOMPARE(result.out, QByteArray());
    QCOMPARE(result.code, 2);
    QCOMPARE(files(), QStringList());
}

void tst_VxLabel::separatesIntoPlates()
{
    write(u"small.vxl"_s, toJson(smallLabel()));
    const Result result = run({ u"separate"_s, u"small.vxl"_s, u"-o"_s, u"new/plates"_s });
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

void tst_VxLabel::reportsWhatPrints_data()
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
}

void tst_VxLabel::reportsWhatPrints()
{
    QFETCH(QStringList, options);
    QFETCH(QByteArray, report);
    write(u"small.vxl"_s, toJson(smallLabel()));
    const Result result = run(QStringList { u"separate"_s, u"small.vxl"_s, u"-o"_s, u"."_s } + options);
    QCOMPARE(result.out, report);
    QCOMPARE(result.err, QByteArray());
    QCOMPARE(result.code, 0);
}

void tst_VxLabel::writesPlatesAsBitmaps()
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

void tst_VxLabel::warnsOfColoursWithoutInk()
{
    write(u"green.vxl"_s, toJson(smallLabelWith({ { u"itemFillColor"_s, u"#00ff00"_s } })));
    const Result result = run({ u"separate"_s, u"green.vxl"_s, u"-o"_s, u"."_s });
    QCOMPARE(result.code, 0);
    QVERIFY2(isOneLine(result.err), result.err);
    QVERIFY2(result.err.startsWith("vxlabel: green.vxl: ") && result.err.contains("items/0")
            && result.err.contains("#00ff00"),
        result.err);
    QCOMPARE(result.out,
        QByteArray("black    0 dots  0.00 %   0.00 mm²\n"
                   "red    200 dots  4.00 %  12.90 mm²\n"));
}

void tst_VxLabel::rendersTheProof_data()
{
    QTest::addColumn<QStringList>("options");
    QTest::addColumn<QSize>("size");
    QTest::newRow("own resolution") << QStringList() << QSize(100, 50);
    QTest::newRow("double") << QStringList { u"--dpi"_s, u"200"_s } << QSize(200, 100);
    QTest::newRow("odd") << QStringList { u"--dpi=203.2"_s } << QSize(203, 102); // 203.2 x 101.6
}

void tst_VxLabel::rendersTheProof()
{
    QFETCH(QStringList, options);
    QFETCH(QSize, size);
    write(u"small.vxl"_s, toJson(smallLabel()));
    const Result result = run(QStringList { u"render"_s, u"small.vxl"_s, u"-o"_s, u"small.png"_s } + options);
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

void tst_VxLabel::inspectsForPeople()
{
    write(u"small.vxl"_s, toJson(smallLabelWith({ { u"itemPenStyle"_s, 2 }, { u"itemPenWidth"_s, 3 } })));
    const Result result = run({ u"inspect"_s, u"small.vxl"_s });
    QCOMPARE(result.err, QByteArray());
    QCOMPARE(result.out,
        QByteArray(
            "page   25.4 x 12.7 mm, 100 x 50 dots at 100 dpi\n"
            "paper  #ffffff\n"
            "inks   black #000000, red #ff0000\n"
            "items  2\n"
            "\n"
            "index  item         x mm  y mm  width mm  height mm  rotation  pen             fill\n"
            "    0  rectangle 1  2.54  2.54      5.08       2.54         0  dash 3 #000000  solid #000000\n"
            "    1  rectangle 2  5.08  3.81      5.08       2.54         0  none            solid "
            "#ff0000\n"));
    QCOMPARE(result.code, 0);
}

void tst_VxLabel::inspectsForPrograms()
{
    const QJsonObject translucent { { u"itemFillColor"_s, u"#80ff0000"_s }, { u"itemBrushStyle"_s, 2 } };
    QJsonObject label = smallLabelWith(translucent);
    label[u"items"_s] = QJsonArray { label[u"items"_s].toArray()[0] };
    write(u"small.vxl"_s, toJson(label));
    const Result result = run({ u"inspect"_s, u"--json"_s, u"small.vxl"_s });
    QCOMPARE(result.err, QByteArray());
    QCOMPARE(result.out, QByteArray(R"({
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

void tst_VxLabel::convertsWithoutLoss_data()
{
    QTest::addColumn<QString>("name");
    for (const QString &name : exampleNames)
        QTest::newRow(qPrintable(name)) << name;
}

void tst_VxLabel::convertsWithoutLoss()
{
    QFETCH(QString, name);
    const QString text = exampleFile(name);
    for (const QStringList &way :
        { QStringList { text, u"a.vxb"_s }, { u"a.vxb"_s, u"b.vxl"_s }, { u"b.vxl"_s, u"c.vxb"_s } }) {
        const Result result = run({ u"convert"_s, way[0], way[1] });
        QCOMPARE(result.err, QByteArray());
        QCOMPARE(result.out, QByteArray());
        QCOMPARE(result.code, 0);
    }
    QFile original(text);
    QVERIFY(original.open(QIODevice::ReadOnly));
    QCOMPARE(read(u"b.vxl"_s), original.readAll());
    QVERIFY(read(u"a.vxb"_s) != read(u"b.vxl"_s));
    QCOMPARE(read(u"c.vxb"_s), read(u"a.vxb"_s));
}

void tst_VxLabel::runsWithoutEnvironment()
{
    write(u"small.vxl"_s, toJson(smallLabel()));
    QStringList arguments { u"-i"_s };
    // How a sanitizer treats what others leak belongs to the build, not to the run.
    if (qEnvironmentVariableIsSet("LSAN_OPTIONS"))
        arguments.append(u"LSAN_OPTIONS=%1"_s.arg(qEnvironmentVariable("LSAN_OPTIONS")));
    arguments += { program, u"render"_s, u"small.vxl"_s, u"-o"_s, u"small.png"_s };
    const Result result = runCommand(u"/usr/bin/env"_s, arguments);
    QCOMPARE(result.err, QByteArray());
    QCOMPARE(result.out, QByteArray());
    QCOMPARE(result.code, 0);
    QCOMPARE(QImage(path(u"small.png"_s)).size(), QSize(100, 50));
}

void tst_VxLabel::refusesBadLabels_data()
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

void tst_VxLabel::refusesBadLabels()
{
    QFETCH(QByteArray, content);
    QFETCH(QByteArray, complaint);
    write(u"bad.vxl"_s, content);
    const Result result = runCommand(u"python3"_s,
        { toolFile(u"peak_memory.py"_s), u"peak"_s, program, u"separate"_s, u"bad.vxl"_s, u"-o"_s,
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

void tst_VxLabel::refusesDeclaredItemsThatAreMissing()
{
    QVERIFY(QFile::copy(exampleFile(u"bin-label"_s), path(u"a.vxl"_s)));
    QCOMPARE(run({ u"convert"_s, u"a.vxl"_s, u"a.vxb"_s }).code, 0);
    QByteArray data = read(u"a.vxb"_s);
    // The count stands before the type code of the first item.
    const qsizetype count = data.indexOf(QByteArray::fromHex("0001002a")) - 4;
    QCOMPARE(data.mid(count, 4).toHex(), QByteArray("00000073"));
    write(u"bad.vxb"_s, data.replace(count, 4, QByteArray::fromHex("00989680")));

    const Result result = run({ u"inspect"_s, u"bad.vxb"_s });
    QVERIFY2(isOneLine(result.err) && result.err.startsWith("vxlabel: bad.vxb: byte "), result.err);
    QCOMPARE(result.out, QByteArray());
    QCOMPARE(result.code, 3);
}

void tst_VxLabel::leavesBrokenItemsOutOnRequest_data()
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

void tst_VxLabel::leavesBrokenItemsOutOnRequest()
{
    QFETCH(QStringList, arguments);
    QFETCH(int, code);
    QFETCH(QByteArray, report);
    write(u"broken.vxl"_s, toJson(smallLabelWith({ { u"itemWidth"_s, u"wide"_s } })));
    const Result result = run(arguments);
    QVERIFY2(isOneLine(result.err) && result.err.startsWith("vxlabel: broken.vxl: /items/0/itemWidth: "),
        result.err);
    QCOMPARE(result.out, report);
    QCOMPARE(result.code, code);
    QCOMPARE(files(u"plates"_s).size(), code == 1 ? 3 : 0);
}

void tst_VxLabel::keepsExistingFiles_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QString>("existing");
    QTest::newRow("render") << QStringList { u"render"_s, u"small.vxl"_s, u"-o"_s, u"there.png"_s }
                            << u"there.png"_s;
    QTest::newRow("separate") << QStringList { u"separate"_s, u"small.vxl"_s, u"-o"_s, u"."_s }
                              << u"small.red.png"_s;
    QTest::newRow("proof") << QStringList { u"separate"_s, u"small.vxl"_s, u"-o"_s, u"."_s }
                           << u"small.proof.png"_s;
    QTest::newRow("convert") << QStringList { u"convert"_s, u"small.vxl"_s, u"there.vxb"_s }
                             << u"there.vxb"_s;
    QTest::newRow("convert in place")
        << QStringList { u"convert"_s, u"small.vxl"_s, u"small.vxl"_s } << u"small.vxl"_s;
}

void tst_VxLabel::keepsExistingFiles()
{
    QFETCH(QStringList, arguments);
    QFETCH(QString, existing);
    write(existing, "precious");
    write(u"small.vxl"_s, toJson(smallLabel()));
    const QByteArray before = read(existing);
    const QStringList there = files();

    const Result refused = run(arguments);
    QVERIFY2(isOneLine(refused.err) && refused.err.startsWith("vxlabel: ")
            && refused.err.endsWith(existing.toUtf8() + ": exists already; give --force to replace it\n"),
        refused.err);
    QCOMPARE(refused.code, 5);
    QCOMPARE(read(existing), before);
    QCOMPARE(files(), there);

    const Result forced = run(arguments + QStringList { u"--force"_s });
    QCOMPARE(forced.err, QByteArray());
    QCOMPARE(forced.code, 0);
    QVERIFY(read(existing) != before);
}

void tst_VxLabel::keepsExistingFilesOfASet()
{
    write(u"small.vxl"_s, toJson(smallLabel()));
    write(u"small.black.png"_s, "precious");
    write(u"small.proof.png"_s, "precious");
    const Result result = run({ u"separate"_s, u"small.vxl"_s, u"-o"_s, u"."_s });
    QCOMPARE(result.err.count('\n'), 2);
    QCOMPARE(result.err.count("exists already"), 2);
    QCOMPARE(result.out, QByteArray());
    QCOMPARE(result.code, 5);
    QCOMPARE(files(), QStringList({ u"small.black.png"_s, u"small.proof.png"_s, u"small.vxl"_s }));
}

void tst_VxLabel::reportsUnwritableOutput_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QByteArray>("target");
    const auto row = [](const char *name, const QString &command, const QString &target) {
        QStringList arguments { command, u"small.vxl"_s };
        if (command != u"convert"_s)
            arguments.append(u"-o"_s);
        QTest::newRow(name) << arguments + QStringList { target, u"--force"_s } << target.toUtf8();
    };
    row("image below a file", u"render"_s, u"small.vxl/a.png"_s);
    row("image in no folder", u"render"_s, u"nowhere/a.png"_s);
    row("image in /proc", u"render"_s, u"/proc/a.png"_s);
    row("image as a device", u"render"_s, u"/dev/full"_s);
    row("image as a folder", u"render"_s, u"folder"_s);
    row("plates below a file", u"separate"_s, u"small.vxl/plates"_s);
    row("plates into a file", u"separate"_s, u"small.vxl"_s);
    row("plates in /proc", u"separate"_s, u"/proc/plates"_s);
    row("label below a file", u"convert"_s, u"small.vxl/a.vxb"_s);
    row("label in /proc", u"convert"_s, u"/proc/a.vxb"_s);
}

void tst_VxLabel::reportsUnwritableOutput()
{
    QFETCH(QStringList, arguments);
    QFETCH(QByteArray, target);
    const QByteArray label = toJson(smallLabel());
    write(u"small.vxl"_s, label);
    QVERIFY(QDir(m_folder->path()).mkdir(u"folder"_s));
    const Result result = run(arguments);
    QVERIFY2(isOneLine(result.err) && result.err.startsWith("vxlabel: " + target), result.err);
    QCOMPARE(result.out, QByteArray());
    QCOMPARE(result.code, 5);
    QCOMPARE(files(), QStringList({ u"folder"_s, u"small.vxl"_s }));
    QCOMPARE(files(u"folder"_s), QStringList());
    QCOMPARE(read(u"small.vxl"_s), label);
}

void tst_VxLabel::leavesNothingOnAFullDisk_data()
{
    QTest::addColumn<QString>("command");
    QTest::addColumn<int>("kibibytes");
    // The plates have about 10 and 33 KiB: with the larger limit only the second fails.
    QTest::newRow("image") << u"render sign.vxl -o sign.png"_s << 1;
    QTest::newRow("first plate") << u"separate sign.vxl -o plates"_s << 1;
    QTest::newRow("second plate") << u"separate sign.vxl -o plates"_s << 20;
    QTest::newRow("label") << u"convert sign.vxl sign.vxb"_s << 1;
}

void tst_VxLabel::leavesNothingOnAFullDisk()
{
    QFETCH(QString, command);
    QFETCH(int, kibibytes);
    QVERIFY(QFile::copy(exampleFile(u"warning-sign"_s), path(u"sign.vxl"_s)));
    const Result result = runCommand(u"bash"_s,
        { u"-c"_s, u"ulimit -f %1; exec '%2' %3"_s.arg(QString::number(kibibytes), program, command) });
    QVERIFY2(isOneLine(result.err) && result.err.contains("File too large"), result.err);
    QCOMPARE(result.out, QByteArray());
    QCOMPARE(result.code, 5);
    QCOMPARE(files(), QStringList({ u"sign.vxl"_s }));
}

void tst_VxLabel::refusesTwoOutputsOfOneName()
{
    write(u"small.vxl"_s, toJson(document(smallPage(), { ink(u"Proof"_s, u"#000000"_s) }, {})));
    const Result result = run({ u"separate"_s, u"small.vxl"_s, u"-o"_s, u"."_s, u"--force"_s });
    QCOMPARE(
        result.err, QByteArray("vxlabel: ./small.proof.png: two outputs have this name; rename an ink\n"));
    QCOMPARE(result.code, 5);
    QCOMPARE(files(), QStringList({ u"small.vxl"_s }));
}

void tst_VxLabel::reportsAFullStandardOutput()
{
    write(u"small.vxl"_s, toJson(smallLabel()));
    for (const auto &arguments :
        { "inspect small.vxl"_L1, "inspect small.vxl --json"_L1, "--help"_L1, "--version"_L1 }) {
        const Result result
            = runCommand(u"bash"_s, { u"-c"_s, u"exec '%1' %2 > /dev/full"_s.arg(program, arguments) });
        QCOMPARE(result.err, QByteArray("vxlabel: standard output: No space left on device\n"));
        QCOMPARE(result.code, 5);
    }
}

void tst_VxLabel::reportsAClosedStandardOutput()
{
    write(u"small.vxl"_s, toJson(smallLabel()));
    const Result result = runCommand(
        u"bash"_s, { u"-c"_s, u"exec '%1' separate small.vxl -o plates >&- <&-"_s.arg(program) });
    QCOMPARE(result.err, QByteArray("vxlabel: standard output: Bad file descriptor\n"));
    QCOMPARE(result.code, 5);
    for (const QString &file : files(u"plates"_s))
        QVERIFY2(!QImage(path(u"plates/"_s + file)).isNull(), qPrintable(file));
}

void tst_VxLabel::endsOnSignals_data()
{
    QTest::addColumn<int>("signal");
    QTest::newRow("SIGINT") << SIGINT;
    QTest::newRow("SIGTERM") << SIGTERM;
}

void tst_VxLabel::endsOnSignals()
{
    QFETCH(int, signal);
    write(u"slow.vxl"_s, slowLabel());
    const auto process = start(program, { u"separate"_s, u"slow.vxl"_s, u"-o"_s, u"plates"_s });
    QVERIFY(process->waitForStarted());
    QTRY_VERIFY(catchesSignal(process->processId(), signal));
    QCOMPARE(::kill(pid_t(process->processId()), signal), 0);
    QVERIFY(process->waitForFinished(patience));
    QCOMPARE(process->exitStatus(), QProcess::NormalExit);
    QCOMPARE(process->exitCode(), 130);
    QCOMPARE(process->readAllStandardError(), QByteArray("vxlabel: interrupted\n"));
    QCOMPARE(process->readAllStandardOutput(), QByteArray());
    QCOMPARE(files(), QStringList({ u"slow.vxl"_s }));
}

void tst_VxLabel::leavesWholeFilesWhenInterrupted()
{
    const QStringList arguments { u"separate"_s, exampleFile(u"calibration-sheet"_s), u"-o"_s, u"plates"_s,
        u"--force"_s };
    QElapsedTimer timer;
    timer.start();
    QCOMPARE(run(arguments).code, 0);
    const int whole = int(timer.elapsed());
    const QStringList names = files(u"plates"_s);
    QCOMPARE(names.size(), 4);

    constexpr int rounds = 12;
    for (int round = 0; round < rounds; ++round) {
        const auto process = start(program, arguments);
        QVERIFY(process->waitForStarted());
        QTRY_VERIFY(catchesSignal(process->processId(), SIGINT));
        QTest::qSleep(whole * round / rounds);
        ::kill(pid_t(process->processId()), SIGINT);
        QVERIFY(process->waitForFinished(patience));
        QCOMPARE(process->exitStatus(), QProcess::NormalExit);
        QVERIFY(process->exitCode() == 130 || process->exitCode() == 0);
        QCOMPARE(files(u"plates"_s), names);
        for (const QString &name : names)
            QCOMPARE(QImage(path(u"plates/"_s + name)).size(), QSize(1181, 1181));
    }
}

void tst_VxLabel::examplesAreWhatTheirToolMakes()
{
    const Result result = runCommand(
        u"python3"_s, { u"-B"_s, sourceFolder + u"/examples/tools/make_examples.py"_s, m_folder->path() });
    QCOMPARE(result.err, QByteArray());
    QCOMPARE(result.code, 0);
    for (const QString &name : exampleNames) {
        QFile example(exampleFile(name));
        QVERIFY(example.open(QIODevice::ReadOnly));
        QCOMPARE(read(name + u".vxl"_s), example.readAll());
    }
}

void tst_VxLabel::examplePlatesAreRight_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("dpi");
    QTest::addColumn<QStringList>("options");
    for (const QString &name : exampleNames) {
        const QStringList options
            = name == u"calibration-sheet"_s ? QStringList { u"--rulers"_s } : QStringList();
        for (const QString &dpi : { u"203.2"_s, u"300"_s, u"600"_s })
            QTest::addRow("%s at %s dpi", qPrintable(name), qPrintable(dpi)) << name << dpi << options;
    }
}

void tst_VxLabel::examplePlatesAreRight()
{
    QFETCH(QString, name);
    QFETCH(QString, dpi);
    QFETCH(QStringList, options);
    const Result separated = run({ u"separate"_s, exampleFile(name), u"-o"_s, u"plates"_s, u"--dpi"_s, dpi });
    QCOMPARE(separated.err, QByteArray());
    QCOMPARE(separated.code, 0);
    const Result checked = runCommand(u"python3"_s,
        QStringList { toolFile(u"check_plates.py"_s), exampleFile(name), u"plates"_s, dpi } + options);
    QCOMPARE(checked.err, QByteArray());
    QCOMPARE(checked.out, QByteArray());
    QCOMPARE(checked.code, 0);
}

void tst_VxLabel::helloSavesItsItemPlatesAndProof()
{
    const Result result = runCommand(u"/usr/bin/env"_s, { u"QT_QPA_PLATFORM=offscreen"_s, helloProgram });
    QCOMPARE(result.code, 0);
    QCOMPARE(files(),
        QStringList({ u"hello.black.png"_s, u"hello.item.png"_s, u"hello.proof.png"_s, u"hello.red.png"_s }));
    // The outline of 24 lies inside the 300 x 300 of the square.
    const QImage item(path(u"hello.item.png"_s));
    QCOMPARE(item.pixelColor(150, 150), QColor(Qt::red));
    QCOMPARE(item.pixelColor(150, 20), QColor(Qt::black));
    QCOMPARE(item.pixelColor(150, 28), QColor(Qt::red));
    // The diamond's centre is at (590, 295), and its upper corner 300 / 2 x sqrt(2) = 212 dots above.
    const QImage proof(path(u"hello.proof.png"_s));
    QCOMPARE(proof.size(), QSize(1181, 591));
    QCOMPARE(proof.pixelColor(590, 295), QColor(Qt::red));
    QCOMPARE(proof.pixelColor(590, 295 - 190), QColor(Qt::black));
    QCOMPARE(proof.pixelColor(590, 295 - 220), QColor(Qt::white));
}

QTEST_GUILESS_MAIN(tst_VxLabel)

#include "tst_vxlabel.moc"
