// SPDX-License-Identifier: BSD-3-Clause
#include "tests/support/allitems.h"
#include "tests/support/colours.h"
#include "tests/support/fillrows.h"
#include "tests/support/images.h"
#include "tests/support/itemrecords.h"
#include "tests/support/recordings.h"
#include "tests/support/standins.h"

#include <QGraphicsRectItem>
#include <QMetaMethod>
#include <QMetaProperty>
#include <QPainter>
#include <QPainterPath>
#include <QRegularExpression>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace Colours;
using AllItems::madeOrChanged;
using AllItems::propertiesOf;
using Images::coloursOf;
using MobraTypes::ShapeType;
using Recordings::isFrame;
using Recordings::recorded;

namespace {

const QSize canvas(160, 160);
// The groups of which every class makes its list.
const QStringList identity { u"uint itemShape"_s, u"short itemId"_s, u"uint itemFlags"_s,
    u"uint itemQFlags"_s, u"double itemZValue"_s };
const QStringList turning { u"double itemRotation"_s, u"double itemHorizontalMirror"_s,
    u"double itemVerticalMirror"_s };
const QStringList size { u"double itemWidth"_s, u"double itemHeight"_s, u"double itemScaleX"_s,
    u"double itemScaleY"_s };
const QStringList transform { u"QVariantList itemTransform"_s };
const QStringList overprint { u"bool allowOverprint"_s };
const QStringList binding { u"int itemDatasourceId"_s, u"QString itemDatasourceField"_s };
const QStringList colors { u"QString itemPenColor"_s, u"QString itemFillColor"_s };
const QStringList pen { u"ushort itemPenWidth"_s, u"ushort itemPenStyle"_s, u"ushort itemPenCapStyle"_s,
    u"ushort itemPenJoinStyle"_s };
const QStringList brush { u"ushort itemBrushStyle"_s };
const QStringList position { u"double itemPositionX"_s, u"double itemPositionY"_s };

const QStringList rectangle
    = identity + turning + size + transform + overprint + colors + pen + brush + position;
const QStringList ellipse
    = identity + turning + size + transform + overprint + binding + colors + pen + brush + position;
const QStringList polygon
    = identity + turning + overprint + size + transform + binding + colors + pen + brush + position;
const QStringList line = identity + turning + size + transform + overprint + binding + pen
    + QStringList { u"QString itemPenColor"_s, u"ushort itemArrows"_s, u"double itemLength"_s } + position;

// Signals, slots and properties of the text items: those of their base, then their own.
const QStringList textMethods { u"public method void itemDataChanged(QVariant,int,QString)"_s,
    u"public method void textItemHasChanged()"_s, u"public method void textItemIsEditing(TextItem*)"_s,
    u"public slot void showEmptyTextMarker(bool)"_s, u"public slot void setItemText(QString)"_s,
    u"public slot void setItemHtml(QString)"_s, u"public slot void setItemDatasourceID(int)"_s,
    u"public slot void setItemDatasourceField(QString)"_s,
    u"public slot void updateItemOnContentsChange(int,int,int)"_s,
    u"public slot void updateItemOnContentsChanged()"_s };
const QStringList anyText = identity + turning + size + overprint + transform + position + binding + colors
    + QStringList { u"QColor itemTextColor"_s } + pen + brush;
const QStringList labelText { u"bool itemTextVertical"_s, u"bool itemPinToCenter"_s, u"bool itemWasResized"_s,
    u"int itemSizeLimiting"_s, u"double itemDocumentMargin"_s, u"double oldTransformCoefficientM31"_s,
    u"double oldTransformCoefficientM32"_s, u"QString itemText"_s, u"uint itemAlignment"_s,
    u"int itemFontSize"_s, u"QString itemFontFamily"_s, u"bool itemFontBold"_s, u"bool itemItalic"_s,
    u"bool itemUnderline"_s };
const QStringList richText { u"bool documentIsEmpty"_s, u"QString itemHtml"_s, u"double screenDpi"_s,
    u"int itemFontSize"_s, u"QString itemFontFamily"_s, u"int itemFontWeight"_s, u"bool itemFontItalic"_s,
    u"bool itemFontUnderline"_s, u"int itemAlignment"_s };

// A barcode has no pen and no brush.
const QStringList barcode = identity + turning + size + transform + overprint + binding
    + QStringList { u"QColor itemTextColor"_s, u"QString itemFillColor"_s, u"int itemFontSize"_s,
          u"QString itemFontFamily"_s, u"uint itemAlignment"_s, u"bool itemBold"_s, u"bool itemItalic"_s,
          u"bool itemUnderline"_s, u"short barcodeSymbol"_s, u"QString barcodeText"_s, u"int lineWidth"_s,
          u"int barcodeWhiteSpace"_s, u"bool barcodeHideText"_s, u"short barcodeSecurityLevel"_s,
          u"bool barcodeTextAbove"_s, u"bool barcodeShowStartStop"_s }
    + position;
const QStringList barcodeMethods { u"public method void itemDataChanged(QVariant,int,QString)"_s,
    u"public method void itemDataChanged(QVariant,QString)"_s, u"public slot void setBarcodeSymbol(short)"_s,
    u"public slot void setBarcodeOption2(int)"_s, u"public slot void setBarcodeHeight(int)"_s,
    u"public slot void setBarcodeText(QString)"_s, u"public slot void setBarcodeWhiteSpace(int)"_s,
    u"public slot void setBarcodeHideText(bool)"_s, u"public slot void setBarcodeSecurityLevel(short)"_s,
    u"public slot void setItemFontSize(int)"_s, u"public slot void setItemFontFamily(QString)"_s,
    u"public slot void setItemAlignmentInt(uint)"_s, u"public slot void setItemBold(bool)"_s,
    u"public slot void setItemItalic(bool)"_s, u"public slot void setItemUnderline(bool)"_s,
    u"public slot void setBarcodeTextAbove(bool)"_s, u"public slot void setBarcodeShowStartStop(bool)"_s,
    u"public slot void setBarcodeAspectRatio(int)"_s, u"public slot void setItemData(QVariant)"_s,
    u"public slot void setItemDatasourceID(int)"_s, u"public slot void setItemDatasourceField(QString)"_s };

// A symbol has two colours, but no pen and no brush.
const QStringList symbol = QStringList { u"bool fillBoundingRectangle"_s } + overprint
    + QStringList { u"double oldTransformCoefficientM31"_s, u"double oldTransformCoefficientM32"_s }
    + identity + turning + size + transform + binding + colors + position
    + QStringList { u"bool hasSingleColor"_s, u"QVariant svgContentsOriginal"_s };
const QStringList svg = QStringList { u"QVariant svgContents"_s, u"bool svgHasTransparency"_s,
    u"bool svgIsInvalid"_s, u"double oldTransformCoefficientM31"_s, u"double oldTransformCoefficientM32"_s }
    + identity + overprint + turning + size + transform + position + binding;
const QStringList svgMethods { u"public method void itemDataChanged(QVariant,int,QString)"_s,
    u"public method void itemDataChanged(QVariant,QString)"_s, u"public slot void setSvgContents(QVariant)"_s,
    u"public slot void setItemData(QVariant)"_s, u"public slot void setItemDatasourceID(int)"_s,
    u"public slot void setItemDatasourceField(QString)"_s };
const QStringList symbolMethods { u"public method void itemDataChanged(QVariant,int,QString)"_s,
    u"public method void itemDataChanged(QVariant,QString)"_s, u"public slot void setSingleColor(bool)"_s,
    u"public slot void setFillBoundingRectangle(bool)"_s,
    u"public slot void setSvgContentsOriginal(QVariant)"_s,
    u"public slot void setItemPenColorString(QString)"_s,
    u"public slot void setItemFillColorString(QString)"_s, u"public slot void setItemData(QVariant)"_s,
    u"public slot void setItemDatasourceID(int)"_s, u"public slot void setItemDatasourceField(QString)"_s };

const QStringList picture = QStringList { u"QVariant pixmapItemData"_s } + identity + turning + size
    + transform + overprint + binding
    + QStringList { u"double oldTransformCoefficientM31"_s, u"double oldTransformCoefficientM32"_s,
          u"bool imageHasTransparency"_s, u"bool firstResizeAfterAddedToGroup"_s }
    + position;
const QStringList pictureMethods { u"public method void itemDataChanged(QVariant,int,QString)"_s,
    u"public method void itemDataChanged(QVariant,QString)"_s, u"public slot void setItemRotation(double)"_s,
    u"public slot void setItemData(QVariant)"_s, u"public slot void setItemDatasourceID(int)"_s,
    u"public slot void setItemDatasourceField(QString)"_s,
    u"public slot void setPixmapItemData(QVariant)"_s };

// A group has the properties that all others have, and a count; a layer hardly any.
const QStringList group = QStringList { identity.first(), u"int childrenCount"_s } + identity.mid(1) + turning
    + size + transform + overprint + binding + position;

/// How a class shows itself.
struct Signature
{
    QString description; ///< What stands before the id.
    QStringList properties; ///< Types and names in their order, those of the base first.
    QStringList methods = {}; ///< Signals, slots and invokable methods likewise.
    QStringList readOnly = {}; ///< The names of the properties that only saving reads.
    QString behindId = {}; ///< What stands behind the id.
};

/// A class without a row fails: its properties may be missing altogether, which neither moc nor the compiler
/// reports.
const QMap<ShapeType, Signature> signatures {
    { MobraTypes::GroupShape, { u"group"_s, group, { u"public slot void setChildrenCount(int)"_s } } },
    { MobraTypes::LayerShape,
        { u"Layer item"_s, { u"uint itemShape"_s, u"int childrenCount"_s }, {}, { u"childrenCount"_s } } },
    { MobraTypes::PixmapShape, { u"Pixmap"_s, picture, pictureMethods } },
    { MobraTypes::LabelTextShape,
        { u"Label Text"_s, anyText + labelText,
            textMethods
                + QStringList { u"public slot void setItemRotation(double)"_s,
                    u"public slot bool setTextVertical(bool)"_s,
                    u"public slot void setItemWasResized(bool)"_s,
                    u"public slot void setItemPinToCenter(bool)"_s,
                    u"public slot void setItemSizeLimiting(signed char)"_s,
                    u"public slot void setItemData(QVariant)"_s } } },
    { MobraTypes::RichTextShape,
        { u"Rich Text"_s, anyText + richText,
            textMethods
                + QStringList { u"public method void textItemCursorHasChanged()"_s,
                    u"public slot void setItemTextColorString(QString)"_s,
                    u"public slot void setItemData(QVariant)"_s,
                    u"public slot void updateCursorPositionChanged(QTextCursor)"_s },
            { u"documentIsEmpty"_s, u"screenDpi"_s } } },
    { MobraTypes::SvgShape, { u"Svg"_s, svg, svgMethods, {}, u"\n"_s } },
    { MobraTypes::SymbolShape, { u"Symbol"_s, symbol, symbolMethods, {}, u"\n"_s } },
    { MobraTypes::BarcodeShape, { u"barcode"_s, barcode, barcodeMethods } },
    { MobraTypes::LineShape,
        { u"line"_s, line,
            { u"public slot void setItemRotation(double)"_s, u"public slot void setItemPenWidth(ushort)"_s,
                u"public slot void setItemHorizontalMirror(bool)"_s,
                u"public slot void setItemVerticalMirror(bool)"_s } } },
    { MobraTypes::RectangleShape, { u"rectangle"_s, rectangle } },
    { MobraTypes::RoundedRectangleShape,
        { u"rounded rectangle"_s,
            rectangle + QStringList { u"double roundingRadiusX"_s, u"double roundingRadiusY"_s },
            { u"public slot void setRoundingRadiusX(double)"_s,
                u"public slot void setRoundingRadiusY(double)"_s } } },
    { MobraTypes::EllipseShape, { u"ellipse"_s, ellipse } },
    { MobraTypes::PieShape,
        { u"pie"_s,
            ellipse + QStringList { u"bool drawCircle"_s, u"int startPieAngle"_s, u"int spanPieAngle"_s },
            { u"public slot bool setDrawCircle(bool)"_s, u"public slot void setStartPieAngle(int)"_s,
                u"public slot void setSpanPieAngle(int)"_s } } },
    { MobraTypes::RightTriangleShape, { u"right triangle"_s, polygon } },
    { MobraTypes::EquilateralTriangleShape, { u"equilateral triangle"_s, polygon } },
    { MobraTypes::DiamondShape, { u"diamond"_s, polygon } },
    { MobraTypes::PentagonShape, { u"pentagon"_s, polygon } },
    { MobraTypes::HexagonShape, { u"hexagon"_s, polygon } },
    { MobraTypes::OctagonShape, { u"octagon"_s, polygon } },
};

/// The nearest base of a class that is Qt's.
const QMetaObject &qtBaseOf(const QMetaObject &meta)
{
    const QMetaObject *base = &meta;
    while (base->className()[0] != 'Q')
        base = base->superClass();
    return *base;
}

/// The properties that a class has over those of its base in Qt.
QStringList declaredProperties(const QMetaObject &meta)
{
    QStringList declared;
    for (int i = qtBaseOf(meta).propertyCount(); i < meta.propertyCount(); ++i) {
        const QMetaProperty property = meta.property(i);
        declared << QString::fromLatin1(property.typeName()) + u' ' + QString::fromLatin1(property.name());
    }
    return declared;
}

/// The signals, slots and invokable methods that a class has over those of its base in Qt.
QStringList declaredMethods(const QMetaObject &meta)
{
    QStringList declared;
    for (int i = qtBaseOf(meta).methodCount(); i < meta.methodCount(); ++i) {
        const QMetaMethod method = meta.method(i);
        const QString access = method.access() == QMetaMethod::Public ? u"public"_s : u"hidden"_s;
        const QString kind = method.methodType() == QMetaMethod::Slot ? u"slot"_s : u"method"_s;
        declared << QStringList { access, kind, QString::fromLatin1(method.typeName()),
            QString::fromLatin1(method.methodSignature()) }
                        .join(u' ');
    }
    return declared;
}

void hideOutline(Item &item)
{
    if (auto *contoured = dynamic_cast<ContouredItem *>(&item))
        contoured->setItemPenStyle(Qt::NoPen);
}

QString differenceOfPictures(Item &actual, Item &expected)
{
    return Images::difference(Images::painted(AllItems::graphics(actual), canvas),
        Images::painted(AllItems::graphics(expected), canvas), u"contract"_s);
}

/// Everything that painting could leave behind in a painter.
void comparePainters(const QPainter &actual, const QPainter &expected)
{
    QCOMPARE(actual.pen(), expected.pen());
    QCOMPARE(actual.brush(), expected.brush());
    QCOMPARE(actual.background(), expected.background());
    QCOMPARE(actual.backgroundMode(), expected.backgroundMode());
    QCOMPARE(actual.brushOrigin(), expected.brushOrigin());
    QCOMPARE(actual.font(), expected.font());
    QCOMPARE(actual.worldTransform(), expected.worldTransform());
    QCOMPARE(actual.combinedTransform(), expected.combinedTransform());
    QCOMPARE(actual.hasClipping(), expected.hasClipping());
    QCOMPARE(actual.clipPath(), expected.clipPath());
    QCOMPARE(actual.compositionMode(), expected.compositionMode());
    QCOMPARE(actual.opacity(), expected.opacity());
    QCOMPARE(actual.renderHints(), expected.renderHints());
    QCOMPARE(actual.layoutDirection(), expected.layoutDirection());
}

/// A state that no painter starts in.
void disguise(QPainter &painter)
{
    painter.setPen(QPen(Qt::green, 3.0, Qt::DotLine));
    painter.setBrush(QBrush(Qt::cyan, Qt::Dense2Pattern));
    painter.setBackground(Qt::yellow);
    painter.setBackgroundMode(Qt::OpaqueMode);
    painter.setBrushOrigin(3, 4);
    painter.translate(5.0, 6.0);
    painter.rotate(10.0);
    painter.setClipRect(QRectF(-20.0, -20.0, 120.0, 120.0));
    painter.setCompositionMode(QPainter::CompositionMode_SourceAtop);
    painter.setOpacity(0.75);
    painter.setRenderHint(QPainter::Antialiasing);
}

void addRowsWithState()
{
    QTest::addColumn<ShapeType>("shape");
    QTest::addColumn<bool>("changed");
    for (const ShapeType shape : AllItems::shapesAndContainers()) {
        const char *name = AllItems::nameOf(shape);
        QTest::addRow("%s as made", name) << shape << false;
        QTest::addRow("%s changed", name) << shape << true;
    }
}

} // namespace

/// What every item class keeps to, whatever it draws.
class tst_ItemContract : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    void everyRowHasAClass();
    void propertiesAndMethodsAreDeclaredInOrder_data() { AllItems::addRows(AllItems::shapesAndContainers()); }
    void propertiesAndMethodsAreDeclaredInOrder();
    void propertiesCanBeReadAndWritten_data() { AllItems::addRows(AllItems::shapesAndContainers()); }
    void propertiesCanBeReadAndWritten();
    void itemKnowsItsCode_data() { AllItems::addRows(AllItems::shapesAndContainers()); }
    void itemKnowsItsCode();
    void newItemIsUnboundAndPrintable_data() { AllItems::addRows(AllItems::shapesAndContainers()); }
    void newItemIsUnboundAndPrintable();
    void newItemHasAHairlineUnlessATextAndNoFill_data() { AllItems::addRows(); }
    void newItemHasAHairlineUnlessATextAndNoFill();
    void descriptionNamesTheId_data();
    void descriptionNamesTheId();
    void copyEqualsTheOriginal_data() { addRowsWithState(); }
    void copyEqualsTheOriginal();
    void copyIsIndependent_data() { AllItems::addRows(); }
    void copyIsIndependent();
    void recordRoundTripIsIdentity_data() { addRowsWithState(); }
    void recordRoundTripIsIdentity();
    void mapRoundTripIsIdentity_data() { addRowsWithState(); }
    void mapRoundTripIsIdentity();
    void mapHoldsExactlyTheProperties_data() { AllItems::addRows(AllItems::shapesAndContainers()); }
    void mapHoldsExactlyTheProperties();
    void opaqueAreaIsTheShapeOfAnOpaqueFill_data();
    void opaqueAreaIsTheShapeOfAnOpaqueFill();
    void paintingLeavesThePainterAsItWas_data();
    void paintingLeavesThePainterAsItWas();
    void frameIsDrawnAtTopLevelAndInLayers_data();
    void frameIsDrawnAtTopLevelAndInLayers();
    void unselectedItemHasNoFrame_data() { AllItems::addRows(); }
    void unselectedItemHasNoFrame();
    void frameIsMirroredByTextsAndPiesAndClippedByPies_data();
    void frameIsMirroredByTextsAndPiesAndClippedByPies();
};

void tst_ItemContract::everyRowHasAClass()
{
    QCOMPARE(AllItems::shapesAndContainers(), signatures.keys());
}

void tst_ItemContract::propertiesAndMethodsAreDeclaredInOrder()
{
    QFETCH(const ShapeType, shape);
    QVERIFY2(signatures.contains(shape), "the class has no list of its properties in this test");
    const std::unique_ptr<Item> item = AllItems::made(shape);
    const QMetaObject *meta = AllItems::object(*item).metaObject();
    QCOMPARE(declaredProperties(*meta), signatures.value(shape).properties);
    QCOMPARE(declaredMethods(*meta), signatures.value(shape).methods);
}

void tst_ItemContract::propertiesCanBeReadAndWritten()
{
    QFETCH(const ShapeType, shape);
    const std::unique_ptr<Item> item = AllItems::made(shape);
    QObject &object = AllItems::object(*item);
    for (const QString &name : propertiesOf(*item)) {
        const QByteArray key = name.toLatin1();
        const QVariant value = object.property(key);
        QVERIFY2(value.isValid(), key);
        const bool writable = !signatures.value(shape).readOnly.contains(name);
        QVERIFY2(object.setProperty(key, value) == writable, key);
    }
}

void tst_ItemContract::itemKnowsItsCode()
{
    QFETCH(const ShapeType, shape);
    const std::unique_ptr<Item> item = AllItems::made(shape);
    QCOMPARE(item->getItemShape(), shape);
    // The six polygons answer their common code.
    const bool isPolygon = shape >= MobraTypes::RightTriangleShape && shape <= MobraTypes::OctagonShape;
    QCOMPARE(AllItems::graphics(*item).type(), int(isPolygon ? MobraTypes::PolygonShape : shape));
}

void tst_ItemContract::newItemIsUnboundAndPrintable()
{
    QFETCH(const ShapeType, shape);
    const std::unique_ptr<Item> item = AllItems::made(shape);
    QCOMPARE(item->itemId(), short(-1));
    QCOMPARE(item->printItemFlags(), AllItems::isPicture(shape) ? u"11"_s : u"1"_s);
    QCOMPARE(item->getDatasourceId(), -1);
    QVERIFY(item->getDatasourceField().isEmpty());
    QCOMPARE(item->getItemRotation(), 0.0);
    QVERIFY(!item->getItemHorizontalMirror());
    QVERIFY(!item->getItemVerticalMirror());
    QVERIFY(item->getAllowOverprint());
    QVERIFY(!AllItems::graphics(*item).scene());
    QVERIFY(!AllItems::graphics(*item).parentItem());
    QVERIFY(!AllItems::object(*item).parent());
}

void tst_ItemContract::newItemHasAHairlineUnlessATextAndNoFill()
{
    QFETCH(const ShapeType, shape);
    const std::unique_ptr<Item> item = AllItems::made(shape);
    // Only lines and what has no pen clip to their shape.
    const bool clips = shape == MobraTypes::LineShape || AllItems::isWithoutPen(shape);
    QCOMPARE(item->itemQFlags(), clips ? 0x10FU : 0x107U);
    QCOMPARE(item->itemFlags(), AllItems::isPicture(shape) ? 0x03U : 0x01U);
    QCOMPARE(item->getItemScaleX(), 1.0);
    QCOMPARE(item->getItemScaleY(), 1.0);

    const auto *contoured = dynamic_cast<const ContouredItem *>(item.get());
    QCOMPARE(!contoured, AllItems::isWithoutPen(shape));
    if (!contoured)
        return;
    QCOMPARE(contoured->getItemPenColor(), black);
    QCOMPARE(contoured->getItemPenStyle(), Qt::SolidLine);
    const QPen pen = contoured->getItemPen();
    const bool hairline = !AllItems::isText(shape);
    QCOMPARE(contoured->getItemPenWidth(), ushort(hairline ? 1 : 0));
    QCOMPARE(pen.style(), hairline ? Qt::SolidLine : Qt::NoPen);
    if (hairline) {
        QCOMPARE(pen.color(), black);
        QCOMPARE(pen.widthF(), 1.0);
        QCOMPARE(pen.capStyle(), Qt::RoundCap);
        QCOMPARE(pen.joinStyle(), Qt::RoundJoin);
    }

    if (const auto *fillable = dynamic_cast<const FillableItem *>(item.get())) {
        if (hairline)
            QCOMPARE(pen.miterLimit(), 4.0);
        QCOMPARE(fillable->getItemFillColor(), transparent);
        QCOMPARE(fillable->getItemBrush(), QBrush(transparent, Qt::NoBrush));
        QVERIFY(!fillable->itemIsOpaque());
    }
}

void tst_ItemContract::descriptionNamesTheId_data()
{
    QTest::addColumn<ShapeType>("shape");
    QTest::addColumn<int>("id");
    QTest::addColumn<QString>("text");
    for (const ShapeType shape : AllItems::shapesAndContainers()) {
        for (const auto &[id, text] : { std::pair(-1, u" -1"_s), { 0, u" 0"_s }, { 7, u" 7"_s },
                 { -321, u" -321"_s }, { 32767, u" 32767"_s }, { -32768, u" -32768"_s } })
            QTest::addRow("%s %d", AllItems::nameOf(shape), id)
                << shape << id
                << signatures.value(shape).description + text + signatures.value(shape).behindId;
    }
}

void tst_ItemContract::descriptionNamesTheId()
{
    QFETCH(const ShapeType, shape);
    QFETCH(const int, id);
    const std::unique_ptr<Item> item = AllItems::made(shape);
    if (id != -1) // as made
        item->setItemId(static_cast<short>(id));
    QTEST(item->toDescriptionString(), "text");
}

void tst_ItemContract::copyEqualsTheOriginal()
{
    QFETCH(const ShapeType, shape);
    QFETCH(const bool, changed);
    const std::unique_ptr<Item> item = madeOrChanged(shape, changed);
    const std::unique_ptr<Item> copy(item->createItemCopy());
    QCOMPARE(AllItems::object(*copy).metaObject(), AllItems::object(*item).metaObject());
    QCOMPARE(copy->getItemShape(), shape);
    QCOMPARE(ItemRecords::saved(*copy), ItemRecords::saved(*item));
    QCOMPARE(copy->saveItemToJSON(), item->saveItemToJSON());
    QCOMPARE(AllItems::graphics(*copy).boundingRect(), AllItems::graphics(*item).boundingRect());
    QCOMPARE(AllItems::graphics(*copy).shape(), AllItems::graphics(*item).shape());
    QCOMPARE(AllItems::graphics(*copy).opaqueArea(), AllItems::graphics(*item).opaqueArea());
    const QString difference = differenceOfPictures(*copy, *item);
    QVERIFY2(difference.isEmpty(), qPrintable(difference));
}

void tst_ItemContract::copyIsIndependent()
{
    QFETCH(const ShapeType, shape);
    const std::unique_ptr<Item> item = AllItems::made(shape);
    const QByteArray before = ItemRecords::saved(*item);
    const std::unique_ptr<Item> copy(item->createItemCopy());
    AllItems::change(*copy);
    QVERIFY(ItemRecords::saved(*copy) != before);
    QCOMPARE(ItemRecords::saved(*item), before);
}

void tst_ItemContract::recordRoundTripIsIdentity()
{
    QFETCH(const ShapeType, shape);
    QFETCH(const bool, changed);
    const std::unique_ptr<Item> item = ItemRecords::settled(madeOrChanged(shape, changed));
    const QByteArray record = ItemRecords::saved(*item);
    const std::unique_ptr<Item> loaded = AllItems::made(shape);
    QCOMPARE(ItemRecords::load(*loaded, record), QDataStream::Ok);
    QCOMPARE(ItemRecords::saved(*loaded), record);
    QCOMPARE(loaded->saveItemToJSON(), item->saveItemToJSON());
    const QString difference = differenceOfPictures(*loaded, *item);
    QVERIFY2(difference.isEmpty(), qPrintable(difference));
}

void tst_ItemContract::mapRoundTripIsIdentity()
{
    QFETCH(const ShapeType, shape);
    QFETCH(const bool, changed);
    const std::unique_ptr<Item> item = madeOrChanged(shape, changed);
    const QVariantMap map = item->saveItemToJSON();
    const std::unique_ptr<Item> loaded = AllItems::made(shape);
    loaded->loadItemFromJSON(map, ItemRecords::currentVersion);
    QCOMPARE(loaded->saveItemToJSON(), map);
    QCOMPARE(AllItems::graphics(*loaded).boundingRect(), AllItems::graphics(*item).boundingRect());
    QCOMPARE(AllItems::graphics(*loaded).shape(), AllItems::graphics(*item).shape());
    // A new shape has a transparent fill, which a map cannot hold.
    if (changed) {
        const QString difference = differenceOfPictures(*loaded, *item);
        QVERIFY2(difference.isEmpty(), qPrintable(difference));
    }
}

void tst_ItemContract::mapHoldsExactlyTheProperties()
{
    QFETCH(const ShapeType, shape);
    const std::unique_ptr<Item> item = AllItems::made(shape);
    QStringList names = propertiesOf(*item);
    names.sort();
    QCOMPARE(item->saveItemToJSON().keys(), names);
}

void tst_ItemContract::opaqueAreaIsTheShapeOfAnOpaqueFill_data()
{
    QTest::addColumn<ShapeType>("shape");
    QTest::addColumn<QColor>("fill");
    QTest::addColumn<MobraTypes::BrushStyle>("style");
    QTest::addColumn<bool>("opaque");
    for (const ShapeType shape : AllItems::shapes()) {
        if (!dynamic_cast<FillableItem *>(AllItems::made(shape).get()))
            continue;
        for (const FillRows::Fill &fill : FillRows::fills())
            QTest::addRow("%s, %s", AllItems::nameOf(shape), fill.name)
                << shape << fill.colour << fill.style << fill.opaque;
    }
}

void tst_ItemContract::opaqueAreaIsTheShapeOfAnOpaqueFill()
{
    QFETCH(const ShapeType, shape);
    QFETCH(const QColor, fill);
    QFETCH(const MobraTypes::BrushStyle, style);
    QFETCH(const bool, opaque);
    const std::unique_ptr<Item> made = AllItems::made(shape);
    auto &item = dynamic_cast<FillableItem &>(*made);
    item.setItemSize(QSizeF(40, 30));
    item.setItemPenWidth(4);
    item.setItemFillColor(fill);
    item.setItemBrushStyle(style);
    const QGraphicsItem &graphics = AllItems::graphics(item);
    QCOMPARE(graphics.opaqueArea().isEmpty(), !opaque);
    // A pie is hit anywhere in its ellipse, but covers its wedge alone.
    if (shape != MobraTypes::PieShape)
        QCOMPARE(graphics.opaqueArea(), opaque ? graphics.shape() : QPainterPath());
}

void tst_ItemContract::paintingLeavesThePainterAsItWas_data()
{
    QTest::addColumn<ShapeType>("shape");
    QTest::addColumn<bool>("changed");
    QTest::addColumn<int>("mirrors");
    QTest::addColumn<bool>("selected");
    for (const ShapeType shape : AllItems::shapesAndContainers()) {
        const char *name = AllItems::nameOf(shape);
        for (const bool changed : { false, true }) {
            for (const int mirrors : { 0, 1, 2, 3 }) {
                for (const bool selected : { false, true })
                    QTest::addRow("%s %s, mirrors %d, %s", name, changed ? "changed" : "as made", mirrors,
                        selected ? "selected" : "not selected")
                        << shape << changed << mirrors << selected;
            }
        }
    }
}

void tst_ItemContract::paintingLeavesThePainterAsItWas()
{
    QFETCH(const ShapeType, shape);
    QFETCH(const bool, changed);
    QFETCH(const int, mirrors);
    QFETCH(const bool, selected);
    const std::unique_ptr<Item> item = madeOrChanged(shape, changed);
    item->setItemHorizontalMirror(mirrors & 1);
    item->setItemVerticalMirror(mirrors & 2);
    QStyleOptionGraphicsItem option;
    option.state = selected ? QStyle::State_Selected : QStyle::State_None;

    QImage image(canvas, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::white);
    QImage untouched = image;
    QPainter painter(&image);
    QPainter reference(&untouched);
    disguise(painter);
    disguise(reference);
    AllItems::graphics(*item).paint(&painter, &option, nullptr);
    comparePainters(painter, reference);
    QVERIFY(painter.end()); // warns if a saved state was left behind
}

void tst_ItemContract::frameIsDrawnAtTopLevelAndInLayers_data()
{
    QTest::addColumn<ShapeType>("shape");
    QTest::addColumn<QString>("parent");
    QTest::addColumn<bool>("framed");
    for (const ShapeType shape : AllItems::shapes()) {
        const char *name = AllItems::nameOf(shape);
        QTest::addRow("%s without parent", name) << shape << u"none"_s << true;
        QTest::addRow("%s in a layer", name) << shape << u"layer"_s << true;
        QTest::addRow("%s in a group", name) << shape << u"group"_s << false;
        QTest::addRow("%s in a rectangle", name) << shape << u"rectangle"_s << false;
        QTest::addRow("%s in its like", name) << shape << u"like"_s << false;
        QTest::addRow("%s in an item of another kind", name) << shape << u"other"_s << false;
    }
}

void tst_ItemContract::frameIsDrawnAtTopLevelAndInLayers()
{
    QFETCH(const ShapeType, shape);
    QFETCH(const QString, parent);
    QFETCH(const bool, framed);
    ParentStandIn layer(MobraTypes::LayerShape);
    ParentStandIn group(MobraTypes::GroupShape);
    ParentStandIn rectangle(MobraTypes::RectangleShape);
    const std::unique_ptr<Item> like = AllItems::made(shape);
    QGraphicsRectItem other;
    const QMap<QString, QGraphicsItem *> parents { { u"layer"_s, &layer }, { u"group"_s, &group },
        { u"rectangle"_s, &rectangle }, { u"like"_s, &AllItems::graphics(*like) }, { u"other"_s, &other } };
    const std::unique_ptr<Item> item = AllItems::madeWithoutText(shape);
    item->setItemSize(QSizeF(100.0, 80.0));
    QGraphicsItem &graphics = AllItems::graphics(*item);
    graphics.setParentItem(parents.value(parent));
    const QRectF bounds = graphics.boundingRect();

    const auto figures = recorded(graphics, QStyle::State_Selected);
    const bool drawn = !figures.isEmpty() && isFrame(figures.last(), bounds);
    QCOMPARE(drawn, framed);
    QCOMPARE(Images::painted(graphics, canvas, QStyle::State_Selected) != Images::painted(graphics, canvas),
        framed);

    // The frame covers the whole rectangle: orange (239, 127, 15) with alpha 50 on white is
    // 255 - (255 - c) * 50 / 255.
    hideOutline(*item);
    QImage image = Images::painted(graphics, canvas, QStyle::State_Selected);
    const QRect area = (bounds & QRectF(QPointF(0, 0), canvas)).toAlignedRect();
    const QSet<QRgb> inside = coloursOf(image.copy(area.adjusted(2, 2, -2, -2)));
    QCOMPARE(inside.size(), 1);
    const bool tinted = Images::largestDifference(*inside.begin(), qRgb(252, 230, 208)) <= 1;
    QCOMPARE(tinted, framed);
    QCOMPARE(*inside.begin() == whitePixel, !framed);
    QPainter(&image).fillRect(area.adjusted(-1, -1, 1, 1), Qt::white);
    QCOMPARE(coloursOf(image), QSet<QRgb> { whitePixel });
}

void tst_ItemContract::unselectedItemHasNoFrame()
{
    QFETCH(const ShapeType, shape);
    const std::unique_ptr<Item> item = AllItems::madeWithoutText(shape);
    hideOutline(*item);
    QCOMPARE(coloursOf(Images::painted(AllItems::graphics(*item), canvas, QStyle::State_Enabled)),
        QSet<QRgb> { whitePixel });
}

void tst_ItemContract::frameIsMirroredByTextsAndPiesAndClippedByPies_data()
{
    QTest::addColumn<ShapeType>("shape");
    QTest::addColumn<bool>("horizontal");
    QTest::addColumn<bool>("vertical");
    for (const ShapeType shape : AllItems::shapes()) {
        for (const auto &[horizontal, vertical] :
            { std::pair(false, false), { true, false }, { false, true }, { true, true } })
            QTest::addRow("%s, mirrored %d %d", AllItems::nameOf(shape), horizontal, vertical)
                << shape << horizontal << vertical;
    }
}

void tst_ItemContract::frameIsMirroredByTextsAndPiesAndClippedByPies()
{
    QFETCH(const ShapeType, shape);
    QFETCH(const bool, horizontal);
    QFETCH(const bool, vertical);
    const std::unique_ptr<Item> item = AllItems::made(shape);
    item->setItemHorizontalMirror(horizontal);
    item->setItemVerticalMirror(vertical);
    QGraphicsItem &graphics = AllItems::graphics(*item);
    const auto figures = recorded(graphics, QStyle::State_Selected);
    QCOMPARE(figures.size(), recorded(graphics).size() + 1);
    QVERIFY(isFrame(figures.last(), graphics.boundingRect()));
    const bool isPie = shape == MobraTypes::PieShape;
    const bool mirrored = (isPie || AllItems::isText(shape)) && (horizontal || vertical);
    QCOMPARE(figures.last().transform.isIdentity(), !mirrored);
    QCOMPARE(figures.last().clipped, isPie);
}

QTEST_MAIN(tst_ItemContract)
#include "tst_itemcontract.moc"
