// SPDX-License-Identifier: BSD-3-Clause
#include "items/core/resizerotatedhelper.h"
#include "tests/support/oddnumbers.h"

#include <QGraphicsRectItem>
#include <QRegularExpression>
#include <QTest>

#include <algorithm>
#include <array>
#include <cmath>

using namespace Qt::StringLiterals;

namespace {

constexpr double tolerance = 1e-9;

// Half of the content's width and height.
constexpr double cx = 50.0;
constexpr double cy = 30.0;

bool isAt(const QGraphicsItem &item, QPointF position)
{
    const QPointF off = item.pos() - position;
    if (qAbs(off.x()) <= tolerance && qAbs(off.y()) <= tolerance)
        return true;
    qInfo() << "is at" << item.pos() << "and not at" << position;
    return false;
}

/// Whether Qt can work with the item's place: an item that is not at a finite one is lost to its scene.
bool isPlacedFinitely(const QGraphicsItem &item)
{
    const QTransform t = item.transform();
    const std::array numbers { item.x(), item.y(), t.m11(), t.m12(), t.m13(), t.m21(), t.m22(), t.m23(),
        t.m31(), t.m32(), t.m33() };
    return std::ranges::all_of(numbers, [](double number) { return std::isfinite(number); });
}

} // namespace

class tst_ResizeRotatedHelper : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    void everythingStartsAtZero();
    void accessorsKeepTheirValue();
    void contentIsScaledThenTurnedAboutTheCentre_data();
    void contentIsScaledThenTurnedAboutTheCentre();
    void earlierTransformIsReplaced();
    void resizeKeepsTheItemInPlace();
    void resizeStoresTheTranslation();
    void resizeAtTheSameAngleAndScaleDoesNotMove();
    void idleRefitsLeaveThePositionExactlyAsItWas();
    void resizeCompensatesRelativeToTheLastOne();
    void firstResizeInAGroupSubtractsTheWholeTranslation();
    void onlyTheFirstResizeInAGroupIsSpecial();
    void rotationDoesNotMove();
    void rotationStoresTheTranslation();
    void rotationKeepsTheFirstResizePending();
    void resizeAfterARotationIsRelativeToIt();
    void ungroupingTakesTheTranslationAndTheChangesBack();
    void ungroupingKeepsTheCoefficientsOnly();
    void ungroupingFromATemporaryGroupDoesNotMove();
    void temporaryGroupIsLeftOnce();
    void anyArgumentKeepsTheItemFinite_data();
    void anyArgumentKeepsTheItemFinite();
    void anyCoefficientKeepsTheItemFinite_data();
    void anyCoefficientKeepsTheItemFinite();
};

void tst_ResizeRotatedHelper::everythingStartsAtZero()
{
    ResizeRotatedHelper helper;
    QVERIFY(!helper.getFirstResizeAfterAddedToGroup());
    QCOMPARE(helper.getOldTransformCoefficientM31(), 0.0);
    QCOMPARE(helper.getOldTransformCoefficientM32(), 0.0);

    QGraphicsRectItem item;
    item.setPos(10, 20);
    helper.fixPositionOnUngroup(&item);
    QCOMPARE(item.pos(), QPointF(10, 20));
}

void tst_ResizeRotatedHelper::accessorsKeepTheirValue()
{
    ResizeRotatedHelper helper;
    helper.setFirstResizeAfterAddedToGroup(true);
    helper.setOldTransformCoefficientM31(-7.5);
    helper.setOldTransformCoefficientM32(12.25);
    QVERIFY(helper.getFirstResizeAfterAddedToGroup());
    QCOMPARE(helper.getOldTransformCoefficientM31(), -7.5);
    QCOMPARE(helper.getOldTransformCoefficientM32(), 12.25);

    helper.setFirstResizeAfterAddedToGroup(false);
    QVERIFY(!helper.getFirstResizeAfterAddedToGroup());
    helper.itemWasJustAddedToGroup();
    QVERIFY(helper.getFirstResizeAfterAddedToGroup());
}

void tst_ResizeRotatedHelper::contentIsScaledThenTurnedAboutTheCentre_data()
{
    QTest::addColumn<double>("angle");
    QTest::addColumn<QPointF>("scale");
    QTest::addColumn<QPointF>("origin"); // where (0, 0) lands: the translation
    QTest::addColumn<QPointF>("point"); // where (10, 20) lands

    // About (50, 30), a turn of 90 degrees takes (x, y) to (50 + 30 - y, 30 + x - 50).
    QTest::newRow("nothing") << 0.0 << QPointF(1, 1) << QPointF(0, 0) << QPointF(10, 20);
    QTest::newRow("scale") << 0.0 << QPointF(2, 3) << QPointF(0, 0) << QPointF(20, 60);
    QTest::newRow("quarter turn") << 90.0 << QPointF(1, 1) << QPointF(80, -20) << QPointF(60, -10);
    QTest::newRow("quarter turn, scaled") << 90.0 << QPointF(2, 3) << QPointF(80, -20) << QPointF(20, 0);
    QTest::newRow("half turn") << 180.0 << QPointF(1, 1) << QPointF(100, 60) << QPointF(90, 40);
    QTest::newRow("half turn, scaled") << 180.0 << QPointF(0.5, 2) << QPointF(100, 60) << QPointF(95, 20);
    QTest::newRow("three quarters") << 270.0 << QPointF(1, 1) << QPointF(20, 80) << QPointF(40, 70);
    // cos 60 = 0.5, sin 60 = 0.8660254037844386: (-50, -30) turns to (-25 + 25.980762113533160,
    // -43.301270189221932 - 15).
    QTest::newRow("sixth turn") << 60.0 << QPointF(1, 1) << QPointF(50.980762113533160, -28.301270189221932)
                                << QPointF(38.660254037844386, -9.641016151377546);
}

void tst_ResizeRotatedHelper::contentIsScaledThenTurnedAboutTheCentre()
{
    QFETCH(double, angle);
    QFETCH(QPointF, scale);
    QFETCH(QPointF, origin);
    QFETCH(QPointF, point);
    const auto near = [](QPointF a, QPointF b) { return (a - b).manhattanLength() <= tolerance; };

    QGraphicsRectItem resized;
    ResizeRotatedHelper().updateTransformOnResize(&resized, cx, cy, angle, scale.x(), scale.y());
    QVERIFY(near(resized.transform().map(QPointF(0, 0)), origin));
    QVERIFY(near(resized.transform().map(QPointF(10, 20)), point));

    QGraphicsRectItem rotated;
    ResizeRotatedHelper().updateTransformOnRotation(&rotated, cx, cy, angle, scale.x(), scale.y());
    QVERIFY(near(rotated.transform().map(QPointF(0, 0)), origin));
    QVERIFY(near(rotated.transform().map(QPointF(10, 20)), point));
}

void tst_ResizeRotatedHelper::earlierTransformIsReplaced()
{
    QGraphicsRectItem item;
    item.setTransform(QTransform::fromTranslate(500, 600).shear(1, 0));
    ResizeRotatedHelper helper;
    helper.updateTransformOnResize(&item, cx, cy, 0.0, 2.0, 3.0);
    QCOMPARE(item.transform(), QTransform::fromScale(2, 3));
    item.setTransform(QTransform::fromTranslate(500, 600).shear(1, 0));
    helper.updateTransformOnRotation(&item, cx, cy, 0.0, 4.0, 5.0);
    QCOMPARE(item.transform(), QTransform::fromScale(4, 5));
}

void tst_ResizeRotatedHelper::resizeKeepsTheItemInPlace()
{
    QGraphicsRectItem item;
    item.setPos(10, 20);
    ResizeRotatedHelper helper;
    helper.updateTransformOnResize(&item, cx, cy, 90.0, 2.0, 3.0);
    // From the translation (0, 0) to (80, -20).
    QVERIFY(isAt(item, QPointF(-70, 40)));
    QVERIFY((item.mapToScene(0, 0) - QPointF(10, 20)).manhattanLength() <= tolerance);
}

void tst_ResizeRotatedHelper::resizeStoresTheTranslation()
{
    QGraphicsRectItem item;
    ResizeRotatedHelper helper;
    helper.updateTransformOnResize(&item, cx, cy, 90.0, 2.0, 3.0);
    QVERIFY(qAbs(helper.getOldTransformCoefficientM31() - 80.0) <= tolerance);
    QVERIFY(qAbs(helper.getOldTransformCoefficientM32() + 20.0) <= tolerance);
}

void tst_ResizeRotatedHelper::resizeAtTheSameAngleAndScaleDoesNotMove()
{
    QGraphicsRectItem item;
    item.setPos(10, 20);
    ResizeRotatedHelper helper;
    helper.updateTransformOnResize(&item, cx, cy, 90.0, 2.0, 3.0);
    const QPointF before = item.pos();
    helper.updateTransformOnResize(&item, cx, cy, 90.0, 2.0, 3.0);
    QCOMPARE(item.pos(), before);
    // The translation does not depend on the scale.
    helper.updateTransformOnResize(&item, cx, cy, 90.0, 7.0, 0.5);
    QVERIFY(isAt(item, QPointF(-70, 40)));
}

void tst_ResizeRotatedHelper::idleRefitsLeaveThePositionExactlyAsItWas()
{
    for (const double angle : { 0.0, 30.0, 123.4 }) {
        QGraphicsRectItem item;
        item.setPos(0.1, 0.001);
        ResizeRotatedHelper helper;
        helper.updateTransformOnRotation(&item, cx, cy, angle, 0.1, 0.001);
        for (int i = 0; i < 10'000; ++i)
            helper.updateTransformOnResize(&item, cx, cy, angle, 0.1, 0.001);
        // Compared exactly: QCOMPARE would allow for a drift.
        QVERIFY(item.x() == 0.1);
        QVERIFY(item.y() == 0.001);
    }
}

void tst_ResizeRotatedHelper::resizeCompensatesRelativeToTheLastOne()
{
    QGraphicsRectItem item;
    item.setPos(10, 20);
    ResizeRotatedHelper helper;
    helper.setOldTransformCoefficientM31(100);
    helper.setOldTransformCoefficientM32(60);
    helper.updateTransformOnResize(&item, cx, cy, 90.0, 1.0, 1.0);
    // From (100, 60) to (80, -20).
    QVERIFY(isAt(item, QPointF(30, 100)));
    helper.updateTransformOnResize(&item, cx, cy, 270.0, 1.0, 1.0);
    // From (80, -20) to (20, 80).
    QVERIFY(isAt(item, QPointF(90, 0)));
}

void tst_ResizeRotatedHelper::firstResizeInAGroupSubtractsTheWholeTranslation()
{
    QGraphicsRectItem item;
    item.setPos(10, 20);
    ResizeRotatedHelper helper;
    helper.setOldTransformCoefficientM31(100);
    helper.setOldTransformCoefficientM32(60);
    helper.itemWasJustAddedToGroup();
    helper.updateTransformOnResize(&item, cx, cy, 90.0, 1.0, 1.0);
    QVERIFY(isAt(item, QPointF(-70, 40)));
    QVERIFY(qAbs(helper.getOldTransformCoefficientM31() - 80.0) <= tolerance);
    QVERIFY(qAbs(helper.getOldTransformCoefficientM32() + 20.0) <= tolerance);
}

void tst_ResizeRotatedHelper::onlyTheFirstResizeInAGroupIsSpecial()
{
    QGraphicsRectItem item;
    item.setPos(10, 20);
    ResizeRotatedHelper helper;
    helper.setFirstResizeAfterAddedToGroup(true);
    helper.updateTransformOnResize(&item, cx, cy, 90.0, 1.0, 1.0);
    QVERIFY(!helper.getFirstResizeAfterAddedToGroup());
    helper.updateTransformOnResize(&item, cx, cy, 180.0, 1.0, 1.0);
    // From (80, -20) to (100, 60), starting at (-70, 40).
    QVERIFY(isAt(item, QPointF(-90, -40)));
}

void tst_ResizeRotatedHelper::rotationDoesNotMove()
{
    QGraphicsRectItem item;
    item.setPos(10, 20);
    ResizeRotatedHelper helper;
    helper.setOldTransformCoefficientM31(5);
    helper.updateTransformOnRotation(&item, cx, cy, 90.0, 2.0, 3.0);
    QCOMPARE(item.pos(), QPointF(10, 20));
    helper.updateTransformOnRotation(&item, cx, cy, 33.0, 2.0, 3.0);
    QCOMPARE(item.pos(), QPointF(10, 20));
}

void tst_ResizeRotatedHelper::rotationStoresTheTranslation()
{
    QGraphicsRectItem item;
    ResizeRotatedHelper helper;
    helper.updateTransformOnRotation(&item, cx, cy, 180.0, 2.0, 3.0);
    QVERIFY(qAbs(helper.getOldTransformCoefficientM31() - 100.0) <= tolerance);
    QVERIFY(qAbs(helper.getOldTransformCoefficientM32() - 60.0) <= tolerance);
}

void tst_ResizeRotatedHelper::rotationKeepsTheFirstResizePending()
{
    QGraphicsRectItem item;
    ResizeRotatedHelper helper;
    helper.itemWasJustAddedToGroup();
    helper.updateTransformOnRotation(&item, cx, cy, 180.0, 1.0, 1.0);
    QVERIFY(helper.getFirstResizeAfterAddedToGroup());
}

void tst_ResizeRotatedHelper::resizeAfterARotationIsRelativeToIt()
{
    QGraphicsRectItem item;
    item.setPos(10, 20);
    ResizeRotatedHelper helper;
    helper.updateTransformOnRotation(&item, cx, cy, 180.0, 1.0, 1.0);
    helper.updateTransformOnResize(&item, cx, cy, 90.0, 1.0, 1.0);
    // From (100, 60) to (80, -20).
    QVERIFY(isAt(item, QPointF(30, 100)));
}

void tst_ResizeRotatedHelper::ungroupingTakesTheTranslationAndTheChangesBack()
{
    QGraphicsRectItem item;
    item.setPos(1000, 2000);
    ResizeRotatedHelper helper;
    helper.setOldTransformCoefficientM31(80);
    helper.setOldTransformCoefficientM32(-20);
    helper.setPositionChangeOnX(3);
    helper.setPositionChangeOnY(-4);
    helper.fixPositionOnUngroup(&item);
    QCOMPARE(item.pos(), QPointF(917, 2024));
}

void tst_ResizeRotatedHelper::ungroupingKeepsTheCoefficientsOnly()
{
    QGraphicsRectItem item;
    ResizeRotatedHelper helper;
    helper.itemWasJustAddedToGroup();
    helper.setOldTransformCoefficientM31(80);
    helper.setOldTransformCoefficientM32(-20);
    helper.setPositionChangeOnX(3);
    helper.setPositionChangeOnY(-4);
    helper.fixPositionOnUngroup(&item);
    QVERIFY(!helper.getFirstResizeAfterAddedToGroup());
    QCOMPARE(helper.getOldTransformCoefficientM31(), 80.0);
    QCOMPARE(helper.getOldTransformCoefficientM32(), -20.0);

    // The position changes are gone: another time moves by the coefficients alone.
    item.setPos(1000, 2000);
    helper.fixPositionOnUngroup(&item);
    QCOMPARE(item.pos(), QPointF(920, 2020));
}

void tst_ResizeRotatedHelper::ungroupingFromATemporaryGroupDoesNotMove()
{
    QGraphicsRectItem item;
    item.setPos(1000, 2000);
    ResizeRotatedHelper helper;
    helper.temporaryGroup();
    helper.itemWasJustAddedToGroup();
    helper.setOldTransformCoefficientM31(80);
    helper.setOldTransformCoefficientM32(-20);
    helper.setPositionChangeOnX(3);
    helper.setPositionChangeOnY(-4);
    helper.fixPositionOnUngroup(&item);
    QCOMPARE(item.pos(), QPointF(1000, 2000));
    QVERIFY(!helper.getFirstResizeAfterAddedToGroup());
}

void tst_ResizeRotatedHelper::temporaryGroupIsLeftOnce()
{
    QGraphicsRectItem item;
    item.setPos(1000, 2000);
    ResizeRotatedHelper helper;
    helper.temporaryGroup();
    helper.setOldTransformCoefficientM31(80);
    helper.setOldTransformCoefficientM32(-20);
    helper.setPositionChangeOnX(3);
    helper.setPositionChangeOnY(-4);
    helper.fixPositionOnUngroup(&item);
    helper.fixPositionOnUngroup(&item);
    QCOMPARE(item.pos(), QPointF(920, 2020));
}

void tst_ResizeRotatedHelper::anyArgumentKeepsTheItemFinite_data()
{
    QTest::addColumn<int>("argument");
    QTest::addColumn<double>("value");

    const char *const arguments[] = { "cx", "cy", "angle", "horizontal scale", "vertical scale" };
    for (int argument = 0; argument < int(std::size(arguments)); ++argument) {
        for (const auto &[name, value] : oddNumbers)
            QTest::addRow("%s %s", arguments[argument], name) << argument << value;
    }
}

void tst_ResizeRotatedHelper::anyArgumentKeepsTheItemFinite()
{
    QFETCH(const int, argument);
    QFETCH(const double, value);
    std::array<double, 5> arguments { cx, cy, 30.0, 2.0, 3.0 };
    arguments[std::size_t(argument)] = value;
    const auto [x, y, angle, scaleX, scaleY] = arguments;
    QGraphicsRectItem item;
    item.setPos(10, 20);
    ResizeRotatedHelper helper;
    helper.updateTransformOnRotation(&item, x, y, angle, scaleX, scaleY);
    QVERIFY(isPlacedFinitely(item));
    QCOMPARE(item.pos(), QPointF(10, 20));
    helper.itemWasJustAddedToGroup();
    for (int resize = 0; resize < 2; ++resize) {
        helper.updateTransformOnResize(&item, x, y, angle, scaleX, scaleY);
        QVERIFY(isPlacedFinitely(item));
        QVERIFY(std::isfinite(helper.getOldTransformCoefficientM31()));
        QVERIFY(std::isfinite(helper.getOldTransformCoefficientM32()));
    }
    helper.fixPositionOnUngroup(&item);
    QVERIFY(isPlacedFinitely(item));
}

void tst_ResizeRotatedHelper::anyCoefficientKeepsTheItemFinite_data()
{
    QTest::addColumn<double>("value");

    for (const auto &[name, value] : oddNumbers)
        QTest::newRow(name) << value;
}

void tst_ResizeRotatedHelper::anyCoefficientKeepsTheItemFinite()
{
    QFETCH(const double, value);
    using Setter = void (ResizeRotatedHelper::*)(double);
    for (const Setter set : { &ResizeRotatedHelper::setOldTransformCoefficientM31,
             &ResizeRotatedHelper::setOldTransformCoefficientM32, &ResizeRotatedHelper::setPositionChangeOnX,
             &ResizeRotatedHelper::setPositionChangeOnY }) {
        QGraphicsRectItem item;
        item.setPos(10, 20);
        ResizeRotatedHelper helper;
        (helper.*set)(value);
        helper.fixPositionOnUngroup(&item);
        QVERIFY(isPlacedFinitely(item));
        (helper.*set)(value);
        helper.updateTransformOnResize(&item, cx, cy, 30.0, 2.0, 3.0);
        QVERIFY(isPlacedFinitely(item));
    }
}

QTEST_MAIN(tst_ResizeRotatedHelper)
#include "tst_resizerotatedhelper.moc"
