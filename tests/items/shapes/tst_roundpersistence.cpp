// SPDX-License-Identifier: BSD-3-Clause
#include "items/shapes/ellipseitem.h"
#include "items/shapes/pieitem.h"
#include "items/shapes/roundedrectangleitem.h"
#include "tests/support/allitems.h"
#include "tests/support/colours.h"
#include "tests/support/itemmaps.h"
#include "tests/support/oddnumbers.h"
#include "tests/support/rectanglerecords.h"
#include "tests/support/scenes.h"

#include <QGraphicsEllipseItem>
#include <QGraphicsRectItem>
#include <QLinearGradient>
#include <QRegularExpression>
#include <QTest>

#include <limits>
#include <memory>

using namespace Qt::StringLiterals;
using namespace Colours;
using namespace RectangleRecords;
using AllItems::made;
using AllItems::object;
using MobraTypes::ShapeType;

namespace {

/// A value that a class puts before the record that all filled shapes share.
struct OwnField
{
    const char *property;
    const char *bytes;
    QVariant value;
};

/// One of the classes: its own fields, and the same of a new item.
struct Layout
{
    ShapeType shape;
    const char *newFields;
    QList<OwnField> changed;

    /// The changed fields as hex text.
    [[nodiscard]] QByteArray changedFields() const
    {
        QByteArray text;
        for (const OwnField &field : changed)
            text += field.bytes;
        return text;
    }
    [[nodiscard]] QByteArray changedRecord() const
    {
        return QByteArray::fromHex(changedFields()) + fromHexText(changedRectangle);
    }
};

const QList<Layout> &layouts()
{
    static const QList<Layout> all {
        { MobraTypes::EllipseShape, "", {} },
        { MobraTypes::PieShape,
            "000005A0" // start angle 1440
            "000010E0" // span angle 4320
            "00", // no outline
            { { "startPieAngle", "FFFFFE70", -400 }, { "spanPieAngle", "00001770", 6000 },
                { "drawCircle", "01", true } } },
        { MobraTypes::RoundedRectangleShape,
            "4039000000000000" // radii 25
            "4039000000000000",
            { { "roundingRadiusX", "4028800000000000", 12.25 },
                { "roundingRadiusY", "C009000000000000", -3.125 } } },
    };
    return all;
}

void addLayoutRows()
{
    QTest::addColumn<Layout>("layout");
    for (const Layout &layout : layouts())
        QTest::addRow("%s", object(*made(layout.shape)).metaObject()->className()) << layout;
}

/// The rectangle that the graphics item draws.
QRectF drawnRect(Item &item)
{
    if (const auto *ellipse = dynamic_cast<QGraphicsEllipseItem *>(&item))
        return ellipse->rect();
    return dynamic_cast<QGraphicsRectItem &>(item).rect();
}

/// The bytes of a number in a record.
QByteArray bytesOf(double number)
{
    return QByteArray::number(std::bit_cast<quint64>(number), 16).rightJustified(16, '0');
}

} // namespace

Q_DECLARE_METATYPE(Layout)

/// Records and property maps of the rounded rectangle, the ellipse and the pie.
class tst_RoundPersistence : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    // Records
    void newItemIsWrittenInOrder_data();
    void newItemIsWrittenInOrder();
    void recordIsReadInOrder_data() { addLayoutRows(); }
    void recordIsReadInOrder();
    void recordOfVersion5HasTheSameOwnFields_data() { addLayoutRows(); }
    void recordOfVersion5HasTheSameOwnFields();
    void ownFieldsDependOnNoVersion_data() { addLayoutRows(); }
    void ownFieldsDependOnNoVersion();
    void loadingLaysTheShapeOut_data() { addLayoutRows(); }
    void loadingLaysTheShapeOut();
    void cutRecordLeavesUnreadValuesAtZero_data() { addLayoutRows(); }
    void cutRecordLeavesUnreadValuesAtZero();
    void anyByteIsAnOutline_data();
    void anyByteIsAnOutline();
    void anyAngleIsKept_data();
    void anyAngleIsKept();
    void anyRadiusIsKept_data();
    void anyRadiusIsKept();

    // Property maps
    void mapHoldsTheProperties_data() { addLayoutRows(); }
    void mapHoldsTheProperties();
    void mapRoundTripIsIdentity_data() { addLayoutRows(); }
    void mapRoundTripIsIdentity();
    void mapWithoutOwnKeysKeepsTheValues_data() { addLayoutRows(); }
    void mapWithoutOwnKeysKeepsTheValues();
    void mapLoadsLimitThePenToTheNewSize_data() { addLayoutRows(); }
    void mapLoadsLimitThePenToTheNewSize();
    void mapMovesToThePendingPosition_data() { addLayoutRows(); }
    void mapMovesToThePendingPosition();
    void anyNumberInAMapIsKept_data();
    void anyNumberInAMapIsKept();
};

// Records

void tst_RoundPersistence::newItemIsWrittenInOrder_data()
{
    QTest::addColumn<ShapeType>("shape");
    QTest::addColumn<Form>("form");
    QTest::addColumn<QByteArray>("fields");
    QTest::addColumn<QByteArray>("rest");
    QTest::addColumn<int>("size");

    const QByteArray big = newRectangle;
    const QByteArray little = newRectangleLittleEndian;
    const QByteArray single = newRectangleSinglePrecision;
    const ShapeType ellipse = MobraTypes::EllipseShape;
    QTest::newRow("ellipse") << ellipse << Form::BigEndian << ""_ba << big << 196;
    QTest::newRow("ellipse, little-endian") << ellipse << Form::LittleEndian << ""_ba << little << 196;
    QTest::newRow("ellipse, single precision") << ellipse << Form::SinglePrecision << ""_ba << single << 128;

    // The pen of a pie has flat ends and mitred corners: two zeros instead of 0x20 and 0x80.
    const auto mitred = [](QByteArray text, const char *ends) {
        return text.replace(ends, QByteArray(ends).replace('2', '0').replace('8', '0'));
    };
    const QByteArray bigPie = mitred(big, "0000002000000080");
    const QByteArray littlePie = mitred(little, "20000000 80000000");
    const QByteArray singlePie = mitred(single, "00000020 00000080");
    const ShapeType pie = MobraTypes::PieShape;
    QTest::newRow("pie") << pie << Form::BigEndian << "000005A0 000010E0 00"_ba << bigPie << 205;
    QTest::newRow("pie, little-endian")
        << pie << Form::LittleEndian << "A0050000 E0100000 00"_ba << littlePie << 205;
    QTest::newRow("pie, single precision")
        << pie << Form::SinglePrecision << "000005A0 000010E0 00"_ba << singlePie << 137;

    const ShapeType rounded = MobraTypes::RoundedRectangleShape;
    QTest::newRow("rounded rectangle")
        << rounded << Form::BigEndian << "4039000000000000 4039000000000000"_ba << big << 212;
    QTest::newRow("rounded rectangle, little-endian")
        << rounded << Form::LittleEndian << "0000000000003940 0000000000003940"_ba << little << 212;
    QTest::newRow("rounded rectangle, single precision")
        << rounded << Form::SinglePrecision << "41C80000 41C80000"_ba << single << 136;
}

void tst_RoundPersistence::newItemIsWrittenInOrder()
{
    QFETCH(const ShapeType, shape);
    QFETCH(const Form, form);
    QFETCH(const QByteArray, fields);
    QFETCH(const QByteArray, rest);
    QFETCH(const int, size);
    const QByteArray expected = QByteArray::fromHex(fields) + QByteArray::fromHex(rest);
    QCOMPARE(expected.size(), size);
    const auto item = made(shape);
    QCOMPARE(toHexText(saved(*item, form)), toHexText(expected));
    const auto loaded = made(shape);
    const Reading reading = load(*loaded, expected, presentVersion, form);
    QCOMPARE(reading.status, QDataStream::Ok);
    QCOMPARE(reading.consumed, size);
    QCOMPARE(toHexText(saved(*loaded, form)), toHexText(expected));
}

void tst_RoundPersistence::recordIsReadInOrder()
{
    QFETCH(const Layout, layout);
    const QByteArray record = layout.changedRecord();
    const auto item = made(layout.shape);
    const Reading reading = load(*item, record);
    QCOMPARE(reading.status, QDataStream::Ok);
    QCOMPARE(reading.consumed, record.size());
    for (const OwnField &field : layout.changed)
        QCOMPARE(object(*item).property(field.property), field.value);
    QCOMPARE(item->itemId(), short(-300));
    QVERIFY(item->getItemHorizontalMirror());
    QCOMPARE(item->getDatasourceField(), changedField());
    auto &fillable = dynamic_cast<FillableItem &>(*item);
    QCOMPARE(fillable.getItemPenColor(), changedPenColor());
    QCOMPARE(fillable.getItemPenJoinStyle(), Qt::BevelJoin);
    QCOMPARE(fillable.getItemFillColor(), QColor(10, 20, 30, 40));

    // Loading lays the shape out, which leaves the scales at 1.
    QByteArray written = record;
    const auto own = record.size() - fromHexText(changedRectangle).size();
    written.replace(own + Offset::scales, 16, fromHexText("3FF00000000000003FF0000000000000"));
    QCOMPARE(toHexText(saved(*item)), toHexText(written));
}

void tst_RoundPersistence::recordOfVersion5HasTheSameOwnFields()
{
    QFETCH(const Layout, layout);
    const QByteArray record = QByteArray::fromHex(layout.changedFields()) + withoutMirrors(changedRectangle);
    const auto item = made(layout.shape);
    const Reading reading = load(*item, record, 5);
    QCOMPARE(reading.status, QDataStream::Ok);
    QCOMPARE(reading.consumed, record.size());
    for (const OwnField &field : layout.changed)
        QCOMPARE(object(*item).property(field.property), field.value);
    QVERIFY(!item->getItemHorizontalMirror());
    QVERIFY(!item->getItemVerticalMirror());
    QVERIFY(item->getAllowOverprint());
    QCOMPARE(item->itemId(), short(-300));
    QCOMPARE(dynamic_cast<FillableItem &>(*item).getItemFillColor(), QColor(10, 20, 30, 40));
}

void tst_RoundPersistence::ownFieldsDependOnNoVersion()
{
    QFETCH(const Layout, layout);
    for (const unsigned int version : { 0U, 1U, 5U, 6U, 7U, 0xFFFFFFFFU }) {
        const auto item = made(layout.shape);
        const QByteArray rest
            = version > 5 ? fromHexText(changedRectangle) : withoutMirrors(changedRectangle);
        const Reading reading = load(*item, QByteArray::fromHex(layout.changedFields()) + rest, version);
        QCOMPARE(reading.status, QDataStream::Ok);
        for (const OwnField &field : layout.changed)
            QCOMPARE(object(*item).property(field.property), field.value);
    }
}

void tst_RoundPersistence::loadingLaysTheShapeOut()
{
    QFETCH(const Layout, layout);
    const auto item = made(layout.shape);
    load(*item, layout.changedRecord());
    QCOMPARE(item->getItemSize(), QSizeF(250.25, 40.5));
    QCOMPARE(drawnRect(*item), QRectF(3.5, 3.5, 243.25, 33.5));
    QCOMPARE(AllItems::graphics(*item).boundingRect(), QRectF(0, 0, 250.25, 40.5));
    QCOMPARE(item->getItemScaleX(), 1.0);
    QCOMPARE(item->getItemScaleY(), 1.0);
    // The pen is limited to half the smaller side and one more of the loaded size.
    const auto small = made(layout.shape);
    QByteArray record = layout.changedRecord();
    const auto own = record.size() - fromHexText(changedRectangle).size();
    record.replace(own + Offset::height, 8, QByteArray::fromHex(bytesOf(4.0)));
    load(*small, record);
    QCOMPARE(dynamic_cast<FillableItem &>(*small).getItemPenWidth(), ushort(7));
    QCOMPARE(drawnRect(*small), QRectF(1.5, 1.5, 247.25, 1));
}

void tst_RoundPersistence::cutRecordLeavesUnreadValuesAtZero()
{
    QFETCH(const Layout, layout);
    const QByteArray record = layout.changedRecord();
    for (int cut = 0; cut < record.size(); ++cut) {
        const auto item = made(layout.shape);
        const Reading reading = load(*item, record.left(cut));
        QCOMPARE(reading.status, QDataStream::ReadPastEnd);
        QCOMPARE(reading.consumed, cut);
        qsizetype end = 0;
        for (const OwnField &field : layout.changed) {
            end += qsizetype(qstrlen(field.bytes) / 2);
            QVariant expected = field.value;
            if (cut < end)
                expected = QVariant(field.value.metaType(), nullptr);
            QCOMPARE(object(*item).property(field.property), expected);
        }
        item->setItemIsVisible(true);
        QVERIFY(isFinite(Scenes::boundsAfterPainting(AllItems::graphics(*item))));
    }
}

void tst_RoundPersistence::anyByteIsAnOutline_data()
{
    QTest::addColumn<QByteArray>("byte");
    QTest::addColumn<bool>("outlined");

    QTest::newRow("0") << "00"_ba << false;
    QTest::newRow("1") << "01"_ba << true;
    QTest::newRow("2") << "02"_ba << true;
    QTest::newRow("-128") << "80"_ba << true;
    QTest::newRow("-1") << "FF"_ba << true;
}

void tst_RoundPersistence::anyByteIsAnOutline()
{
    QFETCH(const QByteArray, byte);
    QFETCH(const bool, outlined);
    for (const bool before : { false, true }) {
        PieItem item;
        item.setDrawCircle(before);
        const QByteArray angles = fromHexText("0000000000000000");
        QCOMPARE(load(item, angles + QByteArray::fromHex(byte) + fromHexText(newRectangle)).consumed, 205);
        QCOMPARE(item.getDrawCircle(), outlined);
        QCOMPARE(toHexText(saved(item).mid(8, 1)), outlined ? "01"_ba : "00"_ba);
    }
}

void tst_RoundPersistence::anyAngleIsKept_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<int>("angle");

    QTest::newRow("0") << "00000000"_ba << 0;
    QTest::newRow("more than a turn") << "00001681"_ba << 5761;
    QTest::newRow("negative") << "ffffffff"_ba << -1;
    QTest::newRow("largest") << "7fffffff"_ba << std::numeric_limits<int>::max();
    QTest::newRow("smallest") << "80000000"_ba << std::numeric_limits<int>::min();
}

void tst_RoundPersistence::anyAngleIsKept()
{
    QFETCH(const QByteArray, bytes);
    QFETCH(const int, angle);
    for (const QByteArray &angles : { bytes + "00000010", "00000010" + bytes, bytes + bytes }) {
        PieItem item;
        const QByteArray fields = QByteArray::fromHex(angles + "01");
        QCOMPARE(load(item, fields + fromHexText(newRectangle)).status, QDataStream::Ok);
        QCOMPARE(item.startPieAngle(), angles.startsWith(bytes) ? angle : 16);
        QCOMPARE(item.spanPieAngle(), angles.endsWith(bytes) ? angle : 16);
        QCOMPARE(toHexText(saved(item).left(9)), toHexText(fields));
        QVERIFY(isFinite(Scenes::boundsAfterPainting(item)));
    }
}

void tst_RoundPersistence::anyRadiusIsKept_data()
{
    QTest::addColumn<double>("radius");

    for (const auto &[name, radius] : oddNumbers)
        QTest::newRow(name) << radius;
}

void tst_RoundPersistence::anyRadiusIsKept()
{
    QFETCH(const double, radius);
    const QByteArray bytes = bytesOf(radius);
    const QByteArray four = bytesOf(4.0);
    for (const QByteArray &radii : { bytes + four, four + bytes, bytes + bytes }) {
        RoundedRectangleItem item;
        const QByteArray fields = QByteArray::fromHex(radii);
        QCOMPARE(load(item, fields + fromHexText(newRectangle)).status, QDataStream::Ok);
        QVERIFY(isSame(item.getRoundingRadiusX(), radii.startsWith(bytes) ? radius : 4.0));
        QVERIFY(isSame(item.getRoundingRadiusY(), radii.endsWith(bytes) ? radius : 4.0));
        QCOMPARE(toHexText(saved(item).left(16)), toHexText(fields));
        QVERIFY(isFinite(Scenes::boundsAfterPainting(item)));
    }
}

// Property maps

void tst_RoundPersistence::mapHoldsTheProperties()
{
    QFETCH(const Layout, layout);
    const auto item = made(layout.shape);
    for (const OwnField &field : layout.changed)
        QVERIFY(object(*item).setProperty(field.property, field.value));
    item->setItemId(-7);
    item->setItemVerticalMirror(true);
    dynamic_cast<FillableItem &>(*item).setItemFillColor(red);
    AllItems::graphics(*item).setPos(3, 4);

    // A pie's pen has flat ends and mitred corners.
    const bool mitred = layout.shape == MobraTypes::PieShape;
    const QVariantList identity { 1.0, 0.0, 0.0, 0.0, 1.0, 0.0, 0.0, 0.0 };
    QVariantMap expected { { u"itemShape"_s, uint(layout.shape) },
        { u"itemId"_s, QVariant::fromValue<short>(-7) }, { u"itemFlags"_s, 0x01U },
        { u"itemQFlags"_s, 0x107U }, { u"itemZValue"_s, 0.0 }, { u"itemRotation"_s, 0.0 },
        { u"itemHorizontalMirror"_s, 0.0 }, { u"itemVerticalMirror"_s, 1.0 }, { u"itemWidth"_s, 100.0 },
        { u"itemHeight"_s, 100.0 }, { u"itemScaleX"_s, 1.0 }, { u"itemScaleY"_s, 1.0 },
        { u"itemTransform"_s, identity }, { u"allowOverprint"_s, true }, { u"itemPenColor"_s, u"#000000"_s },
        { u"itemFillColor"_s, u"#ff0000"_s }, { u"itemPenWidth"_s, QVariant::fromValue<ushort>(1) },
        { u"itemPenStyle"_s, QVariant::fromValue<ushort>(1) },
        { u"itemPenCapStyle"_s, QVariant::fromValue<ushort>(mitred ? 0 : 0x20) },
        { u"itemPenJoinStyle"_s, QVariant::fromValue<ushort>(mitred ? 0 : 0x80) },
        { u"itemBrushStyle"_s, QVariant::fromValue<ushort>(1) }, { u"itemPositionX"_s, 3.0 },
        { u"itemPositionY"_s, 4.0 } };
    if (layout.shape != MobraTypes::RoundedRectangleShape) {
        expected.insert(u"itemDatasourceId"_s, -1);
        expected.insert(u"itemDatasourceField"_s, QString());
    }
    for (const OwnField &field : layout.changed)
        expected.insert(QString::fromLatin1(field.property), field.value);

    ItemMaps::compare(item->saveItemToJSON(), expected);
}

void tst_RoundPersistence::mapRoundTripIsIdentity()
{
    QFETCH(const Layout, layout);
    const auto source = made(layout.shape);
    AllItems::change(*source);
    for (const OwnField &field : layout.changed)
        QVERIFY(object(*source).setProperty(field.property, field.value));
    const auto loaded = made(layout.shape);
    loaded->loadItemFromJSON(source->saveItemToJSON(), presentVersion);
    for (const OwnField &field : layout.changed)
        QCOMPARE(object(*loaded).property(field.property), field.value);
    QCOMPARE(loaded->saveItemToJSON(), source->saveItemToJSON());
    // AllItems gives the pen a width of 5 and the item 60 x 40.
    QCOMPARE(drawnRect(*loaded), QRectF(2.5, 2.5, 55, 35));
    QCOMPARE(AllItems::graphics(*loaded).pos(), AllItems::graphics(*source).pos());
    QCOMPARE(AllItems::graphics(*loaded).transform(), AllItems::graphics(*source).transform());
    const QBrush brush = dynamic_cast<FillableItem &>(*loaded).getItemBrush();
    QCOMPARE(brush.style(), Qt::LinearGradientPattern);
    QCOMPARE(static_cast<const QLinearGradient *>(brush.gradient())->finalStop(), QPointF(0, 40));
}

void tst_RoundPersistence::mapWithoutOwnKeysKeepsTheValues()
{
    QFETCH(const Layout, layout);
    const auto item = made(layout.shape);
    for (const OwnField &field : layout.changed)
        QVERIFY(object(*item).setProperty(field.property, field.value));
    item->loadItemFromJSON({ { u"noSuchKey"_s, 1 }, { u"itemId"_s, 9 }, { u"itemScaleX"_s, 2.0 } }, 5);
    for (const OwnField &field : layout.changed)
        QCOMPARE(object(*item).property(field.property), field.value);
    QCOMPARE(item->itemId(), short(9));
    QCOMPARE(item->getItemScaleX(), 1.0);
    QVERIFY(object(*item).dynamicPropertyNames().isEmpty());
}

void tst_RoundPersistence::mapLoadsLimitThePenToTheNewSize()
{
    // Keys are applied in alphabetical order, so the pen's width arrives before the item's.
    QFETCH(const Layout, layout);
    const auto item = made(layout.shape);
    item->loadItemFromJSON(
        { { u"itemHeight"_s, 40.0 }, { u"itemPenWidth"_s, 5 }, { u"itemWidth"_s, 4.0 } }, presentVersion);
    QCOMPARE(dynamic_cast<FillableItem &>(*item).getItemPen().widthF(), 3.0);
    QCOMPARE(drawnRect(*item), QRectF(1.5, 1.5, 1, 37));
}

void tst_RoundPersistence::mapMovesToThePendingPosition()
{
    QFETCH(const Layout, layout);
    const auto item = made(layout.shape);
    QGraphicsItem &graphics = AllItems::graphics(*item);
    graphics.setPos(11, 22);
    item->loadItemFromJSON({}, presentVersion);
    QCOMPARE(graphics.pos(), QPointF(0, 0));
    item->loadItemFromJSON({ { u"itemPositionX"_s, 7.0 }, { u"itemPositionY"_s, 5.0 } }, presentVersion);
    QCOMPARE(graphics.pos(), QPointF(7, 5));
}

void tst_RoundPersistence::anyNumberInAMapIsKept_data()
{
    QTest::addColumn<ShapeType>("shape");
    QTest::addColumn<QString>("key");
    QTest::addColumn<QVariant>("value");

    for (const char *key : { "startPieAngle", "spanPieAngle" }) {
        for (const int angle :
            { 0, -1, 5761, std::numeric_limits<int>::max(), std::numeric_limits<int>::min() })
            QTest::addRow("%s %d", key, angle)
                << MobraTypes::PieShape << QString::fromLatin1(key) << QVariant(angle);
    }
    for (const char *key : { "roundingRadiusX", "roundingRadiusY" }) {
        for (const auto &[name, radius] : oddNumbers)
            QTest::addRow("%s %s", key, name)
                << MobraTypes::RoundedRectangleShape << QString::fromLatin1(key) << QVariant(radius);
    }
}

void tst_RoundPersistence::anyNumberInAMapIsKept()
{
    QFETCH(const ShapeType, shape);
    QFETCH(const QString, key);
    QFETCH(const QVariant, value);
    const auto item = made(shape);
    item->loadItemFromJSON({ { key, value } }, presentVersion);
    const QVariant kept = item->saveItemToJSON().value(key);
    QCOMPARE(kept.metaType(), value.metaType());
    QVERIFY(isSame(kept.toDouble(), value.toDouble()));
    QVERIFY(isFinite(Scenes::boundsAfterPainting(AllItems::graphics(*item))));
}

QTEST_MAIN(tst_RoundPersistence)
#include "tst_roundpersistence.moc"
