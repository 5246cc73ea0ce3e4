// SPDX-License-Identifier: BSD-3-Clause
#include "items/barcode/barcodeitem.h"
#include "tests/support/encodercalls.h"
#include "tests/support/hexbytes.h"
#include "tests/support/images.h"
#include "tests/support/itemrecords.h"
#include "tests/support/rectanglerecords.h"
#include "tests/support/repaints.h"

#include <QRegularExpression>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

const QSize canvas(100, 100);
constexpr int commonBytes = 158; // with a null datasource field
constexpr int changedFieldBytes = 18;

/// The fields of all items, new ones, with the graphics-item flags of a barcode.
QByteArray newCommon()
{
    return RectangleRecords::newItem("00000001", "0000010F");
}

/// The fields of all items, each with another value.
QByteArray changedCommon()
{
    return fromHexText(RectangleRecords::changedRectangle).first(commonBytes + changedFieldBytes);
}

// 2 + (4 + 14) + 2 + 2 + 1 + 2 + 2 + (4 + 18) + 2 + 5 = 58 bytes before the common ones, 22 behind them.
const QByteArray newRecord = fromHexText("003A" // symbol 58: QR Code
                                         "0000000E" // text of 14 bytes:
                                         "0042003100320033003400350036" // "B123456"
                                         "0000" // second option
                                         "0000" // white space
                                         "00" // text shown
                                         "0000" // security level
                                         "0007" // font size
                                         "00000012" // font family of 18 bytes:
                                         "005F00460065006E0020004C006F006D0061" // "_Fen Loma"
                                         "0084" // alignment: centred in both directions
                                         "00" // text below
                                         "00" // not bold
                                         "00" // upright
                                         "00" // not underlined
                                         "00" // without start and stop
                                 )
    + newCommon()
    + fromHexText("00FFFF0000000000000000" // fill: invalid
                  "00FFFF0000000000000000"); // text colour: invalid

const QByteArray changedRecord = fromHexText("0008" // symbol 8: Code 39
                                             "0000000A" // text of 10 bytes:
                                             "0047007200F600DF0065" // "Größe"
                                             "0102" // second option 258
                                             "FFFD" // white space -3
                                             "01" // text hidden
                                             "0007" // security level 7
                                             "012C" // font size 300
                                             "00000008" // font family of 8 bytes:
                                             "004C006F006D0061" // "Loma"
                                             "0041" // alignment: left, bottom
                                             "01" // text above
                                             "00" // not bold
                                             "01" // italic
                                             "00" // not underlined
                                             "01" // with start and stop
                                     )
    + changedCommon()
    + fromHexText("0128280A0A14141E1E0000" // fill: RGB 10, 20, 30, alpha 40
                  "024D4D52088080C8C80000"); // text colour: HSV 210°, 128, 200, alpha 77

void compareWithChanged(const BarcodeItem &item)
{
    QCOMPARE(item.getBarcodeSymbol(), short(8));
    QCOMPARE(item.getBarcodeText(), u"Größe"_s);
    QCOMPARE(item.getBarcodeOption2(), 258);
    QCOMPARE(item.getBarcodeWhiteSpace(), -3);
    QCOMPARE(item.getBarcodeHideText(), true);
    QCOMPARE(item.getBarcodeSecurityLevel(), short(7));
    QCOMPARE(item.getItemFontSize(), 300);
    QCOMPARE(item.getItemFontFamily(), u"Loma"_s);
    QCOMPARE(item.getItemAlignmentInt(), 0x41U);
    QCOMPARE(item.getBarcodeTextAbove(), true);
    QCOMPARE(item.getItemBold(), false);
    QCOMPARE(item.getItemItalic(), true);
    QCOMPARE(item.getItemUnderline(), false);
    QCOMPARE(item.getBarcodeShowStartStop(), true);
    QCOMPARE(item.getItemFillColor(), QColor(10, 20, 30, 40));
    QCOMPARE(item.getItemTextColor(), QColor::fromHsv(210, 128, 200, 77));
    QCOMPARE(item.getItemSize(), QSizeF(250.25, 40.5));
    QCOMPARE(item.getItemDatasourceID(), 70000);
    QCOMPARE(item.getItemDatasourceField(), u"Größe €😀"_s);
}

QByteArray saved(BarcodeItem &item, QDataStream::ByteOrder order,
    QDataStream::FloatingPointPrecision precision = QDataStream::DoublePrecision)
{
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    stream.setByteOrder(order);
    stream.setFloatingPointPrecision(precision);
    item.saveItemToData(stream);
    return bytes;
}

} // namespace

/// The record of a barcode, byte by byte.
class tst_BarcodeRecord : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    void newBarcodeWritesItsRecord();
    void changedRecordIsReadAndWritten();
    void otherStreamsHaveTheSameFields();
    void oldRecordLacksThreeBytes();
    void everyFieldIsOverwritten();
    void heightBordersAndProportionsAreNotWritten();
    void markerAndOptionAreTakenAsTheyAre();
    void largeNumbersLoseTheirUpperBits();
    void loadingRepaintsAndEncodesLater();
    void cutRecordEndsInZeros();
    void cutRecordsAreDrawn();
    void damagedRecordsAreDrawn_data();
    void damagedRecordsAreDrawn();
};

void tst_BarcodeRecord::newBarcodeWritesItsRecord()
{
    QCOMPARE(newRecord.size(), 238);
    BarcodeItem item;
    QCOMPARE(toHexText(ItemRecords::saved(item)), toHexText(newRecord));
}

void tst_BarcodeRecord::changedRecordIsReadAndWritten()
{
    BarcodeItem item;
    QCOMPARE(ItemRecords::load(item, changedRecord), QDataStream::Ok);
    compareWithChanged(item);
    QCOMPARE(toHexText(ItemRecords::saved(item)), toHexText(changedRecord));
}

void tst_BarcodeRecord::otherStreamsHaveTheSameFields()
{
    BarcodeItem item;
    const QByteArray little = saved(item, QDataStream::LittleEndian);
    QCOMPARE(little.size(), 238);
    QCOMPARE(
        toHexText(little.first(20)), toHexText(fromHexText("3A00 0E000000 4200310032003300340035003600")));
    QCOMPARE(toHexText(little.sliced(20, 9)), toHexText(fromHexText("0000 0000 00 0000 0700")));
    // 17 numbers of the common fields take four bytes less.
    QCOMPARE(saved(item, QDataStream::BigEndian, QDataStream::SinglePrecision).size(), 238 - 17 * 4);

    QCOMPARE(ItemRecords::load(item, changedRecord), QDataStream::Ok);
    for (const auto precision : { QDataStream::DoublePrecision, QDataStream::SinglePrecision }) {
        QDataStream stream(saved(item, QDataStream::LittleEndian, precision));
        stream.setByteOrder(QDataStream::LittleEndian);
        stream.setFloatingPointPrecision(precision);
        BarcodeItem loaded;
        loaded.loadItemFromData(stream, ItemRecords::currentVersion);
        QVERIFY(stream.atEnd());
        QCOMPARE(stream.status(), QDataStream::Ok);
        compareWithChanged(loaded);
    }
}

void tst_BarcodeRecord::oldRecordLacksThreeBytes()
{
    constexpr int mirrors = 58 - 4 - 10 + 6; // a shorter text, a shorter family
    QByteArray old = changedRecord;
    const qsizetype common = old.indexOf(changedCommon());
    QCOMPARE(common, 44);
    QCOMPARE(mirrors, common + 6);
    old.remove(mirrors, 3);
    BarcodeItem item;
    QCOMPARE(ItemRecords::load(item, old, 5), QDataStream::Ok);
    compareWithChanged(item);
    QVERIFY(!item.getItemHorizontalMirror() && !item.getItemVerticalMirror());
    QVERIFY(item.getAllowOverprint());
}

void tst_BarcodeRecord::everyFieldIsOverwritten()
{
    BarcodeItem item;
    QCOMPARE(ItemRecords::load(item, changedRecord), QDataStream::Ok);
    QCOMPARE(ItemRecords::load(item, newRecord), QDataStream::Ok);
    QCOMPARE(toHexText(ItemRecords::saved(item)), toHexText(newRecord));
    const BarcodeItem fresh;
    QCOMPARE(item.getItemFillColor(), fresh.getItemFillColor());
    QCOMPARE(item.getItemTextColor(), fresh.getItemTextColor());
}

void tst_BarcodeRecord::heightBordersAndProportionsAreNotWritten()
{
    BarcodeItem item;
    item.setBarcodeHeight(20);
    item.setBarcodeAspectRatio(2);
    QCOMPARE(toHexText(ItemRecords::saved(item)), toHexText(newRecord));
    QCOMPARE(ItemRecords::load(item, newRecord), QDataStream::Ok);
    QCOMPARE(item.getBarcodeHeight(), 20);
    QCOMPARE(item.getBarcodeAspectRatioMode(), 2);
}

void tst_BarcodeRecord::markerAndOptionAreTakenAsTheyAre()
{
    const QString marked = u"A!!!###VXFUNCTIONDATASOURCE###!!!"_s;
    BarcodeItem item;
    item.importBarcodeProperties(58, marked, false, 132, 7, false, false, 9, 0, 0);
    BarcodeItem loaded;
    QCOMPARE(ItemRecords::load(loaded, ItemRecords::saved(item)), QDataStream::Ok);
    QCOMPARE(loaded.getBarcodeText(), marked);
    QCOMPARE(loaded.getBarcodeOption2(), 9);
}

void tst_BarcodeRecord::largeNumbersLoseTheirUpperBits()
{
    BarcodeItem item;
    item.setBarcodeWhiteSpace(0x12345);
    item.setItemFontSize(-1);
    item.setItemAlignmentInt(0x10084);
    BarcodeItem loaded;
    QCOMPARE(ItemRecords::load(loaded, ItemRecords::saved(item)), QDataStream::Ok);
    QCOMPARE(loaded.getBarcodeWhiteSpace(), 0x2345);
    QCOMPARE(loaded.getItemFontSize(), -1);
    QCOMPARE(loaded.getItemAlignmentInt(), 0x84U);
}

void tst_BarcodeRecord::loadingRepaintsAndEncodesLater()
{
    BarcodeItem item;
    Repaints repaints(item);
    item.setBarcodeText({});
    QVERIFY(!item.isValidInput());
    QVERIFY(repaints.wanted());
    const int before = EncoderCalls::encodings();
    QCOMPARE(ItemRecords::load(item, newRecord), QDataStream::Ok);
    QVERIFY(repaints.wanted());
    QCOMPARE(EncoderCalls::encodings(), before);
    QVERIFY(item.isValidInput());
    QCOMPARE(EncoderCalls::encodings(), before + 1);
}

void tst_BarcodeRecord::cutRecordEndsInZeros()
{
    const auto load = [](BarcodeItem &item, qsizetype length) {
        return ItemRecords::load(item, changedRecord.first(length));
    };
    BarcodeItem empty;
    QCOMPARE(load(empty, 0), QDataStream::ReadPastEnd);
    QCOMPARE(empty.getBarcodeSymbol(), short(0));
    QCOMPARE(empty.getBarcodeText(), QString());
    QCOMPARE(empty.getItemFontSize(), 0);
    QCOMPARE(empty.getItemFontFamily(), QString());
    QCOMPARE(empty.getItemAlignmentInt(), 0U);
    QCOMPARE(empty.getItemSize(), QSizeF(0, 0));
    QVERIFY(!empty.getItemFillColor().isValid());

    BarcodeItem withText; // and half of the second option
    QCOMPARE(load(withText, 2 + 14 + 1), QDataStream::ReadPastEnd);
    QCOMPARE(withText.getBarcodeSymbol(), short(8));
    QCOMPARE(withText.getBarcodeText(), u"Größe"_s);
    QCOMPARE(withText.getBarcodeOption2(), 0);
    QCOMPARE(withText.getBarcodeWhiteSpace(), 0);
    QCOMPARE(withText.getBarcodeHideText(), false);

    BarcodeItem withFill;
    QCOMPARE(load(withFill, changedRecord.size() - 11), QDataStream::ReadPastEnd);
    QCOMPARE(withFill.getItemFillColor(), QColor(10, 20, 30, 40));
    QVERIFY(!withFill.getItemTextColor().isValid());
    QCOMPARE(withFill.getItemDatasourceID(), 70000);
}

void tst_BarcodeRecord::cutRecordsAreDrawn()
{
    for (const QByteArray &record : { newRecord, changedRecord }) {
        for (qsizetype length = 0; length < record.size(); ++length) {
            BarcodeItem item;
            QCOMPARE(ItemRecords::load(item, record.first(length)), QDataStream::ReadPastEnd);
            Images::painted(item, canvas, QStyle::State_Selected);
            const QByteArray again = ItemRecords::saved(item);
            BarcodeItem loaded;
            QCOMPARE(ItemRecords::load(loaded, again), QDataStream::Ok);
            QCOMPARE(toHexText(ItemRecords::saved(loaded)), toHexText(again));
        }
    }
}

void tst_BarcodeRecord::damagedRecordsAreDrawn_data()
{
    QTest::addColumn<char>("damage");
    for (const int damage : { 0x00, 0x01, 0x7F, 0x80, 0xFF })
        QTest::addRow("%02x", damage) << static_cast<char>(damage);
}

void tst_BarcodeRecord::damagedRecordsAreDrawn()
{
    QFETCH(const char, damage);
    for (qsizetype at = 0; at < newRecord.size(); ++at) {
        QByteArray record = newRecord;
        record[at] = damage;
        BarcodeItem item;
        static_cast<void>(ItemRecords::load(item, record));
        Images::painted(item, canvas, QStyle::State_Selected);
        const QByteArray again = ItemRecords::saved(item);
        BarcodeItem loaded;
        QCOMPARE(ItemRecords::load(loaded, again), QDataStream::Ok);
        QCOMPARE(toHexText(ItemRecords::saved(loaded)), toHexText(again));
    }
}

QTEST_MAIN(tst_BarcodeRecord)
#include "tst_barcoderecord.moc"
