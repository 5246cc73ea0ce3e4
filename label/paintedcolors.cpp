// SPDX-License-Identifier: BSD-3-Clause
#include "label/paintedcolors.h"

#include "items/barcode/barcodeitem.h"
#include "items/core/itemcolors.h"
#include "items/graphics/symbolitem.h"
#include "items/shapes/lineitem.h"
#include "items/style/fillableitem.h"

namespace {

bool isPainted(const QColor &color)
{
    return color.isValid() && color.alpha() > 0;
}

QColor painted(const QColor &color, bool visible)
{
    return visible && isPainted(color) ? QColor::fromRgba(color.rgba()) : ItemColors::transparent;
}

bool hasPen(const Item &item)
{
    if (PaintedColors::hasEndsOnly(item))
        return true;
    const auto *contoured = dynamic_cast<const ContouredItem *>(&item);
    return !contoured || (contoured->getItemPenWidth() > 0 && contoured->getItemPen().style() != Qt::NoPen);
}

} // namespace

bool PaintedColors::hasEndsOnly(const Item &item)
{
    const auto *line = dynamic_cast<const LineItem *>(&item);
    return line && line->getItemArrows() != MobraTypes::ArrowNone && line->getItemPen().style() == Qt::NoPen;
}

QColor PaintedColors::penOf(const Item &item)
{
    // A symbol drops the alpha of its colours, and takes an invalid one for black.
    if (const auto *symbol = dynamic_cast<const SymbolItem *>(&item))
        return QColor(symbol->getItemPenColor().rgb());
    const auto *colored = dynamic_cast<const ColoredItem *>(&item);
    return colored ? painted(colored->getItemPenColor(), hasPen(item)) : ItemColors::transparent;
}

QColor PaintedColors::fillOf(const Item &item)
{
    if (const auto *symbol = dynamic_cast<const SymbolItem *>(&item)) {
        const QColor fill = symbol->getItemFillColor();
        return fill == ItemColors::transparent ? fill : QColor(fill.rgb());
    }
    if (const auto *barcode = dynamic_cast<const BarcodeItem *>(&item))
        return painted(barcode->getItemFillColor(), true);
    const auto *fillable = dynamic_cast<const FillableItem *>(&item);
    if (!fillable)
        return ItemColors::transparent;
    const MobraTypes::BrushStyle style = fillable->getItemBrushStyle();
    const bool visible = style >= MobraTypes::BrushSolid && style <= MobraTypes::BrushConicalGradient;
    return painted(fillable->getItemFillColor(), visible);
}

bool PaintedColors::fillIsGradient(const Item &item)
{
    const auto *fillable = dynamic_cast<const FillableItem *>(&item);
    return fillable && fillable->getItemBrushStyle() >= MobraTypes::BrushLinearGradient
        && fillOf(item) != ItemColors::transparent;
}

QColor PaintedColors::barsOf(const BarcodeItem &barcode)
{
    const QColor color = barcode.getItemTextColor();
    return color.isValid() ? painted(color, true) : ItemColors::black;
}
