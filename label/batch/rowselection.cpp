// SPDX-License-Identifier: BSD-3-Clause
#include "label/batch/rowselection.h"

#include "label/wording.h"

#include <QRegularExpression>

#include <algorithm>
#include <limits>
#include <numeric>

using namespace Qt::StringLiterals;

namespace {

constexpr qint64 endless = std::numeric_limits<qint64>::max();

} // namespace

std::optional<RowSelection> RowSelection::parse(const QString &text, Problem &problem)
{
    static const QRegularExpression form(u"\\A([1-9][0-9]{0,17})(-([1-9][0-9]{0,17})?)?\\z"_s);
    std::vector<Range> ranges;
    for (const QString &part : text.split(u',')) {
        const QRegularExpressionMatch match = form.match(part.trimmed());
        const qint64 first = match.captured(1).toLongLong();
        const qint64 last = match.capturedLength(3) > 0 ? match.captured(3).toLongLong()
            : match.capturedLength(2) > 0               ? endless
                                                        : first;
        if (!match.hasMatch() || last < first) {
            problem = { {}, {}, Wording::quoted(part) + u" selects no rows"_s,
                u"write numbers from 1 and ranges, for example 3,10-20,100-"_s };
            return {};
        }
        ranges.emplace_back(first, last);
    }
    std::ranges::sort(ranges);
    RowSelection selection;
    for (const auto &[first, last] : ranges) {
        if (!selection.m_ranges.empty() && first <= selection.m_ranges.back().second)
            selection.m_ranges.back().second = std::max(selection.m_ranges.back().second, last);
        else
            selection.m_ranges.emplace_back(first, last);
    }
    return selection;
}

bool RowSelection::contains(qint64 row) const
{
    return m_ranges.empty() || std::ranges::any_of(m_ranges, [row](const Range &range) {
        return range.first <= row && row <= range.second;
    });
}

bool RowSelection::endsBefore(qint64 row) const
{
    return !m_ranges.empty() && m_ranges.back().second < row;
}

qint64 RowSelection::countOf(qint64 rows) const
{
    if (m_ranges.empty())
        return rows;
    return std::accumulate(
        m_ranges.begin(), m_ranges.end(), qint64(0), [rows](qint64 sum, const Range &range) {
            return sum + std::max<qint64>(std::min(range.second, rows) - range.first + 1, 0);
        });
}
