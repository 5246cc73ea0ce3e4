// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "apps/vxlabel/checkreport.h"

/// JSON Lines, for programs: an object for each finding, as soon as it is known, and at last one with what
/// was counted.
class JsonReport : public CheckReport
{
public:
    using CheckReport::CheckReport;

    [[nodiscard]] bool finish() override;

protected:
    void tellLabel(const Findings &findings) override;
    void tellRow(const Row &row, const Findings &findings) override;

private:
    void tell(const Finding &finding, std::optional<qint64> row);
};
