// SPDX-License-Identifier: BSD-3-Clause
#include "tests/support/colours.h"
#include "tests/support/richtextwindow.h"

#include <QFont>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QTest>
#include <QTextBlock>
#include <QTextList>

#include <memory>

using namespace Qt::StringLiterals;

using Window = RichTextWindow;

/// Rich texts edited by a user.
class tst_RichTextEditing : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { QFont::insertSubstitution(u"_Fen Loma"_s, u"Loma"_s); }
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    void doubleClickPlacesTheCursor_data();
    void doubleClickPlacesTheCursor();
    void doubleClickOnAnEmptyBoxEdits();
    void doubleClickWhileEditingSelectsAWord();
    void lockedBoxRefusesTheDoubleClick();
    void idleBoxIgnoresKeys();
    void typingIsTold();
    void emptyBoxIsTypedInItsFormats();
    void enterKeepsTheFormatsOfAnEmptyBox();
    void enterKeepsTheFormatsOfTheText();
    void enterInAListContinuesIt();
    void emptiedBoxTakesItsFormatsBack();
    void keysSelect();
    void dragSelects();
    void fontsOfTheSelectionWhileEditing();
    void fontsOfTheWholeTextAfterEditing();
    void typingGoesOnInTheFontOfTheSelection();
    void boundsFollowTheText();
    void boundsAreRepainted();
    void endOfEditingRestoresTheItem_data();
    void endOfEditingRestoresTheItem();
    void cursorMovesAreTold();
    void cursorIsCopiedFromAnEditedBox();
};

void tst_RichTextEditing::doubleClickPlacesTheCursor_data()
{
    QTest::addColumn<int>("position");
    for (const int position : { 0, 1, 3, 6 })
        QTest::addRow("%d", position) << position;
}

void tst_RichTextEditing::doubleClickPlacesTheCursor()
{
    QFETCH(const int, position);
    Window window;
    QVERIFY(window.isReady());
    window.item->setItemText(u"ABCDEF"_s);
    const QSignalSpy started(window.item, &TextItem::textItemIsEditing);
    window.doubleClick(window.placeOf(position));
    QCOMPARE(started.count(), 1);
    QCOMPARE(started.first().first().value<TextItem *>(), window.item);
    QCOMPARE(window.item->textInteractionFlags(), Qt::TextEditorInteraction);
    QVERIFY(window.item->hasFocus());
    QVERIFY(window.item->isSelected());
    QCOMPARE(window.position(), position);
    QVERIFY(!window.item->textCursor().hasSelection());
    window.write(u"x"_s);
    QCOMPARE(window.text(), QString(u"ABCDEF"_s).insert(position, u'x'));
}

void tst_RichTextEditing::doubleClickOnAnEmptyBoxEdits()
{
    Window window;
    QVERIFY(window.isReady());
    window.doubleClick(QPointF(200, 150));
    QVERIFY(window.item->isInEditing());
    window.write(u"x"_s);
    QCOMPARE(window.text(), u"x"_s);
}

void tst_RichTextEditing::doubleClickWhileEditingSelectsAWord()
{
    Window window;
    QVERIFY(window.isReady());
    window.start(u"two words"_s);
    const QSignalSpy started(window.item, &TextItem::textItemIsEditing);
    window.doubleClick(window.placeOf(6));
    QCOMPARE(window.selected(), u"words"_s);
    QCOMPARE(started.count(), 0);
}

void tst_RichTextEditing::lockedBoxRefusesTheDoubleClick()
{
    Window window;
    QVERIFY(window.isReady());
    window.item->setItemText(u"text"_s);
    window.item->setItemFlags(MobraTypes::Flags(0x20), true);
    const QSignalSpy started(window.item, &TextItem::textItemIsEditing);
    window.doubleClick(window.placeOf(1));
    window.write(u"x"_s);
    QCOMPARE(started.count(), 0);
    QCOMPARE(window.text(), u"text"_s);
}

void tst_RichTextEditing::idleBoxIgnoresKeys()
{
    Window window;
    QVERIFY(window.isReady());
    window.item->setItemText(u"text"_s);
    window.item->setFocus();
    window.write(u"x"_s);
    window.paste();
    window.press(Qt::Key_Delete);
    window.press(Qt::Key_Return);
    QCOMPARE(window.text(), u"text"_s);
}

void tst_RichTextEditing::typingIsTold()
{
    Window window;
    QVERIFY(window.isReady());
    window.item->setItemDatasourceID(7);
    window.item->setItemDatasourceField(u"Name"_s);
    window.start(u"bc"_s);
    const QSignalSpy changes(window.item, &TextItem::textItemHasChanged);
    const QSignalSpy data(window.item, &TextItem::itemDataChanged);
    window.write(u"a"_s);
    QCOMPARE(changes.count(), 1);
    QCOMPARE(data.count(), 1);
    QCOMPARE(data.last(), QVariantList({ QVariant(u"abc"_s), 7, u"Name"_s }));
    window.press(Qt::Key_Backspace);
    QCOMPARE(data.last().first().toString(), u"bc"_s);
}

void tst_RichTextEditing::emptyBoxIsTypedInItsFormats()
{
    Window window;
    QVERIFY(window.isReady());
    window.item->setItemFontSize(30);
    window.item->setItemFontFamily(u"Loma"_s);
    window.item->setItemItalic(true);
    window.item->setItemTextColor(Colours::red);
    window.item->setItemAlignment(Qt::AlignRight);
    window.doubleClick(QPointF(10, 10));
    window.write(u"ab"_s);
    for (int i = 0; i < 2; ++i) {
        QVERIFY(isAbout(window.pixelSize(i), 30));
        QCOMPARE(window.format(i).font().family(), u"Loma"_s);
        QVERIFY(window.format(i).font().bold());
        QVERIFY(window.format(i).fontItalic());
        QCOMPARE(window.format(i).foreground().color(), Colours::red);
    }
    QCOMPARE(
        window.item->document()->firstBlock().blockFormat().alignment(), Qt::AlignRight | Qt::AlignAbsolute);
    QVERIFY(!window.item->getDocumentIsEmpty());
}

void tst_RichTextEditing::enterKeepsTheFormatsOfAnEmptyBox()
{
    Window window;
    QVERIFY(window.isReady());
    window.item->setItemItalic(true);
    window.item->setItemAlignment(Qt::AlignHCenter);
    window.item->startEdit(0);
    window.press(Qt::Key_Return);
    window.press(Qt::Key_Enter);
    window.write(u"a"_s);
    QCOMPARE(window.text(), u"\n\na"_s);
    QVERIFY(isAbout(window.pixelSize(2), 20));
    QVERIFY(window.format(2).fontItalic());
    QVERIFY(window.format(2).font().bold());
    for (QTextBlock block = window.item->document()->begin(); block.isValid(); block = block.next())
        QCOMPARE(block.blockFormat().alignment(), Qt::AlignHCenter);
    // Also where one goes back to the first line.
    window.press(Qt::Key_Home, Qt::ControlModifier);
    window.write(u"b"_s);
    QVERIFY(isAbout(window.pixelSize(0), 20));
    QVERIFY(window.format(0).fontItalic());
}

void tst_RichTextEditing::enterKeepsTheFormatsOfTheText()
{
    Window window;
    QVERIFY(window.isReady());
    window.item->setItemAlignment(Qt::AlignRight);
    window.start(u"ab"_s);
    window.item->setItemAlignment(Qt::AlignHCenter);
    window.press(Qt::Key_Right);
    window.press(Qt::Key_Right, Qt::ShiftModifier);
    window.item->setItemUnderline(true);
    window.press(Qt::Key_End);
    // The second one is on a line without text.
    window.press(Qt::Key_Return, Qt::NoModifier, 3);
    window.write(u"c"_s);
    QCOMPARE(window.text(), u"ab\n\n\nc"_s);
    QVERIFY(window.format(5).fontUnderline());
    QVERIFY(!window.format(0).fontUnderline());
    for (QTextBlock block = window.item->document()->begin(); block.isValid(); block = block.next())
        QCOMPARE(block.blockFormat().alignment(), Qt::AlignHCenter);
    window.undo();
    for (const QString &left : { u"ab\n\n"_s, u"ab\n"_s, u"ab"_s }) {
        window.undo();
        QCOMPARE(window.text(), left);
    }
}

void tst_RichTextEditing::enterInAListContinuesIt()
{
    Window window;
    QVERIFY(window.isReady());
    window.item->setItemHtml(u"<ul><li>one</li></ul>"_s);
    window.item->startEdit(3);
    window.press(Qt::Key_Return);
    window.write(u"two"_s);
    QVERIFY(window.item->document()->lastBlock().textList());
    window.press(Qt::Key_Return, Qt::NoModifier, 2);
    window.write(u"no more"_s);
    QCOMPARE(window.text(), u"one\ntwo\nno more"_s);
    QVERIFY(!window.item->document()->lastBlock().textList());
}

void tst_RichTextEditing::emptiedBoxTakesItsFormatsBack()
{
    Window window;
    QVERIFY(window.isReady());
    window.start(u"text"_s);
    window.press(Qt::Key_A, Qt::ControlModifier);
    window.item->setItemFontSize(60);
    window.item->setItemUnderline(true);
    window.item->setItemTextColor(Colours::red);
    window.press(Qt::Key_Delete);
    QVERIFY(window.item->getDocumentIsEmpty());
    // Both are a single step.
    window.undo();
    QCOMPARE(window.text(), u"text"_s);
    QVERIFY(isAbout(window.pixelSize(0), 60));
    window.redo();
    QVERIFY(window.item->getDocumentIsEmpty());
    window.write(u"a"_s);
    QVERIFY(!window.item->getDocumentIsEmpty());
    QVERIFY(isAbout(window.pixelSize(0), 20));
    QVERIFY(!window.format(0).fontUnderline());
    QCOMPARE(window.format(0).foreground().color(), Colours::black);
}

void tst_RichTextEditing::keysSelect()
{
    Window window;
    QVERIFY(window.isReady());
    window.start(u"two words"_s);
    window.press(Qt::Key_Right, Qt::ShiftModifier, 3);
    QCOMPARE(window.selected(), u"two"_s);
    window.press(Qt::Key_Left, Qt::ShiftModifier);
    QCOMPARE(window.selected(), u"tw"_s);
    window.press(Qt::Key_End, Qt::ShiftModifier);
    QCOMPARE(window.selected(), u"two words"_s);
    window.press(Qt::Key_Home);
    QVERIFY(!window.item->textCursor().hasSelection());
    window.press(Qt::Key_A, Qt::ControlModifier);
    QCOMPARE(window.selected(), u"two words"_s);
    window.write(u"x"_s);
    QCOMPARE(window.text(), u"x"_s);
}

void tst_RichTextEditing::dragSelects()
{
    Window window;
    QVERIFY(window.isReady());
    window.start(u"ABCDEF"_s);
    const QPointF place = window.item->pos();
    window.drag(window.placeOf(1), window.placeOf(4));
    QCOMPARE(window.selected(), u"BCD"_s);
    window.click(window.placeOf(6), Qt::ShiftModifier);
    QCOMPARE(window.selected(), u"BCDEF"_s);
    window.click(window.placeOf(0));
    window.drag(window.placeOf(5), window.placeOf(2));
    QCOMPARE(window.selected(), u"CDE"_s);
    QCOMPARE(window.position(), 2);
    window.write(u"x"_s);
    QCOMPARE(window.text(), u"ABxF"_s);
    QCOMPARE(window.item->pos(), place);
}

void tst_RichTextEditing::fontsOfTheSelectionWhileEditing()
{
    Window window;
    QVERIFY(window.isReady());
    window.start(u"abcd"_s);
    window.drag(window.placeOf(1), window.placeOf(3));
    window.item->setItemFontSize(40);
    window.item->setItemFontFamily(u"Loma"_s);
    window.item->setItemBold(false);
    window.item->setItemItalic(true);
    window.item->setItemUnderline(true);
    QCOMPARE(window.item->getItemFontSize(), 40);
    QCOMPARE(window.item->getItemFontFamily(), u"Loma"_s);
    QVERIFY(!window.item->getItemBold());
    for (int i = 0; i < 4; ++i) {
        const bool isSelected = i == 1 || i == 2;
        const QTextCharFormat format = window.format(i);
        QVERIFY(isAbout(window.pixelSize(i), isSelected ? 40 : 20));
        QCOMPARE(format.font().family(), isSelected ? u"Loma"_s : u"_Fen Loma"_s);
        QCOMPARE(format.font().bold(), !isSelected);
        QCOMPARE(format.fontItalic(), isSelected);
        QCOMPARE(format.fontUnderline(), isSelected);
    }
    QCOMPARE(window.selected(), u"bc"_s);
    QCOMPARE(window.item->getEmptyFontSize(), 20);
    QCOMPARE(window.item->getEmptyFontFamily(), u"_Fen Loma"_s);
}

void tst_RichTextEditing::fontsOfTheWholeTextAfterEditing()
{
    Window window;
    QVERIFY(window.isReady());
    window.start(u"abcd"_s);
    window.press(Qt::Key_A, Qt::ControlModifier);
    window.press(Qt::Key_Escape);
    window.item->setItemFontSize(40);
    window.item->setItemItalic(true);
    for (int i = 0; i < 4; ++i) {
        QVERIFY(isAbout(window.pixelSize(i), 40));
        QVERIFY(window.format(i).fontItalic());
    }
    QCOMPARE(window.item->getEmptyFontSize(), 40);
    window.item->startEdit(4);
    window.write(u"e"_s);
    QVERIFY(isAbout(window.pixelSize(4), 40));
    QVERIFY(window.format(4).fontItalic());
}

void tst_RichTextEditing::typingGoesOnInTheFontOfTheSelection()
{
    Window window;
    QVERIFY(window.isReady());
    window.start(u"abcd"_s);
    window.press(Qt::Key_End, Qt::ShiftModifier);
    window.item->setItemFontSize(40);
    window.press(Qt::Key_End);
    window.write(u"e"_s);
    QVERIFY(isAbout(window.pixelSize(4), 40));
}

void tst_RichTextEditing::boundsFollowTheText()
{
    Window window;
    QVERIFY(window.isReady());
    window.item->setItemSize(QSizeF(400, 40));
    window.item->setItemPenWidth(4);
    QCOMPARE(window.item->boundingRect(), QRectF(-4, -4, 408, 48));
    window.start(u"a"_s);
    QCOMPARE(window.item->boundingRect(), QRectF(-10, -4, 420, 48));
    window.press(Qt::Key_End);
    window.press(Qt::Key_Return, Qt::NoModifier, 3);
    const double height = window.item->document()->size().height();
    QVERIFY(height > 80);
    QCOMPARE(window.item->getReferenceRectangle(), QRectF(0, 0, 400, 40));
    QCOMPARE(window.item->getReferenceRectangleEdit(), QRectF(0, 0, 400, height));
    QCOMPARE(window.item->boundingRect(), QRectF(-10, -4, 420, height + 8));
    QVERIFY(!window.item->getTextFitsInBox());
    window.press(Qt::Key_Escape);
    QCOMPARE(window.item->boundingRect(), QRectF(-4, -4, 408, height + 8));
    window.item->startEdit(4);
    window.press(Qt::Key_Backspace, Qt::NoModifier, 3);
    QCOMPARE(window.item->boundingRect(), QRectF(-10, -4, 420, 48));
    QVERIFY(window.item->getTextFitsInBox());
}

void tst_RichTextEditing::boundsAreRepainted()
{
    Window window;
    QVERIFY(window.isReady());
    window.item->setItemSize(QSizeF(200, 40));
    window.item->setItemPenWidth(2);
    const auto changes = [&window](auto &&change) {
        const QRectF before = window.item->sceneBoundingRect();
        window.startWatching();
        change();
        return window.hasRepainted(before) && window.hasRepainted(window.item->sceneBoundingRect());
    };
    QVERIFY(changes([&] { window.item->startEdit(0); }));
    QVERIFY(changes([&] { window.press(Qt::Key_Return, Qt::NoModifier, 5); }));
    QVERIFY(changes([&] { window.press(Qt::Key_Backspace, Qt::NoModifier, 2); }));
    QVERIFY(changes([&] { window.undo(); }));
    QVERIFY(changes([&] { window.item->setItemFontSize(30); }));
    QVERIFY(changes([&] { window.item->setItemFontSize(10); }));
    QVERIFY(changes([&] { window.item->setItemData(u"data"_s); }));
    QVERIFY(changes([&] { window.item->setItemSize(QSizeF(100, 20)); }));
    QVERIFY(changes([&] { window.item->setItemPenWidth(8); }));
    QVERIFY(changes([&] { window.item->setItemPenWidth(1); }));
    QVERIFY(changes([&] { window.press(Qt::Key_Escape); }));
}

void tst_RichTextEditing::endOfEditingRestoresTheItem_data()
{
    QTest::addColumn<bool>("byKey");
    QTest::newRow("Escape") << true;
    QTest::newRow("call") << false;
}

void tst_RichTextEditing::endOfEditingRestoresTheItem()
{
    QFETCH(const bool, byKey);
    Window window;
    QVERIFY(window.isReady());
    window.item->setItemText(u"text"_s);
    for (int i = 0; i < 2; ++i) {
        window.doubleClick(window.placeOf(2));
        QVERIFY(window.item->isInEditing());
        window.press(Qt::Key_A, Qt::ControlModifier);
        const QSignalSpy changes(window.item, &TextItem::textItemHasChanged);
        const QSignalSpy started(window.item, &TextItem::textItemIsEditing);
        if (byKey)
            window.press(Qt::Key_Escape);
        else
            window.item->endEdit();
        QCOMPARE(window.item->textInteractionFlags(), Qt::NoTextInteraction);
        QCOMPARE(int(window.item->flags()), 0x107);
        QVERIFY(!window.item->hasFocus());
        QVERIFY(!window.item->textCursor().hasSelection());
        QCOMPARE(changes.count() + started.count(), 0);
        window.write(u"x"_s);
        QCOMPARE(window.text(), u"text"_s);
    }
}

void tst_RichTextEditing::cursorMovesAreTold()
{
    Window window;
    QVERIFY(window.isReady());
    window.start(u"abcdef"_s);
    const QSignalSpy moves(window.item, &RichTextItem::textItemCursorHasChanged);
    window.press(Qt::Key_Right);
    QCOMPARE(moves.count(), 1);
    window.write(u"x"_s);
    QCOMPARE(moves.count(), 2);
    window.press(Qt::Key_Right, Qt::ShiftModifier);
    QCOMPARE(moves.count(), 3);
    window.press(Qt::Key_Home);
    QCOMPARE(moves.count(), 4);
    window.press(Qt::Key_Left);
    QCOMPARE(moves.count(), 4);
    window.click(window.placeOf(4));
    QCOMPARE(moves.count(), 5);
    window.press(Qt::Key_A, Qt::ControlModifier);
    QCOMPARE(moves.count(), 6);
}

void tst_RichTextEditing::cursorIsCopiedFromAnEditedBox()
{
    Window window;
    QVERIFY(window.isReady());
    window.start(u"abcdef"_s);
    window.drag(window.placeOf(5), window.placeOf(2));
    RichTextItem other;
    other.setItemText(u"uvwxyz"_s);
    other.copyCursorProperties(*window.item);
    QCOMPARE(other.textCursor().anchor(), 5);
    QCOMPARE(other.textCursor().position(), 2);
    QCOMPARE(other.textCursor().selectedText(), u"wxy"_s);
    QCOMPARE(other.toPlainText(), u"uvwxyz"_s);
    const std::unique_ptr<Item> copy(window.item->createItemCopy());
    const auto *text = dynamic_cast<RichTextItem *>(copy.get());
    QVERIFY(text);
    QCOMPARE(text->textCursor().selectedText(), u"cde"_s);
    QVERIFY(!text->isInEditing());
}

QTEST_MAIN(tst_RichTextEditing)
#include "tst_richtextediting.moc"
