// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "items/core/vxexport.h"

#include <QColor>

/// The text colour of an item. It carries the field itself, invalid until the item sets it.
class VX_EXPORT TextColorItem
{
public:
    virtual ~TextColorItem();

    QColor getItemTextColor() const { return m_textColor; }
    virtual void setItemTextColor(const QColor &color);

protected:
    QColor m_textColor;
};
