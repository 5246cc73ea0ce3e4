// SPDX-License-Identifier: BSD-3-Clause
#include "items/style/fillableitem.h"
#include "tests/support/bareshape.h"
#include "tests/support/images.h"
#include "tests/support/itemrecords.h"
#include "tests/support/standins.h"

#include <QBrush>
#include <QConicalGradient>
#include <QGraphicsPixmapItem>
#include <QGraphicsScene>
#include <QLinearGradient>
#include <QPainter>
#include <QRadialGradient>
#include <QRegularExpression>
#include <QTest>

#include <memory>

using namespace Qt::StringLiterals;

namespace {

const QColor red(255, 0, 0);
const QColor blue(0, 0, 255);
const QColor yellow(255, 255, 0);
const QColor black(0, 0, 0);
const QColor white(255, 255, 255);
const QColor nearWhite(255, 255, 254);
const QColor transparent(0, 0, 0, 0);
const QColor translucentRed(255, 0, 0, 128);

constexpr QRgb redPixel = 0xFFFF0000;
constexpr QRgb bluePixel = 0xFF0000FF;
constexpr QRgb yellowPixel = 0xFFFFFF00;
constexpr QRgb blackPixel = 0xFF000000;
constexpr QRgb whitePixel = 0xFFFFFFFF;
constexpr QRgb clearPixel = 0x00000000;

using MobraTypes::BrushStyle;

/// An image of the given rows of pixels.
QImage imageOf(const QList<QList<QRgb>> &rows)
{
    QImage image(int(rows.first().size()), int(rows.size()), QImage::Format_ARGB32_Premultiplied);
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x)
            image.setPixel(x, y, rows[y][x]);
    }
    return image;
}

QImage emptyImage(QSize size)
{
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    image.fill(yellow);
    return image;
}

/// Counts how often a print image is asked for, and prepares one of a single black pixel.
class FillableShape : public BareShape<FillableItem>
{
public:
    int preparations = 0;
    bool prepares = true;

    void preparePrintImage() override
    {
        ++preparations;
        if (prepares)
            setPreprintedImage(imageOf({ { blackPixel } }));
    }
    void paint(QPainter *painter, const QStyleOptionGraphicsItem * /*option*/, QWidget * /*widget*/) override
    {
        painter->setPen(Qt::NoPen);
        painter->setBrush(getItemBrush());
        painter->drawRect(boundingRect());
        if (getItemPenStyle() != Qt::NoPen)
            painter->fillRect(QRectF(0, 0, 1, 1), getItemPenColor());
    }
    Item *createItemCopy() override
    {
        auto *copy = new FillableShape;
        copyItemProperties(copy, true);
        copy->prepares = prepares;
        return copy;
    }
};

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

struct Stop
{
    double position;
    QColor colour;
};

void compareStops(const QBrush &brush, const QList<Stop> &expected)
{
    QVERIFY(brush.gradient());
    const QGradientStops stops = brush.gradient()->stops();
    QCOMPARE(stops.size(), expected.size());
    for (qsizetype i = 0; i < stops.size(); ++i) {
        QCOMPARE(stops[i].first, expected[i].position);
        QCOMPARE(stops[i].second, expected[i].colour);
    }
}

/// What an outline does to a reduction: its rules have their own test, here they only feed the fill's rules.
struct Outline
{
    const char *name;
    QColor colour;
    Qt::PenStyle style;
    bool inPrintColour; ///< visible and red
    bool printsIfBlackIsKept;
    bool printsIfBlackIsDropped;
    bool printsNegatively;
};

const Outline outlines[] = {
    { "red pen", red, Qt::SolidLine, true, true, true, false },
    { "black pen", black, Qt::SolidLine, false, true, false, true },
    { "dashed black pen", black, Qt::DashLine, false, false, false, true },
    { "no pen", red, Qt::NoPen, false, false, false, false },
    { "transparent pen", transparent, Qt::SolidLine, false, false, false, true },
};

struct Fill
{
    const char *name;
    QColor colour;
};

const Fill fills[] = {
    { "transparent", transparent },
    { "near-white", nearWhite },
    { "white", white },
    { "black", black },
    { "red", red },
    { "blue", blue },
    { "translucent red", translucentRed },
};

struct Style
{
    const char *name;
    BrushStyle style;
};

const Style styles[] = {
    { "no brush", MobraTypes::BrushNone },
    { "solid", MobraTypes::BrushSolid },
    { "dense", MobraTypes::BrushDense4 },
    { "linear", MobraTypes::BrushLinearGradient },
};

/// What is left of a fill after a reduction.
struct Reduced
{
    QColor colour;
    BrushStyle style;
    bool printed;
    bool throughImage;
};

/// The positive rules for red, written out: what becomes of a fill, given whether black is kept and whether
/// the outline prints.
Reduced reducedForRed(const QColor &fill, BrushStyle style, bool blackIsKept, bool outlinePrints)
{
    if (fill == transparent || fill == nearWhite)
        return { fill, MobraTypes::BrushNone, outlinePrints, false };
    if (style == MobraTypes::BrushLinearGradient) {
        if (fill == red)
            return { black, style, true, true };
        if (outlinePrints)
            return { white, style, true, true };
        return { white, MobraTypes::BrushSolid, false, false };
    }
    if (fill == red)
        return { black, style, true, false };
    if (fill == black && style == MobraTypes::BrushSolid && blackIsKept)
        return { black, style, true, false };
    return { white, style, outlinePrints, false };
}

/// The negative rules for red, written out.
Reduced reducedNegativelyForRed(const QColor &fill, BrushStyle style, bool outlinePrints)
{
    if (fill == transparent || fill == nearWhite)
        return { fill, MobraTypes::BrushNone, outlinePrints, false };
    if (style == MobraTypes::BrushLinearGradient) {
        if (fill != red)
            return { black, style, true, true };
        if (outlinePrints)
            return { white, style, true, true };
        return { white, MobraTypes::BrushSolid, false, false };
    }
    if (fill == red)
        return { white, style, outlinePrints, false };
    return { black, style, true, false };
}

/// The flag word after a reduction of an item that was read-only before.
unsigned int flagsAfter(const Reduced &reduced)
{
    unsigned int flags = 0x20;
    if (reduced.printed)
        flags |= 0x01;
    if (reduced.throughImage)
        flags |= 0x02;
    if (reduced.style == MobraTypes::BrushLinearGradient)
        flags |= 0x80;
    return flags;
}

void prepareForReduction(FillableShape &shape, const Outline &outline, const Fill &fill, const Style &style)
{
    shape.setItemPenColor(outline.colour);
    shape.setItemPenStyle(outline.style);
    shape.setItemFillColor(fill.colour);
    shape.setItemBrushStyle(style.style);
    shape.updateItemPen();
    shape.updateItemBrush();
    shape.setItemFlags(0x21U | (shape.itemFlags() & 0x80U));
}

/// Fails the running test where the shape is not as expected.
void compareReduced(FillableShape &shape, const Reduced &expected)
{
    const bool gradient = expected.style == MobraTypes::BrushLinearGradient;
    QCOMPARE(shape.getItemFillColor(), expected.colour);
    QCOMPARE(shape.getItemBrushStyle(), expected.style);
    QCOMPARE(shape.getItemBrush().style(),
        gradient ? Qt::LinearGradientPattern : static_cast<Qt::BrushStyle>(int(expected.style)));
    if (!gradient)
        QCOMPARE(shape.getItemBrush().color(), expected.colour);
    QCOMPARE(shape.itemFlags(), flagsAfter(expected));
    QCOMPARE(shape.itemIsOpaque(), gradient || expected.style == MobraTypes::BrushSolid);
    QCOMPARE(shape.preparations, expected.throughImage ? 1 : 0);
    QCOMPARE(shape.getPreprintedImage().isNull(), !expected.throughImage);
}

/// The pixmap item that is alone in the scene, or null.
QGraphicsPixmapItem *onlyPixmap(const QGraphicsScene &scene)
{
    const QList<QGraphicsItem *> items = scene.items();
    return items.size() == 1 ? qgraphicsitem_cast<QGraphicsPixmapItem *>(items.first()) : nullptr;
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

class tst_FillableItem : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    void newItemIsTransparentAndSolid();
    void transparentFillHasNoBrush_data();
    void transparentFillHasNoBrush();
    void plainStylesAreQtBrushes_data();
    void plainStylesAreQtBrushes();
    void unknownStylesPaintNothingAndAreKept_data();
    void unknownStylesPaintNothingAndAreKept();
    void linearGradientRunsFromTopToBottom_data();
    void linearGradientRunsFromTopToBottom();
    void radialGradientReflectsAboutTheCentre_data();
    void radialGradientReflectsAboutTheCentre();
    void conicalGradientTurnsAboutTheOrigin();
    void gradientStartsInTheSecondColour_data();
    void gradientStartsInTheSecondColour();
    void gradientIsOpaqueAndFlagged_data();
    void gradientIsOpaqueAndFlagged();
    void leavingAGradientClearsItsFlag();
    void equalValuesDoNotRebuildTheBrush();
    void noChangeIsIgnored_data();
    void noChangeIsIgnored();
    void printScalingIsOnlyStored();
    void printSizesAreRounded_data();
    void printSizesAreRounded();
    void accessorsKeepWhatTheyAreGiven();
    void everyResizeRebuildsTheBrush_data();
    void everyResizeRebuildsTheBrush();
    void copyCarriesTheFillButNoPrintState();
    void copyRebuildsTheBrushOfAnEqualFill_data();
    void copyRebuildsTheBrushOfAnEqualFill();
    void copyToAPlainItemCopiesTheRest();
    void recordEndsWithStyleAndFill_data();
    void recordEndsWithStyleAndFill();
    void loadingRebuildsTheBrushOfAnEqualFill();
    void loadingExtendsTheSignOfTheStyle();
    void reductionForOneInk_data();
    void reductionForOneInk();
    void reductionForABlackInk_data();
    void reductionForABlackInk();
    void negativeReduction_data();
    void negativeReduction();
    void solidBlackFillStaysWhenBlackIsKept_data();
    void solidBlackFillStaysWhenBlackIsKept();
    void recombinedImage_data();
    void recombinedImage();
    void recombiningOnlyNullLayersGivesANullImage();
    void recombiningDropsTheAlphaOfInks();
    void partialRenderingNeedsAGradient_data();
    void partialRenderingNeedsAGradient();
    void partialRenderingNeedsAnInkAndAPaper_data();
    void partialRenderingNeedsAnInkAndAPaper();
    void partialRenderingCombinesThePreparedImages();
    void partialRenderingPaintsWhatNeedsNoImage();
    void partialRenderingWithoutPreparedImageIsNull();
    void partialRenderingKeepsEarlierInksInLaterLayers();
    void partialRenderingLeavesTheItemAlone();
    void printSceneTakesThePreparedImage();
    void printSceneTakesTheItemWithoutPreparedImage_data();
    void printSceneTakesTheItemWithoutPreparedImage();
    void printSceneTakesAPictureAtOtherScales();
    void missingPrintSceneTakesNothing();
};

void tst_FillableItem::newItemIsTransparentAndSolid()
{
    FillableShape shape;
    QCOMPARE(shape.getItemFillColor(), transparent);
    QCOMPARE(shape.getItemFillColorString(), u"#000000"_s);
    QCOMPARE(shape.getItemBrushStyle(), MobraTypes::BrushSolid);
    QCOMPARE(shape.getItemBrush(), QBrush());
    QVERIFY(shape.itemIsOpaque());
    QCOMPARE(shape.getScaling(), 1.0);
    QVERIFY(shape.getPreprintedImage().isNull());
    QCOMPARE(shape.getPrintDitherMethod().toInt(), 0x0A);
    QCOMPARE(shape.getSceneBackgroundColor(), transparent);
    QVERIFY(shape.partialColorRender().isNull());
}

void tst_FillableItem::transparentFillHasNoBrush_data()
{
    QTest::addColumn<int>("style");

    for (const int style : { 0, 1, 5, 14, 15, 16, 17 })
        QTest::addRow("style %d", style) << style;
}

void tst_FillableItem::transparentFillHasNoBrush()
{
    QFETCH(const int, style);
    FillableShape shape;
    shape.setItemFlags(0xA1U);
    shape.setItemBrushStyleInt(style);
    shape.updateItemBrush();
    QCOMPARE(shape.getItemBrush(), QBrush(transparent, Qt::NoBrush));
    QVERIFY(!shape.itemIsOpaque());
    QCOMPARE(shape.itemFlags(), 0x21U);
    QCOMPARE(int(shape.getItemBrushStyle()), style);
}

void tst_FillableItem::plainStylesAreQtBrushes_data()
{
    QTest::addColumn<int>("style");
    QTest::addColumn<Qt::BrushStyle>("painted");
    QTest::addColumn<bool>("opaque");

    QTest::newRow("none") << 0 << Qt::NoBrush << false;
    QTest::newRow("solid") << 1 << Qt::SolidPattern << true;
    QTest::newRow("dense 1") << 2 << Qt::Dense1Pattern << false;
    QTest::newRow("dense 2") << 3 << Qt::Dense2Pattern << false;
    QTest::newRow("dense 3") << 4 << Qt::Dense3Pattern << false;
    QTest::newRow("dense 4") << 5 << Qt::Dense4Pattern << false;
    QTest::newRow("dense 5") << 6 << Qt::Dense5Pattern << false;
    QTest::newRow("dense 6") << 7 << Qt::Dense6Pattern << false;
    QTest::newRow("dense 7") << 8 << Qt::Dense7Pattern << false;
    QTest::newRow("horizontal") << 9 << Qt::HorPattern << false;
    QTest::newRow("vertical") << 10 << Qt::VerPattern << false;
    QTest::newRow("cross") << 11 << Qt::CrossPattern << false;
    QTest::newRow("backward diagonal") << 12 << Qt::BDiagPattern << false;
    QTest::newRow("forward diagonal") << 13 << Qt::FDiagPattern << false;
    QTest::newRow("diagonal cross") << 14 << Qt::DiagCrossPattern << false;
}

void tst_FillableItem::plainStylesAreQtBrushes()
{
    QFETCH(const int, style);
    QFETCH(const Qt::BrushStyle, painted);
    FillableShape shape;
    shape.setItemFlags(0x81U);
    shape.setItemBrushStyleInt(style);
    shape.setItemFillColor(translucentRed);
    QCOMPARE(shape.getItemBrush(), QBrush(translucentRed, painted));
    QTEST(shape.itemIsOpaque(), "opaque");
    QCOMPARE(shape.itemFlags(), 0x01U);
}

void tst_FillableItem::unknownStylesPaintNothingAndAreKept_data()
{
    QTest::addColumn<int>("style");

    for (const int style : { 18, 24, 25, 100, 255, 32767, -2, -32768 })
        QTest::addRow("style %d", style) << style;
}

void tst_FillableItem::unknownStylesPaintNothingAndAreKept()
{
    QFETCH(const int, style);
    FillableShape shape;
    shape.setItemFillColor(red);
    shape.setItemBrushStyle(static_cast<BrushStyle>(style));
    QCOMPARE(shape.getItemBrush().style(), Qt::NoBrush);
    QCOMPARE(int(shape.getItemBrushStyle()), style);
    QVERIFY(!shape.itemIsOpaque());
    QCOMPARE(shape.itemFlags(), 0x01U);
}

void tst_FillableItem::linearGradientRunsFromTopToBottom_data()
{
    QTest::addColumn<QRectF>("bounds");
    QTest::addColumn<double>("scaling");
    QTest::addColumn<QPointF>("start");
    QTest::addColumn<QPointF>("end");

    QTest::newRow("at the origin") << QRectF(0, 0, 100, 60) << 1.0 << QPointF(0, 0) << QPointF(0, 60);
    QTest::newRow("at the origin, doubled")
        << QRectF(0, 0, 100, 60) << 2.0 << QPointF(0, 0) << QPointF(0, 120);
    QTest::newRow("moved") << QRectF(3, 5, 40, 20) << 1.0 << QPointF(3, 5) << QPointF(3, 25);
    // 10 + 2 * (20 - 1 * 5)
    QTest::newRow("moved, doubled") << QRectF(3, 5, 40, 20) << 2.0 << QPointF(6, 10) << QPointF(6, 40);
    // 2.5 + 0.5 * (20 + 0.5 * 5)
    QTest::newRow("moved, halved") << QRectF(3, 5, 40, 20) << 0.5 << QPointF(1.5, 2.5) << QPointF(1.5, 13.75);
    // -8 + 2 * (20 + 4)
    QTest::newRow("above the origin, doubled")
        << QRectF(-3, -4, 40, 20) << 2.0 << QPointF(-6, -8) << QPointF(-6, 40);
}

void tst_FillableItem::linearGradientRunsFromTopToBottom()
{
    QFETCH(const QRectF, bounds);
    QFETCH(const double, scaling);
    FillableShape shape;
    shape.setBounds(bounds);
    shape.setPrintScaling(scaling);
    shape.setItemFillColor(red);
    shape.setItemBrushStyle(MobraTypes::BrushLinearGradient);

    const QBrush brush = shape.getItemBrush();
    QCOMPARE(brush.style(), Qt::LinearGradientPattern);
    const auto *gradient = static_cast<const QLinearGradient *>(brush.gradient());
    QTEST(gradient->start(), "start");
    QTEST(gradient->finalStop(), "end");
    QCOMPARE(gradient->spread(), QGradient::PadSpread);
    compareStops(brush, { { 0.0, white }, { 1.0, red } });
}

void tst_FillableItem::radialGradientReflectsAboutTheCentre_data()
{
    QTest::addColumn<QRectF>("bounds");
    QTest::addColumn<double>("scaling");
    QTest::addColumn<QPointF>("centre");
    QTest::addColumn<double>("radius");

    QTest::newRow("at the origin") << QRectF(0, 0, 100, 60) << 1.0 << QPointF(50, 30) << 112.0;
    QTest::newRow("at the origin, doubled") << QRectF(0, 0, 100, 60) << 2.0 << QPointF(100, 60) << 224.0;
    QTest::newRow("moved") << QRectF(3, 5, 40, 20) << 1.0 << QPointF(23, 15) << 42.0;
    // W = 2 * (40 - 3) = 74, H = 2 * (20 - 5) = 30
    QTest::newRow("moved, doubled") << QRectF(3, 5, 40, 20) << 2.0 << QPointF(43, 25) << 72.8;
    // W = 0.5 * (40 + 1.5) = 20.75, H = 0.5 * (20 + 2.5) = 11.25
    QTest::newRow("moved, halved") << QRectF(3, 5, 40, 20) << 0.5 << QPointF(11.875, 8.125) << 22.4;
}

void tst_FillableItem::radialGradientReflectsAboutTheCentre()
{
    QFETCH(const QRectF, bounds);
    QFETCH(const double, scaling);
    FillableShape shape;
    shape.setBounds(bounds);
    shape.setPrintScaling(scaling);
    shape.setItemFillColor(red);
    shape.setItemBrushStyle(MobraTypes::BrushRadialGradient);

    const QBrush brush = shape.getItemBrush();
    QCOMPARE(brush.style(), Qt::RadialGradientPattern);
    const auto *gradient = static_cast<const QRadialGradient *>(brush.gradient());
    QTEST(gradient->center(), "centre");
    QTEST(gradient->focalPoint(), "centre");
    QTEST(gradient->radius(), "radius");
    QCOMPARE(gradient->spread(), QGradient::ReflectSpread);
    compareStops(brush, { { 0.0, white }, { 0.5, red } });
}

void tst_FillableItem::conicalGradientTurnsAboutTheOrigin()
{
    for (const double scaling : { 1.0, 2.0 }) {
        FillableShape shape;
        shape.setBounds(QRectF(3, 5, 40, 20));
        shape.setPrintScaling(scaling);
        shape.setItemFillColor(red);
        shape.setItemBrushStyle(MobraTypes::BrushConicalGradient);

        const QBrush brush = shape.getItemBrush();
        QCOMPARE(brush.style(), Qt::ConicalGradientPattern);
        const auto *gradient = static_cast<const QConicalGradient *>(brush.gradient());
        QCOMPARE(gradient->center(), QPointF(0, 0));
        QCOMPARE(gradient->angle(), 135.0);
        compareStops(brush, { { 0.0, white }, { 1.0, red } });
    }
}

void tst_FillableItem::gradientStartsInTheSecondColour_data()
{
    QTest::addColumn<QColor>("background");
    QTest::addColumn<QColor>("fill");
    QTest::addColumn<QColor>("second");

    QTest::newRow("colour on no background") << transparent << red << white;
    QTest::newRow("black on no background") << transparent << black << white;
    QTest::newRow("near-white on no background") << transparent << nearWhite << white;
    QTest::newRow("white on no background") << transparent << white << black;
    QTest::newRow("colour on yellow") << yellow << red << yellow;
    QTest::newRow("white on yellow") << yellow << white << yellow;
    QTest::newRow("white on white") << white << white << white;
}

void tst_FillableItem::gradientStartsInTheSecondColour()
{
    QFETCH(const QColor, background);
    QFETCH(const QColor, fill);
    QFETCH(const QColor, second);
    FillableShape shape;
    shape.setItemFillColor(fill);
    shape.setItemBrushStyle(MobraTypes::BrushLinearGradient);
    shape.setSceneBackgroundColor(background);
    compareStops(shape.getItemBrush(), { { 0.0, second }, { 1.0, fill } });
    shape.setItemBrushStyle(MobraTypes::BrushRadialGradient);
    compareStops(shape.getItemBrush(), { { 0.0, second }, { 0.5, fill } });
    shape.setItemBrushStyle(MobraTypes::BrushConicalGradient);
    compareStops(shape.getItemBrush(), { { 0.0, second }, { 1.0, fill } });
}

void tst_FillableItem::gradientIsOpaqueAndFlagged_data()
{
    QTest::addColumn<BrushStyle>("style");

    QTest::newRow("linear") << MobraTypes::BrushLinearGradient;
    QTest::newRow("radial") << MobraTypes::BrushRadialGradient;
    QTest::newRow("conical") << MobraTypes::BrushConicalGradient;
}

void tst_FillableItem::gradientIsOpaqueAndFlagged()
{
    QFETCH(const BrushStyle, style);
    FillableShape shape;
    shape.setItemFillColor(translucentRed);
    shape.setItemBrushStyle(MobraTypes::BrushDense1);
    QVERIFY(!shape.itemIsOpaque());
    shape.setItemBrushStyle(style);
    QVERIFY(shape.itemIsOpaque());
    QCOMPARE(shape.itemFlags(), 0x81U);
}

void tst_FillableItem::leavingAGradientClearsItsFlag()
{
    FillableShape shape;
    shape.setItemFillColor(red);
    shape.setItemBrushStyle(MobraTypes::BrushConicalGradient);
    shape.setItemBrushStyle(MobraTypes::BrushCross);
    QCOMPARE(shape.itemFlags(), 0x01U);
    QVERIFY(!shape.itemIsOpaque());

    shape.setItemBrushStyle(MobraTypes::BrushConicalGradient);
    shape.setItemFillColor(transparent);
    QCOMPARE(shape.itemFlags(), 0x01U);
    QVERIFY(!shape.itemIsOpaque());
    QCOMPARE(shape.getItemBrush().style(), Qt::NoBrush);
}

void tst_FillableItem::equalValuesDoNotRebuildTheBrush()
{
    FillableShape shape;
    shape.setBounds(QRectF(0, 0, 100, 60));
    shape.setItemFillColor(red);
    shape.setItemBrushStyle(MobraTypes::BrushLinearGradient);
    const QBrush built = shape.getItemBrush();
    shape.setBounds(QRectF(0, 0, 10, 6));
    shape.setItemFillColor(red);
    shape.setItemBrushStyle(MobraTypes::BrushLinearGradient);
    QCOMPARE(shape.getItemBrush(), built);

    shape.updateItemBrush();
    const QBrush rebuilt = shape.getItemBrush();
    QCOMPARE(static_cast<const QLinearGradient *>(rebuilt.gradient())->finalStop(), QPointF(0, 6));
}

void tst_FillableItem::noChangeIsIgnored_data()
{
    QTest::addColumn<int>("style");

    QTest::newRow("-1") << -1;
    QTest::newRow("-1 as an unsigned 16-bit number") << 65535;
}

void tst_FillableItem::noChangeIsIgnored()
{
    QFETCH(const int, style);
    FillableShape shape;
    shape.setItemFillColor(red);
    shape.setItemBrushStyle(MobraTypes::BrushDense3);
    shape.setItemBrushStyleInt(style);
    shape.setItemBrushStyle(MobraTypes::BrushNoChange);
    QCOMPARE(shape.getItemBrushStyle(), MobraTypes::BrushDense3);
    QCOMPARE(shape.getItemBrush(), QBrush(red, Qt::Dense3Pattern));
}

void tst_FillableItem::printScalingIsOnlyStored()
{
    FillableShape shape;
    shape.setItemFillColor(red);
    shape.setItemBrushStyle(MobraTypes::BrushLinearGradient);
    const QBrush built = shape.getItemBrush();
    shape.setPrintScaling(2.0);
    QCOMPARE(shape.getScaling(), 2.0);
    QCOMPARE(shape.getItemBrush(), built);
}

void tst_FillableItem::printSizesAreRounded_data()
{
    QTest::addColumn<QSizeF>("size");
    QTest::addColumn<double>("scaling");
    QTest::addColumn<QSize>("scaled");
    QTest::addColumn<QSize>("roundedUp");

    QTest::newRow("whole") << QSizeF(100, 60) << 1.0 << QSize(100, 60) << QSize(100, 60);
    QTest::newRow("halves go up") << QSizeF(10.25, 3.25) << 2.0 << QSize(21, 7) << QSize(11, 4);
    QTest::newRow("just below half goes down") << QSizeF(10.24, 3.24) << 2.0 << QSize(20, 6) << QSize(11, 4);
    QTest::newRow("shrunk") << QSizeF(10, 5) << 0.5 << QSize(5, 3) << QSize(10, 5);
    QTest::newRow("a little more than whole") << QSizeF(10.001, 5) << 1.0 << QSize(10, 5) << QSize(11, 5);
}

void tst_FillableItem::printSizesAreRounded()
{
    QFETCH(const QSizeF, size);
    QFETCH(const double, scaling);
    FillableShape shape;
    shape.setItemSize(size);
    shape.setPrintScaling(scaling);
    QTEST(shape.getItemAbsSize(), "scaled");
    double x = 7.0;
    double y = 8.0;
    QTEST(shape.getItemAbsSize(x, y), "roundedUp");
    QCOMPARE(x, 0.0);
    QCOMPARE(y, 0.0);
}

void tst_FillableItem::accessorsKeepWhatTheyAreGiven()
{
    FillableShape shape;
    shape.setPrintDitherMethod(Qt::MonoOnly | Qt::ThresholdDither);
    QCOMPARE(shape.getPrintDitherMethod(), Qt::MonoOnly | Qt::ThresholdDither);
    shape.setPreprintedImage(imageOf({ { redPixel, bluePixel } }));
    QCOMPARE(shape.getPreprintedImage(), imageOf({ { redPixel, bluePixel } }));
    shape.setItemFillColorString(u"#80ff0000"_s);
    QCOMPARE(shape.getItemFillColor(), translucentRed);
    QCOMPARE(shape.getItemFillColorString(), u"#ff0000"_s);
    QCOMPARE(shape.getItemBrush(), QBrush(translucentRed, Qt::SolidPattern));
}

void tst_FillableItem::everyResizeRebuildsTheBrush_data()
{
    QTest::addColumn<int>("parameters");

    QTest::newRow("size") << 1;
    QTest::newRow("size and ratio") << 3;
    QTest::newRow("size, ratio and limits") << 8;
}

void tst_FillableItem::everyResizeRebuildsTheBrush()
{
    QFETCH(const int, parameters);
    FillableShape shape;
    shape.setItemFillColor(red);
    shape.setItemBrushStyle(MobraTypes::BrushLinearGradient);

    const QSizeF grown(200, 250);
    bool changed = false;
    if (parameters == 1)
        changed = shape.setItemSize(grown);
    else if (parameters == 3)
        changed = shape.setItemSize(grown, false, false);
    else
        changed = shape.setItemSize(grown, false, 1, 1, 300, 300, false, false);
    QVERIFY(changed);
    const QBrush brush = shape.getItemBrush();
    QCOMPARE(static_cast<const QLinearGradient *>(brush.gradient())->finalStop(), QPointF(0, 250));
}

void tst_FillableItem::copyCarriesTheFillButNoPrintState()
{
    FillableShape source;
    source.setItemSize(QSizeF(40, 30));
    source.setItemFillColor(red);
    source.setItemBrushStyle(MobraTypes::BrushRadialGradient);
    source.setSceneBackgroundColor(yellow);
    source.setPrintScaling(2.0);
    source.setPrintDitherMethod(Qt::MonoOnly | Qt::ThresholdDither);
    source.setItemPalette({ red, white });
    source.setPreprintedImage(imageOf({ { blackPixel } }));
    source.updateItemBrush();

    FillableShape target;
    source.copyItemProperties(&target, true);
    QCOMPARE(target.getItemFillColor(), red);
    QCOMPARE(target.getItemBrushStyle(), MobraTypes::BrushRadialGradient);
    QCOMPARE(target.getSceneBackgroundColor(), yellow);
    QCOMPARE(target.getScaling(), 2.0);
    QCOMPARE(target.getPrintDitherMethod(), Qt::MonoOnly | Qt::ThresholdDither);
    QVERIFY(target.getPreprintedImage().isNull());
    QVERIFY(!source.partialColorRender().isNull());
    QVERIFY(target.partialColorRender().isNull());
    compareStops(target.getItemBrush(), { { 0.0, yellow }, { 0.5, red } });
}

void tst_FillableItem::copyRebuildsTheBrushOfAnEqualFill_data()
{
    QTest::addColumn<bool>("copySize");
    QTest::addColumn<QPointF>("end");

    QTest::newRow("with the size of the source") << true << QPointF(0, 30);
    QTest::newRow("with the size of the target") << false << QPointF(0, 70);
}

void tst_FillableItem::copyRebuildsTheBrushOfAnEqualFill()
{
    QFETCH(const bool, copySize);
    FillableShape source;
    source.setItemSize(QSizeF(40, 30));
    source.setItemFillColor(red);
    source.setItemBrushStyle(MobraTypes::BrushLinearGradient);
    FillableShape target;
    target.setItemSize(QSizeF(50, 70));
    target.setItemFillColor(red);
    target.setItemBrushStyle(MobraTypes::BrushLinearGradient);
    source.copyItemProperties(&target, copySize);
    const QBrush brush = target.getItemBrush();
    QTEST(static_cast<const QLinearGradient *>(brush.gradient())->finalStop(), "end");
}

void tst_FillableItem::copyToAPlainItemCopiesTheRest()
{
    FillableShape source;
    source.setItemId(31);
    ParentStandIn target(MobraTypes::GroupShape);
    source.copyItemProperties(&target, true);
    QCOMPARE(target.itemId(), short(31));
}

void tst_FillableItem::recordEndsWithStyleAndFill_data()
{
    QTest::addColumn<int>("style");
    QTest::addColumn<QColor>("fill");
    QTest::addColumn<QByteArray>("tail");

    // Two bytes of style; then kind, alpha, red, green, blue and padding of the colour.
    QTest::newRow("solid, transparent") << 1 << transparent
                                        << QByteArray("0001"
                                                      "01"
                                                      "0000"
                                                      "0000"
                                                      "0000"
                                                      "0000"
                                                      "0000");
    QTest::newRow("conical, red") << 17 << red
                                  << QByteArray("0011"
                                                "01"
                                                "ffff"
                                                "ffff"
                                                "0000"
                                                "0000"
                                                "0000");
    QTest::newRow("none, translucent") << 0 << QColor(16, 32, 48, 128)
                                       << QByteArray("0000"
                                                     "01"
                                                     "8080"
                                                     "1010"
                                                     "2020"
                                                     "3030"
                                                     "0000");
    QTest::newRow("negative, red") << -3 << red
                                   << QByteArray("fffd"
                                                 "01"
                                                 "ffff"
                                                 "ffff"
                                                 "0000"
                                                 "0000"
                                                 "0000");
}

void tst_FillableItem::recordEndsWithStyleAndFill()
{
    QFETCH(const int, style);
    QFETCH(const QColor, fill);
    FillableShape shape;
    shape.setItemBrushStyle(static_cast<BrushStyle>(style));
    shape.setItemFillColor(fill);
    const QByteArray record = ItemRecords::saved(shape);
    QCOMPARE(record.size(), 158 + 11 + 14 + 13);
    QTEST(record.last(13).toHex(), "tail");

    FillableShape loaded;
    QCOMPARE(ItemRecords::load(loaded, record), QDataStream::Ok);
    QCOMPARE(int(loaded.getItemBrushStyle()), style);
    QCOMPARE(loaded.getItemFillColor(), fill);
}

void tst_FillableItem::loadingRebuildsTheBrushOfAnEqualFill()
{
    FillableShape source;
    source.setItemFillColor(red);
    source.setItemBrushStyle(MobraTypes::BrushDense5);
    FillableShape target;
    target.setItemFillColor(red);
    QCOMPARE(ItemRecords::load(target, ItemRecords::saved(source)), QDataStream::Ok);
    QCOMPARE(target.getItemBrush(), QBrush(red, Qt::Dense5Pattern));
    QVERIFY(!target.itemIsOpaque());
}

void tst_FillableItem::loadingExtendsTheSignOfTheStyle()
{
    FillableShape shape;
    QByteArray record = ItemRecords::saved(shape);
    record.replace(183, 2, QByteArray::fromHex("ffff"));
    QCOMPARE(ItemRecords::load(shape, record), QDataStream::Ok);
    QCOMPARE(int(shape.getItemBrushStyle()), -1);
    QCOMPARE(ItemRecords::saved(shape).mid(183, 2).toHex(), QByteArray("ffff"));
}

void tst_FillableItem::reductionForOneInk_data()
{
    QTest::addColumn<const Outline *>("outline");
    QTest::addColumn<const Fill *>("fill");
    QTest::addColumn<const Style *>("style");
    QTest::addColumn<bool>("keepBlack");
    QTest::addColumn<bool>("keepOthers");

    for (const Outline &outline : outlines) {
        for (const Fill &fill : fills) {
            for (const Style &style : styles) {
                for (const int keep : { 0, 1, 2, 3 })
                    QTest::addRow("%s fill, %s, %s, keep %d", fill.name, style.name, outline.name, keep)
                        << &outline << &fill << &style << bool(keep & 1) << bool(keep & 2);
            }
        }
    }
}

void tst_FillableItem::reductionForOneInk()
{
    QFETCH(const Outline *, outline);
    QFETCH(const Fill *, fill);
    QFETCH(const Style *, style);
    QFETCH(const bool, keepBlack);
    QFETCH(const bool, keepOthers);
    FillableShape shape;
    prepareForReduction(shape, *outline, *fill, *style);

    const bool inPrintColour
        = outline->inPrintColour || (fill->colour == red && style->style != MobraTypes::BrushNone);
    const bool blackIsKept = inPrintColour ? keepBlack : keepBlack && keepOthers;
    const bool outlinePrints = blackIsKept ? outline->printsIfBlackIsKept : outline->printsIfBlackIsDropped;
    const Reduced expected = reducedForRed(fill->colour, style->style, blackIsKept, outlinePrints);

    QCOMPARE(shape.resetItemColors(red, keepBlack, keepOthers), expected.printed);
    QCOMPARE(shape.getItemPenColor(), outlinePrints ? black : white);
    compareReduced(shape, expected);
}

void tst_FillableItem::reductionForABlackInk_data()
{
    QTest::addColumn<QColor>("pen");
    QTest::addColumn<QColor>("fill");
    QTest::addColumn<BrushStyle>("style");
    QTest::addColumn<bool>("printed");
    QTest::addColumn<QColor>("penAfter");
    QTest::addColumn<QColor>("fillAfter");

    QTest::newRow("black on nothing")
        << black << transparent << MobraTypes::BrushSolid << true << black << transparent;
    QTest::newRow("red on black") << red << black << MobraTypes::BrushSolid << true << white << black;
    QTest::newRow("red on dense black") << red << black << MobraTypes::BrushDense2 << true << white << black;
    QTest::newRow("red on black gradient")
        << red << black << MobraTypes::BrushRadialGradient << true << white << black;
    QTest::newRow("black on red") << black << red << MobraTypes::BrushSolid << true << black << white;
    QTest::newRow("red on red") << red << red << MobraTypes::BrushSolid << false << white << white;
}

void tst_FillableItem::reductionForABlackInk()
{
    QFETCH(const QColor, pen);
    QFETCH(const QColor, fill);
    QFETCH(const BrushStyle, style);
    FillableShape shape;
    shape.setItemPenColor(pen);
    shape.setItemFillColor(fill);
    shape.setItemBrushStyle(style);
    QTEST(shape.resetItemColors(black, false, false), "printed");
    QTEST(shape.getItemPenColor(), "penAfter");
    QTEST(shape.getItemFillColor(), "fillAfter");
}

void tst_FillableItem::negativeReduction_data()
{
    QTest::addColumn<const Outline *>("outline");
    QTest::addColumn<const Fill *>("fill");
    QTest::addColumn<const Style *>("style");

    for (const Outline &outline : outlines) {
        for (const Fill &fill : fills) {
            for (const Style &style : styles)
                QTest::addRow("%s fill, %s, %s", fill.name, style.name, outline.name)
                    << &outline << &fill << &style;
        }
    }
}

void tst_FillableItem::negativeReduction()
{
    QFETCH(const Outline *, outline);
    QFETCH(const Fill *, fill);
    QFETCH(const Style *, style);
    FillableShape shape;
    prepareForReduction(shape, *outline, *fill, *style);

    const Reduced expected = reducedNegativelyForRed(fill->colour, style->style, outline->printsNegatively);
    QCOMPARE(shape.resetItemColorsNegative(red), expected.printed);
    QCOMPARE(shape.getItemPenColor(), outline->printsNegatively ? black : white);
    compareReduced(shape, expected);
}

void tst_FillableItem::solidBlackFillStaysWhenBlackIsKept_data()
{
    QTest::addColumn<QColor>("pen");
    QTest::addColumn<bool>("keepOthers");
    QTest::addColumn<QColor>("fillAfter");

    QTest::newRow("black pen, others kept") << black << true << black;
    QTest::newRow("black pen, others dropped") << black << false << white;
    QTest::newRow("red pen, others dropped") << red << false << black;
}

void tst_FillableItem::solidBlackFillStaysWhenBlackIsKept()
{
    QFETCH(const QColor, pen);
    QFETCH(const bool, keepOthers);
    FillableShape shape;
    shape.setItemPenColor(pen);
    shape.setItemFillColor(black);
    shape.resetItemColors(red, true, keepOthers);
    QTEST(shape.getItemFillColor(), "fillAfter");
}

void tst_FillableItem::recombinedImage_data()
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

void tst_FillableItem::recombinedImage()
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

void tst_FillableItem::recombiningOnlyNullLayersGivesANullImage()
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

void tst_FillableItem::recombiningDropsTheAlphaOfInks()
{
    FillableShape shape;
    shape.setItemPalette({ translucentRed, yellow });
    QImage image = emptyImage({ 1, 1 });
    shape.recombineColorsOnImage(image, 1, { imageOf({ { blackPixel } }) }, { 1, 1 });
    QCOMPARE(image.pixel(0, 0), redPixel);
}

void tst_FillableItem::partialRenderingNeedsAGradient_data()
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

void tst_FillableItem::partialRenderingNeedsAGradient()
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

void tst_FillableItem::partialRenderingNeedsAnInkAndAPaper_data()
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

void tst_FillableItem::partialRenderingNeedsAnInkAndAPaper()
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

void tst_FillableItem::partialRenderingCombinesThePreparedImages()
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

void tst_FillableItem::partialRenderingPaintsWhatNeedsNoImage()
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

void tst_FillableItem::partialRenderingWithoutPreparedImageIsNull()
{
    FillableShape shape;
    shape.prepares = false;
    shape.setItemPenStyle(Qt::NoPen);
    shape.setItemFillColor(red);
    shape.setItemBrushStyle(MobraTypes::BrushLinearGradient);
    shape.setItemPalette({ red, yellow });
    QVERIFY(shape.partialColorRender().isNull());
}

void tst_FillableItem::partialRenderingKeepsEarlierInksInLaterLayers()
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

void tst_FillableItem::partialRenderingLeavesTheItemAlone()
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

void tst_FillableItem::printSceneTakesThePreparedImage()
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

void tst_FillableItem::printSceneTakesTheItemWithoutPreparedImage_data()
{
    QTest::addColumn<bool>("throughImage");
    QTest::addColumn<bool>("hasImage");

    QTest::newRow("image that is not asked for") << false << true;
    QTest::newRow("asked for and missing") << true << false;
    QTest::newRow("neither") << false << false;
}

void tst_FillableItem::printSceneTakesTheItemWithoutPreparedImage()
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

void tst_FillableItem::printSceneTakesAPictureAtOtherScales()
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

void tst_FillableItem::missingPrintSceneTakesNothing()
{
    FillableShape plain;
    QVERIFY(!plain.addItemToPrintScene(nullptr, 1.0));
    QVERIFY(!plain.addItemToPrintScene(nullptr, 2.0));
    QVERIFY(!shapeWithPrintImage()->addItemToPrintScene(nullptr, 1.0));
}

QTEST_MAIN(tst_FillableItem)
#include "tst_fillableitem.moc"
