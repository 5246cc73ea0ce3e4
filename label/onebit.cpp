// SPDX-License-Identifier: BSD-3-Clause
#include "label/onebit.h"

#include "items/core/itemcolors.h"
#include "items/core/safeimage.h"
#include "label/gatheredbits.h"

#include <QtEndian>

#include <bit>
#include <vector>

namespace {

/// Writes 1 for each light pixel and 0 for each dark one. The loop has no branches, so that compilers do many
/// pixels at a time.
void findWhites(const QRgb *pixels, int count, uchar *whites)
{
    for (int i = 0; i < count; ++i)
        whites[i] = OneBit::isLight(pixels[i]);
}

bool isPlain32Bit(QImage::Format format)
{
    return format == QImage::Format_ARGB32_Premultiplied || format == QImage::Format_ARGB32
        || format == QImage::Format_RGB32;
}

QImage packed(const QImage &image)
{
    QImage mono = SafeImage::create(image.size(), QImage::Format_Mono);
    mono.setColorTable({ ItemColors::whiteRgb, ItemColors::blackRgb });
    const int bytes = (mono.width() + 7) / 8;
    std::vector<uchar> whites(std::size_t(bytes) * 8, 1);
    for (int y = 0; y < mono.height(); ++y) {
        findWhites(reinterpret_cast<const QRgb *>(image.constScanLine(y)), image.width(), whites.data());
        uchar *bits = mono.scanLine(y);
        for (int byte = 0; byte < bytes; ++byte)
            bits[byte] = uchar(~gatheredBits(&whites[std::size_t(byte) * 8]));
    }
    return mono;
}

qint64 countBlackInRow(const uchar *bits, int width)
{
    qint64 count = 0;
    for (; width >= 64; width -= 64, bits += 8)
        count += std::popcount(qFromUnaligned<quint64>(bits));
    for (; width >= 8; width -= 8, ++bits)
        count += std::popcount(*bits);
    return width > 0 ? count + std::popcount(uchar(*bits >> (8 - width))) : count;
}

} // namespace

QImage OneBit::fromGreys(const QImage &image)
{
    if (image.isNull())
        return {};
    return packed(isPlain32Bit(image.format()) ? image : image.convertToFormat(QImage::Format_RGB32));
}

qint64 OneBit::countBlack(const QImage &mono)
{
    qint64 count = 0;
    for (int y = 0; y < mono.height(); ++y)
        count += countBlackInRow(mono.constScanLine(y), mono.width());
    return count;
}

QImage OneBit::withClearPadding(QImage mono)
{
    const int used = mono.width() % 8;
    if (mono.format() != QImage::Format_Mono || used == 0)
        return mono;
    const auto dots = uchar(0xFF << (8 - used));
    for (int y = 0; y < mono.height(); ++y)
        mono.scanLine(y)[mono.width() / 8] &= dots;
    return mono;
}

QImage OneBit::withWhiteSet(const QImage &mono)
{
    QImage white = withClearPadding(mono.copy());
    white.invertPixels();
    white.setColorTable({ ItemColors::blackRgb, ItemColors::whiteRgb });
    return white;
}
