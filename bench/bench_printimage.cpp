// SPDX-License-Identifier: BSD-3-Clause
#include "bench/pair.h"
#include "bench/support.h"
#include "items/shapes/rectangleitem.h"

#include <QBitmap>
#include <QPainter>
#include <QRegion>

#include <benchmark/benchmark.h>

// The prepared print image of a gradient beside the one step of it that nothing can shorten: the dithering.

namespace {

QRectF insideOutline(const RectangleItem &item)
{
    const double pen = item.getItemPen().widthF();
    return QRectF(pen / 2, pen / 2, item.getItemWidth() - pen, item.getItemHeight() - pen);
}

QImage drawnOnWhite(const RectangleItem &item, const QPen &pen, const QBrush &brush)
{
    QImage image(item.getItemSize().toSize(), QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::white);
    QPainter painter(&image);
    painter.setPen(pen);
    painter.setBrush(brush);
    painter.drawRect(insideOutline(item));
    return image;
}

/// The image by clipping the dithered picture to a bitmap's region.
QImage byRegion(const RectangleItem &item)
{
    const QImage picture = drawnOnWhite(item, item.getItemPen(), item.getItemBrush())
                               .convertToFormat(QImage::Format_Mono, item.getPrintDitherMethod());
    const QPen outline(Qt::black, 1.0, Qt::SolidLine, Qt::SquareCap, Qt::BevelJoin);
    const QBitmap mask = QBitmap::fromImage(drawnOnWhite(item, outline, Qt::black));
    QImage image(picture.size(), QImage::Format_ARGB32_Premultiplied);
    image.fill(0U);
    QPainter painter(&image);
    painter.setClipRegion(QRegion(mask), Qt::ReplaceClip);
    painter.drawImage(0, 0, picture);
    return image;
}

/// Arguments: width and height.
void preparePrintImage(benchmark::State &state)
{
    RectangleItem item;
    item.setItemSize(QSizeF(double(state.range(0)), double(state.range(1))));
    item.setItemFillColor(Qt::black);
    item.setItemBrushStyle(MobraTypes::BrushLinearGradient);
    item.preparePrintImage();
    if (item.getPreprintedImage() != byRegion(item)) {
        state.SkipWithError("the images differ");
        return;
    }
    const QImage colours = drawnOnWhite(item, item.getItemPen(), item.getItemBrush());
    const double pixels = double(state.range(0)) * double(state.range(1));
    Pair::compare(
        state, 1.6, pixels, [&] { item.preparePrintImage(); },
        [&] {
            benchmark::DoNotOptimize(
                colours.convertToFormat(QImage::Format_Mono, item.getPrintDitherMethod()));
        });
}

BENCHMARK(preparePrintImage)->Args({ 1'181, 591 })->Iterations(21);
BENCHMARK(preparePrintImage)->Args({ 4'000, 3'000 })->Iterations(9);

} // namespace

VX_BENCHMARK_MAIN
