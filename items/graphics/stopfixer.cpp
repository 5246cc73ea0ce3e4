// SPDX-License-Identifier: BSD-3-Clause
#include "items/graphics/stopfixer.h"

#include <QByteArrayMatcher>

#include <algorithm>

namespace {

/// Room before the text for what the first stop grows by: a colour lies at least 17 bytes into the text.
constexpr qsizetype room = 3;

constexpr QByteArrayView stopStart = "<stop offset=";
/// Where the search begins within a stop: four bytes beyond what was found, in the value of the offset.
constexpr qsizetype stopHead = 17;
constexpr QByteArrayView stopEnd = "/>";
constexpr QByteArrayView opacity = "stop-opacity";

constexpr QByteArrayView gradientEnds[] = { "</radialGradient>", "</linearGradient>" };

/// The index of the last occurrence, or -1. Searched from the front, which is many times faster in Qt.
qsizetype lastOf(QByteArrayView what, const QByteArray &text)
{
    const QByteArrayMatcher matcher(what.data(), what.size());
    qsizetype last = -1;
    for (qsizetype at = matcher.indexIn(text); at >= 0; at = matcher.indexIn(text, at + 1))
        last = at;
    return last;
}

} // namespace

const StopFixer::Form StopFixer::attributes { "stop-color=\"none\"", "stop-color=\"#FFFFFF\"",
    "stop-opacity=\"0\"", "stop-color=\"#FFFFFF\" stop-opacity=\"0\"" };
const StopFixer::Form StopFixer::style { "stop-color:none", "stop-color:#FFFFFF", "stop-opacity:0",
    "stop-color:#FFFFFF;stop-opacity:0" };

StopFixer::StopFixer(const QByteArray &svg)
    : m_text(QByteArray(room, ' ') + svg)
    , m_dealtWith(room)
{
    m_result.reserve(svg.size() + svg.size() / 8);
}

bool StopFixer::hasGradients(const QByteArray &svg)
{
    return std::ranges::any_of(gradientEnds, [&svg](QByteArrayView end) { return svg.indexOf(end, 1) > 0; });
}

QByteArray StopFixer::fixed()
{
    const qsizetype end = std::max(lastOf(gradientEnds[0], m_text), lastOf(gradientEnds[1], m_text));
    const qsizetype lastNoColor = lastOf(style.noColor, m_text);
    qsizetype from = room;
    while (true) {
        const qsizetype start = m_text.indexOf(stopStart, from);
        if (start < 0)
            break;
        const qsizetype inside = start + stopHead;
        const qsizetype stop = m_text.indexOf(stopEnd, inside);
        if (stop < 0 || stop > end)
            break;
        const Form *form = &attributes;
        qsizetype color = find(form->noColor, inside, stop);
        if (color < 0) {
            // Stops without a colour in a style behind them end the pass, even if some in attributes follow.
            if (lastNoColor < inside)
                break;
            form = &style;
            color = find(form->noColor, inside, stop);
        }
        // The search goes on where the stop ended before it grew.
        from = color < 0 ? stop : stop - fix(*form, color, inside, stop);
    }
    return m_result.append(QByteArrayView(m_text).sliced(m_dealtWith));
}

qsizetype StopFixer::find(QByteArrayView text, qsizetype from, qsizetype to) const
{
    const qsizetype found = QByteArrayView(m_text).sliced(from, to - from).indexOf(text);
    return found < 0 ? found : from + found;
}

qsizetype StopFixer::fix(const Form &form, qsizetype color, qsizetype from, qsizetype to)
{
    const qsizetype opacityAt = find(opacity, from, to);
    if (opacityAt >= 0)
        overwrite(opacityAt, form.clear);
    const QByteArrayView value = opacityAt < 0 ? form.whiteAndClear : form.white;
    const qsizetype growth = value.size() - form.noColor.size();
    m_result.append(QByteArrayView(m_text).sliced(m_dealtWith, color - m_dealtWith));
    m_dealtWith = color - growth;
    overwrite(m_dealtWith, value);
    return growth;
}

void StopFixer::overwrite(qsizetype at, QByteArrayView text)
{
    std::ranges::copy(text, m_text.begin() + at);
}
