// SPDX-License-Identifier: BSD-3-Clause
#include "label/adjust/inkmapping.h"

#include "label/nearestname.h"
#include "label/wording.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

/// The place of an ink; its name is a problem if there is none.
std::optional<std::size_t> placeOf(const QString &name, const QList<Ink> &inks, Problems &problems)
{
    QStringList names;
    for (const Ink &ink : inks) {
        if (ink.name == name)
            return std::size_t(names.size());
        names.append(ink.name);
    }
    const QString meant = nearestName(name, names);
    problems.append({ {}, {}, u"the label has no ink "_s + Wording::quoted(name),
        meant.isEmpty() ? u"there are "_s + names.join(u", "_s)
                        : u"did you mean %1?"_s.arg(Wording::quoted(meant)) });
    return {};
}

std::optional<std::size_t> blackOf(const QList<Ink> &inks, Problems &problems)
{
    const auto black
        = std::ranges::find_if(inks, [](const Ink &ink) { return ink.color.rgb() == qRgb(0, 0, 0); });
    if (black != inks.end())
        return std::size_t(black - inks.begin());
    problems.append({ {}, {}, u"the label has no black ink to be kept"_s, u"leave out --keep-black"_s });
    return {};
}

/// For each ink the one that replaces it, by their places in the label.
std::vector<std::size_t> replacementsOf(
    const QList<Ink> &inks, const QList<InkReplacement> &replacements, Problems &problems)
{
    std::vector<std::optional<std::size_t>> given(std::size_t(inks.size()));
    for (const InkReplacement &replacement : replacements) {
        const std::optional<std::size_t> ink = placeOf(replacement.ink, inks, problems);
        const std::optional<std::size_t> with = placeOf(replacement.with, inks, problems);
        if (!ink || !with)
            continue;
        if (given[*ink])
            problems.append({ {}, {}, u"ink %1 is replaced twice"_s.arg(Wording::quoted(replacement.ink)),
                u"name the one ink that it is printed with"_s });
        given[*ink] = with;
    }
    std::vector<std::size_t> all;
    all.reserve(given.size());
    for (const std::optional<std::size_t> &with : given)
        all.push_back(with.value_or(all.size()));
    return all;
}

} // namespace

std::optional<InkMapping> InkMapping::of(
    const QList<Ink> &inks, const PrintAdjustment &adjustment, Problems &problems)
{
    const qsizetype before = problems.size();
    const std::vector<std::size_t> with = replacementsOf(inks, adjustment.replacements, problems);
    const std::optional<std::size_t> kept
        = adjustment.keepBlack ? blackOf(inks, problems) : std::optional<std::size_t>();
    InkMapping mapping;
    mapping.m_inks = inks;
    for (std::size_t i = 0; i < with.size(); ++i) {
        mapping.m_isPlain = mapping.m_isPlain && with[i] == i;
        if (kept && with[i] != i && (i == *kept || with[i] == *kept))
            problems.append({ {}, {},
                u"ink %1 is to be kept and to be mapped"_s.arg(Wording::quoted(inks[qsizetype(*kept)].name)),
                u"leave out --keep-black or the ink in --map"_s });
    }
    if (problems.size() != before)
        return {};
    std::vector<std::size_t> places(with.size());
    for (std::size_t i = 0; i < with.size(); ++i) {
        if (std::ranges::find(with, i) == with.end())
            continue;
        places[i] = std::size_t(mapping.m_printed.size());
        mapping.m_printed.append(inks[qsizetype(i)]);
    }
    for (const std::size_t target : with)
        mapping.m_targets.push_back(places[target]);
    if (kept)
        mapping.m_kept = places[*kept];
    return mapping;
}

QColor InkMapping::colorFor(const QColor &color) const
{
    const auto ink = std::ranges::find_if(
        m_inks, [&](const Ink &candidate) { return candidate.color.rgba() == color.rgba(); });
    return ink == m_inks.end() ? color
                               : m_printed[qsizetype(m_targets[std::size_t(ink - m_inks.begin())])].color;
}
