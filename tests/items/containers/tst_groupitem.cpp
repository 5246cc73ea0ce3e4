// SPDX-License-Identifier: BSD-3-Clause
#include "items/containers/groupitem.h"
#include "items/containers/layeritem.h"
#include "items/graphics/pixmapitem.h"
#include "tests/support/allitems.h"
#include "tests/support/groups.h"
#include "tests/support/hexbytes.h"
#include "tests/support/images.h"
#include "tests/support/itemmaps.h"
#include "tests/support/itemrecords.h"
#include "tests/support/labeltexts.h"
#include "tests/support/recordings.h"
#include "tests/support/scenes.h"

#include <QGraphicsScene>
#include <QMetaMethod>
#include <QMetaProperty>
#include <QRegularExpression>
#include <QTest>

using namespace Qt::StringLiterals;
using Groups::memberOf;
using Groups::rectangle;
using Groups::takeIn;
using MobraTypes::ShapeType;

namespace {

// 2 + 4 + 3 + 8 + 4 + 1 + 8 + 2 x 8 + 2 x 8 + 9 x 8 + 2 x 8 + 4 + 4 = 158 bytes
constexpr char newRecord[] = "FFFF" // item id -1
                             "00000001" // flag word: visible in print
                             "00 00 01" // mirrors, overprint
                             "0000000000000000" // z value
                             "00000107" // graphics-item flags
                             "01" // visible
                             "0000000000000000" // rotation
                             "BFF0000000000000 BFF0000000000000" // size: -1 x -1
                             "3FF0000000000000 3FF0000000000000" // scales
                             "3FF0000000000000 0000000000000000 0000000000000000" // m11, m12, m13
                             "0000000000000000 3FF0000000000000 0000000000000000" // m21, m22, m23
                             "0000000000000000 0000000000000000 3FF0000000000000" // m31, m32, m33
                             "0000000000000000 0000000000000000" // position
                             "FFFFFFFF FFFFFFFF"; // datasource id -1, field: null

// The same of a group of 50 x 20 at (5, 6), turned by 90 degrees: (x, y) becomes (35 - y, x - 15).
constexpr char turnedRecord[] = "002A" // item id 42
                                "00000011" // flag word: visible in print, supply template
                                "01 00 00" // mirrors, overprint
                                "4004000000000000" // z value 2.5
                                "00000107" // graphics-item flags
                                "01" // visible
                                "4056800000000000" // rotation 90
                                "4049000000000000 4034000000000000" // size: 50 x 20
                                "3FF0000000000000 3FF0000000000000" // scales
                                "0000000000000000 3FF0000000000000 0000000000000000" // m11, m12, m13
                                "BFF0000000000000 0000000000000000 0000000000000000" // m21, m22, m23
                                "4041800000000000 C02E000000000000 3FF0000000000000" // m31, m32, m33
                                "4014000000000000 4018000000000000" // position
                                "00000003 00000004 004E 006F"; // datasource id 3, field "No"

/// The group of which turnedRecord is the record.
std::unique_ptr<GroupItem> turnedGroup()
{
    auto group = std::make_unique<GroupItem>();
    group->addToGroup({ rectangle({ 0, 0, 30, 20 }), rectangle({ 40, 10, 10, 10 }, 1) });
    group->setSelected(false);
    group->setItemId(42);
    group->setItemAsSupplyTemplate(true);
    group->setItemHorizontalMirror(true);
    group->setAllowOverprint(false);
    group->setItemZValue(2.5);
    group->setItemRotation(90);
    group->setPos(5, 6);
    group->setDatasourceId(3);
    group->setDatasourceField(u"No"_s);
    return group;
}

std::unique_ptr<GroupItem> copied(GroupItem &group)
{
    Item *copy = group.createItemCopy();
    auto *copyOfGroup = dynamic_cast<GroupItem *>(copy);
    if (!copyOfGroup)
        delete copy;
    return std::unique_ptr<GroupItem>(copyOfGroup);
}

} // namespace

/// What groups show, save, copy and print.
class tst_GroupItem : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { LabelTexts::useKnownFont(); }
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    void propertiesAreInTheirOrder();
    void storingTheCountIsTheOnlySlotOfItsOwn();
    void drawsItsFrameWhereItIsSelected_data();
    void drawsItsFrameWhereItIsSelected();
    void membersDrawNoFrames();
    void sceneShowsTheMembers();
    void groupsThatClipTheirMembersHaveTheSameBounds();
    void recordOfANewGroup();
    void recordHoldsTheGroupAlone();
    void recordIsRead();
    void recordsOfOlderDocumentsAreThreeBytesShorter();
    void membersGroupedAgainBeforeTheRecordIsReadAreInPlace();
    void mapHoldsTheProperties();
    void mapIsRead();
    void mapDoesNotChangeTheCount();
    void copyIsEqual();
    void copyOfAnEmptyGroupIsEqual();
    void copyHasCopiesOfItsMembersInTheirOrder();
    void copiesOfMembersLieWhereTheirOriginalsDo_data() { AllItems::addRows(); }
    void copiesOfMembersLieWhereTheirOriginalsDo();
    void copyOfAGroupThatNoLongerBeginsAtItsCorner();
    void copyOfATurnedGroupComesApartInPlace();
    void copyLeavesOtherMembersOut();
    void copyHasCopiesOfInnerGroups();
    void copyOfAHiddenGroupCanBeShown();
    void copyCountsAsTheOriginal();
    void copyOfASelectedGroupIsSelectedAndItsMembersAreNot();
    void reducingColoursLeavesTheMembersAlone();
    void printsAsItselfAtScaleOne();
    void printsAsAPictureAtOtherScales();
    void renderingAMemberLeavesTheGroupAsItWas();
};

void tst_GroupItem::propertiesAreInTheirOrder()
{
    const QMetaObject &meta = GroupItem::staticMetaObject;
    QCOMPARE(meta.superClass(), &QObject::staticMetaObject);
    QStringList properties;
    for (int i = meta.propertyOffset(); i < meta.propertyCount(); ++i)
        properties << QString::fromLatin1(meta.property(i).name());
    const QStringList expected { u"itemShape"_s, u"childrenCount"_s, u"itemId"_s, u"itemFlags"_s,
        u"itemQFlags"_s, u"itemZValue"_s, u"itemRotation"_s, u"itemHorizontalMirror"_s,
        u"itemVerticalMirror"_s, u"itemWidth"_s, u"itemHeight"_s, u"itemScaleX"_s, u"itemScaleY"_s,
        u"itemTransform"_s, u"allowOverprint"_s, u"itemDatasourceId"_s, u"itemDatasourceField"_s,
        u"itemPositionX"_s, u"itemPositionY"_s };
    QCOMPARE(properties, expected);
    const QMetaProperty count = meta.property(meta.indexOfProperty("childrenCount"));
    QCOMPARE(count.typeName(), "int");
    QVERIFY(count.isWritable());
}

void tst_GroupItem::storingTheCountIsTheOnlySlotOfItsOwn()
{
    const QMetaObject &meta = GroupItem::staticMetaObject;
    QCOMPARE(meta.methodCount() - meta.methodOffset(), 1);
    const QMetaMethod method = meta.method(meta.methodOffset());
    QCOMPARE(method.methodSignature(), "setChildrenCount(int)");
    QCOMPARE(method.methodType(), QMetaMethod::Slot);
    QCOMPARE(method.access(), QMetaMethod::Public);
    QCOMPARE(method.parameterNames(), QByteArrayList { "newChildrenCount" });
}

void tst_GroupItem::drawsItsFrameWhereItIsSelected_data()
{
    QTest::addColumn<QString>("parent");
    QTest::addColumn<bool>("selected");
    QTest::addColumn<bool>("framed");

    QTest::newRow("alone") << QString() << true << true;
    QTest::newRow("in a layer") << u"layer"_s << true << true;
    QTest::newRow("in a group") << u"group"_s << true << false;
    QTest::newRow("alone, not selected") << QString() << false << false;
}

void tst_GroupItem::drawsItsFrameWhereItIsSelected()
{
    QFETCH(const QString, parent);
    QFETCH(const bool, selected);
    QFETCH(const bool, framed);
    LayerItem layer;
    GroupItem outer;
    const std::unique_ptr<GroupItem> group = turnedGroup();
    if (parent == u"layer")
        group->setParentItem(&layer);
    if (parent == u"group")
        outer.addToGroup(group.get());
    const auto figures = Recordings::recorded(*group, selected ? QStyle::State_Selected : QStyle::State_None);
    QCOMPARE(figures.size(), framed ? 1 : 0);
    if (framed)
        QVERIFY(Recordings::isFrame(figures.first(), QRectF(0, 0, 50, 20)));
}

void tst_GroupItem::membersDrawNoFrames()
{
    const std::unique_ptr<GroupItem> group = turnedGroup();
    const auto *member = memberOf<RectangleItem>(*group, 0);
    QVERIFY(member);
    const auto figures = Recordings::recorded(*group->childItems().first(), QStyle::State_Selected);
    QVERIFY(!Recordings::isFrame(figures.last(), QRectF(0, 0, 30, 20)));
}

void tst_GroupItem::sceneShowsTheMembers()
{
    QGraphicsScene scene;
    RectangleItem *below = rectangle({ 10, 10, 20, 20 }, 3);
    RectangleItem *above = rectangle({ 20, 20, 20, 20 }, 4);
    for (RectangleItem *item : { below, above })
        item->setItemPenStyle(Qt::NoPen);
    below->setItemFillColor(Qt::red);
    above->setItemFillColor(Qt::blue);
    auto *group = new GroupItem;
    scene.addItem(group);
    group->addToGroup({ above, below });
    group->setSelected(false);
    QImage image(50, 50, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::white);
    QPainter painter(&image);
    scene.render(&painter, QRectF(0, 0, 50, 50), QRectF(0, 0, 50, 50));
    painter.end();
    QCOMPARE(image,
        Images::pictureOf(
            QSize(50, 50), { { QRect(10, 10, 20, 20), Qt::red }, { QRect(20, 20, 20, 20), Qt::blue } }));
}

void tst_GroupItem::groupsThatClipTheirMembersHaveTheSameBounds()
{
    // Records may have any flags; with these Qt asks the group for its bounds while it makes them up.
    GroupItem outer;
    GroupItem *group = turnedGroup().release();
    outer.addToGroup(group);
    for (GroupItem *clipping : { group, &outer }) {
        clipping->setItemQFlags(0xFFFFFFFF);
        clipping->setFlag(QGraphicsItem::ItemClipsChildrenToShape);
    }
    QCOMPARE(group->boundingRect(), QRectF(0, 0, 50, 20));
    QCOMPARE(group->childrenBoundingRect(), QRectF(0, 0, 50, 20));
    QCOMPARE(outer.boundingRect(), QRectF(20, -9, 20, 50));
    QVERIFY(group->setItemSize(QSizeF(100, 40)));
    QCOMPARE(group->boundingRect(), QRectF(0, 0, 100, 40));
}

void tst_GroupItem::recordOfANewGroup()
{
    GroupItem group;
    const QByteArray record = ItemRecords::saved(group);
    QCOMPARE(record.size(), 158);
    QCOMPARE(toHexText(record), toHexText(fromHexText(newRecord)));
}

void tst_GroupItem::recordHoldsTheGroupAlone()
{
    QCOMPARE(toHexText(ItemRecords::saved(*turnedGroup())), toHexText(fromHexText(turnedRecord)));
}

void tst_GroupItem::recordIsRead()
{
    GroupItem group;
    QCOMPARE(ItemRecords::load(group, fromHexText(turnedRecord)), QDataStream::Ok);
    QCOMPARE(group.itemId(), short(42));
    QCOMPARE(group.itemFlags(), 0x11U);
    QVERIFY(group.getItemHorizontalMirror());
    QVERIFY(!group.getItemVerticalMirror());
    QVERIFY(!group.getAllowOverprint());
    QCOMPARE(group.zValue(), 2.5);
    QCOMPARE(group.getItemRotation(), 90.0);
    QCOMPARE(group.getItemSize(), QSizeF(50, 20));
    QCOMPARE(group.transform(), QTransform(0, 1, -1, 0, 35, -15));
    QCOMPARE(group.pos(), QPointF(5, 6));
    QCOMPARE(group.getDatasourceId(), 3);
    QCOMPARE(group.getDatasourceField(), u"No"_s);
    QCOMPARE(group.getChildrenCount(), 0);
    QCOMPARE(ItemRecords::saved(group), fromHexText(turnedRecord));
}

void tst_GroupItem::recordsOfOlderDocumentsAreThreeBytesShorter()
{
    QByteArray record = fromHexText(turnedRecord);
    record.remove(6, 3);
    GroupItem group;
    QDataStream stream(record);
    group.loadItemFromData(stream, 5);
    QCOMPARE(stream.status(), QDataStream::Ok);
    QVERIFY(stream.atEnd());
    QVERIFY(!group.getItemHorizontalMirror());
    QVERIFY(group.getAllowOverprint());
    QCOMPARE(group.getItemSize(), QSizeF(50, 20));
    QCOMPARE(group.getDatasourceField(), u"No"_s);
}

void tst_GroupItem::membersGroupedAgainBeforeTheRecordIsReadAreInPlace()
{
    const std::unique_ptr<GroupItem> group = turnedGroup();
    GroupItem loaded;
    QList<QGraphicsItem *> members;
    for (QGraphicsItem *member : group->childItems()) {
        auto *item = new RectangleItem;
        ItemRecords::load(*item, ItemRecords::saved(dynamic_cast<Item &>(*member)));
        item->setZValue(double(members.size()));
        members.append(item);
    }
    loaded.addToGroup(members);
    ItemRecords::load(loaded, ItemRecords::saved(*group));
    QCOMPARE(ItemRecords::saved(loaded), ItemRecords::saved(*group));
    for (int i = 0; i < 2; ++i) {
        QVERIFY(Groups::stayed(
            Groups::corners(*group->childItems()[i]), Groups::corners(*loaded.childItems()[i])));
    }
}

void tst_GroupItem::mapHoldsTheProperties()
{
    const QVariantList transform { 0.0, 1.0, 0.0, -1.0, 0.0, 0.0, 35.0, -15.0 };
    const QVariantMap expected { { u"itemShape"_s, 0x10001U }, { u"childrenCount"_s, 2 },
        { u"itemId"_s, QVariant::fromValue<short>(42) }, { u"itemFlags"_s, 0x11U },
        { u"itemQFlags"_s, 0x107U }, { u"itemZValue"_s, 2.5 }, { u"itemRotation"_s, 90.0 },
        { u"itemHorizontalMirror"_s, 1.0 }, { u"itemVerticalMirror"_s, 0.0 }, { u"itemWidth"_s, 50.0 },
        { u"itemHeight"_s, 20.0 }, { u"itemScaleX"_s, 1.0 }, { u"itemScaleY"_s, 1.0 },
        { u"itemTransform"_s, transform }, { u"allowOverprint"_s, false }, { u"itemDatasourceId"_s, 3 },
        { u"itemDatasourceField"_s, u"No"_s }, { u"itemPositionX"_s, 5.0 }, { u"itemPositionY"_s, 6.0 } };
    ItemMaps::compare(turnedGroup()->saveItemToJSON(), expected);
}

void tst_GroupItem::mapIsRead()
{
    const QVariantMap map = turnedGroup()->saveItemToJSON();
    GroupItem group;
    group.loadItemFromJSON(map, 6);
    QCOMPARE(group.getStoredChildrenCount(), 2);
    QCOMPARE(group.pos(), QPointF(5, 6));
    QCOMPARE(toHexText(ItemRecords::saved(group)), toHexText(fromHexText(turnedRecord)));
}

void tst_GroupItem::mapDoesNotChangeTheCount()
{
    const std::unique_ptr<GroupItem> group = turnedGroup();
    group->loadItemFromJSON({ { u"childrenCount"_s, 7 } }, 6);
    QCOMPARE(group->getStoredChildrenCount(), 7);
    QCOMPARE(group->getChildrenCount(), 2);
    QCOMPARE(group->saveItemToJSON().value(u"childrenCount"_s), QVariant(2));
    // A map without a position moves to the pending one, which is the origin.
    QCOMPARE(group->pos(), QPointF(0, 0));
}

void tst_GroupItem::copyIsEqual()
{
    const std::unique_ptr<GroupItem> group = turnedGroup();
    const auto copy = copied(*group);
    QVERIFY(copy);
    QCOMPARE(toHexText(ItemRecords::saved(*copy)), toHexText(fromHexText(turnedRecord)));
    ItemMaps::compare(copy->saveItemToJSON(), group->saveItemToJSON());
    QVERIFY(!copy->parentItem());
    QVERIFY(!copy->scene());
}

void tst_GroupItem::copyOfAnEmptyGroupIsEqual()
{
    GroupItem group;
    const auto copy = copied(group);
    QVERIFY(copy);
    QCOMPARE(toHexText(ItemRecords::saved(*copy)), toHexText(fromHexText(newRecord)));
    QVERIFY(!copy->isSelected());
}

void tst_GroupItem::copyHasCopiesOfItsMembersInTheirOrder()
{
    GroupItem group;
    RectangleItem *first = rectangle({ 0, 0, 10, 10 }, 1);
    RectangleItem *second = rectangle({ 0, 0, 20, 20 }, 2);
    RectangleItem *third = rectangle({ 0, 0, 30, 30 }, 3);
    group.addToGroup({ third, first, second });
    first->setZValue(5); // above the others from now on
    const auto copy = copied(group);
    QVERIFY(copy);
    QCOMPARE(copy->getChildrenCount(), 3);
    const double widths[] = { 20, 30, 10 };
    for (int i = 0; i < 3; ++i) {
        const auto *member = memberOf<RectangleItem>(*copy, i);
        QVERIFY(member);
        QCOMPARE(member->getItemWidth(), widths[i]);
        QCOMPARE(member->zValue(), 0.0);
        QVERIFY(member != first && member != second && member != third);
    }
    QCOMPARE(group.getChildrenCount(), 3);
    QCOMPARE(first->zValue(), 5.0);
}

void tst_GroupItem::copiesOfMembersLieWhereTheirOriginalsDo()
{
    QFETCH(const ShapeType, shape);
    Item *item = AllItems::made(shape).release();
    AllItems::change(*item);
    GroupItem group;
    group.addToGroup({ &AllItems::graphics(*item), rectangle({ -40, -50, 10, 10 }, 9) });
    for (const double factor : { 1.0, 1.5 }) {
        group.setItemSize(group.getItemSize() * factor);
        group.setItemRotation(factor * 20);
        const auto copy = copied(group);
        QVERIFY(copy);
        auto *copyOfItem = dynamic_cast<Item *>(copy->childItems().first());
        QVERIFY(copyOfItem && copyOfItem != item);
        QCOMPARE(toHexText(ItemRecords::saved(*copyOfItem)), toHexText(ItemRecords::saved(*item)));
        QVERIFY(Groups::stayed(
            Groups::corners(AllItems::graphics(*item)), Groups::corners(AllItems::graphics(*copyOfItem))));
    }
}

void tst_GroupItem::copyOfAGroupThatNoLongerBeginsAtItsCorner()
{
    GroupItem group;
    RectangleItem *corner = rectangle({ 0, 0, 10, 10 });
    group.addToGroup({ corner, rectangle({ 30, 40, 20, 10 }, 1) });
    group.setPos(3, 4);
    group.removeFromGroup(corner);
    const std::unique_ptr<RectangleItem> owner(corner);
    const auto copy = copied(group);
    QVERIFY(copy);
    QCOMPARE(copy->pos(), QPointF(3, 4));
    QCOMPARE(copy->childItems().first()->pos(), QPointF(30, 40));
    QCOMPARE(copy->sceneBoundingRect(), QRectF(33, 44, 20, 10));
}

void tst_GroupItem::copyOfATurnedGroupComesApartInPlace()
{
    GroupItem group;
    auto *picture = new PixMapItem;
    picture->pixmapImportActions(AllItems::plainPicture(QSize(40, 20), Qt::red));
    picture->setItemRotation(30);
    takeIn(group, picture);
    group.setItemRotation(50);
    const QPolygonF place = Groups::corners(*picture);
    const auto copy = copied(group);
    QVERIFY(copy);
    const std::unique_ptr<QGraphicsItem> member(copy->childItems().first());
    copy->removeFromGroup();
    QVERIFY(Groups::stayed(place, Groups::corners(*member)));
    QCOMPARE(dynamic_cast<Item &>(*member).getItemRotation(), 80.0);
}

void tst_GroupItem::copyLeavesOtherMembersOut()
{
    GroupItem group;
    group.addToGroup({ new QGraphicsRectItem(0, 0, 5, 5), rectangle({ 0, 0, 10, 10 }, 1) });
    const auto copy = copied(group);
    QVERIFY(copy);
    QCOMPARE(copy->getChildrenCount(), 1);
    QVERIFY(memberOf<RectangleItem>(*copy, 0));
}

void tst_GroupItem::copyHasCopiesOfInnerGroups()
{
    GroupItem group;
    GroupItem *inner = turnedGroup().release();
    group.addToGroup({ rectangle({ 0, 0, 10, 10 }), inner });
    const auto copy = copied(group);
    QVERIFY(copy);
    auto *copyOfInner = memberOf<GroupItem>(*copy, 1);
    QVERIFY(copyOfInner && copyOfInner != inner);
    QCOMPARE(ItemRecords::saved(*copyOfInner), ItemRecords::saved(*inner));
    for (int i = 0; i < 2; ++i) {
        QVERIFY(Groups::stayed(
            Groups::corners(*inner->childItems()[i]), Groups::corners(*copyOfInner->childItems()[i])));
    }
}

void tst_GroupItem::copyOfAHiddenGroupCanBeShown()
{
    GroupItem group;
    RectangleItem *hidden = rectangle({ 0, 0, 10, 10 });
    group.addToGroup({ hidden, rectangle({ 20, 0, 10, 10 }, 1) });
    hidden->setVisible(false);
    group.setVisible(false);
    const auto copy = copied(group);
    QVERIFY(copy);
    QVERIFY(!copy->isVisible());
    copy->setVisible(true);
    QVERIFY(!copy->childItems()[0]->isVisible());
    QVERIFY(copy->childItems()[1]->isVisible());
}

void tst_GroupItem::copyCountsAsTheOriginal()
{
    GroupItem group;
    group.setChildrenCount(9);
    group.setCountInvisibleItems(false);
    const auto copy = copied(group);
    QVERIFY(copy);
    QCOMPARE(copy->getStoredChildrenCount(), 9);
    QVERIFY(!copy->getCountInvisibleItems());
}

void tst_GroupItem::copyOfASelectedGroupIsSelectedAndItsMembersAreNot()
{
    const std::unique_ptr<GroupItem> group = turnedGroup();
    group->childItems().first()->setSelected(true);
    QVERIFY(!copied(*group)->isSelected());
    group->setSelected(true);
    const auto copy = copied(*group);
    QVERIFY(copy->isSelected());
    for (const QGraphicsItem *member : copy->childItems())
        QVERIFY(!member->isSelected());
}

void tst_GroupItem::reducingColoursLeavesTheMembersAlone()
{
    const std::unique_ptr<GroupItem> group = turnedGroup();
    auto *member = memberOf<RectangleItem>(*group, 0);
    member->setItemPenColor(Qt::red);
    QVERIFY(!group->resetItemColors(Qt::red, true, true));
    QVERIFY(!group->resetItemColorsNegative(Qt::red));
    QCOMPARE(member->getItemPenColor(), QColor(Qt::red));
    QCOMPARE(group->itemFlags(), 0x11U);
}

void tst_GroupItem::printsAsItselfAtScaleOne()
{
    QGraphicsScene scene;
    QGraphicsScene printScene;
    GroupItem *group = turnedGroup().release();
    scene.addItem(group);
    group->setSelected(true);
    QVERIFY(!group->addItemToPrintScene(&printScene, 1.2));
    QCOMPARE(group->scene(), &printScene);
    QCOMPARE(group->childItems().first()->scene(), &printScene);
    QVERIFY(!group->isSelected());
    QVERIFY(scene.items().isEmpty());
}

void tst_GroupItem::printsAsAPictureAtOtherScales()
{
    GroupItem group;
    RectangleItem *red = rectangle({ 10, 20, 30, 20 });
    RectangleItem *blue = rectangle({ 30, 30, 20, 10 }, 1);
    for (RectangleItem *item : { red, blue })
        item->setItemPenStyle(Qt::NoPen);
    red->setItemFillColor(Qt::red);
    blue->setItemFillColor(Qt::blue);
    group.addToGroup({ red, blue });
    QGraphicsScene printScene(0, 0, 200, 200);
    QVERIFY(group.addItemToPrintScene(&printScene, 2.0));
    QVERIFY(!group.scene());
    const QGraphicsPixmapItem *picture = Scenes::onlyPixmap(printScene);
    QVERIFY(picture);
    QCOMPARE(picture->pos(), QPointF(20, 40));
    QImage expected(80, 40, QImage::Format_ARGB32_Premultiplied);
    expected.fill(Qt::transparent);
    QPainter painter(&expected);
    painter.fillRect(0, 0, 60, 40, Qt::red);
    painter.fillRect(40, 20, 40, 20, Qt::blue);
    painter.end();
    QCOMPARE(picture->pixmap().toImage().convertToFormat(QImage::Format_ARGB32_Premultiplied), expected);
}

void tst_GroupItem::renderingAMemberLeavesTheGroupAsItWas()
{
    QGraphicsScene scene;
    auto *layer = new LayerItem;
    scene.addItem(layer);
    auto *group = new GroupItem;
    group->setParentItem(layer);
    auto *picture = new PixMapItem;
    picture->pixmapImportActions(AllItems::plainPicture(QSize(40, 20), Qt::red));
    picture->setZValue(1);
    group->addToGroup({ rectangle({ 0, 0, 30, 20 }), picture, rectangle({ 10, 0, 30, 20 }, 2) });
    group->setItemRotation(90);
    const QList<QGraphicsItem *> members = group->childItems();
    const QPolygonF place = Groups::corners(*picture);
    const QByteArray record = ItemRecords::saved(*picture);

    // About (20, 10) a turn by 90 degrees takes the picture of 40 x 20 to 20 x 40 at (10, -10).
    const QImage image = picture->createItemImage(picture, 0xFFFFFFFF, QRectF(0, 0, 100, 100), 1.0);
    QCOMPARE(image.size(), QSize(20, 30));
    QCOMPARE(image.pixelColor(10, 15), QColor(Qt::red));
    QCOMPARE(group->childItems(), members);
    QCOMPARE(group->parentItem(), layer);
    QVERIFY(group->isSelected());
    QVERIFY(Groups::stayed(place, Groups::corners(*picture)));
    QCOMPARE(ItemRecords::saved(*picture), record);
    QCOMPARE(group->boundingRect(), QRectF(0, 0, 40, 20));
}

QTEST_MAIN(tst_GroupItem)
#include "tst_groupitem.moc"
