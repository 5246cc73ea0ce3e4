// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QApplication>
#include <QImage>

#include <benchmark/benchmark.h>

#include <algorithm>
#include <random>

/// What the benchmarks share.
namespace Bench {

/// A page of 12 million dots, about A4 at 360 dpi.
inline constexpr QSize pageSize(4000, 3000);
inline constexpr double pagePixels = 12e6;

/// Runs the registered benchmarks in an application without a screen.
inline int run(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 1;
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}

/// Pixels of two values that change after 1 to longestRun pixels: 1 is dither noise, 100 areas and lettering.
inline QImage twoValued(QSize size, QRgb one, QRgb other, int longestRun, unsigned int seed)
{
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    std::mt19937 random(seed);
    for (int y = 0; y < size.height(); ++y) {
        auto *row = reinterpret_cast<QRgb *>(image.scanLine(y));
        for (int x = 0; x < size.width();) {
            const int run = std::min(1 + int(random() % unsigned(longestRun)), size.width() - x);
            std::fill_n(row + x, run, random() % 2 ? one : other);
            x += run;
        }
    }
    return image;
}

} // namespace Bench

/// The program of a file of benchmarks.
#define VX_BENCHMARK_MAIN                                                                                    \
    int main(int argc, char **argv)                                                                          \
    {                                                                                                        \
        return Bench::run(argc, argv);                                                                       \
    }
