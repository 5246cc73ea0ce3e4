// SPDX-License-Identifier: BSD-3-Clause
#include "label/platerenderer.h"

#include "items/core/itemcolors.h"
#include "items/core/safeimage.h"
#include "label/onebit.h"

#include <QGraphicsScene>
#include <QPainter>

#include <algorithm>
#include <cstring>

namespace {

void copyRows(const QImage &band, QImage &plate, int top)
{
    const int rows = std::min(band.height(), plate.height() - top);
    const std::size_t bytes = (std::size_t(plate.width()) + 7) / 8;
    for (int y = 0; y < rows; ++y)
        std::memcpy(plate.scanLine(top + y), band.constScanLine(y), bytes);
}

} // namespace

void renderDots(QImage &part, int top, QGraphicsScene &scene, double scaling)
{
    // A dot more on each side: what rounds into the band counts too.
    const QRectF dots = QRectF(0, top, part.width(), part.height()).adjusted(-1, -1, 1, 1);
    const QRectF area(dots.topLeft() / scaling, dots.size() / scaling);
    QPainter painter(&part);
    painter.setRenderHints(
        QPainter::Antialiasing | QPainter::TextAntialiasing | QPainter::SmoothPixmapTransform, false);
    // Patterns keep their size on paper, except that they cannot be finer than the dots.
    painter.setRenderHint(QPainter::NonCosmeticBrushPatterns, scaling >= 1.0);
    painter.translate(0, -top);
    painter.scale(scaling, scaling);
    scene.render(&painter, area, area, Qt::IgnoreAspectRatio);
}

QImage renderPlate(QGraphicsScene &scene, QSize dots, double scaling, QRgb background, qint64 bandPixels)
{
    const auto rows = int(std::clamp<qint64>(bandPixels / dots.width(), 1, dots.height()));
    QImage plate = SafeImage::create(dots, QImage::Format_Mono);
    QImage band = SafeImage::create(QSize(dots.width(), rows), QImage::Format_ARGB32_Premultiplied);
    if (plate.isNull() || band.isNull())
        return {};
    plate.setColorTable({ ItemColors::whiteRgb, ItemColors::blackRgb });
    for (int top = 0; top < dots.height(); top += rows) {
        band.fill(background);
        renderDots(band, top, scene, scaling);
        copyRows(OneBit::fromGreys(band), plate, top);
    }
    return plate;
}
