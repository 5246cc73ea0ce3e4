// SPDX-License-Identifier: BSD-3-Clause
#include "items/text/verticalediting.h"

#include <QKeyEvent>
#include <QTextDocument>

#include <algorithm>

namespace {

/// Whether a key writes a character; the few others that Qt takes too are stacked afterwards.
bool writes(const QKeyEvent &event)
{
    // Control and Alt together are the third level of some keyboards.
    const bool isCommand = (event.modifiers() & ~Qt::ShiftModifier) == Qt::ControlModifier;
    if (isCommand || event.text().isEmpty())
        return false;
    const QChar first = event.text().front();
    return first.isPrint() || first.isHighSurrogate() || first == u'\t';
}

// Neither of the two tears a pair of surrogates.
qsizetype commonStart(QStringView a, QStringView b)
{
    const auto differing = std::mismatch(a.begin(), a.end(), b.begin(), b.end()).first;
    qsizetype length = differing - a.begin();
    while (length > 0 && a[length - 1].isHighSurrogate())
        --length;
    return length;
}

qsizetype commonEnd(QStringView a, QStringView b)
{
    const auto differing = std::mismatch(a.rbegin(), a.rend(), b.rbegin(), b.rend()).first;
    qsizetype length = differing - a.rbegin();
    while (length > 0 && a[a.size() - length].isLowSurrogate())
        --length;
    return length;
}

} // namespace

VerticalEditing::VerticalEditing(const QTextCursor &cursor)
    : m_cursor(cursor)
    , m_text(cursor.document()->toPlainText())
    , m_characters(m_text.isEmpty() ? QStringList() : VerticalText::charactersIn(m_text))
{
}

QString VerticalEditing::selectedText() const
{
    const int from = indexAt(m_cursor.selectionStart());
    return m_characters.sliced(from, indexAt(m_cursor.selectionEnd()) - from).join(QString());
}

bool VerticalEditing::press(const QKeyEvent &event)
{
    const int count = int(m_characters.size());
    const int here = indexAt(m_cursor.position());
    const bool select = event.modifiers() & Qt::ShiftModifier;
    switch (event.key()) {
    case Qt::Key_Left:
    case Qt::Key_Up:
        moveTo(here - 1, select);
        return true;
    case Qt::Key_Right:
    case Qt::Key_Down:
        moveTo(here + 1, select);
        return true;
    case Qt::Key_Home:
        moveTo(0, select);
        return true;
    case Qt::Key_End:
        moveTo(count, select);
        return true;
    case Qt::Key_Backspace:
    case Qt::Key_Delete:
        if (!m_cursor.hasSelection())
            moveTo(event.key() == Qt::Key_Delete ? here + 1 : here - 1, true);
        insert(QString());
        return true;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        insert(QStringLiteral(" "));
        return true;
    default:
        if (!writes(event))
            return false;
        insert(event.text());
        return true;
    }
}

void VerticalEditing::moveTo(int index, bool select)
{
    const int position = VerticalText::positionOf(m_text, std::clamp(index, 0, int(m_characters.size())));
    m_cursor.setPosition(position, select ? QTextCursor::KeepAnchor : QTextCursor::MoveAnchor);
}

void VerticalEditing::insert(const QString &horizontal)
{
    replace(indexAt(m_cursor.selectionStart()), indexAt(m_cursor.selectionEnd()), horizontal);
}

void VerticalEditing::replace(int from, int to, const QString &horizontal)
{
    const QString before = m_characters.first(from).join(QString()) + VerticalText::onOneLine(horizontal);
    const QString behind = m_characters.sliced(to).join(QString());
    show(VerticalText::charactersOf(before + behind));
    moveTo(int(VerticalText::charactersOf(before).size()), false);
}

void VerticalEditing::restack()
{
    const QStringList characters = VerticalText::charactersOf(m_characters.join(QString()));
    if (characters == m_characters)
        return;
    const QString text = m_text.first(m_cursor.position());
    QStringList before = VerticalText::charactersIn(text);
    if (text.isEmpty() || text.endsWith(u'\n'))
        before.removeLast();
    m_cursor.joinPreviousEditBlock();
    show(characters);
    m_cursor.endEditBlock();
    moveTo(int(VerticalText::charactersOf(before.join(QString())).size()), false);
}

void VerticalEditing::show(const QStringList &characters)
{
    const QString text = VerticalText::stacked(characters);
    // Only what differs, so that undoing leads the cursor there.
    const qsizetype start = commonStart(m_text, text);
    const qsizetype end = commonEnd(QStringView(m_text).sliced(start), QStringView(text).sliced(start));
    m_cursor.setPosition(int(start));
    m_cursor.setPosition(int(m_text.size() - end), QTextCursor::KeepAnchor);
    m_cursor.insertText(text.sliced(start, text.size() - end - start));
    m_text = text;
    m_characters = characters;
}
