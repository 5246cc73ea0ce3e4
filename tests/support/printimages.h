// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QBitmap>
#include <QBrush>
#include <QImage>
#include <QPainter>
#include <QPainterPath>
#include <QPen>
#include <QRegion>

#include <functional>

/// Print images made in another way than the library's.
namespace PrintImages {

using Drawing = std::function<void(QPainter &)>;

/// A drawing on white in one bit.
inline QImage monoStepByStep(
    QSize size, const QPen &pen, const QBrush &brush, Qt::ImageConversionFlags dither, const Drawing &draw)
{
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::white);
    {
        QPainter painter(&image);
        painter.setPen(pen);
        painter.setBrush(brush);
        draw(painter);
    }
    return image.convertToFormat(QImage::Format_Mono, dither);
}

/// A dithered print image made step by step as it is defined, with nothing but Qt: the picture in one bit,
/// drawn through a clip that is the bitmap of the area.
inline QImage ditheredStepByStep(QSize size, const QPen &pen, const QBrush &brush,
    Qt::ImageConversionFlags dither, const Drawing &draw, const Drawing &drawArea)
{
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::white);
    {
        QPainter painter(&image);
        painter.setPen(QPen(Qt::black, 1.0, Qt::SolidLine, Qt::SquareCap, Qt::BevelJoin));
        painter.setBrush(Qt::black);
        drawArea(painter);
    }
    const QBitmap mask = QBitmap::fromImage(image);

    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setClipRegion(QRegion(mask), Qt::ReplaceClip);
    painter.drawImage(0, 0, monoStepByStep(size, pen, brush, dither, draw));
    return image;
}

/// The same with a clip that is a path.
inline QImage clippedStepByStep(QSize size, const QPen &pen, const QBrush &brush,
    Qt::ImageConversionFlags dither, const Drawing &draw, const QPainterPath &clip)
{
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setClipPath(clip);
    painter.drawImage(0, 0, monoStepByStep(size, pen, brush, dither, draw));
    return image;
}

} // namespace PrintImages
