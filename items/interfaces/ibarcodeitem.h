// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "items/core/vxexport.h"

#include <QString>

/// The symbol, text and layout of a barcode.
class VX_EXPORT IBarcodeItem
{
public:
    virtual ~IBarcodeItem();

    virtual void setBarcodeSymbol(short symbol) = 0;
    [[nodiscard]] virtual short getBarcodeSymbol() const = 0;
    virtual void setBarcodeText(const QString &text) = 0;
    [[nodiscard]] virtual QString getBarcodeText() const = 0;
    virtual void setBarcodeOption2(int option) = 0;
    [[nodiscard]] virtual int getBarcodeOption2() const = 0;
    virtual void setBarcodeHeight(int height) = 0;
    [[nodiscard]] virtual int getBarcodeHeight() const = 0;
    virtual void setBarcodeWhiteSpace(int modules) = 0;
    [[nodiscard]] virtual int getBarcodeWhiteSpace() const = 0;
    virtual void setBarcodeHideText(bool hide) = 0;
    [[nodiscard]] virtual bool getBarcodeHideText() const = 0;
    virtual void setBarcodeSecurityLevel(short level) = 0;
    [[nodiscard]] virtual short getBarcodeSecurityLevel() const = 0;
    virtual void setBarcodeTextAbove(bool above) = 0;
    [[nodiscard]] virtual bool getBarcodeTextAbove() const = 0;
    virtual void setBarcodeShowStartStop(bool show) = 0;
    [[nodiscard]] virtual bool getBarcodeShowStartStop() const = 0;
    virtual void setBarcodeAspectRatio(int mode) = 0;
    [[nodiscard]] virtual int getBarcodeAspectRatioMode() const = 0;
    /// The text as encoded, check digits included.
    [[nodiscard]] virtual QString getBarcodeEncodedText() const = 0;
    /// False while the text cannot be encoded in the symbol.
    [[nodiscard]] virtual bool isValidInput() const = 0;
    [[nodiscard]] virtual bool isBarcode1D() const = 0;
};
