// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QString>

#include <span>

namespace Zint {

/// A kind of barcode, for lists that people choose from.
struct Symbology
{
    enum class Kind {
        Linear, ///< one row of bars
        Stacked, ///< several rows of bars
        Matrix, ///< square, round or hexagonal modules
        Postal, ///< bars of several heights
        Composite, ///< a linear code below a stacked one; the encoder needs a second text, which a barcode
                   ///< has not
    };

    int number; ///< of QZint::setSymbol()
    QString name;
    Kind kind;
    bool takesGs1; ///< can hold application identifiers; most only in the input mode for them
    bool hasText; ///< which people can read
    bool takesEci; ///< says which character set it uses, so that it takes texts beyond Latin 1
};

/// All symbologies by ascending number.
[[nodiscard]] std::span<const Symbology> symbologies();

/// Null for a number of none. The encoder takes some other numbers too: older ones of the same symbologies.
[[nodiscard]] const Symbology *symbologyOf(int number);

} // namespace Zint
