// SPDX-License-Identifier: BSD-3-Clause
#include "bench/pair.h"
#include "bench/support.h"
#include "items/graphics/svgguard.h"
#include "items/graphics/symbolcolors.h"
#include "items/graphics/symbolitem.h"
#include "tests/support/literalrecolouring.h"

#include <QPainter>
#include <QStyleOptionGraphicsItem>
#include <QSvgRenderer>

#include <array>

// Symbols: the exchange of the colours in one pass beside six replacements, a whole recolouring beside what
// loading the drawing takes anyway, and many changes of colour beside one.

namespace {

/// A drawing of about so many bytes, with a colour every 60 to 90: an attribute, a style, or another colour.
QByteArray drawingOf(qsizetype size, bool gradients)
{
    QByteArray svg = "<svg fill=\"#000000\" stroke=\"none\" width=\"640\" height=\"480\">\n";
    if (gradients)
        svg += "<linearGradient id=\"g\"><stop offset=\"0\" stop-color=\"#000000\"/>"
               "<stop offset=\"1\" stop-color=\"#FFFFFF\"/></linearGradient>\n";
    const std::array<QByteArray, 4> endings { " fill=\"#000000\" stroke=\"#FFFFFF\"/>\n",
        " style=\"fill:#FFFFFF;stroke:#000000;stroke-width:2\"/>\n",
        " fill=\"#D40000\" stroke-width=\"1.5\"/>\n", " class=\"outline\" stroke=\"#000000\"/>\n" };
    for (int i = 0; svg.size() < size; ++i) {
        const QByteArray at = QByteArray::number(i * 7 % 640) + ' ' + QByteArray::number(i * 13 % 480);
        svg += "<path d=\"M" + at + "c1.25 3.5 4 6.75 8.5 9.25s12 .5 14-4l-3.125 11.5z\""
            + endings[std::size_t(i) % endings.size()];
    }
    return svg + "</svg>\n";
}

const SymbolColors::Inks inks { "#D40000", "#2060A0", true };
const SymbolColors::Inks noFill { "#D40000", "", false };

void paint(QImage &paper, SymbolItem &item)
{
    QPainter painter(&paper);
    const QStyleOptionGraphicsItem option;
    item.paint(&painter, &option, nullptr);
}

/// Size of the text, whether there is a fill.
void onePass(benchmark::State &state)
{
    const QByteArray svg = drawingOf(state.range(0), false);
    const SymbolColors::Inks &colors = state.range(1) ? inks : noFill;
    const QByteArray fill = colors.hasFill ? colors.fill : "none";
    if (SymbolColors::colored(svg, colors)
        != LiteralRecolouring::sixReplacements(svg, colors.pen, fill, !colors.hasFill)) {
        state.SkipWithError("the texts differ");
        return;
    }
    const int rounds = int(std::max<qint64>(1, 2'000'000 / state.range(0)));
    qsizetype total = 0;
    const auto ours = [&] {
        for (int i = 0; i < rounds; ++i)
            total += SymbolColors::colored(svg, colors).size();
    };
    const auto other = [&] {
        for (int i = 0; i < rounds; ++i)
            total += LiteralRecolouring::sixReplacements(svg, colors.pen, fill, false).size();
    };
    Pair::compare(state, 0.35, double(rounds) * double(svg.size()), ours, other);
    benchmark::DoNotOptimize(total);
}

/// What a change of colours takes of the text, and the renderer's loading, beside that loading alone. The
/// guard against hostile drawings, which examines every text that a renderer gets, is measured by itself.
void recolouring(benchmark::State &state)
{
    const QByteArray svg = drawingOf(state.range(0), state.range(1));
    const QByteArray recolored = SymbolColors::colored(svg, inks);
    QSvgRenderer renderer;
    const auto ours = [&] { renderer.load(SymbolColors::colored(svg, inks)); };
    const auto other = [&] { renderer.load(recolored); };
    Pair::compare(state, 1.05, double(svg.size()), ours, other);
    if (!renderer.isValid())
        state.SkipWithError("nothing was loaded");
}

/// The guard beside the loading.
void guard(benchmark::State &state)
{
    const QByteArray svg = drawingOf(state.range(0), false);
    QSvgRenderer renderer;
    bool accepted = true;
    const auto ours
        = [&] { accepted = accepted && SvgGuard::check(svg).verdict == SvgGuard::Verdict::Clean; };
    const auto other = [&] { accepted = accepted && renderer.load(svg); };
    Pair::compare(state, 1.0, double(svg.size()), ours, other);
    if (!accepted)
        state.SkipWithError("the drawing was refused");
}

/// Ten changes of colour before a painting beside one.
void tenChanges(benchmark::State &state)
{
    SymbolItem item;
    item.loadItemFromData(drawingOf(state.range(0), false));
    item.setItemFillColor(Qt::blue);
    QImage paper(640, 480, QImage::Format_ARGB32_Premultiplied);
    paper.fill(Qt::white);
    int color = 0;
    const auto changeAndPaint = [&](int changes) {
        for (int i = 0; i < changes; ++i)
            item.setItemPenColor(QColor::fromRgb(QRgb(++color * 0x010305)));
        paint(paper, item);
    };
    const auto ours = [&] { changeAndPaint(10); };
    const auto other = [&] { changeAndPaint(1); };
    Pair::compare(state, 1.5, 1.0, ours, other);
}

BENCHMARK(onePass)->ArgsProduct({ { 10'000, 1'000'000 }, { 0, 1 } })->Iterations(31);
BENCHMARK(recolouring)->ArgsProduct({ { 10'000, 1'000'000 }, { 0, 1 } })->Iterations(15);
BENCHMARK(guard)->Arg(10'000)->Arg(1'000'000)->Iterations(15);
BENCHMARK(tenChanges)->Arg(10'000)->Arg(1'000'000)->Iterations(9);

} // namespace

VX_BENCHMARK_MAIN
