// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "items/text/verticaltext.h"

#include <QStringList>
#include <QTextCursor>

class QKeyEvent;

/// What a user does to a vertical text, by whole characters: each keeps a line of its own. For the moment of
/// one edit; the item takes the cursor over afterwards.
class VerticalEditing
{
public:
    explicit VerticalEditing(const QTextCursor &cursor);

    const QTextCursor &cursor() const { return m_cursor; }
    /// In horizontal form; the line breaks between characters are none themselves.
    [[nodiscard]] QString selectedText() const;
    /// Whether the key means something of its own to vertical text, which then has happened.
    bool press(const QKeyEvent &event);
    /// Puts horizontal text in the place of the selection. Its characters join those around them where they
    /// make one with them, like a mark with the letter before it.
    void insert(const QString &horizontal);
    /// Gives each character a line of its own again, as a part of the edit that took it.
    void restack();

private:
    int indexAt(int position) const { return VerticalText::indexAt(m_text, position); }
    void moveTo(int index, bool select);
    void replace(int from, int to, const QString &horizontal);
    void show(const QStringList &characters);

    QTextCursor m_cursor;
    QString m_text;
    QStringList m_characters;
};
