// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "label/problem.h"
#include "label/vxlabelexport.h"

#include <QString>

#include <optional>

/// A length in the unit in which a person has given it.
struct VX_LABEL_EXPORT Length
{
    enum class Unit {
        Millimetre,
        Inch, ///< 25.4 mm
        Point, ///< 1/72 inch
        Dot ///< of the output
    };

    double value = 0.0;
    Unit unit = Unit::Millimetre;

    /// Of "10mm", "-0.5 in", "7pt" or "3dot"; a zero needs no unit. Nothing, with the reason in problem, for
    /// any other text.
    [[nodiscard]] static std::optional<Length> parse(const QString &text, Problem &problem);

    /// At a resolution of the output.
    [[nodiscard]] double millimetres(double dpi) const;
    /// The same length as a text that parse() takes.
    [[nodiscard]] QString text() const;

    friend bool operator==(const Length &, const Length &) = default;
};
