// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QPointF>
#include <QRectF>
#include <QSizeF>

#include <vector>

namespace Zint {

/// What there is to draw of a symbol, in modules from its top left corner, with whitespace and border. Left
/// and width of bars are whole numbers; only heights, hexagons and circles need not be.
struct SymbolGeometry
{
    /// The colour of everything that is not one of the eight colours of a coloured symbol.
    static constexpr int Foreground = -1;

    /// Bars of one colour: Foreground, or 1 to 8 for cyan, blue, magenta, red, yellow, green, black and
    /// white. They do not overlap.
    struct Bars
    {
        int colour = Foreground;
        std::vector<QRectF> rects;
    };

    /// A regular hexagon that stands on a corner.
    struct Hexagon
    {
        QPointF centre;
        double width = 0.0; ///< from its left to its right side
    };

    /// A disc, or a ring when it has a line.
    struct Circle
    {
        QPointF centre;
        double diameter = 0.0; ///< of a ring: of the middle of its line
        double lineWidth = 0.0; ///< 0: a disc
    };

    QSizeF size;
    std::vector<Bars> bars;
    std::vector<Hexagon> hexagons;
    std::vector<Circle> circles;

    /// Whether there is nothing to draw: after an error, or when a symbol is but a gap.
    [[nodiscard]] bool isEmpty() const;
    /// Adds a bar after those of its colour, unless it is empty, as between the lines of a very low stacked
    /// symbol.
    void addBar(int colour, const QRectF &rect);
};

} // namespace Zint
