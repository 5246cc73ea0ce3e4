// SPDX-License-Identifier: BSD-3-Clause
#include "apps/vxlabel/batchprogress.h"

#include "apps/vxlabel/interruption.h"
#include "apps/vxlabel/terminal.h"
#include "apps/vxlabel/worker.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

const QString errorKey = u"error"_s;
const QString warningKey = u"warning"_s;
const QString fileKey = u"file"_s;
const QString rowKey = u"row"_s;

/// A problem for programs, without the row.
QJsonObject jsonOf(const QString &key, const Problem &problem, const QString &file)
{
    QJsonObject object { { key, Batch::reasonOf(problem) } };
    const QString place = problem.file.isEmpty() ? file : problem.file;
    if (!place.isEmpty())
        object.insert(fileKey, place);
    return object;
}

} // namespace

BatchProgress::BatchProgress(Progress::Form form, const QString &labelPath)
    : m_progress(form)
    , m_isForPrograms(form == Progress::Form::Json)
    , m_labelPath(labelPath)
    , m_before(Worker::countBefore())
{
}

void BatchProgress::problem(const Problem &problem)
{
    m_progress.clearLine();
    if (m_isForPrograms)
        Progress::write(jsonOf(errorKey, problem, m_labelPath));
    else
        Terminal::complain({ problem }, m_labelPath);
}

void BatchProgress::warning(const Problem &problem)
{
    if (!Worker::isNews(problem.text().toUtf8()))
        return;
    m_progress.clearLine();
    if (m_isForPrograms)
        Progress::write(jsonOf(warningKey, problem, m_labelPath));
    else
        Terminal::warn({ problem }, m_labelPath);
}

void BatchProgress::rowFails(qint64 row, const Problem &reason)
{
    if (m_isForPrograms) {
        QJsonObject object = jsonOf(errorKey, reason, m_labelPath);
        object.insert(rowKey, row);
        Progress::write(object);
    } else if (m_failures.isToBeTold(row, Batch::reasonOf(reason))) {
        problem(reason);
    }
}

void BatchProgress::rowHasFailed(qint64 row, const QString &reason)
{
    // It was told if it is one of the first; what that process has counted is lost with it.
    (void)m_failures.isToBeTold(row, reason);
}

bool BatchProgress::passOn(const QJsonObject &told)
{
    const bool isWarning = told.contains(warningKey);
    if (!isWarning && !told.contains(errorKey))
        return false;
    const Problem problem { told.value(fileKey).toString(), {},
        told.value(isWarning ? warningKey : errorKey).toString(), {} };
    const qint64 row = told.value(rowKey).toInteger();
    if (row > 0)
        rowFails(row, problem);
    else if (isWarning)
        warning(problem);
    else if (Worker::isNews(problem.text().toUtf8()))
        this->problem(problem);
    return true;
}

void BatchProgress::passOn(const QByteArray &line)
{
    if (!Worker::isNews(line))
        return;
    m_progress.clearLine();
    Terminal::passOn(line);
}

void BatchProgress::rowBegins(qint64 row)
{
    Worker::beginRow(row);
}

BatchCount BatchProgress::ofAllWorkers(BatchCount count) const
{
    // A worker first comes to the rows that those before it have done.
    if (count.done() < m_before.done())
        return m_before;
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
    Terminal::complain(m_failures.rest(), {});
}

Progress::State BatchProgress::stateOf(const BatchCount &count) const
{
    const BatchCount all = ofAllWorkers(count);
    return { .done = all.done(),
        .worked = all.printed + all.failed,
        .total = all.total,
        .about = all.about,
        .faults = all.failed > 0 ? u"%1 failed"_s.arg(all.failed) : QString(),
        .counts = { { u"printed"_s, all.printed }, { u"kept"_s, all.kept }, { u"failed"_s, all.failed },
            { u"untried"_s, all.untried }, { u"labels"_s, all.labels } } };
}
