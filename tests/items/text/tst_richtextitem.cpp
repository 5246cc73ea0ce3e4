// SPDX-License-Identifier: BSD-3-Clause
#include "items/text/richtextitem.h"
#include "tests/support/colours.h"
#include "tests/support/oddnumbers.h"

#include <QApplication>
#include <QFont>
#include <QFontInfo>
#include <QGraphicsScene>
#include <QPainter>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QTest>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>

using namespace Qt::StringLiterals;
using namespace Colours;

namespace {

const QString marker = u"!!!###VXFUNCTIONDATASOURCE###!!!"_s;

double screenFactor()
{
    const QFontInfo info(QApplication::font());
    return info.pixelSize() / info.pointSizeF();
}

class OpenItem : public RichTextItem
{
public:
    using RichTextItem::drawFrame;
    using RichTextItem::getReferenceRectangle;
    using RichTextItem::getReferenceRectangleEdit;
};

QTextCharFormat formatAt(const RichTextItem &item, int position)
{
    QTextCursor cursor(item.document());
    cursor.setPosition(position + 1);
    return cursor.charFormat();
}

} // namespace

/// The rich text without its persistence.
class tst_RichTextItem : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { QFont::insertSubstitution(u"_Fen Loma"_s, u"Loma"_s); }
    void init();

    void newBoxIsEmpty();
    void newBoxHasTheFormatsOfAnEmptyOne();
    void emptinessFollowsTheText();
    void changesAreToldOnce();
    void fontOfTheWholeText();
    void fontOfTheSelection();
    void mixedSizesAreNone();
    void sizesBelowOneAreIgnored();
    void alignmentOfTheWholeText();
    void alignmentOfTheSelection();
    void emptySettersLeaveTheText();
    void colourOfTheWholeText();
    void colourOfTheSelection();
    void colourByName();
    void sizeIsThatOfTheBox();
    void sidesAreAtLeastOne_data();
    void sidesAreAtLeastOne();
    void oddSizesLeaveFiniteBounds_data();
    void oddSizesLeaveFiniteBounds();
    void textFitsWithToleranceAndFontSize();
    void boxGrowsToItsText();
    void boundsHoldTextAndPen();
    void plainDataAreShown();
    void equalDataChangeNothing();
    void dataKeepTheAlignment();
    void markedDataAreHtml();
    void markedDataKeepTheFontSize();
    void markedDataAreComparedWithTheLastMarked();
    void frameIsDrawnAroundTheBox();
    void scaledHtmlIsInPointsOfThisScreen();
    void htmlWithTooManySizesIsNotRewritten();
    void cursorIsCopied();
    void cursorMovesAreTold();
};

void tst_RichTextItem::init()
{
    QTest::failOnWarning(QRegularExpression(u".*"_s));
    RichTextItem::setTextFitsTolerance(0.0);
}

void tst_RichTextItem::newBoxIsEmpty()
{
    const RichTextItem item;
    QCOMPARE(item.type(), 0x10016);
    QCOMPARE(int(item.getItemShape()), 0x10016);
    QVERIFY(item.getDocumentIsEmpty());
    QCOMPARE(item.toPlainText(), QString());
    QCOMPARE(item.getScreenDpi(), screenFactor());
    QCOMPARE(item.document()->documentMargin(), 4.0);
    QCOMPARE(item.textWidth(), item.getItemWidth());
    QCOMPARE(item.getItemTextColor(), black);
}

void tst_RichTextItem::newBoxHasTheFormatsOfAnEmptyOne()
{
    const RichTextItem item;
    QCOMPARE(item.getEmptyFontFamily(), u"_Fen Loma"_s);
    QCOMPARE(item.getEmptyFontSize(), 48);
    QCOMPARE(item.getEmptyFontWeight(), 700);
    QCOMPARE(item.getEmptyFontItalic(), false);
    QCOMPARE(item.getEmptyFontUnderline(), false);
    QCOMPARE(item.getEmptyAlignment(), 1);
    const QTextCursor cursor(item.document());
    QVERIFY(qAbs(cursor.charFormat().fontPointSize() - 48.0 / screenFactor()) < 1e-9);
    QCOMPARE(cursor.blockFormat().intProperty(QTextFormat::BlockAlignment), 1);
    QCOMPARE(cursor.blockFormat().topMargin(), 0.0);
    QVERIFY(cursor.charFormat().hasProperty(QTextFormat::ForegroundBrush));
    QVERIFY(cursor.charFormat().hasProperty(QTextFormat::BackgroundBrush));
}

void tst_RichTextItem::emptinessFollowsTheText()
{
    RichTextItem item;
    item.setEmptyFontSize(20);
    QTextCursor cursor(item.document());
    cursor.insertText(u"a"_s);
    QVERIFY(!item.getDocumentIsEmpty());
    QVERIFY(qAbs(formatAt(item, 0).fontPointSize() - 20.0 / screenFactor()) < 1e-9);
    cursor.deletePreviousChar();
    QVERIFY(item.getDocumentIsEmpty());
    item.setItemHtml(u"<p>text</p>"_s);
    QVERIFY(!item.getDocumentIsEmpty());
    item.setItemHtml(QString());
    QVERIFY(item.getDocumentIsEmpty());
}

void tst_RichTextItem::changesAreToldOnce()
{
    RichTextItem item;
    const QSignalSpy changes(&item, &TextItem::textItemHasChanged);
    const QSignalSpy data(&item, &TextItem::itemDataChanged);
    QTextCursor(item.document()).insertText(u"a"_s);
    QCOMPARE(changes.count(), 1);
    QCOMPARE(data.count(), 1);
}

void tst_RichTextItem::fontOfTheWholeText()
{
    RichTextItem item;
    item.setItemText(u"abc"_s);
    item.setItemFontSize(30);
    item.setItemBold(true);
    item.setItemItalic(true);
    item.setItemUnderline(true);
    item.setItemFontFamily(u"Loma"_s);
    QCOMPARE(item.getItemFontSize(), 30);
    QVERIFY(item.getItemBold() && item.getItemItalic() && item.getItemUnderline());
    QCOMPARE(item.getItemFontFamily(), u"Loma"_s);
    QVERIFY(qAbs(formatAt(item, 1).fontPointSize() - 30.0 / screenFactor()) < 1e-9);
    QCOMPARE(item.getEmptyFontSize(), 30);
    QCOMPARE(item.getEmptyFontFamily(), u"Loma"_s);
    QVERIFY(item.getEmptyFontItalic() && item.getEmptyFontUnderline());
    item.setItemBold(false);
    QVERIFY(!item.getItemBold());
    QCOMPARE(item.getEmptyFontWeight(), 400);
}

void tst_RichTextItem::fontOfTheSelection()
{
    QGraphicsScene scene;
    RichTextItem item;
    scene.addItem(&item);
    item.setItemText(u"abcd"_s);
    item.setItemFontSize(30);
    item.startSelectedEdit(1, 3);
    item.setItemFontSize(60);
    item.setItemItalic(true);
    QCOMPARE(item.getItemFontSize(), 60);
    QVERIFY(item.getItemItalic());
    QVERIFY(!formatAt(item, 0).fontItalic());
    QVERIFY(formatAt(item, 1).fontItalic());
    QVERIFY(formatAt(item, 2).fontItalic());
    QVERIFY(!formatAt(item, 3).fontItalic());
    QCOMPARE(item.getEmptyFontSize(), 30);
    QVERIFY(!item.getEmptyFontItalic());
    scene.removeItem(&item);
}

void tst_RichTextItem::mixedSizesAreNone()
{
    QGraphicsScene scene;
    RichTextItem item;
    scene.addItem(&item);
    item.setItemText(u"abcd"_s);
    item.setItemFontSize(30);
    item.startSelectedEdit(0, 2);
    item.setItemFontSize(60);
    item.startSelectedEdit(1, 3);
    QCOMPARE(item.getItemFontSize(), -1);
    item.startSelectedEdit(2, 4);
    QCOMPARE(item.getItemFontSize(), 30);
    item.endEdit();
    QCOMPARE(item.getItemFontSize(), -1);
    scene.removeItem(&item);
}

void tst_RichTextItem::sizesBelowOneAreIgnored()
{
    RichTextItem item;
    item.setItemText(u"abc"_s);
    item.setItemFontSize(30);
    for (const int size : { 0, -1, -2147483647 }) {
        item.setItemFontSize(size);
        item.setEmptyFontSize(size);
    }
    QCOMPARE(item.getItemFontSize(), 30);
    QCOMPARE(item.getEmptyFontSize(), 30);
}

void tst_RichTextItem::alignmentOfTheWholeText()
{
    RichTextItem item;
    item.setItemText(u"a\nb"_s);
    item.setItemAlignment(Qt::AlignRight);
    QCOMPARE(item.getItemAlignment(), Qt::AlignRight);
    QCOMPARE(item.document()->firstBlock().blockFormat().alignment(), Qt::AlignRight | Qt::AlignAbsolute);
    QCOMPARE(item.document()->lastBlock().blockFormat().alignment(), Qt::AlignRight | Qt::AlignAbsolute);
    QCOMPARE(item.getEmptyAlignment(), int(Qt::AlignRight));
}

void tst_RichTextItem::alignmentOfTheSelection()
{
    QGraphicsScene scene;
    RichTextItem item;
    scene.addItem(&item);
    item.setItemText(u"a\nb"_s);
    item.startSelectedEdit(2, 3);
    item.setItemAlignment(Qt::AlignHCenter);
    QCOMPARE(item.document()->firstBlock().blockFormat().alignment(), Qt::AlignLeft);
    QCOMPARE(item.document()->lastBlock().blockFormat().alignment(), Qt::AlignHCenter);
    QCOMPARE(item.getEmptyAlignment(), int(Qt::AlignLeft));
    scene.removeItem(&item);
}

void tst_RichTextItem::emptySettersLeaveTheText()
{
    RichTextItem item;
    item.setItemText(u"abc"_s);
    item.setItemFontSize(30);
    item.setEmptyFontSize(12);
    item.setEmptyFontItalic(true);
    item.setEmptyAlignment(Qt::AlignRight);
    QCOMPARE(item.getEmptyFontSize(), 12);
    QCOMPARE(item.getItemFontSize(), 30);
    QVERIFY(!formatAt(item, 0).fontItalic());
    QCOMPARE(item.getItemAlignment(), Qt::AlignLeft);
}

void tst_RichTextItem::colourOfTheWholeText()
{
    RichTextItem item;
    item.setItemText(u"abc"_s);
    item.setItemTextColor(red);
    QCOMPARE(item.getItemTextColor(), red);
    QCOMPARE(item.defaultTextColor(), red);
    QCOMPARE(formatAt(item, 0).foreground().color(), red);
    QCOMPARE(formatAt(item, 2).foreground().color(), red);
}

void tst_RichTextItem::colourOfTheSelection()
{
    QGraphicsScene scene;
    RichTextItem item;
    scene.addItem(&item);
    item.setItemText(u"abc"_s);
    item.setItemTextColor(red);
    item.startSelectedEdit(1, 2);
    item.setItemTextColor(blue);
    QCOMPARE(formatAt(item, 0).foreground().color(), red);
    QCOMPARE(formatAt(item, 1).foreground().color(), blue);
    QCOMPARE(formatAt(item, 2).foreground().color(), red);
    item.setItemTextColorNoSelection(yellow);
    for (int i = 0; i < 3; ++i)
        QCOMPARE(formatAt(item, i).foreground().color(), yellow);
    scene.removeItem(&item);
}

void tst_RichTextItem::colourByName()
{
    RichTextItem item;
    item.setItemTextColorString(u"#0000ff"_s);
    QCOMPARE(item.getItemTextColor(), blue);
}

void tst_RichTextItem::sizeIsThatOfTheBox()
{
    RichTextItem item;
    item.setItemText(u"a long text in a narrow box"_s);
    item.setItemSize(QSizeF(120, 80));
    QCOMPARE(item.getItemSize(), QSizeF(120, 80));
    QCOMPARE(item.textWidth(), 120.0);
    QCOMPARE(item.getItemScaleX(), 1.0);
    QCOMPARE(item.getItemScaleY(), 1.0);
    item.setItemSize(QSizeF(240, 80));
    QCOMPARE(item.textWidth(), 240.0);
    QCOMPARE(item.getItemScaleX(), 1.0);
}

void tst_RichTextItem::sidesAreAtLeastOne_data()
{
    QTest::addColumn<QSizeF>("asked");
    QTest::addColumn<QSizeF>("size");

    QTest::newRow("one") << QSizeF(1, 1) << QSizeF(1, 1);
    QTest::newRow("half") << QSizeF(0.5, 50) << QSizeF(1, 50);
    QTest::newRow("nothing") << QSizeF(0, 0) << QSizeF(1, 1);
    QTest::newRow("negative") << QSizeF(50, -5) << QSizeF(50, 1);
}

void tst_RichTextItem::sidesAreAtLeastOne()
{
    QFETCH(QSizeF, asked);
    RichTextItem item;
    item.setItemSize(asked);
    QTEST(item.getItemSize(), "size");
}

void tst_RichTextItem::oddSizesLeaveFiniteBounds_data()
{
    addOddSizes();
}

void tst_RichTextItem::oddSizesLeaveFiniteBounds()
{
    QFETCH(double, width);
    QFETCH(double, height);
    RichTextItem item;
    item.setItemText(u"text"_s);
    item.setItemSize(QSizeF(width, height));
    item.setItemSize(QSizeF(100, 100));
    QCOMPARE(item.getItemSize(), QSizeF(100, 100));
    QVERIFY(isFinite(item.boundingRect()));
}

void tst_RichTextItem::textFitsWithToleranceAndFontSize()
{
    RichTextItem item;
    item.setItemText(u"a\nb\nc"_s);
    item.setItemSize(QSizeF(100, 50));
    const double height = item.document()->size().height();
    const double points = 48.0 / screenFactor();
    item.setItemSize(QSizeF(100, height - points + 0.01));
    QVERIFY(item.getTextFitsInBox());
    item.setItemSize(QSizeF(100, height - points - 0.01));
    QVERIFY(!item.getTextFitsInBox());
    RichTextItem::setTextFitsTolerance(4.5);
    QVERIFY(!item.getTextFitsInBox());
    item.updateTextFitsInBox();
    QVERIFY(item.getTextFitsInBox());
    item.setItemSize(QSizeF(100, height - points - 4.51));
    QVERIFY(!item.getTextFitsInBox());
}

void tst_RichTextItem::boxGrowsToItsText()
{
    RichTextItem item;
    item.setItemText(u"a\nb\nc"_s);
    item.setItemSize(QSizeF(100, 10));
    const double height = item.document()->size().height();
    QVERIFY(!item.testSetItemSize(QSizeF(100, height - 1)));
    QVERIFY(item.testSetItemSize(QSizeF(100, height)));
    QCOMPARE(item.getItemSize(), QSizeF(100, 10));
    QCOMPARE(item.textWidth(), 100.0);
    item.adjustBoxSizeToContent(10);
    QCOMPARE(item.getItemSize(), QSizeF(100, height));
    item.adjustBoxSizeToContent(height + 50);
    QCOMPARE(item.getItemSize(), QSizeF(100, height + 50));
}

void tst_RichTextItem::boundsHoldTextAndPen()
{
    OpenItem item;
    item.setItemText(u"a\nb\nc"_s);
    item.setItemSize(QSizeF(100, 10));
    item.setItemPenWidth(6);
    const double height = item.document()->size().height();
    QCOMPARE(item.getReferenceRectangle(), QRectF(0, 0, 100, 10));
    QCOMPARE(item.getReferenceRectangleEdit(), QRectF(0, 0, 100, height));
    QCOMPARE(item.boundingRect(), QRectF(-6, -6, 112, height + 12));
    QCOMPARE(item.getFramePads(), QSizeF(6, 6));
    item.setItemSize(QSizeF(100, 500));
    QCOMPARE(item.boundingRect(), QRectF(-6, -6, 112, 512));
}

void tst_RichTextItem::plainDataAreShown()
{
    RichTextItem item;
    item.setItemData(u"<b>x</b>"_s);
    QCOMPARE(item.toPlainText(), u"<b>x</b>"_s);
    item.setItemData(17);
    QCOMPARE(item.toPlainText(), u"17"_s);
    item.setItemData(QVariant());
    QVERIFY(item.getDocumentIsEmpty());
}

void tst_RichTextItem::equalDataChangeNothing()
{
    RichTextItem item;
    item.setItemHtml(u"<b>bold</b>"_s);
    const QString html = item.toHtml();
    QSignalSpy changes(item.document(), &QTextDocument::contentsChanged);
    item.setItemData(u"bold"_s);
    QCOMPARE(item.toHtml(), html);
    QCOMPARE(changes.size(), 0);
}

void tst_RichTextItem::dataKeepTheAlignment()
{
    RichTextItem item;
    item.setItemText(u"a"_s);
    item.setItemAlignment(Qt::AlignRight);
    item.setItemData(u"b\nc"_s);
    QCOMPARE(item.document()->firstBlock().blockFormat().alignment(), Qt::AlignRight | Qt::AlignAbsolute);
    QCOMPARE(item.document()->lastBlock().blockFormat().alignment(), Qt::AlignRight | Qt::AlignAbsolute);
    item.setItemData(marker + u"<p>d</p><p align=center>e</p>"_s);
    QCOMPARE(item.document()->firstBlock().blockFormat().alignment(), Qt::AlignRight | Qt::AlignAbsolute);
    QCOMPARE(item.document()->lastBlock().blockFormat().alignment(), Qt::AlignRight | Qt::AlignAbsolute);
}

void tst_RichTextItem::markedDataAreHtml()
{
    RichTextItem item;
    item.setItemData(marker + u"<b>b</b>"_s + marker + u"<i>i</i>"_s);
    QCOMPARE(item.toPlainText(), u"bi"_s);
    QVERIFY(formatAt(item, 0).font().bold());
    QVERIFY(formatAt(item, 1).fontItalic());
    item.setItemData(marker.toLower() + u"<i>x</i>"_s);
    QCOMPARE(item.toPlainText(), marker.toLower() + u"<i>x</i>"_s);
}

void tst_RichTextItem::markedDataKeepTheFontSize()
{
    RichTextItem item;
    item.setItemText(u"a"_s);
    item.setItemFontSize(30);
    item.setItemData(marker + u"<span style=\"font-size:99pt\">size</span>"_s);
    QCOMPARE(item.toPlainText(), u"size"_s);
    QCOMPARE(item.getItemFontSize(), 30);
}

void tst_RichTextItem::markedDataAreComparedWithTheLastMarked()
{
    RichTextItem first;
    RichTextItem second;
    first.setItemData(marker + u"<u>same</u>"_s);
    // Text equal to the last marked one is still set where it is not what is shown.
    second.setItemData(marker + u"<u>same</u>"_s);
    QCOMPARE(second.toPlainText(), u"same"_s);
    // Without tags it equals the plain text, and stays when it was the last marked text.
    second.setItemData(marker + u"same"_s);
    QVERIFY(!formatAt(second, 0).fontUnderline());
    first.setItemData(marker + u"same"_s);
    QVERIFY(formatAt(first, 0).fontUnderline());
}

void tst_RichTextItem::frameIsDrawnAroundTheBox()
{
    OpenItem item;
    item.setItemSize(QSizeF(20, 10));
    item.setItemPenWidth(2);
    item.setItemPenColor(red);
    item.setItemPenJoinStyle(Qt::MiterJoin);
    QImage image(40, 30, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::white);
    QPainter painter(&image);
    painter.translate(5, 5);
    item.drawFrame(&painter);
    painter.end();
    // The rectangle (-1, -1, 22, 12) with a pen of 2: from -2 to 22 and from -2 to 12.
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            const bool inside = x >= 5 && x < 25 && y >= 5 && y < 15;
            const bool within = x >= 3 && x < 27 && y >= 3 && y < 17;
            QCOMPARE(image.pixel(x, y), within && !inside ? redPixel : whitePixel);
        }
    }
}

void tst_RichTextItem::scaledHtmlIsInPointsOfThisScreen()
{
    RichTextItem item;
    item.setScaledHtml(u"<p><span style=\"font-size:10pt;\">x</span></p>"_s, 3.0 * screenFactor());
    QVERIFY(qAbs(formatAt(item, 0).fontPointSize() - 30.0) < 0.01);
    for (const double factor : { 0.0, -1.0, qQNaN(), qInf() }) {
        item.setScaledHtml(u"<p><span style=\"font-size:10pt;\">x</span></p>"_s, factor);
        QVERIFY(qAbs(formatAt(item, 0).fontPointSize() - 10.0) < 0.01);
    }
}

void tst_RichTextItem::htmlWithTooManySizesIsNotRewritten()
{
    RichTextItem item;
    const QString span = u"<span style=\"font-size:10pt;\">x</span>"_s;
    item.setScaledHtml(span.repeated(2000), 2.0 * screenFactor());
    QVERIFY(qAbs(formatAt(item, 0).fontPointSize() - 20.0) < 0.01);
    item.setScaledHtml(span.repeated(2001), 2.0 * screenFactor());
    QVERIFY(qAbs(formatAt(item, 0).fontPointSize() - 10.0) < 0.01);

    // Fewer sizes in a longer text, which is searched for each of them.
    const QString longText = span.repeated(150).leftJustified(2'000'000, u'x');
    item.setScaledHtml(longText, 2.0 * screenFactor());
    QVERIFY(qAbs(formatAt(item, 0).fontPointSize() - 20.0) < 0.01);
    item.setScaledHtml(longText + u'x', 2.0 * screenFactor());
    QVERIFY(qAbs(formatAt(item, 0).fontPointSize() - 10.0) < 0.01);
}

void tst_RichTextItem::cursorIsCopied()
{
    RichTextItem item;
    item.setItemText(u"abcdef"_s);
    QTextCursor cursor(item.document());
    cursor.setPosition(5);
    cursor.setPosition(2, QTextCursor::KeepAnchor);
    item.setTextCursor(cursor);
    RichTextItem other;
    other.setItemText(u"abc"_s);
    other.copyCursorProperties(item);
    QCOMPARE(other.textCursor().anchor(), 3);
    QCOMPARE(other.textCursor().position(), 2);
}

void tst_RichTextItem::cursorMovesAreTold()
{
    RichTextItem item;
    QSignalSpy moved(&item, &RichTextItem::textItemCursorHasChanged);
    item.updateCursorPositionChanged(item.textCursor());
    QCOMPARE(moved.size(), 1);
}

QTEST_MAIN(tst_RichTextItem)
#include "tst_richtextitem.moc"
