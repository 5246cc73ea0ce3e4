// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "items/core/vxexport.h"

#include <Qt>

/// The alignment of an item with text.
class VX_EXPORT ITextAlignItem
{
public:
    virtual ~ITextAlignItem();

    virtual Qt::Alignment getItemAlignment() const = 0;
    virtual void setItemAlignment(Qt::Alignment alignment) = 0;
    /// The alignment as a number, for the property map.
    uint getItemAlignmentInt() const;
};
