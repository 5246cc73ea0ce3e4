// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "label/check/checkrule.h"

/// "off-label": an item, letters of a text or a part of a symbol lie outside the page. Outlines that the edge
/// cuts, and pictures of which it leaves the smaller part, may be meant, and are warnings.
class ExtentRule : public CheckRule
{
public:
    void check(const CheckScope &scope, Findings &findings) override;
};
