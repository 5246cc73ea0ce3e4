// SPDX-License-Identifier: BSD-3-Clause
#include "platform/zint/pixelregion.h"

#include <QRegularExpression>
#include <QTest>
#include <QTransform>

#include <array>
#include <cmath>
#include <random>
#include <vector>

using namespace Qt::StringLiterals;
using Bars = std::vector<QRectF>;

Q_DECLARE_METATYPE(Bars)

namespace {

/// A square of modules, each dark or light by chance, and its bars: the runs of every row.
class RandomModules
{
public:
    static constexpr int Side = 12;

    explicit RandomModules(std::mt19937 &random)
    {
        for (int y = 0; y < Side; ++y) {
            for (int x = 0; x < Side; ++x)
                m_dark[y][x] = random() % 2 == 0;
        }
    }

    [[nodiscard]] bool isDark(QPointF module) const
    {
        const int x = int(std::floor(module.x()));
        const int y = int(std::floor(module.y()));
        return x >= 0 && y >= 0 && x < Side && y < Side && m_dark[y][x];
    }

    [[nodiscard]] Bars bars() const
    {
        Bars found;
        for (int y = 0; y < Side; ++y) {
            for (int x = 0; x < Side; ++x) {
                if (!m_dark[y][x])
                    continue;
                const int left = x;
                while (x < Side && m_dark[y][x])
                    ++x;
                found.emplace_back(left, y, x - left, 1);
            }
        }
        return found;
    }

private:
    std::array<std::array<bool, Side>, Side> m_dark {};
};

/// How far a point is from the next edge of a module.
double distanceToEdge(QPointF module)
{
    const auto distance = [](double value) { return std::abs(value - std::round(value)); };
    return std::min(distance(module.x()), distance(module.y()));
}

} // namespace

/// The dots that bars cover.
class tst_PixelRegion : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    void dotsOfWhichTheCentreIsCoveredAreIn_data();
    void dotsOfWhichTheCentreIsCoveredAreIn();
    void everyDotFollowsItsModule_data();
    void everyDotFollowsItsModule();
    void edgesThatDifferInTheLastDigitsMeet();
    void rectanglesAreKeptByRightAngles_data();
    void rectanglesAreKeptByRightAngles();
    void farCoordinatesAreLimited();
};

void tst_PixelRegion::dotsOfWhichTheCentreIsCoveredAreIn_data()
{
    QTest::addColumn<Bars>("bars");
    QTest::addColumn<QTransform>("toDevice");
    QTest::addColumn<QRegion>("dots");

    const QTransform none;
    const QTransform turned(0, 2, -2, 0, 0, 0);
    const QTransform mirrored(-3, 0, 0, 3, 30, 0);
    QTest::newRow("none") << Bars {} << none << QRegion();
    QTest::newRow("whole dots") << Bars { { 1, 2, 3, 4 } } << none << QRegion(1, 2, 3, 4);
    QTest::newRow("parts of dots") << Bars { { 0.6, 0.4, 2, 2 } } << none << QRegion(1, 0, 2, 2);
    QTest::newRow("less than a dot, with its centre")
        << Bars { { 0.4, 0.4, 0.2, 0.2 } } << none << QRegion(0, 0, 1, 1);
    QTest::newRow("less than a dot, beside its centre") << Bars { { 0.6, 0, 0.3, 1 } } << none << QRegion();
    QTest::newRow("scaled") << Bars { { 1, 1, 1, 2 } } << QTransform::fromScale(2, 3) << QRegion(2, 3, 2, 6);
    QTest::newRow("turned right") << Bars { { 1, 0, 2, 1 } } << turned << QRegion(-2, 2, 2, 4);
    QTest::newRow("mirrored") << Bars { { 1, 0, 2, 1 } } << mirrored << QRegion(21, 0, 6, 3);
    QTest::newRow("meeting") << Bars { { 0, 0, 2, 1 }, { 2, 0, 2, 1 } } << none << QRegion(0, 0, 4, 1);
    QTest::newRow("meeting when small")
        << Bars { { 0, 0, 2, 4 }, { 3, 0, 1, 4 } } << QTransform::fromScale(0.4, 1) << QRegion(0, 0, 2, 4);
    QTest::newRow("of all heights")
        << Bars { { 0, 0, 1, 9 }, { 4, 0, 2, 3 }, { 2, 3, 2, 2 }, { 4, 5, 1, 1 } } << none
        << QRegion(0, 0, 1, 9).united(QRect(4, 0, 2, 3)).united(QRect(2, 3, 2, 2)).united(QRect(4, 5, 1, 1));
    QTest::newRow("with a band of nothing")
        << Bars { { 5, 1, 1, 1 }, { 0, 4, 1, 1 } } << none << QRegion(5, 1, 1, 1).united(QRect(0, 4, 1, 1));
    QTest::newRow("from bottom to top") << Bars { { 0, 4, 3, 1 }, { 1, 2, 1, 2 },
        { 0, 0, 3, 1 } } << none << QRegion(0, 4, 3, 1).united(QRect(1, 2, 1, 2)).united(QRect(0, 0, 3, 1));
}

void tst_PixelRegion::dotsOfWhichTheCentreIsCoveredAreIn()
{
    QFETCH(Bars, bars);
    QFETCH(QTransform, toDevice);
    QFETCH(QRegion, dots);
    QVERIFY(Zint::pixelRegion(bars, toDevice).xored(dots).isEmpty());
}

void tst_PixelRegion::everyDotFollowsItsModule_data()
{
    QTest::addColumn<QTransform>("turn");

    QTest::newRow("upright") << QTransform();
    QTest::newRow("turned right") << QTransform(0, 1, -1, 0, 0, 0);
    QTest::newRow("upside down") << QTransform(-1, 0, 0, -1, 0, 0);
    QTest::newRow("mirrored") << QTransform(-1, 0, 0, 1, 0, 0);
}

void tst_PixelRegion::everyDotFollowsItsModule()
{
    QFETCH(QTransform, turn);
    std::mt19937 random(12);
    std::uniform_real_distribution<double> scale(0.3, 5.0);
    int compared = 0;
    for (int round = 0; round < 60; ++round) {
        const RandomModules modules(random);
        // Every third at a scale at which many edges fall on centres.
        const bool isEven = round % 3 == 0;
        const double sx = isEven ? 2.5 : scale(random);
        const double sy = isEven ? 1.5 : scale(random);
        const QTransform toDevice = QTransform::fromScale(sx, sy) * turn * QTransform::fromTranslate(3, 4.25);
        const QTransform back = toDevice.inverted();
        const QRegion dots = Zint::pixelRegion(modules.bars(), toDevice);
        const QRect around = dots.boundingRect().adjusted(-2, -2, 2, 2);
        for (int y = around.top(); y <= around.bottom(); ++y) {
            for (int x = around.left(); x <= around.right(); ++x) {
                const QPointF module = back.map(QPointF(x + 0.5, y + 0.5));
                if (distanceToEdge(module) < 1e-5)
                    continue;
                ++compared;
                QCOMPARE(dots.contains(QPoint(x, y)), modules.isDark(module));
            }
        }
    }
    QVERIFY(compared > 20'000);
}

void tst_PixelRegion::edgesThatDifferInTheLastDigitsMeet()
{
    // 0.1 + 0.2 is not 0.3, and at this scale both lie at the centre of a dot.
    const double sum = 0.1 + 0.2;
    QVERIFY(sum != 0.3);
    const Bars bars { { 0, 0, 1, 0.3 }, { 0, sum, 1, 1 } };
    const Bars reversed { { 0, 0, 1, sum }, { 0, 0.3, 1, 1 } };
    const QTransform toDevice = QTransform::fromScale(1, 45); // 13.5 and 58.5
    for (const Bars &meeting : { bars, reversed }) {
        const QRegion dots = Zint::pixelRegion(meeting, toDevice);
        QVERIFY(dots.xored(QRegion(0, 0, 1, 58)).isEmpty());
    }
}

void tst_PixelRegion::rectanglesAreKeptByRightAngles_data()
{
    QTest::addColumn<QTransform>("toDevice");
    QTest::addColumn<bool>("kept");

    QTest::newRow("nothing") << QTransform() << true;
    QTest::newRow("scale and translation") << QTransform(2, 0, 0, 3, 4, 5) << true;
    QTest::newRow("mirror") << QTransform::fromScale(-1, 1) << true;
    QTest::newRow("right angle") << QTransform().rotate(90) << true;
    QTest::newRow("half turn") << QTransform().rotate(180) << true;
    QTest::newRow("rotation") << QTransform().rotate(30) << false;
    QTest::newRow("shear") << QTransform().shear(0.5, 0) << false;
    QTest::newRow("no scale") << QTransform::fromScale(0, 0) << true;
    QTest::newRow("not a number") << QTransform::fromScale(std::nan(""), 1) << false;
    QTest::newRow("infinite") << QTransform::fromTranslate(HUGE_VAL, 0) << false;
    QTest::newRow("perspective") << QTransform(1, 0, 0.1, 0, 1, 0, 0, 0, 1) << false;
}

void tst_PixelRegion::rectanglesAreKeptByRightAngles()
{
    QFETCH(QTransform, toDevice);
    QTEST(Zint::keepsRectangles(toDevice), "kept");
}

void tst_PixelRegion::farCoordinatesAreLimited()
{
    const Bars bars { { -1, 0, 2, 1 } };
    const QRect place = Zint::pixelRegion(bars, QTransform::fromScale(1e300, 5)).boundingRect();
    QCOMPARE(place, QRect(-1'000'000'000, 0, 2'000'000'000, 5));
}

QTEST_APPLESS_MAIN(tst_PixelRegion)
#include "tst_pixelregion.moc"
