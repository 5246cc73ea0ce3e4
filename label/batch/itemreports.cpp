// SPDX-License-Identifier: BSD-3-Clause
#include "label/batch/itemreports.h"

#include "items/barcode/barcodeitem.h"
#include "items/core/item.h"
#include "label/inkwarnings.h"
#include "label/itemmap.h"
#include "label/jsonpointer.h"
#include "label/printedbarcodes.h"
#include "label/printlimits.h"

#include <algorithm>

using namespace Qt::StringLiterals;

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

ItemReports::Report ItemReports::reportOn(std::size_t item) const
{
    Report report;
    for (const InkWarning &warning : inkWarnings(m_document, item))
        report.warnings.append(warning.problem);
    const Item &shown = *m_document.items()[item];
    if (!dynamic_cast<const BarcodeItem *>(&shown) || !shown.getItemIsVisible())
        return report;
    report.barcode = PrintedBarcodes::of(m_document, item, m_dpi);
    report.barcode->where = JsonPointer::element(u"/items"_s, qsizetype(item));
    if (const auto fault = PrintedBarcodes::faultOf(m_document, *report.barcode, m_dpi))
        report.unreadable = fault->problem;
    return report;
}

/// First the warnings of all items about colours, then those about barcodes.
void ItemReports::tell(Separation &separation)
{
    const bool isFirst = m_reports.empty();
    m_reports.resize(m_document.items().size());
    for (std::size_t item = 0; item < m_reports.size(); ++item) {
        if (isFirst || isChanging(item))
            m_reports[item] = reportOn(item);
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
