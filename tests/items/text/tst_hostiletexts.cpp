// SPDX-License-Identifier: BSD-3-Clause
#include "items/text/htmlguard.h"
#include "items/text/richtextitem.h"
#include "items/text/simpletextitem.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QMimeData>
#include <QPainter>
#include <QRegularExpression>
#include <QStyleOptionGraphicsItem>
#include <QTest>

#include <ctime>
#include <sys/resource.h>

using namespace Qt::StringLiterals;

namespace {

#ifdef __SANITIZE_ADDRESS__
constexpr double mostSeconds = 20.0;
constexpr long mostMebibytes = 4'096; // shadow memory, and freed blocks that stay reserved
#else
/// Twice the promise of two seconds, for slower machines.
constexpr double mostSeconds = 4.0;
constexpr long mostMebibytes = 512;
#endif

double processorSeconds()
{
    return double(std::clock()) / CLOCKS_PER_SEC;
}

long mebibytes()
{
    rusage usage {};
    getrusage(RUSAGE_SELF, &usage);
    return usage.ru_maxrss / 1024;
}

void paint(QGraphicsItem &item)
{
    QImage image(400, 300, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::white);
    QStyleOptionGraphicsItem option;
    option.exposedRect = QRectF(0, 0, 400, 300);
    QPainter painter(&image);
    item.paint(&painter, &option, nullptr);
}

QString nested(int depth, const QString &inside)
{
    return u"<table><tr><td>"_s.repeated(depth) + inside + u"</table>"_s.repeated(depth);
}

QString numbered(int count, const QString &pattern)
{
    QString html;
    for (int i = 0; i < count; ++i)
        html += pattern.arg(i);
    return html;
}

/// Of 32 tables in one another, by which Qt's layout would take days.
QString hiddenTables()
{
    return u"<table>"_s + u"<table><!<p></td>-<br></table<tr><td>"_s.repeated(32) + u"deep"_s;
}

} // namespace

/// Texts that are hard to lay out, as hard as they may be.
class tst_HostileTexts : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { QFont::insertSubstitution(u"_Fen Loma"_s, u"Loma"_s); }
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    void acceptedHtmlIsShownInTime_data();
    void acceptedHtmlIsShownInTime();
    void sizesAreConvertedInTime_data();
    void sizesAreConvertedInTime();
    void plainTextIsShownInTime_data();
    void plainTextIsShownInTime();
    void textBeyondTheLayoutIsKept();
    void hiddenTablesAreNotLaidOut();
    void pastedHiddenTablesAreNotLaidOut();
    void refusedHtmlLeavesTheItemUsable();
};

void tst_HostileTexts::acceptedHtmlIsShownInTime_data()
{
    QTest::addColumn<QString>("html");
    QTest::newRow("quotations") << u"<blockquote>a</blockquote>"_s.repeated(19'999);
    QTest::newRow("nested quotations") << u"<blockquote>"_s.repeated(255) + u'a';
    QTest::newRow("paragraphs") << u"<p>a"_s.repeated(39'999);
    QTest::newRow("rules") << u"<hr>"_s.repeated(39'999);
    QTest::newRow("line breaks") << u"a<br>"_s.repeated(39'999);
    QTest::newRow("list items") << u"<ul>"_s + u"<li>a"_s.repeated(2'999) + u"</ul>"_s;
    QTest::newRow("nested lists") << u"<ul><li>a"_s.repeated(127);
    QTest::newRow("cells") << u"<table>"_s + (u"<tr>"_s + u"<td>a"_s.repeated(100)).repeated(200)
            + u"</table>"_s;
    QTest::newRow("rows") << u"<table>"_s + u"<tr><td>a"_s.repeated(19'000);
    QTest::newRow("high cells") << u"<table>"_s + u"<tr><td rowspan=223>a"_s.repeated(224);
    QTest::newRow("tables") << u"<table><tr><td>a</table>"_s.repeated(9'000);
    QTest::newRow("nested tables") << nested(8, u"a"_s).repeated(195);
    QTest::newRow("cells in nested tables")
        << u"<table><tr><td>a<td>"_s.repeated(8) + u"<td>b"_s.repeated(380);
    QTest::newRow("floating tables") << u"<table style='float:left'><tr><td>a</table>word "_s.repeated(99);
    QTest::newRow("formats of one line") << u"<span style='color:#123456'>a</span><b>b</b>"_s.repeated(2'499);
    QTest::newRow("links") << numbered(4'999, u"<a href='x%1'>a</a>"_s);
    QTest::newRow("pictures") << numbered(2'000, u"<img src='a%1.png'>"_s);
    QTest::newRow("font sizes") << numbered(299, u"<span style='font-size:1%1pt'>abc abc </span>"_s);
    QTest::newRow("style sheet") << u"<style>"_s + u"p{color:red}"_s.repeated(330) + u"</style>"_s
            + u"<p>a"_s.repeated(9'000);
    QTest::newRow("one word") << u"w"_s.repeated(1'000'000);
    QTest::newRow("one line") << u"word "_s.repeated(200'000);
    QTest::newRow("tabs") << u"<pre>"_s + u"a\t"_s.repeated(200'000);
    QTest::newRow("huge indents") << u"<p style='text-indent:10000000px; margin-left:9999999px'>a"_s.repeated(
        5'000);
}

void tst_HostileTexts::acceptedHtmlIsShownInTime()
{
    QFETCH(const QString, html);
    QVERIFY(HtmlGuard::accepts(html));
    const double start = processorSeconds();
    RichTextItem item;
    item.setItemHtml(html);
    paint(item);
    const double seconds = processorSeconds() - start;
    QVERIFY2(seconds < mostSeconds, qPrintable(QString::number(seconds)));
    QVERIFY2(mebibytes() < mostMebibytes, qPrintable(QString::number(mebibytes())));
}

void tst_HostileTexts::sizesAreConvertedInTime_data()
{
    QTest::addColumn<QString>("html");
    const QString style = u"<p style=\"margin-left:%1px; font-size:10pt;\">"_s;
    // The filling ends like each style that is sought in it.
    QTest::newRow("few styles in a long text") << numbered(75, style) + u">"_s.repeated(3'990'000);
    QTest::newRow("many styles in a long text") << numbered(2'000, style) + u">"_s.repeated(3'880'000);
    QTest::newRow("many styles in a short text") << numbered(2'000, style) + u">"_s.repeated(90'000);
    QTest::newRow("one style, again and again") << style.repeated(1'900) + u">"_s.repeated(3'880'000);
}

void tst_HostileTexts::sizesAreConvertedInTime()
{
    QFETCH(const QString, html);
    QVERIFY(HtmlGuard::accepts(html));
    const double start = processorSeconds();
    RichTextItem item;
    item.setScaledHtml(html, item.getScreenDpi() * 2.0);
    const double seconds = processorSeconds() - start;
    QVERIFY2(seconds < mostSeconds, qPrintable(QString::number(seconds)));
}

void tst_HostileTexts::plainTextIsShownInTime_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("one word") << u"w"_s.repeated(1'000'000);
    QTest::newRow("words") << u"word "_s.repeated(200'000);
    QTest::newRow("lines") << u"a\n"_s.repeated(200'000);
    QTest::newRow("tabs") << u"a\t"_s.repeated(200'000);
    QTest::newRow("lone surrogates") << QString(QChar(0xD83D)).repeated(200'000);
    QTest::newRow("directions") << u"\u202E\u202Ca"_s.repeated(50'000);
}

void tst_HostileTexts::plainTextIsShownInTime()
{
    QFETCH(const QString, text);
    for (const bool rich : { false, true }) {
        const std::unique_ptr<TextItem> item(
            rich ? static_cast<TextItem *>(new RichTextItem) : new SimpleTextItem);
        const double start = processorSeconds();
        item->setItemText(text);
        paint(*item);
        const double seconds = processorSeconds() - start;
        QVERIFY2(seconds < mostSeconds, qPrintable(u"%1 %2"_s.arg(rich).arg(seconds)));
    }
}

// The text is kept; it is shown again once it fits.
void tst_HostileTexts::textBeyondTheLayoutIsKept()
{
    const QString lines = u"a\n"_s.repeated(200'000);
    SimpleTextItem label;
    label.setItemText(lines);
    QVERIFY(!label.document()->isLayoutEnabled());
    QCOMPARE(label.getItemText(), lines);
    label.setItemText(u"short"_s);
    QVERIFY(label.document()->isLayoutEnabled());
    QVERIFY(label.getItemWidth() > 50.0 && label.getItemHeight() < 100.0);

    RichTextItem box;
    box.setItemFontSize(10);
    box.setItemText(u"word "_s.repeated(20'000));
    QVERIFY(box.document()->isLayoutEnabled());
    box.setItemFontSize(1'000);
    QVERIFY(!box.document()->isLayoutEnabled());
    box.setItemFontSize(10);
    QVERIFY(box.document()->isLayoutEnabled());
    QCOMPARE(box.getItemText().size(), 100'000);
}

void tst_HostileTexts::hiddenTablesAreNotLaidOut()
{
    QVERIFY(HtmlGuard::accepts(hiddenTables()));
    const double start = processorSeconds();
    RichTextItem item;
    item.setItemHtml(hiddenTables());
    paint(item);
    QVERIFY(processorSeconds() - start < mostSeconds);
    QVERIFY(item.getItemText().contains(u"deep"_s));
    QVERIFY(!item.document()->isLayoutEnabled());
    item.setItemHtml(nested(8, u"a"_s));
    QVERIFY(item.document()->isLayoutEnabled());
}

void tst_HostileTexts::pastedHiddenTablesAreNotLaidOut()
{
    auto *data = new QMimeData;
    data->setHtml(hiddenTables());
    QGuiApplication::clipboard()->setMimeData(data);
    RichTextItem item;
    item.setItemText(u"before"_s);
    item.startEdit(6);
    const double start = processorSeconds();
    item.textPaste();
    paint(item);
    QVERIFY(processorSeconds() - start < mostSeconds);
    QVERIFY(item.getItemText().startsWith(u"before"_s) && item.getItemText().contains(u"deep"_s));
    QVERIFY(!item.document()->isLayoutEnabled());
}

void tst_HostileTexts::refusedHtmlLeavesTheItemUsable()
{
    RichTextItem item;
    item.setItemSize(QSizeF(300, 100));
    item.setItemFillColor(Qt::yellow);
    const QString html = nested(30, u"deep"_s);
    QVERIFY(!HtmlGuard::accepts(html));
    item.setItemHtml(html);
    QCOMPARE(item.getItemText().trimmed(), u"deep"_s);
    QCOMPARE(item.getItemSize(), QSizeF(300, 100));
    QCOMPARE(item.getItemFillColor(), QColor(Qt::yellow));
    item.setItemHtml(u"<b>after</b>"_s);
    QCOMPARE(item.getItemText(), u"after"_s);
}

QTEST_MAIN(tst_HostileTexts)
#include "tst_hostiletexts.moc"
