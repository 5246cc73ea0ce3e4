// SPDX-License-Identifier: BSD-3-Clause
#include "items/shapes/rectangleitem.h"
#include "tests/support/colours.h"
#include "tests/support/itemmaps.h"
#include "tests/support/itemrecords.h"

#include <QLinearGradient>
#include <QRegularExpression>
#include <QTest>

#include <memory>

using namespace Qt::StringLiterals;
using namespace Colours;

class tst_RectanglePersistence : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

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
};

void tst_RectanglePersistence::copyIsEqual()
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

void tst_RectanglePersistence::copyOfAnUntouchedRectangleIsEqual()
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

void tst_RectanglePersistence::recordLoadsLayTheRectangleOut()
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

void tst_RectanglePersistence::mapHoldsTheProperties()
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

    ItemMaps::compare(item.saveItemToJSON(), expected);
}

void tst_RectanglePersistence::mapLoadsLayTheRectangleOut()
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

void tst_RectanglePersistence::mapLoadsLimitThePenToTheNewSize()
{
    // Keys are applied in alphabetical order, so the pen's width arrives before the item's.
    RectangleItem loaded;
    loaded.loadItemFromJSON({ { u"itemHeight"_s, 40.0 }, { u"itemPenWidth"_s, 5 }, { u"itemWidth"_s, 4.0 } },
        ItemRecords::currentVersion);
    QCOMPARE(loaded.getItemPen().widthF(), 3.0);
    QCOMPARE(loaded.rect(), QRectF(1.5, 1.5, 1, 37));
}

void tst_RectanglePersistence::emptyMapMovesToThePendingPosition()
{
    RectangleItem item;
    item.setPos(11, 22);
    item.loadItemFromJSON({}, ItemRecords::currentVersion);
    QCOMPARE(item.pos(), QPointF(0, 0));
    QCOMPARE(item.rect(), QRectF(0.5, 0.5, 99, 99));
}

void tst_RectanglePersistence::mapWithOneCoordinateTakesThePendingOther()
{
    RectangleItem item;
    item.setItemPositionY(5.0);
    item.setPos(11, 22);
    item.loadItemFromJSON({ { u"itemPositionX"_s, 7.0 } }, ItemRecords::currentVersion);
    QCOMPARE(item.pos(), QPointF(7, 5));
}

void tst_RectanglePersistence::mapWithUnknownKeysIsAppliedInPart()
{
    RectangleItem item;
    item.loadItemFromJSON(
        { { u"noSuchKey"_s, 1 }, { u"itemId"_s, 9 }, { u"itemWidth"_s, 50.0 } }, ItemRecords::currentVersion);
    QCOMPARE(item.itemId(), short(9));
    QCOMPARE(item.rect(), QRectF(0.5, 0.5, 49, 99));
    QVERIFY(item.dynamicPropertyNames().isEmpty());
}

void tst_RectanglePersistence::mapDropsTheTransparencyOfTheFill()
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

QTEST_MAIN(tst_RectanglePersistence)
#include "tst_rectanglepersistence.moc"
