// SPDX-License-Identifier: BSD-3-Clause
#include "label/rowsplitter.h"

#include "label/diffusionsplitter.h"
#include "label/orderedsplitter.h"
#include "label/thresholdsplitter.h"

namespace {

template <template <std::size_t> typename Splitter>
std::unique_ptr<RowSplitter> createFor(const InkPalette &palette, int width)
{
    // Three inks and the paper fill one register of most processors.
    if (palette.count() <= 4)
        return std::make_unique<Splitter<4>>(palette, width);
    return std::make_unique<Splitter<16>>(palette, width);
}

} // namespace

std::unique_ptr<RowSplitter> RowSplitter::create(Dither dither, const InkPalette &palette, int width)
{
    switch (dither) {
    case Dither::Diffusion:
        break;
    case Dither::Ordered:
        return createFor<OrderedSplitter>(palette, width);
    case Dither::Threshold:
        return std::make_unique<ThresholdSplitter>(palette, width);
    }
    return createFor<DiffusionSplitter>(palette, width);
}
