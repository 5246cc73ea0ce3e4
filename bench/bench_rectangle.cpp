// SPDX-License-Identifier: BSD-3-Clause
#include "bench/pair.h"
#include "bench/support.h"
#include "items/shapes/rectangleitem.h"

#include <QGraphicsRectItem>
#include <QGraphicsScene>
#include <QPainter>

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cmath>
#include <memory>

// Painting and making rectangles beside Qt's own rectangle item: the same pens, brushes, grid and scene.

namespace {

struct Ours
{
    using Type = RectangleItem;

    static Type *make(double side)
    {
        auto *item = new RectangleItem;
        item->setItemSize(QSizeF(side, side));
        item->setItemFillColor(Qt::yellow);
        return item;
    }
};

struct Stock
{
    using Type = QGraphicsRectItem;

    static Type *make(double side)
    {
        const RectangleItem model;
        auto *item = new QGraphicsRectItem(0.5, 0.5, side - 1.0, side - 1.0);
        item->setPen(model.getItemPen());
        item->setBrush(Qt::yellow);
        item->setFlags(model.flags());
        return item;
    }
};

constexpr int pageWidth = 4000;
constexpr int pageHeight = 3000;

/// Fills a scene with a grid of items that covers the page evenly.
template <typename Kind> void fill(QGraphicsScene &scene, int count, double side)
{
    const int columns = std::max(1, int(std::sqrt(count * double(pageWidth) / pageHeight)));
    const double step = double(pageWidth) / columns;
    for (int i = 0; i < count; ++i) {
        auto *item = Kind::make(side);
        item->setPos(i % columns * step, i / columns * step);
        scene.addItem(item);
    }
}

template <typename Kind> QImage rendered(QGraphicsScene &scene)
{
    QImage page(pageWidth, pageHeight, QImage::Format_ARGB32_Premultiplied);
    page.fill(Qt::white);
    QPainter painter(&page);
    scene.render(&painter, page.rect(), page.rect());
    return page;
}

bool drawTheSame(int count, double side)
{
    const QRectF page(0, 0, pageWidth, pageHeight);
    QGraphicsScene ours(page);
    QGraphicsScene stock(page);
    fill<Ours>(ours, count, side);
    fill<Stock>(stock, count, side);
    return rendered<Ours>(ours) == rendered<Stock>(stock);
}

/// P1: arguments are the number of items, their side, and the target in percent.
void paintInScene(benchmark::State &state)
{
    const int count = int(state.range(0));
    const double side = double(state.range(1));
    if (!drawTheSame(count, side)) {
        state.SkipWithError("the two kinds draw different pixels");
        return;
    }
    const QRectF pageRect(0, 0, pageWidth, pageHeight);
    QGraphicsScene ours(pageRect);
    QGraphicsScene stock(pageRect);
    fill<Ours>(ours, count, side);
    fill<Stock>(stock, count, side);
    QImage page(pageWidth, pageHeight, QImage::Format_ARGB32_Premultiplied);
    page.fill(Qt::white);
    QPainter painter(&page);
    const auto render = [&](QGraphicsScene &scene) { scene.render(&painter, pageRect, pageRect); };
    render(ours);
    render(stock);
    Pair::compare(
        state, double(state.range(2)) / 100.0, count, [&] { render(ours); }, [&] { render(stock); });
}

template <typename Type> void makeAndDelete(int count)
{
    for (int i = 0; i < count; ++i)
        benchmark::DoNotOptimize(std::make_unique<Type>().get());
}

void createAndDestroy(benchmark::State &state)
{
    constexpr int count = 10'000;
    Pair::compare(
        state, 4.0, count, [] { makeAndDelete<RectangleItem>(count); },
        [] { makeAndDelete<QGraphicsRectItem>(count); });
}

/// The life of items on a page: added, rendered once, destroyed with their scene.
template <typename Kind> void liveInScene(int count)
{
    QImage page(1, 1, QImage::Format_ARGB32_Premultiplied);
    page.fill(Qt::white);
    QPainter painter(&page);
    QGraphicsScene scene(QRectF(0, 0, pageWidth, pageHeight));
    fill<Kind>(scene, count, 8.0);
    scene.render(&painter, page.rect(), page.rect());
}

void createInRenderedScene(benchmark::State &state)
{
    const int count = int(state.range(0));
    Pair::compare(
        state, 1.4, count, [count] { liveInScene<Ours>(count); }, [count] { liveInScene<Stock>(count); });
}

BENCHMARK(paintInScene)->Args({ 1'000, 8, 110 })->Iterations(61);
BENCHMARK(paintInScene)->Args({ 10'000, 8, 115 })->Iterations(21);
BENCHMARK(paintInScene)->Args({ 100'000, 8, 115 })->Iterations(9);
BENCHMARK(paintInScene)->Args({ 1'000, 100, 105 })->Iterations(21);
BENCHMARK(createAndDestroy)->Iterations(31);
BENCHMARK(createInRenderedScene)->Arg(1'000)->Iterations(61);
BENCHMARK(createInRenderedScene)->Arg(10'000)->Iterations(21);
BENCHMARK(createInRenderedScene)->Arg(100'000)->Iterations(7);

} // namespace

VX_BENCHMARK_MAIN
