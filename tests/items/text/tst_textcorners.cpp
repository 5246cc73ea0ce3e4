// SPDX-License-Identifier: BSD-3-Clause
#include "tests/support/colours.h"
#include "tests/support/itemrecords.h"
#include "tests/support/labeltexts.h"
#include "tests/support/nearness.h"
#include "tests/support/texts.h"

#include <QGraphicsScene>
#include <QGraphicsView>
#include <QRegularExpression>
#include <QTest>
#include <QTextBlock>
#include <QTextCursor>

using namespace Qt::StringLiterals;

namespace {

const QString longText = u"A much longer text"_s;

QPointF centreOf(const SimpleTextItem &label)
{
    return label.mapToScene(label.QGraphicsTextItem::boundingRect().center());
}

/// The format of a letter typed into the box.
QTextCharFormat typedFormat(RichTextItem &box)
{
    QGraphicsScene scene;
    scene.addItem(&box);
    QGraphicsView view(&scene);
    view.show();
    [&view] { QVERIFY(QTest::qWaitForWindowActive(&view)); }();
    box.startEdit(0);
    QTest::keyClicks(view.viewport(), u"Z"_s);
    QTextCursor cursor(box.document());
    cursor.setPosition(1);
    scene.removeItem(&box);
    return cursor.charFormat();
}

std::unique_ptr<RichTextItem> loadedFrom(RichTextItem &box)
{
    auto loaded = std::make_unique<RichTextItem>();
    ItemRecords::load(*loaded, ItemRecords::saved(box));
    return loaded;
}

} // namespace

/// Texts where several things meet: outlines, limits, pins, nothing to show.
class tst_TextCorners : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { LabelTexts::useKnownFont(); }
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    void clearedDocumentTakesTextAgain_data();
    void clearedDocumentTakesTextAgain();
    void emptiedBoxTakesTextAgain_data();
    void emptiedBoxTakesTextAgain();
    void pinnedOutlinedLabelKeepsItsCentre();
    void equalTextKeepsTheSizeOfAnOutlinedLabel();
    void labelWithoutMarginOutlivesAnEmptyText();
    void outlineFollowsTheSizeOfTheText();
    void frameHasItsWidthAgainAfterAFontSize();
    void selectableTextCanBeEdited_data() { Texts::addRows(); }
    void selectableTextCanBeEdited();
    void rasterIsFilledToItsEdges_data() { Texts::addRows(); }
    void rasterIsFilledToItsEdges();
    void colourOfAnEmptyBoxOutlivesTheRecord();
    void colourOutlivesTheText();
    void emptyBoxHasTheHeightOfItsFont();
    void fontOfABoxOutlivesTheRecord();
    void fontOfTheWholeTextIsTold();
    void copyTellsTheSameFont();
    void alignmentOutlivesTheRecord_data();
    void alignmentOutlivesTheRecord();
    void rightIsTheRightSide();
};

void tst_TextCorners::clearedDocumentTakesTextAgain_data()
{
    QTest::addColumn<bool>("rich");
    QTest::addColumn<bool>("editing");
    QTest::newRow("label") << false << false;
    QTest::newRow("label, edited") << false << true;
    QTest::newRow("box") << true << false;
    QTest::newRow("box, edited") << true << true;
}

/// By Qt's operations instead of the item's. Wants to be run under a memory checker.
void tst_TextCorners::clearedDocumentTakesTextAgain()
{
    QFETCH(const bool, rich);
    QFETCH(const bool, editing);
    const std::unique_ptr<TextItem> item = Texts::made(rich, u"text"_s);
    if (auto *label = dynamic_cast<SimpleTextItem *>(item.get()))
        label->setTextVertical(true);
    if (editing)
        item->startEdit(2);
    item->document()->clear();
    QVERIFY(item->getDocumentIsEmpty());
    item->setPlainText(u"more"_s);
    item->setHtml(u"<b>more</b>"_s);
    QVERIFY(!item->getDocumentIsEmpty());
    item->setPlainText(QString());
    QVERIFY(item->getDocumentIsEmpty());
    QTextCursor(item->document()).insertText(u"a"_s);
    QCOMPARE(item->getItemText(), u"a"_s);
    QVERIFY(!item->getDocumentIsEmpty());
}

void tst_TextCorners::emptiedBoxTakesTextAgain_data()
{
    QTest::addColumn<bool>("html");
    QTest::newRow("text") << false;
    QTest::newRow("HTML") << true;
}

/// Wants to be run under a memory checker.
void tst_TextCorners::emptiedBoxTakesTextAgain()
{
    QFETCH(const bool, html);
    RichTextItem box;
    const auto set = [&](const QString &text) { html ? box.setItemHtml(text) : box.setItemText(text); };
    for (int i = 0; i < 100; ++i) {
        set(u"text %1"_s.arg(i));
        QCOMPARE(box.toPlainText(), u"text %1"_s.arg(i));
        set(QString());
        QVERIFY(box.getDocumentIsEmpty());
    }
}

void tst_TextCorners::pinnedOutlinedLabelKeepsItsCentre()
{
    SimpleTextItem label;
    label.setItemPinToCenter(true);
    label.setItemPenWidth(4);
    QVERIFY(label.setItemSize(QSizeF(400, 80)));
    const QPointF centre = centreOf(label);
    label.setItemText(u"I"_s);
    QVERIFY(areNear(centreOf(label), centre));
}

void tst_TextCorners::equalTextKeepsTheSizeOfAnOutlinedLabel()
{
    for (const int limiting : { 0, 1, 2, 3 }) {
        SimpleTextItem label;
        label.setItemPenWidth(4);
        QVERIFY(label.setItemSize(QSizeF(400, 80)));
        label.setItemSizeLimiting(static_cast<signed char>(limiting));
        const QPointF scales(label.getItemScaleX(), label.getItemScaleY());
        label.setItemText(label.getItemText());
        QVERIFY(isNear(label.getItemWidth(), 400) && isNear(label.getItemHeight(), 80));
        QVERIFY(areNear(QPointF(label.getItemScaleX(), label.getItemScaleY()), scales));
    }
}

void tst_TextCorners::labelWithoutMarginOutlivesAnEmptyText()
{
    SimpleTextItem label;
    label.setItemDocumentMargin(0);
    label.setItemSizeFixedWidth(true);
    const double width = label.getItemWidth();
    label.setItemData(QString());
    QVERIFY(isNear(label.getItemWidth(), width));
    label.setItemData(u"TEXT"_s);
    QVERIFY(isNear(label.getItemWidth(), width));
    QVERIFY(isNear(label.getItemScaleX(), 1));
}

void tst_TextCorners::outlineFollowsTheSizeOfTheText()
{
    SimpleTextItem label;
    label.setItemPenWidth(20);
    QCOMPARE(label.getItemPen().widthF(), 20.0);
    label.setItemText(QString()); // 8 wide: half of it and one more
    QCOMPARE(label.getItemPen().widthF(), 5.0);
    label.setItemText(longText);
    QCOMPARE(label.getItemPen().widthF(), 20.0);
    SimpleTextItem loaded;
    QCOMPARE(ItemRecords::load(loaded, ItemRecords::saved(label)), QDataStream::Ok);
    QCOMPARE(loaded.boundingRect(), label.boundingRect());
}

void tst_TextCorners::frameHasItsWidthAgainAfterAFontSize()
{
    SimpleTextItem label;
    label.setItemPenWidth(4);
    QVERIFY(label.setItemSize(label.getItemSize() * 2.0));
    label.setItemFontSize(48);
    QCOMPARE(label.getFramePads(), QSizeF(4, 4));
}

void tst_TextCorners::selectableTextCanBeEdited()
{
    QFETCH(const bool, rich);
    const std::unique_ptr<TextItem> item = Texts::made(rich);
    item->setTextInteractionFlags(Qt::TextSelectableByMouse);
    item->startEdit(0);
    QCOMPARE(item->textInteractionFlags(), Qt::TextEditorInteraction);
}

void tst_TextCorners::rasterIsFilledToItsEdges()
{
    QFETCH(const bool, rich);
    const std::unique_ptr<TextItem> item = Texts::made(rich, QString());
    item->setItemFillColor(Colours::black);
    item->preparePrintImage();
    const QImage image = item->getPreprintedImage();
    QCOMPARE(image.pixel(0, 0), Colours::blackPixel);
    QCOMPARE(image.pixel(image.width() - 1, 0), Colours::blackPixel);
    QCOMPARE(image.pixel(0, image.height() - 1), Colours::blackPixel);
}

void tst_TextCorners::colourOfAnEmptyBoxOutlivesTheRecord()
{
    RichTextItem box;
    box.setItemTextColor(Colours::red);
    const auto loaded = loadedFrom(box);
    QCOMPARE(loaded->getItemTextColor(), Colours::red);
    QCOMPARE(typedFormat(*loaded).foreground().color(), Colours::red);
}

void tst_TextCorners::colourOutlivesTheText()
{
    RichTextItem box;
    box.setItemText(u"a"_s);
    box.setItemTextColor(Colours::red);
    box.setItemText(QString());
    QCOMPARE(box.getItemTextColor(), Colours::red);
    QCOMPARE(typedFormat(box).foreground().color(), Colours::red);
}

void tst_TextCorners::emptyBoxHasTheHeightOfItsFont()
{
    RichTextItem::setTextFitsTolerance(0.0);
    RichTextItem box;
    box.setItemSize(QSizeF(100, 60));
    box.setEmptyFontSize(90);
    box.setEmptyFontSize(10);
    const auto loaded = loadedFrom(box);
    QVERIFY(loaded->getTextFitsInBox());
    QVERIFY(box.getTextFitsInBox());
    QCOMPARE(box.boundingRect(), loaded->boundingRect());
}

void tst_TextCorners::fontOfABoxOutlivesTheRecord()
{
    RichTextItem box;
    box.setItemText(u"text"_s);
    box.setItemFontFamily(u"DejaVu Serif"_s);
    box.setItemFontSize(31);
    box.setItemBold(false);
    const auto loaded = loadedFrom(box);
    QCOMPARE(ItemRecords::saved(*loaded), ItemRecords::saved(box));
}

void tst_TextCorners::fontOfTheWholeTextIsTold()
{
    RichTextItem box;
    box.setItemHtml(u"<span style=\"font-family:Loma; font-weight:400; font-style:italic\">x</span>"_s);
    QCOMPARE(box.getItemFontFamily(), u"Loma"_s);
    QVERIFY(!box.getItemBold());
    QVERIFY(box.getItemItalic());
}

void tst_TextCorners::copyTellsTheSameFont()
{
    RichTextItem box;
    box.setItemText(u"abc"_s);
    box.setItemFontFamily(u"Loma"_s);
    box.setItemItalic(true);
    const std::unique_ptr<Item> copied(box.createItemCopy());
    const auto &copy = dynamic_cast<RichTextItem &>(*copied);
    QCOMPARE(copy.getItemFontFamily(), u"Loma"_s);
    QVERIFY(copy.getItemItalic());
}

void tst_TextCorners::alignmentOutlivesTheRecord_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("alignment");
    for (const int alignment : { Qt::AlignLeft, Qt::AlignRight, Qt::AlignHCenter, Qt::AlignJustify }) {
        QTest::addRow("latin, %d", alignment) << u"abc"_s << alignment;
        QTest::addRow("hebrew, %d", alignment) << u"שלום"_s << alignment;
    }
}

void tst_TextCorners::alignmentOutlivesTheRecord()
{
    QFETCH(const QString, text);
    QFETCH(const int, alignment);
    RichTextItem box;
    box.setItemSize(QSizeF(300, 100));
    box.setItemText(text);
    box.setItemAlignment(Qt::Alignment::fromInt(alignment));
    QCOMPARE(box.getItemAlignment().toInt(), alignment);
    const auto loaded = loadedFrom(box);
    const auto lineOf = [](const RichTextItem &item) {
        return item.document()->firstBlock().layout()->lineAt(0).naturalTextRect();
    };
    QCOMPARE(lineOf(*loaded), lineOf(box));
    QCOMPARE(loaded->getItemAlignment().toInt(), alignment);
}

void tst_TextCorners::rightIsTheRightSide()
{
    RichTextItem box;
    box.setItemSize(QSizeF(300, 100));
    box.setItemText(u"שלום"_s);
    box.setItemAlignment(Qt::AlignRight);
    const QTextLine line = box.document()->firstBlock().layout()->lineAt(0);
    QVERIFY(line.naturalTextRect().left() > 100.0);
}

QTEST_MAIN(tst_TextCorners)
#include "tst_textcorners.moc"
