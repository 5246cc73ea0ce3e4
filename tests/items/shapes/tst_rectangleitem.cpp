// SPDX-License-Identifier: BSD-3-Clause
#include "items/shapes/rectangleitem.h"
#include "tests/support/images.h"
#include "tests/support/itemrecords.h"
#include "tests/support/standins.h"

#include <QBitmap>
#include <QGraphicsPixmapItem>
#include <QGraphicsScene>
#include <QLinearGradient>
#include <QMetaProperty>
#include <QPainter>
#include <QRegularExpression>
#include <QTest>

#include <limits>
#include <memory>

using namespace Qt::StringLiterals;

namespace {

const QColor red(255, 0, 0);
const QColor blue(0, 0, 255);
const QColor black(0, 0, 0);
const QColor white(255, 255, 255);
const QColor transparent(0, 0, 0, 0);

constexpr QRgb blackPixel = 0xFF000000;
constexpr QRgb whitePixel = 0xFFFFFFFF;
constexpr QRgb clearPixel = 0x00000000;

QPainterPath pathOf(const QRectF &rect)
{
    QPainterPath path;
    path.addRect(rect);
    return path;
}

/// White with coloured rectangles on it, later ones above earlier ones.
QImage pictureOf(QSize size, const QList<std::pair<QRect, QColor>> &rectangles)
{
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::white);
    QPainter painter(&image);
    for (const auto &[rect, colour] : rectangles)
        painter.fillRect(rect, colour);
    return image;
}

/// The pixels of an image, each value once.
QSet<QRgb> coloursOf(const QImage &image)
{
    QSet<QRgb> colours;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x)
            colours.insert(image.pixel(x, y));
    }
    return colours;
}

/// The print image made step by step as it is defined, with nothing but Qt.
QImage printImageStepByStep(RectangleItem &item)
{
    const double scaling = item.getScaling();
    const double width = item.getItemWidth() * scaling;
    const double height = item.getItemHeight() * scaling;
    QPen pen = item.getItemPen();
    const double penWidth = pen.widthF() * scaling;
    pen.setWidthF(penWidth);
    item.updateItemBrush();
    const QRectF rect(penWidth / 2, penWidth / 2, width - penWidth, height - penWidth);

    QImage image(qRound(width), qRound(height), QImage::Format_ARGB32_Premultiplied);
    image.fill(whitePixel);
    {
        QPainter painter(&image);
        painter.setPen(pen);
        painter.setBrush(item.getItemBrush());
        painter.drawRect(rect);
    }
    const QImage mono = image.convertToFormat(QImage::Format_Mono, item.getPrintDitherMethod());

    image.fill(whitePixel);
    {
        QPainter painter(&image);
        painter.setPen(QPen(Qt::black, 1.0, Qt::SolidLine, Qt::SquareCap, Qt::BevelJoin));
        painter.setBrush(Qt::black);
        painter.drawRect(rect);
    }
    const QBitmap mask = QBitmap::fromImage(image);

    image.fill(clearPixel);
    QPainter painter(&image);
    painter.setClipRegion(QRegion(mask), Qt::ReplaceClip);
    painter.drawImage(0, 0, mono);
    return image;
}

QSizeF resized(RectangleItem &item, int parameters, const QSizeF &size)
{
    if (parameters == 1)
        item.setItemSize(size);
    else if (parameters == 3)
        item.setItemSize(size, false, false);
    else
        item.setItemSize(size, false, 1, 1, 1000, 1000, false, false);
    return item.getItemSize();
}

} // namespace

class tst_RectangleItem : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    void newRectangleIsAHundredSquare();
    void descriptionNamesTheId_data();
    void descriptionNamesTheId();
    void propertiesAreDeclaredInOrder();
    void outlineLiesInsideTheSize_data();
    void outlineLiesInsideTheSize();
    void everyResizeLaysTheRectangleOut_data();
    void everyResizeLaysTheRectangleOut();
    void equalSizeChangesNothing();
    void singleSidesAreOnlyStored();
    void updatedSizeLaysEverythingOut();
    void changedPenResetsTheScales();
    void unchangedPenKeepsTheScales();
    void boundsAndShapeAreTheLogicalSize();
    void opaqueAreaIsTheRectangleOfAnOpaqueFill_data();
    void opaqueAreaIsTheRectangleOfAnOpaqueFill();
    void outlineIsPaintedInside_data();
    void outlineIsPaintedInside();
    void unknownStylesArePaintedAsNothing_data();
    void unknownStylesArePaintedAsNothing();
    void mirrorsTurnThePicture_data();
    void mirrorsTurnThePicture();
    void frameIsDrawnAtTopLevelAndInLayers_data();
    void frameIsDrawnAtTopLevelAndInLayers();
    void unselectedRectangleHasNoFrame();
    void negativeReductionNeverPrintsATransparentOutline_data();
    void negativeReductionNeverPrintsATransparentOutline();
    void negativeReductionOfTheItemFollowsItsOutline();
    void copyIsEqual();
    void copyOfAnUntouchedRectangleIsEqual();
    void recordLoadsLayTheRectangleOut();
    void mapHoldsTheProperties();
    void mapLoadsLayTheRectangleOut();
    void mapLoadsLimitThePenToTheNewSize();
    void emptyMapMovesToThePendingPosition();
    void mapWithOneCoordinateTakesThePendingOther();
    void mapWithUnknownKeysIsAppliedInPart();
    void mapDropsTheTransparencyOfTheFill();
    void printImageMatchesItsDefinition_data();
    void printImageMatchesItsDefinition();
    void blackFillPrintsBlack_data();
    void blackFillPrintsBlack();
    void emptyFillPrintsTheOutlineOnWhite();
    void gradientPrintsInBlackAndWhite();
    void sizesWithoutPixelsHaveNoPrintImage_data();
    void sizesWithoutPixelsHaveNoPrintImage();
    void reducedGradientReachesThePrintSceneAsItsImage();
    void partialRenderingShowsThePrintImageInItsInk_data();
    void partialRenderingShowsThePrintImageInItsInk();
};

void tst_RectangleItem::newRectangleIsAHundredSquare()
{
    RectangleItem item;
    QCOMPARE(item.getItemShape(), MobraTypes::RectangleShape);
    QCOMPARE(item.type(), 0x1002A);
    QCOMPARE(item.getItemSize(), QSizeF(100, 100));
    QCOMPARE(item.rect(), QRectF(0.5, 0.5, 99, 99));
    QCOMPARE(item.boundingRect(), QRectF(0, 0, 100, 100));
    QCOMPARE(item.itemQFlags(), 0x107U);
    QCOMPARE(item.itemFlags(), 0x01U);
    QCOMPARE(item.getItemScaleX(), 1.0);
    QCOMPARE(item.getItemScaleY(), 1.0);
    QCOMPARE(item.getItemPenColor(), black);
    QCOMPARE(item.getItemFillColor(), transparent);
    QVERIFY(!item.itemIsOpaque());

    const QPen pen = item.getItemPen();
    QCOMPARE(pen.color(), black);
    QCOMPARE(pen.widthF(), 1.0);
    QCOMPARE(pen.style(), Qt::SolidLine);
    QCOMPARE(pen.capStyle(), Qt::RoundCap);
    QCOMPARE(pen.joinStyle(), Qt::RoundJoin);
    QCOMPARE(pen.miterLimit(), 4.0);
    QCOMPARE(item.getItemBrush(), QBrush(transparent, Qt::NoBrush));
}

void tst_RectangleItem::descriptionNamesTheId_data()
{
    QTest::addColumn<int>("id");
    QTest::addColumn<QString>("text");

    QTest::newRow("new") << -1 << u"rectangle -1"_s;
    QTest::newRow("zero") << 0 << u"rectangle 0"_s;
    QTest::newRow("largest") << 32767 << u"rectangle 32767"_s;
    QTest::newRow("smallest") << -32768 << u"rectangle -32768"_s;
}

void tst_RectangleItem::descriptionNamesTheId()
{
    QFETCH(const int, id);
    RectangleItem item;
    item.setItemId(static_cast<short>(id));
    QTEST(item.toDescriptionString(), "text");
}

void tst_RectangleItem::propertiesAreDeclaredInOrder()
{
    const QMetaObject &meta = RectangleItem::staticMetaObject;
    QStringList declared;
    for (int i = meta.propertyOffset(); i < meta.propertyCount(); ++i)
        declared << QString::fromLatin1(meta.property(i).typeName()) + u' '
                + QString::fromLatin1(meta.property(i).name());
    const QStringList expected { u"uint itemShape"_s, u"short itemId"_s, u"uint itemFlags"_s,
        u"uint itemQFlags"_s, u"double itemZValue"_s, u"double itemRotation"_s,
        u"double itemHorizontalMirror"_s, u"double itemVerticalMirror"_s, u"double itemWidth"_s,
        u"double itemHeight"_s, u"double itemScaleX"_s, u"double itemScaleY"_s,
        u"QVariantList itemTransform"_s, u"bool allowOverprint"_s, u"QString itemPenColor"_s,
        u"QString itemFillColor"_s, u"ushort itemPenWidth"_s, u"ushort itemPenStyle"_s,
        u"ushort itemPenCapStyle"_s, u"ushort itemPenJoinStyle"_s, u"ushort itemBrushStyle"_s,
        u"double itemPositionX"_s, u"double itemPositionY"_s };
    QCOMPARE(declared, expected);
    QCOMPARE(meta.methodCount() - meta.methodOffset(), 0);
}

void tst_RectangleItem::outlineLiesInsideTheSize_data()
{
    QTest::addColumn<QSizeF>("size");
    QTest::addColumn<int>("penWidth");
    QTest::addColumn<QRectF>("rect");

    QTest::newRow("default pen") << QSizeF(200, 50) << 1 << QRectF(0.5, 0.5, 199, 49);
    QTest::newRow("even pen") << QSizeF(200, 50) << 4 << QRectF(2, 2, 196, 46);
    QTest::newRow("no pen") << QSizeF(200, 50) << 0 << QRectF(0, 0, 200, 50);
    QTest::newRow("pen limited to half the height plus one") << QSizeF(10, 4) << 5 << QRectF(1.5, 1.5, 7, 1);
    QTest::newRow("pen as wide as the height") << QSizeF(10, 2) << 5 << QRectF(1, 1, 8, 0);
    QTest::newRow("smaller than its pen") << QSizeF(0.5, 0.5) << 1 << QRectF(0.5, 0.5, -0.5, -0.5);
    QTest::newRow("broken size") << QSizeF(33.25, 17.5) << 3 << QRectF(1.5, 1.5, 30.25, 14.5);
}

void tst_RectangleItem::outlineLiesInsideTheSize()
{
    QFETCH(const QSizeF, size);
    QFETCH(const int, penWidth);
    RectangleItem sizedFirst;
    sizedFirst.setItemSize(size);
    sizedFirst.setItemPenWidth(static_cast<ushort>(penWidth));
    QTEST(sizedFirst.rect(), "rect");
    RectangleItem sizedLast;
    sizedLast.setItemPenWidth(static_cast<ushort>(penWidth));
    sizedLast.setItemSize(size);
    QTEST(sizedLast.rect(), "rect");
    QCOMPARE(sizedLast.boundingRect(), QRectF(QPointF(0, 0), size));
}

void tst_RectangleItem::everyResizeLaysTheRectangleOut_data()
{
    QTest::addColumn<int>("parameters");

    QTest::newRow("size") << 1;
    QTest::newRow("size and ratio") << 3;
    QTest::newRow("size, ratio and limits") << 8;
}

void tst_RectangleItem::everyResizeLaysTheRectangleOut()
{
    QFETCH(const int, parameters);
    RectangleItem item;
    item.setItemFillColor(red);
    item.setItemBrushStyle(MobraTypes::BrushLinearGradient);
    QCOMPARE(resized(item, parameters, QSizeF(200, 50)), QSizeF(200, 50));
    QCOMPARE(item.rect(), QRectF(0.5, 0.5, 199, 49));
    QCOMPARE(item.boundingRect(), QRectF(0, 0, 200, 50));
    QCOMPARE(item.getItemScaleX(), 1.0);
    QCOMPARE(item.getItemScaleY(), 1.0);
    const QBrush brush = item.getItemBrush();
    QCOMPARE(static_cast<const QLinearGradient *>(brush.gradient())->finalStop(), QPointF(0, 50));
}

void tst_RectangleItem::equalSizeChangesNothing()
{
    RectangleItem item;
    item.setItemScaleX(2.0);
    QVERIFY(!item.setItemSize(QSizeF(100, 100)));
    QVERIFY(!item.setItemSize(QSizeF(100, 100), true, false));
    QVERIFY(!item.setItemSize(QSizeF(100, 100), false, 1, 1, 200, 200, false, false));
    QCOMPARE(item.getItemScaleX(), 2.0);
    QCOMPARE(item.rect(), QRectF(0.5, 0.5, 99, 99));
}

void tst_RectangleItem::singleSidesAreOnlyStored()
{
    RectangleItem item;
    item.setItemWidth(40.0);
    item.setItemHeight(30.0);
    QCOMPARE(item.boundingRect(), QRectF(0, 0, 40, 30));
    QCOMPARE(item.rect(), QRectF(0.5, 0.5, 99, 99));
    QCOMPARE(item.getItemScaleX(), 1.0);
}

void tst_RectangleItem::updatedSizeLaysEverythingOut()
{
    RectangleItem item;
    item.setItemPenWidth(5);
    item.setItemFillColor(red);
    item.setItemBrushStyle(MobraTypes::BrushLinearGradient);
    item.updateItemSize(QSizeF(10, 4));
    QCOMPARE(item.getItemSize(), QSizeF(10, 4));
    QCOMPARE(item.getItemPen().widthF(), 3.0);
    QCOMPARE(item.getItemPenWidth(), ushort(5));
    QCOMPARE(item.rect(), QRectF(1.5, 1.5, 7, 1));
    QCOMPARE(item.getItemScaleX(), 1.0);
    QCOMPARE(item.getItemScaleY(), 1.0);
    const QBrush brush = item.getItemBrush();
    QCOMPARE(static_cast<const QLinearGradient *>(brush.gradient())->finalStop(), QPointF(0, 4));
}

void tst_RectangleItem::changedPenResetsTheScales()
{
    RectangleItem item;
    item.setItemScaleX(2.0);
    item.setItemScaleY(3.0);
    item.setItemPenWidth(10);
    QCOMPARE(item.rect(), QRectF(5, 5, 90, 90));
    QCOMPARE(item.getItemScaleX(), 1.0);
    QCOMPARE(item.getItemScaleY(), 1.0);
}

void tst_RectangleItem::unchangedPenKeepsTheScales()
{
    RectangleItem item;
    item.setItemScaleX(2.0);
    item.setItemScaleY(3.0);
    item.updateItemPen();
    QCOMPARE(item.getItemScaleX(), 2.0);
    QCOMPARE(item.getItemScaleY(), 3.0);
}

void tst_RectangleItem::boundsAndShapeAreTheLogicalSize()
{
    RectangleItem item;
    item.setItemPenWidth(40);
    item.setItemSize(QSizeF(33.25, 17.5));
    QCOMPARE(item.boundingRect(), QRectF(0, 0, 33.25, 17.5));
    QCOMPARE(item.shape(), pathOf(QRectF(0, 0, 33.25, 17.5)));
}

void tst_RectangleItem::opaqueAreaIsTheRectangleOfAnOpaqueFill_data()
{
    QTest::addColumn<QColor>("fill");
    QTest::addColumn<MobraTypes::BrushStyle>("style");
    QTest::addColumn<bool>("opaque");

    QTest::newRow("transparent") << transparent << MobraTypes::BrushSolid << false;
    QTest::newRow("solid") << red << MobraTypes::BrushSolid << true;
    QTest::newRow("none") << red << MobraTypes::BrushNone << false;
    QTest::newRow("dense") << red << MobraTypes::BrushDense1 << false;
    QTest::newRow("cross") << red << MobraTypes::BrushCross << false;
    QTest::newRow("linear") << red << MobraTypes::BrushLinearGradient << true;
    QTest::newRow("radial") << red << MobraTypes::BrushRadialGradient << true;
    QTest::newRow("conical") << red << MobraTypes::BrushConicalGradient << true;
}

void tst_RectangleItem::opaqueAreaIsTheRectangleOfAnOpaqueFill()
{
    QFETCH(const QColor, fill);
    QFETCH(const MobraTypes::BrushStyle, style);
    QFETCH(const bool, opaque);
    RectangleItem item;
    item.setItemSize(QSizeF(40, 30));
    item.setItemFillColor(fill);
    item.setItemBrushStyle(style);
    QCOMPARE(item.opaqueArea(), opaque ? pathOf(QRectF(0, 0, 40, 30)) : QPainterPath());
}

void tst_RectangleItem::outlineIsPaintedInside_data()
{
    QTest::addColumn<int>("penWidth");
    QTest::addColumn<QColor>("fill");
    QTest::addColumn<QImage>("picture");

    const QSize size(14, 12);
    const QRect whole(0, 0, 12, 10);
    QTest::newRow("pen of 1") << 1 << blue
                              << pictureOf(size, { { whole, red }, { QRect(1, 1, 10, 8), blue } });
    QTest::newRow("pen of 2") << 2 << blue
                              << pictureOf(size, { { whole, red }, { QRect(2, 2, 8, 6), blue } });
    QTest::newRow("pen of 4") << 4 << blue
                              << pictureOf(size, { { whole, red }, { QRect(4, 4, 4, 2), blue } });
    QTest::newRow("no pen") << 0 << blue << pictureOf(size, { { whole, blue } });
    QTest::newRow("no fill") << 2 << transparent
                             << pictureOf(size, { { whole, red }, { QRect(2, 2, 8, 6), white } });
}

void tst_RectangleItem::outlineIsPaintedInside()
{
    QFETCH(const int, penWidth);
    QFETCH(const QColor, fill);
    QFETCH(const QImage, picture);
    RectangleItem item;
    item.setItemSize(QSizeF(12, 10));
    item.setItemPenColor(red);
    item.setItemPenJoinStyle(Qt::MiterJoin);
    item.setItemPenWidth(static_cast<ushort>(penWidth));
    item.setItemFillColor(fill);
    const QString difference
        = Images::difference(Images::painted(item, picture.size()), picture, u"outline"_s);
    QVERIFY2(difference.isEmpty(), qPrintable(difference));
}

void tst_RectangleItem::unknownStylesArePaintedAsNothing_data()
{
    QTest::addColumn<int>("style");

    for (const int style : { 18, 42, 255, 32767, -2, -32768 })
        QTest::addRow("style %d", style) << style;
}

void tst_RectangleItem::unknownStylesArePaintedAsNothing()
{
    QFETCH(const int, style);
    RectangleItem item;
    item.setItemPenColor(red);
    item.setItemPenWidth(4);
    item.setItemPenStyle(static_cast<Qt::PenStyle>(style));
    QCOMPARE(coloursOf(Images::painted(item, { 100, 100 })), QSet<QRgb> { whitePixel });
    QCOMPARE(int(item.getItemPenStyle()), style);

    item.setItemFillColor(blue);
    item.setItemBrushStyle(static_cast<MobraTypes::BrushStyle>(style));
    QCOMPARE(coloursOf(Images::painted(item, { 100, 100 })), QSet<QRgb> { whitePixel });
    QCOMPARE(int(item.getItemBrushStyle()), style);
}

void tst_RectangleItem::mirrorsTurnThePicture_data()
{
    QTest::addColumn<bool>("horizontal");
    QTest::addColumn<bool>("vertical");
    QTest::addColumn<QPoint>("dark");
    QTest::addColumn<QPoint>("light");

    QTest::newRow("plain") << false << false << QPoint(99, 0) << QPoint(0, 99);
    QTest::newRow("left and right") << true << false << QPoint(0, 0) << QPoint(99, 99);
    QTest::newRow("top and bottom") << false << true << QPoint(99, 99) << QPoint(0, 0);
    QTest::newRow("both") << true << true << QPoint(0, 99) << QPoint(99, 0);
}

void tst_RectangleItem::mirrorsTurnThePicture()
{
    QFETCH(const bool, horizontal);
    QFETCH(const bool, vertical);
    QFETCH(const QPoint, dark);
    QFETCH(const QPoint, light);
    RectangleItem item;
    item.setItemPenStyle(Qt::NoPen);
    item.setItemFillColor(red);
    item.setItemBrushStyle(MobraTypes::BrushConicalGradient);
    item.setItemHorizontalMirror(horizontal);
    item.setItemVerticalMirror(vertical);

    // The gradient turns counter-clockwise about the upper left corner, from white at 135 degrees to red. The
    // upper right corner is 225 degrees further, 0.625 of the way; the lower left one is 135 degrees further,
    // 0.375.
    const QImage image = Images::painted(item, { 100, 100 });
    QVERIFY(qAbs(qGreen(image.pixel(dark)) - 96) <= 3);
    QVERIFY(qAbs(qGreen(image.pixel(light)) - 159) <= 3);
}

void tst_RectangleItem::frameIsDrawnAtTopLevelAndInLayers_data()
{
    QTest::addColumn<QString>("parent");
    QTest::addColumn<bool>("framed");

    QTest::newRow("no parent") << u"none"_s << true;
    QTest::newRow("layer") << u"layer"_s << true;
    QTest::newRow("group") << u"group"_s << false;
    QTest::newRow("rectangle") << u"rectangle"_s << false;
    QTest::newRow("an item of another kind") << u"other"_s << false;
}

void tst_RectangleItem::frameIsDrawnAtTopLevelAndInLayers()
{
    QFETCH(const QString, parent);
    ParentStandIn layer(MobraTypes::LayerShape);
    ParentStandIn group(MobraTypes::GroupShape);
    RectangleItem rectangle;
    QGraphicsRectItem other;
    const QMap<QString, QGraphicsItem *> parents { { u"layer"_s, &layer }, { u"group"_s, &group },
        { u"rectangle"_s, &rectangle }, { u"other"_s, &other } };
    RectangleItem item;
    item.setItemPenStyle(Qt::NoPen);
    item.setParentItem(parents.value(parent));

    // Orange (239, 127, 15) with alpha 50 on white: 255 - (255 - c) * 50 / 255.
    const QImage image = Images::painted(item, { 120, 120 }, QStyle::State_Selected);
    const bool framed = Images::largestDifference(image.pixel(50, 50), qRgb(252, 230, 208)) <= 1;
    QTEST(framed, "framed");
    QCOMPARE(image.pixel(50, 50) == whitePixel, !framed);
    QCOMPARE(image.pixel(110, 110), whitePixel);
}

void tst_RectangleItem::unselectedRectangleHasNoFrame()
{
    RectangleItem item;
    item.setItemPenStyle(Qt::NoPen);
    QCOMPARE(
        coloursOf(Images::painted(item, { 120, 120 }, QStyle::State_Enabled)), QSet<QRgb> { whitePixel });
}

void tst_RectangleItem::negativeReductionNeverPrintsATransparentOutline_data()
{
    QTest::addColumn<QColor>("pen");
    QTest::addColumn<Qt::PenStyle>("style");
    QTest::addColumn<QColor>("printColour");
    QTest::addColumn<bool>("printed");

    QTest::newRow("transparent for red") << transparent << Qt::SolidLine << red << false;
    QTest::newRow("transparent for black") << transparent << Qt::SolidLine << black << false;
    QTest::newRow("red without alpha is not transparent")
        << QColor(255, 0, 0, 0) << Qt::SolidLine << red << true;
    QTest::newRow("red for red") << red << Qt::SolidLine << red << false;
    QTest::newRow("blue for red") << blue << Qt::SolidLine << red << true;
    QTest::newRow("blue dashes for red") << blue << Qt::DashLine << red << true;
    QTest::newRow("no style") << blue << Qt::NoPen << red << false;
}

void tst_RectangleItem::negativeReductionNeverPrintsATransparentOutline()
{
    QFETCH(const QColor, pen);
    QFETCH(const Qt::PenStyle, style);
    QFETCH(const QColor, printColour);
    QFETCH(const bool, printed);
    RectangleItem item;
    item.setItemPenColor(pen);
    item.setItemPenStyle(style);
    QCOMPARE(item.resetItemPenColorsNegative(printColour), printed);
    QCOMPARE(item.getItemPenColor(), printed ? black : white);
    if (style != Qt::NoPen)
        QCOMPARE(item.getItemPen().color(), printed ? black : white);
}

void tst_RectangleItem::negativeReductionOfTheItemFollowsItsOutline()
{
    RectangleItem item;
    item.setItemPenColor(transparent);
    QVERIFY(!item.resetItemColorsNegative(red));
    QCOMPARE(item.itemFlags(), 0x00U);
    QCOMPARE(item.getItemBrushStyle(), MobraTypes::BrushNone);

    item.setItemPenColor(blue);
    QVERIFY(item.resetItemColorsNegative(red));
    QCOMPARE(item.itemFlags(), 0x01U);
}

void tst_RectangleItem::copyIsEqual()
{
    RectangleItem item;
    item.setItemId(42);
    item.setItemSize(QSizeF(60, 40));
    item.setPos(11, 22);
    item.setItemRotation(30);
    item.setItemHorizontalMirror(true);
    item.setItemVerticalMirror(true);
    item.setItemPenColor(QColor(1, 2, 3, 4));
    item.setItemPenWidth(3);
    item.setItemPenStyle(Qt::DotLine);
    item.setItemPenCapStyle(Qt::FlatCap);
    item.setItemPenJoinStyle(Qt::BevelJoin);
    item.setItemFillColor(QColor(5, 6, 7, 8));
    item.setItemBrushStyle(MobraTypes::BrushRadialGradient);
    item.setSceneBackgroundColor(blue);
    item.setZValue(3.5);
    item.setDatasourceId(7);
    item.setDatasourceField(u"Name"_s);
    item.setAllowOverprint(false);
    item.setSelected(true);

    const std::unique_ptr<Item> copied(item.createItemCopy());
    auto *copy = dynamic_cast<RectangleItem *>(copied.get());
    QVERIFY(copy);
    QCOMPARE(ItemRecords::saved(*copy), ItemRecords::saved(item));
    QCOMPARE(copy->rect(), QRectF(1.5, 1.5, 57, 37));
    QCOMPARE(copy->getItemPen(), item.getItemPen());
    QCOMPARE(copy->getItemBrush(), item.getItemBrush());
    QCOMPARE(copy->getSceneBackgroundColor(), blue);
    QCOMPARE(copy->pos(), item.pos());
    QCOMPARE(copy->transform(), item.transform());
    QCOMPARE(copy->getItemRotation(), 30.0);
    QCOMPARE(copy->isSelected(), item.isSelected());
    QVERIFY(!copy->scene());
    QVERIFY(!copy->parentItem());
}

void tst_RectangleItem::copyOfAnUntouchedRectangleIsEqual()
{
    RectangleItem item;
    const std::unique_ptr<Item> copied(item.createItemCopy());
    auto *copy = dynamic_cast<RectangleItem *>(copied.get());
    QVERIFY(copy);
    QCOMPARE(ItemRecords::saved(*copy), ItemRecords::saved(item));
    QCOMPARE(copy->rect(), QRectF(0.5, 0.5, 99, 99));
    QCOMPARE(copy->getItemBrush(), item.getItemBrush());
    QVERIFY(!copy->itemIsOpaque());
}

void tst_RectangleItem::recordLoadsLayTheRectangleOut()
{
    RectangleItem source;
    source.setItemSize(QSizeF(10, 4));
    source.setItemPenWidth(5);
    source.setItemFillColor(red);
    source.setItemBrushStyle(MobraTypes::BrushLinearGradient);
    source.setItemScaleX(3.0);

    RectangleItem loaded;
    loaded.setItemFillColor(red);
    QCOMPARE(ItemRecords::load(loaded, ItemRecords::saved(source)), QDataStream::Ok);
    QCOMPARE(loaded.rect(), QRectF(1.5, 1.5, 7, 1));
    QCOMPARE(loaded.boundingRect(), QRectF(0, 0, 10, 4));
    QCOMPARE(loaded.getItemPenWidth(), ushort(5));
    QCOMPARE(loaded.getItemScaleX(), 1.0);
    const QBrush brush = loaded.getItemBrush();
    QCOMPARE(brush.style(), Qt::LinearGradientPattern);
    QCOMPARE(static_cast<const QLinearGradient *>(brush.gradient())->finalStop(), QPointF(0, 4));
}

void tst_RectangleItem::mapHoldsTheProperties()
{
    RectangleItem item;
    item.setItemId(-7);
    item.setItemSize(QSizeF(40, 30));
    item.setItemVerticalMirror(true);
    item.setItemPenColor(QColor(0x12, 0xAB, 0xEF, 0x80));
    item.setItemFillColor(red);
    item.setItemBrushStyle(MobraTypes::BrushConicalGradient);
    item.setPos(3, 4);
    item.setZValue(1.5);
    const QVariantList identity { 1.0, 0.0, 0.0, 0.0, 1.0, 0.0, 0.0, 0.0 };
    const QVariantMap expected { { u"itemShape"_s, 0x1002AU },
        { u"itemId"_s, QVariant::fromValue<short>(-7) }, { u"itemFlags"_s, 0x81U },
        { u"itemQFlags"_s, 0x107U }, { u"itemZValue"_s, 1.5 }, { u"itemRotation"_s, 0.0 },
        { u"itemHorizontalMirror"_s, 0.0 }, { u"itemVerticalMirror"_s, 1.0 }, { u"itemWidth"_s, 40.0 },
        { u"itemHeight"_s, 30.0 }, { u"itemScaleX"_s, 1.0 }, { u"itemScaleY"_s, 1.0 },
        { u"itemTransform"_s, identity }, { u"allowOverprint"_s, true }, { u"itemPenColor"_s, u"#12abef"_s },
        { u"itemFillColor"_s, u"#ff0000"_s }, { u"itemPenWidth"_s, QVariant::fromValue<ushort>(1) },
        { u"itemPenStyle"_s, QVariant::fromValue<ushort>(1) },
        { u"itemPenCapStyle"_s, QVariant::fromValue<ushort>(0x20) },
        { u"itemPenJoinStyle"_s, QVariant::fromValue<ushort>(0x80) },
        { u"itemBrushStyle"_s, QVariant::fromValue<ushort>(17) }, { u"itemPositionX"_s, 3.0 },
        { u"itemPositionY"_s, 4.0 } };

    const QVariantMap map = item.saveItemToJSON();
    QCOMPARE(map.keys(), expected.keys());
    for (const QString &key : expected.keys()) {
        QCOMPARE(map.value(key).typeName(), expected.value(key).typeName());
        QCOMPARE(map.value(key), expected.value(key));
    }
}

void tst_RectangleItem::mapLoadsLayTheRectangleOut()
{
    RectangleItem source;
    source.setItemSize(QSizeF(60, 40));
    source.setPos(11, 22);
    source.setItemRotation(30);
    source.setItemPenWidth(4);
    source.setItemPenColor(blue);
    source.setItemFillColor(red);
    source.setItemBrushStyle(MobraTypes::BrushLinearGradient);
    source.setItemHorizontalMirror(true);

    RectangleItem loaded;
    loaded.loadItemFromJSON(source.saveItemToJSON(), ItemRecords::currentVersion);
    QCOMPARE(loaded.saveItemToJSON(), source.saveItemToJSON());
    QCOMPARE(loaded.rect(), QRectF(2, 2, 56, 36));
    QCOMPARE(loaded.pos(), source.pos());
    QCOMPARE(loaded.transform(), source.transform());
    QCOMPARE(loaded.getItemPen(), source.getItemPen());
    QCOMPARE(loaded.getItemBrush(), source.getItemBrush());
}

void tst_RectangleItem::mapLoadsLimitThePenToTheNewSize()
{
    // Keys are applied in alphabetical order, so the pen's width arrives before the item's.
    RectangleItem loaded;
    loaded.loadItemFromJSON({ { u"itemHeight"_s, 40.0 }, { u"itemPenWidth"_s, 5 }, { u"itemWidth"_s, 4.0 } },
        ItemRecords::currentVersion);
    QCOMPARE(loaded.getItemPen().widthF(), 3.0);
    QCOMPARE(loaded.rect(), QRectF(1.5, 1.5, 1, 37));
}

void tst_RectangleItem::emptyMapMovesToThePendingPosition()
{
    RectangleItem item;
    item.setPos(11, 22);
    item.loadItemFromJSON({}, ItemRecords::currentVersion);
    QCOMPARE(item.pos(), QPointF(0, 0));
    QCOMPARE(item.rect(), QRectF(0.5, 0.5, 99, 99));
}

void tst_RectangleItem::mapWithOneCoordinateTakesThePendingOther()
{
    RectangleItem item;
    item.setItemPositionY(5.0);
    item.setPos(11, 22);
    item.loadItemFromJSON({ { u"itemPositionX"_s, 7.0 } }, ItemRecords::currentVersion);
    QCOMPARE(item.pos(), QPointF(7, 5));
}

void tst_RectangleItem::mapWithUnknownKeysIsAppliedInPart()
{
    RectangleItem item;
    item.loadItemFromJSON(
        { { u"noSuchKey"_s, 1 }, { u"itemId"_s, 9 }, { u"itemWidth"_s, 50.0 } }, ItemRecords::currentVersion);
    QCOMPARE(item.itemId(), short(9));
    QCOMPARE(item.rect(), QRectF(0.5, 0.5, 49, 99));
    QVERIFY(item.dynamicPropertyNames().isEmpty());
}

void tst_RectangleItem::mapDropsTheTransparencyOfTheFill()
{
    RectangleItem source;
    RectangleItem loaded;
    loaded.loadItemFromJSON(source.saveItemToJSON(), ItemRecords::currentVersion);
    QCOMPARE(loaded.getItemFillColor(), black);

    QVariantMap map = source.saveItemToJSON();
    map.insert(u"itemFillColor"_s, u"transparent"_s);
    loaded.loadItemFromJSON(map, ItemRecords::currentVersion);
    QCOMPARE(loaded.getItemFillColor(), transparent);
    QCOMPARE(loaded.getItemBrush().style(), Qt::NoBrush);
}

void tst_RectangleItem::printImageMatchesItsDefinition_data()
{
    QTest::addColumn<QSizeF>("size");
    QTest::addColumn<double>("scaling");
    QTest::addColumn<int>("penWidth");
    QTest::addColumn<Qt::PenStyle>("penStyle");
    QTest::addColumn<int>("brushStyle");
    QTest::addColumn<int>("dither");

    const struct
    {
        int width;
        Qt::PenStyle style;
    } pens[] = { { 1, Qt::SolidLine }, { 5, Qt::DashLine }, { 12, Qt::SolidLine }, { 3, Qt::NoPen } };
    for (const QSizeF &size : { QSizeF(100, 60), QSizeF(7.5, 3.25) }) {
        for (const double scaling : { 1.0, 2.0, 0.5, 3.0 }) {
            for (const auto &pen : pens) {
                for (const int brush : { 0, 1, 4, 11, 15, 16, 17 }) {
                    for (const int dither : { 0x0A, int(Qt::MonoOnly | Qt::ThresholdDither) })
                        QTest::addRow("%g high, x %g, pen %d of style %d, brush %d, dither %d", size.height(),
                            scaling, pen.width, int(pen.style), brush, dither)
                            << size << scaling << pen.width << pen.style << brush << dither;
                }
            }
        }
    }
}

void tst_RectangleItem::printImageMatchesItsDefinition()
{
    QFETCH(const QSizeF, size);
    QFETCH(const double, scaling);
    QFETCH(const int, penWidth);
    QFETCH(const Qt::PenStyle, penStyle);
    QFETCH(const int, brushStyle);
    QFETCH(const int, dither);
    RectangleItem item;
    item.setItemSize(size);
    item.setItemPenColor(QColor(0, 96, 192));
    item.setItemPenWidth(static_cast<ushort>(penWidth));
    item.setItemPenStyle(penStyle);
    item.setItemFillColor(QColor(192, 64, 0));
    item.setItemBrushStyleInt(brushStyle);
    item.setPrintDitherMethod(QFlag(dither));
    item.setPrintScaling(scaling);
    item.preparePrintImage();

    const QImage image = item.getPreprintedImage();
    QCOMPARE(image.format(), QImage::Format_ARGB32_Premultiplied);
    const QString difference = Images::difference(image, printImageStepByStep(item), u"print-image"_s);
    QVERIFY2(difference.isEmpty(), qPrintable(difference));
    QVERIFY((QSet<QRgb> { blackPixel, whitePixel, clearPixel }).contains(coloursOf(image)));
}

void tst_RectangleItem::blackFillPrintsBlack_data()
{
    QTest::addColumn<double>("scaling");
    QTest::addColumn<int>("penWidth");
    QTest::addColumn<QRect>("covered");

    QTest::newRow("hairline") << 1.0 << 1 << QRect(0, 0, 20, 10);
    // The mask is drawn with a pen of 1 about the middle of the scaled outline, so wide outlines lose their
    // outer half.
    QTest::newRow("hairline, doubled") << 2.0 << 1 << QRect(1, 1, 39, 19);
    QTest::newRow("pen of 4") << 1.0 << 4 << QRect(2, 2, 17, 7);
    QTest::newRow("no pen") << 1.0 << 0 << QRect(0, 0, 20, 10);
}

void tst_RectangleItem::blackFillPrintsBlack()
{
    QFETCH(const double, scaling);
    QFETCH(const int, penWidth);
    QFETCH(const QRect, covered);
    RectangleItem item;
    item.setItemSize(QSizeF(20, 10));
    item.setItemPenWidth(static_cast<ushort>(penWidth));
    item.setItemFillColor(black);
    item.setPrintScaling(scaling);
    item.preparePrintImage();

    QImage expected(qRound(20 * scaling), qRound(10 * scaling), QImage::Format_ARGB32_Premultiplied);
    expected.fill(clearPixel);
    QPainter(&expected).fillRect(covered, black);
    const QString difference = Images::difference(item.getPreprintedImage(), expected, u"print-black"_s);
    QVERIFY2(difference.isEmpty(), qPrintable(difference));
}

void tst_RectangleItem::emptyFillPrintsTheOutlineOnWhite()
{
    RectangleItem item;
    item.setItemSize(QSizeF(20, 10));
    item.preparePrintImage();
    const QImage expected
        = pictureOf({ 20, 10 }, { { QRect(0, 0, 20, 10), black }, { QRect(1, 1, 18, 8), white } });
    const QString difference = Images::difference(item.getPreprintedImage(), expected, u"print-outline"_s);
    QVERIFY2(difference.isEmpty(), qPrintable(difference));
}

void tst_RectangleItem::gradientPrintsInBlackAndWhite()
{
    RectangleItem item;
    item.setItemPenStyle(Qt::NoPen);
    item.setItemFillColor(black);
    item.setItemBrushStyle(MobraTypes::BrushLinearGradient);
    item.setPrintScaling(2.0);
    item.preparePrintImage();

    const QImage image = item.getPreprintedImage();
    QCOMPARE(image.size(), QSize(200, 200));
    QCOMPARE(coloursOf(image), (QSet<QRgb> { blackPixel, whitePixel }));
    const auto blackIn = [&image](int top, int height) {
        int count = 0;
        for (int y = top; y < top + height; ++y) {
            for (int x = 0; x < image.width(); ++x)
                count += image.pixel(x, y) == blackPixel ? 1 : 0;
        }
        return count;
    };
    // From white at the top to black at the bottom: about an eighth, and about seven eighths, of a quarter's
    // pixels.
    QVERIFY(qAbs(blackIn(0, 50) - 1250) < 150);
    QVERIFY(qAbs(blackIn(150, 50) - 8750) < 150);
}

void tst_RectangleItem::sizesWithoutPixelsHaveNoPrintImage_data()
{
    QTest::addColumn<QSizeF>("size");

    QTest::newRow("empty") << QSizeF(0, 0);
    QTest::newRow("no height") << QSizeF(10, 0);
    QTest::newRow("rounded to nothing") << QSizeF(10, 0.4);
    QTest::newRow("negative") << QSizeF(-10, 10);
    QTest::newRow("not a number") << QSizeF(std::numeric_limits<double>::quiet_NaN(), 10);
    QTest::newRow("infinite") << QSizeF(std::numeric_limits<double>::infinity(), 10);
    QTest::newRow("huge") << QSizeF(1e9, 1e9);
}

void tst_RectangleItem::sizesWithoutPixelsHaveNoPrintImage()
{
    QFETCH(const QSizeF, size);
    RectangleItem item;
    item.setItemSize(size);
    item.setItemFillColor(red);
    item.setItemBrushStyle(MobraTypes::BrushLinearGradient);
    item.preparePrintImage();
    QVERIFY(item.getPreprintedImage().isNull());
}

void tst_RectangleItem::reducedGradientReachesThePrintSceneAsItsImage()
{
    RectangleItem item;
    item.setItemSize(QSizeF(40, 20));
    item.setPos(10, 20);
    item.setItemPenStyle(Qt::NoPen);
    item.setItemFillColor(red);
    item.setItemBrushStyle(MobraTypes::BrushLinearGradient);
    item.setPrintScaling(2.0);
    QVERIFY(item.resetItemColors(red, true, true));
    QCOMPARE(item.itemFlags(), 0x83U);
    QCOMPARE(coloursOf(item.getPreprintedImage()), (QSet<QRgb> { blackPixel, whitePixel }));

    QGraphicsScene scene;
    QVERIFY(item.addItemToPrintScene(&scene, 2.0));
    QCOMPARE(scene.items().size(), 1);
    const auto *pixmap = qgraphicsitem_cast<QGraphicsPixmapItem *>(scene.items().first());
    QVERIFY(pixmap);
    QCOMPARE(pixmap->pos(), QPointF(20, 40));
    QCOMPARE(pixmap->pixmap().size(), QSize(80, 40));
    QVERIFY(!item.scene());
}

void tst_RectangleItem::partialRenderingShowsThePrintImageInItsInk_data()
{
    QTest::addColumn<double>("scaling");

    QTest::newRow("plain") << 1.0;
    QTest::newRow("cut from a larger print image") << 2.0;
    QTest::newRow("padded to the size of the item") << 0.5;
}

void tst_RectangleItem::partialRenderingShowsThePrintImageInItsInk()
{
    QFETCH(const double, scaling);
    RectangleItem item;
    item.setItemSize(QSizeF(39.5, 20));
    item.setItemPenStyle(Qt::NoPen);
    item.setItemFillColor(red);
    item.setItemBrushStyle(MobraTypes::BrushLinearGradient);
    item.setPrintScaling(scaling);
    item.setItemPalette({ blue, red, QColor(255, 255, 0) });

    RectangleItem blackened;
    item.copyItemProperties(&blackened, true);
    blackened.setItemFillColor(black);
    const QImage printImage = printImageStepByStep(blackened);
    QImage expected(40, 20, QImage::Format_ARGB32_Premultiplied);
    expected.fill(clearPixel);
    for (int y = 0; y < qMin(20, printImage.height()); ++y) {
        for (int x = 0; x < qMin(40, printImage.width()); ++x) {
            if (printImage.pixel(x, y) == blackPixel)
                expected.setPixel(x, y, 0xFFFF0000);
            else if (printImage.pixel(x, y) == whitePixel)
                expected.setPixel(x, y, 0xFFFFFF00);
        }
    }
    const QString difference = Images::difference(item.partialColorRender(), expected, u"partial"_s);
    QVERIFY2(difference.isEmpty(), qPrintable(difference));
}

QTEST_MAIN(tst_RectangleItem)
#include "tst_rectangleitem.moc"
