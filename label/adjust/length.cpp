// SPDX-License-Identifier: BSD-3-Clause
#include "label/adjust/length.h"

#include "label/nearestname.h"
#include "label/wording.h"

#include <QRegularExpression>
#include <QStringList>

#include <cmath>

using namespace Qt::StringLiterals;

namespace {

constexpr double millimetresPerInch = 25.4;
constexpr double pointsPerInch = 72.0;

/// Beyond any page, in any unit.
constexpr double longest = 100'000.0;

/// In the order of the units.
const QStringList &unitNames()
{
    static const QStringList names { u"mm"_s, u"in"_s, u"pt"_s, u"dot"_s };
    return names;
}

const QString units = u"mm, in, pt or dot"_s;

Problem unknownUnit(const QString &name)
{
    const QString meant = nearestName(name, unitNames());
    return { {}, {}, Wording::quoted(name) + u" is no unit of length"_s,
        meant.isEmpty() ? u"give "_s + units : u"did you mean %1? There are %2"_s.arg(meant, units) };
}

} // namespace

std::optional<Length> Length::parse(const QString &text, Problem &problem)
{
    static const QRegularExpression form(uR"(\A\s*([+-]?(?:[0-9]+\.?[0-9]*|\.[0-9]+))\s*(\S*)\s*\z)"_s);
    const QRegularExpressionMatch match = form.match(text);
    const double value = match.captured(1).toDouble();
    if (!match.hasMatch() || std::abs(value) > longest) {
        problem = { {}, {}, Wording::quoted(text) + u" is no length"_s,
            u"write a number and a unit, for example 2.5mm"_s };
        return {};
    }
    const QString name = match.captured(2);
    if (name.isEmpty() && value != 0.0) {
        problem = { {}, {}, match.captured(1) + u" what?"_s, u"give "_s + units };
        return {};
    }
    const qsizetype unit = name.isEmpty() ? 0 : unitNames().indexOf(name.toLower());
    if (unit < 0) {
        problem = unknownUnit(name);
        return {};
    }
    return Length { value, static_cast<Unit>(unit) };
}

double Length::millimetres(double dpi) const
{
    switch (unit) {
    case Unit::Millimetre:
        return value;
    case Unit::Inch:
        return value * millimetresPerInch;
    case Unit::Point:
        return value * millimetresPerInch / pointsPerInch;
    case Unit::Dot:
        return value * millimetresPerInch / dpi;
    }
    return 0.0;
}

QString Length::text() const
{
    return Wording::number(value) + unitNames()[int(unit)];
}
