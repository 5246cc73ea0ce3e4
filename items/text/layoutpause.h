// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QTextDocument>

/// Has a document laid out once at the end instead of after each of several changes; may nest. Sizes and
/// places of its text are not to be asked for in between.
class [[nodiscard]] LayoutPause
{
public:
    explicit LayoutPause(QTextDocument &document)
        : m_document(document)
        , m_laidOut(document.isLayoutEnabled())
    {
        m_document.setLayoutEnabled(false);
    }
    ~LayoutPause() { m_document.setLayoutEnabled(m_laidOut); }
    Q_DISABLE_COPY_MOVE(LayoutPause)

private:
    QTextDocument &m_document;
    bool m_laidOut;
};
