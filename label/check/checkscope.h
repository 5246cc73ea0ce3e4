// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "label/check/finding.h"
#include "label/separation.h"

#include <QPolygonF>

#include <vector>

class BarcodeItem;

/// A visible barcode of a label that is checked.
struct CheckedCode
{
    std::size_t item = 0; ///< its place in the document
    PrintedBarcode printed;
    QPolygonF symbol; ///< its corners on the page, in scene units, with its own white space; empty for none
    QPolygonF zone; ///< the same with all of the free space that scanners need
};

/// What a rule looks at: either all that is the same on each label, or what a row has made of the rest.
struct CheckScope
{
    const LabelDocument &document; ///< whose items all lie on the page
    double dpi; ///< of the output
    std::vector<std::size_t> items; ///< to be checked: visible ones
    std::vector<bool> isBound; ///< for each item of the document, whether it shows data
    bool isRow = false; ///< the bound items are checked, and otherwise the others
    std::vector<CheckedCode> codes; ///< all visible ones

    [[nodiscard]] double scaling() const { return dpi / document.designDpi(); } ///< dots per scene unit
    [[nodiscard]] bool isDue(std::size_t item) const { return isBound[item] == isRow; }
    [[nodiscard]] Item &itemAt(std::size_t item) const { return *document.items()[item]; }
    /// A finding at an item, whose words begin with what it is.
    [[nodiscard]] Finding finding(Finding::Severity severity, const char *rule, std::size_t item,
        const QString &what, const QString &advice) const;
};
