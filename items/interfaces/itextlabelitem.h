// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "items/core/vxexport.h"

/// What a label text offers beyond other text items: vertical writing, pinning and fixed sides.
class VX_EXPORT ITextLabelItem
{
public:
    virtual ~ITextLabelItem();

    virtual bool getTextIsVertical() const = 0;
    virtual bool setTextVertical(bool vertical) = 0;
    /// While pinned, the centre stays in place when the text changes.
    virtual bool getItemPinToCenter() const = 0;
    virtual void setItemPinToCenter(bool pin) = 0;
    /// While a side is fixed, the text is squeezed into it.
    virtual bool getItemFixedSizeWidth() const = 0;
    virtual void setItemSizeFixedWidth(bool fixed) = 0;
    virtual bool getItemFixedSizeHeight() const = 0;
    virtual void setItemSizeFixedHeight(bool fixed) = 0;
};
