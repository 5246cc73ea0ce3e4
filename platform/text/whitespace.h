// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "items/core/vxexport.h"

class QString;

class VX_EXPORT WhiteSpace
{
public:
    /// Whether the text holds nothing but white space; true for an empty text.
    [[nodiscard]] static bool isWhiteSpace(const QString &text);
};
