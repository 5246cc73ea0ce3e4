// SPDX-License-Identifier: BSD-3-Clause
#include "label/nearestname.h"

#include <algorithm>
#include <numeric>
#include <utility>
#include <vector>

namespace {

constexpr qsizetype farthest = 2;

/// How many letters have to be inserted, removed, replaced or swapped with their neighbour to make one text
/// of the other.
qsizetype distance(const QString &from, const QString &to)
{
    std::vector<qsizetype> row(to.size() + 1);
    std::iota(row.begin(), row.end(), 0);
    std::vector<qsizetype> above = row;
    std::vector<qsizetype> aboveThat;
    for (qsizetype i = 0; i < from.size(); ++i) {
        aboveThat = std::exchange(above, row);
        row[0] = i + 1;
        for (qsizetype j = 0; j < to.size(); ++j) {
            const qsizetype replaced = above[j] + (from[i] == to[j] ? 0 : 1);
            row[j + 1] = std::min({ replaced, row[j] + 1, above[j + 1] + 1 });
            if (i > 0 && j > 0 && from[i] == to[j - 1] && from[i - 1] == to[j])
                row[j + 1] = std::min(row[j + 1], aboveThat[j - 1] + 1);
        }
    }
    return row.back();
}

/// Most names of properties begin with a word that is easily left out, or put where it does not belong.
bool differByPrefix(const QString &left, const QString &right)
{
    const QString prefix = QStringLiteral("item");
    return left.compare(prefix + right, Qt::CaseInsensitive) == 0
        || right.compare(prefix + left, Qt::CaseInsensitive) == 0;
}

} // namespace

QString nearestName(const QString &mistyped, const QStringList &names)
{
    QString nearest;
    qsizetype least = farthest + 1;
    for (const QString &name : names) {
        if (differByPrefix(mistyped, name))
            return name;
        if (qAbs(name.size() - mistyped.size()) > farthest)
            continue;
        const qsizetype away = distance(mistyped.toCaseFolded(), name.toCaseFolded());
        if (away < least) {
            least = away;
            nearest = name;
        }
    }
    return nearest;
}
