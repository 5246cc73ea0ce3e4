// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "items/style/fillableitem.h"
#include "tests/support/colours.h"
#include "tests/support/images.h"

#include <QBitmap>
#include <QBrush>
#include <QImage>
#include <QPainter>
#include <QPainterPath>
#include <QPen>
#include <QRegion>
#include <QTest>

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

/// Sizes and colours the item and prepares its print image.
inline void prepare(
    FillableItem &item, const QSizeF &size, double scaling, int penWidth, int brushStyle, int dither)
{
    item.setItemSize(size);
    item.setItemPenColor(QColor(0, 96, 192));
    item.setItemPenWidth(static_cast<ushort>(penWidth));
    item.setItemFillColor(QColor(192, 64, 0));
    item.setItemBrushStyleInt(brushStyle);
    item.setPrintDitherMethod(QFlag(dither));
    item.setPrintScaling(scaling);
    item.preparePrintImage();
}

/// Fails the running test where the item's print image is another, or has colours of its own.
inline void compare(const FillableItem &item, const QImage &expected)
{
    const QImage image = item.getPreprintedImage();
    QCOMPARE(image.format(), QImage::Format_ARGB32_Premultiplied);
    const QString difference = Images::difference(image, expected, QStringLiteral("print-image"));
    QVERIFY2(difference.isEmpty(), qPrintable(difference));
    QVERIFY((QSet<QRgb> { Colours::blackPixel, Colours::whitePixel, Colours::clearPixel })
                .contains(Images::coloursOf(image)));
}

/// How many pixels of the area are black.
inline int blackPixelsIn(const QImage &image, const QRect &area)
{
    int count = 0;
    for (int y = area.top(); y <= area.bottom(); ++y) {
        for (int x = area.left(); x <= area.right(); ++x)
            count += image.pixel(x, y) == Colours::blackPixel ? 1 : 0;
    }
    return count;
}

/// The print image cut or padded to the size, its black and its white in the two inks.
inline QImage inked(const QImage &printImage, QSize size, QRgb print, QRgb paper)
{
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Colours::clearPixel);
    for (int y = 0; y < qMin(size.height(), printImage.height()); ++y) {
        for (int x = 0; x < qMin(size.width(), printImage.width()); ++x) {
            if (printImage.pixel(x, y) == Colours::blackPixel)
                image.setPixel(x, y, print);
            else if (printImage.pixel(x, y) == Colours::whitePixel)
                image.setPixel(x, y, paper);
        }
    }
    return image;
}

} // namespace PrintImages
