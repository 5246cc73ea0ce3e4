// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "label/check/checkrule.h"

/// What is known not to scan of barcodes. "code-data": the encoder refuses the text. "code-colours": the
/// symbology has colours of its own. "code-room": the item is empty. "module-size": modules or rows have less
/// than a dot. "code-stretched" and "code-turned": modules that are not square, or not of whole dots.
/// "code-option": the encoder has made another symbol than was asked for, or one beyond its standard.
class CodeRule : public CheckRule
{
public:
    void check(const CheckScope &scope, Findings &findings) override;
};
