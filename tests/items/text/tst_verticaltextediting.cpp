// SPDX-License-Identifier: BSD-3-Clause
#include "items/text/simpletextitem.h"
#include "tests/support/itemrecords.h"
#include "tests/support/labeltexts.h"
#include "tests/support/textwindow.h"

#include <QRegularExpression>
#include <QSignalBlocker>
#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

const QString face = u"\U0001F600"_s;
const QString accented = u"e\u0301"_s;
const QString mark = u"\u0301"_s;
const QString joiner = u"\u200D"_s;
const QString man = u"\U0001F468"_s;
const QString woman = u"\U0001F469"_s;
const QString couple = man + joiner + woman;

class Window : public TextWindow<SimpleTextItem>
{
public:
    void start(const QString &text, int position)
    {
        item->setItemText(text);
        item->setTextVertical(true);
        item->startEdit(position);
    }
};

} // namespace

/// Vertical label texts edited by a user.
class tst_VerticalTextEditing : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { LabelTexts::useKnownFont(); }
    void init()
    {
        QTest::failOnWarning(QRegularExpression(u".*"_s));
        Clipboard::set(u"untouched"_s);
    }

    void typedCharactersGetLinesOfTheirOwn_data();
    void typedCharactersGetLinesOfTheirOwn();
    void typedPartsJoinTheCharacterBefore_data();
    void typedPartsJoinTheCharacterBefore();
    void onlyWritingKeysWrite_data();
    void onlyWritingKeysWrite();
    void committedTextIsStacked_data();
    void committedTextIsStacked();
    void commitIsUndoneAtOnce();
    void keysDeleteWholeCharacters_data();
    void keysDeleteWholeCharacters();
    void keysMoveOverWholeCharacters();
    void keysSelectWholeCharacters();
    void mouseSelectsWholeCharacters();
    void keysThatChangeNothingTellNothing();
    void pastedTextIsStacked_data();
    void pastedTextIsStacked();
    void selectionIsCopiedHorizontally_data();
    void selectionIsCopiedHorizontally();
    void selectionIsCut_data();
    void selectionIsCut();
    void typingIsUndone();
    void undoingLeadsTheCursorToTheChange();
    void surrogatesAreReplacedTogether_data();
    void surrogatesAreReplacedTogether();
    void cursorStaysBeforeItsCharacter();
    void unstackedTextIsStackedByTheFirstKey();
    void textThatIsSetIsStacked_data();
    void textThatIsSetIsStacked();
    void dataCannotBeUndone();
    void escapeEndsEditing();
};

void tst_VerticalTextEditing::typedCharactersGetLinesOfTheirOwn_data()
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

void tst_VerticalTextEditing::typedCharactersGetLinesOfTheirOwn()
{
    QFETCH(const int, start);
    QFETCH(const QString, typed);
    QFETCH(const QString, text);
    QFETCH(const int, position);
    Window window;
    QVERIFY(window.isReady());
    window.start(u"TEXT"_s, start);
    const QSignalSpy changes(window.item, &TextItem::textItemHasChanged);
    window.type(typed);
    QCOMPARE(window.text(), text);
    QCOMPARE(window.position(), position);
    QCOMPARE(changes.count(), 1);
    QCOMPARE(window.item->getItemSize(), LabelTexts::naturalSize(text));
    window.write(u"!"_s);
    QCOMPARE(window.position(), qMin(position + 2, int(window.text().size())));
}

void tst_VerticalTextEditing::typedPartsJoinTheCharacterBefore_data()
{
    QTest::addColumn<int>("start");
    QTest::addColumn<QStringList>("typed");
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("position");
    QTest::addColumn<QString>("left");

    QTest::newRow("mark") << 2 << QStringList { mark } << u"A\u0301\nB"_s << 3 << u"B"_s;
    QTest::newRow("mark on the last") << 3 << QStringList { mark } << u"A\nB\u0301"_s << 4 << u"A"_s;
    QTest::newRow("mark before all") << 0 << QStringList { mark } << u"\u0301\nA\nB"_s << 2 << u"A\nB"_s;
    QTest::newRow("two marks") << 2 << QStringList { u"\u0323"_s, u"\u0302"_s } << u"A\u0323\u0302\nB"_s << 4
                               << u"B"_s;
    QTest::newRow("mark on a typed letter")
        << 2 << QStringList { u"e"_s, mark } << QString(u"A\n"_s + accented + u"\nB"_s) << 5 << u"A\nB"_s;
    QTest::newRow("mark on a space") << 2 << QStringList { u" "_s, mark } << u"A\n \u0301\nB"_s << 5
                                     << u"A\nB"_s;
    QTest::newRow("mark on surrogates")
        << 2 << QStringList { face, mark } << QString(u"A\n"_s + face + mark + u"\nB"_s) << 6 << u"A\nB"_s;
    QTest::newRow("joined emoji") << 2 << QStringList { man, joiner, woman }
                                  << QString(u"A\n"_s + couple + u"\nB"_s) << 8 << u"A\nB"_s;
    QTest::newRow("emoji and joiner at once") << 2 << QStringList { QString(man + joiner), woman }
                                              << QString(u"A\n"_s + couple + u"\nB"_s) << 8 << u"A\nB"_s;
    QTest::newRow("colour of skin") << 2 << QStringList { u"\U0001F44D"_s, u"\U0001F3FD"_s }
                                    << u"A\n\U0001F44D\U0001F3FD\nB"_s << 7 << u"A\nB"_s;
    QTest::newRow("letters of a flag") << 2 << QStringList { u"\U0001F1E9"_s, u"\U0001F1EA"_s }
                                       << u"A\n\U0001F1E9\U0001F1EA\nB"_s << 7 << u"A\nB"_s;
    QTest::newRow("Thai vowel and tone") << 2 << QStringList { u"\u0E01"_s, u"\u0E35"_s, u"\u0E48"_s }
                                         << u"A\n\u0E01\u0E35\u0E48\nB"_s << 6 << u"A\nB"_s;
    QTest::newRow("Thai vowel behind")
        << 2 << QStringList { u"\u0E01"_s, u"\u0E33"_s } << u"A\n\u0E01\u0E33\nB"_s << 5 << u"A\nB"_s;
    QTest::newRow("letters of a syllable") << 2 << QStringList { u"\u1112"_s, u"\u1161"_s, u"\u11AB"_s }
                                           << u"A\n\u1112\u1161\u11AB\nB"_s << 6 << u"A\nB"_s;
}

void tst_VerticalTextEditing::typedPartsJoinTheCharacterBefore()
{
    QFETCH(const int, start);
    QFETCH(const QStringList, typed);
    QFETCH(const QString, text);
    QFETCH(const int, position);
    QFETCH(const QString, left);
    Window window;
    QVERIFY(window.isReady());
    window.start(u"AB"_s, start);
    for (const QString &part : typed)
        window.type(part);
    QCOMPARE(window.text(), text);
    QCOMPARE(window.position(), position);
    QCOMPARE(window.item->getItemSize(), LabelTexts::naturalSize(text));
    // What has joined goes as one.
    window.press(Qt::Key_Up);
    window.press(Qt::Key_Down);
    QCOMPARE(window.position(), position);
    window.press(Qt::Key_Backspace);
    QCOMPARE(window.text(), left);
}

void tst_VerticalTextEditing::onlyWritingKeysWrite_data()
{
    QTest::addColumn<Qt::KeyboardModifiers>("modifiers");
    QTest::addColumn<QString>("made");
    QTest::addColumn<QString>("text");

    QTest::newRow("control") << Qt::KeyboardModifiers(Qt::ControlModifier) << u"b"_s << u"A\nB"_s;
    QTest::newRow("control and shift") << (Qt::ControlModifier | Qt::ShiftModifier) << u"B"_s << u"A\nB"_s;
    QTest::newRow("control character") << Qt::KeyboardModifiers() << u"\u0002"_s << u"A\nB"_s;
    QTest::newRow("third level") << (Qt::ControlModifier | Qt::AltModifier) << u"@"_s << u"A\n@\nB"_s;
    QTest::newRow("keypad") << Qt::KeyboardModifiers(Qt::KeypadModifier) << u"7"_s << u"A\n7\nB"_s;
    QTest::newRow("private character") << Qt::KeyboardModifiers() << u"\uE001"_s << u"A\n\uE001\nB"_s;
    QTest::newRow("tab") << Qt::KeyboardModifiers() << u"\t"_s << u"A\n \nB"_s;
}

void tst_VerticalTextEditing::onlyWritingKeysWrite()
{
    QFETCH(const Qt::KeyboardModifiers, modifiers);
    QFETCH(const QString, made);
    QFETCH(const QString, text);
    Window window;
    QVERIFY(window.isReady());
    window.start(u"AB"_s, 2);
    window.type(made, modifiers);
    QCOMPARE(window.text(), text);
}

void tst_VerticalTextEditing::committedTextIsStacked_data()
{
    QTest::addColumn<QString>("committed");
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("position");

    // The text is A, a face and B, and the cursor stands before B, at 5.
    QTest::newRow("letter") << u"C"_s << QString(u"A\n"_s + face + u"\nC\nB"_s) << 7;
    QTest::newRow("syllables") << u"\u4F60\u597D"_s << QString(u"A\n"_s + face + u"\n\u4F60\n\u597D\nB"_s)
                               << 9;
    QTest::newRow("surrogates") << QString(face + face)
                                << QString(u"A\n"_s + face + u"\n"_s + face + u"\n"_s + face + u"\nB"_s)
                                << 11;
    QTest::newRow("mark") << mark << QString(u"A\n"_s + face + mark + u"\nB"_s) << 6;
    QTest::newRow("space") << u" "_s << QString(u"A\n"_s + face + u"\n \nB"_s) << 7;
}

void tst_VerticalTextEditing::committedTextIsStacked()
{
    QFETCH(const QString, committed);
    QFETCH(const QString, text);
    QFETCH(const int, position);
    Window window;
    QVERIFY(window.isReady());
    window.start(u"A"_s + face + u"B"_s, 5);
    window.commit(committed);
    QCOMPARE(window.text(), text);
    QCOMPARE(window.position(), position);
    QCOMPARE(window.item->getItemSize(), LabelTexts::naturalSize(text));
}

void tst_VerticalTextEditing::commitIsUndoneAtOnce()
{
    Window window;
    QVERIFY(window.isReady());
    window.start(u"AB"_s, 2);
    window.commit(u"CD"_s);
    QCOMPARE(window.text(), u"A\nC\nD\nB"_s);
    window.undo();
    QCOMPARE(window.text(), u"A\nB"_s);
    QCOMPARE(window.item->getItemSize(), LabelTexts::naturalSize(u"A\nB"_s));
    window.redo();
    QCOMPARE(window.text(), u"A\nC\nD\nB"_s);
    QCOMPARE(window.item->getItemSize(), LabelTexts::naturalSize(u"A\nC\nD\nB"_s));
}

void tst_VerticalTextEditing::keysDeleteWholeCharacters_data()
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
    QTest::newRow("joined emoji") << QString(u"A"_s + couple + u"B"_s) << 2 << Qt::Key_Delete << u"A\nB"_s
                                  << 2;
    QTest::newRow("joined emoji backwards")
        << QString(u"A"_s + couple + u"B"_s) << 8 << Qt::Key_Backspace << u"A\nB"_s << 2;
    QTest::newRow("Thai vowel and tone backwards")
        << u"A\u0E01\u0E35\u0E48B"_s << 6 << Qt::Key_Backspace << u"A\nB"_s << 2;
    QTest::newRow("the only one") << u"A"_s << 0 << Qt::Key_Delete << QString() << 0;
    QTest::newRow("return is a space") << u"AB"_s << 2 << Qt::Key_Return << u"A\n \nB"_s << 4;
}

void tst_VerticalTextEditing::keysDeleteWholeCharacters()
{
    QFETCH(const QString, text);
    QFETCH(const int, start);
    QFETCH(const Qt::Key, key);
    QFETCH(const QString, left);
    QFETCH(const int, position);
    Window window;
    QVERIFY(window.isReady());
    window.start(text, start);
    window.press(key);
    QCOMPARE(window.text(), left);
    QCOMPARE(window.position(), position);
    QCOMPARE(window.item->getItemSize(), LabelTexts::naturalSize(left));
}

void tst_VerticalTextEditing::keysMoveOverWholeCharacters()
{
    Window window;
    QVERIFY(window.isReady());
    window.start(u"A"_s + face + u"B"_s, 0);
    for (const int position : { 2, 5, 6, 6 }) {
        window.press(position == 5 ? Qt::Key_Right : Qt::Key_Down);
        QCOMPARE(window.position(), position);
    }
    for (const int position : { 5, 2, 0, 0 }) {
        window.press(position == 5 ? Qt::Key_Left : Qt::Key_Up);
        QCOMPARE(window.position(), position);
    }
    window.press(Qt::Key_Down, Qt::ShiftModifier, 2);
    QCOMPARE(window.item->textCursor().selectionStart(), 0);
    QCOMPARE(window.item->textCursor().selectionEnd(), 5);
    window.type(u"C"_s);
    QCOMPARE(window.text(), u"C\nB"_s);
}

void tst_VerticalTextEditing::keysSelectWholeCharacters()
{
    Window window;
    QVERIFY(window.isReady());
    window.start(u"A"_s + couple + u"B"_s, 2);
    window.press(Qt::Key_Down, Qt::ShiftModifier);
    window.press(Qt::Key_C, Qt::ControlModifier);
    QCOMPARE(Clipboard::text(), couple);
    window.press(Qt::Key_End, Qt::ShiftModifier);
    window.press(Qt::Key_C, Qt::ControlModifier);
    QCOMPARE(Clipboard::text(), QString(couple + u"B"_s));
    window.press(Qt::Key_Home, Qt::ShiftModifier);
    window.press(Qt::Key_C, Qt::ControlModifier);
    QCOMPARE(Clipboard::text(), u"A"_s);
    window.press(Qt::Key_A, Qt::ControlModifier);
    window.press(Qt::Key_C, Qt::ControlModifier);
    QCOMPARE(Clipboard::text(), QString(u"A"_s + couple + u"B"_s));
    window.press(Qt::Key_End);
    QCOMPARE(window.position(), 9);
    QVERIFY(!window.item->textCursor().hasSelection());
    window.press(Qt::Key_Home);
    QCOMPARE(window.position(), 0);
}

void tst_VerticalTextEditing::mouseSelectsWholeCharacters()
{
    Window window;
    QVERIFY(window.isReady());
    window.start(u"AXYB"_s, 0);
    // From the right half of the second character to the left half of the last.
    const QRectF bounds = window.item->boundingRect();
    const double line = bounds.height() / 4;
    window.drag({ bounds.center().x() + 12, 1.5 * line }, { bounds.center().x() - 12, 3.5 * line });
    window.press(Qt::Key_C, Qt::ControlModifier);
    QCOMPARE(Clipboard::text(), u"Y"_s);
    window.write(u"Z"_s);
    QCOMPARE(window.text(), u"A\nX\nZ\nB"_s);
}

void tst_VerticalTextEditing::keysThatChangeNothingTellNothing()
{
    Window window;
    QVERIFY(window.isReady());
    window.start(u"AB"_s, 0);
    const QSignalSpy changes(window.item, &TextItem::textItemHasChanged);
    window.press(Qt::Key_Backspace);
    window.press(Qt::Key_End);
    window.press(Qt::Key_Delete);
    // Only the line break.
    window.item->startSelectedEdit(1, 2);
    window.press(Qt::Key_X, Qt::ControlModifier);
    QCOMPARE(window.text(), u"A\nB"_s);
    QCOMPARE(Clipboard::text(), u"untouched"_s);
    QCOMPARE(changes.count(), 0);
    QVERIFY(!window.item->document()->isUndoAvailable());
}

void tst_VerticalTextEditing::pastedTextIsStacked_data()
{
    QTest::addColumn<QString>("pasted");
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("position");

    QTest::newRow("letters") << u"AB"_s << u"T\nA\nB\nE\nX\nT"_s << 6;
    QTest::newRow("line breaks and a tab") << u"a\tb\r\nc\n"_s << u"T\na\n \nb\nc\nE\nX\nT"_s << 10;
    QTest::newRow("spaces are kept") << u" a  "_s << u"T\n \na\n \n \nE\nX\nT"_s << 10;
    QTest::newRow("surrogates and marks")
        << QString(face + accented) << QString(u"T\n"_s + face + u"\n"_s + accented + u"\nE\nX\nT"_s) << 8;
    QTest::newRow("line and paragraph separators")
        << u"a\u2028b\u2029"_s << u"T\na\n \nb\n \nE\nX\nT"_s << 10;
    QTest::newRow("mark joins") << mark << u"T\u0301\nE\nX\nT"_s << 3;
    QTest::newRow("joined emoji") << couple << QString(u"T\n"_s + couple + u"\nE\nX\nT"_s) << 8;
    QTest::newRow("line breaks only") << u"\n\r\n"_s << u"T\nE\nX\nT"_s << 2;
}

void tst_VerticalTextEditing::pastedTextIsStacked()
{
    QFETCH(const QString, pasted);
    QFETCH(const QString, text);
    QFETCH(const int, position);
    Window window;
    QVERIFY(window.isReady());
    window.start(u"TEXT"_s, 2);
    Clipboard::set(pasted);
    window.press(Qt::Key_V, Qt::ControlModifier);
    QCOMPARE(window.text(), text);
    QCOMPARE(window.position(), position);
    QCOMPARE(window.item->getItemSize(), LabelTexts::naturalSize(text));
}

void tst_VerticalTextEditing::selectionIsCopiedHorizontally_data()
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

void tst_VerticalTextEditing::selectionIsCopiedHorizontally()
{
    QFETCH(const int, from);
    QFETCH(const int, to);
    QFETCH(const QString, copied);
    Window window;
    QVERIFY(window.isReady());
    window.start(u"A "_s + face + u"B"_s, 0);
    window.item->startSelectedEdit(from, to);
    window.press(Qt::Key_C, Qt::ControlModifier);
    QCOMPARE(Clipboard::text(), copied);
    QCOMPARE(window.text(), u"A\n \n"_s + face + u"\nB"_s);
}

void tst_VerticalTextEditing::selectionIsCut_data()
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

void tst_VerticalTextEditing::selectionIsCut()
{
    QFETCH(const int, from);
    QFETCH(const int, to);
    QFETCH(const QString, copied);
    QFETCH(const QString, left);
    Window window;
    QVERIFY(window.isReady());
    window.start(u"TEXT"_s, 0);
    window.item->startSelectedEdit(from, to);
    window.press(Qt::Key_X, Qt::ControlModifier);
    QCOMPARE(Clipboard::text(), copied);
    QCOMPARE(window.text(), left);
    QCOMPARE(window.item->getItemSize(), LabelTexts::naturalSize(left));
}

void tst_VerticalTextEditing::typingIsUndone()
{
    Window window;
    QVERIFY(window.isReady());
    window.start(u"TEXT"_s, 2);
    window.type(u"A"_s);
    window.undo();
    QCOMPARE(window.text(), u"T\nE\nX\nT"_s);
    QCOMPARE(window.item->getItemSize(), LabelTexts::naturalSize(u"T\nE\nX\nT"_s));
    window.redo();
    QCOMPARE(window.text(), u"T\nA\nE\nX\nT"_s);
}

void tst_VerticalTextEditing::undoingLeadsTheCursorToTheChange()
{
    Window window;
    QVERIFY(window.isReady());
    window.start(u"TEXT"_s, 2);
    window.write(u"AB"_s);
    window.press(Qt::Key_End);
    window.undo();
    QCOMPARE(window.text(), u"T\nA\nE\nX\nT"_s);
    QCOMPARE(window.position(), 4);
    window.undo();
    QCOMPARE(window.text(), u"T\nE\nX\nT"_s);
    QCOMPARE(window.position(), 2);
    window.redo();
    window.redo();
    QCOMPARE(window.text(), u"T\nA\nB\nE\nX\nT"_s);
    QCOMPARE(window.position(), 6);
}

void tst_VerticalTextEditing::surrogatesAreReplacedTogether_data()
{
    QTest::addColumn<QString>("before");
    QTest::addColumn<QString>("typed");
    QTest::newRow("equal first") << u"\U0001F600"_s << u"\U0001F601"_s;
    QTest::newRow("equal second") << u"\U0001F600"_s << u"\U0001FA00"_s;
}

void tst_VerticalTextEditing::surrogatesAreReplacedTogether()
{
    QFETCH(const QString, before);
    QFETCH(const QString, typed);
    Window window;
    QVERIFY(window.isReady());
    window.start(u"A"_s + before + u"B"_s, 2);
    window.press(Qt::Key_Down, Qt::ShiftModifier);
    const QSignalSpy changes(window.item->document(), &QTextDocument::contentsChange);
    window.type(typed);
    QCOMPARE(window.text(), QString(u"A\n"_s + typed + u"\nB"_s));
    QCOMPARE(changes.count(), 1);
    QCOMPARE(changes.first(), QVariantList({ 2, 2, 2 }));
}

void tst_VerticalTextEditing::cursorStaysBeforeItsCharacter()
{
    Window window;
    QVERIFY(window.isReady());
    window.start(u"AB"_s, 2);
    QTextCursor(window.item->document()).insertText(u"XY"_s);
    QCOMPARE(window.text(), u"X\nY\nA\nB"_s);
    QCOMPARE(window.position(), 6);
    window.write(u"C"_s);
    QCOMPARE(window.text(), u"X\nY\nA\nC\nB"_s);
}

void tst_VerticalTextEditing::unstackedTextIsStackedByTheFirstKey()
{
    // Documents may hold such lines.
    SimpleTextItem source;
    source.setTextVertical(true);
    {
        const QSignalBlocker quiet(source.document());
        source.document()->setPlainText(u"AB\n\nC"_s);
    }
    Window window;
    QVERIFY(window.isReady());
    ItemRecords::load(*window.item, ItemRecords::saved(source));
    QCOMPARE(window.text(), u"AB\n\nC"_s);
    window.item->startEdit(5);
    window.write(u"D"_s);
    QCOMPARE(window.text(), u"A\nB\n \nC\nD"_s);
    QCOMPARE(window.position(), 9);
    window.undo();
    QCOMPARE(window.text(), u"AB\n\nC"_s);
    window.redo();
    QCOMPARE(window.text(), u"A\nB\n \nC\nD"_s);
}

void tst_VerticalTextEditing::textThatIsSetIsStacked_data()
{
    QTest::addColumn<QString>("set");
    QTest::addColumn<QString>("text");

    QTest::newRow("word") << u"ABC"_s << u"A\nB\nC"_s;
    QTest::newRow("stacked") << u"A\nB"_s << u"A\nB"_s;
    QTest::newRow("mark on its own line") << u"e\n\u0301"_s << accented;
    QTest::newRow("nothing") << QString() << QString();
    QTest::newRow("spaces") << u" A  B "_s << u" \nA\n \n \nB\n "_s;
}

void tst_VerticalTextEditing::textThatIsSetIsStacked()
{
    QFETCH(const QString, set);
    QFETCH(const QString, text);
    SimpleTextItem label;
    label.setTextVertical(true);
    label.setItemText(set);
    QCOMPARE(label.toPlainText(), text);
    QVERIFY(!label.document()->isUndoAvailable());
    QCOMPARE(label.getItemSize(), LabelTexts::naturalSize(text));
}

void tst_VerticalTextEditing::dataCannotBeUndone()
{
    Window window;
    QVERIFY(window.isReady());
    window.start(u"TEXT"_s, 0);
    window.write(u"A"_s);
    window.item->setItemData(u"data"_s);
    QCOMPARE(window.text(), u"d\na\nt\na"_s);
    window.undo();
    QCOMPARE(window.text(), u"d\na\nt\na"_s);
    window.redo();
    QCOMPARE(window.text(), u"d\na\nt\na"_s);
}

void tst_VerticalTextEditing::escapeEndsEditing()
{
    Window window;
    QVERIFY(window.isReady());
    window.start(u"AB"_s, 0);
    window.write(u"C"_s);
    window.press(Qt::Key_Escape);
    QVERIFY(!window.item->isInEditing());
    QCOMPARE(int(window.item->flags()), 0x107);
    QCOMPARE(window.text(), u"C\nA\nB"_s);
}

QTEST_MAIN(tst_VerticalTextEditing)
#include "tst_verticaltextediting.moc"
