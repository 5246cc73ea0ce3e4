// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "label/data/rowsource.h"
#include "label/vxlabelexport.h"

#include <QDateTime>
#include <QString>
#include <QStringList>

#include <optional>
#include <vector>

/// A text with places for the values of a row:
///
///     ${sku}            the value of the column sku
///     ${price:%.2f}     a number in a form of printf(): d, i, u, x, X, o, f, e, g, or s for a text
///     ${name|none}      "none" where the value is empty
///     ${#}, ${#:%05d}   the number of the label in the run, from 1
///     ${date}, ${date:dd.MM.yyyy}, ${time}, ${time:HH:mm}
///                       when the run began, in a form of QDateTime::toString(); ISO 8601 without one
///     $${               these two characters
///
/// A column of a name with a colon or a bar in it is found by its whole name.
class VX_LABEL_EXPORT RowTemplate
{
public:
    /// What holds for all labels of a run, and for one of them.
    struct Context
    {
        QDateTime begin;
        qint64 label = 1;
    };

    /// What the text is written in. In HTML, the characters of places and values are escaped.
    enum class Markup { None, Html };

    /// Whether a text has places, or what look like them.
    [[nodiscard]] static bool hasPlaces(const QString &text);

    /// Nothing, with the reasons in problems, if a place is not closed, names no column, or has a form that
    /// is none.
    [[nodiscard]] static std::optional<RowTemplate> parse(
        const QString &text, const QStringList &columns, Problems &problems, Markup markup = Markup::None);

    /// Whether there is a place for the number of the label.
    [[nodiscard]] bool countsLabels() const { return has(Kind::Counter); }
    /// Whether there is a place for a date or a time.
    [[nodiscard]] bool tellsTime() const { return has(Kind::Date) || has(Kind::Time); }
    /// The text for a row. Nothing, with the reason in problem, if a value is no number where one is wanted.
    [[nodiscard]] std::optional<QString> textFor(
        const Row &row, const Context &context, Problem &problem) const;

private:
    enum class Kind { Text, Column, Counter, Date, Time };
    struct Part
    {
        Kind kind = Kind::Text;
        QString text; ///< of a text, itself; of a column, its name
        qsizetype column = 0;
        QString form;
        QString otherwise; ///< for an empty value
    };

    [[nodiscard]] bool has(Kind kind) const;
    [[nodiscard]] static std::optional<Part> partOf(
        const QString &place, const QStringList &columns, Problems &problems);
    [[nodiscard]] static std::optional<QString> textOf(
        const Part &part, const Row &row, const Context &context, Problem &problem);

    std::vector<Part> m_parts;
    Markup m_markup = Markup::None;
};
