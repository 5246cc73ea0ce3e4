// SPDX-License-Identifier: BSD-3-Clause
#include "bench/itemscenes.h"
#include "bench/pair.h"
#include "bench/support.h"
#include "items/shapes/rectangleitem.h"

#include <QGraphicsRectItem>

#include <benchmark/benchmark.h>

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
    QGraphicsScene scene(ItemScenes::page());
    ItemScenes::fill<Kind>(scene, count, 8.0);
    scene.render(&painter, page.rect(), page.rect());
}

void createInRenderedScene(benchmark::State &state)
{
    const int count = int(state.range(0));
    Pair::compare(
        state, 1.4, count, [count] { liveInScene<Ours>(count); }, [count] { liveInScene<Stock>(count); });
}

void paintRectangles(benchmark::State &state)
{
    ItemScenes::paintInScene<Ours, Stock>(state);
}

BENCHMARK(paintRectangles)->Args({ 1'000, 8, 110 })->Iterations(61);
BENCHMARK(paintRectangles)->Args({ 10'000, 8, 115 })->Iterations(21);
BENCHMARK(paintRectangles)->Args({ 100'000, 8, 115 })->Iterations(9);
BENCHMARK(paintRectangles)->Args({ 1'000, 100, 105 })->Iterations(21);
BENCHMARK(createAndDestroy)->Iterations(31);
BENCHMARK(createInRenderedScene)->Arg(1'000)->Iterations(61);
BENCHMARK(createInRenderedScene)->Arg(10'000)->Iterations(21);
BENCHMARK(createInRenderedScene)->Arg(100'000)->Iterations(7);

} // namespace

VX_BENCHMARK_MAIN
