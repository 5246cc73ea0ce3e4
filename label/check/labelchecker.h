// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "label/check/checkrule.h"

#include <memory>
#include <vector>

/// Checks one label after the other that differ in some items only: what is the same on all of them is
/// checked once.
class VX_LABEL_EXPORT LabelChecker
{
public:
    /// The items of the document all lie on its page, and those at the places in bound differ from label to
    /// label. The document must outlive the checker.
    LabelChecker(const LabelDocument &document, double dpi, const std::vector<std::size_t> &bound);
    ~LabelChecker();
    Q_DISABLE_COPY_MOVE(LabelChecker)

    /// What is wrong on all labels alike. `where` is the place of an item in the document.
    [[nodiscard]] Findings checkAll();
    /// What is wrong on the label that the document shows now, beyond that.
    [[nodiscard]] Findings checkShown();

private:
    [[nodiscard]] Findings check(bool isRow);
    /// Looks at the barcodes of the items once more.
    void updateCodes();

    CheckScope m_scope;
    std::vector<CheckedCode> m_designed; ///< codes that are the same on all labels
    std::vector<std::unique_ptr<CheckRule>> m_rules;
};
