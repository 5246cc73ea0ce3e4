// SPDX-License-Identifier: BSD-3-Clause
#include "items/core/limits.h"

#include <QRegularExpression>
#include <QTest>

#include <limits>

using namespace Qt::StringLiterals;

namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

} // namespace

class tst_Limits : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    void limitsAreThoseOfTheDocumentation();
    void numbersBecomeGeometry_data();
    void numbersBecomeGeometry();
    void numbersBecomePenWidths_data();
    void numbersBecomePenWidths();
    void numbersBecomeDivisors_data();
    void numbersBecomeDivisors();
    void numbersBecomeIntegers_data();
    void numbersBecomeIntegers();
    void onlyFiniteNumbersPass();
};

void tst_Limits::limitsAreThoseOfTheDocumentation()
{
    QCOMPARE(qint64(Limits::MaxImageSide), qint64(65535));
    QCOMPARE(qint64(Limits::MaxImagePixels), qint64(128'000'000));
}

void tst_Limits::numbersBecomeGeometry_data()
{
    QTest::addColumn<double>("value");
    QTest::addColumn<double>("geometry");

    QTest::newRow("ordinary") << -12.75 << -12.75;
    QTest::newRow("largest") << 1e7 << 1e7;
    QTest::newRow("above the largest") << 10000000.5 << 1e7;
    QTest::newRow("below the smallest") << -10000000.5 << -1e7;
    QTest::newRow("infinite") << infinity << 1e7;
    QTest::newRow("negative infinite") << -infinity << -1e7;
    QTest::newRow("no number") << notANumber << 0.0;
}

void tst_Limits::numbersBecomeGeometry()
{
    QFETCH(double, value);
    QTEST(Limits::geometry(value), "geometry");
}

void tst_Limits::numbersBecomePenWidths_data()
{
    QTest::addColumn<double>("value");
    QTest::addColumn<double>("width");

    QTest::newRow("ordinary") << 2.5 << 2.5;
    QTest::newRow("widest") << 1e4 << 1e4;
    QTest::newRow("above the widest") << 10000.5 << 1e4;
    QTest::newRow("infinite") << infinity << 1e4;
    QTest::newRow("negative") << -3.0 << 0.0;
    QTest::newRow("no number") << notANumber << 0.0;
}

void tst_Limits::numbersBecomePenWidths()
{
    QFETCH(double, value);
    QTEST(Limits::penWidth(value), "width");
}

void tst_Limits::numbersBecomeDivisors_data()
{
    QTest::addColumn<double>("value");
    QTest::addColumn<double>("reciprocal");

    QTest::newRow("ordinary") << 4.0 << 0.25;
    QTest::newRow("negative") << -4.0 << -0.25;
    QTest::newRow("zero") << 0.0 << 1e9;
    QTest::newRow("smaller than the smallest") << 1e-10 << 1e9;
    QTest::newRow("negative, smaller than the smallest") << -1e-10 << -1e9;
    QTest::newRow("smallest") << 1e-9 << 1e9;
}

void tst_Limits::numbersBecomeDivisors()
{
    QFETCH(double, value);
    QTEST(1.0 / Limits::divisor(value), "reciprocal");
}

void tst_Limits::numbersBecomeIntegers_data()
{
    QTest::addColumn<double>("value");
    QTest::addColumn<int>("integer");

    QTest::newRow("half") << 2.5 << 3;
    QTest::newRow("negative half") << -2.5 << -3;
    QTest::newRow("below half") << 2.49 << 2;
    QTest::newRow("largest") << 2147483647.0 << 2147483647;
    QTest::newRow("above the largest") << 2147483648.0 << 2147483647;
    QTest::newRow("infinite") << infinity << 2147483647;
    QTest::newRow("no number") << notANumber << 0;
}

void tst_Limits::numbersBecomeIntegers()
{
    QFETCH(double, value);
    QTEST(Limits::toInt(value), "integer");
}

void tst_Limits::onlyFiniteNumbersPass()
{
    QCOMPARE(Limits::finite(-1e308, 5.0), -1e308);
    QCOMPARE(Limits::finite(notANumber, 5.0), 5.0);
    QCOMPARE(Limits::finite(infinity, 5.0), 5.0);
    QCOMPARE(Limits::finite(-infinity, 5.0), 5.0);
}

QTEST_MAIN(tst_Limits)
#include "tst_limits.moc"
