// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "items/style/fillableitem.h"
#include "tests/support/colours.h"
#include "tests/support/recordingpaintdevice.h"
#include "tests/support/standins.h"

#include <QColor>
#include <QCoreApplication>
#include <QGraphicsItem>
#include <QGraphicsRectItem>
#include <QGraphicsScene>
#include <QImage>
#include <QList>
#include <QMetaMethod>
#include <QMetaObject>
#include <QMetaProperty>
#include <QPainter>
#include <QPainterPath>
#include <QStringList>
#include <QStyleOptionGraphicsItem>
#include <QTest>
#include <QTransform>

#include <functional>

/// What the tests of the rounded rectangle, the ellipse and the pie have in common.
namespace RoundShapes {

/// The properties that the class itself declares, each as its type and name.
inline QStringList ownProperties(const QMetaObject &meta)
{
    QStringList declared;
    for (int i = meta.propertyOffset(); i < meta.propertyCount(); ++i) {
        const QMetaProperty property = meta.property(i);
        declared << QString::fromLatin1(property.typeName()) + u' ' + QString::fromLatin1(property.name());
    }
    return declared;
}

/// The signals, slots and invokable methods that the class itself declares, slots marked as such.
inline QStringList ownMethods(const QMetaObject &meta)
{
    QStringList declared;
    for (int i = meta.methodOffset(); i < meta.methodCount(); ++i) {
        const QMetaMethod method = meta.method(i);
        const QString kind
            = method.methodType() == QMetaMethod::Slot ? QStringLiteral("slot") : QStringLiteral("method");
        declared << kind + u' ' + QString::fromLatin1(method.typeName()) + u' '
                + QString::fromLatin1(method.methodSignature());
    }
    return declared;
}

/// Adds the rows of a fill and whether it lets nothing show through.
inline void addFillRows()
{
    QTest::addColumn<QColor>("fill");
    QTest::addColumn<MobraTypes::BrushStyle>("style");
    QTest::addColumn<bool>("opaque");

    using namespace Colours;
    QTest::newRow("transparent") << transparent << MobraTypes::BrushSolid << false;
    QTest::newRow("transparent gradient") << transparent << MobraTypes::BrushLinearGradient << false;
    QTest::newRow("solid") << red << MobraTypes::BrushSolid << true;
    QTest::newRow("none") << red << MobraTypes::BrushNone << false;
    QTest::newRow("dense") << red << MobraTypes::BrushDense1 << false;
    QTest::newRow("cross") << red << MobraTypes::BrushCross << false;
    QTest::newRow("linear") << red << MobraTypes::BrushLinearGradient << true;
    QTest::newRow("radial") << red << MobraTypes::BrushRadialGradient << true;
    QTest::newRow("conical") << red << MobraTypes::BrushConicalGradient << true;
}

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

/// What a parent does to the frame of a selected item in it.
struct Family
{
    const char *name;
    MobraTypes::ShapeType shape;
    bool framed;
};

inline constexpr Family families[] = {
    { "layer", MobraTypes::LayerShape, true },
    { "group", MobraTypes::GroupShape, false },
    { "rectangle", MobraTypes::RectangleShape, false },
};

/// What the item draws, figure by figure.
inline QList<RecordingPaintDevice::Figure> recorded(
    QGraphicsItem &item, QStyle::State state = QStyle::State_None)
{
    RecordingPaintDevice device;
    QPainter painter(&device);
    QStyleOptionGraphicsItem option;
    option.state = state;
    item.paint(&painter, &option, nullptr);
    painter.end();
    return device.figures();
}

/// Whether the figure is the selection frame about the rectangle.
inline bool isFrame(const RecordingPaintDevice::Figure &figure, const QRectF &rect)
{
    QPainterPath path;
    path.addRect(rect);
    return figure.kind == RecordingPaintDevice::Kind::Rect && figure.path == path
        && figure.pen.style() == Qt::DotLine && figure.pen.isCosmetic()
        && figure.brush == QBrush(QColor(239, 127, 15, 50));
}

/// Fails the running test where the selected item draws its frame in the wrong company.
inline void compareFrames(QGraphicsItem &item, const QRectF &bounds)
{
    const auto framed = [&] { return isFrame(recorded(item, QStyle::State_Selected).last(), bounds); };
    QVERIFY(framed());
    for (const auto &[name, shape, expected] : families) {
        ParentStandIn parent(shape);
        item.setParentItem(&parent);
        QVERIFY2(framed() == expected, name);
        item.setParentItem(nullptr);
    }
    QGraphicsRectItem foreign;
    item.setParentItem(&foreign);
    QVERIFY(!framed());
    item.setParentItem(nullptr);
    QVERIFY(!isFrame(recorded(item, QStyle::State_Enabled).last(), bounds));
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
