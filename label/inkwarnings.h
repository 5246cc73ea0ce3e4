// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "label/labeldocument.h"

/// Something of an item that no plate shows as it was designed.
struct InkWarning
{
    enum Kind {
        MissingPicture, ///< it could not be loaded
        OwnColors, ///< of a symbol, beside those that its pen and fill take the places of
        UnprintableColor ///< no ink prints it
    };

    Kind kind;
    Problem problem;
};

/// The warnings of the item of this place in the document; none of a hidden one. The colour of the paper,
/// white and near-white are meant to leave the paper bare.
[[nodiscard]] std::vector<InkWarning> inkWarnings(const LabelDocument &document, std::size_t index);
/// Those of all items.
[[nodiscard]] Problems inkWarnings(const LabelDocument &document);
