// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "items/text/richtextitem.h"
#include "tests/support/textwindow.h"

#include <QTextCharFormat>

/// A box that shows its rectangles.
class OpenText : public RichTextItem
{
public:
    using RichTextItem::getReferenceRectangle;
    using RichTextItem::getReferenceRectangleEdit;
};

/// A box of 400 × 200 in which letters are 20 pixels high.
class RichTextWindow : public TextWindow<OpenText>
{
public:
    RichTextWindow()
    {
        item->setItemSize(QSizeF(400, 200));
        item->setItemFontSize(20);
    }

    void start(const QString &text)
    {
        item->setItemText(text);
        item->startEdit(0);
    }
    void copy() { press(Qt::Key_C, Qt::ControlModifier); }
    void cut() { press(Qt::Key_X, Qt::ControlModifier); }
    void paste() { press(Qt::Key_V, Qt::ControlModifier); }
    [[nodiscard]] QTextCharFormat format(int position) const
    {
        QTextCursor cursor(item->document());
        cursor.setPosition(position + 1);
        return cursor.charFormat();
    }
    [[nodiscard]] double pixelSize(int position) const
    {
        return format(position).fontPointSize() * item->getScreenDpi();
    }
};

[[nodiscard]] inline bool isAbout(double actual, double expected)
{
    return qAbs(actual - expected) < 0.01;
}
