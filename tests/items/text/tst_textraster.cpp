// SPDX-License-Identifier: BSD-3-Clause
#include "tests/support/colours.h"
#include "tests/support/images.h"
#include "tests/support/labeltexts.h"
#include "tests/support/nearness.h"
#include "tests/support/printimages.h"
#include "tests/support/scenes.h"
#include "tests/support/texts.h"

#include <QRegularExpression>
#include <QTest>

#include <algorithm>
#include <array>
#include <cmath>
#include <functional>

using namespace Qt::StringLiterals;
using namespace Colours;

namespace {

using Change = std::function<void(TextItem &)>;

const QColor fillColour(90, 120, 60);

struct Named
{
    const char *name;
    Change change;
};

const std::array changes {
    Named { "as made", [](TextItem &) {} },
    Named { "rotated", [](TextItem &item) { item.setItemRotation(30); } },
    Named { "turned over", [](TextItem &item) { item.setItemRotation(180); } },
    Named { "framed", [](TextItem &item) { item.setItemPenWidth(5); } },
    Named { "wide", [](TextItem &item) { item.setItemSize(QSizeF(333, 90)); } },
    Named { "high", [](TextItem &item) { item.setItemSize(QSizeF(70, 250)); } },
    Named { "mirrored",
        [](TextItem &item) {
            item.setItemHorizontalMirror(true);
            item.setItemVerticalMirror(true);
        } },
    Named { "framed, high and rotated",
        [](TextItem &item) {
            item.setItemPenWidth(5);
            item.setItemSize(QSizeF(70, 250));
            item.setItemRotation(200);
        } },
    Named { "framed, wide, rotated and mirrored",
        [](TextItem &item) {
            item.setItemPenWidth(3);
            item.setItemSize(QSizeF(333, 90));
            item.setItemRotation(75);
            item.setItemHorizontalMirror(true);
        } },
    Named { "moved by its transform",
        [](TextItem &item) {
            item.setItemPenWidth(4);
            item.setTransform(QTransform(1.0, 0.2, -0.5, 1.0, 12.0, -6.0));
        } },
};

void addChanges()
{
    QTest::addColumn<bool>("rich");
    QTest::addColumn<Change>("change");
    QTest::addColumn<double>("scaling");
    for (const bool rich : { false, true }) {
        for (const auto &[name, change] : changes) {
            for (const double scaling : { 1.0, 2.5 })
                QTest::addRow("%s, %s, %g", Texts::nameOf(rich), name, scaling) << rich << change << scaling;
        }
    }
}

std::unique_ptr<TextItem> made(bool rich, const Change &change, double scaling)
{
    std::unique_ptr<TextItem> item = Texts::made(rich);
    item->setPos(40, 50);
    change(*item);
    item->setPrintScaling(scaling);
    return item;
}

/// The corners of the text with its pads, in the scene.
std::array<QPointF, 2> paddedCorners(const TextItem &item)
{
    const QSizeF pads = item.getFramePads();
    const QSizeF size = item.type() == RichTextItem::Type ? item.getItemSize()
                                                          : item.QGraphicsTextItem::boundingRect().size();
    return { item.mapToScene(-pads.width(), -pads.height()),
        item.mapToScene(size.width() + pads.width(), size.height() + pads.height()) };
}

/// Half a pixel of the raster in the scene: as far as a size may be rounded, in each direction.
double halfAPixel(const TextItem &item, double scaling)
{
    const QPointF pixel = item.mapToScene(1.0 / scaling, 1.0 / scaling) - item.mapToScene(0, 0);
    const QPointF across = item.mapToScene(1.0 / scaling, 0) - item.mapToScene(0, 1.0 / scaling);
    return std::max(QLineF(QPointF(), pixel).length(), QLineF(QPointF(), across).length()) / 2.0 + 1e-9;
}

/// Whether all around a pixel is black, too.
bool isWithinBlack(const QImage &image, int x, int y)
{
    return x > 0 && y > 0 && x < image.width() - 1 && y < image.height() - 1
        && PrintImages::blackPixelsIn(image, QRect(x - 1, y - 1, 3, 3)) == 9;
}

/// An item without a text, of a fill that is neither black nor white.
std::unique_ptr<TextItem> filled(bool rich, int dither)
{
    std::unique_ptr<TextItem> item = Texts::made(rich, QString());
    item->setItemFillColor(fillColour);
    item->setPrintDitherMethod(Qt::ImageConversionFlags(dither));
    item->setPrintScaling(2.0);
    return item;
}

QImage rasterOf(TextItem &item)
{
    item.preparePrintImage();
    return item.getPreprintedImage();
}

} // namespace

/// Where the rasters of texts lie, and how they come to have but two colours.
class tst_TextRaster : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { LabelTexts::useKnownFont(); }
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    void rasterCoversTheText_data() { addChanges(); }
    void rasterCoversTheText();
    void sizeIsToldBefore_data() { addChanges(); }
    void sizeIsToldBefore();
    void handedOverRasterCoversTheText_data() { addChanges(); }
    void handedOverRasterCoversTheText();
    void sidesOfAnUnevenFrameAreInTheRaster();
    void frameOfABoxIsInTheRaster();
    void greysOfLettersAreNotDithered_data();
    void greysOfLettersAreNotDithered();
    void backgroundIsDithered_data();
    void backgroundIsDithered();
    void greyBackgroundIsDiffused_data() { Texts::addRows(); }
    void greyBackgroundIsDiffused();
};

void tst_TextRaster::rasterCoversTheText()
{
    QFETCH(const bool, rich);
    QFETCH(const Change, change);
    QFETCH(const double, scaling);
    const std::unique_ptr<TextItem> item = made(rich, change, scaling);
    const auto [first, last] = paddedCorners(*item);
    const QSizeF pads = item->getFramePads();
    const QTransform transform = item->transform();
    const QSize pixels = rasterOf(*item).size();
    QCOMPARE(item->getFramePads(), pads);
    QCOMPARE(item->transform(), transform);
    // The item's own point (0, 0) is now the corner of the raster.
    QVERIFY(areNear(item->mapToScene(0, 0), first));
    const QPointF corner = item->mapToScene(pixels.width() / scaling, pixels.height() / scaling);
    QVERIFY(QLineF(corner, last).length() <= halfAPixel(*item, scaling));
}

void tst_TextRaster::sizeIsToldBefore()
{
    QFETCH(const bool, rich);
    QFETCH(const Change, change);
    QFETCH(const double, scaling);
    const std::unique_ptr<TextItem> item = made(rich, change, scaling);
    const QPointF origin = item->mapToScene(0, 0);
    const QSizeF pads = item->getFramePads() * scaling;
    double x = -1.0;
    double y = -1.0;
    const QSize size = item->getItemAbsSize(x, y);
    QVERIFY(areNear({ x, y }, { pads.width(), pads.height() }));
    const QPointF shifted = item->mapToScene(-qRound(x), -qRound(y)) - origin;
    const QSizeF amount = item->ajustTextWithBorderOnImageAmount();
    QVERIFY(areNear({ amount.width(), amount.height() }, shifted));
    QCOMPARE(rasterOf(*item).size(), size);
}

void tst_TextRaster::handedOverRasterCoversTheText()
{
    QFETCH(const bool, rich);
    QFETCH(const Change, change);
    QFETCH(const double, scaling);
    const std::unique_ptr<TextItem> item = made(rich, change, scaling);
    item->setItemFillColor(red);
    item->setItemBrushStyle(MobraTypes::BrushLinearGradient);
    const auto [first, last] = paddedCorners(*item);
    QVERIFY(item->resetItemColors(red, false, false));
    QGraphicsScene scene;
    QVERIFY(item->addItemToPrintScene(&scene, scaling));
    const QGraphicsPixmapItem *raster = Scenes::onlyPixmap(scene);
    QVERIFY(raster);
    const QSize pixels = raster->pixmap().size();
    QVERIFY(areNear(raster->mapToScene(0, 0), first * scaling));
    const QPointF corner = raster->mapToScene(pixels.width(), pixels.height());
    QVERIFY(QLineF(corner, last * scaling).length() <= halfAPixel(*item, scaling) * scaling);
}

void tst_TextRaster::sidesOfAnUnevenFrameAreInTheRaster()
{
    SimpleTextItem label;
    const QSizeF natural = label.getItemSize();
    label.setItemBrushStyle(MobraTypes::BrushNone);
    label.setItemPenWidth(6);
    // Scales of 2 and 0.5 make pads of 3 and 12.
    QVERIFY(label.setItemSize(QSizeF(natural.width() * 2 + 6, natural.height() / 2 - 3)));
    QVERIFY(isNear(label.getFramePads().width(), 3));
    QVERIFY(isNear(label.getFramePads().height(), 12));
    label.setPrintScaling(2.0);
    const QImage image = rasterOf(label);
    const QSize text(qRound(natural.width() * 2), qRound(natural.height() * 2));
    QCOMPARE(image.size(), text + QSize(12, 48));
    const auto isBlack = [&image](const QRect &area) {
        return PrintImages::blackPixelsIn(image, area) == area.width() * area.height();
    };
    // But for the outermost pixels, at which a size may be rounded.
    QVERIFY(isBlack(QRect(1, 1, image.width() - 2, 22)));
    QVERIFY(isBlack(QRect(1, image.height() - 23, image.width() - 2, 22)));
    QVERIFY(isBlack(QRect(1, 1, 4, image.height() - 2)));
    QVERIFY(isBlack(QRect(image.width() - 5, 1, 4, image.height() - 2)));
    // The document's margin is empty: 4 units are 8 pixels.
    QCOMPARE(PrintImages::blackPixelsIn(image, QRect(7, 25, 6, text.height() - 2)), 0);
    QCOMPARE(PrintImages::blackPixelsIn(image, QRect(7, 25, text.width() - 2, 6)), 0);
}

void tst_TextRaster::frameOfABoxIsInTheRaster()
{
    RichTextItem box;
    box.setItemSize(QSizeF(60, 40));
    box.setItemBrushStyle(MobraTypes::BrushNone);
    box.setItemPenWidth(4);
    box.setItemPenJoinStyle(Qt::MiterJoin);
    box.setPrintScaling(2.0);
    const QImage image = rasterOf(box);
    QCOMPARE(image.size(), QSize(136, 96));
    const auto blackIn = [&image](int x, int y, int width, int height) {
        return PrintImages::blackPixelsIn(image, QRect(x, y, width, height));
    };
    QCOMPARE(blackIn(0, 0, 136, 8), 136 * 8);
    QCOMPARE(blackIn(0, 88, 136, 8), 136 * 8);
    QCOMPARE(blackIn(0, 0, 8, 96), 8 * 96);
    QCOMPARE(blackIn(128, 0, 8, 96), 8 * 96);
    QCOMPARE(blackIn(8, 8, 120, 80), 0);
}

void tst_TextRaster::greysOfLettersAreNotDithered_data()
{
    QTest::addColumn<bool>("rich");
    QTest::addColumn<int>("dither");
    QTest::addColumn<int>("grey");
    for (const bool rich : { false, true }) {
        for (const auto dither : { Qt::DiffuseDither, Qt::OrderedDither, Qt::ThresholdDither }) {
            for (const int grey : { 40, 100, 160, 220 })
                QTest::addRow("%s, dither %x, grey %d", Texts::nameOf(rich), uint(dither), grey)
                    << rich << int(dither) << grey;
        }
    }
}

void tst_TextRaster::greysOfLettersAreNotDithered()
{
    QFETCH(const bool, rich);
    QFETCH(const int, dither);
    QFETCH(const int, grey);
    const auto raster = [&](const QColor &colour) {
        const std::unique_ptr<TextItem> item = Texts::made(rich);
        item->setItemBrushStyle(MobraTypes::BrushNone);
        item->setItemTextColor(colour);
        item->setPrintDitherMethod(Qt::ImageConversionFlags(dither));
        item->setPrintScaling(2.0);
        return rasterOf(*item);
    };
    const QImage inBlack = raster(black);
    const QImage inGrey = raster(QColor(grey, grey, grey));
    QCOMPARE(inGrey.size(), inBlack.size());
    int within = 0;
    for (int y = 0; y < inBlack.height(); ++y) {
        for (int x = 0; x < inBlack.width(); ++x) {
            if (isWithinBlack(inBlack, x, y)) {
                ++within;
                QCOMPARE(inGrey.pixel(x, y), grey < 128 ? blackPixel : whitePixel);
            } else if (inBlack.pixel(x, y) == whitePixel) {
                QCOMPARE(inGrey.pixel(x, y), whitePixel);
            }
        }
    }
    QVERIFY(within > 1000);
}

void tst_TextRaster::backgroundIsDithered_data()
{
    QTest::addColumn<bool>("rich");
    QTest::addColumn<int>("dither");
    QTest::addColumn<int>("brush");
    for (const bool rich : { false, true }) {
        for (const auto dither : { Qt::OrderedDither, Qt::ThresholdDither }) {
            for (const int brush : { 1, int(Qt::Dense5Pattern), 15, 16 })
                QTest::addRow("%s, dither %x, brush %d", Texts::nameOf(rich), uint(dither), brush)
                    << rich << int(dither) << brush;
        }
    }
}

void tst_TextRaster::backgroundIsDithered()
{
    QFETCH(const bool, rich);
    QFETCH(const int, dither);
    QFETCH(const int, brush);
    const std::unique_ptr<TextItem> item = filled(rich, dither);
    item->setItemBrushStyleInt(brush);
    item->updateItemBrush();
    const QSizeF size = rich ? item->getItemSize() : LabelTexts::naturalSizeOf(*item);
    const QSize pixels(qRound(size.width() * 2), qRound(size.height() * 2));
    const QImage expected = PrintImages::monoStepByStep(pixels, Qt::NoPen, item->getItemBrush(),
        Qt::ImageConversionFlags(dither),
        [&pixels](QPainter &painter) { painter.drawRect(QRect(QPoint(), pixels)); });
    const QImage image = rasterOf(*item);
    QCOMPARE(image.size(), pixels);
    const QRect inside(0, 0, pixels.width() - 1, pixels.height() - 1);
    QCOMPARE(Images::difference(image.copy(inside), expected.copy(inside), u"text-background"_s), QString());
}

void tst_TextRaster::greyBackgroundIsDiffused()
{
    QFETCH(const bool, rich);
    const std::unique_ptr<TextItem> item = filled(rich, Qt::DiffuseDither);
    const QImage image = rasterOf(*item);
    const QRect inside(0, 0, image.width() - 1, image.height() - 1);
    const double share
        = double(PrintImages::blackPixelsIn(image, inside)) / (inside.width() * inside.height());
    QVERIFY(std::abs(share - (1.0 - qGray(fillColour.rgb()) / 255.0)) < 0.03);
    // Evenly: any ten pixels of a row hold both.
    for (int x = 0; x + 10 < image.width(); x += 10) {
        const int black = PrintImages::blackPixelsIn(image, QRect(x, 20, 10, 1));
        QVERIFY(black > 2 && black < 9);
    }
}

QTEST_MAIN(tst_TextRaster)
#include "tst_textraster.moc"
