// SPDX-License-Identifier: BSD-3-Clause
#include "platform/zint/vectorgeometry.h"

#include <zint.h>

namespace Zint {

namespace {

SymbolGeometry geometryOf(const zint_vector &vector)
{
    SymbolGeometry geometry;
    geometry.size = QSizeF(vector.width, vector.height);
    for (const auto *bar = vector.rectangles; bar != nullptr; bar = bar->next)
        geometry.addBar(bar->colour, QRectF(bar->x, bar->y, bar->width, bar->height));
    for (const auto *hexagon = vector.hexagons; hexagon != nullptr; hexagon = hexagon->next)
        geometry.hexagons.push_back({ QPointF(hexagon->x, hexagon->y), hexagon->diameter });
    for (const auto *circle = vector.circles; circle != nullptr; circle = circle->next)
        geometry.circles.push_back({ QPointF(circle->x, circle->y), circle->diameter, circle->width });
    return geometry;
}

} // namespace

int vectorGeometry(zint_symbol &symbol, SymbolGeometry &geometry)
{
    symbol.scale = 0.5F; // libzint draws a module two units wide
    symbol.show_hrt = 0; // it would leave room for a text
    const int error = ZBarcode_Buffer_Vector(&symbol, 0);
    if (error < ZINT_ERROR && symbol.vector != nullptr)
        geometry = geometryOf(*symbol.vector);
    return error;
}

} // namespace Zint
