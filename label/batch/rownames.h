// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "label/data/namepattern.h"
#include "label/problem.h"

#include <QByteArray>
#include <QSet>
#include <QStringList>

#include <optional>

/// The names of the files of a batch, none of them given twice.
class RowNames
{
public:
    RowNames(const NamePattern &pattern, const QStringList &inks)
        : m_pattern(pattern)
        , m_inks(inks)
    {
    }

    /// The names for a copy of a row, one for each ink. Nothing, with the reason in problem, if the row
    /// cannot name a file, or a name was given before.
    [[nodiscard]] std::optional<QStringList> namesFor(const Row &row, qint64 copy, Problem &problem);

private:
    NamePattern m_pattern;
    QStringList m_inks;
    QSet<QByteArray> m_given; ///< digests, which take less memory
};
