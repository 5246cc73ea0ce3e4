// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "platform/zint/symbolgeometry.h"

#include <QString>

#include <memory>

namespace Zint {

struct BarcodeSettings;

/// What libzint makes of a barcode's settings. It never changes and is shared by all copies of a barcode.
struct EncodedSymbol
{
    /// 0 for none, below 5 for a warning. With an error there is neither text nor geometry.
    int error = 0;
    /// The symbology that was used; an unknown one is replaced.
    int symbol = 0;
    /// The encoder's own words about the error or warning, in English; empty without one, and for texts that
    /// it is not asked about.
    QString message;
    /// What people read beside the symbol; empty for symbols without such a text.
    QString text;
    SymbolGeometry geometry;

    [[nodiscard]] bool isValid() const;
};

/// Encodes; never null. Any settings give a symbol or an error.
[[nodiscard]] std::shared_ptr<const EncodedSymbol> encode(const BarcodeSettings &settings);

} // namespace Zint
