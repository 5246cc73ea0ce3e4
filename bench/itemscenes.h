// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "bench/pair.h"
#include "bench/support.h"

#include <QGraphicsItem>
#include <QGraphicsScene>
#include <QPainter>

#include <algorithm>
#include <cmath>

/// Scenes of one kind of item beside scenes of another. A kind has a function make(side) that returns a new
/// item which fills a square.
namespace ItemScenes {

/// The page in scene units, and its pixels.
inline QRectF page()
{
    return QRectF(QPointF(), Bench::pageSize);
}

/// Fills a scene with a grid of items that covers the page evenly.
template <typename Kind> void fill(QGraphicsScene &scene, int count, double side)
{
    const int columns = std::max(1, int(std::sqrt(count * page().width() / page().height())));
    const double step = page().width() / columns;
    for (int i = 0; i < count; ++i) {
        auto *item = Kind::make(side);
        item->setPos(i % columns * step, i / columns * step);
        scene.addItem(item);
    }
}

template <typename Kind> QImage rendered(int count, double side)
{
    QGraphicsScene scene(page());
    fill<Kind>(scene, count, side);
    QImage image(Bench::pageSize, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::white);
    QPainter painter(&image);
    scene.render(&painter, page(), page());
    return image;
}

/// Whether each item that lies within the picture leaves a mark in it.
inline bool allShow(const QGraphicsScene &scene, const QImage &picture)
{
    const QList<QGraphicsItem *> items = scene.items();
    return std::ranges::all_of(items, [&picture](const QGraphicsItem *item) {
        const QRect area = item->sceneBoundingRect().toAlignedRect();
        QImage blank(area.size(), picture.format());
        blank.fill(Qt::white);
        return !picture.rect().contains(area) || picture.copy(area) != blank;
    });
}

/// Arguments of the benchmark: the number of items, their side, and the target in percent. Looks draws the
/// same pixels as Ours.
template <typename Ours, typename Stock, typename Looks = Stock> void paintInScene(benchmark::State &state)
{
    const int count = int(state.range(0));
    const double side = double(state.range(1));
    const QImage picture = rendered<Ours>(count, side);
    if (picture != rendered<Looks>(count, side)) {
        state.SkipWithError("the two kinds draw different pixels");
        return;
    }
    QGraphicsScene ours(page());
    QGraphicsScene stock(page());
    fill<Ours>(ours, count, side);
    fill<Stock>(stock, count, side);
    if (!allShow(ours, picture)) {
        state.SkipWithError("an item draws nothing");
        return;
    }
    QImage image(Bench::pageSize, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::white);
    QPainter painter(&image);
    const auto render = [&](QGraphicsScene &scene) { scene.render(&painter, page(), page()); };
    render(ours);
    render(stock);
    Pair::compare(
        state, double(state.range(2)) / 100.0, count, [&] { render(ours); }, [&] { render(stock); });
}

} // namespace ItemScenes
