// SPDX-License-Identifier: BSD-3-Clause
#include "items/graphics/pixmapitem.h"
#include "tests/support/colours.h"
#include "tests/support/hexbytes.h"
#include "tests/support/itemrecords.h"
#include "tests/support/pictures.h"
#include "tests/support/rectanglerecords.h"

#include <QColorSpace>
#include <QRegularExpression>
#include <QTest>

#include <malloc.h>

#include <memory>

using namespace Qt::StringLiterals;
using namespace Colours;

namespace {

// 4 + 8 + 8 + 1 + 1 = 22 bytes before the 158 of all items with a null datasource field.
const QByteArray newRecord = fromHexText("00000000" // no picture
                                         "0000000000000000" // old m31
                                         "0000000000000000" // old m32
                                         "00" // no transparency
                                         "00") // no first resize in a group
    + RectangleRecords::newItem("00000003", "0000010F"); // visible in print, printed through an image

// One red pixel: header of 1 x 1 in 8-bit RGB, the packed row 00 FF 00 00, the end.
const QByteArray redPng = fromHexText("89504E470D0A1A0A"
                                      "0000000D 49484452 00000001 00000001 08 02 00 00 00 907753DE"
                                      "0000000C 49444154 789C63F8CFC0000003010100 C9FE92EF"
                                      "00000000 49454E44 AE426082");

/// The record of a picture with the given fields of its own, and those of all items changed.
QByteArray changedRecord(const char *transparencyAndFirstResize = "01 01")
{
    constexpr int commonBytes = 158;
    constexpr int fieldBytes = 18;
    return fromHexText("00000001") + redPng
        + fromHexText("4025000000000000" // old m31 10.5
                      "C008000000000000") // old m32 -3
        + fromHexText(transparencyAndFirstResize) // one byte each
        + fromHexText(RectangleRecords::changedRectangle).first(commonBytes + fieldBytes);
}

std::unique_ptr<PixMapItem> changedItem()
{
    auto item = std::make_unique<PixMapItem>();
    item->pixmapImportActions(QPixmap::fromImage(Pictures::plain({ 6, 4 }, translucentRed)));
    item->setItemSize(QSizeF(60, 20));
    item->setItemRotation(30);
    item->setPos(12, 13);
    item->setItemHorizontalMirror(true);
    item->setFirstResizeAfterAddedToGroup(true);
    item->setItemDatasourceID(4);
    item->setItemDatasourceField(u"Größe"_s);
    return item;
}

void compareItems(const PixMapItem &actual, const PixMapItem &expected)
{
    QCOMPARE(actual.pixmap().toImage(), expected.pixmap().toImage());
    QCOMPARE(actual.getOldTransformCoefficientM31(), expected.getOldTransformCoefficientM31());
    QCOMPARE(actual.getOldTransformCoefficientM32(), expected.getOldTransformCoefficientM32());
    QCOMPARE(actual.getImageHasTransparency(), expected.getImageHasTransparency());
    QCOMPARE(actual.getFirstResizeAfterAddedToGroup(), expected.getFirstResizeAfterAddedToGroup());
    QCOMPARE(actual.getItemSize(), expected.getItemSize());
    QCOMPARE(actual.getItemScaleX(), expected.getItemScaleX());
    QCOMPARE(actual.getItemRotation(), expected.getItemRotation());
    QCOMPARE(actual.getItemHorizontalMirror(), expected.getItemHorizontalMirror());
    QCOMPARE(actual.transform(), expected.transform());
    QCOMPARE(actual.pos(), expected.pos());
    QCOMPARE(actual.getItemDatasourceID(), expected.getItemDatasourceID());
    QCOMPARE(actual.getItemDatasourceField(), expected.getItemDatasourceField());
}

} // namespace

/// Records, property maps and copies of pictures.
class tst_PixmapRecord : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    // The record
    void newRecordHas180Bytes();
    void changedRecordIsReadFieldByField();
    void transparencyComesBeforeTheFirstResize_data();
    void transparencyComesBeforeTheFirstResize();
    void recordOfAnOlderVersionHasNoMirrors();
    void recordRoundTrip();
    void pictureBeyondTheLimitsIsCorrupt();
    void loadingReplacesThePicture();
    void everyKindOfPictureIsSavedAsItWasLoaded_data();
    void everyKindOfPictureIsSavedAsItWasLoaded();
    void bitsBehindTheRowsAreNotSaved();

    // The map
    void pictureIsBase64InTheMap();
    void pictureOfTheMapIsRead_data();
    void pictureOfTheMapIsRead();
    void mapRoundTripKeepsTheGeometry();

    // Copies
    void copyHasEverything();
    void copyOfAnInvalidItemIsInvalid();
    void privatePropertiesAreCopied();
    void privateFlagsAreToldApart_data();
    void privateFlagsAreToldApart();
};

// The record

void tst_PixmapRecord::newRecordHas180Bytes()
{
    QCOMPARE(newRecord.size(), 180);
    PixMapItem item;
    QCOMPARE(toHexText(ItemRecords::saved(item)), toHexText(newRecord));

    PixMapItem other;
    other.pixmapImportActions(QPixmap::fromImage(Pictures::plain({ 6, 4 }, red)));
    QCOMPARE(ItemRecords::load(other, newRecord), QDataStream::Ok);
    QVERIFY(other.pixmap().isNull());
    QCOMPARE(toHexText(ItemRecords::saved(other)), toHexText(newRecord));
}

void tst_PixmapRecord::changedRecordIsReadFieldByField()
{
    PixMapItem item;
    QCOMPARE(ItemRecords::load(item, changedRecord()), QDataStream::Ok);
    QCOMPARE(item.pixmap().size(), QSize(1, 1));
    QCOMPARE(item.pixmap().toImage().pixel(0, 0), redPixel);
    QCOMPARE(item.getOldTransformCoefficientM31(), 10.5);
    QCOMPARE(item.getOldTransformCoefficientM32(), -3.0);
    QVERIFY(item.getImageHasTransparency());
    QVERIFY(item.getFirstResizeAfterAddedToGroup());
    QCOMPARE(item.getItemSize(), QSizeF(250.25, 40.5));
    QCOMPARE(item.getItemDatasourceID(), 70000);
    QCOMPARE(item.getItemDatasourceField(), u"Größe €😀"_s);

    // Behind the picture, which another version of Qt may pack otherwise, the same bytes are written.
    const QByteArray behind = changedRecord().sliced(4 + redPng.size());
    QCOMPARE(toHexText(ItemRecords::saved(item).last(behind.size())), toHexText(behind));
}

void tst_PixmapRecord::transparencyComesBeforeTheFirstResize_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<bool>("transparency");
    QTest::addColumn<bool>("firstResize");
    QTest::newRow("transparent") << QByteArray("01 00") << true << false;
    QTest::newRow("just joined a group") << QByteArray("00 01") << false << true;
}

void tst_PixmapRecord::transparencyComesBeforeTheFirstResize()
{
    QFETCH(const QByteArray, bytes);
    QFETCH(const bool, transparency);
    QFETCH(const bool, firstResize);
    const QByteArray record = changedRecord(bytes.constData());
    PixMapItem item;
    QCOMPARE(ItemRecords::load(item, record), QDataStream::Ok);
    QCOMPARE(item.getImageHasTransparency(), transparency);
    QCOMPARE(item.getFirstResizeAfterAddedToGroup(), firstResize);

    const qsizetype behindPicture = record.size() - 4 - redPng.size();
    constexpr int place = 16; // behind the two coefficients
    const QByteArray saved = ItemRecords::saved(item).last(behindPicture).sliced(place, 2);
    QCOMPARE(toHexText(saved), toHexText(fromHexText(bytes.constData())));
}

void tst_PixmapRecord::recordOfAnOlderVersionHasNoMirrors()
{
    constexpr int mirrors = 22 + 2 + 4;
    const QByteArray old = QByteArray(newRecord).remove(mirrors, 3);
    PixMapItem item;
    item.setItemHorizontalMirror(true);
    QCOMPARE(ItemRecords::load(item, old, 5), QDataStream::Ok);
    QVERIFY(!item.getItemHorizontalMirror());
    QCOMPARE(toHexText(ItemRecords::saved(item)), toHexText(newRecord));
}

void tst_PixmapRecord::recordRoundTrip()
{
    const std::unique_ptr<PixMapItem> item = changedItem();
    const QByteArray record = ItemRecords::saved(*item);
    PixMapItem loaded;
    QCOMPARE(ItemRecords::load(loaded, record), QDataStream::Ok);
    compareItems(loaded, *item);
    QCOMPARE(ItemRecords::saved(loaded), record);
}

void tst_PixmapRecord::pictureBeyondTheLimitsIsCorrupt()
{
    const QByteArray record = fromHexText("00000001") + Pictures::pngHeader(65'536, 65'536);
    PixMapItem item;
    QCOMPARE(ItemRecords::load(item, record), QDataStream::ReadCorruptData);
    QVERIFY(item.pixmap().isNull());
}

void tst_PixmapRecord::loadingReplacesThePicture()
{
    const std::unique_ptr<PixMapItem> item = changedItem();
    QCOMPARE(ItemRecords::load(*item, changedRecord()), QDataStream::Ok);
    QCOMPARE(item->pixmap().size(), QSize(1, 1));
    QCOMPARE(item->boundingRect(), QRectF(0, 0, 1, 1));
}

void tst_PixmapRecord::everyKindOfPictureIsSavedAsItWasLoaded_data()
{
    QTest::addColumn<QImage>("image");
    const QImage image = Pictures::plain({ 5, 3 }, QColor(200, 100, 50, 25));
    for (const auto &[name, format] : { std::pair("one bit", QImage::Format_Mono),
             { "palette", QImage::Format_Indexed8 }, { "grey", QImage::Format_Grayscale8 },
             { "fine grey", QImage::Format_Grayscale16 }, { "24 bits", QImage::Format_RGB888 },
             { "32 bits", QImage::Format_ARGB32 }, { "64 bits", QImage::Format_RGBA64 } })
        QTest::newRow(name) << image.convertToFormat(format);
    QImage described = image;
    described.setText(u"Author"_s, u"Größe"_s);
    QTest::newRow("with a text") << described;
    QImage fine = image;
    fine.setDotsPerMeterX(11811);
    fine.setDotsPerMeterY(1);
    QTest::newRow("with a resolution") << fine;
    for (const auto &[name, space] : { std::pair("sRGB", QColorSpace::SRgb),
             { "linear", QColorSpace::SRgbLinear }, { "Adobe RGB", QColorSpace::AdobeRgb } }) {
        QImage coloured = image;
        coloured.setColorSpace(space);
        QTest::newRow(name) << coloured;
    }
}

void tst_PixmapRecord::everyKindOfPictureIsSavedAsItWasLoaded()
{
    QFETCH(const QImage, image);
    const QByteArray record = fromHexText("00000001") + Pictures::encoded(image, "PNG") + newRecord.sliced(4);
    PixMapItem item;
    QCOMPARE(ItemRecords::load(item, record), QDataStream::Ok);
    QCOMPARE(item.pixmap().size(), QSize(5, 3));
    const QByteArray saved = ItemRecords::saved(item);
    PixMapItem again;
    QCOMPARE(ItemRecords::load(again, saved), QDataStream::Ok);
    QCOMPARE(toHexText(ItemRecords::saved(again)), toHexText(saved));
    QCOMPARE(again.pixmap().toImage(), item.pixmap().toImage());
}

// The decoder leaves there what it finds in memory.
void tst_PixmapRecord::bitsBehindTheRowsAreNotSaved()
{
    QImage image(5, 3, QImage::Format_Mono);
    image.fill(1);
    const QByteArray record = fromHexText("00000001") + Pictures::encoded(image, "PNG") + newRecord.sliced(4);
    QByteArrayList saved;
    for (const int contents : { 0x55, 0xAA }) {
        mallopt(M_PERTURB, contents);
        PixMapItem item;
        const QDataStream::Status status = ItemRecords::load(item, record);
        saved.append(toHexText(ItemRecords::saved(item)));
        mallopt(M_PERTURB, 0);
        QCOMPARE(status, QDataStream::Ok);
    }
    QCOMPARE(saved[1], saved[0]);
}

// The map

void tst_PixmapRecord::pictureIsBase64InTheMap()
{
    PixMapItem item;
    QCOMPARE(item.saveItemToJSON().value(u"pixmapItemData"_s), QVariant(u"AAAAAA=="_s));
    item.pixmapImportActions(QPixmap::fromImage(Pictures::plain({ 6, 4 }, red)));
    const QVariant text = item.getPixmapItemData();
    QCOMPARE(text.metaType(), QMetaType(QMetaType::QString));
    const QByteArray bytes = QByteArray::fromBase64(text.toByteArray());
    QDataStream stream(bytes);
    QPixmap pixmap;
    stream >> pixmap;
    QVERIFY(stream.atEnd());
    QCOMPARE(pixmap.toImage(), item.pixmap().toImage());
}

void tst_PixmapRecord::pictureOfTheMapIsRead_data()
{
    QTest::addColumn<QVariant>("data");
    QTest::addColumn<QSize>("size");
    const QByteArray good = (fromHexText("00000001") + redPng).toBase64();
    QTest::newRow("text") << QVariant(QString::fromLatin1(good)) << QSize(1, 1);
    QTest::newRow("bytes") << QVariant(good) << QSize(1, 1);
    QTest::newRow("none") << QVariant(u"AAAAAA=="_s) << QSize(0, 0);
    QTest::newRow("no Base64") << QVariant(u"ä!?"_s) << QSize(0, 0);
    QTest::newRow("no picture") << QVariant(u"AAAAAXh4eHg="_s) << QSize(0, 0);
    QTest::newRow("empty") << QVariant(QString()) << QSize(0, 0);
    QTest::newRow("number") << QVariant(17) << QSize(0, 0);
    QTest::newRow("beyond the limits")
        << QVariant((fromHexText("00000001") + Pictures::pngHeader(65'536, 65'536)).toBase64())
        << QSize(0, 0);
}

void tst_PixmapRecord::pictureOfTheMapIsRead()
{
    QFETCH(const QVariant, data);
    QFETCH(const QSize, size);
    PixMapItem item;
    item.pixmapImportActions(QPixmap::fromImage(Pictures::plain({ 6, 4 }, red)));
    item.setPixmapItemData(data);
    QCOMPARE(item.pixmap().size(), size);
    QCOMPARE(item.getItemSize(), QSizeF(6, 4));
}

void tst_PixmapRecord::mapRoundTripKeepsTheGeometry()
{
    const std::unique_ptr<PixMapItem> item = changedItem();
    const QVariantMap map = item->saveItemToJSON();
    PixMapItem loaded;
    loaded.loadItemFromJSON(map, ItemRecords::currentVersion);
    compareItems(loaded, *item);
    QCOMPARE(loaded.saveItemToJSON(), map);
    QCOMPARE(loaded.sceneBoundingRect(), item->sceneBoundingRect());
}

// Copies

void tst_PixmapRecord::copyHasEverything()
{
    const std::unique_ptr<PixMapItem> item = changedItem();
    const std::unique_ptr<Item> copy(item->createItemCopy());
    compareItems(dynamic_cast<const PixMapItem &>(*copy), *item);
    QCOMPARE(ItemRecords::saved(*copy), ItemRecords::saved(*item));
}

void tst_PixmapRecord::copyOfAnInvalidItemIsInvalid()
{
    PixMapItem item;
    item.reloadItemFromFile("/nowhere/at.all");
    const std::unique_ptr<Item> copy(item.createItemCopy());
    const auto &picture = dynamic_cast<const PixMapItem &>(*copy);
    QVERIFY(picture.getImageIsInvalid());
    QVERIFY(picture.getImageHasTransparency());
    QCOMPARE(picture.pixmap().size(), QSize(100, 100));
}

void tst_PixmapRecord::privatePropertiesAreCopied()
{
    PixMapItem item;
    item.copyPrivatePropeties(1.5, -2.5, true, true);
    QCOMPARE(item.getOldTransformCoefficientM31(), 1.5);
    QCOMPARE(item.getOldTransformCoefficientM32(), -2.5);
    QVERIFY(item.getFirstResizeAfterAddedToGroup());
    QVERIFY(item.getImageHasTransparency());
    item.copyPrivatePropeties(0.0, 0.0, false, false);
    QVERIFY(!item.getFirstResizeAfterAddedToGroup());
    QVERIFY(!item.getImageHasTransparency());

    // The form of all items is not hidden.
    item.copyPrivatePropeties(45.0, QSizeF(7, 8), 2.0, 3.0, true, 5, u"Field"_s);
    QCOMPARE(item.getItemSize(), QSizeF(7, 8));
    QCOMPARE(item.getItemRotation(), 45.0);
}

void tst_PixmapRecord::privateFlagsAreToldApart_data()
{
    QTest::addColumn<bool>("firstResize");
    QTest::addColumn<bool>("transparency");
    QTest::newRow("first resize") << true << false;
    QTest::newRow("transparency") << false << true;
}

void tst_PixmapRecord::privateFlagsAreToldApart()
{
    QFETCH(const bool, firstResize);
    QFETCH(const bool, transparency);
    PixMapItem item;
    item.copyPrivatePropeties(1.5, -2.5, firstResize, transparency);
    QCOMPARE(item.getFirstResizeAfterAddedToGroup(), firstResize);
    QCOMPARE(item.getImageHasTransparency(), transparency);

    const std::unique_ptr<Item> copy(item.createItemCopy());
    const auto &picture = dynamic_cast<const PixMapItem &>(*copy);
    QCOMPARE(picture.getFirstResizeAfterAddedToGroup(), firstResize);
    QCOMPARE(picture.getImageHasTransparency(), transparency);
}

QTEST_MAIN(tst_PixmapRecord)
#include "tst_pixmaprecord.moc"
