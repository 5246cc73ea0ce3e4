// SPDX-License-Identifier: BSD-3-Clause
// Merging the renderings of four inks into one picture, beside copying one of them and beside the obvious
// way.
#include "bench/pair.h"
#include "bench/support.h"
#include "items/shapes/rectangleitem.h"
#include "items/style/inklayers.h"

#include <cstring>
#include <vector>

namespace {

constexpr QRgb black = 0xFF000000;
constexpr QRgb clear = 0x00000000;
constexpr QRgb paper = 0xFFFFFFFF;
constexpr QRgb inks[] = { 0xFF102030, 0xFFFF0000, 0xFF00FF00, 0xFF0000FF };
constexpr QSize cropSize(1000, 750);

std::vector<InkLayer> layersOf(QSize size, int longestRun)
{
    std::vector<InkLayer> layers;
    for (const QRgb ink : inks)
        layers.push_back({ Bench::twoValued(size, black, clear, longestRun, ink), ink });
    return layers;
}

QImage canvas(QSize size)
{
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    image.fill(clear);
    return image;
}

void mergePixelByPixel(QImage &out, const std::vector<InkLayer> &layers)
{
    for (int y = 0; y < out.height(); ++y) {
        for (int x = 0; x < out.width(); ++x) {
            for (const InkLayer &layer : layers) {
                const QRgb pixel = layer.image.pixel(x, y);
                if (pixel == black)
                    out.setPixel(x, y, layer.ink);
                else if (pixel != clear && &layer == &layers.front())
                    out.setPixel(x, y, paper);
            }
        }
    }
}

void merge(QImage &out, const std::vector<InkLayer> &layers)
{
    recombineInkLayers(out, layers, paper);
}

/// The page through an item, which checks its layers first, beside copying one of them.
void mergePage(benchmark::State &state)
{
    RectangleItem item;
    QList<QColor> palette;
    QList<QImage> images;
    for (const InkLayer &layer : layersOf(Bench::pageSize, int(state.range(0)))) {
        palette.append(QColor::fromRgb(layer.ink));
        images.append(layer.image);
    }
    item.setItemPalette(palette + QList<QColor> { QColor::fromRgb(paper) });
    QImage out = canvas(Bench::pageSize);
    QImage copy = canvas(Bench::pageSize);
    Pair::compare(
        state, 3.1, Bench::pagePixels,
        [&] { item.recombineColorsOnImage(out, int(images.size()), images, Bench::pageSize); },
        [&] { std::memcpy(copy.bits(), images[0].constBits(), std::size_t(copy.sizeInBytes())); });
}

/// A smaller picture beside the obvious way.
void mergeCrop(benchmark::State &state)
{
    const std::vector<InkLayer> layers = layersOf(cropSize, int(state.range(0)));
    QImage actual = canvas(cropSize);
    QImage expected = canvas(cropSize);
    mergePixelByPixel(expected, layers);
    merge(actual, layers);
    if (actual != expected) {
        state.SkipWithError("the merged picture is wrong");
        return;
    }
    Pair::compare(
        state, 1.0 / 30, double(cropSize.width()) * cropSize.height(), [&] { merge(actual, layers); },
        [&] { mergePixelByPixel(expected, layers); });
}

/// Dither noise beside areas and lettering: the content makes no difference.
void mergeNoise(benchmark::State &state)
{
    const std::vector<InkLayer> noise = layersOf(Bench::pageSize, 1);
    const std::vector<InkLayer> runs = layersOf(Bench::pageSize, 100);
    QImage out = canvas(Bench::pageSize);
    Pair::compare(
        state, 1.15, Bench::pagePixels, [&] { merge(out, noise); }, [&] { merge(out, runs); });
}

BENCHMARK(mergePage)->ArgName("longestRun")->Arg(100)->Arg(1)->Iterations(31);
BENCHMARK(mergeCrop)->ArgName("longestRun")->Arg(100)->Arg(1)->Iterations(15);
BENCHMARK(mergeNoise)->Iterations(31);

} // namespace

VX_BENCHMARK_MAIN
