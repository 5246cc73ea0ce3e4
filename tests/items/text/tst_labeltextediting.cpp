// SPDX-License-Identifier: BSD-3-Clause
#include "items/text/simpletextitem.h"
#include "tests/support/labeltexts.h"
#include "tests/support/textwindow.h"

#include <QImage>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

using Window = TextWindow<SimpleTextItem>;

} // namespace

/// Label texts edited by a user.
class tst_LabelTextEditing : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { LabelTexts::useKnownFont(); }
    void init()
    {
        QTest::failOnWarning(QRegularExpression(u".*"_s));
        Clipboard::set(u"untouched"_s);
    }

    void doubleClickPlacesTheCursor_data();
    void doubleClickPlacesTheCursor();
    void doubleClickWhileEditingSelectsAWord();
    void lockedLabelRefusesTheDoubleClick_data();
    void lockedLabelRefusesTheDoubleClick();
    void typingFitsTheItemAndIsTold();
    void idleLabelIgnoresKeys();
    void startsSelectAsAsked();
    void positionsOutsideAreLimited();
    void endOfEditingRestoresTheItem();
    void escapeEndsEditing();
    void clipboardShortcuts();
    void clipboardNeedsASelection();
    void typingIsUndoneAndRedone();
    void dataCannotBeUndone();
    void dragSelects();
    void shiftClickExtendsTheSelection();
    void keysSelect();
    void clickMovesTheCursor();
    void htmlIsPastedAsPlainText_data();
    void htmlIsPastedAsPlainText();
    void pasteOfNothingKeepsTheSelection();
    void lettersStayWhole();
    void boundsAreRepainted();
};

void tst_LabelTextEditing::doubleClickPlacesTheCursor_data()
{
    QTest::addColumn<double>("x");
    QTest::addColumn<int>("position");
    QTest::newRow("left end") << 0.02 << 0;
    QTest::newRow("right end") << 0.98 << 4;
    QTest::newRow("middle") << 0.5 << 2;
}

void tst_LabelTextEditing::doubleClickPlacesTheCursor()
{
    QFETCH(const double, x);
    QFETCH(const int, position);
    Window window;
    QVERIFY(window.isReady());
    const QSignalSpy started(window.item, &TextItem::textItemIsEditing);
    const QRectF bounds = window.item->boundingRect();
    window.doubleClick(QPointF(bounds.width() * x, bounds.height() / 2));
    QCOMPARE(started.count(), 1);
    QCOMPARE(window.item->textInteractionFlags(), Qt::TextEditorInteraction);
    QVERIFY(window.item->hasFocus());
    QVERIFY(window.item->isSelected());
    QCOMPARE(window.position(), position);
    QVERIFY(!window.item->textCursor().hasSelection());
}

void tst_LabelTextEditing::doubleClickWhileEditingSelectsAWord()
{
    Window window;
    QVERIFY(window.isReady());
    window.item->setItemText(u"two words"_s);
    const QRectF bounds = window.item->boundingRect();
    const QPointF onFirstWord(bounds.width() * 0.1, bounds.height() / 2);
    window.item->startEdit(0);
    const QSignalSpy started(window.item, &TextItem::textItemIsEditing);
    window.doubleClick(onFirstWord);
    QCOMPARE(window.selected(), u"two"_s);
    QCOMPARE(started.count(), 0);
}

void tst_LabelTextEditing::lockedLabelRefusesTheDoubleClick_data()
{
    QTest::addColumn<uint>("flag");
    QTest::newRow("user template") << 0x08U;
    QTest::newRow("supply template") << 0x10U;
    QTest::newRow("read only") << 0x20U;
}

void tst_LabelTextEditing::lockedLabelRefusesTheDoubleClick()
{
    QFETCH(const uint, flag);
    Window window;
    QVERIFY(window.isReady());
    window.item->setItemFlags(MobraTypes::Flags(flag), true);
    const QSignalSpy started(window.item, &TextItem::textItemIsEditing);
    window.doubleClick(window.item->boundingRect().center());
    QCOMPARE(started.count(), 0);
    QVERIFY(!window.item->isInEditing());
    window.write(u"A"_s);
    QCOMPARE(window.text(), u"TEXT"_s);
    // The lock is the double click's: a program may still start.
    window.item->startEdit(0);
    QVERIFY(window.item->isInEditing());
}

void tst_LabelTextEditing::typingFitsTheItemAndIsTold()
{
    Window window;
    QVERIFY(window.isReady());
    window.doubleClick(QPointF(2, window.item->boundingRect().height() / 2));
    const QSignalSpy changes(window.item, &TextItem::textItemHasChanged);
    const QSignalSpy data(window.item, &TextItem::itemDataChanged);
    window.write(u"My "_s);
    QCOMPARE(window.text(), u"My TEXT"_s);
    QCOMPARE(window.position(), 3);
    QCOMPARE(window.item->getItemSize(), LabelTexts::naturalSize(u"My TEXT"_s));
    QVERIFY(changes.count() >= 3);
    QCOMPARE(data.last().first().toString(), u"My TEXT"_s);
    window.press(Qt::Key_Return);
    QCOMPARE(window.text(), u"My \nTEXT"_s);
    QCOMPARE(window.item->getItemSize(), LabelTexts::naturalSize(u"My \nTEXT"_s));
}

void tst_LabelTextEditing::idleLabelIgnoresKeys()
{
    Window window;
    QVERIFY(window.isReady());
    window.item->setFocus();
    Clipboard::set(u"pasted"_s);
    window.write(u"A"_s);
    window.press(Qt::Key_V, Qt::ControlModifier);
    window.press(Qt::Key_Delete);
    QCOMPARE(window.text(), u"TEXT"_s);
}

void tst_LabelTextEditing::startsSelectAsAsked()
{
    Window window;
    QVERIFY(window.isReady());
    const QSignalSpy started(window.item, &TextItem::textItemIsEditing);
    window.item->startSelectedEdit(1, 3);
    QCOMPARE(window.selected(), u"EX"_s);
    QCOMPARE(window.position(), 3);
    QVERIFY(window.item->hasFocus());
    window.item->setCursorPosition(4, true);
    QCOMPARE(window.selected(), u"EXT"_s);
    window.item->setCursorPosition(2, false);
    QVERIFY(!window.item->textCursor().hasSelection());
    QCOMPARE(window.position(), 2);
    window.item->selectOnStart();
    QCOMPARE(window.selected(), u"TEXT"_s);
    window.item->startEdit(1);
    QVERIFY(!window.item->textCursor().hasSelection());
    QCOMPARE(window.position(), 1);
    QCOMPARE(started.count(), 5);
    QCOMPARE(started.last().first().value<TextItem *>(), window.item);
}

void tst_LabelTextEditing::positionsOutsideAreLimited()
{
    Window window;
    QVERIFY(window.isReady());
    window.item->startEdit(99);
    QCOMPARE(window.position(), 4);
    window.item->startEdit(-1);
    QCOMPARE(window.position(), 0);
    window.item->startSelectedEdit(-5, 99);
    QCOMPARE(window.selected(), u"TEXT"_s);
}

void tst_LabelTextEditing::endOfEditingRestoresTheItem()
{
    Window window;
    QVERIFY(window.isReady());
    for (int i = 0; i < 2; ++i) {
        window.doubleClick(window.item->boundingRect().center());
        QVERIFY(window.item->isInEditing());
        window.item->selectOnStart();
        const QSignalSpy changes(window.item, &TextItem::textItemHasChanged);
        const QSignalSpy started(window.item, &TextItem::textItemIsEditing);
        window.item->endEdit();
        QCOMPARE(int(window.item->flags()), 0x107);
        QCOMPARE(window.item->textInteractionFlags(), Qt::NoTextInteraction);
        QVERIFY(!window.item->textCursor().hasSelection());
        QCOMPARE(changes.count() + started.count(), 0);
    }
    window.item->endEdit();
    QCOMPARE(int(window.item->flags()), 0x107);
    // Flags that the host has set are kept.
    window.item->setFlag(QGraphicsItem::ItemIsMovable, false);
    window.item->startEdit(0);
    window.item->endEdit();
    QCOMPARE(int(window.item->flags()), 0x106);
}

void tst_LabelTextEditing::escapeEndsEditing()
{
    Window window;
    QVERIFY(window.isReady());
    for (int i = 0; i < 2; ++i) {
        window.doubleClick(window.item->boundingRect().center());
        QVERIFY(window.item->isInEditing());
        window.press(Qt::Key_A, Qt::ControlModifier);
        QVERIFY(window.item->textCursor().hasSelection());
        window.press(Qt::Key_Escape);
        QVERIFY(!window.item->isInEditing());
        QCOMPARE(int(window.item->flags()), 0x107);
        QVERIFY(!window.item->hasFocus());
        QVERIFY(!window.item->textCursor().hasSelection());
        QVERIFY(window.item->isSelected());
        window.write(u"A"_s);
        QCOMPARE(window.text(), u"TEXT"_s);
    }
}

void tst_LabelTextEditing::clipboardShortcuts()
{
    Window window;
    QVERIFY(window.isReady());
    window.item->startEdit(0);
    window.press(Qt::Key_Right, Qt::ShiftModifier, 2);
    window.press(Qt::Key_C, Qt::ControlModifier);
    QCOMPARE(Clipboard::text(), u"TE"_s);
    QCOMPARE(window.text(), u"TEXT"_s);
    window.press(Qt::Key_X, Qt::ControlModifier);
    QCOMPARE(Clipboard::text(), u"TE"_s);
    QCOMPARE(window.text(), u"XT"_s);
    QCOMPARE(window.item->getItemSize(), LabelTexts::naturalSize(u"XT"_s));
    window.press(Qt::Key_End);
    window.press(Qt::Key_V, Qt::ControlModifier);
    QCOMPARE(window.text(), u"XTTE"_s);
    QCOMPARE(window.position(), 4);
    Clipboard::set(u"a\tb\nc"_s);
    window.press(Qt::Key_A, Qt::ControlModifier);
    window.press(Qt::Key_V, Qt::ControlModifier);
    QCOMPARE(window.text(), u"a\tb\nc"_s);
}

void tst_LabelTextEditing::clipboardNeedsASelection()
{
    Window window;
    QVERIFY(window.isReady());
    window.item->startEdit(1);
    window.press(Qt::Key_C, Qt::ControlModifier);
    window.press(Qt::Key_X, Qt::ControlModifier);
    QCOMPARE(Clipboard::text(), u"untouched"_s);
    QCOMPARE(window.text(), u"TEXT"_s);
}

void tst_LabelTextEditing::typingIsUndoneAndRedone()
{
    Window window;
    QVERIFY(window.isReady());
    window.item->startEdit(4);
    window.write(u"S"_s);
    window.undo();
    QCOMPARE(window.text(), u"TEXT"_s);
    QCOMPARE(window.item->getItemSize(), LabelTexts::naturalSize(u"TEXT"_s));
    window.redo();
    QCOMPARE(window.text(), u"TEXTS"_s);
    QCOMPARE(window.item->getItemSize(), LabelTexts::naturalSize(u"TEXTS"_s));
}

void tst_LabelTextEditing::dataCannotBeUndone()
{
    Window window;
    QVERIFY(window.isReady());
    window.item->startEdit(4);
    window.write(u"S"_s);
    window.item->setItemData(u"data"_s);
    window.undo();
    QCOMPARE(window.text(), u"data"_s);
    window.redo();
    QCOMPARE(window.text(), u"data"_s);
    // Equal data are none, and the typing before them can be undone.
    window.write(u"!"_s);
    const QString typed = window.text();
    window.item->setItemData(typed);
    window.undo();
    QCOMPARE(window.text(), u"data"_s);
}

void tst_LabelTextEditing::dragSelects()
{
    Window window;
    QVERIFY(window.isReady());
    window.item->setItemText(u"ABCDEF"_s);
    const QPointF place = window.item->pos();
    window.item->startEdit(0);
    window.drag(window.placeOf(1), window.placeOf(4));
    QCOMPARE(window.selected(), u"BCD"_s);
    QCOMPARE(window.position(), 4);
    window.drag(window.placeOf(5), window.placeOf(2));
    QCOMPARE(window.selected(), u"CDE"_s);
    QCOMPARE(window.position(), 2);
    window.write(u"x"_s);
    QCOMPARE(window.text(), u"ABxF"_s);
    QCOMPARE(window.item->pos(), place);
}

void tst_LabelTextEditing::shiftClickExtendsTheSelection()
{
    Window window;
    QVERIFY(window.isReady());
    window.item->setItemText(u"ABCDEF"_s);
    window.item->startEdit(1);
    window.click(window.placeOf(3), Qt::ShiftModifier);
    QCOMPARE(window.selected(), u"BC"_s);
    window.click(window.placeOf(5), Qt::ShiftModifier);
    QCOMPARE(window.selected(), u"BCDE"_s);
}

void tst_LabelTextEditing::keysSelect()
{
    Window window;
    QVERIFY(window.isReady());
    window.item->setItemText(u"two words"_s);
    window.item->startEdit(4);
    window.press(Qt::Key_Left, Qt::ShiftModifier, 2);
    QCOMPARE(window.selected(), u"o "_s);
    window.press(Qt::Key_Home);
    window.press(Qt::Key_Right, Qt::ControlModifier | Qt::ShiftModifier);
    QCOMPARE(window.selected(), u"two "_s);
    window.press(Qt::Key_End, Qt::ShiftModifier);
    QCOMPARE(window.selected(), u"two words"_s);
    window.press(Qt::Key_Right);
    window.press(Qt::Key_A, Qt::ControlModifier);
    QCOMPARE(window.selected(), u"two words"_s);
    window.press(Qt::Key_Delete);
    QVERIFY(window.item->getDocumentIsEmpty());
    QCOMPARE(window.item->getItemSize(), LabelTexts::naturalSize(QString()));
}

void tst_LabelTextEditing::clickMovesTheCursor()
{
    Window window;
    QVERIFY(window.isReady());
    window.item->setItemText(u"ABCDEF"_s);
    window.item->startSelectedEdit(0, 6);
    window.click(window.placeOf(4));
    QCOMPARE(window.position(), 4);
    QVERIFY(!window.item->textCursor().hasSelection());
    QVERIFY(window.item->isInEditing());
}

void tst_LabelTextEditing::htmlIsPastedAsPlainText_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("html");
    QTest::addColumn<QString>("pasted");

    QTest::newRow("both") << u"plain"_s << u"<b>rich</b>"_s << u"plain"_s;
    QTest::newRow("only HTML") << QString() << u"<b>rich</b> text"_s << u"rich text"_s;
}

void tst_LabelTextEditing::htmlIsPastedAsPlainText()
{
    QFETCH(const QString, text);
    QFETCH(const QString, html);
    QFETCH(const QString, pasted);
    Window window;
    QVERIFY(window.isReady());
    window.item->selectOnStart();
    Clipboard::setHtml(html, text);
    window.press(Qt::Key_V, Qt::ControlModifier);
    QCOMPARE(window.text(), pasted);
    QVERIFY(!window.item->toHtml().contains(u"<span"_s));
    QCOMPARE(window.item->getItemSize(), LabelTexts::naturalSize(pasted));
}

void tst_LabelTextEditing::pasteOfNothingKeepsTheSelection()
{
    Window window;
    QVERIFY(window.isReady());
    for (const bool vertical : { false, true }) {
        window.item->setTextVertical(vertical);
        const QString text = window.text();
        window.item->selectOnStart();
        QGuiApplication::clipboard()->setImage(QImage(2, 2, QImage::Format_RGB32));
        window.press(Qt::Key_V, Qt::ControlModifier);
        QGuiApplication::clipboard()->clear();
        window.press(Qt::Key_V, Qt::ControlModifier);
        QCOMPARE(window.text(), text);
        QVERIFY(window.item->textCursor().hasSelection());
    }
}

void tst_LabelTextEditing::lettersStayWhole()
{
    const QString couple = u"\U0001F468\u200D\U0001F469"_s;
    Window window;
    QVERIFY(window.isReady());
    window.item->setItemText(u"a"_s + couple + u"\u0E01\u0E35\u0E48b"_s);
    window.item->startEdit(0);
    for (const int position : { 1, 6, 9, 10 }) {
        window.press(Qt::Key_Right);
        QCOMPARE(window.position(), position);
    }
    window.press(Qt::Key_Left, Qt::NoModifier, 3);
    window.press(Qt::Key_Delete);
    QCOMPARE(window.text(), u"a\u0E01\u0E35\u0E48b"_s);
    window.press(Qt::Key_Delete);
    QCOMPARE(window.text(), u"ab"_s);
}

void tst_LabelTextEditing::boundsAreRepainted()
{
    Window window;
    QVERIFY(window.isReady());
    window.item->setItemPenWidth(2);
    const auto changes = [&window](auto &&change) {
        const QRectF before = window.item->sceneBoundingRect();
        window.startWatching();
        change();
        return window.hasRepainted(before) && window.hasRepainted(window.item->sceneBoundingRect());
    };
    QVERIFY(changes([&] { window.item->startEdit(4); }));
    QVERIFY(changes([&] { window.write(u"LONGER"_s); }));
    QVERIFY(changes([&] { window.press(Qt::Key_Return); }));
    QVERIFY(changes([&] { window.undo(); }));
    QVERIFY(changes([&] { window.press(Qt::Key_Backspace, Qt::NoModifier, 8); }));
    QVERIFY(changes([&] { window.item->setItemFontSize(90); }));
    QVERIFY(changes([&] { window.item->setItemSize(QSizeF(100, 50)); }));
    QVERIFY(changes([&] { window.item->setItemPenWidth(9); }));
    QVERIFY(changes([&] { window.press(Qt::Key_Escape); }));
}

QTEST_MAIN(tst_LabelTextEditing)
#include "tst_labeltextediting.moc"
