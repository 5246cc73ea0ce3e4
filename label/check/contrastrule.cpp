// SPDX-License-Identifier: BSD-3-Clause
#include "label/check/contrastrule.h"

#include "items/barcode/barcodeitem.h"
#include "items/core/itemcolors.h"
#include "label/check/scannerlight.h"
#include "label/paintedcolors.h"
#include "label/wording.h"

#include <algorithm>

using namespace Qt::StringLiterals;
using ScannerLight::Light;

namespace {

bool isInk(const QColor &color, const LabelDocument &document)
{
    return std::ranges::any_of(
        document.inks(), [&color](const Ink &ink) { return ink.color.rgba() == color.rgba(); });
}

/// The background of the code itself; what the paper shows where no ink prints it.
QRgb backgroundOf(const BarcodeItem &barcode, const LabelDocument &document)
{
    const QColor fill = PaintedColors::fillOf(barcode);
    return isInk(fill, document) ? fill.rgb() : document.paper().rgb();
}

} // namespace

void ContrastRule::check(const CheckScope &scope, Findings &findings)
{
    for (const CheckedCode &code : scope.codes) {
        const auto &barcode = dynamic_cast<const BarcodeItem &>(scope.itemAt(code.item));
        const QColor bars = PaintedColors::barsOf(barcode);
        const QRgb background = backgroundOf(barcode, scope.document);
        // Bars that no ink prints are another rule's concern, except that white ones may be meant to show.
        const bool isSeen = isInk(bars, scope.document) || background != scope.document.paper().rgb();
        if (!scope.isDue(code.item) || code.symbol.isEmpty() || !isSeen
            || ScannerLight::isDark(bars.rgb(), background, Light::Red))
            continue;
        const bool isForCameras = ScannerLight::isDark(bars.rgb(), background, Light::White);
        findings.append(scope.finding(isForCameras ? Finding::Warning : Finding::Error, "code-contrast",
            code.item,
            isForCameras ? u"scanners of red light do not see its bars of %1"_s.arg(Wording::color(bars))
                         : u"its bars of %1 are not darker than their background"_s.arg(Wording::color(bars)),
            isForCameras ? u"print it in black, blue or green, or read it with a camera"_s
                         : u"use dark bars on a light background"_s));
    }
}
