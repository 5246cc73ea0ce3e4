// SPDX-License-Identifier: BSD-3-Clause
// A picture of many colours as the dots of two inks, beside Qt's dithering of one plate from its greys. Qt
// dithers 240 million pixels a second on the machine of the manual: six times its time are 40 million.
#include "bench/pair.h"
#include "bench/support.h"
#include "label/inksplit.h"

#include <cmath>

namespace {

constexpr double leastRate = 40.0;
constexpr double rateOfQt = 240.0;

/// Waves in all colours, with the noise of a camera.
QImage photograph()
{
    QImage image(Bench::pageSize, QImage::Format_ARGB32_Premultiplied);
    std::mt19937 random(1);
    for (int y = 0; y < image.height(); ++y) {
        auto *row = reinterpret_cast<QRgb *>(image.scanLine(y));
        for (int x = 0; x < image.width(); ++x) {
            const auto channel = [&](double length, double phase) {
                const double wave = std::sin(x / length + phase) * std::cos(y / (1.3 * length));
                return std::clamp(int(127.5 + 120.0 * wave) + int(random() % 9) - 4, 0, 255);
            };
            row[x] = qRgb(channel(400, 0), channel(510, 1), channel(330, 2));
        }
    }
    return image;
}

void splitPhotograph(benchmark::State &state)
{
    static const QImage picture = photograph();
    const QList<QColor> inks { QColor(0, 0, 0), QColor(200, 16, 46) };
    const auto dither = static_cast<Dither>(state.range(0));
    const QImage greys = picture.convertToFormat(QImage::Format_RGB32);
    const auto ours = [&] { return splitIntoInks(picture, inks, Qt::white, dither); };
    if (ours().size() != 2) {
        state.SkipWithError("no plate for each ink");
        return;
    }
    Pair::compare(
        state, rateOfQt / leastRate, Bench::pagePixels, [&] { benchmark::DoNotOptimize(ours()); },
        [&] {
            benchmark::DoNotOptimize(
                greys.convertToFormat(QImage::Format_Mono, Qt::MonoOnly | Qt::DiffuseDither));
        });
    state.counters["MPix_per_s"] = 1000.0 / state.counters["ours_ns"];
}

BENCHMARK(splitPhotograph)->ArgName("dither")->DenseRange(0, 2)->Iterations(7);

} // namespace

VX_BENCHMARK_MAIN
