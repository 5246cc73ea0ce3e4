// SPDX-License-Identifier: BSD-3-Clause
#include "tests/support/colours.h"
#include "tests/support/polygons.h"
#include "tests/support/sketchpolygon.h"

#include <QPainterPath>
#include <QRegularExpression>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace Colours;

namespace {

/// The vertices of a path of one polygon, without the point that closes it.
QPolygonF verticesOf(const QPainterPath &path)
{
    QPolygonF vertices;
    for (int i = 0; i < path.elementCount(); ++i)
        vertices << path.elementAt(i);
    if (vertices.size() > 1 && vertices.isClosed())
        vertices.removeLast();
    return vertices;
}

} // namespace

/// What the six polygons have in common: identity, pen and hit-testing.
class tst_PolygonItem : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    void newPolygonHasItsReferenceOutline_data() { Polygons::addRows(); }
    void newPolygonHasItsReferenceOutline();
    void newBaseHasNoOutline();
    void subclassesDeclareNothing_data() { Polygons::addRows(); }
    void subclassesDeclareNothing();
    void accessorsKeepWhatTheyAreGiven();
    void overshootTableIsStoredRowByRow();
    void referenceShapeReplacesAllPolygons_data() { Polygons::addRows(); }
    void referenceShapeReplacesAllPolygons();
    void penIsLimitedToHalfTheSmallerSide();
    void outlineFollowsThePen_data();
    void outlineFollowsThePen();
    void onlyAChangedPenMovesTheOutline();
    void joinChoosesTheColumn_data() { Polygons::addRows(); }
    void joinChoosesTheColumn();
    void joinIsAdjustedForOnceAndStored();
    void lockedJoinStays();
    void boundsAreTheLogicalSize_data() { Polygons::addRows(); }
    void boundsAreTheLogicalSize();
    void shapeIsTheShapePolygon_data() { Polygons::addRows(); }
    void shapeIsTheShapePolygon();
    void shapeHitsInsideTheOutlineOnly_data();
    void shapeHitsInsideTheOutlineOnly();
};

void tst_PolygonItem::newPolygonHasItsReferenceOutline()
{
    QFETCH(const int, index);
    const Polygons::Class &kind = Polygons::classes()[index];
    const auto item = Polygons::made(kind.shape);
    QVERIFY(item);
    QCOMPARE(item->type(), 0x10065);
    QCOMPARE(int(item->getItemShape()), kind.code);
    QCOMPARE(item->getItemSize(), kind.size);
    QCOMPARE(item->getOriginalPolygon(), kind.points);
    QCOMPARE(item->getResizedPolygon(), kind.points);
    QVERIFY(item->polygon() != item->getResizedPolygon());
    for (int row = 0; row < 2; ++row)
        QCOMPARE(item->getOvershoot(row, 2), 1.0);
    QCOMPARE(item->getOvershoot(2, 0), 0.0);
    QCOMPARE(item->getOvershoot(2, 1), kind.bevelReach);
    QCOMPARE(item->getOvershoot(2, 2), kind.roundReach);
}

void tst_PolygonItem::newBaseHasNoOutline()
{
    SketchPolygon item;
    QVERIFY(item.getOriginalPolygon().isEmpty());
    QVERIFY(item.getResizedPolygon().isEmpty());
    QVERIFY(item.getShapePolygon().isEmpty());
    QVERIFY(item.polygon().isEmpty());
    QCOMPARE(item.itemQFlags(), 0x107U);
    QCOMPARE(item.type(), 0x10065);
    QCOMPARE(item.getItemBrush(), QBrush(transparent, Qt::NoBrush));
    QVERIFY(!item.itemIsOpaque());
    QCOMPARE(item.calls, QStringList());
}

void tst_PolygonItem::subclassesDeclareNothing()
{
    QFETCH(const int, index);
    const Polygons::Class &kind = Polygons::classes()[index];
    const auto item = Polygons::made(kind.shape);
    const QMetaObject *meta = item->metaObject();
    QCOMPARE(meta->className(), kind.name);
    QCOMPARE(meta->superClass(), &PolygonItem::staticMetaObject);
    QCOMPARE(meta->propertyCount(), PolygonItem::staticMetaObject.propertyCount());
    QCOMPARE(meta->methodCount(), PolygonItem::staticMetaObject.methodCount());
}

void tst_PolygonItem::accessorsKeepWhatTheyAreGiven()
{
    SketchPolygon item;
    const QPolygonF first({ { 1, 2 }, { 3, 4 }, { 5, 6 } });
    const QPolygonF second(QList<QPointF> { { 7, 8 }, { 9, 10 } });
    const QPolygonF third({ { 11, 12 } });
    item.setShapePolygon(first);
    item.setOriginalPolygon(second);
    item.setResizedPolygon(third);
    QCOMPARE(item.getShapePolygon(), first);
    QCOMPARE(item.getOriginalPolygon(), second);
    QCOMPARE(item.getResizedPolygon(), third);
    QVERIFY(item.polygon().isEmpty());
    QPolygonF copied = item.getShapePolygon();
    copied << QPointF(0, 0);
    QCOMPARE(item.getShapePolygon(), first);
}

void tst_PolygonItem::overshootTableIsStoredRowByRow()
{
    SketchPolygon item;
    for (int row = 0; row < 3; ++row) {
        for (int column = 0; column < 3; ++column)
            item.setOvershoot(row, column, 10.5 * row + column);
    }
    for (int row = 0; row < 3; ++row) {
        for (int column = 0; column < 3; ++column)
            QCOMPARE(item.getOvershoot(row, column), 10.5 * row + column);
    }
    // Three columns to a row, whatever the column.
    QCOMPARE(item.getOvershoot(0, 7), 22.0);
}

void tst_PolygonItem::referenceShapeReplacesAllPolygons()
{
    QFETCH(const int, index);
    const Polygons::Class &kind = Polygons::classes()[index];
    const auto item = Polygons::made(kind, QSizeF(40, 30));
    item->setItemPenWidth(7);
    for (int row = 0; row < 3; ++row) {
        for (int column = 0; column < 3; ++column)
            item->setOvershoot(row, column, 99);
    }
    item->setPolygonShape();
    QCOMPARE(item->getOriginalPolygon(), kind.points);
    QCOMPARE(item->getResizedPolygon(), kind.points);
    QCOMPARE(item->getShapePolygon(), kind.points);
    QCOMPARE(item->polygon(), kind.points);
    QCOMPARE(item->getItemSize(), kind.size);
    const auto untouched = Polygons::made(kind.shape);
    for (int row = 0; row < 3; ++row) {
        for (int column = 0; column < 3; ++column)
            QCOMPARE(item->getOvershoot(row, column), untouched->getOvershoot(row, column));
    }
}

void tst_PolygonItem::penIsLimitedToHalfTheSmallerSide()
{
    const auto item = Polygons::made(Polygons::rightTriangle, QSizeF(200, 40));
    item->setItemPenWidth(30);
    QCOMPARE(item->getItemPen().widthF(), 21.0); // 40 / 2 + 1
    QCOMPARE(item->getItemPenWidth(), ushort(30));
    Polygons::compare(item->polygon(), { { 10.5, 10.5 }, { 189.5, 29.5 }, { 10.5, 29.5 } });
    item->setItemSize(QSizeF(200, 80));
    QCOMPARE(item->getItemPen().widthF(), 30.0);
    Polygons::compare(item->polygon(), { { 15, 15 }, { 185, 65 }, { 15, 65 } });
}

void tst_PolygonItem::outlineFollowsThePen_data()
{
    QTest::addColumn<int>("width");
    QTest::addColumn<Qt::PenStyle>("style");
    QTest::addColumn<QPolygonF>("drawn");

    const QPolygonF bare({ { 0, 0 }, { 100, 100 }, { 0, 100 } });
    QTest::newRow("hairline") << 1 << Qt::SolidLine
                              << QPolygonF({ { 0.5, 0.5 }, { 99.5, 99.5 }, { 0.5, 99.5 } });
    QTest::newRow("dashes") << 10 << Qt::DashLine << QPolygonF({ { 5, 5 }, { 95, 95 }, { 5, 95 } });
    QTest::newRow("no width") << 0 << Qt::SolidLine << bare;
    QTest::newRow("no pen") << 10 << Qt::NoPen << bare;
}

void tst_PolygonItem::outlineFollowsThePen()
{
    QFETCH(const int, width);
    QFETCH(const Qt::PenStyle, style);
    QFETCH(const QPolygonF, drawn);
    const auto item = Polygons::made(Polygons::rightTriangle.shape);
    item->setItemPenWidth(static_cast<ushort>(width));
    item->setItemPenStyle(style);
    Polygons::compare(item->polygon(), drawn);
    const auto reversed = Polygons::made(Polygons::rightTriangle.shape);
    reversed->setItemPenStyle(style);
    reversed->setItemPenWidth(static_cast<ushort>(width));
    Polygons::compare(reversed->polygon(), drawn);
}

void tst_PolygonItem::onlyAChangedPenMovesTheOutline()
{
    SketchPolygon item;
    item.setItemSize(QSizeF(100, 100));
    item.updateItemPen();
    item.takeCalls();
    item.updateItemPen();
    QCOMPARE(item.takeCalls(), QStringList());
    item.setItemPenWidth(5);
    QCOMPARE(item.takeCalls(), QStringList { u"pen"_s });
    item.setItemPenWidth(5);
    QCOMPARE(item.takeCalls(), QStringList());
    item.setItemPenStyle(Qt::NoPen);
    QCOMPARE(item.takeCalls(), QStringList { u"pen"_s });
}

void tst_PolygonItem::joinChoosesTheColumn()
{
    QFETCH(const int, index);
    const Polygons::Class &kind = Polygons::classes()[index];
    const auto item = Polygons::made(kind, QSizeF(60, 45));
    item->setItemPenWidth(6);
    for (const Qt::PenJoinStyle join : { Qt::MiterJoin, Qt::BevelJoin, Qt::SvgMiterJoin, Qt::RoundJoin }) {
        item->setItemPenJoinStyle(join);
        QCOMPARE(item->getItemPenJoinStyle(), join);
        QCOMPARE(item->getItemPen().joinStyle(), join);
        QCOMPARE(item->getItemPen().widthF(), 6.0);
        QCOMPARE(item->getItemSize(), QSizeF(60, 45));
        const auto fresh = Polygons::made(kind, QSizeF(60, 45));
        Polygons::setPen(*fresh, 6, join);
        Polygons::compare(item->polygon(), fresh->polygon());
        Polygons::compare(item->getShapePolygon(), fresh->getShapePolygon());
    }
}

void tst_PolygonItem::joinIsAdjustedForOnceAndStored()
{
    SketchPolygon item;
    item.setItemSize(QSizeF(100, 100));
    item.setItemPenWidth(5);
    item.takeCalls();
    item.setItemPenJoinStyle(Qt::RoundJoin); // as it is
    QCOMPARE(item.takeCalls(), QStringList());
    item.setItemPenJoinStyle(Qt::BevelJoin);
    QCOMPARE(item.takeCalls(), QStringList { u"pen"_s });
    QCOMPARE(item.getItemPenJoinStyle(), Qt::BevelJoin);
    QCOMPARE(item.getItemPen().joinStyle(), Qt::BevelJoin);
}

void tst_PolygonItem::lockedJoinStays()
{
    const auto item = Polygons::made(Polygons::rightTriangle.shape);
    item->setItemPenWidth(10);
    item->setItemPenJoinStyle(Qt::PenJoinStyle(448));
    QCOMPARE(int(item->getItemPenJoinStyle()), 448);
    const QPolygonF drawn = item->polygon();
    for (const Qt::PenJoinStyle join : { Qt::MiterJoin, Qt::BevelJoin, Qt::RoundJoin }) {
        item->setItemPenJoinStyle(join);
        QCOMPARE(int(item->getItemPenJoinStyle()), 448);
        QCOMPARE(item->polygon(), drawn);
    }
}

void tst_PolygonItem::boundsAreTheLogicalSize()
{
    QFETCH(const int, index);
    const auto item = Polygons::made(Polygons::classes()[index], QSizeF(33.25, 17.5));
    item->setItemPenWidth(40);
    QCOMPARE(item->boundingRect(), QRectF(0, 0, 33.25, 17.5));
}

void tst_PolygonItem::shapeIsTheShapePolygon()
{
    QFETCH(const int, index);
    for (const Qt::PenJoinStyle join : { Qt::MiterJoin, Qt::BevelJoin, Qt::RoundJoin }) {
        const auto item = Polygons::made(Polygons::classes()[index], QSizeF(60, 45));
        Polygons::setPen(*item, 8, join);
        Polygons::compare(verticesOf(item->shape()), item->getShapePolygon());
        const QPolygonF other({ { 1, 2 }, { 30, 4 }, { 5, 60 } });
        item->setShapePolygon(other);
        QCOMPARE(verticesOf(item->shape()), other);
    }
}

void tst_PolygonItem::shapeHitsInsideTheOutlineOnly_data()
{
    QTest::addColumn<int>("shape");
    QTest::addColumn<QPointF>("inside");
    QTest::addColumn<QPointF>("outside");

    QTest::newRow("right triangle") << 0x10033 << QPointF(25, 70) << QPointF(75, 30);
    QTest::newRow("equilateral triangle") << 0x10034 << QPointF(50, 30) << QPointF(10, 30);
    QTest::newRow("diamond") << 0x10035 << QPointF(50, 10) << QPointF(10, 10);
    QTest::newRow("pentagon") << 0x10036 << QPointF(50, 10) << QPointF(5, 80);
    QTest::newRow("hexagon") << 0x10037 << QPointF(10, 50) << QPointF(5, 5);
    QTest::newRow("octagon") << 0x10038 << QPointF(20, 20) << QPointF(5, 5);
}

void tst_PolygonItem::shapeHitsInsideTheOutlineOnly()
{
    QFETCH(const int, shape);
    QFETCH(const QPointF, inside);
    QFETCH(const QPointF, outside);
    const auto item = Polygons::made(MobraTypes::ShapeType(shape));
    item->setItemSize(QSizeF(100, 100));
    QVERIFY(item->shape().contains(inside));
    QVERIFY(!item->shape().contains(outside));
    QVERIFY(item->contains(inside));
    QVERIFY(!item->contains(outside));
}

QTEST_MAIN(tst_PolygonItem)
#include "tst_polygonitem.moc"
