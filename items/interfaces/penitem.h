// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "items/core/vxexport.h"

#include <Qt>

/// The outline of an item: width, style, cap and join. It carries the fields itself.
class VX_EXPORT PenItem
{
public:
    virtual ~PenItem();

    /// Width in scene units, at most 72; 0 draws no outline.
    [[nodiscard]] ushort getItemPenWidth() const { return m_penWidth; }
    [[nodiscard]] Qt::PenStyle getItemPenStyle() const { return static_cast<Qt::PenStyle>(m_penStyle); }
    [[nodiscard]] Qt::PenCapStyle getItemPenCapStyle() const
    {
        return static_cast<Qt::PenCapStyle>(m_penCapStyle);
    }
    [[nodiscard]] Qt::PenJoinStyle getItemPenJoinStyle() const
    {
        return static_cast<Qt::PenJoinStyle>(m_penJoinStyle);
    }

    virtual void setItemPenStyle(Qt::PenStyle style) = 0;
    virtual void setItemPenCapStyle(Qt::PenCapStyle style) = 0;
    virtual void setItemPenJoinStyle(Qt::PenJoinStyle style) = 0;
    virtual void setItemPenWidth(unsigned short width) = 0;

    // What the property map writes through: a property of an integer type cannot call an enumeration's
    // setter.
    void setItemPenStyleInt(ushort style);
    void setItemPenCapStyleInt(ushort style);
    void setItemPenJoinStyleInt(ushort style);

protected:
    unsigned short m_penWidth = 1;
    // Plain integers, because a record or map may hold any number and storing one outside an enumeration's
    // range in the enumeration itself is undefined.
    int m_penStyle = Qt::SolidLine;
    int m_penCapStyle = Qt::RoundCap;
    int m_penJoinStyle = Qt::RoundJoin;
};
