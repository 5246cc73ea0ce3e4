// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "label/batch/batchoptions.h"
#include "label/data/namepattern.h"
#include "label/labeldocument.h"
#include "label/problem.h"

#include <QSet>
#include <QStringList>

#include <memory>
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

    /// Those of a batch: of a file for each ink, or of one for all where the format has room for them. Null,
    /// with the reasons in problems, if the pattern is none, or does not go with inks or format.
    [[nodiscard]] static std::unique_ptr<RowNames> of(
        const BatchOptions &options, const QStringList &columns, const QList<Ink> &inks, Problems &problems);

    [[nodiscard]] bool hasInk() const { return m_pattern.hasInk(); }
    [[nodiscard]] bool hasCopy() const { return m_pattern.hasCopy(); }

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
