// SPDX-License-Identifier: BSD-3-Clause
#include "items/graphics/svgitem.h"
#include "tests/items/looks.h"

namespace {

using Change = std::function<void(SvgItem &)>;

void nothing(SvgItem & /*svg*/) { }

/// An arrow over a half transparent ground, a gradient, and nothing on the right.
const QByteArray sample
    = "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"32\" height=\"24\"><linearGradient id=\"g\">"
      "<stop offset=\"0\" stop-color=\"#c02020\"/><stop offset=\"1\" "
      "stop-color=\"#ffe060\"/></linearGradient>"
      "<rect width=\"26\" height=\"16\" fill=\"#2060c0\" fill-opacity=\"0.25\"/>"
      "<rect y=\"16\" width=\"26\" height=\"8\" fill=\"url(#g)\"/>"
      "<path d=\"M3 6h10V2l9 7l-9 7v-4H3z\" stroke=\"#000000\" fill=\"#ffffff\"/></svg>";

/// The drawing stretched over the item, changed further. Of a gradient, other machines may round otherwise.
Look drawn(const QByteArray &name, const Change &change = nothing, Look::Place place = Look::Alone)
{
    constexpr int gradientTolerance = 2;
    const auto show = [change](Item &item) {
        auto &svg = dynamic_cast<SvgItem &>(item);
        svg.reloadItemFromData(sample);
        change(svg);
    };
    return { name, show, place, gradientTolerance };
}

} // namespace

QList<Look> svgLooks()
{
    return {
        { "new", [](Item & /*item*/) {} },
        drawn("stretched"),
        drawn("selected", nothing, Look::Selected),
        drawn("selected-in-group", nothing, Look::SelectedInGroup),
        drawn("mirrored", [](auto &svg) { svg.setItemHorizontalMirror(true); }),
        drawn("upside-down", [](auto &svg) { svg.setItemVerticalMirror(true); }),
        drawn("narrow", [](auto &svg) { svg.setItemSize(QSizeF(16.0, 48.0)); }),
        drawn("turned", [](auto &svg) { svg.setItemRotation(30.0); }),
        drawn("mirrored-and-turned",
            [](auto &svg) {
                svg.setItemHorizontalMirror(true);
                svg.setItemRotation(90.0);
            }),
        drawn("refused", [](auto &svg) { svg.reloadItemFromFile("/nowhere/at.all"); }),
    };
}
