// SPDX-License-Identifier: BSD-3-Clause
#include "label/sheet/sheetoptions.h"

#include "label/nearestname.h"
#include "label/wording.h"

#include <QRegularExpression>
#include <QStringList>

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace {

constexpr int mostInRow = 1000;

struct NamedSize
{
    const char16_t *name;
    const char16_t *sides;
};

constexpr std::array namedSizes {
    NamedSize { u"a3", u"297x420mm" },
    NamedSize { u"a4", u"210x297mm" },
    NamedSize { u"a5", u"148x210mm" },
    NamedSize { u"a6", u"105x148mm" },
    NamedSize { u"legal", u"8.5x14in" },
    NamedSize { u"letter", u"8.5x11in" },
};

QString sidesOf(const QString &name)
{
    const auto found = std::ranges::find_if(
        namedSizes, [&](const NamedSize &size) { return QString::fromUtf16(size.name) == name; });
    return found == namedSizes.end() ? QString() : QString::fromUtf16(found->sides);
}

QStringList sizeNames()
{
    QStringList names;
    for (const NamedSize &size : namedSizes)
        names.append(QString::fromUtf16(size.name));
    return names;
}

Problem noSize(const QString &text)
{
    const QString meant = nearestName(text, sizeNames());
    return { {}, {}, Wording::quoted(text) + u" is no size of a sheet"_s,
        meant.isEmpty() ? u"use %1, or two sides, for example 210x297mm"_s.arg(sizeNames().join(u", "_s))
                        : u"did you mean %1?"_s.arg(Wording::quoted(meant)) };
}

} // namespace

std::optional<LengthPair> SheetOptions::parseSize(const QString &text, Problem &problem)
{
    static const QRegularExpression form(uR"(\A\s*([0-9.]+)\s*([a-z]*)\s*x\s*([0-9.]+)\s*([a-z]*)\s*\z)"_s,
        QRegularExpression::CaseInsensitiveOption);
    const QString named = sidesOf(text.trimmed().toLower());
    const QRegularExpressionMatch match = form.match(named.isEmpty() ? text : named);
    if (!match.hasMatch()) {
        problem = noSize(text);
        return {};
    }
    const QString unit = match.captured(4);
    const QString unitOfFirst = match.captured(2).isEmpty() ? unit : match.captured(2);
    const std::optional<Length> width = Length::parse(match.captured(1) + unitOfFirst, problem);
    const std::optional<Length> height
        = width ? Length::parse(match.captured(3) + unit, problem) : std::nullopt;
    return height ? std::optional(LengthPair { *width, *height }) : std::nullopt;
}

std::optional<QSize> SheetOptions::parseCells(const QString &text, Problem &problem)
{
    static const QRegularExpression form(uR"(\A\s*([0-9]{1,4})\s*[xX]\s*([0-9]{1,4})\s*\z)"_s);
    const QRegularExpressionMatch match = form.match(text);
    const QSize cells(match.captured(1).toInt(), match.captured(2).toInt());
    if (!cells.isEmpty() && std::max(cells.width(), cells.height()) <= mostInRow)
        return cells;
    problem = { {}, {}, Wording::quoted(text) + u" are no columns and rows"_s,
        u"write both, from 1 to %1, for example 3x8"_s.arg(mostInRow) };
    return {};
}
