// SPDX-License-Identifier: BSD-3-Clause
#include "label/batch/rowselection.h"
#include "label/batch/shard.h"

#include <QRegularExpression>
#include <QTest>

using namespace Qt::StringLiterals;

/// Which rows are printed, and by which process.
class tst_RowSelection : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    void rowsAreSelected_data();
    void rowsAreSelected();
    void everythingIsSelectedAtFirst();
    void whatSelectsNothing_data();
    void whatSelectsNothing();
    void sharesAreRead_data();
    void sharesAreRead();
    void whatIsNoShare_data();
    void whatIsNoShare();
    void sharesHaveEachRowOnce();
    void sharesKnowHowManyTheyHave();
};

void tst_RowSelection::rowsAreSelected_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QList<int>>("rows"); // of 1 to 20
    QTest::addColumn<bool>("ends"); // before row 21
    const auto add = [](const QString &text, const QList<int> &rows, bool ends) {
        QTest::addRow("%s", qPrintable(text)) << text << rows << ends;
    };
    add(u"3"_s, { 3 }, true);
    add(u"3,10-12"_s, { 3, 10, 11, 12 }, true);
    add(u"10-12, 3 ,11-13"_s, { 3, 10, 11, 12, 13 }, true);
    add(u"18-"_s, { 18, 19, 20 }, false);
    add(u"18-,2,19-30"_s, { 2, 18, 19, 20 }, false);
    add(u"7-7,8"_s, { 7, 8 }, true);
    add(u"20-22"_s, { 20 }, false);
    add(u"1,1,1"_s, { 1 }, true);
}

void tst_RowSelection::rowsAreSelected()
{
    QFETCH(QString, text);
    QFETCH(QList<int>, rows);
    QFETCH(bool, ends);
    Problem problem;
    const std::optional<RowSelection> selection = RowSelection::parse(text, problem);
    QVERIFY2(selection, qPrintable(problem.text()));
    QList<int> found;
    for (int row = 1; row <= 20; ++row) {
        if (selection->contains(row))
            found.append(row);
        QVERIFY(!selection->endsBefore(row) || row > rows.last());
    }
    QCOMPARE(found, rows);
    QCOMPARE(selection->countOf(20), rows.size());
    QCOMPARE(selection->countOf(0), 0);
    QCOMPARE(selection->endsBefore(21), ends);
}

void tst_RowSelection::everythingIsSelectedAtFirst()
{
    const RowSelection all;
    QVERIFY(all.contains(1) && all.contains(1'000'000));
    QVERIFY(!all.endsBefore(1'000'000));
    QCOMPARE(all.countOf(17), 17);
}

void tst_RowSelection::whatSelectsNothing_data()
{
    QTest::addColumn<QString>("text");
    for (const QString &text : { u""_s, u"0"_s, u"-3"_s, u"3-2"_s, u"3,,4"_s, u"a"_s, u"3-4-5"_s, u"1.5"_s,
             u"03"_s, u"1234567890123456789"_s, u"3;4"_s })
        QTest::addRow("\"%s\"", qPrintable(text)) << text;
}

void tst_RowSelection::whatSelectsNothing()
{
    QFETCH(QString, text);
    Problem problem;
    QVERIFY(!RowSelection::parse(text, problem));
    QVERIFY2(problem.text().endsWith(
                 u" selects no rows; write numbers from 1 and ranges, for example 3,10-20,100-"_s),
        qPrintable(problem.text()));
}

void tst_RowSelection::sharesAreRead_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QStringList>("variables");
    QTest::addColumn<int>("index");
    QTest::addColumn<int>("count");
    QTest::newRow("typed") << u"2/4"_s << QStringList() << 2 << 4;
    QTest::newRow("one") << u"0/1"_s << QStringList() << 0 << 1;
    QTest::newRow("most") << u"9999/10000"_s << QStringList() << 9999 << 10000;
    QTest::newRow("array") << u"auto"_s
                           << QStringList { u"SLURM_ARRAY_TASK_ID=3"_s, u"SLURM_ARRAY_TASK_COUNT=8"_s } << 3
                           << 8;
    QTest::newRow("array from 1") << u"auto"_s
                                  << QStringList { u"SLURM_ARRAY_TASK_ID=8"_s, u"SLURM_ARRAY_TASK_COUNT=8"_s,
                                         u"SLURM_ARRAY_TASK_MIN=1"_s }
                                  << 7 << 8;
    QTest::newRow("indexed job") << u"auto"_s << QStringList { u"JOB_COMPLETION_INDEX=0"_s, u"VX_SHARDS=5"_s }
                                 << 0 << 5;
}

namespace {

QProcessEnvironment environmentOf(const QStringList &variables)
{
    QProcessEnvironment environment;
    for (const QString &variable : variables)
        environment.insert(variable.section(u'=', 0, 0), variable.section(u'=', 1));
    return environment;
}

} // namespace

void tst_RowSelection::sharesAreRead()
{
    QFETCH(QString, text);
    QFETCH(QStringList, variables);
    QFETCH(int, index);
    QFETCH(int, count);
    Problem problem;
    const std::optional<Shard> shard = Shard::parse(text, environmentOf(variables), problem);
    QVERIFY2(shard, qPrintable(problem.text()));
    QCOMPARE(shard->index, index);
    QCOMPARE(shard->count, count);
}

void tst_RowSelection::whatIsNoShare_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QStringList>("variables");
    QTest::addColumn<QString>("problem");
    const QString typed = u" is no share; write I/N, from 0/N on, with N at most 10000, or auto"_s;
    for (const QString &text : { u"4/4"_s, u"-1/4"_s, u"1"_s, u"a/b"_s, u"1/2/3"_s, u"0/0"_s, u"0/10001"_s })
        QTest::addRow("%s", qPrintable(text)) << text << QStringList() << u'"' + text + u'"' + typed;
    QTest::newRow("nothing set")
        << u"auto"_s << QStringList()
        << u"nothing in the environment tells the share; set SLURM_ARRAY_TASK_ID and _COUNT, or "
           "JOB_COMPLETION_INDEX and VX_SHARDS, or give I/N"_s;
    QTest::newRow("no count") << u"auto"_s << QStringList { u"JOB_COMPLETION_INDEX=1"_s }
                              << u"JOB_COMPLETION_INDEX=1 and VX_SHARDS= are no share; the index is smaller "
                                 "than the count, which is at most 10000"_s;
}

void tst_RowSelection::whatIsNoShare()
{
    QFETCH(QString, text);
    QFETCH(QStringList, variables);
    QFETCH(QString, problem);
    Problem found;
    QVERIFY(!Shard::parse(text, environmentOf(variables), found));
    QCOMPARE(found.text(), problem);
}

void tst_RowSelection::sharesHaveEachRowOnce()
{
    QList<int> indexes;
    for (qint64 row = 1; row <= 6; ++row) {
        for (int index = 0; index < 4; ++index) {
            if (Shard { index, 4 }.contains(row))
                indexes.append(index);
        }
    }
    QCOMPARE(indexes, QList<int>({ 1, 2, 3, 0, 1, 2 }));
}

void tst_RowSelection::sharesKnowHowManyTheyHave()
{
    for (int count = 1; count <= 5; ++count) {
        for (int index = 0; index < count; ++index) {
            const Shard shard { index, count };
            qint64 rows = 0;
            for (qint64 row = 1; row <= 23; ++row) {
                rows += shard.contains(row) ? 1 : 0;
                QCOMPARE(shard.countOf(row), rows);
            }
        }
    }
}

QTEST_GUILESS_MAIN(tst_RowSelection)
#include "tst_rowselection.moc"
