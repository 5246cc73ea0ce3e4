// SPDX-License-Identifier: BSD-3-Clause
// A page in black and white as one bit for each dot, beside Qt's own conversion.
#include "bench/support.h"
#include "label/onebit.h"

namespace {

constexpr QRgb black = 0xFF000000;
constexpr QRgb white = 0xFFFFFFFF;

QImage convertedByQt(const QImage &image)
{
    return image.convertToFormat(QImage::Format_Mono, Qt::MonoOnly | Qt::DiffuseAlphaDither);
}

template <QImage (*Convert)(const QImage &)> void convertPage(benchmark::State &state)
{
    const QImage page = Bench::twoValued(Bench::pageSize, black, white, int(state.range(0)), 1);
    if (Convert(page) != convertedByQt(page))
        state.SkipWithError("the bits differ from those of Qt's conversion");
    for (auto _ : state)
        benchmark::DoNotOptimize(Convert(page));
    state.SetItemsProcessed(state.iterations() * page.width() * page.height());
}

} // namespace

BENCHMARK(convertPage<convertedByQt>)->ArgName("longestRun")->Arg(100)->Arg(1)->Unit(benchmark::kMillisecond);
BENCHMARK(convertPage<OneBit::fromBlackAndWhite>)
    ->ArgName("longestRun")
    ->Arg(100)
    ->Arg(1)
    ->Unit(benchmark::kMillisecond);

int main(int argc, char **argv)
{
    return Bench::run(argc, argv);
}
