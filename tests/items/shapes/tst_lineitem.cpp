// SPDX-License-Identifier: BSD-3-Clause
#include "items/shapes/lineitem.h"
#include "tests/support/colours.h"
#include "tests/support/images.h"
#include "tests/support/itemrecords.h"
#include "tests/support/recordings.h"
#include "tests/support/resizing.h"

#include <QElapsedTimer>
#include <QGraphicsScene>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QTest>

#include <cmath>
#include <limits>
#include <memory>

using namespace Qt::StringLiterals;
using namespace Colours;
using namespace MobraTypes;

namespace {

constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();
constexpr double infinite = std::numeric_limits<double>::infinity();

/// Runs a change of an item in a scene of its own and returns whether it asks the scene for an update.
template <typename Change> bool causesUpdate(LineItem &item, const Change &change)
{
    QGraphicsScene scene;
    scene.addItem(&item);
    QSignalSpy updates(&scene, &QGraphicsScene::changed);
    QCoreApplication::processEvents();
    updates.clear();
    change();
    QCoreApplication::processEvents();
    scene.removeItem(&item);
    return !updates.isEmpty();
}

} // namespace

class tst_LineItem : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    void newLineIsAHundredLong();
    void arrowsAreSetTogether_data();
    void arrowsAreSetTogether();
    void rawArrowsAreKeptAsTheyAre();
    void eachEndIsSetAlone();
    void presentArrowIsRefused();
    void presentArrowsCauseNoUpdate();
    void lengthIsAtLeastOne_data();
    void lengthIsAtLeastOne();
    void hugeLengthsAreKeptAndPainted_data();
    void hugeLengthsAreKeptAndPainted();
    void everyResizeSetsTheLength_data();
    void everyResizeSetsTheLength();
    void equalSizeIsRefused_data();
    void equalSizeIsRefused();
    void resizeHeedsNeitherRatioNorLimits();
    void updatedSizeSetsTheLength();
    void shapeSizeIsLengthAndStoredHeight();
    void frameSurroundsArrowsAndPen();
    void copyIsEqual();
    void copyOfAnUntouchedLineIsEqual();
};

void tst_LineItem::newLineIsAHundredLong()
{
    LineItem item;
    QCOMPARE(item.getItemShape(), LineShape);
    QCOMPARE(item.type(), 0x1001F);
    QCOMPARE(item.line(), QLineF(0, 0, 100, 0));
    QCOMPARE(item.getItemLength(), 100.0);
    QCOMPARE(item.getItemSize(), QSizeF(100, 0));
    QCOMPARE(item.getShapeSize(), QSizeF(100, 100));
    QCOMPARE(item.getItemPoint1(), QPointF(0, 0));
    QCOMPARE(item.getItemPoint2(), QPointF(100, 0));
    QCOMPARE(item.getItemArrows(), ushort(0));
    QCOMPARE(item.boundingRect(), QRectF(-5.5, -5.5, 111, 11));
    QCOMPARE(item.pos(), QPointF(0, 0));
    QVERIFY(item.transform().isIdentity());
}

void tst_LineItem::arrowsAreSetTogether_data()
{
    QTest::addColumn<ArrowStyle>("left");
    QTest::addColumn<ArrowStyle>("right");
    QTest::addColumn<int>("arrows");

    QTest::newRow("none") << ArrowNone << ArrowNone << 0x00;
    QTest::newRow("open") << LeftArrowOpen << RightArrowOpen << 0x11;
    QTest::newRow("filled and bar") << LeftArrowFilled << RightArrowBar << 0x38;
    QTest::newRow("chevron and filled") << LeftArrowChevron << RightArrowFilled << 0x53;
    QTest::newRow("bar and chevron") << LeftArrowBar << RightArrowChevron << 0x85;
    QTest::newRow("left alone") << LeftArrowBar << ArrowNone << 0x80;
    QTest::newRow("right alone") << ArrowNone << RightArrowOpen << 0x01;
    QTest::newRow("styles of the wrong ends") << RightArrowOpen << LeftArrowOpen << 0x00;
    QTest::newRow("styles of both ends") << ArrowStyle(0x15) << ArrowStyle(0x83) << 0x13;
}

void tst_LineItem::arrowsAreSetTogether()
{
    QFETCH(const ArrowStyle, left);
    QFETCH(const ArrowStyle, right);
    QFETCH(const int, arrows);
    LineItem item;
    item.setItemArrows(left, right);
    QCOMPARE(item.getItemArrows(), ushort(arrows));
    QCOMPARE(item.getItemArrowLeft(), ArrowStyle(arrows & 0xF0));
    QCOMPARE(item.getItemArrowRight(), ArrowStyle(arrows & 0x0F));
}

void tst_LineItem::rawArrowsAreKeptAsTheyAre()
{
    LineItem item;
    for (const ushort arrows : { 0xFFFF, 0xFF00, 0x62, 0x8000, 0x00 }) {
        item.setItemArrows(arrows);
        QCOMPARE(item.getItemArrows(), arrows);
        QCOMPARE(item.getItemArrowLeft(), ArrowStyle(arrows & 0xF0));
        QCOMPARE(item.getItemArrowRight(), ArrowStyle(arrows & 0x0F));
    }
}

void tst_LineItem::eachEndIsSetAlone()
{
    LineItem item;
    QVERIFY(item.setItemArrowLeft(LeftArrowFilled));
    QCOMPARE(item.getItemArrows(), ushort(0x30));
    QVERIFY(item.setItemArrowRight(RightArrowChevron));
    QCOMPARE(item.getItemArrows(), ushort(0x35));
    QVERIFY(item.setItemArrowLeft(LeftArrowBar));
    QCOMPARE(item.getItemArrows(), ushort(0x85));
    QVERIFY(item.setItemArrowRight(ArrowNone));
    QCOMPARE(item.getItemArrows(), ushort(0x80));
    QVERIFY(item.setItemArrowLeft(ArrowStyle(0x1F)));
    QCOMPARE(item.getItemArrows(), ushort(0x10));
    QVERIFY(item.setItemArrowRight(ArrowStyle(0xF8)));
    QCOMPARE(item.getItemArrows(), ushort(0x18));
}

void tst_LineItem::presentArrowIsRefused()
{
    LineItem item;
    QVERIFY(!item.setItemArrowLeft(ArrowNone));
    QVERIFY(!item.setItemArrowRight(ArrowNone));
    QVERIFY(!item.setItemArrowLeft(RightArrowOpen));
    QVERIFY(!item.setItemArrowRight(LeftArrowOpen));
    item.setItemArrows(0x35);
    QVERIFY(!item.setItemArrowLeft(LeftArrowFilled));
    QVERIFY(!item.setItemArrowRight(RightArrowChevron));
    QCOMPARE(item.getItemArrows(), ushort(0x35));
}

void tst_LineItem::presentArrowsCauseNoUpdate()
{
    LineItem item;
    item.setItemArrows(0x35);
    QVERIFY(!causesUpdate(item, [&item] { item.setItemArrows(0x35); }));
    QVERIFY(!causesUpdate(item, [&item] { item.setItemArrows(LeftArrowFilled, RightArrowChevron); }));
    QVERIFY(!causesUpdate(item, [&item] { item.setItemArrowLeft(LeftArrowFilled); }));
    QVERIFY(!causesUpdate(item, [&item] { item.setItemArrowRight(RightArrowChevron); }));
    QVERIFY(causesUpdate(item, [&item] { item.setItemArrows(0x31); }));
    QVERIFY(causesUpdate(item, [&item] { item.setItemArrows(LeftArrowFilled, RightArrowFilled); }));
    QVERIFY(causesUpdate(item, [&item] { item.setItemArrowLeft(LeftArrowOpen); }));
    QVERIFY(causesUpdate(item, [&item] { item.setItemArrowRight(RightArrowOpen); }));
}

void tst_LineItem::lengthIsAtLeastOne_data()
{
    QTest::addColumn<double>("length");
    QTest::addColumn<double>("used");

    QTest::newRow("common") << 42.5 << 42.5;
    QTest::newRow("one") << 1.0 << 1.0;
    QTest::newRow("just above one") << 1.0625 << 1.0625;
    QTest::newRow("just below one") << 0.9375 << 1.0;
    QTest::newRow("zero") << 0.0 << 1.0;
    QTest::newRow("negative") << -50.0 << 1.0;
    QTest::newRow("negative infinite") << -infinite << 1.0;
    QTest::newRow("long") << 1e6 << 1e6;
}

void tst_LineItem::lengthIsAtLeastOne()
{
    QFETCH(const double, length);
    QFETCH(const double, used);
    LineItem item;
    item.setItemLength(length);
    QCOMPARE(item.getItemLength(), used);
    QCOMPARE(item.line(), QLineF(0, 0, used, 0));
    QCOMPARE(item.getItemSize(), QSizeF(used, 0));
    QCOMPARE(item.getItemPoint1(), QPointF(0, 0));
    QCOMPARE(item.getItemPoint2(), QPointF(used, 0));
    QCOMPARE(item.boundingRect(), QRectF(-5.5, -5.5, used + 11, 11));
    QCOMPARE(item.getItemScaleX(), 1.0);
    QCOMPARE(item.getItemScaleY(), 1.0);
}

void tst_LineItem::hugeLengthsAreKeptAndPainted_data()
{
    QTest::addColumn<double>("length");
    QTest::addColumn<double>("kept");

    QTest::newRow("no number") << notANumber << 1.0;
    QTest::newRow("infinite") << infinite << infinite;
    QTest::newRow("1e300") << 1e300 << 1e300;
    QTest::newRow("1e9") << 1e9 << 1e9;
}

void tst_LineItem::hugeLengthsAreKeptAndPainted()
{
    QFETCH(const double, length);
    QFETCH(const double, kept);
    LineItem item;
    item.setItemPenStyle(Qt::DotLine);
    item.setItemArrows(0x55);
    item.setItemLength(length);
    QCOMPARE(item.getItemLength(), kept);
    QCOMPARE(item.getItemWidth(), kept);
    QCOMPARE(item.getItemHeight(), 0.0);
    QCOMPARE(item.getShapeSize().width(), kept);

    // What the scene and the painter get stays within what their fixed-point arithmetic can hold.
    QVERIFY(item.boundingRect().left() >= -3e7);
    QVERIFY(item.boundingRect().right() <= 3e7);
    QElapsedTimer timer;
    timer.start();
    const QImage picture = Images::painted(item, { 50, 50 });
    QVERIFY2(timer.elapsed() < 1000, qPrintable(QString::number(timer.elapsed())));
    QVERIFY(Images::coloursOf(picture).contains(blackPixel));

    item.setItemLength(20);
    QCOMPARE(item.getItemSize(), QSizeF(20, 0));
}

void tst_LineItem::everyResizeSetsTheLength_data()
{
    Resizing::addRows();
}

void tst_LineItem::everyResizeSetsTheLength()
{
    QFETCH(const int, parameters);
    LineItem item;
    QVERIFY(Resizing::resize(item, parameters, QSizeF(200, 0)));
    QCOMPARE(item.getItemSize(), QSizeF(200, 0));
    QCOMPARE(item.line(), QLineF(0, 0, 200, 0));
    QCOMPARE(item.boundingRect(), QRectF(-5.5, -5.5, 211, 11));
    QVERIFY(Resizing::resize(item, parameters, QSizeF(60, 35)));
    QCOMPARE(item.getItemSize(), QSizeF(60, 0));
    QVERIFY(Resizing::resize(item, parameters, QSizeF(0.5, 0)));
    QCOMPARE(item.getItemSize(), QSizeF(1, 0));
    QCOMPARE(item.getItemScaleX(), 1.0);
    QCOMPARE(item.getItemScaleY(), 1.0);
}

void tst_LineItem::equalSizeIsRefused_data()
{
    Resizing::addRows();
}

void tst_LineItem::equalSizeIsRefused()
{
    QFETCH(const int, parameters);
    LineItem item;
    QVERIFY(!Resizing::resize(item, parameters, QSizeF(100, 0)));
    QVERIFY(!Resizing::resize(item, parameters, QSizeF(100 + 1e-11, 0)));
    QCOMPARE(item.line(), QLineF(0, 0, 100, 0));
    QVERIFY(!causesUpdate(item, [&item, parameters] { Resizing::resize(item, parameters, QSizeF(100, 0)); }));

    // A line has no height to change, but the size differs.
    QVERIFY(Resizing::resize(item, parameters, QSizeF(100, 50)));
    QCOMPARE(item.getItemSize(), QSizeF(100, 0));
}

void tst_LineItem::resizeHeedsNeitherRatioNorLimits()
{
    LineItem item;
    QVERIFY(item.setItemSize(QSizeF(40, 7), true, true));
    QCOMPARE(item.getItemSize(), QSizeF(40, 0));
    QVERIFY(item.setItemSize(QSizeF(30, 7), true, false));
    QCOMPARE(item.getItemSize(), QSizeF(30, 0));
    QVERIFY(item.setItemSize(QSizeF(500, 7), true, 10, 10, 50, 50, true, false));
    QCOMPARE(item.getItemSize(), QSizeF(500, 0));
    QVERIFY(item.setItemSize(QSizeF(5, 7), false, 10, 10, 50, 50, false, true));
    QCOMPARE(item.getItemSize(), QSizeF(5, 0));
    QVERIFY(!item.setItemSize(QSizeF(5, 0), false, 10, 10, 50, 50, false, true));
}

void tst_LineItem::updatedSizeSetsTheLength()
{
    LineItem item;
    item.updateItemSize(QSizeF(33, 44));
    QCOMPARE(item.line(), QLineF(0, 0, 33, 0));
    QCOMPARE(item.getItemSize(), QSizeF(33, 0));
    item.updateItemSize(QSizeF(0.25, 44));
    QCOMPARE(item.getItemSize(), QSizeF(1, 0));
}

void tst_LineItem::shapeSizeIsLengthAndStoredHeight()
{
    LineItem item;
    item.setItemLength(30);
    QCOMPARE(item.getShapeSize(), QSizeF(30, 100));
    item.setShapeHeight(12.5);
    QCOMPARE(item.getShapeSize(), QSizeF(30, 12.5));
    item.setItemPenWidth(20);
    item.setItemLength(-1);
    QCOMPARE(item.getShapeSize(), QSizeF(1, 12.5));
    item.setShapeHeight(-3);
    QCOMPARE(item.getShapeSize(), QSizeF(1, -3));
}

void tst_LineItem::frameSurroundsArrowsAndPen()
{
    LineItem item;
    item.setItemArrows(0x80);
    item.setItemPenWidth(20);
    item.setItemPenStyle(Qt::NoPen);
    const auto figures = Recordings::recorded(item, QStyle::State_Selected);
    QVERIFY(Recordings::isFrame(figures.last(), QRectF(-15, -55, 130, 110)));

    // Orange (239, 127, 15) of alpha 50 on white: 255 - (255 - c) * 50 / 255.
    const QImage image = Images::painted(item, { 120, 70 }, QStyle::State_Selected);
    QVERIFY(Images::largestDifference(image.pixel(110, 50), qRgb(252, 230, 208)) <= 1);
    QCOMPARE(image.pixel(110, 60), whitePixel);
    QCOMPARE(image.pixel(118, 50), whitePixel);
}

void tst_LineItem::copyIsEqual()
{
    LineItem item;
    item.setItemId(42);
    item.setItemPenColor(QColor(1, 2, 3, 200));
    item.setItemPenWidth(3);
    item.setItemPenStyle(Qt::DotLine);
    item.setItemPenCapStyle(Qt::FlatCap);
    item.setItemPenJoinStyle(Qt::MiterJoin);
    item.setItemArrows(LeftArrowChevron, RightArrowFilled);
    item.setItemLength(60);
    item.setPos(11, 22);
    item.setItemRotation(30);
    item.setItemHorizontalMirror(true);
    item.setZValue(3.5);
    item.setDatasourceId(7);
    item.setDatasourceField(u"Name"_s);

    const std::unique_ptr<Item> copied(item.createItemCopy());
    auto *copy = dynamic_cast<LineItem *>(copied.get());
    QVERIFY(copy);
    QCOMPARE(copy->getItemArrows(), ushort(0x53));
    QCOMPARE(copy->getItemLength(), 60.0);
    QCOMPARE(copy->pos(), item.pos());
    QCOMPARE(copy->transform(), item.transform());
    QCOMPARE(copy->getItemRotation(), 30.0);
    QVERIFY(copy->getItemHorizontalMirror());
    QCOMPARE(copy->getItemPen(), item.getItemPen());
    QCOMPARE(copy->boundingRect(), item.boundingRect());
    QCOMPARE(ItemRecords::saved(*copy), ItemRecords::saved(item));
    QVERIFY(!copy->scene());
    QVERIFY(!copy->parentItem());

    const QImage picture = Images::painted(item, { 70, 20 });
    QVERIFY(Images::coloursOf(picture).size() > 1);
    const QString difference = Images::difference(Images::painted(*copy, picture.size()), picture, u"copy"_s);
    QVERIFY2(difference.isEmpty(), qPrintable(difference));
}

void tst_LineItem::copyOfAnUntouchedLineIsEqual()
{
    LineItem item;
    const std::unique_ptr<Item> copied(item.createItemCopy());
    auto *copy = dynamic_cast<LineItem *>(copied.get());
    QVERIFY(copy);
    QCOMPARE(ItemRecords::saved(*copy), ItemRecords::saved(item));
    QCOMPARE(copy->boundingRect(), QRectF(-5.5, -5.5, 111, 11));
}

QTEST_MAIN(tst_LineItem)
#include "tst_lineitem.moc"
