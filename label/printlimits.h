// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "label/labeldocument.h"

/// What keeps a sound document from being printed at a resolution: the resolution itself, a page of no dots
/// or too many, gradients that are too large.
[[nodiscard]] Problems printProblems(const LabelDocument &document, double dpi);
