// SPDX-License-Identifier: BSD-3-Clause
#include "label/bluenoise.h"
#include "label/inkpalette.h"

#include <QRegularExpression>
#include <QTest>

#include <cmath>
#include <random>
#include <set>

using namespace Qt::StringLiterals;
using Oklab::Color;

namespace {

bool isNear(const Color &left, const Color &right, double difference)
{
    return std::sqrt(Oklab::squaredDistance(left, right)) <= difference;
}

Color lightOf(const Mixture &mixture, const std::vector<Color> &points)
{
    Color sum {};
    for (std::size_t i = 0; i < points.size(); ++i) {
        for (std::size_t channel = 0; channel < 3; ++channel)
            sum[channel] += mixture[i] * points[i][channel];
    }
    return sum;
}

/// Whether no share is negative and all are 1 together.
bool isMixture(const Mixture &mixture)
{
    double sum = 0.0;
    for (const double share : mixture) {
        if (share < 0.0)
            return false;
        sum += share;
    }
    return std::abs(sum - 1.0) < 1e-9;
}

/// The shorter way around the square.
int around(int step)
{
    return std::min(std::abs(step), BlueNoise::Side - std::abs(step));
}

} // namespace

class tst_InkPalette : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void oklabOfPublishedColours();
    void lightIsThatOfTheStandard();
    void nearestMixturesByHand_data();
    void nearestMixturesByHand();
    void noMixtureIsNearerThanTheNearest();
    void mixturesMeetWhatTheInksCanMake();
    void unreachableColoursGetTheNearestMixture();
    void thresholdsAreAllThere();
    void lowThresholdsLieApart();
    void halfOfTheThresholdsIsEven();
};

void tst_InkPalette::init()
{
    QTest::failOnWarning(QRegularExpression(u".*"_s));
}

// The primary colours as they are commonly quoted, to the digits quoted.
void tst_InkPalette::oklabOfPublishedColours()
{
    QVERIFY(isNear(Oklab::of({ 0, 0, 0 }), { 0, 0, 0 }, 1e-9));
    QVERIFY(isNear(Oklab::of({ 1, 1, 1 }), { 1, 0, 0 }, 1e-6));
    QVERIFY(isNear(Oklab::of({ 1, 0, 0 }), { 0.627955, 0.224863, 0.125846 }, 2e-6));
    QVERIFY(isNear(Oklab::of({ 0, 1, 0 }), { 0.866440, -0.233888, 0.179498 }, 2e-6));
    QVERIFY(isNear(Oklab::of({ 0, 0, 1 }), { 0.452014, -0.032457, -0.311528 }, 2e-6));
    // An eighth of the light, and its negative, are half as far from black.
    QVERIFY(isNear(Oklab::of({ 0.125, 0, 0 }), { 0.3139775, 0.1124315, 0.062923 }, 2e-6));
    QVERIFY(isNear(Oklab::of({ -0.125, 0, 0 }), { -0.3139775, -0.1124315, -0.062923 }, 2e-6));
}

void tst_InkPalette::lightIsThatOfTheStandard()
{
    for (int value = 0; value < 256; ++value) {
        const double part = value / 255.0;
        const double expected = part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
        QVERIFY(std::abs(Oklab::lightOf(part) - expected) < 1e-12);
        QVERIFY(isNear(Oklab::lightOf(qRgb(value, 0, 255)), { expected, 0, 1 }, 1e-12));
    }
}

void tst_InkPalette::nearestMixturesByHand_data()
{
    QTest::addColumn<std::vector<Color>>("points");
    QTest::addColumn<Color>("nearest");
    using Points = std::vector<Color>;
    QTest::newRow("one point") << Points { { 3, 4, 5 } } << Color { 3, 4, 5 };
    QTest::newRow("middle of a line") << Points { { 1, -1, 2 }, { 1, 1, 2 } } << Color { 1, 0, 2 };
    QTest::newRow("end of a line") << Points { { 1, 1, 0 }, { 3, 2, 0 } } << Color { 1, 1, 0 };
    QTest::newRow("equal points") << Points { { 0, 2, 0 }, { 0, 2, 0 }, { 0, 2, 0 } } << Color { 0, 2, 0 };
    QTest::newRow("points in a line")
        << Points { { -2, 1, 0 }, { 1, 1, 0 }, { 5, 1, 0 } } << Color { 0, 1, 0 };
    QTest::newRow("face") << Points { { 2, 0, 0 }, { 0, 2, 0 }, { 0, 0, 2 } }
                          << Color { 2. / 3, 2. / 3, 2. / 3 };
    QTest::newRow("edge of a face") << Points { { 1, 0, 0 }, { 0, 1, 0 }, { 4, 4, 4 } }
                                    << Color { 0.5, 0.5, 0 };
    QTest::newRow("within a body") << Points { { 1, 1, 1 }, { -1, -1, 1 }, { -1, 1, -1 }, { 1, -1, -1 } }
                                   << Color { 0, 0, 0 };
    QTest::newRow("corner at the origin")
        << Points { { 0, 0, 0 }, { 1, 0, 0 }, { 0, 1, 0 } } << Color { 0, 0, 0 };
}

void tst_InkPalette::nearestMixturesByHand()
{
    QFETCH(std::vector<Color>, points);
    QFETCH(Color, nearest);
    const Mixture mixture = mixtureNearestToOrigin(points);
    QVERIFY(isMixture(mixture));
    QVERIFY(isNear(lightOf(mixture, points), nearest, 1e-6));
}

/// A point is the nearest of a body if the body lies wholly behind the plane through it that faces the
/// origin.
void tst_InkPalette::noMixtureIsNearerThanTheNearest()
{
    std::mt19937 random(3);
    const auto number = [&random] { return double(random() % 2001) / 1000.0 - 1.0; };
    for (int round = 0; round < 2000; ++round) {
        std::vector<Color> points(1 + random() % 9);
        const Color shift { number(), number(), number() };
        for (Color &point : points)
            point = { number() + shift[0], number() + shift[1], number() + shift[2] };
        const Mixture mixture = mixtureNearestToOrigin(points);
        QVERIFY(isMixture(mixture));
        const Color nearest = lightOf(mixture, points);
        const double square = Oklab::squaredDistance(nearest, {});
        for (const Color &point : points) {
            const double along = nearest[0] * point[0] + nearest[1] * point[1] + nearest[2] * point[2];
            QVERIFY2(along >= square - 1e-6, qPrintable(QString::number(round)));
        }
    }
}

void tst_InkPalette::mixturesMeetWhatTheInksCanMake()
{
    const InkPalette palette({ Qt::black, Qt::red, Qt::yellow }, Qt::white);
    // A quarter of white, black, red and yellow: 0.75 of red light, 0.5 of green, 0.25 of blue.
    const Mixture mixture = palette.mixtureFor({ 0.75, 0.5, 0.25 });
    for (std::size_t i = 0; i < 4; ++i)
        QVERIFY(std::abs(mixture[i] - 0.25) < 1e-5);
}

/// No mixture in steps of a fiftieth is seen as nearer.
void tst_InkPalette::unreachableColoursGetTheNearestMixture()
{
    const InkPalette palette({ Qt::black, QColor(200, 16, 46) }, Qt::white);
    constexpr int steps = 50;
    for (const QRgb color : { 0xFF0000FFU, 0xFF00FF00U, 0xFF4080D0U, 0xFFFFFF00U, 0xFF00FFFFU, 0xFF203010U,
             0xFFFF00FFU, 0xFFFF0000U, 0xFF000040U }) {
        const Color seen = Oklab::of(Oklab::lightOf(color));
        const auto distance = [&](const Mixture &mixture) {
            return Oklab::squaredDistance(Oklab::of(palette.lightOf(mixture)), seen);
        };
        const Mixture found = palette.mixtureFor(Oklab::lightOf(color));
        QVERIFY(isMixture(found));
        for (int first = 0; first <= steps; ++first) {
            for (int second = 0; first + second <= steps; ++second) {
                Mixture other {};
                other[0] = double(first) / steps;
                other[1] = double(second) / steps;
                other[2] = 1.0 - other[0] - other[1];
                QVERIFY2(distance(found) <= distance(other) + 1e-5, qPrintable(QString::number(color, 16)));
            }
        }
    }
}

void tst_InkPalette::thresholdsAreAllThere()
{
    std::set<int> thresholds;
    for (int y = 0; y < BlueNoise::Side; ++y)
        thresholds.insert(BlueNoise::row(y), BlueNoise::row(y) + BlueNoise::Side);
    QCOMPARE(int(thresholds.size()), 4096);
    QCOMPARE(*thresholds.begin(), 0);
    QCOMPARE(*thresholds.rbegin(), 4095);
    QCOMPARE(BlueNoise::row(BlueNoise::Side), BlueNoise::row(0));
}

/// 64 dots on 64 × 64 places would be 8.6 apart in the best of grids; scattered ones touch.
void tst_InkPalette::lowThresholdsLieApart()
{
    std::vector<QPoint> dots;
    for (int y = 0; y < BlueNoise::Side; ++y) {
        for (int x = 0; x < BlueNoise::Side; ++x) {
            if (BlueNoise::row(y)[x] < 64)
                dots.emplace_back(x, y);
        }
    }
    for (std::size_t i = 0; i < dots.size(); ++i) {
        for (std::size_t j = 0; j < i; ++j) {
            const QPoint step = dots[i] - dots[j];
            QVERIFY(std::hypot(around(step.x()), around(step.y())) > 5.0);
        }
    }
}

/// In each square of 8 × 8, half of the dots is 32; of scattered ones, it would be 24 to 40.
void tst_InkPalette::halfOfTheThresholdsIsEven()
{
    for (int top = 0; top < BlueNoise::Side; top += 8) {
        for (int left = 0; left < BlueNoise::Side; left += 8) {
            int low = 0;
            for (int place = 0; place < 64; ++place)
                low += BlueNoise::row(top + place / 8)[left + place % 8] < BlueNoise::Count / 2 ? 1 : 0;
            QVERIFY(std::abs(low - 32) <= 5);
        }
    }
}

QTEST_APPLESS_MAIN(tst_InkPalette)
#include "tst_inkpalette.moc"
