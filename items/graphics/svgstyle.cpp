// SPDX-License-Identifier: BSD-3-Clause
#include "items/graphics/svgstyle.h"

#include "items/graphics/svgnumbers.h"

#include <QRegularExpression>
#include <QVarLengthArray>
#include <QtMath>

#include <algorithm>
#include <array>
#include <cmath>

using namespace Qt::StringLiterals;

namespace {

constexpr std::array properties { "stroke"_L1, "fill"_L1, "stroke-width"_L1, "stroke-dasharray"_L1,
    "font-size"_L1, "font"_L1, "vector-effect"_L1 };

/// The drawing's units in the one that the text begins with.
double unitOf(QStringView text)
{
    constexpr std::array<std::pair<QLatin1StringView, double>, 6> units { { { "in"_L1, 90.0 },
        { "cm"_L1, 35.43 }, { "mm"_L1, 3.543 }, { "pc"_L1, 15.0 }, { "pt"_L1, 1.25 }, { "em"_L1, 16.0 } } };
    const auto found
        = std::ranges::find_if(units, [text](const auto &unit) { return text.startsWith(unit.first); });
    return found == units.end() ? 1.0 : found->second;
}

/// The largest number within the text, in the largest of the units that are used.
double largestLength(QStringView text)
{
    double largest = 0.0;
    SvgNumbers numbers(text);
    while (true) {
        while (!numbers.hasNumber()) {
            if (numbers.command().isNull())
                return largest;
        }
        const double number = std::abs(numbers.number());
        largest = std::max(largest, number * unitOf(numbers.rest()));
    }
}

void addDashes(SvgStyle &style, QStringView text)
{
    SvgNumbers numbers(text);
    double sum = 0.0;
    int count = 0;
    while (true) {
        while (!numbers.hasNumber()) {
            if (!numbers.command().isNull())
                continue;
            const double dashes = count % 2 == 0 ? count / 2.0 : count;
            const double length = count % 2 == 0 ? sum : 2.0 * sum;
            const bool isDenser
                = style.dashLength == 0.0 || dashes / length > style.dashes / style.dashLength;
            if (length > 0.0 && isDenser) {
                style.dashLength = length;
                style.dashes = dashes;
            }
            return;
        }
        sum += std::abs(numbers.number());
        ++count;
    }
}

/// Makes the style more expensive where the property does.
void add(SvgStyle &style, QLatin1StringView property, QStringView value)
{
    if (property == "stroke"_L1)
        style.isStroked = style.isStroked || value != "none"_L1;
    else if (property == "fill"_L1)
        style.isFilled = style.isFilled || value != "none"_L1;
    else if (property == "stroke-width"_L1)
        style.strokeWidth = std::max(style.strokeWidth, largestLength(value));
    else if (property == "stroke-dasharray"_L1)
        addDashes(style, value);
    else if (property == "vector-effect"_L1)
        style.isCosmetic = style.isCosmetic || value == "non-scaling-stroke"_L1;
    else
        style.fontSize = std::max(style.fontSize, largestLength(value));
}

/// Forgets what was inherited, as the property is given anew.
void reset(SvgStyle &style, QLatin1StringView property)
{
    if (property == "stroke"_L1)
        style.isStroked = false;
    else if (property == "fill"_L1)
        style.isFilled = false;
    else if (property == "stroke-width"_L1)
        style.strokeWidth = 0.0;
    else if (property == "stroke-dasharray"_L1)
        style.dashLength = 0.0;
    else if (property == "vector-effect"_L1)
        style.isCosmetic = false;
    else
        style.fontSize = 0.0;
}

QString unescaped(QStringView text)
{
    QString plain = text.toString().toLower();
    if (plain.contains("/*"_L1)) {
        static const QRegularExpression comment(
            u"/\\*.*?(\\*/|$)"_s, QRegularExpression::DotMatchesEverythingOption);
        plain.remove(comment);
    }
    if (!plain.contains(u'\\'))
        return plain;
    static const QRegularExpression escape(u"\\\\([0-9a-f]{1,6})\\s?|\\\\"_s);
    QString result;
    qsizetype at = 0;
    for (const QRegularExpressionMatch &match : escape.globalMatch(plain)) {
        result += QStringView(plain).sliced(at, match.capturedStart() - at);
        // No letter of a property is beyond ASCII.
        const uint code = match.captured(1).toUInt(nullptr, 16);
        if (match.hasCaptured(1))
            result += code < 0x80 ? QChar(code) : QChar(QChar::ReplacementCharacter);
        at = match.capturedEnd();
    }
    result += QStringView(plain).sliced(at);
    return result.toLower();
}

} // namespace

SvgStyleText::SvgStyleText(QStringView text)
    : m_text(unescaped(text))
{
    const auto ends = [](QChar c) { return c == u';' || c == u'{' || c == u'}'; };
    auto begin = m_text.cbegin();
    while (begin != m_text.cend()) {
        const auto end = std::find_if(begin, m_text.cend(), ends);
        const auto colon = std::find(begin, end, u':');
        if (colon != end)
            m_declarations.append(
                { QStringView(begin, colon).trimmed(), QStringView(colon + 1, end).trimmed() });
        begin = end == m_text.cend() ? end : end + 1;
    }
}

void SvgStyleText::addTo(SvgStyle &style) const
{
    for (const QLatin1StringView property : properties)
        forEach(property, [&](QStringView value) { add(style, property, value); });
}

SvgStyle SvgStyle::inside(const QXmlStreamAttributes &attributes) const
{
    SvgStyle style = *this;
    const QStringView css = attributes.value("style"_L1);
    const SvgStyleText text(css);
    for (const QLatin1StringView property : properties) {
        bool isNew = true;
        const auto see = [&](QStringView value) {
            if (value.isEmpty() || value == "inherit"_L1)
                return;
            if (isNew)
                reset(style, property);
            isNew = false;
            add(style, property, value);
        };
        if (const QStringView value = attributes.value(property); !value.isEmpty())
            see(value.trimmed());
        if (!css.isEmpty())
            text.forEach(property, see);
    }
    return style;
}

SvgStyle SvgStyle::with(const SvgStyle &other) const
{
    SvgStyle style = *this;
    if (other.dashLength > 0.0
        && (dashLength == 0.0 || other.dashes / other.dashLength > dashes / dashLength)) {
        style.dashLength = other.dashLength;
        style.dashes = other.dashes;
    }
    style.strokeWidth = std::max(strokeWidth, other.strokeWidth);
    style.fontSize = std::max(fontSize, other.fontSize);
    style.isStroked = isStroked || other.isStroked;
    style.isFilled = isFilled || other.isFilled;
    style.isCosmetic = isCosmetic || other.isCosmetic;
    return style;
}

double SvgValues::length(QStringView text, double whole)
{
    SvgNumbers numbers(text);
    if (!numbers.hasNumber())
        return 0.0;
    const double number = numbers.number();
    const QStringView unit = numbers.rest();
    if (unit.startsWith(u'%'))
        return number / 100.0 * whole;
    return number * unitOf(unit);
}

QTransform SvgValues::transform(QStringView text)
{
    QTransform transform;
    SvgNumbers numbers(text);
    while (true) {
        QString name;
        while (!numbers.hasNumber()) {
            const QChar c = numbers.command();
            if (c.isNull())
                return transform;
            if (c.isLetter())
                name += c;
        }
        QVarLengthArray<double, 6> values;
        while (numbers.hasNumber())
            values.append(numbers.number());
        const auto value
            = [&values](qsizetype i, double fallback) { return i < values.size() ? values[i] : fallback; };
        if (name.endsWith("matrix"_L1))
            transform
                = QTransform(value(0, 1), value(1, 0), value(2, 0), value(3, 1), value(4, 0), value(5, 0))
                * transform;
        else if (name.endsWith("translate"_L1))
            transform.translate(value(0, 0), value(1, 0));
        else if (name.endsWith("scale"_L1))
            transform.scale(value(0, 1), value(1, value(0, 1)));
        else if (name.endsWith("rotate"_L1))
            transform.translate(value(1, 0), value(2, 0))
                .rotate(value(0, 0))
                .translate(-value(1, 0), -value(2, 0));
        else if (name.endsWith("skewX"_L1))
            transform.shear(std::tan(qDegreesToRadians(value(0, 0))), 0);
        else if (name.endsWith("skewY"_L1))
            transform.shear(0, std::tan(qDegreesToRadians(value(0, 0))));
    }
}
