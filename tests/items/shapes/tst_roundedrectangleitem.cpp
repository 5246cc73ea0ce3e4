// SPDX-License-Identifier: BSD-3-Clause
#include "items/shapes/roundedrectangleitem.h"
#include "tests/support/colours.h"
#include "tests/support/images.h"
#include "tests/support/oddnumbers.h"
#include "tests/support/recordings.h"
#include "tests/support/resizing.h"
#include "tests/support/roundshapes.h"

#include <QPainterPath>
#include <QRegularExpression>
#include <QTest>

#include <limits>
#include <memory>

using namespace Qt::StringLiterals;
using namespace Colours;
using Recordings::recorded;
using RoundShapes::roundedRect;
using Kind = RecordingPaintDevice::Kind;

namespace {

QPainterPath rectPath(const QRectF &rect)
{
    QPainterPath path;
    path.addRect(rect);
    return path;
}

/// A rectangle of 100 x 60 with a pen, a fill and corners of its own.
template <typename Rectangle> void shape(Rectangle &item)
{
    item.setItemSize(QSizeF(100, 60));
    item.setItemPenWidth(5);
    item.setItemPenColor(red);
    item.setItemFillColor(blue);
}

void setRadii(RoundedRectangleItem &item, double radiusX, double radiusY)
{
    item.setRoundingRadiusX(radiusX);
    item.setRoundingRadiusY(radiusY);
}

constexpr QRectF shapedRect(2.5, 2.5, 95, 55);

} // namespace

/// The rounded rectangle: its corners, and what it has of the plain one.
class tst_RoundedRectangleItem : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    void newRoundedRectangleHasCornersOf25();
    void propertiesAndSlotsSetTheRadii();

    // Radii
    void anyRadiusIsKept_data();
    void anyRadiusIsKept();
    void changedRadiusRepaintsButChangesNoRectangle();
    void everyResizeKeepsTheRadii_data();
    void everyResizeKeepsTheRadii();

    // Areas
    void shapeIsTheRoundedOutline_data();
    void shapeIsTheRoundedOutline();

    // Painting
    void oneRoundedRectangleIsPainted_data();
    void oneRoundedRectangleIsPainted();
    void pictureIsTheRoundedRectangle_data();
    void pictureIsTheRoundedRectangle();
    void cornersWithoutARadiusAreSquare_data();
    void cornersWithoutARadiusAreSquare();
    void radiiEndAtHalfTheSide_data();
    void radiiEndAtHalfTheSide();
    void mirrorsTurnThePicture_data();
    void mirrorsTurnThePicture();

    // Copies
    void copyIsEqual();
    void copyKeepsAnyRadius_data();
    void copyKeepsAnyRadius();
};

void tst_RoundedRectangleItem::newRoundedRectangleHasCornersOf25()
{
    RoundedRectangleItem item;
    QCOMPARE(item.getItemShape(), MobraTypes::RoundedRectangleShape);
    QCOMPARE(item.type(), 0x1002B);
    QCOMPARE(item.getRoundingRadiusX(), 25.0);
    QCOMPARE(item.getRoundingRadiusY(), 25.0);
    QCOMPARE(item.getItemSize(), QSizeF(100, 100));
    QCOMPARE(item.rect(), QRectF(0.5, 0.5, 99, 99));
    QCOMPARE(item.boundingRect(), QRectF(0, 0, 100, 100));
    const auto *interface = dynamic_cast<const IRoundRectItem *>(&item);
    QVERIFY(interface);
    QCOMPARE(interface->getRoundingRadiusX(), 25.0);
}

void tst_RoundedRectangleItem::propertiesAndSlotsSetTheRadii()
{
    QCOMPARE(RoundedRectangleItem::staticMetaObject.superClass(), &RectangleItem::staticMetaObject);

    RoundedRectangleItem item;
    QVERIFY(item.setProperty("roundingRadiusX", 3.5));
    QVERIFY(
        QMetaObject::invokeMethod(&item, "setRoundingRadiusY", Qt::DirectConnection, Q_ARG(double, -4.5)));
    QCOMPARE(item.getRoundingRadiusX(), 3.5);
    QCOMPARE(item.property("roundingRadiusX"), QVariant(3.5));
    QCOMPARE(item.property("roundingRadiusY"), QVariant(-4.5));
}

// Radii

void tst_RoundedRectangleItem::anyRadiusIsKept_data()
{
    QTest::addColumn<double>("radius");

    for (const auto &[name, radius] : oddNumbers)
        QTest::newRow(name) << radius;
    QTest::newRow("larger than the side") << 1000.0;
}

void tst_RoundedRectangleItem::anyRadiusIsKept()
{
    QFETCH(const double, radius);
    RoundedRectangleItem item;
    item.setRoundingRadiusX(radius);
    QVERIFY(isSame(item.getRoundingRadiusX(), radius));
    QCOMPARE(item.getRoundingRadiusY(), 25.0);
    item.setRoundingRadiusY(radius);
    item.setRoundingRadiusX(12.0);
    QVERIFY(isSame(item.getRoundingRadiusY(), radius));
    QCOMPARE(item.getRoundingRadiusX(), 12.0);

    item.setItemFillColor(blue);
    QVERIFY(isFinite(item.shape().boundingRect()));
    QVERIFY(isFinite(item.opaqueArea().boundingRect()));
    QCOMPARE(Images::painted(item, { 100, 100 }).pixel(50, 50), bluePixel);
}

void tst_RoundedRectangleItem::changedRadiusRepaintsButChangesNoRectangle()
{
    using Setter = void (RoundedRectangleItem::*)(double);
    for (const Setter set : { Setter(&RoundedRectangleItem::setRoundingRadiusX),
             Setter(&RoundedRectangleItem::setRoundingRadiusY) }) {
        RoundedRectangleItem item;
        shape(item);
        item.setItemScaleX(2.0);
        const auto areas = RoundShapes::repaintedBy(item, [&item, set] { (item.*set)(10.0); });
        QVERIFY(RoundShapes::united(areas).contains(QRectF(0, 0, 100, 60)));
        QCOMPARE(item.getItemSize(), QSizeF(100, 60));
        QCOMPARE(item.boundingRect(), QRectF(0, 0, 100, 60));
        QCOMPARE(item.rect(), shapedRect);
        QCOMPARE(item.getItemScaleX(), 2.0);
        // The same radius again is no exception.
        const auto again = RoundShapes::repaintedBy(item, [&item, set] { (item.*set)(10.0); });
        QVERIFY(RoundShapes::united(again).contains(QRectF(0, 0, 100, 60)));
    }
}

void tst_RoundedRectangleItem::everyResizeKeepsTheRadii_data()
{
    Resizing::addRows();
}

void tst_RoundedRectangleItem::everyResizeKeepsTheRadii()
{
    QFETCH(const int, parameters);
    RoundedRectangleItem item;
    QVERIFY(Resizing::resize(item, parameters, QSizeF(200, 50)));
    QCOMPARE(item.getRoundingRadiusX(), 25.0);
    QCOMPARE(item.getRoundingRadiusY(), 25.0);
    item.updateItemSize(QSizeF(10, 4));
    QCOMPARE(item.getRoundingRadiusX(), 25.0);
    QCOMPARE(item.getRoundingRadiusY(), 25.0);
}

// Areas

void tst_RoundedRectangleItem::shapeIsTheRoundedOutline_data()
{
    QTest::addColumn<double>("radiusX");
    QTest::addColumn<double>("radiusY");
    QTest::addColumn<QPainterPath>("path");

    const double none = std::numeric_limits<double>::quiet_NaN();
    const double endless = std::numeric_limits<double>::infinity();
    QTest::newRow("25") << 25.0 << 25.0 << roundedRect(shapedRect, 25, 25);
    QTest::newRow("different") << 10.0 << 4.5 << roundedRect(shapedRect, 10, 4.5);
    QTest::newRow("none") << 0.0 << 0.0 << rectPath(shapedRect);
    QTest::newRow("no horizontal one") << 0.0 << 10.0 << rectPath(shapedRect);
    QTest::newRow("no vertical one") << 10.0 << 0.0 << rectPath(shapedRect);
    QTest::newRow("negative") << -10.0 << -10.0 << rectPath(shapedRect);
    QTest::newRow("one negative") << 10.0 << -10.0 << rectPath(shapedRect);
    QTest::newRow("more than half the side") << 1000.0 << 1000.0 << roundedRect(shapedRect, 47.5, 27.5);
    QTest::newRow("more than half the width") << 80.0 << 10.0 << roundedRect(shapedRect, 47.5, 10);
    QTest::newRow("endless") << endless << endless << roundedRect(shapedRect, 47.5, 27.5);
    QTest::newRow("no number") << none << none << rectPath(shapedRect);
    QTest::newRow("one no number") << 10.0 << none << rectPath(shapedRect);
    QTest::newRow("negative endless") << -endless << 10.0 << rectPath(shapedRect);
}

void tst_RoundedRectangleItem::shapeIsTheRoundedOutline()
{
    QFETCH(const double, radiusX);
    QFETCH(const double, radiusY);
    RoundedRectangleItem item;
    shape(item);
    setRadii(item, radiusX, radiusY);
    QTEST(item.shape(), "path");
    QTEST(item.opaqueArea(), "path");
    QCOMPARE(item.boundingRect(), QRectF(0, 0, 100, 60));
}

// Painting

void tst_RoundedRectangleItem::oneRoundedRectangleIsPainted_data()
{
    RoundShapes::addMirrorRows();
}

void tst_RoundedRectangleItem::oneRoundedRectangleIsPainted()
{
    QFETCH(const bool, horizontal);
    QFETCH(const bool, vertical);
    RoundedRectangleItem item;
    shape(item);
    setRadii(item, 10, 20);
    item.setItemBrushStyle(MobraTypes::BrushCross);
    item.setItemHorizontalMirror(horizontal);
    item.setItemVerticalMirror(vertical);
    const auto figures = recorded(item);
    QCOMPARE(figures.size(), 1);
    QCOMPARE(figures.first().kind, Kind::Path);
    QCOMPARE(figures.first().path, roundedRect(shapedRect, 10, 20));
    QPen pen(QBrush(red), 5, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin);
    pen.setMiterLimit(4.0);
    QCOMPARE(figures.first().pen, pen);
    QCOMPARE(figures.first().brush, QBrush(blue, Qt::CrossPattern));
    QTEST(figures.first().transform, "transform");
    QVERIFY(!figures.first().clipped);
}

void tst_RoundedRectangleItem::pictureIsTheRoundedRectangle_data()
{
    QTest::addColumn<int>("penWidth");
    QTest::addColumn<double>("radiusX");
    QTest::addColumn<double>("radiusY");

    for (const int penWidth : { 0, 1, 4, 9 }) {
        for (const auto &[radiusX, radiusY] : { std::pair(25.0, 25.0), { 10.0, 20.0 }, { 3.5, 200.0 } })
            QTest::addRow("pen of %d, radii of %g and %g", penWidth, radiusX, radiusY)
                << penWidth << radiusX << radiusY;
    }
}

void tst_RoundedRectangleItem::pictureIsTheRoundedRectangle()
{
    QFETCH(const int, penWidth);
    QFETCH(const double, radiusX);
    QFETCH(const double, radiusY);
    RoundedRectangleItem item;
    shape(item);
    item.setItemPenWidth(static_cast<ushort>(penWidth));
    setRadii(item, radiusX, radiusY);
    const QImage expected = RoundShapes::drawn({ 110, 70 }, [&](QPainter &painter) {
        painter.setPen(
            penWidth > 0 ? QPen(red, penWidth, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin) : QPen(Qt::NoPen));
        painter.setBrush(blue);
        painter.drawRoundedRect(
            QRectF(penWidth / 2.0, penWidth / 2.0, 100 - penWidth, 60 - penWidth), radiusX, radiusY);
    });
    const QString difference
        = Images::difference(Images::painted(item, expected.size()), expected, u"rounded"_s);
    QVERIFY2(difference.isEmpty(), qPrintable(difference));
}

void tst_RoundedRectangleItem::cornersWithoutARadiusAreSquare_data()
{
    QTest::addColumn<double>("radiusX");
    QTest::addColumn<double>("radiusY");

    const double none = std::numeric_limits<double>::quiet_NaN();
    QTest::newRow("zero") << 0.0 << 0.0;
    QTest::newRow("horizontal one zero") << 0.0 << 10.0;
    QTest::newRow("vertical one zero") << 10.0 << 0.0;
    QTest::newRow("negative") << -5.0 << -5.0;
    QTest::newRow("no number") << none << none;
    QTest::newRow("one no number") << none << 10.0;
}

void tst_RoundedRectangleItem::cornersWithoutARadiusAreSquare()
{
    QFETCH(const double, radiusX);
    QFETCH(const double, radiusY);
    RoundedRectangleItem item;
    shape(item);
    setRadii(item, radiusX, radiusY);
    RectangleItem plain;
    shape(plain);
    const QString difference = Images::difference(
        Images::painted(item, { 110, 70 }), Images::painted(plain, { 110, 70 }), u"square"_s);
    QVERIFY2(difference.isEmpty(), qPrintable(difference));
}

void tst_RoundedRectangleItem::radiiEndAtHalfTheSide_data()
{
    QTest::addColumn<double>("radius");

    QTest::newRow("half the width") << 47.5;
    QTest::newRow("more") << 1000.0;
    QTest::newRow("huge") << 1e308;
    QTest::newRow("endless") << std::numeric_limits<double>::infinity();
}

void tst_RoundedRectangleItem::radiiEndAtHalfTheSide()
{
    QFETCH(const double, radius);
    RoundedRectangleItem item;
    shape(item);
    setRadii(item, radius, radius);
    const QImage expected = RoundShapes::drawn({ 110, 70 }, [](QPainter &painter) {
        painter.setPen(QPen(red, 5, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        painter.setBrush(blue);
        painter.drawRoundedRect(shapedRect, 47.5, 27.5);
    });
    const QString difference
        = Images::difference(Images::painted(item, expected.size()), expected, u"half"_s);
    QVERIFY2(difference.isEmpty(), qPrintable(difference));
}

void tst_RoundedRectangleItem::mirrorsTurnThePicture_data()
{
    RoundShapes::addMirrorRows();
}

void tst_RoundedRectangleItem::mirrorsTurnThePicture()
{
    QFETCH(const bool, horizontal);
    QFETCH(const bool, vertical);
    QFETCH(const QTransform, transform);
    RoundedRectangleItem item;
    shape(item);
    item.setItemPenStyle(Qt::NoPen);
    item.setItemBrushStyle(MobraTypes::BrushConicalGradient);
    item.setItemHorizontalMirror(horizontal);
    item.setItemVerticalMirror(vertical);
    const QImage expected = RoundShapes::drawnInGradient(
        transform, blue, [](QPainter &painter) { painter.drawRoundedRect(QRectF(0, 0, 100, 60), 25, 25); });
    const QString difference
        = Images::difference(Images::painted(item, expected.size()), expected, u"mirrored"_s);
    QVERIFY2(difference.isEmpty(), qPrintable(difference));
}

// Copies

void tst_RoundedRectangleItem::copyIsEqual()
{
    RoundedRectangleItem item;
    item.setItemId(42);
    item.setPos(11, 22);
    item.setItemRotation(30);
    item.setItemHorizontalMirror(true);
    shape(item);
    setRadii(item, 12.5, -3);
    item.setItemBrushStyle(MobraTypes::BrushRadialGradient);

    const std::unique_ptr<Item> copied(item.createItemCopy());
    auto *copy = dynamic_cast<RoundedRectangleItem *>(copied.get());
    QVERIFY(copy);
    QCOMPARE(copy->type(), 0x1002B);
    QCOMPARE(copy->getRoundingRadiusX(), 12.5);
    QCOMPARE(copy->getRoundingRadiusY(), -3.0);
    QCOMPARE(copy->rect(), shapedRect);
    QCOMPARE(copy->saveItemToJSON(), item.saveItemToJSON());
    QCOMPARE(copy->getItemPen(), item.getItemPen());
    QCOMPARE(copy->getItemBrush(), item.getItemBrush());
}

void tst_RoundedRectangleItem::copyKeepsAnyRadius_data()
{
    anyRadiusIsKept_data();
}

void tst_RoundedRectangleItem::copyKeepsAnyRadius()
{
    QFETCH(const double, radius);
    RoundedRectangleItem item;
    item.setRoundingRadiusX(radius);
    const std::unique_ptr<Item> copied(item.createItemCopy());
    const auto &copy = dynamic_cast<RoundedRectangleItem &>(*copied);
    QVERIFY(isSame(copy.getRoundingRadiusX(), radius));
    QCOMPARE(copy.getRoundingRadiusY(), 25.0);
}

QTEST_MAIN(tst_RoundedRectangleItem)
#include "tst_roundedrectangleitem.moc"
