// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "platform/zint/symbolgeometry.h"

struct zint_symbol;

namespace Zint {

/// Whether the module matrix says everything about an encoded symbol. It does not for hexagons, dots and
/// coloured modules, nor where there is a border, bars between rows, guard bars or a quiet zone by default.
[[nodiscard]] bool isPlainMatrix(const zint_symbol &symbol);

/// The geometry of an encoded symbol from its module matrix, in time that grows with the number of modules.
/// Bars are the runs of dark modules of a row; runs that repeat below one another are one bar.
[[nodiscard]] SymbolGeometry matrixGeometry(const zint_symbol &symbol);

} // namespace Zint
