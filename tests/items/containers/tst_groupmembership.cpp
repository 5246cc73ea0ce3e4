// SPDX-License-Identifier: BSD-3-Clause
#include "items/containers/groupitem.h"
#include "items/containers/layeritem.h"
#include "items/graphics/pixmapitem.h"
#include "items/shapes/ellipseitem.h"
#include "tests/support/allitems.h"
#include "tests/support/groups.h"

#include <QGraphicsScene>
#include <QRegularExpression>
#include <QTest>

#include <limits>

using namespace Qt::StringLiterals;
using Groups::corners;
using Groups::rectangle;
using Groups::stayed;
using Groups::takeIn;
using Groups::takenApart;
using MobraTypes::ShapeType;

namespace {

constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

} // namespace

/// How items join a group: order, places, scenes and selection.
class tst_GroupMembership : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    void newGroupIsEmpty();
    void membersAreStackedByTheirZValues();
    void groupBeginsAtTheCornerOfItsMembers();
    void ofEqualZValuesTheLastJoins();
    void itemsThatDoNotJoinMoveTheCorner();
    void anItemGivenTwiceJoinsOnce();
    void zValuesThatAreNoNumbersCountAsZero();
    void emptyListChangesNothing();
    void itemsStayWhereTheyAre_data() { AllItems::addRows(); }
    void itemsStayWhereTheyAre();
    void turnedMembersKeepTheTurnInTheirTransform();
    void scaledContentsAreToldThatTheyJoined();
    void itemsJoinFromLayersInPlace();
    void itemsJoinFromTurnedParentsInPlace();
    void groupInATurnedParentBeginsAtTheCorner();
    void itemsJoinAGroupThatHasMembers();
    void itemsThatJoinATurnedGroupAreTurnedBack_data() { AllItems::addRows(); }
    void itemsThatJoinATurnedGroupAreTurnedBack();
    void turnedGroupGoesOnAboutItsNewCentre();
    void groupWithoutASceneTakesItemsOutOfTheirs();
    void itemsJoinFromAnotherScene();
    void itemsJoinFromALayerOfAnotherScene();
    void groupIsSelectedInsteadOfItsMembers();
    void oneItemJoinsAsItIs();
    void oneItemJoinsFromAnotherScene();
    void nothingIsNoItem();
    void groupDoesNotJoinItself();
    void groupDoesNotTakeWhatItLiesIn();
    void groupRefusesParentsThatItHolds();
    void nestingHasALimit();
    void itemsWithoutAPlaceInTheGroupStayOut();
    void countsItsMembers();
    void countsVisibleMembersWhenToldSo();
    void storedCountIsForTheHost();
};

void tst_GroupMembership::newGroupIsEmpty()
{
    GroupItem group;
    QCOMPARE(group.type(), 0x10001);
    QCOMPARE(group.getItemShapeInt(), 0x10001U);
    QCOMPARE(group.itemQFlags(), 0x107U);
    QCOMPARE(group.itemFlags(), 0x01U);
    QCOMPARE(group.getItemSize(), QSizeF(-1, -1));
    QCOMPARE(group.getItemScaleX(), 1.0);
    QCOMPARE(group.getItemScaleY(), 1.0);
    QCOMPARE(group.getChildrenCount(), 0);
    QVERIFY(group.getCountInvisibleItems());
    QCOMPARE(group.boundingRect(), QRectF());
    group.setItemId(-5);
    QCOMPARE(group.toDescriptionString(), u"group -5"_s);
}

void tst_GroupMembership::membersAreStackedByTheirZValues()
{
    GroupItem group;
    RectangleItem *high = rectangle({ 0, 0, 10, 10 }, 7.5);
    RectangleItem *low = rectangle({ 0, 0, 10, 10 }, -3);
    RectangleItem *middle = rectangle({ 0, 0, 10, 10 }, 2);
    group.addToGroup({ high, low, middle });
    QCOMPARE(group.childItems(), (QList<QGraphicsItem *> { low, middle, high }));
    for (const QGraphicsItem *member : group.childItems())
        QCOMPARE(member->zValue(), 0.0);
}

void tst_GroupMembership::groupBeginsAtTheCornerOfItsMembers()
{
    GroupItem group;
    RectangleItem *wide = rectangle({ 10, 20, 30, 20 }, 2);
    RectangleItem *small = rectangle({ 50, 5, 10, 10 }, 1);
    group.addToGroup({ wide, small });
    QCOMPARE(group.pos(), QPointF(10, 5));
    QCOMPARE(wide->pos(), QPointF(0, 15));
    QCOMPARE(small->pos(), QPointF(40, 0));
    QCOMPARE(group.getItemSize(), QSizeF(50, 35));
    QCOMPARE(group.boundingRect(), QRectF(0, 0, 50, 35));
    QCOMPARE(wide->scenePos(), QPointF(10, 20));
    QCOMPARE(small->scenePos(), QPointF(50, 5));
}

void tst_GroupMembership::ofEqualZValuesTheLastJoins()
{
    GroupItem group;
    const std::unique_ptr<RectangleItem> first(rectangle({ 10, 10, 10, 10 }, 1));
    RectangleItem *second = rectangle({ 30, 20, 10, 10 }, 1);
    RectangleItem *other = rectangle({ 10, 10, 20, 20 }, 0);
    group.addToGroup({ first.get(), other, second });
    QCOMPARE(group.childItems(), (QList<QGraphicsItem *> { other, second }));
    QVERIFY(!first->parentItem());
    QCOMPARE(first->pos(), QPointF(10, 10));
    QCOMPARE(first->zValue(), 1.0);
}

void tst_GroupMembership::itemsThatDoNotJoinMoveTheCorner()
{
    GroupItem group;
    const std::unique_ptr<RectangleItem> first(rectangle({ 1, 2, 10, 10 }));
    RectangleItem *second = rectangle({ 30, 20, 10, 12 });
    group.addToGroup({ first.get(), second });
    QCOMPARE(group.pos(), QPointF(1, 2));
    QCOMPARE(second->pos(), QPointF(29, 18));
    QCOMPARE(group.getItemSize(), QSizeF(10, 12));
}

void tst_GroupMembership::anItemGivenTwiceJoinsOnce()
{
    GroupItem group;
    RectangleItem *item = rectangle({ 3, 4, 10, 10 });
    group.addToGroup({ item, item });
    QCOMPARE(group.childItems(), QList<QGraphicsItem *> { item });
    QCOMPARE(group.pos(), QPointF(3, 4));
    QCOMPARE(item->pos(), QPointF(0, 0));
}

void tst_GroupMembership::zValuesThatAreNoNumbersCountAsZero()
{
    GroupItem group;
    RectangleItem *below = rectangle({ 0, 0, 10, 10 }, -1);
    RectangleItem *above = rectangle({ 0, 0, 10, 10 }, 1);
    RectangleItem *between = rectangle({ 0, 0, 10, 10 }, notANumber);
    group.addToGroup({ above, between, below });
    QCOMPARE(group.childItems(), (QList<QGraphicsItem *> { below, between, above }));
    QCOMPARE(between->zValue(), 0.0);
}

void tst_GroupMembership::emptyListChangesNothing()
{
    GroupItem group;
    group.setPos(3, 4);
    group.addToGroup(QList<QGraphicsItem *>());
    QCOMPARE(group.pos(), QPointF(3, 4));
    QCOMPARE(group.getItemSize(), QSizeF(-1, -1));
    QVERIFY(!group.isSelected());
}

void tst_GroupMembership::itemsStayWhereTheyAre()
{
    QFETCH(const ShapeType, shape);
    Item *item = AllItems::made(shape).release();
    AllItems::change(*item);
    QGraphicsItem &graphics = AllItems::graphics(*item);
    const QPolygonF before = corners(graphics);
    const QRectF bounds = graphics.sceneBoundingRect();

    GroupItem group;
    group.addToGroup({ &graphics, rectangle({ -40, -50, 10, 10 }, 9) });
    QCOMPARE(graphics.parentItem(), &group);
    QVERIFY(stayed(before, corners(graphics)));
    QVERIFY(areNear(group.pos(), QPointF(-40, -50)));
    QVERIFY(isNear(group.getItemWidth(), bounds.right() + 40));
    QVERIFY(isNear(group.getItemHeight(), bounds.bottom() + 50));
    QCOMPARE(item->getItemRotation(), 30.0);
}

void tst_GroupMembership::turnedMembersKeepTheTurnInTheirTransform()
{
    // About its centre (15, 10) a turn by 90 degrees takes (x, y) to (25 - y, x - 5).
    RectangleItem *item = rectangle({ 0, 0, 30, 20 });
    item->setItemRotation(90);
    GroupItem group;
    takeIn(group, item);
    QCOMPARE(group.pos(), QPointF(5, -5));
    QCOMPARE(item->pos(), QPointF(20, 0));
    QCOMPARE(item->transform(), QTransform(0, 1, -1, 0, 0, 0));
    QCOMPARE(group.getItemSize(), QSizeF(20, 30));
}

void tst_GroupMembership::scaledContentsAreToldThatTheyJoined()
{
    auto *picture = new PixMapItem;
    picture->pixmapImportActions(AllItems::plainPicture(QSize(40, 20), Qt::red));
    QVERIFY(!picture->getFirstResizeAfterAddedToGroup());
    GroupItem group;
    takeIn(group, picture);
    QVERIFY(picture->getFirstResizeAfterAddedToGroup());
}

void tst_GroupMembership::itemsJoinFromLayersInPlace()
{
    QGraphicsScene scene;
    auto *layer = new LayerItem;
    layer->setPos(100, 200);
    scene.addItem(layer);
    RectangleItem *item = rectangle({ 5, 6, 10, 10 });
    item->setParentItem(layer);
    auto *group = new GroupItem;
    group->setParentItem(layer);
    takeIn(*group, item);
    QCOMPARE(group->parentItem(), layer);
    QCOMPARE(item->scenePos(), QPointF(105, 206));
    QCOMPARE(item->scene(), &scene);
    QCOMPARE(group->getItemSize(), QSizeF(10, 10));
}

void tst_GroupMembership::itemsJoinFromTurnedParentsInPlace()
{
    QGraphicsScene scene;
    auto *other = new GroupItem;
    scene.addItem(other);
    RectangleItem *item = rectangle({ 5, 6, 10, 20 });
    other->addToGroup({ item, rectangle({ 50, 60, 10, 10 }, 1) });
    other->setItemRotation(30);
    const QPolygonF before = corners(*item);

    auto *group = new GroupItem;
    scene.addItem(group);
    takeIn(*group, item);
    QVERIFY(stayed(before, corners(*item)));
    QVERIFY(areNear(group->sceneBoundingRect().topLeft(), group->pos()));
    QCOMPARE(other->getChildrenCount(), 1);
}

void tst_GroupMembership::groupInATurnedParentBeginsAtTheCorner()
{
    QGraphicsScene scene;
    auto *parent = new LayerItem;
    parent->setTransform(QTransform().rotate(90));
    scene.addItem(parent);
    auto *group = new GroupItem;
    group->setParentItem(parent);
    RectangleItem *item = rectangle({ 5, 6, 10, 20 });
    scene.addItem(item);
    takeIn(*group, item);
    QVERIFY(areNear(item->scenePos(), QPointF(5, 6)));
    QVERIFY(areNear(group->scenePos(), QPointF(5, 6)));
}

void tst_GroupMembership::itemsJoinAGroupThatHasMembers()
{
    GroupItem group;
    RectangleItem *first = rectangle({ 10, 10, 10, 10 });
    takeIn(group, first);
    RectangleItem *second = rectangle({ 40, 60, 10, 10 });
    takeIn(group, second);
    QCOMPARE(group.pos(), QPointF(10, 10));
    QCOMPARE(first->scenePos(), QPointF(10, 10));
    QCOMPARE(second->scenePos(), QPointF(40, 60));
    QCOMPARE(second->pos(), QPointF(30, 50));
    QCOMPARE(group.getItemSize(), QSizeF(40, 60));
    QCOMPARE(group.childItems(), (QList<QGraphicsItem *> { first, second }));
}

void tst_GroupMembership::itemsThatJoinATurnedGroupAreTurnedBack()
{
    QFETCH(const ShapeType, shape);
    Item *item = AllItems::made(shape).release();
    AllItems::change(*item);
    QGraphicsItem &graphics = AllItems::graphics(*item);
    const QPolygonF place = corners(graphics);
    GroupItem group;
    takeIn(group, rectangle({ -40, -50, 10, 10 }));
    group.setItemRotation(50);
    takeIn(group, &graphics);
    QVERIFY(stayed(place, corners(graphics)));
    QVERIFY(isNear(item->getItemRotation(), 340));

    const auto members = takenApart(group);
    QVERIFY(stayed(place, corners(graphics)));
    QVERIFY(isNear(item->getItemRotation(), 30));
}

void tst_GroupMembership::turnedGroupGoesOnAboutItsNewCentre()
{
    GroupItem group;
    Groups::takeIn(group, Groups::rectangle({ 0, 0, 40, 20 }));
    group.setItemRotation(50);
    RectangleItem *far = Groups::rectangle({ 100, 100, 10, 10 });
    const QPolygonF before = Groups::corners(*group.childItems().first());
    const QPolygonF farBefore = Groups::corners(*far);
    Groups::takeIn(group, far);
    QVERIFY(Groups::stayed(before, Groups::corners(*group.childItems().first())));
    QVERIFY(Groups::stayed(farBefore, Groups::corners(*far)));
    group.setItemRotation(50);
    QVERIFY(Groups::stayed(before, Groups::corners(*group.childItems().first())));
    QVERIFY(Groups::stayed(farBefore, Groups::corners(*far)));
}

void tst_GroupMembership::groupWithoutASceneTakesItemsOutOfTheirs()
{
    QGraphicsScene scene;
    RectangleItem *item = rectangle({ 10, 20, 10, 10 });
    scene.addItem(item);
    auto *group = new GroupItem;
    takeIn(*group, item);
    QVERIFY(!item->scene());
    QVERIFY(scene.items().isEmpty());
    scene.addItem(group);
    QCOMPARE(item->scene(), &scene);
    QCOMPARE(item->scenePos(), QPointF(10, 20));
}

void tst_GroupMembership::itemsJoinFromAnotherScene()
{
    QGraphicsScene from;
    QGraphicsScene to;
    RectangleItem *item = rectangle({ 10, 20, 10, 10 });
    item->setItemRotation(90);
    from.addItem(item);
    const QPolygonF before = corners(*item);
    auto *group = new GroupItem;
    to.addItem(group);
    takeIn(*group, item);
    QCOMPARE(item->scene(), &to);
    QVERIFY(from.items().isEmpty());
    QVERIFY(stayed(before, corners(*item)));
}

void tst_GroupMembership::itemsJoinFromALayerOfAnotherScene()
{
    QGraphicsScene from;
    auto *layer = new LayerItem;
    layer->setPos(100, 200);
    layer->setTransform(QTransform().rotate(30));
    from.addItem(layer);
    RectangleItem *item = rectangle({ 10, 20, 10, 10 });
    item->setItemRotation(45);
    item->setParentItem(layer);
    const QPolygonF before = corners(*item);
    QGraphicsScene to;
    auto *group = new GroupItem;
    to.addItem(group);
    takeIn(*group, item);
    QCOMPARE(item->scene(), &to);
    QCOMPARE(from.items(), QList<QGraphicsItem *> { layer });
    QVERIFY(stayed(before, corners(*item)));
}

void tst_GroupMembership::groupIsSelectedInsteadOfItsMembers()
{
    QGraphicsScene scene;
    RectangleItem *first = rectangle({ 0, 0, 10, 10 });
    RectangleItem *second = rectangle({ 20, 0, 10, 10 }, 1);
    RectangleItem *bystander = rectangle({ 40, 0, 10, 10 });
    for (RectangleItem *item : { first, second, bystander }) {
        scene.addItem(item);
        item->setSelected(true);
    }
    auto *group = new GroupItem;
    scene.addItem(group);
    group->addToGroup({ first, second });
    QVERIFY(group->isSelected());
    QVERIFY(!first->isSelected());
    QVERIFY(!second->isSelected());
    const QList<QGraphicsItem *> selected = scene.selectedItems();
    QCOMPARE(QSet<QGraphicsItem *>(selected.begin(), selected.end()),
        (QSet<QGraphicsItem *> { group, bystander }));
}

void tst_GroupMembership::oneItemJoinsAsItIs()
{
    GroupItem group;
    RectangleItem *item = rectangle({ 10, 20, 10, 10 }, 5);
    group.addToGroup(item);
    QCOMPARE(item->parentItem(), &group);
    QCOMPARE(item->pos(), QPointF(10, 20));
    QCOMPARE(item->zValue(), 5.0);
    QCOMPARE(group.pos(), QPointF(0, 0));
    QCOMPARE(group.getItemSize(), QSizeF(-1, -1));
    QVERIFY(!group.isSelected());
    auto *picture = new PixMapItem;
    group.addToGroup(picture);
    QVERIFY(!picture->getFirstResizeAfterAddedToGroup());
}

void tst_GroupMembership::oneItemJoinsFromAnotherScene()
{
    QGraphicsScene from;
    QGraphicsScene to;
    RectangleItem *item = rectangle({ 10, 20, 10, 10 });
    from.addItem(item);
    auto *group = new GroupItem;
    to.addItem(group);
    group->addToGroup(item);
    QCOMPARE(item->scene(), &to);
    QCOMPARE(item->scenePos(), QPointF(10, 20));
}

void tst_GroupMembership::nothingIsNoItem()
{
    GroupItem group;
    group.addToGroup(static_cast<QGraphicsItem *>(nullptr));
    group.addToGroup(QList<QGraphicsItem *> { nullptr });
    QCOMPARE(group.getChildrenCount(), 0);
    QVERIFY(!group.isSelected());
    RectangleItem *item = rectangle({ 10, 20, 10, 10 });
    group.addToGroup({ nullptr, item });
    QCOMPARE(group.childItems(), QList<QGraphicsItem *> { item });
}

void tst_GroupMembership::groupDoesNotJoinItself()
{
    GroupItem group;
    group.addToGroup(&group);
    group.addToGroup(QList<QGraphicsItem *> { &group });
    QCOMPARE(group.getChildrenCount(), 0);
    QCOMPARE(group.getItemSize(), QSizeF(-1, -1));
}

void tst_GroupMembership::groupDoesNotTakeWhatItLiesIn()
{
    RectangleItem outermost;
    auto *outer = new GroupItem;
    outer->setParentItem(&outermost);
    auto *group = new GroupItem;
    outer->addToGroup({ group, rectangle({ 0, 0, 10, 10 }, 1) });
    group->addToGroup({ outer, &outermost });
    group->addToGroup(&outermost);
    QCOMPARE(group->getChildrenCount(), 0);
    QCOMPARE(outer->parentItem(), &outermost);
    QVERIFY(!outermost.parentItem());
}

void tst_GroupMembership::groupRefusesParentsThatItHolds()
{
    GroupItem group;
    RectangleItem *member = rectangle({ 0, 0, 10, 10 });
    takeIn(group, member);
    group.setParentItem(member);
    QVERIFY(!group.parentItem());
}

void tst_GroupMembership::nestingHasALimit()
{
    GroupItem outermost;
    GroupItem *group = &outermost;
    for (int level = 2; level <= 64; ++level) {
        auto *inner = new GroupItem;
        takeIn(*group, inner);
        QCOMPARE(inner->parentItem(), group);
        group = inner;
    }
    const std::unique_ptr<RectangleItem> item(rectangle({ 7, 8, 10, 10 }, 3));
    takeIn(*group, item.get());
    group->addToGroup(item.get());
    QVERIFY(!item->parentItem());
    QCOMPARE(item->pos(), QPointF(7, 8));
    QCOMPARE(item->zValue(), 3.0);
}

void tst_GroupMembership::itemsWithoutAPlaceInTheGroupStayOut()
{
    GroupItem group;
    group.setTransform(QTransform(0, 0, 0, 0, 0, 0)); // squeezes all points into one
    const std::unique_ptr<RectangleItem> item(rectangle({ 7, 8, 10, 10 }, 3));
    takeIn(group, item.get());
    group.addToGroup(item.get());
    QVERIFY(!item->parentItem());
    QCOMPARE(item->pos(), QPointF(7, 8));
}

void tst_GroupMembership::countsItsMembers()
{
    GroupItem group;
    group.addToGroup({ rectangle({ 0, 0, 10, 10 }), rectangle({ 20, 0, 10, 10 }, 1) });
    QCOMPARE(group.getChildrenCount(), 2);
    auto *inner = new GroupItem;
    takeIn(*inner, rectangle({ 0, 0, 10, 10 }));
    group.addToGroup(inner);
    QCOMPARE(group.getChildrenCount(), 3);
}

void tst_GroupMembership::countsVisibleMembersWhenToldSo()
{
    GroupItem group;
    RectangleItem *hidden = rectangle({ 0, 0, 10, 10 });
    group.addToGroup({ hidden, rectangle({ 20, 0, 10, 10 }, 1) });
    hidden->setVisible(false);
    QCOMPARE(group.getChildrenCount(), 2);
    group.setCountInvisibleItems(false);
    QVERIFY(!group.getCountInvisibleItems());
    QCOMPARE(group.getChildrenCount(), 1);
    group.setCountInvisibleItems(true);
    QCOMPARE(group.getChildrenCount(), 2);
}

void tst_GroupMembership::storedCountIsForTheHost()
{
    GroupItem group;
    QCOMPARE(group.getStoredChildrenCount(), 0);
    group.setChildrenCount(5);
    QCOMPARE(group.getStoredChildrenCount(), 5);
    QCOMPARE(group.getChildrenCount(), 0);
}

QTEST_MAIN(tst_GroupMembership)
#include "tst_groupmembership.moc"
