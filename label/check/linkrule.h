// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "label/check/checkrule.h"

/// "drawing-links": a drawing refers to files, which are never opened, and is printed without them.
class LinkRule : public CheckRule
{
public:
    void check(const CheckScope &scope, Findings &findings) override;
};
