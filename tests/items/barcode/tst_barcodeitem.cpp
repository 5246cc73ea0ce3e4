// SPDX-License-Identifier: BSD-3-Clause
#include "items/barcode/barcodeitem.h"
#include "tests/support/barcodesamples.h"
#include "tests/support/colours.h"
#include "tests/support/encodercalls.h"
#include "tests/support/images.h"
#include "tests/support/repaints.h"

#include <QPainterPath>
#include <QRegularExpression>
#include <QTest>

#include <functional>
#include <memory>

using namespace Qt::StringLiterals;
using namespace Colours;

using Action = std::function<void(BarcodeItem &)>;
Q_DECLARE_METATYPE(Action)

namespace {

const QString marker = u"!!!###VXFUNCTIONDATASOURCE###!!!"_s;
const QSize canvas(100, 100);

std::unique_ptr<BarcodeItem> copyOf(BarcodeItem &item)
{
    return std::unique_ptr<BarcodeItem>(dynamic_cast<BarcodeItem *>(item.createItemCopy()));
}

/// Sets everything that a barcode has to other values than those of a new one.
void changeAll(BarcodeItem &item)
{
    item.importBarcodeProperties(40, u"12345678901"_s, true, 0x41, 12, true, true, 9, 4, 3);
    item.setItemFontFamily(u"Loma"_s);
    item.setItemItalic(true);
    item.setItemUnderline(true);
    item.setBarcodeShowStartStop(true);
    item.setBarcodeHeight(20);
    item.setBarcodeAspectRatio(2);
    item.setItemFillColor(yellow);
    item.setItemTextColor(translucentRed);
}

} // namespace

/// The settings of a barcode: when they change, and what depends on them.
class tst_BarcodeItem : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    void newBarcodeIsAQrCode();
    void importSetsEverythingAsItIs();
    void settersKeepTheirValue();
    void onlyAnotherValueRepaints_data();
    void onlyAnotherValueRepaints();
    void optionIsTakenByCode39AndPdf417_data();
    void optionIsTakenByCode39AndPdf417();
    void shapeIsTheWholeRectangle();
    void sizesAreThoseOfAllItems();
    void copyHasEverySetting();
    void copySharesTheSymbol();
    void onlyTheSymbolIsEncodedAnew_data();
    void onlyTheSymbolIsEncodedAnew();
};

void tst_BarcodeItem::newBarcodeIsAQrCode()
{
    BarcodeItem item;
    QCOMPARE(BarcodeItem::defaultFontFamily, u"_Fen Loma"_s);
    QCOMPARE(item.type(), 0x1001D);
    QCOMPARE(item.itemQFlags(), 0x10FU);
    QCOMPARE(item.toDescriptionString(), u"barcode -1"_s);
    QCOMPARE(item.getBarcodeText(), u"B123456"_s);
    QCOMPARE(item.getBarcodeSecurityLevel(), short(0));
    QCOMPARE(item.getBarcodeOption2(), 0);
    QCOMPARE(item.getBarcodeHideText(), false);
    QCOMPARE(item.getBarcodeSymbol(), short(58));
    QCOMPARE(item.getBarcodeHeight(), 50);
    QCOMPARE(item.getBarcodeWhiteSpace(), 0);
    QCOMPARE(item.getBarcodeTextAbove(), false);
    QCOMPARE(item.getBarcodeShowStartStop(), false);
    QCOMPARE(item.getBarcodeAspectRatioMode(), 0);
    QCOMPARE(item.getItemFontSize(), 7);
    QCOMPARE(item.getItemFontFamily(), u"_Fen Loma"_s);
    QCOMPARE(item.getItemAlignmentInt(), 132U);
    QCOMPARE(item.getItemBold(), false);
    QCOMPARE(item.getItemItalic(), false);
    QCOMPARE(item.getItemUnderline(), false);
    QCOMPARE(item.getItemFillColor(), QColor());
    QCOMPARE(item.getItemTextColor(), QColor());
    QCOMPARE(item.getItemSize(), QSizeF(100, 100));
    QVERIFY(item.isValidInput());
    QVERIFY(!item.isBarcode1D());
    QVERIFY(!item.isDatasourceConnected());
    QCOMPARE(item.getItemData(), QVariant(u"B123456"_s));
    QCOMPARE(item.getBarcodeEncodedText(), QString());
}

void tst_BarcodeItem::importSetsEverythingAsItIs()
{
    BarcodeItem item;
    Repaints repaints(item);
    item.importBarcodeProperties(20, marker + u"A"_s, true, 0x22, 11, true, true, 5, 6, 7);
    QVERIFY(repaints.wanted());
    QCOMPARE(item.getBarcodeSymbol(), short(20));
    QCOMPARE(item.getBarcodeText(), marker + u"A"_s);
    QCOMPARE(item.getBarcodeTextAbove(), true);
    QCOMPARE(item.getItemAlignmentInt(), 0x22U);
    QCOMPARE(item.getItemFontSize(), 11);
    QCOMPARE(item.getBarcodeHideText(), true);
    QCOMPARE(item.getItemBold(), true);
    QCOMPARE(item.getBarcodeOption2(), 5);
    QCOMPARE(item.getBarcodeWhiteSpace(), 6);
    QCOMPARE(item.getBarcodeSecurityLevel(), short(7));
    // What is not imported stays.
    QCOMPARE(item.getBarcodeHeight(), 50);
    QCOMPARE(item.getItemFontFamily(), u"_Fen Loma"_s);
    QCOMPARE(item.getItemItalic(), false);
}

void tst_BarcodeItem::settersKeepTheirValue()
{
    BarcodeItem item;
    item.setItemTextColor(red);
    item.setItemFillColor(translucentRed);
    item.setItemAlignment(Qt::AlignRight | Qt::AlignTop);
    QCOMPARE(item.getItemTextColor(), red);
    QCOMPARE(item.getItemFillColor(), translucentRed);
    QCOMPARE(item.getItemFillColorString(), u"#ff0000"_s);
    QCOMPARE(item.getItemAlignment(), Qt::AlignRight | Qt::AlignTop);
    QCOMPARE(item.getItemAlignmentInt(), 0x22U);
    item.setItemFillColorString(u"#0000ff"_s);
    QCOMPARE(item.getItemFillColor(), blue);
    item.setBarcodeSymbol(-32768);
    QCOMPARE(item.getBarcodeSymbol(), short(-32768));
    item.setBarcodeSecurityLevel(32767);
    QCOMPARE(item.getBarcodeSecurityLevel(), short(32767));
    item.setItemAlignmentInt(0xFFFFFFFF);
    QCOMPARE(item.getItemAlignmentInt(), 0xFFFFFFFF);
}

void tst_BarcodeItem::onlyAnotherValueRepaints_data()
{
    QTest::addColumn<Action>("change");
    QTest::addColumn<Action>("changeBack");

    const auto row = [](const char *name, const Action &change, const Action &changeBack) {
        QTest::newRow(name) << change << changeBack;
    };
    row(
        "symbol", [](auto &item) { item.setBarcodeSymbol(20); },
        [](auto &item) { item.setBarcodeSymbol(8); });
    row(
        "option", [](auto &item) { item.setBarcodeOption2(1); },
        [](auto &item) { item.setBarcodeOption2(0); });
    row(
        "height", [](auto &item) { item.setBarcodeHeight(20); },
        [](auto &item) { item.setBarcodeHeight(50); });
    row(
        "text", [](auto &item) { item.setBarcodeText(u"C"_s); },
        [](auto &item) { item.setBarcodeText(u"B123456"_s); });
    row(
        "white space", [](auto &item) { item.setBarcodeWhiteSpace(3); },
        [](auto &item) { item.setBarcodeWhiteSpace(0); });
    row(
        "hidden text", [](auto &item) { item.setBarcodeHideText(true); },
        [](auto &item) { item.setBarcodeHideText(false); });
    row(
        "security level", [](auto &item) { item.setBarcodeSecurityLevel(2); },
        [](auto &item) { item.setBarcodeSecurityLevel(0); });
    row(
        "font size", [](auto &item) { item.setItemFontSize(9); },
        [](auto &item) { item.setItemFontSize(7); });
    row(
        "font family", [](auto &item) { item.setItemFontFamily(u"Loma"_s); },
        [](auto &item) { item.setItemFontFamily(u"_Fen Loma"_s); });
    row(
        "alignment as a number", [](auto &item) { item.setItemAlignmentInt(1); },
        [](auto &item) { item.setItemAlignmentInt(132); });
    row(
        "alignment", [](auto &item) { item.setItemAlignment(Qt::AlignRight); },
        [](auto &item) { item.setItemAlignment(Qt::AlignCenter); });
    row(
        "bold", [](auto &item) { item.setItemBold(true); }, [](auto &item) { item.setItemBold(false); });
    row(
        "italic", [](auto &item) { item.setItemItalic(true); },
        [](auto &item) { item.setItemItalic(false); });
    row(
        "underline", [](auto &item) { item.setItemUnderline(true); },
        [](auto &item) { item.setItemUnderline(false); });
    row(
        "text above", [](auto &item) { item.setBarcodeTextAbove(true); },
        [](auto &item) { item.setBarcodeTextAbove(false); });
    row(
        "start and stop", [](auto &item) { item.setBarcodeShowStartStop(true); },
        [](auto &item) { item.setBarcodeShowStartStop(false); });
    row(
        "aspect ratio", [](auto &item) { item.setBarcodeAspectRatio(1); },
        [](auto &item) { item.setBarcodeAspectRatio(0); });
    row(
        "data", [](auto &item) { item.setItemData(123); },
        [](auto &item) { item.setItemData(u"B123456"_s); });
    row(
        "fill", [](auto &item) { item.setItemFillColor(red); },
        [](auto &item) { item.setItemFillColor(QColor()); });
    row(
        "fill by its name", [](auto &item) { item.setItemFillColorString(u"#ff0000"_s); },
        [](auto &item) { item.setItemFillColorString(u"no colour"_s); });
    row(
        "text colour", [](auto &item) { item.setItemTextColor(red); },
        [](auto &item) { item.setItemTextColor(QColor()); });
}

void tst_BarcodeItem::onlyAnotherValueRepaints()
{
    QFETCH(const Action, change);
    QFETCH(const Action, changeBack);
    BarcodeItem item;
    item.setBarcodeSymbol(8); // Code 39, which has the second option
    Repaints repaints(item);
    for (int round = 0; round < 2; ++round) {
        changeBack(item);
        QVERIFY(!repaints.wanted());
        change(item);
        QVERIFY(repaints.wanted());
        change(item);
        QVERIFY(!repaints.wanted());
        changeBack(item);
        QVERIFY(repaints.wanted());
    }
}

void tst_BarcodeItem::optionIsTakenByCode39AndPdf417_data()
{
    QTest::addColumn<int>("symbol");
    for (const BarcodeSamples::Sample &sample : BarcodeSamples::all)
        QTest::addRow("%d", sample.symbol) << sample.symbol;
}

void tst_BarcodeItem::optionIsTakenByCode39AndPdf417()
{
    QFETCH(const int, symbol);
    BarcodeItem item;
    item.setBarcodeSymbol(static_cast<short>(symbol));
    Repaints repaints(item);
    item.setBarcodeOption2(2);
    const bool taken = symbol == 8 || symbol == 55;
    QCOMPARE(item.getBarcodeOption2(), taken ? 2 : 0);
    QCOMPARE(repaints.wanted(), taken);

    // It outlives the symbol.
    item.setBarcodeSymbol(55);
    item.setBarcodeOption2(7);
    item.setBarcodeSymbol(static_cast<short>(symbol));
    item.setBarcodeOption2(4);
    QCOMPARE(item.getBarcodeOption2(), taken ? 4 : 7);
}

void tst_BarcodeItem::shapeIsTheWholeRectangle()
{
    BarcodeItem item;
    QPainterPath expected;
    expected.addRect(QRectF(0, 0, 80.5, 40));
    item.setItemSize(QSizeF(80.5, 40));
    QCOMPARE(item.boundingRect(), QRectF(0, 0, 80.5, 40));
    QCOMPARE(item.shape(), expected);
    QCOMPARE(item.opaqueArea(), expected);
    item.setItemFillColor(translucentRed);
    item.setBarcodeText({});
    QCOMPARE(item.opaqueArea(), expected);
}

void tst_BarcodeItem::sizesAreThoseOfAllItems()
{
    BarcodeItem item;
    Repaints repaints(item);
    QVERIFY(!item.setItemSize(QSizeF(100, 100)));
    QVERIFY(!item.setItemSize(QSizeF(100, 100), true, true));
    QVERIFY(!item.setItemSize(QSizeF(100, 100), false, 1, 1, 500, 500, false, false));
    QVERIFY(!item.setItemSize(QSizeF(100, 100), false, 1, 1, 500, 500, false, true));
    QVERIFY(!repaints.wanted());

    QVERIFY(item.setItemSize(QSizeF(200, 50)));
    QVERIFY(repaints.wanted());
    QCOMPARE(item.getItemScaleX(), 2.0);
    QCOMPARE(item.getItemScaleY(), 0.5);
    QVERIFY(item.setItemSize(QSizeF(1, 100), true, true));
    QVERIFY(repaints.wanted());
    QCOMPARE(item.boundingRect(), QRectF(0, 0, 400, 100));
    QVERIFY(item.setItemSize(QSizeF(1000, 1000), false, 1, 1, 500, 300, false, false));
    QVERIFY(repaints.wanted());
    QCOMPARE(item.boundingRect(), QRectF(0, 0, 500, 300));

    // As the members of a group are resized.
    item.updateItemSize(QSizeF(10, 20));
    QVERIFY(repaints.wanted());
    QCOMPARE(item.boundingRect(), QRectF(0, 0, 10, 20));
    QCOMPARE(item.getItemScaleX(), 5.0);
    QCOMPARE(item.getItemScaleY(), 3.0);
}

void tst_BarcodeItem::copyHasEverySetting()
{
    BarcodeItem item;
    changeAll(item);
    item.setItemSize(QSizeF(60, 40));
    item.setDatasourceId(3);
    const auto copy = copyOf(item);
    QVERIFY(copy);
    QCOMPARE(copy->getBarcodeSymbol(), short(40));
    QCOMPARE(copy->getBarcodeText(), u"12345678901"_s);
    QCOMPARE(copy->getBarcodeTextAbove(), true);
    QCOMPARE(copy->getItemAlignmentInt(), 0x41U);
    QCOMPARE(copy->getItemFontSize(), 12);
    QCOMPARE(copy->getBarcodeHideText(), true);
    QCOMPARE(copy->getItemBold(), true);
    QCOMPARE(copy->getBarcodeOption2(), 9);
    QCOMPARE(copy->getBarcodeWhiteSpace(), 4);
    QCOMPARE(copy->getBarcodeSecurityLevel(), short(3));
    QCOMPARE(copy->getItemFontFamily(), u"Loma"_s);
    QCOMPARE(copy->getItemItalic(), true);
    QCOMPARE(copy->getItemUnderline(), true);
    QCOMPARE(copy->getBarcodeShowStartStop(), true);
    QCOMPARE(copy->getBarcodeHeight(), 20);
    QCOMPARE(copy->getBarcodeAspectRatioMode(), 2);
    QCOMPARE(copy->getItemFillColor(), yellow);
    QCOMPARE(copy->getItemTextColor(), translucentRed);
    QCOMPARE(copy->getItemSize(), QSizeF(60, 40));
    QCOMPARE(copy->getItemDatasourceID(), 3);
    QCOMPARE(Images::painted(*copy, canvas), Images::painted(item, canvas));

    copy->setBarcodeText(u"1"_s);
    copy->setItemTextColor(blue);
    QCOMPARE(item.getBarcodeText(), u"12345678901"_s);
    QCOMPARE(item.getItemTextColor(), translucentRed);
}

void tst_BarcodeItem::copySharesTheSymbol()
{
    BarcodeItem item;
    int before = EncoderCalls::encodings();
    const auto early = copyOf(item);
    QCOMPARE(EncoderCalls::encodings(), before);

    Images::painted(item, canvas);
    QCOMPARE(EncoderCalls::encodings(), before + 1);
    before = EncoderCalls::encodings();
    const auto copy = copyOf(item);
    const auto copyOfCopy = copyOf(*copy);
    for (BarcodeItem *shown : { &item, copy.get(), copyOfCopy.get() }) {
        Images::painted(*shown, canvas);
        QVERIFY(shown->isValidInput());
        QCOMPARE(shown->getBarcodeEncodedText(), QString());
    }
    copy->resetItemColors(red, false, false);
    Images::painted(*copy, canvas);
    QCOMPARE(EncoderCalls::encodings(), before);
    copy->setBarcodeText(u"A"_s);
    Images::painted(*copy, canvas);
    Images::painted(item, canvas);
    QCOMPARE(EncoderCalls::encodings(), before + 1);
}

void tst_BarcodeItem::onlyTheSymbolIsEncodedAnew_data()
{
    QTest::addColumn<Action>("change");
    QTest::addColumn<int>("encodings");
    const auto row = [](const char *name, int encodings, const Action &change) {
        QTest::newRow(name) << change << encodings;
    };
    row("nothing", 0, [](auto & /*item*/) {});
    row("text", 1, [](auto &item) { item.setBarcodeText(u"C"_s); });
    row("symbol", 1, [](auto &item) { item.setBarcodeSymbol(20); });
    row("height", 1, [](auto &item) { item.setBarcodeHeight(20); });
    row("all of an import", 1, [](auto &item) { changeAll(item); });
    row("size", 0, [](auto &item) { item.setItemSize(QSizeF(30, 40)); });
    row("rotation", 0, [](auto &item) { item.setItemRotation(30); });
    row("mirror", 0, [](auto &item) { item.setItemHorizontalMirror(true); });
    row("colours", 0, [](auto &item) {
        item.setItemFillColor(red);
        item.setItemTextColor(blue);
    });
    row("reduction", 0, [](auto &item) { item.resetItemColorsNegative(red); });
    row("line", 0, [](auto &item) {
        item.setBarcodeHideText(true);
        item.setBarcodeTextAbove(true);
        item.setBarcodeShowStartStop(true);
        item.setItemFontSize(20);
        item.setItemFontFamily(u"Loma"_s);
        item.setItemAlignment(Qt::AlignLeft);
        item.setItemBold(true);
        item.setItemItalic(true);
        item.setItemUnderline(true);
    });
    row("aspect ratio", 0, [](auto &item) { item.setBarcodeAspectRatio(2); });
    row("binding", 0, [](auto &item) { item.setItemDatasourceID(3); });
}

void tst_BarcodeItem::onlyTheSymbolIsEncodedAnew()
{
    QFETCH(const Action, change);
    QFETCH(const int, encodings);
    BarcodeItem item;
    Images::painted(item, canvas);
    const int before = EncoderCalls::encodings();
    change(item);
    for (int i = 0; i < 3; ++i)
        Images::painted(item, canvas);
    QCOMPARE(EncoderCalls::encodings() - before, encodings);
}

QTEST_MAIN(tst_BarcodeItem)
#include "tst_barcodeitem.moc"
