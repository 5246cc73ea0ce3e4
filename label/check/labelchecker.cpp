// SPDX-License-Identifier: BSD-3-Clause
#include "label/check/labelchecker.h"

#include "items/barcode/barcodeitem.h"
#include "label/check/coderule.h"
#include "label/check/contrastrule.h"
#include "label/check/extentrule.h"
#include "label/check/fontrule.h"
#include "label/check/glyphrule.h"
#include "label/check/hairlinerule.h"
#include "label/check/inkrule.h"
#include "label/check/linkrule.h"
#include "label/check/pageplace.h"
#include "label/check/quietzonerule.h"
#include "label/check/textboxrule.h"
#include "label/printedbarcodes.h"

#include <algorithm>

namespace {

bool isVisibleCode(const Item &item)
{
    return dynamic_cast<const BarcodeItem *>(&item) && item.getItemIsVisible();
}

CheckedCode codeOf(const LabelDocument &document, std::size_t item, double dpi)
{
    const auto &barcode = dynamic_cast<const BarcodeItem &>(*document.items()[item]);
    const PrintedBarcode printed = PrintedBarcodes::of(document, item, dpi);
    return { item, printed, PagePlace::symbolOf(barcode, printed), PagePlace::zoneOf(barcode, printed) };
}

} // namespace

LabelChecker::LabelChecker(const LabelDocument &document, double dpi, const std::vector<std::size_t> &bound)
    : m_scope { document, dpi, {}, std::vector<bool>(document.items().size()), false, {} }
{
    for (const std::size_t item : bound)
        m_scope.isBound[item] = true;
    for (std::size_t i = 0; i < document.items().size(); ++i) {
        if (!m_scope.isBound[i] && isVisibleCode(*document.items()[i]))
            m_designed.push_back(codeOf(document, i, dpi));
    }
    m_rules.push_back(std::make_unique<InkRule>());
    m_rules.push_back(std::make_unique<LinkRule>());
    m_rules.push_back(std::make_unique<CodeRule>());
    m_rules.push_back(std::make_unique<ContrastRule>());
    m_rules.push_back(std::make_unique<QuietZoneRule>());
    m_rules.push_back(std::make_unique<ExtentRule>());
    m_rules.push_back(std::make_unique<TextBoxRule>());
    m_rules.push_back(std::make_unique<FontRule>());
    m_rules.push_back(std::make_unique<GlyphRule>());
    m_rules.push_back(std::make_unique<HairlineRule>());
}

LabelChecker::~LabelChecker() = default;

Findings LabelChecker::checkAll()
{
    return check(false);
}

Findings LabelChecker::checkShown()
{
    return check(true);
}

Findings LabelChecker::check(bool isRow)
{
    m_scope.isRow = isRow;
    m_scope.items.clear();
    for (std::size_t i = 0; i < m_scope.document.items().size(); ++i) {
        if (m_scope.isDue(i) && m_scope.itemAt(i).getItemIsVisible())
            m_scope.items.push_back(i);
    }
    updateCodes();
    Findings findings;
    for (const std::unique_ptr<CheckRule> &rule : m_rules)
        rule->check(m_scope, findings);
    return findings;
}

void LabelChecker::updateCodes()
{
    m_scope.codes = m_designed;
    for (const std::size_t item : m_scope.items) {
        if (m_scope.isRow && isVisibleCode(m_scope.itemAt(item)))
            m_scope.codes.push_back(codeOf(m_scope.document, item, m_scope.dpi));
    }
}
