// SPDX-License-Identifier: BSD-3-Clause
#include "label/nearestname.h"

#include <algorithm>
#include <numeric>
#include <vector>

namespace {

constexpr qsizetype farthest = 2;

/// How many letters have to be inserted, removed or replaced to make one text of the other.
qsizetype distance(const QString &from, const QString &to)
{
    std::vector<qsizetype> row(to.size() + 1);
    std::iota(row.begin(), row.end(), 0);
    for (const QChar letter : from) {
        qsizetype diagonal = row[0]++;
        for (qsizetype j = 0; j < to.size(); ++j) {
            const qsizetype replaced = diagonal + (letter == to[j] ? 0 : 1);
            diagonal = row[j + 1];
            row[j + 1] = std::min({ replaced, row[j] + 1, diagonal + 1 });
        }
    }
    return row.back();
}

} // namespace

QString nearestName(const QString &mistyped, const QStringList &names)
{
    QString nearest;
    qsizetype least = farthest + 1;
    for (const QString &name : names) {
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
