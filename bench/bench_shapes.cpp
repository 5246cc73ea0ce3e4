// SPDX-License-Identifier: BSD-3-Clause
#include "bench/itemscenes.h"
#include "bench/pair.h"
#include "bench/support.h"
#include "items/shapes/ellipseitem.h"
#include "items/shapes/hexagonitem.h"
#include "items/shapes/lineitem.h"

#include <QGraphicsEllipseItem>
#include <QGraphicsLineItem>
#include <QGraphicsPolygonItem>

#include <benchmark/benchmark.h>

#include <vector>

// Ellipses, polygons and lines beside Qt's own items with the same geometry, pens and brushes; and resizing.

namespace {

template <typename Item> Item *makeShape(double side)
{
    auto *item = new Item;
    item->setItemSize(QSizeF(side, side));
    item->setItemFillColor(Qt::yellow);
    return item;
}

struct Ellipse
{
    static EllipseItem *make(double side) { return makeShape<EllipseItem>(side); }
};

struct StockEllipse
{
    static QGraphicsEllipseItem *make(double side)
    {
        const EllipseItem model;
        auto *item = new QGraphicsEllipseItem(0.5, 0.5, side - 1.0, side - 1.0);
        item->setPen(model.getItemPen());
        item->setBrush(Qt::yellow);
        item->setFlags(model.flags());
        return item;
    }
};

struct Hexagon
{
    static HexagonItem *make(double side) { return makeShape<HexagonItem>(side); }
};

struct StockHexagon
{
    static QGraphicsPolygonItem *make(double side)
    {
        HexagonItem model;
        model.setItemSize(QSizeF(side, side));
        auto *item = new QGraphicsPolygonItem(model.polygon());
        item->setPen(model.getItemPen());
        item->setBrush(Qt::yellow);
        item->setFlags(model.flags());
        return item;
    }
};

struct Line
{
    static LineItem *make(double side)
    {
        auto *item = new LineItem;
        item->setItemLength(side);
        return item;
    }
};

/// Clipped to its shape like ours. Its shape is its stroke, so that single dots at its edges are missing.
struct StockLine
{
    static QGraphicsLineItem *make(double side)
    {
        const LineItem model;
        auto *item = new QGraphicsLineItem(0.0, 0.0, side, 0.0);
        item->setPen(model.getItemPen());
        item->setFlags(model.flags());
        return item;
    }
};

/// A line that does not clip itself to its shape has less to do than ours.
struct UnclippedStockLine
{
    static QGraphicsLineItem *make(double side)
    {
        QGraphicsLineItem *item = StockLine::make(side);
        item->setFlag(QGraphicsItem::ItemClipsToShape, false);
        return item;
    }
};

void paintEllipses(benchmark::State &state)
{
    ItemScenes::paintInScene<Ellipse, StockEllipse>(state);
}

void paintPolygons(benchmark::State &state)
{
    ItemScenes::paintInScene<Hexagon, StockHexagon>(state);
}

void paintLines(benchmark::State &state)
{
    ItemScenes::paintInScene<Line, StockLine, UnclippedStockLine>(state);
}

void paintLinesBesideUnclipped(benchmark::State &state)
{
    ItemScenes::paintInScene<Line, UnclippedStockLine>(state);
}

BENCHMARK(paintEllipses)->Args({ 1'000, 8, 110 })->Iterations(41);
BENCHMARK(paintEllipses)->Args({ 10'000, 8, 110 })->Iterations(21);
BENCHMARK(paintEllipses)->Args({ 100'000, 8, 110 })->Iterations(5);
BENCHMARK(paintPolygons)->Args({ 1'000, 8, 110 })->Iterations(41);
BENCHMARK(paintPolygons)->Args({ 10'000, 8, 110 })->Iterations(21);
BENCHMARK(paintPolygons)->Args({ 100'000, 8, 110 })->Iterations(5);
BENCHMARK(paintLines)->Args({ 1'000, 30, 30 })->Iterations(41);
BENCHMARK(paintLines)->Args({ 10'000, 30, 30 })->Iterations(21);
BENCHMARK(paintLines)->Args({ 100'000, 30, 30 })->Iterations(5);
BENCHMARK(paintLinesBesideUnclipped)->Args({ 1'000, 30, 40 })->Iterations(41);
BENCHMARK(paintLinesBesideUnclipped)->Args({ 100'000, 30, 40 })->Iterations(5);

template <typename Kind> auto madeInScene(QGraphicsScene &scene, int count)
{
    std::vector<decltype(Kind::make(0.0))> items;
    for (int i = 0; i < count; ++i) {
        items.push_back(Kind::make(8.0));
        scene.addItem(items.back());
    }
    return items;
}

void resizeAll(const std::vector<HexagonItem *> &items, double width)
{
    for (HexagonItem *item : items)
        item->setItemSize(QSizeF(width, 10.0));
}

/// Beside scaling the polygon of Qt's own item, which neither insets it nor keeps an outline to hit. The
/// target is our own: resizing a page of 10,000 shapes is to stay below 1/60 of a second.
void resizePolygons(benchmark::State &state)
{
    constexpr int count = 10'000;
    QGraphicsScene scene;
    QGraphicsScene stockScene;
    const auto ours = madeInScene<Hexagon>(scene, count);
    const auto stock = madeInScene<StockHexagon>(stockScene, count);
    const QPolygonF original = ours.front()->getOriginalPolygon();
    double width = 8.0;
    Pair::compare(
        state, 20.0, count, [&] { resizeAll(ours, width); },
        [&] {
            width = width > 20.0 ? 8.0 : width + 1.0;
            for (QGraphicsPolygonItem *item : stock)
                item->setPolygon(QTransform::fromScale(width / 100.0, 0.1).map(original));
        });
}

/// A page full of others makes no resizing slower.
void resizeOnCrowdedPage(benchmark::State &state)
{
    constexpr int count = 1'000;
    QGraphicsScene empty(ItemScenes::page());
    QGraphicsScene crowded(ItemScenes::page());
    ItemScenes::fill<Hexagon>(crowded, int(state.range(0)), 8.0);
    const auto alone = madeInScene<Hexagon>(empty, count);
    const auto among = madeInScene<Hexagon>(crowded, count);
    double width = 8.0;
    Pair::compare(
        state, 1.15, count, [&] { resizeAll(among, width); },
        [&] {
            width = width > 20.0 ? 8.0 : width + 1.0;
            resizeAll(alone, width);
        });
}

BENCHMARK(resizePolygons)->Iterations(41);
BENCHMARK(resizeOnCrowdedPage)->Arg(10'000)->Iterations(61);
BENCHMARK(resizeOnCrowdedPage)->Arg(100'000)->Iterations(61);

} // namespace

VX_BENCHMARK_MAIN
