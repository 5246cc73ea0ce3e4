// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QFont>
#include <QHash>
#include <QString>

/// Which letters fonts have; it remembers what it was asked.
class Glyphs
{
public:
    enum class Presence {
        Own, ///< the font has it
        Borrowed, ///< another font that takes its place has it
        None ///< no font of this system has it
    };

    /// Of a character, as Unicode numbers it.
    [[nodiscard]] Presence find(const QFont &font, char32_t character);

    /// Whether a character is to be seen at all: no blank, tabulator, end of line or variation of another. Of
    /// other controls, Qt shows boxes.
    [[nodiscard]] static bool isShown(char32_t character);

private:
    QHash<QString, QHash<char32_t, Presence>> m_known; ///< by the font
};
