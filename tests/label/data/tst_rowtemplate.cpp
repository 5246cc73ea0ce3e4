// SPDX-License-Identifier: BSD-3-Clause
#include "label/data/rowtemplate.h"

#include <QRegularExpression>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

const QStringList columns { u"sku"_s, u"price"_s, u"name"_s, u"a:b"_s, u"nan"_s, u"inf"_s, u"minus"_s };
const Row row { 3, { u"A-7"_s, u"2.5"_s, QString(), u"colon"_s, u"nan"_s, u"-inf"_s, u"-1"_s },
    u"rows.csv:4"_s };
const RowTemplate::Context context { QDateTime(QDate(2026, 3, 9), QTime(7, 5, 2)), 42 };

} // namespace

/// Texts with places for the values of a row.
class tst_RowTemplate : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    void placesAreFilled_data();
    void placesAreFilled();
    void whatIsNoTemplate_data();
    void whatIsNoTemplate();
    void valuesThatAreNoNumbers_data();
    void valuesThatAreNoNumbers();
    void textsKnowWhatTheyDependOn();
    void valuesAreEscapedInHtml();
};

void tst_RowTemplate::placesAreFilled_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("filled");
    const auto add = [](const QString &text, const QString &filled) {
        QTest::addRow("%s", qPrintable(text)) << text << filled;
    };
    add(u"plain"_s, u"plain"_s);
    add(u"${sku}"_s, u"A-7"_s);
    add(u"${sku} / ${price:%.2f} EUR"_s, u"A-7 / 2.50 EUR"_s);
    add(u"${price:%06.2f}"_s, u"002.50"_s);
    add(u"${sku:%-6s}|"_s, u"A-7   |"_s);
    add(u"${sku:%.2s}"_s, u"A-"_s);
    add(u"${sku:%5s}"_s, u"  A-7"_s);
    add(u"${price:%+.0f}"_s, u"+3"_s); // as in commerce: halves go up
    add(u"${price:%e}"_s, u"2.500000e+00"_s);
    add(u"[${name}]"_s, u"[]"_s);
    add(u"${name|none}"_s, u"none"_s);
    add(u"${name:%5s|-}"_s, u"-"_s);
    add(u"${a:b}"_s, u"colon"_s);
    add(u"${#}"_s, u"42"_s);
    add(u"${#:%05d}"_s, u"00042"_s);
    add(u"${#:%x}"_s, u"2a"_s);
    add(u"${date}"_s, u"2026-03-09"_s);
    add(u"${date:dd.MM.yy}"_s, u"09.03.26"_s);
    add(u"${time}"_s, u"07:05:02"_s);
    add(u"${time:HH'h'mm}"_s, u"07h05"_s);
    add(u"$${sku}"_s, u"${sku}"_s);
    add(u"100 $ and }"_s, u"100 $ and }"_s);
    add(u"${sku}${sku}"_s, u"A-7A-7"_s);
}

void tst_RowTemplate::placesAreFilled()
{
    QFETCH(QString, text);
    QFETCH(QString, filled);
    Problems problems;
    const std::optional<RowTemplate> parsed = RowTemplate::parse(text, columns, problems);
    QVERIFY(parsed && problems.isEmpty());
    Problem problem;
    QCOMPARE(parsed->textFor(row, context, problem).value_or(problem.what), filled);
}

void tst_RowTemplate::whatIsNoTemplate_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("problem");
    const auto add = [](const QString &text, const QString &problem) {
        QTest::addRow("%s", qPrintable(text)) << text << problem;
    };
    add(u"${sku"_s,
        u"\"${sku\" is not closed; write } behind the name of the column, or $${ for the two characters"_s);
    add(u"${skus}"_s, u"there is no column \"skus\"; did you mean \"sku\"?"_s);
    add(u"${other column}"_s,
        u"there is no column \"other column\"; there are sku, price, name, a:b, nan, inf, minus"_s);
    add(u"${}"_s, u"there is no column \"\"; there are sku, price, name, a:b, nan, inf, minus"_s);
    add(u"${price:%n}"_s, u"\"%n\" is no form of a number; for example %.2f or %05d"_s);
    add(u"${price:%s%s}"_s, u"\"%s%s\" is no form of a number; for example %.2f or %05d"_s);
    add(u"${price:%999d}"_s, u"\"%999d\" is no form of a number; for example %.2f or %05d"_s);
    add(u"${price:%*d}"_s, u"\"%*d\" is no form of a number; for example %.2f or %05d"_s);
}

void tst_RowTemplate::whatIsNoTemplate()
{
    QFETCH(QString, text);
    QFETCH(QString, problem);
    Problems problems;
    QVERIFY(!RowTemplate::parse(text, columns, problems));
    QCOMPARE(problems.size(), 1);
    QCOMPARE(problems[0].text(), problem);
}

void tst_RowTemplate::valuesThatAreNoNumbers_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("what");
    QTest::newRow("text") << u"${sku:%.2f}"_s << u"\"A-7\" is no number for %.2f"_s;
    QTest::newRow("nothing to add to") << u"${nan:%.2f}"_s << u"\"nan\" is no number for %.2f"_s;
    QTest::newRow("infinite") << u"${inf:%g}"_s << u"\"-inf\" is no number for %g"_s;
    QTest::newRow("negative") << u"${minus:%x}"_s << u"\"-1\" is no number for %x"_s;
    QTest::newRow("fraction") << u"${price:%d}"_s << u"\"2.5\" is no number for %d"_s;
}

void tst_RowTemplate::valuesThatAreNoNumbers()
{
    QFETCH(QString, text);
    QFETCH(QString, what);
    Problems problems;
    const std::optional<RowTemplate> parsed = RowTemplate::parse(text, columns, problems);
    QVERIFY(parsed);
    Problem problem;
    QVERIFY(!parsed->textFor(row, context, problem));
    QCOMPARE(problem.file, u"rows.csv:4"_s);
    QCOMPARE(problem.what, what);
}

void tst_RowTemplate::textsKnowWhatTheyDependOn()
{
    const auto parsed = [](const QString &text) {
        Problems problems;
        return *RowTemplate::parse(text, columns, problems);
    };
    QVERIFY(!parsed(u"plain $${#} ${sku}"_s).countsLabels());
    QVERIFY(parsed(u"x${#:%3d}"_s).countsLabels());
    QVERIFY(!parsed(u"$${date} ${sku}"_s).tellsTime());
    QVERIFY(parsed(u"${date:yy}"_s).tellsTime());
    QVERIFY(parsed(u"${time}"_s).tellsTime());
    QVERIFY(RowTemplate::hasPlaces(u"a ${b"_s));
    QVERIFY(!RowTemplate::hasPlaces(u"$ { {b}"_s));
}

void tst_RowTemplate::valuesAreEscapedInHtml()
{
    const QStringList names { u"a&b"_s, u"c"_s };
    const Row own { 1, { u"<i> & \"x\""_s, QString() }, {} };
    Problems problems;
    const auto parsed = RowTemplate::parse(
        u"<b>${a&amp;b}</b> ${c|&lt;none&gt;}"_s, names, problems, RowTemplate::Markup::Html);
    QVERIFY(parsed);
    Problem problem;
    QCOMPARE(*parsed->textFor(own, context, problem), u"<b>&lt;i&gt; &amp; &quot;x&quot;</b> &lt;none&gt;"_s);

    const Row lines { 2, { u"two\nlines\r\nand\rmore"_s, QString() }, {} };
    QCOMPARE(
        *parsed->textFor(lines, context, problem), u"<b>two<br/>lines<br/>and<br/>more</b> &lt;none&gt;"_s);
}

QTEST_GUILESS_MAIN(tst_RowTemplate)
#include "tst_rowtemplate.moc"
