// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "label/separation.h"

/// The plates of a document without containers.
namespace Plates {

/// One for each ink, alone: two may have the same dot, and none has counted its own. Problems, when memory
/// runs out.
[[nodiscard]] Problems make(
    const LabelDocument &document, const SeparationOptions &options, std::vector<Plate> &plates);

/// Gives each dot to one ink at most, unless inks print over each other, and counts them.
void finish(std::vector<Plate> &plates, const SeparationOptions &options);

} // namespace Plates
