// SPDX-License-Identifier: BSD-3-Clause
// Merging the renderings of four inks into one picture, beside copying one of them and beside the obvious
// way.
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
constexpr int pageWidth = Bench::pageSize.width();
constexpr int cropWidth = 1000;

constexpr QSize sizeOf(int width)
{
    return { width, width * 3 / 4 };
}

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

bool mergesRight(int longestRun)
{
    const QSize size = sizeOf(cropWidth);
    const std::vector<InkLayer> layers = layersOf(size, longestRun);
    QImage expected = canvas(size);
    QImage actual = canvas(size);
    mergePixelByPixel(expected, layers);
    merge(actual, layers);
    return actual == expected;
}

void countPixels(benchmark::State &state, QSize size)
{
    state.SetItemsProcessed(state.iterations() * size.width() * size.height());
}

template <void (*Merge)(QImage &, const std::vector<InkLayer> &)> void mergeLayers(benchmark::State &state)
{
    const QSize size = sizeOf(int(state.range(1)));
    const int longestRun = int(state.range(0));
    if (!mergesRight(longestRun))
        state.SkipWithError("the merged picture is wrong");
    const std::vector<InkLayer> layers = layersOf(size, longestRun);
    QImage out = canvas(size);
    for (auto _ : state) {
        Merge(out, layers);
        benchmark::DoNotOptimize(out.bits());
    }
    countPixels(state, size);
}

/// Through the item, which checks and converts its layers first.
void mergeByItem(benchmark::State &state)
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
    for (auto _ : state) {
        item.recombineColorsOnImage(out, int(images.size()), images, Bench::pageSize);
        benchmark::DoNotOptimize(out.bits());
    }
    countPixels(state, Bench::pageSize);
}

void copyLayer(benchmark::State &state)
{
    const QImage layer = Bench::twoValued(Bench::pageSize, black, clear, int(state.range(0)), 1);
    QImage out = canvas(Bench::pageSize);
    for (auto _ : state) {
        std::memcpy(out.bits(), layer.constBits(), std::size_t(layer.sizeInBytes()));
        benchmark::DoNotOptimize(out.bits());
        benchmark::ClobberMemory();
    }
    countPixels(state, Bench::pageSize);
}

} // namespace

BENCHMARK(copyLayer)->ArgName("longestRun")->Arg(100)->Arg(1)->Unit(benchmark::kMillisecond);
BENCHMARK(mergeByItem)->ArgName("longestRun")->Arg(100)->Arg(1)->Unit(benchmark::kMillisecond);
BENCHMARK(mergeLayers<merge>)
    ->ArgNames({ "longestRun", "width" })
    ->ArgsProduct({ { 100, 1 }, { pageWidth, cropWidth } })
    ->Unit(benchmark::kMillisecond);
BENCHMARK(mergeLayers<mergePixelByPixel>)
    ->ArgNames({ "longestRun", "width" })
    ->ArgsProduct({ { 100, 1 }, { cropWidth } })
    ->Unit(benchmark::kMillisecond);

int main(int argc, char **argv)
{
    return Bench::run(argc, argv);
}
