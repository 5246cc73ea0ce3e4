// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "label/adjust/inkmapping.h"
#include "label/adjust/printadjustment.h"
#include "label/separation.h"

#include <optional>

/// Adjusts the plates of a label. Nothing is resampled: what is scaled is separated at another resolution,
/// where barcodes and letters get whole dots again, and the rest is done dot by dot.
///
///     const auto adjuster = PlateAdjuster::of(label, options, adjustment, problems);
///     auto separation = separate(label, adjuster->separation(), problems);
///     bool done = separation && adjuster->apply(*separation, problems);
class VX_LABEL_EXPORT PlateAdjuster
{
public:
    /// Nothing, with the reasons in problems, if the adjustment does not go with the label or its resolution.
    [[nodiscard]] static std::optional<PlateAdjuster> of(const LabelDocument &label,
        const SeparationOptions &options, const PrintAdjustment &adjustment, Problems &problems);

    [[nodiscard]] const PrintAdjustment &adjustment() const { return m_adjustment; }
    [[nodiscard]] const InkMapping &inks() const { return m_inks; }
    /// The resolution of the adjusted plates.
    [[nodiscard]] double dpi() const { return m_dpi; }
    /// How the label is to be separated.
    [[nodiscard]] const SeparationOptions &separation() const { return m_separation; }
    /// Adjusts the outcome: the plates are those of the inks that are printed, of the page as it is printed.
    /// False, with the reason in problems, when memory runs out.
    [[nodiscard]] bool apply(Separation &separation, Problems &problems) const;
    /// The outcome with the inks that are printed, and without what the adjustment cuts off, but where the
    /// label has it: what a scanner gets to see, in the places of the label's barcodes. Nothing, with the
    /// reason in problems, when memory runs out.
    [[nodiscard]] std::optional<Separation> seen(Separation separation, Problems &problems) const;

private:
    PlateAdjuster(const LabelDocument &label, const SeparationOptions &options,
        const PrintAdjustment &adjustment, const InkMapping &inks);

    void replaceInks(std::vector<Plate> &plates) const;
    void invertOthers(std::vector<Plate> &plates) const;
    [[nodiscard]] QImage moved(const QImage &plate, bool fill) const;
    /// Where an outcome of that size lies on the page, before it is mirrored and turned.
    [[nodiscard]] QPoint placeOf(QSize content) const;
    /// The part of such an outcome that is printed.
    [[nodiscard]] QRect printedPart(QSize content) const;

    PrintAdjustment m_adjustment;
    InkMapping m_inks;
    SeparationOptions m_separation;
    QSize m_page; ///< in dots, before it is turned
    QPoint m_offset; ///< in dots
    double m_dpi;
    bool m_isNegative;
};
