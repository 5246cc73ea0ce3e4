// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "apps/vxlabel/worklimits.h"
#include "label/batch/batchoptions.h"

#include <QByteArray>
#include <QElapsedTimer>

#include <array>
#include <functional>

/// The work of the program is done by a process of its own, within limits. When that process comes to a limit
/// or crashes, the other one, which only waits, tells so, and lets another worker go on with the row behind.
class Worker
{
public:
    /// Starts a worker, and another one where the first cannot go on. Returns what the program answers to its
    /// caller. In a worker, it returns what the work does.
    static int run(const std::function<int()> &work);

    /// Sets the limits of this worker.
    static void setLimits(const WorkLimits &limits);

    [[nodiscard]] static const WorkLimits &limits();

    /// Lets another worker go on behind a row at which this one comes to its end.
    static void letOthersGoOn();
    /// The worker has begun with a row.
    static void beginRow(qint64 row);
    /// It has done with it, and come so far.
    static void endRow(const BatchCount &count);

    /// The rows at which workers have come to their end, and why.
    [[nodiscard]] static QHash<qint64, Problem> lostRows();
    /// What the workers before this one have done has come to nothing: the batch begins now.
    static void countAnew();
    /// Whether this is asked for the first time, in the workers before this one as well: what should be told
    /// once. Of very many texts, those that come late are always news.
    [[nodiscard]] static bool isNews(const QByteArray &text);
    /// What tells how long the batch has run, in the workers before this one as well; begins with the first
    /// call.
    [[nodiscard]] static QElapsedTimer batchClock();
    /// How far the workers before this one have come.
    [[nodiscard]] static BatchCount countBefore();

    /// Ends a worker that finds no more memory.
    [[noreturn]] static void endWithoutMemory();
};
