// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "label/vxlabelexport.h"

#include <QByteArray>
#include <QString>

#include <optional>

class BarcodeItem;

/// What a reader makes of the text of a barcode.
namespace CodeContent {

/// Whether the reader knows the symbology of the barcode.
[[nodiscard]] VX_LABEL_EXPORT bool isKnown(const BarcodeItem &barcode);

/// The formats in which the reader finds the symbology of the barcode, for CodeDecoder. Nothing for
/// symbologies, and for texts, that it does not read.
[[nodiscard]] VX_LABEL_EXPORT std::optional<QByteArray> formatsOf(const BarcodeItem &barcode);

/// Whether what was read is the text of the barcode, with what the symbology makes of it: zeros in front,
/// check digits, start characters, no brackets.
[[nodiscard]] VX_LABEL_EXPORT bool isThatOf(const BarcodeItem &barcode, const QString &read);

} // namespace CodeContent
