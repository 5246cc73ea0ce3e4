// SPDX-License-Identifier: BSD-3-Clause
#include "label/atomicfile.h"

#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

#include <csignal>
#include <sys/resource.h>

using namespace Qt::StringLiterals;

namespace {

QByteArray contentOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("unreadable");
}

} // namespace

/// Files that are written piece by piece.
class tst_AtomicFile : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void hasItsNameWhenItIsCommitted();
    void nothingIsLeftWithoutACommit();
    void theOldFileStaysUntilThen();
    void refusesAnExistingFile();
    void tellsAtTheEndWhatWasNotWritten();

private:
    [[nodiscard]] QStringList filesThere() const
    {
        return QDir(m_folder->path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
    }

    std::unique_ptr<QTemporaryDir> m_folder;
    QString m_path;
};

void tst_AtomicFile::init()
{
    QTest::failOnWarning(QRegularExpression(u".*"_s));
    m_folder = std::make_unique<QTemporaryDir>();
    m_path = m_folder->filePath(u"all.pdf"_s);
}

void tst_AtomicFile::hasItsNameWhenItIsCommitted()
{
    Problems problems;
    AtomicFile file(m_path);
    QVERIFY(file.open(false, problems));
    QVERIFY(file.write("one, ", problems));
    QCOMPARE(file.device().write("two, "), 5);
    QVERIFY(file.write("three", problems));
    QVERIFY(!QFile::exists(m_path));
    QVERIFY(file.commit(problems));
    QCOMPARE(contentOf(m_path), QByteArray("one, two, three"));
    QCOMPARE(filesThere(), QStringList(u"all.pdf"_s));
    QVERIFY(problems.isEmpty());
}

void tst_AtomicFile::nothingIsLeftWithoutACommit()
{
    {
        Problems problems;
        AtomicFile file(m_path);
        QVERIFY(file.open(false, problems));
        QVERIFY(file.write("half", problems));
    }
    QCOMPARE(filesThere(), QStringList());
}

void tst_AtomicFile::theOldFileStaysUntilThen()
{
    QFile old(m_path);
    QVERIFY(old.open(QIODevice::WriteOnly) && old.write("old") == 3);
    old.close();
    Problems problems;
    AtomicFile file(m_path);
    QVERIFY(file.open(true, problems));
    QVERIFY(file.write("new", problems));
    QCOMPARE(contentOf(m_path), QByteArray("old"));
    QVERIFY(file.commit(problems));
    QCOMPARE(contentOf(m_path), QByteArray("new"));
}

void tst_AtomicFile::refusesAnExistingFile()
{
    QFile old(m_path);
    QVERIFY(old.open(QIODevice::WriteOnly) && old.write("old") == 3);
    old.close();
    Problems problems;
    AtomicFile file(m_path);
    QVERIFY(!file.open(false, problems));
    QCOMPARE(problems.size(), 1);
    QCOMPARE(problems[0].text(), m_path + u": exists already; choose another name or allow overwriting"_s);
    QCOMPARE(contentOf(m_path), QByteArray("old"));
    QCOMPARE(filesThere(), QStringList(u"all.pdf"_s));
}

/// Whoever writes to the device may not look whether it takes everything.
void tst_AtomicFile::tellsAtTheEndWhatWasNotWritten()
{
    Problems problems;
    AtomicFile file(m_path);
    QVERIFY(file.open(false, problems));
    rlimit before {};
    QCOMPARE(getrlimit(RLIMIT_FSIZE, &before), 0);
    const auto handler = std::signal(SIGXFSZ, SIG_IGN);
    const rlimit small { 1000, before.rlim_max };
    QCOMPARE(setrlimit(RLIMIT_FSIZE, &small), 0);
    const QByteArray piece(800, 'x');
    for (int i = 0; i < 3; ++i)
        (void)file.device().write(piece);
    const bool isCommitted = file.commit(problems);
    setrlimit(RLIMIT_FSIZE, &before);
    std::signal(SIGXFSZ, handler);
    QVERIFY(!isCommitted);
    QCOMPARE(problems.size(), 1);
    QCOMPARE(problems[0].text(),
        m_path + u": cannot be written: File too large; allow larger files, with --max-file or ulimit -f"_s);
    QCOMPARE(filesThere(), QStringList());
}

QTEST_GUILESS_MAIN(tst_AtomicFile)
#include "tst_atomicfile.moc"
