// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "label/adjust/plateadjuster.h"
#include "label/batch/rowoutput.h"
#include "label/pdf/pdfpages.h"

/// Labels on the pages of a PDF: in colour, or their plates.
class LabelPages
{
public:
    enum class Kind { Colored, Plates };

    LabelPages(Kind kind, const PlateAdjuster &adjuster)
        : m_kind(kind)
        , m_adjuster(adjuster)
    {
    }

    [[nodiscard]] bool needsPlates() const { return m_kind == Kind::Plates; }
    /// Adds pages of its own for a label: one in colour, or one for each plate. False, with the reason in
    /// problems, if they cannot be written.
    [[nodiscard]] bool add(PdfPages &pages, const RowLabel &label, Problems &problems) const;

    /// Paints a label in colour on the page that has been begun.
    [[nodiscard]] bool place(
        PdfPages &pages, const LabelDocument &label, QPointF topLeft, Problems &problems) const;

private:
    [[nodiscard]] bool placeInItsColors(
        PdfPages &pages, const LabelDocument &label, QPointF topLeft, Problems &problems) const;

    Kind m_kind;
    PlateAdjuster m_adjuster;
};
