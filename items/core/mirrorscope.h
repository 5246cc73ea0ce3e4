// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "items/core/vxexport.h"

#include <QtGlobal>

class Item;
class QPainter;

/// Paints an item in its mirrored state for as long as the scope lives, and leaves the painter as it found it.
class VX_EXPORT MirrorScope
{
public:
    /// Mirrors within (0, 0, width, height).
    MirrorScope(const Item &item, QPainter &painter, double width, double height);
    ~MirrorScope();
    Q_DISABLE_COPY_MOVE(MirrorScope)

private:
    QPainter &m_painter;
};
