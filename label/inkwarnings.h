// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "label/labeldocument.h"

/// Whether the item is a picture, which no plate prints yet: its colours are no inks.
[[nodiscard]] bool isPicture(const Item &item);

/// One problem for each visible item that paints in a colour that no ink prints, or is a picture. The colour
/// of the paper, white and near-white are meant to leave the paper bare.
[[nodiscard]] Problems inkWarnings(const LabelDocument &document);
