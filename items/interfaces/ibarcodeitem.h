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
    virtual short getBarcodeSymbol() const = 0;
    virtual void setBarcodeText(const QString &text) = 0;
    virtual QString getBarcodeText() const = 0;
    virtual void setBarcodeOption2(int option) = 0;
    virtual int getBarcodeOption2() const = 0;
    virtual void setBarcodeHeight(int height) = 0;
    virtual int getBarcodeHeight() const = 0;
    virtual void setBarcodeWhiteSpace(int modules) = 0;
    virtual int getBarcodeWhiteSpace() const = 0;
    virtual void setBarcodeHideText(bool hide) = 0;
    virtual bool getBarcodeHideText() const = 0;
    virtual void setBarcodeSecurityLevel(short level) = 0;
    virtual short getBarcodeSecurityLevel() const = 0;
    virtual void setBarcodeTextAbove(bool above) = 0;
    virtual bool getBarcodeTextAbove() const = 0;
    virtual void setBarcodeShowStartStop(bool show) = 0;
    virtual bool getBarcodeShowStartStop() const = 0;
    virtual void setBarcodeAspectRatio(int mode) = 0;
    virtual int getBarcodeAspectRatioMode() const = 0;
    /// What people read beside the symbol, check digits included; empty for symbols without such a text.
    virtual QString getBarcodeEncodedText() const = 0;
    /// False while the text is too long for the symbology, holds what it does not know, or has a wrong check
    /// digit. Options out of range leave it true, though nothing is painted.
    virtual bool isValidInput() const = 0;
    /// False for PDF417, QR Code and Data Matrix only.
    virtual bool isBarcode1D() const = 0;
};
