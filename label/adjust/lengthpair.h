// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "label/adjust/length.h"

#include <QPointF>

/// Two lengths, to the right and down.
struct VX_LABEL_EXPORT LengthPair
{
    Length x;
    Length y;

    /// Of "2mm,-1mm". Nothing, with the reason in problem, for any other text.
    [[nodiscard]] static std::optional<LengthPair> parse(const QString &text, Problem &problem);
    /// The same, or of one length for both: "2mm". None may be negative.
    [[nodiscard]] static std::optional<LengthPair> parseDistances(const QString &text, Problem &problem);

    /// At a resolution of the output.
    [[nodiscard]] QPointF millimetres(double dpi) const { return { x.millimetres(dpi), y.millimetres(dpi) }; }
    /// The same lengths as a text that parse() takes.
    [[nodiscard]] QString text() const;

    friend bool operator==(const LengthPair &, const LengthPair &) = default;
};
