// SPDX-License-Identifier: BSD-3-Clause
#include "apps/vxlabel/batchprogress.h"

#include "apps/vxlabel/interruption.h"
#include "apps/vxlabel/terminal.h"
#include "apps/vxlabel/worker.h"

#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>
#include <cstdio>

using namespace Qt::StringLiterals;

namespace {

constexpr qint64 millisecondsBetween = 500;

const QString errorKey = u"error"_s;
const QString warningKey = u"warning"_s;
const QString fileKey = u"file"_s;
const QString rowKey = u"row"_s;

qint64 doneOf(const BatchCount &count)
{
    return count.printed + count.kept + count.failed;
}

/// Rows in a second.
double rateOf(const BatchCount &count, const QElapsedTimer &sinceBegin)
{
    return double(count.printed + count.failed) * 1000.0 / double(std::max<qint64>(sinceBegin.elapsed(), 1));
}

/// "1:02:03" or "2:03"
QString duration(qint64 seconds)
{
    const qint64 hours = seconds / 3600;
    const QString minutes = QString::number(seconds / 60 % 60);
    const QString rest = QString::number(seconds % 60).rightJustified(2, u'0');
    return hours > 0 ? u"%1:%2:%3"_s.arg(hours).arg(minutes.rightJustified(2, u'0'), rest)
                     : minutes + u':' + rest;
}

void write(const QByteArray &text)
{
    std::fwrite(text.constData(), 1, size_t(text.size()), stderr);
}

void write(const QJsonObject &object)
{
    write(QJsonDocument(object).toJson(QJsonDocument::Compact) + '\n');
}

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

BatchProgress::Form BatchProgress::usualForm()
{
    return Terminal::canRewriteLines() ? Form::Line : Form::None;
}

BatchProgress::BatchProgress(Form form, const QString &labelPath)
    : m_form(form)
    , m_labelPath(labelPath)
    , m_before(Worker::countBefore())
    , m_sinceBegin(Worker::batchClock())
{
    m_sinceShown.start();
}

void BatchProgress::problem(const Problem &problem)
{
    clearLine();
    if (m_form == Form::Json)
        write(jsonOf(errorKey, problem, m_labelPath));
    else
        Terminal::complain({ problem }, m_labelPath);
}

void BatchProgress::warning(const Problem &problem)
{
    if (!Worker::isNews(problem.text().toUtf8()))
        return;
    clearLine();
    if (m_form == Form::Json)
        write(jsonOf(warningKey, problem, m_labelPath));
    else
        Terminal::warn({ problem }, m_labelPath);
}

void BatchProgress::rowFails(qint64 row, const Problem &reason)
{
    if (m_form == Form::Json) {
        QJsonObject object = jsonOf(errorKey, reason, m_labelPath);
        object.insert(rowKey, row);
        write(object);
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
    clearLine();
    Terminal::passOn(line);
}

void BatchProgress::rowBegins(qint64 row)
{
    Worker::beginRow(row);
}

BatchCount BatchProgress::ofAllWorkers(BatchCount count) const
{
    // A worker first comes to the rows that those before it have done.
    if (doneOf(count) < doneOf(m_before))
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
    if (m_form != Form::None && m_sinceShown.elapsed() >= millisecondsBetween)
        show(count);
}

bool BatchProgress::isInterrupted()
{
    return Interruption::isPending();
}

void BatchProgress::finish(const BatchCount &count)
{
    if (m_form != Form::None)
        show(count);
    if (m_lineIsShown)
        write(QByteArray("\n"));
    m_lineIsShown = false;
    Terminal::complain(m_failures.rest(), {});
}

void BatchProgress::show(const BatchCount &count)
{
    m_sinceShown.restart();
    clearLine();
    const BatchCount all = ofAllWorkers(count);
    m_form == Form::Json ? write(json(all)) : write(line(all));
    m_lineIsShown = m_form == Form::Line;
}

void BatchProgress::clearLine()
{
    if (m_lineIsShown)
        write(QByteArray("\r\x1b[K"));
    m_lineIsShown = false;
}

QByteArray BatchProgress::line(const BatchCount &count) const
{
    const double rate = rateOf(count, m_sinceBegin);
    QString text = u"%1%2 rows, %3/s"_s.arg(doneOf(count))
                       .arg(count.total ? u" of %1"_s.arg(*count.total) : QString())
                       .arg(rate, 0, 'f', 1);
    if (count.failed > 0)
        text += u", %1 failed"_s.arg(count.failed);
    if (count.total && rate > 0.0)
        text += u", %1 left"_s.arg(
            duration(qint64(double(std::max<qint64>(*count.total - doneOf(count), 0)) / rate)));
    return text.toUtf8();
}

QJsonObject BatchProgress::json(const BatchCount &count) const
{
    QJsonObject object { { u"printed"_s, count.printed }, { u"kept"_s, count.kept },
        { u"failed"_s, count.failed }, { u"untried"_s, count.untried }, { u"labels"_s, count.labels },
        { u"rowsPerSecond"_s, rateOf(count, m_sinceBegin) },
        { u"seconds"_s, double(m_sinceBegin.elapsed()) / 1000.0 } };
    if (count.total)
        object.insert(u"total"_s, *count.total);
    return object;
}
