// SPDX-License-Identifier: BSD-3-Clause
#include "tests/support/colours.h"
#include "tests/support/fillableshape.h"
#include "tests/support/oddnumbers.h"
#include "tests/support/scenes.h"

#include <QGraphicsPixmapItem>
#include <QGraphicsScene>
#include <QRegularExpression>
#include <QTest>

#include <memory>

using namespace Qt::StringLiterals;
using namespace Colours;
using Images::imageOf;
using MobraTypes::BrushStyle;
using Scenes::onlyPixmap;

namespace {

/// An item whose print colours draw one pixel each, so that layers tell what earlier inks left in them.
class PixelPerInkShape : public FillableShape
{
public:
    void paint(QPainter *painter, const QStyleOptionGraphicsItem * /*option*/, QWidget * /*widget*/) override
    {
        painter->fillRect(QRectF(m_column, 0, 1, 1), Qt::black);
    }
    bool resetItemColors(const QColor &printColour, bool /*keepBlack*/, bool /*keepOthers*/) override
    {
        m_column = printColour == red ? 0 : 1;
        return true;
    }
    QSize getItemAbsSize(double &x, double &y) override
    {
        x = 1.0;
        y = 2.0;
        return { 4, 3 };
    }
    Item *createItemCopy() override
    {
        auto *copy = new PixelPerInkShape;
        copyItemProperties(copy, true);
        return copy;
    }

private:
    int m_column = 0;
};

QImage emptyImage(QSize size)
{
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    image.fill(yellow);
    return image;
}

/// A shape that has been reduced to be printed through its image.
std::unique_ptr<FillableShape> shapeWithPrintImage()
{
    auto shape = std::make_unique<FillableShape>();
    shape->setItemPenStyle(Qt::NoPen);
    shape->setItemFillColor(red);
    shape->setItemBrushStyle(MobraTypes::BrushLinearGradient);
    shape->resetItemColors(red, false, false);
    return shape;
}

} // namespace

class tst_PartialColor : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    // Recombining
    void recombinedImage_data();
    void recombinedImage();
    void recombiningOnlyNullLayersGivesANullImage();
    void recombiningDropsTheAlphaOfInks();

    // Rendering
    void partialRenderingNeedsAGradient_data();
    void partialRenderingNeedsAGradient();
    void partialRenderingNeedsAnInkAndAPaper_data();
    void partialRenderingNeedsAnInkAndAPaper();
    void partialRenderingCombinesThePreparedImages();
    void partialRenderingPaintsWhatNeedsNoImage();
    void partialRenderingWithoutPreparedImageIsNull();
    void partialRenderingKeepsEarlierInksInLaterLayers();
    void partialRenderingLeavesTheItemAlone();

    // Print scene
    void printSceneTakesThePreparedImage();
    void printSceneStaysFiniteAtAnyScale_data();
    void printSceneStaysFiniteAtAnyScale();
    void printSceneTakesTheItemWithoutPreparedImage_data();
    void printSceneTakesTheItemWithoutPreparedImage();
    void printSceneTakesAPictureAtOtherScales();
    void missingPrintSceneTakesNothing();
};

// Recombining

void tst_PartialColor::recombinedImage_data()
{
    QTest::addColumn<QList<QColor>>("palette");
    QTest::addColumn<QList<QImage>>("layers");
    QTest::addColumn<QSize>("size");
    QTest::addColumn<QImage>("expected");

    const QList<QColor> redBlueYellow { red, blue, yellow };
    const QList<QColor> redYellow { red, yellow };
    QTest::newRow("black becomes the ink, the rest of the first layer the paper")
        << redYellow << QList<QImage> { imageOf({ { blackPixel, whitePixel }, { clearPixel, bluePixel } }) }
        << QSize(2, 2) << imageOf({ { redPixel, yellowPixel }, { clearPixel, yellowPixel } });
    QTest::newRow("nearly black is paper")
        << redYellow << QList<QImage> { imageOf({ { 0xFF010000, 0x80000000 } }) } << QSize(2, 1)
        << imageOf({ { yellowPixel, yellowPixel } });
    QTest::newRow("later inks lie above, later paper does not")
        << redBlueYellow
        << QList<QImage> { imageOf({ { blackPixel, blackPixel, whitePixel, clearPixel } }),
               imageOf({ { blackPixel, whitePixel, blackPixel, whitePixel } }) }
        << QSize(4, 1) << imageOf({ { bluePixel, redPixel, bluePixel, clearPixel } });
    QTest::newRow("the first layer that is not null brings the paper")
        << redBlueYellow << QList<QImage> { QImage(), imageOf({ { blackPixel, whitePixel, clearPixel } }) }
        << QSize(3, 1) << imageOf({ { bluePixel, yellowPixel, clearPixel } });
    QTest::newRow("null layers in between are passed over")
        << QList<QColor> { red, blue, black, yellow }
        << QList<QImage> { imageOf({ { whitePixel, blackPixel } }), QImage(),
               imageOf({ { blackPixel, clearPixel } }) }
        << QSize(2, 1) << imageOf({ { blackPixel, redPixel } });
    QTest::newRow("four inks")
        << QList<QColor> { red, blue, black, white, yellow }
        << QList<QImage> { imageOf({ { blackPixel, whitePixel, whitePixel, whitePixel, whitePixel } }),
               imageOf({ { clearPixel, blackPixel, clearPixel, clearPixel, clearPixel } }),
               imageOf({ { clearPixel, clearPixel, blackPixel, clearPixel, clearPixel } }),
               imageOf({ { clearPixel, clearPixel, clearPixel, blackPixel, clearPixel } }) }
        << QSize(5, 1) << imageOf({ { redPixel, bluePixel, blackPixel, whitePixel, yellowPixel } });
    QTest::newRow("transparent paper")
        << QList<QColor> { red, transparent } << QList<QImage> { imageOf({ { blackPixel, whitePixel } }) }
        << QSize(2, 1) << imageOf({ { redPixel, clearPixel } });
    QTest::newRow("smaller layer") << redYellow << QList<QImage> { imageOf({ { blackPixel } }) }
                                   << QSize(2, 2)
                                   << imageOf({ { redPixel, clearPixel }, { clearPixel, clearPixel } });
    QTest::newRow("larger layer") << redYellow
                                  << QList<QImage> { imageOf(
                                         { { blackPixel, whitePixel }, { blackPixel, blackPixel } }) }
                                  << QSize(2, 1) << imageOf({ { redPixel, yellowPixel } });
    QTest::newRow("layers of two sizes")
        << redBlueYellow
        << QList<QImage> { imageOf({ { whitePixel, whitePixel }, { whitePixel, whitePixel } }),
               imageOf({ { blackPixel, blackPixel } }) }
        << QSize(2, 2) << imageOf({ { bluePixel, bluePixel }, { yellowPixel, yellowPixel } });
}

void tst_PartialColor::recombinedImage()
{
    QFETCH(const QList<QColor>, palette);
    QFETCH(const QList<QImage>, layers);
    QFETCH(const QSize, size);
    QFETCH(const QImage, expected);
    FillableShape shape;
    shape.setItemPalette(palette);
    QImage image = emptyImage(size);
    shape.recombineColorsOnImage(image, int(palette.size()) - 1, layers, size);
    const QString difference = Images::difference(image, expected, u"recombined"_s);
    QVERIFY2(difference.isEmpty(), qPrintable(difference));
}

void tst_PartialColor::recombiningOnlyNullLayersGivesANullImage()
{
    FillableShape shape;
    shape.setItemPalette({ red, blue, yellow });
    QImage image = emptyImage({ 2, 2 });
    shape.recombineColorsOnImage(image, 2, { QImage(), QImage() }, { 2, 2 });
    QVERIFY(image.isNull());

    image = emptyImage({ 2, 2 });
    shape.recombineColorsOnImage(image, 0, { imageOf({ { blackPixel } }) }, { 2, 2 });
    QVERIFY(image.isNull());
}

void tst_PartialColor::recombiningDropsTheAlphaOfInks()
{
    FillableShape shape;
    shape.setItemPalette({ translucentRed, yellow });
    QImage image = emptyImage({ 1, 1 });
    shape.recombineColorsOnImage(image, 1, { imageOf({ { blackPixel } }) }, { 1, 1 });
    QCOMPARE(image.pixel(0, 0), redPixel);
}

// Rendering

void tst_PartialColor::partialRenderingNeedsAGradient_data()
{
    QTest::addColumn<QColor>("fill");
    QTest::addColumn<BrushStyle>("style");
    QTest::addColumn<bool>("renders");

    QTest::newRow("none") << red << MobraTypes::BrushNone << false;
    QTest::newRow("solid") << red << MobraTypes::BrushSolid << false;
    QTest::newRow("dense") << red << MobraTypes::BrushDense4 << false;
    QTest::newRow("linear") << red << MobraTypes::BrushLinearGradient << true;
    QTest::newRow("radial") << red << MobraTypes::BrushRadialGradient << true;
    QTest::newRow("conical") << red << MobraTypes::BrushConicalGradient << true;
    QTest::newRow("transparent linear") << transparent << MobraTypes::BrushLinearGradient << false;
}

void tst_PartialColor::partialRenderingNeedsAGradient()
{
    QFETCH(const QColor, fill);
    QFETCH(const BrushStyle, style);
    QFETCH(const bool, renders);
    FillableShape shape;
    shape.setItemPalette({ red, yellow });
    shape.setItemBrushStyle(MobraTypes::BrushLinearGradient);
    shape.setItemFillColor(fill);
    shape.setItemBrushStyle(style);
    QCOMPARE(shape.partialColorRender().isNull(), !renders);
}

void tst_PartialColor::partialRenderingNeedsAnInkAndAPaper_data()
{
    QTest::addColumn<QList<QColor>>("palette");
    QTest::addColumn<bool>("renders");

    QTest::newRow("no colour") << QList<QColor> {} << false;
    QTest::newRow("paper") << QList<QColor> { red } << false;
    QTest::newRow("ink and paper") << QList<QColor> { red, yellow } << true;
    QTest::newRow("four inks and paper") << QList<QColor> { blue, black, red, white, yellow } << true;
    QTest::newRow("only other inks") << QList<QColor> { blue, black, yellow } << false;
    QTest::newRow("the paper is no ink") << QList<QColor> { blue, red } << false;
}

void tst_PartialColor::partialRenderingNeedsAnInkAndAPaper()
{
    QFETCH(const QList<QColor>, palette);
    QFETCH(const bool, renders);
    FillableShape shape;
    shape.setItemPenStyle(Qt::NoPen);
    shape.setItemFillColor(red);
    shape.setItemBrushStyle(MobraTypes::BrushLinearGradient);
    shape.setItemPalette(palette);
    QCOMPARE(shape.partialColorRender().isNull(), !renders);
}

void tst_PartialColor::partialRenderingCombinesThePreparedImages()
{
    FillableShape shape;
    shape.setItemSize(QSizeF(2.5, 1.0));
    shape.setItemPenStyle(Qt::NoPen);
    shape.setItemFillColor(red);
    shape.setItemBrushStyle(MobraTypes::BrushLinearGradient);
    shape.setItemPalette({ blue, red, yellow });

    // The prepared image is one black pixel; the size is 2.5 rounded up by 1.
    const QImage image = shape.partialColorRender();
    QCOMPARE(image.format(), QImage::Format_ARGB32_Premultiplied);
    const QString difference
        = Images::difference(image, imageOf({ { redPixel, clearPixel, clearPixel } }), u"partial-prepared"_s);
    QVERIFY2(difference.isEmpty(), qPrintable(difference));
}

void tst_PartialColor::partialRenderingPaintsWhatNeedsNoImage()
{
    // A near-white gradient loses its brush, the outline of the shape is one pixel.
    FillableShape shape;
    shape.setItemSize(QSizeF(2.0, 2.0));
    shape.setItemPenColor(blue);
    shape.setItemFillColor(nearWhite);
    shape.setItemBrushStyle(MobraTypes::BrushRadialGradient);
    shape.setItemPalette({ red, blue, yellow });
    const QString difference = Images::difference(shape.partialColorRender(),
        imageOf({ { bluePixel, clearPixel }, { clearPixel, clearPixel } }), u"partial-painted"_s);
    QVERIFY2(difference.isEmpty(), qPrintable(difference));
}

void tst_PartialColor::partialRenderingWithoutPreparedImageIsNull()
{
    FillableShape shape;
    shape.prepares = false;
    shape.setItemPenStyle(Qt::NoPen);
    shape.setItemFillColor(red);
    shape.setItemBrushStyle(MobraTypes::BrushLinearGradient);
    shape.setItemPalette({ red, yellow });
    QVERIFY(shape.partialColorRender().isNull());
}

void tst_PartialColor::partialRenderingKeepsEarlierInksInLaterLayers()
{
    // Drawn one to the right and two down; the second layer holds the first ink's pixel too and lies above
    // it.
    PixelPerInkShape shape;
    shape.setItemFillColor(red);
    shape.setItemBrushStyle(MobraTypes::BrushLinearGradient);
    shape.setItemPalette({ red, blue, yellow });
    const QString difference = Images::difference(shape.partialColorRender(),
        imageOf({ { clearPixel, clearPixel, clearPixel, clearPixel },
            { clearPixel, clearPixel, clearPixel, clearPixel },
            { clearPixel, bluePixel, bluePixel, clearPixel } }),
        u"partial-layers"_s);
    QVERIFY2(difference.isEmpty(), qPrintable(difference));
}

void tst_PartialColor::partialRenderingLeavesTheItemAlone()
{
    FillableShape shape;
    shape.setItemFillColor(red);
    shape.setItemBrushStyle(MobraTypes::BrushLinearGradient);
    shape.setItemPalette({ red, yellow });
    QVERIFY(!shape.partialColorRender().isNull());
    QCOMPARE(shape.getItemFillColor(), red);
    QCOMPARE(shape.getItemPenColor(), black);
    QCOMPARE(shape.itemFlags(), 0x81U);
    QCOMPARE(shape.preparations, 0);
}

// Print scene

void tst_PartialColor::printSceneTakesThePreparedImage()
{
    const std::unique_ptr<FillableShape> shape = shapeWithPrintImage();
    shape->setTransform(QTransform(0.0, 1.0, -1.0, 0.0, 30.0, 40.0));
    shape->setPos(5.0, 6.0);
    shape->setZValue(2.5);
    QGraphicsScene scene;
    QVERIFY(shape->addItemToPrintScene(&scene, 3.0));

    const QGraphicsPixmapItem *pixmap = onlyPixmap(scene);
    QVERIFY(pixmap);
    QCOMPARE(pixmap->pixmap().toImage().convertToFormat(QImage::Format_ARGB32_Premultiplied),
        imageOf({ { blackPixel } }));
    QCOMPARE(pixmap->transform(), QTransform(0.0, 1.0, -1.0, 0.0, 90.0, 120.0));
    QCOMPARE(pixmap->pos(), QPointF(15.0, 18.0));
    QCOMPARE(pixmap->zValue(), 2.5);
    QVERIFY(pixmap->flags() & QGraphicsItem::ItemStacksBehindParent);
    QVERIFY(!shape->scene());
    QVERIFY(!shape->getPreprintedImage().isNull());
}

void tst_PartialColor::printSceneStaysFiniteAtAnyScale_data()
{
    QTest::addColumn<double>("scale");

    for (const auto &[name, value] : oddNumbers)
        QTest::newRow(name) << value;
    QTest::newRow("1e300") << 1e300;
}

void tst_PartialColor::printSceneStaysFiniteAtAnyScale()
{
    QFETCH(const double, scale);
    const std::unique_ptr<FillableShape> shape = shapeWithPrintImage();
    shape->setTransform(QTransform(0.0, 1.0, -1.0, 0.0, 30.0, 40.0));
    shape->setPos(5.0, 0.0);
    QGraphicsScene scene;
    QVERIFY(shape->addItemToPrintScene(&scene, scale));
    QVERIFY(onlyPixmap(scene));
    QVERIFY(isFinite(scene.itemsBoundingRect()));
}

void tst_PartialColor::printSceneTakesTheItemWithoutPreparedImage_data()
{
    QTest::addColumn<bool>("throughImage");
    QTest::addColumn<bool>("hasImage");

    QTest::newRow("image that is not asked for") << false << true;
    QTest::newRow("asked for and missing") << true << false;
    QTest::newRow("neither") << false << false;
}

void tst_PartialColor::printSceneTakesTheItemWithoutPreparedImage()
{
    QFETCH(const bool, throughImage);
    QFETCH(const bool, hasImage);
    std::unique_ptr<FillableShape> shape
        = throughImage ? shapeWithPrintImage() : std::make_unique<FillableShape>();
    shape->setPreprintedImage(hasImage ? imageOf({ { blackPixel } }) : QImage());
    QGraphicsScene scene;
    QVERIFY(!shape->addItemToPrintScene(&scene, 1.4));
    const FillableShape *handedOver = shape.release(); // the scene owns it now
    QCOMPARE(scene.items(), QList<QGraphicsItem *> { const_cast<FillableShape *>(handedOver) });
}

void tst_PartialColor::printSceneTakesAPictureAtOtherScales()
{
    FillableShape shape;
    shape.setItemSize(QSizeF(4, 2));
    shape.setItemPenColor(red);
    shape.setPos(10.0, 20.0);
    shape.setZValue(-1.0);
    QGraphicsScene scene;
    QVERIFY(shape.addItemToPrintScene(&scene, 2.0));

    const QGraphicsPixmapItem *pixmap = onlyPixmap(scene);
    QVERIFY(pixmap);
    QCOMPARE(pixmap->pos(), QPointF(20.0, 40.0));
    QCOMPARE(pixmap->zValue(), -1.0);
    QVERIFY(pixmap->flags() & QGraphicsItem::ItemStacksBehindParent);
    QVERIFY(!shape.scene());
    // The one painted pixel becomes four.
    const QImage expected = imageOf(
        { { redPixel, redPixel, clearPixel, clearPixel, clearPixel, clearPixel, clearPixel, clearPixel },
            { redPixel, redPixel, clearPixel, clearPixel, clearPixel, clearPixel, clearPixel, clearPixel },
            QList<QRgb>(8, clearPixel), QList<QRgb>(8, clearPixel) });
    const QString difference = Images::difference(pixmap->pixmap().toImage(), expected, u"print-picture"_s);
    QVERIFY2(difference.isEmpty(), qPrintable(difference));
}

void tst_PartialColor::missingPrintSceneTakesNothing()
{
    FillableShape plain;
    QVERIFY(!plain.addItemToPrintScene(nullptr, 1.0));
    QVERIFY(!plain.addItemToPrintScene(nullptr, 2.0));
    QVERIFY(!shapeWithPrintImage()->addItemToPrintScene(nullptr, 1.0));
}

QTEST_MAIN(tst_PartialColor)
#include "tst_partialcolor.moc"
