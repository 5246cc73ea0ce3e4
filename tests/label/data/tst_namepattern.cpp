// SPDX-License-Identifier: BSD-3-Clause
#include "label/data/namepattern.h"

#include <QRegularExpression>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

const QStringList columns { u"sku"_s, u"name"_s, u"row:x"_s };

Row rowOf(const QString &sku)
{
    return { 7, { sku, u"Größe 4"_s, u"x"_s }, u"rows.csv:8"_s };
}

} // namespace

/// Names of files with places for values.
class tst_NamePattern : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    void placesAreFilled_data();
    void placesAreFilled();
    void whatIsNoPattern_data();
    void whatIsNoPattern();
    void valuesThatCannotNameFiles_data();
    void valuesThatCannotNameFiles();
    void placesAreKnown();
};

void tst_NamePattern::placesAreFilled_data()
{
    QTest::addColumn<QString>("pattern");
    QTest::addColumn<QString>("name");
    const auto add = [](const QString &pattern, const QString &name) {
        QTest::addRow("%s", qPrintable(pattern)) << pattern << name;
    };
    add(u"out/{sku}-{row:05}.{ink}.png"_s, u"out/A.7-00007.red.png"_s);
    add(u"{row}"_s, u"7"_s);
    add(u"{row:3}"_s, u"007"_s);
    add(u"{row:1}"_s, u"7"_s);
    add(u"{copy:02}"_s, u"12"_s);
    add(u"{copy:3}{copy}"_s, u"01212"_s);
    add(u"/abs/{name}"_s, u"/abs/Größe 4"_s);
    add(u"../{sku}.pbm"_s, u"../A.7.pbm"_s); // the pattern is the operator's, and may go anywhere
    add(u"{row:x}"_s, u"x"_s);
    add(u"{{{sku}}}"_s, u"{A.7}"_s);
    add(u"all.png"_s, u"all.png"_s);
}

void tst_NamePattern::placesAreFilled()
{
    QFETCH(QString, pattern);
    QFETCH(QString, name);
    Problems problems;
    const std::optional<NamePattern> parsed = NamePattern::parse(pattern, columns, problems);
    QVERIFY(parsed && problems.isEmpty());
    Problem problem;
    const Row row = rowOf(u"A.7"_s);
    QCOMPARE(parsed->nameFor({ row, 12 }, u"red"_s, problem).value_or(problem.text()), name);
}

void tst_NamePattern::whatIsNoPattern_data()
{
    QTest::addColumn<QString>("pattern");
    QTest::addColumn<QString>("problem");
    const auto add = [](const QString &pattern, const QString &problem) {
        QTest::addRow("%s", qPrintable(pattern)) << pattern << problem;
    };
    const QString braces = u"; write {column}, or {{ and }} for the characters"_s;
    add(u"{sku"_s, u"a single { in \"{sku\""_s + braces);
    add(u"sku}.png"_s, u"a single } in \"sku}.png\""_s + braces);
    add(u"{skus}"_s, u"there is no column \"skus\"; did you mean \"sku\"?"_s);
    add(u"{something}"_s, u"there is no column \"something\"; there are sku, name, row:x, row, copy, ink"_s);
    add(u"{}"_s, u"there is no column \"\"; there are sku, name, row:x, row, copy, ink"_s);
    add(u"{row:}"_s, u"\"row:\" has no number of digits; for example {row:05}"_s);
    add(u"{row:020}"_s, u"\"row:020\" has no number of digits; for example {row:05}"_s);
    add(u"{copy:%d}"_s, u"\"copy:%d\" has no number of digits; for example {row:05}"_s);
}

void tst_NamePattern::whatIsNoPattern()
{
    QFETCH(QString, pattern);
    QFETCH(QString, problem);
    Problems problems;
    QVERIFY(!NamePattern::parse(pattern, columns, problems));
    QCOMPARE(problems.size(), 1);
    QCOMPARE(problems[0].text(), problem);
}

void tst_NamePattern::valuesThatCannotNameFiles_data()
{
    QTest::addColumn<QString>("pattern");
    QTest::addColumn<QString>("sku");
    QTest::addColumn<QString>("problem");
    const auto add
        = [](const char *name, const QString &pattern, const QString &sku, const QString &problem) {
              QTest::newRow(name) << pattern << sku
                                  << u"rows.csv:8: "_s + problem + u"; use another column, or {row}"_s;
          };
    const QString column = u"column \"sku\": "_s;
    add("empty", u"out/{sku}.png"_s, {}, column + u"\"\" cannot name a file: it is empty"_s);
    add("slash", u"{sku}"_s, u"a/b"_s, column + u"\"a/b\" cannot name a file: it holds a slash"_s);
    add("upwards", u"out/{sku}/x"_s, u"../../etc"_s,
        column + u"\"../../etc\" cannot name a file: it holds a slash"_s);
    add("backslash", u"{sku}"_s, u"a\\b"_s, column + u"\"a\\b\" cannot name a file: it holds a slash"_s);
    add("upper folder", u"out/{sku}/x"_s, u".."_s,
        column + u"\"..\" cannot name a file: it is nothing but points"_s);
    add("upper folder, half of it", u"out/.{sku}/x"_s, u"."_s,
        column + u"\".\" cannot name a file: it is nothing but points"_s);
    add("hidden", u"out/{sku}"_s, u".bashrc"_s,
        column + u"\".bashrc\" cannot name a file: it begins with a point"_s);
    add("line end", u"{sku}"_s, u"a\nb"_s,
        column + u"\"a\\x0ab\" cannot name a file: it holds a control character"_s);
    add("zero", u"{sku}"_s, u"a\0b"_s,
        column + u"\"a\\x00b\" cannot name a file: it holds a control character"_s);
    add("long", u"out/{sku}.png"_s, QString(252, u'x'), u"a name would be longer than 255 bytes"_s);
    add("long in bytes", u"{sku}"_s, QString(128, u'ß'), u"a name would be longer than 255 bytes"_s);
    add("folder alone", u"out/"_s, u"A"_s, u"the name of a file or folder would be empty"_s);
}

void tst_NamePattern::valuesThatCannotNameFiles()
{
    QFETCH(QString, pattern);
    QFETCH(QString, sku);
    QFETCH(QString, problem);
    Problems problems;
    const std::optional<NamePattern> parsed = NamePattern::parse(pattern, columns, problems);
    QVERIFY(parsed);
    const Row row = rowOf(sku);
    Problem found;
    QVERIFY(!parsed->nameFor({ row, 1 }, u"red"_s, found));
    QCOMPARE(found.text(), problem);
}

void tst_NamePattern::placesAreKnown()
{
    Problems problems;
    const auto plain = NamePattern::parse(u"label.png"_s, columns, problems);
    QVERIFY(!plain->hasInk() && !plain->hasCopy());
    const auto full = NamePattern::parse(u"{row}{ink}{copy}"_s, columns, problems);
    QVERIFY(full->hasInk() && full->hasCopy());
}

QTEST_GUILESS_MAIN(tst_NamePattern)
#include "tst_namepattern.moc"
