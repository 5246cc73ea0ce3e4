// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "items/text/safetextdocument.h"

/// Has a document laid out once at the end instead of after each of several changes, and not at all when it
/// has become too high to be; may nest. Sizes and places of its text are not to be asked for in between.
class [[nodiscard]] LayoutPause
{
public:
    explicit LayoutPause(QTextDocument &document)
        : m_document(qobject_cast<SafeTextDocument *>(&document))
    {
        if (m_document)
            m_document->pauseLayout();
    }
    ~LayoutPause()
    {
        if (m_document)
            m_document->resumeLayout();
    }
    Q_DISABLE_COPY_MOVE(LayoutPause)

private:
    SafeTextDocument *m_document;
};
