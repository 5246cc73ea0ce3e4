// SPDX-License-Identifier: BSD-3-Clause
#include "label/data/assetpaths.h"

#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

#include <sys/stat.h>

using namespace Qt::StringLiterals;

/// Where files that data name may lie.
class tst_AssetPaths : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    void filesAreFound_data();
    void filesAreFound();
    void filesAreRefused_data();
    void filesAreRefused();
    void anyPathMayBeAllowed();

private:
    [[nodiscard]] QString path(const QString &name) const { return m_folder.filePath(name); }
    [[nodiscard]] AssetPaths paths(bool any = false) const
    {
        return AssetPaths({ path(u"label"_s), path(u"logos"_s), path(u"missing"_s) }, any);
    }

    QTemporaryDir m_folder;
};

void tst_AssetPaths::initTestCase()
{
    for (const QString &folder : { u"label/sub"_s, u"logos"_s, u"label-other"_s })
        QVERIFY(QDir(m_folder.path()).mkpath(folder));
    for (const QString &name : { u"label/a.png"_s, u"label/sub/b.png"_s, u"logos/a.png"_s, u"logos/c.png"_s,
             u"label-other/d.png"_s, u"secret"_s }) {
        QFile file(path(name));
        QVERIFY(file.open(QIODevice::WriteOnly));
    }
    QVERIFY(QFile::link(path(u"secret"_s), path(u"label/out.png"_s)));
    QVERIFY(QFile::link(path(u"logos/c.png"_s), path(u"label/in.png"_s)));
    QVERIFY(QFile::link(path(u"nowhere"_s), path(u"label/dangling.png"_s)));
    QCOMPARE(mkfifo(path(u"label/pipe"_s).toUtf8().constData(), 0600), 0);
}

void tst_AssetPaths::filesAreFound_data()
{
    QTest::addColumn<QString>("value"); // "@" is the temporary folder
    QTest::addColumn<QString>("file");
    QTest::newRow("in the first folder") << u"a.png"_s << u"label/a.png"_s;
    QTest::newRow("below") << u"sub/b.png"_s << u"label/sub/b.png"_s;
    QTest::newRow("in the second folder") << u"c.png"_s << u"logos/c.png"_s;
    QTest::newRow("absolute") << u"@/logos/a.png"_s << u"logos/a.png"_s;
    QTest::newRow("down and up") << u"sub/../a.png"_s << u"label/a.png"_s;
    QTest::newRow("up and down again") << u"../label/a.png"_s << u"label/a.png"_s;
    QTest::newRow("link between the folders") << u"in.png"_s << u"logos/c.png"_s;
}

void tst_AssetPaths::filesAreFound()
{
    QFETCH(QString, value);
    QFETCH(QString, file);
    Problem problem;
    const std::optional<QString> found = paths().find(value.replace(u'@', m_folder.path()), problem);
    QVERIFY2(found, qPrintable(problem.text()));
    QCOMPARE(*found, QFileInfo(path(file)).canonicalFilePath());
}

void tst_AssetPaths::filesAreRefused_data()
{
    QTest::addColumn<QString>("value");
    QTest::addColumn<QString>("what");
    const QString outside = u" lies outside the folders for pictures"_s;
    QTest::newRow("above") << u"../secret"_s << u"\"../secret\""_s + outside;
    QTest::newRow("folder of a similar name")
        << u"../label-other/d.png"_s << u"\"../label-other/d.png\""_s + outside;
    QTest::newRow("link out") << u"out.png"_s << u"\"out.png\""_s + outside;
    QTest::newRow("absolute") << u"/etc/passwd"_s << u"\"/etc/passwd\""_s + outside;
    QTest::newRow("missing") << u"x.png"_s << u"there is no file \"x.png\""_s;
    QTest::newRow("dangling link") << u"dangling.png"_s << u"there is no file \"dangling.png\""_s;
    QTest::newRow("folder") << u"sub"_s << u"\"sub\" is no ordinary file"_s;
    QTest::newRow("pipe") << u"pipe"_s << u"\"pipe\" is no ordinary file"_s;
    QTest::newRow("the folder itself") << u"."_s << u"\".\""_s + outside;
}

void tst_AssetPaths::filesAreRefused()
{
    QFETCH(QString, value);
    QFETCH(QString, what);
    Problem problem;
    QVERIFY(!paths().find(value, problem));
    QCOMPARE(problem.what, what);
}

void tst_AssetPaths::anyPathMayBeAllowed()
{
    Problem problem;
    QCOMPARE(paths(true).find(u"../secret"_s, problem), QFileInfo(path(u"secret"_s)).canonicalFilePath());
    QCOMPARE(paths(true).find(u"out.png"_s, problem), QFileInfo(path(u"secret"_s)).canonicalFilePath());
    QVERIFY(!paths(true).find(u"/dev/null"_s, problem));
    QCOMPARE(problem.what, u"\"/dev/null\" is no ordinary file"_s);
}

QTEST_GUILESS_MAIN(tst_AssetPaths)
#include "tst_assetpaths.moc"
