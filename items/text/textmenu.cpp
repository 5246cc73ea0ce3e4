// SPDX-License-Identifier: BSD-3-Clause
#include "items/text/textmenu.h"

#include "items/text/textitem.h"

#include <QAction>
#include <QTextCursor>

namespace {

void moveInHistory(TextItem &item, void (QTextDocument::*step)(QTextCursor *))
{
    QTextCursor cursor = item.textCursor();
    (item.document()->*step)(&cursor);
    item.setTextCursor(cursor);
}

void selectAll(TextItem &item)
{
    QTextCursor cursor = item.textCursor();
    cursor.select(QTextCursor::Document);
    item.setTextCursor(cursor);
}

} // namespace

TextMenu::TextMenu(TextItem &item, QWidget *parent)
    : QMenu(parent)
    , m_item(item)
{
    setAttribute(Qt::WA_DeleteOnClose);
    addHistory();
    addSeparator();
    addClipboard();
    addSeparator();
    addCommand(
        tr("Select All"), QKeySequence::SelectAll, !item.document()->isEmpty(), [&item] { selectAll(item); });
}

void TextMenu::addHistory()
{
    const QTextDocument *document = m_item.document();
    addCommand(tr("&Undo"), QKeySequence::Undo, document->isUndoAvailable(),
        [this] { moveInHistory(m_item, &QTextDocument::undo); });
    addCommand(tr("&Redo"), QKeySequence::Redo, document->isRedoAvailable(),
        [this] { moveInHistory(m_item, &QTextDocument::redo); });
}

void TextMenu::addClipboard()
{
    const bool hasSelection = m_item.textCursor().hasSelection();
    addCommand(tr("Cu&t"), QKeySequence::Cut, hasSelection, [this] { m_item.textCut(); });
    addCommand(tr("&Copy"), QKeySequence::Copy, hasSelection, [this] { m_item.textCopy(); });
    addCommand(tr("&Paste"), QKeySequence::Paste, TextItem::canPaste(), [this] { m_item.textPaste(); });
    addCommand(tr("Delete"), QKeySequence::Delete, hasSelection, [this] { m_item.textDelete(); });
}

void TextMenu::addCommand(
    const QString &text, QKeySequence::StandardKey key, bool isEnabled, const std::function<void()> &run)
{
    QAction *action = addAction(text);
    action->setShortcut(key);
    action->setEnabled(isEnabled);
    // The item may be gone by then.
    connect(action, &QAction::triggered, &m_item, run);
}
