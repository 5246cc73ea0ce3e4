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
    ushort getItemPenWidth() const { return m_penWidth; }
    Qt::PenStyle getItemPenStyle() const { return static_cast<Qt::PenStyle>(m_penStyle); }
    Qt::PenCapStyle getItemPenCapStyle() const { return static_cast<Qt::PenCapStyle>(m_penCapStyle); }
    Qt::PenJoinStyle getItemPenJoinStyle() const { return static_cast<Qt::PenJoinStyle>(m_penJoinStyle); }

    virtual void setItemPenStyle(Qt::PenStyle style) = 0;
    virtual void setItemPenCapStyle(Qt::PenCapStyle style) = 0;
    virtual void setItemPenJoinStyle(Qt::PenJoinStyle style) = 0;
    virtual void setItemPenWidth(unsigned short width) = 0;

    // What the property map reads and writes through: a property of an integer type cannot call an
    // enumeration's setter.
    ushort getItemPenStyleInt() const { return static_cast<ushort>(m_penStyle); }
    ushort getItemPenCapStyleInt() const { return static_cast<ushort>(m_penCapStyle); }
    ushort getItemPenJoinStyleInt() const { return static_cast<ushort>(m_penJoinStyle); }
    void setItemPenStyleInt(ushort style) { applyPenStyle(style); }
    void setItemPenCapStyleInt(ushort style) { applyPenCapStyle(style); }
    void setItemPenJoinStyleInt(ushort style) { applyPenJoinStyle(style); }

protected:
    /// Sets a style from a record or map, which may hold any number: one that its enumeration can hold goes
    /// through the setter. Any other is kept and paints nothing special; passed as the enumeration it would
    /// be undefined.
    void applyPenStyle(int style);
    void applyPenCapStyle(int style);
    void applyPenJoinStyle(int style);

    unsigned short m_penWidth = 1;
    int m_penStyle = Qt::SolidLine;
    int m_penCapStyle = Qt::RoundCap;
    int m_penJoinStyle = Qt::RoundJoin;
};
