// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "label/sheet/sheetoptions.h"

#include <QLineF>
#include <QList>
#include <QRectF>
#include <QSizeF>

/// Where labels of one size lie on sheets. Lengths are in millimetres, from the top left of the sheet.
class VX_LABEL_EXPORT SheetLayout
{
public:
    /// Nothing, with the reasons in problems, if the labels do not fit (how much is missing is told), the
    /// first cell is none, or crop marks have no room. The dpi are those of the output.
    [[nodiscard]] static std::optional<SheetLayout> of(
        const SheetOptions &options, QSizeF label, double dpi, Problems &problems);

    /// What keeps plates of so many dots per inch from waiting for their sheet to be full: too many dots.
    [[nodiscard]] Problems plateProblems(double dpi) const;

    [[nodiscard]] QSizeF sheet() const { return m_sheet; }
    [[nodiscard]] QSize cells() const { return m_cells; }
    [[nodiscard]] int cellCount() const { return m_cells.width() * m_cells.height(); }
    /// The first cell that is filled on the first sheet, from 0.
    [[nodiscard]] int firstCell() const { return m_firstCell; }
    /// Where the label of a cell lies; cells are counted row by row, from 0.
    [[nodiscard]] QRectF cell(int index) const;
    /// Marks beside the outer labels, in line with the edges of all; none unless they were asked for.
    [[nodiscard]] QList<QLineF> cropMarks() const;

private:
    SheetLayout() = default;

    [[nodiscard]] QRectF grid() const;
    [[nodiscard]] Problems problemsOf(const SheetOptions &options) const;
    [[nodiscard]] QList<double> edges(Qt::Orientation orientation) const;

    QSizeF m_sheet;
    QSizeF m_label;
    QSize m_cells;
    QPointF m_gap;
    QPointF m_margin; ///< of the left and top
    int m_firstCell = 0;
    bool m_hasCropMarks = false;
};
