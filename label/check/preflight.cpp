// SPDX-License-Identifier: BSD-3-Clause
#include "label/check/preflight.h"

#include "items/graphics/imageableitem.h"
#include "items/graphics/symbolitem.h"
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

bool showsFile(const Item &item)
{
    return dynamic_cast<const ImageableItem *>(&item) || dynamic_cast<const SymbolItem *>(&item);
}

/// Why items could not show a row.
Findings unshown(const Problems &problems, const RowDocument &document)
{
    QSet<QString> graphics;
    for (const std::size_t item : document.boundItems()) {
        if (showsFile(*document.document().items()[item]))
            graphics.insert(document.pointerOf(item));
    }
    Findings findings;
    for (const Problem &problem : problems)
        findings
            += errorsOf({ problem }, graphics.contains(problem.where) ? "refused-picture" : "unusable-value");
    return findings;
}

} // namespace

PreflightObserver::~PreflightObserver() = default;

void PreflightObserver::rowBegins(qint64 /*row*/) { }

Preflight::Preflight(const LabelDocument &label, RowSource *rows, const PreflightOptions &options)
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
    return m_rows ? checkRows(observer) : checkDesign(design, observer);
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

PreflightEnd Preflight::checkDesign(const FlatDocument &design, PreflightObserver &observer)
{
    LabelChecker checker(design.document(), m_options.separation.dpi, {});
    Findings found = checker.checkAll() + verify(design.document(), [&](Problems &problems) {
        return separate(design.document(), m_plates, problems);
    });
    locate(found, design);
    observer.label(found);
    return PreflightEnd::Complete;
}

PreflightEnd Preflight::checkRows(PreflightObserver &observer)
{
    Problems problems;
    m_shown = RowDocument::of(m_label,
        { m_rows->columns(), m_options.rowSource, m_options.separation.layers, m_options.assets }, problems);
    if (!m_shown) {
        observer.label(errorsOf(problems, "data-binding"));
        return PreflightEnd::LabelRefused;
    }
    m_composer = std::make_unique<PlateComposer>(m_shown->document(), m_shown->boundItems(), m_plates);
    LabelChecker checker(m_shown->document(), m_options.separation.dpi, m_shown->boundItems());
    Findings found = checker.checkAll();
    if (!m_shown->isBound())
        found += verifyShown();
    locate(found, *m_shown);
    observer.label(found);
    while (true) {
        const RowResult result = m_rows->next();
        if (result.kind == RowResult::Failed) {
            observer.label(errorsOf({ result.problem }, "unreadable-data"));
            return PreflightEnd::DataFailed;
        }
        if (result.kind == RowResult::End || m_options.rows.endsBefore(result.row.number))
            return PreflightEnd::Complete;
        if (!m_options.rows.contains(result.row.number))
            continue;
        observer.rowBegins(result.row.number);
        found = result.kind == RowResult::Broken ? errorsOf({ result.problem }, "broken-row")
                                                 : checkRow(result.row, checker);
        for (Finding &finding : found)
            finding.problem = ofRow(finding.problem, result.row);
        observer.row(result.row, found);
    }
}

Findings Preflight::verifyShown()
{
    return verify(m_shown->document(), [this](Problems &problems) { return m_composer->separate(problems); });
}

Findings Preflight::checkRow(const Row &row, LabelChecker &checker)
{
    Problems problems;
    static_cast<void>(m_shown->show(row, { m_options.begin, row.number }, problems));
    Findings found = checker.checkShown();
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
    return unshown(problems, *m_shown) + found;
}
