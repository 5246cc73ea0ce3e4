// SPDX-License-Identifier: BSD-3-Clause
#include "items/core/safeimage.h"

#include "items/core/limits.h"

namespace SafeImage {

QImage create(double width, double height, QImage::Format format)
{
    return create(QSize(Limits::toInt(width), Limits::toInt(height)), format);
}

QImage create(QSize size, QImage::Format format)
{
    const bool sidesFit = size.width() >= 1 && size.height() >= 1 && size.width() <= Limits::MaxImageSide
        && size.height() <= Limits::MaxImageSide;
    if (!sidesFit || qint64(size.width()) * size.height() > Limits::MaxImagePixels)
        return {};
    return QImage(size, format);
}

} // namespace SafeImage
