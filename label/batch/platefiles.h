// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "label/batch/batchoptions.h"
#include "label/batch/rowfiles.h"

/// The plates of labels as pictures.
class PlateFiles final : public RowFiles
{
public:
    explicit PlateFiles(const BatchOptions &options);

    [[nodiscard]] bool needsPlates() const override { return true; }

protected:
    [[nodiscard]] QList<QByteArray> contentsOf(const RowLabel &label, Problems &problems) const override;

private:
    BatchOptions::Format m_format;
};
