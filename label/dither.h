// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "label/vxlabelexport.h"

#include <QString>
#include <QStringList>

#include <optional>

/// How a picture of many colours becomes dots of few inks. The numbers are those of documents.
enum class Dither {
    Diffusion = 0, ///< each dot takes over what the ones before it have lost: the finest details
    Ordered = 1, ///< a fixed pattern: dots that are apart from each other, and the same ones in every copy
    Threshold = 2 ///< no pattern, each dot in the nearest colour: for drawings that have the inks' colours
};

namespace DitherNames {

/// "diffusion"
[[nodiscard]] VX_LABEL_EXPORT QString of(Dither dither);
[[nodiscard]] VX_LABEL_EXPORT std::optional<Dither> find(const QString &name);
/// In the order of the numbers.
[[nodiscard]] VX_LABEL_EXPORT QStringList all();

} // namespace DitherNames
