// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "label/adjust/printadjustment.h"
#include "label/labeldocument.h"

#include <optional>
#include <vector>

/// With which inks those of a label are printed.
class VX_LABEL_EXPORT InkMapping
{
public:
    /// Nothing, with the reasons in problems, if an adjustment names an ink that the label lacks, replaces
    /// one twice, or keeps and replaces the black one.
    [[nodiscard]] static std::optional<InkMapping> of(
        const QList<Ink> &inks, const PrintAdjustment &adjustment, Problems &problems);

    /// The inks that are printed, in the order of the label.
    [[nodiscard]] const QList<Ink> &printed() const { return m_printed; }
    /// Whether all inks are printed with themselves.
    [[nodiscard]] bool isPlain() const { return m_isPlain; }
    /// For each ink of the label the place of the one that prints it, among those that are printed.
    [[nodiscard]] const std::vector<std::size_t> &targets() const { return m_targets; }
    /// The place of the black ink that is kept as it is, among those that are printed.
    [[nodiscard]] std::optional<std::size_t> kept() const { return m_kept; }
    /// The colour in which one is printed: another one for that of an ink that is replaced.
    [[nodiscard]] QColor colorFor(const QColor &color) const;

private:
    QList<Ink> m_inks; ///< of the label
    QList<Ink> m_printed;
    std::vector<std::size_t> m_targets;
    std::optional<std::size_t> m_kept;
    bool m_isPlain = true;
};
