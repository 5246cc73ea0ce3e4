// SPDX-License-Identifier: BSD-3-Clause
#include "label/batch/sheetpages.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr double millimetresPerInch = 25.4;

/// Where the dots of a plate are those of the sheet: the nearest whole ones.
QPointF onDots(QPointF millimetres, double dpi)
{
    const QPointF dots = millimetres / millimetresPerInch * dpi;
    return QPointF(std::round(dots.x()), std::round(dots.y())) / dpi * millimetresPerInch;
}

} // namespace

SheetPages::SheetPages(const LabelPages &labels, const SheetLayout &layout)
    : m_labels(labels)
    , m_layout(layout)
    , m_cell(layout.firstCell())
{
}

bool SheetPages::add(PdfPages &pages, const RowLabel &label, ManifestEntry &entry, Problems &problems)
{
    if (!m_isBegun)
        ++m_sheet;
    if (entry.cell == 0)
        entry.cell = m_cell + 1;
    bool isAdded = true;
    if (needsPlates()) {
        const auto inks = qint64(label.separation.plates.size());
        m_filled.push_back({ m_cell, label.separation.plates });
        entry.addPages((m_sheet - 1) * inks + 1, m_sheet * inks);
    } else {
        isAdded = (m_isBegun || begin(pages, problems))
            && m_labels.place(pages, label.document, m_layout.cell(m_cell).topLeft(), problems);
        entry.addPages(m_sheet, m_sheet);
    }
    m_isBegun = true;
    if (++m_cell < m_layout.cellCount())
        return isAdded;
    m_cell = 0;
    m_isBegun = false;
    return isAdded && printPlates(pages, problems);
}

bool SheetPages::end(PdfPages &pages, Problems &problems)
{
    return printPlates(pages, problems);
}

bool SheetPages::begin(PdfPages &pages, Problems &problems) const
{
    const QList<QLineF> marks = m_layout.cropMarks();
    return pages.beginPage(m_layout.sheet(), problems) && std::ranges::all_of(marks, [&](const QLineF &mark) {
        return pages.placeLine(mark, PdfPages::Hairline, problems);
    });
}

/// The sheet of those that wait; none if there are none.
bool SheetPages::printPlates(PdfPages &pages, Problems &problems)
{
    const std::size_t inks = m_filled.empty() ? 0 : m_filled.front().plates.size();
    bool isPrinted = true;
    for (std::size_t ink = 0; ink < inks && isPrinted; ++ink) {
        isPrinted = begin(pages, problems) && std::ranges::all_of(m_filled, [&](const Filled &filled) {
            const Plate &plate = filled.plates[ink];
            const QPointF topLeft = onDots(m_layout.cell(filled.cell).topLeft(), plate.dpi);
            return pages.placePlate(plate.image, plate.dpi, topLeft, problems);
        });
    }
    m_filled.clear();
    return isPrinted;
}
