// SPDX-License-Identifier: BSD-3-Clause
#include "items/containers/layeritem.h"
#include "items/core/limits.h"
#include "items/shapes/ellipseitem.h"
#include "items/shapes/rectangleitem.h"
#include "tests/support/images.h"
#include "tests/support/itemmaps.h"
#include "tests/support/itemrecords.h"
#include "tests/support/recordings.h"
#include "tests/support/resizing.h"
#include "tests/support/standins.h"

#include <QGraphicsScene>
#include <QMetaProperty>
#include <QPainterPath>
#include <QRegularExpression>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

/// A new item in the parent, which owns it.
template <typename T> T *added(QGraphicsItem &parent)
{
    auto *item = new T;
    item->setParentItem(&parent);
    return item;
}

std::unique_ptr<LayerItem> copied(LayerItem &layer)
{
    Item *copy = layer.createItemCopy();
    auto *copyOfLayer = dynamic_cast<LayerItem *>(copy);
    if (!copyOfLayer)
        delete copy;
    return std::unique_ptr<LayerItem>(copyOfLayer);
}

} // namespace

/// The layer: counts and copies its members, and has neither size nor data.
class tst_LayerItem : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    void newLayerIsALayer();
    void onlyShapeAndCountAreProperties();
    void hasNoGeometryWhateverItHolds();
    void drawsNothing();
    void resizingIsRefused_data() { Resizing::addRows(); }
    void resizingIsRefused();
    void updatingTheSizeChangesNothing();
    void countsItsMembers();
    void countsTheMembersOfItsGroups();
    void layerValueIsTheZValue();
    void recordIsEmpty();
    void loadingReadsNothing();
    void mapHoldsShapeAndCount();
    void mapLoadsNothing();
    void printsNothingItself();
    void copyHasIdAndZValue();
    void copyHasCopiesOfItsMembersInTheirOrder();
    void copyLeavesOtherMembersOut();
    void copyOfAHiddenLayerIsHiddenAndItsMembersAreNot();
    void membersDrawTheirSelectionFrames();
    void parentsInACircleAreRefused();
    void nestingHasALimit();
    void nestingWithinTheLayerCounts();
};

void tst_LayerItem::newLayerIsALayer()
{
    LayerItem layer;
    QCOMPARE(layer.type(), 0x10002);
    QCOMPARE(layer.getItemShapeInt(), 0x10002U);
    QCOMPARE(layer.itemQFlags(), 0x500U);
    QCOMPARE(layer.itemFlags(), 0x01U);
    QCOMPARE(layer.itemId(), short(-1));
    layer.setItemId(12);
    QCOMPARE(layer.toDescriptionString(), u"Layer item 12"_s);
    QCOMPARE(layer.getChildrenCount(), 0);
    QCOMPARE(layer.childrenOfLayerAndGroupCount(), 0);
}

void tst_LayerItem::onlyShapeAndCountAreProperties()
{
    const QMetaObject &meta = LayerItem::staticMetaObject;
    QCOMPARE(meta.superClass(), &QObject::staticMetaObject);
    QCOMPARE(meta.propertyCount() - meta.propertyOffset(), 2);
    QCOMPARE(meta.property(meta.propertyOffset()).name(), "itemShape");
    const QMetaProperty count = meta.property(meta.propertyOffset() + 1);
    QCOMPARE(count.name(), "childrenCount");
    QCOMPARE(count.typeName(), "int");
    QVERIFY(!count.isWritable());
    QCOMPARE(meta.methodCount(), meta.methodOffset());
}

void tst_LayerItem::hasNoGeometryWhateverItHolds()
{
    LayerItem layer;
    added<RectangleItem>(layer);
    QCOMPARE(layer.boundingRect(), QRectF(0, 0, 0, 0));
    QVERIFY(layer.shape().isEmpty());
    QCOMPARE(layer.childrenBoundingRect(), QRectF(0, 0, 100, 100));
}

void tst_LayerItem::drawsNothing()
{
    LayerItem layer;
    QVERIFY(Recordings::recorded(layer, QStyle::State_Selected).isEmpty());
}

void tst_LayerItem::resizingIsRefused()
{
    QFETCH(const int, parameters);
    LayerItem layer;
    auto *member = added<RectangleItem>(layer);
    QVERIFY(!Resizing::resize(layer, parameters, QSizeF(200, 50)));
    QCOMPARE(layer.getItemSize(), QSizeF(100, 100));
    QCOMPARE(layer.getItemScaleX(), 1.0);
    QCOMPARE(layer.getItemScaleY(), 1.0);
    QCOMPARE(member->getItemSize(), QSizeF(100, 100));
}

void tst_LayerItem::updatingTheSizeChangesNothing()
{
    LayerItem layer;
    layer.updateItemSize(QSizeF(200, 50));
    QCOMPARE(layer.getItemSize(), QSizeF(100, 100));
}

void tst_LayerItem::countsItsMembers()
{
    LayerItem layer;
    added<RectangleItem>(layer);
    added<EllipseItem>(layer)->setVisible(false);
    QCOMPARE(layer.getChildrenCount(), 2);
    added<QGraphicsRectItem>(layer);
    QCOMPARE(layer.getChildrenCount(), 3);
}

void tst_LayerItem::countsTheMembersOfItsGroups()
{
    LayerItem layer;
    added<RectangleItem>(layer);
    added<EllipseItem>(layer);
    auto *group = new ParentStandIn(MobraTypes::GroupShape);
    group->setParentItem(&layer);
    for (int i = 0; i < 3; ++i)
        added<RectangleItem>(*group);
    QCOMPARE(layer.getChildrenCount(), 3);
    QCOMPARE(layer.childrenOfLayerAndGroupCount(), 6);
    group->setVisible(false);
    QCOMPARE(layer.childrenOfLayerAndGroupCount(), 6);

    auto *inner = new ParentStandIn(MobraTypes::GroupShape);
    inner->setParentItem(group);
    added<RectangleItem>(*inner);
    added<RectangleItem>(*added<RectangleItem>(layer));
    // The inner group is a fourth member of the group and the rectangle a fourth one of the layer; what lies
    // in those is not counted.
    QCOMPARE(layer.getChildrenCount(), 4);
    QCOMPARE(layer.childrenOfLayerAndGroupCount(), 8);
}

void tst_LayerItem::layerValueIsTheZValue()
{
    LayerItem layer;
    layer.setLayerZValue(-3.5);
    QCOMPARE(layer.zValue(), -3.5);
}

void tst_LayerItem::recordIsEmpty()
{
    LayerItem layer;
    layer.setItemId(7);
    added<RectangleItem>(layer);
    QCOMPARE(ItemRecords::saved(layer), QByteArray());
}

void tst_LayerItem::loadingReadsNothing()
{
    LayerItem layer;
    layer.setItemId(7);
    RectangleItem rectangle;
    rectangle.setItemId(8);
    const QByteArray record = ItemRecords::saved(rectangle);
    for (const unsigned int version : { 5U, 6U }) {
        QDataStream stream(record);
        layer.loadItemFromData(stream, version);
        QCOMPARE(stream.device()->pos(), 0);
        QCOMPARE(stream.status(), QDataStream::Ok);
    }
    QCOMPARE(layer.itemId(), short(7));
    QCOMPARE(layer.itemQFlags(), 0x500U);
}

void tst_LayerItem::mapHoldsShapeAndCount()
{
    LayerItem layer;
    layer.setItemId(7);
    added<RectangleItem>(layer)->setVisible(false);
    added<RectangleItem>(layer);
    ItemMaps::compare(layer.saveItemToJSON(), { { u"itemShape"_s, 0x10002U }, { u"childrenCount"_s, 2 } });
}

void tst_LayerItem::mapLoadsNothing()
{
    LayerItem layer;
    layer.setPos(3, 4);
    layer.loadItemFromJSON(
        { { u"itemShape"_s, 0x1002AU }, { u"childrenCount"_s, 5 }, { u"itemPositionX"_s, 9.0 } }, 6);
    QCOMPARE(layer.getItemShapeInt(), 0x10002U);
    QCOMPARE(layer.getChildrenCount(), 0);
    QCOMPARE(layer.pos(), QPointF(3, 4));
}

void tst_LayerItem::printsNothingItself()
{
    LayerItem layer;
    auto *member = added<RectangleItem>(layer);
    member->setItemPenColor(Qt::red);
    QVERIFY(!layer.resetItemColors(Qt::red, true, true));
    QVERIFY(!layer.resetItemColorsNegative(Qt::red));
    QCOMPARE(member->getItemPenColor(), QColor(Qt::red));
    QCOMPARE(layer.itemFlags(), 0x01U);
}

void tst_LayerItem::copyHasIdAndZValue()
{
    LayerItem layer;
    layer.setItemId(42);
    layer.setLayerZValue(2.5);
    const auto copy = copied(layer);
    QVERIFY(copy);
    QCOMPARE(copy->itemId(), short(42));
    QCOMPARE(copy->zValue(), 2.5);
    QCOMPARE(copy->itemQFlags(), 0x500U);
    QCOMPARE(copy->getChildrenCount(), 0);
    QVERIFY(!copy->parentItem());
    QVERIFY(!copy->scene());
}

void tst_LayerItem::copyHasCopiesOfItsMembersInTheirOrder()
{
    QGraphicsScene scene;
    auto *layer = new LayerItem;
    scene.addItem(layer);
    auto *rectangle = added<RectangleItem>(*layer);
    rectangle->setItemSize(QSizeF(30, 20));
    rectangle->setPos(5, 6);
    rectangle->setZValue(4);
    auto *ellipse = added<EllipseItem>(*layer);
    ellipse->setItemRotation(30);
    ellipse->setPos(7, 8);

    const auto copy = copied(*layer);
    QVERIFY(copy);
    QVERIFY(!copy->scene());
    const QList<QGraphicsItem *> members = copy->childItems();
    QCOMPARE(members.size(), 2);
    // The ellipse has the lower z value.
    auto *copyOfEllipse = dynamic_cast<EllipseItem *>(members[0]);
    auto *copyOfRectangle = dynamic_cast<RectangleItem *>(members[1]);
    QVERIFY(copyOfEllipse && copyOfEllipse != ellipse);
    QVERIFY(copyOfRectangle && copyOfRectangle != rectangle);
    QCOMPARE(ItemRecords::saved(*copyOfEllipse), ItemRecords::saved(*ellipse));
    QCOMPARE(ItemRecords::saved(*copyOfRectangle), ItemRecords::saved(*rectangle));
    QCOMPARE(layer->getChildrenCount(), 2);
}

void tst_LayerItem::copyLeavesOtherMembersOut()
{
    LayerItem layer;
    added<QGraphicsRectItem>(layer);
    added<RectangleItem>(layer);
    const auto copy = copied(layer);
    QVERIFY(copy);
    QCOMPARE(copy->getChildrenCount(), 1);
    QVERIFY(dynamic_cast<RectangleItem *>(copy->childItems().constFirst()));
}

void tst_LayerItem::copyOfAHiddenLayerIsHiddenAndItsMembersAreNot()
{
    LayerItem layer;
    added<RectangleItem>(layer)->setItemId(1);
    auto *hidden = added<RectangleItem>(layer);
    hidden->setVisible(false);
    layer.setVisible(false);
    const auto copy = copied(layer);
    QVERIFY(copy);
    QVERIFY(!copy->isVisible());
    QVERIFY(!copy->childItems()[0]->isVisible());
    copy->setVisible(true);
    QVERIFY(copy->childItems()[0]->isVisible());
    QVERIFY(!copy->childItems()[1]->isVisible());
}

void tst_LayerItem::membersDrawTheirSelectionFrames()
{
    LayerItem layer;
    auto *member = added<RectangleItem>(layer);
    const auto figures = Recordings::recorded(*member, QStyle::State_Selected);
    QVERIFY(Recordings::isFrame(figures.last(), QRectF(0, 0, 100, 100)));
}

void tst_LayerItem::parentsInACircleAreRefused()
{
    LayerItem outer;
    auto *between = added<RectangleItem>(outer);
    auto *inner = added<LayerItem>(*between);
    outer.setParentItem(inner);
    QVERIFY(!outer.parentItem());
    QCOMPARE(inner->parentItem(), between);
    inner->setParentItem(&outer);
    QCOMPARE(inner->parentItem(), &outer);
    inner->setParentItem(nullptr);
    QVERIFY(!inner->parentItem());
    delete inner;
}

void tst_LayerItem::nestingHasALimit()
{
    LayerItem outermost;
    LayerItem *layer = &outermost;
    for (int level = 2; level <= 64; ++level) {
        layer = added<LayerItem>(*layer);
        QVERIFY(layer->parentItem());
    }
    const auto deeper = std::make_unique<LayerItem>();
    deeper->setParentItem(layer);
    QVERIFY(!deeper->parentItem());
    deeper->setParentItem(layer->parentItem());
    QVERIFY(deeper->parentItem());
}

void tst_LayerItem::nestingWithinTheLayerCounts()
{
    LayerItem outermost;
    LayerItem *layer = &outermost;
    for (int level = 2; level <= 62; ++level)
        layer = added<LayerItem>(*layer);
    const auto two = std::make_unique<LayerItem>();
    added<RectangleItem>(*two);
    two->setParentItem(layer);
    QCOMPARE(two->parentItem(), layer);
    two->setParentItem(nullptr);
    added<RectangleItem>(*added<RectangleItem>(*two));
    two->setParentItem(layer);
    QVERIFY(!two->parentItem());
}

QTEST_MAIN(tst_LayerItem)
#include "tst_layeritem.moc"
