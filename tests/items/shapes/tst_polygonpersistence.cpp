// SPDX-License-Identifier: BSD-3-Clause
#include "tests/support/colours.h"
#include "tests/support/images.h"
#include "tests/support/itemmaps.h"
#include "tests/support/itemrecords.h"
#include "tests/support/polygons.h"
#include "tests/support/rectanglerecords.h"
#include "tests/support/sketchpolygon.h"

#include <QLinearGradient>
#include <QRegularExpression>
#include <QTest>

#include <memory>

using namespace Qt::StringLiterals;
using namespace Colours;

namespace {

/// The reference sizes as they stand in records, in the order of the classes.
const char *const sizesInRecords[] = {
    "4059000000000000 4059000000000000", // 100 × 100
    "4059000000000000 4055A6900586A7A4", // 100 × 86.60254038
    "4059000000000000 4059000000000000", // 100 × 100
    "4057C6C2FF0DE79F 40569CDAB8C8B3E3", // 95.10565163 × 90.45084972
    "4059000000000000 4055A6900586A7A4", // 100 × 86.60254038
    "4057000000000000 4057000000000000", // 92 × 92
};

constexpr char beforeTheSize[] = "FFFF" // item id -1
                                 "00000001" // flag word: visible in print
                                 "00 00 01" // mirrors, allow overprint
                                 "0000000000000000" // z value
                                 "00000107" // graphics-item flags
                                 "01" // visible
                                 "0000000000000000"; // rotation
constexpr char afterTheSize[] = "3FF0000000000000 3FF0000000000000" // scales of 1
                                "3FF0000000000000 0000000000000000 0000000000000000" // m11 to m13
                                "0000000000000000 3FF0000000000000 0000000000000000" // m21 to m23
                                "0000000000000000 0000000000000000 3FF0000000000000" // m31 to m33
                                "0000000000000000 0000000000000000" // position
                                "FFFFFFFF FFFFFFFF" // datasource: -1, null
                                "01FFFF0000000000000000" // pen colour: RGB, opaque, black
                                "0001 00000001 00000020 00000080" // pen: 1, solid, round cap, round join
                                "0001" // brush style: solid
                                "0100000000000000000000"; // fill colour: RGB, transparent

/// A record of 200 × 100, of scales (2, 1), with a pen of 4 and a miter join.
QByteArray wideRecord()
{
    QByteArray record = fromHexText(beforeTheSize) + fromHexText("4069000000000000 4059000000000000")
        + fromHexText("4000000000000000 3FF0000000000000") + fromHexText(afterTheSize).mid(16);
    record.replace(RectangleRecords::Offset::penWidth, 2, fromHexText("0004"));
    record.replace(RectangleRecords::Offset::joinStyle, 4, fromHexText("00000000"));
    return record;
}

void compareOutlines(const PolygonItem &actual, const PolygonItem &expected)
{
    Polygons::compare(actual.getOriginalPolygon(), expected.getOriginalPolygon());
    Polygons::compare(actual.getResizedPolygon(), expected.getResizedPolygon());
    Polygons::compare(actual.polygon(), expected.polygon());
    Polygons::compare(actual.getShapePolygon(), expected.getShapePolygon());
    for (int row = 0; row < 3; ++row) {
        for (int column = 0; column < 3; ++column)
            QVERIFY(Polygons::isClose(actual.getOvershoot(row, column), expected.getOvershoot(row, column)));
    }
}

std::unique_ptr<PolygonItem> changed(const Polygons::Class &kind)
{
    auto item = Polygons::made(kind, QSizeF(60, 45));
    item->setItemId(42);
    item->setPos(11, 22);
    item->setItemRotation(30);
    item->setItemHorizontalMirror(true);
    item->setItemPenColor(QColor(1, 2, 3));
    item->setItemPenWidth(6);
    item->setItemPenCapStyle(Qt::FlatCap);
    item->setItemPenJoinStyle(Qt::MiterJoin);
    item->setItemFillColor(QColor(5, 6, 7));
    item->setItemBrushStyle(MobraTypes::BrushLinearGradient);
    item->setZValue(3.5);
    item->setDatasourceId(7);
    item->setDatasourceField(u"Name"_s);
    item->setAllowOverprint(false);
    return item;
}

} // namespace

/// A polygon with properties that other classes leave out of their maps.
class AttributedPolygon : public SketchPolygon
{
    Q_OBJECT
    Q_PROPERTY(int width MEMBER m_width)
    Q_PROPERTY(QString visible MEMBER m_visible)

private:
    int m_width = 3;
    QString m_visible = u"seen"_s;
};

/// Copies, records and maps of polygons.
class tst_PolygonPersistence : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    void copyDrawsTheSamePolygon_data() { Polygons::addRows(); }
    void copyDrawsTheSamePolygon();
    void copyOfAnUntouchedPolygonIsEqual_data() { Polygons::addRows(); }
    void copyOfAnUntouchedPolygonIsEqual();
    void copyFollowsItsOwnSize_data() { Polygons::addRows(); }
    void copyFollowsItsOwnSize();
    void recordOfANewPolygonHoldsNoPoints_data() { Polygons::addRows(); }
    void recordOfANewPolygonHoldsNoPoints();
    void recordLoadsRebuildTheOutline();
    void recordLoadsTakeTheScalesAsTheyAre_data() { Polygons::addRows(); }
    void recordLoadsTakeTheScalesAsTheyAre();
    void recordRoundTripKeepsTheOutline_data() { Polygons::addRows(); }
    void recordRoundTripKeepsTheOutline();
    void loadsEndBehindTheRecord();
    void oldRecordsHaveNoMirrors();
    void mapHoldsTheProperties();
    void mapLeavesOutTheObjectNameOnly();
    void mapRoundTripKeepsTheOutline_data() { Polygons::addRows(); }
    void mapRoundTripKeepsTheOutline();
    void mapLoadsRebuildTheOutline();
    void mapLoadsLimitThePenToTheNewSize();
    void mapOfAScaleStretchesTheOutline();
    void emptyMapMovesToThePendingPosition_data() { Polygons::addRows(); }
    void emptyMapMovesToThePendingPosition();
    void mapWithUnknownKeysIsAppliedInPart();
};

void tst_PolygonPersistence::copyDrawsTheSamePolygon()
{
    QFETCH(const int, index);
    const auto item = changed(Polygons::classes()[index]);
    const std::unique_ptr<Item> copied(item->createItemCopy());
    auto *copy = dynamic_cast<PolygonItem *>(copied.get());
    QVERIFY(copy);
    QCOMPARE(copy->metaObject(), item->metaObject());
    QCOMPARE(ItemRecords::saved(*copy), ItemRecords::saved(*item));
    compareOutlines(*copy, *item);
    QCOMPARE(copy->getItemPen(), item->getItemPen());
    QCOMPARE(copy->getItemBrush(), item->getItemBrush());
    const QSize size(64, 48);
    const QString difference
        = Images::difference(Images::painted(*copy, size), Images::painted(*item, size), u"copy"_s);
    QVERIFY2(difference.isEmpty(), qPrintable(difference));

    const std::unique_ptr<Item> second(copy->createItemCopy());
    compareOutlines(dynamic_cast<PolygonItem &>(*second), *item);
}

void tst_PolygonPersistence::copyOfAnUntouchedPolygonIsEqual()
{
    QFETCH(const int, index);
    const auto item = Polygons::made(Polygons::classes()[index].shape);
    const std::unique_ptr<Item> copied(item->createItemCopy());
    QCOMPARE(ItemRecords::saved(*copied), ItemRecords::saved(*item));
    compareOutlines(dynamic_cast<PolygonItem &>(*copied), *item);
}

void tst_PolygonPersistence::copyFollowsItsOwnSize()
{
    QFETCH(const int, index);
    const auto item = changed(Polygons::classes()[index]);
    const QPolygonF drawn = item->polygon();
    const std::unique_ptr<Item> copied(item->createItemCopy());
    auto &copy = dynamic_cast<PolygonItem &>(*copied);
    QVERIFY(copy.setItemSize(QSizeF(120, 90)));
    QCOMPARE(item->polygon(), drawn);
    const auto fresh = Polygons::made(Polygons::classes()[index], QSizeF(120, 90));
    Polygons::setPen(*fresh, 6, Qt::MiterJoin);
    compareOutlines(copy, *fresh);
}

void tst_PolygonPersistence::recordOfANewPolygonHoldsNoPoints()
{
    QFETCH(const int, index);
    const auto item = Polygons::made(Polygons::classes()[index].shape);
    const QByteArray expected
        = fromHexText(beforeTheSize) + fromHexText(sizesInRecords[index]) + fromHexText(afterTheSize);
    QCOMPARE(expected.size(), 196);
    QCOMPARE(toHexText(ItemRecords::saved(*item)), toHexText(expected));
}

void tst_PolygonPersistence::recordLoadsRebuildTheOutline()
{
    const auto loaded = Polygons::made(Polygons::rightTriangle, QSizeF(37, 12));
    loaded->setItemPenWidth(9);
    QCOMPARE(ItemRecords::load(*loaded, wideRecord()), QDataStream::Ok);
    QCOMPARE(loaded->getItemSize(), QSizeF(200, 100));
    // The diagonal is 223.606797749979.
    QVERIFY(Polygons::isClose(loaded->getOvershoot(0, 0), 4.23606797749979));
    QVERIFY(Polygons::isClose(loaded->getOvershoot(1, 0), 1.618033988749895));
    Polygons::compare(loaded->getResizedPolygon(), { { 0, 0 }, { 200, 100 }, { 0, 100 } });
    Polygons::compare(
        loaded->polygon(), { { 2, 2 * 1.618033988749895 }, { 200 - 2 * 4.23606797749979, 98 }, { 2, 98 } });
    Polygons::compare(
        loaded->getShapePolygon(), { { 0, 0 }, { 0, 0 }, { 200, 100 }, { 200, 100 }, { 0, 100 } });
    QCOMPARE(ItemRecords::saved(*loaded), wideRecord());
}

void tst_PolygonPersistence::recordLoadsTakeTheScalesAsTheyAre()
{
    // 250.25 × 40.5 with scales of 2.5 and 0.25, and a pen of 7 with bevels.
    QFETCH(const int, index);
    const Polygons::Class &kind = Polygons::classes()[index];
    const auto loaded = Polygons::made(kind, QSizeF(37, 12));
    const QByteArray record = fromHexText(RectangleRecords::changedRectangle);
    QCOMPARE(ItemRecords::load(*loaded, record), QDataStream::Ok);
    QPolygonF expected;
    for (const QPointF &point : kind.points)
        expected << QPointF(point.x() * 2.5, point.y() * 0.25);
    Polygons::compare(loaded->getResizedPolygon(), expected);
    QCOMPARE(loaded->boundingRect(), QRectF(0, 0, 250.25, 40.5));
    QCOMPARE(loaded->getItemPen().widthF(), 7.0);
    QCOMPARE(toHexText(ItemRecords::saved(*loaded)), toHexText(record));
    if (kind.shape == MobraTypes::RightTriangleShape) {
        Polygons::compare(loaded->polygon(), { { 3.5, 3.5 }, { 246.5, 21.5 }, { 3.5, 21.5 } });
        Polygons::compare(
            loaded->getShapePolygon(), { { 0, 0 }, { 5.25, 0 }, { 250, 19.75 }, { 250, 25 }, { 0, 25 } });
    }
}

void tst_PolygonPersistence::recordRoundTripKeepsTheOutline()
{
    QFETCH(const int, index);
    const Polygons::Class &kind = Polygons::classes()[index];
    const auto item = changed(kind);
    const auto loaded = Polygons::made(kind.shape);
    loaded->setItemFillColor(red);
    QCOMPARE(ItemRecords::load(*loaded, ItemRecords::saved(*item)), QDataStream::Ok);
    compareOutlines(*loaded, *item);
    QCOMPARE(loaded->getItemPen(), item->getItemPen());
    const QBrush brush = loaded->getItemBrush();
    QCOMPARE(brush.style(), Qt::LinearGradientPattern);
    QCOMPARE(static_cast<const QLinearGradient *>(brush.gradient())->finalStop(), QPointF(0, 45));
    QCOMPARE(ItemRecords::saved(*loaded), ItemRecords::saved(*item));
}

void tst_PolygonPersistence::loadsEndBehindTheRecord()
{
    const auto loaded = Polygons::made(Polygons::hexagon.shape);
    const RectangleRecords::Reading reading
        = RectangleRecords::load(*loaded, wideRecord() + QByteArray(64, '\x7F'));
    QCOMPARE(reading.status, QDataStream::Ok);
    QCOMPARE(reading.consumed, 196);
}

void tst_PolygonPersistence::oldRecordsHaveNoMirrors()
{
    const auto loaded = Polygons::made(Polygons::rightTriangle.shape);
    const QByteArray record = wideRecord().remove(RectangleRecords::Offset::mirrors, 3);
    const RectangleRecords::Reading reading = RectangleRecords::load(*loaded, record, 5);
    QCOMPARE(reading.status, QDataStream::Ok);
    QCOMPARE(reading.consumed, 193);
    Polygons::compare(loaded->getResizedPolygon(), { { 0, 0 }, { 200, 100 }, { 0, 100 } });
    QVERIFY(!loaded->getItemHorizontalMirror());
    QVERIFY(!loaded->getItemVerticalMirror());
    QVERIFY(loaded->getAllowOverprint());
}

void tst_PolygonPersistence::mapHoldsTheProperties()
{
    const auto item = Polygons::made(Polygons::diamond, QSizeF(40, 30));
    item->setItemId(-7);
    item->setItemVerticalMirror(true);
    item->setItemPenColor(QColor(0x12, 0xAB, 0xEF, 0x80));
    item->setItemFillColor(red);
    item->setItemBrushStyle(MobraTypes::BrushConicalGradient);
    item->setPos(3, 4);
    item->setZValue(1.5);
    item->setDatasourceId(5);
    item->setDatasourceField(u"Field"_s);
    const QVariantList identity { 1.0, 0.0, 0.0, 0.0, 1.0, 0.0, 0.0, 0.0 };
    const QVariantMap expected { { u"itemShape"_s, 0x10035U },
        { u"itemId"_s, QVariant::fromValue<short>(-7) }, { u"itemFlags"_s, 0x81U },
        { u"itemQFlags"_s, 0x107U }, { u"itemZValue"_s, 1.5 }, { u"itemRotation"_s, 0.0 },
        { u"itemHorizontalMirror"_s, 0.0 }, { u"itemVerticalMirror"_s, 1.0 }, { u"allowOverprint"_s, true },
        { u"itemWidth"_s, 40.0 }, { u"itemHeight"_s, 30.0 }, { u"itemScaleX"_s, 0.4 },
        { u"itemScaleY"_s, 0.3 }, { u"itemTransform"_s, identity }, { u"itemDatasourceId"_s, 5 },
        { u"itemDatasourceField"_s, u"Field"_s }, { u"itemPenColor"_s, u"#12abef"_s },
        { u"itemFillColor"_s, u"#ff0000"_s }, { u"itemPenWidth"_s, QVariant::fromValue<ushort>(1) },
        { u"itemPenStyle"_s, QVariant::fromValue<ushort>(1) },
        { u"itemPenCapStyle"_s, QVariant::fromValue<ushort>(0x20) },
        { u"itemPenJoinStyle"_s, QVariant::fromValue<ushort>(0x80) },
        { u"itemBrushStyle"_s, QVariant::fromValue<ushort>(17) }, { u"itemPositionX"_s, 3.0 },
        { u"itemPositionY"_s, 4.0 } };

    ItemMaps::compare(item->saveItemToJSON(), expected);
}

void tst_PolygonPersistence::mapLeavesOutTheObjectNameOnly()
{
    AttributedPolygon item;
    item.setObjectName(u"nameless"_s);
    const QVariantMap map = item.saveItemToJSON();
    QCOMPARE(map.size(), 25 + 2);
    QCOMPARE(map.value(u"width"_s), QVariant(3));
    QCOMPARE(map.value(u"visible"_s), QVariant(u"seen"_s));
    QVERIFY(!map.contains(u"objectName"_s));
}

void tst_PolygonPersistence::mapRoundTripKeepsTheOutline()
{
    QFETCH(const int, index);
    const Polygons::Class &kind = Polygons::classes()[index];
    const auto item = changed(kind);
    const auto loaded = Polygons::made(kind, QSizeF(300, 7));
    loaded->setItemPenWidth(40);
    loaded->loadItemFromJSON(item->saveItemToJSON(), ItemRecords::currentVersion);
    QCOMPARE(loaded->saveItemToJSON(), item->saveItemToJSON());
    compareOutlines(*loaded, *item);
    QCOMPARE(loaded->getItemPen(), item->getItemPen());
    QCOMPARE(loaded->getItemBrush(), item->getItemBrush());
    QCOMPARE(loaded->pos(), item->pos());
    QCOMPARE(loaded->transform(), item->transform());
    QCOMPARE(loaded->getDatasourceId(), 7);
    QCOMPARE(loaded->getDatasourceField(), u"Name"_s);
}

void tst_PolygonPersistence::mapLoadsRebuildTheOutline()
{
    const auto loaded = Polygons::made(Polygons::rightTriangle.shape);
    loaded->loadItemFromJSON(
        { { u"itemWidth"_s, 200.0 }, { u"itemHeight"_s, 100.0 }, { u"itemScaleX"_s, 2.0 },
            { u"itemScaleY"_s, 1.0 }, { u"itemPenWidth"_s, 4 }, { u"itemPenJoinStyle"_s, 0 } },
        ItemRecords::currentVersion);
    Polygons::compare(loaded->getResizedPolygon(), { { 0, 0 }, { 200, 100 }, { 0, 100 } });
    Polygons::compare(
        loaded->polygon(), { { 2, 2 * 1.618033988749895 }, { 200 - 2 * 4.23606797749979, 98 }, { 2, 98 } });
}

void tst_PolygonPersistence::mapLoadsLimitThePenToTheNewSize()
{
    // Keys are applied in alphabetical order, so the pen's width arrives before the item's.
    const auto loaded = Polygons::made(Polygons::rightTriangle.shape);
    loaded->loadItemFromJSON(
        { { u"itemPenWidth"_s, 50 }, { u"itemScaleX"_s, 0.2 }, { u"itemWidth"_s, 20.0 } },
        ItemRecords::currentVersion);
    QCOMPARE(loaded->getItemPen().widthF(), 11.0);
    Polygons::compare(loaded->polygon(), { { 5.5, 5.5 }, { 14.5, 94.5 }, { 5.5, 94.5 } });
}

void tst_PolygonPersistence::mapOfAScaleStretchesTheOutline()
{
    const auto loaded = Polygons::made(Polygons::diamond.shape);
    loaded->loadItemFromJSON({ { u"itemScaleX"_s, 3.0 } }, ItemRecords::currentVersion);
    Polygons::compare(loaded->getResizedPolygon(), { { 150, 0 }, { 300, 50 }, { 150, 100 }, { 0, 50 } });
    QCOMPARE(loaded->getItemSize(), QSizeF(100, 100));
}

void tst_PolygonPersistence::emptyMapMovesToThePendingPosition()
{
    QFETCH(const int, index);
    const Polygons::Class &kind = Polygons::classes()[index];
    const auto item = Polygons::made(kind.shape);
    item->setPos(11, 22);
    item->loadItemFromJSON({}, ItemRecords::currentVersion);
    QCOMPARE(item->pos(), QPointF(0, 0));
    compareOutlines(*item, *Polygons::made(kind.shape));
}

void tst_PolygonPersistence::mapWithUnknownKeysIsAppliedInPart()
{
    const auto item = Polygons::made(Polygons::octagon.shape);
    item->loadItemFromJSON({ { u"noSuchKey"_s, 1 }, { u"itemId"_s, 9 } }, ItemRecords::currentVersion);
    QCOMPARE(item->itemId(), short(9));
    QVERIFY(item->dynamicPropertyNames().isEmpty());
}

QTEST_MAIN(tst_PolygonPersistence)
#include "tst_polygonpersistence.moc"
