// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QString>

namespace Zint {

/// Everything that the encoded symbol depends on, as it was set: any value is possible.
struct BarcodeSettings
{
    static constexpr int UnicodeInput = 1;

    QString text;
    int symbol = 20; ///< Code 128
    int securityLevel = -1; ///< option 1; -1: chosen by the encoder
    int width = 0; ///< option 2; 0: chosen by the encoder
    int inputMode = UnicodeInput;
    int borderType = 0; ///< 0 none, 1 bars above and below, 2 box; others: none
    int borderWidth = 0; ///< in modules
    int height = 0; ///< in modules; 0: the usual one of the symbol
    int whitespace = 0; ///< left and right, in modules

    friend bool operator==(const BarcodeSettings &, const BarcodeSettings &) = default;
};

} // namespace Zint
