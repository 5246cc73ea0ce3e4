// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "label/batch/batchoptions.h"
#include "label/batch/rownames.h"
#include "label/data/rowsource.h"

#include <memory>
#include <optional>

/// What the options of a batch make of each row before anything of it is printed: its key, how often it is
/// printed, which numbers its labels have in the run, and the names of its files.
class RowPlan
{
public:
    struct Entry
    {
        QString key; ///< by which people know the row
        std::optional<qint64> copies = {}; ///< nothing if that cannot be told
        qint64 firstLabel = 1; ///< its number in the run
        /// Of each copy that has files or pages of its own; nothing for a row that cannot be printed.
        std::optional<QList<QStringList>> names = {};
        Problem problem = {}; ///< of such a row
    };

    /// Null, with the reasons in problems, if there are no columns of such names, or the pattern is none, or
    /// does not go with the inks or the format. Without a pattern, files have no names. countsLabels tells
    /// whether copies of a label differ from each other.
    [[nodiscard]] static std::unique_ptr<RowPlan> of(const BatchOptions &options, const QStringList &columns,
        const QList<Ink> &inks, bool countsLabels, Problems &problems);

    [[nodiscard]] bool hasNames() const { return m_names != nullptr; }
    /// Whether each ink has a file of its own.
    [[nodiscard]] bool hasInk() const { return m_names && m_names->hasInk(); }
    /// Whether a name was given to the file of any row.
    [[nodiscard]] bool isGiven(const QString &name) const { return m_names && m_names->isGiven(name); }

    /// The next row of the data, which may be a broken one. A row that is not chosen gets its numbers, but no
    /// names.
    [[nodiscard]] Entry take(const RowResult &row, bool isChosen);

private:
    explicit RowPlan(const BatchOptions &options);

    [[nodiscard]] std::optional<qint64> copiesOf(const Row &row, Problem &problem) const;
    [[nodiscard]] std::optional<QList<QStringList>> namesOf(const Row &row, qint64 copies, Problem &problem);

    QString m_copiesName;
    int m_keyColumn = 0;
    int m_copiesColumn = -1;
    std::unique_ptr<RowNames> m_names; ///< null if files have none
    bool m_copiesAreFiles = false; ///< or pages; otherwise a label is made once, whatever its copies
    qint64 m_labels = 0; ///< counted so far
};
