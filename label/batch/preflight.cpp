// SPDX-License-Identifier: BSD-3-Clause
#include "label/batch/preflight.h"

#include "label/batch/boundcontent.h"
#include "label/batch/platecomposer.h"
#include "label/printlimits.h"

#include <QCoreApplication>
#include <QSet>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

Findings errorsOf(const Problems &problems, const char *rule)
{
    Findings findings;
    for (const Problem &problem : problems)
        findings.append({ Finding::Error, QLatin1String(rule), problem });
    return findings;
}

Findings warningsOf(const Problems &problems, const char *rule)
{
    Findings findings = errorsOf(problems, rule);
    for (Finding &finding : findings)
        finding.severity = Finding::Warning;
    return findings;
}

/// Lets findings of the document whose items all lie on the page name those of the label.
template <typename Document> void locate(Findings &findings, const Document &document)
{
    for (Finding &finding : findings) {
        Problems problems { finding.problem };
        document.locate(problems);
        finding.problem = problems.constFirst();
    }
}

/// Adds what is not among the findings of other labels of the same row, which have mostly the same faults.
void addNew(const Findings &found, Findings &findings)
{
    const auto end = findings.size();
    for (const Finding &finding : found) {
        const auto isSame = [&finding](const Finding &known) {
            return known.rule == finding.rule && known.problem.where == finding.problem.where;
        };
        if (std::none_of(findings.cbegin(), findings.cbegin() + end, isSame))
            findings.append(finding);
    }
}

/// Why items could not show a row: their place is one in the label, not that of the row.
Findings unshown(Problems problems, const Row &row, const RowDocument &document)
{
    QSet<QString> graphics;
    for (const std::size_t item : document.boundItems()) {
        if (BoundContent::showsFile(*document.document().items()[item]))
            graphics.insert(document.pointerOf(item));
    }
    Findings findings;
    for (Problem &problem : problems) {
        if (problem.file == row.address)
            problem.file.clear();
        findings
            += errorsOf({ problem }, graphics.contains(problem.where) ? "refused-picture" : "unusable-value");
    }
    return findings;
}

} // namespace

PreflightObserver::~PreflightObserver() = default;

void PreflightObserver::rowBegins(qint64 /*row*/) { }

Preflight::Preflight(const LabelDocument &label, RowSource *rows, const BatchOptions &options)
    : m_label(label)
    , m_rows(rows)
    , m_options(options)
    , m_plates(options.separation)
{
    m_plates.layers.clear(); // nothing but their items is left
    if (m_options.verify)
        m_verifier = std::make_unique<CodeVerifier>();
}

Preflight::~Preflight() = default;

PreflightEnd Preflight::run(PreflightObserver &observer)
{
    m_observer = &observer;
    Findings found = errorsOf(m_label.problems(), "unsound-label");
    if (!found.isEmpty()) {
        observer.label(found);
        return PreflightEnd::LabelRefused;
    }
    const FlatDocument design(m_label, m_options.separation.layers);
    found = errorsOf(design.problems(), "unknown-layer");
    found += refusal(design.document());
    locate(found, design);
    found += warningsOf(design.warnings(), "hidden-layer");
    observer.label(found);
    if (std::ranges::any_of(found, [](const Finding &finding) { return finding.severity == Finding::Error; }))
        return PreflightEnd::LabelRefused;
    return m_rows ? checkRows() : checkDesign(design);
}

Findings Preflight::refusal(const LabelDocument &document) const
{
    return errorsOf(printProblems(document, m_options.separation.dpi), "unprintable-page");
}

template <typename Separate> Findings Preflight::verify(const LabelDocument &document, Separate &&separate)
{
    if (!m_verifier)
        return {};
    Problems problems;
    const std::optional<Separation> separation = separate(problems);
    if (!separation)
        return errorsOf(problems, "unprintable-page");
    const Findings found = errorsOf(m_verifier->verify(document, *separation, m_plates), "unreadable-code");
    for (const Problem &note : m_verifier->takeNotes())
        m_observer->note(note);
    return found;
}

PreflightEnd Preflight::checkDesign(const FlatDocument &design)
{
    LabelChecker checker(design.document(), m_options.separation.dpi, {});
    Findings found = checker.checkAll() + verify(design.document(), [&](Problems &problems) {
        return separate(design.document(), m_plates, problems);
    });
    locate(found, design);
    m_observer->label(found);
    return PreflightEnd::Complete;
}

PreflightEnd Preflight::checkRows()
{
    std::optional<PreflightEnd> end = prepareRows();
    while (!end) {
        const RowResult result = m_rows->next();
        end = m_observer->isInterrupted() ? PreflightEnd::Interrupted : take(result);
    }
    return *end;
}

std::optional<PreflightEnd> Preflight::prepareRows()
{
    Problems problems;
    m_shown = RowDocument::of(m_label,
        { m_rows->columns(), m_options.rowSource, m_options.separation.layers, m_options.assets }, problems);
    if (!m_shown) {
        m_observer->label(errorsOf(problems, "data-binding"));
        return PreflightEnd::LabelRefused;
    }
    m_plan = RowPlan::of(m_options, m_rows->columns(), m_label.inks(), m_shown->countsLabels(), problems);
    if (!m_plan) {
        m_observer->label(errorsOf(problems, "unusable-option"));
        return PreflightEnd::OptionsRefused;
    }
    m_composer = std::make_unique<PlateComposer>(m_shown->document(), m_shown->boundItems(), m_plates);
    m_checker = std::make_unique<LabelChecker>(
        m_shown->document(), m_options.separation.dpi, m_shown->boundItems());
    Findings found = m_checker->checkAll();
    if (!m_shown->isBound())
        found += verifyShown();
    locate(found, *m_shown);
    m_observer->label(found);
    return {};
}

std::optional<PreflightEnd> Preflight::take(const RowResult &result)
{
    if (result.kind == RowResult::Failed) {
        m_observer->label(errorsOf({ result.problem }, "unreadable-data"));
        return PreflightEnd::DataFailed;
    }
    if (result.kind == RowResult::End || m_options.rows.endsBefore(result.row.number))
        return PreflightEnd::Complete;
    const bool isChosen = m_options.rows.contains(result.row.number);
    const RowPlan::Entry plan = m_plan->take(result, isChosen);
    if (!isChosen)
        return {};
    m_observer->rowBegins(result.row.number);
    m_observer->row({ result.row, plan.key, checkRow(result, plan) });
    return {};
}

Findings Preflight::checkRow(const RowResult &result, const RowPlan::Entry &plan)
{
    if (const auto lost = m_options.lostRows.constFind(result.row.number); lost != m_options.lostRows.cend())
        return errorsOf({ *lost }, "beyond-limit");
    if (result.kind == RowResult::Broken)
        return errorsOf({ result.problem }, "broken-row");
    const Findings found = checkLabels(result.row, plan);
    if (plan.names)
        return found;
    return errorsOf({ plan.problem }, plan.copies ? "unusable-name" : "unusable-copies") + found;
}

Findings Preflight::verifyShown()
{
    return verify(m_shown->document(), [this](Problems &problems) { return m_composer->separate(problems); });
}

Findings Preflight::checkLabels(const Row &row, const RowPlan::Entry &plan)
{
    Findings found;
    const qint64 copies = plan.copies.value_or(1);
    const qint64 different = m_shown->countsLabels() ? copies : std::min<qint64>(copies, 1);
    for (qint64 copy = 0; copy < different && !m_observer->isInterrupted(); ++copy)
        addNew(checkLabel(row, plan.firstLabel + copy), found);
    return found;
}

Findings Preflight::checkLabel(const Row &row, qint64 number)
{
    Problems problems;
    static_cast<void>(m_shown->show(row, { m_options.begin, number }, problems));
    Findings found = m_checker->checkShown();
    if (problems.isEmpty() && m_shown->isBound())
        found += verifyShown();
    // Renderers that items have replaced wait for that.
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    locate(found, *m_shown);
    // An item that cannot show the row still shows what it was designed with.
    found.removeIf([&](const Finding &finding) {
        return std::ranges::any_of(
            problems, [&](const Problem &problem) { return problem.where == finding.problem.where; });
    });
    return unshown(problems, row, *m_shown) + found;
}
