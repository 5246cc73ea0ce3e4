// SPDX-License-Identifier: BSD-3-Clause
#include "items/shapes/lineitem.h"
#include "tests/support/lines.h"
#include "tests/support/nearness.h"

#include <QGraphicsRectItem>
#include <QRegularExpression>
#include <QTest>

#include <rapidcheck.h>

#include <cmath>
#include <limits>
#include <numbers>

using namespace Qt::StringLiterals;
using Lines::Look;

namespace {

constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();
constexpr double infinite = std::numeric_limits<double>::infinity();

double distance(const QPointF &a, const QPointF &b)
{
    return std::hypot(a.x() - b.x(), a.y() - b.y());
}

QPointF anyPoint()
{
    const auto coordinate = [] { return *rc::gen::inRange(-10'000'000, 10'000'001) / 1000.0; };
    const double x = coordinate();
    return { x, coordinate() };
}

double anyAngle()
{
    return *rc::gen::inRange(-720'000, 720'001) / 1000.0;
}

bool either()
{
    return *rc::gen::arbitrary<bool>();
}

Look anyLook()
{
    return { *rc::gen::element<ushort>(0x00, 0x11, 0x35, 0x80, 0x51),
        *rc::gen::inRange(1, 1'000'000) / 1000.0, *rc::gen::inRange<ushort>(1, 73),
        either() ? Qt::MiterJoin : Qt::RoundJoin };
}

/// Gives the line any look, place, direction and mirror.
void placeAnywhere(LineItem &item)
{
    Lines::apply(item, anyLook());
    item.setPos(anyPoint());
    item.setItemRotation(anyAngle());
    item.setItemHorizontalMirror(either());
}

/// Moves one end and returns whether it came to the point while the other stayed. Points closer
/// than 1 to the other end do not count: no line is shorter.
bool movesOneEnd(LineItem &item, bool first, const QPointF &point)
{
    constexpr double tolerance = 1e-6;
    const QPointF kept = first ? item.getItemPoint2() : item.getItemPoint1();
    RC_PRE(distance(point, kept) >= 1.0);
    if (first)
        item.setItemPoint1(point);
    else
        item.setItemPoint2(point);
    const QPointF moved = first ? item.getItemPoint1() : item.getItemPoint2();
    const QPointF stayed = first ? item.getItemPoint2() : item.getItemPoint1();
    return distance(moved, point) <= tolerance && distance(stayed, kept) <= tolerance
        && std::abs(item.getItemLength() - distance(point, kept)) <= tolerance;
}

/// Moves both ends of the line several times, in any order.
void checkEnds(LineItem &item)
{
    for (int moves = *rc::gen::inRange(1, 4); moves > 0; --moves)
        RC_ASSERT(movesOneEnd(item, either(), anyPoint()));
}

} // namespace

/// The ends of a line in the scene. Random cases start from a fixed seed, so every run tries the same;
/// RC_PARAMS in the environment chooses others.
class tst_LineEnds : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    void movedStartGivesDirectionAndLength_data();
    void movedStartGivesDirectionAndLength();
    void movedEndGivesDirectionAndLength_data();
    void movedEndGivesDirectionAndLength();
    void endsMeetOnlyUpToALengthOfOne();
    void closeEndsKeepTheirDirection();
    void bothEndsLandWhereAsked();
    void bothEndsLandInATurnedParent();
    void bothEndsLandInAMirroredAndScaledParent();
    void boundsFollowTheEnds();
    void sameRotationAgainKeepsTheEnds();
    void laterRotationOfAMirroredLineSwapsTheEnds();
    void mirrorFlagsAreKept();
    void unusablePointsLeaveAUsableLine_data();
    void unusablePointsLeaveAUsableLine();
};

void tst_LineEnds::initTestCase()
{
    if (!qEnvironmentVariableIsSet("RC_PARAMS"))
        qputenv("RC_PARAMS", "seed=20230401 max_success=1000");
}

void tst_LineEnds::movedStartGivesDirectionAndLength_data()
{
    // The other end lies at (100, 0).
    QTest::addColumn<QPointF>("point");
    QTest::addColumn<double>("length");
    QTest::addColumn<double>("rotation");

    QTest::newRow("where it is") << QPointF(0, 0) << 100.0 << 0.0;
    QTest::newRow("to the left") << QPointF(-50, 0) << 150.0 << 0.0;
    QTest::newRow("to the right") << QPointF(130, 0) << 30.0 << 180.0;
    QTest::newRow("above") << QPointF(100, -40) << 40.0 << 90.0;
    QTest::newRow("below") << QPointF(100, 40) << 40.0 << 270.0;
    QTest::newRow("above left") << QPointF(70, -30) << 30 * std::sqrt(2) << 45.0;
    QTest::newRow("below left") << QPointF(70, 30) << 30 * std::sqrt(2) << 315.0;
}

void tst_LineEnds::movedStartGivesDirectionAndLength()
{
    QFETCH(const QPointF, point);
    QFETCH(const double, length);
    QFETCH(const double, rotation);
    LineItem item;
    item.setItemPoint1(point);
    QVERIFY(isNear(item.getItemLength(), length));
    QVERIFY(isNear(item.getItemRotation(), rotation));
    QVERIFY(areNear(item.getItemPoint1(), point));
    QVERIFY(areNear(item.getItemPoint2(), { 100, 0 }));
    QCOMPARE(item.line().p1(), QPointF(0, 0));
    QCOMPARE(item.line().y2(), 0.0);
    QCOMPARE(item.getItemSize(), QSizeF(item.getItemLength(), 0));
}

void tst_LineEnds::movedEndGivesDirectionAndLength_data()
{
    // The other end lies at (0, 0).
    QTest::addColumn<QPointF>("point");
    QTest::addColumn<double>("length");
    QTest::addColumn<double>("rotation");

    QTest::newRow("where it is") << QPointF(100, 0) << 100.0 << 0.0;
    QTest::newRow("to the left") << QPointF(-50, 0) << 50.0 << 180.0;
    QTest::newRow("above") << QPointF(0, -40) << 40.0 << 270.0;
    QTest::newRow("below") << QPointF(0, 40) << 40.0 << 90.0;
    QTest::newRow("below right") << QPointF(30, 40) << 50.0 << std::atan2(40, 30) * 180 / std::numbers::pi;
    QTest::newRow("above left") << QPointF(-30, -30) << 30 * std::sqrt(2) << 225.0;
}

void tst_LineEnds::movedEndGivesDirectionAndLength()
{
    QFETCH(const QPointF, point);
    QFETCH(const double, length);
    QFETCH(const double, rotation);
    LineItem item;
    item.setItemPoint2(point);
    QVERIFY(isNear(item.getItemLength(), length));
    QVERIFY(isNear(item.getItemRotation(), rotation));
    QVERIFY(areNear(item.getItemPoint1(), { 0, 0 }));
    QVERIFY(areNear(item.getItemPoint2(), point));
    QCOMPARE(item.getItemSize(), QSizeF(item.getItemLength(), 0));
}

void tst_LineEnds::endsMeetOnlyUpToALengthOfOne()
{
    LineItem item;
    item.setPos(7, 8);
    item.setItemRotation(90);
    // From (57, -42) to (57, 58).
    item.setItemPoint1(item.getItemPoint2());
    QVERIFY(isNear(item.getItemLength(), 1.0));
    QVERIFY(areNear(item.getItemPoint1(), { 57, 58 }));

    LineItem other;
    other.setPos(7, 8);
    other.setItemPoint1({ 107, 8 });
    QCOMPARE(other.getItemLength(), 1.0);
    QVERIFY(isNear(other.getItemRotation(), 0.0));
    QVERIFY(areNear(other.getItemPoint1(), { 107, 8 }));
    QVERIFY(areNear(other.getItemPoint2(), { 108, 8 }));
    other.setItemPoint2({ 107, 8 });
    QCOMPARE(other.getItemLength(), 1.0);
    QVERIFY(isNear(other.getItemRotation(), 0.0));
    QVERIFY(areNear(other.getItemPoint1(), { 107, 8 }));
    QVERIFY(areNear(other.getItemPoint2(), { 108, 8 }));
}

void tst_LineEnds::closeEndsKeepTheirDirection()
{
    LineItem item;
    item.setItemPoint1({ 100, -0.25 });
    QCOMPARE(item.getItemLength(), 1.0);
    QVERIFY(isNear(item.getItemRotation(), 90.0));
    QVERIFY(areNear(item.getItemPoint1(), { 100, -0.25 }));
    QVERIFY(areNear(item.getItemPoint2(), { 100, 0.75 }));
    item.setItemPoint2({ 100, -0.5 });
    QCOMPARE(item.getItemLength(), 1.0);
    QVERIFY(isNear(item.getItemRotation(), 270.0));
    QVERIFY(areNear(item.getItemPoint1(), { 100, -0.25 }));
    QVERIFY(areNear(item.getItemPoint2(), { 100, -1.25 }));
}

void tst_LineEnds::bothEndsLandWhereAsked()
{
    QVERIFY(rc::check([] {
        LineItem item;
        placeAnywhere(item);
        checkEnds(item);
        // A line's angle counts counter-clockwise, the item's clockwise; both in [0, 360).
        const double angle = QLineF(item.getItemPoint1(), item.getItemPoint2()).angle();
        const double turn = std::fmod(item.getItemRotation() + angle, 360.0);
        RC_ASSERT(item.getItemRotation() >= 0.0);
        RC_ASSERT(item.getItemRotation() < 360.0);
        RC_ASSERT(std::min(turn, 360.0 - turn) <= 1e-6);
    }));
}

void tst_LineEnds::bothEndsLandInATurnedParent()
{
    QVERIFY(rc::check([] {
        QGraphicsRectItem outer;
        outer.setPos(anyPoint());
        outer.setRotation(anyAngle());
        auto *inner = new QGraphicsRectItem(&outer);
        inner->setPos(anyPoint());
        inner->setTransform(QTransform().rotate(anyAngle()));
        auto *item = new LineItem;
        item->setParentItem(either() ? inner : &outer);
        placeAnywhere(*item);
        checkEnds(*item);
    }));
}

void tst_LineEnds::bothEndsLandInAMirroredAndScaledParent()
{
    QVERIFY(rc::check([] {
        QGraphicsRectItem parent;
        parent.setPos(anyPoint());
        parent.setTransform(QTransform().rotate(anyAngle()).scale(either() ? 2.0 : -0.5, 2.0));
        auto *item = new LineItem;
        item->setParentItem(&parent);
        placeAnywhere(*item);
        const bool first = either();
        const QPointF kept = first ? item->getItemPoint2() : item->getItemPoint1();
        const QPointF point = anyPoint();
        RC_PRE(distance(kept, point) >= 4.0);
        if (first)
            item->setItemPoint1(point);
        else
            item->setItemPoint2(point);
        RC_ASSERT(distance(item->getItemPoint1(), first ? point : kept) <= 1e-6);
        RC_ASSERT(distance(item->getItemPoint2(), first ? kept : point) <= 1e-6);
    }));
}

void tst_LineEnds::boundsFollowTheEnds()
{
    LineItem item;
    item.setItemPenWidth(4);
    item.setItemPoint2({ 30, 40 });
    QVERIFY(areNear(item.boundingRect().topLeft(), { -7, -7 }));
    QVERIFY(areNear(item.boundingRect().bottomRight(), { 57, 7 }));
    item.setItemPoint1({ 30, -160 });
    QVERIFY(areNear(item.boundingRect().topLeft(), { -7, -7 }));
    QVERIFY(areNear(item.boundingRect().bottomRight(), { 207, 7 }));
}

void tst_LineEnds::sameRotationAgainKeepsTheEnds()
{
    QVERIFY(rc::check([] {
        LineItem item;
        placeAnywhere(item);
        item.setItemHorizontalMirror(false);
        checkEnds(item);
        const QPointF start = item.getItemPoint1();
        const QPointF end = item.getItemPoint2();
        item.setItemRotation(item.getItemRotation());
        RC_ASSERT(distance(item.getItemPoint1(), start) <= 1e-6);
        RC_ASSERT(distance(item.getItemPoint2(), end) <= 1e-6);
    }));
}

void tst_LineEnds::laterRotationOfAMirroredLineSwapsTheEnds()
{
    QVERIFY(rc::check([] {
        LineItem item;
        placeAnywhere(item);
        item.setItemHorizontalMirror(true);
        checkEnds(item);
        const QPointF start = item.getItemPoint1();
        const QPointF end = item.getItemPoint2();
        const QPointF centre = item.mapToScene(item.boundingRect().center());
        item.setItemRotation(item.getItemRotation());
        RC_ASSERT(distance(item.getItemPoint1(), 2 * centre - start) <= 1e-6);
        RC_ASSERT(distance(item.getItemPoint2(), 2 * centre - end) <= 1e-6);
    }));
}

void tst_LineEnds::mirrorFlagsAreKept()
{
    LineItem item;
    item.setItemHorizontalMirror(true);
    item.setItemPoint1({ 5, 6 });
    item.setItemPoint2({ 50, 60 });
    QVERIFY(item.getItemHorizontalMirror());
    QVERIFY(!item.getItemVerticalMirror());
    QVERIFY(areNear(item.getItemPoint1(), { 5, 6 }));
    QVERIFY(areNear(item.getItemPoint2(), { 50, 60 }));
}

void tst_LineEnds::unusablePointsLeaveAUsableLine_data()
{
    QTest::addColumn<QPointF>("point");

    QTest::newRow("no number") << QPointF(notANumber, notANumber);
    QTest::newRow("no abscissa") << QPointF(notANumber, 10);
    QTest::newRow("no ordinate") << QPointF(10, notANumber);
    QTest::newRow("infinite") << QPointF(infinite, -infinite);
    QTest::newRow("infinite abscissa") << QPointF(-infinite, 3);
    QTest::newRow("1e300") << QPointF(1e300, 1e300);
    QTest::newRow("-1e300") << QPointF(0, -1e300);
    QTest::newRow("largest") << QPointF(std::numeric_limits<double>::max(), 0);
}

void tst_LineEnds::unusablePointsLeaveAUsableLine()
{
    QFETCH(const QPointF, point);
    for (const bool first : { true, false }) {
        LineItem item;
        item.setItemArrows(0x51);
        item.setItemRotation(30);
        if (first)
            item.setItemPoint1(point);
        else
            item.setItemPoint2(point);
        QVERIFY(std::isfinite(item.x()));
        QVERIFY(std::isfinite(item.y()));
        QVERIFY(item.getItemLength() >= 1.0);
        QVERIFY(item.getItemRotation() >= 0.0);
        QVERIFY(item.getItemRotation() < 360.0);
        QVERIFY(item.boundingRect().left() >= -3e7);
        QVERIFY(item.boundingRect().right() <= 3e7);

        item.setItemPoint1({ 10, 20 });
        item.setItemPoint2({ 40, 60 });
        QVERIFY(distance(item.getItemPoint1(), { 10, 20 }) <= 1e-6);
        QVERIFY(distance(item.getItemPoint2(), { 40, 60 }) <= 1e-6);
        QVERIFY(std::abs(item.getItemLength() - 50.0) <= 1e-6);
    }
}

QTEST_MAIN(tst_LineEnds)
#include "tst_lineends.moc"
