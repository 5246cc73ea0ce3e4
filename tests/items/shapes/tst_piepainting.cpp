// SPDX-License-Identifier: BSD-3-Clause
#include "items/shapes/pieitem.h"
#include "tests/support/colours.h"
#include "tests/support/images.h"
#include "tests/support/pies.h"
#include "tests/support/recordings.h"
#include "tests/support/roundshapes.h"

#include <QPainterPath>
#include <QRegularExpression>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace Colours;
using Pies::addAngleRows;
using Pies::shape;
using Pies::shapedPen;
using Pies::shapedRect;
using Recordings::recorded;
using RoundShapes::ellipse;
using RoundShapes::wedge;
using Kind = RecordingPaintDevice::Kind;

namespace {

/// One sign for each quarter of a pie filled in blue: right above, left above, left below, right below.
QString filledQuarters(PieItem &item)
{
    const QImage image = Images::painted(item, { 100, 100 });
    QString filled;
    for (const QPoint &point : { QPoint(70, 30), QPoint(30, 30), QPoint(30, 70), QPoint(70, 70) })
        filled += image.pixel(point) == bluePixel ? u'x' : u'-';
    return filled;
}

} // namespace

/// The pie's picture: the wedge, the whole ellipse about it, and its frame.
class tst_PiePainting : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

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
    void frameIsMirroredAndClipped_data();
    void frameIsMirroredAndClipped();
};

void tst_PiePainting::wedgeIsPainted_data()
{
    addAngleRows();
}

void tst_PiePainting::wedgeIsPainted()
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

void tst_PiePainting::outlineIsPaintedFirst_data()
{
    RoundShapes::addMirrorRows();
}

void tst_PiePainting::outlineIsPaintedFirst()
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

void tst_PiePainting::pictureIsTheWedge_data()
{
    addAngleRows();
}

void tst_PiePainting::pictureIsTheWedge()
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

void tst_PiePainting::quartersAreWhereTheyBelong_data()
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

void tst_PiePainting::quartersAreWhereTheyBelong()
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

void tst_PiePainting::fullDiscHasALineToItsCentre()
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

void tst_PiePainting::negativeRectangleIsPaintedAsItIs()
{
    PieItem item;
    item.setItemSize(QSizeF(0.5, 0.5));
    QCOMPARE(item.rect(), QRectF(0.5, 0.5, -0.5, -0.5));
    const auto figures = recorded(item);
    QCOMPARE(figures.size(), 1);
    QCOMPARE(figures.first().path, wedge(QRectF(0.5, 0.5, -0.5, -0.5), 1440, 4320));
}

void tst_PiePainting::nothingIsPaintedOutsideTheBounds()
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

void tst_PiePainting::boundsReplaceTheClip()
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

void tst_PiePainting::mirrorsTurnThePicture_data()
{
    QTest::addColumn<bool>("horizontal");
    QTest::addColumn<bool>("vertical");
    QTest::addColumn<QString>("filled");

    QTest::newRow("plain") << false << false << u"-xxx"_s;
    QTest::newRow("left and right") << true << false << u"x-xx"_s;
    QTest::newRow("top and bottom") << false << true << u"xxx-"_s;
    QTest::newRow("both") << true << true << u"xx-x"_s;
}

void tst_PiePainting::mirrorsTurnThePicture()
{
    QFETCH(const bool, horizontal);
    QFETCH(const bool, vertical);
    PieItem item;
    item.setItemFillColor(blue);
    item.setItemHorizontalMirror(horizontal);
    item.setItemVerticalMirror(vertical);
    QTEST(filledQuarters(item), "filled");
}

void tst_PiePainting::frameIsMirroredAndClipped_data()
{
    RoundShapes::addMirrorRows();
}

void tst_PiePainting::frameIsMirroredAndClipped()
{
    QFETCH(const bool, horizontal);
    QFETCH(const bool, vertical);
    PieItem item;
    shape(item, 1440, 4320);
    item.setItemHorizontalMirror(horizontal);
    item.setItemVerticalMirror(vertical);
    const auto figures = recorded(item, QStyle::State_Selected);
    QCOMPARE(figures.size(), 2);
    QVERIFY(Recordings::isFrame(figures.last(), QRectF(0, 0, 100, 60)));
    QTEST(figures.last().transform, "transform");
    QVERIFY(figures.last().clipped);

    // The right and the lower line of a frame of 100 x 60 would be the pixels of column 100 and of row 60.
    const QImage image = Images::painted(item, { 120, 80 }, QStyle::State_Selected);
    QCOMPARE(Images::coloursOf(image.copy(100, 0, 20, 80)), QSet<QRgb> { whitePixel });
    QCOMPARE(Images::coloursOf(image.copy(0, 60, 120, 20)), QSet<QRgb> { whitePixel });
    QVERIFY(image.pixel(98, 2) != whitePixel);
}

QTEST_MAIN(tst_PiePainting)
#include "tst_piepainting.moc"
