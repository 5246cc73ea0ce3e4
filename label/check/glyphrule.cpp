// SPDX-License-Identifier: BSD-3-Clause
#include "label/check/glyphrule.h"

#include "items/core/item.h"
#include "label/check/textruns.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

/// So many letters are named.
constexpr qsizetype mostNamed = 5;

/// "U+20AC (€)", or "U+0007"
QString nameOf(char32_t character)
{
    const QString number = u"U+"_s + u"%1"_s.arg(uint(character), 4, 16, QChar(u'0')).toUpper();
    if (QChar::category(character) == QChar::Other_Control)
        return number;
    return u"%1 (%2)"_s.arg(number, QString::fromUcs4(&character, 1));
}

QString namesOf(const QList<char32_t> &characters)
{
    QStringList names;
    for (qsizetype i = 0; i < std::min(characters.size(), mostNamed); ++i)
        names.append(nameOf(characters[i]));
    if (characters.size() > mostNamed)
        names.append(u"%1 more"_s.arg(characters.size() - mostNamed));
    return names.join(u", "_s);
}

} // namespace

void GlyphRule::check(const CheckScope &scope, Findings &findings)
{
    for (const std::size_t item : scope.items)
        checkItem(scope, item, findings);
}

void GlyphRule::checkItem(const CheckScope &scope, std::size_t item, Findings &findings)
{
    QList<char32_t> borrowed;
    QList<char32_t> missing;
    for (const TextRuns::Run &run : TextRuns::of(scope.itemAt(item))) {
        for (const uint code : run.text.toUcs4()) {
            const auto character = char32_t(code);
            const Glyphs::Presence presence
                = Glyphs::isShown(character) ? m_glyphs.find(run.font, character) : Glyphs::Presence::Own;
            QList<char32_t> &found = presence == Glyphs::Presence::None ? missing : borrowed;
            if (presence != Glyphs::Presence::Own && !found.contains(character))
                found.append(character);
        }
    }
    if (!missing.isEmpty())
        findings.append(scope.finding(Finding::Error, "missing-glyph", item,
            u"no font has %1, and a box is printed"_s.arg(namesOf(missing)),
            u"change the text, or install a font of its script"_s));
    if (!borrowed.isEmpty())
        findings.append(scope.finding(Finding::Warning, "missing-glyph", item,
            u"its font has no %1, which is taken from another one"_s.arg(namesOf(borrowed)),
            u"choose a font of its script, or change the text"_s));
}
