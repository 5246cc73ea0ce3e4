// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "label/batch/batchoptions.h"
#include "label/batch/rowdocument.h"
#include "label/batch/rowplan.h"
#include "label/check/codeverifier.h"
#include "label/check/labelchecker.h"
#include "label/data/rowsource.h"

class PlateComposer;

/// A row that was checked.
struct CheckedRow
{
    const Row &row;
    QString key; ///< by which people know it
    Findings findings; ///< may be none; those at items name their place in the label
};

/// What a check tells while it runs.
class VX_LABEL_EXPORT PreflightObserver
{
public:
    virtual ~PreflightObserver();

    /// What is wrong with the label, whatever the row. May come several times.
    virtual void label(const Findings &findings) = 0;
    /// Before a row is checked.
    virtual void rowBegins(qint64 row);
    virtual void row(const CheckedRow &row) = 0;
    /// What cannot be checked, and why.
    virtual void note(const Problem &problem) = 0;
    /// Asked before each row: the check ends then.
    [[nodiscard]] virtual bool isInterrupted() = 0;
};

/// What ended a check.
enum class PreflightEnd {
    Complete, ///< all was checked, whatever was found
    LabelRefused, ///< the label cannot be printed, or not with these columns
    OptionsRefused, ///< the names or columns that were asked for
    DataFailed, ///< the rows cannot be read any further
    Interrupted
};

/// Checks a label, and each row that is to be printed on it, without printing anything: what would become of
/// a batch. Of its options, those about files that are there already are not looked at, nor are adjustments.
class VX_LABEL_EXPORT Preflight
{
public:
    /// Without rows, the label is checked as it was designed. Both must outlive the check.
    Preflight(const LabelDocument &label, RowSource *rows, const BatchOptions &options);
    ~Preflight();
    Q_DISABLE_COPY_MOVE(Preflight)

    [[nodiscard]] PreflightEnd run(PreflightObserver &observer);

private:
    [[nodiscard]] PreflightEnd checkDesign(const FlatDocument &design);
    [[nodiscard]] PreflightEnd checkRows();
    /// What keeps rows from being checked at all, told already.
    [[nodiscard]] std::optional<PreflightEnd> prepareRows();
    /// Gives the end of the check, or nothing to go on.
    [[nodiscard]] std::optional<PreflightEnd> take(const RowResult &result);
    [[nodiscard]] Findings checkRow(const RowResult &result, const RowPlan::Entry &plan);
    /// What is wrong with all labels of a row that differ from each other.
    [[nodiscard]] Findings checkLabels(const Row &row, const RowPlan::Entry &plan);
    [[nodiscard]] Findings checkLabel(const Row &row, qint64 number);
    /// Makes plates, and reads the barcodes of the document that they are of back, if that is asked for.
    template <typename Separate>
    [[nodiscard]] Findings verify(const LabelDocument &document, Separate &&separate);
    [[nodiscard]] Findings verifyShown();
    /// What keeps the label from being printed at all.
    [[nodiscard]] Findings refusal(const LabelDocument &document) const;

    const LabelDocument &m_label;
    RowSource *m_rows;
    BatchOptions m_options;
    std::unique_ptr<RowPlan> m_plan; // this and what follows: null without rows
    std::unique_ptr<RowDocument> m_shown;
    std::unique_ptr<LabelChecker> m_checker; ///< of m_shown
    std::unique_ptr<PlateComposer> m_composer; ///< of m_shown
    SeparationOptions m_plates; ///< of documents without layers
    std::unique_ptr<CodeVerifier> m_verifier; ///< null if nothing is verified
    PreflightObserver *m_observer = nullptr; ///< while it runs
};
