// SPDX-License-Identifier: BSD-3-Clause
// What looking at a drawing costs, beside the renderer's reading it afterwards; and SVG items beside Qt's
// own.
#include "bench/pair.h"
#include "bench/support.h"
#include "items/graphics/svgguard.h"
#include "items/graphics/svgitem.h"

#include <QByteArray>
#include <QDomDocument>
#include <QGraphicsSvgItem>
#include <QPainter>
#include <QStyleOptionGraphicsItem>
#include <QSvgRenderer>

#include <memory>

namespace {

/// As people draw: curves with styles of their own in groups, each path of some 600 bytes.
QByteArray clipArt(qsizetype bytes)
{
    QByteArray text = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<svg xmlns=\"http://www.w3.org/2000/svg\" "
                      "width=\"400\" height=\"300\" viewBox=\"0 0 400 300\">\n";
    for (int i = 0; text.size() < bytes; ++i) {
        text += "<g id=\"layer" + QByteArray::number(i) + "\" transform=\"translate("
            + QByteArray::number(i % 40) + ",3.5)\">\n<path style=\"fill:#d4"
            + QByteArray::number(1000 + i % 9000)
            + ";fill-opacity:1;fill-rule:evenodd;stroke:#000000;stroke-width:0.75;stroke-linecap:round\" "
              "d=\"M "
            + QByteArray::number(i % 300) + ".25,120.5";
        for (int curve = 0; curve < 12; ++curve)
            text += " c 1.25,-0.5 2.75,3.125 " + QByteArray::number(curve - 6) + ".5,0.875";
        text += " z\"/>\n<rect x=\"10.5\" y=\"20\" width=\"4\" height=\"3.25\" fill=\"none\"/>\n</g>\n";
    }
    return text + "</svg>\n";
}

/// The time of the guard as a part of that of reading the drawing.
void guard(benchmark::State &state)
{
    const QByteArray drawing = clipArt(qsizetype(state.range(0)));
    const auto look = [&] { benchmark::DoNotOptimize(SvgGuard::check(drawing)); };
    const auto read = [&] { benchmark::DoNotOptimize(QSvgRenderer(drawing).isValid()); };
    if (SvgGuard::check(drawing).verdict != SvgGuard::Verdict::Clean || !QSvgRenderer(drawing).isValid()) {
        state.SkipWithError("the drawing is not clean");
        return;
    }
    Pair::compare(state, 1.0, 1.0, look, read);
}

/// The search for pictures in a drawing that has none, beside making a tree of it and walking that.
void walk(benchmark::State &state)
{
    constexpr int rounds = 10;
    const QByteArray drawing = clipArt(qsizetype(state.range(0)));
    SvgItem item;
    item.setSvgContents(drawing.toBase64());
    QDomDocument document;
    if (!item.checkXmlOnLoad() || !document.setContent(drawing, false)) {
        state.SkipWithError("the drawing is not clean");
        return;
    }
    const auto search = [&] {
        for (int i = 0; i < rounds; ++i)
            benchmark::DoNotOptimize(item.checkXmlOnLoad());
    };
    const auto tree = [&] {
        for (int i = 0; i < rounds; ++i) {
            document.setContent(drawing, false);
            const QDomNode first = document.documentElement().firstChild();
            benchmark::DoNotOptimize(SvgItem::recursiveCheckAttributesForInvalidImages(first));
        }
    };
    Pair::compare(state, 0.05, rounds, search, tree);
}

void paint(QGraphicsItem &item, QImage &paper)
{
    QPainter painter(&paper);
    const QStyleOptionGraphicsItem option;
    item.paint(&painter, &option, nullptr);
}

/// Loading a drawing and painting it once, beside Qt's item without a guard.
void loadAndPaint(benchmark::State &state)
{
    const QByteArray drawing = clipArt(qsizetype(state.range(0)));
    QImage ours(400, 300, QImage::Format_ARGB32_Premultiplied);
    ours.fill(Qt::white);
    const QImage blank = ours;
    QImage theirs = ours;
    const auto guarded = [&] {
        SvgItem item;
        item.loadItemFromData(drawing);
        paint(item, ours);
    };
    const auto bare = [&] {
        QSvgRenderer renderer(drawing);
        QGraphicsSvgItem item;
        item.setSharedRenderer(&renderer);
        paint(item, theirs);
    };
    guarded();
    bare();
    if (ours != theirs || ours == blank) {
        state.SkipWithError("not the same picture");
        return;
    }
    Pair::compare(state, 1.5, 1.0, guarded, bare);
}

/// Painting it once more.
void repaint(benchmark::State &state)
{
    const QByteArray drawing = clipArt(qsizetype(state.range(0)));
    QImage paper(400, 300, QImage::Format_ARGB32_Premultiplied);
    paper.fill(Qt::white);
    SvgItem item;
    item.loadItemFromData(drawing);
    QSvgRenderer renderer(drawing);
    QGraphicsSvgItem bare;
    bare.setSharedRenderer(&renderer);
    Pair::compare(
        state, 1.05, 1.0, [&] { paint(item, paper); }, [&] { paint(bare, paper); });
}

BENCHMARK(walk)->Arg(20'000)->Arg(200'000)->Iterations(31)->Unit(benchmark::kMicrosecond);
BENCHMARK(loadAndPaint)->Arg(20'000)->Arg(200'000)->Iterations(31)->Unit(benchmark::kMicrosecond);
BENCHMARK(repaint)->Arg(20'000)->Arg(200'000)->Iterations(31)->Unit(benchmark::kMicrosecond);
BENCHMARK(guard)->Arg(20'000)->Arg(200'000)->Iterations(101)->Unit(benchmark::kMicrosecond);

} // namespace

VX_BENCHMARK_MAIN
