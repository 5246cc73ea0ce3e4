// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "apps/vxlabel/progress.h"
#include "label/batch/batch.h"

#include <QString>

/// Shows on standard error how far a batch is, and what is wrong.
class BatchProgress : public BatchObserver
{
public:
    BatchProgress(Progress::Form form, const QString &labelPath);

    void problem(const Problem &problem) override;
    void rowBegins(qint64 row) override;
    void rowDone(const BatchCount &count) override;
    [[nodiscard]] bool isInterrupted() override;
    /// Counts as printed what workers before this one have printed, which it finds done.
    [[nodiscard]] BatchCount ofAllWorkers(BatchCount count) const;
    /// A line that another process has told.
    void show(const QByteArray &complaint);
    /// Shows the last state, which stays.
    void finish(const BatchCount &count);

private:
    [[nodiscard]] Progress::State stateOf(const BatchCount &count) const;

    Progress m_progress;
    QString m_labelPath;
    BatchCount m_before; ///< by workers before this one
};
