// SPDX-License-Identifier: BSD-3-Clause
#include "label/batch/rowoutputs.h"

#include "label/batch/pdfdocument.h"
#include "label/batch/pdffiles.h"
#include "label/batch/platefiles.h"

using Format = BatchOptions::Format;

namespace {

LabelPages pagesOf(const BatchOptions &options, const PlateAdjuster &adjuster)
{
    return { options.format == Format::Pdf ? LabelPages::Kind::Colored : LabelPages::Kind::Plates, adjuster };
}

} // namespace

std::unique_ptr<RowOutput> RowOutputs::of(
    const BatchOptions &options, const PlateAdjuster &adjuster, bool filePerInk, Problems & /*problems*/)
{
    const bool overwrites = options.start != BatchOptions::Start::New;
    if (!options.pdf.isEmpty())
        return std::make_unique<PdfDocument>(
            options.pdf, pagesOf(options, adjuster), options.title, overwrites);
    if (options.hasPdfFormat())
        return std::make_unique<PdfFiles>(
            options.manifest, pagesOf(options, adjuster), filePerInk, options.title, overwrites);
    return std::make_unique<PlateFiles>(options.manifest, options.format, overwrites);
}
