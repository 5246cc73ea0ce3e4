// SPDX-License-Identifier: BSD-3-Clause
#include "items/shapes/rectangleitem.h"
#include "tests/support/oddnumbers.h"
#include "tests/support/rectanglerecords.h"
#include "tests/support/scenes.h"

#include <QRegularExpression>
#include <QTest>

#include <cmath>

using namespace Qt::StringLiterals;
using namespace RectangleRecords;

class tst_ItemRecordHostile : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

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
};

// Versions

void tst_ItemRecordHostile::readersBeforeVersion6SkipMirrorsAndOverprint_data()
{
    QTest::addColumn<uint>("version");
    QTest::addColumn<bool>("overprint");

    QTest::newRow("0, overprint") << 0U << true;
    QTest::newRow("4, no overprint") << 4U << false;
    QTest::newRow("5, overprint") << 5U << true;
    QTest::newRow("5, no overprint") << 5U << false;
}

void tst_ItemRecordHostile::readersBeforeVersion6SkipMirrorsAndOverprint()
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

void tst_ItemRecordHostile::readersSinceVersion6ReadMirrorsAndOverprint_data()
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

void tst_ItemRecordHostile::readersSinceVersion6ReadMirrorsAndOverprint()
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

void tst_ItemRecordHostile::readerOfVersion5ConsumesThreeBytesLess()
{
    RectangleItem rectangle;
    QCOMPARE(load(rectangle, fromHexText(newRectangle), 5).consumed, 193);
    QCOMPARE(load(rectangle, withoutMirrors(newRectangle), 5).consumed, 193);
    QCOMPARE(toHexText(saved(rectangle)), toHexText(fromHexText(newRectangle)));
}

// Damaged records

void tst_ItemRecordHostile::cutRecordLeavesUnreadValuesAtZero()
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

void tst_ItemRecordHostile::cutRectangleIsPaintedWithoutHarm()
{
    for (const char *text : { newRectangle, changedRectangle }) {
        const QByteArray record = fromHexText(text);
        for (int cut = 0; cut < record.size(); ++cut) {
            RectangleItem rectangle;
            QVERIFY(load(rectangle, record.left(cut)).status != QDataStream::Ok);
            rectangle.setVisible(true);
            QVERIFY(isFinite(Scenes::boundsAfterPainting(rectangle)));
        }
    }
}

void tst_ItemRecordHostile::hostileStringLengthIsAnError_data()
{
    QTest::addColumn<QByteArray>("length");

    QTest::newRow("odd") << "00000003"_ba;
    QTest::newRow("more than there is") << "00000100"_ba;
    QTest::newRow("2 GiB") << "7ffffffe"_ba;
    QTest::newRow("2 GiB, odd") << "7fffffff"_ba;
    QTest::newRow("4 GiB") << "fffffffe"_ba;
}

void tst_ItemRecordHostile::hostileStringLengthIsAnError()
{
    QFETCH(QByteArray, length);
    RectangleItem rectangle;
    const Reading reading = load(rectangle, patched(newRectangle, Offset::datasourceField, length));
    QVERIFY(reading.status != QDataStream::Ok);
    QVERIFY(rectangle.getDatasourceField().isEmpty());
}

void tst_ItemRecordHostile::anyNumberInARecordIsHarmless_data()
{
    QTest::addColumn<int>("offset");
    QTest::addColumn<double>("value");

    for (const auto &[name, value] : oddNumbers) {
        QTest::addRow("z value %s", name) << Offset::zValue << value;
        for (int offset = Offset::rotation; offset <= Offset::y; offset += 8)
            QTest::addRow("at %d %s", offset, name) << offset << value;
    }
}

void tst_ItemRecordHostile::anyNumberInARecordIsHarmless()
{
    QFETCH(int, offset);
    QFETCH(double, value);
    RectangleItem rectangle;
    QCOMPARE(load(rectangle, patched(newRectangle, offset, value)).status, QDataStream::Ok);
    QVERIFY(!std::isnan(rectangle.zValue()));
    QVERIFY(isFinite(Scenes::boundsAfterPainting(rectangle)));
}

void tst_ItemRecordHostile::sizeAndRotationInARecordAreStoredAsTheyAre_data()
{
    QTest::addColumn<double>("value");

    for (const auto &[name, value] : oddNumbers)
        QTest::newRow(name) << value;
}

void tst_ItemRecordHostile::sizeAndRotationInARecordAreStoredAsTheyAre()
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

QTEST_MAIN(tst_ItemRecordHostile)
#include "tst_itemrecordhostile.moc"
