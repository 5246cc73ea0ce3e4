// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "label/batch/rowoutput.h"
#include "label/pdf/pdfpages.h"

/// Labels on pages of their own in a PDF: in colour, or as one page for each plate.
class LabelPages
{
public:
    enum class Kind { Colored, Plates };

    explicit LabelPages(Kind kind)
        : m_kind(kind)
    {
    }

    [[nodiscard]] bool needsPlates() const { return m_kind == Kind::Plates; }
    /// Adds the pages of a label. False, with the reason in problems, if they cannot be written.
    [[nodiscard]] bool add(PdfPages &pages, const RowLabel &label, Problems &problems) const;

private:
    Kind m_kind;
};
