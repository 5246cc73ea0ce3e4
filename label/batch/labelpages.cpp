// SPDX-License-Identifier: BSD-3-Clause
#include "label/batch/labelpages.h"

#include <algorithm>

bool LabelPages::add(PdfPages &pages, const RowLabel &label, Problems &problems) const
{
    if (m_kind == Kind::Colored)
        return pages.addPage(label.document, problems);
    return std::ranges::all_of(label.separation.plates,
        [&](const Plate &plate) { return pages.addPlate(plate.image, plate.dpi, problems); });
}
