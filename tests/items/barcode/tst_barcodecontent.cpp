// SPDX-License-Identifier: BSD-3-Clause
#include "items/barcode/barcodeitem.h"
#include "tests/support/repaints.h"

#include <QRegularExpression>
#include <QSignalSpy>
#include <QTest>

#include <functional>

using namespace Qt::StringLiterals;

using Action = std::function<void(BarcodeItem &)>;
Q_DECLARE_METATYPE(Action)

namespace {

const QString marker = u"!!!###VXFUNCTIONDATASOURCE###!!!"_s;

} // namespace

/// The text of a barcode, where it comes from, and what can be encoded.
class tst_BarcodeContent : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    void markerIsLeftOut_data();
    void markerIsLeftOut();
    void sameTextWithMarkerIsNoChange();
    void dataIsShownAsText_data();
    void dataIsShownAsText();
    void bindingIsThatOfTheItem();
    void noSignalTellsOfChanges();
    void severalSymbolsAreTwoDimensional_data();
    void severalSymbolsAreTwoDimensional();
    void textsThatCannotBeEncodedAreInvalid_data();
    void textsThatCannotBeEncodedAreInvalid();
    void encodedTextHasCheckDigits();
};

void tst_BarcodeContent::markerIsLeftOut_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("kept");
    QTest::newRow("none") << u"4711"_s << u"4711"_s;
    QTest::newRow("alone") << marker << QString();
    QTest::newRow("in front") << marker + u"4711"_s << u"4711"_s;
    QTest::newRow("behind") << u"4711"_s + marker << u"4711"_s;
    QTest::newRow("within") << u"47"_s + marker + u"11"_s << u"4711"_s;
    QTest::newRow("twice") << marker + u"47"_s + marker + u"11"_s << u"4711"_s;
    QTest::newRow("twice in a row") << marker + marker << QString();
    QTest::newRow("in small letters") << marker.toLower() << u"!!!###vxfunctiondatasource###!!!"_s;
    QTest::newRow("cut") << marker.chopped(1) << u"!!!###VXFUNCTIONDATASOURCE###!!"_s;
    QTest::newRow("blanks stay") << u" "_s + marker + u" "_s << u"  "_s;
}

void tst_BarcodeContent::markerIsLeftOut()
{
    QFETCH(const QString, text);
    QFETCH(const QString, kept);
    BarcodeItem item;
    item.setBarcodeText(text);
    QCOMPARE(item.getBarcodeText(), kept);
    BarcodeItem bound;
    bound.setItemData(text);
    QCOMPARE(bound.getBarcodeText(), kept);
}

void tst_BarcodeContent::sameTextWithMarkerIsNoChange()
{
    BarcodeItem item;
    Repaints repaints(item);
    item.setBarcodeText(marker + u"4711"_s);
    QVERIFY(repaints.wanted());
    item.setBarcodeText(marker + u"4711"_s);
    item.setBarcodeText(u"4711"_s);
    item.setItemData(u"47"_s + marker + u"11"_s);
    QVERIFY(!repaints.wanted());

    // One that came with its marker keeps it until it gets another text.
    item.importBarcodeProperties(58, marker + u"A"_s, false, 132, 7, false, false, 0, 0, 0);
    QVERIFY(repaints.wanted());
    item.setBarcodeText(marker + u"A"_s);
    QVERIFY(!repaints.wanted());
    QCOMPARE(item.getBarcodeText(), marker + u"A"_s);
    item.setBarcodeText(u"A"_s);
    QVERIFY(repaints.wanted());
    QCOMPARE(item.getBarcodeText(), u"A"_s);
}

void tst_BarcodeContent::dataIsShownAsText_data()
{
    QTest::addColumn<QVariant>("data");
    QTest::addColumn<QString>("text");
    QTest::newRow("text") << QVariant(u"Größe"_s) << u"Größe"_s;
    QTest::newRow("whole number") << QVariant(4711) << u"4711"_s;
    QTest::newRow("number") << QVariant(9.5) << u"9.5"_s;
    QTest::newRow("truth") << QVariant(true) << u"true"_s;
    QTest::newRow("date") << QVariant(QDate(2024, 2, 29)) << u"2024-02-29"_s;
    QTest::newRow("bytes") << QVariant(QByteArray("A1")) << u"A1"_s;
    QTest::newRow("nothing") << QVariant() << QString();
    QTest::newRow("list") << QVariant(QVariantList { 1, 2 }) << QString();
}

void tst_BarcodeContent::dataIsShownAsText()
{
    QFETCH(const QVariant, data);
    QFETCH(const QString, text);
    BarcodeItem item;
    item.setItemData(data);
    QCOMPARE(item.getBarcodeText(), text);
    QCOMPARE(item.getItemData(), QVariant(text));
}

void tst_BarcodeContent::bindingIsThatOfTheItem()
{
    BarcodeItem item;
    IDatasourceItem &bound = item;
    bound.setItemDatasourceField(u"Name"_s);
    for (const auto &[id, connected] : { std::pair(0, true), { 3, true }, { -1, false }, { -2, false } }) {
        bound.setItemDatasourceID(id);
        QCOMPARE(bound.getItemDatasourceID(), id);
        QCOMPARE(item.getDatasourceId(), id);
        QCOMPARE(bound.isDatasourceConnected(), connected);
    }
    QCOMPARE(item.getDatasourceField(), u"Name"_s);
    item.setDatasourceId(5);
    item.setDatasourceField(u"Price"_s);
    QCOMPARE(bound.getItemDatasourceID(), 5);
    QCOMPARE(bound.getItemDatasourceField(), u"Price"_s);
    item.setItemAsReadOnly(true);
    QVERIFY(!bound.isDatasourceConnected());
}

// They are there for hosts that connect to every item with data; only texts change by themselves.
void tst_BarcodeContent::noSignalTellsOfChanges()
{
    BarcodeItem item;
    const QSignalSpy withId(&item, qOverload<QVariant, int, QString>(&BarcodeItem::itemDataChanged));
    const QSignalSpy withoutId(&item, qOverload<QVariant, QString>(&BarcodeItem::itemDataChanged));
    QVERIFY(withId.isValid() && withoutId.isValid());
    item.setBarcodeText(u"A"_s);
    item.setItemData(u"B"_s);
    item.importBarcodeProperties(8, u"C"_s, true, 1, 9, true, true, 1, 2, 3);
    item.setItemTextColor(Qt::red);
    QCOMPARE(withId.size(), 0);
    QCOMPARE(withoutId.size(), 0);
}

void tst_BarcodeContent::severalSymbolsAreTwoDimensional_data()
{
    QTest::addColumn<int>("symbol");
    QTest::addColumn<bool>("linear");
    for (const int symbol : { 55, 58, 71 })
        QTest::addRow("%d", symbol) << symbol << false;
    // The others that have no single row of bars are not told apart.
    for (const int symbol : { -1, 0, 1, 8, 13, 20, 54, 56, 57, 59, 70, 72, 84, 92, 97, 115, 32767 })
        QTest::addRow("%d", symbol) << symbol << true;
}

void tst_BarcodeContent::severalSymbolsAreTwoDimensional()
{
    QFETCH(const int, symbol);
    BarcodeItem item;
    item.setBarcodeSymbol(static_cast<short>(symbol));
    QTEST(item.isBarcode1D(), "linear");
}

void tst_BarcodeContent::textsThatCannotBeEncodedAreInvalid_data()
{
    QTest::addColumn<Action>("change");
    QTest::addColumn<bool>("valid");
    QTest::newRow("fine") << Action([](auto & /*item*/) {}) << true;
    // 6
    QTest::newRow("invalid data") << Action([](auto &item) {
        item.setBarcodeSymbol(13);
        item.setBarcodeText(u"letters"_s);
    }) << false;
    QTest::newRow("empty") << Action([](auto &item) { item.setBarcodeText({}); }) << false;
    // 5
    QTest::newRow("too long") << Action([](auto &item) {
        item.setBarcodeSymbol(13);
        item.setBarcodeText(u"12345678901234567890"_s);
    }) << false;
    // 7
    QTest::newRow("wrong check digit") << Action([](auto &item) {
        item.setBarcodeSymbol(14);
        item.setBarcodeText(u"5901234123450"_s);
    }) << false;
    QTest::newRow("right check digit") << Action([](auto &item) {
        item.setBarcodeSymbol(14);
        item.setBarcodeText(u"5901234123457"_s);
    }) << true;
    // Warning 2: an unknown symbol is encoded as another one.
    QTest::newRow("warning") << Action([](auto &item) { item.setBarcodeSymbol(999); }) << true;
    // 8: it is not the text's fault.
    QTest::newRow("option out of range")
        << Action([](auto &item) { item.setBarcodeWhiteSpace(5000); }) << true;
}

void tst_BarcodeContent::textsThatCannotBeEncodedAreInvalid()
{
    QFETCH(const Action, change);
    BarcodeItem item;
    change(item);
    QTEST(item.isValidInput(), "valid");
}

void tst_BarcodeContent::encodedTextHasCheckDigits()
{
    BarcodeItem item;
    item.setBarcodeSymbol(13);
    item.setBarcodeText(u"590123412345"_s);
    QCOMPARE(item.getBarcodeEncodedText(), u"5901234123457"_s);
    item.setBarcodeSymbol(8);
    item.setBarcodeText(u"ABC"_s);
    QCOMPARE(item.getBarcodeEncodedText(), u"*ABC*"_s);
    item.setBarcodeOption2(1); // (10 + 11 + 12) mod 43 is 33, an X
    QCOMPARE(item.getBarcodeEncodedText(), u"*ABCX*"_s);
    item.setBarcodeText(u"Größe"_s);
    QCOMPARE(item.getBarcodeEncodedText(), QString());
}

QTEST_MAIN(tst_BarcodeContent)
#include "tst_barcodecontent.moc"
