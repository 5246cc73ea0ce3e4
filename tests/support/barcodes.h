// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "platform/zint/barcodeencoder.h"

namespace Barcodes {

/// A barcode of the symbology with the text, in usual proportions.
[[nodiscard]] inline Zint::QZint barcode(int symbol, const QString &text)
{
    Zint::QZint barcode;
    barcode.setSymbol(symbol);
    barcode.setText(text);
    return barcode;
}

} // namespace Barcodes
