// SPDX-License-Identifier: BSD-3-Clause
#include "label/adjust/lengthpair.h"

#include "label/wording.h"

#include <QStringList>

using namespace Qt::StringLiterals;

std::optional<LengthPair> LengthPair::parse(const QString &text, Problem &problem)
{
    const QStringList parts = text.split(u',');
    if (parts.size() != 2) {
        problem = { {}, {}, Wording::quoted(text) + u" are no two lengths"_s,
            u"write one to the right and one down, for example 2mm,-1mm"_s };
        return {};
    }
    const std::optional<Length> x = Length::parse(parts[0], problem);
    const std::optional<Length> y = x ? Length::parse(parts[1], problem) : std::nullopt;
    return y ? std::optional(LengthPair { *x, *y }) : std::nullopt;
}

std::optional<LengthPair> LengthPair::parseDistances(const QString &text, Problem &problem)
{
    const std::optional<LengthPair> pair = parse(text.contains(u',') ? text : text + u',' + text, problem);
    if (!pair || (pair->x.value >= 0.0 && pair->y.value >= 0.0))
        return pair;
    problem = { {}, {}, Wording::quoted(text) + u" is negative"_s, u"give a length from 0 on"_s };
    return {};
}

QString LengthPair::text() const
{
    return x.text() + u',' + y.text();
}
