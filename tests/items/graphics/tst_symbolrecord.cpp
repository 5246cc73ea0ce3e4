// SPDX-License-Identifier: BSD-3-Clause
#include "items/graphics/emptysvg.h"
#include "tests/support/colours.h"
#include "tests/support/hexbytes.h"
#include "tests/support/images.h"
#include "tests/support/itemrecords.h"
#include "tests/support/rectanglerecords.h"
#include "tests/support/symbols.h"

#include <QRegularExpression>
#include <QTest>
#include <QtEndian>

using namespace Qt::StringLiterals;
using namespace Colours;
using ItemRecords::load;
using ItemRecords::saved;

namespace {

constexpr int mirrorsAt = 6;
constexpr int mirrorBytes = 3;
constexpr int colorBytes = 11;

/// The fields of all items, new ones, with the graphics-item flags of a symbol.
QByteArray newCommon()
{
    return RectangleRecords::newItem("00000001", "0000010F");
}

/// The same as records before version 6 have them.
QByteArray oldCommon()
{
    return newCommon().remove(mirrorsAt, mirrorBytes);
}

// 1 + 1 + 4 + 8 + 8 + 158 + 3 × 11 = 213 bytes
const QByteArray newRecord = fromHexText("00" // two colours
                                         "00" // no background
                                         "FFFFFFFF" // original: null
                                         "0000000000000000" // old m31
                                         "0000000000000000") // old m32
    + newCommon()
    + fromHexText("01FFFF0000000000000000" // pen colour: RGB, opaque, black
                  "0100000000000000000000" // fill colour: RGB, transparent
                  "0100000000000000000000"); // fill colour once more

// A drawing of 2 × 1 with a background.
const QByteArray drawing
    = "<svg fill=\"#000000\" stroke=\"none\" width=\"2\" height=\"1\"><rect id=\"background_fix\" "
      "fill=\"#FFFFFF\" fill-opacity=\"0\" width=\"2\" height=\"1\"/><g/></svg>";

QByteArray lengthOf(const QByteArray &bytes)
{
    QByteArray length(4, '\0');
    qToBigEndian(quint32(bytes.size()), length.data());
    return length;
}

const QByteArray redColor = fromHexText("01FFFFFFFF000000000000");
const QByteArray blueColor = fromHexText("01FFFF00000000FFFF0000");

/// A record of the drawing with a background, old coefficients of 3.5 and -2, and the colours given.
QByteArray recordOf(bool singleColor, const QByteArray &colors, const QByteArray &common = newCommon())
{
    return fromHexText(singleColor ? "01 01" : "00 01") + lengthOf(drawing) + drawing
        + fromHexText("400C000000000000 C000000000000000") + common + colors;
}

/// A record of a version before 4, with the recoloured drawing.
QByteArray oldRecordOf(const QByteArray &contents, const QByteArray &pen)
{
    return lengthOf(contents) + contents + fromHexText("400C000000000000 C000000000000000") + oldCommon()
        + pen;
}

QByteArray originalOf(const SymbolItem &item)
{
    return QByteArray::fromBase64(item.getSvgContentsOriginal().toByteArray());
}

} // namespace

/// The record and the property map of a symbol.
class tst_SymbolRecord : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    void newSymbolWritesItsRecord();
    void changedRecordIsReadAndWritten();
    void recordsBeforeMirrorsHoldTheOriginal_data();
    void recordsBeforeMirrorsHoldTheOriginal();
    void lastColourIsLeftUnread();
    void singleColourKeepsTheFillOfTheItem();
    void oldRecordIsTurnedBack_data();
    void oldRecordIsTurnedBack();
    void brokenDrawingShowsTheEmptyOne();
    void cutRecordsAreDrawn();
    void mapHoldsTheOriginalInBase64();
    void mapOverAnotherSymbolReplacesIt();
};

void tst_SymbolRecord::newSymbolWritesItsRecord()
{
    QCOMPARE(newRecord.size(), 213);
    SymbolItem item;
    QCOMPARE(toHexText(saved(item)), toHexText(newRecord));
    item.setSvgContentsOriginal(QByteArray("")); // none either
    QCOMPARE(toHexText(saved(item)), toHexText(newRecord));
}

void tst_SymbolRecord::changedRecordIsReadAndWritten()
{
    SymbolItem item;
    QCOMPARE(load(item, recordOf(false, redColor + blueColor + blueColor)), QDataStream::Ok);
    QVERIFY(!item.getSingleColor());
    QVERIFY(item.getFillBoundingRectangle());
    QCOMPARE(originalOf(item), drawing);
    QCOMPARE(item.getOldTransformCoefficientM31(), 3.5);
    QCOMPARE(item.getOldTransformCoefficientM32(), -2.0);
    QCOMPARE(item.getItemPenColor(), red);
    QCOMPARE(item.getItemFillColor(), blue);
    QCOMPARE(item.getSvgContents(),
        "<svg fill=\"#FF0000\" stroke=\"none\" width=\"2\" height=\"1\"><rect id=\"background_fix\" "
        "fill=\"#0000FF\" fill-opacity=\"1\" width=\"2\" height=\"1\"/><g/></svg>"_ba);
    QCOMPARE(item.boundingRect(), QRectF(0, 0, 2, 1));
    QCOMPARE(item.getItemSize(), QSizeF(100, 100));
    QCOMPARE(item.transform(), QTransform());
    QCOMPARE(toHexText(saved(item)), toHexText(recordOf(false, redColor + blueColor + blueColor)));

    QCOMPARE(load(item, newRecord), QDataStream::Ok);
    QCOMPARE(toHexText(saved(item)), toHexText(newRecord));
    QCOMPARE(item.boundingRect(), QRectF());
}

void tst_SymbolRecord::recordsBeforeMirrorsHoldTheOriginal_data()
{
    QTest::addColumn<unsigned int>("version");
    QTest::addColumn<bool>("singleColor");
    for (const unsigned int version : { 4U, 5U }) {
        QTest::addRow("version %u, two colours", version) << version << false;
        QTest::addRow("version %u, single colour", version) << version << true;
    }
}

void tst_SymbolRecord::recordsBeforeMirrorsHoldTheOriginal()
{
    QFETCH(unsigned int, version);
    QFETCH(bool, singleColor);
    const QByteArray fill = singleColor ? QByteArray() : blueColor;
    QDataStream stream(recordOf(singleColor, redColor + fill + blueColor, oldCommon()));
    SymbolItem item;
    item.setItemFillColor(yellow);
    item.setItemHorizontalMirror(true);
    item.loadItemFromData(stream, version);
    QCOMPARE(stream.status(), QDataStream::Ok);
    QCOMPARE(stream.device()->bytesAvailable(), colorBytes);
    QCOMPARE(item.getSingleColor(), singleColor);
    QVERIFY(item.getFillBoundingRectangle());
    QCOMPARE(originalOf(item), drawing);
    QCOMPARE(item.getItemPenColor(), red);
    QCOMPARE(item.getItemFillColor(), singleColor ? yellow : blue);
    QVERIFY(!item.getItemHorizontalMirror());
    QCOMPARE(item.getOldTransformCoefficientM32(), -2.0);
    QCOMPARE(item.getSvgContents(),
        "<svg fill=\"#FF0000\" stroke=\"none\" width=\"2\" height=\"1\"><rect id=\"background_fix\" "
        "fill=\""_ba
            + (singleColor ? "#FFFF00" : "#0000FF")
            + "\" fill-opacity=\"1\" width=\"2\" height=\"1\"/><g/></svg>");
}

void tst_SymbolRecord::lastColourIsLeftUnread()
{
    for (const bool singleColor : { false, true }) {
        const QByteArray record
            = recordOf(singleColor, redColor + blueColor + (singleColor ? QByteArray() : redColor));
        QDataStream stream(record);
        SymbolItem item;
        item.loadItemFromData(stream, 6);
        QCOMPARE(stream.status(), QDataStream::Ok);
        QCOMPARE(stream.device()->bytesAvailable(), colorBytes);
    }
}

void tst_SymbolRecord::singleColourKeepsTheFillOfTheItem()
{
    SymbolItem item;
    item.setItemFillColor(yellow);
    QCOMPARE(load(item, recordOf(true, redColor + blueColor)), QDataStream::Ok);
    QVERIFY(item.getSingleColor());
    QCOMPARE(item.getItemPenColor(), red);
    QCOMPARE(item.getItemFillColor(), yellow);
    QVERIFY(item.getSvgContents().contains("fill=\"#FFFF00\" fill-opacity=\"1\""));
    QCOMPARE(toHexText(saved(item).last(colorBytes)), toHexText(fromHexText("01FFFFFFFFFFFF00000000")));
}

void tst_SymbolRecord::oldRecordIsTurnedBack_data()
{
    QTest::addColumn<QByteArray>("contents");
    QTest::addColumn<QColor>("fill");
    QTest::addColumn<QByteArray>("original");
    QTest::addColumn<QByteArray>("recoloured");
    const QByteArray normal = Symbols::root + "width=\"2\" height=\"1\">";
    QTest::newRow("no fill") << "<svg fill=\"#FF0000\" stroke=\"none\" width=\"2\" height=\"1\">"
                                "<g style=\"fill:none;stroke:#FF0000\"/></svg>"_ba
                             << transparent << normal + "<g style=\"fill:#FFFFFF;stroke:#000000\"/></svg>"
                             << "<svg fill=\"#FF0000\" stroke=\"none\" width=\"2\" height=\"1\">"
                                "<g style=\"fill:none;stroke:#FF0000\"/></svg>"_ba;
    QTest::newRow("fill") << "<svg fill=\"#FF0000\" stroke=\"none\" width=\"2\" height=\"1\">"
                             "<g fill=\"#0000FF\" fill-opacity=\"1\"/></svg>"_ba
                          << blue << normal + "<g fill=\"#FFFFFF\" fill-opacity=\"0\"/></svg>"
                          << "<svg fill=\"#FF0000\" stroke=\"none\" width=\"2\" height=\"1\">"
                             "<g fill=\"#0000FF\" fill-opacity=\"0\"/></svg>"_ba;
    QTest::newRow("root of its time") << "<svg width=\"2\" height=\"1\"><g fill=\"#FF0000\"/></svg>"_ba
                                      << transparent << normal + "<g fill=\"#000000\"/></svg>"
                                      << "<svg fill=\"#FF0000\" stroke=\"none\" width=\"2\" height=\"1\">"
                                         "<g fill=\"#FF0000\"/></svg>"_ba;
}

void tst_SymbolRecord::oldRecordIsTurnedBack()
{
    QFETCH(QByteArray, contents);
    QFETCH(QColor, fill);
    QFETCH(QByteArray, original);
    QFETCH(QByteArray, recoloured);
    SymbolItem item;
    item.setItemFillColor(fill);
    QDataStream stream(oldRecordOf(contents, redColor));
    item.loadItemFromData(stream, 3);
    QCOMPARE(stream.status(), QDataStream::Ok);
    QVERIFY(stream.atEnd());
    QCOMPARE(originalOf(item), original);
    QCOMPARE(item.getSvgContents(), recoloured);
    QCOMPARE(item.getItemPenColor(), red);
    QCOMPARE(item.getItemFillColor(), fill);
    QCOMPARE(item.getOldTransformCoefficientM31(), 3.5);
    QCOMPARE(item.boundingRect(), QRectF(0, 0, 2, 1));
}

void tst_SymbolRecord::brokenDrawingShowsTheEmptyOne()
{
    SymbolItem item;
    QVERIFY(item.loadItemFromData(Symbols::breakable, true, "#000000", "#0000FF"));
    item.setItemFillColor(blue);
    QCOMPARE(item.boundingRect(), QRectF(0, 0, 40, 20));
    item.setItemFillColor(transparent);
    QCOMPARE(item.getSvgContents(), EmptySvg::getEmptySvg());
    const QByteArray record = saved(item);

    SymbolItem again;
    load(again, record);
    QCOMPARE(again.getSvgContents(), EmptySvg::getEmptySvg());
    QCOMPARE(again.getItemSize(), QSizeF(40, 20));
    QCOMPARE(toHexText(saved(again)), toHexText(record));
    again.setItemFillColor(blue);
    QCOMPARE(again.boundingRect(), QRectF(0, 0, 40, 20));
    QCOMPARE(again.sceneBoundingRect(), QRectF(0, 0, 40, 20));
}

void tst_SymbolRecord::cutRecordsAreDrawn()
{
    const QByteArray record = recordOf(false, redColor + blueColor + blueColor);
    for (qsizetype size = 0; size < record.size(); ++size) {
        SymbolItem item;
        load(item, record.first(size));
        static_cast<void>(Images::painted(item, QSize(20, 20)));
        static_cast<void>(saved(item));
    }
    SymbolItem item;
    QVERIFY(load(item, record.first(record.size() - 2 * colorBytes)) != QDataStream::Ok);
    QCOMPARE(item.getItemPenColor(), red);
    QVERIFY(!item.getItemFillColor().isValid());
}

void tst_SymbolRecord::mapHoldsTheOriginalInBase64()
{
    SymbolItem item;
    load(item, recordOf(false, redColor + blueColor + blueColor));
    item.setSingleColor(true);
    const QVariantMap map = item.saveItemToJSON();
    QCOMPARE(map.value(u"svgContentsOriginal"_s), QVariant(QString::fromLatin1(drawing.toBase64())));
    QCOMPARE(map.value(u"fillBoundingRectangle"_s), QVariant(true));
    QCOMPARE(map.value(u"hasSingleColor"_s), QVariant(true));
    QCOMPARE(map.value(u"itemPenColor"_s), QVariant(u"#ff0000"_s));
    QCOMPARE(map.value(u"oldTransformCoefficientM31"_s), QVariant(3.5));

    SymbolItem again;
    again.loadItemFromJSON(map, 6);
    QCOMPARE(again.getSvgContents(), item.getSvgContents());
    QCOMPARE(toHexText(saved(again)).size(), toHexText(saved(item)).size());
    QCOMPARE(again.boundingRect(), QRectF(0, 0, 2, 1));
    QVERIFY(again.getSingleColor());
    QVERIFY(again.getFillBoundingRectangle());
}

void tst_SymbolRecord::mapOverAnotherSymbolReplacesIt()
{
    SymbolItem item;
    QVERIFY(item.loadItemFromData(Symbols::halves));
    item.setItemSize(QSizeF(80, 20));
    QVariantMap map { { u"itemPenColor"_s, u"#ff0000"_s }, { u"itemFillColor"_s, u"transparent"_s },
        { u"itemWidth"_s, 30.0 }, { u"itemScaleX"_s, 15.0 },
        { u"svgContentsOriginal"_s, QString::fromLatin1(drawing.toBase64()) } };
    item.loadItemFromJSON(map, 6);
    QCOMPARE(item.getItemSize(), QSizeF(30, 20));
    QCOMPARE(item.getItemScaleX(), 15.0);
    QCOMPARE(item.boundingRect(), QRectF(0, 0, 2, 1));
    // Without fillBoundingRectangle the background is no background.
    QVERIFY(item.getSvgContents().contains("fill=\"none\" fill-opacity=\"0\""));
}

QTEST_MAIN(tst_SymbolRecord)
#include "tst_symbolrecord.moc"
