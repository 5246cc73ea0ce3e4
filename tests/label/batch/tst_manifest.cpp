// SPDX-License-Identifier: BSD-3-Clause
#include "label/batch/manifest.h"
#include "label/batch/manifestshares.h"

#include <QDir>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

const QJsonObject head { { u"label"_s, u"abc"_s }, { u"resolution"_s, 300 } };
const QByteArray headLine = R"({"label":"abc","manifest":1,"resolution":300})"
                            "\n";

ManifestEntry printed(qint64 row)
{
    return { .row = row,
        .key = u"Größe"_s,
        .digest = "0123",
        .copies = 2,
        .isPrinted = true,
        .files = { { u"a.png"_s, "00ff" }, { u"b/c.png"_s, "11" } },
        .inks = { { u"black"_s, 1200, 12.5 } } };
}

ManifestEntry failed(qint64 row)
{
    return { .row = row, .key = u"k"_s, .digest = "9", .isPrinted = false, .problems = { u"too long"_s } };
}

const QByteArray printedLine = R"({"copies":2,"digest":"0123","files":[{"name":"a.png","sha256":"00ff"},)"
                               R"({"name":"b/c.png","sha256":"11"}],"inks":[{"coverage":12.5,"dots":1200,)"
                               R"("name":"black"}],"key":"Größe","row":%1,"status":"printed"})"
                               "\n";
const QByteArray failedLine = R"({"digest":"9","key":"k","problems":["too long"],"row":%1,"status":"failed"})"
                              "\n";

QByteArray lineOf(QByteArray line, int row)
{
    return line.replace("%1", QByteArray::number(row));
}

} // namespace

/// The record of a batch.
class tst_Manifest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void entriesAreLines();
    void pagesStandForFiles();
    void otherLinesAreNone_data();
    void otherLinesAreNone();
    void rowsAreWrittenAsTheyCome();
    void rowsAreFoundAgain();
    void halfLinesAreCutOff_data();
    void halfLinesAreCutOff();
    void rowsAreInOrderAtTheEnd();
    void theEndTellsHowManyRowsThereAre();
    void anEndBeforeThatOfTheDataSaysSo();
    void whatIsKnownOfMoreRowsStays();
    void twoProcessesDoNotWriteOne();
    void anEarlierOneIsKept();
    void otherFilesAreKept();
    void emptyOnesAreNone();
    void whatCannotBeResumed_data();
    void whatCannotBeResumed();
    void nothingThereIsANewOne();

private:
    [[nodiscard]] QByteArray content() const;
    void write(const QByteArray &content) const;
    [[nodiscard]] std::unique_ptr<Manifest> resumed() const;

    std::unique_ptr<QTemporaryDir> m_folder;
    QString m_path;
};

void tst_Manifest::init()
{
    QTest::failOnWarning(QRegularExpression(u".*"_s));
    m_folder = std::make_unique<QTemporaryDir>();
    m_path = m_folder->filePath(u"manifest.jsonl"_s);
}

QByteArray tst_Manifest::content() const
{
    QFile file(m_path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("no file");
}

void tst_Manifest::write(const QByteArray &content) const
{
    QFile file(m_path);
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
        qFatal("not written");
}

std::unique_ptr<Manifest> tst_Manifest::resumed() const
{
    Problems problems;
    std::unique_ptr<Manifest> manifest = Manifest::resume(m_path, head, problems);
    if (!manifest)
        qFatal("%s", qPrintable(problems.value(0).text()));
    return manifest;
}

void tst_Manifest::entriesAreLines()
{
    QCOMPARE(printed(7).line(), lineOf(printedLine, 7));
    QCOMPARE(failed(8).line(), lineOf(failedLine, 8));
    QCOMPARE(ManifestEntry::fromLine(lineOf(printedLine, 7)), printed(7));
    QCOMPARE(ManifestEntry::fromLine(lineOf(failedLine, 8)), failed(8));
}

/// Labels of one file, on sheets.
void tst_Manifest::pagesStandForFiles()
{
    ManifestEntry entry { .row = 3, .key = u"k"_s, .digest = "9", .copies = 5, .isPrinted = true, .cell = 8 };
    entry.addPages(2, 3);
    entry.addPages(2, 3);
    entry.addPages(4, 5);
    const QByteArray line = R"({"cell":8,"copies":5,"digest":"9","inks":[],"key":"k",)"
                            R"("pages":{"first":2,"last":5},"row":3,"status":"printed"})"
                            "\n";
    QCOMPARE(entry.line(), line);
    QCOMPARE(ManifestEntry::fromLine(line), entry);
}

void tst_Manifest::otherLinesAreNone_data()
{
    QTest::addColumn<QByteArray>("line");
    for (const char *line : { "", "\n", "[]", "{}", "{\"row\":1}", R"({"row":1,"status":"lost"})",
             R"({"row":0,"status":"printed"})", R"({"row":"1","status":"printed"})",
             R"({"row":1,"status":"pri)" })
        QTest::newRow(line) << QByteArray(line);
}

void tst_Manifest::otherLinesAreNone()
{
    QFETCH(QByteArray, line);
    QVERIFY(!ManifestEntry::fromLine(line));
}

void tst_Manifest::rowsAreWrittenAsTheyCome()
{
    Problems problems;
    const auto manifest = Manifest::create(m_path, head, false, problems);
    QVERIFY(manifest);
    QCOMPARE(content(), headLine);
    QVERIFY(manifest->append(printed(1), problems));
    QCOMPARE(content(), headLine + lineOf(printedLine, 1));
    QVERIFY(manifest->append(failed(3), problems));
    QVERIFY(!manifest->find(1)); // of a new one, nobody asks
    QVERIFY(manifest->finish({}, problems));
    QCOMPARE(content(), headLine + lineOf(printedLine, 1) + lineOf(failedLine, 3));
    QVERIFY(problems.isEmpty());
}

void tst_Manifest::rowsAreFoundAgain()
{
    write(headLine + lineOf(printedLine, 2) + lineOf(failedLine, 5));
    const auto manifest = resumed();
    QCOMPARE(manifest->find(5), failed(5));
    QCOMPARE(manifest->find(2), printed(2));
    QVERIFY(!manifest->find(3));
    Problems problems;
    QVERIFY(manifest->append(printed(6), problems));
    QCOMPARE(manifest->find(6), printed(6));
    QVERIFY(manifest->finish({}, problems));
    QCOMPARE(content(), headLine + lineOf(printedLine, 2) + lineOf(failedLine, 5) + lineOf(printedLine, 6));
}

void tst_Manifest::halfLinesAreCutOff_data()
{
    QTest::addColumn<QByteArray>("rest");
    QTest::newRow("half a line") << lineOf(printedLine, 2).first(40);
    QTest::newRow("a line without its end") << lineOf(printedLine, 2).chopped(1);
    QTest::newRow("zeros, as after a power failure") << QByteArray(100, '\0');
    QTest::newRow("an empty line") << QByteArray("\n");
}

void tst_Manifest::halfLinesAreCutOff()
{
    QFETCH(QByteArray, rest);
    write(headLine + lineOf(printedLine, 1) + rest);
    const auto manifest = resumed();
    QVERIFY(manifest->find(1));
    QVERIFY(!manifest->find(2));
    Problems problems;
    QVERIFY(manifest->append(failed(2), problems));
    QVERIFY(manifest->finish({}, problems));
    QCOMPARE(content(), headLine + lineOf(printedLine, 1) + lineOf(failedLine, 2));
}

void tst_Manifest::rowsAreInOrderAtTheEnd()
{
    write(headLine + lineOf(failedLine, 1) + lineOf(printedLine, 2) + lineOf(failedLine, 3));
    const auto manifest = resumed();
    Problems problems;
    QVERIFY(manifest->append(printed(3), problems));
    QVERIFY(manifest->append(printed(1), problems));
    QCOMPARE(manifest->find(1), printed(1));
    QVERIFY(manifest->finish({}, problems));
    QCOMPARE(content(), headLine + lineOf(printedLine, 1) + lineOf(printedLine, 2) + lineOf(printedLine, 3));
    QCOMPARE(
        QDir(m_folder->path()).entryList(QDir::Files | QDir::Hidden), QStringList { u"manifest.jsonl"_s });
}

void tst_Manifest::theEndTellsHowManyRowsThereAre()
{
    const QByteArray rows = lineOf(printedLine, 1) + lineOf(failedLine, 2);
    const QByteArray end = "{\"digest\":\"ab\",\"rows\":2}\n";
    write(headLine + lineOf(failedLine, 2) + lineOf(printedLine, 1));
    Problems problems;
    QVERIFY(resumed()->finish(Manifest::End { 2, "ab" }, problems));
    QCOMPARE(content(), headLine + rows + end);
    // One that goes on has no end yet.
    const auto manifest = resumed();
    QCOMPARE(content(), headLine + rows);
    QVERIFY(manifest->append(printed(3), problems));
    QVERIFY(manifest->finish(Manifest::End { 3, "cd" }, problems));
    QCOMPARE(content(), headLine + rows + lineOf(printedLine, 3) + "{\"digest\":\"cd\",\"rows\":3}\n");
}

void tst_Manifest::anEndBeforeThatOfTheDataSaysSo()
{
    const QByteArray line = "{\"digest\":\"ab\",\"more\":true,\"rows\":2}\n";
    QCOMPARE(Manifest::endLine({ 2, "ab", false }), line);
    QCOMPARE(Manifest::endOfLine(line), Manifest::End(2, "ab", false));
    QVERIFY(Manifest::endOfLine("{\"digest\":\"ab\",\"rows\":2}\n")->isWhole);
}

void tst_Manifest::whatIsKnownOfMoreRowsStays()
{
    const QByteArray whole = headLine + lineOf(printedLine, 1) + lineOf(printedLine, 2)
        + lineOf(printedLine, 3) + "{\"digest\":\"ab\",\"rows\":3}\n";
    const Manifest::End early { 1, "cd", false };
    Problems problems;
    write(whole);
    auto manifest = resumed(); // prints the first row again
    QVERIFY(manifest->append(printed(1), problems) && manifest->finish(early, problems));
    QCOMPARE(content(), whole);

    manifest.reset();
    manifest = resumed(); // to the end of the data, which are shorter now
    QVERIFY(manifest->finish(Manifest::End { 2, "ef" }, problems));
    QVERIFY(content().endsWith("{\"digest\":\"ef\",\"rows\":2}\n"));

    manifest.reset();
    write(whole);
    manifest = resumed(); // with another first row
    ManifestEntry other = printed(1);
    other.digest = "4567";
    QVERIFY(manifest->append(other, problems) && manifest->finish(early, problems));
    QVERIFY(content().endsWith("{\"digest\":\"cd\",\"more\":true,\"rows\":1}\n"));
}

void tst_Manifest::twoProcessesDoNotWriteOne()
{
    Problems problems;
    auto first = Manifest::create(m_path, head, false, problems);
    QVERIFY(first && first->append(printed(1), problems));
    const QByteArray before = content();
    QVERIFY(!Manifest::resume(m_path, head, problems));
    QVERIFY(!Manifest::create(m_path, head, true, problems));
    QCOMPARE(problems.size(), 2);
    for (const Problem &problem : std::as_const(problems))
        QCOMPARE(problem.text(),
            m_path + u": is being written by another process; wait for its end, or stop it"_s);
    QCOMPARE(content(), before);
    first.reset();
    QVERIFY(resumed()->find(1));
}

void tst_Manifest::anEarlierOneIsKept()
{
    const QByteArray earlier = headLine + "{}\n";
    write(earlier);
    Problems problems;
    QVERIFY(!Manifest::create(m_path, head, false, problems));
    QCOMPARE(problems.value(0).text(),
        m_path
            + u": is there from an earlier batch; give --resume to go on with it, or --force to begin again"_s);
    QCOMPARE(content(), earlier);
    QVERIFY(Manifest::create(m_path, head, true, problems));
    QCOMPARE(content(), headLine);
}

void tst_Manifest::otherFilesAreKept()
{
    write("mine");
    for (const bool overwrite : { false, true }) {
        Problems problems;
        QVERIFY(!Manifest::create(m_path, head, overwrite, problems));
        QCOMPARE(problems.value(0).text(),
            m_path
                + u": is no manifest of a batch, and stays as it is; choose another name with --manifest"_s);
        QCOMPARE(content(), QByteArray("mine"));
    }
}

/// A batch that was killed at its beginning has not come to its first line.
void tst_Manifest::emptyOnesAreNone()
{
    for (const int way : { 0, 1, 2 }) {
        write("");
        QCOMPARE(ManifestShares::existing(m_path), QStringList());
        Problems problems;
        QVERIFY(way == 2 ? Manifest::resume(m_path, head, problems)
                         : Manifest::create(m_path, head, way == 1, problems));
        QCOMPARE(content(), headLine);
        QVERIFY(problems.isEmpty());
        QCOMPARE(ManifestShares::existing(m_path), QStringList { m_path });
    }
}

void tst_Manifest::whatCannotBeResumed_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QString>("problem");
    QTest::newRow("no manifest") << QByteArray("shopping list\n") << u"line 1: is no manifest of a batch"_s;
    QTest::newRow("of another version")
        << QByteArray("{\"manifest\":2}\n") << u"line 1: is no manifest of a batch"_s;
    QTest::newRow("of another label")
        << QByteArray(R"({"label":"xyz","manifest":1,"resolution":300})"
                      "\n")
        << u"the batch was begun with another label; resume it as it was begun, or give --force to begin again"_s;
    QTest::newRow("with one more setting")
        << QByteArray(R"({"label":"abc","manifest":1,"negative":true,"resolution":300})"
                      "\n")
        << u"the batch was begun with another choice of --negative; resume it as it was begun, or give "
           u"--force to begin "
           "again"_s;
}

void tst_Manifest::whatCannotBeResumed()
{
    QFETCH(QByteArray, content);
    QFETCH(QString, problem);
    write(content);
    Problems problems;
    QVERIFY(!Manifest::resume(m_path, head, problems));
    QCOMPARE(problems.size(), 1);
    QCOMPARE(problems[0].text(), m_path + u": "_s + problem);
    QCOMPARE(this->content(), content);
}

void tst_Manifest::nothingThereIsANewOne()
{
    QVERIFY(!resumed()->find(1));
    QCOMPARE(content(), headLine);
}

QTEST_GUILESS_MAIN(tst_Manifest)
#include "tst_manifest.moc"
