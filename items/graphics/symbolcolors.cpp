// SPDX-License-Identifier: BSD-3-Clause
#include "items/graphics/symbolcolors.h"

#include "items/core/itemcolors.h"
#include "items/core/limits.h"
#include "items/graphics/stopfixer.h"

#include <QByteArrayMatcher>

#include <algorithm>
#include <cctype>
#include <cstring>

namespace {

constexpr QByteArrayView black = "#000000";
constexpr QByteArrayView white = "#FFFFFF";
constexpr QByteArrayView placeholder = "#MMMMMM";
constexpr QByteArrayView none = "none";
constexpr qsizetype colorSize = black.size();

constexpr QByteArrayView backgroundId = "id=\"background_fix\"";
constexpr QByteArrayView rectangleStart = "<rect ";
constexpr QByteArrayView emptyElementEnd = "/>";
constexpr QByteArrayView clearFill = "fill-opacity=\"0\"";
constexpr QByteArrayView opaqueFill = "fill-opacity=\"1\"";

constexpr QByteArrayView plainRoot = "<svg ";
constexpr QByteArrayView normalRoot = "<svg fill=\"#000000\" stroke=\"none\" ";
constexpr QByteArrayView blackStrokeRoot = "<svg fill=\"#000000\" stroke=\"#000000\" ";
constexpr QByteArrayView whiteStrokeRoot = "<svg fill=\"#000000\" stroke=\"#FFFFFF\" ";

QByteArray asAttribute(QByteArrayView color)
{
    return "=\"" + color.toByteArray() + '"';
}

QByteArray asStyle(QByteArrayView color)
{
    return ':' + color.toByteArray();
}

/// Exchanges every occurrence. QByteArray::replace() would move the rest of the text again and again when it
/// grows.
QByteArray replaced(const QByteArray &text, QByteArrayView before, QByteArrayView after)
{
    const QByteArrayMatcher matcher(before.data(), before.size());
    QByteArray result;
    qsizetype from = 0;
    for (qsizetype at = matcher.indexIn(text); at >= 0; at = matcher.indexIn(text, from)) {
        if (from == 0)
            result.reserve(text.size());
        result.append(QByteArrayView(text).sliced(from, at - from)).append(after);
        from = at + before.size();
    }
    return from == 0 ? text : result.append(QByteArrayView(text).sliced(from));
}

/// The same, but an empty text if the result were larger than allowed.
QByteArray replacedWithin(const QByteArray &text, const QByteArray &before, const QByteArray &after)
{
    const qsizetype growth = after.size() - before.size();
    if (growth > 0 && text.size() + text.count(before) * growth > Limits::MaxSvgBytes)
        return {};
    return replaced(text, before, after);
}

QByteArray replacedOnce(QByteArray text, QByteArrayView before, QByteArrayView after)
{
    const qsizetype at = text.indexOf(before);
    return at < 0 ? text : text.replace(at, before.size(), after);
}

/// What the three colours of a text become; a null view leaves one as it is.
struct Exchange
{
    QByteArrayView black;
    QByteArrayView white;
    QByteArrayView placeholder;

    QByteArrayView operator[](char letter) const
    {
        return letter == '0' ? black : letter == 'F' ? white : letter == 'M' ? placeholder : QByteArrayView();
    }
};

/// Whether the hash sign begins a colour whose six letters are the same, and that is an attribute or the
/// value in a style.
bool isColor(const char *hash, const char *begin, const char *end)
{
    if (hash == begin || end - hash < colorSize || std::count(hash + 2, hash + colorSize, hash[1]) != 5)
        return false;
    if (hash[-1] == ':')
        return true;
    return hash[-1] == '"' && hash - begin >= 2 && hash[-2] == '=' && end - hash > colorSize
        && hash[colorSize] == '"';
}

/// Exchanges the colours of a text in one pass.
QByteArray exchanged(const QByteArray &text, const Exchange &by)
{
    QByteArray result;
    result.reserve(text.size() + text.size() / 16);
    const char *const begin = text.constData();
    const char *const end = begin + text.size();
    const char *copied = begin;
    const char *from = begin;
    while (const auto *hash = static_cast<const char *>(std::memchr(from, '#', std::size_t(end - from)))) {
        from = hash + 1;
        if (!isColor(hash, begin, end))
            continue;
        const QByteArrayView color = by[*from];
        if (color.isNull())
            continue;
        result.append(copied, hash - copied).append(color);
        copied = hash + colorSize;
        from = copied;
    }
    return result.append(copied, end - copied);
}

bool isColorNumber(const QByteArray &text)
{
    return text.size() == colorSize && text.front() == '#'
        && std::all_of(
            text.begin() + 1, text.end(), [](char letter) { return std::isxdigit(uchar(letter)); });
}

/// Whether the text is one that no exchange could take for a part of another colour: that of a colour.
bool isPlain(const QByteArray &text)
{
    const auto isLetter = [](char letter) { return std::isalpha(uchar(letter)) != 0; };
    return isColorNumber(text) || (!text.isEmpty() && std::ranges::all_of(text, isLetter));
}

/// Exchanges one after the other, as texts require that are no colours: the one may hold the other's place.
QByteArray coloredInTurn(const QByteArray &svg, const SymbolColors::Inks &inks)
{
    const QByteArray fill = inks.hasFill ? inks.fill : none.toByteArray();
    QByteArray text = replacedWithin(svg, asAttribute(black), asAttribute(placeholder));
    text = replacedWithin(text, asAttribute(white), asAttribute(fill));
    text = replacedWithin(text, asStyle(black), asStyle(placeholder));
    text = replacedWithin(text, asStyle(white), asStyle(fill));
    if (!inks.hasFill)
        text = SymbolColors::withFixedStops(text);
    text = replacedWithin(text, asAttribute(placeholder), asAttribute(inks.pen));
    return replacedWithin(text, asStyle(placeholder), asStyle(inks.pen));
}

} // namespace

QByteArray SymbolColors::textOf(const QColor &color)
{
    return QByteArray::number(color.rgb() | 0xFF000000U, 16).toUpper().replace(0, 2, "#");
}

SymbolColors::Inks SymbolColors::inksOf(const QColor &pen, const QColor &fill)
{
    return { textOf(pen), textOf(fill), fill != ItemColors::transparent };
}

QByteArray SymbolColors::withNormalRoots(const QByteArray &svg)
{
    // In this order: a root that carries both pairs loses both before it is given one.
    const QByteArray plain = replaced(replaced(svg, blackStrokeRoot, plainRoot), normalRoot, plainRoot);
    return replaced(plain, plainRoot, normalRoot);
}

QByteArray SymbolColors::withCapitalWhite(const QByteArray &svg)
{
    const QByteArray small = white.toByteArray().toLower();
    const QByteArray attributes = replaced(svg, asAttribute(small), asAttribute(white));
    return replaced(attributes, asStyle(small), asStyle(white));
}

bool SymbolColors::hasBackground(const QByteArray &svg)
{
    return svg.indexOf(backgroundId) > 0;
}

QByteArray SymbolColors::withOpaqueBackground(const QByteArray &svg)
{
    return replacedOnce(svg, clearFill, opaqueFill);
}

QByteArray SymbolColors::withClearBackground(const QByteArray &svg)
{
    return replacedOnce(svg, opaqueFill, clearFill);
}

QByteArray SymbolColors::withoutBackground(const QByteArray &svg)
{
    const qsizetype id = svg.indexOf(backgroundId);
    if (id < 0)
        return svg;
    const qsizetype end = svg.indexOf(emptyElementEnd, id);
    const qsizetype start = svg.lastIndexOf(rectangleStart, id);
    return start < 0 || end < 0 ? svg : QByteArray(svg).remove(start, end - start + 1);
}

QByteArray SymbolColors::withFixedStops(const QByteArray &svg)
{
    return StopFixer::hasGradients(svg) ? StopFixer(svg).fixed() : svg;
}

QByteArray SymbolColors::colored(const QByteArray &svg, const Inks &inks)
{
    if (!isPlain(inks.pen) || (inks.hasFill && !isPlain(inks.fill)))
        return coloredInTurn(svg, inks);
    if (inks.hasFill)
        return exchanged(svg, { inks.pen, inks.fill, inks.pen });
    if (!StopFixer::hasGradients(svg))
        return exchanged(svg, { inks.pen, none, inks.pen });
    // The stops are fixed while the pen is a placeholder: the white that they get is no ink.
    const QByteArray unfilled = exchanged(svg, { placeholder, none, {} });
    return exchanged(withFixedStops(unfilled), { {}, {}, inks.pen });
}

QByteArray SymbolColors::uncolored(const QByteArray &svg, const Inks &inks)
{
    const QByteArrayView fill = inks.hasFill ? QByteArrayView(inks.fill) : none;
    QByteArray text = inks.hasFill ? withClearBackground(svg) : svg;
    text = replaced(text, asAttribute(inks.pen), asAttribute(placeholder));
    text = replaced(text, asAttribute(fill), asAttribute(white));
    text = replaced(text, asStyle(inks.pen), asStyle(placeholder));
    text = replaced(text, asStyle(fill), asStyle(white));
    text = exchanged(text, { {}, {}, black });
    // The root's stroke of none was no white.
    return replaced(text, whiteStrokeRoot, normalRoot);
}
