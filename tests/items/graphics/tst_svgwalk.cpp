// SPDX-License-Identifier: BSD-3-Clause
#include "items/graphics/svgitem.h"
#include "tests/support/recordingsink.h"
#include "tests/support/svgtexts.h"

#include <QDomDocument>
#include <QRegularExpression>
#include <QTest>

using namespace Qt::StringLiterals;
using SvgTexts::drawing;

namespace {

const QString linkMessage = u"Unable to load svg, it contains an image link"_s;

QString giantMessage(const QString &sides)
{
    return u"Unable to load svg, it contains a giant embedded image: "_s + sides;
}

QByteArray image(const QByteArray &attributes)
{
    return "<image " + attributes + "/>";
}

const QByteArray embedded = "xlink:href=\"data:image/png;base64,AAAA\" ";

} // namespace

/// The search of a drawing for pictures that would not print reliably.
class tst_SvgWalk : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    void picturesAreFound_data();
    void picturesAreFound();
    void refusalTellsItsPlace();
    void otherEncodingsAreRead();
    void textBeforeAnErrorCounts();
    void nodeAndWhatFollowsAreWalked();
    void deepTreesAreWalked();
};

void tst_SvgWalk::picturesAreFound_data()
{
    QTest::addColumn<QByteArray>("svg");
    QTest::addColumn<QString>("message");
    const auto row = [](const char *name, const QByteArray &elements, const QString &message) {
        QTest::newRow(name) << drawing(10, 10, elements) << message;
    };
    row("none", "<rect width=\"4\" height=\"4\"/>", {});
    row("file", image("xlink:href=\"logo.png\" width=\"1\" height=\"1\""), linkMessage);
    row("web address", image("xlink:href=\"https://example.org/logo.png\""), linkMessage);
    row("empty link", image("xlink:href=\"\""), linkMessage);
    row("link without an image type", image("xlink:href=\"data:text/plain,abc\""), linkMessage);
    row("link in capitals", image("xlink:href=\"DATA:IMAGE/png;base64,AAAA\""), linkMessage);
    row("cut link", image("xlink:href=\"data:image\""), linkMessage);
    row("embedded", image(embedded + "width=\"10\" height=\"10\""), {});
    row("embedded, of the largest area", image(embedded + "width=\"500\" height=\"500\""), {});
    row("embedded, beyond", image(embedded + "width=\"500\" height=\"501\""),
        giantMessage(u"500.00 501.00"_s));
    row("embedded, just beyond", image(embedded + "width=\"1\" height=\"250000.5\""),
        giantMessage(u"1.00 250000.50"_s));
    row("embedded, without sides", image(embedded), {});
    row("embedded, of sides with units", image(embedded + "width=\"9999px\" height=\"9999px\""), {});
    row("no link", image("width=\"9999\" height=\"9999\""), {});
    row("link without prefix", image("href=\"logo.png\""), {});
    row("name in capitals", "<IMAGE xlink:href=\"logo.png\"/>", {});
    row("longer name", "<images xlink:href=\"logo.png\"/>", {});
    row("within groups", "<g><g>" + image("xlink:href=\"logo.png\"") + "</g></g>", linkMessage);
    row("behind a group", "<g><g/></g>" + image("xlink:href=\"logo.png\""), linkMessage);
    row("two, the first decides",
        image(embedded + "width=\"999\" height=\"999\"") + image("xlink:href=\"logo.png\""),
        giantMessage(u"999.00 999.00"_s));
    // Qt's readers end at an entity that holds an element, the one of the renderer too.
    QTest::newRow("from an entity") << "<!DOCTYPE svg [<!ENTITY picture \"<image xlink:href='logo.png'/>\">]>"
            + drawing(10, 10, "&picture;")
                                    << QString();
}

void tst_SvgWalk::picturesAreFound()
{
    QFETCH(QByteArray, svg);
    QFETCH(QString, message);
    RecordingSink sink;
    installLogSink(&sink);
    SvgItem item;
    item.setSvgContents(svg.toBase64());
    const bool passed = item.checkXmlOnLoad();
    installLogSink(nullptr);
    QCOMPARE(passed, message.isEmpty());
    QCOMPARE(sink.records.size(), message.isEmpty() ? 0 : 1);
    if (!message.isEmpty())
        QCOMPARE(sink.records[0].text, message);
}

void tst_SvgWalk::refusalTellsItsPlace()
{
    RecordingSink sink;
    installLogSink(&sink);
    SvgItem item;
    QVERIFY(!item.loadItemFromData(SvgTexts::linked));
    installLogSink(nullptr);
    QCOMPARE(sink.records.size(), 1);
    QCOMPARE(sink.records[0].level, 1);
    QCOMPARE(sink.records[0].file, "svgitem");
    QVERIFY(sink.records[0].line > 0);
    QVERIFY(QByteArray(sink.records[0].function).contains("recursiveCheckAttributesForInvalidImages"));
}

void tst_SvgWalk::otherEncodingsAreRead()
{
    const QString text = QString::fromLatin1(SvgTexts::linked);
    const QByteArray utf16(reinterpret_cast<const char *>(text.utf16()), text.size() * 2);
    RecordingSink sink;
    installLogSink(&sink);
    SvgItem item;
    item.setSvgContents(("\xFF\xFE" + utf16).toBase64());
    const bool passed = item.checkXmlOnLoad();
    installLogSink(nullptr);
    QVERIFY(!passed);
}

// The renderer draws the part before it.
void tst_SvgWalk::textBeforeAnErrorCounts()
{
    RecordingSink sink;
    installLogSink(&sink);
    SvgItem item;
    item.setSvgContents((SvgTexts::linked + "<").toBase64());
    const bool passed = item.checkXmlOnLoad();
    installLogSink(nullptr);
    QVERIFY(!passed);
}

void tst_SvgWalk::nodeAndWhatFollowsAreWalked()
{
    RecordingSink sink;
    installLogSink(&sink);
    QDomDocument document;
    QVERIFY(document.setContent(
        QByteArrayLiteral("<svg><g><image xlink:href=\"before.png\"/></g><g/><g><g/></g></svg>"), false));
    const QDomNode first = document.documentElement().firstChild();
    QVERIFY(!SvgItem::recursiveCheckAttributesForInvalidImages(first));
    QVERIFY(SvgItem::recursiveCheckAttributesForInvalidImages(first.nextSibling()));
    QVERIFY(!SvgItem::recursiveCheckAttributesForInvalidImages(first.firstChild()));
    QVERIFY(SvgItem::recursiveCheckAttributesForInvalidImages(first.nextSibling().nextSibling()));
    QVERIFY(SvgItem::recursiveCheckAttributesForInvalidImages(QDomNode()));
    installLogSink(nullptr);
}

// A walk that calls itself for every level would end the program.
void tst_SvgWalk::deepTreesAreWalked()
{
    constexpr int levels = 5'000;
    QDomDocument document;
    QDomElement deepest = document.createElement(u"svg"_s);
    document.appendChild(deepest);
    for (int i = 0; i < levels; ++i) {
        QDomElement group = document.createElement(u"g"_s);
        deepest.appendChild(group);
        deepest = group;
    }
    QVERIFY(SvgItem::recursiveCheckAttributesForInvalidImages(document.documentElement().firstChild()));
}

QTEST_MAIN(tst_SvgWalk)
#include "tst_svgwalk.moc"
