// SPDX-License-Identifier: BSD-3-Clause
#include "items/text/htmlguard.h"
#include "items/text/richtextitem.h"

#include <QFont>
#include <QRandomGenerator>
#include <QRegularExpression>
#include <QTest>
#include <QTextBlock>
#include <QTextDocument>
#include <QTextFrame>
#include <QTextTable>

#include <ctime>

using namespace Qt::StringLiterals;

namespace {

#ifdef __SANITIZE_ADDRESS__
constexpr double quickSeconds = 10.0;
constexpr int randomTexts = 2'000;
#else
constexpr double quickSeconds = 2.0;
constexpr int randomTexts = 20'000;
#endif

QString table(const QString &attributes = QString())
{
    return u"<table"_s + attributes + u"><tr><td>x</td></tr></table>"_s;
}

/// One table in another, as many as told.
QString nestedTables(int count, const QString &opening = u"<table>"_s)
{
    return (opening + u"<tr><td>"_s).repeated(count) + u'x';
}

/// Each of another size.
QString sizes(int count)
{
    QString html;
    for (int i = 1; i <= count; ++i)
        html += u"<span style=\"font-size:%1pt\">x</span>"_s.arg(i);
    return html;
}

/// How many tables lie in one another when Qt reads the text.
int tableDepth(const QTextFrame &frame)
{
    int depth = 0;
    const QList<QTextFrame *> children = frame.childFrames();
    for (const QTextFrame *child : children)
        depth = qMax(depth, tableDepth(*child) + (qobject_cast<const QTextTable *>(child) ? 1 : 0));
    return depth;
}

} // namespace

/// The limits of HTML.
class tst_HtmlGuard : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { QFont::insertSubstitution(u"_Fen Loma"_s, u"Loma"_s); }
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    void limitsAreExact_data();
    void limitsAreExact();
    void ordinaryTextIsAccepted_data();
    void ordinaryTextIsAccepted();
    void hostileTextIsRefusedInTime_data();
    void hostileTextIsRefusedInTime();
    void hiddenTablesAreFound_data();
    void hiddenTablesAreFound();
    void tablesThatQtReadsAreCounted();
    void plainTextIsWhatWouldBeShown_data();
    void plainTextIsWhatWouldBeShown();
    void plainTextHasALimit();
};

void tst_HtmlGuard::limitsAreExact_data()
{
    QTest::addColumn<QString>("atLimit");
    QTest::addColumn<QString>("above");

    const QString x = u"x"_s;
    QTest::newRow("length") << x.repeated(4'000'000) << x.repeated(4'000'001);
    QTest::newRow("tags") << u"<br>"_s.repeated(40'000) << u"<br>"_s.repeated(40'001);
    QTest::newRow("elements within lines") << u"<b></b>"_s.repeated(5'000) << u"<b></b>"_s.repeated(5'001);
    QTest::newRow("pictures") << u"<img src=a>"_s.repeated(2'000) << u"<img src=a>"_s.repeated(2'001);
    const QString rules = u"<style>"_s + u"p{color:red}"_s.repeated(1'000) + u"</style>"_s;
    QTest::newRow("rules") << rules + u"<p>"_s.repeated(2'998) << rules + u"<p>"_s.repeated(2'999);
    QTest::newRow("depth") << u"<div>"_s.repeated(256) << u"<div>"_s.repeated(257);
    QTest::newRow("depth of a closed text") << u"<div>"_s.repeated(256) + u"</div>"_s.repeated(256)
                                            << u"<div>"_s.repeated(257) + u"</div>"_s.repeated(257);
    QTest::newRow("nested tables") << nestedTables(8) << nestedTables(9);
    QTest::newRow("wide cells") << u"<table><tr>"_s + u"<td colspan=1000>x"_s.repeated(50)
                                << u"<table><tr>"_s + u"<td colspan=1000>x"_s.repeated(50) + u"<td>x"_s;
    const QString inner = u"<table><tr><td><table><tr>"_s;
    QTest::newRow("inner cells") << inner + u"<td>x"_s.repeated(24'999)
                                 << inner + u"<td>x"_s.repeated(25'000);
    QTest::newRow("high cells") << u"<table>"_s + u"<tr><td rowspan=250>x"_s.repeated(200)
                                << u"<table>"_s + u"<tr><td rowspan=250>x"_s.repeated(200) + u"<td>x"_s;
    QTest::newRow("wide and high cells")
        << u"<table><tr><td rowspan=200 colspan=250>x"_s << u"<table><tr><td rowspan=200 colspan=251>x"_s;
    QTest::newRow("narrow cells") << u"<table><tr>"_s + u"<td>"_s.repeated(39'998)
                                  << u"<table><tr>"_s + u"<td>"_s.repeated(39'999);
    QTest::newRow("one cell") << u"<table><tr><th colspan='50000'>x"_s
                              << u"<table><tr><th colspan='50001'>x"_s;
    QTest::newRow("list items") << u"<ul>"_s + u"<li>x"_s.repeated(3'000)
                                << u"<ul>"_s + u"<li>x"_s.repeated(3'001);
    const QString floating = u" style='float : left'"_s;
    QTest::newRow("floats") << table(floating).repeated(100) << table(floating).repeated(101);
    const QString aligned = u" align=\"RIGHT\""_s;
    QTest::newRow("aligned") << table(aligned).repeated(100) << table(aligned).repeated(101);
    QTest::newRow("font sizes") << sizes(300) << sizes(301);
    const QString mark = u"\u0301"_s;
    QTest::newRow("marks") << u'e' + mark.repeated(64) + u'e' + mark.repeated(64) << u'e' + mark.repeated(65);
    const QString pair = u"\U0001E8D0"_s; // beyond the first 65,536 characters
    QTest::newRow("marks of two units") << u'e' + pair.repeated(64) << u'e' + pair.repeated(65);
    const QString reference = u"&#x301;"_s;
    QTest::newRow("marks as references") << u'e' + reference.repeated(64) << u'e' + reference.repeated(65);
    const QString decimal = u"&#769;"_s;
    QTest::newRow("mixed marks") << u'e' + decimal.repeated(32) + mark.repeated(32)
                                 << u'e' + decimal.repeated(32) + mark.repeated(33);
}

void tst_HtmlGuard::limitsAreExact()
{
    QFETCH(QString, atLimit);
    QFETCH(QString, above);
    QVERIFY(HtmlGuard::accepts(atLimit));
    QVERIFY(!HtmlGuard::accepts(above));
}

void tst_HtmlGuard::ordinaryTextIsAccepted_data()
{
    QTest::addColumn<QString>("html");

    const struct
    {
        const char *name;
        QString html;
    } rows[] = {
        { "nothing", QString() },
        { "plain", u"Fragile - this side up"_s },
        { "comparison", u"1 < 2 and 3 > 2, a<b"_s },
        { "ampersands", u"Smith & Sons &amp; Daughters &unknown; &"_s },
        { "references", u"&lt;&gt;&nbsp;&euro;&#8364;&#x20AC;&quot;"_s },
        { "paragraphs", u"<p>one</p><p>two</p>"_s },
        { "unclosed paragraphs", u"<p>text "_s.repeated(2'000) },
        { "unclosed list items", u"<ul><li>a<li>b<li>c</ul>"_s.repeated(200) },
        { "breaks", u"line<br>line<br/>line<br />"_s.repeated(500) },
        { "rules", u"<hr><hr/>"_s.repeated(300) },
        { "emphasis", u"<b>bold</b> <i>italic</i> <u>under</u> <s>struck</s>"_s.repeated(300) },
        { "wrongly nested", u"<b><i>both</b></i> "_s.repeated(400) },
        { "upper case", u"<P ALIGN=CENTER><FONT SIZE=\"+2\" COLOR=RED>Sale</FONT></P>"_s },
        { "headings", u"<h1>a</h1><h2>b</h2><h3>c</h3><h4>d</h4><h5>e</h5><h6>f</h6>"_s },
        { "preformatted", u"<pre>a  b\n  c</pre>"_s },
        { "link", u"<a href=\"https://example.org/?a=1&amp;b=2\">shop</a>"_s },
        { "comments", u"<!-- a note -->text"_s.repeated(400) },
        { "comment with a quote", u"<!-- don't --><p>text</p>"_s },
        { "document type",
            u"<!DOCTYPE HTML PUBLIC \"-//W3C//DTD HTML 4.0//EN\"><html><body>x</body></html>"_s },
        { "written by Qt", QString() },
        { "style sheet", u"<style type=\"text/css\">p, li { white-space: pre-wrap; }</style><p>x</p>"_s },
        { "word processor",
            u"<p class=MsoNormal style='mso-margin-top-alt:auto'><span lang=EN-GB "
            "style='font-size:12.0pt;font-family:\"Times New Roman\",serif'>Text<o:p></o:p>"
            "</span></p>"_s.repeated(300) },
        { "conditional comments", u"<!--[if gte mso 9]><xml><w:View>Normal</w:View></xml><![endif]-->x"_s },
        { "table", u"<table border=1><tr><th>Article<th>Price<tr><td>Tea<td>2.50</table>"_s },
        { "mail",
            u"<table width=100%><tr><td><table align=center width=600><tr><td><table><tr><td>Dear customer"
            "</td></tr></table></td></tr></table></td></tr></table>"_s },
        { "wide heading", u"<table><tr><td colspan=\"3\">Title</td></tr><tr><td>1<td>2<td>3</table>"_s },
        { "high cells", u"<table><tr><td rowspan=2>a<td>b<tr><td>c</table>"_s.repeated(100) },
        { "cells after a table in a cell",
            u"<table><tr><td><table><tr><td>a</td></tr></table></td><td>b</td></tr></table>"_s.repeated(20) },
        { "nested lists", u"<ol><li>a<ul><li>b<ol><li>c</ol></ul></ol>"_s.repeated(100) },
        { "definitions", u"<dl><dt>term<dd>meaning<dt>term<dd>meaning</dl>"_s },
        { "quotation", u"<blockquote>He said <q>so</q></blockquote>"_s },
        { "picture", u"<img src=\"data:image/png;base64,iVBORw0KGgo=\" width=20>"_s },
        { "floating picture", u"<img src='x.png' style='float:left'>text"_s },
        { "many equal sizes", u"<span style=\"font-size:12pt;\">x</span>"_s.repeated(2'000) },
        { "super and subscript", u"H<sub>2</sub>O, 10<sup>3</sup>"_s },
        { "accented", u"a\u0301 e\u0302\u0323 Vie\u0323\u0302t Nam"_s },
        { "right to left", u"<p dir=rtl>\u05E9\u05B8\u05C1\u05DC\u05D5\u05B9\u05DD</p>"_s },
        { "beyond sixteen bits", u"\U0001F600<b>\U0001F600</b>"_s },
        { "cut in a tag", u"<p>text</p><span style=\"font"_s },
        { "cut in a reference", u"text &am"_s },
        { "only closing", u"</p></div></table></ul>text"_s },
    };
    for (const auto &[name, html] : rows) {
        QTextDocument document;
        document.setPlainText(u"one\ntwo"_s);
        QTest::newRow(name) << (qstrcmp(name, "written by Qt") == 0 ? document.toHtml() : html);
    }
}

void tst_HtmlGuard::ordinaryTextIsAccepted()
{
    QFETCH(QString, html);
    QVERIFY(HtmlGuard::accepts(html));
}

void tst_HtmlGuard::hostileTextIsRefusedInTime_data()
{
    QTest::addColumn<QString>("html");

    QTest::newRow("16 tables") << nestedTables(16);
    QTest::newRow("30 tables") << nestedTables(30);
    QTest::newRow("3,000 tables") << nestedTables(3'000);
    QTest::newRow("floating tables") << table(u" style=\"float:left\""_s).repeated(800);
    QTest::newRow("aligned tables") << table(u" align=left"_s).repeated(800);
    QTest::newRow("tables that a sheet lets float")
        << u"<style>table { float: left }</style>"_s + table().repeated(800);
    QTest::newRow("floating behind a comment") << table(u" style='float/**/:left'"_s).repeated(800);
    QTest::newRow("wide cells") << u"<table><tr>"_s + u"<td colspan=20480>x"_s.repeated(100);
    QTest::newRow("wide cells by references")
        << u"<table><tr>"_s + u"<td colspan='&#50;0480'>x"_s.repeated(100);
    QTest::newRow("wide rows") << u"<table>"_s + u"<tr><td colspan=5000>x"_s.repeated(2'000);
    QTest::newRow("high cells") << u"<table>"_s + u"<tr><td rowspan=20000>x"_s.repeated(10'000);
    QTest::newRow("cells that are wide and high")
        << u"<table><tr><td colspan=2147483647 rowspan=2147483647>"_s;
    QTest::newRow("cells after the row") << u"<td></tr><ul>"_s.repeated(32);
    QTest::newRow("list items") << u"<ul>"_s + u"<li>x"_s.repeated(20'000);
    QTest::newRow("quotations") << u"<blockquote>x"_s.repeated(20'000);
    QTest::newRow("lists that something else closes") << u"<ul></b>"_s.repeated(3'000) + u'x';
    QTest::newRow("font sizes") << sizes(20'000);
    QTest::newRow("marks") << u'e' + u"\u0301"_s.repeated(200'000);
    QTest::newRow("tags") << u"<b>x</b>"_s.repeated(400'000);
    QTest::newRow("length") << u"<b>x</b>"_s + u"x"_s.repeated(20'000'000);
    QTest::newRow("quotes") << u"<a b='"_s.repeated(600'000) + nestedTables(30) + u"x"_s.repeated(500'000);
}

void tst_HtmlGuard::hostileTextIsRefusedInTime()
{
    QFETCH(QString, html);
    const std::clock_t start = std::clock();
    QVERIFY(!HtmlGuard::accepts(html));
    const QString text = HtmlGuard::plainTextOf(html);
    const double seconds = double(std::clock() - start) / CLOCKS_PER_SEC;
    QVERIFY2(seconds < quickSeconds, qPrintable(QString::number(seconds)));
    QVERIFY(!text.contains(u"<table"_s));
    QVERIFY(text.size() <= 2'000'000);
}

void tst_HtmlGuard::hiddenTablesAreFound_data()
{
    QTest::addColumn<QString>("html");

    const QString nested = nestedTables(9);
    QTest::newRow("quote in a comment") << u"<!-- ' -->"_s + nested;
    QTest::newRow("double quote in a comment") << u"<!-- \" -->"_s + nested;
    QTest::newRow("quote in a closing tag") << u"<b>t</b '>"_s + nested;
    QTest::newRow("quote in a value") << u"<p a=b'>"_s + nested;
    QTest::newRow("quote in a name") << u"<p'>"_s + nested;
    QTest::newRow("quote in a document type") << u"<!DOCTYPE '>"_s + nested;
    QTest::newRow("quoted name") << nestedTables(9, u"<\"table\">"_s);
    QTest::newRow("space before the name") << nestedTables(9, u"< table>"_s);
    QTest::newRow("reference in the name") << nestedTables(9, u"<t&#97;ble>"_s);
    QTest::newRow("name with a value") << nestedTables(9, u"<table=1>"_s);
    QTest::newRow("closing tag that closes nothing") << nestedTables(9, u"<table></ table>"_s);
    QTest::newRow("closing tag in a value") << nestedTables(9, u"<table a=\"</table>\">"_s);
    QTest::newRow("cells in no row") << u"</table></p><table><td>"_s.repeated(9) + u'x';
    QTest::newRow("cells after the row") << u"<td></tr><ul>"_s.repeated(9) + u'x';
    QTest::newRow("cells after the table") << u"<table>"_s + u"<td></table>"_s.repeated(9) + u'x';
    QTest::newRow("cells after a paragraph around the row")
        << u"<table>"_s + u"</p><p><td>"_s.repeated(9) + u'x';
    QTest::newRow("cells after an element around the row")
        << u"<table>"_s + u"</i><i><td>"_s.repeated(9) + u'x';
    QTest::newRow("cells after a paragraph between them")
        << u"<table>"_s + u"</td><p><td>"_s.repeated(9) + u'x';
    QTest::newRow("closing tag in a comment") << nestedTables(9, u"<table><!--</table>-->"_s);
}

void tst_HtmlGuard::hiddenTablesAreFound()
{
    QFETCH(QString, html);
    QTextDocument document;
    document.setHtml(html);
    QCOMPARE(tableDepth(*document.rootFrame()), 9);
    QVERIFY(!HtmlGuard::accepts(html));
}

/// Compares with what Qt reads: whatever surrounds them, deep tables are found.
void tst_HtmlGuard::tablesThatQtReadsAreCounted()
{
    const QStringList parts { u"<table"_s, u"<table>"_s, u"</table>"_s, u"</table"_s, u"</"_s, u"<"_s, u">"_s,
        u"/"_s, u"'"_s, u"\""_s, u"="_s, u" "_s, u"a"_s, u"<!--"_s, u"-->"_s, u"<!"_s, u"<p>"_s, u"<td>"_s,
        u"<tr>"_s, u"&#97;"_s, u"<style>"_s, u"</style>"_s, u"</p>"_s, u"table"_s, u"-"_s, u"/>"_s, u"<br>"_s,
        u"</tr>"_s, u"</td>"_s, u"<ul>"_s, u"</ul>"_s, u"<th>"_s };
    QRandomGenerator random(20);
    int deep = 0;
    for (int i = 0; i < randomTexts; ++i) {
        QString unit;
        for (int part = 2 + int(random.bounded(7)); part > 0; --part)
            unit += parts[random.bounded(int(parts.size()))];
        const QString html = (unit + u"<tr><td>"_s).repeated(12) + u'x';
        if (HtmlGuard::accepts(html)) {
            QTextDocument document;
            document.setHtml(html);
            const int depth = tableDepth(*document.rootFrame());
            QVERIFY2(depth <= 8, qPrintable(u"%1 tables of %2"_s.arg(depth).arg(unit)));
        } else {
            ++deep;
        }
    }
    QVERIFY(deep > 100);
}

void tst_HtmlGuard::plainTextIsWhatWouldBeShown_data()
{
    QTest::addColumn<QString>("html");
    QTest::addColumn<QString>("text");

    QTest::newRow("nothing") << QString() << QString();
    QTest::newRow("plain") << u"as it is"_s << u"as it is"_s;
    QTest::newRow("emphasis") << u"<b>as</b> it <i>is</i>"_s << u"as it is"_s;
    QTest::newRow("paragraphs") << u"<p>one</p><p>two</p>"_s << u"one\ntwo"_s;
    QTest::newRow("break") << u"one<br>two"_s << u"one\ntwo"_s;
    QTest::newRow("list") << u"<ul><li>one<li>two</ul>"_s << u"one\ntwo"_s;
    QTest::newRow("references") << u"&lt;b&gt; &amp;amp; &#65;&#x42; &quot;"_s << u"<b> &amp; AB \""_s;
    QTest::newRow("beyond sixteen bits") << u"&#x1F600;"_s << u"\U0001F600"_s;
    QTest::newRow("no reference") << u"a & b &nothing; &"_s << u"a & b &nothing; &"_s;
    QTest::newRow("style sheet") << u"<style>p { color: red }</style>text"_s << u"text"_s;
    QTest::newRow("title") << u"<title>not this</title>text"_s << u"text"_s;
    QTest::newRow("comment") << u"a<!-- <b>not</b> this -->b"_s << u"ab"_s;
    QTest::newRow("comparison") << u"1 < 2"_s << u"1 < 2"_s;
    QTest::newRow("value with a bracket") << u"<p title=\"a>b\">text</p>"_s << u"text"_s;
    QTest::newRow("nested tables") << nestedTables(30) << u"x"_s;
    QTest::newRow("cut in a tag") << u"text<span style=\"fo"_s << u"text"_s;
}

void tst_HtmlGuard::plainTextIsWhatWouldBeShown()
{
    QFETCH(QString, html);
    QTEST(HtmlGuard::plainTextOf(html), "text");
}

void tst_HtmlGuard::plainTextHasALimit()
{
    QCOMPARE(HtmlGuard::plainTextOf(u"<b>"_s + u"x"_s.repeated(2'000'000)).size(), 2'000'000);
    QCOMPARE(HtmlGuard::plainTextOf(u"<b>"_s + u"x"_s.repeated(2'000'001)).size(), 2'000'000);
}

QTEST_MAIN(tst_HtmlGuard)
#include "tst_htmlguard.moc"
