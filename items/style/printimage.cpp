// SPDX-License-Identifier: BSD-3-Clause
#include "items/style/printimage.h"

#include "items/core/itemcolors.h"
#include "items/core/safeimage.h"

#include <QPainter>

namespace {

void drawOnWhite(
    QImage &image, const QPen &pen, const QBrush &brush, const std::function<void(QPainter &)> &draw)
{
    image.fill(ItemColors::whiteRgb);
    QPainter painter(&image);
    painter.setPen(pen);
    painter.setBrush(brush);
    draw(painter);
}

/// Turns a mask, black inside, into the one-bit picture within it and nothing outside.
void showThroughMask(QImage &mask, const QImage &picture)
{
    const QRgb colors[] = { picture.color(0), picture.color(1) };
    for (int y = 0; y < mask.height(); ++y) {
        auto *pixel = reinterpret_cast<QRgb *>(mask.scanLine(y));
        const uchar *bits = picture.constScanLine(y);
        for (int x = 0; x < mask.width(); ++x) {
            const QRgb color = colors[bits[x >> 3] >> (7 - (x & 7)) & 1];
            pixel[x] = pixel[x] == ItemColors::blackRgb ? color : ItemColors::transparentRgb;
        }
    }
}

} // namespace

QImage ditheredPrintImage(const QSizeF &size, const QPen &pen, const QBrush &brush,
    Qt::ImageConversionFlags dither, const std::function<void(QPainter &)> &draw)
{
    QImage image = SafeImage::create(size.width(), size.height(), QImage::Format_ARGB32_Premultiplied);
    if (image.isNull())
        return image;
    drawOnWhite(image, pen, brush, draw);
    const QImage picture = image.convertToFormat(QImage::Format_Mono, dither);
    const QPen outline(ItemColors::black, 1.0, Qt::SolidLine, Qt::SquareCap, Qt::BevelJoin);
    drawOnWhite(image, outline, ItemColors::black, draw);
    showThroughMask(image, picture);
    return image;
}
