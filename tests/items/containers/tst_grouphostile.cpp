// SPDX-License-Identifier: BSD-3-Clause
#include "items/containers/groupitem.h"
#include "items/containers/layeritem.h"
#include "items/graphics/pixmapitem.h"
#include "items/text/simpletextitem.h"
#include "tests/support/allitems.h"
#include "tests/support/groups.h"
#include "tests/support/itemrecords.h"
#include "tests/support/labeltexts.h"

#include <QGraphicsScene>
#include <QPainter>
#include <QRegularExpression>
#include <QTest>
#include <QtEndian>

#include <bit>
#include <cmath>
#include <limits>

using namespace Qt::StringLiterals;
using Groups::rectangle;
using MobraTypes::ShapeType;

namespace {

constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();
constexpr double infinite = std::numeric_limits<double>::infinity();
constexpr int members = 3;

/// A group of a rectangle, a picture and a text, all turned.
std::unique_ptr<GroupItem> filledGroup()
{
    auto group = std::make_unique<GroupItem>();
    auto *picture = new PixMapItem;
    picture->pixmapImportActions(AllItems::plainPicture(QSize(40, 20), Qt::red));
    picture->setZValue(1);
    auto *text = new SimpleTextItem;
    text->setZValue(2);
    RectangleItem *rect = rectangle({ 0, 0, 30, 20 });
    for (Item *item : { static_cast<Item *>(picture), static_cast<Item *>(text), static_cast<Item *>(rect) })
        item->setItemRotation(30);
    group->addToGroup({ rect, picture, text });
    return group;
}

void paint(GroupItem &group)
{
    QGraphicsScene scene(0, 0, 100, 100);
    scene.addItem(&group);
    QImage image(100, 100, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::white);
    QPainter painter(&image);
    scene.render(&painter);
    painter.end();
    scene.removeItem(&group);
}

/// Everything that people do to a group. Its members leave it in the end.
void use(GroupItem &group)
{
    paint(group);
    group.setItemSize(group.getItemSize() * 2);
    group.setItemRotation(group.getItemRotation() + 20);
    const std::unique_ptr<Item> copy(group.createItemCopy());
    QCOMPARE(dynamic_cast<GroupItem &>(*copy).getChildrenCount(), members);
    group.setItemSize(QSizeF(40, 30));
    group.updateItemSize(QSizeF(50, 40));
    paint(group);
    const QList<QGraphicsItem *> items = group.childItems();
    QCOMPARE(items.size(), members);
    group.removeFromGroup();
    QCOMPARE(group.getChildrenCount(), 0);
    for (QGraphicsItem *item : items) {
        QVERIFY(!item->parentItem());
        QVERIFY(std::isfinite(item->pos().x()) && std::isfinite(item->pos().y()));
        item->setZValue(double(items.indexOf(item)));
    }
    group.addToGroup(items);
    paint(group);
    group.removeFromGroup();
    qDeleteAll(items);
}

} // namespace

/// What groups with members make of values that nobody can use.
class tst_GroupHostile : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { LabelTexts::useKnownFont(); }
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    void unusableNumbersInTheRecord_data();
    void unusableNumbersInTheRecord();
    void unusableNumbersInTheRecordOfAMember_data() { unusableNumbersInTheRecord_data(); }
    void unusableNumbersInTheRecordOfAMember();
    void anyFlags_data();
    void anyFlags();
    void parentsAndMembersOfAllKinds();
};

void tst_GroupHostile::unusableNumbersInTheRecord_data()
{
    QTest::addColumn<int>("offset");
    QTest::addColumn<double>("value");
    constexpr std::pair<const char *, int> numbers[] = { { "z", 9 }, { "rotation", 22 }, { "width", 30 },
        { "height", 38 }, { "scale x", 46 }, { "scale y", 54 }, { "m11", 62 }, { "m12", 70 }, { "m13", 78 },
        { "m22", 94 }, { "m31", 110 }, { "m33", 126 }, { "x", 134 }, { "y", 142 } };
    for (const auto &[name, offset] : numbers) {
        for (const double value : { 0.0, -1.0, 1e-300, 1e9, -1e308, infinite, notANumber })
            QTest::addRow("%s %g", name, value) << offset << value;
    }
}

void tst_GroupHostile::unusableNumbersInTheRecord()
{
    QFETCH(const int, offset);
    QFETCH(const double, value);
    const std::unique_ptr<GroupItem> group = filledGroup();
    QByteArray record = ItemRecords::saved(*group);
    qToBigEndian(std::bit_cast<quint64>(value), record.data() + offset);
    QCOMPARE(ItemRecords::load(*group, record), QDataStream::Ok);
    use(*group);
}

void tst_GroupHostile::unusableNumbersInTheRecordOfAMember()
{
    QFETCH(const int, offset);
    QFETCH(const double, value);
    const std::unique_ptr<GroupItem> group = filledGroup();
    for (QGraphicsItem *graphics : group->childItems()) {
        auto &item = dynamic_cast<Item &>(*graphics);
        QByteArray common;
        QDataStream stream(&common, QIODevice::WriteOnly);
        item.Item::saveItemToData(stream);
        QByteArray record = ItemRecords::saved(item);
        const qsizetype before = record.indexOf(common);
        QVERIFY(before >= 0);
        qToBigEndian(std::bit_cast<quint64>(value), record.data() + before + offset);
        QCOMPARE(ItemRecords::load(item, record), QDataStream::Ok);
    }
    use(*group);
}

void tst_GroupHostile::anyFlags_data()
{
    QTest::addColumn<unsigned int>("flags");
    for (int bit = 0; bit < 32; ++bit)
        QTest::addRow("bit %d", bit) << (0x107U ^ 1U << bit);
    QTest::newRow("none") << 0U;
    QTest::newRow("all") << 0xFFFFFFFFU;
}

void tst_GroupHostile::anyFlags()
{
    QFETCH(const unsigned int, flags);
    const std::unique_ptr<GroupItem> group = filledGroup();
    group->setItemQFlags(flags);
    use(*group);
    const std::unique_ptr<GroupItem> ofSuch = filledGroup();
    for (QGraphicsItem *member : ofSuch->childItems())
        dynamic_cast<Item &>(*member).setItemQFlags(flags);
    use(*ofSuch);
}

void tst_GroupHostile::parentsAndMembersOfAllKinds()
{
    for (const ShapeType outer : AllItems::shapesAndContainers()) {
        const std::unique_ptr<Item> parent = AllItems::made(outer);
        GroupItem *group = filledGroup().release();
        group->setParentItem(&AllItems::graphics(*parent));
        for (const ShapeType shape : AllItems::shapesAndContainers())
            group->addToGroup(&AllItems::graphics(*AllItems::made(shape).release()));
        const int count = members + int(AllItems::shapesAndContainers().size());
        QCOMPARE(group->getChildrenCount(), count);
        paint(*group); // which takes it out of its parent
        group->setParentItem(&AllItems::graphics(*parent));
        QVERIFY(group->setItemSize(group->getItemSize() * 2));
        group->removeFromGroup();
        QCOMPARE(AllItems::graphics(*parent).childItems().size(), count + 1);
    }
}

QTEST_MAIN(tst_GroupHostile)
#include "tst_grouphostile.moc"
