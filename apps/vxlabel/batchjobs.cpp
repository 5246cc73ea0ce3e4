// SPDX-License-Identifier: BSD-3-Clause
#include "apps/vxlabel/batchjobs.h"

#include "apps/vxlabel/interruption.h"
#include "apps/vxlabel/terminal.h"

#include <QCoreApplication>
#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>
#include <array>
#include <csignal>
#include <sys/prctl.h>

using namespace Qt::StringLiterals;

namespace {

constexpr int millisecondsBetween = 50;

/// The gravest first.
constexpr std::array gravity { ExitCode::Interrupted, ExitCode::CannotWrite, ExitCode::DataSource,
    ExitCode::BadDocument, ExitCode::Usage, ExitCode::SomeFailed, ExitCode::Ok };

ExitCode graver(ExitCode left, ExitCode right)
{
    return std::ranges::find(gravity, left) < std::ranges::find(gravity, right) ? left : right;
}

} // namespace

BatchJobs::BatchJobs(const QStringList &arguments, int count, BatchProgress &progress)
    : m_arguments(arguments)
    , m_count(count)
    , m_progress(progress)
    , m_jobs(std::size_t(count))
{
}

ExitCode BatchJobs::run()
{
    for (int index = 0; index < m_count; ++index)
        start(index);
    const auto isRunning = [](const Job &job) { return job.process->state() != QProcess::NotRunning; };
    while (std::ranges::any_of(m_jobs, isRunning)) {
        for (Job &job : m_jobs) {
            if (isRunning(job))
                job.process->waitForReadyRead(millisecondsBetween / m_count + 1);
            listen(job);
        }
        m_progress.rowDone(count());
        if (m_progress.isInterrupted() && !std::exchange(m_isTerminated, true)) {
            for (const Job &job : m_jobs)
                job.process->terminate();
        }
    }
    ExitCode code = ExitCode::Ok;
    for (std::size_t index = 0; index < m_jobs.size(); ++index) {
        listen(m_jobs[index]);
        code = graver(code, codeOf(index));
    }
    return code;
}

void BatchJobs::start(int index)
{
    QProcess &process = *(m_jobs[std::size_t(index)].process = std::make_unique<QProcess>());
    process.setStandardInputFile(QProcess::nullDevice());
    process.setStandardOutputFile(QProcess::nullDevice());
    // Nobody would put together what a job prints that has lost the process which started it.
    process.setChildProcessModifier([] { prctl(PR_SET_PDEATHSIG, SIGKILL); });
    QStringList arguments = m_arguments;
    const qsizetype options = arguments.indexOf(u"batch"_s) + 1;
    arguments.insert(options, u"%1/%2"_s.arg(index).arg(m_count));
    arguments.insert(options, u"--shard"_s);
    process.start(QCoreApplication::applicationFilePath(), arguments);
    process.waitForStarted();
}

void BatchJobs::listen(Job &job)
{
    job.unread += job.process->readAllStandardError();
    for (qsizetype end = job.unread.indexOf('\n'); end >= 0; end = job.unread.indexOf('\n')) {
        take(job, job.unread.first(end));
        job.unread.remove(0, end + 1);
    }
}

void BatchJobs::take(Job &job, const QByteArray &line)
{
    const QJsonObject state = QJsonDocument::fromJson(line).object();
    if (state.isEmpty()) {
        // ^C reaches all processes; once is enough.
        if (line != Interruption::line.chopped(1))
            m_progress.passOn(line);
        return;
    }
    if (m_progress.passOn(state))
        return;
    job.count.printed = state.value(u"printed"_s).toInteger();
    job.count.kept = state.value(u"kept"_s).toInteger();
    job.count.failed = state.value(u"failed"_s).toInteger();
    job.count.untried = state.value(u"untried"_s).toInteger();
    job.count.labels = state.value(u"labels"_s).toInteger();
    if (state.contains(u"total"_s))
        job.count.total = state.value(u"total"_s).toInteger();
    job.count.about.reset();
    if (state.contains(u"about"_s))
        job.count.about = state.value(u"about"_s).toInteger();
}

/// Nothing before all jobs have told theirs. Those that have come to their end have no more to come.
std::optional<qint64> BatchJobs::about() const
{
    qint64 sum = 0;
    for (const Job &job : m_jobs) {
        const bool isOver = job.process->state() == QProcess::NotRunning;
        if (!isOver && !job.count.about)
            return {};
        sum += isOver ? job.count.done() : *job.count.about;
    }
    return sum;
}

BatchCount BatchJobs::count() const
{
    BatchCount sum;
    for (const Job &job : m_jobs) {
        sum.printed += job.count.printed;
        sum.kept += job.count.kept;
        sum.failed += job.count.failed;
        sum.untried += job.count.untried;
        sum.labels += job.count.labels;
        if (job.count.total)
            sum.total = sum.total.value_or(0) + *job.count.total;
    }
    sum.about = about();
    return sum;
}

ExitCode BatchJobs::codeOf(std::size_t index)
{
    const QProcess &process = *m_jobs[index].process;
    const auto code = static_cast<ExitCode>(process.exitCode());
    const auto complain = [&](const QString &what) {
        Terminal::complain({ {}, u"job %1 of %2"_s.arg(index + 1).arg(m_count), what,
            u"give --resume to print the rows that it has left"_s });
    };
    if (process.error() == QProcess::FailedToStart) {
        complain(u"could not be started: "_s + process.errorString());
        return ExitCode::CannotWrite;
    }
    if (process.exitStatus() == QProcess::CrashExit) {
        m_isCountExact = false;
        if (m_progress.isInterrupted())
            return ExitCode::Interrupted;
        complain(u"was killed"_s);
        return ExitCode::CannotWrite;
    }
    if (code == ExitCode::Interrupted && !m_progress.isInterrupted())
        complain(u"was interrupted"_s);
    return code;
}
