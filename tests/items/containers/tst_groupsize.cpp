// SPDX-License-Identifier: BSD-3-Clause
#include "items/containers/groupitem.h"
#include "items/graphics/pixmapitem.h"
#include "items/shapes/lineitem.h"
#include "tests/support/allitems.h"
#include "tests/support/block.h"
#include "tests/support/groups.h"
#include "tests/support/labeltexts.h"
#include "tests/support/resizing.h"

#include <QRegularExpression>
#include <QTest>

#include <limits>

using namespace Qt::StringLiterals;
using Groups::rectangle;
using Groups::takeIn;
using MobraTypes::ShapeType;

namespace {

constexpr double infinite = std::numeric_limits<double>::infinity();
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

/// A group of 50 x 20 at (5, 6): 30 x 20 on the left, 10 x 10 at the right end, half way down.
struct Pair
{
    Pair()
    {
        group.addToGroup({ left, right });
        group.setPos(5, 6);
    }

    GroupItem group;
    RectangleItem *left = rectangle({ 0, 0, 30, 20 });
    RectangleItem *right = rectangle({ 40, 10, 10, 10 }, 1);
};

/// The corners of an item's size in the coordinates of its parent.
QPolygonF sizeCorners(const Item &item)
{
    const auto &graphics = dynamic_cast<const QGraphicsItem &>(item);
    const double width = item.getItemWidth();
    const double height = item.getItemHeight();
    QPolygonF corners;
    for (const QPointF &corner :
        { QPointF(0, 0), QPointF(width, 0), QPointF(width, height), QPointF(0, height) })
        corners << graphics.mapToParent(AllItems::pointIn(item, corner.x(), corner.y()));
    return corners;
}

QPolygonF times(double factor, const QPolygonF &points)
{
    return QTransform::fromScale(factor, factor).map(points);
}

} // namespace

/// How groups are resized and turned: all members by one factor, each where the group shows it.
class tst_GroupSize : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { LabelTexts::useKnownFont(); }
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    void turnsAboutItsCentreWithoutMoving();
    void growingScalesMembersAndTheirPlaces_data() { Resizing::addRows(); }
    void growingScalesMembersAndTheirPlaces();
    void widthLeadsUnlessItStays_data();
    void widthLeadsUnlessItStays();
    void presentSizeChangesNothing_data() { Resizing::addRows(); }
    void presentSizeChangesNothing();
    void membersFollowTheWidthWhereLimitsBreakTheRatio();
    void forcedSizesReachTheLimits();
    void shrinkingScalesMembersAndTheirPlaces_data() { Resizing::addRows(); }
    void shrinkingScalesMembersAndTheirPlaces();
    void tinyMembersStopAtOneBeforeTheyGiveWay();
    void exactlyOneIsNotTooSmall();
    void aThousandthIsNoDifference_data();
    void aThousandthIsNoDifference();
    void nothingShrinksBelowOne_data();
    void nothingShrinksBelowOne();
    void refusedSizesLeaveTheSizeOfTheMembers();
    void membersWithoutASideGetOneWhenTheyShrink_data();
    void membersWithoutASideGetOneWhenTheyShrink();
    void hiddenMembersAreResizedToo();
    void turnedMembersGrowAboutTheGroupsOrigin();
    void turnedGroupIsTurnedAboutItsNewCentre();
    void turnedGroupIsTurnedAboutTheCentreThatWasAskedFor();
    void turnedInnerGroupIsTurnedAboutItsNewCentre();
    void lowerGroupShrinks();
    void picturesMultiplyTheirScales();
    void linesGrowInLengthOnly();
    void everyMemberGrowsInItsPlace_data() { AllItems::addRows(); }
    void everyMemberGrowsInItsPlace();
    void everyMemberShrinksInItsPlace_data() { AllItems::addRows(); }
    void everyMemberShrinksInItsPlace();
    void everyMemberGrowsInATurnedParent_data() { AllItems::addRows(); }
    void everyMemberGrowsInATurnedParent();
    void innerGroupsGrowInTheirPlace();
    void innerGroupsStopAtTheirTinyMembers();
    void deepNestsAreResizedInFewRounds();
    void otherMembersMoveOnly();
    void groupOfOtherMembersAloneMovesThem();
    void emptyGroupHasNoSizeToChange_data() { Resizing::addRows(); }
    void emptyGroupHasNoSizeToChange();
    void unusableSizesAreRefused_data();
    void unusableSizesAreRefused();
    void updatingTheSizeDoesNotHeedTinyMembers();
    void updatingAnEmptyGroupChangesNothing();
    void scalesOfARecordDoNotCount();
};

void tst_GroupSize::turnsAboutItsCentreWithoutMoving()
{
    Pair pair;
    pair.group.setItemRotation(-270);
    QCOMPARE(pair.group.getItemRotation(), 90.0);
    // About (25, 10) a turn by 90 degrees takes (x, y) to (35 - y, x - 15).
    QCOMPARE(pair.group.transform(), QTransform(0, 1, -1, 0, 35, -15));
    QCOMPARE(pair.group.pos(), QPointF(5, 6));
    QCOMPARE(pair.group.sceneBoundingRect(), QRectF(20, -9, 20, 50));
    pair.group.setItemRotation(0);
    QVERIFY(pair.group.transform().isIdentity());
    QCOMPARE(pair.group.pos(), QPointF(5, 6));
}

void tst_GroupSize::growingScalesMembersAndTheirPlaces()
{
    QFETCH(const int, parameters);
    Pair pair;
    QVERIFY(Resizing::resize(pair.group, parameters, QSizeF(100, 77)));
    QCOMPARE(pair.group.getItemSize(), QSizeF(100, 40));
    QCOMPARE(pair.group.boundingRect(), QRectF(0, 0, 100, 40));
    QCOMPARE(pair.group.getItemScaleX(), 1.0);
    QCOMPARE(pair.group.getItemScaleY(), 1.0);
    QCOMPARE(pair.group.pos(), QPointF(5, 6));
    QVERIFY(pair.group.transform().isIdentity());
    QCOMPARE(pair.left->getItemSize(), QSizeF(60, 40));
    QCOMPARE(pair.left->pos(), QPointF(0, 0));
    QCOMPARE(pair.right->getItemSize(), QSizeF(20, 20));
    QCOMPARE(pair.right->pos(), QPointF(80, 20));
}

void tst_GroupSize::widthLeadsUnlessItStays_data()
{
    QTest::addColumn<QSizeF>("request");
    QTest::addColumn<QSizeF>("size");

    QTest::newRow("both, the width leads") << QSizeF(100, 20) << QSizeF(100, 40);
    QTest::newRow("height alone") << QSizeF(50, 60) << QSizeF(150, 60);
    QTest::newRow("height, and the width a little") << QSizeF(50.0004, 60) << QSizeF(150, 60);
    QTest::newRow("height, and the width more than a little") << QSizeF(50.25, 60) << QSizeF(50.25, 20.1);
    QTest::newRow("smaller height alone") << QSizeF(50, 10) << QSizeF(25, 10);
}

void tst_GroupSize::widthLeadsUnlessItStays()
{
    QFETCH(const QSizeF, request);
    QFETCH(const QSizeF, size);
    for (const auto &[name, parameters] : Resizing::forms) {
        Pair pair;
        QVERIFY2(Resizing::resize(pair.group, parameters, request), name);
        QVERIFY2(isNear(pair.group.getItemWidth(), size.width()), name);
        QVERIFY2(isNear(pair.group.getItemHeight(), size.height()), name);
    }
}

void tst_GroupSize::presentSizeChangesNothing()
{
    QFETCH(const int, parameters);
    Pair pair;
    QVERIFY(!Resizing::resize(pair.group, parameters, QSizeF(50, 20)));
    QCOMPARE(pair.left->getItemSize(), QSizeF(30, 20));
    QCOMPARE(pair.right->pos(), QPointF(40, 10));
}

void tst_GroupSize::membersFollowTheWidthWhereLimitsBreakTheRatio()
{
    Pair pair;
    QVERIFY(pair.group.setItemSize(QSizeF(100, 1), false, 1, 1, 500, 30, true, false));
    QCOMPARE(pair.group.getItemSize(), QSizeF(100, 40));
    QCOMPARE(pair.right->getItemSize(), QSizeF(20, 20));
    QCOMPARE(pair.right->pos(), QPointF(80, 20));
}

void tst_GroupSize::forcedSizesReachTheLimits()
{
    Pair pair;
    QVERIFY(!pair.group.setItemSize(QSizeF(50, 20), false, 100, 1, 500, 500, false, false));
    QVERIFY(pair.group.setItemSize(QSizeF(50, 20), false, 100, 40, 500, 500, false, true));
    QCOMPARE(pair.group.getItemSize(), QSizeF(100, 40));
}

void tst_GroupSize::shrinkingScalesMembersAndTheirPlaces()
{
    QFETCH(const int, parameters);
    Pair pair;
    QVERIFY(Resizing::resize(pair.group, parameters, QSizeF(25, 77)));
    QCOMPARE(pair.group.getItemSize(), QSizeF(25, 10));
    QCOMPARE(pair.group.getItemScaleX(), 1.0);
    QCOMPARE(pair.group.getItemScaleY(), 1.0);
    QCOMPARE(pair.left->getItemSize(), QSizeF(15, 10));
    QCOMPARE(pair.right->getItemSize(), QSizeF(5, 5));
    QCOMPARE(pair.right->pos(), QPointF(20, 5));
}

void tst_GroupSize::tinyMembersStopAtOneBeforeTheyGiveWay()
{
    // A quarter is asked for, and the small member allows a half: then the half of that is still to come.
    GroupItem group;
    auto *tiny = new Block(QSizeF(2, 2));
    tiny->setPos(98, 48);
    tiny->setZValue(1);
    RectangleItem *large = rectangle({ 0, 0, 100, 50 });
    group.addToGroup({ large, tiny });
    QVERIFY(group.setItemSize(QSizeF(25, 99)));
    QCOMPARE(group.getItemSize(), QSizeF(25, 12.5));
    QCOMPARE(large->getItemSize(), QSizeF(25, 12.5));
    QCOMPARE(tiny->sizesAnnounced, QList<QSizeF> { QSizeF(1, 1) });
    QCOMPARE(tiny->getItemSize(), QSizeF(0.5, 0.5));
    QCOMPARE(tiny->pos(), QPointF(24.5, 12));
    QCOMPARE(group.getItemScaleX(), 1.0);
}

void tst_GroupSize::exactlyOneIsNotTooSmall()
{
    GroupItem group;
    auto *tiny = new Block(QSizeF(4, 2));
    tiny->setZValue(1);
    group.addToGroup({ rectangle({ 0, 0, 100, 50 }), tiny });
    QVERIFY(group.setItemSize(QSizeF(50, 25)));
    QCOMPARE(tiny->sizesAnnounced, QList<QSizeF> { QSizeF(2, 1) });
    QCOMPARE(tiny->getItemSize(), QSizeF(2, 1));
}

void tst_GroupSize::aThousandthIsNoDifference_data()
{
    QTest::addColumn<double>("width");
    QTest::addColumn<double>("shrunk");

    // The right edge comes to lie at 50 + width / 2 instead of 50.
    QTest::newRow("two tenths of that") << 0.0004 << 50.0;
    QTest::newRow("five times that") << 0.01 << 50.0 * 50.0 / 50.005;
}

void tst_GroupSize::aThousandthIsNoDifference()
{
    QFETCH(const double, width);
    QFETCH(const double, shrunk);
    GroupItem group;
    auto *other = new QGraphicsRectItem(0, 0, width, 1); // which does not shrink
    other->setPen(Qt::NoPen);
    other->setPos(100 - width, 0);
    other->setZValue(1);
    RectangleItem *item = rectangle({ 0, 0, 100, 50 });
    group.addToGroup({ item, other });
    QCOMPARE(group.getItemSize(), QSizeF(100, 50));
    QVERIFY(group.setItemSize(QSizeF(50, 25)));
    QVERIFY(isNear(item->getItemWidth(), shrunk));
}

void tst_GroupSize::nothingShrinksBelowOne_data()
{
    QTest::addColumn<QSizeF>("tiny");

    QTest::newRow("narrow") << QSizeF(1, 30);
    QTest::newRow("low") << QSizeF(30, 1);
    QTest::newRow("narrower already") << QSizeF(0.5, 30);
    QTest::newRow("lower already") << QSizeF(30, 0.25);
    QTest::newRow("narrow and of no height") << QSizeF(1, 0);
}

void tst_GroupSize::nothingShrinksBelowOne()
{
    QFETCH(const QSizeF, tiny);
    GroupItem group;
    RectangleItem *large = rectangle({ 0, 0, 100, 50 });
    RectangleItem *small = rectangle({ QPointF(7, 8), tiny }, 1);
    group.addToGroup({ large, small });
    QVERIFY(!group.setItemSize(QSizeF(50, 25)));
    QCOMPARE(group.getItemSize(), QSizeF(100, 50));
    QCOMPARE(group.getItemScaleX(), 1.0);
    QCOMPARE(group.getItemScaleY(), 1.0);
    QCOMPARE(large->getItemSize(), QSizeF(100, 50));
    QCOMPARE(small->getItemSize(), tiny);
    QCOMPARE(small->pos(), QPointF(7, 8));
    QVERIFY(group.setItemSize(QSizeF(200, 100)));
    QCOMPARE(small->getItemSize(), tiny * 2);
}

void tst_GroupSize::refusedSizesLeaveTheSizeOfTheMembers()
{
    GroupItem group;
    RectangleItem *large = rectangle({ 0, 0, 100, 50 });
    group.addToGroup({ large, rectangle({ 0, 0, 1, 1 }, 1) });
    large->setItemSize(QSizeF(120, 60)); // the group does not know
    QVERIFY(!group.setItemSize(QSizeF(50, 25)));
    QCOMPARE(group.getItemSize(), QSizeF(120, 60));
}

void tst_GroupSize::membersWithoutASideGetOneWhenTheyShrink_data()
{
    QTest::addColumn<QSizeF>("size");
    QTest::addColumn<QSizeF>("shrunk");

    QTest::newRow("no height") << QSizeF(40, 0) << QSizeF(20, 1);
    QTest::newRow("no width") << QSizeF(0, 20) << QSizeF(1, 10);
    QTest::newRow("neither") << QSizeF(0, 0) << QSizeF(1, 0);
}

void tst_GroupSize::membersWithoutASideGetOneWhenTheyShrink()
{
    QFETCH(const QSizeF, size);
    GroupItem group;
    RectangleItem *flat = rectangle({ QPointF(0, 10), size }, 1);
    group.addToGroup({ rectangle({ 0, 0, 40, 40 }), flat });
    QVERIFY(group.setItemSize(QSizeF(20, 20)));
    QTEST(flat->getItemSize(), "shrunk");
    QCOMPARE(flat->pos(), QPointF(0, 5));
    QCOMPARE(group.getItemSize(), QSizeF(20, 20));
}

void tst_GroupSize::hiddenMembersAreResizedToo()
{
    Pair pair;
    pair.right->setVisible(false);
    QVERIFY(pair.group.setItemSize(QSizeF(100, 40)));
    QCOMPARE(pair.right->getItemSize(), QSizeF(20, 20));
    QCOMPARE(pair.right->pos(), QPointF(80, 20));
}

void tst_GroupSize::turnedMembersGrowAboutTheGroupsOrigin()
{
    // Turned by 90 degrees, 30 x 20 lies with its origin in the top right corner of 20 x 30.
    RectangleItem *item = rectangle({ 0, 0, 30, 20 });
    item->setItemRotation(90);
    GroupItem group;
    takeIn(group, item);
    QVERIFY(group.setItemSize(QSizeF(40, 60)));
    QCOMPARE(item->getItemSize(), QSizeF(60, 40));
    QCOMPARE(item->pos(), QPointF(40, 0));
    QCOMPARE(item->transform(), QTransform(0, 1, -1, 0, 0, 0));
    QCOMPARE(group.getItemSize(), QSizeF(40, 60));
}

void tst_GroupSize::turnedGroupIsTurnedAboutItsNewCentre()
{
    Pair pair;
    pair.group.setItemRotation(90);
    QVERIFY(pair.group.setItemSize(QSizeF(100, 40)));
    // About (50, 20) a turn by 90 degrees takes (x, y) to (70 - y, x - 30).
    QCOMPARE(pair.group.transform(), QTransform(0, 1, -1, 0, 70, -30));
    QCOMPARE(pair.group.pos(), QPointF(5, 6));
    QCOMPARE(pair.right->pos(), QPointF(80, 20));
    QCOMPARE(pair.right->getItemSize(), QSizeF(20, 20));
}

void tst_GroupSize::turnedGroupIsTurnedAboutTheCentreThatWasAskedFor()
{
    // A line does not grow thicker, so that the group of it becomes less high than was asked for.
    auto *line = new LineItem;
    line->setItemLength(100);
    line->setItemPenWidth(10);
    GroupItem group;
    takeIn(group, line);
    group.setItemRotation(90);
    const QSizeF wanted = group.getItemSize() * 2.0;
    QVERIFY(group.setItemSize(wanted));
    QVERIFY(group.getItemHeight() < wanted.height() - 1.0);
    const QPointF centre(wanted.width() / 2.0, wanted.height() / 2.0);
    QVERIFY(areNear(group.transform().map(centre), centre));
}

void tst_GroupSize::turnedInnerGroupIsTurnedAboutItsNewCentre()
{
    auto *inner = new GroupItem;
    takeIn(*inner, rectangle({ 0, 0, 40, 20 }));
    inner->setItemRotation(90);
    GroupItem outer;
    takeIn(outer, inner);
    QVERIFY(outer.setItemSize(outer.getItemSize() * 2.0));
    QCOMPARE(inner->getItemSize(), QSizeF(80, 40));
    // About (40, 20) a turn by 90 degrees takes (x, y) to (60 - y, x - 20).
    QCOMPARE(inner->transform(), QTransform(0, 1, -1, 0, 60, -20));
}

void tst_GroupSize::lowerGroupShrinks()
{
    // Limits make it lower and not narrower. No member may shrink by its width, so nothing is done.
    Pair pair;
    QVERIFY(!pair.group.setItemSize(QSizeF(50, 20), false, 50, 1, 500, 10, false, true));
    QCOMPARE(pair.group.getItemSize(), QSizeF(50, 20));
    QCOMPARE(pair.right->getItemSize(), QSizeF(10, 10));
}

void tst_GroupSize::picturesMultiplyTheirScales()
{
    auto *item = new PixMapItem;
    item->pixmapImportActions(AllItems::plainPicture(QSize(40, 20), Qt::red));
    item->setItemSize(QSizeF(120, 60));
    item->setPos(10, 20);
    GroupItem group;
    takeIn(group, item);
    QVERIFY(group.setItemSize(QSizeF(240, 120)));
    QCOMPARE(item->getItemScaleX(), 6.0);
    QCOMPARE(item->getItemScaleY(), 6.0);
    QCOMPARE(item->getItemSize(), QSizeF(240, 120));
    QCOMPARE(group.getItemSize(), QSizeF(240, 120));
    QVERIFY(group.setItemSize(QSizeF(60, 30)));
    QCOMPARE(item->getItemScaleX(), 1.5);
    QCOMPARE(group.getItemSize(), QSizeF(60, 30));
}

void tst_GroupSize::linesGrowInLengthOnly()
{
    // A line of pen 1 has a margin of 1 / 2 + 5 all around.
    auto *line = new LineItem;
    line->setItemLength(100);
    GroupItem group;
    takeIn(group, line);
    QCOMPARE(group.getItemSize(), QSizeF(111, 11));
    QCOMPARE(line->pos(), QPointF(5.5, 5.5));
    QVERIFY(group.setItemSize(QSizeF(222, 22)));
    QCOMPARE(line->getItemLength(), 200.0);
    QCOMPARE(line->pos(), QPointF(11, 11));
    QCOMPARE(group.getItemSize(), QSizeF(211, 11));
}

void tst_GroupSize::everyMemberGrowsInItsPlace()
{
    QFETCH(const ShapeType, shape);
    Item *item = AllItems::made(shape).release();
    AllItems::change(*item);
    GroupItem group;
    group.addToGroup({ &AllItems::graphics(*item), rectangle({ -40, -50, 10, 10 }, 9) });
    const QSizeF size = item->getItemSize();
    const QPolygonF corners = sizeCorners(*item);

    QVERIFY(group.setItemSize(group.getItemSize() * 2));
    QVERIFY(
        areNear({ item->getItemWidth(), item->getItemHeight() }, { size.width() * 2, size.height() * 2 }));
    QVERIFY(Groups::stayed(times(2, corners), sizeCorners(*item)));
    QCOMPARE(item->getItemRotation(), 30.0);

    QVERIFY(group.setItemSize(group.getItemSize() * 1.5));
    QVERIFY(Groups::stayed(times(3, corners), sizeCorners(*item)));
}

void tst_GroupSize::everyMemberShrinksInItsPlace()
{
    QFETCH(const ShapeType, shape);
    Item *item = AllItems::made(shape).release();
    AllItems::change(*item);
    RectangleItem *measure = rectangle({ -40, -50, 10, 10 }, 9);
    GroupItem group;
    group.addToGroup({ &AllItems::graphics(*item), measure });
    const QSizeF wanted = group.getItemSize() * 0.5;
    const QPolygonF corners = sizeCorners(*item);

    QVERIFY(group.setItemSize(wanted));
    // What does not shrink, such as the width of a pen, makes the rest do so the more.
    const double factor = measure->getItemWidth() / 10;
    QVERIFY(factor < 0.55);
    QVERIFY(Groups::stayed(times(factor, corners), sizeCorners(*item)));
    // Neither does the text in a box.
    if (shape != MobraTypes::RichTextShape)
        QVERIFY(std::abs(group.getItemWidth() - wanted.width()) < wanted.width() * 0.05);
}

void tst_GroupSize::everyMemberGrowsInATurnedParent()
{
    QFETCH(const ShapeType, shape);
    Item *item = AllItems::made(shape).release();
    AllItems::change(*item);
    QGraphicsRectItem parent;
    parent.setTransform(QTransform(0.6, 0.8, -0.8, 0.6, 30, 40));
    auto *group = new GroupItem;
    group->setParentItem(&parent);
    group->addToGroup({ &AllItems::graphics(*item), rectangle({ -40, -50, 10, 10 }, 9) });
    group->setItemRotation(20);
    const QPolygonF corners = sizeCorners(*item);
    QVERIFY(group->setItemSize(group->getItemSize() * 2));
    QVERIFY(Groups::stayed(times(2, corners), sizeCorners(*item)));
}

void tst_GroupSize::innerGroupsGrowInTheirPlace()
{
    auto *inner = new GroupItem;
    RectangleItem *item = rectangle({ 10, 10, 40, 20 });
    inner->addToGroup({ item, rectangle({ 60, 10, 10, 10 }, 1) });
    inner->setItemRotation(30);
    GroupItem outer;
    outer.addToGroup({ rectangle({ 0, 0, 10, 10 }, -1), inner });
    const QPolygonF corners = inner->mapToParent(sizeCorners(*item));
    QVERIFY(outer.setItemSize(outer.getItemSize() * 2));
    QVERIFY(Groups::stayed(times(2, corners), inner->mapToParent(sizeCorners(*item))));
    QCOMPARE(inner->getItemRotation(), 30.0);
    QVERIFY(areNear({ inner->getItemWidth(), inner->getItemHeight() }, { 120, 40 }));
}

void tst_GroupSize::innerGroupsStopAtTheirTinyMembers()
{
    auto *inner = new GroupItem;
    RectangleItem *tiny = rectangle({ 10, 10, 1, 1 }, 1);
    inner->addToGroup({ rectangle({ 0, 0, 40, 20 }), tiny });
    inner->setZValue(1);
    GroupItem outer;
    RectangleItem *large = rectangle({ 0, 0, 100, 50 });
    outer.addToGroup({ large, inner });
    QVERIFY(!outer.setItemSize(QSizeF(50, 25)));
    QCOMPARE(large->getItemSize(), QSizeF(100, 50));
    QCOMPARE(inner->getItemSize(), QSizeF(40, 20));

    tiny->setItemSize(QSizeF(2, 2));
    QVERIFY(outer.setItemSize(QSizeF(25, 12.5)));
    QCOMPARE(outer.getItemSize(), QSizeF(25, 12.5));
    QCOMPARE(inner->getItemSize(), QSizeF(10, 5));
    QCOMPARE(tiny->getItemSize(), QSizeF(0.5, 0.5));
    QCOMPARE(tiny->pos(), QPointF(2.5, 2.5));
}

void tst_GroupSize::deepNestsAreResizedInFewRounds()
{
    // The margins of the line do not shrink, so that every one of the groups misses its size at first.
    auto *block = new Block(QSizeF(100, 50));
    auto *line = new LineItem;
    line->setItemLength(200);
    line->setZValue(1);
    auto *group = new GroupItem;
    group->addToGroup({ block, line });
    int levels = 1;
    for (; levels < 60; ++levels) {
        auto *outer = new GroupItem;
        takeIn(*outer, group);
        QCOMPARE(group->parentItem(), outer);
        group = outer;
    }
    const std::unique_ptr<GroupItem> outermost(group);
    const double width = outermost->getItemWidth();
    QCOMPARE(width, 211.0);
    QVERIFY(outermost->setItemSize(outermost->getItemSize() * 0.5));
    QVERIFY(block->getItemWidth() < 55.0);
    QVERIFY(block->sizesAnnounced.size() <= levels + 1);
}

void tst_GroupSize::otherMembersMoveOnly()
{
    GroupItem group;
    auto *other = new QGraphicsRectItem(0, 0, 10, 10);
    other->setPen(Qt::NoPen);
    other->setPos(20, 30);
    other->setZValue(1);
    group.addToGroup({ rectangle({ 0, 0, 30, 40 }), other });
    QVERIFY(group.setItemSize(QSizeF(60, 80)));
    QCOMPARE(other->pos(), QPointF(40, 60));
    QCOMPARE(other->rect(), QRectF(0, 0, 10, 10));
    QVERIFY(other->transform().isIdentity());
    QCOMPARE(group.getItemSize(), QSizeF(60, 80));
}

void tst_GroupSize::groupOfOtherMembersAloneMovesThem()
{
    GroupItem group;
    for (const double x : { 0.0, 40.0 }) {
        auto *other = new QGraphicsRectItem(0, 0, 10, 10);
        other->setPen(Qt::NoPen);
        other->setPos(x, 0);
        other->setZValue(x);
        group.addToGroup(other);
    }
    group.updateItemSize(group.getItemSize()); // a group knows nothing of single items that join
    QCOMPARE(group.boundingRect(), QRectF(0, 0, 50, 10));
    QVERIFY(group.setItemSize(QSizeF(100, 20)));
    QCOMPARE(group.boundingRect().height(), 10.0);
    QCOMPARE(group.childItems().last()->pos(), QPointF(80, 0));
    QCOMPARE(group.boundingRect(), QRectF(0, 0, 90, 10));
    QCOMPARE(group.getItemSize(), QSizeF(90, 10));
}

void tst_GroupSize::emptyGroupHasNoSizeToChange()
{
    QFETCH(const int, parameters);
    GroupItem group;
    QVERIFY(!Resizing::resize(group, parameters, QSizeF(30, 20)));
    QCOMPARE(group.getItemSize(), QSizeF(-1, -1));
    QCOMPARE(group.getItemScaleX(), 1.0);
    QCOMPARE(group.getItemScaleY(), 1.0);
}

void tst_GroupSize::unusableSizesAreRefused_data()
{
    QTest::addColumn<QSizeF>("request");

    QTest::newRow("nothing") << QSizeF(0, 0);
    QTest::newRow("no width") << QSizeF(0, 20);
    QTest::newRow("no height") << QSizeF(50, 0);
    QTest::newRow("negative") << QSizeF(-50, -20);
    QTest::newRow("negative height") << QSizeF(50, -20);
    QTest::newRow("infinite") << QSizeF(infinite, 20);
    QTest::newRow("infinite height") << QSizeF(50, infinite);
    QTest::newRow("no numbers") << QSizeF(notANumber, notANumber);
    QTest::newRow("height that is no number") << QSizeF(50, notANumber);
}

void tst_GroupSize::unusableSizesAreRefused()
{
    QFETCH(const QSizeF, request);
    Pair pair;
    QVERIFY(!pair.group.setItemSize(request));
    pair.group.updateItemSize(QSizeF(request.width() == 50 ? 0 : request.width(), 1));
    QCOMPARE(pair.group.getItemSize(), QSizeF(50, 20));
    QCOMPARE(pair.left->getItemSize(), QSizeF(30, 20));
    QCOMPARE(pair.right->getItemSize(), QSizeF(10, 10));
    QCOMPARE(pair.right->pos(), QPointF(40, 10));
    QCOMPARE(pair.group.getItemScaleX(), 1.0);
    QCOMPARE(pair.group.getItemScaleY(), 1.0);
}

void tst_GroupSize::updatingTheSizeDoesNotHeedTinyMembers()
{
    GroupItem group;
    RectangleItem *tiny = rectangle({ 98, 48, 2, 2 }, 1);
    group.addToGroup({ rectangle({ 0, 0, 100, 50 }), tiny });
    group.updateItemSize(QSizeF(25, 99));
    QCOMPARE(group.getItemSize(), QSizeF(25, 12.5));
    QCOMPARE(tiny->getItemSize(), QSizeF(0.5, 0.5));
    QCOMPARE(tiny->pos(), QPointF(24.5, 12));
    QCOMPARE(group.getItemScaleX(), 1.0);
    group.updateItemSize(QSizeF(100, 50));
    QCOMPARE(tiny->getItemSize(), QSizeF(2, 2));
}

void tst_GroupSize::updatingAnEmptyGroupChangesNothing()
{
    GroupItem group;
    group.updateItemSize(QSizeF(30, 20));
    QCOMPARE(group.getItemSize(), QSizeF(-1, -1));
}

void tst_GroupSize::scalesOfARecordDoNotCount()
{
    Pair pair;
    pair.group.setItemScaleX(3);
    pair.group.setItemScaleY(0.5);
    QVERIFY(pair.group.setItemSize(QSizeF(100, 40)));
    QCOMPARE(pair.left->getItemSize(), QSizeF(60, 40));
}

QTEST_MAIN(tst_GroupSize)
#include "tst_groupsize.moc"
