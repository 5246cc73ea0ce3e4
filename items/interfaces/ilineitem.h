// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "items/core/mobratypes.h"
#include "items/core/vxexport.h"

/// The ends of a line. The setters return whether something changed.
class VX_EXPORT ILineItem
{
public:
    virtual ~ILineItem();

    virtual bool setItemArrowLeft(MobraTypes::ArrowStyle style) = 0;
    virtual MobraTypes::ArrowStyle getItemArrowLeft() = 0;
    virtual bool setItemArrowRight(MobraTypes::ArrowStyle style) = 0;
    virtual MobraTypes::ArrowStyle getItemArrowRight() = 0;
};
