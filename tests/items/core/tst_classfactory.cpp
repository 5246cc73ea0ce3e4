// SPDX-License-Identifier: BSD-3-Clause
#include "items/barcode/barcodeitem.h"
#include "items/containers/groupitem.h"
#include "items/containers/layeritem.h"
#include "items/core/classfactory.h"
#include "items/core/item.h"
#include "items/graphics/pixmapitem.h"
#include "items/graphics/svgitem.h"
#include "items/graphics/symbolitem.h"
#include "items/shapes/diamonditem.h"
#include "items/shapes/ellipseitem.h"
#include "items/shapes/equilateraltriangleitem.h"
#include "items/shapes/hexagonitem.h"
#include "items/shapes/lineitem.h"
#include "items/shapes/octagonitem.h"
#include "items/shapes/pentagonitem.h"
#include "items/shapes/pieitem.h"
#include "items/shapes/rectangleitem.h"
#include "items/shapes/righttriangleitem.h"
#include "items/shapes/roundedrectangleitem.h"
#include "items/text/richtextitem.h"
#include "items/text/simpletextitem.h"

#include <QGraphicsItem>
#include <QRegularExpression>
#include <QTest>

#include <memory>
#include <type_traits>

using namespace Qt::StringLiterals;

static_assert(!std::is_copy_constructible_v<ClassFactory>);
static_assert(!std::is_copy_assignable_v<ClassFactory>);

namespace {

template <typename Class> bool isExactly(const Item *item)
{
    return item && typeid(*item) == typeid(Class);
}

using IsExactly = bool (*)(const Item *);

std::unique_ptr<Item> created(const ClassFactory &factory, uint code)
{
    return std::unique_ptr<Item>(factory.create(static_cast<MobraTypes::ShapeType>(code)));
}

} // namespace

class tst_ClassFactory : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    void codesAreQtsUserTypesPlusANumber_data();
    void codesAreQtsUserTypesPlusANumber();
    void everyCodeMakesItsClass_data();
    void everyCodeMakesItsClass();
    void descriptionsShowTheId_data();
    void descriptionsShowTheId();
    void newItemsHaveNoParentAndNoScene();
    void everyCallMakesAnotherItem();
    void unknownCodesMakeNothing_data();
    void unknownCodesMakeNothing();
    void registeringAgainChangesNothing();
    void itemsOutliveTheirFactory();
};

void tst_ClassFactory::codesAreQtsUserTypesPlusANumber_data()
{
    QTest::addColumn<uint>("code");
    QTest::addColumn<uint>("number");

    QTest::newRow("group") << uint(MobraTypes::GroupShape) << 0x01U;
    QTest::newRow("layer") << uint(MobraTypes::LayerShape) << 0x02U;
    QTest::newRow("svg") << uint(MobraTypes::SvgShape) << 0x0BU;
    QTest::newRow("pixmap") << uint(MobraTypes::PixmapShape) << 0x0CU;
    QTest::newRow("symbol") << uint(MobraTypes::SymbolShape) << 0x0DU;
    QTest::newRow("label text") << uint(MobraTypes::LabelTextShape) << 0x15U;
    QTest::newRow("rich text") << uint(MobraTypes::RichTextShape) << 0x16U;
    QTest::newRow("barcode") << uint(MobraTypes::BarcodeShape) << 0x1DU;
    QTest::newRow("line") << uint(MobraTypes::LineShape) << 0x1FU;
    QTest::newRow("rectangle") << uint(MobraTypes::RectangleShape) << 0x2AU;
    QTest::newRow("rounded rectangle") << uint(MobraTypes::RoundedRectangleShape) << 0x2BU;
    QTest::newRow("ellipse") << uint(MobraTypes::EllipseShape) << 0x2CU;
    QTest::newRow("pie") << uint(MobraTypes::PieShape) << 0x2EU;
    QTest::newRow("right triangle") << uint(MobraTypes::RightTriangleShape) << 0x33U;
    QTest::newRow("equilateral triangle") << uint(MobraTypes::EquilateralTriangleShape) << 0x34U;
    QTest::newRow("diamond") << uint(MobraTypes::DiamondShape) << 0x35U;
    QTest::newRow("pentagon") << uint(MobraTypes::PentagonShape) << 0x36U;
    QTest::newRow("hexagon") << uint(MobraTypes::HexagonShape) << 0x37U;
    QTest::newRow("octagon") << uint(MobraTypes::OctagonShape) << 0x38U;
    QTest::newRow("polygon") << uint(MobraTypes::PolygonShape) << 0x65U;
}

void tst_ClassFactory::codesAreQtsUserTypesPlusANumber()
{
    QFETCH(uint, code);
    QFETCH(uint, number);
    QCOMPARE(code, 0x10000U + number);
    QCOMPARE(code - uint(QGraphicsItem::UserType), number);
}

void tst_ClassFactory::everyCodeMakesItsClass_data()
{
    QTest::addColumn<uint>("code");
    QTest::addColumn<int>("type");
    QTest::addColumn<IsExactly>("isExactly");

    QTest::newRow("group") << 0x10001U << 0x10001 << IsExactly(isExactly<GroupItem>);
    QTest::newRow("layer") << 0x10002U << 0x10002 << IsExactly(isExactly<LayerItem>);
    QTest::newRow("SVG") << 0x1000BU << 0x1000B << IsExactly(isExactly<SvgItem>);
    QTest::newRow("pixmap") << 0x1000CU << 0x1000C << IsExactly(isExactly<PixMapItem>);
    QTest::newRow("symbol") << 0x1000DU << 0x1000D << IsExactly(isExactly<SymbolItem>);
    QTest::newRow("label text") << 0x10015U << 0x10015 << IsExactly(isExactly<SimpleTextItem>);
    QTest::newRow("rich text") << 0x10016U << 0x10016 << IsExactly(isExactly<RichTextItem>);
    QTest::newRow("barcode") << 0x1001DU << 0x1001D << IsExactly(isExactly<BarcodeItem>);
    QTest::newRow("line") << 0x1001FU << 0x1001F << IsExactly(isExactly<LineItem>);
    QTest::newRow("rectangle") << 0x1002AU << 0x1002A << IsExactly(isExactly<RectangleItem>);
    QTest::newRow("rounded rectangle") << 0x1002BU << 0x1002B << IsExactly(isExactly<RoundedRectangleItem>);
    QTest::newRow("ellipse") << 0x1002CU << 0x1002C << IsExactly(isExactly<EllipseItem>);
    QTest::newRow("pie") << 0x1002EU << 0x1002E << IsExactly(isExactly<PieItem>);
    QTest::newRow("right triangle") << 0x10033U << 0x10065 << IsExactly(isExactly<RightTriangleItem>);
    QTest::newRow("equilateral triangle")
        << 0x10034U << 0x10065 << IsExactly(isExactly<EquilateralTriangleItem>);
    QTest::newRow("diamond") << 0x10035U << 0x10065 << IsExactly(isExactly<DiamondItem>);
    QTest::newRow("pentagon") << 0x10036U << 0x10065 << IsExactly(isExactly<PentagonItem>);
    QTest::newRow("hexagon") << 0x10037U << 0x10065 << IsExactly(isExactly<HexagonItem>);
    QTest::newRow("octagon") << 0x10038U << 0x10065 << IsExactly(isExactly<OctagonItem>);
}

void tst_ClassFactory::everyCodeMakesItsClass()
{
    QFETCH(uint, code);
    QFETCH(IsExactly, isExactly);
    const ClassFactory factory;
    const auto item = created(factory, code);
    QVERIFY(item);
    QVERIFY(isExactly(item.get()));
    QCOMPARE(uint(item->getItemShape()), code);
    QCOMPARE(item->getItemShapeInt(), code);
    QTEST(dynamic_cast<QGraphicsItem *>(item.get())->type(), "type");
}

void tst_ClassFactory::descriptionsShowTheId_data()
{
    QTest::addColumn<uint>("code");
    QTest::addColumn<short>("id");
    QTest::addColumn<QString>("description");

    QTest::newRow("group") << 0x10001U << short(7) << u"group 7"_s;
    QTest::newRow("layer") << 0x10002U << short(7) << u"Layer item 7"_s;
    QTest::newRow("pixmap") << 0x1000CU << short(7) << u"Pixmap 7"_s;
    QTest::newRow("label text") << 0x10015U << short(7) << u"Label Text 7"_s;
    QTest::newRow("rich text") << 0x10016U << short(7) << u"Rich Text 7"_s;
    QTest::newRow("barcode") << 0x1001DU << short(7) << u"barcode 7"_s;
    QTest::newRow("line") << 0x1001FU << short(7) << u"line 7"_s;
    QTest::newRow("rectangle") << 0x1002AU << short(7) << u"rectangle 7"_s;
    QTest::newRow("rounded rectangle") << 0x1002BU << short(7) << u"rounded rectangle 7"_s;
    QTest::newRow("ellipse") << 0x1002CU << short(7) << u"ellipse 7"_s;
    QTest::newRow("pie") << 0x1002EU << short(7) << u"pie 7"_s;
    QTest::newRow("right triangle") << 0x10033U << short(7) << u"right triangle 7"_s;
    QTest::newRow("equilateral triangle") << 0x10034U << short(7) << u"equilateral triangle 7"_s;
    QTest::newRow("diamond") << 0x10035U << short(7) << u"diamond 7"_s;
    QTest::newRow("pentagon") << 0x10036U << short(7) << u"pentagon 7"_s;
    QTest::newRow("hexagon") << 0x10037U << short(7) << u"hexagon 7"_s;
    QTest::newRow("octagon") << 0x10038U << short(7) << u"octagon 7"_s;
    QTest::newRow("rectangle, new") << 0x1002AU << short(-1) << u"rectangle -1"_s;
    QTest::newRow("rectangle, smallest id") << 0x1002AU << short(-32768) << u"rectangle -32768"_s;
    QTest::newRow("rectangle, largest id") << 0x1002AU << short(32767) << u"rectangle 32767"_s;
}

void tst_ClassFactory::descriptionsShowTheId()
{
    QFETCH(uint, code);
    QFETCH(short, id);
    const auto item = created(ClassFactory(), code);
    QVERIFY(item);
    item->setItemId(id);
    QTEST(item->toDescriptionString(), "description");
}

void tst_ClassFactory::newItemsHaveNoParentAndNoScene()
{
    const auto item = created(ClassFactory(), MobraTypes::RectangleShape);
    const auto *graphics = dynamic_cast<QGraphicsItem *>(item.get());
    QVERIFY(graphics);
    QVERIFY(!graphics->parentItem());
    QVERIFY(!graphics->scene());
    QCOMPARE(item->itemId(), short(-1));
    QCOMPARE(item->getItemSize(), QSizeF(100, 100));
}

void tst_ClassFactory::everyCallMakesAnotherItem()
{
    const ClassFactory factory;
    const auto first = created(factory, MobraTypes::RectangleShape);
    const auto second = created(factory, MobraTypes::RectangleShape);
    QVERIFY(first && second);
    first->setItemId(12);
    QCOMPARE(second->itemId(), short(-1));
}

void tst_ClassFactory::unknownCodesMakeNothing_data()
{
    QTest::addColumn<uint>("code");

    QTest::newRow("zero") << 0U;
    QTest::newRow("one") << 1U;
    QTest::newRow("polygon base") << 0x10065U;
    QTest::newRow("Qt's user type") << 0x10000U;
    QTest::newRow("between layer and svg") << 0x10003U;
    QTest::newRow("between ellipse and pie") << 0x1002DU;
    QTest::newRow("rectangle without the user bit") << 0x2AU;
    QTest::newRow("rectangle with the sign bit") << 0x8001002AU;
    QTest::newRow("all bits") << 0xFFFFFFFFU;
}

void tst_ClassFactory::unknownCodesMakeNothing()
{
    QFETCH(uint, code);
    QVERIFY(!created(ClassFactory(), code));
}

void tst_ClassFactory::registeringAgainChangesNothing()
{
    ClassFactory factory;
    factory.registerShapes();
    QVERIFY(isExactly<RectangleItem>(created(factory, MobraTypes::RectangleShape).get()));
    QVERIFY(!created(factory, MobraTypes::PolygonShape));
}

void tst_ClassFactory::itemsOutliveTheirFactory()
{
    auto factory = std::make_unique<ClassFactory>();
    const auto item = created(*factory, MobraTypes::RectangleShape);
    factory.reset();
    QCOMPARE(item->toDescriptionString(), u"rectangle -1"_s);
}

QTEST_MAIN(tst_ClassFactory)
#include "tst_classfactory.moc"
