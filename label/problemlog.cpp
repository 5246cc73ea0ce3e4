// SPDX-License-Identifier: BSD-3-Clause
#include "label/problemlog.h"

#include "label/labellimits.h"

using namespace Qt::StringLiterals;

bool ProblemLog::isFull() const
{
    return m_kept.size() >= LabelLimits::MaxProblems;
}

void ProblemLog::add(const QString &where, const QString &what, const QString &advice)
{
    ++m_count;
    if (!isFull())
        m_kept.append({ m_fileName, where, what, advice });
}

void ProblemLog::addUntold()
{
    ++m_count;
}

void ProblemLog::add(const Problems &problems)
{
    for (const Problem &problem : problems)
        add(problem.where, problem.what, problem.advice);
}

Problems ProblemLog::problems() const
{
    Problems all = m_kept;
    const qsizetype more = m_count - m_kept.size();
    if (more > 0)
        all.append({ m_fileName, {},
            more == 1 ? u"and 1 more problem"_s : u"and %1 more problems"_s.arg(more), {} });
    return all;
}
