// SPDX-License-Identifier: BSD-3-Clause
#include "label/data/rowtemplate.h"

#include "label/data/columnnames.h"
#include "label/data/numberform.h"
#include "label/wording.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

const QString opening = u"${"_s;
const QString counterName = u"#"_s;
const QString dateName = u"date"_s;
const QString timeName = u"time"_s;

QString textOfMoment(const QDateTime &moment, const QString &form, const QString &iso)
{
    return moment.toString(form.isEmpty() ? iso : form);
}

/// What QString::toHtmlEscaped() has done, undone.
QString unescaped(QString text)
{
    return text.replace(u"&lt;"_s, u"<"_s)
        .replace(u"&gt;"_s, u">"_s)
        .replace(u"&quot;"_s, u"\""_s)
        .replace(u"&amp;"_s, u"&"_s);
}

/// As text within HTML, which takes line feeds for spaces.
QString escaped(const QString &value)
{
    return value.toHtmlEscaped()
        .replace(u"\r\n"_s, u"<br/>"_s)
        .replace(u'\n', u"<br/>"_s)
        .replace(u'\r', u"<br/>"_s);
}

} // namespace

std::optional<RowTemplate::Part> RowTemplate::partOf(
    const QString &place, const QStringList &columns, Problems &problems)
{
    Part part;
    QString name = place;
    if (!columns.contains(place)) {
        const qsizetype bar = place.indexOf(u'|');
        part.otherwise = bar < 0 ? QString() : place.sliced(bar + 1);
        name = bar < 0 ? place : place.first(bar);
        const qsizetype colon = name.indexOf(u':');
        part.form = colon < 0 ? QString() : name.sliced(colon + 1);
        name = colon < 0 ? name : name.first(colon);
    }
    part.text = name;
    part.column = columns.indexOf(name);
    part.kind = part.column >= 0 ? Kind::Column
        : name == counterName    ? Kind::Counter
        : name == dateName       ? Kind::Date
        : name == timeName       ? Kind::Time
                                 : Kind::Text;
    if (part.kind == Kind::Text) {
        problems.append(ColumnNames::unknown(name, columns));
        return {};
    }
    const bool isMoment = part.kind == Kind::Date || part.kind == Kind::Time;
    if (!isMoment && !part.form.isEmpty() && !NumberForm::isValid(part.form)) {
        problems.append({ {}, {}, u"%1 is no form of a number"_s.arg(Wording::quoted(part.form)),
            u"for example %.2f or %05d"_s });
        return {};
    }
    return part;
}

std::optional<RowTemplate> RowTemplate::parse(
    const QString &text, const QStringList &columns, Problems &problems, Markup markup)
{
    RowTemplate made;
    made.m_markup = markup;
    const auto addText = [&made](const QString &piece) {
        if (!piece.isEmpty())
            made.m_parts.push_back({ Kind::Text, piece, 0, {}, {} });
    };
    const qsizetype before = problems.size();
    qsizetype from = 0;
    for (qsizetype at = text.indexOf(opening); at >= 0; at = text.indexOf(opening, from)) {
        if (at > from && text[at - 1] == u'$') {
            addText(text.sliced(from, at - 1 - from) + opening);
            from = at + opening.size();
            continue;
        }
        const qsizetype end = text.indexOf(u'}', at);
        if (end < 0) {
            problems.append({ {}, {}, u"%1 is not closed"_s.arg(Wording::quoted(text.sliced(at))),
                u"write } behind the name of the column, or $${ for the two characters"_s });
            return {};
        }
        addText(text.sliced(from, at - from));
        const qsizetype name = at + opening.size();
        const QString place = text.sliced(name, end - name);
        if (std::optional<Part> part
            = partOf(markup == Markup::Html ? unescaped(place) : place, columns, problems))
            made.m_parts.push_back(std::move(*part));
        from = end + 1;
    }
    addText(text.sliced(from));
    return problems.size() == before ? std::optional(std::move(made)) : std::nullopt;
}

bool RowTemplate::hasPlaces(const QString &text)
{
    return text.contains(opening);
}

bool RowTemplate::has(Kind kind) const
{
    return std::ranges::any_of(m_parts, [kind](const Part &part) { return part.kind == kind; });
}

std::optional<QString> RowTemplate::textOf(
    const Part &part, const Row &row, const Context &context, Problem &problem)
{
    switch (part.kind) {
    case Kind::Text:
        return part.text;
    case Kind::Date:
        return textOfMoment(context.begin, part.form, u"yyyy-MM-dd"_s);
    case Kind::Time:
        return textOfMoment(context.begin, part.form, u"HH:mm:ss"_s);
    case Kind::Counter:
    case Kind::Column:
        break;
    }
    const QString value
        = part.kind == Kind::Counter ? QString::number(context.label) : row.values.value(part.column);
    if (value.isEmpty())
        return part.otherwise;
    if (part.form.isEmpty())
        return value;
    std::optional<QString> formed = NumberForm::apply(part.form, value);
    if (!formed)
        problem = { row.address, u"column "_s + Wording::quoted(part.text),
            u"%1 is no number for %2"_s.arg(Wording::quoted(value), part.form),
            NumberForm::adviceFor(part.form, value) };
    return formed;
}

std::optional<QString> RowTemplate::textFor(const Row &row, const Context &context, Problem &problem) const
{
    QString text;
    for (const Part &part : m_parts) {
        const std::optional<QString> piece = textOf(part, row, context, problem);
        if (!piece)
            return {};
        text += m_markup == Markup::Html && part.kind != Kind::Text ? escaped(*piece) : *piece;
    }
    return text;
}
