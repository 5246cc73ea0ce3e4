// SPDX-License-Identifier: BSD-3-Clause
#include "label/proof.h"
#include "tests/label/inksplits.h"
#include "tests/label/photograph.h"
#include "tests/label/seencolour.h"

#include <QDir>
#include <QRegularExpression>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace InkSplits;
using SeenColour::Lab;

namespace {

/// At arm's length, dots are just about to vanish; three times as far, only their mean is left.
constexpr double armsLength = 300.0;
constexpr double farAway = 900.0;

QImage proofOfPlanes(const Planes &planes, const QList<QColor> &inks, double dpi)
{
    Separation separation;
    separation.paper = Qt::white;
    for (qsizetype ink = 0; ink < inks.size(); ++ink)
        separation.plates.push_back({ { {}, inks[ink] }, planes[std::size_t(ink)], 0, dpi });
    return proofOf(separation);
}

int squaredDistance(QRgb left, QRgb right)
{
    const int red = qRed(left) - qRed(right);
    const int green = qGreen(left) - qGreen(right);
    const int blue = qBlue(left) - qBlue(right);
    return red * red + green * green + blue * blue;
}

/// The plain way: each dot in the nearest colour by its RGB.
QImage thresholded(const QImage &picture, const QList<QColor> &inks)
{
    QImage proof(picture.size(), QImage::Format_RGB32);
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x) {
            QRgb nearest = white;
            for (const QColor &ink : inks) {
                if (squaredDistance(ink.rgb(), picture.pixel(x, y))
                    < squaredDistance(nearest, picture.pixel(x, y)))
                    nearest = ink.rgb();
            }
            proof.setPixel(x, y, nearest);
        }
    }
    return proof;
}

/// How much of an ink a pixel needs, ink by ink: black for what is dark, coloured inks for the distance
/// between its channels, in the order black, red, yellow.
int needed(QRgb pixel, qsizetype ink, bool isLast)
{
    const int most = std::max({ qRed(pixel), qGreen(pixel), qBlue(pixel) });
    const int least = std::min({ qRed(pixel), qGreen(pixel), qBlue(pixel) });
    if (ink == 0)
        return isLast ? 255 - qGray(pixel) : 255 - most;
    if (ink == 1)
        return std::max(0, qRed(pixel) - (isLast ? least : qGreen(pixel)));
    return std::max(0, std::min(qRed(pixel), qGreen(pixel)) - qBlue(pixel));
}

/// The other plain way: a picture of each ink's channel, which Qt dithers; the first ink covers the others.
QImage ditheredByChannel(const QImage &picture, const QList<QColor> &inks)
{
    QImage proof = filled(picture.size(), white);
    for (qsizetype ink = inks.size() - 1; ink >= 0; --ink) {
        QImage channel(picture.size(), QImage::Format_RGB32);
        for (int y = 0; y < picture.height(); ++y) {
            for (int x = 0; x < picture.width(); ++x)
                channel.setPixel(x, y, grey(255 - needed(picture.pixel(x, y), ink, ink == inks.size() - 1)));
        }
        const QImage mono = channel.convertToFormat(QImage::Format_Mono, Qt::MonoOnly | Qt::DiffuseDither);
        for (int y = 0; y < picture.height(); ++y) {
            for (int x = 0; x < picture.width(); ++x) {
                if (mono.pixel(x, y) == black)
                    proof.setPixel(x, y, inks[ink].rgb());
            }
        }
    }
    return proof;
}

/// All mixtures of the inks and the paper in steps that are as small as the number of inks lets them be.
std::vector<Lab> mixturesOf(const QList<QColor> &inks)
{
    const int steps = inks.size() == 1 ? 400 : inks.size() == 2 ? 60 : 24;
    std::vector<SeenColour::Light> lights { {} };
    std::vector<int> left { steps };
    for (const QColor &ink : inks) {
        const SeenColour::Light color = SeenColour::lightOf(ink.rgb());
        const std::size_t before = lights.size();
        for (std::size_t i = 0; i < before; ++i) {
            for (int share = 1; share <= left[i]; ++share) {
                SeenColour::Light light = lights[i];
                for (std::size_t channel = 0; channel < 3; ++channel)
                    light[channel] += color[channel] * share / steps;
                lights.push_back(light);
                left.push_back(left[i] - share);
            }
        }
    }
    std::vector<Lab> labs;
    for (std::size_t i = 0; i < lights.size(); ++i) {
        for (double &channel : lights[i])
            channel += double(left[i]) / steps; // the paper is white
        labs.push_back(SeenColour::labOf(lights[i]));
    }
    return labs;
}

/// Pixels all over a picture.
std::vector<std::size_t> samples(std::size_t count, std::size_t pixels)
{
    std::mt19937 random(1);
    std::vector<std::size_t> places(count);
    std::ranges::generate(places, [&] { return random() % pixels; });
    return places;
}

/// The mean difference that remains when each pixel has the best of all mixtures.
double bestReachable(
    const std::vector<Lab> &picture, const QList<QColor> &inks, const std::vector<std::size_t> &pixels)
{
    const std::vector<Lab> mixtures = mixturesOf(inks);
    double sum = 0.0;
    for (const std::size_t pixel : pixels) {
        double best = 1000.0;
        for (const Lab &mixture : mixtures)
            best = std::min(best, SeenColour::difference(picture[pixel], mixture));
        sum += best;
    }
    return sum / double(pixels.size());
}

/// For people who want to look: set VX_PROOFS to a folder.
void keep(const QImage &proof, const QString &name)
{
    const QString folder = qEnvironmentVariable("VX_PROOFS");
    if (!folder.isEmpty())
        QVERIFY(QDir().mkpath(folder) && proof.save(QDir(folder).filePath(name + u".png"_s)));
}

} // namespace

class tst_InkSplitPhotograph : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void differencesAreThoseOfThePublishedPairs_data();
    void differencesAreThoseOfThePublishedPairs();
    void looksLikeTheOriginal_data();
    void looksLikeTheOriginal();
};

void tst_InkSplitPhotograph::init()
{
    QTest::failOnWarning(QRegularExpression(u".*"_s));
}

// From the test data of Gaurav Sharma, Wencheng Wu and Edul Dalal, "The CIEDE2000 color-difference formula:
// implementation notes, supplementary test data, and mathematical observations", 2005.
void tst_InkSplitPhotograph::differencesAreThoseOfThePublishedPairs_data()
{
    QTest::addColumn<Lab>("left");
    QTest::addColumn<Lab>("right");
    QTest::addColumn<double>("difference");
    QTest::newRow("blues") << Lab { 50, 2.6772, -79.7751 } << Lab { 50, 0, -82.7485 } << 2.0425;
    QTest::newRow("more blues") << Lab { 50, 2.8361, -74.0200 } << Lab { 50, 0, -82.7485 } << 3.4412;
    QTest::newRow("a step of hue") << Lab { 50, -1.3802, -84.2814 } << Lab { 50, 0, -82.7485 } << 1.0000;
    QTest::newRow("across the hues") << Lab { 50, 2.5, 0 } << Lab { 50, 0, -2.5 } << 4.3065;
    QTest::newRow("far apart") << Lab { 50, 2.5, 0 } << Lab { 73, 25, -18 } << 27.1492;
    QTest::newRow("greens") << Lab { 60.2574, -34.0099, 36.2677 } << Lab { 60.4626, -34.1751, 39.4387 }
                            << 1.2644;
    QTest::newRow("dark") << Lab { 2.0776, 0.0795, -1.1350 } << Lab { 0.9033, -0.0636, -0.5514 } << 0.9082;
}

void tst_InkSplitPhotograph::differencesAreThoseOfThePublishedPairs()
{
    QFETCH(Lab, left);
    QFETCH(Lab, right);
    QFETCH(double, difference);
    QVERIFY(std::abs(SeenColour::difference(left, right) - difference) < 0.00006);
    QVERIFY(std::abs(SeenColour::difference(right, left) - difference) < 0.00006);
}

void tst_InkSplitPhotograph::looksLikeTheOriginal_data()
{
    QTest::addColumn<QList<QColor>>("inks");
    QTest::addColumn<double>("dpi");
    QTest::addColumn<double>("bound");
    const QColor red(200, 16, 46);
    const QColor yellow(255, 209, 0);
    const QList<QColor> one { Qt::black };
    const QList<QColor> two { Qt::black, red };
    const QList<QColor> three { Qt::black, red, yellow };
    QTest::newRow("black 203") << one << 203.0 << 19.5;
    QTest::newRow("black 300") << one << 300.0 << 18.3;
    QTest::newRow("black and red 203") << two << 203.0 << 17.8;
    QTest::newRow("black and red 300") << two << 300.0 << 16.4;
    QTest::newRow("black, red and yellow 203") << three << 203.0 << 15.4;
    QTest::newRow("black, red and yellow 300") << three << 300.0 << 13.6;
}

/// Seen from arm's length, the difference from the original is below the bound, and below what plain ways
/// give. From farther away, it is nearly the one that no print in these inks can avoid, because they make no
/// blue and green.
void tst_InkSplitPhotograph::looksLikeTheOriginal()
{
    QFETCH(QList<QColor>, inks);
    QFETCH(double, dpi);
    QFETCH(double, bound);
    const QImage picture = photograph(dpi);
    const double near = SeenColour::minuteOfArc(dpi, armsLength);
    const double far = SeenColour::minuteOfArc(dpi, farAway);
    const std::vector<Lab> nearPicture = SeenColour::blurred(picture, near);
    const std::vector<Lab> farPicture = SeenColour::blurred(picture, far);
    const std::vector<std::size_t> many = samples(20000, nearPicture.size());
    const std::vector<std::size_t> few = samples(500, nearPicture.size());
    const auto nearDifference = [&](const QImage &proof) {
        return SeenColour::meanDifference(nearPicture, SeenColour::blurred(proof, near), many);
    };
    const double thresholdOnly = nearDifference(thresholded(picture, inks));
    const double byChannel = nearDifference(ditheredByChannel(picture, inks));
    const double best = bestReachable(farPicture, inks, few);
    keep(picture, u"original-%1"_s.arg(dpi));
    for (const Dither dither : { Dither::Diffusion, Dither::Ordered }) {
        const QImage proof = proofOfPlanes(splitIntoInks(picture, inks, Qt::white, dither), inks, dpi);
        const double seen = nearDifference(proof);
        const double seenFar = SeenColour::meanDifference(farPicture, SeenColour::blurred(proof, far), few);
        const QString figures
            = u"%1 inks, %2 dpi, %3: %4 near, %5 far; thresholds %6, by channel %7, best %8"_s
                  .arg(inks.size())
                  .arg(dpi)
                  .arg(DitherNames::of(dither))
                  .arg(seen, 0, 'f', 2)
                  .arg(seenFar, 0, 'f', 2)
                  .arg(thresholdOnly, 0, 'f', 2)
                  .arg(byChannel, 0, 'f', 2)
                  .arg(best, 0, 'f', 2);
        qInfo().noquote() << figures;
        keep(proof, u"%1-inks-%2-%3"_s.arg(inks.size()).arg(dpi).arg(DitherNames::of(dither)));
        QVERIFY(seen < bound + (dither == Dither::Ordered ? 0.7 : 0.0));
        QVERIFY(seen < thresholdOnly);
        QVERIFY(seen < byChannel);
        QVERIFY(seenFar < best + 0.5);
    }
}

QTEST_APPLESS_MAIN(tst_InkSplitPhotograph)
#include "tst_inksplitphotograph.moc"
