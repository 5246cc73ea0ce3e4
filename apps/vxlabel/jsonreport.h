// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "apps/vxlabel/checkreport.h"

/// JSON Lines, for programs: an object for each finding, as soon as it is known, and at last one with what
/// was counted.
class JsonReport : public CheckReport
{
public:
    using CheckReport::CheckReport;

protected:
    void tellLabel(const Findings &findings) override;
    void tellRow(const CheckedRow &row) override;
    void tellRest() override;

private:
    /// row: null for a finding at the label
    void tell(const Finding &finding, const CheckedRow *row);
};
