// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "label/batch/rowdocument.h"
#include "label/batch/rowselection.h"
#include "label/check/codeverifier.h"
#include "label/check/labelchecker.h"
#include "label/data/rowsource.h"

#include <QDateTime>

class PlateComposer;

/// What is checked before labels are printed.
struct PreflightOptions
{
    SeparationOptions separation; ///< how they would be printed
    bool verify = false; ///< plates are made, and every barcode is read back from them
    RowSelection rows = {};
    std::optional<int> rowSource = {}; ///< see BindingOptions
    AssetPaths assets = AssetPaths({});
    QDateTime begin = {}; ///< what dates and times on labels tell
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
    /// What is wrong with a row, which may be nothing. Each problem tells where the row is.
    virtual void row(const Row &row, const Findings &findings) = 0;
    /// What cannot be checked, and why.
    virtual void note(const Problem &problem) = 0;
};

/// What ended a check.
enum class PreflightEnd {
    Complete, ///< all was checked, whatever was found
    LabelRefused, ///< the label cannot be printed, or not with these columns
    DataFailed ///< the rows cannot be read any further
};

/// Checks a label, and each row that is to be printed on it, without printing anything.
class VX_LABEL_EXPORT Preflight
{
public:
    /// Without rows, the label is checked as it was designed. Both must outlive the check.
    Preflight(const LabelDocument &label, RowSource *rows, const PreflightOptions &options);
    ~Preflight();
    Q_DISABLE_COPY_MOVE(Preflight)

    [[nodiscard]] PreflightEnd run(PreflightObserver &observer);

private:
    [[nodiscard]] PreflightEnd checkDesign(const FlatDocument &design, PreflightObserver &observer);
    [[nodiscard]] PreflightEnd checkRows(PreflightObserver &observer);
    [[nodiscard]] Findings checkRow(const Row &row, LabelChecker &checker);
    /// Makes plates, and reads the barcodes of the document that they are of back, if that is asked for.
    template <typename Separate>
    [[nodiscard]] Findings verify(const LabelDocument &document, Separate &&separate);
    [[nodiscard]] Findings verifyShown();
    /// What keeps the label from being printed at all.
    [[nodiscard]] Findings refusal(const LabelDocument &document) const;

    const LabelDocument &m_label;
    RowSource *m_rows;
    PreflightOptions m_options;
    std::unique_ptr<RowDocument> m_shown; ///< null without rows
    SeparationOptions m_plates; ///< of documents without layers
    std::unique_ptr<PlateComposer> m_composer; ///< of m_shown
    std::unique_ptr<CodeVerifier> m_verifier; ///< null if nothing is verified
    PreflightObserver *m_observer = nullptr; ///< while it runs
};
