// SPDX-License-Identifier: BSD-3-Clause
#include "label/batch/rowplan.h"

#include "label/data/columnnames.h"
#include "label/labellimits.h"
#include "label/wording.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

/// The place of a column; otherwise if it has no name. Nothing, with the reason in problems, if there is none
/// of this name.
std::optional<int> columnOf(
    const QString &name, const QStringList &columns, int otherwise, Problems &problems)
{
    if (name.isEmpty())
        return otherwise;
    const qsizetype column = columns.indexOf(name);
    if (column >= 0)
        return int(column);
    problems.append(ColumnNames::unknown(name, columns));
    return {};
}

} // namespace

RowPlan::RowPlan(const BatchOptions &options)
    : m_copiesName(options.copiesColumn)
{
}

std::unique_ptr<RowPlan> RowPlan::of(const BatchOptions &options, const QStringList &columns,
    const QList<Ink> &inks, bool countsLabels, Problems &problems)
{
    std::unique_ptr<RowPlan> plan(new RowPlan(options));
    const std::optional<int> key = columnOf(options.keyColumn, columns, plan->m_keyColumn, problems);
    const std::optional<int> copies = columnOf(options.copiesColumn, columns, plan->m_copiesColumn, problems);
    if (!key || !copies)
        return {};
    plan->m_keyColumn = *key;
    plan->m_copiesColumn = *copies;
    if (!options.pattern.isEmpty()) {
        plan->m_names = RowNames::of(options, columns, inks, problems);
        if (!plan->m_names)
            return {};
    }
    plan->m_copiesAreFiles = !plan->m_names || plan->m_names->hasCopy() || countsLabels;
    return plan;
}

RowPlan::Entry RowPlan::take(const RowResult &row, bool isChosen)
{
    Entry entry {
        .key = row.row.values.value(m_keyColumn), .firstLabel = m_labels + 1, .problem = row.problem
    };
    if (row.kind == RowResult::Data)
        entry.copies = copiesOf(row.row, entry.problem);
    // A row whose copies nobody knows counts as one, so that those behind it keep their numbers.
    m_labels += entry.copies.value_or(1);
    if (entry.copies && isChosen)
        entry.names = namesOf(row.row, *entry.copies, entry.problem);
    return entry;
}

std::optional<qint64> RowPlan::copiesOf(const Row &row, Problem &problem) const
{
    if (m_copiesColumn < 0)
        return 1;
    const QString value = row.values.value(m_copiesColumn);
    bool isNumber = false;
    const qint64 copies = value.toLongLong(&isNumber);
    if (isNumber && copies >= 0 && copies <= LabelLimits::MaxCopies)
        return copies;
    problem = { row.address, u"column "_s + Wording::quoted(m_copiesName),
        Wording::quoted(value) + u" is no number of copies"_s,
        u"use a whole number from 0 to %1"_s.arg(LabelLimits::MaxCopies) };
    return {};
}

std::optional<QList<QStringList>> RowPlan::namesOf(const Row &row, qint64 copies, Problem &problem)
{
    const qint64 count = m_copiesAreFiles ? copies : std::min<qint64>(copies, 1);
    if (!m_names)
        return QList<QStringList>(count);
    QList<QStringList> names;
    for (qint64 copy = 1; copy <= count; ++copy) {
        const std::optional<QStringList> ofCopy = m_names->namesFor(row, copy, problem);
        if (!ofCopy)
            return {};
        names.append(*ofCopy);
    }
    return names;
}
