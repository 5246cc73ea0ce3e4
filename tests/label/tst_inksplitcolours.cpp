// SPDX-License-Identifier: BSD-3-Clause
#include "tests/label/inksplits.h"

#include <QRegularExpression>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace InkSplits;

namespace {

struct Palette
{
    QList<QColor> inks;
    QColor paper;

    [[nodiscard]] QRgb color(int index) const { return index == 0 ? paper.rgb() : inks[index - 1].rgb(); }
    [[nodiscard]] int count() const { return int(inks.size()) + 1; }
};

Palette randomPalette(int inks, std::mt19937 &random)
{
    const auto color = [&random] { return QColor::fromRgb(quint32(random()) | 0xFF000000U); };
    Palette palette { {}, color() };
    while (palette.inks.size() < inks)
        palette.inks.append(color());
    return palette;
}

/// Which colour of the palette each pixel is to have exactly, or -1.
using Exact = std::vector<int>;

/// Noise with rectangles of exact colours, which lie beside each other too.
Exact addSolids(QImage &image, const Palette &palette, std::mt19937 &random)
{
    Exact exact(std::size_t(image.width()) * std::size_t(image.height()), -1);
    for (int i = 0; i < 60; ++i) {
        const int index = int(random() % unsigned(palette.count()));
        const QRect place
            = QRect(int(random() % 100), int(random() % 80), 1 + int(random() % 25), 1 + int(random() % 25))
            & image.rect();
        for (int y = place.top(); y <= place.bottom(); ++y) {
            for (int x = place.left(); x <= place.right(); ++x) {
                const int at = y * image.width() + x;
                image.setPixel(x, y, palette.color(index));
                exact[std::size_t(at)] = index;
            }
        }
    }
    return exact;
}

/// The mean light of what is printed, channel by channel.
std::array<double, 3> printedLight(const Planes &planes, const Palette &palette, const QRect &area)
{
    std::array<double, 3> light {};
    double paper = 1.0;
    const auto add = [&light](QRgb color, double share) {
        light[0] += share * lightOf(qRed(color));
        light[1] += share * lightOf(qGreen(color));
        light[2] += share * lightOf(qBlue(color));
    };
    for (std::size_t ink = 0; ink < planes.size(); ++ink) {
        const double share = coverage(planes[ink], area);
        add(palette.color(int(ink) + 1), share);
        paper -= share;
    }
    add(palette.color(0), paper);
    return light;
}

/// The colour of a mixture in random shares.
QRgb randomMixture(const Palette &palette, std::mt19937 &random)
{
    std::array<double, 3> light {};
    double sum = 0.0;
    for (int i = 0; i < palette.count(); ++i) {
        const double share = std::pow(double(random() % 1000) / 1000.0, 3);
        const QRgb color = palette.color(i);
        light[0] += share * lightOf(qRed(color));
        light[1] += share * lightOf(qGreen(color));
        light[2] += share * lightOf(qBlue(color));
        sum += share;
    }
    return qRgb(valueOf(light[0] / sum), valueOf(light[1] / sum), valueOf(light[2] / sum));
}

const Palette threeInks { { Qt::black, QColor(200, 16, 46), QColor(255, 209, 0) }, Qt::white };

} // namespace

class tst_InkSplitColours : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void greysKeepTheirLight_data();
    void greysKeepTheirLight();
    void rampsKeepTheirLight();
    void mixturesKeepTheirLight_data();
    void mixturesKeepTheirLight();
    void exactColoursAreSolid_data();
    void exactColoursAreSolid();
    void everyDotHasOneInkAtMost();
    void ofEqualInksTheFirstPrints();
    void inkOfThePapersColourDoesNotPrint();
    void unreachableColoursBecomeTheNearest();
    void unreachableColoursDoNotSpill();
    void greysHaveNoColouredDots();
};

void tst_InkSplitColours::init()
{
    QTest::failOnWarning(QRegularExpression(u".*"_s));
}

void tst_InkSplitColours::greysKeepTheirLight_data()
{
    QTest::addColumn<int>("value");
    for (int value = 5; value < 255; value += 10)
        QTest::addRow("%d", value) << value;
}

/// Within a hundredth of the light of white, from the very first row on.
void tst_InkSplitColours::greysKeepTheirLight()
{
    QFETCH(int, value);
    const QImage image = filled({ 192, 192 }, grey(value));
    for (const Dither dither : { Dither::Diffusion, Dither::Ordered }) {
        const Planes planes = splitIntoInks(image, { Qt::black }, Qt::white, dither);
        const double light = 1.0 - coverage(planes[0], image.rect());
        QVERIFY2(std::abs(light - lightOf(value)) < 0.01, qPrintable(QString::number(light)));
    }
}

void tst_InkSplitColours::rampsKeepTheirLight()
{
    QImage ramp(1024, 256, QImage::Format_RGB32);
    for (int y = 0; y < ramp.height(); ++y) {
        for (int x = 0; x < ramp.width(); ++x)
            ramp.setPixel(x, y, grey(x / 4));
    }
    for (const Dither dither : { Dither::Diffusion, Dither::Ordered }) {
        const QImage plane = splitIntoInks(ramp, { Qt::black }, Qt::white, dither)[0];
        for (int left = 0; left < ramp.width(); left += 64) {
            double expected = 0.0;
            for (int x = left; x < left + 64; ++x)
                expected += (1.0 - lightOf(x / 4)) / 64.0;
            const double covered = coverage(plane, { left, 0, 64, ramp.height() });
            QVERIFY2(std::abs(covered - expected) < 0.015,
                qPrintable(u"%1: %2 for %3"_s.arg(left).arg(covered).arg(expected)));
        }
    }
}

void tst_InkSplitColours::mixturesKeepTheirLight_data()
{
    QTest::addColumn<int>("inks");
    for (int inks = 1; inks <= 8; ++inks)
        QTest::addRow("%d inks", inks) << inks;
}

/// Within 0.02 of the light in each channel, of which the 8 bits of the picture take up to 0.005.
void tst_InkSplitColours::mixturesKeepTheirLight()
{
    QFETCH(int, inks);
    std::mt19937 random { unsigned(inks) };
    for (int i = 0; i < 12; ++i) {
        const Palette palette = randomPalette(inks, random);
        const QRgb color = randomMixture(palette, random);
        const QImage image = filled({ 192, 192 }, color);
        for (const Dither dither : { Dither::Diffusion, Dither::Ordered }) {
            const auto light = printedLight(
                splitIntoInks(image, palette.inks, palette.paper, dither), palette, image.rect());
            const double worst = std::max({ std::abs(light[0] - lightOf(qRed(color))),
                std::abs(light[1] - lightOf(qGreen(color))), std::abs(light[2] - lightOf(qBlue(color))) });
            QVERIFY2(worst < 0.02,
                qPrintable(u"%1, palette %2: %3"_s.arg(DitherNames::of(dither)).arg(i).arg(worst)));
        }
    }
}

void tst_InkSplitColours::exactColoursAreSolid_data()
{
    mixturesKeepTheirLight_data();
}

void tst_InkSplitColours::exactColoursAreSolid()
{
    QFETCH(int, inks);
    std::mt19937 random { unsigned(inks) + 100 };
    const Palette palette = randomPalette(inks, random);
    QImage image = noise({ 123, 97 }, unsigned(inks));
    const Exact exact = addSolids(image, palette, random);
    for (const Dither dither : allDithers) {
        const Planes planes = splitIntoInks(image, palette.inks, palette.paper, dither);
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x) {
                const int at = y * image.width() + x;
                const int index = exact[std::size_t(at)];
                for (int ink = 0; ink < inks && index >= 0; ++ink)
                    QCOMPARE(planes[std::size_t(ink)].pixelIndex(x, y), ink + 1 == index ? 1 : 0);
            }
        }
    }
}

void tst_InkSplitColours::everyDotHasOneInkAtMost()
{
    std::mt19937 random(77);
    const Palette palette = randomPalette(8, random);
    const QImage image = noise({ 131, 60 }, 12);
    for (const Dither dither : allDithers) {
        const Planes planes = splitIntoInks(image, palette.inks, palette.paper, dither);
        int printed = 0;
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x) {
                QVERIFY(inksAt(planes, x, y) <= 1);
                printed += inksAt(planes, x, y);
            }
        }
        QVERIFY(printed > 0 && printed < 131 * 60);
    }
}

void tst_InkSplitColours::ofEqualInksTheFirstPrints()
{
    const QImage image = noise({ 60, 40 }, 2);
    for (const Dither dither : allDithers) {
        const Planes planes = splitIntoInks(image, { Qt::red, Qt::black, Qt::red }, Qt::white, dither);
        const Planes expected = splitIntoInks(image, { Qt::red, Qt::black }, Qt::white, dither);
        QCOMPARE(planes[0], expected[0]);
        QCOMPARE(planes[1], expected[1]);
        QVERIFY(dotsIn(planes[0], image.rect()) > 0);
        QCOMPARE(dotsIn(planes[2], image.rect()), 0);
    }
}

void tst_InkSplitColours::inkOfThePapersColourDoesNotPrint()
{
    const QImage image = noise({ 60, 40 }, 4);
    for (const Dither dither : allDithers) {
        const Planes planes = splitIntoInks(image, { Qt::white, Qt::black }, Qt::white, dither);
        QCOMPARE(dotsIn(planes[0], image.rect()), 0);
        QCOMPARE(planes[1], splitIntoInks(image, { Qt::black }, Qt::white, dither)[0]);
        QCOMPARE(dotsIn(splitIntoInks(image, { Qt::white }, Qt::white, dither)[0], image.rect()), 0);
    }
}

// L of blue is 0.452 in Oklab. The nearest grey has the same L, and 0.452 to the power 3, or 0.092, of the
// light of white.
void tst_InkSplitColours::unreachableColoursBecomeTheNearest()
{
    const QImage image = filled({ 192, 192 }, qRgb(0, 0, 255));
    for (const Dither dither : { Dither::Diffusion, Dither::Ordered }) {
        const double covered
            = coverage(splitIntoInks(image, { Qt::black }, Qt::white, dither)[0], image.rect());
        QVERIFY2(std::abs(covered - 0.908) < 0.01, qPrintable(QString::number(covered)));
    }
}

/// Right of an area that the inks cannot print, a grey has its light in the first dots.
void tst_InkSplitColours::unreachableColoursDoNotSpill()
{
    for (const QRgb color : { qRgb(0, 255, 0), qRgb(0, 0, 255), qRgb(0, 255, 255), qRgb(255, 0, 255) }) {
        QImage image = filled({ 256, 256 }, grey(188));
        for (int y = 0; y < 256; ++y)
            std::fill_n(reinterpret_cast<QRgb *>(image.scanLine(y)), 128, color);
        const Planes planes = splitIntoInks(image, threeInks.inks, threeInks.paper, Dither::Diffusion);
        const QRect beside(128, 16, 6, 224);
        QVERIFY(std::abs(coverage(planes[0], beside) - 0.497) < 0.05);
        QVERIFY(coverage(planes[1], beside) + coverage(planes[2], beside) < 0.01);
    }
}

void tst_InkSplitColours::greysHaveNoColouredDots()
{
    for (int value = 8; value < 255; value += 13) {
        const QImage image = filled({ 128, 128 }, grey(value));
        for (const Dither dither : { Dither::Diffusion, Dither::Ordered }) {
            const Planes planes = splitIntoInks(image, threeInks.inks, threeInks.paper, dither);
            const double coloured = coverage(planes[1], image.rect()) + coverage(planes[2], image.rect());
            QVERIFY2(coloured < 0.002,
                qPrintable(u"%1 %2: %3"_s.arg(DitherNames::of(dither)).arg(value).arg(coloured)));
        }
    }
}

QTEST_APPLESS_MAIN(tst_InkSplitColours)
#include "tst_inksplitcolours.moc"
