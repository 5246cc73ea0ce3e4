// SPDX-License-Identifier: BSD-3-Clause
#include "label/sheet/sheetlayout.h"

#include "label/labellimits.h"
#include "label/wording.h"

#include <algorithm>
#include <cmath>

using namespace Qt::StringLiterals;

namespace {

constexpr double millimetresPerInch = 25.4;
/// What is lost by rounding, and in inches.
constexpr double nothing = 1e-6;

// Crop marks: what is left between them and the labels, and how long they are at least and at most.
constexpr double markDistance = 1.0;
constexpr double shortestMark = 1.0;
constexpr double longestMark = 4.0;

/// One direction of a sheet.
struct Side
{
    QString kind; ///< of what lies along it: "column"
    QString adjective;
    double sheet;
    double label;
    double gap;
    double margin;

    [[nodiscard]] double needed(int count) const { return extent(count) + 2.0 * margin; }
    [[nodiscard]] double extent(int count) const { return count * label + (count - 1) * gap; }
    [[nodiscard]] int most() const
    {
        return int(std::max(0.0, std::floor((sheet - 2.0 * margin + gap + nothing) / (label + gap))));
    }
};

QString millimetres(double length)
{
    return Wording::number(std::round(length * 1000.0) / 1000.0) + u" mm"_s;
}

QString adviceOf(const Side &side)
{
    if (side.most() == 0)
        return u"use a larger sheet, smaller margins or --rotate"_s;
    return side.most() == 1 ? u"at most 1 %1 fits"_s.arg(side.kind)
                            : u"at most %1 %2s fit"_s.arg(side.most()).arg(side.kind);
}

/// What is missing for as many labels as there are to be, but for at least one.
Problems missing(const Side &side, std::optional<int> count)
{
    const int wanted = count.value_or(std::max(1, side.most()));
    const double over = side.needed(wanted) - side.sheet;
    if (over <= nothing)
        return {};
    const QString labels = wanted == 1 ? u"1 label"_s : u"%1 labels"_s.arg(wanted);
    return { { {}, {},
        u"%1 of %2 with gaps and margins are %3 %4, %5 more than the sheet"_s.arg(labels,
            millimetres(side.label), millimetres(side.needed(wanted)), side.adjective, millimetres(over)),
        adviceOf(side) } };
}

/// Along a side from the edge of the sheet to the first label.
double marginOf(const Side &side, int count, bool isGiven)
{
    return isGiven ? side.margin : (side.sheet - side.extent(count)) / 2.0;
}

} // namespace

std::optional<SheetLayout> SheetLayout::of(
    const SheetOptions &options, QSizeF label, double dpi, Problems &problems)
{
    const QPointF sheet = options.size.millimetres(dpi);
    const QPointF gap = options.gap.millimetres(dpi);
    const QPointF margin = options.margin.value_or(LengthPair()).millimetres(dpi);
    const Side across { u"column"_s, u"wide"_s, sheet.x(), label.width(), gap.x(), margin.x() };
    const Side down { u"row"_s, u"high"_s, sheet.y(), label.height(), gap.y(), margin.y() };
    const auto columns = options.cells ? std::optional(options.cells->width()) : std::nullopt;
    const auto rows = options.cells ? std::optional(options.cells->height()) : std::nullopt;
    Problems found = missing(across, columns) + missing(down, rows);
    SheetLayout layout;
    layout.m_sheet = { sheet.x(), sheet.y() };
    layout.m_label = label;
    layout.m_cells = { columns.value_or(across.most()), rows.value_or(down.most()) };
    layout.m_gap = gap;
    layout.m_margin = { marginOf(across, layout.m_cells.width(), options.margin.has_value()),
        marginOf(down, layout.m_cells.height(), options.margin.has_value()) };
    layout.m_firstCell = options.start - 1;
    layout.m_hasCropMarks = options.cropMarks;
    if (found.isEmpty())
        found = layout.problemsOf(options);
    problems += found;
    return found.isEmpty() ? std::optional(layout) : std::nullopt;
}

Problems SheetLayout::plateProblems(double dpi) const
{
    const QSizeF dots = m_sheet / millimetresPerInch * dpi;
    if (dots.width() * dots.height() <= double(LabelLimits::SheetDots))
        return {};
    return { { {}, {},
        u"a sheet of %1 x %2 has too many dots for plates at %3 dpi"_s
            .arg(millimetres(m_sheet.width()), millimetres(m_sheet.height()))
            .arg(dpi),
        u"use a smaller sheet or a lower resolution"_s } };
}

Problems SheetLayout::problemsOf(const SheetOptions &options) const
{
    Problems problems;
    if (std::max(m_sheet.width(), m_sheet.height()) > LabelLimits::MaxPageSide)
        problems.append({ {}, {},
            u"a sheet of %1 x %2 is too large"_s.arg(
                millimetres(m_sheet.width()), millimetres(m_sheet.height())),
            u"use sides of at most %1 mm"_s.arg(LabelLimits::MaxPageSide) });
    if (options.start < 1 || options.start > cellCount())
        problems.append({ {}, {}, u"there is no cell %1 to start in"_s.arg(options.start),
            u"a sheet has %1 x %2 cells, %3 in all"_s.arg(m_cells.width())
                .arg(m_cells.height())
                .arg(cellCount()) });
    const double room = std::min({ grid().left(), grid().top(), m_sheet.width() - grid().right(),
        m_sheet.height() - grid().bottom() });
    if (options.cropMarks && room < markDistance + shortestMark - nothing)
        problems.append({ {}, {}, u"%1 beside the labels are no room for crop marks"_s.arg(millimetres(room)),
            u"leave a margin of %1 at least"_s.arg(millimetres(markDistance + shortestMark)) });
    return problems;
}

QRectF SheetLayout::grid() const
{
    return cell(0).united(cell(cellCount() - 1));
}

QRectF SheetLayout::cell(int index) const
{
    const int column = index % m_cells.width();
    const int row = index / m_cells.width();
    return { m_margin + QPointF(column * (m_label.width() + m_gap.x()), row * (m_label.height() + m_gap.y())),
        m_label };
}

/// The edges of all columns or rows, each once.
QList<double> SheetLayout::edges(Qt::Orientation orientation) const
{
    QList<double> edges;
    const bool across = orientation == Qt::Horizontal;
    for (int i = 0; i < (across ? m_cells.width() : m_cells.height()); ++i) {
        const QRectF label = cell(across ? i : i * m_cells.width());
        for (const double edge :
            { across ? label.left() : label.top(), across ? label.right() : label.bottom() }) {
            if (edges.isEmpty() || edge - edges.last() > nothing)
                edges.append(edge);
        }
    }
    return edges;
}

QList<QLineF> SheetLayout::cropMarks() const
{
    if (!m_hasCropMarks)
        return {};
    QList<QLineF> marks;
    const QRectF labels = grid();
    const QRectF inner = labels.adjusted(-markDistance, -markDistance, markDistance, markDistance);
    const QRectF outer
        = inner.adjusted(-longestMark, -longestMark, longestMark, longestMark) & QRectF(QPointF(), m_sheet);
    for (const double x : edges(Qt::Horizontal)) {
        marks.append({ x, outer.top(), x, inner.top() });
        marks.append({ x, inner.bottom(), x, outer.bottom() });
    }
    for (const double y : edges(Qt::Vertical)) {
        marks.append({ outer.left(), y, inner.left(), y });
        marks.append({ inner.right(), y, outer.right(), y });
    }
    return marks;
}
