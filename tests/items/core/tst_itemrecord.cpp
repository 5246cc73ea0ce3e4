// SPDX-License-Identifier: BSD-3-Clause
#include "items/shapes/rectangleitem.h"
#include "items/style/coloreditem.h"
#include "items/style/contoureditem.h"
#include "tests/support/oddnumbers.h"
#include "tests/support/rectanglerecords.h"
#include "tests/support/scenes.h"

#include <QRegularExpression>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace RectangleRecords;

namespace {

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

/// Numbers that are no style, join or cap, in and out of what their enumerations can hold.
QByteArrayList unknownNumbers()
{
    return { "00000007"_ba, "000000ff"_ba, "000001c0"_ba, "7fffffff"_ba, "80000000"_ba, "ffffffff"_ba };
}

void addUnknownNumbers()
{
    QTest::addColumn<QByteArray>("bytes");

    for (const QByteArray &number : unknownNumbers())
        QTest::newRow(number.constData()) << number;
}

} // namespace

class tst_ItemRecord : public QObject
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
    void penStylesThatNobodyKnowsPaintNoOutline_data();
    void penStylesThatNobodyKnowsPaintNoOutline();
    void joinsThatNobodyKnowsAreRound_data();
    void joinsThatNobodyKnowsAreRound();
    void capsThatNobodyKnowsAreFlat_data();
    void capsThatNobodyKnowsAreFlat();
};

// Writing

void tst_ItemRecord::newRectangleWritesItsRecord()
{
    RectangleItem rectangle;
    const QByteArray record = saved(rectangle);
    QCOMPARE(toHexText(record), toHexText(fromHexText(newRectangle)));
    QCOMPARE(record.size(), 196);
}

void tst_ItemRecord::changedRectangleWritesItsRecord()
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

void tst_ItemRecord::recordFollowsTheFormOfTheStream_data()
{
    QTest::addColumn<Form>("form");
    QTest::addColumn<QByteArray>("record");
    QTest::addColumn<int>("size");

    QTest::newRow("little endian") << Form::LittleEndian << fromHexText(newRectangleLittleEndian) << 196;
    QTest::newRow("single precision")
        << Form::SinglePrecision << fromHexText(newRectangleSinglePrecision) << 128;
}

void tst_ItemRecord::recordFollowsTheFormOfTheStream()
{
    QFETCH(Form, form);
    QFETCH(QByteArray, record);
    RectangleItem rectangle;
    QCOMPARE(toHexText(saved(rectangle, form)), toHexText(record));
    QTEST(int(record.size()), "size");
}

void tst_ItemRecord::everyBaseWritesItsPartAfterItsOwnBase()
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

void tst_ItemRecord::streamKeepsItsForm()
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

void tst_ItemRecord::changedRecordIsRead()
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

void tst_ItemRecord::everyFieldIsWrittenBackAsItWasRead()
{
    FilledSample sample;
    const QByteArray record = fromHexText(changedRectangle);
    QCOMPARE(load(sample, record).status, QDataStream::Ok);
    QCOMPARE(sample.getItemScaleX(), 2.5);
    QCOMPARE(sample.getItemScaleY(), 0.25);
    QCOMPARE(toHexText(saved(sample)), toHexText(record));
}

void tst_ItemRecord::rectangleRecordComesBackWithScalesOfOne()
{
    RectangleItem rectangle;
    load(rectangle, fromHexText(changedRectangle));
    QCOMPARE(rectangle.getItemScaleX(), 1.0);
    QCOMPARE(rectangle.getItemScaleY(), 1.0);
    QCOMPARE(toHexText(saved(rectangle)),
        toHexText(patched(changedRectangle, Offset::scales, "3FF0000000000000 3FF0000000000000")));
}

void tst_ItemRecord::everyFieldIsOverwritten_data()
{
    QTest::addColumn<Form>("form");
    QTest::addColumn<QByteArray>("record");

    QTest::newRow("big endian") << Form::BigEndian << fromHexText(newRectangle);
    QTest::newRow("little endian") << Form::LittleEndian << fromHexText(newRectangleLittleEndian);
    QTest::newRow("single precision") << Form::SinglePrecision << fromHexText(newRectangleSinglePrecision);
}

void tst_ItemRecord::everyFieldIsOverwritten()
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

void tst_ItemRecord::recordsFollowEachOther()
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

void tst_ItemRecord::onlyMirrorsAndStylesGoThroughTheirSetters()
{
    ObservedItem item;
    item.calls.clear();
    load(item, fromHexText(changedRectangle));
    const QStringList expected = { u"horizontal mirror"_s, u"vertical mirror"_s, u"pen width"_s,
        u"pen style"_s, u"cap style"_s, u"join style"_s, u"fill colour over brush -1"_s };
    QCOMPARE(item.calls, expected);
}

void tst_ItemRecord::penIsUpdatedAfterItsValues()
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

void tst_ItemRecord::rotationIsStoredAsRead()
{
    FilledSample sample;
    load(sample, patched(newRectangle, Offset::rotation, 725.5));
    QCOMPARE(sample.getItemRotation(), 725.5);
    QVERIFY(sample.transform().isIdentity());
    QCOMPARE(sample.pos(), QPointF(0, 0));
}

void tst_ItemRecord::parkedBindingFollowsTheRecord()
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

void tst_ItemRecord::rectangleIsLaidOutAfterLoading()
{
    RectangleItem rectangle;
    load(rectangle, fromHexText(changedRectangle));
    // 250.25 × 40.5 with a pen of 7
    QCOMPARE(rectangle.rect(), QRectF(3.5, 3.5, 243.25, 33.5));
    QCOMPARE(rectangle.boundingRect(), QRectF(0, 0, 250.25, 40.5));
    QCOMPARE(rectangle.getItemPen().color(), changedPenColor());
}

void tst_ItemRecord::brushIsRebuiltEvenIfTheFillStays()
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

void tst_ItemRecord::brushStyleIsSignExtended_data()
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

void tst_ItemRecord::brushStyleIsSignExtended()
{
    QFETCH(QByteArray, bytes);
    RectangleItem rectangle;
    load(rectangle, patched(newRectangle, Offset::brushStyle, bytes));
    QTEST(int(rectangle.getItemBrushStyle()), "style");
    QCOMPARE(saved(rectangle).mid(Offset::brushStyle, 2).toHex(), bytes);
}

void tst_ItemRecord::gradientFlagFollowsTheLoadedBrush()
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

void tst_ItemRecord::penValuesAreLimitedLikeThoseOfTheSetters()
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

void tst_ItemRecord::stylesThatNobodyKnowsArePaintedWithoutHarm_data()
{
    QTest::addColumn<int>("offset");
    QTest::addColumn<QByteArray>("bytes");

    for (const QByteArray &number : unknownNumbers()) {
        QTest::addRow("pen style %s", number.constData()) << Offset::penStyle << number;
        QTest::addRow("join style %s", number.constData()) << Offset::joinStyle << number;
    }
}

void tst_ItemRecord::stylesThatNobodyKnowsArePaintedWithoutHarm()
{
    QFETCH(int, offset);
    QFETCH(QByteArray, bytes);
    RectangleItem rectangle;
    QCOMPARE(load(rectangle, patched(newRectangle, offset, bytes)).status, QDataStream::Ok);
    QVERIFY(isFinite(Scenes::boundsAfterPainting(rectangle)));
    QCOMPARE(saved(rectangle).mid(offset, 4).toHex(), bytes);
}

void tst_ItemRecord::penStylesThatNobodyKnowsPaintNoOutline_data()
{
    addUnknownNumbers();
}

void tst_ItemRecord::penStylesThatNobodyKnowsPaintNoOutline()
{
    QFETCH(const QByteArray, bytes);
    RectangleItem rectangle;
    QCOMPARE(load(rectangle, patched(newRectangle, Offset::penStyle, bytes)).status, QDataStream::Ok);
    QCOMPARE(rectangle.getItemPen().style(), Qt::NoPen);
    QCOMPARE(rectangle.rect(), QRectF(0, 0, 100, 100));
}

void tst_ItemRecord::joinsThatNobodyKnowsAreRound_data()
{
    addUnknownNumbers();
}

void tst_ItemRecord::joinsThatNobodyKnowsAreRound()
{
    QFETCH(const QByteArray, bytes);
    RectangleItem rectangle;
    QCOMPARE(load(rectangle, patched(newRectangle, Offset::joinStyle, bytes)).status, QDataStream::Ok);
    QCOMPARE(rectangle.getItemPen().joinStyle(), Qt::RoundJoin);
}

void tst_ItemRecord::capsThatNobodyKnowsAreFlat_data()
{
    addUnknownNumbers();
}

void tst_ItemRecord::capsThatNobodyKnowsAreFlat()
{
    QFETCH(const QByteArray, bytes);
    RectangleItem rectangle;
    QCOMPARE(load(rectangle, patched(newRectangle, Offset::capStyle, bytes)).status, QDataStream::Ok);
    QCOMPARE(rectangle.getItemPenCapStyle(), Qt::FlatCap);
    QCOMPARE(rectangle.getItemPen().capStyle(), Qt::FlatCap);
    QCOMPARE(saved(rectangle).mid(Offset::capStyle, 4).toHex(), QByteArray("00000000"));
}

QTEST_MAIN(tst_ItemRecord)
#include "tst_itemrecord.moc"
