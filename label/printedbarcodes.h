// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "label/separation.h"

/// The barcodes of a document on its plates.
namespace PrintedBarcodes {

[[nodiscard]] std::vector<PrintedBarcode> of(const LabelDocument &document, double dpi);

/// What keeps them from being read.
[[nodiscard]] Problems warnings(
    const LabelDocument &document, const std::vector<PrintedBarcode> &barcodes, double dpi);

} // namespace PrintedBarcodes
