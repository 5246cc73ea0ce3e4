// SPDX-License-Identifier: BSD-3-Clause
#include "tests/apps/batchlabels.h"
#include "tests/apps/programfolder.h"

#include <QDir>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace BatchLabels;

namespace {

const QStringList batch { u"batch"_s, u"a.vxl"_s, u"--data"_s, u"prices.csv"_s, u"-o"_s,
    u"out/{sku}.{ink}.png"_s };

/// Fourteen rows, of which twelve fail: all but 2 and 9 have a price of the kind.
QByteArray pricesOf(const QByteArray &kind)
{
    QByteArray text = "sku,name,price\n";
    for (int row = 1; row <= 14; ++row) {
        const QByteArray number = QByteArray::number(row);
        text += 'S' + number + ",x," + (row == 2 || row == 9 ? QByteArray("2") : kind + number) + '\n';
    }
    return text;
}

QByteArray noNumber(int row, const QByteArray &value)
{
    return "vxlabel: prices.csv:" + QByteArray::number(row + 1) + ": /items/1: Label Text -1: \"" + value
        + "\" is no number for %.2f\n";
}

} // namespace

/// How the rows of a batch that fail are told, and warnings.
class tst_VxLabelFailures : public QObject, private ProgramFolder
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void equalOnesAreToldTogether();
    void theLastOneOfAKindIsOne();
    void differentOnesAreToldEach();
    void jobsTellThemTogetherAsWell();
    void programsAreToldEach_data();
    void programsAreToldEach();
    void lostWorkersForgetNone_data();
    void lostWorkersForgetNone();
    void jobsTellOnceWhatAllOfThemFind_data();
    void jobsTellOnceWhatAllOfThemFind();
    void warningsAreMarked_data();
    void warningsAreMarked();
};

void tst_VxLabelFailures::init()
{
    renew();
    QJsonObject label = labelWith({ text(10, 10, u"${price:%.2f}"_s) });
    write(u"a.vxl"_s, toJson(label));
    write(u"prices.csv"_s, pricesOf("no"));
}

void tst_VxLabelFailures::equalOnesAreToldTogether()
{
    const ProgramResult result = run(batch);
    QCOMPARE(result.err,
        noNumber(1, "no1") + noNumber(3, "no3") + noNumber(4, "no4") + noNumber(5, "no5") + noNumber(6, "no6")
            + "vxlabel: rows 7-8, 10-14: 7 more fail like row 1: /items/1: Label Text -1: \"…\" is no number "
              "for %.2f; the manifest tells each\n");
    QCOMPARE(result.out, "2 rows printed, 12 failed\n");
    const QByteArray manifest = read(u"out/manifest.jsonl"_s);
    for (const QByteArray &value : QByteArrayList { "no1", "no7", "no14" })
        QVERIFY2(manifest.contains("\\\"" + value + "\\\" is no number for %.2f"), manifest);
}

void tst_VxLabelFailures::theLastOneOfAKindIsOne()
{
    const ProgramResult result = run(batch + QStringList { u"--rows"_s, u"1-7"_s });
    QCOMPARE(result.err.count('\n'), 6);
    QVERIFY2(result.err.contains("\nvxlabel: row 7: fails like row 1: /items/1: "), result.err);
}

void tst_VxLabelFailures::differentOnesAreToldEach()
{
    write(u"prices.csv"_s, "sku,name,price\nA,a\nB\nC,c,d,e\nD,d,x\nE,e,y\nF,f,1,2,3\nG/,g,1\n");
    const ProgramResult result = run(batch);
    QCOMPARE(result.err.count('\n'), 7);
    QVERIFY2(!result.err.contains("like row"), result.err);
}

void tst_VxLabelFailures::jobsTellThemTogetherAsWell()
{
    const ProgramResult result = run(batch + QStringList { u"--jobs"_s, u"3"_s });
    QCOMPARE(result.err.count('\n'), 6); // whichever come first
    QCOMPARE(result.err.count(" is no number for %.2f\nvxlabel:"), 5);
    QVERIFY2(result.err.contains(": 7 more fail like row "), result.err);
    QVERIFY2(result.err.endsWith(
                 ": /items/1: Label Text -1: \"…\" is no number for %.2f; the manifest tells each\n"),
        result.err);
    QCOMPARE(result.out, "2 rows printed, 12 failed\n");
}

void tst_VxLabelFailures::programsAreToldEach_data()
{
    QTest::addColumn<QString>("jobs");
    QTest::newRow("one process") << u"1"_s;
    QTest::newRow("jobs") << u"3"_s;
}

void tst_VxLabelFailures::programsAreToldEach()
{
    QFETCH(const QString, jobs);
    const ProgramResult result = run(batch + QStringList { u"--progress"_s, u"json"_s, u"--jobs"_s, jobs });
    QList<qint64> rows;
    for (const QJsonObject &told : objectsOf(result.err)) {
        QVERIFY2(!told.isEmpty(), result.err);
        const qint64 row = told[u"row"_s].toInteger();
        if (row == 0)
            continue;
        rows.append(row);
        QCOMPARE(told[u"error"_s].toString(),
            u"/items/1: Label Text -1: \"no%1\" is no number for %.2f"_s.arg(row));
        QCOMPARE(told[u"file"_s].toString(), u"prices.csv:%1"_s.arg(row + 1));
    }
    std::ranges::sort(rows);
    QCOMPARE(rows, QList<qint64>({ 1, 3, 4, 5, 6, 7, 8, 10, 11, 12, 13, 14 }));
    const QJsonObject last = objectsOf(result.err).last();
    QCOMPARE(last[u"printed"_s].toInt(), 2);
    QCOMPARE(last[u"failed"_s].toInt(), 12);
}

void tst_VxLabelFailures::lostWorkersForgetNone_data()
{
    QTest::addColumn<QStringList>("output");
    QTest::newRow("files") << batch.last(2);
    QTest::newRow("one PDF") << QStringList { u"--pdf"_s, u"all.pdf"_s }; // begun again
}

/// Of the rows that fail in front of one at which the process ends, some were not told yet, and the others
/// are not told again.
void tst_VxLabelFailures::lostWorkersForgetNone()
{
    QFETCH(const QStringList, output);
    const QJsonObject label = labelWith({ text(10, 10, u"${price:%.2f}"_s), text(10, 40, u"${name}"_s),
        rectangle(7, QRect(60, 60, 20, 20), u"#00ff00"_s) });
    write(u"a.vxl"_s, toJson(label));
    QByteArray table = pricesOf("no");
    table.replace("S9,x,2", "S9,\"" + QByteArray("ab\n").repeated(900'000) + "\",2"); // seconds of work
    write(u"prices.csv"_s, table);
    const ProgramResult result = run(batch.first(4) + output + QStringList { u"--max-time"_s, u"1"_s });
    QCOMPARE(result.err.count("\" is no number for %.2f\n"), 5);
    QCOMPARE(result.err.count(" of processor time; "), 1);
    QVERIFY2(result.err.contains("\nvxlabel: rows 7-8, 10-14: 7 more fail like row 1: "), result.err);
    QCOMPARE(result.err.count("vxlabel: warning: a.vxl: /items/3: no ink prints"), 1);
    QCOMPARE(result.err.count('\n'), 8);
    QCOMPARE(result.out, "1 row printed, 13 failed\n");
}

void tst_VxLabelFailures::jobsTellOnceWhatAllOfThemFind_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<int>("code");
    QTest::addColumn<QByteArray>("err");
    QTest::newRow("column") << QStringList { u"--key"_s,
        u"nam"_s } << 2 << QByteArray("vxlabel: a.vxl: there is no column \"nam\"; did you mean \"name\"?\n");
    QTest::newRow("resolution")
        << QStringList { u"--dpi"_s, u"9600"_s } << 3
        << QByteArray("vxlabel: a.vxl: /page: the page has 19200 x 9600 dots at 9600 dpi, which "
                      "is too many; use at most 8000 dpi or a smaller page\n");
}

void tst_VxLabelFailures::jobsTellOnceWhatAllOfThemFind()
{
    QFETCH(const QStringList, arguments);
    QFETCH(const int, code);
    QFETCH(const QByteArray, err);
    const ProgramResult result = run(batch + QStringList { u"--jobs"_s, u"3"_s } + arguments);
    QCOMPARE(result.err, err);
    QCOMPARE(result.out, QByteArray());
    QCOMPARE(result.code, code);
}

void tst_VxLabelFailures::warningsAreMarked_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::newRow("one process") << QStringList();
    QTest::newRow("jobs") << QStringList { u"--jobs"_s, u"3"_s };
}

/// A colour that no ink prints keeps nothing from being printed; a price that is none does.
void tst_VxLabelFailures::warningsAreMarked()
{
    QFETCH(const QStringList, arguments);
    QJsonObject green = text(10, 10, u"${price:%.2f}"_s);
    green[u"itemTextColor"_s] = u"#00ff00"_s;
    write(u"a.vxl"_s, toJson(labelWith({ green, rectangle(7, QRect(60, 60, 20, 20), u"#00ff00"_s) })));
    write(u"prices.csv"_s, "sku,name,price\nA,a,1\nB,b,2\nC,c,no\nD,d,2\nE,e,2\n");
    const ProgramResult result = run(batch + arguments);
    const QByteArrayList lines = result.err.trimmed().split('\n');
    const auto isWarning
        = [](const QByteArray &line) { return line.startsWith("vxlabel: warning: a.vxl: "); };
    QVERIFY2(std::ranges::count_if(lines, isWarning) == lines.size() - 1 && lines.size() > 1, result.err);
    QCOMPARE(result.err.count("#00ff00"), lines.size() - 1);
    QCOMPARE(
        std::ranges::count_if(lines, [](const QByteArray &line) { return line + '\n' == noNumber(3, "no"); }),
        1);
    // No warning is told twice.
    QCOMPARE(QSet<QByteArray>(lines.begin(), lines.end()).size(), lines.size());
}

QTEST_GUILESS_MAIN(tst_VxLabelFailures)
#include "tst_vxlabelfailures.moc"
