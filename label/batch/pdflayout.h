// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "label/batch/rowoutput.h"
#include "label/pdf/pdfpages.h"

/// How labels are laid out on the pages of one PDF.
class PdfLayout
{
public:
    PdfLayout() = default;
    virtual ~PdfLayout();
    Q_DISABLE_COPY_MOVE(PdfLayout)

    [[nodiscard]] virtual bool needsPlates() const = 0;
    /// Adds a label, and enters its pages. False, with the reason in problems, if it cannot be written.
    [[nodiscard]] virtual bool add(
        PdfPages &pages, const RowLabel &label, ManifestEntry &entry, Problems &problems)
        = 0;
    /// After the last label. Likewise.
    [[nodiscard]] virtual bool end(PdfPages &pages, Problems &problems) = 0;
};
