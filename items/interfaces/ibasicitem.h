// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "items/core/vxexport.h"

#include <QSizeF>

/// Size, rotation and mirroring of an item. It carries the fields itself; Item gives them their meaning.
class VX_EXPORT IBasicItem
{
public:
    virtual ~IBasicItem();

    /// The logical size in scene units.
    virtual QSizeF getItemSize() const = 0;
    /// Resizes the item. Returns false, changing nothing, for an equal size.
    virtual bool setItemSize(QSizeF size) = 0;
    /// Store one side only: the scale factors and the geometry stay as they are.
    virtual void setItemWidth(double width) = 0;
    virtual void setItemHeight(double height) = 0;
    /// Resizes the item; with keepRatio one side follows the other, the height leading when heightLeads is
    /// set.
    virtual bool setItemSize(QSizeF size, bool keepRatio, bool heightLeads) = 0;
    /// The same with limits. The side that follows is limited last, which may break the ratio. force takes
    /// the request even when it equals the present size; a limited size that equals it is refused all the
    /// same.
    virtual bool setItemSize(QSizeF size, bool keepRatio, double minWidth, double minHeight, double maxWidth,
        double maxHeight, bool heightLeads, bool force)
        = 0;
    /// Degrees in [0, 360), clockwise on screen.
    virtual double getItemRotation() const = 0;
    virtual void setItemRotation(double degrees) = 0;
    virtual bool getItemHorizontalMirror() const = 0;
    virtual bool getItemVerticalMirror() const = 0;
    virtual void setItemHorizontalMirror(bool mirror) = 0;
    virtual void setItemVerticalMirror(bool mirror) = 0;

protected:
    double m_width = -1.0;
    double m_height = -1.0;
    double m_rotation = 0.0;
    bool m_horizontalMirror = false;
    bool m_verticalMirror = false;
};
