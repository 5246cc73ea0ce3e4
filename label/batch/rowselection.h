// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "label/problem.h"
#include "label/vxlabelexport.h"

#include <QString>

#include <optional>
#include <utility>
#include <vector>

/// Which rows of the data are printed: "3,10-20" or "100-". Numbers are from 1.
class VX_LABEL_EXPORT RowSelection
{
public:
    /// All rows.
    RowSelection() = default;
    /// Nothing, with the reason in problem, for a text that is no selection.
    [[nodiscard]] static std::optional<RowSelection> parse(const QString &text, Problem &problem);

    /// Whether no row is left out.
    [[nodiscard]] bool isAll() const { return m_ranges.empty(); }
    [[nodiscard]] bool contains(qint64 row) const;
    /// Whether no row from this one on is selected.
    [[nodiscard]] bool endsBefore(qint64 row) const;
    /// How many rows of so many are selected.
    [[nodiscard]] qint64 countOf(qint64 rows) const;

private:
    using Range = std::pair<qint64, qint64>; ///< first and last row

    std::vector<Range> m_ranges; ///< in order and apart from each other; of all rows, none
};
