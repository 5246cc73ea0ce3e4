// SPDX-License-Identifier: BSD-3-Clause
#include "label/check/glyphs.h"

#include <QGlyphRun>
#include <QRawFont>
#include <QTextLayout>

#include <algorithm>

namespace {

/// What is remembered of a font: more than a script has letters, and less than memory minds.
constexpr qsizetype mostKnown = 100'000;

/// Whether the fonts that Qt falls back to have it: the first glyph of every font stands for what it has not.
bool isFoundAnywhere(const QFont &font, char32_t character)
{
    QTextLayout layout(QString::fromUcs4(&character, 1), font);
    layout.beginLayout();
    layout.createLine();
    layout.endLayout();
    const QList<QGlyphRun> runs = layout.glyphRuns();
    return !runs.isEmpty()
        && std::ranges::none_of(runs, [](const QGlyphRun &run) { return run.glyphIndexes().contains(0); });
}

Glyphs::Presence presenceOf(const QFont &font, char32_t character)
{
    if (QRawFont::fromFont(font).supportsCharacter(character))
        return Glyphs::Presence::Own;
    return isFoundAnywhere(font, character) ? Glyphs::Presence::Borrowed : Glyphs::Presence::None;
}

} // namespace

Glyphs::Presence Glyphs::find(const QFont &font, char32_t character)
{
    const QString key = font.families().join(u',') + u';' + QString::number(font.weight()) + u';'
        + QString::number(font.style());
    QHash<char32_t, Presence> &known = m_known[key];
    if (const auto found = known.constFind(character); found != known.constEnd())
        return *found;
    if (known.size() >= mostKnown)
        known.clear();
    return *known.insert(character, presenceOf(font, character));
}

bool Glyphs::isShown(char32_t character)
{
    switch (QChar::category(character)) {
    case QChar::Other_Control:
        return character != U'\t' && character != U'\n' && character != U'\f' && character != U'\r';
    case QChar::Other_Format:
    case QChar::Separator_Space:
    case QChar::Separator_Line:
    case QChar::Separator_Paragraph:
        return false;
    default:
        break;
    }
    const bool isVariation
        = (character >= 0xFE00 && character <= 0xFE0F) || (character >= 0xE0100 && character <= 0xE01EF);
    return !isVariation && character != QChar::ObjectReplacementCharacter;
}
