// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "items/core/vxexport.h"

/// The wedge of a pie. Angles are sixteenths of a degree, counter-clockwise from three o'clock.
class VX_EXPORT IPieItem
{
public:
    virtual ~IPieItem();

    /// Whether the whole ellipse is outlined behind the wedge.
    virtual bool setDrawCircle(bool draw) = 0;
    virtual bool getDrawCircle() = 0;
    virtual int startPieAngle() = 0;
    virtual void setStartPieAngle(int angle) = 0;
    virtual int spanPieAngle() = 0;
    virtual void setSpanPieAngle(int angle) = 0;
};
