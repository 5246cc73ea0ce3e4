// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "label/data/namepattern.h"
#include "label/problem.h"

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
    /// Whether a name was given.
    [[nodiscard]] bool isGiven(const QString &name) const;

private:
    NamePattern m_pattern;
    QStringList m_inks;
    QSet<quint64>
        m_given; ///< digests: of all names of a million rows, two are equal once in a million batches
};
