// SPDX-License-Identifier: BSD-3-Clause
#include "items/shapes/pieitem.h"
#include "tests/support/colours.h"
#include "tests/support/images.h"
#include "tests/support/resizing.h"
#include "tests/support/roundshapes.h"

#include <QPainterPath>
#include <QRegularExpression>
#include <QTest>

#include <limits>
#include <memory>

using namespace Qt::StringLiterals;
using namespace Colours;
using RoundShapes::ellipse;
using RoundShapes::recorded;
using RoundShapes::wedge;
using Kind = RecordingPaintDevice::Kind;

namespace {

constexpr int least = std::numeric_limits<int>::min();
constexpr int most = std::numeric_limits<int>::max();

/// Adds rows of angles, whole turns and more among them.
void addAngleRows()
{
    QTest::addColumn<int>("start");
    QTest::addColumn<int>("span");

    const std::pair<int, int> angles[] = { { 1440, 4320 }, { 0, 1440 }, { 100, 1 }, { 0, 0 }, { 0, -1440 },
        { -720, -2000 }, { 5760, 1440 }, { 9000, 720 }, { 0, 5760 }, { 16, 5761 }, { 0, 12000 },
        { 720, -5760 }, { 720, -9000 }, { least, 1440 }, { most, 1440 }, { 0, least }, { 0, most },
        { least, least }, { most, most }, { least, most } };
    for (const auto &[start, span] : angles)
        QTest::addRow("%d from %d", span, start) << start << span;
}

/// A wedge of 100 x 60 with a pen of its own.
void shape(PieItem &item, int start, int span)
{
    item.setItemSize(QSizeF(100, 60));
    item.setItemPenWidth(5);
    item.setItemPenColor(red);
    item.setItemFillColor(blue);
    item.setStartPieAngle(start);
    item.setSpanPieAngle(span);
}

QPen shapedPen()
{
    QPen pen(QBrush(red), 5, Qt::SolidLine, Qt::FlatCap, Qt::MiterJoin);
    pen.setMiterLimit(4.0);
    return pen;
}

/// One sign for each quarter of a pie filled in blue: right above, left above, left below, right below.
QString filledQuarters(PieItem &item)
{
    const QImage image = Images::painted(item, { 100, 100 });
    QString filled;
    for (const QPoint &point : { QPoint(70, 30), QPoint(30, 30), QPoint(30, 70), QPoint(70, 70) })
        filled += image.pixel(point) == bluePixel ? u'x' : u'-';
    return filled;
}

constexpr QRectF shapedRect(2.5, 2.5, 95, 55);

} // namespace

/// The pie: its angles, its wedge and the whole ellipse about it.
class tst_PieItem : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    void newPieIsThreeQuarters();
    void penTakesItsEndsAtItsNextUpdate();
    void descriptionNamesTheId();
    void propertiesAndSlotsAreDeclaredInOrder();

    // Angles and outline
    void anglesAreKeptAsTheyAre_data();
    void anglesAreKeptAsTheyAre();
    void anglesLeaveTheLayoutAlone();
    void anglesRepaintThePie();
    void changedOutlineLaysThePieOut();
    void sameOutlineChangesNothing_data();
    void sameOutlineChangesNothing();
    void everyResizeLaysThePieOut_data();
    void everyResizeLaysThePieOut();

    // Areas
    void boundsAndShapeAreTheWholeEllipse();
    void opaqueAreaIsTheWedgeOfAnOpaqueFill_data();
    void opaqueAreaIsTheWedgeOfAnOpaqueFill();
    void opaqueAreaIsTheWedge_data();
    void opaqueAreaIsTheWedge();

    // Painting
    void wedgeIsPainted_data();
    void wedgeIsPainted();
    void outlineIsPaintedFirst_data();
    void outlineIsPaintedFirst();
    void pictureIsTheWedge_data();
    void pictureIsTheWedge();
    void quartersAreWhereTheyBelong_data();
    void quartersAreWhereTheyBelong();
    void fullDiscHasALineToItsCentre();
    void negativeRectangleIsPaintedAsItIs();
    void nothingIsPaintedOutsideTheBounds();
    void boundsReplaceTheClip();
    void mirrorsTurnThePicture_data();
    void mirrorsTurnThePicture();
    void frameIsDrawnAtTopLevelAndInLayers();
    void frameIsMirroredAndClipped_data();
    void frameIsMirroredAndClipped();

    // Copies
    void copyIsEqual_data();
    void copyIsEqual();
    void copyOfAnUntouchedPieHasItsPenUpdated();
    void copyTakesTheRectangleAsItIs();
};

void tst_PieItem::newPieIsThreeQuarters()
{
    PieItem item;
    QCOMPARE(item.getItemShape(), MobraTypes::PieShape);
    QCOMPARE(item.type(), 0x1002E);
    QCOMPARE(item.getItemSize(), QSizeF(100, 100));
    QCOMPARE(item.rect(), QRectF(0.5, 0.5, 99, 99));
    QCOMPARE(item.startPieAngle(), 1440);
    QCOMPARE(item.spanPieAngle(), 4320);
    QCOMPARE(item.startAngle(), 1440);
    QCOMPARE(item.spanAngle(), 4320);
    QVERIFY(!item.getDrawCircle());
    QCOMPARE(item.itemQFlags(), 0x107U);
    QCOMPARE(item.itemFlags(), 0x01U);
    QCOMPARE(item.getItemPenWidth(), ushort(1));
    QCOMPARE(item.getItemPenStyle(), Qt::SolidLine);
    QCOMPARE(item.getItemFillColor(), transparent);
    QVERIFY(!item.itemIsOpaque());
}

void tst_PieItem::penTakesItsEndsAtItsNextUpdate()
{
    PieItem item;
    QCOMPARE(item.getItemPenCapStyle(), Qt::FlatCap);
    QCOMPARE(item.getItemPenJoinStyle(), Qt::MiterJoin);
    QCOMPARE(item.getItemPen().capStyle(), Qt::RoundCap);
    QCOMPARE(item.getItemPen().joinStyle(), Qt::RoundJoin);
    item.updateItemPen();
    QCOMPARE(item.getItemPen().capStyle(), Qt::FlatCap);
    QCOMPARE(item.getItemPen().joinStyle(), Qt::MiterJoin);

    PieItem widened;
    widened.setItemPenWidth(4);
    QCOMPARE(widened.getItemPen().capStyle(), Qt::FlatCap);
    QCOMPARE(widened.getItemPen().joinStyle(), Qt::MiterJoin);
    PieItem resized;
    resized.setItemSize(QSizeF(50, 50));
    QCOMPARE(resized.getItemPen().capStyle(), Qt::FlatCap);
    PieItem coloured;
    coloured.setItemPenColor(red);
    QCOMPARE(coloured.getItemPen().capStyle(), Qt::RoundCap);
}

void tst_PieItem::descriptionNamesTheId()
{
    PieItem item;
    QCOMPARE(item.toDescriptionString(), u"pie -1"_s);
    item.setItemId(7);
    QCOMPARE(item.toDescriptionString(), u"pie 7"_s);
    item.setItemId(-32768);
    QCOMPARE(item.toDescriptionString(), u"pie -32768"_s);
}

void tst_PieItem::propertiesAndSlotsAreDeclaredInOrder()
{
    QCOMPARE(RoundShapes::ownProperties(PieItem::staticMetaObject),
        (QStringList { u"bool drawCircle"_s, u"int startPieAngle"_s, u"int spanPieAngle"_s }));
    QCOMPARE(RoundShapes::ownMethods(PieItem::staticMetaObject),
        (QStringList { u"slot bool setDrawCircle(bool)"_s, u"slot void setStartPieAngle(int)"_s,
            u"slot void setSpanPieAngle(int)"_s }));
    PieItem item;
    bool changed = false;
    QVERIFY(QMetaObject::invokeMethod(
        &item, "setDrawCircle", Qt::DirectConnection, Q_RETURN_ARG(bool, changed), Q_ARG(bool, true)));
    QVERIFY(changed);
    QCOMPARE(item.property("drawCircle"), QVariant(true));
    QVERIFY(item.setProperty("drawCircle", false));
    QVERIFY(!item.getDrawCircle());
    QVERIFY(item.setProperty("startPieAngle", -17));
    QVERIFY(item.setProperty("spanPieAngle", 6000));
    QCOMPARE(item.property("startPieAngle"), QVariant(-17));
    QCOMPARE(item.property("spanPieAngle"), QVariant(6000));
}

// Angles and outline

void tst_PieItem::anglesAreKeptAsTheyAre_data()
{
    addAngleRows();
}

void tst_PieItem::anglesAreKeptAsTheyAre()
{
    QFETCH(const int, start);
    QFETCH(const int, span);
    PieItem item;
    item.setStartPieAngle(start);
    QCOMPARE(item.spanPieAngle(), 4320);
    item.setSpanPieAngle(span);
    QCOMPARE(item.startPieAngle(), start);
    QCOMPARE(item.spanPieAngle(), span);
    QCOMPARE(item.startAngle(), start);
    QCOMPARE(item.spanAngle(), span);
}

void tst_PieItem::anglesLeaveTheLayoutAlone()
{
    PieItem item;
    item.setItemScaleX(2.0);
    item.setStartPieAngle(10);
    item.setSpanPieAngle(-10);
    QCOMPARE(item.getItemScaleX(), 2.0);
    QCOMPARE(item.rect(), QRectF(0.5, 0.5, 99, 99));
    QCOMPARE(item.boundingRect(), QRectF(0, 0, 100, 100));
}

void tst_PieItem::anglesRepaintThePie()
{
    PieItem item;
    const QRectF bounds(0, 0, 100, 100);
    QVERIFY(RoundShapes::united(RoundShapes::repaintedBy(item, [&item] {
        item.setStartPieAngle(0);
    })).contains(bounds));
    QVERIFY(RoundShapes::united(RoundShapes::repaintedBy(item, [&item] {
        item.setSpanPieAngle(0);
    })).contains(bounds));
}

void tst_PieItem::changedOutlineLaysThePieOut()
{
    PieItem item;
    for (const bool outlined : { true, false }) {
        item.setItemScaleX(2.0);
        item.setItemScaleY(3.0);
        item.setItemWidth(outlined ? 40.0 : 80.0);
        bool changed = false;
        const auto areas = RoundShapes::repaintedBy(
            item, [&item, &changed, outlined] { changed = item.setDrawCircle(outlined); });
        QVERIFY(changed);
        QCOMPARE(item.getDrawCircle(), outlined);
        QCOMPARE(item.getItemScaleX(), 1.0);
        QCOMPARE(item.getItemScaleY(), 1.0);
        QCOMPARE(item.rect(), QRectF(0.5, 0.5, outlined ? 39 : 79, 99));
        QVERIFY(RoundShapes::united(areas).contains(item.boundingRect()));
    }
}

void tst_PieItem::sameOutlineChangesNothing_data()
{
    QTest::addColumn<bool>("outlined");

    QTest::newRow("with outline") << true;
    QTest::newRow("without outline") << false;
}

void tst_PieItem::sameOutlineChangesNothing()
{
    QFETCH(const bool, outlined);
    PieItem item;
    item.setDrawCircle(outlined);
    item.setItemScaleX(2.0);
    item.setItemWidth(40.0);
    bool changed = true;
    const auto areas = RoundShapes::repaintedBy(
        item, [&item, &changed, outlined] { changed = item.setDrawCircle(outlined); });
    QVERIFY(!changed);
    QCOMPARE(item.getDrawCircle(), outlined);
    QVERIFY(areas.isEmpty());
    QCOMPARE(item.getItemScaleX(), 2.0);
    QCOMPARE(item.rect(), QRectF(0.5, 0.5, 99, 99));
}

void tst_PieItem::everyResizeLaysThePieOut_data()
{
    Resizing::addRows();
}

void tst_PieItem::everyResizeLaysThePieOut()
{
    QFETCH(const int, parameters);
    PieItem item;
    item.setItemPenWidth(3);
    QVERIFY(Resizing::resize(item, parameters, QSizeF(200, 50)));
    QCOMPARE(item.rect(), QRectF(1.5, 1.5, 197, 47));
    QCOMPARE(item.getItemScaleX(), 1.0);
    QCOMPARE(item.getItemScaleY(), 1.0);
    QCOMPARE(item.startPieAngle(), 1440);
    QCOMPARE(item.spanPieAngle(), 4320);
    QVERIFY(!Resizing::resize(item, parameters, QSizeF(200, 50)));
    item.updateItemSize(QSizeF(10, 4));
    QCOMPARE(item.rect(), QRectF(1.5, 1.5, 7, 1));
}

// Areas

void tst_PieItem::boundsAndShapeAreTheWholeEllipse()
{
    PieItem item;
    shape(item, 0, 160);
    QCOMPARE(item.boundingRect(), QRectF(0, 0, 100, 60));
    QCOMPARE(item.shape(), ellipse(QRectF(0, 0, 100, 60)));
    QVERIFY(item.contains(QPointF(10, 30)));
}

void tst_PieItem::opaqueAreaIsTheWedgeOfAnOpaqueFill_data()
{
    RoundShapes::addFillRows();
}

void tst_PieItem::opaqueAreaIsTheWedgeOfAnOpaqueFill()
{
    QFETCH(const QColor, fill);
    QFETCH(const MobraTypes::BrushStyle, style);
    QFETCH(const bool, opaque);
    PieItem item;
    shape(item, 160, 1600);
    item.setItemFillColor(fill);
    item.setItemBrushStyle(style);
    QCOMPARE(item.opaqueArea(), opaque ? wedge(shapedRect, 160, 1600) : QPainterPath());
}

void tst_PieItem::opaqueAreaIsTheWedge_data()
{
    addAngleRows();
}

void tst_PieItem::opaqueAreaIsTheWedge()
{
    QFETCH(const int, start);
    QFETCH(const int, span);
    PieItem item;
    shape(item, start, span);
    QCOMPARE(item.opaqueArea(), wedge(shapedRect, start, span));
    item.setDrawCircle(true);
    QCOMPARE(item.opaqueArea(), wedge(shapedRect, start, span));
}

// Painting

void tst_PieItem::wedgeIsPainted_data()
{
    addAngleRows();
}

void tst_PieItem::wedgeIsPainted()
{
    QFETCH(const int, start);
    QFETCH(const int, span);
    PieItem item;
    shape(item, start, span);
    const auto figures = recorded(item);
    QCOMPARE(figures.size(), 1);
    QCOMPARE(figures.first().kind, Kind::Path);
    QCOMPARE(figures.first().path, wedge(shapedRect, start, span));
    QCOMPARE(figures.first().pen, shapedPen());
    QCOMPARE(figures.first().brush, QBrush(blue, Qt::SolidPattern));
    QVERIFY(figures.first().clipped);
}

void tst_PieItem::outlineIsPaintedFirst_data()
{
    RoundShapes::addMirrorRows();
}

void tst_PieItem::outlineIsPaintedFirst()
{
    QFETCH(const bool, horizontal);
    QFETCH(const bool, vertical);
    QFETCH(const QTransform, transform);
    PieItem item;
    shape(item, 160, 1600);
    item.setDrawCircle(true);
    item.setItemHorizontalMirror(horizontal);
    item.setItemVerticalMirror(vertical);
    const auto figures = recorded(item);
    QCOMPARE(figures.size(), 2);
    QCOMPARE(figures[0].kind, Kind::Ellipse);
    QCOMPARE(figures[0].path, ellipse(shapedRect));
    QCOMPARE(figures[0].brush.style(), Qt::NoBrush);
    QCOMPARE(figures[1].kind, Kind::Path);
    QCOMPARE(figures[1].path, wedge(shapedRect, 160, 1600));
    QCOMPARE(figures[1].brush, QBrush(blue, Qt::SolidPattern));
    for (const auto &figure : figures) {
        QCOMPARE(figure.pen, shapedPen());
        QCOMPARE(figure.transform, transform);
        QVERIFY(figure.clipped);
    }
}

void tst_PieItem::pictureIsTheWedge_data()
{
    addAngleRows();
}

void tst_PieItem::pictureIsTheWedge()
{
    QFETCH(const int, start);
    QFETCH(const int, span);
    PieItem item;
    shape(item, start, span);
    item.setDrawCircle(true);
    const QImage expected = RoundShapes::drawn({ 110, 70 }, [&](QPainter &painter) {
        painter.setClipRect(QRectF(0, 0, 100, 60));
        painter.setPen(shapedPen());
        painter.drawEllipse(shapedRect);
        painter.setBrush(blue);
        painter.drawPath(wedge(shapedRect, start, span));
    });
    const QString difference = Images::difference(Images::painted(item, expected.size()), expected, u"pie"_s);
    QVERIFY2(difference.isEmpty(), qPrintable(difference));
}

void tst_PieItem::quartersAreWhereTheyBelong_data()
{
    QTest::addColumn<int>("start");
    QTest::addColumn<int>("span");
    QTest::addColumn<QString>("filled");

    QTest::newRow("new") << 1440 << 4320 << u"-xxx"_s;
    QTest::newRow("first") << 0 << 1440 << u"x---"_s;
    QTest::newRow("clockwise") << 0 << -1440 << u"---x"_s;
    QTest::newRow("second") << 1440 << 1440 << u"-x--"_s;
    QTest::newRow("negative start") << -2880 << 1440 << u"--x-"_s;
    QTest::newRow("start after a turn") << 7200 << 1440 << u"-x--"_s;
    QTest::newRow("whole turn") << 1000 << 5760 << u"xxxx"_s;
    QTest::newRow("more than a turn") << 1000 << 7200 << u"xxxx"_s;
    QTest::newRow("whole turn clockwise") << 0 << -5760 << u"xxxx"_s;
}

void tst_PieItem::quartersAreWhereTheyBelong()
{
    QFETCH(const int, start);
    QFETCH(const int, span);
    PieItem item;
    item.setItemPenStyle(Qt::NoPen);
    item.setItemFillColor(blue);
    item.setStartPieAngle(start);
    item.setSpanPieAngle(span);
    QTEST(filledQuarters(item), "filled");
}

void tst_PieItem::fullDiscHasALineToItsCentre()
{
    PieItem item;
    item.setItemPenColor(red);
    item.setItemPenWidth(6);
    item.setItemFillColor(blue);
    item.setStartPieAngle(0);
    item.setSpanPieAngle(5760);
    const QImage image = Images::painted(item, { 100, 100 });
    QCOMPARE(image.pixel(70, 50), redPixel);
    // The mitre where the line turns back at the centre reaches four pen widths beyond.
    QCOMPARE(image.pixel(15, 50), bluePixel);
    QCOMPARE(image.pixel(50, 30), bluePixel);
    QCOMPARE(image.pixel(50, 70), bluePixel);
}

void tst_PieItem::negativeRectangleIsPaintedAsItIs()
{
    PieItem item;
    item.setItemSize(QSizeF(0.5, 0.5));
    QCOMPARE(item.rect(), QRectF(0.5, 0.5, -0.5, -0.5));
    const auto figures = recorded(item);
    QCOMPARE(figures.size(), 1);
    QCOMPARE(figures.first().path, wedge(QRectF(0.5, 0.5, -0.5, -0.5), 1440, 4320));
}

void tst_PieItem::nothingIsPaintedOutsideTheBounds()
{
    PieItem item;
    item.setDrawCircle(true);
    item.setItemPen(QPen(red, 20));
    const QImage image = Images::painted(item, { 120, 120 });
    QCOMPARE(image.pixel(95, 50), redPixel);
    QCOMPARE(image.pixel(99, 50), redPixel);
    QCOMPARE(image.pixel(100, 50), whitePixel);
    QCOMPARE(image.pixel(50, 99), redPixel);
    QCOMPARE(image.pixel(50, 100), whitePixel);
}

void tst_PieItem::boundsReplaceTheClip()
{
    PieItem item;
    item.setItemPenStyle(Qt::NoPen);
    item.setItemFillColor(blue);
    const QImage image = RoundShapes::drawn({ 120, 120 }, [&item](QPainter &painter) {
        painter.setClipRect(QRect(0, 0, 50, 50));
        const QStyleOptionGraphicsItem option;
        item.paint(&painter, &option, nullptr);
        painter.fillRect(QRect(0, 0, 120, 120), yellow);
    });
    QCOMPARE(image.pixel(70, 70), bluePixel);
    QCOMPARE(image.pixel(49, 49), yellowPixel);
    QCOMPARE(image.pixel(110, 110), whitePixel);
}

void tst_PieItem::mirrorsTurnThePicture_data()
{
    QTest::addColumn<bool>("horizontal");
    QTest::addColumn<bool>("vertical");
    QTest::addColumn<QString>("filled");

    QTest::newRow("plain") << false << false << u"-xxx"_s;
    QTest::newRow("left and right") << true << false << u"x-xx"_s;
    QTest::newRow("top and bottom") << false << true << u"xxx-"_s;
    QTest::newRow("both") << true << true << u"xx-x"_s;
}

void tst_PieItem::mirrorsTurnThePicture()
{
    QFETCH(const bool, horizontal);
    QFETCH(const bool, vertical);
    PieItem item;
    item.setItemFillColor(blue);
    item.setItemHorizontalMirror(horizontal);
    item.setItemVerticalMirror(vertical);
    QTEST(filledQuarters(item), "filled");
}

void tst_PieItem::frameIsDrawnAtTopLevelAndInLayers()
{
    PieItem item;
    item.setItemSize(QSizeF(40, 30));
    RoundShapes::compareFrames(item, QRectF(0, 0, 40, 30));
}

void tst_PieItem::frameIsMirroredAndClipped_data()
{
    RoundShapes::addMirrorRows();
}

void tst_PieItem::frameIsMirroredAndClipped()
{
    QFETCH(const bool, horizontal);
    QFETCH(const bool, vertical);
    PieItem item;
    shape(item, 1440, 4320);
    item.setItemHorizontalMirror(horizontal);
    item.setItemVerticalMirror(vertical);
    const auto figures = recorded(item, QStyle::State_Selected);
    QCOMPARE(figures.size(), 2);
    QVERIFY(RoundShapes::isFrame(figures.last(), QRectF(0, 0, 100, 60)));
    QTEST(figures.last().transform, "transform");
    QVERIFY(figures.last().clipped);

    // The right and the lower line of a frame of 100 x 60 would be the pixels of column 100 and of row 60.
    const QImage image = Images::painted(item, { 120, 80 }, QStyle::State_Selected);
    QCOMPARE(Images::coloursOf(image.copy(100, 0, 20, 80)), QSet<QRgb> { whitePixel });
    QCOMPARE(Images::coloursOf(image.copy(0, 60, 120, 20)), QSet<QRgb> { whitePixel });
    QVERIFY(image.pixel(98, 2) != whitePixel);
}

// Copies

void tst_PieItem::copyIsEqual_data()
{
    QTest::addColumn<bool>("outlined");

    QTest::newRow("with outline") << true;
    QTest::newRow("without outline") << false;
}

void tst_PieItem::copyIsEqual()
{
    QFETCH(const bool, outlined);
    PieItem item;
    item.setItemId(42);
    item.setPos(11, 22);
    item.setItemRotation(30);
    shape(item, -100, 6000);
    item.setDrawCircle(outlined);
    item.setItemPenJoinStyle(Qt::BevelJoin);

    const std::unique_ptr<Item> copied(item.createItemCopy());
    auto *copy = dynamic_cast<PieItem *>(copied.get());
    QVERIFY(copy);
    QCOMPARE(copy->type(), 0x1002E);
    QCOMPARE(copy->startPieAngle(), -100);
    QCOMPARE(copy->spanPieAngle(), 6000);
    QCOMPARE(copy->getDrawCircle(), outlined);
    QCOMPARE(copy->rect(), shapedRect);
    QCOMPARE(copy->saveItemToJSON(), item.saveItemToJSON());
    QCOMPARE(copy->getItemPen(), item.getItemPen());
    QCOMPARE(copy->getItemBrush(), item.getItemBrush());
}

void tst_PieItem::copyOfAnUntouchedPieHasItsPenUpdated()
{
    PieItem item;
    const std::unique_ptr<Item> copied(item.createItemCopy());
    const auto &copy = dynamic_cast<PieItem &>(*copied);
    QCOMPARE(copy.getItemPenCapStyle(), Qt::FlatCap);
    QCOMPARE(copy.getItemPen().capStyle(), Qt::FlatCap);
    QCOMPARE(copy.getItemPen().joinStyle(), Qt::MiterJoin);
    QCOMPARE(item.getItemPen().capStyle(), Qt::RoundCap);
}

void tst_PieItem::copyTakesTheRectangleAsItIs()
{
    PieItem item;
    item.setItemWidth(40.0);
    const std::unique_ptr<Item> copied(item.createItemCopy());
    QCOMPARE(dynamic_cast<PieItem &>(*copied).rect(), QRectF(0.5, 0.5, 99, 99));

    // Taking over the outline lays the copy out once more.
    item.setDrawCircle(true);
    item.setItemHeight(30.0);
    QCOMPARE(item.rect(), QRectF(0.5, 0.5, 39, 99));
    const std::unique_ptr<Item> outlined(item.createItemCopy());
    QCOMPARE(dynamic_cast<PieItem &>(*outlined).rect(), QRectF(0.5, 0.5, 39, 29));
}

QTEST_MAIN(tst_PieItem)
#include "tst_pieitem.moc"
