// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "items/core/penandbrushscope.h"
#include "items/core/vxexport.h"

#include <optional>

class Item;
class QPainter;

/// Paints an item in its mirrored state for as long as the scope lives, and leaves the painter's transform,
/// pen and brush as it found them. An item that changes more of the painter saves that itself.
class VX_EXPORT MirrorScope
{
public:
    /// Mirrors within (0, 0, width, height).
    MirrorScope(const Item &item, QPainter &painter, double width, double height);
    ~MirrorScope();
    Q_DISABLE_COPY_MOVE(MirrorScope)

private:
    QPainter &m_painter;
    /// Of an upright item, whose painter is not saved as a whole.
    std::optional<PenAndBrushScope> m_upright;
};
