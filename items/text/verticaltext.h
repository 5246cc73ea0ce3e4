// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "items/core/vxexport.h"

#include <QStringList>

/// Text written from top to bottom, one character on each line. A character is what a reader takes for one: a
/// letter with its combining marks, or a pair of surrogates. Positions are those of a text cursor, indices
/// count characters.
class VX_EXPORT VerticalText
{
public:
    /// The vertical form of a horizontal text: its lines are joined, runs of white space become one space.
    [[nodiscard]] static QString fromHorizontal(const QString &text);
    /// The same with every white space kept.
    [[nodiscard]] static QString fromHorizontalWithSpaces(const QString &text);
    /// The horizontal form: an empty line stands for a space.
    [[nodiscard]] static QString toHorizontal(const QString &vertical);

    /// Without the line breaks, tabs being spaces.
    [[nodiscard]] static QString onOneLine(QString horizontal);
    /// The characters of a horizontal text.
    [[nodiscard]] static QStringList charactersOf(const QString &horizontal);
    /// The characters of a vertical text, one for each line; empty lines are spaces.
    [[nodiscard]] static QStringList charactersIn(const QString &vertical);
    /// The vertical form of the characters, white space kept.
    [[nodiscard]] static QString stacked(const QStringList &characters);
    /// The index of the character before which a position lies.
    [[nodiscard]] static int indexAt(const QString &vertical, int position);
    /// The position before a character, or at the end.
    [[nodiscard]] static int positionOf(const QString &vertical, int index);
};
