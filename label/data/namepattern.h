// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "label/data/rowsource.h"

#include <QString>
#include <QStringList>

#include <optional>
#include <vector>

/// The name of a file with places for values:
///
///     {sku}          the value of the column sku
///     {row}          the number of the row in the data, from 1; {row:05} with five digits at least
///     {copy}         the number of the copy, from 1; {copy:02} likewise
///     {ink}          the name of the ink
///     {{ and }}      braces
///
/// row, copy and ink are never columns. What values come from data cannot leave the folders that the pattern
/// itself names.
class VX_LABEL_EXPORT NamePattern
{
public:
    /// What a file is named after.
    struct Label
    {
        const Row &row;
        qint64 copy = 1;
    };

    /// Nothing, with the reasons in problems, if a place is not closed, names no column, or has a width that
    /// is none, or a name would be too long to be one whatever the values.
    [[nodiscard]] static std::optional<NamePattern> parse(
        const QString &text, const QStringList &columns, Problems &problems);

    [[nodiscard]] bool hasInk() const { return has(Kind::Ink); }
    [[nodiscard]] bool hasCopy() const { return has(Kind::Copy); }

    /// The name for a label and an ink. Nothing, with the reason in problem, if a value makes it empty,
    /// holds a slash, backslash or control character, or makes a name of a folder or file that is ".", "..",
    /// begins with a point that is the value's, or is longer than a file system takes (255 bytes).
    [[nodiscard]] std::optional<QString> nameFor(
        const Label &label, const QString &ink, Problem &problem) const;

private:
    enum class Kind { Text, Column, Row, Copy, Ink };
    struct Part
    {
        Kind kind = Kind::Text;
        QString text; ///< of a text, itself; of a place, its name
        qsizetype column = -1;
        int digits = 0;
    };

    [[nodiscard]] bool has(Kind kind) const;
    [[nodiscard]] static std::optional<Part> partOf(
        const QString &place, const QStringList &columns, Problems &problems);
    [[nodiscard]] static QString textOf(const Part &part, const Label &label, const QString &ink);

    std::vector<Part> m_parts;
};
