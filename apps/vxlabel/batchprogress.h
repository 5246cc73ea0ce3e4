// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "apps/vxlabel/repeatedfailures.h"
#include "label/batch/batch.h"

#include <QByteArray>
#include <QElapsedTimer>
#include <QJsonObject>
#include <QString>

/// Shows on standard error how far a batch is, and what is wrong.
class BatchProgress : public BatchObserver
{
public:
    enum class Form {
        None,
        Line, ///< one line that changes, for people
        Json ///< an object on a line twice a second, and one for whatever is wrong, for programs
    };

    /// A line where standard error is a terminal, and otherwise nothing.
    [[nodiscard]] static Form usualForm();

    BatchProgress(Form form, const QString &labelPath);

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
    void show(const BatchCount &count);
    [[nodiscard]] QByteArray line(const BatchCount &count) const;
    [[nodiscard]] QJsonObject json(const BatchCount &count) const;
    void clearLine();

    Form m_form;
    QString m_labelPath;
    BatchCount m_before; ///< by workers before this one
    QElapsedTimer m_sinceBegin;
    QElapsedTimer m_sinceShown;
    bool m_lineIsShown = false;
    RepeatedFailures m_failures;
};
