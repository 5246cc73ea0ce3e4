// SPDX-License-Identifier: BSD-3-Clause
#include "items/shapes/rectangleitem.h"
#include "tests/support/colours.h"
#include "tests/support/images.h"

#include <QPainterPath>
#include <QRegularExpression>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace Colours;
using Images::coloursOf;
using Images::pictureOf;

namespace {

QPainterPath pathOf(const QRectF &rect)
{
    QPainterPath path;
    path.addRect(rect);
    return path;
}

} // namespace

class tst_RectangleItem : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    void newRectangleIsAHundredSquare();
    void changedPenResetsTheScales();
    void unchangedPenKeepsTheScales();
    void boundsAndShapeAreTheLogicalSize();
    void outlineIsPaintedInside_data();
    void outlineIsPaintedInside();
    void unknownStylesArePaintedAsNothing_data();
    void unknownStylesArePaintedAsNothing();
    void hugeDottedOutlineIsPaintedInTime_data();
    void hugeDottedOutlineIsPaintedInTime();
    void mirrorsTurnThePicture_data();
    void mirrorsTurnThePicture();
    void negativeReductionNeverPrintsATransparentOutline_data();
    void negativeReductionNeverPrintsATransparentOutline();
    void negativeReductionOfTheItemFollowsItsOutline();
};

void tst_RectangleItem::newRectangleIsAHundredSquare()
{
    RectangleItem item;
    QCOMPARE(item.getItemShape(), MobraTypes::RectangleShape);
    QCOMPARE(item.type(), 0x1002A);
    QCOMPARE(item.getItemSize(), QSizeF(100, 100));
    QCOMPARE(item.rect(), QRectF(0.5, 0.5, 99, 99));
    QCOMPARE(item.boundingRect(), QRectF(0, 0, 100, 100));
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
    item.setItemPenStyleInt(static_cast<ushort>(style));
    item.updateItemPen();
    QCOMPARE(coloursOf(Images::painted(item, { 100, 100 })), QSet<QRgb> { whitePixel });
    QCOMPARE(item.getItemPenStyleInt(), static_cast<ushort>(style));

    item.setItemFillColor(blue);
    item.setItemBrushStyle(static_cast<MobraTypes::BrushStyle>(style));
    QCOMPARE(coloursOf(Images::painted(item, { 100, 100 })), QSet<QRgb> { whitePixel });
    QCOMPARE(int(item.getItemBrushStyle()), style);
}

void tst_RectangleItem::hugeDottedOutlineIsPaintedInTime_data()
{
    QTest::addColumn<int>("penWidth");
    QTest::addColumn<Qt::PenStyle>("painted");

    QTest::newRow("dotted with the most dashes") << 10 << Qt::DotLine;
}

void tst_RectangleItem::hugeDottedOutlineIsPaintedInTime()
{
    QFETCH(const int, penWidth);
    QFETCH(const Qt::PenStyle, painted);
    RectangleItem item;
    item.setItemSize(QSizeF(1e5, 1e5));
    item.setItemPenStyle(Qt::DotLine);
    item.setItemPenWidth(static_cast<ushort>(penWidth));
    QCOMPARE(item.getItemPen().style(), painted);

    const auto [image, elapsed]
        = Images::paintedTimed(item, { 400, 300 }, QTransform::fromScale(50, 50).rotate(10));
    QVERIFY2(elapsed < 1000, qPrintable(QString::number(elapsed)));
    QVERIFY(Images::coloursOf(image).contains(blackPixel));
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

QTEST_MAIN(tst_RectangleItem)
#include "tst_rectangleitem.moc"
