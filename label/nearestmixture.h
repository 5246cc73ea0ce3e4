// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "label/labellimits.h"
#include "label/oklab.h"

#include <vector>

/// The share of each colour of a palette in a mixture: none is negative, and together they are 1. At most
/// four are above 0, as many as span a body.
using Mixture = std::array<double, LabelLimits::MaxInks + 1>;

/// The mixture of points that is nearest to the origin, by the algorithm of Philip Wolfe, "Finding the
/// nearest point in a polytope", Mathematical Programming 11, 1976. One point at least.
[[nodiscard]] VX_LABEL_EXPORT Mixture mixtureNearestToOrigin(const std::vector<Oklab::Color> &points);
