// SPDX-License-Identifier: BSD-3-Clause
#include "label/batch/batch.h"

#include "label/adjust/inkrecoloring.h"
#include "label/batch/batchhead.h"
#include "label/batch/manifestshares.h"
#include "label/batch/platecomposer.h"
#include "label/batch/rowoutputs.h"
#include "label/outputfailure.h"
#include "label/printlimits.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>

#include <algorithm>
#include <iterator>

using namespace Qt::StringLiterals;

namespace {

/// Warnings that differ from row to row are told so often, and no more.
constexpr qsizetype mostNotes = 100;

} // namespace

BatchObserver::~BatchObserver() = default;

void BatchObserver::warning(const Problem &problem)
{
    this->problem(problem);
}

void BatchObserver::rowFails(qint64 /*row*/, const Problem &reason)
{
    problem(reason);
}

void BatchObserver::rowHasFailed(qint64 /*row*/, const QString & /*reason*/) { }

void BatchObserver::rowBegins(qint64 /*row*/) { }

QString Batch::reasonOf(const Problem &problem)
{
    return Problem { {}, problem.where, problem.what, problem.advice }.text();
}

Batch::Batch(const LabelDocument &label, RowSource &rows, const BatchOptions &options)
    : m_label(label)
    , m_rows(rows)
    , m_options(options)
{
    if (m_options.manifest.isEmpty())
        m_options.manifest
            = m_options.pdf.isEmpty() ? usualManifest(m_options.pattern) : usualManifestOfPdf(m_options.pdf);
    m_options.manifest = ManifestShares::pathOf(m_options.manifest, m_options.shard);
    for (auto lost = m_options.lostRows.cbegin(); lost != m_options.lostRows.cend(); ++lost)
        m_lastLost = std::max(m_lastLost, lost.key());
    if (m_options.verify)
        m_verifier = std::make_unique<CodeVerifier>();
}

Batch::~Batch() = default;

QString Batch::usualManifest(const QString &pattern)
{
    const QString fixed = pattern.left(pattern.indexOf(u'{'));
    const qsizetype slash = fixed.lastIndexOf(u'/');
    return fixed.left(slash + 1) + u"manifest.jsonl"_s;
}

QString Batch::usualManifestOfPdf(const QString &pdf)
{
    const QFileInfo info(pdf);
    return info.dir().filePath(info.completeBaseName() + u".manifest.jsonl"_s);
}

std::unique_ptr<Batch> Batch::of(
    const LabelDocument &label, RowSource &rows, const BatchOptions &options, BatchRefusal &refusal)
{
    std::unique_ptr<Batch> batch(new Batch(label, rows, options));
    return batch->prepare(refusal) ? std::move(batch) : nullptr;
}

bool Batch::prepare(BatchRefusal &refusal)
{
    refusal.kind = BatchRefusal::Options;
    if (!prepareAdjustment(refusal.problems))
        return false;
    const BindingOptions binding { m_rows.columns(), m_options.rowSource, m_options.separation.layers,
        m_options.assets };
    m_document = RowDocument::of(m_label, binding, refusal.problems);
    if (m_document)
        refusal.problems += printProblems(m_document->document(), m_plates.dpi);
    refusal.kind = BatchRefusal::Label;
    if (!refusal.problems.isEmpty())
        return false;
    m_composer = std::make_unique<PlateComposer>(m_document->document(), m_document->boundItems(), m_plates);
    if (!prepareCheck(refusal.problems))
        return false;
    refusal.kind = BatchRefusal::Options;
    if (!preparePlan(refusal.problems))
        return false;
    m_count.total = shareOf(m_rows.total());
    refusal.kind = BatchRefusal::Output;
    return m_output->open(refusal.problems) && openManifest(refusal.problems);
}

/// Of the rows of the data, how many are to be printed.
std::optional<qint64> Batch::shareOf(std::optional<qint64> rows) const
{
    if (!rows)
        return {};
    // Chosen rows need not be spread evenly over the shares.
    const qint64 chosen = m_options.rows.countOf(*rows);
    return m_options.rows.isAll() ? m_options.shard.countOf(chosen)
                                  : (chosen + m_options.shard.count - 1) / m_options.shard.count;
}

bool Batch::prepareAdjustment(Problems &problems)
{
    m_adjuster = PlateAdjuster::of(m_label, m_options.separation, m_options.adjustment, problems);
    if (!m_adjuster)
        return false;
    m_plates = m_adjuster->separation();
    m_plates.layers.clear(); // nothing but their items is left
    return true;
}

bool Batch::preparePlan(Problems &problems)
{
    m_plan = RowPlan::of(
        m_options, m_rows.columns(), m_adjuster->inks().printed(), m_document->countsLabels(), problems);
    if (!m_plan)
        return false;
    if (m_plan->hasNames() != m_options.pdf.isEmpty()) {
        problems.append({ {}, {}, u"labels go into files with names of a pattern, or into one PDF"_s,
            u"give either of them"_s });
        return false;
    }
    m_output = RowOutputs::of(m_options, m_label.pageSize(), *m_adjuster, m_plan->hasInk(), problems);
    return m_output != nullptr;
}

/// What is wrong with what all labels have in common would let every row fail.
bool Batch::prepareCheck(Problems &problems)
{
    if (m_options.check == BatchOptions::Check::None)
        return true;
    m_checker
        = std::make_unique<LabelChecker>(m_document->document(), m_plates.dpi, m_document->boundItems());
    problems = faultsAmong(m_checker->checkAll(), m_checkWarnings);
    return problems.isEmpty();
}

bool Batch::openManifest(Problems &problems)
{
    if (const auto problem = OutputFailure::createFolder(QFileInfo(m_options.manifest).path())) {
        problems.append(*problem);
        return false;
    }
    using Start = BatchOptions::Start;
    const QJsonObject head = BatchHead::of(m_options, m_document->tellsTime());
    const bool isNew = m_options.start == Start::New || m_options.start == Start::Replace;
    m_manifest = isNew
        ? Manifest::create(m_options.manifest, head, m_options.start == Start::Replace, problems)
        : Manifest::resume(m_options.manifest, head, problems);
    return m_manifest != nullptr;
}

BatchEnd Batch::run(BatchObserver &observer)
{
    m_observer = &observer;
    tell(m_document->warnings());
    tell(m_checkWarnings);
    tellKeptColors();
    std::optional<BatchEnd> end;
    while (!end) {
        const RowResult result = m_rows.next();
        if (observer.isInterrupted())
            end = BatchEnd::Interrupted;
        else if (result.kind == RowResult::End)
            end = endOfRows();
        else if (m_options.rows.endsBefore(result.row.number))
            end = endOfChosen();
        else
            end = take(result);
    }
    end = finish(*end);
    m_observer = nullptr;
    return *end;
}

/// Rows on record that the data have no more are none.
BatchEnd Batch::endOfRows()
{
    m_replaced += m_manifest->takeBehind(m_lastRow);
    return BatchEnd::Complete;
}

BatchEnd Batch::endOfChosen()
{
    m_hasReadAll = false;
    return BatchEnd::Complete;
}

BatchEnd Batch::finish(BatchEnd end)
{
    if (end == BatchEnd::Complete)
        removeReplaced();
    Problems problems;
    if (!m_output->finish(end == BatchEnd::Complete, problems))
        end = BatchEnd::CannotWrite;
    const bool isComplete = end == BatchEnd::Complete;
    // The pages on record of a file that there is not would only be in the way.
    if (m_output->isOneFile() && !isComplete)
        m_manifest->remove();
    else if (!m_manifest->finish(
                 isComplete && m_count.untried == 0 ? std::optional(dataEnd()) : std::nullopt, problems))
        end = BatchEnd::CannotWrite;
    for (const Problem &problem : std::as_const(problems))
        m_observer->problem(problem);
    return end;
}

/// Only now it is known which names no row of any share has.
void Batch::removeReplaced()
{
    for (const ManifestEntry &entry : std::as_const(m_replaced))
        m_output->takeBackEarlier(entry, [this](const QString &name) { return m_plan->isGiven(name); });
}

Manifest::End Batch::dataEnd() const
{
    return { m_lastRow, m_data.result().toHex().first(16), m_hasReadAll };
}

std::optional<BatchEnd> Batch::take(const RowResult &result)
{
    if (result.kind == RowResult::Failed) {
        m_observer->problem(result.problem);
        return BatchEnd::DataFailed;
    }
    m_lastRow = result.row.number;
    m_count.about = shareOf(m_rows.estimate());
    const QByteArray digest = RowDigest::ofValues(result.row);
    m_data.addData(digest);
    // Rows of other shares take names as well: which of two rows may have one does not depend on the shares.
    const bool isChosen = m_options.rows.contains(result.row.number);
    const RowPlan::Entry plan = m_plan->take(result, isChosen);
    if (!isChosen || !m_options.shard.contains(result.row.number))
        return {};
    m_observer->rowBegins(result.row.number);
    return print({ result.row, plan, m_digests.withFiles(digest, filesOf(result.row, plan)) });
}

/// Of all copies. Those of a row that cannot be printed may be what another process has been lost with.
QStringList Batch::filesOf(const Row &row, const RowPlan::Entry &plan) const
{
    if (m_options.lostRows.contains(row.number))
        return {};
    QStringList files;
    const qint64 labels = m_document->countsLabels() ? plan.copies.value_or(1) : 1;
    for (qint64 label = 0; label < labels; ++label)
        files += m_document->filesOf(row, { m_options.begin, plan.firstLabel + label });
    files.removeDuplicates();
    return files;
}

std::optional<BatchEnd> Batch::print(const Job &job)
{
    ManifestEntry entry { .row = job.row.number,
        .key = job.plan.key,
        .digest = job.digest,
        .copies = job.plan.copies.value_or(1) };
    const std::optional<ManifestEntry> before = m_manifest->find(entry.row);
    if (qint64 *count = countOfDone(before, entry)) {
        ++*count;
        for (const QString &reason : before ? before->problems : QStringList())
            m_observer->rowHasFailed(entry.row, reason);
        m_observer->rowDone(m_count);
        return {};
    }
    const auto lost = m_options.lostRows.constFind(entry.row);
    const Problems problems = lost != m_options.lostRows.cend() ? Problems { *lost }
        : job.plan.names                                        ? printCopies(job, entry)
                                                                : Problems { job.plan.problem };
    if (!problems.isEmpty())
        m_output->takeBack(entry);
    if (before)
        m_replaced.append(*before);
    return record(job, entry, problems);
}

/// What counts a row that is not to be printed now; null for one that is.
qint64 *Batch::countOfDone(const std::optional<ManifestEntry> &before, const ManifestEntry &entry)
{
    if (m_options.start == BatchOptions::Start::OnlyFailed && !before)
        return &m_count.untried;
    if (!before)
        return nullptr;
    const bool isSame = before->digest == entry.digest;
    // The process that printed these rows has told why they failed, and been lost behind them.
    if (!before->isPrinted && isSame && entry.row < m_lastLost)
        return &m_count.failed;
    if (!before->isPrinted || m_options.reprints)
        return nullptr;
    const bool isKept
        = m_options.start == BatchOptions::Start::OnlyFailed || (isSame && m_output->areIntact(*before));
    return isKept ? &m_count.kept : nullptr;
}

std::optional<BatchEnd> Batch::record(const Job &job, ManifestEntry &entry, const Problems &problems)
{
    if (m_output->isBlocked())
        return endBlocked(job.row, problems);
    for (const Problem &problem : problems) {
        const Problem located = ofRow(problem, job.row);
        entry.problems.append(reasonOf(located));
        // One file of all labels is begun again behind a row that was lost; what was in front of it was told.
        if (job.row.number < m_lastLost)
            m_observer->rowHasFailed(job.row.number, entry.problems.last());
        else
            m_observer->rowFails(job.row.number, located);
    }
    entry.isPrinted = problems.isEmpty();
    if (Problems unwritten; !m_manifest->append(entry, unwritten)) {
        m_observer->problem(unwritten.constFirst());
        return BatchEnd::CannotWrite;
    }
    ++(entry.isPrinted ? m_count.printed : m_count.failed);
    m_count.labels += entry.isPrinted ? entry.copies : 0;
    m_observer->rowDone(m_count);
    const bool stops = !entry.isPrinted && m_options.onError == BatchOptions::OnError::Stop;
    return stops ? std::optional(BatchEnd::Stopped) : std::nullopt;
}

/// What cannot be written is told with its file: the row is not to blame.
BatchEnd Batch::endBlocked(const Row &row, const Problems &problems)
{
    for (const Problem &problem : problems)
        m_observer->problem(problem.file.isEmpty() ? ofRow(problem, row) : problem);
    return BatchEnd::CannotWrite;
}

Problems Batch::printCopies(const Job &job, ManifestEntry &entry)
{
    Problems problems;
    const qsizetype count = job.plan.names->size();
    // Pages cannot be taken back: none of the copies is printed unless all of them can be.
    for (qsizetype i = 1; i < count && m_output->isOneFile() && m_document->countsLabels(); ++i) {
        if (!separationOf(
                job.row, job.plan.firstLabel + i, m_verifier ? With::Plates : With::NoPlates, problems))
            return problems;
    }
    const With plates = m_output->needsPlates() || m_verifier ? With::Plates : With::NoPlates;
    std::optional<Separation> separation;
    for (qsizetype i = 0; i < count && problems.isEmpty(); ++i) {
        if (i == 0 || m_document->countsLabels()) {
            separation = separationOf(job.row, job.plan.firstLabel + i, plates, problems);
            if (!separation || !m_adjuster->apply(*separation, problems))
                break;
        }
        problems += m_output->write({ m_document->document(), *separation }, job.plan.names->at(i), entry);
        for (std::size_t plate = 0; i == 0 && plate < separation->plates.size(); ++plate) {
            const Plate &printed = separation->plates[plate];
            entry.inks.append({ printed.ink.name, printed.dots, printed.coverage() });
        }
    }
    return problems;
}

std::optional<Separation> Batch::separationOf(const Row &row, qint64 label, With plates, Problems &problems)
{
    std::optional<Separation> separation;
    if (m_document->show(row, { m_options.begin, label }, problems))
        problems += checkShown();
    if (problems.isEmpty())
        separation = plates == With::Plates ? m_composer->separate(problems) : m_composer->check(problems);
    // Renderers that items have replaced wait for that.
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    if (!separation)
        return {};
    m_document->locate(separation->warnings);
    QSet<QString> unreadable;
    for (const PrintedBarcode &barcode : separation->barcodes) {
        if (barcode.isRefused())
            unreadable.insert(m_document->pointerOf(std::size_t(barcode.item)));
    }
    const auto isFailure = [&](const Problem &warning) { return unreadable.contains(warning.where); };
    std::ranges::copy_if(separation->warnings, std::back_inserter(problems), isFailure);
    separation->warnings.removeIf(isFailure);
    tell(separation->warnings);
    verify(*separation, problems);
    return problems.isEmpty() ? std::move(separation) : std::nullopt;
}

Problems Batch::checkShown()
{
    Problems others;
    const Problems faults = m_checker ? faultsAmong(m_checker->checkShown(), others) : Problems();
    tell(others);
    return faults;
}

Problems Batch::faultsAmong(const Findings &findings, Problems &others) const
{
    Problems faults;
    const bool isStrict = m_options.check == BatchOptions::Check::Warnings;
    for (const Finding &finding : findings)
        (isStrict || finding.severity == Finding::Error ? faults : others).append(finding.problem);
    m_document->locate(faults);
    m_document->locate(others);
    return faults;
}

void Batch::verify(const Separation &separation, Problems &problems)
{
    if (!m_verifier)
        return;
    const std::optional<Separation> seen = m_adjuster->seen(separation, problems);
    if (!seen)
        return;
    Problems found = m_verifier->verify(m_document->document(), *seen, m_plates);
    m_document->locate(found);
    problems += found;
    tell(m_verifier->takeNotes());
}

/// Pictures of a PDF in colour are not printed with other inks.
void Batch::tellKeptColors()
{
    if (m_options.format != BatchOptions::Format::Pdf)
        return;
    Problems kept = InkRecoloring::warnings(m_document->document(), m_adjuster->inks());
    m_document->locate(kept);
    tell(kept);
}

void Batch::tell(const Problems &warnings)
{
    for (const Problem &warning : warnings) {
        const QString text = warning.text();
        if (m_notes.size() >= mostNotes || m_notes.contains(text))
            continue;
        m_notes.insert(text);
        m_observer->warning(warning);
    }
}
