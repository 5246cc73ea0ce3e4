// SPDX-License-Identifier: BSD-3-Clause
#include "items/core/basicconversions.h"
#include "tests/support/allitems.h"
#include "tests/support/images.h"
#include "tests/support/itemrecords.h"

#include <QGraphicsScene>
#include <QPainter>
#include <QRegularExpression>
#include <QTest>
#include <QtEndian>

#include <bit>
#include <limits>

using namespace Qt::StringLiterals;
using AllItems::madeOrChanged;
using AllItems::propertiesOf;
using MobraTypes::ShapeType;

namespace {

const QSize canvas(160, 160);
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();
constexpr double infinite = std::numeric_limits<double>::infinity();

/// Paints the item by itself, as a part of a scene, and as a print image where it has one.
void drawInEveryWay(Item &item)
{
    QGraphicsItem &graphics = AllItems::graphics(item);
    Images::painted(graphics, canvas, QStyle::State_Selected);
    if (auto *fillable = dynamic_cast<FillableItem *>(&item))
        fillable->preparePrintImage();

    QGraphicsScene scene(0.0, 0.0, 100.0, 100.0);
    scene.addItem(&graphics);
    QImage image(canvas, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::white);
    QPainter painter(&image);
    scene.render(&painter);
    scene.removeItem(&graphics);
}

/// What the item writes as all do, at the beginning of its record or further on.
QByteArray commonRecord(Item &item)
{
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    item.Item::saveItemToData(stream);
    return bytes;
}

/// The classes that write anything.
QList<ShapeType> shapesWithRecords()
{
    QList<ShapeType> shapes = AllItems::shapesAndContainers();
    shapes.removeOne(MobraTypes::LayerShape);
    return shapes;
}

/// The values in what all items write that are floating-point numbers, by their offset.
const struct
{
    const char *name;
    int offset;
} numbersOfTheRecord[]
    = { { "z", 9 }, { "rotation", 22 }, { "width", 30 }, { "height", 38 }, { "scale x", 46 },
          { "scale y", 54 }, { "m11", 62 }, { "m12", 70 }, { "m13", 78 }, { "m21", 86 }, { "m22", 94 },
          { "m23", 102 }, { "m31", 110 }, { "m32", 118 }, { "m33", 126 }, { "x", 134 }, { "y", 142 } };
constexpr int recordOfTheItem = 158; // with a null datasource field

} // namespace

/// What every item class makes of values that nobody can use.
class tst_ItemContractHostile : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    void unusableSizesAreDrawnAsWhateverTheyAre_data();
    void unusableSizesAreDrawnAsWhateverTheyAre();
    void unknownStylesAreDrawnAsWhateverTheyAre_data();
    void unknownStylesAreDrawnAsWhateverTheyAre();
    void unusableNumbersInRecordsAreKept_data();
    void unusableNumbersInRecordsAreKept();
    void unusableValuesInMapsAreDrawnAsWhateverTheyAre_data();
    void unusableValuesInMapsAreDrawnAsWhateverTheyAre();
    void cutRecordsAreDrawnAsWhateverTheyHold_data() { AllItems::addRows(shapesWithRecords()); }
    void cutRecordsAreDrawnAsWhateverTheyHold();
    void shortTransformListsChangeNothing_data() { AllItems::addRows(AllItems::shapesAndContainers()); }
    void shortTransformListsChangeNothing();
};

void tst_ItemContractHostile::unusableSizesAreDrawnAsWhateverTheyAre_data()
{
    QTest::addColumn<ShapeType>("shape");
    QTest::addColumn<QSizeF>("size");
    for (const ShapeType shape : AllItems::shapesAndContainers()) {
        const char *name = AllItems::nameOf(shape);
        for (const double width : { 0.0, -5.0, 1e-300, 1e9, 1e308, infinite, notANumber }) {
            for (const double height : { 0.0, 50.0, 1e308, infinite, notANumber })
                QTest::addRow("%s of %g x %g", name, width, height) << shape << QSizeF(width, height);
        }
    }
}

void tst_ItemContractHostile::unusableSizesAreDrawnAsWhateverTheyAre()
{
    QFETCH(const ShapeType, shape);
    QFETCH(const QSizeF, size);
    for (const bool changed : { false, true }) {
        const std::unique_ptr<Item> item = madeOrChanged(shape, changed);
        item->setItemSize(size);
        drawInEveryWay(*item);
        item->updateItemSize(size);
        item->setItemRotation(45.0);
        drawInEveryWay(*item);

        // Nothing of it is for ever.
        const std::unique_ptr<Item> untouched = madeOrChanged(shape, changed);
        for (Item *resized : { item.get(), untouched.get() })
            resized->updateItemSize(QSizeF(50.0, 40.0));
        QCOMPARE(item->getItemSize(), untouched->getItemSize());
        // A label text is scaled with its outline, which was thinner while the item was too small for it.
        if (shape == MobraTypes::LabelTextShape)
            continue;
        const QRectF area = AllItems::graphics(*item).shape().boundingRect();
        const QRectF expected = AllItems::graphics(*untouched).shape().boundingRect();
        QVERIFY(BasicConversions::almostEqual(area.topLeft(), expected.topLeft(), 1e-9));
        QVERIFY(BasicConversions::almostEqual(area.size(), expected.size(), 1e-9));
    }
}

void tst_ItemContractHostile::unknownStylesAreDrawnAsWhateverTheyAre_data()
{
    QTest::addColumn<ShapeType>("shape");
    QTest::addColumn<QByteArray>("property");
    QTest::addColumn<int>("value");
    for (const ShapeType shape : AllItems::shapesAndContainers()) {
        const std::unique_ptr<Item> item = AllItems::made(shape);
        const char *name = AllItems::object(*item).metaObject()->className();
        for (const char *property :
            { "itemPenStyle", "itemPenCapStyle", "itemPenJoinStyle", "itemBrushStyle" }) {
            if (!AllItems::object(*item).property(property).isValid())
                continue;
            for (const int value : { 7, 18, 24, 40, 42, 255, 32767, 32768, 65534, 65535 })
                QTest::addRow("%s with %s %d", name, property, value)
                    << shape << QByteArray(property) << value;
        }
    }
}

void tst_ItemContractHostile::unknownStylesAreDrawnAsWhateverTheyAre()
{
    QFETCH(const ShapeType, shape);
    QFETCH(const QByteArray, property);
    QFETCH(const int, value);
    const std::unique_ptr<Item> item = madeOrChanged(shape, true);
    AllItems::object(*item).setProperty(property, value);
    drawInEveryWay(*item);

    const std::unique_ptr<Item> loaded = AllItems::made(shape);
    QCOMPARE(ItemRecords::load(*loaded, ItemRecords::saved(*item)), QDataStream::Ok);
    drawInEveryWay(*loaded);
    QCOMPARE(AllItems::object(*loaded).property(property), AllItems::object(*item).property(property));
}

void tst_ItemContractHostile::unusableNumbersInRecordsAreKept_data()
{
    QTest::addColumn<ShapeType>("shape");
    QTest::addColumn<int>("offset");
    QTest::addColumn<double>("value");
    for (const ShapeType shape : shapesWithRecords()) {
        const char *name = AllItems::nameOf(shape);
        for (const auto &number : numbersOfTheRecord) {
            for (const double value : { 0.0, -1.0, 1e9, -1e308, infinite, notANumber })
                QTest::addRow("%s with %s %g", name, number.name, value) << shape << number.offset << value;
        }
    }
}

void tst_ItemContractHostile::unusableNumbersInRecordsAreKept()
{
    QFETCH(const ShapeType, shape);
    QFETCH(const int, offset);
    QFETCH(const double, value);
    const std::unique_ptr<Item> item = AllItems::made(shape);
    QByteArray record = ItemRecords::saved(*item);
    const qsizetype before = record.indexOf(commonRecord(*item));
    QVERIFY(before >= 0);
    qToBigEndian(std::bit_cast<quint64>(value), record.data() + before + offset);
    QCOMPARE(ItemRecords::load(*item, record), QDataStream::Ok);
    drawInEveryWay(*item);
}

void tst_ItemContractHostile::unusableValuesInMapsAreDrawnAsWhateverTheyAre_data()
{
    QTest::addColumn<ShapeType>("shape");
    QTest::addColumn<QString>("key");
    for (const ShapeType shape : AllItems::shapesAndContainers()) {
        const std::unique_ptr<Item> item = AllItems::made(shape);
        const char *name = AllItems::object(*item).metaObject()->className();
        for (const QString &key : propertiesOf(*item))
            QTest::addRow("%s with %s", name, qPrintable(key)) << shape << key;
    }
}

void tst_ItemContractHostile::unusableValuesInMapsAreDrawnAsWhateverTheyAre()
{
    QFETCH(const ShapeType, shape);
    QFETCH(const QString, key);
    const QVariant values[] = { QVariant(), 0, -1, 4294967295U, -9.0e18, 1e308, infinite, notANumber,
        u"nan"_s, u"-inf"_s, u"no such value"_s, QString(), true, QVariantList(), QVariantList(8, notANumber),
        QVariantList(100, u"x"_s), QVariantMap { { u"a"_s, 1 } }, QByteArray(100, '\xFF') };
    for (const QVariant &value : values) {
        const std::unique_ptr<Item> item = madeOrChanged(shape, true);
        item->loadItemFromJSON({ { key, value } }, ItemRecords::currentVersion);
        drawInEveryWay(*item);
        const std::unique_ptr<Item> copy(item->createItemCopy());
        drawInEveryWay(*copy);
        QCOMPARE(ItemRecords::load(*AllItems::made(shape), ItemRecords::saved(*copy)), QDataStream::Ok);
    }
}

void tst_ItemContractHostile::cutRecordsAreDrawnAsWhateverTheyHold()
{
    QFETCH(const ShapeType, shape);
    const QByteArray record = ItemRecords::saved(*AllItems::made(shape));
    for (int length = 0; length < recordOfTheItem; ++length) {
        const std::unique_ptr<Item> item = AllItems::made(shape);
        QCOMPARE(ItemRecords::load(*item, record.first(length)), QDataStream::ReadPastEnd);
        drawInEveryWay(*item);
    }
}

void tst_ItemContractHostile::shortTransformListsChangeNothing()
{
    QFETCH(const ShapeType, shape);
    const std::unique_ptr<Item> item = madeOrChanged(shape, true);
    const QTransform before = AllItems::graphics(*item).transform();
    QVariantList list;
    for (int length = 0; length < 8; ++length) {
        item->setItemTransformFromList(list);
        QCOMPARE(AllItems::graphics(*item).transform(), before);
        list << 2.0;
    }
    item->setItemTransformFromList({ 1.0, 2.0, 0.0, 3.0, 4.0, 0.0, 5.0, 6.0 });
    QCOMPARE(AllItems::graphics(*item).transform(), QTransform(1.0, 2.0, 0.0, 3.0, 4.0, 0.0, 5.0, 6.0, 1.0));
}

QTEST_MAIN(tst_ItemContractHostile)
#include "tst_itemcontracthostile.moc"
