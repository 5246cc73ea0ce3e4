// SPDX-License-Identifier: BSD-3-Clause
#include "label/inksplit.h"

#include "label/inkplanes.h"
#include "label/rowsplitter.h"

#include <algorithm>

namespace {

bool isPlain32Bit(QImage::Format format)
{
    return format == QImage::Format_ARGB32_Premultiplied || format == QImage::Format_ARGB32
        || format == QImage::Format_RGB32;
}

/// A premultiplied pixel on opaque paper.
QRgb onPaper(QRgb pixel, QRgb paper)
{
    const int clear = 255 - qAlpha(pixel);
    const auto channel
        = [clear](int color, int below) { return std::min(color + (below * clear + 127) / 255, 255); };
    return qRgb(channel(qRed(pixel), qRed(paper)), channel(qGreen(pixel), qGreen(paper)),
        channel(qBlue(pixel), qBlue(paper)));
}

bool isOpaque(const QRgb *row, std::size_t width)
{
    QRgb all = ~RGB_MASK;
    for (std::size_t x = 0; x < width; ++x)
        all &= row[x];
    return all == ~RGB_MASK;
}

/// A row of opaque pixels: that of the picture, or one that is composed in pixels.
const QRgb *opaqueRow(const QImage &picture, int y, QRgb paper, std::vector<QRgb> &pixels)
{
    const auto *row = reinterpret_cast<const QRgb *>(picture.constScanLine(y));
    if (isOpaque(row, pixels.size()))
        return row;
    if (picture.format() == QImage::Format_RGB32) {
        std::ranges::transform(
            row, row + pixels.size(), pixels.begin(), [](QRgb pixel) { return pixel | ~RGB_MASK; });
        return pixels.data();
    }
    const bool isPremultiplied = picture.format() == QImage::Format_ARGB32_Premultiplied;
    for (std::size_t x = 0; x < pixels.size(); ++x)
        pixels[x] = onPaper(isPremultiplied ? row[x] : qPremultiply(row[x]), paper);
    return pixels.data();
}

} // namespace

std::vector<QImage> splitIntoInks(
    const QImage &picture, const QList<QColor> &inks, const QColor &paper, Dither dither)
{
    if (picture.isNull() || inks.isEmpty() || inks.size() > LabelLimits::MaxInks)
        return {};
    InkPlanes planes(picture.size(), std::size_t(inks.size()));
    const QImage plain = isPlain32Bit(picture.format())
        ? picture
        : picture.convertToFormat(QImage::Format_ARGB32_Premultiplied);
    if (!planes.isValid() || plain.isNull())
        return {};
    const InkPalette palette(inks, paper);
    const auto splitter = RowSplitter::create(dither, palette, plain.width());
    std::vector<QRgb> pixels(std::size_t(plain.width()));
    std::vector<uchar> numbers(pixels.size() + 8);
    for (int y = 0; y < plain.height(); ++y) {
        splitter->split(opaqueRow(plain, y, palette.color(0), pixels), numbers.data());
        planes.setRow(y, numbers.data());
    }
    return planes.take();
}
