// SPDX-License-Identifier: BSD-3-Clause
#include "platform/zint/symbolgeometry.h"

#include <algorithm>

namespace Zint {

bool SymbolGeometry::isEmpty() const
{
    return size.isEmpty() || (bars.empty() && hexagons.empty() && circles.empty());
}

void SymbolGeometry::addBar(int colour, const QRectF &rect)
{
    if (rect.isEmpty())
        return;
    const auto known = std::ranges::find(bars, colour, &Bars::colour);
    Bars &group = known == bars.end() ? bars.emplace_back(Bars { colour, {} }) : *known;
    group.rects.push_back(rect);
}

} // namespace Zint
