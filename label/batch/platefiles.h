// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "label/batch/batchoptions.h"
#include "label/batch/rowfiles.h"

/// The plates of labels as pictures.
class PlateFiles final : public RowFiles
{
public:
    PlateFiles(const QString &manifest, BatchOptions::Format format, bool overwrite, qint64 mostBytes);

    [[nodiscard]] bool needsPlates() const override { return true; }

protected:
    [[nodiscard]] QList<QByteArray> contentsOf(const RowLabel &label, Problems &problems) const override;

private:
    BatchOptions::Format m_format;
};
