// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "label/batch/batch.h"

#include <QElapsedTimer>
#include <QString>

/// Shows on standard error how far a batch is, and what is wrong.
class BatchProgress : public BatchObserver
{
public:
    enum class Form {
        None,
        Line, ///< one line that changes, for people
        Json ///< an object on a line twice a second, for programs
    };

    /// A line where standard error is a terminal, and otherwise nothing.
    [[nodiscard]] static Form usualForm();

    BatchProgress(Form form, const QString &labelPath);

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
    void show(const BatchCount &count);
    [[nodiscard]] QByteArray line(const BatchCount &count) const;
    [[nodiscard]] QByteArray json(const BatchCount &count) const;
    void clearLine();

    Form m_form;
    QString m_labelPath;
    BatchCount m_before; ///< by workers before this one
    QElapsedTimer m_sinceBegin;
    QElapsedTimer m_sinceShown;
    bool m_lineIsShown = false;
};
