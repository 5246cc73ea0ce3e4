// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "label/check/checkscope.h"

/// One kind of thing that may be wrong with the items of a label. It may remember what it has found out about
/// fonts and the like, but not about labels.
class CheckRule
{
public:
    CheckRule() = default;
    virtual ~CheckRule() = default;
    Q_DISABLE_COPY_MOVE(CheckRule)

    /// Adds what is wrong with the items of the scope; `where` is their place in its document.
    virtual void check(const CheckScope &scope, Findings &findings) = 0;
};
