// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "label/separation.h"

#include <optional>
#include <vector>

/// What separate() tells about a document besides its plates, again and again while some of its items change:
/// of the others it is found out once.
class ItemReports
{
public:
    /// The document has no containers and outlives this; only its items in these places, in ascending order,
    /// change.
    ItemReports(const LabelDocument &document, const std::vector<std::size_t> &changing, double dpi);

    [[nodiscard]] bool isChanging(std::size_t item) const;
    /// What keeps the document, as it is now, from being printed.
    [[nodiscard]] Problems problems();
    /// Enters warnings and barcodes of the document, which has no problems().
    void tell(Separation &separation);

private:
    /// What is told about an item.
    struct Report
    {
        bool isBlank = false;
        Problems warnings;
        std::optional<PrintedBarcode> barcode;
        std::optional<Problem> unreadable;
    };

    [[nodiscard]] Problems problemsOfChanging() const;
    void reportOnColors(std::size_t item);
    void reportOnBarcode(std::size_t item);

    const LabelDocument &m_document;
    std::vector<std::size_t> m_changing;
    double m_dpi;
    bool m_isSound = false; ///< what does not change
    std::vector<Report> m_reports; ///< item by item; none before they are needed
};
