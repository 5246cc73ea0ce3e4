// SPDX-License-Identifier: BSD-3-Clause
#include "label/picturesplit.h"

#include "items/core/itemcolors.h"
#include "items/core/safeimage.h"
#include "label/inksplit.h"

#include <algorithm>

namespace {

/// One byte for each pixel, 0 where nothing of the picture is and 1 elsewhere.
QImage maskOf(const QImage &picture)
{
    QImage mask = picture.convertToFormat(QImage::Format_Alpha8);
    for (int y = 0; y < mask.height(); ++y) {
        uchar *row = mask.scanLine(y);
        std::transform(
            row, row + mask.width(), row, [](uchar opacity) { return uchar(opacity > 0 ? 1 : 0); });
    }
    return mask;
}

/// The plane with the places that the mask leaves out.
QImage masked(const QImage &plane, const QImage &mask)
{
    QImage image = SafeImage::create(plane.size(), QImage::Format_Indexed8);
    if (image.isNull() || mask.isNull())
        return {};
    image.setColorTable({ ItemColors::transparentRgb, ItemColors::whiteRgb, ItemColors::blackRgb });
    for (int y = 0; y < image.height(); ++y) {
        const uchar *bits = plane.constScanLine(y);
        const uchar *present = mask.constScanLine(y);
        uchar *pixels = image.scanLine(y);
        for (int x = 0; x < image.width(); ++x)
            pixels[x] = uchar(present[x] + (bits[x / 8] >> (7 - x % 8) & present[x]));
    }
    return image;
}

} // namespace

QList<QImage> splitForPlates(
    const QImage &picture, const QList<QColor> &inks, const QColor &paper, Dither dither)
{
    const std::vector<QImage> planes = splitIntoInks(picture, inks, paper, dither);
    QList<QImage> images(planes.begin(), planes.end());
    if (!images.isEmpty() && picture.hasAlphaChannel()) {
        const QImage mask = maskOf(picture);
        std::ranges::transform(
            images, images.begin(), [&mask](const QImage &plane) { return masked(plane, mask); });
    }
    return std::ranges::any_of(images, &QImage::isNull) ? QList<QImage>() : images;
}
