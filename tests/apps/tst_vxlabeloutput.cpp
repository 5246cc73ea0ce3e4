// SPDX-License-Identifier: BSD-3-Clause
#include "tests/apps/programfolder.h"
#include "tests/apps/samplelabels.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QImage>
#include <QRegularExpression>
#include <QTest>

#include <csignal>

using namespace Qt::StringLiterals;
using namespace SampleLabels;

namespace {

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

} // namespace

/// Outputs that are in the way, cannot be written or are interrupted.
class tst_VxLabelOutput : public QObject, private ProgramFolder
{
    Q_OBJECT

private Q_SLOTS:
    void init() { renew(); }

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
};

void tst_VxLabelOutput::keepsExistingFiles_data()
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

void tst_VxLabelOutput::keepsExistingFiles()
{
    QFETCH(QStringList, arguments);
    QFETCH(QString, existing);
    write(existing, "precious");
    write(u"small.vxl"_s, toJson(smallLabel()));
    const QByteArray before = read(existing);
    const QStringList there = files();

    const ProgramResult refused = run(arguments);
    QVERIFY2(isOneLine(refused.err) && refused.err.startsWith("vxlabel: ")
            && refused.err.endsWith(existing.toUtf8() + ": exists already; give --force to replace it\n"),
        refused.err);
    QCOMPARE(refused.code, 5);
    QCOMPARE(read(existing), before);
    QCOMPARE(files(), there);

    const ProgramResult forced = run(arguments + QStringList { u"--force"_s });
    QCOMPARE(forced.err, QByteArray());
    QCOMPARE(forced.code, 0);
    QVERIFY(read(existing) != before);
}

void tst_VxLabelOutput::keepsExistingFilesOfASet()
{
    write(u"small.vxl"_s, toJson(smallLabel()));
    write(u"small.black.png"_s, "precious");
    write(u"small.proof.png"_s, "precious");
    const ProgramResult result = run({ u"separate"_s, u"small.vxl"_s, u"-o"_s, u"."_s });
    QCOMPARE(result.err.count('\n'), 2);
    QCOMPARE(result.err.count("exists already"), 2);
    QCOMPARE(result.out, QByteArray());
    QCOMPARE(result.code, 5);
    QCOMPARE(files(), QStringList({ u"small.black.png"_s, u"small.proof.png"_s, u"small.vxl"_s }));
}

void tst_VxLabelOutput::reportsUnwritableOutput_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QByteArray>("complaint");
    const auto row = [](const char *name, const QString &arguments, const QByteArray &complaint) {
        QTest::newRow(name) << arguments.split(u' ') << "vxlabel: " + complaint + '\n';
    };
    row("image below a file", u"render small.vxl -o small.vxl/a.png"_s,
        "small.vxl/a.png: its folder does not exist; create it first");
    row("image in no folder", u"render small.vxl -o nowhere/a.png"_s,
        "nowhere/a.png: its folder does not exist; create it first");
    row("image in /proc", u"render small.vxl -o /proc/a.png"_s,
        "/proc/a.png: cannot be written: No such file or directory; is its folder still there?");
    row("image as a device", u"render small.vxl -o /dev/full --force"_s,
        "/dev/full: is no ordinary file; choose another name");
    row("image as a folder", u"render small.vxl -o folder"_s, "folder: is a folder; choose a file's name");
    row("image as a folder, forced", u"render small.vxl -o folder --force"_s,
        "folder: is a folder; choose a file's name");
    row("plates below a file", u"separate small.vxl -o small.vxl/plates"_s,
        "small.vxl: is no folder; choose a folder's name");
    row("plates into a file", u"separate small.vxl -o small.vxl --force"_s,
        "small.vxl: is no folder; choose a folder's name");
    row("plates in /proc", u"separate small.vxl -o /proc/plates"_s,
        "/proc/plates: the folder cannot be created: No such file or directory; choose a place where you may "
        "write");
    row("label below a file", u"convert small.vxl small.vxl/a.vxb"_s,
        "small.vxl/a.vxb: its folder does not exist; create it first");
    row("label in /proc", u"convert small.vxl /proc/a.vxb"_s,
        "/proc/a.vxb: cannot be written: No such file or directory; is its folder still there?");
}

void tst_VxLabelOutput::reportsUnwritableOutput()
{
    QFETCH(QStringList, arguments);
    QFETCH(QByteArray, complaint);
    const QByteArray label = toJson(smallLabel());
    write(u"small.vxl"_s, label);
    QVERIFY(QDir(path()).mkdir(u"folder"_s));
    const ProgramResult result = run(arguments);
    QCOMPARE(result.err, complaint);
    QCOMPARE(result.out, QByteArray());
    QCOMPARE(result.code, 5);
    QCOMPARE(files(), QStringList({ u"folder"_s, u"small.vxl"_s }));
    QCOMPARE(files(u"folder"_s), QStringList());
    QCOMPARE(read(u"small.vxl"_s), label);
}

void tst_VxLabelOutput::leavesNothingOnAFullDisk_data()
{
    QTest::addColumn<QString>("command");
    QTest::addColumn<int>("kibibytes");
    // The plates have about 10 and 33 KiB: with the larger limit only the second fails.
    QTest::newRow("image") << u"render sign.vxl -o sign.png"_s << 1;
    QTest::newRow("first plate") << u"separate sign.vxl -o plates"_s << 1;
    QTest::newRow("second plate") << u"separate sign.vxl -o plates"_s << 20;
    QTest::newRow("plates in new folders") << u"separate sign.vxl -o new/./plates/"_s << 20;
    QTest::newRow("label") << u"convert sign.vxl sign.vxb"_s << 1;
}

void tst_VxLabelOutput::leavesNothingOnAFullDisk()
{
    QFETCH(QString, command);
    QFETCH(int, kibibytes);
    QVERIFY(QFile::copy(exampleFile(u"warning-sign"_s), path(u"sign.vxl"_s)));
    const ProgramResult result = runCommand(u"bash"_s,
        { u"-c"_s, u"ulimit -f %1; exec '%2' %3"_s.arg(QString::number(kibibytes), program(), command) });
    QVERIFY2(isOneLine(result.err) && result.err.contains("File too large"), result.err);
    QCOMPARE(result.out, QByteArray());
    QCOMPARE(result.code, 5);
    QCOMPARE(files(), QStringList({ u"sign.vxl"_s }));
}

void tst_VxLabelOutput::refusesTwoOutputsOfOneName()
{
    write(u"small.vxl"_s, toJson(document(smallPage(), { ink(u"Proof"_s, u"#000000"_s) }, {})));
    const ProgramResult result = run({ u"separate"_s, u"small.vxl"_s, u"-o"_s, u"."_s, u"--force"_s });
    QCOMPARE(
        result.err, QByteArray("vxlabel: ./small.proof.png: two outputs have this name; rename an ink\n"));
    QCOMPARE(result.code, 5);
    QCOMPARE(files(), QStringList({ u"small.vxl"_s }));
}

void tst_VxLabelOutput::reportsAFullStandardOutput()
{
    write(u"small.vxl"_s, toJson(smallLabel()));
    for (const auto &arguments :
        { "inspect small.vxl"_L1, "inspect small.vxl --json"_L1, "--help"_L1, "--version"_L1 }) {
        const ProgramResult result
            = runCommand(u"bash"_s, { u"-c"_s, u"exec '%1' %2 > /dev/full"_s.arg(program(), arguments) });
        QCOMPARE(result.err, QByteArray("vxlabel: standard output: No space left on device\n"));
        QCOMPARE(result.code, 5);
    }
}

void tst_VxLabelOutput::reportsAClosedStandardOutput()
{
    write(u"small.vxl"_s, toJson(smallLabel()));
    const ProgramResult result = runCommand(
        u"bash"_s, { u"-c"_s, u"exec '%1' separate small.vxl -o plates >&- <&-"_s.arg(program()) });
    QCOMPARE(result.err, QByteArray("vxlabel: standard output: Bad file descriptor\n"));
    QCOMPARE(result.code, 5);
    for (const QString &file : files(u"plates"_s))
        QVERIFY2(!QImage(path(u"plates/"_s + file)).isNull(), qPrintable(file));
}

void tst_VxLabelOutput::endsOnSignals_data()
{
    QTest::addColumn<int>("signal");
    QTest::newRow("SIGINT") << SIGINT;
    QTest::newRow("SIGTERM") << SIGTERM;
}

void tst_VxLabelOutput::endsOnSignals()
{
    QFETCH(int, signal);
    write(u"slow.vxl"_s, slowLabel());
    const auto process = start(program(), { u"separate"_s, u"slow.vxl"_s, u"-o"_s, u"plates"_s });
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

void tst_VxLabelOutput::leavesWholeFilesWhenInterrupted()
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
        const auto process = start(program(), arguments);
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

QTEST_GUILESS_MAIN(tst_VxLabelOutput)

#include "tst_vxlabeloutput.moc"
