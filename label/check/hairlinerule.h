// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "label/check/checkrule.h"

/// "hairline": an outline, a line or a filled shape is thinner than a dot, so that it may vanish in places.
class HairlineRule : public CheckRule
{
public:
    void check(const CheckScope &scope, Findings &findings) override;
};
