// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "platform/zint/barcodeencoder.h"

class BarcodeItem;
class QPainter;

/// What the encoder makes of an item.
namespace BarcodeEncoding {

/// A barcode of all settings of the item.
[[nodiscard]] Zint::QZint of(const BarcodeItem &item);
[[nodiscard]] Zint::QZint::AspectRatioMode modeOf(const BarcodeItem &item);
/// Paints an item that is not selected as it paints itself, without encoding again what was encoded lately.
/// May leave the painter changed.
void paint(const BarcodeItem &item, QPainter &painter);

} // namespace BarcodeEncoding
