// SPDX-License-Identifier: BSD-3-Clause
#include "label/outputfile.h"

#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

#include <csignal>
#include <sys/resource.h>
#include <sys/stat.h>

using namespace Qt::StringLiterals;

namespace {

QByteArray contentOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("unreadable");
}

/// Makes every file of this process end at a number of bytes, as on a full disk.
class SmallFiles
{
public:
    explicit SmallFiles(rlim_t bytes)
    {
        std::signal(SIGXFSZ, SIG_IGN);
        getrlimit(RLIMIT_FSIZE, &m_before);
        const rlimit small { bytes, m_before.rlim_max };
        setrlimit(RLIMIT_FSIZE, &small);
    }
    ~SmallFiles() { setrlimit(RLIMIT_FSIZE, &m_before); }
    Q_DISABLE_COPY_MOVE(SmallFiles)

private:
    rlimit m_before {};
};

} // namespace

class tst_OutputFile : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void writesANewFile();
    void newFilesHaveTheUsualPermissions();
    void refusesAnExistingFile();
    void overwritesOnlyWhenAllowed();
    void refusesNamesThatAreNoFiles_data();
    void refusesNamesThatAreNoFiles();
    void needsAFolder();
    void writesThroughALink();
    void fullDiskLeavesNothingBehind();
    void fullDiskKeepsTheOldFile();

private:
    [[nodiscard]] QString pathOf(const QString &name) const { return m_folder->filePath(name); }
    [[nodiscard]] QStringList filesThere() const
    {
        return QDir(m_folder->path())
            .entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
    }

    std::unique_ptr<QTemporaryDir> m_folder;
};

void tst_OutputFile::init()
{
    QTest::failOnWarning(QRegularExpression(u".*"_s));
    m_folder = std::make_unique<QTemporaryDir>();
    QVERIFY(m_folder->isValid());
}

void tst_OutputFile::writesANewFile()
{
    Problems problems;
    QVERIFY(OutputFile::write(pathOf(u"new.png"_s), QByteArray("a\0b\n", 4), false, problems));
    QVERIFY(problems.isEmpty());
    QCOMPARE(contentOf(pathOf(u"new.png"_s)), QByteArray("a\0b\n", 4));
    QCOMPARE(filesThere(), QStringList(u"new.png"_s));
}

void tst_OutputFile::newFilesHaveTheUsualPermissions()
{
    const mode_t before = umask(0026);
    Problems problems;
    const bool written = OutputFile::write(pathOf(u"new.png"_s), "x", false, problems);
    umask(before);
    QVERIFY(written);
    struct stat info;
    QCOMPARE(stat(pathOf(u"new.png"_s).toLocal8Bit().constData(), &info), 0);
    QCOMPARE(info.st_mode & 0777U, 0640U);
}

void tst_OutputFile::refusesAnExistingFile()
{
    Problems problems;
    const QString path = pathOf(u"old.png"_s);
    QVERIFY(OutputFile::write(path, "old", false, problems));
    QVERIFY(!OutputFile::write(path, "new", false, problems));
    QCOMPARE(problems.size(), 1);
    QCOMPARE(problems[0].text(), path + u": exists already; choose another name or allow overwriting"_s);
    QCOMPARE(contentOf(path), QByteArray("old"));
}

void tst_OutputFile::overwritesOnlyWhenAllowed()
{
    Problems problems;
    const QString path = pathOf(u"old.png"_s);
    QVERIFY(OutputFile::write(path, "a longer old text", false, problems));
    QVERIFY(OutputFile::write(path, "new", true, problems));
    QVERIFY(problems.isEmpty());
    QCOMPARE(contentOf(path), QByteArray("new"));
    QCOMPARE(filesThere(), QStringList(u"old.png"_s));
}

void tst_OutputFile::refusesNamesThatAreNoFiles_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("reason");

    QTest::newRow("full device") << u"/dev/full"_s << u"is no ordinary file; choose another name"_s;
    QTest::newRow("null device") << u"/dev/null"_s << u"is no ordinary file; choose another name"_s;
    QTest::newRow("folder") << u"."_s << u"is a folder; choose a file's name"_s;
    QTest::newRow("pipe") << u"pipe"_s << u"is no ordinary file; choose another name"_s;
    QTest::newRow("link to nothing") << u"dangling"_s << u"is no ordinary file; choose another name"_s;
}

void tst_OutputFile::refusesNamesThatAreNoFiles()
{
    QFETCH(QString, path);
    QFETCH(QString, reason);
    if (!path.startsWith(u'/'))
        path = pathOf(path);
    if (path.endsWith("pipe"_L1))
        QCOMPARE(mkfifo(path.toLocal8Bit().constData(), 0600), 0);
    if (path.endsWith("dangling"_L1))
        QVERIFY(QFile::link(pathOf(u"nowhere"_s), path));
    const QStringList before = filesThere();
    Problems problems;
    QVERIFY(!OutputFile::write(path, "x", true, problems));
    QCOMPARE(problems.size(), 1);
    QCOMPARE(problems[0].text(), path + u": "_s + reason);
    QCOMPARE(filesThere(), before);
}

void tst_OutputFile::needsAFolder()
{
    const QString missing = pathOf(u"missing/new.png"_s);
    // Nobody, not even the superuser, makes files there.
    const QString unwritable = u"/proc/new.png"_s;
    Problems problems;
    QVERIFY(!OutputFile::write(missing, "x", false, problems));
    QVERIFY(!OutputFile::write(unwritable, "x", false, problems));
    QCOMPARE(problems.size(), 2);
    QCOMPARE(problems[0].text(), missing + u": its folder does not exist; create it first"_s);
    QCOMPARE(problems[1].text(),
        unwritable + u": cannot be written: No such file or directory; is its folder still there?"_s);
    QCOMPARE(filesThere(), QStringList());
}

void tst_OutputFile::writesThroughALink()
{
    Problems problems;
    QVERIFY(OutputFile::write(pathOf(u"file"_s), "old", false, problems));
    QVERIFY(QFile::link(pathOf(u"file"_s), pathOf(u"link"_s)));
    QVERIFY(OutputFile::write(pathOf(u"link"_s), "new", true, problems));
    QCOMPARE(contentOf(pathOf(u"file"_s)), QByteArray("new"));
    QVERIFY(QFileInfo(pathOf(u"link"_s)).isSymLink());
}

void tst_OutputFile::fullDiskLeavesNothingBehind()
{
    const QString path = pathOf(u"new.png"_s);
    Problems problems;
    {
        const SmallFiles limit(4096);
        QVERIFY(OutputFile::write(path, QByteArray(4096, 'x'), false, problems));
        QVERIFY(!OutputFile::write(path, QByteArray(4097, 'y'), true, problems));
    }
    QCOMPARE(problems.size(), 1);
    QCOMPARE(problems[0].text(),
        path + u": cannot be written: File too large; allow larger files, with --max-file or ulimit -f"_s);
    QCOMPARE(contentOf(path), QByteArray(4096, 'x'));
    QCOMPARE(filesThere(), QStringList(u"new.png"_s));
}

void tst_OutputFile::fullDiskKeepsTheOldFile()
{
    const QString path = pathOf(u"plate.png"_s);
    Problems problems;
    QVERIFY(OutputFile::write(path, "old", false, problems));
    {
        const SmallFiles limit(1000);
        QVERIFY(!OutputFile::write(path, QByteArray(1'000'000, 'x'), true, problems));
        QVERIFY(!OutputFile::write(pathOf(u"other.png"_s), QByteArray(1'000'000, 'x'), false, problems));
    }
    QCOMPARE(problems.size(), 2);
    QCOMPARE(problems[0].text(),
        path + u": cannot be written: File too large; allow larger files, with --max-file or ulimit -f"_s);
    QCOMPARE(contentOf(path), QByteArray("old"));
    QCOMPARE(filesThere(), QStringList(u"plate.png"_s));
}

QTEST_GUILESS_MAIN(tst_OutputFile)
#include "tst_outputfile.moc"
