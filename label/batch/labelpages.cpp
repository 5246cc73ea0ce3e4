// SPDX-License-Identifier: BSD-3-Clause
#include "label/batch/labelpages.h"

#include "label/adjust/inkrecoloring.h"

#include <algorithm>

bool LabelPages::add(PdfPages &pages, const RowLabel &label, Problems &problems) const
{
    if (m_kind == Kind::Colored)
        return pages.beginPage(m_adjuster.adjustment().printedSize(label.document.pageSize()), problems)
            && place(pages, label.document, {}, problems);
    return std::ranges::all_of(label.separation.plates,
        [&](const Plate &plate) { return pages.addPlate(plate.image, plate.dpi, problems); });
}

bool LabelPages::place(PdfPages &pages, const LabelDocument &label, QPointF topLeft, Problems &problems) const
{
    if (m_adjuster.inks().isPlain())
        return placeInItsColors(pages, label, topLeft, problems);
    const LabelDocument recolored = InkRecoloring::recolored(label, m_adjuster.inks());
    return placeInItsColors(pages, recolored, topLeft, problems);
}

bool LabelPages::placeInItsColors(
    PdfPages &pages, const LabelDocument &label, QPointF topLeft, Problems &problems) const
{
    const PrintAdjustment &adjustment = m_adjuster.adjustment();
    if (adjustment.movesNothing())
        return pages.place(label, topLeft, problems);
    const QTransform onPage = adjustment.transform(label.pageSize(), m_adjuster.dpi())
        * QTransform::fromTranslate(topLeft.x(), topLeft.y());
    return pages.place(label, onPage, QRectF(topLeft, adjustment.printedSize(label.pageSize())), problems);
}
