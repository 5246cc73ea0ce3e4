// SPDX-License-Identifier: BSD-3-Clause
#include "items/shapes/rectangleitem.h"
#include "tests/support/itemrecords.h"
#include "tests/support/oddnumbers.h"
#include "tests/support/rectanglerecords.h"
#include "tests/support/scenes.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QMetaProperty>
#include <QRegularExpression>
#include <QTest>

#include <cmath>

using namespace Qt::StringLiterals;
using namespace RectangleRecords;

namespace {

QVariantMap throughJsonText(const QVariantMap &map)
{
    const QByteArray text = QJsonDocument(QJsonObject::fromVariantMap(map)).toJson();
    return QJsonDocument::fromJson(text).object().toVariantMap();
}

void applyMap(RectangleItem &rectangle, const QVariantMap &map)
{
    rectangle.loadItemFromJSON(map, ItemRecords::currentVersion);
}

QStringList rectangleKeys()
{
    return { u"itemShape"_s, u"itemId"_s, u"itemFlags"_s, u"itemQFlags"_s, u"itemZValue"_s, u"itemRotation"_s,
        u"itemHorizontalMirror"_s, u"itemVerticalMirror"_s, u"itemWidth"_s, u"itemHeight"_s, u"itemScaleX"_s,
        u"itemScaleY"_s, u"itemTransform"_s, u"allowOverprint"_s, u"itemPenColor"_s, u"itemFillColor"_s,
        u"itemPenWidth"_s, u"itemPenStyle"_s, u"itemPenCapStyle"_s, u"itemPenJoinStyle"_s,
        u"itemBrushStyle"_s, u"itemPositionX"_s, u"itemPositionY"_s };
}

void change(RectangleItem &rectangle)
{
    rectangle.setItemId(-300);
    rectangle.setItemFlags(0xF00F0069U);
    rectangle.setItemQFlags(0x10F);
    rectangle.setItemZValue(-2.5);
    rectangle.setItemSize(QSizeF(250.25, 40.5));
    rectangle.setItemRotation(30.5);
    rectangle.setTransform(QTransform(1.5, 0.25, 0.001953125, -0.5, 2, -0.0078125, 12.75, -7.5, 1));
    rectangle.setPos(-123.5, 4096.125);
    rectangle.setItemHorizontalMirror(true);
    rectangle.setItemVerticalMirror(true);
    rectangle.setAllowOverprint(false);
    rectangle.setItemPenColor(QColor(0x12, 0x34, 0x56));
    rectangle.setItemFillColor(QColor(0xAB, 0xCD, 0xEF));
    rectangle.setItemPenWidth(7);
    rectangle.setItemPenStyle(Qt::DashDotLine);
    rectangle.setItemPenCapStyle(Qt::FlatCap);
    rectangle.setItemPenJoinStyle(Qt::BevelJoin);
    rectangle.setItemBrushStyle(MobraTypes::BrushDiagonalCross);
}

void compareWithChanged(RectangleItem &rectangle)
{
    QCOMPARE(rectangle.itemId(), short(-300));
    QCOMPARE(rectangle.itemFlags(), 0xF00F0069U);
    QCOMPARE(rectangle.itemQFlags(), 0x10FU);
    QCOMPARE(rectangle.zValue(), -2.5);
    QCOMPARE(rectangle.getItemSize(), QSizeF(250.25, 40.5));
    QCOMPARE(rectangle.getItemRotation(), 30.5);
    QCOMPARE(rectangle.transform(), QTransform(1.5, 0.25, 0.001953125, -0.5, 2, -0.0078125, 12.75, -7.5, 1));
    QCOMPARE(rectangle.pos(), QPointF(-123.5, 4096.125));
    QVERIFY(rectangle.getItemHorizontalMirror());
    QVERIFY(rectangle.getItemVerticalMirror());
    QVERIFY(!rectangle.getAllowOverprint());
    QCOMPARE(rectangle.getItemPenColor(), QColor(0x12, 0x34, 0x56));
    QCOMPARE(rectangle.getItemFillColor(), QColor(0xAB, 0xCD, 0xEF));
    QCOMPARE(rectangle.getItemPenWidth(), ushort(7));
    QCOMPARE(rectangle.getItemPenStyle(), Qt::DashDotLine);
    QCOMPARE(rectangle.getItemPenCapStyle(), Qt::FlatCap);
    QCOMPARE(rectangle.getItemPenJoinStyle(), Qt::BevelJoin);
    QCOMPARE(rectangle.getItemBrushStyle(), MobraTypes::BrushDiagonalCross);
    QCOMPARE(rectangle.getItemBrush(), QBrush(QColor(0xAB, 0xCD, 0xEF), Qt::DiagCrossPattern));
    QCOMPARE(rectangle.getItemShape(), MobraTypes::RectangleShape);
    QCOMPARE(rectangle.rect(), QRectF(3.5, 3.5, 243.25, 33.5));
}

} // namespace

class tst_ItemPropertyMap : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    void ignoredNamesAreThoseOfQtsOwnClasses();
    void mapHoldsTheItemsOwnKeys();
    void propertiesAreDeclaredInOrder();
    void mapOfANewRectangleHoldsTheDefaults();
    void mapValuesHaveTheTypesOfTheProperties_data();
    void mapValuesHaveTheTypesOfTheProperties();
    void mapRestoresARectangle();
    void mapSurvivesJsonText();
    void versionOfAMapDoesNotMatter();
    void coloursLoseTheirAlphaInTheMap();
    void colourTextsAreParsed_data();
    void colourTextsAreParsed();
    void perspectiveIsLostInTheMap();
    void transformIsReplaced();
    void shortTransformListsChangeNothing_data();
    void shortTransformListsChangeNothing();
    void mirrorsAreNumbers_data();
    void mirrorsAreNumbers();
    void positionKeysArePending();
    void emptyMapMovesToThePendingPosition();
    void noChangeBrushStyleLeavesTheBrush();
    void penLimitFollowsTheLoadedSize_data();
    void penLimitFollowsTheLoadedSize();
    void stylesThatNobodyKnowsAreKeptAndPaintNothing_data();
    void stylesThatNobodyKnowsAreKeptAndPaintNothing();
    void rectangleIsLaidOutAfterApplyingAMap();
    void unusableValuesAreSkipped_data();
    void unusableValuesAreSkipped();
    void numbersAsTextAreRead();
    void unknownKeysAreSkipped();
    void bindingIsNotInTheMapOfARectangle();
    void anyNumberInAMapIsHarmless_data();
    void anyNumberInAMapIsHarmless();
};

void tst_ItemPropertyMap::ignoredNamesAreThoseOfQtsOwnClasses()
{
    const QStringList names = { u"objectName"_s, u"parent"_s, u"opacity"_s, u"enabled"_s, u"visible"_s,
        u"pos"_s, u"x"_s, u"y"_s, u"z"_s, u"rotation"_s, u"scale"_s, u"transformOriginPoint"_s, u"effect"_s,
        u"children"_s, u"width"_s, u"height"_s, u"elementId"_s, u"maximumCacheSize"_s };
    QCOMPARE(names.size(), 18);
    QCOMPARE(Item::ignoredPropertyNames(), names);
}

void tst_ItemPropertyMap::mapHoldsTheItemsOwnKeys()
{
    RectangleItem rectangle;
    rectangle.setObjectName(u"Otto"_s);
    QStringList keys = rectangleKeys();
    keys.sort();
    QCOMPARE(rectangle.saveItemToJSON().keys(), keys);
}

void tst_ItemPropertyMap::propertiesAreDeclaredInOrder()
{
    const QMetaObject &meta = RectangleItem::staticMetaObject;
    QStringList names;
    for (int i = meta.propertyOffset(); i < meta.propertyCount(); ++i)
        names.append(QString::fromLatin1(meta.property(i).name()));
    QCOMPARE(names, rectangleKeys());
}

void tst_ItemPropertyMap::mapOfANewRectangleHoldsTheDefaults()
{
    RectangleItem rectangle;
    const QVariantMap map = rectangle.saveItemToJSON();
    QCOMPARE(map.value(u"itemShape"_s).toUInt(), 0x1002AU);
    QCOMPARE(map.value(u"itemId"_s).toInt(), -1);
    QCOMPARE(map.value(u"itemFlags"_s).toUInt(), 1U);
    QCOMPARE(map.value(u"itemQFlags"_s).toUInt(), 0x107U);
    for (const QString &key : { u"itemZValue"_s, u"itemRotation"_s, u"itemHorizontalMirror"_s,
             u"itemVerticalMirror"_s, u"itemPositionX"_s, u"itemPositionY"_s })
        QCOMPARE(map.value(key), QVariant(0.0));
    QCOMPARE(map.value(u"itemWidth"_s), QVariant(100.0));
    QCOMPARE(map.value(u"itemHeight"_s), QVariant(100.0));
    QCOMPARE(map.value(u"itemScaleX"_s), QVariant(1.0));
    QCOMPARE(map.value(u"itemScaleY"_s), QVariant(1.0));
    QCOMPARE(
        map.value(u"itemTransform"_s).toList(), (QVariantList { 1.0, 0.0, 0.0, 0.0, 1.0, 0.0, 0.0, 0.0 }));
    QCOMPARE(map.value(u"allowOverprint"_s), QVariant(true));
    QCOMPARE(map.value(u"itemPenColor"_s), QVariant(u"#000000"_s));
    // A transparent colour has no text of its own.
    QCOMPARE(map.value(u"itemFillColor"_s), QVariant(u"#000000"_s));
    QCOMPARE(map.value(u"itemPenWidth"_s).toInt(), 1);
    QCOMPARE(map.value(u"itemPenStyle"_s).toInt(), 1);
    QCOMPARE(map.value(u"itemPenCapStyle"_s).toInt(), 0x20);
    QCOMPARE(map.value(u"itemPenJoinStyle"_s).toInt(), 0x80);
    QCOMPARE(map.value(u"itemBrushStyle"_s).toInt(), 1);
}

void tst_ItemPropertyMap::mapValuesHaveTheTypesOfTheProperties_data()
{
    QTest::addColumn<QMetaType>("type");

    const auto add = [](const QMetaType &type, std::initializer_list<const char *> keys) {
        for (const char *key : keys)
            QTest::newRow(key) << type;
    };
    add(QMetaType::fromType<uint>(), { "itemShape", "itemFlags", "itemQFlags" });
    add(QMetaType::fromType<short>(), { "itemId" });
    add(QMetaType::fromType<double>(),
        { "itemZValue", "itemRotation", "itemHorizontalMirror", "itemVerticalMirror", "itemWidth",
            "itemHeight", "itemScaleX", "itemScaleY", "itemPositionX", "itemPositionY" });
    add(QMetaType::fromType<QVariantList>(), { "itemTransform" });
    add(QMetaType::fromType<bool>(), { "allowOverprint" });
    add(QMetaType::fromType<QString>(), { "itemPenColor", "itemFillColor" });
    add(QMetaType::fromType<ushort>(),
        { "itemPenWidth", "itemPenStyle", "itemPenCapStyle", "itemPenJoinStyle", "itemBrushStyle" });
}

void tst_ItemPropertyMap::mapValuesHaveTheTypesOfTheProperties()
{
    RectangleItem rectangle;
    const QString key = QString::fromLatin1(QTest::currentDataTag());
    QTEST(rectangle.saveItemToJSON().value(key).metaType(), "type");
}

void tst_ItemPropertyMap::mapRestoresARectangle()
{
    RectangleItem source;
    change(source);
    RectangleItem target;
    applyMap(target, source.saveItemToJSON());
    compareWithChanged(target);
}

void tst_ItemPropertyMap::mapSurvivesJsonText()
{
    RectangleItem source;
    change(source);
    RectangleItem target;
    applyMap(target, throughJsonText(source.saveItemToJSON()));
    compareWithChanged(target);
}

void tst_ItemPropertyMap::versionOfAMapDoesNotMatter()
{
    RectangleItem source;
    change(source);
    for (const uint version : { 0U, 5U, 6U, 0xFFFFFFFFU }) {
        RectangleItem target;
        target.loadItemFromJSON(source.saveItemToJSON(), version);
        compareWithChanged(target);
    }
}

void tst_ItemPropertyMap::coloursLoseTheirAlphaInTheMap()
{
    RectangleItem source;
    source.setItemPenColor(QColor(0x12, 0x34, 0xAB, 0x80));
    source.setItemFillColor(QColor(0xFE, 0xDC, 0x01, 0x00));
    const QVariantMap map = source.saveItemToJSON();
    QCOMPARE(map.value(u"itemPenColor"_s).toString(), u"#1234ab"_s);
    QCOMPARE(map.value(u"itemFillColor"_s).toString(), u"#fedc01"_s);

    RectangleItem fromMap;
    applyMap(fromMap, map);
    QCOMPARE(fromMap.getItemPenColor(), QColor(0x12, 0x34, 0xAB, 0xFF));
    QCOMPARE(fromMap.getItemFillColor(), QColor(0xFE, 0xDC, 0x01, 0xFF));

    RectangleItem fromRecord;
    load(fromRecord, saved(source));
    QCOMPARE(fromRecord.getItemPenColor(), QColor(0x12, 0x34, 0xAB, 0x80));
    QCOMPARE(fromRecord.getItemFillColor(), QColor(0xFE, 0xDC, 0x01, 0x00));
}

void tst_ItemPropertyMap::colourTextsAreParsed_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QColor>("color");

    QTest::newRow("digits") << u"#1234AB"_s << QColor(0x12, 0x34, 0xAB);
    QTest::newRow("with alpha") << u"#801234ab"_s << QColor(0x12, 0x34, 0xAB, 0x80);
    QTest::newRow("name") << u"red"_s << QColor(0xFF, 0, 0);
    QTest::newRow("transparent") << u"transparent"_s << QColor(Qt::transparent);
    QTest::newRow("no colour") << u"no colour"_s << QColor();
    QTest::newRow("empty") << u""_s << QColor();
}

void tst_ItemPropertyMap::colourTextsAreParsed()
{
    QFETCH(QString, text);
    QFETCH(QColor, color);
    RectangleItem rectangle;
    rectangle.setItemFillColor(Qt::green);
    applyMap(rectangle, { { u"itemPenColor"_s, text }, { u"itemFillColor"_s, text } });
    QCOMPARE(rectangle.getItemPenColor(), color);
    QCOMPARE(rectangle.getItemFillColor(), color);
    QCOMPARE(rectangle.getItemPen().color(), color);
    QCOMPARE(rectangle.getItemBrush().color(), color);
}

void tst_ItemPropertyMap::perspectiveIsLostInTheMap()
{
    RectangleItem source;
    source.setTransform(changedTransform());
    const QVariantMap map = source.saveItemToJSON();
    QCOMPARE(map.value(u"itemTransform"_s).toList(),
        (QVariantList { 1.5, 0.25, 0.001953125, -0.5, 2.0, -0.0078125, 12.75, -7.5 }));

    RectangleItem fromMap;
    applyMap(fromMap, map);
    QCOMPARE(fromMap.transform(), QTransform(1.5, 0.25, 0.001953125, -0.5, 2, -0.0078125, 12.75, -7.5, 1));

    RectangleItem fromRecord;
    load(fromRecord, saved(source));
    QCOMPARE(fromRecord.transform(), changedTransform());
}

void tst_ItemPropertyMap::transformIsReplaced()
{
    RectangleItem rectangle;
    rectangle.setTransform(QTransform::fromScale(3, 3));
    rectangle.setItemTransformFromList({ 1.0, 0.0, 0.0, 0.0, 1.0, 0.0, 5.0, 6.0 });
    QCOMPARE(rectangle.transform(), QTransform::fromTranslate(5, 6));
    // What is no number counts as 0, numbers as text and whole numbers count.
    rectangle.setItemTransformFromList({ u"2"_s, u"x"_s, QVariant(), 0, 4, 0, 7, u"-8.5"_s });
    QCOMPARE(rectangle.transform(), QTransform(2, 0, 0, 4, 7, -8.5));
}

void tst_ItemPropertyMap::shortTransformListsChangeNothing_data()
{
    QTest::addColumn<QVariantList>("list");

    QVariantList list;
    for (int size = 0; size < 8; ++size) {
        QTest::addRow("%d numbers", size) << list;
        list.append(2.0);
    }
}

void tst_ItemPropertyMap::shortTransformListsChangeNothing()
{
    QFETCH(QVariantList, list);
    RectangleItem rectangle;
    rectangle.setTransform(changedTransform());
    rectangle.setItemTransformFromList(list);
    QCOMPARE(rectangle.transform(), changedTransform());
    applyMap(rectangle, { { u"itemTransform"_s, list } });
    QCOMPARE(rectangle.transform(), changedTransform());
}

void tst_ItemPropertyMap::mirrorsAreNumbers_data()
{
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<bool>("mirrored");

    QTest::newRow("0.0") << QVariant(0.0) << false;
    QTest::newRow("1.0") << QVariant(1.0) << true;
    QTest::newRow("0.3") << QVariant(0.3) << true;
    QTest::newRow("-1.0") << QVariant(-1.0) << true;
    QTest::newRow("whole number") << QVariant(1) << true;
    QTest::newRow("false") << QVariant(false) << false;
    QTest::newRow("true") << QVariant(true) << true;
}

void tst_ItemPropertyMap::mirrorsAreNumbers()
{
    QFETCH(QVariant, value);
    QFETCH(bool, mirrored);
    RectangleItem rectangle;
    rectangle.setItemHorizontalMirror(!mirrored);
    rectangle.setItemVerticalMirror(!mirrored);
    applyMap(rectangle, { { u"itemHorizontalMirror"_s, value } });
    QCOMPARE(rectangle.getItemHorizontalMirror(), mirrored);
    QCOMPARE(rectangle.getItemVerticalMirror(), !mirrored);
    applyMap(rectangle, { { u"itemVerticalMirror"_s, value } });
    QCOMPARE(rectangle.getItemVerticalMirror(), mirrored);
    const QVariantMap map = rectangle.saveItemToJSON();
    QCOMPARE(map.value(u"itemHorizontalMirror"_s), QVariant(mirrored ? 1.0 : 0.0));
    QCOMPARE(map.value(u"itemVerticalMirror"_s), QVariant(mirrored ? 1.0 : 0.0));
}

void tst_ItemPropertyMap::positionKeysArePending()
{
    RectangleItem rectangle;
    rectangle.setPos(50, 60);
    QVERIFY(rectangle.setProperty("itemPositionX", 7.0));
    QCOMPARE(rectangle.pos(), QPointF(50, 60));
    QCOMPARE(rectangle.property("itemPositionX"), QVariant(50.0));

    // The y that comes with an x is the one stored last, not the present one.
    RectangleItem other;
    other.setPos(50, 60);
    applyMap(other, { { u"itemPositionX"_s, 7.0 } });
    QCOMPARE(other.pos(), QPointF(7, 0));
    applyMap(other, { { u"itemPositionY"_s, 9.0 } });
    QCOMPARE(other.pos(), QPointF(7, 9));
    other.setPos(1000, 2000);
    applyMap(other, { { u"itemPositionX"_s, 8.0 } });
    QCOMPARE(other.pos(), QPointF(8, 9));
}

void tst_ItemPropertyMap::emptyMapMovesToThePendingPosition()
{
    RectangleItem rectangle;
    rectangle.setPos(50, 60);
    rectangle.setItemPositionX(-3);
    rectangle.setItemPositionY(4);
    applyMap(rectangle, {});
    QCOMPARE(rectangle.pos(), QPointF(-3, 4));
}

void tst_ItemPropertyMap::noChangeBrushStyleLeavesTheBrush()
{
    RectangleItem source;
    load(source, fromHexText(changedRectangle));
    const QVariantMap map = source.saveItemToJSON();
    QCOMPARE(map.value(u"itemBrushStyle"_s).toInt(), 65535);
    RectangleItem target;
    target.setItemBrushStyle(MobraTypes::BrushCross);
    applyMap(target, map);
    QCOMPARE(target.getItemBrushStyle(), MobraTypes::BrushCross);
}

void tst_ItemPropertyMap::penLimitFollowsTheLoadedSize_data()
{
    QTest::addColumn<QSizeF>("before");
    QTest::addColumn<QSizeF>("after");
    QTest::addColumn<int>("penWidth");
    QTest::addColumn<int>("paintedWidth");
    QTest::addColumn<QRectF>("rect");

    // The painted pen is limited to half the smaller side plus one.
    QTest::newRow("narrower") << QSizeF(100, 100) << QSizeF(10, 200) << 30 << 6 << QRectF(3, 3, 4, 194);
    QTest::newRow("flatter") << QSizeF(100, 100) << QSizeF(200, 10) << 30 << 6 << QRectF(3, 3, 194, 4);
    QTest::newRow("larger") << QSizeF(10, 10) << QSizeF(200, 200) << 30 << 30 << QRectF(15, 15, 170, 170);
    QTest::newRow("larger, from a narrow one")
        << QSizeF(10, 200) << QSizeF(200, 90) << 50 << 46 << QRectF(23, 23, 154, 44);
}

void tst_ItemPropertyMap::penLimitFollowsTheLoadedSize()
{
    QFETCH(QSizeF, before);
    QFETCH(QSizeF, after);
    QFETCH(int, penWidth);
    RectangleItem rectangle;
    rectangle.setItemSize(before);
    applyMap(rectangle,
        { { u"itemWidth"_s, after.width() }, { u"itemPenWidth"_s, penWidth },
            { u"itemHeight"_s, after.height() } });
    QCOMPARE(int(rectangle.getItemPenWidth()), penWidth);
    QTEST(rectangle.getItemPen().width(), "paintedWidth");
    QTEST(rectangle.rect(), "rect");
}

void tst_ItemPropertyMap::stylesThatNobodyKnowsAreKeptAndPaintNothing_data()
{
    QTest::addColumn<int>("number");

    for (const int number : { 7, 0xFF, 0x1C0, 0x7FFF, 0x8000, 0xFFFF })
        QTest::addRow("%d", number) << number;
}

void tst_ItemPropertyMap::stylesThatNobodyKnowsAreKeptAndPaintNothing()
{
    QFETCH(const int, number);
    RectangleItem rectangle;
    applyMap(rectangle,
        { { u"itemPenStyle"_s, number }, { u"itemPenCapStyle"_s, number },
            { u"itemPenJoinStyle"_s, number } });
    QCOMPARE(rectangle.getItemPen().style(), Qt::NoPen);
    const QVariantMap map = rectangle.saveItemToJSON();
    QCOMPARE(map.value(u"itemPenStyle"_s).toInt(), number);
    QCOMPARE(map.value(u"itemPenCapStyle"_s).toInt(), 0);
    QCOMPARE(map.value(u"itemPenJoinStyle"_s).toInt(), number);
    QVERIFY(isFinite(Scenes::boundsAfterPainting(rectangle)));

    RectangleItem outlined;
    applyMap(outlined, { { u"itemPenCapStyle"_s, number }, { u"itemPenJoinStyle"_s, number } });
    QCOMPARE(outlined.getItemPen().style(), Qt::SolidLine);
    QCOMPARE(outlined.getItemPen().capStyle(), Qt::FlatCap);
    QCOMPARE(outlined.getItemPen().joinStyle(), Qt::RoundJoin);
}

void tst_ItemPropertyMap::rectangleIsLaidOutAfterApplyingAMap()
{
    RectangleItem rectangle;
    applyMap(rectangle, { { u"itemWidth"_s, 60.0 }, { u"itemHeight"_s, 40.0 }, { u"itemScaleX"_s, 3.0 } });
    QCOMPARE(rectangle.boundingRect(), QRectF(0, 0, 60, 40));
    QCOMPARE(rectangle.rect(), QRectF(0.5, 0.5, 59, 39));
    QCOMPARE(rectangle.getItemScaleX(), 1.0);
    QCOMPARE(rectangle.getItemScaleY(), 1.0);
}

void tst_ItemPropertyMap::unusableValuesAreSkipped_data()
{
    QTest::addColumn<QString>("key");
    QTest::addColumn<QVariant>("value");

    QTest::newRow("letters for a number") << u"itemWidth"_s << QVariant(u"wide"_s);
    QTest::newRow("list for a number") << u"itemHeight"_s << QVariant(QVariantList { 1, 2 });
    QTest::newRow("map for a number") << u"itemId"_s << QVariant(QVariantMap { { u"a"_s, 1 } });
    QTest::newRow("nothing for a number") << u"itemPenWidth"_s << QVariant();
    QTest::newRow("nothing for a colour") << u"itemPenColor"_s << QVariant();
    QTest::newRow("list for a colour") << u"itemFillColor"_s << QVariant(QVariantList { 1, 2 });
    QTest::newRow("text for a transform") << u"itemTransform"_s << QVariant(u"none"_s);
    QTest::newRow("number for a transform") << u"itemTransform"_s << QVariant(2.0);
    QTest::newRow("letters for the flags") << u"itemFlags"_s << QVariant(u"all"_s);
    QTest::newRow("letters for a style") << u"itemPenStyle"_s << QVariant(u"DotLine"_s);
    QTest::newRow("letters for a mirror") << u"itemVerticalMirror"_s << QVariant(u"yes"_s);
    QTest::newRow("null from JSON") << u"itemZValue"_s << QVariant::fromValue(nullptr);
}

void tst_ItemPropertyMap::unusableValuesAreSkipped()
{
    QFETCH(QString, key);
    QFETCH(QVariant, value);
    RectangleItem rectangle;
    change(rectangle);
    rectangle.setItemPositionX(-123.5);
    rectangle.setItemPositionY(4096.125);
    rectangle.setItemId(5);
    // The other value of the map arrives all the same.
    QVariantMap map = { { u"allowOverprint"_s, false }, { u"itemId"_s, -300 } };
    map.insert(key, value);
    if (key == u"itemId"_s)
        rectangle.setItemId(-300);
    applyMap(rectangle, map);
    compareWithChanged(rectangle);
}

void tst_ItemPropertyMap::numbersAsTextAreRead()
{
    RectangleItem rectangle;
    applyMap(rectangle,
        { { u"itemWidth"_s, u"250.5"_s }, { u"itemId"_s, u"-7"_s }, { u"itemPenWidth"_s, u"3"_s } });
    QCOMPARE(rectangle.getItemWidth(), 250.5);
    QCOMPARE(rectangle.itemId(), short(-7));
    QCOMPARE(rectangle.getItemPenWidth(), ushort(3));
}

void tst_ItemPropertyMap::unknownKeysAreSkipped()
{
    RectangleItem rectangle;
    applyMap(rectangle,
        { { u"itemColour"_s, u"red"_s }, { u"itemText"_s, u"text"_s }, { QString(), 1 },
            { u"itemId"_s, 4 } });
    QVERIFY(rectangle.dynamicPropertyNames().isEmpty());
    QCOMPARE(rectangle.itemId(), short(4));
}

void tst_ItemPropertyMap::bindingIsNotInTheMapOfARectangle()
{
    RectangleItem source;
    source.setDatasourceId(70000);
    source.setDatasourceField(changedField());
    RectangleItem target;
    applyMap(target, source.saveItemToJSON());
    QCOMPARE(target.getDatasourceId(), -1);
    QVERIFY(target.getDatasourceField().isEmpty());
}

void tst_ItemPropertyMap::anyNumberInAMapIsHarmless_data()
{
    QTest::addColumn<QString>("key");
    QTest::addColumn<QVariant>("value");

    for (const QString &key : { u"itemZValue"_s, u"itemRotation"_s, u"itemWidth"_s, u"itemHeight"_s,
             u"itemScaleX"_s, u"itemPositionX"_s, u"itemPositionY"_s }) {
        for (const auto &[name, value] : oddNumbers)
            QTest::addRow("%s %s", qPrintable(key), name) << key << QVariant(value);
        for (const QString &text : { u"nan"_s, u"inf"_s, u"-inf"_s })
            QTest::addRow("%s as the text %s", qPrintable(key), qPrintable(text)) << key << QVariant(text);
    }
    for (const auto &[name, value] : oddNumbers)
        QTest::addRow("itemTransform %s", name) << u"itemTransform"_s << QVariant(QVariantList(8, value));
}

void tst_ItemPropertyMap::anyNumberInAMapIsHarmless()
{
    QFETCH(QString, key);
    QFETCH(QVariant, value);
    RectangleItem rectangle;
    rectangle.setItemPenStyle(Qt::DashLine);
    applyMap(rectangle, { { key, value } });
    QVERIFY(!std::isnan(rectangle.zValue()));
    QVERIFY(isFinite(Scenes::boundsAfterPainting(rectangle)));
}

QTEST_MAIN(tst_ItemPropertyMap)
#include "tst_itempropertymap.moc"
