// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "apps/vxlabel/progress.h"
#include "label/batch/preflight.h"

#include <QString>

#include <optional>

/// Tells on standard output what a check finds, and on standard error how far it is.
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
    struct Options
    {
        QString labelPath;
        bool isStrict = false; ///< warnings are errors
        Progress::Form progress = Progress::Form::None;
        qint64 toldRows = 0; ///< the last row of those that a worker before this one has told about
    };

    explicit CheckReport(const Options &options);

    /// Rows are to be checked: the chosen ones of these. Both must outlive the check of the last one.
    void expectRows(const RowSource &rows, const RowSelection &chosen);

    void label(const Findings &findings) final;
    void rowBegins(qint64 row) final;
    void row(const CheckedRow &row) final;
    /// On standard error: it is no finding.
    void note(const Problem &problem) final;
    [[nodiscard]] bool isInterrupted() final;

    [[nodiscard]] const Count &count() const { return m_count; }
    /// Whether rows were to be checked, even if there are none.
    [[nodiscard]] bool hasRows() const { return m_rows; }
    /// Tells what is left to be told. False, after a complaint, if standard output took less than all.
    [[nodiscard]] bool finish();

    /// "error" or "warning"
    [[nodiscard]] static QString nameOf(Finding::Severity severity);

protected:
    /// Findings at the label, whose problems name its file.
    virtual void tellLabel(const Findings &findings) = 0;
    virtual void tellRow(const CheckedRow &row) = 0;
    virtual void tellRest() = 0;
    /// To standard output. Once that has failed, no more is written.
    void print(const QByteArray &text);
    /// The report is not whole: no more is written.
    void breakOff() { m_isPrinted = false; }
    /// What comes now was told as soon as it was known by a worker before this one, if that tells so early.
    [[nodiscard]] bool isRepeating() const { return m_lastRow < m_options.toldRows; }
    [[nodiscard]] bool isPrinted() const { return m_isPrinted; }
    [[nodiscard]] const QString &labelPath() const { return m_options.labelPath; }

    /// The findings for people, who look into the data first: their problems begin with where the row is.
    [[nodiscard]] static Findings located(const CheckedRow &row);

private:
    /// As they are told and counted.
    [[nodiscard]] Findings taken(Findings findings);
    [[nodiscard]] Progress::State state() const;
    [[nodiscard]] std::optional<qint64> chosenOf(std::optional<qint64> rows) const;

    Options m_options;
    Progress m_progress;
    qint64 m_lastRow = 0; ///< with which the check has begun
    const RowSource *m_rows = nullptr;
    const RowSelection *m_chosen = nullptr;
    std::optional<qint64> m_total; ///< rows
    bool m_isPrinted = true;
    Count m_count;
};
