// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "label/separation.h"

#include <optional>

class BarcodeItem;

/// The barcodes of a document on its plates.
namespace PrintedBarcodes {

/// What keeps a barcode from being read.
struct Fault
{
    enum Kind {
        Refused, ///< by the encoder
        Coloured, ///< it has colours of its own
        NoRoom, ///< the item is empty
        NoBars, ///< the text has none
        TooSmall, ///< its modules have too few dots
        TooLow, ///< its rows have less than a dot
        Stretched, ///< its square modules are not square
        Turned ///< its modules are not of whole dots
    };

    Kind kind;
    Problem problem;
};

/// The barcode that has this place among the items of the document.
[[nodiscard]] PrintedBarcode of(const LabelDocument &document, std::size_t item, double dpi);
/// All that are visible.
[[nodiscard]] std::vector<PrintedBarcode> of(const LabelDocument &document, double dpi);

/// The gravest fault of a barcode of the document; nothing if it has none.
[[nodiscard]] std::optional<Fault> faultOf(
    const LabelDocument &document, const PrintedBarcode &barcode, double dpi);
/// The problems of all faults.
[[nodiscard]] Problems warnings(
    const LabelDocument &document, const std::vector<PrintedBarcode> &barcodes, double dpi);

} // namespace PrintedBarcodes
