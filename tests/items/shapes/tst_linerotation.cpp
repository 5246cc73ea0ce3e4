// SPDX-License-Identifier: BSD-3-Clause
#include "items/shapes/lineitem.h"
#include "tests/support/lines.h"
#include "tests/support/nearness.h"

#include <QGraphicsRectItem>
#include <QRegularExpression>
#include <QTest>

#include <cmath>
#include <limits>
#include <numbers>

using namespace Qt::StringLiterals;
using Lines::Look;

namespace {

QPointF boundsCentre(const LineItem &item)
{
    return item.mapToScene(item.boundingRect().center());
}

/// A line at a place of its own whose bounds lie off its middle.
void makeLopsided(LineItem &item)
{
    Lines::apply(item, { 0x51, 20, 10, Qt::MiterJoin });
    item.setPos(31, -17);
}

QPointF turned(const QPointF &point, const QPointF &centre, double degrees)
{
    const double radians = degrees * std::numbers::pi / 180.0;
    const QPointF arm = point - centre;
    return centre
        + QPointF(arm.x() * std::cos(radians) - arm.y() * std::sin(radians),
            arm.x() * std::sin(radians) + arm.y() * std::cos(radians));
}

} // namespace

/// Rotating and mirroring lines.
class tst_LineRotation : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    void rotationIsKeptWithinOneTurn_data();
    void rotationIsKeptWithinOneTurn();
    void rotationTurnsTheEndsAboutTheMiddle();
    void rotationKeepsTheCentreOfTheBounds();
    void rotationKeepsTheCentreInATurnedParent();
    void rotationAfterAChangeOfLengthKeepsTheNewCentre();
    void rotationPutsTheSizeRight();
    void horizontalMirrorTurnsByHalfACircle_data();
    void horizontalMirrorTurnsByHalfACircle();
    void mirrorOfALopsidedLineTurnsAboutTheBounds();
    void mirrorOffRestoresTheLine();
    void verticalMirrorChangesNothing();
    void mirroredLineKeepsItsRotation();
    void unusableAnglesLeaveAFinitePlace();
};

void tst_LineRotation::rotationIsKeptWithinOneTurn_data()
{
    QTest::addColumn<double>("degrees");
    QTest::addColumn<double>("stored");

    QTest::newRow("zero") << 0.0 << 0.0;
    QTest::newRow("common") << 30.5 << 30.5;
    QTest::newRow("full turn") << 360.0 << 0.0;
    QTest::newRow("more than a turn") << 725.0 << 5.0;
    QTest::newRow("negative") << -30.0 << 330.0;
}

void tst_LineRotation::rotationIsKeptWithinOneTurn()
{
    QFETCH(const double, degrees);
    LineItem item;
    item.setItemRotation(degrees);
    QTEST(item.getItemRotation(), "stored");
}

void tst_LineRotation::rotationTurnsTheEndsAboutTheMiddle()
{
    LineItem item;
    item.setPos(10, 20);
    item.setItemRotation(90);
    QVERIFY(areNear(item.getItemPoint1(), { 60, -30 }));
    QVERIFY(areNear(item.getItemPoint2(), { 60, 70 }));
    item.setItemRotation(30);
    // Half the length times the cosine and sine of 30 degrees.
    QVERIFY(areNear(item.getItemPoint1(), QPointF(60 - 25 * std::sqrt(3), 20 - 25)));
    QVERIFY(areNear(item.getItemPoint2(), QPointF(60 + 25 * std::sqrt(3), 20 + 25)));
    item.setItemRotation(0);
    QVERIFY(areNear(item.getItemPoint1(), { 10, 20 }));
    QVERIFY(areNear(item.getItemPoint2(), { 110, 20 }));
    QVERIFY(areNear(item.pos(), { 10, 20 }));
}

void tst_LineRotation::rotationKeepsTheCentreOfTheBounds()
{
    for (const Look &look : { Look { 0x00, 100 }, Look { 0x51, 20, 10, Qt::MiterJoin },
             Look { 0x05, 50, 72, Qt::RoundJoin }, Look { 0x30, 1, 12, Qt::MiterJoin } }) {
        LineItem item;
        Lines::apply(item, look);
        item.setPos(31, -17);
        const QPointF centre = item.boundingRect().center() + QPointF(31, -17);
        for (const double degrees : { 17.0, -123.5, 180.0, 359.9, 0.0, 90.0 }) {
            item.setItemRotation(degrees);
            QVERIFY(areNear(boundsCentre(item), centre));
            QVERIFY(areNear(item.getItemPoint1(), turned({ 31, -17 }, centre, degrees)));
            QVERIFY(areNear(item.getItemPoint2(), turned({ 31 + look.length, -17 }, centre, degrees)));
        }
    }
}

void tst_LineRotation::rotationKeepsTheCentreInATurnedParent()
{
    QGraphicsRectItem parent;
    parent.setPos(200, -50);
    parent.setRotation(40);
    LineItem item;
    item.setParentItem(&parent);
    makeLopsided(item);
    const QPointF centre = boundsCentre(item);
    for (const double degrees : { 17.0, -123.5, 180.0 }) {
        item.setItemRotation(degrees);
        QVERIFY(areNear(boundsCentre(item), centre));
        QCOMPARE(item.getItemRotation(), degrees < 0 ? degrees + 360 : degrees);
    }
}

void tst_LineRotation::rotationAfterAChangeOfLengthKeepsTheNewCentre()
{
    LineItem item;
    item.setItemRotation(30);
    item.setItemLength(40);
    item.setItemArrows(0x05);
    item.setItemPenWidth(20);
    for (const double degrees : { 60.0, 200.0, 30.0 }) {
        const QPointF centre = boundsCentre(item);
        item.setItemRotation(degrees);
        QVERIFY(areNear(boundsCentre(item), centre));
    }
}

void tst_LineRotation::rotationPutsTheSizeRight()
{
    LineItem item;
    item.setItemWidth(33);
    item.setItemHeight(44);
    item.setItemRotation(30);
    QCOMPARE(item.getItemSize(), QSizeF(100, 0));
    QCOMPARE(item.getItemLength(), 100.0);
}

void tst_LineRotation::horizontalMirrorTurnsByHalfACircle_data()
{
    QTest::addColumn<double>("degrees");

    for (const double degrees : { 0.0, 30.0, 90.0, 180.0, 275.0 })
        QTest::addRow("%g degrees", degrees) << degrees;
}

void tst_LineRotation::horizontalMirrorTurnsByHalfACircle()
{
    QFETCH(const double, degrees);
    LineItem item;
    item.setPos(10, 20);
    item.setItemRotation(degrees);
    const QPointF start = item.getItemPoint1();
    const QPointF end = item.getItemPoint2();
    item.setItemHorizontalMirror(true);
    QVERIFY(item.getItemHorizontalMirror());
    QCOMPARE(item.getItemRotation(), degrees);
    QVERIFY(areNear(item.getItemPoint1(), end));
    QVERIFY(areNear(item.getItemPoint2(), start));
}

void tst_LineRotation::mirrorOfALopsidedLineTurnsAboutTheBounds()
{
    LineItem item;
    makeLopsided(item);
    const QPointF centre = boundsCentre(item);
    const QPointF start = item.getItemPoint1();
    const QPointF end = item.getItemPoint2();
    item.setItemHorizontalMirror(true);
    QVERIFY(areNear(boundsCentre(item), centre));
    QVERIFY(areNear(item.getItemPoint1(), 2 * centre - start));
    QVERIFY(areNear(item.getItemPoint2(), 2 * centre - end));
}

void tst_LineRotation::mirrorOffRestoresTheLine()
{
    LineItem item;
    makeLopsided(item);
    item.setItemRotation(77);
    const QPointF start = item.getItemPoint1();
    const QPointF end = item.getItemPoint2();
    item.setItemHorizontalMirror(true);
    item.setItemHorizontalMirror(false);
    QVERIFY(!item.getItemHorizontalMirror());
    QVERIFY(areNear(item.getItemPoint1(), start));
    QVERIFY(areNear(item.getItemPoint2(), end));
    QCOMPARE(item.getItemRotation(), 77.0);
}

void tst_LineRotation::verticalMirrorChangesNothing()
{
    LineItem item;
    makeLopsided(item);
    item.setItemRotation(77);
    const QVariantMap before = item.saveItemToJSON();
    const QPointF start = item.getItemPoint1();
    item.setItemVerticalMirror(true);
    QVERIFY(!item.getItemVerticalMirror());
    QCOMPARE(item.saveItemToJSON(), before);
    QCOMPARE(item.getItemPoint1(), start);
}

void tst_LineRotation::mirroredLineKeepsItsRotation()
{
    LineItem item;
    item.setItemHorizontalMirror(true);
    item.setItemRotation(30);
    QCOMPARE(item.getItemRotation(), 30.0);
    QVERIFY(areNear(item.getItemPoint1(), QPointF(50 + 25 * std::sqrt(3), 25)));
    QVERIFY(areNear(item.getItemPoint2(), QPointF(50 - 25 * std::sqrt(3), -25)));
}

void tst_LineRotation::unusableAnglesLeaveAFinitePlace()
{
    LineItem item;
    for (const double degrees : { std::numeric_limits<double>::quiet_NaN(),
             std::numeric_limits<double>::infinity(), -std::numeric_limits<double>::infinity(), 1e300 }) {
        item.setItemRotation(degrees);
        QVERIFY(item.getItemRotation() >= 0.0);
        QVERIFY(item.getItemRotation() < 360.0);
        QVERIFY(areNear(boundsCentre(item), { 50, 0 }));
    }
}

QTEST_MAIN(tst_LineRotation)
#include "tst_linerotation.moc"
