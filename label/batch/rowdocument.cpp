// SPDX-License-Identifier: BSD-3-Clause
#include "label/batch/rowdocument.h"

#include "items/core/item.h"
#include "items/core/itemtexts.h"
#include "items/text/simpletextitem.h"
#include "label/batch/boundcontent.h"
#include "label/wording.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

constexpr int unbound = -1;

RowTemplate::Markup markupOf(const Item &item)
{
    return BoundContent::hasHtml(item) ? RowTemplate::Markup::Html : RowTemplate::Markup::None;
}

/// Problems of an item say which one it is.
void addProblems(const Problems &found, const Item &item, const QString &pointer, Problems &problems)
{
    for (const Problem &problem : found)
        problems.append(
            { problem.file, pointer, Wording::item(item) + u": "_s + problem.what, problem.advice });
}

} // namespace

RowDocument::RowDocument(const LabelDocument &label, const BindingOptions &options)
    : m_label(label)
    , m_options(options)
    , m_flat(label, options.layers)
    , m_document(m_flat.document().withoutItems())
{
}

RowDocument::~RowDocument() = default;

std::unique_ptr<RowDocument> RowDocument::of(
    const LabelDocument &label, const BindingOptions &options, Problems &problems)
{
    Problems found = label.problems();
    if (!found.isEmpty()) {
        problems += found;
        return {};
    }
    std::unique_ptr<RowDocument> made(new RowDocument(label, options));
    found = made->m_flat.problems();
    for (const std::unique_ptr<Item> &item : made->m_flat.document().items()) {
        const std::size_t index = made->m_document.items().size();
        made->m_document.addItem(std::unique_ptr<Item>(item->createItemCopy()));
        made->bindItem(index, found);
    }
    problems += found;
    return found.isEmpty() ? std::move(made) : nullptr;
}

void RowDocument::bindItem(std::size_t index, Problems &problems)
{
    const Item &item = *m_flat.document().items()[index];
    if (!BoundContent::isPossible(item))
        return;
    Problems found;
    std::optional<Bound> bound;
    if (item.getDatasourceId() != unbound)
        bound = boundTo(item.getDatasourceId(), item.getDatasourceField(), index, found);
    else if (const QString text = BoundContent::templateOf(item); RowTemplate::hasPlaces(text)) {
        if (std::optional<RowContent> content
            = RowContent::ofTemplate(text, markupOf(item), m_options.columns, found))
            bound = Bound { index, Kind::Template, std::move(*content), {} };
    }
    addProblems(found, item, m_flat.pointerOf(index), problems);
    if (!bound)
        return;
    if (BoundContent::showsFile(item))
        m_withFiles.push_back(m_bound.size());
    m_bound.push_back(std::move(*bound));
}

std::optional<RowDocument::Bound> RowDocument::boundTo(
    int id, const QString &field, std::size_t index, Problems &problems) const
{
    const DataSource *source = DataSources::find(m_label.sources(), id);
    std::optional<RowContent> content;
    if (source && source->isFunction()) {
        const Item &item = *m_flat.document().items()[index];
        content = RowContent::ofFunction(*source, markupOf(item), m_options.columns, problems);
        return content ? std::optional(Bound { index, Kind::Function, std::move(*content), {} })
                       : std::nullopt;
    }
    if (m_options.rowSource && m_options.rowSource != id) {
        problems.append({ {}, {}, u"takes its content from source %1"_s.arg(id),
            u"the rows come from source %1: bind it to that, or give --data"_s.arg(*m_options.rowSource) });
        return {};
    }
    content = RowContent::ofColumn(field, m_options.columns, problems);
    return content ? std::optional(Bound { index, Kind::Value, std::move(*content), {} }) : std::nullopt;
}

bool RowDocument::countsLabels() const
{
    return std::ranges::any_of(m_bound, [](const Bound &bound) { return bound.content.countsLabels(); });
}

bool RowDocument::tellsTime() const
{
    return std::ranges::any_of(m_bound, [](const Bound &bound) { return bound.content.tellsTime(); });
}

std::vector<std::size_t> RowDocument::boundItems() const
{
    std::vector<std::size_t> items;
    items.reserve(m_bound.size());
    for (const Bound &bound : m_bound)
        items.push_back(bound.item);
    return items;
}

bool RowDocument::show(const Row &row, const RowContent::Context &context, Problems &problems)
{
    const qsizetype before = problems.size();
    for (Bound &bound : m_bound) {
        Problem problem;
        std::optional<QString> text = bound.content.textFor(row, context, problem);
        if (text && text == bound.shown)
            continue;
        bool isShown = false;
        if (text)
            isShown = showOnLabelText(bound, *text) || show(asDesigned(bound.item), bound, *text, problem);
        else
            asDesigned(bound.item);
        if (!isShown)
            addProblems(
                { problem }, *m_flat.document().items()[bound.item], m_flat.pointerOf(bound.item), problems);
        bound.shown = isShown ? std::move(text) : std::nullopt;
    }
    return problems.size() == before;
}

QStringList RowDocument::filesOf(const Row &row, const RowContent::Context &context) const
{
    QStringList files;
    Problem unused; // will be told when the row is shown
    for (const std::size_t index : m_withFiles) {
        const Bound &bound = m_bound[index];
        const Item &item = *m_flat.document().items()[bound.item];
        const std::optional<QString> text = bound.content.textFor(row, context, unused);
        if (const auto file
            = text ? BoundContent::fileFor(item, *text, m_options.assets, unused) : std::nullopt)
            files.append(*file);
    }
    return files;
}

/// Makes an item what it was designed to be: no row depends on the one before.
Item &RowDocument::asDesigned(std::size_t index)
{
    const std::unique_ptr<Item> &designed = m_flat.document().items()[index];
    m_document.replaceItem(index, std::unique_ptr<Item>(designed->createItemCopy()));
    return *m_document.items()[index];
}

/// The same for label texts, of which most labels have several, and the text in one step. Whether it is one.
bool RowDocument::showOnLabelText(const Bound &bound, const QString &text)
{
    auto *designed = dynamic_cast<SimpleTextItem *>(m_flat.document().items()[bound.item].get());
    auto *shown = dynamic_cast<SimpleTextItem *>(m_document.items()[bound.item].get());
    if (!designed || !shown)
        return false;
    designed->copyTo(*shown, bound.kind == Kind::Function ? ItemTexts::functionMarker + text : text);
    return true;
}

bool RowDocument::show(Item &item, const Bound &bound, const QString &text, Problem &problem) const
{
    switch (bound.kind) {
    case Kind::Value:
        return BoundContent::showValue(item, text, m_options.assets, problem);
    case Kind::Function:
        return BoundContent::showFunction(item, text, m_options.assets, problem);
    case Kind::Template:
        BoundContent::showTemplate(item, text);
        return true;
    }
    return false;
}
