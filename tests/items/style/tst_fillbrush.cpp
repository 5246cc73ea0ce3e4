// SPDX-License-Identifier: BSD-3-Clause
#include "tests/support/colours.h"
#include "tests/support/fillableshape.h"
#include "tests/support/gradients.h"
#include "tests/support/resizing.h"

#include <QBrush>
#include <QConicalGradient>
#include <QLinearGradient>
#include <QRadialGradient>
#include <QRegularExpression>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace Colours;
using Gradients::compareStops;
using Images::imageOf;
using MobraTypes::BrushStyle;

namespace {

/// The brush of a red gradient within the bounds, at a print scaling.
QBrush redGradientOver(const QRectF &bounds, double scaling, BrushStyle style)
{
    FillableShape shape;
    shape.setBounds(bounds);
    shape.setPrintScaling(scaling);
    shape.setItemFillColor(red);
    shape.setItemBrushStyle(style);
    return shape.getItemBrush();
}

} // namespace

class tst_FillBrush : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    // Brush
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

    // Sizes
    void printScalingIsOnlyStored();
    void printSizesAreRounded_data();
    void printSizesAreRounded();
    void accessorsKeepWhatTheyAreGiven();
    void everyResizeRebuildsTheBrush_data();
    void everyResizeRebuildsTheBrush();
};

// Brush

void tst_FillBrush::newItemIsTransparentAndSolid()
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

void tst_FillBrush::transparentFillHasNoBrush_data()
{
    QTest::addColumn<int>("style");

    for (const int style : { 0, 1, 5, 14, 15, 16, 17 })
        QTest::addRow("style %d", style) << style;
}

void tst_FillBrush::transparentFillHasNoBrush()
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

void tst_FillBrush::plainStylesAreQtBrushes_data()
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

void tst_FillBrush::plainStylesAreQtBrushes()
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

void tst_FillBrush::unknownStylesPaintNothingAndAreKept_data()
{
    QTest::addColumn<int>("style");

    for (const int style : { 18, 24, 25, 100, 255, 32767, -2, -32768 })
        QTest::addRow("style %d", style) << style;
}

void tst_FillBrush::unknownStylesPaintNothingAndAreKept()
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

void tst_FillBrush::linearGradientRunsFromTopToBottom_data()
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

void tst_FillBrush::linearGradientRunsFromTopToBottom()
{
    QFETCH(const QRectF, bounds);
    QFETCH(const double, scaling);
    const QBrush brush = redGradientOver(bounds, scaling, MobraTypes::BrushLinearGradient);
    QCOMPARE(brush.style(), Qt::LinearGradientPattern);
    const auto *gradient = static_cast<const QLinearGradient *>(brush.gradient());
    QTEST(gradient->start(), "start");
    QTEST(gradient->finalStop(), "end");
    QCOMPARE(gradient->spread(), QGradient::PadSpread);
    compareStops(brush, { { 0.0, white }, { 1.0, red } });
}

void tst_FillBrush::radialGradientReflectsAboutTheCentre_data()
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

void tst_FillBrush::radialGradientReflectsAboutTheCentre()
{
    QFETCH(const QRectF, bounds);
    QFETCH(const double, scaling);
    const QBrush brush = redGradientOver(bounds, scaling, MobraTypes::BrushRadialGradient);
    QCOMPARE(brush.style(), Qt::RadialGradientPattern);
    const auto *gradient = static_cast<const QRadialGradient *>(brush.gradient());
    QTEST(gradient->center(), "centre");
    QTEST(gradient->focalPoint(), "centre");
    QTEST(gradient->radius(), "radius");
    QCOMPARE(gradient->spread(), QGradient::ReflectSpread);
    compareStops(brush, { { 0.0, white }, { 0.5, red } });
}

void tst_FillBrush::conicalGradientTurnsAboutTheOrigin()
{
    for (const double scaling : { 1.0, 2.0 }) {
        const QBrush brush = redGradientOver(QRectF(3, 5, 40, 20), scaling, MobraTypes::BrushConicalGradient);
        QCOMPARE(brush.style(), Qt::ConicalGradientPattern);
        const auto *gradient = static_cast<const QConicalGradient *>(brush.gradient());
        QCOMPARE(gradient->center(), QPointF(0, 0));
        QCOMPARE(gradient->angle(), 135.0);
        compareStops(brush, { { 0.0, white }, { 1.0, red } });
    }
}

void tst_FillBrush::gradientStartsInTheSecondColour_data()
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

void tst_FillBrush::gradientStartsInTheSecondColour()
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

void tst_FillBrush::gradientIsOpaqueAndFlagged_data()
{
    QTest::addColumn<BrushStyle>("style");

    QTest::newRow("linear") << MobraTypes::BrushLinearGradient;
    QTest::newRow("radial") << MobraTypes::BrushRadialGradient;
    QTest::newRow("conical") << MobraTypes::BrushConicalGradient;
}

void tst_FillBrush::gradientIsOpaqueAndFlagged()
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

void tst_FillBrush::leavingAGradientClearsItsFlag()
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

void tst_FillBrush::equalValuesDoNotRebuildTheBrush()
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

void tst_FillBrush::noChangeIsIgnored_data()
{
    QTest::addColumn<int>("style");

    QTest::newRow("-1") << -1;
    QTest::newRow("-1 as an unsigned 16-bit number") << 65535;
}

void tst_FillBrush::noChangeIsIgnored()
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

// Sizes

void tst_FillBrush::printScalingIsOnlyStored()
{
    FillableShape shape;
    shape.setItemFillColor(red);
    shape.setItemBrushStyle(MobraTypes::BrushLinearGradient);
    const QBrush built = shape.getItemBrush();
    shape.setPrintScaling(2.0);
    QCOMPARE(shape.getScaling(), 2.0);
    QCOMPARE(shape.getItemBrush(), built);
}

void tst_FillBrush::printSizesAreRounded_data()
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

void tst_FillBrush::printSizesAreRounded()
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

void tst_FillBrush::accessorsKeepWhatTheyAreGiven()
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

void tst_FillBrush::everyResizeRebuildsTheBrush_data()
{
    Resizing::addRows();
}

void tst_FillBrush::everyResizeRebuildsTheBrush()
{
    QFETCH(const int, parameters);
    FillableShape shape;
    shape.setItemFillColor(red);
    shape.setItemBrushStyle(MobraTypes::BrushLinearGradient);

    QVERIFY(Resizing::resize(shape, parameters, QSizeF(200, 250)));
    const QBrush brush = shape.getItemBrush();
    QCOMPARE(static_cast<const QLinearGradient *>(brush.gradient())->finalStop(), QPointF(0, 250));
}

QTEST_MAIN(tst_FillBrush)
#include "tst_fillbrush.moc"
