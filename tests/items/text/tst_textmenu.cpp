// SPDX-License-Identifier: BSD-3-Clause
#include "items/text/simpletextitem.h"
#include "tests/support/labeltexts.h"
#include "tests/support/richtextwindow.h"

#include <QApplication>
#include <QContextMenuEvent>
#include <QMenu>
#include <QPointer>
#include <QRegularExpression>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

/// A window whose item is clicked with the right button.
template <class Base> class MenuWindow : public Base
{
public:
    ~MenuWindow() { close(); }

    /// The menu that opens, or null.
    QMenu *open()
    {
        const QPoint pixel = Base::view.mapFromScene(Base::item->mapToScene(QPointF(15, 15)));
        QContextMenuEvent event(QContextMenuEvent::Mouse, pixel, Base::view.viewport()->mapToGlobal(pixel));
        QCoreApplication::sendEvent(Base::view.viewport(), &event);
        return qobject_cast<QMenu *>(QApplication::activePopupWidget());
    }
    /// Whether a command could be chosen.
    bool choose(QKeySequence::StandardKey key)
    {
        QMenu *menu = open();
        QAction *action = menu ? commandOf(*menu, key) : nullptr;
        const bool canChoose = action && action->isEnabled();
        if (canChoose)
            QTest::mouseClick(menu, Qt::LeftButton, Qt::NoModifier, menu->actionGeometry(action).center());
        close();
        return canChoose;
    }
    static QAction *commandOf(const QMenu &menu, QKeySequence::StandardKey key)
    {
        for (QAction *action : menu.actions()) {
            if (action->shortcut() == QKeySequence(key))
                return action;
        }
        return nullptr;
    }

private:
    static void close()
    {
        if (QWidget *popup = QApplication::activePopupWidget())
            popup->close();
    }
};

using LabelWindow = MenuWindow<TextWindow<SimpleTextItem>>;
using RichWindow = MenuWindow<RichTextWindow>;

} // namespace

/// The menu of a text that is being edited.
class tst_TextMenu : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { LabelTexts::useKnownFont(); }
    void init()
    {
        // The platform of the tests has no pop-up windows of its own.
        QTest::failOnWarning(QRegularExpression(u"^(?!This plugin does not support )"_s));
        Clipboard::set(u"pasted"_s);
    }

    void idleTextHasNone();
    void commandsThatWouldDoNothingAreOff();
    void commandsEditLabels();
    void commandsEditVerticalLabels();
    void commandsEditRichTexts();
    void labelsPasteNoFormats();
    void refusedHtmlIsPastedAsPlainText();
    void menuOutlivesItsText();
};

void tst_TextMenu::idleTextHasNone()
{
    LabelWindow window;
    QVERIFY(window.isReady());
    QVERIFY(!window.open());
    window.item->startEdit(0);
    QVERIFY(window.choose(QKeySequence::Paste));
    window.item->endEdit();
    QVERIFY(!window.open());
}

void tst_TextMenu::commandsThatWouldDoNothingAreOff()
{
    LabelWindow window;
    QVERIFY(window.isReady());
    window.item->startEdit(0);
    for (const auto key : { QKeySequence::Undo, QKeySequence::Redo, QKeySequence::Cut, QKeySequence::Copy,
             QKeySequence::Delete })
        QVERIFY(!window.choose(key));
    QGuiApplication::clipboard()->clear();
    QVERIFY(!window.choose(QKeySequence::Paste));
    QVERIFY(window.choose(QKeySequence::SelectAll));
    QVERIFY(window.choose(QKeySequence::Delete));
    QVERIFY(!window.choose(QKeySequence::SelectAll));
}

void tst_TextMenu::commandsEditLabels()
{
    LabelWindow window;
    QVERIFY(window.isReady());
    window.item->startSelectedEdit(1, 3);
    QVERIFY(window.choose(QKeySequence::Copy));
    QCOMPARE(Clipboard::text(), u"EX"_s);
    QVERIFY(window.choose(QKeySequence::Cut));
    QCOMPARE(window.text(), u"TT"_s);
    QVERIFY(window.choose(QKeySequence::Undo));
    QCOMPARE(window.text(), u"TEXT"_s);
    QVERIFY(window.choose(QKeySequence::Redo));
    QCOMPARE(window.text(), u"TT"_s);
    QCOMPARE(window.position(), 1);
    QVERIFY(window.choose(QKeySequence::Paste));
    QCOMPARE(window.text(), u"TEXT"_s);
    QVERIFY(window.choose(QKeySequence::SelectAll));
    QCOMPARE(window.selected(), u"TEXT"_s);
    QVERIFY(window.choose(QKeySequence::Delete));
    QVERIFY(window.item->getDocumentIsEmpty());
    QCOMPARE(window.item->getItemSize(), LabelTexts::naturalSize(QString()));
    QVERIFY(window.item->isInEditing());
}

void tst_TextMenu::commandsEditVerticalLabels()
{
    LabelWindow window;
    QVERIFY(window.isReady());
    window.item->setTextVertical(true);
    window.item->startSelectedEdit(2, 5);
    QVERIFY(window.choose(QKeySequence::Copy));
    QCOMPARE(Clipboard::text(), u"EX"_s);
    QVERIFY(window.choose(QKeySequence::Delete));
    QCOMPARE(window.text(), u"T\nT"_s);
    QVERIFY(window.choose(QKeySequence::Paste));
    QCOMPARE(window.text(), u"T\nE\nX\nT"_s);
}

void tst_TextMenu::commandsEditRichTexts()
{
    RichWindow window;
    QVERIFY(window.isReady());
    window.item->setItemHtml(u"a<i>bc</i>d"_s);
    window.item->startSelectedEdit(1, 3);
    QVERIFY(window.choose(QKeySequence::Cut));
    QCOMPARE(window.text(), u"ad"_s);
    window.press(Qt::Key_End);
    QVERIFY(window.choose(QKeySequence::Paste));
    QCOMPARE(window.text(), u"adbc"_s);
    QVERIFY(window.format(2).fontItalic());
    QVERIFY(!window.format(1).fontItalic());
}

void tst_TextMenu::labelsPasteNoFormats()
{
    LabelWindow window;
    QVERIFY(window.isReady());
    window.item->selectOnStart();
    Clipboard::setHtml(u"<i>rich</i>"_s, u"plain"_s);
    QVERIFY(window.choose(QKeySequence::Paste));
    QCOMPARE(window.text(), u"plain"_s);
    QVERIFY(!window.item->toHtml().contains(u"<span"_s));
}

void tst_TextMenu::refusedHtmlIsPastedAsPlainText()
{
    RichWindow window;
    QVERIFY(window.isReady());
    window.item->startEdit(0);
    Clipboard::setHtml(u"<table><tr><td>"_s.repeated(5000) + u"deep"_s);
    QVERIFY(window.choose(QKeySequence::Paste));
    QCOMPARE(window.text().trimmed(), u"deep"_s);
}

void tst_TextMenu::menuOutlivesItsText()
{
    LabelWindow window;
    QVERIFY(window.isReady());
    window.item->startEdit(0);
    const QPointer<QMenu> menu = window.open();
    QVERIFY(menu);
    delete window.item;
    QAction *paste = LabelWindow::commandOf(*menu, QKeySequence::Paste);
    QTest::mouseClick(menu, Qt::LeftButton, Qt::NoModifier, menu->actionGeometry(paste).center());
    QTRY_VERIFY(!menu);
}

QTEST_MAIN(tst_TextMenu)
#include "tst_textmenu.moc"
