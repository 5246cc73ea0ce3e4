// SPDX-License-Identifier: BSD-3-Clause
#include "items/shapes/rectangleitem.h"
#include "label/documentfile.h"
#include "label/jsonformat.h"
#include "tests/label/jsontexts.h"

#include <QRegularExpression>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace JsonTexts;

namespace {

/// A document with one item of each host key and each form of colour, as it has to be written.
constexpr QByteArrayView canonical = R"({
  "format": "vxlabel",
  "inks": [
    {
      "color": "#000000",
      "name": "black"
    },
    {
      "color": "#d40000",
      "name": "Größe 2"
    }
  ],
  "items": [
    {
      "allowOverprint": false,
      "datasourceField": "Prei\"s",
      "datasourceId": 4,
      "itemBrushStyle": 15,
      "itemFillColor": "#800a141e",
      "itemFlags": 129,
      "itemHeight": 20.25,
      "itemHorizontalMirror": 1,
      "itemId": 7,
      "itemPenCapStyle": 0,
      "itemPenColor": "#d40000",
      "itemPenJoinStyle": 64,
      "itemPenStyle": 2,
      "itemPenWidth": 3,
      "itemPositionX": -12.5,
      "itemPositionY": 0.1,
      "itemQFlags": 263,
      "itemRotation": 0,
      "itemScaleX": 1,
      "itemScaleY": 1,
      "itemShape": 65578,
      "itemTransform": [
        0.5,
        0.25,
        0,
        -0.25,
        2,
        0,
        1000000,
        -3
      ],
      "itemVerticalMirror": 0,
      "itemWidth": 40,
      "itemZValue": 1.5,
      "visible": false
    },
    {
      "allowOverprint": true,
      "itemBrushStyle": 1,
      "itemFillColor": "transparent",
      "itemFlags": 1,
      "itemHeight": 100,
      "itemHorizontalMirror": 0,
      "itemId": -1,
      "itemPenCapStyle": 32,
      "itemPenColor": "#000000",
      "itemPenJoinStyle": 128,
      "itemPenStyle": 1,
      "itemPenWidth": 1,
      "itemPositionX": 0,
      "itemPositionY": 0,
      "itemQFlags": 263,
      "itemRotation": 0,
      "itemScaleX": 1,
      "itemScaleY": 1,
      "itemShape": 65578,
      "itemTransform": [
        1,
        0,
        0,
        0,
        1,
        0,
        0,
        0
      ],
      "itemVerticalMirror": 0,
      "itemWidth": 100,
      "itemZValue": 0
    }
  ],
  "page": {
    "dpi": 300,
    "height": 29.7,
    "width": 62
  },
  "paper": "#fffff0",
  "version": 6
}
)";

std::unique_ptr<RectangleItem> changedRectangle()
{
    auto item = std::make_unique<RectangleItem>();
    item->setItemId(7);
    item->setItemSize(QSizeF(40, 20.25));
    item->setItemZValue(1.5);
    item->setItemHorizontalMirror(true);
    item->setAllowOverprint(false);
    item->setItemPenColor(QColor(0xD4, 0, 0));
    item->setItemFillColor(QColor(10, 20, 30, 128));
    item->setItemPenWidth(3);
    item->setItemPenStyle(Qt::DashLine);
    item->setItemPenCapStyle(Qt::FlatCap);
    item->setItemPenJoinStyle(Qt::BevelJoin);
    item->setItemBrushStyle(MobraTypes::BrushLinearGradient);
    item->setTransform(QTransform(0.5, 0.25, 0, -0.25, 2, 0, 1e6, -3, 1));
    item->setPos(-12.5, 0.1);
    item->setDatasourceId(4);
    item->setDatasourceField(u"Prei\"s"_s);
    item->setVisible(false);
    return item;
}

LabelDocument sampleDocument()
{
    LabelDocument document;
    document.setPageSize(QSizeF(62, 29.7));
    document.setInks({ { u"black"_s, QColor(0, 0, 0) }, { u"Größe 2"_s, QColor(0xD4, 0, 0) } });
    document.setPaper(QColor(255, 255, 240));
    document.addItem(changedRectangle());
    document.addItem(std::make_unique<RectangleItem>());
    return document;
}

} // namespace

class tst_JsonFormat : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    void textIsCanonical();
    void textGivesTheDocument();
    void orderAndBlanksDoNotMatter();
    void missingItemKeysKeepTheirDefaults();
    void olderVersionsAreRead();
    void ditheringIsWrittenUnlessItIsDiffusion();
    void colorsKeepTheirAlpha_data();
    void colorsKeepTheirAlpha();
    void emptyFieldStaysMissing();
    void lockedItemsKeepTheirBinding();
    void brokenItemsCanBeLeftOut();
    void brokenHeadIsRefusedAnyway();
};

void tst_JsonFormat::textIsCanonical()
{
    const QByteArray text = JsonFormat::write(sampleDocument());
    QCOMPARE(QString::fromUtf8(text), QString::fromUtf8(canonical));
    QCOMPARE(text, canonical.toByteArray());
}

void tst_JsonFormat::textGivesTheDocument()
{
    LoadResult result = read(canonical.toByteArray());
    QCOMPARE(shortTexts(result.problems), QStringList());
    QVERIFY(result.document);
    const LabelDocument &document = *result.document;
    QCOMPARE(document.pageSize(), QSizeF(62, 29.7));
    QCOMPARE(document.designDpi(), 300.0);
    QCOMPARE(document.inks(), sampleDocument().inks());
    QCOMPARE(document.paper(), QColor(255, 255, 240));
    QCOMPARE(document.items().size(), 2U);

    auto *item = dynamic_cast<RectangleItem *>(document.items()[0].get());
    QVERIFY(item);
    QCOMPARE(item->itemId(), short(7));
    QCOMPARE(item->getItemSize(), QSizeF(40, 20.25));
    QCOMPARE(item->pos(), QPointF(-12.5, 0.1));
    QCOMPARE(item->transform(), QTransform(0.5, 0.25, 0, -0.25, 2, 0, 1e6, -3, 1));
    QCOMPARE(item->getItemFillColor(), QColor(10, 20, 30, 128));
    QCOMPARE(item->getItemBrushStyle(), MobraTypes::BrushLinearGradient);
    QCOMPARE(item->getSceneBackgroundColor(), QColor(255, 255, 240));
    QCOMPARE(item->getDatasourceId(), 4);
    QCOMPARE(item->getDatasourceField(), u"Prei\"s"_s);
    QVERIFY(item->getItemHorizontalMirror());
    QVERIFY(!item->getItemVerticalMirror());
    QVERIFY(!item->getAllowOverprint());
    QVERIFY(!item->isVisible());
    QCOMPARE(QString::fromUtf8(JsonFormat::write(document)), QString::fromUtf8(canonical));
}

void tst_JsonFormat::orderAndBlanksDoNotMatter()
{
    QByteArray text = canonical.toByteArray();
    text.replace("\n", "\r\n\t").prepend("\xEF\xBB\xBF");
    const LoadResult result = read(text);
    QVERIFY(result.document);
    QCOMPARE(JsonFormat::write(*result.document), canonical.toByteArray());
    QVERIFY(read(smallText).document);
}

void tst_JsonFormat::missingItemKeysKeepTheirDefaults()
{
    const LoadResult result = read(withItems(R"({"itemShape": 65578, "itemPositionX": 12})"));
    QVERIFY(result.document);
    auto *item = dynamic_cast<RectangleItem *>(result.document->items()[0].get());
    QCOMPARE(item->pos(), QPointF(12, 0));
    QCOMPARE(item->getItemSize(), QSizeF(100, 100));
    QCOMPARE(item->getItemFillColor(), QColor(Qt::transparent));
    QCOMPARE(item->getDatasourceId(), -1);
    QVERIFY(item->isVisible());
}

void tst_JsonFormat::olderVersionsAreRead()
{
    const LoadResult result = read(edited(R"("version": 6)", R"("version": 1)"));
    QVERIFY(result.document);
    QVERIFY(JsonFormat::write(*result.document).contains(R"("version": 6)"));
}

void tst_JsonFormat::ditheringIsWrittenUnlessItIsDiffusion()
{
    LoadResult result = read(smallText);
    QVERIFY(result.document);
    QCOMPARE(result.document->dither(), Dither::Diffusion);
    QVERIFY(!JsonFormat::write(*result.document).contains("dither"));

    result = read(edited(R"("items": [])", R"("dither": "ordered", "items": [])"));
    QVERIFY(result.document);
    QCOMPARE(result.document->dither(), Dither::Ordered);
    const QByteArray text = JsonFormat::write(*result.document);
    QVERIFY(text.startsWith("{\n  \"dither\": \"ordered\",\n  \"format\": \"vxlabel\""));
    QCOMPARE(read(text).document->dither(), Dither::Ordered);
}

void tst_JsonFormat::colorsKeepTheirAlpha_data()
{
    QTest::addColumn<QColor>("color");
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QColor>("readBack");

    const auto row = [](const char *name, const QColor &color, const char *text, const QColor &readBack) {
        QTest::newRow(name) << color << QByteArray(text) << readBack;
    };
    row("opaque", QColor(1, 2, 254), "#0102fe", QColor(1, 2, 254));
    row("nearly opaque", QColor(1, 2, 3, 254), "#fe010203", QColor(1, 2, 3, 254));
    row("hardly visible", QColor(255, 2, 3, 1), "#01ff0203", QColor(255, 2, 3, 1));
    row("transparent", QColor(Qt::transparent), "transparent", QColor(Qt::transparent));
    row("transparent white", QColor(255, 255, 255, 0), "transparent", QColor(Qt::transparent));
    row("invalid", QColor(), "transparent", QColor(Qt::transparent));
}

void tst_JsonFormat::colorsKeepTheirAlpha()
{
    QFETCH(QColor, color);
    QFETCH(QByteArray, text);
    LabelDocument document;
    auto item = std::make_unique<RectangleItem>();
    item->setItemPenColor(color);
    item->setItemFillColor(color);
    document.addItem(std::move(item));
    const QByteArray json = JsonFormat::write(document);
    QVERIFY(json.contains(R"("itemPenColor": ")" + text + "\""));
    QVERIFY(json.contains(R"("itemFillColor": ")" + text + "\""));

    const LoadResult result = read(json);
    QVERIFY(result.document);
    auto *again = dynamic_cast<RectangleItem *>(result.document->items()[0].get());
    QTEST(again->getItemPenColor(), "readBack");
    QTEST(again->getItemFillColor(), "readBack");
}

void tst_JsonFormat::emptyFieldStaysMissing()
{
    LabelDocument document;
    document.addItem(std::make_unique<RectangleItem>())->setDatasourceField(u""_s);
    const QByteArray json = JsonFormat::write(document);
    QVERIFY(!json.contains("datasource"));
    const LoadResult result = read(json);
    QVERIFY(result.document);
    QVERIFY(result.document->items()[0]->getDatasourceField().isNull());
}

void tst_JsonFormat::lockedItemsKeepTheirBinding()
{
    const LoadResult result
        = read(withItems(rectangleWith(R"("itemFlags": 33, "datasourceId": 2, "datasourceField": "price")")));
    QVERIFY(result.document);
    Item &item = *result.document->items()[0];
    QCOMPARE(item.itemFlags(), uint(MobraTypes::FlagReadOnly | MobraTypes::FlagVisibleInPrint));
    QCOMPARE(item.getDatasourceField(), u"price"_s);
    item.setItemAsReadOnly(false);
    QCOMPARE(item.getDatasourceId(), 2);
    QCOMPARE(item.getDatasourceField(), u"price"_s);
}

void tst_JsonFormat::brokenItemsCanBeLeftOut()
{
    const QByteArray text = withItems(R"({"itemShape": 65578, "itemId": 1}, {"itemShape": 65600}, 0,
        {"itemShape": 65578, "itemId": 2}, {"itemShape": 65578, "itemWidth": -1})");
    const LoadResult result = read(text, BrokenItems::LeaveOut);
    QVERIFY(result.document);
    QCOMPARE(result.document->items().size(), 2U);
    QCOMPARE(result.document->items()[0]->itemId(), short(1));
    QCOMPARE(result.document->items()[1]->itemId(), short(2));
    QCOMPARE(shortTexts(result.problems),
        QStringList({ u"/items/1/itemShape: 65600 is no known type of item"_s,
            u"/items/2: is a number, not an object"_s, u"/items/4/itemWidth: -1 is negative"_s }));
    QVERIFY(!read(text).document);
}

void tst_JsonFormat::brokenHeadIsRefusedAnyway()
{
    const LoadResult result = read(edited(R"("dpi": 300)", R"("dpi": 1)"), BrokenItems::LeaveOut);
    QVERIFY(!result.document);
    QCOMPARE(shortTexts(result.problems), QStringList(u"/page/dpi: 1 is out of range"_s));
}

QTEST_MAIN(tst_JsonFormat)
#include "tst_jsonformat.moc"
