// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QGraphicsPixmapItem>
#include <QGraphicsScene>
#include <QImage>
#include <QPainter>

/// What scenes hold after items were painted in them or handed over to them.
namespace Scenes {

/// The pixmap item that is alone in the scene, or null.
[[nodiscard]] inline QGraphicsPixmapItem *onlyPixmap(const QGraphicsScene &scene)
{
    const QList<QGraphicsItem *> items = scene.items();
    return items.size() == 1 ? qgraphicsitem_cast<QGraphicsPixmapItem *>(items.first()) : nullptr;
}

/// Paints the item in a scene of its own and returns what that takes for the bounds of its items.
[[nodiscard]] inline QRectF boundsAfterPainting(QGraphicsItem &item)
{
    QGraphicsScene scene;
    scene.addItem(&item);
    QImage image(50, 50, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    scene.render(&painter, image.rect(), QRectF(0, 0, 50, 50));
    const QRectF bounds = scene.itemsBoundingRect();
    scene.removeItem(&item);
    return bounds;
}

} // namespace Scenes
