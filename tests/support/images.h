// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QDir>
#include <QElapsedTimer>
#include <QGraphicsItem>
#include <QImage>
#include <QList>
#include <QPainter>
#include <QSet>
#include <QString>
#include <QStyleOptionGraphicsItem>
#include <QTransform>

#include <utility>

/// Drawing items into images and comparing the results.
namespace Images {

/// An image of the given rows of pixels.
inline QImage imageOf(const QList<QList<QRgb>> &rows)
{
    QImage image(int(rows.first().size()), int(rows.size()), QImage::Format_ARGB32_Premultiplied);
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x)
            image.setPixel(x, y, rows[y][x]);
    }
    return image;
}

/// White with coloured rectangles on it, later ones above earlier ones.
inline QImage pictureOf(QSize size, const QList<std::pair<QRect, QColor>> &rectangles)
{
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::white);
    QPainter painter(&image);
    for (const auto &[rect, colour] : rectangles)
        painter.fillRect(rect, colour);
    return image;
}

/// The pixels of an image, each value once.
inline QSet<QRgb> coloursOf(const QImage &image)
{
    QSet<QRgb> colours;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x)
            colours.insert(image.pixel(x, y));
    }
    return colours;
}

/// What the item paints on white, as a view without antialiasing would ask it to.
inline QImage painted(QGraphicsItem &item, QSize size, QStyle::State state = QStyle::State_None)
{
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::white);
    QStyleOptionGraphicsItem option;
    option.state = state;
    QPainter painter(&image);
    item.paint(&painter, &option, nullptr);
    return image;
}

/// What the item paints on white with antialiasing in a transform, and how many milliseconds it takes.
struct TimedPicture
{
    QImage image;
    qint64 elapsed;
};

inline TimedPicture paintedTimed(QGraphicsItem &item, QSize size, const QTransform &transform)
{
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::white);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setTransform(transform);
    const QStyleOptionGraphicsItem option;
    QElapsedTimer timer;
    timer.start();
    item.paint(&painter, &option, nullptr);
    return { image, timer.elapsed() };
}

/// The largest difference of two pixels in any channel.
inline int largestDifference(QRgb left, QRgb right)
{
    return qMax(qMax(qAbs(qRed(left) - qRed(right)), qAbs(qGreen(left) - qGreen(right))),
        qMax(qAbs(qBlue(left) - qBlue(right)), qAbs(qAlpha(left) - qAlpha(right))));
}

/// Keeps the image below the current folder for a person to look at; returns its path.
inline QString keep(const QImage &image, const QString &name)
{
    const QDir folder(QDir::current().filePath(QStringLiteral("failed-images")));
    folder.mkpath(QStringLiteral("."));
    const QString path = folder.filePath(name + QStringLiteral(".png"));
    image.save(path);
    return path;
}

/// Nothing when both images have the same size and no channel differs by more than the tolerance; otherwise
/// the first difference in words, with the actual image kept under the given name.
inline QString difference(
    const QImage &actual, const QImage &expected, const QString &name, int tolerance = 0)
{
    if (actual.size() != expected.size())
        return QStringLiteral("%1 x %2 pixels instead of %3 x %4, kept as %5")
            .arg(actual.width())
            .arg(actual.height())
            .arg(expected.width())
            .arg(expected.height())
            .arg(keep(actual, name));
    for (int y = 0; y < actual.height(); ++y) {
        for (int x = 0; x < actual.width(); ++x) {
            const QRgb seen = actual.pixel(x, y);
            const QRgb wanted = expected.pixel(x, y);
            if (largestDifference(seen, wanted) > tolerance)
                return QStringLiteral("pixel (%1, %2) is %3 instead of %4, kept as %5")
                    .arg(x)
                    .arg(y)
                    .arg(seen, 8, 16, QLatin1Char('0'))
                    .arg(wanted, 8, 16, QLatin1Char('0'))
                    .arg(keep(actual, name));
        }
    }
    return {};
}

} // namespace Images
