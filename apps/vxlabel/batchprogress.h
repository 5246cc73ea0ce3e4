// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "apps/vxlabel/progress.h"
#include "apps/vxlabel/repeatedfailures.h"
#include "label/batch/batch.h"

#include <QByteArray>
#include <QJsonObject>
#include <QString>

/// Shows on standard error how far a batch is, and what is wrong: to programs, as an object on a line for
/// each.
class BatchProgress : public BatchObserver
{
public:
    BatchProgress(Progress::Form form, const QString &labelPath);

    void problem(const Problem &problem) override;
    void warning(const Problem &problem) override;
    void rowFails(qint64 row, const Problem &reason) override;
    void rowHasFailed(qint64 row, const QString &reason) override;
    void rowBegins(qint64 row) override;
    void rowDone(const BatchCount &count) override;
    [[nodiscard]] bool isInterrupted() override;
    /// Counts as printed what workers before this one have printed, which it finds done.
    [[nodiscard]] BatchCount ofAllWorkers(BatchCount count) const;
    /// Tells what another process has told as JSON. False for anything else: how far it is.
    [[nodiscard]] bool passOn(const QJsonObject &told);
    /// Tells a line that other processes may have told as well, once.
    void passOn(const QByteArray &line);
    /// Shows the last state, which stays, and what is left to be told.
    void finish(const BatchCount &count);

private:
    [[nodiscard]] Progress::State stateOf(const BatchCount &count) const;

    Progress m_progress;
    bool m_isForPrograms;
    QString m_labelPath;
    BatchCount m_before; ///< by workers before this one
    RepeatedFailures m_failures;
};
