// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "label/data/datasource.h"
#include "label/data/rowtemplate.h"

#include <optional>
#include <variant>

/// What a bound item shows, row by row: the value of a column, a text with places, or what a function makes.
class RowContent
{
public:
    using Context = RowTemplate::Context;

    /// The value of a column. Nothing, with the reason in problems, if there is none of the name.
    [[nodiscard]] static std::optional<RowContent> ofColumn(
        const QString &name, const QStringList &columns, Problems &problems);
    /// A text with places; see RowTemplate.
    [[nodiscard]] static std::optional<RowContent> ofTemplate(
        const QString &text, RowTemplate::Markup markup, const QStringList &columns, Problems &problems);
    /// A source that is a function, without the mark that shows it.
    [[nodiscard]] static std::optional<RowContent> ofFunction(
        const DataSource &source, RowTemplate::Markup markup, const QStringList &columns, Problems &problems);

    /// Whether it is another one for a copy of a label, or for another run.
    [[nodiscard]] bool countsLabels() const;
    [[nodiscard]] bool tellsTime() const;
    /// The text for a row. Nothing, with the reason in problem, if there is none.
    [[nodiscard]] std::optional<QString> textFor(
        const Row &row, const Context &context, Problem &problem) const;

private:
    using Column = qsizetype;
    using Content = std::variant<Column, RowTemplate, DataSource>;

    explicit RowContent(Content content)
        : m_content(std::move(content))
    {
    }

    Content m_content; ///< A source is a counter or a date.
};
