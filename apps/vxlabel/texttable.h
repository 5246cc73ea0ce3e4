// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QList>
#include <QString>
#include <QStringList>

/// Rows of cells as text with aligned columns, two blanks apart.
class TextTable
{
public:
    /// Qt::AlignLeft or Qt::AlignRight for each column.
    explicit TextTable(const QList<Qt::AlignmentFlag> &columns)
        : m_columns(columns)
    {
    }

    /// As many cells as there are columns. They may come from anywhere: control characters are shown, and do
    /// nothing.
    void addRow(const QStringList &cells);
    /// Each row as a line, without blanks at its end.
    [[nodiscard]] QString text() const;

private:
    [[nodiscard]] QList<qsizetype> widths() const;

    QList<Qt::AlignmentFlag> m_columns;
    QList<QStringList> m_rows;
};
