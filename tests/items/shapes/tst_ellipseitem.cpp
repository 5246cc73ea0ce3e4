// SPDX-License-Identifier: BSD-3-Clause
#include "items/shapes/ellipseitem.h"
#include "tests/support/colours.h"
#include "tests/support/images.h"
#include "tests/support/recordings.h"
#include "tests/support/roundshapes.h"

#include <QGraphicsScene>
#include <QPainterPath>
#include <QRegularExpression>
#include <QTest>

#include <memory>

using namespace Qt::StringLiterals;
using namespace Colours;
using Recordings::recorded;
using RoundShapes::ellipse;
using Kind = RecordingPaintDevice::Kind;

namespace {

/// Counts how often its pen is updated.
class PenCounter : public EllipseItem
{
public:
    int updates = 0;

    void updateItemPen() override
    {
        ++updates;
        EllipseItem::updateItemPen();
    }
};

QPen roundPen(const QColor &colour, int width, Qt::PenStyle style)
{
    QPen pen(QBrush(colour), width, style, Qt::RoundCap, Qt::RoundJoin);
    pen.setMiterLimit(4.0);
    return pen;
}

} // namespace

/// The ellipse: its layout in the logical size, its areas, its picture and its copies.
class tst_EllipseItem : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    void newEllipseIsAHundredWide();

    // Layout
    void wholeWidthOfThePenInsetsTheEllipse_data();
    void wholeWidthOfThePenInsetsTheEllipse();
    void resizeHandsAllItsParametersOn_data();
    void resizeHandsAllItsParametersOn();
    void updatedSizeUpdatesThePen();
    void storedSidesTakeEffectAtTheNextUpdate();
    void everyPenUpdateResetsTheScales();
    void layoutFollowsTheScene();
    void layoutRepaintsTheEllipse();

    // Areas
    void boundsAndShapeIgnoreThePen_data();
    void boundsAndShapeIgnoreThePen();

    // Painting
    void oneEllipseIsPaintedInside_data();
    void oneEllipseIsPaintedInside();
    void negativeRectangleIsPaintedAsItIs();
    void pictureIsTheEllipse_data();
    void pictureIsTheEllipse();
    void mirrorsTurnThePicture_data();
    void mirrorsTurnThePicture();
    void verticalMirrorTurnsTheGradient();

    // Copies
    void copyIsEqual();
    void copyStartsUnscaled();
};

void tst_EllipseItem::newEllipseIsAHundredWide()
{
    EllipseItem item;
    QCOMPARE(item.getItemShape(), MobraTypes::EllipseShape);
    QCOMPARE(item.type(), 0x1002C);
    QCOMPARE(item.getItemSize(), QSizeF(100, 100));
    QCOMPARE(item.rect(), QRectF(0.5, 0.5, 99, 99));
    QCOMPARE(item.startAngle(), 0);
    QCOMPARE(item.spanAngle(), 5760);
    QCOMPARE(item.boundingRect(), QRectF(0, 0, 100, 100));
}

// Layout

void tst_EllipseItem::wholeWidthOfThePenInsetsTheEllipse_data()
{
    QTest::addColumn<double>("penWidth");
    QTest::addColumn<QRectF>("rect");

    QTest::newRow("0") << 0.0 << QRectF(0, 0, 40, 30);
    QTest::newRow("0.4, less than half") << 0.4 << QRectF(0, 0, 40, 30);
    QTest::newRow("0.5") << 0.5 << QRectF(0.5, 0.5, 39, 29);
    QTest::newRow("1.49") << 1.49 << QRectF(0.5, 0.5, 39, 29);
    QTest::newRow("2.5") << 2.5 << QRectF(1.5, 1.5, 37, 27);
    QTest::newRow("3.25") << 3.25 << QRectF(1.5, 1.5, 37, 27);
    QTest::newRow("as wide as the height") << 30.0 << QRectF(15, 15, 10, 0);
    QTest::newRow("wider than the height") << 35.0 << QRectF(17.5, 17.5, 5, -5);
    QTest::newRow("wider than both sides") << 50.0 << QRectF(25, 25, -10, -20);
}

void tst_EllipseItem::wholeWidthOfThePenInsetsTheEllipse()
{
    QFETCH(const double, penWidth);
    EllipseItem item;
    item.setItemSize(QSizeF(40, 30));
    item.setItemScaleX(2.0);
    item.setItemScaleY(3.0);
    item.setItemPen(QPen(red, penWidth));
    QCOMPARE(item.rect(), QRectF(0.5, 0.5, 39, 29));
    item.updateRect();
    QTEST(item.rect(), "rect");
    QCOMPARE(item.getItemScaleX(), 1.0);
    QCOMPARE(item.getItemScaleY(), 1.0);
    QCOMPARE(item.boundingRect(), QRectF(0, 0, 40, 30));
    QCOMPARE(item.getItemPen().widthF(), penWidth);
}

void tst_EllipseItem::resizeHandsAllItsParametersOn_data()
{
    QTest::addColumn<bool>("keepRatio");
    QTest::addColumn<bool>("heightLeads");
    QTest::addColumn<bool>("limited");
    QTest::addColumn<QRectF>("rect");

    // From 100 x 50 to 300 x 10, in limits of 30 x 20 to 240 x 200.
    QTest::newRow("free") << false << false << false << QRectF(0.5, 0.5, 299, 9);
    QTest::newRow("width leads") << true << false << false << QRectF(0.5, 0.5, 299, 149);
    QTest::newRow("height leads") << true << true << false << QRectF(0.5, 0.5, 19, 9);
    QTest::newRow("free, limited") << false << false << true << QRectF(0.5, 0.5, 239, 19);
    QTest::newRow("width leads, limited") << true << false << true << QRectF(0.5, 0.5, 239, 119);
    QTest::newRow("height leads, limited") << true << true << true << QRectF(0.5, 0.5, 39, 19);
}

void tst_EllipseItem::resizeHandsAllItsParametersOn()
{
    QFETCH(const bool, keepRatio);
    QFETCH(const bool, heightLeads);
    QFETCH(const bool, limited);
    EllipseItem item;
    item.setItemSize(QSizeF(100, 50));
    const QSizeF size(300, 10);
    QVERIFY(limited ? item.setItemSize(size, keepRatio, 30, 20, 240, 200, heightLeads, false)
                    : item.setItemSize(size, keepRatio, heightLeads));
    QTEST(item.rect(), "rect");
    QCOMPARE(item.getItemScaleX(), 1.0);
    QCOMPARE(item.getItemScaleY(), 1.0);
}

void tst_EllipseItem::updatedSizeUpdatesThePen()
{
    PenCounter item;
    item.setItemPenWidth(5);
    item.updates = 0;
    item.updateItemSize(QSizeF(10, 4));
    QVERIFY(item.updates > 0);
}

void tst_EllipseItem::storedSidesTakeEffectAtTheNextUpdate()
{
    EllipseItem item;
    item.setItemWidth(40.0);
    item.setItemHeight(30.0);
    item.updateRect();
    QCOMPARE(item.rect(), QRectF(0.5, 0.5, 39, 29));
}

void tst_EllipseItem::everyPenUpdateResetsTheScales()
{
    EllipseItem item;
    item.setItemScaleX(2.0);
    item.setItemScaleY(3.0);
    item.updateItemPen();
    QCOMPARE(item.getItemScaleX(), 1.0);
    QCOMPARE(item.getItemScaleY(), 1.0);
    item.setItemWidth(40.0);
    item.updateItemPen();
    QCOMPARE(item.rect(), QRectF(0.5, 0.5, 39, 99));
}

void tst_EllipseItem::layoutFollowsTheScene()
{
    EllipseItem item;
    QGraphicsScene scene(0, 0, 1000, 1000);
    scene.addItem(&item);
    QVERIFY(scene.items(QPointF(50, 50)).contains(&item));
    QVERIFY(scene.items(QPointF(800, 800)).isEmpty());
    item.setItemSize(QSizeF(900, 1000));
    QVERIFY(scene.items(QPointF(800, 700)).contains(&item));
    item.setItemSize(QSizeF(20, 10));
    QVERIFY(scene.items(QPointF(800, 700)).isEmpty());
    QVERIFY(scene.items(QPointF(10, 5)).contains(&item));
    scene.removeItem(&item);
}

void tst_EllipseItem::layoutRepaintsTheEllipse()
{
    EllipseItem item;
    const auto areas = RoundShapes::repaintedBy(item, [&item] { item.updateRect(); });
    QVERIFY(RoundShapes::united(areas).contains(QRectF(0, 0, 100, 100)));
}

// Areas

void tst_EllipseItem::boundsAndShapeIgnoreThePen_data()
{
    QTest::addColumn<int>("penWidth");

    for (const int width : { 0, 1, 3, 40 })
        QTest::addRow("pen of %d", width) << width;
}

void tst_EllipseItem::boundsAndShapeIgnoreThePen()
{
    QFETCH(const int, penWidth);
    EllipseItem item;
    item.setItemPenWidth(static_cast<ushort>(penWidth));
    item.setItemSize(QSizeF(33.25, 17.5));
    QCOMPARE(item.boundingRect(), QRectF(0, 0, 33.25, 17.5));
    QCOMPARE(item.shape(), ellipse(QRectF(0, 0, 33.25, 17.5)));
    QVERIFY(!item.shape().contains(QPointF(1, 1)));
    QVERIFY(item.shape().contains(QPointF(16, 1)));
}

// Painting

void tst_EllipseItem::oneEllipseIsPaintedInside_data()
{
    RoundShapes::addMirrorRows();
}

void tst_EllipseItem::oneEllipseIsPaintedInside()
{
    QFETCH(const bool, horizontal);
    QFETCH(const bool, vertical);
    EllipseItem item;
    item.setItemSize(QSizeF(100, 60));
    item.setItemPenWidth(7);
    item.setItemPenColor(red);
    item.setItemPenStyle(Qt::DashLine);
    item.setItemFillColor(blue);
    item.setItemBrushStyle(MobraTypes::BrushDense3);
    item.setItemHorizontalMirror(horizontal);
    item.setItemVerticalMirror(vertical);

    const auto figures = recorded(item);
    QCOMPARE(figures.size(), 1);
    QCOMPARE(figures.first().kind, Kind::Ellipse);
    QCOMPARE(figures.first().path, ellipse(QRectF(3.5, 3.5, 93, 53)));
    QCOMPARE(figures.first().pen, roundPen(red, 7, Qt::DashLine));
    QCOMPARE(figures.first().brush, QBrush(blue, Qt::Dense3Pattern));
    QTEST(figures.first().transform, "transform");
    QVERIFY(!figures.first().clipped);
}

void tst_EllipseItem::negativeRectangleIsPaintedAsItIs()
{
    EllipseItem item;
    item.setItemSize(QSizeF(0.5, 0.5));
    const auto figures = recorded(item);
    QCOMPARE(figures.size(), 1);
    // Painters take (0.5, 0.5, -0.5, -0.5) for the rectangle of the same corners.
    QCOMPARE(figures.first().path, ellipse(QRectF(0, 0, 0.5, 0.5)));
}

void tst_EllipseItem::pictureIsTheEllipse_data()
{
    QTest::addColumn<QSizeF>("size");
    QTest::addColumn<int>("penWidth");
    QTest::addColumn<QColor>("fill");
    QTest::addColumn<QRectF>("rect");

    QTest::newRow("outline") << QSizeF(60, 40) << 1 << transparent << QRectF(0.5, 0.5, 59, 39);
    QTest::newRow("odd pen and fill") << QSizeF(60, 40) << 5 << blue << QRectF(2.5, 2.5, 55, 35);
    QTest::newRow("fill alone") << QSizeF(60, 40) << 0 << blue << QRectF(0, 0, 60, 40);
    QTest::newRow("broken size") << QSizeF(33.25, 17.5) << 4 << blue << QRectF(2, 2, 29.25, 13.5);
    QTest::newRow("pen over all of it") << QSizeF(2, 2) << 9 << blue << QRectF(1, 1, 0, 0);
}

void tst_EllipseItem::pictureIsTheEllipse()
{
    QFETCH(const QSizeF, size);
    QFETCH(const int, penWidth);
    QFETCH(const QColor, fill);
    QFETCH(const QRectF, rect);
    EllipseItem item;
    item.setItemSize(size);
    item.setItemPenColor(red);
    item.setItemPenWidth(static_cast<ushort>(penWidth));
    item.setItemFillColor(fill);
    const QSize canvas(70, 50);
    const QImage expected = RoundShapes::drawn(canvas, [&](QPainter &painter) {
        const double width = qMin(penWidth, int(qMin(size.width(), size.height()) / 2 + 1));
        painter.setPen(
            penWidth > 0 ? QPen(red, width, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin) : QPen(Qt::NoPen));
        painter.setBrush(fill == transparent ? QBrush(Qt::NoBrush) : QBrush(fill));
        painter.drawEllipse(rect);
    });
    const QString difference = Images::difference(Images::painted(item, canvas), expected, u"ellipse"_s);
    QVERIFY2(difference.isEmpty(), qPrintable(difference));
}

void tst_EllipseItem::mirrorsTurnThePicture_data()
{
    RoundShapes::addMirrorRows();
}

void tst_EllipseItem::mirrorsTurnThePicture()
{
    QFETCH(const bool, horizontal);
    QFETCH(const bool, vertical);
    QFETCH(const QTransform, transform);
    EllipseItem item;
    item.setItemSize(QSizeF(100, 60));
    item.setItemPenStyle(Qt::NoPen);
    item.setItemFillColor(red);
    item.setItemBrushStyle(MobraTypes::BrushConicalGradient);
    item.setItemHorizontalMirror(horizontal);
    item.setItemVerticalMirror(vertical);
    const QImage expected = RoundShapes::drawnInGradient(
        transform, red, [](QPainter &painter) { painter.drawEllipse(QRectF(0, 0, 100, 60)); });
    const QString difference
        = Images::difference(Images::painted(item, expected.size()), expected, u"mirrored"_s);
    QVERIFY2(difference.isEmpty(), qPrintable(difference));
}

void tst_EllipseItem::verticalMirrorTurnsTheGradient()
{
    EllipseItem item;
    item.setItemPenStyle(Qt::NoPen);
    item.setItemFillColor(red);
    item.setItemBrushStyle(MobraTypes::BrushLinearGradient);
    const auto greenAt = [&item](int y) { return qGreen(Images::painted(item, { 100, 100 }).pixel(50, y)); };
    // From white at the top to red at the bottom.
    QVERIFY(qAbs(greenAt(10) - 228) <= 3);
    QVERIFY(qAbs(greenAt(90) - 24) <= 3);
    item.setItemVerticalMirror(true);
    QVERIFY(qAbs(greenAt(10) - 26) <= 3);
    QVERIFY(qAbs(greenAt(90) - 230) <= 3);
}

// Copies

void tst_EllipseItem::copyIsEqual()
{
    EllipseItem item;
    item.setItemId(42);
    item.setItemSize(QSizeF(60, 40));
    item.setPos(11, 22);
    item.setItemRotation(30);
    item.setItemVerticalMirror(true);
    item.setItemPenWidth(3);
    item.setItemPenStyle(Qt::DotLine);
    item.setItemPenCapStyle(Qt::FlatCap);
    item.setItemFillColor(red);
    item.setItemBrushStyle(MobraTypes::BrushRadialGradient);
    item.setDatasourceId(7);
    item.setDatasourceField(u"Name"_s);

    const std::unique_ptr<Item> copied(item.createItemCopy());
    auto *copy = dynamic_cast<EllipseItem *>(copied.get());
    QVERIFY(copy);
    QCOMPARE(copy->type(), 0x1002C);
    QCOMPARE(copy->saveItemToJSON(), item.saveItemToJSON());
    QCOMPARE(copy->rect(), QRectF(1.5, 1.5, 57, 37));
    QCOMPARE(copy->getItemPen(), item.getItemPen());
    QCOMPARE(copy->getItemBrush(), item.getItemBrush());
    QVERIFY(!copy->scene());
}

void tst_EllipseItem::copyStartsUnscaled()
{
    // Copying ends with an update of the copy's pen, which lays it out.
    EllipseItem item;
    item.setItemScaleX(2.0);
    item.setItemScaleY(3.0);
    const std::unique_ptr<Item> copied(item.createItemCopy());
    QCOMPARE(copied->getItemScaleX(), 1.0);
    QCOMPARE(copied->getItemScaleY(), 1.0);
}

QTEST_MAIN(tst_EllipseItem)
#include "tst_ellipseitem.moc"
