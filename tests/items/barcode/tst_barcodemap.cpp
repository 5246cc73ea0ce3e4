// SPDX-License-Identifier: BSD-3-Clause
#include "items/barcode/barcodeitem.h"
#include "tests/support/colours.h"
#include "tests/support/itemmaps.h"
#include "tests/support/repaints.h"

#include <QRegularExpression>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace Colours;

namespace {

template <typename T> QVariant of(T value)
{
    return QVariant::fromValue(value);
}

QVariantMap newMap()
{
    return {
        { u"itemShape"_s, of(0x1001DU) },
        { u"itemId"_s, of(short(-1)) },
        { u"itemFlags"_s, of(1U) },
        { u"itemQFlags"_s, of(0x10FU) },
        { u"itemZValue"_s, 0.0 },
        { u"itemRotation"_s, 0.0 },
        { u"itemHorizontalMirror"_s, 0.0 },
        { u"itemVerticalMirror"_s, 0.0 },
        { u"itemWidth"_s, 100.0 },
        { u"itemHeight"_s, 100.0 },
        { u"itemScaleX"_s, 1.0 },
        { u"itemScaleY"_s, 1.0 },
        { u"itemTransform"_s, QVariantList { 1.0, 0.0, 0.0, 0.0, 1.0, 0.0, 0.0, 0.0 } },
        { u"allowOverprint"_s, true },
        { u"itemDatasourceId"_s, -1 },
        { u"itemDatasourceField"_s, QString() },
        { u"itemTextColor"_s, of(QColor()) },
        { u"itemFillColor"_s, u"#000000"_s },
        { u"itemFontSize"_s, 7 },
        { u"itemFontFamily"_s, u"_Fen Loma"_s },
        { u"itemAlignment"_s, of(132U) },
        { u"itemBold"_s, false },
        { u"itemItalic"_s, false },
        { u"itemUnderline"_s, false },
        { u"barcodeSymbol"_s, of(short(58)) },
        { u"barcodeText"_s, u"B123456"_s },
        { u"lineWidth"_s, 0 },
        { u"barcodeWhiteSpace"_s, 0 },
        { u"barcodeHideText"_s, false },
        { u"barcodeSecurityLevel"_s, of(short(0)) },
        { u"barcodeTextAbove"_s, false },
        { u"barcodeShowStartStop"_s, false },
        { u"itemPositionX"_s, 0.0 },
        { u"itemPositionY"_s, 0.0 },
    };
}

QVariantMap changedMap()
{
    QVariantMap map = newMap();
    const std::pair<QString, QVariant> changes[] = {
        { u"itemId"_s, of(short(7)) },
        { u"itemFlags"_s, of(0x29U) },
        { u"itemZValue"_s, -2.5 },
        { u"itemRotation"_s, 90.0 },
        { u"itemHorizontalMirror"_s, 1.0 },
        { u"itemWidth"_s, 60.0 },
        { u"itemHeight"_s, 40.0 },
        { u"itemScaleX"_s, 0.5 },
        { u"itemTransform"_s, QVariantList { 0.0, 1.0, 0.0, -1.0, 0.0, 0.0, 50.0, -10.0 } },
        { u"allowOverprint"_s, false },
        { u"itemDatasourceId"_s, 3 },
        { u"itemDatasourceField"_s, u"Name"_s },
        { u"itemTextColor"_s, of(translucentRed) },
        { u"itemFillColor"_s, u"#ffff00"_s },
        { u"itemFontSize"_s, 12 },
        { u"itemFontFamily"_s, u"Loma"_s },
        { u"itemAlignment"_s, of(0x22U) },
        { u"itemBold"_s, true },
        { u"itemItalic"_s, true },
        { u"itemUnderline"_s, true },
        { u"barcodeSymbol"_s, of(short(55)) },
        { u"barcodeText"_s, u"Größe"_s },
        { u"lineWidth"_s, 4 },
        { u"barcodeWhiteSpace"_s, 2 },
        { u"barcodeHideText"_s, true },
        { u"barcodeSecurityLevel"_s, of(short(3)) },
        { u"barcodeTextAbove"_s, true },
        { u"barcodeShowStartStop"_s, true },
        { u"itemPositionX"_s, 12.5 },
        { u"itemPositionY"_s, -3.0 },
    };
    for (const auto &[key, value] : changes)
        map[key] = value;
    return map;
}

} // namespace

/// The property map of a barcode.
class tst_BarcodeMap : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    void newBarcodeHasTheseValues();
    void everyValueIsTaken();
    void versionIsOfNoAccount();
    void partOfAMapChangesThatPart();
    void optionNeedsItsSymbol_data();
    void optionNeedsItsSymbol();
    void markerIsLeftOut();
    void coloursAreReadFromText_data();
    void coloursAreReadFromText();
    void unknownKeysAreSkipped();
    void loadingMovesAndRepaints();
    void heightAndProportionsHaveNoKey();
};

void tst_BarcodeMap::newBarcodeHasTheseValues()
{
    BarcodeItem item;
    ItemMaps::compare(item.saveItemToJSON(), newMap());
}

void tst_BarcodeMap::everyValueIsTaken()
{
    BarcodeItem item;
    item.loadItemFromJSON(changedMap(), 6);
    ItemMaps::compare(item.saveItemToJSON(), changedMap());
    QCOMPARE(item.getBarcodeOption2(), 4);
    QCOMPARE(item.getItemTextColor(), translucentRed);
    QCOMPARE(item.getItemFillColor(), yellow);
    QCOMPARE(item.pos(), QPointF(12.5, -3));
    QCOMPARE(item.boundingRect(), QRectF(0, 0, 60, 40));
}

void tst_BarcodeMap::versionIsOfNoAccount()
{
    for (const unsigned int version : { 0U, 1U, 5U, 6U, 4294967295U }) {
        BarcodeItem item;
        item.loadItemFromJSON(changedMap(), version);
        ItemMaps::compare(item.saveItemToJSON(), changedMap());
    }
}

void tst_BarcodeMap::partOfAMapChangesThatPart()
{
    BarcodeItem item;
    item.loadItemFromJSON({ { u"barcodeText"_s, u"4711"_s }, { u"itemFontSize"_s, 9 } }, 6);
    QVariantMap expected = newMap();
    expected[u"barcodeText"_s] = u"4711"_s;
    expected[u"itemFontSize"_s] = 9;
    ItemMaps::compare(item.saveItemToJSON(), expected);
    QVERIFY(!item.getItemFillColor().isValid());
}

void tst_BarcodeMap::optionNeedsItsSymbol_data()
{
    QTest::addColumn<QVariantMap>("map");
    QTest::addColumn<int>("option");
    const auto map = [](int symbol) {
        return QVariantMap { { u"barcodeSymbol"_s, symbol }, { u"lineWidth"_s, 3 } };
    };
    QTest::newRow("Code 39") << map(8) << 3;
    QTest::newRow("PDF417") << map(55) << 3;
    QTest::newRow("QR Code") << map(58) << 0;
    QTest::newRow("Data Matrix") << map(71) << 0;
    QTest::newRow("option alone") << QVariantMap { { u"lineWidth"_s, 3 } } << 0;
}

void tst_BarcodeMap::optionNeedsItsSymbol()
{
    QFETCH(const QVariantMap, map);
    BarcodeItem item;
    item.loadItemFromJSON(map, 6);
    QTEST(item.getBarcodeOption2(), "option");
}

void tst_BarcodeMap::markerIsLeftOut()
{
    BarcodeItem item;
    item.importBarcodeProperties(
        58, u"A!!!###VXFUNCTIONDATASOURCE###!!!"_s, false, 132, 7, false, false, 0, 0, 0);
    const QVariantMap map = item.saveItemToJSON();
    QCOMPARE(map.value(u"barcodeText"_s).toString(), u"A!!!###VXFUNCTIONDATASOURCE###!!!"_s);
    BarcodeItem loaded;
    loaded.loadItemFromJSON(map, 6);
    QCOMPARE(loaded.getBarcodeText(), u"A"_s);
}

void tst_BarcodeMap::coloursAreReadFromText_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QColor>("colour");
    QTest::newRow("six digits") << u"#ff0000"_s << red;
    QTest::newRow("eight digits") << u"#80ff0000"_s << translucentRed;
    QTest::newRow("transparent") << u"transparent"_s << transparent;
    QTest::newRow("named") << u"blue"_s << blue;
}

void tst_BarcodeMap::coloursAreReadFromText()
{
    QFETCH(const QString, name);
    QFETCH(const QColor, colour);
    BarcodeItem item;
    item.loadItemFromJSON({ { u"itemFillColor"_s, name }, { u"itemTextColor"_s, name } }, 6);
    QCOMPARE(item.getItemFillColor(), colour);
    QCOMPARE(item.getItemTextColor(), colour);
}

void tst_BarcodeMap::unknownKeysAreSkipped()
{
    BarcodeItem item;
    item.loadItemFromJSON({ { u"barcodeHeight"_s, 20 }, { u"itemPenWidth"_s, 5 }, { u"objectName"_s, u"x"_s },
                              { u"barcodeOption2"_s, 5 } },
        6);
    ItemMaps::compare(item.saveItemToJSON(), newMap());
    QCOMPARE(item.getBarcodeHeight(), 50);
}

void tst_BarcodeMap::loadingMovesAndRepaints()
{
    BarcodeItem item;
    item.setItemPositionY(7.0);
    Repaints repaints(item);
    item.loadItemFromJSON({}, 6);
    QCOMPARE(item.pos(), QPointF(0, 7));
    QVERIFY(repaints.wanted());
    item.loadItemFromJSON({}, 6);
    QVERIFY(repaints.wanted());
    item.loadItemFromJSON({ { u"itemPositionX"_s, 5.0 } }, 6);
    QCOMPARE(item.pos(), QPointF(5, 7));
}

void tst_BarcodeMap::heightAndProportionsHaveNoKey()
{
    BarcodeItem item;
    item.setBarcodeHeight(20);
    item.setBarcodeAspectRatio(2);
    ItemMaps::compare(item.saveItemToJSON(), newMap());
    item.loadItemFromJSON(newMap(), 6);
    QCOMPARE(item.getBarcodeHeight(), 20);
    QCOMPARE(item.getBarcodeAspectRatioMode(), 2);
}

QTEST_MAIN(tst_BarcodeMap)
#include "tst_barcodemap.moc"
