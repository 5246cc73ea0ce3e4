// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QConicalGradient>
#include <QCoreApplication>
#include <QGraphicsItem>
#include <QGraphicsScene>
#include <QImage>
#include <QList>
#include <QPainter>
#include <QPainterPath>
#include <QTest>
#include <QTransform>

#include <functional>

/// What the tests of the rounded rectangle, the ellipse and the pie have in common.
namespace RoundShapes {

/// Adds the rows of the two mirrors and the transform in which an item of 100 x 60 is drawn.
inline void addMirrorRows()
{
    QTest::addColumn<bool>("horizontal");
    QTest::addColumn<bool>("vertical");
    QTest::addColumn<QTransform>("transform");

    QTest::newRow("plain") << false << false << QTransform();
    QTest::newRow("left and right") << true << false << QTransform(-1, 0, 0, 1, 100, 0);
    QTest::newRow("top and bottom") << false << true << QTransform(1, 0, 0, -1, 0, 60);
    QTest::newRow("both") << true << true << QTransform(-1, 0, 0, -1, 100, 60);
}

/// White with one drawing on it.
inline QImage drawn(QSize size, const std::function<void(QPainter &)> &draw)
{
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::white);
    QPainter painter(&image);
    draw(painter);
    return image;
}

/// A figure on white in a transform, filled with the conical gradient from white to the colour.
inline QImage drawnInGradient(
    const QTransform &transform, const QColor &colour, const std::function<void(QPainter &)> &draw)
{
    QConicalGradient gradient(0, 0, 135);
    gradient.setColorAt(0, Qt::white);
    gradient.setColorAt(1, colour);
    return drawn({ 110, 70 }, [&](QPainter &painter) {
        painter.setTransform(transform);
        painter.setPen(Qt::NoPen);
        painter.setBrush(gradient);
        draw(painter);
    });
}

/// The areas of a scene that have to be painted again after a change of the item.
inline QList<QRectF> repaintedBy(QGraphicsItem &item, const std::function<void()> &change)
{
    QGraphicsScene scene(-500, -500, 1000, 1000);
    scene.addItem(&item);
    QList<QRectF> areas;
    QObject::connect(
        &scene, &QGraphicsScene::changed, &scene, [&areas](const QList<QRectF> &region) { areas += region; });
    QCoreApplication::processEvents();
    areas.clear();
    change();
    QCoreApplication::processEvents();
    scene.removeItem(&item);
    return areas;
}

/// The rectangle around all areas.
inline QRectF united(const QList<QRectF> &areas)
{
    QRectF whole;
    for (const QRectF &area : areas)
        whole |= area;
    return whole;
}

/// The wedge of an ellipse, angles in 1/16 degree.
inline QPainterPath wedge(const QRectF &ellipse, int start, int span)
{
    QPainterPath path;
    path.moveTo(ellipse.x() + ellipse.width() / 2, ellipse.y() + ellipse.height() / 2);
    path.arcTo(ellipse, start * 0.0625, span * 0.0625);
    path.closeSubpath();
    return path;
}

inline QPainterPath ellipse(const QRectF &rect)
{
    QPainterPath path;
    path.addEllipse(rect);
    return path;
}

inline QPainterPath roundedRect(const QRectF &rect, double radiusX, double radiusY)
{
    QPainterPath path;
    path.addRoundedRect(rect, radiusX, radiusY, Qt::AbsoluteSize);
    return path;
}

} // namespace RoundShapes
