// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "platform/zint/symbolgeometry.h"

struct zint_symbol;

namespace Zint {

/// Makes the geometry of an encoded symbol of what libzint itself would draw, for any kind of symbol but
/// without the texts. Returns libzint's code; the geometry is untouched when that is an error. The time grows
/// with the square of the number of bars.
[[nodiscard]] int vectorGeometry(zint_symbol &symbol, SymbolGeometry &geometry);

} // namespace Zint
