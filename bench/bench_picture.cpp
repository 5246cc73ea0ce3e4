// SPDX-License-Identifier: BSD-3-Clause
// Looking for transparency in a picture that has none, beside copying it.
#include "bench/pair.h"
#include "bench/support.h"
#include "items/graphics/imageableitem.h"

#include <cstring>

namespace {

void checkOpaque(benchmark::State &state)
{
    QImage image(Bench::pageSize, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::white);
    QImage copy(Bench::pageSize, QImage::Format_ARGB32_Premultiplied);
    copy.fill(Qt::black);
    ImageableItem imageable;
    imageable.checkTransparency(image);
    if (imageable.getImageHasTransparency()) {
        state.SkipWithError("an opaque picture is taken for a transparent one");
        return;
    }
    QImage almost = image;
    almost.setPixel(almost.width() - 1, almost.height() - 1, 0xFEFEFEFE);
    imageable.checkTransparency(almost);
    if (!imageable.getImageHasTransparency()) {
        state.SkipWithError("the last pixel is not looked at");
        return;
    }
    Pair::compare(
        state, 0.6, Bench::pagePixels, [&] { imageable.checkTransparency(image); },
        [&] { std::memcpy(copy.bits(), image.constBits(), std::size_t(copy.sizeInBytes())); });
}

BENCHMARK(checkOpaque)->Iterations(31);

} // namespace

VX_BENCHMARK_MAIN
