// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QPointF>
#include <QtGlobal>

#include <algorithm>
#include <cmath>

/// What the library accepts when it draws. Stored values, records and getters keep any number that they were
/// given; these limits act where a number is about to reach Qt's painter, scene or image code.
namespace Limits {

/// The longest side of an image in pixels: five metres of banner at 300 dpi.
inline constexpr int MaxImageSide = 65535;
/// The largest image in pixels: an A4 page at 1000 dpi with room to spare, 488 MiB in 32-bit colour.
inline constexpr qint64 MaxImagePixels = 128'000'000;
/// The largest picture file that is read.
inline constexpr qint64 MaxPictureBytes = 256LL << 20;
/// The largest side of a picture; a larger one is made smaller when it is loaded.
inline constexpr int MaxPictureSide = 13824;
/// The passes in which a progressive JPEG may come: each takes as long as the whole picture.
inline constexpr int MaxJpegScans = 100;
/// The largest picture within a text, and all pictures of one text together, in pixels.
inline constexpr qint64 MaxInlineImagePixels = 16'000'000;
inline constexpr qint64 MaxInlinePixels = 32'000'000;
/// What HTML may hold before it is shown as plain text instead. Beyond, Qt takes from seconds to hours or
/// ends the program: nested tables double the time with every level. A text at a limit may still take
/// seconds.
inline constexpr qsizetype MaxHtmlLength = 4'000'000;
inline constexpr int MaxHtmlTags = 40'000;
/// Elements within lines: each may begin a part of another format, of which a line holds any number.
inline constexpr int MaxHtmlInlineTags = 5'000;
inline constexpr int MaxHtmlPictures = 2'000;
/// The rules of style sheets, times the elements that each is held against.
inline constexpr qint64 MaxHtmlStyleWork = 3'000'000;
inline constexpr int MaxHtmlDepth = 256;
inline constexpr int MaxHtmlTableDepth = 8;
/// Those of a table within another count twice, and so on.
inline constexpr int MaxHtmlCells = 50'000;
inline constexpr int MaxHtmlListItems = 3'000;
inline constexpr int MaxHtmlFloats = 100;
inline constexpr int MaxHtmlFontSizes = 300;
/// Font sizes that are converted for another screen, and those times the characters among which each is
/// sought.
inline constexpr qsizetype MaxHtmlRewrites = 2'000;
inline constexpr qint64 MaxHtmlRewriteWork = 300'000'000;
inline constexpr int MaxCombiningMarks = 64;
/// What an SVG drawing may hold before it is refused. Beyond, Qt takes from seconds to hours, fills the
/// memory or ends the program; the largest of thousands of ordinary drawings stay far below. The first is for
/// the text and for its compressed form, and what an XML reader and the renderer make of it is several times
/// that.
inline constexpr qsizetype MaxSvgBytes = 32 * 1024 * 1024;
/// What is before the first element, most of all definitions for all elements.
inline constexpr qsizetype MaxSvgPrologBytes = 64 * 1024;
/// XML readers compare each attribute of a tag with every other.
inline constexpr qsizetype MaxSvgAttributes = 2'048;
inline constexpr qint64 MaxSvgAttributeWork = 50'000'000;
/// The characters for which entities can stand, and the attributes which a definition can give to elements.
inline constexpr qint64 MaxSvgEntityCharacters = 4'000'000;
inline constexpr qint64 MaxSvgDefaultAttributes = 50'000'000;
inline constexpr int MaxSvgDepth = 512;
inline constexpr int MaxSvgElements = 200'000;
inline constexpr qsizetype MaxSvgPathBytes = 4 * 1024 * 1024;
/// The stops of all gradients, and gradients that take them from others: the renderer sorts and follows them
/// in quadratic time.
inline constexpr int MaxSvgStops = 30'000;
inline constexpr int MaxSvgLinkedGradients = 10'000;
/// The rules and declarations of style sheets, times the elements that each is held against.
inline constexpr qint64 MaxSvgStyleWork = 3'000'000;
/// The pixels of all pictures within a drawing: half a gibibyte while one of them is converted.
inline constexpr qint64 MaxSvgImagePixels = 64'000'000;
/// Elements that are drawn because others refer to them, each as often as that, and how deep they are then.
inline constexpr qint64 MaxSvgReferred = 50'000;
inline constexpr int MaxSvgLevels = 1'500;
/// What drawing takes, in units of some 8 microseconds for a picture of 400 x 400 pixels.
inline constexpr double MaxSvgEffort = 100'000.0;
/// The largest scale at which text is drawn, and the largest ratio of its widest to its narrowest direction.
inline constexpr double MaxTextScale = 1e6;
inline constexpr double MaxTextStretch = 1e4;
/// The longest plain text that is laid out.
inline constexpr qsizetype MaxTextLength = 2'000'000;
/// The height in pixels up to which a text is laid out: Qt's layout does not end at 8,388,608 and more.
inline constexpr double MaxTextHeight = 4e6;
/// The longest word at whose end lines are broken.
inline constexpr qsizetype MaxWordLength = 20'000;
/// The largest coordinate or side handed to Qt's scene and painter: beyond, its fixed-point conversions
/// overflow.
inline constexpr double MaxGeometry = 1e7;
/// The widest pen handed to the painter: a dashed pen of unbounded width never finishes.
inline constexpr double MaxPenWidth = 1e4;
/// The levels in which items lie within one another, layers and groups included. Qt's scene goes through them
/// by recursion, and building a tree takes quadratic time.
inline constexpr int MaxNesting = 64;
/// The smallest divisor: a scale closer to zero is taken as this.
inline constexpr double MinDivisor = 1e-9;

/// value, or fallback where value is NaN or infinite.
inline double finite(double value, double fallback)
{
    return std::isfinite(value) ? value : fallback;
}

/// A side or coordinate as geometry: within ±MaxGeometry, 0 for NaN.
inline double geometry(double value)
{
    if (std::abs(value) <= MaxGeometry)
        return value;
    return std::isnan(value) ? 0.0 : std::copysign(MaxGeometry, value);
}

/// A width for a painter's pen: within [0, MaxPenWidth], 0 for NaN.
inline double penWidth(double value)
{
    return std::isnan(value) ? 0.0 : std::clamp(value, 0.0, MaxPenWidth);
}

/// A point as geometry.
inline QPointF geometry(const QPointF &point)
{
    return QPointF(geometry(point.x()), geometry(point.y()));
}

/// A divisor that is never closer to zero than MinDivisor; NaN gives 1.
inline double divisor(double value)
{
    if (std::isnan(value))
        return 1.0;
    return std::abs(value) < MinDivisor ? std::copysign(MinDivisor, value) : value;
}

/// The scale, or that of the given sides if it is none: from the scale that a size of 0 leaves, or one that
/// is no number, no later size leads back.
inline double usableScale(double scale, double side, double referenceSide)
{
    const bool usable = std::isfinite(scale) && std::abs(scale) > MinDivisor;
    return usable ? scale : side / divisor(referenceSide);
}

/// A double as the nearest integer, half away from zero, saturating at the ends of int; 0 for NaN.
inline int toInt(double value)
{
    constexpr double most = 2147483647.0;
    return std::isnan(value) ? 0 : static_cast<int>(std::clamp(std::round(value), -most, most));
}

} // namespace Limits
