// SPDX-License-Identifier: BSD-3-Clause
#include "items/shapes/ellipseitem.h"
#include "items/shapes/pieitem.h"
#include "items/shapes/roundedrectangleitem.h"
#include "tests/support/allitems.h"
#include "tests/support/colours.h"
#include "tests/support/images.h"
#include "tests/support/pies.h"
#include "tests/support/printimages.h"
#include "tests/support/roundshapes.h"

#include <QPainter>
#include <QPainterPath>
#include <QRegularExpression>
#include <QTest>

#include <limits>
#include <memory>

using namespace Qt::StringLiterals;
using namespace Colours;
using AllItems::made;
using Images::coloursOf;
using MobraTypes::ShapeType;

namespace {

constexpr ShapeType ellipseShape = MobraTypes::EllipseShape;
constexpr ShapeType pieShape = MobraTypes::PieShape;
constexpr ShapeType roundedShape = MobraTypes::RoundedRectangleShape;

/// What a print image is drawn with.
struct Sketch
{
    QSizeF size;
    QRectF rect;
    QPen pen;
    QBrush brush;
    Qt::ImageConversionFlags dither;

    [[nodiscard]] QSize pixels() const { return { qRound(size.width()), qRound(size.height()) }; }
};

Sketch sketchOf(FillableItem &item)
{
    item.updateItemBrush();
    const double scaling = item.getScaling();
    const QSizeF size = item.getItemSize() * scaling;
    QPen pen = item.getItemPen();
    const double width = pen.widthF() * scaling;
    pen.setWidthF(width);
    const QRectF rect(width / 2, width / 2, size.width() - width, size.height() - width);
    return { size, rect, pen, item.getItemBrush(), item.getPrintDitherMethod() };
}

QImage stepByStep(EllipseItem &item)
{
    const Sketch sketch = sketchOf(item);
    return PrintImages::clippedStepByStep(
        sketch.pixels(), sketch.pen, sketch.brush, sketch.dither,
        [&sketch](QPainter &painter) { painter.drawEllipse(sketch.rect); },
        RoundShapes::ellipse(QRectF(QPointF(0, 0), sketch.size)));
}

QImage stepByStep(PieItem &item)
{
    const Sketch sketch = sketchOf(item);
    const QPainterPath wedge = RoundShapes::wedge(sketch.rect, item.startPieAngle(), item.spanPieAngle());
    const auto draw = [&](QPainter &painter) {
        if (item.getDrawCircle()) {
            painter.setBrush(Qt::NoBrush);
            painter.drawEllipse(sketch.rect);
            painter.setBrush(sketch.brush);
        }
        painter.drawPath(wedge);
    };
    return PrintImages::clippedStepByStep(
        sketch.pixels(), sketch.pen, sketch.brush, sketch.dither, draw, wedge);
}

QImage stepByStep(RoundedRectangleItem &item)
{
    const Sketch sketch = sketchOf(item);
    const double radiusX = item.getRoundingRadiusX() * item.getScaling();
    const double radiusY = item.getRoundingRadiusY() * item.getScaling();
    const auto draw = [&](QPainter &painter) { painter.drawRoundedRect(sketch.rect, radiusX, radiusY); };
    return PrintImages::ditheredStepByStep(
        sketch.pixels(), sketch.pen, sketch.brush, sketch.dither, draw, draw);
}

/// The print image made step by step as it is defined, with nothing but Qt.
QImage printImageStepByStep(FillableItem &item)
{
    if (auto *pie = dynamic_cast<PieItem *>(&item))
        return stepByStep(*pie);
    if (auto *ellipse = dynamic_cast<EllipseItem *>(&item))
        return stepByStep(*ellipse);
    return stepByStep(dynamic_cast<RoundedRectangleItem &>(item));
}

std::unique_ptr<FillableItem> fillable(ShapeType shape)
{
    return std::unique_ptr<FillableItem>(dynamic_cast<FillableItem *>(made(shape).release()));
}

void addShapeRows()
{
    QTest::addColumn<ShapeType>("shape");
    for (const ShapeType shape : { ellipseShape, pieShape, roundedShape })
        QTest::addRow("%s", AllItems::nameOf(shape)) << shape;
}

/// Fails the running test where the item's print image is not the one that its steps make.
void comparePrintImage(FillableItem &item)
{
    PrintImages::compare(item, printImageStepByStep(item));
}

} // namespace

/// What the rounded rectangle, the ellipse and the pie print, in print images and in one ink.
class tst_RoundPrinting : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    // Print images
    void printImageMatchesItsDefinition_data();
    void printImageMatchesItsDefinition();
    void anyWedgePrints_data() { Pies::addAngleRows(); }
    void anyWedgePrints();
    void anyRadiusPrints_data();
    void anyRadiusPrints();
    void brokenPenWidthIsScaled_data() { addShapeRows(); }
    void brokenPenWidthIsScaled();
    void imageEndsAtTheShape_data();
    void imageEndsAtTheShape();
    void outlineOutsideTheWedgeIsNotPrinted();

    // One ink
    void shapeIsReducedToOneInk_data();
    void shapeIsReducedToOneInk();
    void partialRenderingShowsThePrintImageInItsInk_data() { addShapeRows(); }
    void partialRenderingShowsThePrintImageInItsInk();
};

// Print images

void tst_RoundPrinting::printImageMatchesItsDefinition_data()
{
    QTest::addColumn<ShapeType>("shape");
    QTest::addColumn<bool>("outlined");
    QTest::addColumn<QSizeF>("size");
    QTest::addColumn<double>("scaling");
    QTest::addColumn<int>("penWidth");
    QTest::addColumn<int>("brushStyle");
    QTest::addColumn<int>("dither");

    const std::pair<ShapeType, bool> shapes[]
        = { { ellipseShape, false }, { pieShape, false }, { pieShape, true }, { roundedShape, false } };
    for (const auto &[shape, outlined] : shapes) {
        const QString name
            = QString::fromLatin1(AllItems::nameOf(shape)) + (outlined ? u" with outline"_s : QString());
        for (const QSizeF &size : { QSizeF(100, 60), QSizeF(33, 17), QSizeF(7.5, 3.25) }) {
            for (const double scaling : { 1.0, 2.5, 0.5 }) {
                for (const int pen : { 0, 3, 9 }) {
                    for (const int brush : { 0, 1, 4, 11, 15, 16, 17 }) {
                        for (const int dither : { 0x0A, int(Qt::MonoOnly | Qt::ThresholdDither) })
                            QTest::addRow("%s %g high, x %g, pen %d, brush %d, dither %d", qPrintable(name),
                                size.height(), scaling, pen, brush, dither)
                                << shape << outlined << size << scaling << pen << brush << dither;
                    }
                }
            }
        }
    }
}

void tst_RoundPrinting::printImageMatchesItsDefinition()
{
    QFETCH(const ShapeType, shape);
    QFETCH(const bool, outlined);
    QFETCH(const QSizeF, size);
    QFETCH(const double, scaling);
    QFETCH(const int, penWidth);
    QFETCH(const int, brushStyle);
    QFETCH(const int, dither);
    const auto item = fillable(shape);
    if (auto *pie = dynamic_cast<PieItem *>(item.get()))
        pie->setDrawCircle(outlined);
    PrintImages::prepare(*item, size, scaling, penWidth, brushStyle, dither);
    comparePrintImage(*item);
}

void tst_RoundPrinting::anyWedgePrints()
{
    QFETCH(const int, start);
    QFETCH(const int, span);
    PieItem item;
    item.setItemSize(QSizeF(50, 30));
    item.setItemPenWidth(3);
    item.setItemFillColor(red);
    item.setItemBrushStyle(MobraTypes::BrushRadialGradient);
    item.setPrintScaling(2.5);
    item.setStartPieAngle(start);
    item.setSpanPieAngle(span);
    item.preparePrintImage();
    comparePrintImage(item);
}

void tst_RoundPrinting::anyRadiusPrints_data()
{
    QTest::addColumn<double>("radiusX");
    QTest::addColumn<double>("radiusY");
    QTest::addColumn<double>("paintedX");
    QTest::addColumn<double>("paintedY");

    const double none = std::numeric_limits<double>::quiet_NaN();
    const double endless = std::numeric_limits<double>::infinity();
    QTest::newRow("different") << 12.0 << 4.5 << 12.0 << 4.5;
    QTest::newRow("none") << 0.0 << 0.0 << 0.0 << 0.0;
    QTest::newRow("more than half the side") << 1000.0 << 1000.0 << 1000.0 << 1000.0;
    QTest::newRow("negative") << -5.0 << -5.0 << 0.0 << 0.0;
    QTest::newRow("one negative") << -5.0 << 5.0 << 0.0 << 0.0;
    QTest::newRow("no number") << none << none << 0.0 << 0.0;
    QTest::newRow("endless") << endless << endless << 1000.0 << 1000.0;
    QTest::newRow("huge") << 1e308 << 1e308 << 1000.0 << 1000.0;
}

void tst_RoundPrinting::anyRadiusPrints()
{
    QFETCH(const double, radiusX);
    QFETCH(const double, radiusY);
    QFETCH(const double, paintedX);
    QFETCH(const double, paintedY);
    RoundedRectangleItem item;
    item.setItemSize(QSizeF(50, 30));
    item.setItemPenWidth(3);
    item.setItemFillColor(red);
    item.setItemBrushStyle(MobraTypes::BrushLinearGradient);
    item.setPrintScaling(2.5);
    item.setRoundingRadiusX(radiusX);
    item.setRoundingRadiusY(radiusY);
    item.preparePrintImage();
    item.setRoundingRadiusX(paintedX);
    item.setRoundingRadiusY(paintedY);
    comparePrintImage(item);
}

void tst_RoundPrinting::brokenPenWidthIsScaled()
{
    QFETCH(const ShapeType, shape);
    const auto item = fillable(shape);
    item->setItemSize(QSizeF(50, 30));
    item->setItemFillColor(red);
    item->setPrintScaling(2.5);
    item->setItemPen(QPen(black, 2.3));
    item->preparePrintImage();
    QCOMPARE(item->getItemPen().widthF(), 2.3);
    comparePrintImage(*item);
}

void tst_RoundPrinting::imageEndsAtTheShape_data()
{
    QTest::addColumn<ShapeType>("shape");
    QTest::addColumn<QList<QPoint>>("black");
    QTest::addColumn<QList<QPoint>>("clear");

    // In an image of 200 x 100 of a black shape, radii and sizes doubled.
    QTest::newRow("ellipse") << ellipseShape
                             << QList<QPoint> { { 100, 2 }, { 100, 50 }, { 2, 50 }, { 197, 50 }, { 100, 97 } }
                             << QList<QPoint> { { 0, 0 }, { 199, 0 }, { 20, 10 }, { 180, 90 }, { 0, 99 } };
    QTest::newRow("pie") << pieShape << QList<QPoint> { { 98, 6 }, { 98, 52 }, { 6, 50 }, { 190, 54 } }
                         << QList<QPoint> { { 0, 0 }, { 104, 46 }, { 150, 30 }, { 104, 6 }, { 190, 46 } };
    QTest::newRow("rounded") << roundedShape
                             << QList<QPoint> { { 60, 3 }, { 140, 3 }, { 16, 15 }, { 100, 50 }, { 3, 50 } }
                             << QList<QPoint> { { 0, 0 }, { 10, 10 }, { 189, 10 }, { 10, 89 }, { 189, 89 } };
}

void tst_RoundPrinting::imageEndsAtTheShape()
{
    QFETCH(const ShapeType, shape);
    QFETCH(const QList<QPoint>, black);
    QFETCH(const QList<QPoint>, clear);
    const auto item = fillable(shape);
    item->setItemSize(QSizeF(100, 50));
    item->setItemFillColor(Colours::black);
    item->setPrintScaling(2.0);
    item->preparePrintImage();
    const QImage image = item->getPreprintedImage();
    QCOMPARE(image.size(), QSize(200, 100));
    for (const QPoint &point : black)
        QCOMPARE(image.pixel(point), blackPixel);
    for (const QPoint &point : clear)
        QCOMPARE(image.pixel(point), clearPixel);
}

void tst_RoundPrinting::outlineOutsideTheWedgeIsNotPrinted()
{
    PieItem item;
    item.setItemPenWidth(8);
    item.setDrawCircle(true);
    // The outline, at 45 degrees, lies in the quarter that the pie leaves out.
    const QPoint outside(82, 17);
    const QPoint inside(17, 17);
    QCOMPARE(Images::painted(item, { 100, 100 }).pixel(outside), blackPixel);
    item.preparePrintImage();
    QCOMPARE(item.getPreprintedImage().pixel(outside), clearPixel);
    QCOMPARE(item.getPreprintedImage().pixel(QPoint(18, 18)), blackPixel);
    QCOMPARE(Images::painted(item, { 100, 100 }).pixel(inside), blackPixel);
    QCOMPARE(item.getPreprintedImage().pixel(30, 60), whitePixel);

    const QImage outlined = item.getPreprintedImage();
    item.setDrawCircle(false);
    item.preparePrintImage();
    for (const QPoint &point : { QPoint(82, 17), QPoint(60, 40), QPoint(99, 1) })
        QCOMPARE(item.getPreprintedImage().pixel(point), outlined.pixel(point));
}

// One ink

void tst_RoundPrinting::shapeIsReducedToOneInk_data()
{
    QTest::addColumn<ShapeType>("shape");
    QTest::addColumn<bool>("negative");
    QTest::addColumn<int>("penWidth");
    QTest::addColumn<int>("brushStyle");
    QTest::addColumn<QColor>("ink");
    QTest::addColumn<QColor>("pen");
    QTest::addColumn<QColor>("fill");
    QTest::addColumn<uint>("flags");
    QTest::addColumn<bool>("image");

    struct Row
    {
        const char *name;
        bool negative;
        int penWidth;
        int brush;
        QColor ink;
        QColor pen;
        QColor fill;
        uint flags; // 0x01 prints, 0x02 through the image, 0x80 gradient
        bool image;
    };
    // The outline is red, the fill blue.
    const Row rows[] = {
        { "outline's ink", false, 3, 1, red, black, white, 0x01, false },
        { "fill's ink", false, 3, 1, blue, white, black, 0x01, false },
        { "another ink", false, 3, 1, yellow, white, white, 0x00, false },
        { "outline's ink without outline", false, 0, 1, red, white, white, 0x00, false },
        { "gradient, its ink", false, 3, 16, blue, white, black, 0x83, true },
        { "gradient, outline's ink", false, 3, 16, red, black, white, 0x83, true },
        { "gradient, another ink", false, 3, 16, yellow, white, white, 0x00, false },
        { "negative, outline's ink", true, 3, 1, red, white, black, 0x01, false },
        { "negative, fill's ink", true, 3, 1, blue, black, white, 0x01, false },
        { "negative, another ink", true, 3, 1, yellow, black, black, 0x01, false },
        { "negative, fill's ink without outline", true, 0, 1, blue, white, white, 0x00, false },
        { "negative gradient, its ink", true, 3, 15, blue, black, white, 0x83, true },
        { "negative gradient, outline's ink", true, 3, 15, red, white, black, 0x83, true },
        { "negative gradient, its ink without outline", true, 0, 15, blue, white, white, 0x00, false },
    };
    for (const ShapeType shape : { ellipseShape, pieShape, roundedShape }) {
        for (const Row &row : rows)
            QTest::addRow("%s, %s", AllItems::nameOf(shape), row.name)
                << shape << row.negative << row.penWidth << row.brush << row.ink << row.pen << row.fill
                << row.flags << row.image;
    }
}

void tst_RoundPrinting::shapeIsReducedToOneInk()
{
    QFETCH(const ShapeType, shape);
    QFETCH(const bool, negative);
    QFETCH(const int, penWidth);
    QFETCH(const int, brushStyle);
    QFETCH(const QColor, ink);
    QFETCH(const uint, flags);
    QFETCH(const bool, image);
    const auto item = fillable(shape);
    item->setItemSize(QSizeF(50, 30));
    item->setItemPenColor(red);
    item->setItemPenWidth(static_cast<ushort>(penWidth));
    item->setItemFillColor(blue);
    item->setItemBrushStyleInt(brushStyle);
    item->setPrintScaling(2.0);
    const bool printed
        = negative ? item->resetItemColorsNegative(ink) : item->resetItemColors(ink, true, true);
    QCOMPARE(printed, (flags & 0x01) != 0);
    QCOMPARE(item->itemFlags(), flags);
    QTEST(item->getItemPenColor(), "pen");
    QTEST(item->getItemFillColor(), "fill");
    if (image)
        comparePrintImage(*item);
    else
        QVERIFY(item->getPreprintedImage().isNull());
    if (!image && brushStyle != 1)
        QCOMPARE(item->getItemBrush(), QBrush(white, Qt::SolidPattern));
}

void tst_RoundPrinting::partialRenderingShowsThePrintImageInItsInk()
{
    QFETCH(const ShapeType, shape);
    const auto item = fillable(shape);
    item->setItemSize(QSizeF(40, 20));
    item->setItemPenWidth(0);
    item->setItemFillColor(red);
    item->setItemBrushStyle(MobraTypes::BrushConicalGradient);
    item->setItemPalette({ blue, red, yellow });

    const std::unique_ptr<Item> copied(item->createItemCopy());
    auto &blackened = dynamic_cast<FillableItem &>(*copied);
    blackened.setItemFillColor(black);
    const QImage expected
        = PrintImages::inked(printImageStepByStep(blackened), { 40, 20 }, redPixel, yellowPixel);
    QCOMPARE(coloursOf(expected), (QSet<QRgb> { clearPixel, redPixel, yellowPixel }));
    const QString difference = Images::difference(item->partialColorRender(), expected, u"partial"_s);
    QVERIFY2(difference.isEmpty(), qPrintable(difference));
}

QTEST_MAIN(tst_RoundPrinting)
#include "tst_roundprinting.moc"
