// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "label/problem.h"

#include <QHash>
#include <QList>
#include <QString>
#include <QStringList>

/// Rows that fail for the same reason: a person is told of the first ones, and at the end of the others
/// together. Reasons are the same if they differ in nothing but the values that they quote.
class RepeatedFailures
{
public:
    /// Whether this failure is one of the first of its kind, and to be told at once. Rows are numbered from
    /// 1, and may come in any order.
    [[nodiscard]] bool isToBeTold(qint64 row, const QString &reason);

    /// A problem for each kind of which not all was told, in the order in which they came.
    [[nodiscard]] Problems rest() const;

private:
    struct Kind
    {
        qint64 firstRow = 0;
        qint64 count = 0; ///< of all rows
        QList<qint64> rows; ///< the first of those that were not told
    };

    [[nodiscard]] static QString rowsOf(const Kind &kind);

    QHash<QString, Kind> m_kinds;
    QStringList m_order; ///< of the kinds
};
