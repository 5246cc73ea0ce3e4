// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "items/shapes/lineitem.h"

/// Lines as tests want them.
namespace Lines {

/// What decides where a line paints in its own coordinates.
struct Look
{
    ushort arrows;
    double length;
    ushort penWidth = 1;
    Qt::PenJoinStyle join = Qt::RoundJoin;
};

inline void apply(LineItem &item, const Look &look)
{
    item.setItemPenWidth(look.penWidth);
    item.setItemPenJoinStyle(look.join);
    item.setItemArrows(look.arrows);
    item.setItemLength(look.length);
}

} // namespace Lines
