// SPDX-License-Identifier: BSD-3-Clause
#include "items/style/inklayers.h"
#include "tests/support/colours.h"
#include "tests/support/images.h"

#include <QRandomGenerator>
#include <QRegularExpression>
#include <QTest>

#include <vector>

using namespace Qt::StringLiterals;
using namespace Colours;

namespace {

constexpr QRgb paper = 0xFFF0E0D0;

/// What layers hold: ink, nothing, and everything that is neither.
constexpr QRgb kinds[] = { blackPixel, blackPixel, clearPixel, clearPixel, whitePixel, redPixel, 0x80000000,
    0xFF000001, 0x01000000 };

QImage randomLayer(QSize size, QRandomGenerator &random)
{
    QImage layer(size, QImage::Format_ARGB32_Premultiplied);
    for (int y = 0; y < size.height(); ++y) {
        for (int x = 0; x < size.width(); ++x)
            layer.setPixel(x, y, kinds[random.bounded(int(std::size(kinds)))]);
    }
    return layer;
}

std::vector<InkLayer> randomLayers(int count, QSize size)
{
    QRandomGenerator random { quint32(count) };
    std::vector<InkLayer> layers;
    layers.reserve(std::size_t(count));
    for (int i = 0; i < count; ++i)
        layers.push_back({ randomLayer(size, random), qRgb(10 + i, 20 + i, 30 + i) });
    return layers;
}

/// One pixel by the rules, one layer after the other.
QRgb recombinedPixel(const std::vector<InkLayer> &layers, int x, int y)
{
    QRgb result = layers.front().image.pixel(x, y) == clearPixel ? clearPixel : paper;
    for (const InkLayer &layer : layers) {
        if (layer.image.pixel(x, y) == blackPixel)
            result = layer.ink;
    }
    return result;
}

QImage recombinedPixelByPixel(const std::vector<InkLayer> &layers)
{
    QImage image(layers.front().image.size(), QImage::Format_ARGB32_Premultiplied);
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x)
            image.setPixel(x, y, recombinedPixel(layers, x, y));
    }
    return image;
}

} // namespace

class tst_InkLayers : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    void layersAreRecombinedByTheRules_data();
    void layersAreRecombinedByTheRules();
    void laterLayersCoverEarlierOnes_data();
    void laterLayersCoverEarlierOnes();
    void onlyTheFirstLayerBringsThePaper();
    void layersAreLeftAlone();
};

void tst_InkLayers::layersAreRecombinedByTheRules_data()
{
    QTest::addColumn<int>("layers");
    QTest::addColumn<QSize>("size");

    for (int layers = 1; layers <= 9; ++layers) {
        for (const QSize &size : { QSize(1, 1), QSize(7, 3), QSize(64, 16), QSize(101, 40) })
            QTest::addRow("%d layers of %d x %d", layers, size.width(), size.height()) << layers << size;
    }
}

void tst_InkLayers::layersAreRecombinedByTheRules()
{
    QFETCH(const int, layers);
    QFETCH(const QSize, size);
    const std::vector<InkLayer> inks = randomLayers(layers, size);
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::green); // nothing of which may stay
    recombineInkLayers(image, inks, paper);
    const QString difference = Images::difference(image, recombinedPixelByPixel(inks), u"ink-layers"_s);
    QVERIFY2(difference.isEmpty(), qPrintable(difference));
}

void tst_InkLayers::laterLayersCoverEarlierOnes_data()
{
    QTest::addColumn<int>("layers");

    for (int layers = 1; layers <= 9; ++layers)
        QTest::addRow("%d layers", layers) << layers;
}

void tst_InkLayers::laterLayersCoverEarlierOnes()
{
    QFETCH(const int, layers);
    // Column n is black up to layer n: it shows the ink of that layer.
    std::vector<InkLayer> inks;
    for (int layer = 0; layer < layers; ++layer) {
        QList<QRgb> row(layers, clearPixel);
        for (int column = layer; column < layers; ++column)
            row[column] = blackPixel;
        inks.push_back({ Images::imageOf({ row }), qRgb(0, 0, 100 + layer) });
    }
    QImage image(layers, 1, QImage::Format_ARGB32_Premultiplied);
    recombineInkLayers(image, inks, paper);
    for (int column = 0; column < layers; ++column)
        QCOMPARE(image.pixel(column, 0), qRgb(0, 0, 100 + column));
}

void tst_InkLayers::onlyTheFirstLayerBringsThePaper()
{
    const QImage first = Images::imageOf({ { whitePixel, clearPixel, clearPixel, 0x01000000 } });
    const QImage second = Images::imageOf({ { clearPixel, whitePixel, 0xFF000001, whitePixel } });
    QImage image(4, 1, QImage::Format_ARGB32_Premultiplied);
    recombineInkLayers(image, { { first, redPixel }, { second, bluePixel } }, yellowPixel);
    QCOMPARE(image, Images::imageOf({ { yellowPixel, clearPixel, clearPixel, yellowPixel } }));
}

void tst_InkLayers::layersAreLeftAlone()
{
    const std::vector<InkLayer> inks = randomLayers(5, { 20, 20 });
    const std::vector<InkLayer> before = randomLayers(5, { 20, 20 });
    QImage image(20, 20, QImage::Format_ARGB32_Premultiplied);
    recombineInkLayers(image, inks, paper);
    for (std::size_t layer = 0; layer < inks.size(); ++layer)
        QCOMPARE(inks[layer].image, before[layer].image);
}

QTEST_GUILESS_MAIN(tst_InkLayers)
#include "tst_inklayers.moc"
