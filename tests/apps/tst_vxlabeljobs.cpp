// SPDX-License-Identifier: BSD-3-Clause
#include "tests/apps/batchlabels.h"
#include "tests/apps/programfolder.h"

#include <QDir>
#include <QElapsedTimer>
#include <QRandomGenerator>
#include <QTest>

#include <algorithm>
#include <csignal>
#include <map>

using namespace Qt::StringLiterals;
using namespace BatchLabels;

namespace {

/// The processes that one has started, the oldest first.
QList<qint64> childrenOf(qint64 process)
{
    QFile file(u"/proc/%1/task/%1/children"_s.arg(process));
    QList<qint64> children;
    for (const QByteArray &child :
        file.open(QIODevice::ReadOnly) ? file.readAll().split(' ') : QByteArrayList())
        if (!child.isEmpty())
            children.append(child.toLongLong());
    return children;
}

QStringList batchInto(const QString &folder, const QStringList &arguments = {})
{
    return QStringList { u"batch"_s, u"a.vxl"_s, u"-o"_s, folder + u"/{sku}.{ink}.png"_s } + arguments;
}

} // namespace

/// Batches whose rows are shared among processes.
class tst_VxLabelJobs : public QObject, private ProgramFolder
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void jobsPrintWhatOneProcessPrints_data();
    void jobsPrintWhatOneProcessPrints();
    void jobsTellTheGravestCode();
    void otherNumbersOfJobsGoOn();
    void killedJobsAreResumed();
    void interruptedJobsEndWithTheirLabels_data();
    void interruptedJobsEndWithTheirLabels();
    void aKilledJobLosesItsShareOnly();
    void stoppedJobsGoOn();
    void theMomentIsTheSameForAllJobs();
    void sharesAreMerged();
    void whatCannotBeMerged_data();
    void whatCannotBeMerged();
    void recordsStayBesideTheirFiles();
    void sharesOfOtherDataAreNotMerged();
    void sharesOfChosenRowsAreMergedForThese();
    void sharesAreMergedAfterAReprint();
    void whatCannotBeShared();

private:
    using Contents = std::map<QString, QByteArray>;

    void expect(
        const QStringList &arguments, int code, const QByteArray &out, const QByteArray &err = {}) const;
    /// The files of one process.
    [[nodiscard]] Contents whole() const;
    void printShares(int count) const;
};

void tst_VxLabelJobs::init()
{
    renew();
    QByteArray table = "sku,name,price\n";
    for (int i = 1; i <= 40; ++i)
        table += 'S' + QByteArray::number(i) + ",Article " + QByteArray::number(i % 7) + ",2\n";
    write(u"a.vxl"_s, priceLabel());
    write(u"prices.csv"_s, table);
}

void tst_VxLabelJobs::expect(
    const QStringList &arguments, int code, const QByteArray &out, const QByteArray &err) const
{
    const ProgramResult result = run(arguments);
    QCOMPARE(result.err, err);
    QCOMPARE(result.out, out);
    QCOMPARE(result.code, code);
}

tst_VxLabelJobs::Contents tst_VxLabelJobs::whole() const
{
    const ProgramResult result = run(batchInto(u"whole"_s, { u"--force"_s }));
    return result.err.isEmpty() ? contentsOf(u"whole"_s) : Contents();
}

void tst_VxLabelJobs::jobsPrintWhatOneProcessPrints_data()
{
    QTest::addColumn<int>("jobs");
    QTest::newRow("two") << 2;
    QTest::newRow("three") << 3;
    QTest::newRow("more than rows") << 50;
}

void tst_VxLabelJobs::jobsPrintWhatOneProcessPrints()
{
    QFETCH(int, jobs);
    expect(batchInto(u"out"_s, { u"--jobs"_s, QString::number(jobs) }), 0, "40 rows printed\n");
    QCOMPARE(files(u"out"_s).size(), 81);
    QVERIFY(contentsOf(u"out"_s) == whole());
}

void tst_VxLabelJobs::jobsTellTheGravestCode()
{
    write(u"prices.csv"_s, "sku,name,price\nA,a,1\nB,b,x\nC,c,1\nA,d,1\n");
    const ProgramResult result = run(batchInto(u"out"_s, { u"--jobs"_s, u"2"_s }));
    QCOMPARE(result.code, 1);
    QCOMPARE(result.out, QByteArray("2 rows printed, 2 failed\n"));
    QVERIFY2(result.err.contains("prices.csv:3: ") && result.err.contains("no number"), result.err);
    // Which of two rows has a name does not depend on the jobs.
    QVERIFY2(result.err.contains("prices.csv:5: another label of this batch has the name"), result.err);
    const Contents shared = contentsOf(u"out"_s);
    QVERIFY(QDir(path(u"out"_s)).removeRecursively());
    QCOMPARE(run(batchInto(u"out"_s)).code, 1);
    QVERIFY(contentsOf(u"out"_s) == shared);

    write(u"prices.csv"_s, "sku,name,price\nA,a,1\nB,\xFF,1\n");
    QCOMPARE(run(batchInto(u"broken"_s, { u"--jobs"_s, u"2"_s })).code, 4);
}

void tst_VxLabelJobs::otherNumbersOfJobsGoOn()
{
    const Contents expected = whole();
    expect(batchInto(u"out"_s, { u"--rows"_s, u"1-15"_s }), 0, "15 rows printed\n");
    expect(batchInto(u"out"_s, { u"--rows"_s, u"1-25"_s, u"--resume"_s, u"--jobs"_s, u"3"_s }), 0,
        "10 rows printed, 15 kept\n");
    expect(batchInto(u"out"_s, { u"--resume"_s, u"--jobs"_s, u"2"_s }), 0, "15 rows printed, 25 kept\n");
    QVERIFY(contentsOf(u"out"_s) == expected);
    expect(batchInto(u"out"_s, { u"--resume"_s }), 0, "0 rows printed, 40 kept\n");
    QVERIFY(contentsOf(u"out"_s) == expected);
}

void tst_VxLabelJobs::killedJobsAreResumed()
{
    const Contents expected = whole();
    QElapsedTimer clock;
    clock.start();
    expect(batchInto(u"timed"_s, { u"--jobs"_s, u"2"_s }), 0, "40 rows printed\n");
    const qint64 duration = clock.elapsed();
    QRandomGenerator random(8);
    for (int i = 0; i < 8; ++i) {
        QDir(path(u"out"_s)).removeRecursively();
        const auto process = start(program(), batchInto(u"out"_s, { u"--jobs"_s, u"2"_s }));
        QTest::qWait(int(random.bounded(duration)));
        process->kill();
        QVERIFY(process->state() == QProcess::NotRunning || process->waitForFinished(patience));
        // With another number of jobs than before, too. Those that were killed with their parent may take a
        // moment to be gone.
        const QStringList again
            = batchInto(u"out"_s, { u"--resume"_s, u"--jobs"_s, QString::number(1 + i % 3) });
        QTRY_COMPARE_WITH_TIMEOUT(run(again).code, 0, 10'000);
        QVERIFY(contentsOf(u"out"_s) == expected);
    }
}

void tst_VxLabelJobs::interruptedJobsEndWithTheirLabels_data()
{
    QTest::addColumn<bool>("isTerminal"); // which tells all processes of ^C
    QTest::newRow("a person or program") << false;
    QTest::newRow("a terminal") << true;
}

void tst_VxLabelJobs::interruptedJobsEndWithTheirLabels()
{
    QFETCH(const bool, isTerminal);
    QByteArray table = "sku,name,price\n";
    for (int i = 1; i <= 20'000; ++i)
        table += 'S' + QByteArray::number(i) + ",x,2\n";
    write(u"prices.csv"_s, table);
    const auto process = start(
        u"setsid"_s, QStringList { program() } + batchInto(u"out"_s, { u"--jobs"_s, u"2"_s })); // a group
    const QStringList parts { u"out/manifest.0-of-2.jsonl"_s, u"out/manifest.1-of-2.jsonl"_s };
    const auto isAtWork = [this](const QString &part) { return read(part).count('\n') > 3; };
    QTRY_VERIFY_WITH_TIMEOUT(std::ranges::all_of(parts, isAtWork), 60'000);
    const auto group = pid_t(process->processId());
    QCOMPARE(::kill(isTerminal ? -group : group, SIGINT), 0);
    QVERIFY(process->waitForFinished(patience));
    QCOMPARE(process->exitCode(), 130);
    QCOMPARE(process->readAllStandardError(), QByteArray("vxlabel: interrupted\n"));
    qsizetype rows = 0;
    for (const QString &part : parts)
        rows += read(part).count('\n') - 1;
    QCOMPARE(files(u"out"_s).size(), 2 * rows + 2);
    QCOMPARE(process->readAllStandardOutput(),
        QByteArray::number(rows) + " rows printed; give --resume to go on\n");
}

void tst_VxLabelJobs::aKilledJobLosesItsShareOnly()
{
    const QStringList jobs = batchInto(u"out"_s, { u"--jobs"_s, u"3"_s });
    const auto process = start(program(), jobs);
    const auto running = [&] { return childrenOf(childrenOf(process->processId()).value(0)); };
    QTRY_COMPARE_WITH_TIMEOUT(running().size(), 3, 60'000);
    QCOMPARE(::kill(pid_t(running()[1]), SIGKILL), 0);
    QVERIFY(process->waitForFinished(patience));
    QCOMPARE(process->readAllStandardError(),
        "vxlabel: job 2 of 3: was killed; give --resume to print the rows that it has left\n");
    QCOMPARE(process->exitCode(), 5);
    const QByteArray out = process->readAllStandardOutput();
    QVERIFY2(out.startsWith("at least ") && out.endsWith(" rows printed; give --resume to go on\n"), out);
    for (const QString &part : { u"out/manifest.0-of-3.jsonl"_s, u"out/manifest.2-of-3.jsonl"_s })
        QVERIFY2(read(part).contains("\"rows\":40}"), qPrintable(part));
    QCOMPARE(run(jobs + QStringList { u"--resume"_s }).code, 0);
    QVERIFY(contentsOf(u"out"_s) == whole());
}

void tst_VxLabelJobs::stoppedJobsGoOn()
{
    write(u"prices.csv"_s, "sku,name,price\nA,a,1\nB,b,x\nC,c,1\nD,d,1\nE,e,1\n");
    const QStringList stopping = batchInto(u"out"_s, { u"--jobs"_s, u"2"_s, u"--on-error"_s, u"stop"_s });
    const ProgramResult result = run(stopping);
    QVERIFY2(isOneLine(result.err) && result.err.contains("prices.csv:3: "), result.err);
    QCOMPARE(result.out, "3 rows printed, 1 failed; give --resume to go on\n"); // A, C and E
    QCOMPARE(result.code, 1);
    write(u"prices.csv"_s, "sku,name,price\nA,a,1\nB,b,1\nC,c,1\nD,d,1\nE,e,1\n");
    expect(stopping + QStringList { u"--resume"_s }, 0, "2 rows printed, 3 kept\n");
}

void tst_VxLabelJobs::theMomentIsTheSameForAllJobs()
{
    write(u"a.vxl"_s,
        toJson(labelWith({ text(10, 10, u"${sku}"_s), text(10, 40, u"${time:HH:mm:ss.zzz}"_s) })));
    expect(
        batchInto(u"out"_s, { u"--data"_s, u"prices.csv"_s, u"--jobs"_s, u"3"_s }), 0, "40 rows printed\n");
    // Resuming needs no date: that of the batch holds.
    QVERIFY(QFile::remove(path(u"out/S1.black.png"_s)));
    const Contents before = contentsOf(u"out"_s);
    expect(
        batchInto(u"out"_s, { u"--data"_s, u"prices.csv"_s, u"--resume"_s }), 0, "1 row printed, 39 kept\n");
    for (const auto &[name, content] : before)
        QCOMPARE(read(u"out/"_s + name), content);
}

void tst_VxLabelJobs::printShares(int count) const
{
    for (int index = 0; index < count; ++index)
        QCOMPARE(run(batchInto(u"out"_s, { u"--shard"_s, u"%1/%2"_s.arg(index).arg(count) })).code, 0);
}

void tst_VxLabelJobs::sharesAreMerged()
{
    printShares(3);
    const QStringList parts { u"out/manifest.2-of-3.jsonl"_s, u"out/manifest.0-of-3.jsonl"_s,
        u"out/manifest.1-of-3.jsonl"_s };
    for (const QString &part : parts)
        QVERIFY(files(u"out"_s).contains(part.section(u'/', 1)));
    expect(QStringList { u"merge"_s, u"-o"_s, u"out/manifest.jsonl"_s } + parts, 0, "40 rows printed\n");
    for (const QString &part : parts)
        QVERIFY(QFile::remove(path(part)));
    QVERIFY(contentsOf(u"out"_s) == whole());
}

void tst_VxLabelJobs::whatCannotBeMerged_data()
{
    QTest::addColumn<QString>("change"); // of out/manifest.1-of-3.jsonl: a text and what stands for it
    QTest::addColumn<QString>("by");
    QTest::addColumn<QStringList>("parts");
    QTest::addColumn<QByteArray>("err");
    const QStringList all { u"0"_s, u"1"_s, u"2"_s };
    const QByteArray second = "out/manifest.1-of-3.jsonl: ";
    const auto row = [&](const char *name, const QString &change, const QString &by, const QStringList &parts,
                         const QByteArray &err) { QTest::newRow(name) << change << by << parts << err; };
    row("a share is missing", {}, {}, { u"0"_s, u"2"_s }, "m.jsonl: share 1/3 is missing\n");
    row("a share is there twice", {}, {}, all + QStringList { u"1"_s },
        second + "belongs to share 1/3, as does out/manifest.1-of-3.jsonl\n");
    row("a row is missing", u"\"row\":7,"_s, u"\"row\":4,"_s, all,
        second
            + "row 4: is there twice\nvxlabel: m.jsonl: 1 of 40 rows are missing: 7; print them with "
              "--resume\n");
    row("a row of another share", u"\"row\":40,"_s, u"\"row\":41,"_s, all,
        second
            + "row 41: belongs to another share\nvxlabel: m.jsonl: 1 of 40 rows are missing: 40; print them "
              "with "
              "--resume\n");
    row("no end", u"\"rows\":40}\n"_s, u"\"rows\":40"_s, all,
        second + "is of a batch that has not come to its end; run share 1/3 again with --resume\n");
    row("other data", u"\"rows\":40}"_s, u"\"rows\":41}"_s, all,
        second
            + "is of other data than out/manifest.0-of-3.jsonl; print all shares of the same rows in the "
              "same "
              "order\n");
    row("another batch", u"\"resolution\":100"_s, u"\"resolution\":200"_s, all,
        second
            + "is of another batch than out/manifest.0-of-3.jsonl; use manifests of one label, printed with "
              "the "
              "same arguments\n");
    row("no manifest", u"\"manifest\":1"_s, u"\"manifest\":7"_s, all,
        second + "line 1: is no manifest of a batch\n");
}

void tst_VxLabelJobs::whatCannotBeMerged()
{
    QFETCH(QString, change);
    QFETCH(QString, by);
    QFETCH(QStringList, parts);
    QFETCH(QByteArray, err);
    printShares(3);
    const QString second = u"out/manifest.1-of-3.jsonl"_s;
    if (!change.isEmpty()) {
        const QByteArray before = read(second);
        QCOMPARE(before.count(change.toUtf8()), 1);
        write(second, QByteArray(before).replace(change.toUtf8(), by.toUtf8()));
    }
    QStringList arguments { u"merge"_s, u"-o"_s, u"m.jsonl"_s };
    for (const QString &part : parts)
        arguments.append(u"out/manifest.%1-of-3.jsonl"_s.arg(part));
    expect(arguments, 3, {}, "vxlabel: " + err);
    QVERIFY(!files().contains(u"m.jsonl"_s));
}

/// As a database may answer in another order each time.
void tst_VxLabelJobs::recordsStayBesideTheirFiles()
{
    for (const QString &share : { u"0/2"_s, u"1/2"_s })
        QCOMPARE(
            run({ u"batch"_s, u"a.vxl"_s, u"-o"_s, u"out/{sku}.{ink}.png"_s, u"--shard"_s, share }).code, 0);
    const ProgramResult result = run({ u"merge"_s, u"-o"_s, u"m.jsonl"_s, u"out/manifest.0-of-2.jsonl"_s,
        u"out/manifest.1-of-2.jsonl"_s });
    QCOMPARE(result.err,
        QByteArray(
            "vxlabel: m.jsonl: lies in another folder than out/manifest.0-of-2.jsonl; put it there: that "
            "is where its records name their files from\n"));
    QVERIFY(result.code != 0);
    QVERIFY(!files().contains(u"m.jsonl"_s));
}

void tst_VxLabelJobs::sharesOfOtherDataAreNotMerged()
{
    write(u"prices.csv"_s, "sku,name,price\nA,a,1\nB,b,1\nC,c,1\nD,d,1\n");
    QCOMPARE(run(batchInto(u"out"_s, { u"--shard"_s, u"0/2"_s })).code, 0);
    write(u"prices.csv"_s, "sku,name,price\nB,b,1\nA,a,1\nC,c,1\nD,d,1\n");
    QCOMPARE(run(batchInto(u"out"_s, { u"--shard"_s, u"1/2"_s, u"--force"_s })).code, 0);
    expect(
        { u"merge"_s, u"-o"_s, u"m.jsonl"_s, u"out/manifest.0-of-2.jsonl"_s, u"out/manifest.1-of-2.jsonl"_s },
        3, {},
        "vxlabel: out/manifest.1-of-2.jsonl: is of other data than out/manifest.0-of-2.jsonl; print all "
        "shares of the "
        "same rows in the same order\n");
}

void tst_VxLabelJobs::sharesOfChosenRowsAreMergedForThese()
{
    const QStringList chosen { u"--rows"_s, u"1-4"_s };
    for (const QString &share : { u"0/2"_s, u"1/2"_s })
        QCOMPARE(run(batchInto(u"out"_s, chosen + QStringList { u"--shard"_s, share })).code, 0);
    const QStringList merge { u"merge"_s, u"-o"_s, u"out/manifest.jsonl"_s, u"out/manifest.0-of-2.jsonl"_s,
        u"out/manifest.1-of-2.jsonl"_s };
    const QByteArray refusal = "vxlabel: out/manifest.jsonl: no share has read more than 4 rows of the data; "
                               "print the others with "
                               "--resume, or give --rows as the batch had it\n";
    expect(merge, 3, {}, refusal);
    expect(merge + QStringList { u"--rows"_s, u"2-6"_s }, 3, {}, refusal);
    expect(merge + chosen, 0, "4 rows printed\n");
}

// Of a jam in the printer, one row comes again: nothing has changed.
void tst_VxLabelJobs::sharesAreMergedAfterAReprint()
{
    printShares(3);
    QCOMPARE(
        run(batchInto(u"out"_s, { u"--shard"_s, u"1/3"_s, u"--reprint"_s, u"--rows"_s, u"4"_s })).code, 0);
    expect({ u"merge"_s, u"-o"_s, u"out/manifest.jsonl"_s, u"out/manifest.0-of-3.jsonl"_s,
               u"out/manifest.1-of-3.jsonl"_s, u"out/manifest.2-of-3.jsonl"_s },
        0, "40 rows printed\n");
}

void tst_VxLabelJobs::whatCannotBeShared()
{
    expect(batchInto(u"out"_s, { u"--jobs"_s, u"2"_s, u"--data"_s, u"-"_s }), 2, {},
        "vxlabel: several jobs cannot share standard input; write the data into a file\n");
    expect(batchInto(u"out"_s, { u"--jobs"_s, u"2"_s, u"--shard"_s, u"0/2"_s }), 2, {},
        "vxlabel: a share of a batch is printed by one job; give either --jobs or --shard\n");
    const ProgramResult none = run(batchInto(u"out"_s, { u"--jobs"_s, u"0"_s }));
    QCOMPARE(none.code, 2);
    QVERIFY(isOneLine(none.err));
}

QTEST_MAIN(tst_VxLabelJobs)
#include "tst_vxlabeljobs.moc"
