// SPDX-License-Identifier: BSD-3-Clause
#include "label/barcodeencoding.h"

#include "items/barcode/barcodeitem.h"
#include "items/core/mirrorscope.h"

#include <algorithm>
#include <array>

namespace {

/// One label asks for each of its barcodes several times, for each of its inks and to know how they come out.
/// The last ones are therefore kept.
void encode(Zint::QZint &barcode)
{
    static std::array<Zint::QZint, 8> last;
    static std::size_t next = 0;
    const auto known = std::ranges::find_if(
        last, [&barcode](const Zint::QZint &other) { return barcode.encodesLike(other); });
    if (known != last.end()) {
        barcode.shareEncoding(*known);
        return;
    }
    (void)barcode.error_int();
    last[next] = barcode;
    next = (next + 1) % last.size();
}

} // namespace

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
    encode(barcode);
    return barcode;
}

Zint::QZint::AspectRatioMode BarcodeEncoding::modeOf(const BarcodeItem &item)
{
    return static_cast<Zint::QZint::AspectRatioMode>(item.getBarcodeAspectRatioMode());
}

void BarcodeEncoding::paint(const BarcodeItem &item, QPainter &painter)
{
    const QRectF bounds = item.boundingRect();
    const MirrorScope mirrored(item, painter, bounds.width(), bounds.height());
    of(item).render(painter, bounds, modeOf(item));
}
