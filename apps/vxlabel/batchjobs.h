// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "apps/vxlabel/batchprogress.h"
#include "apps/vxlabel/exitcode.h"

#include <QProcess>
#include <QStringList>

#include <memory>
#include <vector>

/// A batch whose rows are shared among several processes of this program.
class BatchJobs
{
public:
    /// The arguments are those of all jobs: "batch" and what follows it, without the share.
    BatchJobs(const QStringList &arguments, int count, BatchProgress &progress);

    /// Runs them to their end, showing how far they are together. The code of the gravest of them; of one
    /// that was killed, ExitCode::CannotWrite.
    [[nodiscard]] ExitCode run();
    [[nodiscard]] BatchCount count() const;
    /// Whether that is all: a job that was killed may have done more than it has told.
    [[nodiscard]] bool isCountExact() const { return m_isCountExact; }

private:
    struct Job
    {
        std::unique_ptr<QProcess> process;
        QByteArray unread; ///< the beginning of a line
        BatchCount count;
    };

    void start(int index);
    /// Takes what a job has told since.
    void listen(Job &job);
    void take(Job &job, const QByteArray &line);
    /// How many rows there are about.
    [[nodiscard]] std::optional<qint64> about() const;
    [[nodiscard]] ExitCode codeOf(std::size_t index);

    QStringList m_arguments;
    int m_count;
    BatchProgress &m_progress;
    std::vector<Job> m_jobs;
    bool m_isTerminated = false; ///< all of them were told to end
    bool m_isCountExact = true;
};
