// SPDX-License-Identifier: BSD-3-Clause
#include "platform/zint/pixelregion.h"

#include <QTransform>

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>
#include <vector>

namespace Zint {

namespace {

/// A rectangle of dots; right and bottom are the first dots behind it.
struct Pixels
{
    int left;
    int top;
    int right;
    int bottom;
};

/// The first dot whose centre lies at the coordinate or beyond. Bars that meet must agree, but may know their
/// edge with different last digits; the edge of which that makes two is put where hardly any edge is.
int firstDot(double coordinate)
{
    constexpr double centre = 0.5 + 1e-6;
    constexpr double farthest = 1e9; // sides of rectangles are still an int
    return int(std::clamp(std::ceil(coordinate - centre), -farthest, farthest));
}

/// The bars in dots, from top to bottom and left to right, without those that cover no centre.
std::vector<Pixels> pixelsOf(std::span<const QRectF> bars, const QTransform &toDevice)
{
    std::vector<Pixels> pixels;
    pixels.reserve(bars.size());
    for (const QRectF &bar : bars) {
        const QPointF a = toDevice.map(bar.topLeft());
        const QPointF b = toDevice.map(bar.bottomRight());
        const auto [left, right] = std::minmax({ firstDot(a.x()), firstDot(b.x()) });
        const auto [top, bottom] = std::minmax({ firstDot(a.y()), firstDot(b.y()) });
        if (left < right && top < bottom)
            pixels.push_back({ left, top, right, bottom });
    }
    const auto place = [](const Pixels &p) { return std::pair(p.top, p.left); };
    if (!std::ranges::is_sorted(pixels, {}, place)) // bars are, unless a rotation turned them
        std::ranges::sort(pixels, {}, place);
    return pixels;
}

/// Adds the rectangles of a band between two edges; a region has none that meet in a band.
void addBand(const std::vector<Pixels> &fromLeft, int top, int bottom, std::vector<QRect> &rects)
{
    const std::size_t first = rects.size();
    for (const Pixels &p : fromLeft) {
        if (rects.size() > first && rects.back().right() + 1 == p.left)
            rects.back().setRight(p.right - 1);
        else
            rects.emplace_back(p.left, top, p.right - p.left, bottom - top);
    }
}

/// The rectangles cut into bands, the order that QRegion takes without sorting out every pair.
std::vector<QRect> bandsOf(const std::vector<Pixels> &pixels)
{
    std::vector<QRect> rects;
    rects.reserve(2 * pixels.size());
    std::vector<Pixels> inBand;
    auto next = pixels.begin();
    for (int top = 0; next != pixels.end() || !inBand.empty();) {
        if (inBand.empty())
            top = next->top;
        const auto kept = std::ssize(inBand);
        for (; next != pixels.end() && next->top == top; ++next)
            inBand.push_back(*next);
        std::ranges::inplace_merge(inBand, inBand.begin() + kept, {}, &Pixels::left);
        int bottom = std::ranges::min(inBand, {}, &Pixels::bottom).bottom;
        if (next != pixels.end())
            bottom = std::min(bottom, next->top);
        addBand(inBand, top, bottom, rects);
        std::erase_if(inBand, [bottom](const Pixels &p) { return p.bottom == bottom; });
        top = bottom;
    }
    return rects;
}

} // namespace

bool keepsRectangles(const QTransform &toDevice)
{
    const std::array<double, 6> numbers { toDevice.m11(), toDevice.m12(), toDevice.m21(), toDevice.m22(),
        toDevice.dx(), toDevice.dy() };
    return toDevice.isAffine()
        && std::ranges::all_of(numbers, [](double number) { return std::isfinite(number); })
        && ((toDevice.m12() == 0.0 && toDevice.m21() == 0.0)
            || (toDevice.m11() == 0.0 && toDevice.m22() == 0.0));
}

QRegion pixelRegion(std::span<const QRectF> bars, const QTransform &toDevice)
{
    const std::vector<QRect> rects = bandsOf(pixelsOf(bars, toDevice));
    QRegion region;
    region.setRects(rects.data(), int(rects.size()));
    return region;
}

} // namespace Zint
