// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "label/labeldocument.h"

/// One problem for each visible item that paints in a colour that no ink prints, and for each picture that
/// could not be loaded. The colour of the paper, white and near-white are meant to leave the paper bare.
[[nodiscard]] Problems inkWarnings(const LabelDocument &document);

/// The same of one item, by its place.
[[nodiscard]] Problems inkWarnings(const LabelDocument &document, std::size_t index);
