// SPDX-License-Identifier: BSD-3-Clause
#include "tests/apps/batchlabels.h"
#include "tests/apps/programfolder.h"

#include <QDir>
#include <QRegularExpression>
#include <QTest>

#include <csignal>
#include <unistd.h>

using namespace Qt::StringLiterals;
using namespace BatchLabels;

namespace {

const QStringList batch { u"batch"_s, u"a.vxl"_s };
const QStringList intoFiles { u"-o"_s, u"out/{sku}.{ink}.png"_s };
const QStringList intoOne { u"--pdf"_s, u"out/all.pdf"_s };

/// More than a batch prints while a test looks.
QByteArray manyPrices()
{
    QByteArray text = "sku,name,price\n";
    for (int i = 1; i <= 20'000; ++i)
        text += 'S' + QByteArray::number(i) + ",x,2\n";
    return text;
}

} // namespace

/// Batches whose files cannot be written: which one, why, and what helps.
class tst_VxLabelWriting : public QObject, private ProgramFolder
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void foldersThatCannotBe_data();
    void foldersThatCannotBe();
    void readOnlyFolders_data();
    void readOnlyFolders();
    void fullDisks_data();
    void fullDisks();
    void fullDisksKeepTheRecord();
    void foldersThatGoAway();
    void killedBatchesOfOnePdfBeginAgain();

private:
    /// Runs vxlabel as somebody who may not write where permissions do not allow it, as root may.
    [[nodiscard]] ProgramResult runWithoutPrivileges(const QStringList &arguments) const;
};

void tst_VxLabelWriting::init()
{
    renew();
    write(u"a.vxl"_s, priceLabel());
    write(u"prices.csv"_s, prices);
}

ProgramResult tst_VxLabelWriting::runWithoutPrivileges(const QStringList &arguments) const
{
    if (geteuid() != 0)
        return run(arguments);
    return runCommand(
        u"setpriv"_s, QStringList { u"--bounding-set"_s, u"-dac_override"_s, program() } + arguments);
}

void tst_VxLabelWriting::foldersThatCannotBe_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QByteArray>("err");
    const auto row = [](const char *name, const QStringList &arguments, const QByteArray &err) {
        QTest::newRow(name) << arguments << err;
    };
    const QByteArray noFolder = "prices.csv: is no folder; choose a folder's name";
    const QByteArray notInProc = "/proc/x: the folder cannot be created: No such file or directory; choose a "
                                 "place where you may write";
    row("a file", { u"-o"_s, u"prices.csv/{sku}.{ink}.png"_s }, noFolder);
    row("below a file", { u"-o"_s, u"prices.csv/a/b/{sku}.{ink}.png"_s }, noFolder);
    row("a file, for a PDF", { u"--pdf"_s, u"prices.csv/all.pdf"_s }, noFolder);
    row("below a file, for a PDF", { u"--pdf"_s, u"prices.csv/a/all.pdf"_s }, noFolder);
    row("a file, for the record", intoFiles + QStringList { u"--manifest"_s, u"prices.csv/m.jsonl"_s },
        noFolder);
    row("nobody's", { u"-o"_s, u"/proc/x/{sku}.{ink}.png"_s }, notInProc);
    row("nobody's, for a PDF", { u"--pdf"_s, u"/proc/x/all.pdf"_s }, notInProc);
    row("a folder of each row",
        { u"-o"_s, u"/proc/x/{sku}/{ink}.png"_s, u"--manifest"_s, u"manifest.jsonl"_s },
        QByteArray(notInProc).replace("/proc/x:", "/proc/x/A1:"));
    row("a folder as PDF", { u"--pdf"_s, u"folder.pdf"_s }, "folder.pdf: is a folder; choose a file's name");
}

void tst_VxLabelWriting::foldersThatCannotBe()
{
    QFETCH(const QStringList, arguments);
    QFETCH(const QByteArray, err);
    QVERIFY(QDir(path()).mkpath(u"folder.pdf"_s));
    expect(batch + arguments, 5, "vxlabel: " + err + '\n');
}

void tst_VxLabelWriting::readOnlyFolders_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QByteArray>("file");
    QTest::newRow("files") << intoFiles + QStringList { u"--manifest"_s, u"m.jsonl"_s }
                           << QByteArray("out/A1.black.png");
    QTest::newRow("record") << intoFiles << QByteArray("out/manifest.jsonl");
    QTest::newRow("PDF") << intoOne << QByteArray("out/all.pdf");
    QTest::newRow("jobs") << intoFiles + QStringList { u"--jobs"_s, u"2"_s }
                          << QByteArray("out/manifest.0-of-2.jsonl");
}

void tst_VxLabelWriting::readOnlyFolders()
{
    QFETCH(const QStringList, arguments);
    QFETCH(const QByteArray, file);
    QVERIFY(QDir(path()).mkpath(u"out"_s));
    QVERIFY(QFile::setPermissions(path(u"out"_s), QFileDevice::ReadOwner | QFileDevice::ExeOwner));
    const ProgramResult result = runWithoutPrivileges(batch + arguments);
    QCOMPARE(result.code, 5);
    QVERIFY2(result.err.contains("vxlabel: " + file
                 + ": cannot be written: Permission denied; choose a place where you may write\n"),
        result.err);
    QCOMPARE(files(u"out"_s), QStringList());
}

void tst_VxLabelWriting::fullDisks_data()
{
    QTest::addColumn<QString>("arguments");
    QTest::addColumn<QByteArray>("file");
    QTest::addColumn<QByteArray>("out");
    QTest::addColumn<QStringList>("left");
    QTest::newRow("files") << u"--format pbm --dpi 1200 -o out/{sku}.{ink}.pbm"_s
                           << QByteArray("out/A1.black.pbm")
                           << QByteArray("0 rows printed; give --resume to go on\n")
                           << QStringList { u"manifest.jsonl"_s };
    QTest::newRow("PDF") << u"--format pdf-plates --pdf out/all.pdf"_s << QByteArray("out/all.pdf")
                         << QByteArray("no PDF was written\n") << QStringList();
}

/// Files of more than eight blocks of 512 bytes cannot be written.
void tst_VxLabelWriting::fullDisks()
{
    QFETCH(const QString, arguments);
    QFETCH(const QByteArray, file);
    QFETCH(const QByteArray, out);
    QFETCH(const QStringList, left);
    const ProgramResult result = runCommand(u"/bin/sh"_s,
        { u"-c"_s, u"trap '' XFSZ; ulimit -f 8; exec \"$0\" batch a.vxl "_s + arguments, program() });
    QCOMPARE(result.err,
        "vxlabel: " + file
            + ": cannot be written: File too large; allow larger files, with --max-file or ulimit -f\n");
    QCOMPARE(result.out, out);
    QCOMPARE(result.code, 5);
    QCOMPARE(files(u"out"_s), left);
}

/// Plates are small, but the record of all of them is not.
void tst_VxLabelWriting::fullDisksKeepTheRecord()
{
    write(u"prices.csv"_s, manyPrices());
    const ProgramResult result = runCommand(u"/bin/sh"_s,
        { u"-c"_s, u"ulimit -f 20; exec \"$0\" batch a.vxl -o 'out/{sku}.{ink}.png' --rows 1-300"_s,
            program() });
    QCOMPARE(result.err,
        "vxlabel: out/manifest.jsonl: cannot be written: File too large; allow larger files, with --max-file "
        "or "
        "ulimit -f\n");
    QCOMPARE(result.code, 5);
    const QByteArray record = read(u"out/manifest.jsonl"_s);
    QVERIFY(record.size() <= 20 * 512 && record.endsWith('\n'));
    const qsizetype rows = record.count('\n') - 1;
    QVERIFY(rows > 1);
    QCOMPARE(result.out, QByteArray::number(rows) + " rows printed; give --resume to go on\n");
    const ProgramResult resumed
        = run(batch + intoFiles + QStringList { u"--resume"_s, u"--rows"_s, u"1-300"_s });
    QCOMPARE(resumed.out,
        QByteArray::number(300 - rows) + " rows printed, " + QByteArray::number(rows) + " kept\n");
}

void tst_VxLabelWriting::foldersThatGoAway()
{
    write(u"prices.csv"_s, manyPrices());
    const auto process = start(program(), batch + intoFiles);
    QTRY_VERIFY_WITH_TIMEOUT(files(u"out"_s).size() > 10, 60'000);
    QVERIFY(QDir(path()).rename(u"out"_s, u"elsewhere"_s));
    QVERIFY(process->waitForFinished(patience));
    QCOMPARE(process->exitCode(), 5);
    static const QRegularExpression told(
        u"\\Avxlabel: out/S[0-9]+\\.(black|red)\\.png: cannot be written: No such "
        "file or directory; is its folder still there\\?\\n\\z"_s);
    const QString err = QString::fromUtf8(process->readAllStandardError());
    QVERIFY2(err.contains(told), qPrintable(err));
    const qsizetype rows = read(u"elsewhere/manifest.jsonl"_s).count('\n') - 1;
    QCOMPARE(process->readAllStandardOutput(),
        QByteArray::number(rows) + " rows printed; give --resume to go on\n");
}

/// What they leave is told with the advice that helps, at once.
void tst_VxLabelWriting::killedBatchesOfOnePdfBeginAgain()
{
    write(u"prices.csv"_s, manyPrices());
    const auto process = start(program(), batch + intoOne);
    QTRY_VERIFY_WITH_TIMEOUT(read(u"out/all.manifest.jsonl"_s).count('\n') > 10, 60'000);
    process->kill();
    QVERIFY(process->waitForFinished());
    write(u"prices.csv"_s, prices);
    const QByteArray advice = "vxlabel: out/all.manifest.jsonl: is there from an earlier batch; give --force "
                              "to begin again\n";
    // The one that does the work may take a moment to be gone.
    QTRY_COMPARE(run(batch + intoOne).err, advice);
    QCOMPARE(files(u"out"_s), QStringList { u"all.manifest.jsonl"_s });
    QTRY_COMPARE(run(batch + intoOne + QStringList { u"--force"_s }).code, 0);
    QCOMPARE(files(u"out"_s), QStringList({ u"all.manifest.jsonl"_s, u"all.pdf"_s }));
}

QTEST_GUILESS_MAIN(tst_VxLabelWriting)
#include "tst_vxlabelwriting.moc"
