// SPDX-License-Identifier: BSD-3-Clause
#include "apps/vxlabel/stylenames.h"

#include <array>
#include <span>

using namespace Qt::StringLiterals;

namespace {

constexpr std::array penNames
    = { "none"_L1, "solid"_L1, "dash"_L1, "dot"_L1, "dash dot"_L1, "dash dot dot"_L1, "custom dash"_L1 };

constexpr std::array fillNames = { "none"_L1, "solid"_L1, "dense 1"_L1, "dense 2"_L1, "dense 3"_L1,
    "dense 4"_L1, "dense 5"_L1, "dense 6"_L1, "dense 7"_L1, "horizontal lines"_L1, "vertical lines"_L1,
    "cross"_L1, "backward diagonals"_L1, "forward diagonals"_L1, "diagonal cross"_L1, "linear gradient"_L1,
    "radial gradient"_L1, "conical gradient"_L1 };

QString nameOf(int style, std::span<const QLatin1StringView> names)
{
    if (style >= 0 && size_t(style) < names.size())
        return names[size_t(style)];
    return u"style %1"_s.arg(style);
}

} // namespace

namespace StyleNames {

QString color(const QColor &color)
{
    if (!color.isValid() || color.alpha() == 0)
        return u"transparent"_s;
    return color.name(color.alpha() == 255 ? QColor::HexRgb : QColor::HexArgb);
}

QString pen(int style)
{
    return nameOf(style, penNames);
}

QString fill(int style)
{
    return nameOf(style, fillNames);
}

} // namespace StyleNames
