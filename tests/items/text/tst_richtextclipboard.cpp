// SPDX-License-Identifier: BSD-3-Clause
#include "tests/support/colours.h"
#include "tests/support/richtextwindow.h"

#include <QClipboard>
#include <QFont>
#include <QGuiApplication>
#include <QImage>
#include <QMimeData>
#include <QRegularExpression>
#include <QTest>
#include <QTextDocument>

using namespace Qt::StringLiterals;

using Window = RichTextWindow;

/// What rich texts take from the clipboard and put there.
class tst_RichTextClipboard : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { QFont::insertSubstitution(u"_Fen Loma"_s, u"Loma"_s); }
    void init()
    {
        QTest::failOnWarning(QRegularExpression(u".*"_s));
        Clipboard::set(u"untouched"_s);
    }

    void copyIsRichAndPlain();
    void cutRemovesTheSelection();
    void clipboardNeedsASelection();
    void pasteKeepsTheFormats();
    void plainPasteTakesTheFormatOfTheCursor();
    void refusedHtmlIsPastedAsPlainText_data();
    void refusedHtmlIsPastedAsPlainText();
    void pasteOfNothingKeepsTheSelection();
};

void tst_RichTextClipboard::copyIsRichAndPlain()
{
    Window window;
    QVERIFY(window.isReady());
    window.item->setItemHtml(u"a<i>bc</i>d"_s);
    window.item->startEdit(1);
    window.press(Qt::Key_Right, Qt::ShiftModifier, 2);
    window.copy();
    QCOMPARE(Clipboard::text(), u"bc"_s);
    QTextDocument copied;
    copied.setHtml(QGuiApplication::clipboard()->mimeData()->html());
    QCOMPARE(copied.toPlainText(), u"bc"_s);
    QTextCursor cursor(&copied);
    cursor.setPosition(1);
    QVERIFY(cursor.charFormat().fontItalic());
    QCOMPARE(window.text(), u"abcd"_s);
}

void tst_RichTextClipboard::cutRemovesTheSelection()
{
    Window window;
    QVERIFY(window.isReady());
    window.start(u"ABCD"_s);
    window.drag(window.placeOf(1), window.placeOf(3));
    window.cut();
    QCOMPARE(Clipboard::text(), u"BC"_s);
    QCOMPARE(window.text(), u"AD"_s);
    QCOMPARE(window.position(), 1);
    window.press(Qt::Key_A, Qt::ControlModifier);
    window.cut();
    QVERIFY(window.item->getDocumentIsEmpty());
    window.paste();
    QCOMPARE(window.text(), u"AD"_s);
    QVERIFY(!window.item->getDocumentIsEmpty());
}

void tst_RichTextClipboard::clipboardNeedsASelection()
{
    Window window;
    QVERIFY(window.isReady());
    window.start(u"text"_s);
    window.copy();
    window.cut();
    QCOMPARE(Clipboard::text(), u"untouched"_s);
    QCOMPARE(window.text(), u"text"_s);
}

void tst_RichTextClipboard::pasteKeepsTheFormats()
{
    Window window;
    QVERIFY(window.isReady());
    window.start(u"abcd"_s);
    window.press(Qt::Key_Right, Qt::ShiftModifier, 2);
    window.item->setItemFontSize(40);
    window.item->setItemItalic(true);
    window.item->setItemTextColor(Colours::red);
    window.copy();
    window.press(Qt::Key_End);
    window.paste();
    QCOMPARE(window.text(), u"abcdab"_s);
    QCOMPARE(window.position(), 6);
    for (const int i : { 0, 1, 4, 5 }) {
        QVERIFY(isAbout(window.pixelSize(i), 40));
        QVERIFY(window.format(i).fontItalic());
        QVERIFY(window.format(i).font().bold());
        QCOMPARE(window.format(i).foreground().color(), Colours::red);
    }
    QVERIFY(isAbout(window.pixelSize(2), 20));
}

void tst_RichTextClipboard::plainPasteTakesTheFormatOfTheCursor()
{
    Window window;
    QVERIFY(window.isReady());
    window.start(u"ab"_s);
    window.press(Qt::Key_Right, Qt::ShiftModifier);
    window.item->setItemFontSize(40);
    Clipboard::set(u"x\ny"_s);
    window.paste();
    QCOMPARE(window.text(), u"x\nyb"_s);
    QVERIFY(isAbout(window.pixelSize(0), 40));
    QVERIFY(isAbout(window.pixelSize(2), 40));
    QVERIFY(isAbout(window.pixelSize(3), 20));
}

void tst_RichTextClipboard::refusedHtmlIsPastedAsPlainText_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("pasted");

    QTest::newRow("with text") << u"<b>the text</b>"_s << u"<b>the text</b>"_s;
    QTest::newRow("without") << QString() << u"deep"_s;
}

void tst_RichTextClipboard::refusedHtmlIsPastedAsPlainText()
{
    QFETCH(const QString, text);
    QFETCH(const QString, pasted);
    Window window;
    QVERIFY(window.isReady());
    window.item->startEdit(0);
    Clipboard::setHtml(u"<table><tr><td>"_s.repeated(5000) + u"deep"_s, text);
    window.paste();
    QCOMPARE(window.text().trimmed(), pasted);
    QVERIFY(isAbout(window.pixelSize(0), 20));
}

void tst_RichTextClipboard::pasteOfNothingKeepsTheSelection()
{
    Window window;
    QVERIFY(window.isReady());
    window.item->setItemText(u"text"_s);
    window.item->selectOnStart();
    QGuiApplication::clipboard()->setImage(QImage(2, 2, QImage::Format_RGB32));
    window.paste();
    QGuiApplication::clipboard()->clear();
    window.paste();
    QCOMPARE(window.selected(), u"text"_s);
}

QTEST_MAIN(tst_RichTextClipboard)
#include "tst_richtextclipboard.moc"
