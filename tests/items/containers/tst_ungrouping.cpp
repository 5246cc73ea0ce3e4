// SPDX-License-Identifier: BSD-3-Clause
#include "items/containers/groupitem.h"
#include "items/containers/layeritem.h"
#include "items/graphics/pixmapitem.h"
#include "items/text/simpletextitem.h"
#include "tests/support/allitems.h"
#include "tests/support/groups.h"
#include "tests/support/itemrecords.h"
#include "tests/support/labeltexts.h"

#include <QGraphicsScene>
#include <QRegularExpression>
#include <QTest>

using namespace Qt::StringLiterals;
using Groups::corners;
using Groups::rectangle;
using Groups::stayed;
using Groups::takeIn;
using Groups::takenApart;
using MobraTypes::ShapeType;

namespace {

std::unique_ptr<PixMapItem> picture(int width, int height)
{
    auto item = std::make_unique<PixMapItem>();
    item->pixmapImportActions(AllItems::plainPicture(QSize(width, height), Qt::red));
    return item;
}

/// Near enough for people, who compare positions on the page.
bool areParallel(const QTransform &a, const QTransform &b)
{
    return isNear(a.m11(), b.m11()) && isNear(a.m12(), b.m12()) && isNear(a.m21(), b.m21())
        && isNear(a.m22(), b.m22());
}

} // namespace

/// How groups come apart: every member stays where it is on the page, and is itself again.
class tst_Ungrouping : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { LabelTexts::useKnownFont(); }
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    void membersGoToTheGroupsParent();
    void membersStayInTheScene();
    void scaledContentsAreAsBeforeTheGroup_data();
    void scaledContentsAreAsBeforeTheGroup();
    void contentsStretchedInTheGroupGoOnFromThere();
    void turnOfTheGroupBecomesThatOfItsMembers();
    void turnOfTheGroupMovesScaledContents();
    void anglesAreAddedWithinTheCircle();
    void groupsThatWereTurnedComeApartInPlace_data();
    void groupsThatWereTurnedComeApartInPlace();
    void formerMembersTurnInPlace_data() { AllItems::addRows(); }
    void formerMembersTurnInPlace();
    void bindingsSurviveTheTurn();
    void innerGroupsComeOutWhole();
    void stretchedInnerGroupsComeOutInPlace();
    void groupWithinATurnedGroupComesApartInPlace();
    void temporaryGroupsComeApartInPlace();
    void stretchedGroupsComeApartInPlace_data();
    void stretchedGroupsComeApartInPlace();
    void otherMembersComeOutInPlace();
    void emptyGroupHasNothingToGive();
    void oneItemLeavesAsItIs();
    void groupingAndUngroupingManyTimesMovesNothing();
};

void tst_Ungrouping::membersGoToTheGroupsParent()
{
    LayerItem layer;
    layer.setPos(100, 0);
    auto *group = new GroupItem;
    group->setParentItem(&layer);
    RectangleItem *first = rectangle({ 110, 10, 10, 10 });
    RectangleItem *second = rectangle({ 150, 30, 10, 10 }, 1);
    group->addToGroup({ first, second });
    group->removeFromGroup();
    QCOMPARE(group->getChildrenCount(), 0);
    QCOMPARE(first->parentItem(), &layer);
    QCOMPARE(second->parentItem(), &layer);
    QCOMPARE(first->pos(), QPointF(10, 10));
    QCOMPARE(second->pos(), QPointF(50, 30));
    QVERIFY(first->transform().isIdentity());
}

void tst_Ungrouping::membersStayInTheScene()
{
    QGraphicsScene scene;
    RectangleItem *item = rectangle({ 10, 20, 10, 10 });
    scene.addItem(item);
    auto *group = new GroupItem;
    scene.addItem(group);
    takeIn(*group, item);
    group->setPos(50, 60);
    group->removeFromGroup();
    QCOMPARE(item->scene(), &scene);
    QVERIFY(!item->parentItem());
    QCOMPARE(item->pos(), QPointF(50, 60));
    QVERIFY(!item->isSelected());
}

void tst_Ungrouping::scaledContentsAreAsBeforeTheGroup_data()
{
    QTest::addColumn<ShapeType>("shape");
    QTest::addColumn<double>("rotation");
    for (const ShapeType shape : AllItems::shapes()) {
        if (!AllItems::isScaled(shape) && shape != MobraTypes::LabelTextShape)
            continue;
        for (const double rotation : { 0.0, 90.0, 200.0 })
            QTest::addRow("%s by %g degrees", AllItems::nameOf(shape), rotation) << shape << rotation;
    }
}

void tst_Ungrouping::scaledContentsAreAsBeforeTheGroup()
{
    QFETCH(const ShapeType, shape);
    QFETCH(const double, rotation);
    Item *item = AllItems::made(shape).release();
    AllItems::change(*item);
    item->setItemRotation(rotation);
    QGraphicsItem &graphics = AllItems::graphics(*item);
    auto &helper = dynamic_cast<ResizeRotatedHelper &>(*item);
    const QPolygonF place = corners(graphics);
    const QPointF pos = graphics.pos();
    const QTransform transform = graphics.transform();
    const double m31 = helper.getOldTransformCoefficientM31();
    const double m32 = helper.getOldTransformCoefficientM32();

    GroupItem group;
    group.addToGroup({ &graphics, rectangle({ -40, -50, 10, 10 }, 9) });
    const auto members = takenApart(group);
    QVERIFY(stayed(place, corners(graphics)));
    QVERIFY(areNear(graphics.pos(), pos));
    QVERIFY(areParallel(graphics.transform(), transform));
    QVERIFY(areNear({ graphics.transform().dx(), graphics.transform().dy() }, { m31, m32 }));
    QCOMPARE(helper.getOldTransformCoefficientM31(), m31);
    QCOMPARE(helper.getOldTransformCoefficientM32(), m32);
    QVERIFY(!helper.getFirstResizeAfterAddedToGroup());
    QCOMPARE(item->getItemRotation(), rotation);
}

void tst_Ungrouping::contentsStretchedInTheGroupGoOnFromThere()
{
    // A turn by 90 degrees about the centre (20, 10) of a picture of 40 x 20 moves its origin to (30, -10).
    PixMapItem *item = picture(40, 20).release();
    item->setPos(100, 100);
    item->setItemRotation(90);
    GroupItem group;
    takeIn(group, item);
    item->setItemSize(QSizeF(80, 40));
    const QPolygonF place = corners(*item);
    QCOMPARE(place.first(), QPointF(130, 90));
    const auto members = takenApart(group);
    QVERIFY(stayed(place, corners(*item)));
    QVERIFY(areNear(item->pos(), QPointF(100, 100)));
    QCOMPARE(item->getOldTransformCoefficientM31(), 30.0);
    QCOMPARE(item->getOldTransformCoefficientM32(), -10.0);
    QCOMPARE(item->getItemSize(), QSizeF(80, 40));
    item->setItemSize(QSizeF(40, 20));
    QVERIFY(areNear(item->mapToScene(QPointF()), QPointF(130, 90)));
}

void tst_Ungrouping::turnOfTheGroupBecomesThatOfItsMembers()
{
    // About the centre (20, 10) of the group a turn by 90 degrees takes (x, y) to (30 - y, x - 10).
    RectangleItem *item = rectangle({ 0, 0, 40, 20 });
    GroupItem group;
    takeIn(group, item);
    group.setItemRotation(90);
    const auto members = takenApart(group);
    QCOMPARE(item->getItemRotation(), 90.0);
    QCOMPARE(item->pos(), QPointF(30, -10));
    QCOMPARE(item->transform(), QTransform(0, 1, -1, 0, 0, 0));
    QCOMPARE(item->getItemSize(), QSizeF(40, 20));
    // To be turned back, it turns about its own centre, which lies at (20, 10).
    item->setItemRotation(0);
    QVERIFY(areNear(item->pos(), QPointF(0, 0)));
}

void tst_Ungrouping::turnOfTheGroupMovesScaledContents()
{
    PixMapItem *item = picture(40, 20).release();
    GroupItem group;
    takeIn(group, item);
    group.setItemRotation(90);
    const auto members = takenApart(group);
    QCOMPARE(item->getItemRotation(), 90.0);
    QVERIFY(areNear(item->pos(), QPointF(0, 0)));
    QCOMPARE(item->transform(), QTransform(0, 1, -1, 0, 30, -10));
    QCOMPARE(item->getOldTransformCoefficientM31(), 30.0);
    QCOMPARE(item->getOldTransformCoefficientM32(), -10.0);
}

void tst_Ungrouping::anglesAreAddedWithinTheCircle()
{
    RectangleItem *item = rectangle({ 0, 0, 40, 20 });
    item->setItemRotation(350);
    GroupItem group;
    takeIn(group, item);
    group.setItemRotation(25);
    QCOMPARE(item->getItemRotation(), 350.0);
    const auto members = takenApart(group);
    QCOMPARE(item->getItemRotation(), 15.0);
}

void tst_Ungrouping::groupsThatWereTurnedComeApartInPlace_data()
{
    QTest::addColumn<ShapeType>("shape");
    QTest::addColumn<double>("rotation");
    QTest::addColumn<double>("sum");
    for (const ShapeType shape : AllItems::shapes()) {
        const char *name = AllItems::nameOf(shape);
        QTest::addRow("%s, not at all", name) << shape << 0.0 << 30.0;
        QTest::addRow("%s, a little", name) << shape << 0.5 << 30.5;
        QTest::addRow("%s, by 45 degrees", name) << shape << 45.0 << 75.0;
        QTest::addRow("%s, by 340 degrees", name) << shape << 340.0 << 10.0;
    }
}

void tst_Ungrouping::groupsThatWereTurnedComeApartInPlace()
{
    QFETCH(const ShapeType, shape);
    QFETCH(const double, rotation);
    QFETCH(const double, sum);
    Item *item = AllItems::made(shape).release();
    AllItems::change(*item);
    QCOMPARE(item->getItemRotation(), 30.0);
    QGraphicsItem &graphics = AllItems::graphics(*item);
    GroupItem group;
    group.addToGroup({ &graphics, rectangle({ -40, -50, 10, 10 }, 9) });
    group.setPos(12, 34);
    group.setItemRotation(rotation);
    const QPolygonF place = corners(graphics);
    const auto members = takenApart(group);
    QVERIFY(stayed(place, corners(graphics)));
    QVERIFY(isNear(item->getItemRotation(), sum));
}

void tst_Ungrouping::formerMembersTurnInPlace()
{
    QFETCH(const ShapeType, shape);
    Item *item = AllItems::made(shape).release();
    AllItems::change(*item);
    QGraphicsItem &graphics = AllItems::graphics(*item);
    GroupItem group;
    group.addToGroup({ &graphics, rectangle({ -40, -50, 10, 10 }, 9) });
    group.setItemRotation(45);
    const auto members = takenApart(group);
    // To turn it as far as it is turned changes nothing.
    const QPolygonF place = corners(graphics);
    item->setItemRotation(75);
    QVERIFY(stayed(place, corners(graphics)));
    item->setItemRotation(200);
    item->setItemRotation(75);
    QVERIFY(stayed(place, corners(graphics)));
}

void tst_Ungrouping::bindingsSurviveTheTurn()
{
    RectangleItem *item = rectangle({ 0, 0, 40, 20 });
    item->setDatasourceId(3);
    item->setDatasourceField(u"Name"_s);
    GroupItem group;
    takeIn(group, item);
    group.setItemRotation(90);
    const auto members = takenApart(group);
    QCOMPARE(item->getDatasourceId(), 3);
    QCOMPARE(item->getDatasourceField(), u"Name"_s);
}

void tst_Ungrouping::innerGroupsComeOutWhole()
{
    auto *inner = new GroupItem;
    RectangleItem *item = rectangle({ 10, 10, 40, 20 });
    inner->addToGroup({ item, rectangle({ 60, 10, 10, 10 }, 1) });
    inner->setItemRotation(30);
    GroupItem outer;
    outer.addToGroup({ inner, rectangle({ 0, 100, 10, 10 }, 1) });
    outer.setItemRotation(60);
    const QPolygonF place = corners(*item);
    const auto members = takenApart(outer);
    QCOMPARE(inner->getChildrenCount(), 2);
    QCOMPARE(inner->getItemRotation(), 90.0);
    QVERIFY(stayed(place, corners(*item)));
    QCOMPARE(item->getItemRotation(), 0.0);
    // The same rotation once more does not move it: its transform is about its own centre again.
    inner->setItemRotation(90);
    QVERIFY(stayed(place, corners(*item)));
}

void tst_Ungrouping::stretchedInnerGroupsComeOutInPlace()
{
    auto *inner = new GroupItem;
    RectangleItem *item = rectangle({ 10, 10, 40, 20 });
    inner->addToGroup({ item, rectangle({ 60, 10, 10, 10 }, 1) });
    inner->setTransform(QTransform(2, 0, 1, 3, 5, 6));
    GroupItem outer;
    takeIn(outer, inner);
    outer.setItemRotation(60);
    const QPolygonF place = corners(*item);
    const auto members = takenApart(outer);
    QVERIFY(stayed(place, corners(*item)));
}

void tst_Ungrouping::groupWithinATurnedGroupComesApartInPlace()
{
    auto *inner = new GroupItem;
    PixMapItem *item = picture(40, 20).release();
    item->setItemRotation(10);
    takeIn(*inner, item);
    inner->setItemRotation(20);
    GroupItem outer;
    takeIn(outer, inner);
    outer.setItemRotation(30);
    const QPolygonF place = corners(*item);
    inner->removeFromGroup();
    QCOMPARE(item->parentItem(), &outer);
    QVERIFY(stayed(place, corners(*item)));
    QVERIFY(isNear(item->getItemRotation(), 30.0));
    const auto members = takenApart(outer);
    QVERIFY(!item->parentItem());
    QVERIFY(stayed(place, corners(*item)));
    QVERIFY(isNear(item->getItemRotation(), 60.0));
}

void tst_Ungrouping::temporaryGroupsComeApartInPlace()
{
    PixMapItem *item = picture(40, 20).release();
    item->setItemRotation(90);
    item->setPos(100, 100);
    const QPolygonF place = corners(*item);
    GroupItem group;
    takeIn(group, item);
    item->temporaryGroup();
    const auto members = takenApart(group);
    QVERIFY(stayed(place, corners(*item)));
    QVERIFY(areNear(item->pos(), QPointF(100, 100)));
    QVERIFY(!item->getFirstResizeAfterAddedToGroup());
}

void tst_Ungrouping::stretchedGroupsComeApartInPlace_data()
{
    QTest::addColumn<double>("rotation");

    QTest::newRow("not turned") << 0.0;
    QTest::newRow("turned otherwise") << 20.0;
}

void tst_Ungrouping::stretchedGroupsComeApartInPlace()
{
    QFETCH(const double, rotation);
    PixMapItem *item = picture(40, 20).release();
    item->setItemRotation(30);
    GroupItem group;
    takeIn(group, item);
    group.setItemRotation(rotation);
    group.setTransform(QTransform(2, 0, 1, 3, 5, 6)); // as a record of another program may have it
    const QPolygonF place = corners(*item);
    const auto members = takenApart(group);
    QVERIFY(stayed(place, corners(*item)));
}

void tst_Ungrouping::otherMembersComeOutInPlace()
{
    auto *item = new QGraphicsRectItem(1, 2, 30, 40);
    item->setTransform(QTransform().rotate(20).translate(3, 4));
    GroupItem group;
    takeIn(group, item);
    group.setItemRotation(30);
    const QPolygonF place = corners(*item);
    const auto members = takenApart(group);
    QVERIFY(stayed(place, corners(*item)));
}

void tst_Ungrouping::emptyGroupHasNothingToGive()
{
    GroupItem group;
    group.removeFromGroup();
    QCOMPARE(group.getItemSize(), QSizeF(-1, -1));
}

void tst_Ungrouping::oneItemLeavesAsItIs()
{
    GroupItem group;
    RectangleItem *item = rectangle({ 0, 0, 40, 20 });
    RectangleItem *other = rectangle({ 0, 50, 40, 20 }, 1);
    group.addToGroup({ item, other });
    group.setItemRotation(90);
    const QPolygonF place = corners(*item);
    group.removeFromGroup(item);
    const std::unique_ptr<RectangleItem> owner(item);
    QVERIFY(!item->parentItem());
    QCOMPARE(other->parentItem(), &group);
    QVERIFY(stayed(place, corners(*item)));
    QCOMPARE(item->getItemRotation(), 0.0);
    QCOMPARE(group.getItemSize(), QSizeF(40, 70));
}

void tst_Ungrouping::groupingAndUngroupingManyTimesMovesNothing()
{
    std::vector<std::unique_ptr<Item>> items;
    QList<QGraphicsItem *> graphics;
    QList<QPolygonF> places;
    for (const ShapeType shape : AllItems::shapes()) {
        items.push_back(AllItems::madeOrChanged(shape, true));
        graphics.append(&AllItems::graphics(*items.back()));
        places.append(corners(*graphics.last()));
    }
    for (int round = 0; round < 20; ++round) {
        for (qsizetype i = 0; i < graphics.size(); ++i)
            graphics[i]->setZValue(double(i));
        GroupItem group;
        group.addToGroup(graphics);
        QCOMPARE(group.getChildrenCount(), graphics.size());
        group.removeFromGroup();
    }
    for (qsizetype i = 0; i < graphics.size(); ++i)
        QVERIFY(stayed(places[i], corners(*graphics[i])));
}

QTEST_MAIN(tst_Ungrouping)
#include "tst_ungrouping.moc"
