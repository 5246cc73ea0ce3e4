// SPDX-License-Identifier: BSD-3-Clause
#include "items/core/basicconversions.h"
#include "tests/support/allitems.h"
#include "tests/support/images.h"
#include "tests/support/itemrecords.h"
#include "tests/support/standins.h"

#include <QGraphicsScene>
#include <QMetaProperty>
#include <QPainter>
#include <QPainterPath>
#include <QRegularExpression>
#include <QTest>
#include <QtEndian>

#include <bit>
#include <limits>

using namespace Qt::StringLiterals;
using MobraTypes::ShapeType;

namespace {

const QSize canvas(160, 160);
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();
constexpr double infinite = std::numeric_limits<double>::infinity();

// The groups of which every class makes its list.
const QStringList identity { u"itemShape"_s, u"itemId"_s, u"itemFlags"_s, u"itemQFlags"_s, u"itemZValue"_s };
const QStringList turning { u"itemRotation"_s, u"itemHorizontalMirror"_s, u"itemVerticalMirror"_s };
const QStringList size { u"itemWidth"_s, u"itemHeight"_s, u"itemScaleX"_s, u"itemScaleY"_s };
const QStringList transform { u"itemTransform"_s };
const QStringList overprint { u"allowOverprint"_s };
const QStringList binding { u"itemDatasourceId"_s, u"itemDatasourceField"_s };
const QStringList colors { u"itemPenColor"_s, u"itemFillColor"_s };
const QStringList pen { u"itemPenWidth"_s, u"itemPenStyle"_s, u"itemPenCapStyle"_s, u"itemPenJoinStyle"_s };
const QStringList brush { u"itemBrushStyle"_s };
const QStringList position { u"itemPositionX"_s, u"itemPositionY"_s };

const QStringList rectangle
    = identity + turning + size + transform + overprint + colors + pen + brush + position;
const QStringList ellipse
    = identity + turning + size + transform + overprint + binding + colors + pen + brush + position;
const QStringList polygon
    = identity + turning + overprint + size + transform + binding + colors + pen + brush + position;
const QStringList line = identity + turning + size + transform + overprint + binding + pen
    + QStringList { u"itemPenColor"_s, u"itemArrows"_s, u"itemLength"_s } + position;

/// The property names of every class in their order, those of its base first. A class without a row fails:
/// its properties may be missing altogether, which neither moc nor the compiler reports.
const QMap<ShapeType, QStringList> propertiesOfShapes {
    { MobraTypes::LineShape, line },
    { MobraTypes::RectangleShape, rectangle },
    { MobraTypes::RoundedRectangleShape,
        rectangle + QStringList { u"roundingRadiusX"_s, u"roundingRadiusY"_s } },
    { MobraTypes::EllipseShape, ellipse },
    { MobraTypes::PieShape,
        ellipse + QStringList { u"drawCircle"_s, u"startPieAngle"_s, u"spanPieAngle"_s } },
    { MobraTypes::RightTriangleShape, polygon },
    { MobraTypes::EquilateralTriangleShape, polygon },
    { MobraTypes::DiamondShape, polygon },
    { MobraTypes::PentagonShape, polygon },
    { MobraTypes::HexagonShape, polygon },
    { MobraTypes::OctagonShape, polygon },
};

/// The class's own properties in declared order.
QStringList propertiesOf(Item &item)
{
    QStringList names;
    const QMetaObject *meta = AllItems::object(item).metaObject();
    for (int i = 0; i < meta->propertyCount(); ++i) {
        const QString name = QString::fromLatin1(meta->property(i).name());
        if (!Item::ignoredPropertyNames().contains(name))
            names << name;
    }
    return names;
}

/// The item as made by the factory, changed in everything if asked to.
std::unique_ptr<Item> madeOrChanged(ShapeType shape, bool changed)
{
    std::unique_ptr<Item> item = AllItems::made(shape);
    if (changed)
        AllItems::change(*item);
    return item;
}

QString differenceOfPictures(Item &actual, Item &expected)
{
    return Images::difference(Images::painted(AllItems::graphics(actual), canvas),
        Images::painted(AllItems::graphics(expected), canvas), u"contract"_s);
}

/// Everything that painting could leave behind in a painter.
void comparePainters(const QPainter &actual, const QPainter &expected)
{
    QCOMPARE(actual.pen(), expected.pen());
    QCOMPARE(actual.brush(), expected.brush());
    QCOMPARE(actual.background(), expected.background());
    QCOMPARE(actual.backgroundMode(), expected.backgroundMode());
    QCOMPARE(actual.brushOrigin(), expected.brushOrigin());
    QCOMPARE(actual.font(), expected.font());
    QCOMPARE(actual.worldTransform(), expected.worldTransform());
    QCOMPARE(actual.combinedTransform(), expected.combinedTransform());
    QCOMPARE(actual.hasClipping(), expected.hasClipping());
    QCOMPARE(actual.clipPath(), expected.clipPath());
    QCOMPARE(actual.compositionMode(), expected.compositionMode());
    QCOMPARE(actual.opacity(), expected.opacity());
    QCOMPARE(actual.renderHints(), expected.renderHints());
    QCOMPARE(actual.layoutDirection(), expected.layoutDirection());
}

/// A state that no painter starts in.
void disguise(QPainter &painter)
{
    painter.setPen(QPen(Qt::green, 3.0, Qt::DotLine));
    painter.setBrush(QBrush(Qt::cyan, Qt::Dense2Pattern));
    painter.setBackground(Qt::yellow);
    painter.setBackgroundMode(Qt::OpaqueMode);
    painter.setBrushOrigin(3, 4);
    painter.translate(5.0, 6.0);
    painter.rotate(10.0);
    painter.setClipRect(QRectF(-20.0, -20.0, 120.0, 120.0));
    painter.setCompositionMode(QPainter::CompositionMode_SourceAtop);
    painter.setOpacity(0.75);
    painter.setRenderHint(QPainter::Antialiasing);
}

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

/// The values of an item's record that are floating-point numbers, by their offset.
const struct
{
    const char *name;
    int offset;
} numbersOfTheRecord[]
    = { { "z", 9 }, { "rotation", 22 }, { "width", 30 }, { "height", 38 }, { "scale x", 46 },
          { "scale y", 54 }, { "m11", 62 }, { "m12", 70 }, { "m13", 78 }, { "m21", 86 }, { "m22", 94 },
          { "m23", 102 }, { "m31", 110 }, { "m32", 118 }, { "m33", 126 }, { "x", 134 }, { "y", 142 } };
constexpr int recordOfTheItem = 158; // with a null datasource field

void addRowsWithState()
{
    QTest::addColumn<ShapeType>("shape");
    QTest::addColumn<bool>("changed");
    for (const ShapeType shape : AllItems::shapes()) {
        const char *name = AllItems::object(*AllItems::made(shape)).metaObject()->className();
        QTest::addRow("%s as made", name) << shape << false;
        QTest::addRow("%s changed", name) << shape << true;
    }
}

} // namespace

/// What every item class keeps to, whatever it draws.
class tst_ItemContract : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    void everyRowHasAClass();
    void propertiesAreDeclaredInOrder_data() { AllItems::addRows(); }
    void propertiesAreDeclaredInOrder();
    void propertiesCanBeReadAndWritten_data() { AllItems::addRows(); }
    void propertiesCanBeReadAndWritten();
    void itemKnowsItsCode_data() { AllItems::addRows(); }
    void itemKnowsItsCode();
    void newItemIsUnboundAndPrintable_data() { AllItems::addRows(); }
    void newItemIsUnboundAndPrintable();
    void descriptionNamesTheId_data() { AllItems::addRows(); }
    void descriptionNamesTheId();
    void copyEqualsTheOriginal_data() { addRowsWithState(); }
    void copyEqualsTheOriginal();
    void copyIsIndependent_data() { AllItems::addRows(); }
    void copyIsIndependent();
    void recordRoundTripIsIdentity_data() { addRowsWithState(); }
    void recordRoundTripIsIdentity();
    void mapRoundTripIsIdentity_data() { addRowsWithState(); }
    void mapRoundTripIsIdentity();
    void mapHoldsExactlyTheProperties_data() { AllItems::addRows(); }
    void mapHoldsExactlyTheProperties();
    void paintingLeavesThePainterAsItWas_data();
    void paintingLeavesThePainterAsItWas();
    void frameIsDrawnAtTopLevelAndInLayers_data();
    void frameIsDrawnAtTopLevelAndInLayers();
    void unusableSizesAreDrawnAsWhateverTheyAre_data();
    void unusableSizesAreDrawnAsWhateverTheyAre();
    void unknownStylesAreDrawnAsWhateverTheyAre_data();
    void unknownStylesAreDrawnAsWhateverTheyAre();
    void unusableNumbersInRecordsAreKept_data();
    void unusableNumbersInRecordsAreKept();
    void unusableValuesInMapsAreDrawnAsWhateverTheyAre_data();
    void unusableValuesInMapsAreDrawnAsWhateverTheyAre();
    void cutRecordsAreDrawnAsWhateverTheyHold_data() { AllItems::addRows(); }
    void cutRecordsAreDrawnAsWhateverTheyHold();
    void shortTransformListsChangeNothing_data() { AllItems::addRows(); }
    void shortTransformListsChangeNothing();
};

void tst_ItemContract::everyRowHasAClass()
{
    QCOMPARE(AllItems::shapes(), propertiesOfShapes.keys());
}

void tst_ItemContract::propertiesAreDeclaredInOrder()
{
    QFETCH(const ShapeType, shape);
    QVERIFY2(propertiesOfShapes.contains(shape), "the class has no list of its property names in this test");
    QCOMPARE(propertiesOf(*AllItems::made(shape)), propertiesOfShapes.value(shape));
}

void tst_ItemContract::propertiesCanBeReadAndWritten()
{
    QFETCH(const ShapeType, shape);
    const std::unique_ptr<Item> item = AllItems::made(shape);
    QObject &object = AllItems::object(*item);
    for (const QString &name : propertiesOf(*item)) {
        const QByteArray key = name.toLatin1();
        const QVariant value = object.property(key);
        QVERIFY2(value.isValid(), key);
        QVERIFY2(object.setProperty(key, value), key);
    }
}

void tst_ItemContract::itemKnowsItsCode()
{
    QFETCH(const ShapeType, shape);
    const std::unique_ptr<Item> item = AllItems::made(shape);
    QCOMPARE(item->getItemShape(), shape);
    // The six polygons answer their common code.
    const bool isPolygon = shape >= MobraTypes::RightTriangleShape && shape <= MobraTypes::OctagonShape;
    QCOMPARE(AllItems::graphics(*item).type(), int(isPolygon ? MobraTypes::PolygonShape : shape));
}

void tst_ItemContract::newItemIsUnboundAndPrintable()
{
    QFETCH(const ShapeType, shape);
    const std::unique_ptr<Item> item = AllItems::made(shape);
    QCOMPARE(item->itemId(), short(-1));
    QCOMPARE(item->printItemFlags(), u"1"_s);
    QCOMPARE(item->getDatasourceId(), -1);
    QVERIFY(item->getDatasourceField().isEmpty());
    QCOMPARE(item->getItemRotation(), 0.0);
    QVERIFY(!item->getItemHorizontalMirror());
    QVERIFY(!item->getItemVerticalMirror());
    QVERIFY(item->getAllowOverprint());
    QVERIFY(!AllItems::graphics(*item).scene());
    QVERIFY(!AllItems::graphics(*item).parentItem());
    QVERIFY(!AllItems::object(*item).parent());
}

void tst_ItemContract::descriptionNamesTheId()
{
    QFETCH(const ShapeType, shape);
    const std::unique_ptr<Item> item = AllItems::made(shape);
    item->setItemId(-321);
    QVERIFY(item->toDescriptionString().trimmed().endsWith(u" -321"_s));
}

void tst_ItemContract::copyEqualsTheOriginal()
{
    QFETCH(const ShapeType, shape);
    QFETCH(const bool, changed);
    const std::unique_ptr<Item> item = madeOrChanged(shape, changed);
    const std::unique_ptr<Item> copy(item->createItemCopy());
    QCOMPARE(AllItems::object(*copy).metaObject(), AllItems::object(*item).metaObject());
    QCOMPARE(copy->getItemShape(), shape);
    QCOMPARE(ItemRecords::saved(*copy), ItemRecords::saved(*item));
    QCOMPARE(copy->saveItemToJSON(), item->saveItemToJSON());
    QCOMPARE(AllItems::graphics(*copy).boundingRect(), AllItems::graphics(*item).boundingRect());
    QCOMPARE(AllItems::graphics(*copy).shape(), AllItems::graphics(*item).shape());
    QCOMPARE(AllItems::graphics(*copy).opaqueArea(), AllItems::graphics(*item).opaqueArea());
    const QString difference = differenceOfPictures(*copy, *item);
    QVERIFY2(difference.isEmpty(), qPrintable(difference));
}

void tst_ItemContract::copyIsIndependent()
{
    QFETCH(const ShapeType, shape);
    const std::unique_ptr<Item> item = AllItems::made(shape);
    const QByteArray before = ItemRecords::saved(*item);
    const std::unique_ptr<Item> copy(item->createItemCopy());
    AllItems::change(*copy);
    QVERIFY(ItemRecords::saved(*copy) != before);
    QCOMPARE(ItemRecords::saved(*item), before);
}

void tst_ItemContract::recordRoundTripIsIdentity()
{
    QFETCH(const ShapeType, shape);
    QFETCH(const bool, changed);
    const std::unique_ptr<Item> item = madeOrChanged(shape, changed);
    const QByteArray record = ItemRecords::saved(*item);
    const std::unique_ptr<Item> loaded = AllItems::made(shape);
    QCOMPARE(ItemRecords::load(*loaded, record), QDataStream::Ok);
    QCOMPARE(ItemRecords::saved(*loaded), record);
    QCOMPARE(loaded->saveItemToJSON(), item->saveItemToJSON());
    const QString difference = differenceOfPictures(*loaded, *item);
    QVERIFY2(difference.isEmpty(), qPrintable(difference));
}

void tst_ItemContract::mapRoundTripIsIdentity()
{
    QFETCH(const ShapeType, shape);
    QFETCH(const bool, changed);
    const std::unique_ptr<Item> item = madeOrChanged(shape, changed);
    const QVariantMap map = item->saveItemToJSON();
    const std::unique_ptr<Item> loaded = AllItems::made(shape);
    loaded->loadItemFromJSON(map, ItemRecords::currentVersion);
    QCOMPARE(loaded->saveItemToJSON(), map);
    QCOMPARE(AllItems::graphics(*loaded).boundingRect(), AllItems::graphics(*item).boundingRect());
    QCOMPARE(AllItems::graphics(*loaded).shape(), AllItems::graphics(*item).shape());
    // A new shape has a transparent fill, which a map cannot hold.
    if (changed) {
        const QString difference = differenceOfPictures(*loaded, *item);
        QVERIFY2(difference.isEmpty(), qPrintable(difference));
    }
}

void tst_ItemContract::mapHoldsExactlyTheProperties()
{
    QFETCH(const ShapeType, shape);
    const std::unique_ptr<Item> item = AllItems::made(shape);
    QStringList names = propertiesOf(*item);
    names.sort();
    QCOMPARE(item->saveItemToJSON().keys(), names);
}

void tst_ItemContract::paintingLeavesThePainterAsItWas_data()
{
    QTest::addColumn<ShapeType>("shape");
    QTest::addColumn<bool>("changed");
    QTest::addColumn<int>("mirrors");
    QTest::addColumn<bool>("selected");
    for (const ShapeType shape : AllItems::shapes()) {
        const char *name = AllItems::object(*AllItems::made(shape)).metaObject()->className();
        for (const bool changed : { false, true }) {
            for (const int mirrors : { 0, 1, 2, 3 }) {
                for (const bool selected : { false, true })
                    QTest::addRow("%s %s, mirrors %d, %s", name, changed ? "changed" : "as made", mirrors,
                        selected ? "selected" : "not selected")
                        << shape << changed << mirrors << selected;
            }
        }
    }
}

void tst_ItemContract::paintingLeavesThePainterAsItWas()
{
    QFETCH(const ShapeType, shape);
    QFETCH(const bool, changed);
    QFETCH(const int, mirrors);
    QFETCH(const bool, selected);
    const std::unique_ptr<Item> item = madeOrChanged(shape, changed);
    item->setItemHorizontalMirror(mirrors & 1);
    item->setItemVerticalMirror(mirrors & 2);
    QStyleOptionGraphicsItem option;
    option.state = selected ? QStyle::State_Selected : QStyle::State_None;

    QImage image(canvas, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::white);
    QImage untouched = image;
    QPainter painter(&image);
    QPainter reference(&untouched);
    disguise(painter);
    disguise(reference);
    AllItems::graphics(*item).paint(&painter, &option, nullptr);
    comparePainters(painter, reference);
    QVERIFY(painter.end()); // warns if a saved state was left behind
}

void tst_ItemContract::frameIsDrawnAtTopLevelAndInLayers_data()
{
    QTest::addColumn<ShapeType>("shape");
    QTest::addColumn<QString>("parent");
    QTest::addColumn<bool>("framed");
    for (const ShapeType shape : AllItems::shapes()) {
        const char *name = AllItems::object(*AllItems::made(shape)).metaObject()->className();
        QTest::addRow("%s without parent", name) << shape << u"none"_s << true;
        QTest::addRow("%s in a layer", name) << shape << u"layer"_s << true;
        QTest::addRow("%s in a group", name) << shape << u"group"_s << false;
        QTest::addRow("%s in another item", name) << shape << u"other"_s << false;
    }
}

void tst_ItemContract::frameIsDrawnAtTopLevelAndInLayers()
{
    QFETCH(const ShapeType, shape);
    QFETCH(const QString, parent);
    QFETCH(const bool, framed);
    ParentStandIn layer(MobraTypes::LayerShape);
    ParentStandIn group(MobraTypes::GroupShape);
    QGraphicsRectItem other;
    const QMap<QString, QGraphicsItem *> parents { { u"layer"_s, &layer }, { u"group"_s, &group },
        { u"other"_s, &other } };
    const std::unique_ptr<Item> item = AllItems::made(shape);
    QGraphicsItem &graphics = AllItems::graphics(*item);
    graphics.setParentItem(parents.value(parent));

    const QImage plain = Images::painted(graphics, canvas);
    const QImage selected = Images::painted(graphics, canvas, QStyle::State_Selected);
    QCOMPARE(selected != plain, framed);
}

void tst_ItemContract::unusableSizesAreDrawnAsWhateverTheyAre_data()
{
    QTest::addColumn<ShapeType>("shape");
    QTest::addColumn<QSizeF>("size");
    for (const ShapeType shape : AllItems::shapes()) {
        const char *name = AllItems::object(*AllItems::made(shape)).metaObject()->className();
        for (const double width : { 0.0, -5.0, 1e-300, 1e9, 1e308, infinite, notANumber }) {
            for (const double height : { 0.0, 50.0, 1e308, infinite, notANumber })
                QTest::addRow("%s of %g x %g", name, width, height) << shape << QSizeF(width, height);
        }
    }
}

void tst_ItemContract::unusableSizesAreDrawnAsWhateverTheyAre()
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
        const QRectF area = AllItems::graphics(*item).shape().boundingRect();
        const QRectF expected = AllItems::graphics(*untouched).shape().boundingRect();
        QVERIFY(BasicConversions::almostEqual(area.topLeft(), expected.topLeft(), 1e-9));
        QVERIFY(BasicConversions::almostEqual(area.size(), expected.size(), 1e-9));
    }
}

void tst_ItemContract::unknownStylesAreDrawnAsWhateverTheyAre_data()
{
    QTest::addColumn<ShapeType>("shape");
    QTest::addColumn<QByteArray>("property");
    QTest::addColumn<int>("value");
    for (const ShapeType shape : AllItems::shapes()) {
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

void tst_ItemContract::unknownStylesAreDrawnAsWhateverTheyAre()
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

void tst_ItemContract::unusableNumbersInRecordsAreKept_data()
{
    QTest::addColumn<ShapeType>("shape");
    QTest::addColumn<int>("offset");
    QTest::addColumn<double>("value");
    for (const ShapeType shape : AllItems::shapes()) {
        const char *name = AllItems::object(*AllItems::made(shape)).metaObject()->className();
        for (const auto &number : numbersOfTheRecord) {
            for (const double value : { 0.0, -1.0, 1e9, -1e308, infinite, notANumber })
                QTest::addRow("%s with %s %g", name, number.name, value) << shape << number.offset << value;
        }
    }
}

void tst_ItemContract::unusableNumbersInRecordsAreKept()
{
    QFETCH(const ShapeType, shape);
    QFETCH(const int, offset);
    QFETCH(const double, value);
    const std::unique_ptr<Item> item = AllItems::made(shape);
    QByteArray record = ItemRecords::saved(*item);
    qToBigEndian(std::bit_cast<quint64>(value), record.data() + offset);
    QCOMPARE(ItemRecords::load(*item, record), QDataStream::Ok);
    drawInEveryWay(*item);
}

void tst_ItemContract::unusableValuesInMapsAreDrawnAsWhateverTheyAre_data()
{
    QTest::addColumn<ShapeType>("shape");
    QTest::addColumn<QString>("key");
    for (const ShapeType shape : AllItems::shapes()) {
        const std::unique_ptr<Item> item = AllItems::made(shape);
        const char *name = AllItems::object(*item).metaObject()->className();
        for (const QString &key : propertiesOf(*item))
            QTest::addRow("%s with %s", name, qPrintable(key)) << shape << key;
    }
}

void tst_ItemContract::unusableValuesInMapsAreDrawnAsWhateverTheyAre()
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

void tst_ItemContract::cutRecordsAreDrawnAsWhateverTheyHold()
{
    QFETCH(const ShapeType, shape);
    const QByteArray record = ItemRecords::saved(*AllItems::made(shape));
    for (int length = 0; length < recordOfTheItem; ++length) {
        const std::unique_ptr<Item> item = AllItems::made(shape);
        QCOMPARE(ItemRecords::load(*item, record.first(length)), QDataStream::ReadPastEnd);
        drawInEveryWay(*item);
    }
}

void tst_ItemContract::shortTransformListsChangeNothing()
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

QTEST_MAIN(tst_ItemContract)
#include "tst_itemcontract.moc"
