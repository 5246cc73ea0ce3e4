// SPDX-License-Identifier: BSD-3-Clause
#include "tests/label/data/rows.h"

#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

#include <sys/stat.h>

using namespace Qt::StringLiterals;

/// Password files of SqlSource: which are refused. What is read from them is seen by the servers.
class tst_SqlPassword : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void unusableFilesAreRefused_data();
    void unusableFilesAreRefused();
    void othersMayNotReadOne_data();
    void othersMayNotReadOne();
    void usableFilesAreRead_data();
    void usableFilesAreRead();

private:
    /// The file of passwords with that content, and what SqlSource says of it.
    [[nodiscard]] QStringList answerWith(const QByteArray &content, mode_t mode = 0600) const
    {
        QFile file(path());
        if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
            return { u"cannot be made"_s };
        file.close();
        ::chmod(QFile::encodeName(path()).constData(), mode);
        return answer();
    }
    [[nodiscard]] QStringList answer() const
    {
        SqlSource::Options options;
        options.passwordFile = path();
        return Rows::answer(u"sqlite:missing.db"_s, u"SELECT 1"_s, options, m_folder->path());
    }
    [[nodiscard]] QString path() const { return m_folder->filePath(u"password"_s); }

    std::unique_ptr<QTemporaryDir> m_folder;
};

void tst_SqlPassword::init()
{
    QTest::failOnWarning(QRegularExpression(u".*"_s));
    m_folder = std::make_unique<QTemporaryDir>();
    QVERIFY(m_folder->isValid());
}

void tst_SqlPassword::unusableFilesAreRefused_data()
{
    QTest::addColumn<QString>("kind");
    QTest::addColumn<QString>("what");

    QTest::newRow("missing") << u"missing"_s << u"does not exist"_s;
    QTest::newRow("folder") << u"folder"_s << u"is no ordinary file"_s;
    QTest::newRow("pipe") << u"pipe"_s << u"is no ordinary file"_s;
}

void tst_SqlPassword::unusableFilesAreRefused()
{
    QFETCH(QString, kind);
    QFETCH(QString, what);
    if (kind == u"folder")
        QVERIFY(QDir().mkdir(path()));
    if (kind == u"pipe")
        QCOMPARE(::mkfifo(QFile::encodeName(path()).constData(), 0600), 0);
    QCOMPARE(answer(), QStringList(path() + u": "_s + what));
}

void tst_SqlPassword::othersMayNotReadOne_data()
{
    QTest::addColumn<int>("mode");

    QTest::newRow("group reads") << 0640;
    QTest::newRow("others read") << 0604;
    QTest::newRow("group writes") << 0620;
    QTest::newRow("others write") << 0602;
}

void tst_SqlPassword::othersMayNotReadOne()
{
    QFETCH(int, mode);
    QCOMPARE(answerWith("secret\n", mode_t(mode)),
        QStringList(path()
            + u": holds a password, and others than its owner may read or write it; chmod 600 makes it the owner's"_s));
}

void tst_SqlPassword::usableFilesAreRead_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<bool>("isUsable");

    QTest::newRow("line") << QByteArray("secret\n") << true;
    QTest::newRow("no line end") << QByteArray("secret") << true;
    QTest::newRow("second line") << QByteArray("secret\n\xFF\n") << true;
    QTest::newRow("empty") << QByteArray() << false;
    QTest::newRow("empty line") << QByteArray("\r\nsecret\n") << false;
    QTest::newRow("no UTF-8") << QByteArray("se\xE4ret\n") << false;
    QTest::newRow("zero") << QByteArray("se\0cret\n", 8) << false;
}

void tst_SqlPassword::usableFilesAreRead()
{
    QFETCH(QByteArray, content);
    QFETCH(bool, isUsable);
    QCOMPARE(answerWith(content),
        QStringList(
            isUsable ? u"missing.db: does not exist"_s : path() + u": has no password in its first line"_s));
}

QTEST_GUILESS_MAIN(tst_SqlPassword)
#include "tst_sqlpassword.moc"
