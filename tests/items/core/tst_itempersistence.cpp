// SPDX-License-Identifier: BSD-3-Clause
#include "items/shapes/rectangleitem.h"
#include "items/style/coloreditem.h"
#include "items/style/contoureditem.h"
#include "items/style/fillableitem.h"
#include "tests/support/bareshape.h"
#include "tests/support/hexbytes.h"
#include "tests/support/oddnumbers.h"

#include <QDataStream>
#include <QGraphicsScene>
#include <QImage>
#include <QJsonDocument>
#include <QJsonObject>
#include <QMetaProperty>
#include <QPainter>
#include <QRegularExpression>
#include <QTest>

#include <bit>
#include <cmath>

using namespace Qt::StringLiterals;

// The records below are printed by tests/tools/record_rectangle.py, which knows nothing of the library.
namespace {

// A new rectangle. The item's part takes
//   2 + 4 + 3 × 1 + 8 + 4 + 1 + 8 + 2 × 8 + 2 × 8 + 9 × 8 + 2 × 8 + 4 + 4 = 158 bytes,
// the pen colour 11, the pen 2 + 3 × 4 = 14, the fill 2 + 11 = 13: 158 + 11 + 14 + 13 = 196 bytes.
constexpr char newRectangle[] = "FFFF" // item id -1
                                "00000001" // flag word: visible in print
                                "00" // horizontal mirror
                                "00" // vertical mirror
                                "01" // allow overprint
                                "0000000000000000" // z value
                                "00000107" // graphics-item flags
                                "01" // visible
                                "0000000000000000" // rotation
                                "4059000000000000" // width 100
                                "4059000000000000" // height 100
                                "3FF0000000000000" // horizontal scale 1
                                "3FF0000000000000" // vertical scale 1
                                "3FF0000000000000" // m11 1
                                "0000000000000000" // m12
                                "0000000000000000" // m13
                                "0000000000000000" // m21
                                "3FF0000000000000" // m22 1
                                "0000000000000000" // m23
                                "0000000000000000" // m31
                                "0000000000000000" // m32
                                "3FF0000000000000" // m33 1
                                "0000000000000000" // x
                                "0000000000000000" // y
                                "FFFFFFFF" // datasource id -1
                                "FFFFFFFF" // datasource field: null
                                "01FFFF0000000000000000" // pen colour: RGB, opaque, black
                                "0001" // pen width 1
                                "00000001" // pen style: solid
                                "00000020" // cap style: round
                                "00000080" // join style: round
                                "0001" // brush style: solid
                                "0100000000000000000000"; // fill colour: RGB, transparent

// The same to a little-endian stream.
constexpr char newRectangleLittleEndian[] = "FFFF" // item id -1
                                            "01000000" // flag word
                                            "000001" // mirrors, overprint
                                            "0000000000000000" // z value
                                            "07010000" // graphics-item flags
                                            "01" // visible
                                            "0000000000000000" // rotation
                                            "0000000000005940 0000000000005940" // size
                                            "000000000000F03F 000000000000F03F" // scales
                                            "000000000000F03F 0000000000000000 0000000000000000"
                                            "0000000000000000 000000000000F03F 0000000000000000"
                                            "0000000000000000 0000000000000000 000000000000F03F"
                                            "0000000000000000 0000000000000000" // position
                                            "FFFFFFFF FFFFFFFF" // datasource
                                            "01FFFF0000000000000000" // pen colour
                                            "0100 01000000 20000000 80000000" // pen
                                            "0100" // brush style
                                            "0100000000000000000000"; // fill colour

// The same to a stream of single precision: 17 numbers of 4 bytes less, 196 - 68 = 128 bytes.
constexpr char newRectangleSinglePrecision[] = "FFFF" // item id -1
                                               "00000001" // flag word
                                               "000001" // mirrors, overprint
                                               "00000000" // z value
                                               "00000107" // graphics-item flags
                                               "01" // visible
                                               "00000000" // rotation
                                               "42C80000 42C80000" // size
                                               "3F800000 3F800000" // scales
                                               "3F800000 00000000 00000000"
                                               "00000000 3F800000 00000000"
                                               "00000000 00000000 3F800000"
                                               "00000000 00000000" // position
                                               "FFFFFFFF FFFFFFFF" // datasource
                                               "01FFFF0000000000000000" // pen colour
                                               "0001 00000001 00000020 00000080" // pen
                                               "0001" // brush style
                                               "0100000000000000000000"; // fill colour

// A rectangle that differs from a new one in every field. Its datasource field of nine UTF-16 units makes it
// 18 bytes longer: 214.
constexpr char changedRectangle[] = "FED4" // item id -300
                                    "F00F0069" // flag word, with bits that nobody knows
                                    "01" // horizontal mirror
                                    "01" // vertical mirror
                                    "00" // no overprint
                                    "C004000000000000" // z value -2.5
                                    "0000010F" // graphics-item flags
                                    "00" // invisible
                                    "403E800000000000" // rotation 30.5
                                    "406F480000000000" // width 250.25
                                    "4044400000000000" // height 40.5
                                    "4004000000000000" // horizontal scale 2.5
                                    "3FD0000000000000" // vertical scale 0.25
                                    "3FF8000000000000" // m11 1.5
                                    "3FD0000000000000" // m12 0.25
                                    "3F60000000000000" // m13 0.001953125
                                    "BFE0000000000000" // m21 -0.5
                                    "4000000000000000" // m22 2
                                    "BF80000000000000" // m23 -0.0078125
                                    "4029800000000000" // m31 12.75
                                    "C01E000000000000" // m32 -7.5
                                    "4010000000000000" // m33 4
                                    "C05EE00000000000" // x -123.5
                                    "40B0002000000000" // y 4096.125
                                    "00011170" // datasource id 70000
                                    "00000012" // datasource field of 18 bytes:
                                    "0047007200F600DF00650020" // "Größe "
                                    "20ACD83DDE00" // "€😀"
                                    "024D4D52088080C8C80000" // pen colour: HSV 210°, 128, 200, alpha 77
                                    "0007" // pen width 7
                                    "00000004" // pen style: dash, dot
                                    "00000000" // cap style: flat
                                    "00000040" // join style: bevel
                                    "FFFF" // brush style -1
                                    "0128280A0A14141E1E0000"; // fill colour: RGB 10, 20, 30, alpha 40

// Where fields start.
namespace Offset {
constexpr int itemFlags = 2;
constexpr int mirrors = 6; // two, and the overprint flag
constexpr int overprint = 8;
constexpr int zValue = 9;
constexpr int visible = 21;
constexpr int rotation = 22;
constexpr int width = 30;
constexpr int height = 38;
constexpr int scales = 46;
constexpr int y = 142;
constexpr int datasourceField = 154;
// Of a record with a null datasource field:
constexpr int penWidth = 169;
constexpr int penStyle = 171;
constexpr int capStyle = 175;
constexpr int joinStyle = 179;
constexpr int brushStyle = 183;
constexpr int fillColor = 185;
// Of the changed rectangle:
constexpr int changedBrushStyle = 201;
} // namespace Offset

constexpr unsigned int presentVersion = 6;

/// An item of the given base and nothing else, with the graphics-item flags of a rectangle. It prints in no
/// ink.
template <class Base> class Sample final : public BareShape<Base>
{
public:
    Sample() { this->setItemQFlags(0x107); }

    Item *createItemCopy() override { return this->template copyAs<Sample>().release(); }
    bool resetItemColors(const QColor & /*printColor*/, bool /*keepBlack*/, bool /*keepOthers*/) override
    {
        return false;
    }
    bool resetItemColorsNegative(const QColor & /*printColor*/) override { return false; }
};

class FilledSample final : public BareShape<FillableItem>
{
public:
    Item *createItemCopy() override { return copyAs<FilledSample>().release(); }
    void preparePrintImage() override { setPreprintedImage(QImage()); }
};

/// Notes which of its overridable operations loading calls.
class ObservedItem final : public BareShape<FillableItem>
{
public:
    Item *createItemCopy() override { return copyAs<ObservedItem>().release(); }
    void preparePrintImage() override { setPreprintedImage(QImage()); }

    using Item::setItemSize;
    bool setItemSize(QSizeF size) override
    {
        calls.append(u"size"_s);
        return Item::setItemSize(size);
    }
    void setItemWidth(double width) override
    {
        calls.append(u"width"_s);
        Item::setItemWidth(width);
    }
    void setItemHeight(double height) override
    {
        calls.append(u"height"_s);
        Item::setItemHeight(height);
    }
    void updateItemSize(const QSizeF &size) override
    {
        calls.append(u"update size"_s);
        Item::updateItemSize(size);
    }
    void setItemRotation(double degrees) override
    {
        calls.append(u"rotation"_s);
        Item::setItemRotation(degrees);
    }
    void setItemHorizontalMirror(bool mirror) override
    {
        calls.append(u"horizontal mirror"_s);
        Item::setItemHorizontalMirror(mirror);
    }
    void setItemVerticalMirror(bool mirror) override
    {
        calls.append(u"vertical mirror"_s);
        Item::setItemVerticalMirror(mirror);
    }
    void setItemPenColor(const QColor &color) override
    {
        calls.append(u"pen colour"_s);
        FillableItem::setItemPenColor(color);
    }
    void setItemPenWidth(unsigned short width) override
    {
        calls.append(u"pen width"_s);
        FillableItem::setItemPenWidth(width);
    }
    void setItemPenStyle(Qt::PenStyle style) override
    {
        calls.append(u"pen style"_s);
        FillableItem::setItemPenStyle(style);
    }
    void setItemPenCapStyle(Qt::PenCapStyle style) override
    {
        calls.append(u"cap style"_s);
        FillableItem::setItemPenCapStyle(style);
    }
    void setItemPenJoinStyle(Qt::PenJoinStyle style) override
    {
        calls.append(u"join style"_s);
        FillableItem::setItemPenJoinStyle(style);
    }
    void setItemBrushStyle(MobraTypes::BrushStyle style) override
    {
        calls.append(u"brush style"_s);
        FillableItem::setItemBrushStyle(style);
    }
    void setItemFillColor(const QColor &color) override
    {
        calls.append(u"fill colour over brush %1"_s.arg(int(getItemBrushStyle())));
        FillableItem::setItemFillColor(color);
    }
    void updateItemPen() override
    {
        ++penUpdates;
        callsBeforeLastPenUpdate = int(calls.size());
        FillableItem::updateItemPen();
    }

    QStringList calls;
    int penUpdates = 0;
    int callsBeforeLastPenUpdate = 0;
};

enum class Form { BigEndian, LittleEndian, SinglePrecision };

void setForm(QDataStream &stream, Form form)
{
    stream.setVersion(QDataStream::Qt_6_4);
    if (form == Form::LittleEndian)
        stream.setByteOrder(QDataStream::LittleEndian);
    if (form == Form::SinglePrecision)
        stream.setFloatingPointPrecision(QDataStream::SinglePrecision);
}

QByteArray saved(Item &item, Form form = Form::BigEndian)
{
    QByteArray record;
    QDataStream stream(&record, QIODevice::WriteOnly);
    setForm(stream, form);
    item.saveItemToData(stream);
    return record;
}

struct Reading
{
    QDataStream::Status status;
    qint64 consumed;
};

Reading load(
    Item &item, const QByteArray &record, unsigned int version = presentVersion, Form form = Form::BigEndian)
{
    QDataStream stream(record);
    setForm(stream, form);
    item.loadItemFromData(stream, version);
    return { stream.status(), stream.device()->pos() };
}

QByteArray patched(const char *record, int offset, const char *bytes)
{
    const QByteArray patch = fromHexText(bytes);
    return fromHexText(record).replace(offset, patch.size(), patch);
}

QByteArray patched(const char *record, int offset, double number)
{
    return patched(
        record, offset, QByteArray::number(std::bit_cast<quint64>(number), 16).rightJustified(16, '0'));
}

// A record of version 5 or less knows neither mirrors nor overprint.
QByteArray withoutMirrors(const char *record)
{
    return fromHexText(record).remove(Offset::mirrors, 3);
}

QTransform changedTransform()
{
    return { 1.5, 0.25, 0.001953125, -0.5, 2, -0.0078125, 12.75, -7.5, 4 };
}

QString changedField()
{
    return u"Größe €😀"_s;
}

QColor changedPenColor()
{
    return QColor::fromHsv(210, 128, 200, 77);
}

// Paints the rectangle and returns what the scene takes for the bounds of its items.
QRectF paintInAScene(RectangleItem *rectangle)
{
    QGraphicsScene scene;
    scene.addItem(rectangle);
    QImage image(50, 50, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    scene.render(&painter, image.rect(), QRectF(0, 0, 50, 50));
    const QRectF bounds = scene.itemsBoundingRect();
    scene.removeItem(rectangle);
    return bounds;
}

QVariantMap throughJsonText(const QVariantMap &map)
{
    const QByteArray text = QJsonDocument(QJsonObject::fromVariantMap(map)).toJson();
    return QJsonDocument::fromJson(text).object().toVariantMap();
}

void applyMap(RectangleItem &rectangle, const QVariantMap &map)
{
    rectangle.loadItemFromJSON(map, presentVersion);
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

class tst_ItemPersistence : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    // Writing
    void newRectangleWritesItsRecord();
    void changedRectangleWritesItsRecord();
    void recordFollowsTheFormOfTheStream_data();
    void recordFollowsTheFormOfTheStream();
    void everyBaseWritesItsPartAfterItsOwnBase();
    void streamKeepsItsForm();

    // Reading
    void changedRecordIsRead();
    void everyFieldIsWrittenBackAsItWasRead();
    void rectangleRecordComesBackWithScalesOfOne();
    void everyFieldIsOverwritten_data();
    void everyFieldIsOverwritten();
    void recordsFollowEachOther();
    void onlyMirrorsAndStylesGoThroughTheirSetters();
    void penIsUpdatedAfterItsValues();
    void rotationIsStoredAsRead();
    void parkedBindingFollowsTheRecord();
    void rectangleIsLaidOutAfterLoading();
    void brushIsRebuiltEvenIfTheFillStays();
    void brushStyleIsSignExtended_data();
    void brushStyleIsSignExtended();
    void gradientFlagFollowsTheLoadedBrush();
    void penValuesAreLimitedLikeThoseOfTheSetters();
    void stylesThatNobodyKnowsArePaintedWithoutHarm_data();
    void stylesThatNobodyKnowsArePaintedWithoutHarm();

    // Versions
    void readersBeforeVersion6SkipMirrorsAndOverprint_data();
    void readersBeforeVersion6SkipMirrorsAndOverprint();
    void readersSinceVersion6ReadMirrorsAndOverprint_data();
    void readersSinceVersion6ReadMirrorsAndOverprint();
    void readerOfVersion5ConsumesThreeBytesLess();

    // Damaged records
    void cutRecordLeavesUnreadValuesAtZero();
    void cutRectangleIsPaintedWithoutHarm();
    void hostileStringLengthIsAnError_data();
    void hostileStringLengthIsAnError();
    void anyNumberInARecordIsHarmless_data();
    void anyNumberInARecordIsHarmless();
    void sizeAndRotationInARecordAreStoredAsTheyAre_data();
    void sizeAndRotationInARecordAreStoredAsTheyAre();

    // Property map
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
    void rectangleIsLaidOutAfterApplyingAMap();
    void unusableValuesAreSkipped_data();
    void unusableValuesAreSkipped();
    void numbersAsTextAreRead();
    void unknownKeysAreSkipped();
    void bindingIsNotInTheMapOfARectangle();
    void anyNumberInAMapIsHarmless_data();
    void anyNumberInAMapIsHarmless();
};

// Writing

void tst_ItemPersistence::newRectangleWritesItsRecord()
{
    RectangleItem rectangle;
    const QByteArray record = saved(rectangle);
    QCOMPARE(toHexText(record), toHexText(fromHexText(newRectangle)));
    QCOMPARE(record.size(), 196);
}

void tst_ItemPersistence::changedRectangleWritesItsRecord()
{
    RectangleItem rectangle;
    rectangle.setItemId(-300);
    rectangle.setItemFlags(0xF00F0069U);
    rectangle.setItemHorizontalMirror(true);
    rectangle.setItemVerticalMirror(true);
    rectangle.setAllowOverprint(false);
    rectangle.setItemZValue(-2.5);
    rectangle.setItemQFlags(0x10F);
    rectangle.setItemIsVisible(false);
    rectangle.setItemSize(QSizeF(250.25, 40.5));
    rectangle.setItemRotation(30.5);
    rectangle.setTransform(changedTransform());
    rectangle.setPos(-123.5, 4096.125);
    rectangle.setDatasourceId(70000);
    rectangle.setDatasourceField(changedField());
    rectangle.setItemPenColor(changedPenColor());
    rectangle.setItemPenWidth(7);
    rectangle.setItemPenStyle(Qt::DashDotLine);
    rectangle.setItemPenCapStyle(Qt::FlatCap);
    rectangle.setItemPenJoinStyle(Qt::BevelJoin);
    rectangle.setItemFillColor(QColor(10, 20, 30, 40));
    rectangle.setItemBrushStyle(MobraTypes::BrushRadialGradient);
    rectangle.setItemScaleX(2.5);
    rectangle.setItemScaleY(0.25);

    // A brush style of -1 cannot be set; a gradient has the number 16 and sets its flag 0x80.
    QByteArray expected = fromHexText(changedRectangle);
    expected.replace(Offset::itemFlags, 4, fromHexText("F00F00E9"));
    expected.replace(Offset::changedBrushStyle, 2, fromHexText("0010"));
    QCOMPARE(toHexText(saved(rectangle)), toHexText(expected));
    QCOMPARE(expected.size(), 214);
}

void tst_ItemPersistence::recordFollowsTheFormOfTheStream_data()
{
    QTest::addColumn<Form>("form");
    QTest::addColumn<QByteArray>("record");
    QTest::addColumn<int>("size");

    QTest::newRow("little endian") << Form::LittleEndian << fromHexText(newRectangleLittleEndian) << 196;
    QTest::newRow("single precision")
        << Form::SinglePrecision << fromHexText(newRectangleSinglePrecision) << 128;
}

void tst_ItemPersistence::recordFollowsTheFormOfTheStream()
{
    QFETCH(Form, form);
    QFETCH(QByteArray, record);
    RectangleItem rectangle;
    QCOMPARE(toHexText(saved(rectangle, form)), toHexText(record));
    QTEST(int(record.size()), "size");
}

void tst_ItemPersistence::everyBaseWritesItsPartAfterItsOwnBase()
{
    const QByteArray whole = fromHexText(newRectangle);
    Sample<Item> item;
    QCOMPARE(toHexText(saved(item)), toHexText(whole.left(158)));
    Sample<ColoredItem> colored;
    QCOMPARE(toHexText(saved(colored)), toHexText(whole.left(158 + 11)));
    Sample<ContouredItem> contoured;
    QCOMPARE(toHexText(saved(contoured)), toHexText(whole.left(158 + 11 + 14)));

    // Each reads its own part and leaves what follows.
    QCOMPARE(load(item, whole).consumed, 158);
    QCOMPARE(load(colored, whole).consumed, 169);
    QCOMPARE(load(contoured, whole).consumed, 183);
}

void tst_ItemPersistence::streamKeepsItsForm()
{
    QByteArray record;
    QDataStream writer(&record, QIODevice::WriteOnly);
    setForm(writer, Form::SinglePrecision);
    writer.setByteOrder(QDataStream::LittleEndian);
    RectangleItem rectangle;
    rectangle.saveItemToData(writer);
    QCOMPARE(writer.version(), int(QDataStream::Qt_6_4));
    QCOMPARE(writer.byteOrder(), QDataStream::LittleEndian);
    QCOMPARE(writer.floatingPointPrecision(), QDataStream::SinglePrecision);

    QDataStream reader(record);
    setForm(reader, Form::SinglePrecision);
    reader.setByteOrder(QDataStream::LittleEndian);
    rectangle.loadItemFromData(reader, presentVersion);
    QCOMPARE(reader.status(), QDataStream::Ok);
    QVERIFY(reader.atEnd());
    QCOMPARE(reader.byteOrder(), QDataStream::LittleEndian);
    QCOMPARE(reader.floatingPointPrecision(), QDataStream::SinglePrecision);
}

// Reading

void tst_ItemPersistence::changedRecordIsRead()
{
    RectangleItem rectangle;
    const Reading reading = load(rectangle, fromHexText(changedRectangle));
    QCOMPARE(reading.status, QDataStream::Ok);
    QCOMPARE(reading.consumed, 214);
    QCOMPARE(rectangle.itemId(), short(-300));
    QCOMPARE(rectangle.itemFlags(), 0xF00F0069U);
    QVERIFY(rectangle.getItemHorizontalMirror());
    QVERIFY(rectangle.getItemVerticalMirror());
    QVERIFY(!rectangle.getAllowOverprint());
    QCOMPARE(rectangle.zValue(), -2.5);
    QCOMPARE(rectangle.itemQFlags(), 0x10FU);
    QVERIFY(!rectangle.isVisible());
    QCOMPARE(rectangle.getItemRotation(), 30.5);
    QCOMPARE(rectangle.getItemSize(), QSizeF(250.25, 40.5));
    QCOMPARE(rectangle.transform(), changedTransform());
    QCOMPARE(rectangle.pos(), QPointF(-123.5, 4096.125));
    QCOMPARE(rectangle.getDatasourceId(), 70000);
    QCOMPARE(rectangle.getDatasourceField(), changedField());
    QCOMPARE(rectangle.getItemPenColor(), changedPenColor());
    QCOMPARE(rectangle.getItemPenColor().alpha(), 77);
    QCOMPARE(rectangle.getItemPenWidth(), ushort(7));
    QCOMPARE(rectangle.getItemPenStyle(), Qt::DashDotLine);
    QCOMPARE(rectangle.getItemPenCapStyle(), Qt::FlatCap);
    QCOMPARE(rectangle.getItemPenJoinStyle(), Qt::BevelJoin);
    QCOMPARE(rectangle.getItemBrushStyle(), MobraTypes::BrushNoChange);
    QCOMPARE(rectangle.getItemFillColor(), QColor(10, 20, 30, 40));
    // The shape code is the class's own.
    QCOMPARE(rectangle.getItemShape(), MobraTypes::RectangleShape);
}

void tst_ItemPersistence::everyFieldIsWrittenBackAsItWasRead()
{
    FilledSample sample;
    const QByteArray record = fromHexText(changedRectangle);
    QCOMPARE(load(sample, record).status, QDataStream::Ok);
    QCOMPARE(sample.getItemScaleX(), 2.5);
    QCOMPARE(sample.getItemScaleY(), 0.25);
    QCOMPARE(toHexText(saved(sample)), toHexText(record));
}

void tst_ItemPersistence::rectangleRecordComesBackWithScalesOfOne()
{
    RectangleItem rectangle;
    load(rectangle, fromHexText(changedRectangle));
    QCOMPARE(rectangle.getItemScaleX(), 1.0);
    QCOMPARE(rectangle.getItemScaleY(), 1.0);
    QCOMPARE(toHexText(saved(rectangle)),
        toHexText(patched(changedRectangle, Offset::scales, "3FF0000000000000 3FF0000000000000")));
}

void tst_ItemPersistence::everyFieldIsOverwritten_data()
{
    QTest::addColumn<Form>("form");
    QTest::addColumn<QByteArray>("record");

    QTest::newRow("big endian") << Form::BigEndian << fromHexText(newRectangle);
    QTest::newRow("little endian") << Form::LittleEndian << fromHexText(newRectangleLittleEndian);
    QTest::newRow("single precision") << Form::SinglePrecision << fromHexText(newRectangleSinglePrecision);
}

void tst_ItemPersistence::everyFieldIsOverwritten()
{
    QFETCH(Form, form);
    QFETCH(QByteArray, record);
    RectangleItem rectangle;
    load(rectangle, fromHexText(changedRectangle));
    const Reading reading = load(rectangle, record, presentVersion, form);
    QCOMPARE(reading.status, QDataStream::Ok);
    QCOMPARE(reading.consumed, record.size());
    QCOMPARE(toHexText(saved(rectangle)), toHexText(fromHexText(newRectangle)));
}

void tst_ItemPersistence::recordsFollowEachOther()
{
    QDataStream stream(
        fromHexText(changedRectangle) + fromHexText(newRectangle) + fromHexText(changedRectangle));
    stream.setVersion(QDataStream::Qt_6_4);
    RectangleItem rectangles[3];
    for (RectangleItem &rectangle : rectangles)
        rectangle.loadItemFromData(stream, presentVersion);
    QCOMPARE(stream.status(), QDataStream::Ok);
    QVERIFY(stream.atEnd());
    QCOMPARE(rectangles[0].itemId(), short(-300));
    QCOMPARE(toHexText(saved(rectangles[1])), toHexText(fromHexText(newRectangle)));
    QCOMPARE(rectangles[2].getItemFillColor(), QColor(10, 20, 30, 40));
}

void tst_ItemPersistence::onlyMirrorsAndStylesGoThroughTheirSetters()
{
    ObservedItem item;
    item.calls.clear();
    load(item, fromHexText(changedRectangle));
    const QStringList expected = { u"horizontal mirror"_s, u"vertical mirror"_s, u"pen width"_s,
        u"pen style"_s, u"cap style"_s, u"join style"_s, u"fill colour over brush -1"_s };
    QCOMPARE(item.calls, expected);
}

void tst_ItemPersistence::penIsUpdatedAfterItsValues()
{
    ObservedItem item;
    load(item, fromHexText(changedRectangle));
    item.calls.clear();
    item.penUpdates = 0;
    // The same values again: the setters have nothing to do, yet the pen is updated after the four of them,
    // which follow the two mirrors.
    load(item, fromHexText(changedRectangle));
    QCOMPARE(item.penUpdates, 1);
    QCOMPARE(item.callsBeforeLastPenUpdate, 6);
    QCOMPARE(item.getItemPen().color(), changedPenColor());
    QCOMPARE(item.getItemPen().width(), 7);
}

void tst_ItemPersistence::rotationIsStoredAsRead()
{
    FilledSample sample;
    load(sample, patched(newRectangle, Offset::rotation, 725.5));
    QCOMPARE(sample.getItemRotation(), 725.5);
    QVERIFY(sample.transform().isIdentity());
    QCOMPARE(sample.pos(), QPointF(0, 0));
}

void tst_ItemPersistence::parkedBindingFollowsTheRecord()
{
    RectangleItem rectangle;
    rectangle.setDatasourceId(3);
    rectangle.setDatasourceField(u"Name"_s);
    rectangle.setItemAsReadOnly(true);
    load(rectangle, fromHexText(changedRectangle));
    rectangle.setItemAsReadOnly(false);
    QCOMPARE(rectangle.getDatasourceId(), 70000);
    QCOMPARE(rectangle.getDatasourceField(), changedField());
}

void tst_ItemPersistence::rectangleIsLaidOutAfterLoading()
{
    RectangleItem rectangle;
    load(rectangle, fromHexText(changedRectangle));
    // 250.25 × 40.5 with a pen of 7
    QCOMPARE(rectangle.rect(), QRectF(3.5, 3.5, 243.25, 33.5));
    QCOMPARE(rectangle.boundingRect(), QRectF(0, 0, 250.25, 40.5));
    QCOMPARE(rectangle.getItemPen().color(), changedPenColor());
}

void tst_ItemPersistence::brushIsRebuiltEvenIfTheFillStays()
{
    RectangleItem rectangle;
    rectangle.setItemFillColor(QColor(10, 20, 30, 40));
    QByteArray record = patched(newRectangle, Offset::brushStyle, "0009");
    record.replace(Offset::fillColor, 11, fromHexText("0128280A0A14141E1E0000"));
    load(rectangle, record);
    QCOMPARE(rectangle.getItemBrushStyle(), MobraTypes::BrushHorizontal);
    QCOMPARE(rectangle.getItemBrush(), QBrush(QColor(10, 20, 30, 40), Qt::HorPattern));
    QVERIFY(!rectangle.itemIsOpaque());
}

void tst_ItemPersistence::brushStyleIsSignExtended_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<int>("style");

    QTest::newRow("none") << "0000"_ba << 0;
    QTest::newRow("conical gradient") << "0011"_ba << 17;
    QTest::newRow("no change") << "ffff"_ba << -1;
    QTest::newRow("unknown") << "0018"_ba << 24;
    QTest::newRow("largest") << "7fff"_ba << 32767;
    QTest::newRow("smallest") << "8000"_ba << -32768;
}

void tst_ItemPersistence::brushStyleIsSignExtended()
{
    QFETCH(QByteArray, bytes);
    RectangleItem rectangle;
    load(rectangle, patched(newRectangle, Offset::brushStyle, bytes));
    QTEST(int(rectangle.getItemBrushStyle()), "style");
    QCOMPARE(saved(rectangle).mid(Offset::brushStyle, 2).toHex(), bytes);
}

void tst_ItemPersistence::gradientFlagFollowsTheLoadedBrush()
{
    QByteArray record = patched(newRectangle, Offset::brushStyle, "000F");
    record.replace(Offset::fillColor, 11, fromHexText("01FFFFFFFF000000000000"));
    RectangleItem rectangle;
    load(rectangle, record);
    QCOMPARE(rectangle.itemFlags(), 0x81U);
    record.replace(Offset::brushStyle, 2, fromHexText("0001"));
    record.replace(Offset::itemFlags, 4, fromHexText("00000085"));
    load(rectangle, record);
    QCOMPARE(rectangle.itemFlags(), 0x05U);
}

void tst_ItemPersistence::penValuesAreLimitedLikeThoseOfTheSetters()
{
    RectangleItem rectangle;
    load(rectangle, patched(newRectangle, Offset::penWidth, "0049"));
    QCOMPARE(rectangle.getItemPenWidth(), ushort(72));
    load(rectangle, patched(newRectangle, Offset::penWidth, "FFFF"));
    QCOMPARE(rectangle.getItemPenWidth(), ushort(72));
    load(rectangle, patched(newRectangle, Offset::penWidth, "0048"));
    QCOMPARE(rectangle.getItemPenWidth(), ushort(72));
    load(rectangle, patched(newRectangle, Offset::penWidth, "0000"));
    QCOMPARE(rectangle.getItemPenWidth(), ushort(0));
    QCOMPARE(rectangle.getItemPen().style(), Qt::NoPen);
    // A square cap becomes a flat one.
    load(rectangle, patched(newRectangle, Offset::capStyle, "00000010"));
    QCOMPARE(rectangle.getItemPenCapStyle(), Qt::FlatCap);
}

void tst_ItemPersistence::stylesThatNobodyKnowsArePaintedWithoutHarm_data()
{
    QTest::addColumn<int>("offset");
    QTest::addColumn<QByteArray>("bytes");

    const QByteArray numbers[]
        = { "00000007"_ba, "000000ff"_ba, "000001c0"_ba, "7fffffff"_ba, "80000000"_ba, "ffffffff"_ba };
    for (const QByteArray &number : numbers) {
        QTest::addRow("pen style %s", number.constData()) << Offset::penStyle << number;
        QTest::addRow("join style %s", number.constData()) << Offset::joinStyle << number;
    }
}

void tst_ItemPersistence::stylesThatNobodyKnowsArePaintedWithoutHarm()
{
    QFETCH(int, offset);
    QFETCH(QByteArray, bytes);
    RectangleItem rectangle;
    QCOMPARE(load(rectangle, patched(newRectangle, offset, bytes)).status, QDataStream::Ok);
    QVERIFY(isFinite(paintInAScene(&rectangle)));
    QCOMPARE(saved(rectangle).mid(offset, 4).toHex(), bytes);
}

// Versions

void tst_ItemPersistence::readersBeforeVersion6SkipMirrorsAndOverprint_data()
{
    QTest::addColumn<uint>("version");
    QTest::addColumn<bool>("overprint");

    QTest::newRow("0, overprint") << 0U << true;
    QTest::newRow("4, no overprint") << 4U << false;
    QTest::newRow("5, overprint") << 5U << true;
    QTest::newRow("5, no overprint") << 5U << false;
}

void tst_ItemPersistence::readersBeforeVersion6SkipMirrorsAndOverprint()
{
    QFETCH(uint, version);
    QFETCH(bool, overprint);
    RectangleItem rectangle;
    rectangle.setItemHorizontalMirror(true);
    rectangle.setItemVerticalMirror(true);
    rectangle.setAllowOverprint(overprint);
    const Reading reading = load(rectangle, withoutMirrors(changedRectangle), version);
    QCOMPARE(reading.status, QDataStream::Ok);
    QCOMPARE(reading.consumed, 211);
    QVERIFY(!rectangle.getItemHorizontalMirror());
    QVERIFY(!rectangle.getItemVerticalMirror());
    QCOMPARE(rectangle.getAllowOverprint(), overprint);
    QCOMPARE(rectangle.itemId(), short(-300));
    QCOMPARE(rectangle.itemFlags(), 0xF00F0069U);
    QCOMPARE(rectangle.zValue(), -2.5);
    QCOMPARE(rectangle.pos(), QPointF(-123.5, 4096.125));
    QCOMPARE(rectangle.getDatasourceField(), changedField());
    QCOMPARE(rectangle.getItemFillColor(), QColor(10, 20, 30, 40));
}

void tst_ItemPersistence::readersSinceVersion6ReadMirrorsAndOverprint_data()
{
    QTest::addColumn<uint>("version");
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<bool>("horizontal");
    QTest::addColumn<bool>("vertical");
    QTest::addColumn<bool>("overprint");

    QTest::newRow("6, nothing") << 6U << "000000"_ba << false << false << false;
    QTest::newRow("6, horizontal") << 6U << "010000"_ba << true << false << false;
    QTest::newRow("6, vertical") << 6U << "000100"_ba << false << true << false;
    QTest::newRow("7, overprint") << 7U << "000001"_ba << false << false << true;
    QTest::newRow("largest, everything") << 0xFFFFFFFFU << "010101"_ba << true << true << true;
    QTest::newRow("any other byte is true") << 6U << "02ff80"_ba << true << true << true;
}

void tst_ItemPersistence::readersSinceVersion6ReadMirrorsAndOverprint()
{
    QFETCH(uint, version);
    QFETCH(QByteArray, bytes);
    RectangleItem rectangle;
    const Reading reading = load(rectangle, patched(newRectangle, Offset::mirrors, bytes), version);
    QCOMPARE(reading.status, QDataStream::Ok);
    QCOMPARE(reading.consumed, 196);
    QTEST(rectangle.getItemHorizontalMirror(), "horizontal");
    QTEST(rectangle.getItemVerticalMirror(), "vertical");
    QTEST(rectangle.getAllowOverprint(), "overprint");
}

void tst_ItemPersistence::readerOfVersion5ConsumesThreeBytesLess()
{
    RectangleItem rectangle;
    QCOMPARE(load(rectangle, fromHexText(newRectangle), 5).consumed, 193);
    QCOMPARE(load(rectangle, withoutMirrors(newRectangle), 5).consumed, 193);
    QCOMPARE(toHexText(saved(rectangle)), toHexText(fromHexText(newRectangle)));
}

// Damaged records

void tst_ItemPersistence::cutRecordLeavesUnreadValuesAtZero()
{
    using Read = double (*)(const FilledSample &);
    const struct
    {
        const char *name;
        int end; // how many bytes of the record it takes to know the value
        Read read;
        double value;
    } fields[] = {
        { "item id", 2, [](const FilledSample &s) { return double(s.itemId()); }, -300 },
        { "flag word", 6, [](const FilledSample &s) { return double(s.itemFlags()); }, 4027514985.0 },
        { "horizontal mirror", 7, [](const FilledSample &s) { return double(s.getItemHorizontalMirror()); },
            1 },
        { "vertical mirror", 8, [](const FilledSample &s) { return double(s.getItemVerticalMirror()); }, 1 },
        { "overprint", 9, [](const FilledSample &s) { return double(s.getAllowOverprint()); }, 1 },
        { "z value", 17, [](const FilledSample &s) { return s.zValue(); }, -2.5 },
        { "graphics-item flags", 21, [](const FilledSample &s) { return double(s.itemQFlags()); }, 0x10F },
        { "visible", 22, [](const FilledSample &s) { return double(s.isVisible()); }, 1 },
        { "rotation", 30, [](const FilledSample &s) { return s.getItemRotation(); }, 30.5 },
        { "width", 38, [](const FilledSample &s) { return s.getItemWidth(); }, 250.25 },
        { "height", 46, [](const FilledSample &s) { return s.getItemHeight(); }, 40.5 },
        { "horizontal scale", 54, [](const FilledSample &s) { return s.getItemScaleX(); }, 2.5 },
        { "vertical scale", 62, [](const FilledSample &s) { return s.getItemScaleY(); }, 0.25 },
        { "m11", 70, [](const FilledSample &s) { return s.transform().m11(); }, 1.5 },
        { "m12", 78, [](const FilledSample &s) { return s.transform().m12(); }, 0.25 },
        { "m13", 86, [](const FilledSample &s) { return s.transform().m13(); }, 0.001953125 },
        { "m21", 94, [](const FilledSample &s) { return s.transform().m21(); }, -0.5 },
        { "m22", 102, [](const FilledSample &s) { return s.transform().m22(); }, 2 },
        { "m23", 110, [](const FilledSample &s) { return s.transform().m23(); }, -0.0078125 },
        { "m31", 118, [](const FilledSample &s) { return s.transform().m31(); }, 12.75 },
        { "m32", 126, [](const FilledSample &s) { return s.transform().m32(); }, -7.5 },
        { "m33", 134, [](const FilledSample &s) { return s.transform().m33(); }, 4 },
        { "x", 142, [](const FilledSample &s) { return s.x(); }, -123.5 },
        { "y", 150, [](const FilledSample &s) { return s.y(); }, 4096.125 },
        { "datasource id", 154, [](const FilledSample &s) { return double(s.getDatasourceId()); }, 70000 },
        { "length of the field", 176,
            [](const FilledSample &s) { return double(s.getDatasourceField().size()); }, 9 },
        { "pen colour is valid", 177,
            [](const FilledSample &s) { return double(s.getItemPenColor().isValid()); }, 1 },
        { "pen alpha", 179, [](const FilledSample &s) { return double(s.getItemPenColor().alpha()); }, 77 },
        { "pen width", 189, [](const FilledSample &s) { return double(s.getItemPenWidth()); }, 7 },
        { "pen style", 193, [](const FilledSample &s) { return double(s.getItemPenStyle()); }, 4 },
        { "cap style", 197, [](const FilledSample &s) { return double(s.getItemPenCapStyle()); }, 0x20 },
        { "join style", 201, [](const FilledSample &s) { return double(s.getItemPenJoinStyle()); }, 0x40 },
        { "brush style", 203, [](const FilledSample &s) { return double(s.getItemBrushStyle()); }, -1 },
        { "fill colour is valid", 204,
            [](const FilledSample &s) { return double(s.getItemFillColor().isValid()); }, 1 },
        { "fill alpha", 206, [](const FilledSample &s) { return double(s.getItemFillColor().alpha()); }, 40 },
    };

    // Every value differs from zero, so that a value that was read can be told from one that was not.
    QByteArray record = patched(changedRectangle, Offset::overprint, "01");
    record.replace(Offset::visible, 1, fromHexText("01"));
    record.replace(193, 4, fromHexText("00000020"));
    for (int cut = 0; cut <= record.size(); ++cut) {
        FilledSample sample;
        const Reading reading = load(sample, record.left(cut));
        QCOMPARE(reading.status, cut == record.size() ? QDataStream::Ok : QDataStream::ReadPastEnd);
        QCOMPARE(reading.consumed, cut);
        for (const auto &[name, end, read, value] : fields) {
            const double expected = cut < end ? 0.0 : value;
            QVERIFY2(read(sample) == expected,
                qPrintable(
                    u"%1 after %2 bytes is %3"_s.arg(QLatin1StringView(name)).arg(cut).arg(read(sample))));
        }
    }
}

void tst_ItemPersistence::cutRectangleIsPaintedWithoutHarm()
{
    for (const char *text : { newRectangle, changedRectangle }) {
        const QByteArray record = fromHexText(text);
        for (int cut = 0; cut < record.size(); ++cut) {
            RectangleItem rectangle;
            QVERIFY(load(rectangle, record.left(cut)).status != QDataStream::Ok);
            rectangle.setVisible(true);
            QVERIFY(isFinite(paintInAScene(&rectangle)));
        }
    }
}

void tst_ItemPersistence::hostileStringLengthIsAnError_data()
{
    QTest::addColumn<QByteArray>("length");

    QTest::newRow("odd") << "00000003"_ba;
    QTest::newRow("more than there is") << "00000100"_ba;
    QTest::newRow("2 GiB") << "7ffffffe"_ba;
    QTest::newRow("2 GiB, odd") << "7fffffff"_ba;
    QTest::newRow("4 GiB") << "fffffffe"_ba;
}

void tst_ItemPersistence::hostileStringLengthIsAnError()
{
    QFETCH(QByteArray, length);
    RectangleItem rectangle;
    const Reading reading = load(rectangle, patched(newRectangle, Offset::datasourceField, length));
    QVERIFY(reading.status != QDataStream::Ok);
    QVERIFY(rectangle.getDatasourceField().isEmpty());
}

void tst_ItemPersistence::anyNumberInARecordIsHarmless_data()
{
    QTest::addColumn<int>("offset");
    QTest::addColumn<double>("value");

    for (const auto &[name, value] : oddNumbers) {
        QTest::addRow("z value %s", name) << Offset::zValue << value;
        for (int offset = Offset::rotation; offset <= Offset::y; offset += 8)
            QTest::addRow("at %d %s", offset, name) << offset << value;
    }
}

void tst_ItemPersistence::anyNumberInARecordIsHarmless()
{
    QFETCH(int, offset);
    QFETCH(double, value);
    RectangleItem rectangle;
    QCOMPARE(load(rectangle, patched(newRectangle, offset, value)).status, QDataStream::Ok);
    QVERIFY(!std::isnan(rectangle.zValue()));
    QVERIFY(isFinite(paintInAScene(&rectangle)));
}

void tst_ItemPersistence::sizeAndRotationInARecordAreStoredAsTheyAre_data()
{
    QTest::addColumn<double>("value");

    for (const auto &[name, value] : oddNumbers)
        QTest::newRow(name) << value;
}

void tst_ItemPersistence::sizeAndRotationInARecordAreStoredAsTheyAre()
{
    QFETCH(double, value);
    for (const int offset : { Offset::rotation, Offset::width, Offset::height }) {
        RectangleItem rectangle;
        const QByteArray record = patched(newRectangle, offset, value);
        load(rectangle, record);
        QCOMPARE(toHexText(saved(rectangle).mid(offset, 8)), toHexText(record.mid(offset, 8)));
    }
    RectangleItem rectangle;
    load(rectangle, patched(newRectangle, Offset::width, value));
    QVERIFY(isSame(rectangle.getItemWidth(), value));
    QCOMPARE(rectangle.getItemHeight(), 100.0);
}

// Property map

void tst_ItemPersistence::ignoredNamesAreThoseOfQtsOwnClasses()
{
    const QStringList names = { u"objectName"_s, u"parent"_s, u"opacity"_s, u"enabled"_s, u"visible"_s,
        u"pos"_s, u"x"_s, u"y"_s, u"z"_s, u"rotation"_s, u"scale"_s, u"transformOriginPoint"_s, u"effect"_s,
        u"children"_s, u"width"_s, u"height"_s, u"elementId"_s, u"maximumCacheSize"_s };
    QCOMPARE(names.size(), 18);
    QCOMPARE(Item::ignoredPropertyNames(), names);
}

void tst_ItemPersistence::mapHoldsTheItemsOwnKeys()
{
    RectangleItem rectangle;
    rectangle.setObjectName(u"Otto"_s);
    QStringList keys = rectangleKeys();
    keys.sort();
    QCOMPARE(rectangle.saveItemToJSON().keys(), keys);
}

void tst_ItemPersistence::propertiesAreDeclaredInOrder()
{
    const QMetaObject &meta = RectangleItem::staticMetaObject;
    QStringList names;
    for (int i = meta.propertyOffset(); i < meta.propertyCount(); ++i)
        names.append(QString::fromLatin1(meta.property(i).name()));
    QCOMPARE(names, rectangleKeys());
}

void tst_ItemPersistence::mapOfANewRectangleHoldsTheDefaults()
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

void tst_ItemPersistence::mapValuesHaveTheTypesOfTheProperties_data()
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

void tst_ItemPersistence::mapValuesHaveTheTypesOfTheProperties()
{
    RectangleItem rectangle;
    const QString key = QString::fromLatin1(QTest::currentDataTag());
    QTEST(rectangle.saveItemToJSON().value(key).metaType(), "type");
}

void tst_ItemPersistence::mapRestoresARectangle()
{
    RectangleItem source;
    change(source);
    RectangleItem target;
    applyMap(target, source.saveItemToJSON());
    compareWithChanged(target);
}

void tst_ItemPersistence::mapSurvivesJsonText()
{
    RectangleItem source;
    change(source);
    RectangleItem target;
    applyMap(target, throughJsonText(source.saveItemToJSON()));
    compareWithChanged(target);
}

void tst_ItemPersistence::versionOfAMapDoesNotMatter()
{
    RectangleItem source;
    change(source);
    for (const uint version : { 0U, 5U, 6U, 0xFFFFFFFFU }) {
        RectangleItem target;
        target.loadItemFromJSON(source.saveItemToJSON(), version);
        compareWithChanged(target);
    }
}

void tst_ItemPersistence::coloursLoseTheirAlphaInTheMap()
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

void tst_ItemPersistence::colourTextsAreParsed_data()
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

void tst_ItemPersistence::colourTextsAreParsed()
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

void tst_ItemPersistence::perspectiveIsLostInTheMap()
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

void tst_ItemPersistence::transformIsReplaced()
{
    RectangleItem rectangle;
    rectangle.setTransform(QTransform::fromScale(3, 3));
    rectangle.setItemTransformFromList({ 1.0, 0.0, 0.0, 0.0, 1.0, 0.0, 5.0, 6.0 });
    QCOMPARE(rectangle.transform(), QTransform::fromTranslate(5, 6));
    // What is no number counts as 0, numbers as text and whole numbers count.
    rectangle.setItemTransformFromList({ u"2"_s, u"x"_s, QVariant(), 0, 4, 0, 7, u"-8.5"_s });
    QCOMPARE(rectangle.transform(), QTransform(2, 0, 0, 4, 7, -8.5));
}

void tst_ItemPersistence::shortTransformListsChangeNothing_data()
{
    QTest::addColumn<QVariantList>("list");

    QVariantList list;
    for (int size = 0; size < 8; ++size) {
        QTest::addRow("%d numbers", size) << list;
        list.append(2.0);
    }
}

void tst_ItemPersistence::shortTransformListsChangeNothing()
{
    QFETCH(QVariantList, list);
    RectangleItem rectangle;
    rectangle.setTransform(changedTransform());
    rectangle.setItemTransformFromList(list);
    QCOMPARE(rectangle.transform(), changedTransform());
    applyMap(rectangle, { { u"itemTransform"_s, list } });
    QCOMPARE(rectangle.transform(), changedTransform());
}

void tst_ItemPersistence::mirrorsAreNumbers_data()
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

void tst_ItemPersistence::mirrorsAreNumbers()
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

void tst_ItemPersistence::positionKeysArePending()
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

void tst_ItemPersistence::emptyMapMovesToThePendingPosition()
{
    RectangleItem rectangle;
    rectangle.setPos(50, 60);
    rectangle.setItemPositionX(-3);
    rectangle.setItemPositionY(4);
    applyMap(rectangle, {});
    QCOMPARE(rectangle.pos(), QPointF(-3, 4));
}

void tst_ItemPersistence::noChangeBrushStyleLeavesTheBrush()
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

void tst_ItemPersistence::penLimitFollowsTheLoadedSize_data()
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

void tst_ItemPersistence::penLimitFollowsTheLoadedSize()
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

void tst_ItemPersistence::rectangleIsLaidOutAfterApplyingAMap()
{
    RectangleItem rectangle;
    applyMap(rectangle, { { u"itemWidth"_s, 60.0 }, { u"itemHeight"_s, 40.0 }, { u"itemScaleX"_s, 3.0 } });
    QCOMPARE(rectangle.boundingRect(), QRectF(0, 0, 60, 40));
    QCOMPARE(rectangle.rect(), QRectF(0.5, 0.5, 59, 39));
    QCOMPARE(rectangle.getItemScaleX(), 1.0);
    QCOMPARE(rectangle.getItemScaleY(), 1.0);
}

void tst_ItemPersistence::unusableValuesAreSkipped_data()
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

void tst_ItemPersistence::unusableValuesAreSkipped()
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

void tst_ItemPersistence::numbersAsTextAreRead()
{
    RectangleItem rectangle;
    applyMap(rectangle,
        { { u"itemWidth"_s, u"250.5"_s }, { u"itemId"_s, u"-7"_s }, { u"itemPenWidth"_s, u"3"_s } });
    QCOMPARE(rectangle.getItemWidth(), 250.5);
    QCOMPARE(rectangle.itemId(), short(-7));
    QCOMPARE(rectangle.getItemPenWidth(), ushort(3));
}

void tst_ItemPersistence::unknownKeysAreSkipped()
{
    RectangleItem rectangle;
    applyMap(rectangle,
        { { u"itemColour"_s, u"red"_s }, { u"itemText"_s, u"text"_s }, { QString(), 1 },
            { u"itemId"_s, 4 } });
    QVERIFY(rectangle.dynamicPropertyNames().isEmpty());
    QCOMPARE(rectangle.itemId(), short(4));
}

void tst_ItemPersistence::bindingIsNotInTheMapOfARectangle()
{
    RectangleItem source;
    source.setDatasourceId(70000);
    source.setDatasourceField(changedField());
    RectangleItem target;
    applyMap(target, source.saveItemToJSON());
    QCOMPARE(target.getDatasourceId(), -1);
    QVERIFY(target.getDatasourceField().isEmpty());
}

void tst_ItemPersistence::anyNumberInAMapIsHarmless_data()
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

void tst_ItemPersistence::anyNumberInAMapIsHarmless()
{
    QFETCH(QString, key);
    QFETCH(QVariant, value);
    RectangleItem rectangle;
    rectangle.setItemPenStyle(Qt::DashLine);
    applyMap(rectangle, { { key, value } });
    QVERIFY(!std::isnan(rectangle.zValue()));
    QVERIFY(isFinite(paintInAScene(&rectangle)));
}

QTEST_MAIN(tst_ItemPersistence)
#include "tst_itempersistence.moc"
