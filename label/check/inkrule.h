// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "label/check/checkrule.h"

/// "unprintable-colour": a part of an item has the colour of no ink. "refused-picture": a picture or drawing
/// was not loaded. "symbol-colours": a symbol has colours that all inks print.
class InkRule : public CheckRule
{
public:
    void check(const CheckScope &scope, Findings &findings) override;
};
