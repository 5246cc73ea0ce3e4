// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "items/core/mobratypes.h"
#include "items/core/vxexport.h"

/// The fill style of an item.
class VX_EXPORT IBrushItem
{
public:
    virtual ~IBrushItem();

    virtual void setItemBrushStyle(MobraTypes::BrushStyle style) = 0;
    virtual MobraTypes::BrushStyle getItemBrushStyle() const = 0;
};
