// SPDX-License-Identifier: BSD-3-Clause
#include "apps/vxlabel/repeatedfailures.h"

#include <QRegularExpression>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

constexpr qint64 mostTold = 5; ///< of a kind
constexpr qsizetype mostRanges = 10; ///< as many as a person reads
constexpr qsizetype mostRows = 1000; ///< that are kept to make them
constexpr qsizetype mostKinds = 100; ///< what comes behind is told row by row

/// The reason without the values that it quotes.
QString kindOf(QString reason)
{
    static const QRegularExpression quoted(u"\"[^\"]*\""_s);
    return reason.replace(quoted, u"\"…\""_s);
}

} // namespace

bool RepeatedFailures::isToBeTold(qint64 row, const QString &reason)
{
    const QString name = kindOf(reason);
    if (!m_kinds.contains(name)) {
        if (m_order.size() == mostKinds)
            return true;
        m_order.append(name);
        m_kinds.insert(name, { row, 0, {} });
    }
    Kind &kind = m_kinds[name];
    if (++kind.count <= mostTold)
        return true;
    if (kind.rows.size() < mostRows)
        kind.rows.append(row);
    return false;
}

/// "6, 9-12, 30, …"
QString RepeatedFailures::rowsOf(const Kind &kind)
{
    QList<qint64> rows = kind.rows;
    std::ranges::sort(rows);
    QStringList ranges;
    qsizetype shown = 0;
    while (shown < rows.size() && ranges.size() < mostRanges) {
        const qint64 first = rows[shown];
        qint64 last = first;
        while (++shown < rows.size() && rows[shown] == last + 1)
            ++last;
        ranges.append(first == last ? QString::number(first) : u"%1-%2"_s.arg(first).arg(last));
    }
    if (shown < kind.count - mostTold)
        ranges.append(u"…"_s);
    return ranges.join(u", "_s);
}

Problems RepeatedFailures::rest() const
{
    Problems problems;
    for (const QString &name : m_order) {
        const Kind &kind = m_kinds[name];
        const qint64 more = kind.count - mostTold;
        if (more <= 0)
            continue;
        const QString like = u"like row %1: %2"_s.arg(QString::number(kind.firstRow), name);
        problems.append({ {}, (more == 1 ? u"row "_s : u"rows "_s) + rowsOf(kind),
            (more == 1 ? u"fails "_s : u"%1 more fail "_s.arg(more)) + like, u"the manifest tells each"_s });
    }
    return problems;
}
