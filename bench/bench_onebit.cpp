// SPDX-License-Identifier: BSD-3-Clause
// A page in black and white as one bit for each dot, beside Qt's own conversion.
#include "bench/pair.h"
#include "bench/support.h"
#include "label/onebit.h"

namespace {

constexpr QRgb black = 0xFF000000;
constexpr QRgb white = 0xFFFFFFFF;

QImage convertedByQt(const QImage &image)
{
    return image.convertToFormat(QImage::Format_Mono, Qt::MonoOnly | Qt::DiffuseAlphaDither);
}

void convertPage(benchmark::State &state)
{
    const QImage page = Bench::twoValued(Bench::pageSize, black, white, int(state.range(0)), 1);
    if (OneBit::fromGreys(page) != convertedByQt(page)) {
        state.SkipWithError("the bits differ from those of Qt's conversion");
        return;
    }
    Pair::compare(
        state, 0.10, Bench::pagePixels, [&] { benchmark::DoNotOptimize(OneBit::fromGreys(page)); },
        [&] { benchmark::DoNotOptimize(convertedByQt(page)); });
}

BENCHMARK(convertPage)->ArgName("longestRun")->Arg(100)->Arg(1)->Iterations(15);

} // namespace

VX_BENCHMARK_MAIN
