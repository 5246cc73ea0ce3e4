// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QKeySequence>
#include <QMenu>

#include <functional>

class TextItem;

/// The commands of a text that is being edited. Qt's own menu pastes and copies past the item: rich text into
/// labels, HTML that nobody has checked, and the line breaks between the characters of vertical texts.
class TextMenu : public QMenu
{
    Q_OBJECT

public:
    TextMenu(TextItem &item, QWidget *parent);

private:
    void addHistory();
    void addClipboard();
    void addCommand(
        const QString &text, QKeySequence::StandardKey key, bool isEnabled, const std::function<void()> &run);

    TextItem &m_item;
};
