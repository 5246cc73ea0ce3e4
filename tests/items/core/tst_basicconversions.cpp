// SPDX-License-Identifier: BSD-3-Clause
#include "items/core/basicconversions.h"

#include <QRegularExpression>
#include <QTest>

#include <cmath>
#include <limits>

using namespace Qt::StringLiterals;

namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

} // namespace

class tst_BasicConversions : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    void boundOfZeroIsInclusive_data();
    void boundOfZeroIsInclusive();
    void boundOfEqualityIsInclusive_data();
    void boundOfEqualityIsInclusive();
    void sizesAndPointsCompareBothCoordinates_data();
    void sizesAndPointsCompareBothCoordinates();
    void anglesAreNormalised_data();
    void anglesAreNormalised();
    void negativeZeroKeepsItsSign();
    void anglesBeyondAnyTurnStayInRange_data();
    void anglesBeyondAnyTurnStayInRange();
    void wholeAnglesAreNormalised_data();
    void wholeAnglesAreNormalised();
    void oddMultiplesOf45AreNudged_data();
    void oddMultiplesOf45AreNudged();
    void otherAnglesAreNotNudged_data();
    void otherAnglesAreNotNudged();
};

void tst_BasicConversions::boundOfZeroIsInclusive_data()
{
    QTest::addColumn<double>("value");
    QTest::addColumn<double>("epsilon");
    QTest::addColumn<bool>("zero");

    QTest::newRow("zero") << 0.0 << 0.0005 << true;
    QTest::newRow("zero without tolerance") << 0.0 << 0.0 << true;
    QTest::newRow("at the bound") << 0.0005 << 0.0005 << true;
    QTest::newRow("at the negative bound") << -0.0005 << 0.0005 << true;
    QTest::newRow("above the bound") << 0.0006 << 0.0005 << false;
    QTest::newRow("below the negative bound") << -0.0006 << 0.0005 << false;
    QTest::newRow("zero with a negative tolerance") << 0.0 << -1.0 << false;
    QTest::newRow("no number") << notANumber << 1.0 << false;
    QTest::newRow("infinite") << -infinity << 1.0 << false;
}

void tst_BasicConversions::boundOfZeroIsInclusive()
{
    QFETCH(double, value);
    QFETCH(double, epsilon);
    QTEST(BasicConversions::almostZero(value, epsilon), "zero");
}

void tst_BasicConversions::boundOfEqualityIsInclusive_data()
{
    QTest::addColumn<double>("a");
    QTest::addColumn<double>("b");
    QTest::addColumn<double>("epsilon");
    QTest::addColumn<bool>("equal");

    // All values are sums of powers of two, so that the differences are exact.
    QTest::newRow("same") << 7.25 << 7.25 << 0.0 << true;
    QTest::newRow("at the bound") << 1.0 << 1.5 << 0.5 << true;
    QTest::newRow("at the bound, swapped") << 1.5 << 1.0 << 0.5 << true;
    QTest::newRow("across zero") << -0.25 << 0.25 << 0.5 << true;
    QTest::newRow("beyond the bound") << 1.0 << 1.5078125 << 0.5 << false;
    QTest::newRow("beyond the bound, swapped") << 1.5078125 << 1.0 << 0.5 << false;
    QTest::newRow("same with a negative tolerance") << 7.25 << 7.25 << -0.5 << false;
    QTest::newRow("no number") << notANumber << notANumber << 1.0 << false;
}

void tst_BasicConversions::boundOfEqualityIsInclusive()
{
    QFETCH(double, a);
    QFETCH(double, b);
    QFETCH(double, epsilon);
    QTEST(BasicConversions::almostEqual(a, b, epsilon), "equal");
}

void tst_BasicConversions::sizesAndPointsCompareBothCoordinates_data()
{
    QTest::addColumn<QPointF>("a");
    QTest::addColumn<QPointF>("b");
    QTest::addColumn<double>("epsilon");
    QTest::addColumn<bool>("equal");

    QTest::newRow("same") << QPointF(3, 4) << QPointF(3, 4) << 0.0 << true;
    QTest::newRow("both at the bound") << QPointF(3, 4) << QPointF(3.5, 3.5) << 0.5 << true;
    QTest::newRow("first beyond") << QPointF(3, 4) << QPointF(3.75, 4) << 0.5 << false;
    QTest::newRow("second beyond") << QPointF(3, 4) << QPointF(3, 3.25) << 0.5 << false;
    QTest::newRow("both beyond") << QPointF(3, 4) << QPointF(9, 9) << 0.5 << false;
    QTest::newRow("negative tolerance") << QPointF(3, 4) << QPointF(3, 4) << -0.5 << false;
}

void tst_BasicConversions::sizesAndPointsCompareBothCoordinates()
{
    QFETCH(QPointF, a);
    QFETCH(QPointF, b);
    QFETCH(double, epsilon);
    QTEST(BasicConversions::almostEqual(a, b, epsilon), "equal");
    QTEST(BasicConversions::almostEqual(QSizeF(a.x(), a.y()), QSizeF(b.x(), b.y()), epsilon), "equal");
}

void tst_BasicConversions::anglesAreNormalised_data()
{
    QTest::addColumn<double>("degrees");
    QTest::addColumn<double>("normalised");

    QTest::newRow("zero") << 0.0 << 0.0;
    QTest::newRow("inside") << 359.5 << 359.5;
    QTest::newRow("full turn") << 360.0 << 0.0;
    QTest::newRow("two turns and five") << 725.0 << 5.0;
    QTest::newRow("negative") << -30.0 << 330.0;
    QTest::newRow("negative full turn") << -360.0 << 0.0;
    QTest::newRow("negative turns") << -1000.25 << 79.75;
    QTest::newRow("negative, too small for the range") << -1e-14 << 0.0;
    QTest::newRow("no number") << notANumber << 0.0;
    QTest::newRow("infinite") << infinity << 0.0;
    QTest::newRow("negative infinite") << -infinity << 0.0;
}

void tst_BasicConversions::anglesAreNormalised()
{
    QFETCH(double, degrees);
    QTEST(BasicConversions::normalizeAngle(degrees), "normalised");
}

void tst_BasicConversions::negativeZeroKeepsItsSign()
{
    const double angle = BasicConversions::normalizeAngle(-0.0);
    QCOMPARE(angle, 0.0);
    QVERIFY(std::signbit(angle));
}

void tst_BasicConversions::anglesBeyondAnyTurnStayInRange_data()
{
    QTest::addColumn<double>("degrees");

    QTest::newRow("more turns than a 64-bit integer holds") << 1e22;
    QTest::newRow("as many backwards") << -1e22;
    QTest::newRow("largest") << std::numeric_limits<double>::max();
    QTest::newRow("smallest") << std::numeric_limits<double>::lowest();
}

void tst_BasicConversions::anglesBeyondAnyTurnStayInRange()
{
    QFETCH(double, degrees);
    const double angle = BasicConversions::normalizeAngle(degrees);
    QVERIFY2(angle >= 0.0 && angle < 360.0, qPrintable(QString::number(angle)));
}

void tst_BasicConversions::wholeAnglesAreNormalised_data()
{
    QTest::addColumn<int>("degrees");
    QTest::addColumn<int>("normalised");

    QTest::newRow("zero") << 0 << 0;
    QTest::newRow("inside") << 359 << 359;
    QTest::newRow("full turn") << 360 << 0;
    QTest::newRow("two turns and five") << 725 << 5;
    QTest::newRow("minus one") << -1 << 359;
    QTest::newRow("negative full turn") << -360 << 0;
    QTest::newRow("negative turns") << -1000 << 80;
    // 2,147,483,520 is a multiple of 360.
    QTest::newRow("largest") << 2147483647 << 127;
    QTest::newRow("smallest") << std::numeric_limits<int>::min() << 232;
}

void tst_BasicConversions::wholeAnglesAreNormalised()
{
    QFETCH(int, degrees);
    QTEST(BasicConversions::normalizeAngle(degrees), "normalised");
}

void tst_BasicConversions::oddMultiplesOf45AreNudged_data()
{
    QTest::addColumn<double>("angle");
    QTest::addColumn<double>("adjusted");

    QTest::newRow("45") << 45.0 << 45.001;
    QTest::newRow("135") << 135.0 << 135.001;
    QTest::newRow("225") << 225.0 << 225.001;
    QTest::newRow("315") << 315.0 << 315.001;
    QTest::newRow("405") << 405.0 << 405.001;
    QTest::newRow("-45") << -45.0 << -44.999;
    QTest::newRow("-135") << -135.0 << -134.999;
    QTest::newRow("-225") << -225.0 << -224.999;
    QTest::newRow("-315") << -315.0 << -314.999;
    QTest::newRow("45, within the tolerance") << 45.0003 << 45.001;
    QTest::newRow("45, at the tolerance") << 45.0005 << 45.001;
    QTest::newRow("135, at the tolerance") << 135.0005 << 135.001;
    QTest::newRow("225, at the tolerance") << 225.0005 << 225.001;
    QTest::newRow("315, at the tolerance") << 315.0005 << 315.001;
    QTest::newRow("-45, within the tolerance") << -44.9998 << -44.999;
}

void tst_BasicConversions::oddMultiplesOf45AreNudged()
{
    QFETCH(double, angle);
    QTEST(BasicConversions::adjust45(angle), "adjusted");
}

void tst_BasicConversions::otherAnglesAreNotNudged_data()
{
    QTest::addColumn<double>("angle");

    QTest::newRow("0") << 0.0;
    QTest::newRow("90") << 90.0;
    QTest::newRow("180") << 180.0;
    QTest::newRow("270") << 270.0;
    QTest::newRow("360") << 360.0;
    QTest::newRow("-90") << -90.0;
    QTest::newRow("44") << 44.0;
    QTest::newRow("46") << 46.0;
    QTest::newRow("15") << 15.0;
    QTest::newRow("45, above the tolerance") << 45.0006;
    QTest::newRow("135, above the tolerance") << 135.0006;
    QTest::newRow("45, slightly below") << 44.9999;
    QTest::newRow("-45, slightly below") << -45.0001;
    QTest::newRow("-45, above the tolerance") << -44.9994;
    QTest::newRow("infinite") << infinity;
    QTest::newRow("negative infinite") << -infinity;
    QTest::newRow("no number") << notANumber;
    QTest::newRow("no 32-bit integer") << 1e300;
    QTest::newRow("no negative 32-bit integer") << -1e300;
}

void tst_BasicConversions::otherAnglesAreNotNudged()
{
    QFETCH(double, angle);
    QCOMPARE(BasicConversions::adjust45(angle), angle);
}

QTEST_MAIN(tst_BasicConversions)
#include "tst_basicconversions.moc"
