// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "label/adjust/plateadjuster.h"
#include "label/batch/batchoptions.h"
#include "label/batch/manifest.h"
#include "label/batch/rowdigest.h"
#include "label/batch/rowdocument.h"
#include "label/batch/rowoutput.h"
#include "label/batch/rowplan.h"
#include "label/check/codeverifier.h"
#include "label/check/labelchecker.h"
#include "label/data/rowsource.h"
#include "label/separation.h"

#include <QCryptographicHash>
#include <QSet>

#include <memory>
#include <optional>

class PlateComposer;

/// What a batch tells while it runs.
class VX_LABEL_EXPORT BatchObserver
{
public:
    virtual ~BatchObserver();

    /// What ends the batch, or is wrong with its files.
    virtual void problem(const Problem &problem) = 0;
    /// What a person should know, and keeps nothing from being printed; a problem() if not overridden.
    virtual void warning(const Problem &problem);
    /// A row, numbered from 1, is not printed, and this is one of the reasons; a problem() if not overridden.
    virtual void rowFails(qint64 row, const Problem &reason);
    /// The same of a row that failed in a process before this one, which has told so. The reason is as the
    /// manifest has it: Batch::reasonOf() what was told.
    virtual void rowHasFailed(qint64 row, const QString &reason);
    /// Before a row is printed; what has been printed already does not come here.
    virtual void rowBegins(qint64 row);
    /// After each row that was to be printed.
    virtual void rowDone(const BatchCount &count) = 0;
    /// Asked before each row: the batch ends then.
    [[nodiscard]] virtual bool isInterrupted() = 0;
};

/// Prints the rows of a data source on a label, each into files of its own or all into one, and keeps a
/// manifest of them.
class VX_LABEL_EXPORT Batch
{
public:
    /// The manifest of a batch that names none: in the folders that the pattern names before the first place.
    [[nodiscard]] static QString usualManifest(const QString &pattern);
    /// The same for a batch that goes into one PDF: beside that.
    [[nodiscard]] static QString usualManifestOfPdf(const QString &pdf);

    /// How the manifest tells why a row failed: in one line, without the place of the row.
    [[nodiscard]] static QString reasonOf(const Problem &problem);

    /// Null, with the reasons in refusal, if the label, the columns that it asks for, the pattern of the
    /// names or the manifest are unusable. The label and the rows must outlive it.
    [[nodiscard]] static std::unique_ptr<Batch> of(
        const LabelDocument &label, RowSource &rows, const BatchOptions &options, BatchRefusal &refusal);
    ~Batch();
    Q_DISABLE_COPY_MOVE(Batch)

    /// Runs to the end of the rows, or until something ends it.
    [[nodiscard]] BatchEnd run(BatchObserver &observer);
    [[nodiscard]] const BatchCount &count() const { return m_count; }

private:
    /// A row that is to be printed.
    struct Job
    {
        const Row &row;
        const RowPlan::Entry &plan;
        QByteArray digest; ///< of its values and files
    };

    Batch(const LabelDocument &label, RowSource &rows, const BatchOptions &options);

    [[nodiscard]] bool prepare(BatchRefusal &refusal);
    [[nodiscard]] bool prepareAdjustment(Problems &problems);
    [[nodiscard]] bool preparePlan(Problems &problems);
    [[nodiscard]] bool prepareCheck(Problems &problems);
    [[nodiscard]] bool openManifest(Problems &problems);
    // Each gives the end of the batch, or nothing to go on
    [[nodiscard]] std::optional<BatchEnd> take(const RowResult &result);
    [[nodiscard]] std::optional<BatchEnd> print(const Job &job);
    [[nodiscard]] std::optional<BatchEnd> record(
        const Job &job, ManifestEntry &entry, const Problems &problems);
    [[nodiscard]] BatchEnd endBlocked(const Row &row, const Problems &problems);
    [[nodiscard]] qint64 *countOfDone(const std::optional<ManifestEntry> &before, const ManifestEntry &entry);
    void removeReplaced();
    [[nodiscard]] Manifest::End dataEnd() const;
    [[nodiscard]] QStringList filesOf(const Row &row, const RowPlan::Entry &plan) const;
    [[nodiscard]] std::optional<qint64> shareOf(std::optional<qint64> rows) const;
    /// Why the row is not printed.
    [[nodiscard]] Problems printCopies(const Job &job, ManifestEntry &entry);
    enum class With { Plates, NoPlates };
    [[nodiscard]] std::optional<Separation> separationOf(
        const Row &row, qint64 label, With plates, Problems &problems);
    [[nodiscard]] BatchEnd endOfRows();
    [[nodiscard]] BatchEnd endOfChosen();
    [[nodiscard]] BatchEnd finish(BatchEnd end);
    /// What a check finds on the label that is shown, and is not to be printed; tells the rest.
    [[nodiscard]] Problems checkShown();
    /// The same of what it has found.
    [[nodiscard]] Problems faultsAmong(const Findings &findings, Problems &others) const;
    /// Reads the barcodes of the row that is shown back, if that is asked for.
    void verify(const Separation &separation, Problems &problems);
    void tell(const Problems &warnings);
    void tellKeptColors();

    const LabelDocument &m_label;
    RowSource &m_rows;
    BatchOptions m_options;
    std::optional<PlateAdjuster> m_adjuster;
    SeparationOptions m_plates; ///< of the labels that m_document shows, before they are adjusted
    std::unique_ptr<RowDocument> m_document;
    std::unique_ptr<PlateComposer> m_composer; ///< of m_document
    std::unique_ptr<LabelChecker> m_checker; ///< of m_document; null if nothing is checked
    Problems m_checkWarnings; ///< of what is the same on all labels
    std::unique_ptr<CodeVerifier> m_verifier; ///< null if nothing is verified
    std::unique_ptr<RowPlan> m_plan;
    std::unique_ptr<Manifest> m_manifest;
    std::unique_ptr<RowOutput> m_output;
    BatchObserver *m_observer = nullptr; ///< while it runs
    RowDigest m_digests;
    qint64 m_lastRow = 0; ///< that was read
    bool m_hasReadAll = true; ///< unless the chosen rows ended before
    qint64 m_lastLost = 0; ///< the last row of those that are lost
    QCryptographicHash m_data { QCryptographicHash::Sha256 }; ///< of all rows so far
    BatchCount m_count;
    QList<ManifestEntry> m_replaced; ///< by what was printed anew
    QSet<QString> m_notes; ///< that were told
};
