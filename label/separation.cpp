// SPDX-License-Identifier: BSD-3-Clause
#include "label/separation.h"

#include "items/core/item.h"
#include "label/flatdocument.h"
#include "label/inkwarnings.h"
#include "label/plates.h"
#include "label/printedbarcodes.h"
#include "label/printlimits.h"

namespace {

constexpr double millimetresPerInch = 25.4;

} // namespace

double Plate::coverage() const
{
    const double all = double(image.width()) * image.height();
    return all > 0.0 ? 100.0 * double(dots) / all : 0.0;
}

double Plate::area() const
{
    const double side = millimetresPerInch / dpi;
    return double(dots) * side * side;
}

std::optional<Separation> separate(
    const LabelDocument &original, const SeparationOptions &options, Problems &problems)
{
    if (const Problems found = original.problems(); !found.isEmpty()) {
        problems += found;
        return {};
    }
    const FlatDocument flat(original, options.layers);
    const LabelDocument &document = flat.document();
    Separation separation { {}, document.paper(), inkWarnings(document), {} };
    Problems found = flat.problems();
    if (found.isEmpty())
        found = printProblems(document, options.dpi);
    if (found.isEmpty())
        found = Plates::make(document, options, separation.plates);
    if (!found.isEmpty()) {
        problems += found;
        return {};
    }
    separation.barcodes = PrintedBarcodes::of(document, options.dpi);
    separation.warnings += PrintedBarcodes::warnings(document, separation.barcodes, options.dpi);
    flat.locate(separation.warnings);
    separation.warnings += flat.warnings();
    for (PrintedBarcode &barcode : separation.barcodes)
        barcode.where = flat.pointerOf(std::size_t(barcode.item));
    Plates::finish(separation.plates, options);
    return separation;
}
