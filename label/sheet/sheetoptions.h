// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "label/adjust/lengthpair.h"

#include <QSize>

#include <optional>

/// Sheets that hold many labels, as a person describes them.
struct VX_LABEL_EXPORT SheetOptions
{
    LengthPair size { { 210.0, Length::Unit::Millimetre }, { 297.0, Length::Unit::Millimetre } };
    std::optional<QSize> cells = {}; ///< columns and rows; as many as fit if not given
    int start = 1; ///< the cell of the first sheet that is the first to be filled, row by row
    LengthPair gap = {}; ///< between labels
    std::optional<LengthPair> margin = {}; ///< at each side; if not given, labels lie in the middle
    bool cropMarks = false;

    /// Of "a4", "letter" and the like, or of two sides, "210x297mm". Nothing, with the reason in problem, for
    /// any other text.
    [[nodiscard]] static std::optional<LengthPair> parseSize(const QString &text, Problem &problem);
    /// Of "3x8", 3 columns and 8 rows.
    [[nodiscard]] static std::optional<QSize> parseCells(const QString &text, Problem &problem);
};
