// SPDX-License-Identifier: BSD-3-Clause
#include "items/barcode/barcodeitem.h"
#include "items/containers/layeritem.h"
#include "items/shapes/ellipseitem.h"
#include "items/shapes/lineitem.h"
#include "items/shapes/pieitem.h"
#include "items/shapes/polygonitem.h"
#include "items/shapes/roundedrectangleitem.h"
#include "items/text/richtextitem.h"
#include "items/text/simpletextitem.h"
#include "label/documentfile.h"
#include "label/itemtree.h"
#include "tests/label/typeditems.h"
#include "tests/support/allitems.h"
#include "tests/support/hexbytes.h"
#include "tests/support/images.h"
#include "tests/support/itemrecords.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace TypedItems;

namespace {

/// What every item writes, and what the filled ones do.
const QSet<QString> commonKeys { u"itemShape"_s, u"itemId"_s, u"itemFlags"_s, u"itemQFlags"_s,
    u"itemZValue"_s, u"itemRotation"_s, u"itemHorizontalMirror"_s, u"itemVerticalMirror"_s, u"itemWidth"_s,
    u"itemHeight"_s, u"itemScaleX"_s, u"itemScaleY"_s, u"itemTransform"_s, u"allowOverprint"_s,
    u"itemPositionX"_s, u"itemPositionY"_s };
const QSet<QString> fillKeys { u"itemFillColor"_s, u"itemBrushStyle"_s };
const QSet<QString> hostBinding { u"datasourceId"_s, u"datasourceField"_s };
const QSet<QString> textKeys { u"itemTextColor"_s, u"itemAlignment"_s, u"itemFontSize"_s,
    u"itemFontFamily"_s };
const QSet<QString> labelTextKeys { u"itemText"_s, u"itemTextVertical"_s, u"itemPinToCenter"_s,
    u"itemWasResized"_s, u"itemSizeLimiting"_s, u"itemDocumentMargin"_s, u"oldTransformCoefficientM31"_s,
    u"oldTransformCoefficientM32"_s, u"itemFontBold"_s, u"itemItalic"_s, u"itemUnderline"_s };
const QSet<QString> richTextKeys { u"itemHtml"_s, u"documentIsEmpty"_s, u"screenDpi"_s, u"itemFontWeight"_s,
    u"itemFontItalic"_s, u"itemFontUnderline"_s };
const QSet<QString> penKeys { u"itemPenColor"_s, u"itemPenWidth"_s, u"itemPenStyle"_s, u"itemPenCapStyle"_s,
    u"itemPenJoinStyle"_s };
const QSet<QString> barcodeKeys { u"itemFillColor"_s, u"itemBold"_s, u"itemItalic"_s, u"itemUnderline"_s,
    u"barcodeSymbol"_s, u"barcodeText"_s, u"lineWidth"_s, u"barcodeWhiteSpace"_s, u"barcodeHideText"_s,
    u"barcodeSecurityLevel"_s, u"barcodeTextAbove"_s, u"barcodeShowStartStop"_s };
const QSet<QString> pictureKeys { u"pixmapItemData"_s, u"oldTransformCoefficientM31"_s,
    u"oldTransformCoefficientM32"_s, u"imageHasTransparency"_s, u"firstResizeAfterAddedToGroup"_s };
const QSet<QString> ownBinding { u"itemDatasourceId"_s, u"itemDatasourceField"_s };

QSet<QString> keysOf(ShapeType shape)
{
    switch (shape) {
    case MobraTypes::LabelTextShape:
        return commonKeys + penKeys + fillKeys + ownBinding + textKeys + labelTextKeys;
    case MobraTypes::RichTextShape:
        return commonKeys + penKeys + fillKeys + ownBinding + textKeys + richTextKeys;
    case MobraTypes::SvgShape:
        return commonKeys + ownBinding
            + QSet { u"svgContents"_s, u"svgHasTransparency"_s, u"svgIsInvalid"_s,
                  u"oldTransformCoefficientM31"_s, u"oldTransformCoefficientM32"_s };
    case MobraTypes::SymbolShape:
        return commonKeys + ownBinding
            + QSet { u"fillBoundingRectangle"_s, u"hasSingleColor"_s, u"svgContentsOriginal"_s,
                  u"oldTransformCoefficientM31"_s, u"oldTransformCoefficientM32"_s, u"itemPenColor"_s,
                  u"itemFillColor"_s };
    case MobraTypes::BarcodeShape:
        return commonKeys + ownBinding + textKeys + barcodeKeys;
    case MobraTypes::PixmapShape:
        return commonKeys + ownBinding + pictureKeys;
    case MobraTypes::RectangleShape:
        return commonKeys + penKeys + fillKeys + hostBinding;
    case MobraTypes::RoundedRectangleShape:
        return commonKeys + penKeys + fillKeys + hostBinding
            + QSet { u"roundingRadiusX"_s, u"roundingRadiusY"_s };
    case MobraTypes::PieShape:
        return commonKeys + penKeys + fillKeys + ownBinding
            + QSet { u"drawCircle"_s, u"startPieAngle"_s, u"spanPieAngle"_s };
    case MobraTypes::LineShape:
        return commonKeys + penKeys + ownBinding + QSet { u"itemArrows"_s, u"itemLength"_s };
    default:
        return commonKeys + penKeys + fillKeys + ownBinding;
    }
}

void changeOwnFields(Item &item)
{
    if (auto *rounded = dynamic_cast<RoundedRectangleItem *>(&item)) {
        rounded->setRoundingRadiusX(12.5);
        rounded->setRoundingRadiusY(-0.1);
    }
    if (auto *pie = dynamic_cast<PieItem *>(&item)) {
        pie->setDrawCircle(true);
        pie->setStartPieAngle(-2147483647);
        pie->setSpanPieAngle(2147483647);
    }
    if (auto *line = dynamic_cast<LineItem *>(&item)) {
        line->setItemLength(1.0 / 3.0 + 7.0);
        line->setItemArrows(0xFFFF);
    }
    if (auto *symbol = dynamic_cast<SymbolItem *>(&item)) {
        AllItems::draw(*symbol);
        symbol->setSingleColor(true);
        symbol->setFillBoundingRectangle(true);
        symbol->setOldTransformCoefficientM31(0.1);
        symbol->setOldTransformCoefficientM32(-1e6);
        symbol->setItemFillColor(QColor(4, 5, 6, 99));
    }
    if (auto *svg = dynamic_cast<SvgItem *>(&item)) {
        svg->loadItemFromData("<svg width=\"3\" height=\"2\"><g/></svg>");
        svg->setImageHasTransparency(true);
        svg->setOldTransformCoefficientM31(0.1);
        svg->setOldTransformCoefficientM32(-1e6);
    }
    if (auto *picture = dynamic_cast<PixMapItem *>(&item)) {
        QImage pixels(3, 2, QImage::Format_ARGB32);
        pixels.fill(QColor(200, 100, 50, 25));
        pixels.setPixelColor(1, 1, QColor(1, 2, 3, 255));
        picture->setPixmap(QPixmap::fromImage(pixels));
        picture->setFirstResizeAfterAddedToGroup(true);
        picture->setOldTransformCoefficientM31(1.0 / 3.0);
        picture->setOldTransformCoefficientM32(-2.5);
    }
    // A size, for which only an import asks: no setter takes it for a QR Code.
    if (auto *barcode = dynamic_cast<BarcodeItem *>(&item)) {
        barcode->importBarcodeProperties(
            58, u"!!!###VXFUNCTIONDATASOURCE###!!!Größe 😀"_s, true, 0x41, 12, true, true, 9, 32767, 3);
        barcode->setItemFontFamily(u"DejaVu Serif"_s);
        barcode->setItemItalic(true);
        barcode->setItemUnderline(true);
        barcode->setBarcodeShowStartStop(true);
        barcode->setItemTextColor(QColor(4, 5, 6, 99));
    }
}

using Change = void (*)(Item &);

struct State
{
    const char *name;
    Change change;
};

constexpr State states[] = {
    { "new", [](Item &) {} },
    { "changed", &AllItems::change },
    { "of other own fields", &changeOwnFields },
    { "changed in all", [](Item &item) { AllItems::change(item), changeOwnFields(item); } },
    { "hidden, translucent",
        [](Item &item) {
            item.setItemIsVisible(false);
            if (auto *colored = dynamic_cast<IColorItem *>(&item))
                colored->setItemPenColor(QColor(1, 2, 3, 77));
            if (auto *filled = dynamic_cast<FillColorItem *>(&item))
                filled->setItemFillColor(QColor(250, 128, 7, 1));
        } },
    { "distorted",
        [](Item &item) {
            item.setItemSize(QSizeF(33.3, 66.6));
            // The others have the scales 1.
            if (dynamic_cast<PolygonItem *>(&item)) {
                item.setItemScaleX(2.5);
                item.setItemScaleY(0.1);
            }
            AllItems::graphics(item).setTransform(QTransform(0.5, 0.25, 0, -0.25, 2, 0, 1e6, -3, 1));
            AllItems::graphics(item).setPos(-12.5, 1.0 / 3.0);
        } },
    { "of one dimension", [](Item &item) { item.setItemSize(QSizeF(50.0, 0.0)); } },
};

/// A new barcode has invalid colours. JSON has the same that are none: no fill, and black bars.
std::unique_ptr<Item> withColors(std::unique_ptr<Item> item)
{
    auto *barcode = dynamic_cast<BarcodeItem *>(item.get());
    if (barcode && !barcode->getItemFillColor().isValid())
        barcode->setItemFillColor(Qt::transparent);
    if (barcode && !barcode->getItemTextColor().isValid())
        barcode->setItemTextColor(Qt::black);
    return item;
}

LabelDocument documentOf(std::unique_ptr<Item> item)
{
    LabelDocument document;
    document.addItem(std::move(item));
    return document;
}

/// The document in a form; nothing, with a warning that fails the test, if it has no such form.
QByteArray toForm(const LabelDocument &document, DocumentFormat format)
{
    Problems problems;
    const QByteArray data = DocumentFile::toData(document, format, problems);
    for (const Problem &problem : problems)
        qWarning("%s", qPrintable(problem.text()));
    return data;
}

/// The same document in the other form.
QByteArray converted(const QByteArray &data, DocumentFormat format)
{
    const LoadResult result = DocumentFile::loadFromData(data, {});
    for (const Problem &problem : result.problems)
        qWarning("%s", qPrintable(problem.text()));
    return result.document ? toForm(*result.document, format) : QByteArray();
}

} // namespace

/// The items of all classes as JSON, and from JSON to a record and back.
class tst_ShapeFormats : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    void formsTurnIntoEachOther_data();
    void formsTurnIntoEachOther();
    void newBarcodeLooksTheSame();
    void jsonHoldsEveryProperty_data() { AllItems::addRows(); }
    void jsonHoldsEveryProperty();
    void ownFieldsAreRead();
    void documentsOfAnotherWriterAreRead_data();
    void documentsOfAnotherWriterAreRead();
    void ownKeysHaveTheirType_data();
    void ownKeysHaveTheirType();
    void wholeNumbersFitTheirProperty_data();
    void wholeNumbersFitTheirProperty();
    void realNumbersAreUsable_data();
    void realNumbersAreUsable();
    void foreignKeysAreGuessed_data();
    void foreignKeysAreGuessed();
};

void tst_ShapeFormats::formsTurnIntoEachOther_data()
{
    QTest::addColumn<ShapeType>("shape");
    QTest::addColumn<Change>("change");
    for (const ShapeType shape : AllItems::shapes()) {
        for (const auto &[name, change] : states)
            QTest::addRow("%s, %s", AllItems::object(*AllItems::made(shape)).metaObject()->className(), name)
                << shape << change;
    }
}

void tst_ShapeFormats::formsTurnIntoEachOther()
{
    QFETCH(ShapeType, shape);
    QFETCH(Change, change);
    std::unique_ptr<Item> item = AllItems::made(shape);
    change(*item);
    const LabelDocument document = documentOf(withColors(ItemRecords::settled(std::move(item))));
    const QByteArray json = toForm(document, DocumentFormat::Json);
    const QByteArray binary = toForm(document, DocumentFormat::Binary);
    QVERIFY(!json.isEmpty() && !binary.isEmpty());
    QCOMPARE(toHexText(converted(json, DocumentFormat::Binary)), toHexText(binary));
    QCOMPARE(converted(binary, DocumentFormat::Json), json);
    QCOMPARE(converted(json, DocumentFormat::Json), json);
    QCOMPARE(toHexText(converted(binary, DocumentFormat::Binary)), toHexText(binary));
}

void tst_ShapeFormats::newBarcodeLooksTheSame()
{
    const LabelDocument document = documentOf(AllItems::made(MobraTypes::BarcodeShape));
    const QByteArray json = toForm(document, DocumentFormat::Json);
    const QJsonValue item = QJsonDocument::fromJson(json)["items"_L1][0];
    QCOMPARE(item["itemFillColor"_L1].toString(), u"transparent"_s);
    QCOMPARE(item["itemTextColor"_L1].toString(), u"#000000"_s);
    const LoadResult result = read(json);
    QVERIFY(result.document);
    const auto picture = [](const LabelDocument &shown) {
        return Images::painted(AllItems::graphics(*shown.items()[0]), QSize(100, 100));
    };
    QCOMPARE(Images::coloursOf(picture(document)).size(), 2);
    QCOMPARE(picture(*result.document), picture(document));
}

void tst_ShapeFormats::jsonHoldsEveryProperty()
{
    QFETCH(ShapeType, shape);
    std::unique_ptr<Item> item = AllItems::made(shape);
    AllItems::change(*item);
    item->setItemAsReadOnly(false);
    item->setDatasourceId(3);
    item->setDatasourceField(u"Name"_s);
    const QByteArray json = toForm(documentOf(std::move(item)), DocumentFormat::Json);
    const QJsonObject object = QJsonDocument::fromJson(json)["items"_L1][0].toObject();
    const QStringList keys = object.keys();
    QCOMPARE(QSet<QString>(keys.begin(), keys.end()), keysOf(shape));
}

void tst_ShapeFormats::ownFieldsAreRead()
{
    const auto rounded = itemOf<RoundedRectangleItem>(
        MobraTypes::RoundedRectangleShape, R"("roundingRadiusX": 3.25, "roundingRadiusY": -4)");
    QCOMPARE(rounded->getRoundingRadiusX(), 3.25);
    QCOMPARE(rounded->getRoundingRadiusY(), -4.0);

    const auto pie = itemOf<PieItem>(
        MobraTypes::PieShape, R"("drawCircle": true, "startPieAngle": -160, "spanPieAngle": 5760)");
    QVERIFY(pie->getDrawCircle());
    QCOMPARE(pie->startPieAngle(), -160);
    QCOMPARE(pie->spanPieAngle(), 5760);

    const auto line = itemOf<LineItem>(MobraTypes::LineShape, R"("itemArrows": 131, "itemLength": 250.5)");
    QCOMPARE(line->getItemArrowLeft(), MobraTypes::LeftArrowBar);
    QCOMPARE(line->getItemArrowRight(), MobraTypes::RightArrowFilled);
    QCOMPARE(line->getItemLength(), 250.5);
    QCOMPARE(line->getItemSize(), QSizeF(250.5, 0));

    const auto barcode = itemOf<BarcodeItem>(MobraTypes::BarcodeShape,
        R"("barcodeSymbol": 55, "barcodeText": "PDF", "lineWidth": 4, "itemTextColor": "#80d40000")");
    QCOMPARE(barcode->getBarcodeSymbol(), short(55));
    QCOMPARE(barcode->getBarcodeText(), u"PDF"_s);
    QCOMPARE(barcode->getBarcodeOption2(), 4);
    QCOMPARE(barcode->getItemTextColor(), QColor(0xD4, 0, 0, 0x80));

    const auto ellipse = itemOf<EllipseItem>(
        MobraTypes::EllipseShape, R"("itemDatasourceId": 7, "itemDatasourceField": "Preis")");
    QCOMPARE(ellipse->getDatasourceId(), 7);
    QCOMPARE(ellipse->getDatasourceField(), u"Preis"_s);
}

// fuzz/make_seeds.py writes them, which knows the formats only.
void tst_ShapeFormats::documentsOfAnotherWriterAreRead_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("JSON") << u"vxl/all_shapes.vxl"_s;
    QTest::newRow("binary") << u"vxb/all_shapes.vxb"_s;
}

void tst_ShapeFormats::documentsOfAnotherWriterAreRead()
{
    QFETCH(QString, name);
    const QString folder = QStringLiteral(VX_TEST_DATA_DIR "/../../fuzz/corpus/");
    const LoadResult result = DocumentFile::load(folder + name);
    QCOMPARE(shortTexts(result.problems), QStringList());
    QVERIFY(result.document);
    const auto &items = result.document->items();
    QList<ShapeType> shapes;
    for (const auto &item : items)
        shapes.append(item->getItemShape());
    QList<ShapeType> sorted = shapes;
    std::ranges::sort(sorted);
    QCOMPARE(sorted, AllItems::shapesAndContainers());
    const auto itemOf = [&](ShapeType shape) { return items[std::size_t(shapes.indexOf(shape))].get(); };

    const auto &layer = dynamic_cast<LayerItem &>(*itemOf(MobraTypes::LayerShape));
    QCOMPARE(layer.itemId(), short(3));
    QCOMPARE(layer.zValue(), 1.5);
    QCOMPARE(layer.objectName(), u"Größe"_s);
    QCOMPARE(ItemTree::count(layer), 6);
    const Item &group = *ItemTree::membersOf(layer).first();
    QCOMPARE(ItemTree::membersOf(group).last()->getItemShape(), MobraTypes::PixmapShape);
    const Item &text = *ItemTree::membersOf(*ItemTree::membersOf(group).first()).last();
    QCOMPARE(dynamic_cast<const SimpleTextItem &>(text).getItemText(), u"Größe\n42 😀"_s);

    auto &label = dynamic_cast<SimpleTextItem &>(*itemOf(MobraTypes::LabelTextShape));
    QCOMPARE(label.getItemText(), u"Größe\n42 😀"_s);
    QCOMPARE(label.getItemTextColor(), QColor(0xD4, 0, 0));
    QCOMPARE(label.getItemAlignment(), Qt::AlignRight);
    QCOMPARE(label.font().family(), u"Loma"_s);
    QCOMPARE(label.getItemPositiveFontSize(), 24);
    QVERIFY(label.getItemItalic() && !label.getItemUnderline() && label.getItemPinToCenter());
    QVERIFY(label.getItemFixedSizeWidth() && !label.getItemFixedSizeHeight());
    QCOMPARE(label.getItemSize(), QSizeF(250.25, 40.5));
    auto &rich = dynamic_cast<RichTextItem &>(*itemOf(MobraTypes::RichTextShape));
    QCOMPARE(rich.getItemText(), u"Now 9,99"_s);
    QVERIFY(!rich.getDocumentIsEmpty());
    QCOMPARE(rich.getEmptyFontFamily(), u"Loma"_s);
    QVERIFY(!rich.getEmptyFontItalic() && rich.getEmptyFontUnderline());
    QCOMPARE(rich.getEmptyAlignment(), int(Qt::AlignRight));

    const auto &barcode = dynamic_cast<BarcodeItem &>(*itemOf(MobraTypes::BarcodeShape));
    QCOMPARE(barcode.getBarcodeSymbol(), short(8));
    QCOMPARE(barcode.getBarcodeText(), u"LOT 4711"_s);
    QCOMPARE(barcode.getBarcodeOption2(), 1);
    QCOMPARE(barcode.getBarcodeWhiteSpace(), 10);
    QCOMPARE(barcode.getItemFontFamily(), u"Loma"_s);
    QCOMPARE(barcode.getItemAlignment(), Qt::AlignRight);
    QVERIFY(barcode.getBarcodeTextAbove() && barcode.getItemItalic() && barcode.getBarcodeShowStartStop());
    QVERIFY(!barcode.getBarcodeHideText() && !barcode.getItemBold() && !barcode.getItemUnderline());
    QCOMPARE(barcode.getItemTextColor(), QColor(0xD4, 0, 0));
    QCOMPARE(barcode.getBarcodeEncodedText(),
        u"*LOT 4711$*"_s); // (21 + 24 + 29 + 38 + 4 + 7 + 1 + 1) mod 43 is 39

    auto &line = dynamic_cast<LineItem &>(*itemOf(MobraTypes::LineShape));
    QCOMPARE(line.getItemLength(), 250.25);
    QCOMPARE(line.getItemArrows(), ushort(0x35));
    QCOMPARE(line.pos(), QPointF(-123.5, 4096.125));
    const auto &rounded = dynamic_cast<RoundedRectangleItem &>(*itemOf(MobraTypes::RoundedRectangleShape));
    QCOMPARE(rounded.getItemSize(), QSizeF(250.25, 40.5));
    QCOMPARE(rounded.getRoundingRadiusX(), 12.5);
    QCOMPARE(rounded.getRoundingRadiusY(), -3.0);
    auto &pie = dynamic_cast<PieItem &>(*itemOf(MobraTypes::PieShape));
    QCOMPARE(pie.startPieAngle(), -160);
    QCOMPARE(pie.spanPieAngle(), 5761);
    QVERIFY(pie.getDrawCircle());
    QCOMPARE(itemOf(MobraTypes::OctagonShape)->getItemSize(), QSizeF(250.25, 40.5));
}

void tst_ShapeFormats::ownKeysHaveTheirType_data()
{
    QTest::addColumn<ShapeType>("shape");
    QTest::addColumn<QByteArray>("member");
    QTest::addColumn<QString>("problem");

    const auto rows = [](ShapeType shape, const char *key, const QString &type) {
        const std::pair<const char *, QString> forms[]
            = { { "true", u"true or false"_s }, { "1", u"a number"_s }, { "\"x\"", u"text"_s },
                  { "[1]", u"a list"_s }, { "{}", u"an object"_s }, { "null", u"nothing"_s } };
        for (const auto &[json, name] : forms) {
            if (name != type)
                QTest::addRow("%s %s", key, json)
                    << shape << "\"" + QByteArray(key) + "\": " + json
                    << u"/items/0/%1: is %2, not %3"_s.arg(QLatin1String(key), name, type);
        }
    };
    rows(MobraTypes::RoundedRectangleShape, "roundingRadiusX", u"a number"_s);
    rows(MobraTypes::RoundedRectangleShape, "roundingRadiusY", u"a number"_s);
    rows(MobraTypes::PieShape, "drawCircle", u"true or false"_s);
    rows(MobraTypes::PieShape, "startPieAngle", u"a number"_s);
    rows(MobraTypes::PieShape, "spanPieAngle", u"a number"_s);
    rows(MobraTypes::LineShape, "itemArrows", u"a number"_s);
    rows(MobraTypes::LineShape, "itemLength", u"a number"_s);
    rows(MobraTypes::BarcodeShape, "barcodeSymbol", u"a number"_s);
    rows(MobraTypes::BarcodeShape, "barcodeText", u"text"_s);
    rows(MobraTypes::BarcodeShape, "lineWidth", u"a number"_s);
    rows(MobraTypes::BarcodeShape, "barcodeHideText", u"true or false"_s);
    rows(MobraTypes::SymbolShape, "hasSingleColor", u"true or false"_s);
    rows(MobraTypes::SymbolShape, "svgContentsOriginal", u"text"_s);
    rows(MobraTypes::HexagonShape, "itemDatasourceId", u"a number"_s);
    rows(MobraTypes::HexagonShape, "itemDatasourceField", u"text"_s);
}

void tst_ShapeFormats::ownKeysHaveTheirType()
{
    QFETCH(ShapeType, shape);
    QFETCH(QByteArray, member);
    QFETCH(QString, problem);
    QCOMPARE(problemsOfItem(shape, member), QStringList(problem));
}

void tst_ShapeFormats::wholeNumbersFitTheirProperty_data()
{
    QTest::addColumn<ShapeType>("shape");
    QTest::addColumn<QByteArray>("key");
    QTest::addColumn<QByteArray>("number");
    QTest::addColumn<bool>("accepted");

    const auto rows = [](ShapeType shape, const char *key, const QByteArrayList &fine,
                          const QByteArrayList &wrong) {
        for (const QByteArray &number : fine)
            QTest::addRow("%s %s", key, number.constData()) << shape << QByteArray(key) << number << true;
        for (const QByteArray &number : wrong)
            QTest::addRow("%s %s", key, number.constData()) << shape << QByteArray(key) << number << false;
    };
    rows(MobraTypes::LineShape, "itemArrows", { "0", "85", "65535" }, { "-1", "65536", "1.5", "1e308" });
    const QByteArrayList shorts { "-32768", "0", "32767" };
    const QByteArrayList noShorts { "-32769", "32768", "0.5", "1e300" };
    for (const char *key : { "barcodeSymbol", "barcodeSecurityLevel", "lineWidth", "barcodeWhiteSpace" })
        rows(MobraTypes::BarcodeShape, key, shorts, noShorts);
    const QByteArrayList ints { "-2147483648", "0", "2147483647" };
    const QByteArrayList noInts { "-2147483649", "2147483648", "0.0625", "1e300" };
    rows(MobraTypes::PieShape, "startPieAngle", ints, noInts);
    rows(MobraTypes::PieShape, "spanPieAngle", ints, noInts);
    rows(MobraTypes::DiamondShape, "itemDatasourceId", ints, noInts);
}

void tst_ShapeFormats::wholeNumbersFitTheirProperty()
{
    QFETCH(ShapeType, shape);
    QFETCH(QByteArray, key);
    QFETCH(QByteArray, number);
    QFETCH(bool, accepted);
    const LoadResult result = read(withItems(itemWith(shape, "\"" + key + "\": " + number)));
    QCOMPARE(result.document.has_value(), accepted);
    QCOMPARE(result.problems.size(), accepted ? 0 : 1);
    if (!accepted) {
        QCOMPARE(result.problems[0].where, u"/items/0/"_s + QLatin1String(key));
        QVERIFY(result.problems[0].what.endsWith(u" is out of range"_s));
    }
}

void tst_ShapeFormats::realNumbersAreUsable_data()
{
    QTest::addColumn<ShapeType>("shape");
    QTest::addColumn<QByteArray>("key");
    QTest::addColumn<QByteArray>("number");
    QTest::addColumn<QString>("problem");

    const auto row = [](ShapeType shape, const char *key, const char *number, const char *problem = nullptr) {
        QTest::addRow("%s %s", key, number)
            << shape << QByteArray(key) << QByteArray(number)
            << (problem ? u"/items/0/%1: %2"_s.arg(QLatin1String(key), QString::fromUtf8(problem))
                        : u"accepted"_s);
    };
    for (const char *key : { "roundingRadiusX", "roundingRadiusY" }) {
        for (const char *number : { "0", "-5", "1e7", "0.001" })
            row(MobraTypes::RoundedRectangleShape, key, number);
        row(MobraTypes::RoundedRectangleShape, key, "1e308", "1e+308 is beyond the drawable range of ±1e+07");
        row(MobraTypes::RoundedRectangleShape, key, "\"nan\"", "is text, not a number");
    }
    for (const char *number : { "1", "1e7", "1.0625" })
        row(MobraTypes::LineShape, "itemLength", number);
    row(MobraTypes::LineShape, "itemLength", "1e308", "1e+308 is beyond the drawable range of ±1e+07");
    row(MobraTypes::LineShape, "itemLength", "0.5", "0.5 is below 1, the shortest line");
    row(MobraTypes::LineShape, "itemLength", "0", "0 is below 1, the shortest line");
    row(MobraTypes::LineShape, "itemLength", "-20", "-20 is below 1, the shortest line");
    row(MobraTypes::LineShape, "itemLength", "\"inf\"", "is text, not a number");
}

void tst_ShapeFormats::realNumbersAreUsable()
{
    QFETCH(ShapeType, shape);
    QFETCH(QByteArray, key);
    QFETCH(QByteArray, number);
    QFETCH(QString, problem);
    QCOMPARE(problemsOfItem(shape, "\"" + key + "\": " + number), QStringList(problem));
}

void tst_ShapeFormats::foreignKeysAreGuessed_data()
{
    QTest::addColumn<ShapeType>("shape");
    QTest::addColumn<QByteArray>("key");
    QTest::addColumn<QString>("advice");

    const auto row = [](ShapeType shape, const char *key, const char *nearest) {
        QTest::addRow("%s of %x", key, shape)
            << shape << QByteArray(key)
            << (nearest ? u"did you mean \"%1\"?"_s.arg(QLatin1String(nearest)) : u"remove it"_s);
    };
    row(MobraTypes::RoundedRectangleShape, "roundingRadius", "roundingRadiusX");
    row(MobraTypes::RoundedRectangleShape, "roundingradiusy", "roundingRadiusY");
    row(MobraTypes::RectangleShape, "roundingRadiusX", nullptr);
    row(MobraTypes::PieShape, "drawcircle", "drawCircle");
    row(MobraTypes::PieShape, "startPieAngel", "startPieAngle");
    row(MobraTypes::PieShape, "spanAngle", nullptr);
    row(MobraTypes::EllipseShape, "startPieAngle", nullptr);
    row(MobraTypes::BarcodeShape, "barcodetext", "barcodeText");
    row(MobraTypes::BarcodeShape, "itemPenColor", nullptr);
    row(MobraTypes::LineShape, "itemArrow", "itemArrows");
    row(MobraTypes::LineShape, "length", "itemLength");
    row(MobraTypes::LineShape, "itemLenght", "itemLength");
    row(MobraTypes::LineShape, "itemFillColor", nullptr);
    row(MobraTypes::LineShape, "itemBrushStyle", nullptr);
    row(MobraTypes::OctagonShape, "itemLength", nullptr);
    // Each class has one name for its binding.
    row(MobraTypes::EllipseShape, "datasourceId", "itemDatasourceId");
    row(MobraTypes::LineShape, "datasourceField", "itemDatasourceField");
    row(MobraTypes::RoundedRectangleShape, "itemDatasourceId", "datasourceId");
    row(MobraTypes::RectangleShape, "itemDatasourceField", "datasourceField");
}

void tst_ShapeFormats::foreignKeysAreGuessed()
{
    QFETCH(ShapeType, shape);
    QFETCH(QByteArray, key);
    const LoadResult result = read(withItems(itemWith(shape, "\"" + key + "\": 1")));
    QVERIFY(!result.document);
    QCOMPARE(shortTexts(result.problems), QStringList(u"/items/0/%1: is unknown"_s.arg(QLatin1String(key))));
    QTEST(result.problems[0].advice, "advice");
}

QTEST_MAIN(tst_ShapeFormats)
#include "tst_shapeformats.moc"
