// SPDX-License-Identifier: BSD-3-Clause
#include "apps/vxlabel/checkreport.h"

#include "apps/vxlabel/interruption.h"
#include "apps/vxlabel/terminal.h"
#include "apps/vxlabel/worker.h"

using namespace Qt::StringLiterals;

CheckReport::CheckReport(const Options &options)
    : m_options(options)
    , m_progress(options.progress)
{
}

QString CheckReport::nameOf(Finding::Severity severity)
{
    return severity == Finding::Error ? u"error"_s : u"warning"_s;
}

void CheckReport::expectRows(const RowSource &rows, const RowSelection &chosen)
{
    m_rows = &rows;
    m_chosen = &chosen;
    m_total = chosenOf(rows.total());
}

void CheckReport::label(const Findings &findings)
{
    Findings ofLabel = taken(findings);
    for (Finding &finding : ofLabel) {
        if (finding.problem.file.isEmpty())
            finding.problem.file = labelPath();
    }
    tellLabel(ofLabel);
}

void CheckReport::rowBegins(qint64 row)
{
    m_lastRow = row;
    Worker::beginRow(row);
}

void CheckReport::row(const CheckedRow &row)
{
    Worker::endRow({});
    ++m_count.rows;
    tellRow({ row.row, row.key, taken(row.findings) });
    if (!m_progress.isDue())
        return;
    Progress::State now = state();
    now.about = chosenOf(m_rows->estimate());
    m_progress.show(now);
}

void CheckReport::note(const Problem &problem)
{
    if (isRepeating())
        return;
    m_progress.clearLine();
    Terminal::warn({ problem }, labelPath());
}

bool CheckReport::isInterrupted()
{
    return Interruption::isPending();
}

bool CheckReport::finish()
{
    if (hasRows())
        m_progress.finish(state());
    tellRest();
    return m_isPrinted;
}

Findings CheckReport::located(const CheckedRow &row)
{
    Findings findings = row.findings;
    for (Finding &finding : findings)
        finding.problem = ofRow(finding.problem, row.row);
    return findings;
}

Findings CheckReport::taken(Findings findings)
{
    for (Finding &finding : findings) {
        if (m_options.isStrict)
            finding.severity = Finding::Error;
        ++(finding.severity == Finding::Error ? m_count.errors : m_count.warnings);
    }
    return findings;
}

std::optional<qint64> CheckReport::chosenOf(std::optional<qint64> rows) const
{
    return rows ? std::optional(m_chosen->countOf(*rows)) : std::nullopt;
}

Progress::State CheckReport::state() const
{
    const auto &[rows, errors, warnings] = m_count;
    return { .done = rows,
        .worked = rows,
        .total = m_total,
        .faults = errors == 1 ? u"1 error"_s
            : errors > 0      ? u"%1 errors"_s.arg(errors)
                              : QString(),
        .counts = { { u"rows"_s, rows }, { u"errors"_s, errors }, { u"warnings"_s, warnings } } };
}

void CheckReport::print(const QByteArray &text)
{
    m_progress.clearLine();
    m_isPrinted = m_isPrinted && Terminal::print(text);
}
