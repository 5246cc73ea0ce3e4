// SPDX-License-Identifier: BSD-3-Clause
#include "items/shapes/lineitem.h"
#include "tests/support/images.h"
#include "tests/support/linerecords.h"
#include "tests/support/nearness.h"
#include "tests/support/oddnumbers.h"
#include "tests/support/rectanglerecords.h"
#include "tests/support/scenes.h"

#include <QElapsedTimer>
#include <QRegularExpression>
#include <QTest>

#include <limits>

using namespace Qt::StringLiterals;
using namespace LineRecords;
using RectangleRecords::Form;
using RectangleRecords::load;
using RectangleRecords::patched;
using RectangleRecords::Reading;
using RectangleRecords::saved;

namespace {

namespace ItemOffset = RectangleRecords::Offset;

constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

/// Gives the line everything that the record of a changed line holds.
void change(LineItem &item)
{
    item.setItemId(-300);
    item.setItemFlags(0xF00F0069U);
    item.setItemLength(250.25);
    item.setItemHorizontalMirror(true);
    item.setItemRotation(30.5);
    item.setAllowOverprint(false);
    item.setItemZValue(-2.5);
    item.setItemQFlags(0x107);
    item.setItemIsVisible(false);
    item.setItemScaleX(2.5);
    item.setItemScaleY(0.25);
    item.setTransform(RectangleRecords::changedTransform());
    item.setPos(-123.5, 4096.125);
    item.setDatasourceId(70000);
    item.setDatasourceField(RectangleRecords::changedField());
    item.setItemPenColor(RectangleRecords::changedPenColor());
    item.setItemPenWidth(7);
    item.setItemPenStyle(Qt::DashDotLine);
    item.setItemPenCapStyle(Qt::FlatCap);
    item.setItemPenJoinStyle(Qt::BevelJoin);
    item.setItemArrows(0x53);
}

/// A line at any place and in any direction, with a lopsided bounding rectangle.
void place(LineItem &item, double degrees, bool mirrored)
{
    item.setItemPenWidth(10);
    item.setItemArrows(0x51);
    item.setItemLength(20);
    item.setPos(1234.5678, -0.1);
    item.setItemRotation(degrees);
    item.setItemHorizontalMirror(mirrored);
}

bool isInSamePlace(const LineItem &a, const LineItem &b)
{
    return areNear(a.pos(), b.pos()) && areNear(a.getItemPoint1(), b.getItemPoint1())
        && areNear(a.getItemPoint2(), b.getItemPoint2());
}

void addPlaces()
{
    QTest::addColumn<double>("degrees");
    QTest::addColumn<bool>("mirrored");

    for (const double degrees : { 0.0, 30.0, 45.0, 90.0, 180.0, 271.3, 359.9 }) {
        QTest::addRow("%g degrees", degrees) << degrees << false;
        QTest::addRow("%g degrees, mirrored", degrees) << degrees << true;
    }
}

/// Paints the line within a second and returns whether its bounds are finite.
bool isHarmless(LineItem &item)
{
    QElapsedTimer timer;
    timer.start();
    item.setVisible(true);
    const QRectF bounds = Scenes::boundsAfterPainting(item);
    Images::painted(item, { 50, 50 }, QStyle::State_Selected);
    return isFinite(bounds) && isFinite(item.boundingRect()) && timer.elapsed() < 1000;
}

} // namespace

class tst_LinePersistence : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    // Records
    void newLineWritesItsRecord_data();
    void newLineWritesItsRecord();
    void changedLineWritesItsRecord();
    void recordsOfAnyFormAreRead_data();
    void recordsOfAnyFormAreRead();
    void changedRecordIsReadWhole();
    void version5HasNoMirrorsAndNoOverprint();
    void lengthCountsAndNotTheSize();
    void lastPositionCounts();
    void verticalMirrorIsNotKept();
    void recordReplacesALineOfAnotherKind();
    void placesSurviveTheRecord_data();
    void placesSurviveTheRecord();

    // Damaged records
    void cutRecordLeavesUnreadValuesAtZero();
    void cutLinesArePaintedWithoutHarm();
    void anyNumberInARecordIsHarmless_data();
    void anyNumberInARecordIsHarmless();
    void anyArrowsInARecordAreHarmless_data();
    void anyArrowsInARecordAreHarmless();

    // Property maps
    void mapHoldsTheProperties();
    void mapRestoresTheLine();
    void placesSurviveTheMap_data();
    void placesSurviveTheMap();
    void mapWithoutArrowsAndLengthKeepsThem();
    void mapAppliesArrowsAndLengthEachAlone();
    void mapAcceptsOtherKindsOfNumbers();
    void mapLimitsTheLength();
    void emptyMapMovesToThePendingPosition();
};

// Records

void tst_LinePersistence::newLineWritesItsRecord_data()
{
    QTest::addColumn<Form>("form");
    QTest::addColumn<QByteArray>("record");

    QTest::newRow("big-endian") << Form::BigEndian << fromHexText(newLine);
    QTest::newRow("little-endian") << Form::LittleEndian << fromHexText(newLineLittleEndian);
    QTest::newRow("single precision") << Form::SinglePrecision << fromHexText(newLineSinglePrecision);
}

void tst_LinePersistence::newLineWritesItsRecord()
{
    QFETCH(const Form, form);
    QFETCH(const QByteArray, record);
    LineItem item;
    QCOMPARE(toHexText(saved(item, form)), toHexText(record));
    QCOMPARE(fromHexText(newLine).size(), recordSize);
}

void tst_LinePersistence::changedLineWritesItsRecord()
{
    LineItem item;
    change(item);
    QCOMPARE(toHexText(saved(item)), toHexText(fromHexText(changedLine)));
}

void tst_LinePersistence::recordsOfAnyFormAreRead_data()
{
    QTest::addColumn<Form>("form");

    QTest::newRow("big-endian") << Form::BigEndian;
    QTest::newRow("little-endian") << Form::LittleEndian;
    QTest::newRow("single precision") << Form::SinglePrecision;
}

void tst_LinePersistence::recordsOfAnyFormAreRead()
{
    // Every number of a changed line is exact in single precision too.
    QFETCH(const Form, form);
    LineItem source;
    change(source);
    const QByteArray record = saved(source, form);
    LineItem loaded;
    const Reading reading = load(loaded, record, RectangleRecords::presentVersion, form);
    QCOMPARE(reading.status, QDataStream::Ok);
    QCOMPARE(reading.consumed, record.size());
    QCOMPARE(toHexText(saved(loaded)), toHexText(fromHexText(changedLine)));
}

void tst_LinePersistence::changedRecordIsReadWhole()
{
    LineItem item;
    const Reading reading = load(item, fromHexText(changedLine));
    QCOMPARE(reading.status, QDataStream::Ok);
    QCOMPARE(reading.consumed, 227);
    QCOMPARE(item.itemId(), short(-300));
    QCOMPARE(item.itemFlags(), 0xF00F0069U);
    QVERIFY(item.getItemHorizontalMirror());
    QVERIFY(!item.getAllowOverprint());
    QCOMPARE(item.zValue(), -2.5);
    QCOMPARE(item.itemQFlags(), 0x107U);
    QVERIFY(!item.isVisible());
    QCOMPARE(item.getItemRotation(), 30.5);
    QCOMPARE(item.getItemScaleX(), 2.5);
    QCOMPARE(item.getItemScaleY(), 0.25);
    QCOMPARE(item.transform(), RectangleRecords::changedTransform());
    QCOMPARE(item.pos(), QPointF(-123.5, 4096.125));
    QCOMPARE(item.getDatasourceId(), 70000);
    QCOMPARE(item.getDatasourceField(), RectangleRecords::changedField());
    QCOMPARE(item.getItemPenColor(), RectangleRecords::changedPenColor());
    QCOMPARE(item.getItemPenWidth(), ushort(7));
    QCOMPARE(item.getItemPen().widthF(), 7.0);
    QCOMPARE(item.getItemPen().style(), Qt::DashDotLine);
    QCOMPARE(item.getItemPen().color(), RectangleRecords::changedPenColor());
    QCOMPARE(item.line(), QLineF(0, 0, 250.25, 0));
    QCOMPARE(item.getItemSize(), QSizeF(250.25, 0));
    QCOMPARE(item.getItemArrows(), ushort(0x53));
    // Half a pen to the sides, 2.82 pens up and down, and 5 more.
    QVERIFY(areNear(item.boundingRect().topLeft(), { -8.5, -24.74 }));
    QVERIFY(areNear(item.boundingRect().bottomRight(), { 258.75, 24.74 }));
    QCOMPARE(toHexText(saved(item)), toHexText(fromHexText(changedLine)));
}

void tst_LinePersistence::version5HasNoMirrorsAndNoOverprint()
{
    LineItem item;
    item.setItemHorizontalMirror(true);
    item.setAllowOverprint(false);
    const Reading reading = load(item, RectangleRecords::withoutMirrors(changedLine), 5);
    QCOMPARE(reading.status, QDataStream::Ok);
    QCOMPARE(reading.consumed, 224);
    QVERIFY(!item.getItemHorizontalMirror());
    QVERIFY(!item.getAllowOverprint());
    QCOMPARE(item.getItemLength(), 250.25);
    QCOMPARE(item.getItemArrows(), ushort(0x53));
    QCOMPARE(item.transform(), RectangleRecords::changedTransform());
    QCOMPARE(item.pos(), QPointF(-123.5, 4096.125));

    LineItem other;
    QCOMPARE(load(other, RectangleRecords::withoutMirrors(newLine), 5).consumed, recordSize - 3);
    QVERIFY(other.getAllowOverprint());
    QCOMPARE(toHexText(saved(other)), toHexText(fromHexText(newLine)));
}

void tst_LinePersistence::lengthCountsAndNotTheSize()
{
    LineItem item;
    QByteArray record = patched(newLine, ItemOffset::width, 77.0);
    record = patched(record.toHex().constData(), ItemOffset::height, 33.0);
    QCOMPARE(load(item, record).status, QDataStream::Ok);
    QCOMPARE(item.line(), QLineF(0, 0, 100, 0));
    QCOMPARE(item.getItemSize(), QSizeF(100, 0));

    LineItem other;
    load(other, patched(newLine, Offset::length, 0.25));
    QCOMPARE(other.line(), QLineF(0, 0, 1, 0));
    QCOMPARE(other.getItemSize(), QSizeF(1, 0));
}

void tst_LinePersistence::lastPositionCounts()
{
    LineItem item;
    QByteArray record = patched(newLine, ItemOffset::y, 33.0);
    record = patched(record.toHex().constData(), Offset::x, -4.5);
    record = patched(record.toHex().constData(), Offset::y, 12.25);
    QCOMPARE(load(item, record).status, QDataStream::Ok);
    QCOMPARE(item.pos(), QPointF(-4.5, 12.25));
}

void tst_LinePersistence::verticalMirrorIsNotKept()
{
    LineItem item;
    QCOMPARE(load(item, patched(newLine, ItemOffset::mirrors, "0001")).status, QDataStream::Ok);
    QVERIFY(!item.getItemVerticalMirror());
    QCOMPARE(toHexText(saved(item)), toHexText(fromHexText(newLine)));
}

void tst_LinePersistence::recordReplacesALineOfAnotherKind()
{
    LineItem item;
    change(item);
    QCOMPARE(load(item, fromHexText(newLine)).status, QDataStream::Ok);
    QCOMPARE(toHexText(saved(item)), toHexText(fromHexText(newLine)));
    QCOMPARE(item.boundingRect(), QRectF(-5.5, -5.5, 111, 11));
    QCOMPARE(item.getItemPen().widthF(), 1.0);
    QCOMPARE(item.getItemPen().style(), Qt::SolidLine);
}

void tst_LinePersistence::placesSurviveTheRecord_data()
{
    addPlaces();
}

void tst_LinePersistence::placesSurviveTheRecord()
{
    QFETCH(const double, degrees);
    QFETCH(const bool, mirrored);
    LineItem source;
    place(source, degrees, mirrored);
    const QByteArray record = saved(source);
    for (const bool used : { false, true }) {
        LineItem loaded;
        if (used)
            change(loaded);
        QCOMPARE(load(loaded, record).status, QDataStream::Ok);
        QVERIFY(isInSamePlace(loaded, source));
        QCOMPARE(loaded.getItemRotation(), degrees);
        QCOMPARE(loaded.getItemHorizontalMirror(), mirrored);
        QCOMPARE(loaded.boundingRect(), source.boundingRect());
        QCOMPARE(toHexText(saved(loaded)), toHexText(record));
    }
}

// Damaged records

void tst_LinePersistence::cutRecordLeavesUnreadValuesAtZero()
{
    // The line's own part; what comes before is that of every item with a pen.
    QByteArray record = patched(newLine, Offset::length, 250.25);
    record = patched(record.toHex().constData(), Offset::arrows, "0053");
    record = patched(record.toHex().constData(), Offset::x, -4.5);
    record = patched(record.toHex().constData(), Offset::y, 12.25);
    for (int cut = 0; cut <= record.size(); ++cut) {
        LineItem item;
        const Reading reading = load(item, record.left(cut));
        QCOMPARE(reading.status, cut == recordSize ? QDataStream::Ok : QDataStream::ReadPastEnd);
        QCOMPARE(reading.consumed, cut);
        // No line is shorter than 1.
        QCOMPARE(item.getItemLength(), cut < Offset::arrows ? 1.0 : 250.25);
        QCOMPARE(item.getItemSize(), QSizeF(item.getItemLength(), 0));
        QCOMPARE(item.getItemArrows(), cut < Offset::x ? ushort(0) : ushort(0x53));
        QCOMPARE(item.x(), cut < Offset::y ? 0.0 : -4.5);
        QCOMPARE(item.y(), cut < recordSize ? 0.0 : 12.25);
    }
}

void tst_LinePersistence::cutLinesArePaintedWithoutHarm()
{
    for (const char *text : { newLine, changedLine }) {
        const QByteArray record = fromHexText(text);
        for (const unsigned int version : { 5U, 6U }) {
            for (int cut = 0; cut < record.size() - 3; ++cut) {
                LineItem item;
                QVERIFY(load(item, record.left(cut), version).status != QDataStream::Ok);
                QVERIFY(isHarmless(item));
            }
        }
    }
}

void tst_LinePersistence::anyNumberInARecordIsHarmless_data()
{
    QTest::addColumn<int>("offset");
    QTest::addColumn<double>("value");

    for (const auto &[name, value] : oddNumbers) {
        QTest::addRow("length %s", name) << Offset::length << value;
        QTest::addRow("x %s", name) << Offset::x << value;
        QTest::addRow("y %s", name) << Offset::y << value;
        for (int offset = ItemOffset::rotation; offset <= ItemOffset::y; offset += 8)
            QTest::addRow("at %d %s", offset, name) << offset << value;
    }
}

void tst_LinePersistence::anyNumberInARecordIsHarmless()
{
    QFETCH(const int, offset);
    QFETCH(const double, value);
    for (const char *arrows : { "0000", "0053", "FFFF" }) {
        for (const char *penStyle : { "00000001", "00000003" }) {
            QByteArray record = patched(newLine, offset, value);
            record = patched(record.toHex().constData(), Offset::arrows, arrows);
            record = patched(record.toHex().constData(), ItemOffset::penStyle, penStyle);
            LineItem item;
            QCOMPARE(load(item, record).status, QDataStream::Ok);
            QVERIFY(item.getItemLength() >= 1.0);
            QVERIFY(isHarmless(item));
            // Everything else still works on it.
            item.setItemHorizontalMirror(true);
            item.setItemPoint1({ 3, 4 });
            QVERIFY(isHarmless(item));
        }
    }
}

void tst_LinePersistence::anyArrowsInARecordAreHarmless_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<int>("arrows");

    QTest::newRow("all bits") << "FFFF"_ba << 0xFFFF;
    QTest::newRow("sign alone") << "8000"_ba << 0x8000;
    QTest::newRow("bits of both ends") << "00FF"_ba << 0x00FF;
    QTest::newRow("bits of no end") << "FF00"_ba << 0xFF00;
}

void tst_LinePersistence::anyArrowsInARecordAreHarmless()
{
    QFETCH(const QByteArray, bytes);
    QFETCH(const int, arrows);
    LineItem item;
    const QByteArray record = patched(newLine, Offset::arrows, bytes.constData());
    QCOMPARE(load(item, record).status, QDataStream::Ok);
    QCOMPARE(item.getItemArrows(), ushort(arrows));
    QCOMPARE(toHexText(saved(item)), toHexText(record));
    QVERIFY(isHarmless(item));
}

// Property maps

void tst_LinePersistence::mapHoldsTheProperties()
{
    LineItem item;
    item.setItemId(-7);
    item.setItemLength(40);
    item.setItemArrows(0x53);
    item.setItemPenColor(QColor(0x12, 0xAB, 0xEF, 0x80));
    item.setPos(3, 4);
    item.setZValue(1.5);
    item.setDatasourceId(9);
    item.setDatasourceField(u"Name"_s);
    const QVariantList identity { 1.0, 0.0, 0.0, 0.0, 1.0, 0.0, 0.0, 0.0 };
    const QVariantMap expected { { u"itemShape"_s, 0x1001FU },
        { u"itemId"_s, QVariant::fromValue<short>(-7) }, { u"itemFlags"_s, 0x01U },
        { u"itemQFlags"_s, 0x10FU }, { u"itemZValue"_s, 1.5 }, { u"itemRotation"_s, 0.0 },
        { u"itemHorizontalMirror"_s, 0.0 }, { u"itemVerticalMirror"_s, 0.0 }, { u"itemWidth"_s, 40.0 },
        { u"itemHeight"_s, 0.0 }, { u"itemScaleX"_s, 1.0 }, { u"itemScaleY"_s, 1.0 },
        { u"itemTransform"_s, identity }, { u"allowOverprint"_s, true }, { u"itemDatasourceId"_s, 9 },
        { u"itemDatasourceField"_s, u"Name"_s }, { u"itemPenWidth"_s, QVariant::fromValue<ushort>(1) },
        { u"itemPenStyle"_s, QVariant::fromValue<ushort>(1) },
        { u"itemPenCapStyle"_s, QVariant::fromValue<ushort>(0x20) },
        { u"itemPenJoinStyle"_s, QVariant::fromValue<ushort>(0x80) }, { u"itemPenColor"_s, u"#12abef"_s },
        { u"itemArrows"_s, QVariant::fromValue<ushort>(0x53) }, { u"itemLength"_s, 40.0 },
        { u"itemPositionX"_s, 3.0 }, { u"itemPositionY"_s, 4.0 } };

    const QVariantMap map = item.saveItemToJSON();
    QCOMPARE(map.keys(), expected.keys());
    for (const QString &key : expected.keys()) {
        QCOMPARE(map.value(key).typeName(), expected.value(key).typeName());
        QCOMPARE(map.value(key), expected.value(key));
    }
}

void tst_LinePersistence::mapRestoresTheLine()
{
    LineItem source;
    change(source);
    source.setItemPenColor(QColor(1, 2, 3)); // a map holds no alpha
    source.setTransform(QTransform(1.5, 0.25, -0.5, 2, 12.75, -7.5)); // no ninth number
    source.setItemIsVisible(true); // and no visibility
    LineItem loaded;
    loaded.loadItemFromJSON(source.saveItemToJSON(), RectangleRecords::presentVersion);
    QCOMPARE(loaded.saveItemToJSON(), source.saveItemToJSON());
    QCOMPARE(toHexText(saved(loaded)), toHexText(saved(source)));
    QCOMPARE(loaded.getItemPen(), source.getItemPen());
    QCOMPARE(loaded.line(), source.line());
    QCOMPARE(loaded.boundingRect(), source.boundingRect());
}

void tst_LinePersistence::placesSurviveTheMap_data()
{
    addPlaces();
}

void tst_LinePersistence::placesSurviveTheMap()
{
    QFETCH(const double, degrees);
    QFETCH(const bool, mirrored);
    LineItem source;
    place(source, degrees, mirrored);
    for (const bool used : { false, true }) {
        LineItem loaded;
        if (used)
            change(loaded);
        loaded.loadItemFromJSON(source.saveItemToJSON(), RectangleRecords::presentVersion);
        QVERIFY(isInSamePlace(loaded, source));
        QCOMPARE(loaded.getItemHorizontalMirror(), mirrored);
        QCOMPARE(loaded.boundingRect(), source.boundingRect());
        QVERIFY(isNear(loaded.getItemRotation(), degrees));
    }
}

void tst_LinePersistence::mapWithoutArrowsAndLengthKeepsThem()
{
    LineItem item;
    item.setItemArrows(0x53);
    item.setItemLength(40);
    item.loadItemFromJSON({ { u"itemId"_s, 9 }, { u"itemPenWidth"_s, 4 } }, RectangleRecords::presentVersion);
    QCOMPARE(item.itemId(), short(9));
    QCOMPARE(item.getItemArrows(), ushort(0x53));
    QCOMPARE(item.getItemLength(), 40.0);
    QCOMPARE(item.getItemPen().widthF(), 4.0);
}

void tst_LinePersistence::mapAppliesArrowsAndLengthEachAlone()
{
    LineItem item;
    item.loadItemFromJSON({ { u"itemArrows"_s, 0x88 } }, RectangleRecords::presentVersion);
    QCOMPARE(item.getItemArrows(), ushort(0x88));
    QCOMPARE(item.getItemLength(), 100.0);
    QCOMPARE(item.boundingRect(), QRectF(-5.5, -7.5, 111, 15));
    item.loadItemFromJSON({ { u"itemLength"_s, 40.0 } }, RectangleRecords::presentVersion);
    QCOMPARE(item.getItemArrows(), ushort(0x88));
    QCOMPARE(item.getItemLength(), 40.0);
    QCOMPARE(item.getItemSize(), QSizeF(40, 0));
    QCOMPARE(item.boundingRect(), QRectF(-5.5, -7.5, 51, 15));
}

void tst_LinePersistence::mapAcceptsOtherKindsOfNumbers()
{
    // As parsed from text, where every number is a double, or written by hand.
    LineItem item;
    item.loadItemFromJSON(
        { { u"itemArrows"_s, 83.0 }, { u"itemLength"_s, 40 } }, RectangleRecords::presentVersion);
    QCOMPARE(item.getItemArrows(), ushort(0x53));
    QCOMPARE(item.getItemLength(), 40.0);
    item.loadItemFromJSON(
        { { u"itemArrows"_s, u"17"_s }, { u"itemLength"_s, u"12.5"_s } }, RectangleRecords::presentVersion);
    QCOMPARE(item.getItemArrows(), ushort(0x11));
    QCOMPARE(item.getItemLength(), 12.5);
}

void tst_LinePersistence::mapLimitsTheLength()
{
    for (const double length : { 0.0, -5.0, 0.5, notANumber }) {
        LineItem item;
        item.loadItemFromJSON({ { u"itemLength"_s, length } }, RectangleRecords::presentVersion);
        QCOMPARE(item.getItemLength(), 1.0);
        QCOMPARE(item.getItemSize(), QSizeF(1, 0));
    }
    LineItem item;
    item.loadItemFromJSON(
        { { u"itemArrows"_s, 0xFFFF }, { u"itemLength"_s, 1e308 } }, RectangleRecords::presentVersion);
    QCOMPARE(item.getItemArrows(), ushort(0xFFFF));
    QVERIFY(isHarmless(item));
}

void tst_LinePersistence::emptyMapMovesToThePendingPosition()
{
    LineItem item;
    item.setItemPositionX(7);
    item.setPos(11, 22);
    item.loadItemFromJSON({}, RectangleRecords::presentVersion);
    QCOMPARE(item.pos(), QPointF(7, 0));
    QCOMPARE(item.getItemLength(), 100.0);
}

QTEST_MAIN(tst_LinePersistence)
#include "tst_linepersistence.moc"
