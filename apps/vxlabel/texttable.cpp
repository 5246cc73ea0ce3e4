// SPDX-License-Identifier: BSD-3-Clause
#include "apps/vxlabel/texttable.h"

#include "label/problem.h"

#include <algorithm>

using namespace Qt::StringLiterals;

void TextTable::addRow(const QStringList &cells)
{
    QStringList visible;
    for (const QString &cell : cells)
        visible.append(Problem::visible(cell));
    m_rows.append(visible);
}

QList<qsizetype> TextTable::widths() const
{
    QList<qsizetype> widths(m_columns.size(), 0);
    for (const QStringList &row : m_rows) {
        for (qsizetype column = 0; column < widths.size(); ++column)
            widths[column] = std::max(widths[column], row.value(column).size());
    }
    return widths;
}

QString TextTable::text() const
{
    const QList<qsizetype> wide = widths();
    QString text;
    for (const QStringList &row : m_rows) {
        QStringList cells;
        for (qsizetype column = 0; column < wide.size(); ++column) {
            const bool left = m_columns[column] == Qt::AlignLeft;
            cells.append(left ? row.value(column).leftJustified(wide[column])
                              : row.value(column).rightJustified(wide[column]));
        }
        QString line = cells.join("  "_L1);
        while (line.endsWith(u' '))
            line.chop(1);
        text += line + u'\n';
    }
    return text;
}
