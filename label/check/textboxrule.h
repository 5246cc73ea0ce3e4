// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "label/check/checkrule.h"

/// "text-overflow": a rich text is higher or wider than its box. "text-squeezed": the letters of a label text
/// of fixed width or height have less than half of their width or height.
class TextBoxRule : public CheckRule
{
public:
    void check(const CheckScope &scope, Findings &findings) override;
};
