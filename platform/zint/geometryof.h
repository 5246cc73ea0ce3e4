// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "platform/zint/symbolgeometry.h"

#include <memory>

namespace Zint {

class QZint;

/// What there is to draw of the barcode's symbol, for programs that print it dot by dot; never null, empty
/// after an error. Encodes the barcode if that has not happened since its last change. The result outlives
/// the barcode.
[[nodiscard]] std::shared_ptr<const SymbolGeometry> geometryOf(const QZint &barcode);

} // namespace Zint
