// SPDX-License-Identifier: BSD-3-Clause
#include "tests/apps/batchlabels.h"
#include "tests/apps/programfolder.h"

#include <QDir>
#include <QElapsedTimer>
#include <QRandomGenerator>
#include <QTest>

#include <csignal>
#include <map>

using namespace Qt::StringLiterals;
using namespace BatchLabels;

namespace {

const QStringList batchOfPrices { u"batch"_s, u"a.vxl"_s, u"-o"_s, u"out/{sku}.{ink}.png"_s };

/// So many rows of sku, name and price.
QByteArray manyPrices(int rows)
{
    QByteArray text = "sku,name,price\n";
    for (int i = 1; i <= rows; ++i)
        text += 'S' + QByteArray::number(i) + ",Article " + QByteArray::number(i) + ','
            + QByteArray::number(i / 4.0) + '\n';
    return text;
}

} // namespace

/// Batches in which something goes wrong.
class tst_VxLabelBatchTrouble : public QObject, private ProgramFolder
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void exitCodesTellWhatHappened_data();
    void exitCodesTellWhatHappened();
    void rowsThatFailHaveNoFiles_data();
    void rowsThatFailHaveNoFiles();
    void aStoppedBatchGoesOn();
    void filesAreKeptUnlessForced();
    void onlyFailedRowsArePrintedAgain();
    void changedRowsAndFilesArePrintedAgain();
    void rowsOfChangedPicturesArePrintedAgain();
    void nothingIsKnownToHaveFailed();
    void chosenRowsArePrintedAgain();
    void rowsThatAreGoneGoFromTheRecord();
    void noRowIsChosen();
    void inputsAreNeverOutputs_data();
    void inputsAreNeverOutputs();
    void namesTellTheFormat_data();
    void namesTellTheFormat();
    void changedNamesLeaveNoFiles();
    void otherBatchesAreNotResumed();
    void killedBatchesAreResumed();
    void interruptedBatchesEndWithALabel();
    void fullDisksEndTheBatch();

private:
    using Contents = std::map<QString, QByteArray>;
};

void tst_VxLabelBatchTrouble::init()
{
    renew();
    write(u"a.vxl"_s, priceLabel());
    write(u"prices.csv"_s, prices);
}

void tst_VxLabelBatchTrouble::exitCodesTellWhatHappened_data()
{
    QTest::addColumn<QStringList>("arguments"); // beside "batch a.vxl"
    QTest::addColumn<QByteArray>("table");
    QTest::addColumn<int>("code");
    QTest::addColumn<QByteArray>("err");
    const QStringList out { u"-o"_s, u"out/{sku}.{ink}.png"_s };
    const auto row = [&](const char *name, const QStringList &arguments, const QByteArray &table, int code,
                         const QByteArray &err) { QTest::newRow(name) << arguments << table << code << err; };
    row("nothing wrong", out, prices, 0, "");
    row("no rows", out, "sku,name,price\n", 0, "");
    row("a row fails", out, "sku,name,price\nA,b,c\nD,e,1\n", 1,
        "vxlabel: @/prices.csv:2: /items/2: Label Text -1: \"c\" is no number for %.2f\n");
    row("a row is short", out, "sku,name,price\nA,b\nD,e,1\n", 1,
        "vxlabel: @/prices.csv: line 2: 2 values for 3 columns; an empty value needs its delimiter, too; one "
        "with "
        "a delimiter "
        "in it needs quotes\n");
    row("no pattern", {}, prices, 2, "vxlabel: --output or --pdf is required; see vxlabel batch --help\n");
    row("no column of the pattern", { u"-o"_s, u"{skew}.{ink}.png"_s }, prices, 2,
        "vxlabel: a.vxl: there is no column \"skew\"; did you mean \"sku\"?\n");
    row("no ink in the pattern", { u"-o"_s, u"{sku}.png"_s }, prices, 2,
        "vxlabel: a.vxl: \"{sku}.png\" gives all inks one name; add {ink}\n");
    row("no such key", out + QStringList { u"--key"_s, u"nam"_s }, prices, 2,
        "vxlabel: a.vxl: there is no column \"nam\"; did you mean \"name\"?\n");
    row("no such column of copies", out + QStringList { u"--copies-field"_s, u"qty"_s }, prices, 2,
        "vxlabel: a.vxl: there is no column \"qty\"; there are sku, name, price\n");
    row("no rows of that form", out + QStringList { u"--rows"_s, u"0"_s }, prices, 2,
        "vxlabel: --rows: \"0\" selects no rows; write numbers from 1 and ranges, for example 3,10-20,100-; "
        "see "
        "vxlabel batch --help\n");
    row("no such share", out + QStringList { u"--shard"_s, u"2/2"_s }, prices, 2,
        "vxlabel: --shard: \"2/2\" is no share; write I/N, from 0/N on, with N at most 10000, or auto; see "
        "vxlabel "
        "batch --help\n");
    row("resume and force", out + QStringList { u"--resume"_s, u"--force"_s }, prices, 2,
        "vxlabel: --resume excludes --force; see vxlabel batch --help\n");
    row("no column of the label", out, "sku,nme,price\nA,b,1\n", 3,
        "vxlabel: a.vxl: /items/1: Label Text -1: there is no column \"name\"; did you mean \"nme\"?\n");
    row("too fine", out + QStringList { u"--dpi"_s, u"9600"_s }, prices, 3,
        "vxlabel: a.vxl: /page: the page has 19200 x 9600 dots at 9600 dpi, which is too many; use at most "
        "8000 dpi "
        "or a smaller page\n");
    row("no data", out, "", 4,
        "vxlabel: @/prices.csv: is empty; the first row tells the names of the columns\n");
    row("data of another encoding", out, "sku,name,price\nA,\xF6,1\n", 4,
        "vxlabel: @/prices.csv: line 2: is not written in UTF-8; name the encoding, for example "
        "windows-1252\n");
    row("an open quote", out, "sku,name,price\nA,b,1\n\"C,d,1\n", 4,
        "vxlabel: @/prices.csv: line 3: a value that begins with a quote, and does not end with one\n");
    row("missing data", out + QStringList { u"--data"_s, u"gone.csv"_s }, prices, 4,
        "vxlabel: gone.csv: does not exist\n");
    row("folder that cannot be", { u"-o"_s, u"prices.csv/{sku}.{ink}.png"_s }, prices, 5,
        "vxlabel: prices.csv: is no folder; choose a folder's name\n");
}

void tst_VxLabelBatchTrouble::exitCodesTellWhatHappened()
{
    QFETCH(QStringList, arguments);
    QFETCH(QByteArray, table);
    QFETCH(int, code);
    QFETCH(QByteArray, err);
    write(u"prices.csv"_s, table);
    expect(QStringList { u"batch"_s, u"a.vxl"_s } + arguments, code,
        err.replace("@", QDir(path()).canonicalPath().toUtf8()));
}

void tst_VxLabelBatchTrouble::rowsThatFailHaveNoFiles_data()
{
    QTest::addColumn<QByteArray>("sku");
    QTest::addColumn<QByteArray>("why");
    QTest::newRow("slash") << QByteArray("../up") << QByteArray("holds a slash");
    QTest::newRow("empty") << QByteArray() << QByteArray("it is empty");
    QTest::newRow("upper folder") << QByteArray("..") << QByteArray("nothing but points");
    QTest::newRow("hidden") << QByteArray(".x") << QByteArray("begins with a point");
    QTest::newRow("twice") << QByteArray("A1") << QByteArray("another label of this batch has the name");
    QTest::newRow("twice but for capitals")
        << QByteArray("a1") << QByteArray("another label of this batch has the name");
    QTest::newRow("no code") << QByteArray("\xE2\x82\xAC")
                             << QByteArray("the symbology does not take the text");
    QTest::newRow("long") << QByteArray(300, 'x') << QByteArray("longer than 255 bytes");
}

void tst_VxLabelBatchTrouble::rowsThatFailHaveNoFiles()
{
    QFETCH(QByteArray, sku);
    QFETCH(QByteArray, why);
    write(u"prices.csv"_s, "sku,name,price\nA1,x,1\n" + sku + ",y,1\nZ9,z,1\n");
    const ProgramResult result = run(batchOfPrices);
    QCOMPARE(result.code, 1);
    QCOMPARE(result.out, QByteArray("2 rows printed, 1 failed\n"));
    QVERIFY2(isOneLine(result.err) && result.err.contains("/prices.csv:3: ") && result.err.contains(why),
        result.err);
    QCOMPARE(files(u"out"_s),
        QStringList(
            { u"A1.black.png"_s, u"A1.red.png"_s, u"manifest.jsonl"_s, u"Z9.black.png"_s, u"Z9.red.png"_s }));
    QVERIFY(read(u"out/manifest.jsonl"_s).contains("\"row\":2,\"status\":\"failed\""));
}

void tst_VxLabelBatchTrouble::aStoppedBatchGoesOn()
{
    write(u"prices.csv"_s, "sku,name,price\nA1,x,1\nB2,y,no\nC3,z,1\n");
    const QStringList stopping = batchOfPrices + QStringList { u"--on-error"_s, u"stop"_s };
    ProgramResult result = run(stopping);
    QCOMPARE(result.code, 1);
    QCOMPARE(result.out, QByteArray("1 row printed, 1 failed; give --resume to go on\n"));
    QCOMPARE(files(u"out"_s).size(), 3);
    write(u"prices.csv"_s, "sku,name,price\nA1,x,1\nB2,y,2\nC3,z,1\n");
    result = run(stopping + QStringList { u"--resume"_s });
    QCOMPARE(result.code, 0);
    QCOMPARE(result.out, QByteArray("2 rows printed, 1 kept\n"));
    QStringList whole = batchOfPrices;
    whole.replace(3, u"whole/{sku}.{ink}.png"_s);
    expect(whole, 0);
    QVERIFY(contentsOf(u"out"_s) == contentsOf(u"whole"_s));
}

void tst_VxLabelBatchTrouble::filesAreKeptUnlessForced()
{
    QVERIFY(QDir(path()).mkpath(u"out"_s));
    write(u"out/B2.red.png"_s, "mine");
    expect(batchOfPrices, 1,
        "vxlabel: " + QDir(path()).canonicalPath().toUtf8()
            + "/prices.csv:3: \"out/B2.red.png\" exists already; give --force to replace it\n");
    QCOMPARE(read(u"out/B2.red.png"_s), QByteArray("mine"));
    QVERIFY(!files(u"out"_s).contains(u"B2.black.png"_s));
    expect(batchOfPrices, 5,
        "vxlabel: out/manifest.jsonl: is there from an earlier batch; give --resume to go on with it, or "
        "--force to "
        "begin again\n");
    expect(batchOfPrices + QStringList { u"--force"_s }, 0);
    QVERIFY(read(u"out/B2.red.png"_s).startsWith("\x89PNG"));
    QCOMPARE(files(u"out"_s).size(), 7);
}

void tst_VxLabelBatchTrouble::onlyFailedRowsArePrintedAgain()
{
    write(u"prices.csv"_s, "sku,name,price\nA1,x,no\nB2,y,2\nC3,z,no\n");
    QCOMPARE(run(batchOfPrices).code, 1);
    QVERIFY(QFile::remove(path(u"out/B2.red.png"_s))); // was printed, whatever became of it
    write(u"prices.csv"_s, "sku,name,price\nA1,x,1\nB2,y,2\nC3,z,no\nD4,z,1\n");
    const ProgramResult result = run(batchOfPrices + QStringList { u"--only-failed"_s });
    QCOMPARE(result.code, 1);
    QCOMPARE(result.out,
        QByteArray("1 row printed, 1 kept, 1 failed, 1 never tried; give --resume to print them\n"));
    QCOMPARE(files(u"out"_s),
        QStringList({ u"A1.black.png"_s, u"A1.red.png"_s, u"B2.black.png"_s, u"manifest.jsonl"_s }));
    const QList<QByteArray> lines = read(u"out/manifest.jsonl"_s).trimmed().split('\n');
    QCOMPARE(lines.size(), 4); // and no end
    QVERIFY(lines[1].contains("\"row\":1,\"status\":\"printed\""));
    QVERIFY(lines[2].contains("\"row\":2,\"status\":\"printed\""));
    QVERIFY(lines[3].contains("\"row\":3,\"status\":\"failed\""));
}

void tst_VxLabelBatchTrouble::changedRowsAndFilesArePrintedAgain()
{
    expect(batchOfPrices, 0);
    const Contents whole = contentsOf(u"out"_s);
    QVERIFY(QFile::remove(path(u"out/A1.red.png"_s)));
    write(u"out/B2.black.png"_s, "damaged");
    const ProgramResult mended = run(batchOfPrices + QStringList { u"--resume"_s });
    QCOMPARE(mended.out, QByteArray("2 rows printed, 1 kept\n"));
    QVERIFY(contentsOf(u"out"_s) == whole);

    write(u"prices.csv"_s, QByteArray(prices).replace("Cherry", "Cranberry"));
    const ProgramResult changed = run(batchOfPrices + QStringList { u"--resume"_s });
    QCOMPARE(changed.out, QByteArray("1 row printed, 2 kept\n"));
    QVERIFY(read(u"out/C3.black.png"_s) != whole.at(u"C3.black.png"_s));
}

/// Whatever the rows were before, there is what there would be if they had always been as they are.
void tst_VxLabelBatchTrouble::rowsOfChangedPicturesArePrintedAgain()
{
    const auto drawing = [](int side) {
        return "<svg xmlns='http://www.w3.org/2000/svg' width='9' height='9'><path d='M0 0h"
            + QByteArray::number(side) + "v9H0z'/></svg>";
    };
    constexpr int symbol = 0x1000D;
    write(u"p.vxl"_s,
        toJson(labelWith({ QJsonObject { { u"itemShape"_s, symbol }, { u"itemWidth"_s, 40 },
                             { u"itemHeight"_s, 40 }, { u"itemPositionX"_s, 20 }, { u"itemPositionY"_s, 20 },
                             { u"itemDatasourceId"_s, 1 }, { u"itemDatasourceField"_s, u"file"_s } } },
            { QJsonObject { { u"id"_s, 1 }, { u"kind"_s, u"csv"_s }, { u"location"_s, u"files.csv"_s } } })));
    write(u"files.csv"_s, "sku,file\nA,a.svg\nB,b.svg\nC,a.svg\nD,\n");
    write(u"a.svg"_s, drawing(9));
    write(u"b.svg"_s, drawing(5));
    const QStringList batch { u"batch"_s, u"p.vxl"_s, u"-o"_s, u"out/{sku}.{ink}.png"_s };
    QCOMPARE(run(batch).out, "4 rows printed\n");
    QCOMPARE(run(batch + QStringList { u"--resume"_s }).out, "0 rows printed, 4 kept\n");
    const QByteArray before = read(u"out/A.black.png"_s);
    write(u"a.svg"_s, drawing(3));
    QCOMPARE(run(batch + QStringList { u"--resume"_s }).out, "2 rows printed, 2 kept\n");
    QVERIFY(read(u"out/A.black.png"_s) != before);
    QCOMPARE(read(u"out/C.black.png"_s), read(u"out/A.black.png"_s));
}

void tst_VxLabelBatchTrouble::nothingIsKnownToHaveFailed()
{
    expect(batchOfPrices + QStringList { u"--only-failed"_s }, 5,
        "vxlabel: out/manifest.jsonl: is not there: no row is known to have failed; leave out "
        "--only-failed\n");
    QVERIFY(!QDir(path(u"out"_s)).exists());
}

void tst_VxLabelBatchTrouble::chosenRowsArePrintedAgain()
{
    expect(batchOfPrices, 0);
    const Contents whole = contentsOf(u"out"_s);
    write(u"out/B2.red.png"_s, "torn");
    expect(batchOfPrices + QStringList { u"--rows"_s, u"2"_s, u"--force"_s }, 5,
        "vxlabel: out/manifest.jsonl: holds rows that --rows does not choose, and that --force would forget; "
        "give "
        "--reprint "
        "to print the chosen ones again\n");
    QCOMPARE(read(u"out/B2.red.png"_s), QByteArray("torn"));
    const ProgramResult result = run(batchOfPrices + QStringList { u"--rows"_s, u"2"_s, u"--reprint"_s });
    QCOMPARE(result.out, QByteArray("1 row printed\n"));
    QCOMPARE(result.code, 0);
    const ProgramResult again = run(batchOfPrices + QStringList { u"--resume"_s });
    QCOMPARE(again.out, QByteArray("0 rows printed, 3 kept\n"));
    QVERIFY(contentsOf(u"out"_s) == whole);
}

void tst_VxLabelBatchTrouble::rowsThatAreGoneGoFromTheRecord()
{
    expect(batchOfPrices, 0);
    write(u"prices.csv"_s, "sku,name,price\nA1,Apple,1.5\nC3,Cherry,0.125\n");
    expect(batchOfPrices + QStringList { u"--resume"_s }, 0);
    const Contents resumed = contentsOf(u"out"_s);
    QVERIFY(QDir(path(u"out"_s)).removeRecursively());
    expect(batchOfPrices, 0);
    QVERIFY(resumed == contentsOf(u"out"_s));
    QCOMPARE(resumed.size(), 5U);
}

void tst_VxLabelBatchTrouble::noRowIsChosen()
{
    expect(batchOfPrices + QStringList { u"--rows"_s, u"99"_s }, 2,
        "vxlabel: --rows: chooses none of the rows that there are\n");
    init();
    expect(
        batchOfPrices + QStringList { u"--rows"_s, u"1"_s, u"--jobs"_s, u"2"_s }, 0); // one has nothing to do
}

void tst_VxLabelBatchTrouble::inputsAreNeverOutputs_data()
{
    QTest::addColumn<QString>("input");
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<int>("code");
    QTest::addColumn<QByteArray>("err");
    const QByteArray noManifest
        = ": is no manifest of a batch, and stays as it is; choose another name with --manifest\n";
    for (const QString &start : { u"--force"_s, u"--progress=none"_s }) {
        for (const QString &input : { u"prices.csv"_s, u"a.vxl"_s })
            QTest::addRow("%s as manifest, %s", qPrintable(input), qPrintable(start))
                << input << QStringList { u"-o"_s, u"out/{sku}.{ink}.png"_s, u"--manifest"_s, input, start }
                << 5 << "vxlabel: ./" + input.toUtf8() + noManifest;
    }
    QTest::newRow("label as plate") << u"a.vxl"_s
                                    << QStringList { u"-o"_s, u"{name}.{ink}"_s, u"--force"_s, u"--data"_s,
                                           u"names.csv"_s }
                                    << 1
                                    << QByteArray(
                                           "vxlabel: names.csv:2: \"a.vxl\" is a file that this batch reads; "
                                           "choose another name\n");
    QTest::newRow("data as plate")
        << u"names.csv"_s
        << QStringList { u"-o"_s, u"{price}.{ink}"_s, u"--force"_s, u"--data"_s, u"names.csv"_s } << 1
        << QByteArray("vxlabel: names.csv:2: \"names.csv\" is a file that this batch reads; "
                      "choose another name\n");
}

void tst_VxLabelBatchTrouble::inputsAreNeverOutputs()
{
    QFETCH(const QString, input);
    QFETCH(const QStringList, arguments);
    QFETCH(const int, code);
    QFETCH(const QByteArray, err);
    // The ink is named like the ending of a file.
    QJsonObject label = labelWith({ text(10, 10, u"${sku}"_s) });
    label[u"items"_s] = QJsonArray { label[u"items"_s].toArray().last() };
    label[u"inks"_s] = QJsonArray { ink(input.section(u'.', 1), u"#000000"_s) };
    write(u"a.vxl"_s, toJson(label));
    write(u"names.csv"_s, "sku,name,price\n1,a,names\n");
    const QByteArray before = read(input);
    QStringList all { u"batch"_s, u"a.vxl"_s };
    if (!arguments.contains(u"--data"_s))
        all += { u"--data"_s, u"prices.csv"_s };
    expect(all + arguments, code, err);
    QCOMPARE(read(input), before);
}

void tst_VxLabelBatchTrouble::namesTellTheFormat_data()
{
    QTest::addColumn<QString>("pattern");
    QTest::addColumn<QString>("format");
    QTest::addColumn<QByteArray>("err");
    const auto row = [](const char *name, const QString &pattern, const QString &format,
                         const QByteArray &err) { QTest::newRow(name) << pattern << format << err; };
    row("JPEG", u"{sku}.{ink}.jpg"_s, u"png"_s,
        "\"{sku}.{ink}.jpg\" names JPG files, which are not written; let the names end in .png");
    row("PBM", u"{sku}.{ink}.pbm"_s, u"png"_s, "\"{sku}.{ink}.pbm\" names PBM files; give --format pbm");
    row("PNG", u"{sku}.{ink}.PNG"_s, u"pbm"_s, "\"{sku}.{ink}.PNG\" names PNG files; give --format png");
    row("TIFF", u"{sku}.{ink}.tiff"_s, u"pbm"_s,
        "\"{sku}.{ink}.tiff\" names TIFF files, which are not written; let the names end in .pbm");
}

void tst_VxLabelBatchTrouble::namesTellTheFormat()
{
    QFETCH(const QString, pattern);
    QFETCH(const QString, format);
    QFETCH(const QByteArray, err);
    expect({ u"batch"_s, u"a.vxl"_s, u"-o"_s, pattern, u"--format"_s, format }, 2,
        "vxlabel: a.vxl: " + err + '\n');
}

void tst_VxLabelBatchTrouble::changedNamesLeaveNoFiles()
{
    expect(batchOfPrices, 0);
    write(u"prices.csv"_s, "sku,name,price\nB2,Banana,22\nA1,Apple,1.5\nD4,Dates,3\n");
    expect(batchOfPrices + QStringList { u"--resume"_s }, 0);
    const Contents resumed = contentsOf(u"out"_s);
    QVERIFY(QDir(path(u"out"_s)).removeRecursively());
    expect(batchOfPrices, 0);
    QVERIFY(contentsOf(u"out"_s) == resumed);
}

void tst_VxLabelBatchTrouble::otherBatchesAreNotResumed()
{
    expect(batchOfPrices, 0);
    expect(batchOfPrices + QStringList { u"--resume"_s, u"--dpi"_s, u"200"_s }, 5,
        "vxlabel: out/manifest.jsonl: the batch was begun with another resolution; resume it as it was "
        "begun, or give "
        "--force to begin again\n");
    expect(batchOfPrices + QStringList { u"--resume"_s, u"--copies-field"_s, u"price"_s }, 5,
        "vxlabel: out/manifest.jsonl: the batch was begun with another column of copies (--copies-field); "
        "resume it as it was begun, or "
        "give "
        "--force to begin again\n");
    write(u"a.vxl"_s, priceLabel() + '\n');
    expect(batchOfPrices + QStringList { u"--resume"_s }, 5,
        "vxlabel: out/manifest.jsonl: the batch was begun with another label; resume it as it was begun, or "
        "give "
        "--force to begin again\n");
}

/// Twenty times, at any moment: what was printed stays, what was not is printed, and nothing else is there.
void tst_VxLabelBatchTrouble::killedBatchesAreResumed()
{
    write(u"prices.csv"_s, manyPrices(120));
    QElapsedTimer clock;
    clock.start();
    expect(batchOfPrices, 0);
    const qint64 duration = clock.elapsed();
    const Contents whole = contentsOf(u"out"_s);
    QCOMPARE(whole.size(), 241U);
    QRandomGenerator random(20261122);
    int killedMidway = 0;
    for (int i = 0; i < 20; ++i) {
        QVERIFY(QDir(path(u"out"_s)).removeRecursively());
        const auto process = start(program(), batchOfPrices);
        QTest::qWait(int(random.bounded(duration)));
        process->kill();
        QVERIFY(process->state() == QProcess::NotRunning || process->waitForFinished(patience));
        const qsizetype left = files(u"out"_s).size();
        killedMidway += left > 1 && left < 241 ? 1 : 0;
        expect(batchOfPrices + QStringList { u"--resume"_s }, 0);
        QVERIFY(contentsOf(u"out"_s) == whole);
    }
    QVERIFY2(killedMidway >= 5, qPrintable(QString::number(killedMidway)));
}

void tst_VxLabelBatchTrouble::interruptedBatchesEndWithALabel()
{
    write(u"prices.csv"_s, manyPrices(20'000)); // a minute
    const auto process = start(program(), batchOfPrices);
    QTRY_VERIFY_WITH_TIMEOUT(files(u"out"_s).size() > 10, 60'000);
    ::kill(pid_t(process->processId()), SIGINT);
    QVERIFY(process->waitForFinished(patience));
    QCOMPARE(process->exitStatus(), QProcess::NormalExit);
    QCOMPARE(process->exitCode(), 130);
    QCOMPARE(process->readAllStandardError(), QByteArray("vxlabel: interrupted\n"));
    const QByteArray manifest = read(u"out/manifest.jsonl"_s);
    QVERIFY(manifest.endsWith('\n'));
    QCOMPARE(process->readAllStandardOutput(),
        QByteArray::number(manifest.count('\n') - 1) + " rows printed; give --resume to go on\n");
    QCOMPARE(files(u"out"_s).size(), 2 * (manifest.count('\n') - 1) + 1);
}

void tst_VxLabelBatchTrouble::fullDisksEndTheBatch()
{
    // Files of more than eight blocks of 512 bytes cannot be written.
    const auto process = start(u"/bin/sh"_s,
        { u"-c"_s,
            u"trap '' XFSZ; ulimit -f 8; exec \"$0\" batch a.vxl --dpi 1200 --format pbm -o 'out/{sku}.{ink}.pbm'"_s,
            program() });
    QVERIFY(process->waitForFinished(patience));
    QCOMPARE(process->exitCode(), 5);
    const QByteArray err = process->readAllStandardError();
    QVERIFY2(isOneLine(err) && err.contains("cannot be written: "), err);
    QCOMPARE(files(u"out"_s), QStringList { u"manifest.jsonl"_s });
}

QTEST_MAIN(tst_VxLabelBatchTrouble)
#include "tst_vxlabelbatchtrouble.moc"
