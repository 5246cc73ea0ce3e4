// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "label/check/preflight.h"

#include <QString>

/// Tells on standard output what a check finds.
class CheckReport : public PreflightObserver
{
public:
    /// What was found so far.
    struct Count
    {
        qint64 rows = 0; ///< that were checked
        qint64 errors = 0;
        qint64 warnings = 0;
    };

    /// The path is that of the label. If strict, warnings are errors.
    CheckReport(const QString &labelPath, bool isStrict);

    void label(const Findings &findings) final;
    void rowBegins(qint64 row) final;
    void row(const Row &row, const Findings &findings) final;
    /// On standard error: it is no finding.
    void note(const Problem &problem) final;

    [[nodiscard]] const Count &count() const { return m_count; }
    /// Tells what is left to be told. False, after a complaint, if standard output took less than all.
    [[nodiscard]] virtual bool finish() = 0;

    /// "error" or "warning"
    [[nodiscard]] static QString nameOf(Finding::Severity severity);

protected:
    /// Findings at the label, whose problems name its file.
    virtual void tellLabel(const Findings &findings) = 0;
    virtual void tellRow(const Row &row, const Findings &findings) = 0;
    /// To standard output. Once that has failed, no more is written.
    void print(const QByteArray &text);
    [[nodiscard]] bool isPrinted() const { return m_isPrinted; }
    [[nodiscard]] const QString &labelPath() const { return m_labelPath; }

private:
    /// As they are told and counted.
    [[nodiscard]] Findings taken(Findings findings);

    QString m_labelPath;
    bool m_isStrict;
    bool m_isPrinted = true;
    Count m_count;
};
