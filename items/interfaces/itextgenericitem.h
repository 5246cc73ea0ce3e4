// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "items/core/vxexport.h"

#include <QString>

class QKeyEvent;

/// Editing and content, common to all text items.
class VX_EXPORT ITextGenericItem
{
public:
    virtual ~ITextGenericItem();

    virtual void startEdit(int position) = 0;
    virtual void startSelectedEdit(int anchor, int position) = 0;
    virtual void setCursorPosition(int position, bool keepAnchor) = 0;
    virtual void endEdit() = 0;
    virtual QString getItemText() const = 0;
    virtual QString itemHtml() const = 0;
    virtual void textPaste() = 0;
    virtual void keyPressEvent1(QKeyEvent *event) = 0;
    virtual void setItemText(const QString &text) = 0;
    virtual void setItemHtml(const QString &html) = 0;
};
