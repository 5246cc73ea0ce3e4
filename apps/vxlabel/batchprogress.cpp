// SPDX-License-Identifier: BSD-3-Clause
#include "apps/vxlabel/batchprogress.h"

#include "apps/vxlabel/interruption.h"
#include "apps/vxlabel/terminal.h"
#include "apps/vxlabel/worker.h"

#include <algorithm>

using namespace Qt::StringLiterals;

BatchProgress::BatchProgress(Progress::Form form, const QString &labelPath)
    : m_progress(form)
    , m_labelPath(labelPath)
    , m_before(Worker::countBefore())
{
}

void BatchProgress::problem(const Problem &problem)
{
    m_progress.clearLine();
    Terminal::complain({ problem }, m_labelPath);
}

void BatchProgress::show(const QByteArray &complaint)
{
    m_progress.clearLine();
    Terminal::passOn(complaint);
}

void BatchProgress::rowBegins(qint64 row)
{
    Worker::beginRow(row);
}

BatchCount BatchProgress::ofAllWorkers(BatchCount count) const
{
    const qint64 found = std::min(count.kept, m_before.printed);
    count.printed += found;
    count.kept -= found;
    count.labels += m_before.labels;
    return count;
}

void BatchProgress::rowDone(const BatchCount &count)
{
    Worker::endRow(ofAllWorkers(count));
    if (m_progress.isDue())
        m_progress.show(stateOf(count));
}

bool BatchProgress::isInterrupted()
{
    return Interruption::isPending();
}

void BatchProgress::finish(const BatchCount &count)
{
    m_progress.finish(stateOf(count));
}

Progress::State BatchProgress::stateOf(const BatchCount &count) const
{
    const BatchCount all = ofAllWorkers(count);
    return { .done = all.printed + all.kept + all.failed,
        .worked = all.printed + all.failed,
        .total = all.total,
        .faults = all.failed > 0 ? u"%1 failed"_s.arg(all.failed) : QString(),
        .counts = { { u"printed"_s, all.printed }, { u"kept"_s, all.kept }, { u"failed"_s, all.failed },
            { u"labels"_s, all.labels } } };
}
