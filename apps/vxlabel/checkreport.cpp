// SPDX-License-Identifier: BSD-3-Clause
#include "apps/vxlabel/checkreport.h"

#include "apps/vxlabel/terminal.h"
#include "apps/vxlabel/worker.h"

using namespace Qt::StringLiterals;

CheckReport::CheckReport(const QString &labelPath, bool isStrict)
    : m_labelPath(labelPath)
    , m_isStrict(isStrict)
{
}

QString CheckReport::nameOf(Finding::Severity severity)
{
    return severity == Finding::Error ? u"error"_s : u"warning"_s;
}

void CheckReport::label(const Findings &findings)
{
    tellLabel(taken(findings));
}

void CheckReport::rowBegins(qint64 row)
{
    Worker::beginRow(row);
}

void CheckReport::row(const Row &row, const Findings &findings)
{
    ++m_count.rows;
    tellRow(row, taken(findings));
}

void CheckReport::note(const Problem &problem)
{
    Terminal::warn({ problem }, m_labelPath);
}

Findings CheckReport::taken(Findings findings)
{
    for (Finding &finding : findings) {
        if (finding.problem.file.isEmpty())
            finding.problem.file = m_labelPath;
        if (m_isStrict)
            finding.severity = Finding::Error;
        ++(finding.severity == Finding::Error ? m_count.errors : m_count.warnings);
    }
    return findings;
}

void CheckReport::print(const QByteArray &text)
{
    m_isPrinted = m_isPrinted && Terminal::print(text);
}
