// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "items/core/item.h"
#include "items/core/mobratypes.h"
#include "tests/support/bareshape.h"

/// A parent of a given shape code: stands in for groups, layers and any other item with members.
class ParentStandIn : public BareShape<Item>
{
public:
    explicit ParentStandIn(MobraTypes::ShapeType shape) { setItemShape(shape); }

    Item *createItemCopy() override { return new ParentStandIn(getItemShape()); }
    bool resetItemColors(const QColor & /*printColour*/, bool /*keepBlack*/, bool /*keepOthers*/) override
    {
        return false;
    }
    bool resetItemColorsNegative(const QColor & /*printColour*/) override { return false; }
};
