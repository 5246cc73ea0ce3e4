// SPDX-License-Identifier: BSD-3-Clause
#include "label/batch/shard.h"

#include "label/wording.h"

using namespace Qt::StringLiterals;

namespace {

/// A place in the environment that tells of shares.
struct Names
{
    QString index;
    QString first; ///< what the first index is; empty: 0
    QString count;
};

const QList<Names> &places()
{
    static const QList<Names> names {
        { u"SLURM_ARRAY_TASK_ID"_s, u"SLURM_ARRAY_TASK_MIN"_s, u"SLURM_ARRAY_TASK_COUNT"_s },
        { u"JOB_COMPLETION_INDEX"_s, {}, u"VX_SHARDS"_s },
    };
    return names;
}

std::optional<Shard> shardOf(const QString &index, const QString &count, int first = 0)
{
    bool indexIsNumber = false;
    bool countIsNumber = false;
    const Shard shard { index.toInt(&indexIsNumber) - first, count.toInt(&countIsNumber) };
    const bool isShard = indexIsNumber && countIsNumber && shard.index >= 0 && shard.index < shard.count
        && shard.count <= Shard::MaxCount;
    return isShard ? std::optional(shard) : std::nullopt;
}

std::optional<Shard> shardOf(const QProcessEnvironment &environment, Problem &problem)
{
    for (const Names &names : places()) {
        if (!environment.contains(names.index))
            continue;
        const QString index = environment.value(names.index);
        const QString count = environment.value(names.count);
        const int first = names.first.isEmpty() ? 0 : environment.value(names.first).toInt();
        if (std::optional<Shard> shard = shardOf(index, count, first))
            return shard;
        problem = { {}, {}, u"%1=%2 and %3=%4 are no share"_s.arg(names.index, index, names.count, count),
            u"the index is smaller than the count, which is at most %1"_s.arg(Shard::MaxCount) };
        return {};
    }
    problem = { {}, {}, u"nothing in the environment tells the share"_s,
        u"set SLURM_ARRAY_TASK_ID and _COUNT, or JOB_COMPLETION_INDEX and VX_SHARDS, or give I/N"_s };
    return {};
}

} // namespace

std::optional<Shard> Shard::parse(
    const QString &text, const QProcessEnvironment &environment, Problem &problem)
{
    if (text == u"auto")
        return shardOf(environment, problem);
    const QStringList parts = text.split(u'/');
    if (std::optional<Shard> shard = parts.size() == 2 ? shardOf(parts[0], parts[1]) : std::nullopt)
        return shard;
    problem = { {}, {}, Wording::quoted(text) + u" is no share"_s,
        u"write I/N, from 0/N on, with N at most %1, or auto"_s.arg(MaxCount) };
    return {};
}
