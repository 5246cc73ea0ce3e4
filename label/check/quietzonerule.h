// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "label/check/checkrule.h"

/// "quiet-zone": other items print where a barcode needs free space, or on the symbol itself, or the space
/// reaches over the edge of the label.
class QuietZoneRule : public CheckRule
{
public:
    void check(const CheckScope &scope, Findings &findings) override;

private:
    void checkCode(const CheckScope &scope, const CheckedCode &code, Findings &findings);
};
