// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "label/batch/labelpages.h"
#include "label/batch/rowfiles.h"

/// Each label as a PDF of its own, or its plates as one each.
class PdfFiles final : public RowFiles
{
public:
    PdfFiles(const BatchOptions &options, const LabelPages &pages, bool filePerInk);

    [[nodiscard]] bool needsPlates() const override { return m_pages.needsPlates(); }

protected:
    [[nodiscard]] QList<QByteArray> contentsOf(const RowLabel &label, Problems &problems) const override;

private:
    [[nodiscard]] bool append(const RowLabel &label, QList<QByteArray> &contents, Problems &problems) const;

    LabelPages m_pages;
    bool m_filePerInk;
    QString m_title;
};
