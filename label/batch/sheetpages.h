// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "label/batch/labelpages.h"
#include "label/batch/pdflayout.h"
#include "label/sheet/sheetlayout.h"

#include <vector>

/// Labels fill the cells of sheets, one behind the other. A sheet in colour is a page, and one of plates as
/// many pages as there are inks, each with the plates of one ink.
class SheetPages final : public PdfLayout
{
public:
    SheetPages(const LabelPages &labels, const SheetLayout &layout);

    [[nodiscard]] bool needsPlates() const override { return m_labels.needsPlates(); }
    [[nodiscard]] bool add(
        PdfPages &pages, const RowLabel &label, ManifestEntry &entry, Problems &problems) override;
    [[nodiscard]] bool end(PdfPages &pages, Problems &problems) override;

private:
    /// The plates of a label that wait for their sheet to be full.
    struct Filled
    {
        int cell;
        std::vector<Plate> plates;
    };

    [[nodiscard]] bool begin(PdfPages &pages, Problems &problems) const;
    [[nodiscard]] bool printPlates(PdfPages &pages, Problems &problems);

    LabelPages m_labels;
    SheetLayout m_layout;
    qint64 m_sheet = 0; ///< that is being filled
    int m_cell; ///< the next one
    bool m_isBegun = false;
    std::vector<Filled> m_filled;
};
