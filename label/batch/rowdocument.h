// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "label/data/assetpaths.h"
#include "label/data/rowcontent.h"
#include "label/flatdocument.h"
#include "label/labeldocument.h"

#include <memory>
#include <optional>
#include <vector>

/// How the items of a label are bound to data.
struct BindingOptions
{
    QStringList columns;
    /// The document's source that the rows come from; nothing if they take the place of whatever it has.
    std::optional<int> rowSource = {};
    /// The names or numbers of the layers that are printed, and nothing else; everything if empty.
    QStringList layers = {};
    AssetPaths assets = AssetPaths({});
};

/// A label on whose items one row after the other is shown. Each row begins from the items as they were
/// designed: what a label looks like does not depend on the labels before it.
class VX_LABEL_EXPORT RowDocument
{
public:
    /// Null, with the reasons in problems, if the label has problems(), or an item asks for a column, source
    /// or layer that does not exist. The label must outlive it.
    [[nodiscard]] static std::unique_ptr<RowDocument> of(
        const LabelDocument &label, const BindingOptions &options, Problems &problems);
    ~RowDocument();
    Q_DISABLE_COPY_MOVE(RowDocument)

    /// Whether the content of any item is another one for a copy of a label, or for another run.
    [[nodiscard]] bool countsLabels() const;
    [[nodiscard]] bool tellsTime() const;
    /// The places in document() of the items that show data, in ascending order; all others are the same on
    /// each label.
    [[nodiscard]] std::vector<std::size_t> boundItems() const;
    /// Whether any item shows data at all.
    [[nodiscard]] bool isBound() const { return !m_bound.empty(); }

    /// Shows a row. False, with the reasons in problems, if an item cannot show it.
    [[nodiscard]] bool show(const Row &row, const RowContent::Context &context, Problems &problems);
    /// The label with the row that was shown last; its items all lie on the page.
    [[nodiscard]] const LabelDocument &document() const { return m_document; }
    /// The files that the pictures and drawings of a row come from, as far as they are there.
    [[nodiscard]] QStringList filesOf(const Row &row, const RowContent::Context &context) const;
    /// The JSON pointer in the label of the item that has this place in document().
    [[nodiscard]] QString pointerOf(std::size_t item) const { return m_flat.pointerOf(item); }
    /// Lets problems of document() name the items of the label.
    void locate(Problems &problems) const { m_flat.locate(problems); }
    /// Layers that are to be printed, and hidden.
    [[nodiscard]] const Problems &warnings() const { return m_flat.warnings(); }

private:
    enum class Kind { Value, Function, Template };
    struct Bound
    {
        std::size_t item; ///< its place in the flat document
        Kind kind;
        RowContent content;
        std::optional<QString> shown; ///< by the item as it is
    };

    RowDocument(const LabelDocument &label, const BindingOptions &options);

    void bindItem(std::size_t index, Problems &problems);
    [[nodiscard]] std::optional<Bound> boundTo(
        int id, const QString &field, std::size_t index, Problems &problems) const;
    Item &asDesigned(std::size_t index);
    bool showOnLabelText(const Bound &bound, const QString &text);
    [[nodiscard]] bool show(Item &item, const Bound &bound, const QString &text, Problem &problem) const;

    const LabelDocument &m_label;
    BindingOptions m_options;
    FlatDocument m_flat;
    LabelDocument m_document;
    std::vector<Bound> m_bound;
    std::vector<std::size_t> m_withFiles; ///< those that show files
};
