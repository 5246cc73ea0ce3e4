// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "label/batch/rowselection.h"
#include "label/batch/shard.h"
#include "label/problem.h"
#include "label/vxlabelexport.h"

#include <QString>
#include <QStringList>

/// The manifests of a batch whose rows are shared among processes: "manifest.0-of-4.jsonl" and so on beside
/// what will be "manifest.jsonl".
namespace ManifestShares {

/// The manifest of a share; of the only one, the manifest itself.
[[nodiscard]] VX_LABEL_EXPORT QString pathOf(const QString &manifest, Shard shard);

/// The manifests of this batch that are there: the whole one, and those of shares, of however many. An empty
/// one, of a batch that was killed before its first line, is none.
[[nodiscard]] VX_LABEL_EXPORT QStringList existing(const QString &manifest);

/// What a merge has come to.
struct Merged
{
    qint64 printed = 0; ///< rows
    qint64 failed = 0; ///< rows
};

/// Makes one manifest of those of all shares. Nothing, with the reasons in problems, unless all shares are
/// there, each once, of one batch that has come to its end, and every selected row is in the share that it
/// belongs to, once. An existing file is replaced.
[[nodiscard]] VX_LABEL_EXPORT std::optional<Merged> merge(
    const QStringList &parts, const QString &manifest, const RowSelection &rows, Problems &problems);

/// Lays out what is on record of a batch for so many processes, however many it had before, so that they can
/// go on. False, with the reasons in problems, if the manifests are of different batches or cannot be
/// written.
[[nodiscard]] VX_LABEL_EXPORT bool rearrange(const QString &manifest, int count, Problems &problems);

} // namespace ManifestShares
