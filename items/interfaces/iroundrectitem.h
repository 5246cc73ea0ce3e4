// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "items/core/vxexport.h"

/// The corner radii of a rounded rectangle, in scene units.
class VX_EXPORT IRoundRectItem
{
public:
    virtual ~IRoundRectItem();

    virtual void setRoundingRadiusX(double radius) = 0;
    virtual void setRoundingRadiusY(double radius) = 0;
    virtual double getRoundingRadiusX() const = 0;
    virtual double getRoundingRadiusY() const = 0;
};
