// SPDX-License-Identifier: BSD-3-Clause
#include "items/style/printimage.h"

#include "items/core/itemcolors.h"
#include "items/core/safeimage.h"

#include <QPainter>

#include <array>

namespace {

constexpr int pixelsPerByte = 8;

/// The pixels of a byte of a one-bit picture, for each value of the byte.
using ByteColors = std::array<std::array<QRgb, pixelsPerByte>, 256>;

ByteColors colorsOfBytes(QRgb color0, QRgb color1)
{
    ByteColors colors;
    for (unsigned byte = 0; byte < colors.size(); ++byte) {
        for (unsigned bit = 0; bit < pixelsPerByte; ++bit)
            colors[byte][bit] = byte >> (pixelsPerByte - 1 - bit) & 1 ? color1 : color0;
    }
    return colors;
}

/// Fills the transparent pixels of an image with those of a one-bit picture, and clears all others.
void showThroughHole(QImage &image, const QImage &picture)
{
    const ByteColors colors = colorsOfBytes(picture.color(0), picture.color(1));
    const auto through = [](QRgb hole, QRgb color) {
        return hole == ItemColors::transparentRgb ? color : ItemColors::transparentRgb;
    };
    const int wholeBytes = image.width() / pixelsPerByte;
    const int rest = image.width() % pixelsPerByte;
    for (int y = 0; y < image.height(); ++y) {
        auto *pixels = reinterpret_cast<QRgb *>(image.scanLine(y));
        const uchar *bytes = picture.constScanLine(y);
        for (int byte = 0; byte < wholeBytes; ++byte, pixels += pixelsPerByte) {
            const auto &color = colors[bytes[byte]];
            for (int bit = 0; bit < pixelsPerByte; ++bit)
                pixels[bit] = through(pixels[bit], color[bit]);
        }
        for (int bit = 0; bit < rest; ++bit)
            pixels[bit] = through(pixels[bit], colors[bytes[wholeBytes]][bit]);
    }
}

} // namespace

QImage ditheredPrintImage(const QSizeF &size, const QPen &pen, const QBrush &brush,
    Qt::ImageConversionFlags dither, const std::function<void(QPainter &)> &draw,
    const std::function<void(QPainter &)> &drawArea)
{
    QImage image = SafeImage::create(size.width(), size.height(), QImage::Format_ARGB32_Premultiplied);
    if (image.isNull())
        return image;
    image.fill(ItemColors::whiteRgb);
    QPainter painter(&image);
    painter.save();
    painter.setPen(pen);
    painter.setBrush(brush);
    draw(painter);
    painter.restore();
    const QImage picture = image.convertToFormat(QImage::Format_Mono, dither);
    if (picture.isNull())
        return picture;

    // The area becomes a hole: the only transparent pixels of the image.
    painter.setCompositionMode(QPainter::CompositionMode_Source);
    painter.setPen(QPen(ItemColors::transparent, 1.0, Qt::SolidLine, Qt::SquareCap, Qt::BevelJoin));
    painter.setBrush(ItemColors::transparent);
    drawArea(painter);
    painter.end();
    showThroughHole(image, picture);
    return image;
}
