// SPDX-License-Identifier: BSD-3-Clause
#include "items/shapes/pieitem.h"
#include "tests/support/colours.h"
#include "tests/support/fillrows.h"
#include "tests/support/pies.h"
#include "tests/support/resizing.h"
#include "tests/support/roundshapes.h"

#include <QPainterPath>
#include <QRegularExpression>
#include <QTest>

#include <memory>

using namespace Qt::StringLiterals;
using namespace Colours;
using Pies::addAngleRows;
using Pies::shape;
using Pies::shapedRect;
using RoundShapes::ellipse;
using RoundShapes::wedge;

/// The pie: its angles, its layout, its areas and its copies.
class tst_PieItem : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    void newPieIsThreeQuarters();
    void penTakesItsEndsAtItsNextUpdate();
    void propertiesAndSlotsSetTheAnglesAndTheOutline();

    // Angles and outline
    void anglesAreKeptAsTheyAre_data();
    void anglesAreKeptAsTheyAre();
    void anglesLeaveTheLayoutAlone();
    void anglesRepaintThePie();
    void changedOutlineLaysThePieOut();
    void sameOutlineChangesNothing_data();
    void sameOutlineChangesNothing();
    void everyResizeKeepsTheAngles_data();
    void everyResizeKeepsTheAngles();

    // Areas
    void boundsAndShapeAreTheWholeEllipse();
    void opaqueAreaIsTheWedgeOfAnOpaqueFill_data();
    void opaqueAreaIsTheWedgeOfAnOpaqueFill();
    void opaqueAreaIsTheWedge_data();
    void opaqueAreaIsTheWedge();

    // Copies
    void copyIsEqual_data();
    void copyIsEqual();
    void copyOfAnUntouchedPieHasItsPenUpdated();
    void copyWithAnOutlineIsLaidOut();
};

void tst_PieItem::newPieIsThreeQuarters()
{
    PieItem item;
    QCOMPARE(item.getItemShape(), MobraTypes::PieShape);
    QCOMPARE(item.type(), 0x1002E);
    QCOMPARE(item.getItemSize(), QSizeF(100, 100));
    QCOMPARE(item.rect(), QRectF(0.5, 0.5, 99, 99));
    QCOMPARE(item.startPieAngle(), 1440);
    QCOMPARE(item.spanPieAngle(), 4320);
    QCOMPARE(item.startAngle(), 1440);
    QCOMPARE(item.spanAngle(), 4320);
    QVERIFY(!item.getDrawCircle());
}

void tst_PieItem::penTakesItsEndsAtItsNextUpdate()
{
    PieItem item;
    QCOMPARE(item.getItemPenCapStyle(), Qt::FlatCap);
    QCOMPARE(item.getItemPenJoinStyle(), Qt::MiterJoin);
    QCOMPARE(item.getItemPen().capStyle(), Qt::RoundCap);
    QCOMPARE(item.getItemPen().joinStyle(), Qt::RoundJoin);
    item.updateItemPen();
    QCOMPARE(item.getItemPen().capStyle(), Qt::FlatCap);
    QCOMPARE(item.getItemPen().joinStyle(), Qt::MiterJoin);

    PieItem widened;
    widened.setItemPenWidth(4);
    QCOMPARE(widened.getItemPen().capStyle(), Qt::FlatCap);
    QCOMPARE(widened.getItemPen().joinStyle(), Qt::MiterJoin);
    PieItem resized;
    resized.setItemSize(QSizeF(50, 50));
    QCOMPARE(resized.getItemPen().capStyle(), Qt::FlatCap);
    PieItem coloured;
    coloured.setItemPenColor(red);
    QCOMPARE(coloured.getItemPen().capStyle(), Qt::RoundCap);
}

void tst_PieItem::propertiesAndSlotsSetTheAnglesAndTheOutline()
{
    PieItem item;
    bool changed = false;
    QVERIFY(QMetaObject::invokeMethod(
        &item, "setDrawCircle", Qt::DirectConnection, Q_RETURN_ARG(bool, changed), Q_ARG(bool, true)));
    QVERIFY(changed);
    QCOMPARE(item.property("drawCircle"), QVariant(true));
    QVERIFY(item.setProperty("drawCircle", false));
    QVERIFY(!item.getDrawCircle());
    QVERIFY(item.setProperty("startPieAngle", -17));
    QVERIFY(item.setProperty("spanPieAngle", 6000));
    QCOMPARE(item.property("startPieAngle"), QVariant(-17));
    QCOMPARE(item.property("spanPieAngle"), QVariant(6000));

    auto *interface = dynamic_cast<IPieItem *>(&item);
    QVERIFY(interface);
    QVERIFY(interface->setDrawCircle(true));
    QVERIFY(interface->getDrawCircle());
    interface->setStartPieAngle(3);
    interface->setSpanPieAngle(4);
    QCOMPARE(item.startAngle(), interface->startPieAngle());
    QCOMPARE(item.startAngle(), 3);
    QCOMPARE(item.spanAngle(), interface->spanPieAngle());
    QCOMPARE(item.spanAngle(), 4);
}

// Angles and outline

void tst_PieItem::anglesAreKeptAsTheyAre_data()
{
    addAngleRows();
}

void tst_PieItem::anglesAreKeptAsTheyAre()
{
    QFETCH(const int, start);
    QFETCH(const int, span);
    PieItem item;
    item.setStartPieAngle(start);
    QCOMPARE(item.spanPieAngle(), 4320);
    item.setSpanPieAngle(span);
    QCOMPARE(item.startPieAngle(), start);
    QCOMPARE(item.spanPieAngle(), span);
    QCOMPARE(item.startAngle(), start);
    QCOMPARE(item.spanAngle(), span);
}

void tst_PieItem::anglesLeaveTheLayoutAlone()
{
    PieItem item;
    item.setItemScaleX(2.0);
    item.setStartPieAngle(10);
    item.setSpanPieAngle(-10);
    QCOMPARE(item.getItemScaleX(), 2.0);
    QCOMPARE(item.rect(), QRectF(0.5, 0.5, 99, 99));
    QCOMPARE(item.boundingRect(), QRectF(0, 0, 100, 100));
}

void tst_PieItem::anglesRepaintThePie()
{
    PieItem item;
    const QRectF bounds(0, 0, 100, 100);
    QVERIFY(RoundShapes::united(RoundShapes::repaintedBy(item, [&item] {
        item.setStartPieAngle(0);
    })).contains(bounds));
    QVERIFY(RoundShapes::united(RoundShapes::repaintedBy(item, [&item] {
        item.setSpanPieAngle(0);
    })).contains(bounds));
}

void tst_PieItem::changedOutlineLaysThePieOut()
{
    PieItem item;
    for (const bool outlined : { true, false }) {
        item.setItemScaleX(2.0);
        item.setItemScaleY(3.0);
        item.setItemWidth(outlined ? 40.0 : 80.0);
        bool changed = false;
        const auto areas = RoundShapes::repaintedBy(
            item, [&item, &changed, outlined] { changed = item.setDrawCircle(outlined); });
        QVERIFY(changed);
        QCOMPARE(item.getDrawCircle(), outlined);
        QCOMPARE(item.getItemScaleX(), 1.0);
        QCOMPARE(item.getItemScaleY(), 1.0);
        QCOMPARE(item.rect(), QRectF(0.5, 0.5, outlined ? 39 : 79, 99));
        QVERIFY(RoundShapes::united(areas).contains(item.boundingRect()));
    }
}

void tst_PieItem::sameOutlineChangesNothing_data()
{
    QTest::addColumn<bool>("outlined");

    QTest::newRow("with outline") << true;
    QTest::newRow("without outline") << false;
}

void tst_PieItem::sameOutlineChangesNothing()
{
    QFETCH(const bool, outlined);
    PieItem item;
    item.setDrawCircle(outlined);
    item.setItemScaleX(2.0);
    item.setItemWidth(40.0);
    bool changed = true;
    const auto areas = RoundShapes::repaintedBy(
        item, [&item, &changed, outlined] { changed = item.setDrawCircle(outlined); });
    QVERIFY(!changed);
    QCOMPARE(item.getDrawCircle(), outlined);
    QVERIFY(areas.isEmpty());
    QCOMPARE(item.getItemScaleX(), 2.0);
    QCOMPARE(item.rect(), QRectF(0.5, 0.5, 99, 99));
}

void tst_PieItem::everyResizeKeepsTheAngles_data()
{
    Resizing::addRows();
}

void tst_PieItem::everyResizeKeepsTheAngles()
{
    QFETCH(const int, parameters);
    PieItem item;
    QVERIFY(Resizing::resize(item, parameters, QSizeF(200, 50)));
    QCOMPARE(item.startPieAngle(), 1440);
    QCOMPARE(item.spanPieAngle(), 4320);
}

// Areas

void tst_PieItem::boundsAndShapeAreTheWholeEllipse()
{
    PieItem item;
    shape(item, 0, 160);
    QCOMPARE(item.boundingRect(), QRectF(0, 0, 100, 60));
    QCOMPARE(item.shape(), ellipse(QRectF(0, 0, 100, 60)));
    QVERIFY(item.contains(QPointF(10, 30)));
}

void tst_PieItem::opaqueAreaIsTheWedgeOfAnOpaqueFill_data()
{
    FillRows::add();
}

void tst_PieItem::opaqueAreaIsTheWedgeOfAnOpaqueFill()
{
    QFETCH(const QColor, fill);
    QFETCH(const MobraTypes::BrushStyle, style);
    QFETCH(const bool, opaque);
    PieItem item;
    shape(item, 160, 1600);
    item.setItemFillColor(fill);
    item.setItemBrushStyle(style);
    QCOMPARE(item.opaqueArea(), opaque ? wedge(shapedRect, 160, 1600) : QPainterPath());
}

void tst_PieItem::opaqueAreaIsTheWedge_data()
{
    addAngleRows();
}

void tst_PieItem::opaqueAreaIsTheWedge()
{
    QFETCH(const int, start);
    QFETCH(const int, span);
    PieItem item;
    shape(item, start, span);
    QCOMPARE(item.opaqueArea(), wedge(shapedRect, start, span));
    item.setDrawCircle(true);
    QCOMPARE(item.opaqueArea(), wedge(shapedRect, start, span));
}

// Copies

void tst_PieItem::copyIsEqual_data()
{
    QTest::addColumn<bool>("outlined");

    QTest::newRow("with outline") << true;
    QTest::newRow("without outline") << false;
}

void tst_PieItem::copyIsEqual()
{
    QFETCH(const bool, outlined);
    PieItem item;
    item.setItemId(42);
    item.setPos(11, 22);
    item.setItemRotation(30);
    shape(item, -100, 6000);
    item.setDrawCircle(outlined);
    item.setItemPenJoinStyle(Qt::BevelJoin);

    const std::unique_ptr<Item> copied(item.createItemCopy());
    auto *copy = dynamic_cast<PieItem *>(copied.get());
    QVERIFY(copy);
    QCOMPARE(copy->type(), 0x1002E);
    QCOMPARE(copy->startPieAngle(), -100);
    QCOMPARE(copy->spanPieAngle(), 6000);
    QCOMPARE(copy->getDrawCircle(), outlined);
    QCOMPARE(copy->rect(), shapedRect);
    QCOMPARE(copy->saveItemToJSON(), item.saveItemToJSON());
    QCOMPARE(copy->getItemPen(), item.getItemPen());
    QCOMPARE(copy->getItemBrush(), item.getItemBrush());
}

void tst_PieItem::copyOfAnUntouchedPieHasItsPenUpdated()
{
    PieItem item;
    const std::unique_ptr<Item> copied(item.createItemCopy());
    const auto &copy = dynamic_cast<PieItem &>(*copied);
    QCOMPARE(copy.getItemPenCapStyle(), Qt::FlatCap);
    QCOMPARE(copy.getItemPen().capStyle(), Qt::FlatCap);
    QCOMPARE(copy.getItemPen().joinStyle(), Qt::MiterJoin);
    QCOMPARE(item.getItemPen().capStyle(), Qt::RoundCap);
}

void tst_PieItem::copyWithAnOutlineIsLaidOut()
{
    PieItem item;
    item.setDrawCircle(true);
    item.setItemWidth(40.0);
    item.setItemHeight(30.0);
    QCOMPARE(item.rect(), QRectF(0.5, 0.5, 99, 99));
    // Taking over the outline lays the copy out once more.
    const std::unique_ptr<Item> outlined(item.createItemCopy());
    QCOMPARE(dynamic_cast<PieItem &>(*outlined).rect(), QRectF(0.5, 0.5, 39, 29));
}

QTEST_MAIN(tst_PieItem)
#include "tst_pieitem.moc"
