// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "label/problem.h"
#include "label/vxlabelexport.h"

#include <QProcessEnvironment>
#include <QString>

#include <optional>

/// One of several shares of the rows, for as many processes: row r belongs to the share r mod count.
struct Shard
{
    int index = 0; ///< from 0
    int count = 1;

    /// The most processes that rows are shared among.
    static constexpr int MaxCount = 10'000;

    /// Of "0/4", or of "auto", which takes it from the environment of a Slurm array job
    /// (SLURM_ARRAY_TASK_ID, less SLURM_ARRAY_TASK_MIN, of SLURM_ARRAY_TASK_COUNT) or a Kubernetes Indexed
    /// Job (JOB_COMPLETION_INDEX of VX_SHARDS). Nothing, with the reason in problem, where there is none.
    [[nodiscard]] VX_LABEL_EXPORT static std::optional<Shard> parse(
        const QString &text, const QProcessEnvironment &environment, Problem &problem);

    [[nodiscard]] bool contains(qint64 row) const { return row % count == index; }
    /// How many it has of so many rows.
    [[nodiscard]] qint64 countOf(qint64 rows) const
    {
        return rows / count + (index > 0 && rows % count >= index ? 1 : 0);
    }
    friend bool operator==(const Shard &, const Shard &) = default;
};
