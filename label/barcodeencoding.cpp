// SPDX-License-Identifier: BSD-3-Clause
#include "label/barcodeencoding.h"

#include "items/barcode/barcodeitem.h"

Zint::QZint BarcodeEncoding::of(const BarcodeItem &item)
{
    constexpr int unicodeInput = 1;
    Zint::QZint barcode;
    barcode.setInputMode(unicodeInput);
    barcode.setSymbol(item.getBarcodeSymbol());
    barcode.setText(item.getBarcodeText());
    barcode.setSecurityLevel(item.getBarcodeSecurityLevel());
    barcode.setWidth(item.getBarcodeOption2());
    barcode.setHeight(item.getBarcodeHeight());
    barcode.setWhitespace(item.getBarcodeWhiteSpace());
    barcode.setHideText(item.getBarcodeHideText());
    barcode.setTextAbove(item.getBarcodeTextAbove());
    barcode.setShowStartStop(item.getBarcodeShowStartStop());
    barcode.setTextAlign(item.getItemAlignment().toInt());
    barcode.setFontSize(item.getItemFontSize());
    barcode.setFontStyle(item.getItemFontFamily());
    barcode.setFontBold(item.getItemBold());
    barcode.setFontItalic(item.getItemItalic());
    barcode.setFontUnderline(item.getItemUnderline());
    barcode.setFgColor(item.getItemTextColor());
    barcode.setBgColor(item.getItemFillColor());
    return barcode;
}

Zint::QZint::AspectRatioMode BarcodeEncoding::modeOf(const BarcodeItem &item)
{
    return static_cast<Zint::QZint::AspectRatioMode>(item.getBarcodeAspectRatioMode());
}
