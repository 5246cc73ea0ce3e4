// SPDX-License-Identifier: BSD-3-Clause
#include "tests/apps/batchlabels.h"
#include "tests/apps/programfolder.h"

#include <QFile>
#include <QTest>

#include <csignal>

using namespace Qt::StringLiterals;
using namespace BatchLabels;

namespace {

const QStringList batchOfNames { u"batch"_s, u"a.vxl"_s, u"--data"_s, u"names.csv"_s, u"-o"_s,
    u"out/{sku}.png"_s };

/// A label of one ink that shows a name twice.
QByteArray nameLabel()
{
    return toJson(document({ { u"width"_s, 50.8 }, { u"height"_s, 25.4 }, { u"dpi"_s, 100 } },
        { ink(u"black"_s, u"#000000"_s) }, { text(5, 5, u"${name}"_s), text(100, 5, u"${name}"_s) }));
}

/// So many lines take seconds to be laid out, in hundreds of megabytes.
const QByteArray endless = '"' + QByteArray("ab\n").repeated(450'000) + '"';
/// These take one second.
const QByteArray slow = '"' + QByteArray("ab\n").repeated(90'000) + '"';
/// For what does less with a text, and slow builds.
const QByteArray longer = '"' + QByteArray("ab\n").repeated(1'800'000) + '"';

/// Three rows, of which the second one has the name.
QByteArray namesWith(const QByteArray &name)
{
    return "sku,name\nA,Apple\nB," + name + "\nC,Cherry\n";
}

#if defined(__SANITIZE_ADDRESS__)
constexpr bool memoryIsLimited = false; ///< sanitizers need all addresses
constexpr int slowness = 2;
#else
constexpr bool memoryIsLimited = true;
constexpr int slowness = 1;
#endif

/// Milliseconds after the first row: the endless one has been read and is laid out for seconds.
constexpr int wellIntoTheRow = 500 * slowness;

/// Ten times as much processor time as other rows need, and a fifth of what the endless one does.
const QStringList timeLimit { u"--max-time"_s, QString::number(slowness) };
const QByteArray tooLong = "it takes more than " + QByteArray::number(slowness) + " s";

/// The process that works for another one; 0 if there is none.
pid_t workerOf(qint64 process)
{
    QFile file(u"/proc/%1/task/%1/children"_s.arg(process));
    return file.open(QIODevice::ReadOnly) ? file.readAll().trimmed().toInt() : 0;
}

} // namespace

/// What the program takes of the machine, and what becomes of a batch of which a row takes more.
class tst_VxLabelLimits : public QObject, private ProgramFolder
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void limitsAreSet_data();
    void limitsAreSet();
    void rowsBeyondALimitAreLeftOut_data();
    void rowsBeyondALimitAreLeftOut();
    void otherRowsAreAsWithoutIt();
    void lostRowsAreToldOnce();
    void progressGoesOnBehindLostRows();
    void jobsGoOnAsWell();
    void rowsOfStandardInputEndTheBatch();
    void labelsBeyondALimitAreRefused();
    void checksTellTheRowBeyondALimit_data();
    void checksTellTheRowBeyondALimit();
    void theFontsOfOtherProgramsAreLeftWhole();
    void largeFilesAreRefused();
    void brokenWorkersLoseTheirRowOnly_data();
    void brokenWorkersLoseTheirRowOnly();
    void killedProgramsLeaveNoWorker();
    void signalsReachTheWorker_data();
    void signalsReachTheWorker();
    void theSecondSignalDoesNotWait();
};

void tst_VxLabelLimits::init()
{
    renew();
    write(u"a.vxl"_s, nameLabel());
    write(u"names.csv"_s, namesWith(endless));
}

void tst_VxLabelLimits::limitsAreSet_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QByteArray>("line"); // of /proc/PID/limits, soft limit
    if (memoryIsLimited) {
        QTest::newRow("memory") << QStringList {} << QByteArray("Max address space 2147483648");
        QTest::newRow("other memory")
            << QStringList { u"--max-memory"_s, u"700"_s } << QByteArray("Max address space 734003200");
    }
    QTest::newRow("any memory") << QStringList { u"--max-memory"_s, u"0"_s }
                                << QByteArray("Max address space unlimited");
    QTest::newRow("files") << QStringList {} << QByteArray("Max file size 4294967296");
    QTest::newRow("smaller files") << QStringList { u"--max-file"_s, u"3"_s }
                                   << QByteArray("Max file size 3145728");
    QTest::newRow("no dumps") << QStringList {} << QByteArray("Max core file size 0");
    QTest::newRow("any time") << QStringList { u"--max-time"_s, u"0"_s }
                              << QByteArray("Max cpu time unlimited");
}

void tst_VxLabelLimits::limitsAreSet()
{
    QFETCH(const QStringList, arguments);
    QFETCH(const QByteArray, line);
    const std::unique_ptr<QProcess> process = start(program(), batchOfNames + arguments);
    const auto limits = [&] {
        QFile file(u"/proc/%1/limits"_s.arg(workerOf(process->processId())));
        return file.open(QIODevice::ReadOnly) ? file.readAll().simplified() : QByteArray();
    };
    QTRY_VERIFY2(limits().contains(line + ' '), limits().constData());
    process->kill();
    QVERIFY(process->waitForFinished());
}

void tst_VxLabelLimits::rowsBeyondALimitAreLeftOut_data()
{
    QTest::addColumn<QStringList>("limit");
    QTest::addColumn<QByteArray>("reason");
    QTest::newRow("time") << timeLimit
                          << tooLong
            + " of processor time; shorten its texts, use smaller pictures or a lower --dpi, or give "
              "--max-time";
    if (memoryIsLimited)
        QTest::newRow("memory") << QStringList { u"--max-memory"_s, u"300"_s }
                                << QByteArray(
                                       "it needs more memory than the 300 MB that it may take; shorten its "
                                       "texts, use smaller pictures or a lower --dpi, or give --max-memory");
}

void tst_VxLabelLimits::rowsBeyondALimitAreLeftOut()
{
    QFETCH(const QStringList, limit);
    QFETCH(const QByteArray, reason);
    const ProgramResult result = run(batchOfNames + limit);
    QCOMPARE(result.err, "vxlabel: names.csv:3: " + reason + '\n');
    QCOMPARE(result.out, "2 rows printed, 1 failed\n");
    QCOMPARE(result.code, 1);
    QCOMPARE(files(u"out"_s), QStringList({ u"A.png"_s, u"C.png"_s, u"manifest.jsonl"_s }));
    QVERIFY(read(u"out/manifest.jsonl"_s).contains(reason));
}

void tst_VxLabelLimits::otherRowsAreAsWithoutIt()
{
    QCOMPARE(run(batchOfNames + timeLimit).code, 1);
    const auto plate = [this](const QString &name) { return read(u"out/"_s + name); };
    const QByteArray first = plate(u"A.png"_s);
    const QByteArray last = plate(u"C.png"_s);
    write(u"names.csv"_s, namesWith("Banana"));
    expect(batchOfNames + QStringList { u"--force"_s }, 0);
    QVERIFY(!first.isEmpty());
    QCOMPARE(plate(u"A.png"_s), first);
    QCOMPARE(plate(u"C.png"_s), last);
}

void tst_VxLabelLimits::lostRowsAreToldOnce()
{
    write(u"names.csv"_s, "sku,name\nA," + endless + "\nB\nC," + endless + "\nD,Date\n");
    const ProgramResult result = run(batchOfNames + timeLimit);
    QCOMPARE(result.err.count('\n'), 3);
    QCOMPARE(result.err.count(tooLong), 2);
    QCOMPARE(result.err.count("1 values for 2 columns"), 1);
    QCOMPARE(result.out, "1 row printed, 3 failed\n");
    QCOMPARE(result.code, 1);
    QCOMPARE(read(u"out/manifest.jsonl"_s).count('\n'), 6); // the head, four rows and the end
}

// Nobody who watches sees that there are two processes: the time runs, and no row is taken back.
void tst_VxLabelLimits::progressGoesOnBehindLostRows()
{
    QByteArray table = "sku,name\n";
    for (int i = 1; i <= 300; ++i)
        table += 'S' + QByteArray::number(i) + (i == 150 ? ',' + endless : QByteArray(",Apple")) + '\n';
    write(u"names.csv"_s, table);
    const ProgramResult result = run(batchOfNames + timeLimit + QStringList { u"--progress"_s, u"json"_s });
    QJsonObject before;
    for (const QByteArray &line : result.err.trimmed().split('\n')) {
        const QJsonObject now = QJsonDocument::fromJson(line).object();
        if (now.contains(u"error"_s))
            continue;
        QVERIFY2(now[u"printed"_s].toInt() >= before[u"printed"_s].toInt(), result.err);
        QVERIFY2(now[u"seconds"_s].toDouble() >= before[u"seconds"_s].toDouble(), result.err);
        before = now;
    }
    // The row alone took as much processor time.
    const double seconds = before[u"seconds"_s].toDouble();
    QVERIFY2(seconds > double(slowness), result.err);
    QCOMPARE(before[u"printed"_s].toInt(), 299);
    QCOMPARE(before[u"failed"_s].toInt(), 1);
    QVERIFY(qAbs(before[u"rowsPerSecond"_s].toDouble() - 300.0 / seconds) < 0.05 * 300.0 / seconds);
}

void tst_VxLabelLimits::jobsGoOnAsWell()
{
    const ProgramResult result = run(batchOfNames + timeLimit + QStringList { u"--jobs"_s, u"2"_s });
    QVERIFY2(isOneLine(result.err) && result.err.contains("names.csv:3: " + tooLong), result.err);
    QCOMPARE(result.out, "2 rows printed, 1 failed\n");
    QCOMPARE(result.code, 1);
    QCOMPARE(files(u"out"_s), QStringList({ u"A.png"_s, u"C.png"_s, u"manifest.jsonl"_s }));
}

// They have gone by.
void tst_VxLabelLimits::rowsOfStandardInputEndTheBatch()
{
    const ProgramResult result = runCommand(u"/bin/sh"_s,
        { u"-c"_s, u"exec \"$0\" batch a.vxl --data - --max-time $1 -o 'out/{sku}.png' <names.csv"_s,
            program(), timeLimit.last() });
    QVERIFY2(result.err.startsWith("vxlabel: row 2: " + tooLong), result.err);
    QCOMPARE(result.code, 3);
    QCOMPARE(files(u"out"_s), QStringList({ u"A.png"_s, u"manifest.jsonl"_s }));
}

void tst_VxLabelLimits::labelsBeyondALimitAreRefused()
{
    QJsonObject item = text(5, 5, QString::fromLatin1(endless));
    write(u"b.vxl"_s, toJson(document(smallPage(), { ink(u"black"_s, u"#000000"_s) }, { item, item })));
    const ProgramResult result = run(QStringList { u"separate"_s, u"b.vxl"_s, u"-o"_s, u"."_s } + timeLimit);
    QCOMPARE(result.err,
        "vxlabel: " + tooLong
            + " of processor time; shorten its texts, use smaller pictures or a "
              "lower --dpi, or give --max-time\n");
    QCOMPARE(result.code, 3);
    QCOMPARE(files(), QStringList({ u"a.vxl"_s, u"b.vxl"_s, u"names.csv"_s }));
}

void tst_VxLabelLimits::checksTellTheRowBeyondALimit_data()
{
    QTest::addColumn<QString>("form");
    QTest::addColumn<QByteArray>("first"); // in what is told of the first row, of the second and in the end
    QTest::addColumn<QByteArray>("second");
    QTest::addColumn<QByteArray>("end");
    QTest::newRow("lines") << u"--progress=none"_s << QByteArray("error [missing-glyph]: /items/")
                           << QByteArray("names.csv:3: error [beyond-limit]: " + tooLong)
                           << QByteArray("\n3 rows checked: 3 errors, 0 warnings\n");
    QTest::newRow("JSON") << u"--json"_s << QByteArray("\"rule\":\"missing-glyph\"")
                          << QByteArray("\"rule\":\"beyond-limit\"")
                          << QByteArray("\n{\"errors\":3,\"rows\":3,\"warnings\":0}\n");
    QTest::newRow("XML") << u"--junit"_s << QByteArray(">[missing-glyph]")
                         << QByteArray("type=\"beyond-limit\"") << QByteArray("name=\"row 3: C\"/>");
}

void tst_VxLabelLimits::checksTellTheRowBeyondALimit()
{
    QFETCH(QString, form);
    QFETCH(QByteArray, first);
    QFETCH(QByteArray, second);
    QFETCH(QByteArray, end);
    write(u"names.csv"_s, "sku,name\nA,\xCD\xB8\nB," + longer + "\nC,Cherry\n");
    const QStringList check
        = QStringList { u"check"_s, u"a.vxl"_s, u"--data"_s, u"names.csv"_s, form } + timeLimit;
    const ProgramResult result = run(check);
    QCOMPARE(result.err, QByteArray());
    QCOMPARE(result.code, 1);
    QCOMPARE(result.out.count(first), form == u"--junit"_s ? 1 : 2); // the label shows the name twice
    QVERIFY2(result.out.indexOf(second) > result.out.lastIndexOf(first), result.out);
    QCOMPARE(result.out.count(second), 1);
    QVERIFY2(result.out.contains(end), result.out);

    // What comes from standard input has gone by.
    const auto process = start(u"/bin/sh"_s,
        { u"-c"_s, u"\"$0\" check a.vxl --data - --data-format csv $* < names.csv"_s, program(), form,
            timeLimit[0], timeLimit[1] });
    QVERIFY(process->waitForFinished(patience));
    QVERIFY(process->readAllStandardError().startsWith("vxlabel: row 2: " + tooLong));
    QCOMPARE(process->exitCode(), 3);
}

// What the system knows of its fonts is written by the first program that asks, for all others.
void tst_VxLabelLimits::theFontsOfOtherProgramsAreLeftWhole()
{
    const auto sizesAfter = [this](const QStringList &limit) {
        const QString cache = limit.isEmpty() ? u"whole"_s : limit.last();
        write(u"fonts.conf"_s,
            "<?xml version=\"1.0\"?><fontconfig><dir>/usr/share/fonts</dir><cachedir>" + path(cache).toUtf8()
                + "</cachedir></fontconfig>");
        const QByteArray before = qgetenv("FONTCONFIG_FILE");
        qputenv("FONTCONFIG_FILE", QFile::encodeName(path(u"fonts.conf"_s)));
        static_cast<void>(
            run(QStringList { u"separate"_s, u"a.vxl"_s, u"-o"_s, u"plates"_s, u"--force"_s } + limit));
        before.isNull() ? qunsetenv("FONTCONFIG_FILE") : qputenv("FONTCONFIG_FILE", before);
        std::map<QString, qsizetype> sizes;
        for (const auto &[name, content] : contentsOf(cache))
            sizes[name] = content.size();
        return sizes;
    };
    const std::map<QString, qsizetype> whole = sizesAfter({});
    QVERIFY(!whole.empty());
    QCOMPARE(sizesAfter({ u"--max-memory"_s, u"20"_s }), whole);
}

void tst_VxLabelLimits::largeFilesAreRefused()
{
    // 50.8 mm x 25.4 mm at 2400 dpi are 4800 x 2400 dots, 1,440,000 bytes and a header of 13.
    write(u"names.csv"_s, namesWith("Banana"));
    const QStringList batch { u"batch"_s, u"a.vxl"_s, u"--data"_s, u"names.csv"_s, u"-o"_s,
        u"out/{sku}.pbm"_s, u"--format"_s, u"pbm"_s, u"--dpi"_s, u"2400"_s };
    const ProgramResult result = run(batch + QStringList { u"--max-file"_s, u"1"_s });
    QVERIFY2(result.err.contains("names.csv:2: \"out/A.pbm\" would have 1440013 bytes, more than the 1048576 "
                                 "that a file may have; give a lower --dpi, or --max-file\n"),
        result.err);
    QCOMPARE(result.err.count('\n'), 3);
    QCOMPARE(result.code, 1);
    QCOMPARE(files(u"out"_s), QStringList { u"manifest.jsonl"_s });
    expect(batch + QStringList { u"--max-file"_s, u"2"_s, u"--resume"_s }, 0);
}

void tst_VxLabelLimits::brokenWorkersLoseTheirRowOnly_data()
{
    QTest::addColumn<int>("signal");
    QTest::addColumn<QByteArray>("reason");
    const QByteArray advice = "; leave it out, and report it with the label";
    QTest::newRow("segmentation fault") << SIGSEGV << "crashed at it (Segmentation fault)" + advice;
    QTest::newRow("abort") << SIGABRT << "crashed at it (Aborted)" + advice;
    QTest::newRow("killed") << SIGKILL
                            << QByteArray("killed at it; if the machine has no more memory, give a lower "
                                          "--max-memory or fewer --jobs");
}

void tst_VxLabelLimits::brokenWorkersLoseTheirRowOnly()
{
    QFETCH(const int, signal);
    QFETCH(const QByteArray, reason);
    const std::unique_ptr<QProcess> process = start(program(), batchOfNames);
    QTRY_VERIFY(files(u"out"_s).contains(u"A.png"_s));
    QTest::qWait(wellIntoTheRow);
    QCOMPARE(::kill(workerOf(process->processId()), signal), 0);
    QVERIFY(process->waitForFinished(patience));
    const QByteArray err = process->readAllStandardError();
    QVERIFY2(isOneLine(err) && err.startsWith("vxlabel: names.csv:3: ") && err.endsWith(reason + '\n'), err);
    QCOMPARE(process->exitCode(), 1);
    QCOMPARE(files(u"out"_s), QStringList({ u"A.png"_s, u"C.png"_s, u"manifest.jsonl"_s }));
}

void tst_VxLabelLimits::killedProgramsLeaveNoWorker()
{
    const std::unique_ptr<QProcess> process = start(program(), batchOfNames);
    QTRY_VERIFY(workerOf(process->processId()) != 0);
    const pid_t worker = workerOf(process->processId());
    process->kill();
    QVERIFY(process->waitForFinished());
    QTRY_VERIFY(!QFile::exists(u"/proc/%1/fd/1"_s.arg(worker)));
}

void tst_VxLabelLimits::signalsReachTheWorker_data()
{
    QTest::addColumn<int>("signal");
    QTest::newRow("SIGINT") << SIGINT;
    QTest::newRow("SIGTERM") << SIGTERM;
}

void tst_VxLabelLimits::signalsReachTheWorker()
{
    QFETCH(const int, signal);
    write(u"names.csv"_s, namesWith(slow));
    const std::unique_ptr<QProcess> process = start(program(), batchOfNames);
    QTRY_VERIFY(files(u"out"_s).contains(u"A.png"_s));
    ::kill(pid_t(process->processId()), signal);
    QVERIFY(process->waitForFinished(patience));
    QCOMPARE(process->exitStatus(), QProcess::NormalExit);
    QCOMPARE(process->exitCode(), 130);
    QCOMPARE(process->readAllStandardError(), "vxlabel: interrupted\n");
}

// The row takes seconds; the one before it stays, and the batch can be resumed.
void tst_VxLabelLimits::theSecondSignalDoesNotWait()
{
    write(u"names.csv"_s, namesWith(endless.chopped(1) + endless.sliced(1)));
    const std::unique_ptr<QProcess> process = start(program(), batchOfNames);
    QTRY_VERIFY(files(u"out"_s).contains(u"A.png"_s));
    QTest::qWait(wellIntoTheRow);
    ::kill(pid_t(process->processId()), SIGINT);
    QVERIFY2(!process->waitForFinished(200), "the row was done too soon to tell");
    ::kill(pid_t(process->processId()), SIGINT);
    QVERIFY(process->waitForFinished(1000));
    QCOMPARE(process->exitStatus(), QProcess::NormalExit);
    QCOMPARE(process->exitCode(), 130);
    QCOMPARE(process->readAllStandardError(), "vxlabel: interrupted\n");
    QVERIFY(!files(u"out"_s).contains(u"B.png"_s));
    write(u"names.csv"_s, namesWith("Banana"));
    expect(batchOfNames + QStringList { u"--resume"_s }, 0);
    QCOMPARE(files(u"out"_s), QStringList({ u"A.png"_s, u"B.png"_s, u"C.png"_s, u"manifest.jsonl"_s }));
}

QTEST_MAIN(tst_VxLabelLimits)
#include "tst_vxlabellimits.moc"
