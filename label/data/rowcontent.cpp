// SPDX-License-Identifier: BSD-3-Clause
#include "label/data/rowcontent.h"

#include "label/data/columnnames.h"
#include "label/data/numberform.h"

using namespace Qt::StringLiterals;

namespace {

/// Counters wrap around rather than end the run: the millionth label of a step of 10^13 is nobody's.
QString counted(const DataSource &counter, qint64 label)
{
    const auto steps = quint64(counter.step) * quint64(label - 1);
    const QString number = QString::number(qint64(quint64(counter.start) + steps));
    return counter.form.isEmpty() ? number : NumberForm::apply(counter.form, number).value_or(number);
}

QString dated(const DataSource &date, const QDateTime &begin)
{
    return begin.addDays(date.days).toString(date.form.isEmpty() ? u"yyyy-MM-dd"_s : date.form);
}

} // namespace

std::optional<RowContent> RowContent::ofColumn(
    const QString &name, const QStringList &columns, Problems &problems)
{
    const qsizetype column = columns.indexOf(name);
    if (column >= 0)
        return RowContent(column);
    problems.append(ColumnNames::unknown(name, columns));
    return {};
}

std::optional<RowContent> RowContent::ofTemplate(
    const QString &text, RowTemplate::Markup markup, const QStringList &columns, Problems &problems)
{
    std::optional<RowTemplate> parsed = RowTemplate::parse(text, columns, problems, markup);
    return parsed ? std::optional(RowContent(std::move(*parsed))) : std::nullopt;
}

std::optional<RowContent> RowContent::ofFunction(
    const DataSource &source, RowTemplate::Markup markup, const QStringList &columns, Problems &problems)
{
    return source.kind == DataSource::Kind::Concatenation ? ofTemplate(source.text, markup, columns, problems)
                                                          : std::optional(RowContent(source));
}

bool RowContent::countsLabels() const
{
    const auto *text = std::get_if<RowTemplate>(&m_content);
    const auto *source = std::get_if<DataSource>(&m_content);
    return (text && text->countsLabels()) || (source && source->kind == DataSource::Kind::Counter);
}

bool RowContent::tellsTime() const
{
    const auto *text = std::get_if<RowTemplate>(&m_content);
    const auto *source = std::get_if<DataSource>(&m_content);
    return (text && text->tellsTime()) || (source && source->kind == DataSource::Kind::Date);
}

std::optional<QString> RowContent::textFor(const Row &row, const Context &context, Problem &problem) const
{
    if (const auto *column = std::get_if<Column>(&m_content))
        return row.values.value(*column);
    if (const auto *text = std::get_if<RowTemplate>(&m_content))
        return text->textFor(row, context, problem);
    const auto &source = std::get<DataSource>(m_content);
    return source.kind == DataSource::Kind::Counter ? counted(source, context.label)
                                                    : dated(source, context.begin);
}
