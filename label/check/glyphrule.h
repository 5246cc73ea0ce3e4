// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "label/check/checkrule.h"
#include "label/check/glyphs.h"

/// "missing-glyph": letters that the font of a text has not. Those of other fonts take their place, which is
/// a warning; if there is none, a box is printed.
class GlyphRule : public CheckRule
{
public:
    void check(const CheckScope &scope, Findings &findings) override;

private:
    void checkItem(const CheckScope &scope, std::size_t item, Findings &findings);

    Glyphs m_glyphs;
};
