// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "items/core/vxexport.h"

/// What a rich text offers beyond other text items.
class VX_EXPORT IRichTextItem
{
public:
    virtual ~IRichTextItem();

    /// False while the text is higher than its box.
    virtual bool getTextFitsInBox() const = 0;
};
