// SPDX-License-Identifier: BSD-3-Clause
#include "items/text/simpletextitem.h"
#include "tests/support/labeltexts.h"

#include <QClipboard>
#include <QGraphicsScene>
#include <QGraphicsView>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QTest>
#include <QTextCursor>

#include <memory>

using namespace Qt::StringLiterals;

namespace {

const QString face = u"\U0001F600"_s;
const QString accented = u"e\u0301"_s;

/// A label in a window, edited with mouse and keys.
class Editor
{
public:
    Editor()
        : label(new SimpleTextItem)
    {
        scene.addItem(label);
        scene.setSceneRect(-50, -50, 500, 400);
        view.setScene(&scene);
        view.resize(520, 420);
        view.show();
    }

    bool isReady() { return QTest::qWaitForWindowActive(&view); }

    void doubleClick(const QPointF &position)
    {
        const QPoint pixel = view.mapFromScene(label->mapToScene(position));
        QTest::mouseMove(view.viewport(), pixel);
        QTest::mouseClick(view.viewport(), Qt::LeftButton, Qt::NoModifier, pixel);
        QTest::mouseDClick(view.viewport(), Qt::LeftButton, Qt::NoModifier, pixel);
        QTest::mouseRelease(view.viewport(), Qt::LeftButton, Qt::NoModifier, pixel);
    }
    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier, int times = 1)
    {
        for (; times > 0; --times)
            QTest::keyClick(view.viewport(), key, modifiers);
    }
    /// Types as an input method does that makes several code units at once.
    void type(const QString &text)
    {
        QKeyEvent event(QEvent::KeyPress, 0, Qt::NoModifier, text);
        QCoreApplication::sendEvent(view.viewport(), &event);
    }
    void startVertical(const QString &text, int position)
    {
        label->setItemText(text);
        label->setTextVertical(true);
        label->startEdit(position);
    }
    QString text() const { return label->toPlainText(); }
    int position() const { return label->textCursor().position(); }

    QGraphicsScene scene;
    SimpleTextItem *label;
    QGraphicsView view;
};

void setClipboard(const QString &text)
{
    QGuiApplication::clipboard()->setText(text);
}

QString clipboard()
{
    return QGuiApplication::clipboard()->text();
}

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
        setClipboard(u"untouched"_s);
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
    void clipboardShortcuts();
    void clipboardNeedsASelection();
    void typingIsUndoneAndRedone();
    void verticalTyping_data();
    void verticalTyping();
    void verticalDeleting_data();
    void verticalDeleting();
    void verticalMoving();
    void verticalPaste_data();
    void verticalPaste();
    void verticalSelectionIsCopiedHorizontally_data();
    void verticalSelectionIsCopiedHorizontally();
    void verticalSelectionIsCut_data();
    void verticalSelectionIsCut();
    void verticalTypingIsUndone();
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
    Editor editor;
    QVERIFY(editor.isReady());
    const QSignalSpy started(editor.label, &TextItem::textItemIsEditing);
    const QRectF bounds = editor.label->boundingRect();
    editor.doubleClick(QPointF(bounds.width() * x, bounds.height() / 2));
    QCOMPARE(started.count(), 1);
    QCOMPARE(editor.label->textInteractionFlags(), Qt::TextEditorInteraction);
    QVERIFY(editor.label->hasFocus());
    QVERIFY(editor.label->isSelected());
    QCOMPARE(editor.position(), position);
    QVERIFY(!editor.label->textCursor().hasSelection());
}

void tst_LabelTextEditing::doubleClickWhileEditingSelectsAWord()
{
    Editor editor;
    QVERIFY(editor.isReady());
    editor.label->setItemText(u"two words"_s);
    const QRectF bounds = editor.label->boundingRect();
    const QPointF onFirstWord(bounds.width() * 0.1, bounds.height() / 2);
    editor.label->startEdit(0);
    const QSignalSpy started(editor.label, &TextItem::textItemIsEditing);
    editor.doubleClick(onFirstWord);
    QCOMPARE(editor.label->textCursor().selectedText(), u"two"_s);
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
    Editor editor;
    QVERIFY(editor.isReady());
    editor.label->setItemFlags(MobraTypes::Flags(flag), true);
    const QSignalSpy started(editor.label, &TextItem::textItemIsEditing);
    editor.doubleClick(editor.label->boundingRect().center());
    QCOMPARE(started.count(), 0);
    QVERIFY(!editor.label->isInEditing());
    QTest::keyClicks(editor.view.viewport(), u"A"_s);
    QCOMPARE(editor.text(), u"TEXT"_s);
    // The lock is the double click's: a program may still start.
    editor.label->startEdit(0);
    QVERIFY(editor.label->isInEditing());
}

void tst_LabelTextEditing::typingFitsTheItemAndIsTold()
{
    Editor editor;
    QVERIFY(editor.isReady());
    editor.doubleClick(QPointF(2, editor.label->boundingRect().height() / 2));
    const QSignalSpy changes(editor.label, &TextItem::textItemHasChanged);
    const QSignalSpy data(editor.label, &TextItem::itemDataChanged);
    QTest::keyClicks(editor.view.viewport(), u"My "_s);
    QCOMPARE(editor.text(), u"My TEXT"_s);
    QCOMPARE(editor.position(), 3);
    QCOMPARE(editor.label->getItemSize(), LabelTexts::naturalSize(u"My TEXT"_s));
    QVERIFY(changes.count() >= 3);
    QCOMPARE(data.last().first().toString(), u"My TEXT"_s);
    editor.press(Qt::Key_Return);
    QCOMPARE(editor.text(), u"My \nTEXT"_s);
    QCOMPARE(editor.label->getItemSize(), LabelTexts::naturalSize(u"My \nTEXT"_s));
    editor.press(Qt::Key_Escape);
    QCOMPARE(editor.text(), u"My \nTEXT"_s);
}

void tst_LabelTextEditing::idleLabelIgnoresKeys()
{
    Editor editor;
    QVERIFY(editor.isReady());
    editor.label->setFocus();
    setClipboard(u"pasted"_s);
    QTest::keyClicks(editor.view.viewport(), u"A"_s);
    editor.press(Qt::Key_V, Qt::ControlModifier);
    editor.press(Qt::Key_Delete);
    QCOMPARE(editor.text(), u"TEXT"_s);
}

void tst_LabelTextEditing::startsSelectAsAsked()
{
    Editor editor;
    QVERIFY(editor.isReady());
    const QSignalSpy started(editor.label, &TextItem::textItemIsEditing);
    editor.label->startSelectedEdit(1, 3);
    QCOMPARE(editor.label->textCursor().selectedText(), u"EX"_s);
    QCOMPARE(editor.position(), 3);
    QVERIFY(editor.label->hasFocus());
    editor.label->setCursorPosition(4, true);
    QCOMPARE(editor.label->textCursor().selectedText(), u"EXT"_s);
    editor.label->setCursorPosition(2, false);
    QVERIFY(!editor.label->textCursor().hasSelection());
    QCOMPARE(editor.position(), 2);
    editor.label->selectOnStart();
    QCOMPARE(editor.label->textCursor().selectedText(), u"TEXT"_s);
    editor.label->startEdit(1);
    QVERIFY(!editor.label->textCursor().hasSelection());
    QCOMPARE(editor.position(), 1);
    QCOMPARE(started.count(), 5);
    QCOMPARE(started.last().first().value<TextItem *>(), editor.label);
}

void tst_LabelTextEditing::positionsOutsideAreLimited()
{
    Editor editor;
    QVERIFY(editor.isReady());
    editor.label->startEdit(99);
    QCOMPARE(editor.position(), 4);
    editor.label->startEdit(-1);
    QCOMPARE(editor.position(), 0);
    editor.label->startSelectedEdit(-5, 99);
    QCOMPARE(editor.label->textCursor().selectedText(), u"TEXT"_s);
}

void tst_LabelTextEditing::endOfEditingRestoresTheItem()
{
    Editor editor;
    QVERIFY(editor.isReady());
    for (int i = 0; i < 2; ++i) {
        editor.doubleClick(editor.label->boundingRect().center());
        QVERIFY(editor.label->isInEditing());
        editor.label->selectOnStart();
        const QSignalSpy changes(editor.label, &TextItem::textItemHasChanged);
        const QSignalSpy started(editor.label, &TextItem::textItemIsEditing);
        editor.label->endEdit();
        QCOMPARE(int(editor.label->flags()), 0x107);
        QCOMPARE(editor.label->textInteractionFlags(), Qt::NoTextInteraction);
        QVERIFY(!editor.label->textCursor().hasSelection());
        QCOMPARE(changes.count() + started.count(), 0);
    }
    editor.label->endEdit();
    QCOMPARE(int(editor.label->flags()), 0x107);
    // Flags that the host has set are kept.
    editor.label->setFlag(QGraphicsItem::ItemIsMovable, false);
    editor.label->startEdit(0);
    editor.label->endEdit();
    QCOMPARE(int(editor.label->flags()), 0x106);
}

void tst_LabelTextEditing::clipboardShortcuts()
{
    Editor editor;
    QVERIFY(editor.isReady());
    editor.label->startEdit(0);
    editor.press(Qt::Key_Right, Qt::ShiftModifier, 2);
    editor.press(Qt::Key_C, Qt::ControlModifier);
    QCOMPARE(clipboard(), u"TE"_s);
    QCOMPARE(editor.text(), u"TEXT"_s);
    editor.press(Qt::Key_X, Qt::ControlModifier);
    QCOMPARE(clipboard(), u"TE"_s);
    QCOMPARE(editor.text(), u"XT"_s);
    QCOMPARE(editor.label->getItemSize(), LabelTexts::naturalSize(u"XT"_s));
    editor.press(Qt::Key_End);
    editor.press(Qt::Key_V, Qt::ControlModifier);
    QCOMPARE(editor.text(), u"XTTE"_s);
    QCOMPARE(editor.position(), 4);
    setClipboard(u"a\tb\nc"_s);
    editor.press(Qt::Key_A, Qt::ControlModifier);
    editor.press(Qt::Key_V, Qt::ControlModifier);
    QCOMPARE(editor.text(), u"a\tb\nc"_s);
}

void tst_LabelTextEditing::clipboardNeedsASelection()
{
    Editor editor;
    QVERIFY(editor.isReady());
    editor.label->startEdit(1);
    editor.press(Qt::Key_C, Qt::ControlModifier);
    editor.press(Qt::Key_X, Qt::ControlModifier);
    QCOMPARE(clipboard(), u"untouched"_s);
    QCOMPARE(editor.text(), u"TEXT"_s);
}

void tst_LabelTextEditing::typingIsUndoneAndRedone()
{
    Editor editor;
    QVERIFY(editor.isReady());
    editor.label->startEdit(4);
    QTest::keyClicks(editor.view.viewport(), u"S"_s);
    editor.press(Qt::Key_Z, Qt::ControlModifier);
    QCOMPARE(editor.text(), u"TEXT"_s);
    QCOMPARE(editor.label->getItemSize(), LabelTexts::naturalSize(u"TEXT"_s));
    editor.press(Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
    QCOMPARE(editor.text(), u"TEXTS"_s);
    QCOMPARE(editor.label->getItemSize(), LabelTexts::naturalSize(u"TEXTS"_s));
}

void tst_LabelTextEditing::verticalTyping_data()
{
    QTest::addColumn<int>("start");
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("position");

    QTest::newRow("before all") << 0 << u"A"_s << u"A\nT\nE\nX\nT"_s << 2;
    QTest::newRow("in the middle") << 2 << u"A"_s << u"T\nA\nE\nX\nT"_s << 4;
    QTest::newRow("behind a character") << 1 << u"A"_s << u"T\nA\nE\nX\nT"_s << 4;
    QTest::newRow("at the end") << 7 << u"A"_s << u"T\nE\nX\nT\nA"_s << 9;
    QTest::newRow("space") << 2 << u" "_s << u"T\n \nE\nX\nT"_s << 4;
    QTest::newRow("two characters") << 2 << u"AB"_s << u"T\nA\nB\nE\nX\nT"_s << 6;
    QTest::newRow("surrogates") << 2 << face << QString(u"T\n"_s + face + u"\nE\nX\nT"_s) << 5;
    QTest::newRow("letter with a mark")
        << 2 << accented << QString(u"T\n"_s + accented + u"\nE\nX\nT"_s) << 5;
}

void tst_LabelTextEditing::verticalTyping()
{
    QFETCH(const int, start);
    QFETCH(const QString, typed);
    QFETCH(const QString, text);
    QFETCH(const int, position);
    Editor editor;
    QVERIFY(editor.isReady());
    editor.startVertical(u"TEXT"_s, start);
    const QSignalSpy changes(editor.label, &TextItem::textItemHasChanged);
    editor.type(typed);
    QCOMPARE(editor.text(), text);
    QCOMPARE(editor.position(), position);
    QCOMPARE(changes.count(), 1);
    QCOMPARE(editor.label->getItemSize(), LabelTexts::naturalSize(text));
    QTest::keyClicks(editor.view.viewport(), u"!"_s);
    QCOMPARE(editor.position(), qMin(position + 2, int(editor.text().size())));
}

void tst_LabelTextEditing::verticalDeleting_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("start");
    QTest::addColumn<Qt::Key>("key");
    QTest::addColumn<QString>("left");
    QTest::addColumn<int>("position");

    QTest::newRow("forwards") << u"TEXT"_s << 2 << Qt::Key_Delete << u"T\nX\nT"_s << 2;
    QTest::newRow("over a line") << u"TEXT"_s << 1 << Qt::Key_Delete << u"T\nX\nT"_s << 2;
    QTest::newRow("first") << u"TEXT"_s << 0 << Qt::Key_Delete << u"E\nX\nT"_s << 0;
    QTest::newRow("last") << u"TEXT"_s << 6 << Qt::Key_Delete << u"T\nE\nX"_s << 5;
    QTest::newRow("behind all") << u"TEXT"_s << 7 << Qt::Key_Delete << u"T\nE\nX\nT"_s << 7;
    QTest::newRow("backwards") << u"TEXT"_s << 2 << Qt::Key_Backspace << u"E\nX\nT"_s << 0;
    QTest::newRow("before all") << u"TEXT"_s << 0 << Qt::Key_Backspace << u"T\nE\nX\nT"_s << 0;
    QTest::newRow("backwards from the end") << u"TEXT"_s << 7 << Qt::Key_Backspace << u"T\nE\nX"_s << 5;
    QTest::newRow("surrogates") << QString(u"A"_s + face + u"B"_s) << 2 << Qt::Key_Delete << u"A\nB"_s << 2;
    QTest::newRow("surrogates backwards")
        << QString(u"A"_s + face + u"B"_s) << 5 << Qt::Key_Backspace << u"A\nB"_s << 2;
    QTest::newRow("combining mark") << QString(u"A"_s + accented + u"B"_s) << 5 << Qt::Key_Backspace
                                    << u"A\nB"_s << 2;
    QTest::newRow("the only one") << u"A"_s << 0 << Qt::Key_Delete << QString() << 0;
    QTest::newRow("return is a space") << u"AB"_s << 2 << Qt::Key_Return << u"A\n \nB"_s << 4;
}

void tst_LabelTextEditing::verticalDeleting()
{
    QFETCH(const QString, text);
    QFETCH(const int, start);
    QFETCH(const Qt::Key, key);
    QFETCH(const QString, left);
    QFETCH(const int, position);
    Editor editor;
    QVERIFY(editor.isReady());
    editor.startVertical(text, start);
    editor.press(key);
    QCOMPARE(editor.text(), left);
    QCOMPARE(editor.position(), position);
    QCOMPARE(editor.label->getItemSize(), LabelTexts::naturalSize(left));
}

void tst_LabelTextEditing::verticalMoving()
{
    Editor editor;
    QVERIFY(editor.isReady());
    editor.startVertical(u"A"_s + face + u"B"_s, 0);
    for (const int position : { 2, 5, 6, 6 }) {
        editor.press(position == 5 ? Qt::Key_Right : Qt::Key_Down);
        QCOMPARE(editor.position(), position);
    }
    for (const int position : { 5, 2, 0, 0 }) {
        editor.press(position == 5 ? Qt::Key_Left : Qt::Key_Up);
        QCOMPARE(editor.position(), position);
    }
    editor.press(Qt::Key_Down, Qt::ShiftModifier, 2);
    QCOMPARE(editor.label->textCursor().selectionStart(), 0);
    QCOMPARE(editor.label->textCursor().selectionEnd(), 5);
    editor.type(u"C"_s);
    QCOMPARE(editor.text(), u"C\nB"_s);
}

void tst_LabelTextEditing::verticalPaste_data()
{
    QTest::addColumn<QString>("pasted");
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("position");

    QTest::newRow("letters") << u"AB"_s << u"T\nA\nB\nE\nX\nT"_s << 6;
    QTest::newRow("line breaks and a tab") << u"a\tb\r\nc\n"_s << u"T\na\n \nb\nc\nE\nX\nT"_s << 10;
    QTest::newRow("spaces are kept") << u" a  "_s << u"T\n \na\n \n \nE\nX\nT"_s << 10;
    QTest::newRow("surrogates and marks")
        << QString(face + accented) << QString(u"T\n"_s + face + u"\n"_s + accented + u"\nE\nX\nT"_s) << 8;
    QTest::newRow("line breaks only") << u"\n\r\n"_s << u"T\nE\nX\nT"_s << 2;
}

void tst_LabelTextEditing::verticalPaste()
{
    QFETCH(const QString, pasted);
    QFETCH(const QString, text);
    QFETCH(const int, position);
    Editor editor;
    QVERIFY(editor.isReady());
    editor.startVertical(u"TEXT"_s, 2);
    setClipboard(pasted);
    editor.press(Qt::Key_V, Qt::ControlModifier);
    QCOMPARE(editor.text(), text);
    QCOMPARE(editor.position(), position);
    QCOMPARE(editor.label->getItemSize(), LabelTexts::naturalSize(text));
}

void tst_LabelTextEditing::verticalSelectionIsCopiedHorizontally_data()
{
    QTest::addColumn<int>("from");
    QTest::addColumn<int>("to");
    QTest::addColumn<QString>("copied");

    // The lines start at 0, 2, 4 and 7.
    QTest::newRow("all") << 0 << 8 << QString(u"A "_s + face + u"B"_s);
    QTest::newRow("first") << 0 << 2 << u"A"_s;
    QTest::newRow("first without its line break") << 0 << 1 << u"A"_s;
    QTest::newRow("space") << 2 << 4 << u" "_s;
    QTest::newRow("surrogates") << 4 << 7 << face;
    QTest::newRow("last") << 7 << 8 << u"B"_s;
    QTest::newRow("first two") << 0 << 4 << u"A "_s;
}

void tst_LabelTextEditing::verticalSelectionIsCopiedHorizontally()
{
    QFETCH(const int, from);
    QFETCH(const int, to);
    QFETCH(const QString, copied);
    Editor editor;
    QVERIFY(editor.isReady());
    editor.startVertical(u"A "_s + face + u"B"_s, 0);
    editor.label->startSelectedEdit(from, to);
    editor.press(Qt::Key_C, Qt::ControlModifier);
    QCOMPARE(clipboard(), copied);
    QCOMPARE(editor.text(), u"A\n \n"_s + face + u"\nB"_s);
}

void tst_LabelTextEditing::verticalSelectionIsCut_data()
{
    QTest::addColumn<int>("from");
    QTest::addColumn<int>("to");
    QTest::addColumn<QString>("copied");
    QTest::addColumn<QString>("left");

    QTest::newRow("first") << 0 << 2 << u"T"_s << u"E\nX\nT"_s;
    QTest::newRow("middle") << 2 << 6 << u"EX"_s << u"T\nT"_s;
    QTest::newRow("end") << 4 << 7 << u"XT"_s << u"T\nE"_s;
    QTest::newRow("all") << 0 << 7 << u"TEXT"_s << QString();
}

void tst_LabelTextEditing::verticalSelectionIsCut()
{
    QFETCH(const int, from);
    QFETCH(const int, to);
    QFETCH(const QString, copied);
    QFETCH(const QString, left);
    Editor editor;
    QVERIFY(editor.isReady());
    editor.startVertical(u"TEXT"_s, 0);
    editor.label->startSelectedEdit(from, to);
    editor.press(Qt::Key_X, Qt::ControlModifier);
    QCOMPARE(clipboard(), copied);
    QCOMPARE(editor.text(), left);
    QCOMPARE(editor.label->getItemSize(), LabelTexts::naturalSize(left));
}

void tst_LabelTextEditing::verticalTypingIsUndone()
{
    Editor editor;
    QVERIFY(editor.isReady());
    editor.startVertical(u"TEXT"_s, 2);
    editor.type(u"A"_s);
    editor.press(Qt::Key_Z, Qt::ControlModifier);
    QCOMPARE(editor.text(), u"T\nE\nX\nT"_s);
    QCOMPARE(editor.label->getItemSize(), LabelTexts::naturalSize(u"T\nE\nX\nT"_s));
    editor.press(Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
    QCOMPARE(editor.text(), u"T\nA\nE\nX\nT"_s);
}

QTEST_MAIN(tst_LabelTextEditing)
#include "tst_labeltextediting.moc"
