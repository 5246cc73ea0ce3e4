// SPDX-License-Identifier: BSD-3-Clause
#include "platform/zint/matrixgeometry.h"

#include <zint.h>

#include <algorithm>
#include <numeric>
#include <span>
#include <utility>

namespace Zint {

namespace {

/// Dark modules beside one another, and the index of their bar.
struct Run
{
    int left;
    int width;
    std::size_t bar;
};

bool isDark(const zint_symbol &symbol, int row, int column)
{
    return ((symbol.encoded_data[row][column / 8] >> (column % 8)) & 1) != 0;
}

void findRuns(const zint_symbol &symbol, int row, std::vector<Run> &runs)
{
    runs.clear();
    for (int column = 0; column < symbol.width; ++column) {
        if (!isDark(symbol, row, column))
            continue;
        const int left = column;
        while (column < symbol.width && isDark(symbol, row, column))
            ++column;
        runs.push_back({ left, column - left, 0 });
    }
}

/// The heights of the rows: what is left of the symbol's height goes to the rows that have none of their own.
std::vector<double> rowHeights(const zint_symbol &symbol)
{
    const std::span<const float> given(symbol.row_height, std::size_t(symbol.rows));
    std::vector<double> heights(given.begin(), given.end());
    const auto variable = std::ranges::count(heights, 0.0);
    if (variable > 0) {
        const double fixed = std::accumulate(heights.begin(), heights.end(), 0.0);
        std::ranges::replace(heights, 0.0, (double(symbol.height) - fixed) / double(variable));
    }
    return heights;
}

/// Adds the bars of one row after another.
class BarBuilder
{
public:
    explicit BarBuilder(double offset)
        : m_offset(offset)
    {
    }

    /// Takes the runs from left to right.
    void addRow(std::vector<Run> &runs, double top, double height)
    {
        auto above = m_above.begin();
        for (Run &run : runs) {
            above = std::find_if(
                above, m_above.end(), [&](const Run &other) { return other.left >= run.left; });
            if (above != m_above.end() && above->left == run.left && above->width == run.width) {
                run.bar = above->bar;
                m_bars[run.bar].setBottom(top + height);
            } else {
                run.bar = m_bars.size();
                m_bars.emplace_back(m_offset + run.left, top, run.width, height);
            }
        }
        std::swap(m_above, runs);
    }

    [[nodiscard]] std::vector<QRectF> takeBars()
    {
        m_bars.shrink_to_fit(); // they live as long as the barcode
        return std::move(m_bars);
    }

private:
    double m_offset;
    std::vector<Run> m_above; ///< of the row before
    std::vector<QRectF> m_bars;
};

} // namespace

bool isPlainMatrix(const zint_symbol &symbol)
{
    constexpr int special = BARCODE_BIND | BARCODE_BOX | BARCODE_DOTTY_MODE;
    return symbol.symbology != BARCODE_MAXICODE && symbol.symbology != BARCODE_ULTRA
        && (symbol.output_options & special) == 0
        && ZBarcode_Cap(symbol.symbology, ZINT_CAP_QUIET_ZONES | ZINT_CAP_EXTENDABLE) == 0;
}

SymbolGeometry matrixGeometry(const zint_symbol &symbol)
{
    const std::vector<double> heights = rowHeights(symbol);
    BarBuilder builder(symbol.whitespace_width);
    std::vector<Run> runs;
    double top = 0.0;
    for (int row = 0; row < symbol.rows; ++row) {
        const double height = heights[std::size_t(row)];
        findRuns(symbol, row, runs);
        builder.addRow(runs, top, height);
        top += height;
    }

    SymbolGeometry geometry;
    geometry.size = QSizeF(symbol.width + 2.0 * symbol.whitespace_width, top);
    if (std::vector<QRectF> bars = builder.takeBars(); !bars.empty())
        geometry.bars.push_back({ SymbolGeometry::Foreground, std::move(bars) });
    return geometry;
}

} // namespace Zint
