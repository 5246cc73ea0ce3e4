// SPDX-License-Identifier: BSD-3-Clause
#include "label/batch/itemreports.h"

#include "items/barcode/barcodeitem.h"
#include "items/core/item.h"
#include "items/text/textitem.h"
#include "label/inkwarnings.h"
#include "label/itemmap.h"
#include "label/jsonpointer.h"
#include "label/printedbarcodes.h"
#include "label/printlimits.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

/// Whether the content of items has colours. Label texts and barcodes show any in the colours they have.
bool contentHasColors(MobraTypes::ShapeType shape)
{
    return shape != MobraTypes::LabelTextShape && shape != MobraTypes::BarcodeShape;
}

/// A text without characters has no colour at all.
bool isBlank(const Item &item)
{
    const auto *text = dynamic_cast<const TextItem *>(&item);
    return text && text->document()->isEmpty();
}

} // namespace

ItemReports::ItemReports(const LabelDocument &document, const std::vector<std::size_t> &changing, double dpi)
    : m_document(document)
    , m_changing(changing)
    , m_dpi(dpi)
{
}

bool ItemReports::isChanging(std::size_t item) const
{
    return std::ranges::binary_search(m_changing, item);
}

Problems ItemReports::problems()
{
    const Problems found = m_isSound ? problemsOfChanging() : m_document.problems();
    if (!found.isEmpty())
        return found;
    m_isSound = true;
    return printProblems(m_document, m_dpi);
}

Problems ItemReports::problemsOfChanging() const
{
    Problems problems;
    for (const std::size_t item : m_changing)
        problems += ItemMap::geometryProblems(
            *m_document.items()[item], JsonPointer::element(u"/items"_s, qsizetype(item)));
    return problems;
}

void ItemReports::reportOnColors(std::size_t item)
{
    Report &report = m_reports[item];
    report.isBlank = isBlank(*m_document.items()[item]);
    report.warnings.clear();
    for (const InkWarning &warning : inkWarnings(m_document, item))
        report.warnings.append(warning.problem);
}

void ItemReports::reportOnBarcode(std::size_t item)
{
    Report &report = m_reports[item];
    report.barcode = PrintedBarcodes::of(m_document, item, m_dpi);
    report.barcode->where = JsonPointer::element(u"/items"_s, qsizetype(item));
    const auto fault = PrintedBarcodes::faultOf(m_document, *report.barcode, m_dpi);
    report.unreadable = fault ? std::optional(fault->problem) : std::nullopt;
}

/// First the warnings of all items about colours, then those about barcodes.
void ItemReports::tell(Separation &separation)
{
    const bool isFirst = m_reports.empty();
    m_reports.resize(m_document.items().size());
    for (std::size_t item = 0; item < m_reports.size(); ++item) {
        if (!isFirst && !isChanging(item))
            continue;
        const Item &shown = *m_document.items()[item];
        if (isFirst || contentHasColors(shown.getItemShape()) || isBlank(shown) != m_reports[item].isBlank)
            reportOnColors(item);
        if (dynamic_cast<const BarcodeItem *>(&shown) && shown.getItemIsVisible())
            reportOnBarcode(item);
    }
    for (const Report &report : m_reports)
        separation.warnings += report.warnings;
    for (const Report &report : m_reports) {
        if (report.barcode)
            separation.barcodes.push_back(*report.barcode);
        if (report.unreadable)
            separation.warnings.append(*report.unreadable);
    }
}
