// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "label/check/checkrule.h"

/// "code-contrast": bars that are not darker than their background, or not in the red light of most scanners.
class ContrastRule : public CheckRule
{
public:
    void check(const CheckScope &scope, Findings &findings) override;
};
