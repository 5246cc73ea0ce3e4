// SPDX-License-Identifier: BSD-3-Clause
#include "label/check/hairlinerule.h"

#include "items/core/itemcolors.h"
#include "items/style/fillableitem.h"
#include "items/text/textitem.h"
#include "label/check/pageplace.h"
#include "label/paintedcolors.h"
#include "label/wording.h"

#include <algorithm>
#include <cmath>
#include <optional>

using namespace Qt::StringLiterals;

namespace {

/// What rounding leaves of a whole dot.
constexpr double wholeDot = 1.0 - 1e-6;

/// The width of the painted outline in scene units; nothing without one.
std::optional<double> penWidthOf(const Item &item)
{
    const auto *contoured = dynamic_cast<const ContouredItem *>(&item);
    if (!contoured || PaintedColors::penOf(item) == ItemColors::transparent)
        return {};
    const QSizeF stretch = PagePlace::stretchOf(item);
    // The frame of a text keeps its width when the text is stretched.
    const bool isStretched = !dynamic_cast<const TextItem *>(&item);
    return contoured->getItemPen().widthF()
        * (isStretched ? std::min(stretch.width(), stretch.height()) : 1.0);
}

/// The shorter side of a shape that is a fill alone, in scene units; nothing for other items.
std::optional<double> fillWidthOf(const Item &item)
{
    if (!dynamic_cast<const FillableItem *>(&item) || dynamic_cast<const TextItem *>(&item)
        || PaintedColors::penOf(item) != ItemColors::transparent
        || PaintedColors::fillOf(item) == ItemColors::transparent)
        return {};
    const QSizeF stretch = PagePlace::stretchOf(item);
    return std::min(item.getItemWidth() * stretch.width(), item.getItemHeight() * stretch.height());
}

} // namespace

void HairlineRule::check(const CheckScope &scope, Findings &findings)
{
    const auto note = [&](std::size_t item, const QString &part, std::optional<double> width) {
        const double dots = width.value_or(1.0) * scope.scaling();
        if (!width || dots >= wholeDot)
            return;
        findings.append(scope.finding(Finding::Warning, "hairline", item,
            u"%1 is %2 of a dot wide, and may vanish"_s.arg(
                part, Wording::number(std::round(dots * 100) / 100)),
            u"make it wider, or print at %1 dpi or more"_s.arg(std::ceil(scope.dpi / std::max(dots, 1e-3)))));
    };
    for (const std::size_t item : scope.items) {
        note(item, u"its line"_s, penWidthOf(scope.itemAt(item)));
        note(item, u"its fill"_s, fillWidthOf(scope.itemAt(item)));
    }
}
