// SPDX-License-Identifier: BSD-3-Clause
#include "label/data/namepattern.h"

#include "label/data/columnnames.h"
#include "label/wording.h"

#include <QRegularExpression>

#include <algorithm>
#include <map>

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype longestName = 255; // bytes

bool isControl(QChar c)
{
    return c.category() == QChar::Other_Control;
}

/// Why a value cannot be part of a name; empty if it can.
QString flawOf(const QString &value)
{
    if (value.isEmpty())
        return u"is empty"_s;
    if (value.contains(u'/') || value.contains(u'\\'))
        return u"holds a slash"_s;
    if (value.count(u'.') == value.size())
        return u"is nothing but points"_s;
    return std::ranges::any_of(value, isControl) ? u"holds a control character"_s : QString();
}

/// Why a path cannot be written; empty if it can.
QString flawOfPath(const QString &path)
{
    for (const QString &name : path.split(u'/').sliced(path.startsWith(u'/') ? 1 : 0)) {
        if (name.isEmpty())
            return u"the name of a file or folder would be empty"_s;
        if (name.toUtf8().size() > longestName)
            return u"a name would be longer than %1 bytes"_s.arg(longestName);
    }
    return {};
}

} // namespace

std::optional<NamePattern::Part> NamePattern::partOf(
    const QString &place, const QStringList &columns, Problems &problems)
{
    static const std::map<QString, Kind> own { { u"row"_s, Kind::Row }, { u"copy"_s, Kind::Copy },
        { u"ink"_s, Kind::Ink } };
    static const QRegularExpression number(u"\\A(row|copy):0?([1-9]|1[0-9])\\z"_s);
    if (const QRegularExpressionMatch match = number.match(place); match.hasMatch())
        return Part { own.at(match.captured(1)), match.captured(1), -1, match.captured(2).toInt() };
    if (const auto found = own.find(place); found != own.end())
        return Part { found->second, place, -1, 0 };
    if (const qsizetype column = columns.indexOf(place); column >= 0)
        return Part { Kind::Column, place, column, 0 };
    if (place.startsWith(u"row:"_s) || place.startsWith(u"copy:"_s))
        problems.append({ {}, {}, u"%1 has no number of digits"_s.arg(Wording::quoted(place)),
            u"for example {row:05}"_s });
    else
        problems.append(ColumnNames::unknown(place, columns + QStringList { u"row"_s, u"copy"_s, u"ink"_s }));
    return {};
}

std::optional<NamePattern> NamePattern::parse(
    const QString &text, const QStringList &columns, Problems &problems)
{
    NamePattern pattern;
    const qsizetype before = problems.size();
    QString plain;
    const auto endPlain = [&] {
        if (!plain.isEmpty())
            pattern.m_parts.push_back({ Kind::Text, std::exchange(plain, {}), -1, 0 });
    };
    for (qsizetype i = 0; i < text.size(); ++i) {
        const bool isBrace = text[i] == u'{' || text[i] == u'}';
        const bool isDoubled = isBrace && i + 1 < text.size() && text[i + 1] == text[i];
        const qsizetype end = text[i] == u'{' && !isDoubled ? text.indexOf(u'}', i) : -1;
        if (end > 0) {
            endPlain();
            if (std::optional<Part> part = partOf(text.sliced(i + 1, end - i - 1), columns, problems))
                pattern.m_parts.push_back(std::move(*part));
            i = end;
            continue;
        }
        if (isBrace && !isDoubled)
            problems.append({ {}, {}, u"a single %1 in %2"_s.arg(text[i]).arg(Wording::quoted(text)),
                u"write {column}, or {{ and }} for the characters"_s });
        plain += text[i];
        i += isDoubled ? 1 : 0;
    }
    endPlain();
    return problems.size() == before ? std::optional(std::move(pattern)) : std::nullopt;
}

bool NamePattern::has(Kind kind) const
{
    return std::ranges::any_of(m_parts, [kind](const Part &part) { return part.kind == kind; });
}

QString NamePattern::textOf(const Part &part, const Label &label, const QString &ink)
{
    const auto counted
        = [&part](qint64 number) { return QString::number(number).rightJustified(part.digits, u'0'); };
    switch (part.kind) {
    case Kind::Text:
        return part.text;
    case Kind::Column:
        return label.row.values.value(part.column);
    case Kind::Row:
        return counted(label.row.number);
    case Kind::Copy:
        return counted(label.copy);
    case Kind::Ink:
        return ink;
    }
    return {};
}

std::optional<QString> NamePattern::nameFor(const Label &label, const QString &ink, Problem &problem) const
{
    QString path;
    for (const Part &part : m_parts) {
        const QString text = textOf(part, label, ink);
        QString flaw = part.kind == Kind::Column ? flawOf(text) : QString();
        const bool beginsName = path.isEmpty() || path.endsWith(u'/');
        if (flaw.isEmpty() && part.kind == Kind::Column && beginsName && text.startsWith(u'.'))
            flaw = u"begins with a point"_s;
        if (!flaw.isEmpty()) {
            problem = { label.row.address, u"column "_s + Wording::quoted(part.text),
                u"%1 cannot name a file: it %2"_s.arg(Wording::quoted(text), flaw),
                u"use another column, or {row}"_s };
            return {};
        }
        path += text;
    }
    if (const QString flaw = flawOfPath(path); !flaw.isEmpty()) {
        problem = { label.row.address, {}, flaw, u"use another column, or {row}"_s };
        return {};
    }
    return path;
}
