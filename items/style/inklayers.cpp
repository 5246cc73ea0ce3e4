// SPDX-License-Identifier: BSD-3-Clause
#include "items/style/inklayers.h"

#include "items/core/itemcolors.h"

#include <algorithm>
#include <array>
#include <utility>

namespace {

// Layers are merged four at a time: each pass then reads four pictures and writes one, which is as fast as
// memory goes, while one pass per layer would read and write the result as often.
constexpr std::size_t layersPerPass = 4;

struct Pass
{
    std::array<const QRgb *, layersPerPass> rows;
    std::array<QRgb, layersPerPass> inks;
};

QRgb firstLayerPixel(QRgb pixel, QRgb ink, QRgb paper)
{
    const QRgb other = pixel == ItemColors::transparentRgb ? ItemColors::transparentRgb : paper;
    return pixel == ItemColors::blackRgb ? ink : other;
}

template <bool First, std::size_t Count> void mergeRow(QRgb *out, Pass pass, QRgb paper, int width)
{
    for (int x = 0; x < width; ++x) {
        QRgb pixel = First ? firstLayerPixel(pass.rows[0][x], pass.inks[0], paper) : out[x];
        for (std::size_t layer = First ? 1 : 0; layer < Count; ++layer)
            pixel = pass.rows[layer][x] == ItemColors::blackRgb ? pass.inks[layer] : pixel;
        out[x] = pixel;
    }
}

/// Clears the upper halves of the vector registers. Other code of the process may leave them in use, and then
/// the narrower instructions of this file take four times as long.
void clearUpperVectorHalves()
{
#if defined(__x86_64__) && defined(__GNUC__) && !defined(__AVX__)
    if (__builtin_cpu_supports("avx"))
        asm volatile("vzeroupper");
#endif
}

using RowMerger = void (*)(QRgb *, Pass, QRgb, int);

template <bool First, std::size_t... Counts>
constexpr std::array<RowMerger, sizeof...(Counts)> mergersFor(std::index_sequence<Counts...>)
{
    return { &mergeRow<First, Counts + 1>... };
}

RowMerger mergerFor(bool first, std::size_t count)
{
    static constexpr auto firstPass = mergersFor<true>(std::make_index_sequence<layersPerPass>());
    static constexpr auto laterPass = mergersFor<false>(std::make_index_sequence<layersPerPass>());
    return (first ? firstPass : laterPass)[count - 1];
}

} // namespace

void recombineInkLayers(QImage &out, const std::vector<InkLayer> &layers, QRgb paper)
{
    clearUpperVectorHalves();
    for (int y = 0; y < out.height(); ++y) {
        auto *row = reinterpret_cast<QRgb *>(out.scanLine(y));
        for (std::size_t from = 0; from < layers.size(); from += layersPerPass) {
            const std::size_t count = std::min(layersPerPass, layers.size() - from);
            Pass pass {};
            for (std::size_t i = 0; i < count; ++i) {
                pass.rows[i] = reinterpret_cast<const QRgb *>(layers[from + i].image.constScanLine(y));
                pass.inks[i] = layers[from + i].ink;
            }
            mergerFor(from == 0, count)(row, pass, paper, out.width());
        }
    }
}
