// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "items/core/vxexport.h"

#include <QColor>
#include <QString>

/// The pen colour of an item.
class VX_EXPORT IColorItem
{
public:
    virtual ~IColorItem();

    virtual QColor getItemPenColor() const = 0;
    virtual void setItemPenColor(const QColor &color) = 0;
    /// Parses any form that QColor::fromString knows; an unparsable text sets an invalid colour.
    virtual void setItemPenColorString(const QString &color) = 0;
};
