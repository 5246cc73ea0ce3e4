// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QByteArray>

#include <algorithm>

/// The exchange of a symbol's colours, step by step and without regard to time: what the library's own, which
/// takes one pass, must agree with in every byte.
namespace LiteralRecolouring {

inline qsizetype lastGradientEnd(const QByteArray &svg)
{
    return std::max(svg.lastIndexOf("</radialGradient>"), svg.lastIndexOf("</linearGradient>"));
}

/// Overwrites the opacity of a stop, if it has one before its end, and its colour.
inline void fixStop(QByteArray &svg, qsizetype color, qsizetype from, qsizetype stop, bool attributes)
{
    const qsizetype opacity = svg.indexOf("stop-opacity", from);
    const bool hasOpacity = opacity >= from && opacity < stop;
    if (attributes && hasOpacity) {
        svg.replace(opacity, 16, "stop-opacity=\"0\"");
        svg.replace(color, 17, "stop-color=\"#FFFFFF\"");
    } else if (attributes) {
        svg.replace(color, 17, "stop-color=\"#FFFFFF\" stop-opacity=\"0\"");
    } else if (hasOpacity) {
        svg.replace(opacity, 14, "stop-opacity:0");
        svg.replace(color, 15, "stop-color:#FFFFFF");
    } else {
        svg.replace(color, 15, "stop-color:#FFFFFF;stop-opacity:0");
    }
}

inline QByteArray withFixedStops(QByteArray svg)
{
    qsizetype end = lastGradientEnd(svg);
    if (end <= 0)
        return svg;
    qsizetype position = 0;
    while (true) {
        const qsizetype start = svg.indexOf("<stop offset=", position);
        if (start < 0)
            return svg;
        const qsizetype from = start + 17;
        const qsizetype stop = svg.indexOf("/>", from);
        if (stop < 0 || stop > end)
            return svg;
        const qsizetype attribute = svg.indexOf("stop-color=\"none\"", from);
        if (attribute >= 0 && attribute <= stop) {
            fixStop(svg, attribute, from, stop, true);
        } else {
            const qsizetype style = svg.indexOf("stop-color:none", from);
            if (style < 0)
                return svg;
            if (style <= stop)
                fixStop(svg, style, from, stop, false);
        }
        end = lastGradientEnd(svg);
        if (stop >= end)
            return svg;
        position = stop;
    }
}

inline QByteArray withoutBackground(QByteArray svg)
{
    const qsizetype id = svg.indexOf("id=\"background_fix\"");
    const qsizetype end = id < 0 ? -1 : svg.indexOf("/>", id);
    const qsizetype start = id < 0 ? -1 : svg.lastIndexOf("<rect ", id);
    if (start >= 0 && end >= start)
        svg.remove(start, end - start + 1);
    return svg;
}

/// The six replacements alone.
inline QByteArray sixReplacements(
    QByteArray svg, const QByteArray &pen, const QByteArray &fill, bool fixStops)
{
    svg.replace("=\"#000000\"", "=\"#MMMMMM\"");
    svg.replace("=\"#FFFFFF\"", "=\"" + fill + '"');
    svg.replace(":#000000", ":#MMMMMM");
    svg.replace(":#FFFFFF", ':' + fill);
    if (fixStops)
        svg = withFixedStops(svg);
    svg.replace("=\"#MMMMMM\"", "=\"" + pen + '"');
    svg.replace(":#MMMMMM", ':' + pen);
    return svg;
}

inline QByteArray colored(const QByteArray &svg, const QByteArray &pen, const QByteArray &fill, bool hasFill)
{
    return sixReplacements(svg, pen, hasFill ? fill : "none", !hasFill);
}

} // namespace LiteralRecolouring
