// SPDX-License-Identifier: BSD-3-Clause
#include "tests/support/richtextwindow.h"

#include <QFont>
#include <QRegularExpression>
#include <QTest>
#include <QTextBlock>

using namespace Qt::StringLiterals;

using Window = RichTextWindow;

/// Undoing and redoing in rich texts.
class tst_RichTextUndo : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { QFont::insertSubstitution(u"_Fen Loma"_s, u"Loma"_s); }
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    void undoneBoxHasTheFormatsOfThatTime();
    void typingIsUndoneAndRedone();
    void formatsAreUndoneAndRedone();
    void newBoxHasNothingToUndo();
    void firstTypingIsUndoneAndRedone();
    void dataCannotBeUndone();
};

void tst_RichTextUndo::undoneBoxHasTheFormatsOfThatTime()
{
    Window window;
    QVERIFY(window.isReady());
    window.item->startEdit(0);
    window.write(u"a"_s);
    window.item->setItemItalic(true);
    window.item->setItemAlignment(Qt::AlignRight);
    for (int i = 0; i < 3; ++i)
        window.undo();
    QVERIFY(window.item->getDocumentIsEmpty());
    QVERIFY(!window.item->getEmptyFontItalic());
    QCOMPARE(window.item->getEmptyAlignment(), int(Qt::AlignLeft));
    for (int i = 0; i < 3; ++i)
        window.redo();
    QCOMPARE(window.text(), u"a"_s);
    QVERIFY(window.format(0).fontItalic());
    QCOMPARE(window.item->getItemAlignment(), Qt::AlignRight);
}

void tst_RichTextUndo::typingIsUndoneAndRedone()
{
    Window window;
    QVERIFY(window.isReady());
    window.start(u"cd"_s);
    window.write(u"ab"_s);
    window.press(Qt::Key_Delete);
    QCOMPARE(window.text(), u"abd"_s);
    window.undo();
    QCOMPARE(window.text(), u"abcd"_s);
    window.undo();
    QCOMPARE(window.text(), u"cd"_s);
    window.redo();
    QCOMPARE(window.text(), u"abcd"_s);
    window.redo();
    QCOMPARE(window.text(), u"abd"_s);
}

void tst_RichTextUndo::formatsAreUndoneAndRedone()
{
    Window window;
    QVERIFY(window.isReady());
    window.start(u"abc"_s);
    window.press(Qt::Key_Right, Qt::ShiftModifier);
    window.item->setItemFontSize(40);
    QVERIFY(isAbout(window.pixelSize(0), 40));
    window.undo();
    QVERIFY(isAbout(window.pixelSize(0), 20));
    window.redo();
    QVERIFY(isAbout(window.pixelSize(0), 40));
    QVERIFY(isAbout(window.pixelSize(1), 20));
}

void tst_RichTextUndo::newBoxHasNothingToUndo()
{
    Window window;
    QVERIFY(window.isReady());
    window.item->setItemItalic(true);
    window.item->setItemAlignment(Qt::AlignRight);
    window.doubleClick(QPointF(10, 10));
    window.undo();
    window.write(u"a"_s);
    QVERIFY(isAbout(window.pixelSize(0), 20));
    QVERIFY(window.format(0).fontItalic());
    QCOMPARE(
        window.item->document()->firstBlock().blockFormat().alignment(), Qt::AlignRight | Qt::AlignAbsolute);
}

void tst_RichTextUndo::firstTypingIsUndoneAndRedone()
{
    Window window;
    QVERIFY(window.isReady());
    window.item->setItemItalic(true);
    window.item->startEdit(0);
    window.write(u"ab"_s);
    window.undo();
    QVERIFY(window.item->getDocumentIsEmpty());
    QCOMPARE(window.text(), QString());
    window.redo();
    QCOMPARE(window.text(), u"ab"_s);
    QVERIFY(!window.item->getDocumentIsEmpty());
    QVERIFY(isAbout(window.pixelSize(0), 20));
    window.undo();
    window.write(u"c"_s);
    QVERIFY(isAbout(window.pixelSize(0), 20));
    QVERIFY(window.format(0).fontItalic());
    QVERIFY(window.format(0).font().bold());
}

void tst_RichTextUndo::dataCannotBeUndone()
{
    const QString marker = u"!!!###VXFUNCTIONDATASOURCE###!!!"_s;
    Window window;
    QVERIFY(window.isReady());
    window.start(u"text"_s);
    for (const QString &data : { u"plain"_s, QString(marker + u"<i>rich</i>"_s) }) {
        window.write(u"a"_s);
        window.item->setItemData(data);
        const QString shown = window.text();
        QVERIFY(!window.item->document()->isUndoAvailable());
        window.undo();
        QCOMPARE(window.text(), shown);
        window.redo();
        QCOMPARE(window.text(), shown);
    }
    QCOMPARE(window.text(), u"rich"_s);
}

QTEST_MAIN(tst_RichTextUndo)
#include "tst_richtextundo.moc"
