// SPDX-License-Identifier: BSD-3-Clause
#include "items/shapes/ellipseitem.h"
#include "items/shapes/rectangleitem.h"
#include "tests/support/allitems.h"
#include "tests/support/colours.h"
#include "tests/support/resizing.h"

#include <QLinearGradient>
#include <QRegularExpression>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace Colours;
using MobraTypes::ShapeType;

namespace {

const std::pair<ShapeType, const char *> shapes[]
    = { { MobraTypes::RectangleShape, "rectangle" }, { MobraTypes::RoundedRectangleShape, "rounded" },
          { MobraTypes::EllipseShape, "ellipse" }, { MobraTypes::PieShape, "pie" } };

void addShapeRows()
{
    QTest::addColumn<ShapeType>("shape");
    for (const auto &[shape, name] : shapes)
        QTest::newRow(name) << shape;
}

/// An item that is drawn in a rectangle of its own.
class Shape
{
public:
    explicit Shape(std::unique_ptr<Item> item)
        : m_item(std::move(item))
    {
    }
    explicit Shape(ShapeType shape)
        : Shape(AllItems::made(shape))
    {
    }

    FillableItem *operator->() const { return &dynamic_cast<FillableItem &>(*m_item); }
    FillableItem &operator*() const { return *operator->(); }

    [[nodiscard]] QRectF rect() const
    {
        if (const auto *rectangle = dynamic_cast<const RectangleItem *>(m_item.get()))
            return rectangle->rect();
        return dynamic_cast<const EllipseItem &>(*m_item).rect();
    }
    [[nodiscard]] QRectF boundingRect() const { return AllItems::graphics(*m_item).boundingRect(); }
    [[nodiscard]] QSizeF scales() const { return { m_item->getItemScaleX(), m_item->getItemScaleY() }; }
    [[nodiscard]] QPointF endOfGradient() const
    {
        const QBrush brush = operator->()->getItemBrush();
        return static_cast<const QLinearGradient *>(brush.gradient())->finalStop();
    }

private:
    std::unique_ptr<Item> m_item;
};

constexpr QSizeF unscaled(1.0, 1.0);
constexpr QRectF newRect(0.5, 0.5, 99, 99);

} // namespace

/// How rectangles, rounded ones, ellipses and pies lie in their logical size.
class tst_RectangularLayout : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    void outlineLiesInsideTheSize_data();
    void outlineLiesInsideTheSize();
    void everyResizeLaysTheShapeOut_data();
    void everyResizeLaysTheShapeOut();
    void equalSizeChangesNothing_data() { addShapeRows(); }
    void equalSizeChangesNothing();
    void singleSidesAreOnlyStored_data() { addShapeRows(); }
    void singleSidesAreOnlyStored();
    void updatedSizeLaysEverythingOut_data() { addShapeRows(); }
    void updatedSizeLaysEverythingOut();
    void copyTakesTheRectangleAsItIs_data() { addShapeRows(); }
    void copyTakesTheRectangleAsItIs();
};

void tst_RectangularLayout::outlineLiesInsideTheSize_data()
{
    QTest::addColumn<ShapeType>("shape");
    QTest::addColumn<QSizeF>("size");
    QTest::addColumn<int>("penWidth");
    QTest::addColumn<QRectF>("rect");

    for (const auto &[shape, name] : shapes) {
        const auto add = [shape = shape, name = name](
                             const char *what, const QSizeF &size, int penWidth, const QRectF &rect) {
            QTest::addRow("%s: %s", name, what) << shape << size << penWidth << rect;
        };
        add("no pen", QSizeF(200, 50), 0, QRectF(0, 0, 200, 50));
        add("default pen", QSizeF(200, 50), 1, QRectF(0.5, 0.5, 199, 49));
        add("small even pen", QSizeF(200, 50), 4, QRectF(2, 2, 196, 46));
        add("odd pen", QSizeF(200, 50), 7, QRectF(3.5, 3.5, 193, 43));
        add("even pen", QSizeF(200, 50), 8, QRectF(4, 4, 192, 42));
        add("half the height", QSizeF(200, 50), 25, QRectF(12.5, 12.5, 175, 25));
        // A pen is never wider than half the smaller side and one more.
        add("pen wider than that", QSizeF(200, 50), 72, QRectF(13, 13, 174, 24));
        add("limited pen", QSizeF(10, 4), 5, QRectF(1.5, 1.5, 7, 1));
        add("nothing left", QSizeF(10, 2), 5, QRectF(1, 1, 8, 0));
        add("hardly anything left", QSizeF(10, 1.5), 1, QRectF(0.5, 0.5, 9, 0.5));
        add("smaller than its pen", QSizeF(0.5, 0.5), 1, QRectF(0.5, 0.5, -0.5, -0.5));
        add("broken size", QSizeF(33.25, 17.5), 3, QRectF(1.5, 1.5, 30.25, 14.5));
    }
}

void tst_RectangularLayout::outlineLiesInsideTheSize()
{
    QFETCH(const ShapeType, shape);
    QFETCH(const QSizeF, size);
    QFETCH(const int, penWidth);
    const Shape sizedFirst(shape);
    sizedFirst->setItemSize(size);
    sizedFirst->setItemPenWidth(static_cast<ushort>(penWidth));
    QTEST(sizedFirst.rect(), "rect");
    const Shape sizedLast(shape);
    sizedLast->setItemPenWidth(static_cast<ushort>(penWidth));
    sizedLast->setItemSize(size);
    QTEST(sizedLast.rect(), "rect");
    QCOMPARE(sizedLast.boundingRect(), QRectF(QPointF(0, 0), size));
}

void tst_RectangularLayout::everyResizeLaysTheShapeOut_data()
{
    QTest::addColumn<ShapeType>("shape");
    QTest::addColumn<int>("parameters");
    QTest::addColumn<int>("penWidth");
    QTest::addColumn<QRectF>("rect");

    const std::pair<int, QRectF> pens[] = { { 1, QRectF(0.5, 0.5, 199, 49) },
        { 3, QRectF(1.5, 1.5, 197, 47) }, { 6, QRectF(3, 3, 194, 44) } };
    for (const auto &[shape, name] : shapes) {
        for (const auto &[form, parameters] : Resizing::forms) {
            for (const auto &[penWidth, rect] : pens)
                QTest::addRow("%s, %s, pen of %d", name, form, penWidth)
                    << shape << parameters << penWidth << rect;
        }
    }
}

void tst_RectangularLayout::everyResizeLaysTheShapeOut()
{
    QFETCH(const ShapeType, shape);
    QFETCH(const int, parameters);
    QFETCH(const int, penWidth);
    const Shape item(shape);
    item->setItemFillColor(red);
    item->setItemBrushStyle(MobraTypes::BrushLinearGradient);
    item->setItemPenWidth(static_cast<ushort>(penWidth));
    QVERIFY(Resizing::resize(*item, parameters, QSizeF(200, 50)));
    QCOMPARE(item->getItemSize(), QSizeF(200, 50));
    QTEST(item.rect(), "rect");
    QCOMPARE(item.boundingRect(), QRectF(0, 0, 200, 50));
    QCOMPARE(item.scales(), unscaled);
    QCOMPARE(item.endOfGradient(), QPointF(0, 50));
    QVERIFY(!Resizing::resize(*item, parameters, QSizeF(200, 50)));
}

void tst_RectangularLayout::equalSizeChangesNothing()
{
    QFETCH(const ShapeType, shape);
    const Shape item(shape);
    item->setItemScaleX(2.0);
    QVERIFY(!item->setItemSize(QSizeF(100, 100)));
    QVERIFY(!item->setItemSize(QSizeF(100, 100), true, false));
    QVERIFY(!item->setItemSize(QSizeF(100, 100), false, 1, 1, 200, 200, false, false));
    QVERIFY(!item->setItemSize(QSizeF(100, 100), false, 1, 1, 200, 200, false, true));
    QCOMPARE(item->getItemScaleX(), 2.0);
    QCOMPARE(item.rect(), newRect);
}

void tst_RectangularLayout::singleSidesAreOnlyStored()
{
    QFETCH(const ShapeType, shape);
    const Shape item(shape);
    item->setItemWidth(40.0);
    item->setItemHeight(30.0);
    QCOMPARE(item.boundingRect(), QRectF(0, 0, 40, 30));
    QCOMPARE(item.rect(), newRect);
    QCOMPARE(item.scales(), unscaled);
}

void tst_RectangularLayout::updatedSizeLaysEverythingOut()
{
    QFETCH(const ShapeType, shape);
    const Shape item(shape);
    item->setItemPenWidth(5);
    item->setItemFillColor(red);
    item->setItemBrushStyle(MobraTypes::BrushLinearGradient);
    item->setItemScaleX(2.0);
    item->updateItemSize(QSizeF(10, 4));
    QCOMPARE(item->getItemSize(), QSizeF(10, 4));
    QCOMPARE(item->getItemPen().widthF(), 3.0);
    QCOMPARE(item->getItemPenWidth(), ushort(5));
    QCOMPARE(item.rect(), QRectF(1.5, 1.5, 7, 1));
    QCOMPARE(item.scales(), unscaled);
    QCOMPARE(item.endOfGradient(), QPointF(0, 4));
    item->updateItemSize(QSizeF(20, 20));
    QCOMPARE(item.rect(), QRectF(2.5, 2.5, 15, 15));
    item->updateItemSize(QSizeF(0.5, 0.5));
    QCOMPARE(item.rect(), QRectF(0.5, 0.5, -0.5, -0.5));
}

void tst_RectangularLayout::copyTakesTheRectangleAsItIs()
{
    QFETCH(const ShapeType, shape);
    const Shape item(shape);
    item->setItemWidth(40.0);
    const Shape copy(std::unique_ptr<Item>(item->createItemCopy()));
    QCOMPARE(copy->getItemSize(), QSizeF(40, 100));
    QCOMPARE(copy.rect(), newRect);

    item->setItemSize(QSizeF(60, 50));
    item->setItemHeight(30.0);
    const Shape resized(std::unique_ptr<Item>(item->createItemCopy()));
    QCOMPARE(resized->getItemSize(), QSizeF(60, 30));
    QCOMPARE(resized.rect(), QRectF(0.5, 0.5, 59, 49));
}

QTEST_MAIN(tst_RectangularLayout)
#include "tst_rectangularlayout.moc"
