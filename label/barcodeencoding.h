// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "platform/zint/barcodeencoder.h"

class BarcodeItem;

/// What the encoder makes of an item.
namespace BarcodeEncoding {

/// A barcode of all settings of the item.
[[nodiscard]] Zint::QZint of(const BarcodeItem &item);
[[nodiscard]] Zint::QZint::AspectRatioMode modeOf(const BarcodeItem &item);

} // namespace BarcodeEncoding
