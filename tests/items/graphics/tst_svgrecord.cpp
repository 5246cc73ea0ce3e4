// SPDX-License-Identifier: BSD-3-Clause
#include "items/graphics/svgitem.h"
#include "tests/support/colours.h"
#include "tests/support/hexbytes.h"
#include "tests/support/images.h"
#include "tests/support/itemrecords.h"
#include "tests/support/rectanglerecords.h"
#include "tests/support/svgtexts.h"

#include <QRegularExpression>
#include <QTest>
#include <QtEndian>

using namespace Qt::StringLiterals;
using ItemRecords::load;
using ItemRecords::saved;

namespace {

const QByteArray newItem = RectangleRecords::newItem("00000003", "0000010F");

// 8 + 8 + 4 + 1 + 1 + 158 = 180 bytes
const QByteArray newRecord = fromHexText("0000000000000000" // old m31
                                         "0000000000000000" // old m32
                                         "FFFFFFFF" // contents: null
                                         "00" // valid
                                         "00") // without transparency
    + newItem;

/// A record with old coefficients of 3.5 and -2.
QByteArray recordOf(const QByteArray &contents, const char *flags)
{
    QByteArray length(4, '\0');
    qToBigEndian(quint32(contents.size()), length.data());
    return fromHexText("400C000000000000 C000000000000000") + length + contents + fromHexText(flags)
        + newItem;
}

QByteArray contentsOf(const SvgItem &item)
{
    return QByteArray::fromBase64(item.getSvgContents().toByteArray());
}

const QSize canvas(40, 20);

} // namespace

/// The record and the property map of an SVG item.
class tst_SvgRecord : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    void newItemWritesItsRecord();
    void changedRecordIsReadAndWritten();
    void invalidItemsStayInvalid();
    void acceptedDrawingsAreNotLookedAtAgain();
    void hostileRecordsShowNothing();
    void cutRecordsAreDrawn();
    void mapHoldsTheContentsInBase64();
    void mapOverAnotherItemReplacesIt();
    void copiesAreAlike();
    void copiesOfInvalidItemsAreInvalid();
    void copiesShowWhatWasSet();
    void linkedDrawingsOfMapsStay();
};

void tst_SvgRecord::newItemWritesItsRecord()
{
    QCOMPARE(newRecord.size(), 180);
    SvgItem item;
    QCOMPARE(toHexText(saved(item)), toHexText(newRecord));
}

void tst_SvgRecord::changedRecordIsReadAndWritten()
{
    const QByteArray record = recordOf(SvgTexts::redAndBlue, "00 01");
    SvgItem item;
    QCOMPARE(load(item, record), QDataStream::Ok);
    QCOMPARE(contentsOf(item), SvgTexts::redAndBlue);
    QVERIFY(!item.svgIsInvalid() && item.getImageHasTransparency());
    QCOMPARE(item.getOldTransformCoefficientM31(), 3.5);
    QCOMPARE(item.getOldTransformCoefficientM32(), -2.0);
    QCOMPARE(item.boundingRect(), QRectF(0, 0, 40, 20));
    QCOMPARE(item.getItemSize(), QSizeF(100, 100)); // as the record says
    const QImage image = Images::painted(item, canvas);
    QCOMPARE(image.pixel(10, 10), Colours::redPixel);
    QCOMPARE(image.pixel(30, 10), Colours::bluePixel);
    QCOMPARE(toHexText(saved(item)), toHexText(record));

    QCOMPARE(load(item, newRecord), QDataStream::Ok);
    QCOMPARE(toHexText(saved(item)), toHexText(newRecord));
    QCOMPARE(item.boundingRect(), QRectF());
}

void tst_SvgRecord::invalidItemsStayInvalid()
{
    SvgItem item;
    QCOMPARE(load(item, recordOf(SvgTexts::redAndBlue, "01 00")), QDataStream::Ok);
    QVERIFY(item.svgIsInvalid() && !item.getImageHasTransparency());
    QVERIFY(item.createItemImage(&item, 0xFFFFFFFF, QRectF(0, 0, 99, 99), 1.0).isNull());
}

// They were when they were new. The picture is not opened: it does not exist.
void tst_SvgRecord::acceptedDrawingsAreNotLookedAtAgain()
{
    SvgItem item;
    QCOMPARE(load(item, recordOf(SvgTexts::linked, "00 00")), QDataStream::Ok);
    QVERIFY(!item.svgIsInvalid());
    QCOMPARE(item.boundingRect(), QRectF(0, 0, 30, 10));
    QCOMPARE(contentsOf(item), SvgTexts::linked);
}

// The text is kept: nothing is lost by loading and saving.
void tst_SvgRecord::hostileRecordsShowNothing()
{
    const QByteArray hostile
        = SvgTexts::drawing(10, 10, QByteArray("<g>").repeated(2000) + QByteArray("</g>").repeated(2000));
    SvgItem item;
    QCOMPARE(load(item, recordOf(hostile, "00 00")), QDataStream::Ok);
    QVERIFY(item.svgIsInvalid() && item.getImageHasTransparency());
    QCOMPARE(item.boundingRect(), QRectF());
    QCOMPARE(contentsOf(item), hostile);
    QCOMPARE(toHexText(saved(item)), toHexText(recordOf(hostile, "01 01")));
}

void tst_SvgRecord::cutRecordsAreDrawn()
{
    const QByteArray record = recordOf(SvgTexts::redAndBlue, "00 00");
    for (qsizetype length = 0; length < record.size(); ++length) {
        SvgItem item;
        QVERIFY(load(item, record.first(length)) != QDataStream::Ok);
        QVERIFY(!Images::painted(item, canvas).isNull());
    }
}

void tst_SvgRecord::mapHoldsTheContentsInBase64()
{
    SvgItem item;
    QVERIFY(item.loadItemFromData(SvgTexts::halfRed));
    item.setImageHasTransparency(true);
    QVariantMap map = item.saveItemToJSON();
    QCOMPARE(map.value(u"svgContents"_s).toByteArray(), SvgTexts::halfRed.toBase64());
    QCOMPARE(map.value(u"svgHasTransparency"_s), QVariant(true));
    QCOMPARE(map.value(u"svgIsInvalid"_s), QVariant(false));
    QCOMPARE(map.value(u"itemWidth"_s), QVariant(40.0));

    map.insert(u"itemWidth"_s, 80.0);
    map.insert(u"itemTransform"_s, QVariantList { 2.0, 0.0, 0.0, 0.0, 1.0, 0.0, 0.0, 0.0 });
    SvgItem again;
    again.loadItemFromJSON(map, 6);
    QCOMPARE(contentsOf(again), SvgTexts::halfRed);
    QVERIFY(again.getImageHasTransparency() && !again.svgIsInvalid());
    QCOMPARE(again.boundingRect(), QRectF(0, 0, 40, 20));
    QCOMPARE(again.getItemSize(), QSizeF(80, 20));
    QCOMPARE(again.transform(), QTransform::fromScale(2, 1));
    QCOMPARE(Images::painted(again, canvas).pixel(10, 10), Colours::redPixel);
}

void tst_SvgRecord::mapOverAnotherItemReplacesIt()
{
    SvgItem item;
    QVERIFY(item.loadItemFromData(SvgTexts::redAndBlue));
    item.loadItemFromJSON(SvgItem().saveItemToJSON(), 6);
    QCOMPARE(contentsOf(item), QByteArray());
    QCOMPARE(item.boundingRect(), QRectF());
}

void tst_SvgRecord::copiesAreAlike()
{
    SvgItem item;
    QVERIFY(item.loadItemFromData(SvgTexts::redAndBlue));
    item.setItemSize({ 80, 80 });
    item.setItemRotation(30);
    item.setItemHorizontalMirror(true);
    item.setFirstResizeAfterAddedToGroup(true);
    item.setImageHasTransparency(true);
    const std::unique_ptr<Item> copy(item.createItemCopy());
    auto &same = dynamic_cast<SvgItem &>(*copy);
    QCOMPARE(toHexText(saved(same)), toHexText(saved(item)));
    QVERIFY(same.getFirstResizeAfterAddedToGroup());
    QCOMPARE(same.boundingRect(), item.boundingRect());
    QCOMPARE(Images::painted(same, canvas), Images::painted(item, canvas));
    QCOMPARE(Images::painted(same, canvas).pixel(10, 10), Colours::bluePixel);
}

void tst_SvgRecord::copiesOfInvalidItemsAreInvalid()
{
    SvgItem item;
    QVERIFY(item.loadItemFromData(SvgTexts::redAndBlue));
    item.setImageIsInvalid(true);
    const std::unique_ptr<Item> copy(item.createItemCopy());
    QVERIFY(dynamic_cast<SvgItem &>(*copy).svgIsInvalid());
}

// What was only set is shown by copies, at once in its own extent.
void tst_SvgRecord::copiesShowWhatWasSet()
{
    SvgItem item;
    QVERIFY(item.loadItemFromData(SvgTexts::redAndBlue));
    item.setSvgContents(SvgTexts::drawing(10, 12, "<g/>").toBase64());
    QCOMPARE(item.boundingRect(), QRectF(0, 0, 40, 20));
    const std::unique_ptr<Item> copy(item.createItemCopy());
    QCOMPARE(dynamic_cast<SvgItem &>(*copy).boundingRect(), QRectF(0, 0, 10, 12));

    item.setSvgContents(("<svg>" + QByteArray("<g>").repeated(600)).toBase64());
    const std::unique_ptr<Item> refused(item.createItemCopy());
    QVERIFY(dynamic_cast<SvgItem &>(*refused).svgIsInvalid());
}

void tst_SvgRecord::linkedDrawingsOfMapsStay()
{
    SvgItem item;
    QVERIFY(item.loadItemFromData(SvgTexts::redAndBlue));
    QVariantMap map = item.saveItemToJSON();
    map.insert(u"svgContents"_s, SvgTexts::linked.toBase64());
    SvgItem again;
    again.loadItemFromJSON(map, 6);
    QVERIFY(!again.svgIsInvalid());
    QCOMPARE(contentsOf(again), SvgTexts::linked);
    QCOMPARE(again.boundingRect(), QRectF(0, 0, 30, 10));
    map.insert(u"svgIsInvalid"_s, true);
    again.loadItemFromJSON(map, 6);
    QVERIFY(again.svgIsInvalid());
}

QTEST_MAIN(tst_SvgRecord)
#include "tst_svgrecord.moc"
