// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "label/separation.h"

/// The barcodes of a document on its plates.
namespace PrintedBarcodes {

/// The barcode in a place among the items; nothing if that is another item, or hidden.
[[nodiscard]] std::optional<PrintedBarcode> of(const LabelDocument &document, std::size_t index, double dpi);
[[nodiscard]] std::vector<PrintedBarcode> of(const LabelDocument &document, double dpi);

/// What keeps one from being read.
[[nodiscard]] std::optional<Problem> warning(
    const LabelDocument &document, const PrintedBarcode &barcode, double dpi);
[[nodiscard]] Problems warnings(
    const LabelDocument &document, const std::vector<PrintedBarcode> &barcodes, double dpi);

} // namespace PrintedBarcodes
