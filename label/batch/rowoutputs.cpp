// SPDX-License-Identifier: BSD-3-Clause
#include "label/batch/rowoutputs.h"

#include "label/batch/ownpages.h"
#include "label/batch/pdfdocument.h"
#include "label/batch/pdffiles.h"
#include "label/batch/platefiles.h"
#include "label/batch/sheetpages.h"

using Format = BatchOptions::Format;

namespace {

LabelPages pagesOf(const BatchOptions &options, const PlateAdjuster &adjuster)
{
    return { options.format == Format::Pdf ? LabelPages::Kind::Colored : LabelPages::Kind::Plates, adjuster };
}

/// Null, with the reasons in problems, if labels do not fit on sheets.
std::unique_ptr<PdfLayout> layoutOf(
    const BatchOptions &options, QSizeF page, const PlateAdjuster &adjuster, Problems &problems)
{
    const LabelPages labels = pagesOf(options, adjuster);
    if (!options.sheet)
        return std::make_unique<OwnPages>(labels);
    const std::optional<SheetLayout> layout
        = SheetLayout::of(*options.sheet, adjuster.adjustment().printedSize(page), adjuster.dpi(), problems);
    if (!layout)
        return {};
    const Problems found = labels.needsPlates() ? layout->plateProblems(adjuster.dpi()) : Problems();
    problems += found;
    return found.isEmpty() ? std::make_unique<SheetPages>(labels, *layout) : nullptr;
}

} // namespace

std::unique_ptr<RowOutput> RowOutputs::of(const BatchOptions &options, QSizeF page,
    const PlateAdjuster &adjuster, bool filePerInk, Problems &problems)
{
    if (!options.pdf.isEmpty()) {
        std::unique_ptr<PdfLayout> layout = layoutOf(options, page, adjuster, problems);
        const bool overwrites = options.start != BatchOptions::Start::New;
        return layout
            ? std::make_unique<PdfDocument>(options.pdf, std::move(layout), options.title, overwrites)
            : nullptr;
    }
    if (options.hasPdfFormat())
        return std::make_unique<PdfFiles>(options, pagesOf(options, adjuster), filePerInk);
    return std::make_unique<PlateFiles>(options);
}
