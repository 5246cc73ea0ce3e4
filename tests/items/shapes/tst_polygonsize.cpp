// SPDX-License-Identifier: BSD-3-Clause
#include "tests/support/colours.h"
#include "tests/support/oddnumbers.h"
#include "tests/support/polygons.h"
#include "tests/support/resizing.h"
#include "tests/support/sketchpolygon.h"

#include <QGraphicsScene>
#include <QLinearGradient>
#include <QRegularExpression>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace Colours;

namespace {

QPolygonF scaled(const QPolygonF &points, double x, double y)
{
    QPolygonF result;
    for (const QPointF &point : points)
        result << QPointF(point.x() * x, point.y() * y);
    return result;
}

} // namespace

/// The ways in which a polygon gets another size.
class tst_PolygonSize : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    void everyResizeRebuildsTheOutline_data() { Resizing::addRows(); }
    void everyResizeRebuildsTheOutline();
    void resizesAddUpInTheScales_data() { Polygons::addRows(); }
    void resizesAddUpInTheScales();
    void resizeRunsTheStepsInOrder_data() { Resizing::addRows(); }
    void resizeRunsTheStepsInOrder();
    void equalSizeChangesNothing();
    void keptRatioFollowsTheLeadingSide_data();
    void keptRatioFollowsTheLeadingSide();
    void limitsHoldTheSize();
    void zeroSideKeepsItsScale();
    void zeroSidesHaveNoRatioToKeep();
    void outlineComesBackFromAnySize_data();
    void outlineComesBackFromAnySize();
    void singleSidesAreOnlyStored();
    void localSizeRebuildsOutlineAndBrush();
    void sceneFindsTheResizedPolygon_data() { Resizing::addRows(); }
    void sceneFindsTheResizedPolygon();
    void updatedSizeRebuildsTheOutline_data() { Polygons::addRows(); }
    void updatedSizeRebuildsTheOutline();
    void updatedSizeRebuildsTheBrush();
};

void tst_PolygonSize::everyResizeRebuildsTheOutline()
{
    QFETCH(const int, parameters);
    for (const Polygons::Class &kind : Polygons::classes()) {
        const auto item = Polygons::made(kind.shape);
        item->setItemFillColor(red);
        item->setItemBrushStyle(MobraTypes::BrushLinearGradient);
        QVERIFY(Resizing::resize(*item, parameters, QSizeF(200, 50)));
        QCOMPARE(item->getItemSize(), QSizeF(200, 50));
        QCOMPARE(item->boundingRect(), QRectF(0, 0, 200, 50));
        QCOMPARE(item->getItemScaleX(), 200 / kind.size.width());
        QCOMPARE(item->getItemScaleY(), 50 / kind.size.height());
        QCOMPARE(item->getOriginalPolygon(), kind.points);
        Polygons::compare(
            item->getResizedPolygon(), scaled(kind.points, 200 / kind.size.width(), 50 / kind.size.height()));
        QVERIFY(!Resizing::resize(*item, parameters, QSizeF(200, 50)));
        const QBrush brush = item->getItemBrush();
        QCOMPARE(static_cast<const QLinearGradient *>(brush.gradient())->finalStop(), QPointF(0, 50));
    }
}

void tst_PolygonSize::resizesAddUpInTheScales()
{
    QFETCH(const int, index);
    const Polygons::Class &kind = Polygons::classes()[index];
    const auto item = Polygons::made(kind.shape);
    for (const QSizeF &size : { QSizeF(10, 20), QSizeF(300, 5), QSizeF(1, 1), QSizeF(80, 60) })
        QVERIFY(item->setItemSize(size));
    QVERIFY(Polygons::isClose(item->getItemScaleX(), 80 / kind.size.width()));
    QVERIFY(Polygons::isClose(item->getItemScaleY(), 60 / kind.size.height()));
    Polygons::compare(
        item->getResizedPolygon(), scaled(kind.points, 80 / kind.size.width(), 60 / kind.size.height()));
}

void tst_PolygonSize::resizeRunsTheStepsInOrder()
{
    QFETCH(const int, parameters);
    SketchPolygon item;
    item.setItemSize(QSizeF(100, 100));
    item.setOriginalPolygon(QList<QPointF> { { 1, 2 }, { 3, 4 } });
    item.setItemScaleX(1);
    item.setItemScaleY(1);
    item.takeCalls();
    QVERIFY(Resizing::resize(item, parameters, QSizeF(200, 50)));
    // The table first, then the outline: it is built from the table.
    QVERIFY(item.calls.size() >= 2);
    QCOMPARE(item.calls.last(), u"pen"_s);
    QVERIFY(item.calls.contains(u"overshoot"_s));
    QVERIFY(item.calls.lastIndexOf(u"overshoot"_s) < item.calls.lastIndexOf(u"pen"_s));
    QCOMPARE(item.getResizedPolygon(), QPolygonF(QList<QPointF> { { 2, 1 }, { 6, 2 } }));
    QCOMPARE(item.drawnBeforeThePen, item.getResizedPolygon());
    item.takeCalls();
    QVERIFY(!Resizing::resize(item, parameters, QSizeF(200, 50)));
    QCOMPARE(item.takeCalls(), QStringList());
}

void tst_PolygonSize::equalSizeChangesNothing()
{
    const auto item = Polygons::made(Polygons::rightTriangle, QSizeF(100, 100));
    const QPolygonF drawn = item->polygon();
    item->setItemScaleX(2.0);
    item->setOvershoot(0, 0, 9.0);
    QVERIFY(!item->setItemSize(QSizeF(100, 100)));
    QVERIFY(!item->setItemSize(QSizeF(100, 100), true, false));
    QVERIFY(!item->setItemSize(QSizeF(100, 100), false, 1, 1, 200, 200, false, false));
    QVERIFY(!item->setItemSize(QSizeF(100, 100), false, 1, 1, 200, 200, false, true));
    QCOMPARE(item->getItemScaleX(), 2.0);
    QCOMPARE(item->getOvershoot(0, 0), 9.0);
    QCOMPARE(item->polygon(), drawn);
}

void tst_PolygonSize::keptRatioFollowsTheLeadingSide_data()
{
    QTest::addColumn<bool>("heightLeads");
    QTest::addColumn<QSizeF>("size");

    QTest::newRow("width leads") << false << QSizeF(200, 200);
    QTest::newRow("height leads") << true << QSizeF(30, 30);
}

void tst_PolygonSize::keptRatioFollowsTheLeadingSide()
{
    QFETCH(const bool, heightLeads);
    QFETCH(const QSizeF, size);
    const double scale = size.width() / 100;
    const QPolygonF expected = scaled(Polygons::diamond.points, scale, scale);

    const auto free = Polygons::made(Polygons::diamond.shape);
    QVERIFY(free->setItemSize(QSizeF(200, 30), true, heightLeads));
    QCOMPARE(free->getItemSize(), size);
    Polygons::compare(free->getResizedPolygon(), expected);

    const auto limited = Polygons::made(Polygons::diamond.shape);
    QVERIFY(limited->setItemSize(QSizeF(200, 30), true, 1, 1, 1000, 1000, heightLeads, false));
    QCOMPARE(limited->getItemSize(), size);
    Polygons::compare(limited->getResizedPolygon(), expected);
}

void tst_PolygonSize::limitsHoldTheSize()
{
    const auto item = Polygons::made(Polygons::octagon.shape);
    QVERIFY(item->setItemSize(QSizeF(1000, 1), false, 20, 46, 184, 500, false, false));
    QCOMPARE(item->getItemSize(), QSizeF(184, 46));
    Polygons::compare(item->getResizedPolygon(), scaled(Polygons::octagon.points, 2, 0.5));
}

void tst_PolygonSize::zeroSideKeepsItsScale()
{
    const auto item = Polygons::made(Polygons::rightTriangle.shape);
    QVERIFY(item->setItemSize(QSizeF(0, 50)));
    QCOMPARE(item->getItemScaleX(), 0.0);
    QCOMPARE(item->getItemScaleY(), 0.5);
    item->setItemScaleX(3.0);
    QVERIFY(item->setItemSize(QSizeF(40, 100)));
    QCOMPARE(item->getItemScaleX(), 3.0);
    QCOMPARE(item->getItemScaleY(), 1.0);
    Polygons::compare(item->getResizedPolygon(), { { 0, 0 }, { 300, 100 }, { 0, 100 } });

    item->setItemHeight(0.0);
    item->updateItemSize(QSizeF(80, 10));
    QCOMPARE(item->getItemScaleX(), 6.0);
    QCOMPARE(item->getItemScaleY(), 1.0);
}

void tst_PolygonSize::zeroSidesHaveNoRatioToKeep()
{
    const auto wide = Polygons::made(Polygons::hexagon, QSizeF(0, 50));
    QVERIFY(wide->setItemSize(QSizeF(30, 40), true, false));
    QCOMPARE(wide->getItemSize(), QSizeF(30, 40));
    const auto high = Polygons::made(Polygons::hexagon, QSizeF(50, 0));
    QVERIFY(high->setItemSize(QSizeF(30, 40), true, true));
    QCOMPARE(high->getItemSize(), QSizeF(30, 40));
}

void tst_PolygonSize::outlineComesBackFromAnySize_data()
{
    addOddSizes();
}

void tst_PolygonSize::outlineComesBackFromAnySize()
{
    QFETCH(const double, width);
    QFETCH(const double, height);
    for (const Polygons::Class &kind : Polygons::classes()) {
        const auto expected = Polygons::made(kind, QSizeF(40, 30));
        const auto resized = Polygons::made(kind, QSizeF(width, height));
        QVERIFY(resized->setItemSize(QSizeF(40, 30)));
        Polygons::compare(resized->getResizedPolygon(), expected->getResizedPolygon());
        Polygons::compare(resized->polygon(), expected->polygon());

        const auto updated = Polygons::made(kind.shape);
        updated->updateItemSize(QSizeF(width, height));
        updated->updateItemSize(QSizeF(40, 30));
        Polygons::compare(updated->getResizedPolygon(), expected->getResizedPolygon());
        Polygons::compare(updated->polygon(), expected->polygon());
    }
}

void tst_PolygonSize::singleSidesAreOnlyStored()
{
    const auto item = Polygons::made(Polygons::diamond.shape);
    const QPolygonF drawn = item->polygon();
    item->setItemWidth(40.0);
    item->setItemHeight(30.0);
    QCOMPARE(item->boundingRect(), QRectF(0, 0, 40, 30));
    QCOMPARE(item->polygon(), drawn);
    QCOMPARE(item->getItemScaleX(), 1.0);
    QCOMPARE(item->getItemScaleY(), 1.0);
}

void tst_PolygonSize::localSizeRebuildsOutlineAndBrush()
{
    const auto item = Polygons::made(Polygons::rightTriangle.shape);
    item->setItemFillColor(red);
    item->setItemBrushStyle(MobraTypes::BrushLinearGradient);
    item->setItemWidth(40.0);
    item->setItemHeight(30.0);
    item->setItemScaleX(0.5);
    item->setItemSizeLocal();
    // Of the scales, not of the size; half a pen of 1 inside.
    Polygons::compare(item->getResizedPolygon(), { { 0, 0 }, { 50, 100 }, { 0, 100 } });
    Polygons::compare(item->polygon(), { { 0.5, 0.5 }, { 49.5, 99.5 }, { 0.5, 99.5 } });
    const QBrush brush = item->getItemBrush();
    QCOMPARE(static_cast<const QLinearGradient *>(brush.gradient())->finalStop(), QPointF(0, 30));
}

void tst_PolygonSize::sceneFindsTheResizedPolygon()
{
    QFETCH(const int, parameters);
    QGraphicsScene scene(-500, -500, 1000, 1000);
    const auto item = Polygons::made(Polygons::octagon.shape);
    scene.addItem(item.get());
    QVERIFY(scene.items(QPointF(200, 150)).isEmpty());
    Resizing::resize(*item, parameters, QSizeF(400, 300));
    QCOMPARE(scene.items(QPointF(200, 150)), QList<QGraphicsItem *> { item.get() });
    QCOMPARE(scene.items(QPointF(390, 150)), QList<QGraphicsItem *> { item.get() });
    item->updateItemSize(QSizeF(20, 20));
    QVERIFY(scene.items(QPointF(200, 150)).isEmpty());
    item->updateItemSize(QSizeF(400, 300));
    QCOMPARE(scene.items(QPointF(390, 150)), QList<QGraphicsItem *> { item.get() });
    scene.removeItem(item.get());
}

void tst_PolygonSize::updatedSizeRebuildsTheOutline()
{
    QFETCH(const int, index);
    const Polygons::Class &kind = Polygons::classes()[index];
    for (const Qt::PenJoinStyle join : { Qt::MiterJoin, Qt::BevelJoin, Qt::RoundJoin }) {
        const auto updated = Polygons::made(kind, QSizeF(80, 20));
        updated->setItemPenJoinStyle(join);
        updated->setItemPenWidth(30);
        updated->updateItemSize(QSizeF(60, 90));
        const auto resized = Polygons::made(kind, QSizeF(60, 90));
        resized->setItemPenJoinStyle(join);
        resized->setItemPenWidth(30);
        QCOMPARE(updated->getItemSize(), QSizeF(60, 90));
        QVERIFY(Polygons::isClose(updated->getItemScaleX(), 60 / kind.size.width()));
        QVERIFY(Polygons::isClose(updated->getItemScaleY(), 90 / kind.size.height()));
        QCOMPARE(updated->getItemPen(), resized->getItemPen());
        Polygons::compare(updated->getResizedPolygon(), resized->getResizedPolygon());
        Polygons::compare(updated->polygon(), resized->polygon());
        Polygons::compare(updated->getShapePolygon(), resized->getShapePolygon());
    }
}

void tst_PolygonSize::updatedSizeRebuildsTheBrush()
{
    const auto item = Polygons::made(Polygons::octagon.shape);
    item->setItemFillColor(red);
    item->setItemBrushStyle(MobraTypes::BrushLinearGradient);
    item->updateItemSize(QSizeF(10, 4));
    const QBrush brush = item->getItemBrush();
    QCOMPARE(static_cast<const QLinearGradient *>(brush.gradient())->finalStop(), QPointF(0, 4));
}

QTEST_MAIN(tst_PolygonSize)
#include "tst_polygonsize.moc"
