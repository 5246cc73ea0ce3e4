// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "items/core/vxexport.h"

/// Template and read-only state of an item.
class VX_EXPORT ITemplateLockItem
{
public:
    virtual ~ITemplateLockItem();

    /// Both switches also park the datasource binding: on saves and clears it, off restores what was saved.
    /// Never call one with the state that it already has: the second call saves, or restores, an empty
    /// binding.
    virtual void setItemAsUserTemplate(bool on) = 0;
    virtual bool itemIsUserTemplate() const = 0;
    virtual bool itemIsReadOnly() const = 0;
    virtual void setItemAsReadOnly(bool on) = 0;
    /// True for a user template, a supply template or a read-only item.
    virtual bool itemIsNonModifiable() const = 0;
};
