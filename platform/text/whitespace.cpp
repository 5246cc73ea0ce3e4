// SPDX-License-Identifier: BSD-3-Clause
#include "platform/text/whitespace.h"

#include <QString>

#include <algorithm>

bool WhiteSpace::isWhiteSpace(const QString &text)
{
    return std::ranges::all_of(text, [](QChar character) { return character.isSpace(); });
}
