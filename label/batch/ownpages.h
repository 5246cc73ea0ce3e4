// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "label/batch/labelpages.h"
#include "label/batch/pdflayout.h"

/// Each label has pages of its own.
class OwnPages final : public PdfLayout
{
public:
    explicit OwnPages(const LabelPages &labels)
        : m_labels(labels)
    {
    }

    [[nodiscard]] bool needsPlates() const override { return m_labels.needsPlates(); }
    [[nodiscard]] bool add(
        PdfPages &pages, const RowLabel &label, ManifestEntry &entry, Problems &problems) override;
    [[nodiscard]] bool end(PdfPages &, Problems &) override { return true; }

private:
    LabelPages m_labels;
};
