// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "label/adjust/inkreplacement.h"
#include "label/adjust/lengthpair.h"
#include "label/vxlabelexport.h"

#include <QSizeF>
#include <QTransform>

/// What is changed between a label and its print. In this order, the label is scaled about its middle,
/// mirrored, turned and moved; what then lies beyond the edges of the label is cut off.
struct VX_LABEL_EXPORT PrintAdjustment
{
    static constexpr double MinScale = 0.1;
    static constexpr double MaxScale = 10.0;

    int rotation = 0; ///< clockwise in degrees: 0, 90, 180 or 270
    bool mirror = false; ///< left and right
    LengthPair offset = {}; ///< to the right and down, on the label as it is printed
    double scale = 1.0;
    /// The ink that is black stays as it is, whatever becomes of the others, and nothing else prints where it
    /// does.
    bool keepBlack = false;
    QList<InkReplacement> replacements = {}; ///< all at once: of red=black,black=red both change places

    /// Of "98%" or "0.98". Nothing, with the reason in problem, for any other text.
    [[nodiscard]] static std::optional<double> parseScale(const QString &text, Problem &problem);

    [[nodiscard]] bool turnsOnSide() const { return rotation % 180 != 0; }
    /// Whether the print lies where the label's content does.
    [[nodiscard]] bool movesNothing() const;
    /// The sides of a page as it is printed.
    [[nodiscard]] QSizeF printedSize(QSizeF page) const;
    /// From a page to its print; both and their lengths are in millimetres, the dpi those of the output.
    [[nodiscard]] QTransform transform(QSizeF page, double dpi) const;
};
