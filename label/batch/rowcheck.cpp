// SPDX-License-Identifier: BSD-3-Clause
#include "label/batch/rowcheck.h"

#include "label/inkwarnings.h"
#include "label/printedbarcodes.h"
#include "label/printlimits.h"

std::optional<Separation> RowCheck::of(const LabelDocument &document, double dpi, Problems &problems)
{
    Problems found = document.problems();
    if (found.isEmpty())
        found = printProblems(document, dpi);
    if (!found.isEmpty()) {
        problems += found;
        return {};
    }
    Separation separation { {}, document.paper(), inkWarnings(document), PrintedBarcodes::of(document, dpi) };
    separation.warnings += PrintedBarcodes::warnings(document, separation.barcodes, dpi);
    return separation;
}
