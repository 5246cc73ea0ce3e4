// SPDX-License-Identifier: BSD-3-Clause
#include "tests/items/looks.h"
#include "tests/support/symbols.h"

namespace {

const QColor red(0xC0, 0x20, 0x20);
const QColor yellow(0xFF, 0xE0, 0x60);
constexpr int gradientTolerance = 2;

using Change = std::function<void(SymbolItem &)>;

void nothing(SymbolItem & /*symbol*/) { }

/// An arrow in a frame: ink, paper, and what has neither.
const QByteArray arrow = Symbols::root
    + "width=\"32\" height=\"24\"><rect x=\"1\" y=\"1\" width=\"30\" height=\"22\" fill=\"#FFFFFF\" "
      "stroke=\"#000000\" "
      "stroke-width=\"2\"/><path d=\"M5 9h12V4l10 8l-10 8v-5H5z\" style=\"fill:#000000;stroke:#FFFFFF\"/>"
      "<circle cx=\"5\" cy=\"19\" r=\"3\" fill=\"#2060C0\"/></svg>";

const QByteArray drop = Symbols::root
    + "width=\"32\" height=\"24\"><rect id=\"background_fix\" fill=\"#FFFFFF\" stroke-width=\"0\" "
      "fill-opacity=\"0\" "
      "width=\"32\" height=\"24\" /><path d=\"M16 2C22 10 24 13 24 16A8 7 0 0 1 8 16C8 13 10 10 16 "
      "2Z\"/></svg>";

const QByteArray gradient = Symbols::root
    + "width=\"32\" height=\"24\"><linearGradient id=\"g\"><stop offset=\"0.0\" stop-color=\"#FFFFFF\"/>"
      "<stop offset=\"1.0\" stop-color=\"#000000\"/></linearGradient>"
      "<rect width=\"32\" height=\"24\" fill=\"url(#g)\"/></svg>";

/// A symbol in its frame, in the colours given, changed further.
Look drawn(const QByteArray &name, const QByteArray &svg, const QColor &pen, const QColor &fill,
    const Change &change = nothing, Look::Place place = Look::Alone, int tolerance = 0)
{
    const auto draw = [=](Item &item) {
        auto &symbol = dynamic_cast<SymbolItem &>(item);
        symbol.reloadItemFromData(svg);
        symbol.setItemPenFillColorPrePrint(pen, fill);
        change(symbol);
    };
    return { name, draw, place, tolerance };
}

} // namespace

QList<Look> symbolLooks()
{
    const auto mirrored = [](bool horizontally, bool vertically) {
        return [=](SymbolItem &symbol) {
            symbol.setItemHorizontalMirror(horizontally);
            symbol.setItemVerticalMirror(vertically);
        };
    };
    const auto turned = [](SymbolItem &symbol) { symbol.setItemRotation(30.0); };
    const auto reduced = [](SymbolItem &symbol) { symbol.resetItemColors(red, false, false); };
    const auto negative = [](SymbolItem &symbol) { symbol.resetItemColorsNegative(red); };
    const auto stretched = [](SymbolItem &symbol) { symbol.setItemSize(QSizeF(80.0, 20.0)); };
    return {
        { "new", [](Item & /*item*/) {} },
        drawn("black", arrow, Qt::black, Qt::transparent),
        drawn("black-on-white", arrow, Qt::black, Qt::white),
        drawn("coloured", arrow, red, yellow),
        drawn("swapped", arrow, Qt::white, Qt::black),
        drawn("unfilled", arrow, red, Qt::transparent),
        drawn("translucent", arrow, QColor(0xC0, 0x20, 0x20, 0x40), QColor(0xFF, 0xE0, 0x60, 0x00)),
        drawn("background", drop, red, yellow),
        drawn("no-background", drop, red, Qt::transparent),
        drawn("gradient", gradient, red, yellow, nothing, Look::Alone, gradientTolerance),
        drawn("gradient-unfilled", gradient, red, Qt::transparent, nothing, Look::Alone, gradientTolerance),
        drawn("broken", Symbols::breakable, red, Qt::transparent),
        drawn("selected", arrow, red, yellow, nothing, Look::Selected),
        drawn("selected-in-group", arrow, red, yellow, nothing, Look::SelectedInGroup),
        drawn("stretched", arrow, red, yellow, stretched),
        drawn("rotated", arrow, red, yellow, turned),
        drawn("rotated-selected", arrow, red, yellow, turned, Look::Selected),
        drawn("mirrored-horizontally", arrow, red, yellow, mirrored(true, false)),
        drawn("mirrored-vertically", arrow, red, yellow, mirrored(false, true)),
        drawn("mirrored-both", arrow, red, yellow, mirrored(true, true)),
        drawn("reduced-pen", arrow, red, yellow, reduced),
        drawn("reduced-fill", arrow, yellow, red, reduced),
        drawn("negative-pen", arrow, red, yellow, negative),
        drawn("negative-fill", arrow, yellow, red, negative),
    };
}
