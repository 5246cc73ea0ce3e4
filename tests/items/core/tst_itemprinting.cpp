// SPDX-License-Identifier: BSD-3-Clause
#include "items/shapes/rectangleitem.h"
#include "tests/support/block.h"
#include "tests/support/nearness.h"
#include "tests/support/oddnumbers.h"
#include "tests/support/scenes.h"

#include <QGraphicsPixmapItem>
#include <QGraphicsScene>
#include <QImage>
#include <QPainter>
#include <QRegularExpression>
#include <QTest>

#include <limits>

using namespace Qt::StringLiterals;
using Scenes::onlyPixmap;

namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();

constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

void makeSolid(RectangleItem &rectangle, const QColor &color)
{
    rectangle.setItemFillColor(color);
    rectangle.setItemPenStyle(Qt::NoPen);
}

} // namespace

class tst_ItemPrinting : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    // Print scene
    void printSceneAtScaleOneTakesTheItem_data();
    void printSceneAtScaleOneTakesTheItem();
    void printSceneAtOtherScalesTakesAPicture_data();
    void printSceneAtOtherScalesTakesAPicture();
    void pictureLiesAtTheScaledPosition();
    void pictureSizeIsRounded();
    void pictureShowsTheItem();
    void pictureOfARotatedItemIsTransparentAround();
    void pictureKeepsTheStacking();
    void pictureShowsNoSelectionFrame();
    void pictureOfAMemberLiesAtItsPlaceInTheScene();
    void memberKeepsItsPlaceInThePrintScene();
    void itemWithoutASceneToPrintToStays();
    void pictureWithoutPixelsIsEmpty_data();
    void pictureWithoutPixelsIsEmpty();
    void anyScaleLeavesThePrintSceneFinite_data();
    void anyScaleLeavesThePrintSceneFinite();
    void itemWithoutASizeEndsInNoScene_data();
    void itemWithoutASizeEndsInNoScene();
    void itemThatThePrintSceneHoldsIsTakenSilently();

    // Any size
    void anySizeIsPaintedWithoutHarm_data();
    void anySizeIsPaintedWithoutHarm();
    void anySizePrintsWithoutHarm_data();
    void anySizePrintsWithoutHarm();
};

// Print scene

void tst_ItemPrinting::printSceneAtScaleOneTakesTheItem_data()
{
    QTest::addColumn<double>("scale");
    QTest::newRow("one") << 1.0;
    QTest::newRow("one half") << 0.5;
    QTest::newRow("rounded down to one") << 1.4;
    QTest::newRow("just rounded down to one") << 1.4999;
}

void tst_ItemPrinting::printSceneAtScaleOneTakesTheItem()
{
    QFETCH(double, scale);
    QGraphicsScene scene;
    auto *block = new Block; // the scene becomes its owner
    block->setPos(10, 20);
    QVERIFY(!block->addItemToPrintScene(&scene, scale));
    QCOMPARE(block->scene(), &scene);
    QCOMPARE(scene.items().size(), 1);
    QCOMPARE(block->pos(), QPointF(10, 20));
}

void tst_ItemPrinting::printSceneAtOtherScalesTakesAPicture_data()
{
    QTest::addColumn<double>("scale");
    QTest::addColumn<QRectF>("picture");

    // A block of 100 × 60 at (10, 20).
    QTest::newRow("twice") << 2.0 << QRectF(20, 40, 200, 120);
    QTest::newRow("one and a half") << 1.5 << QRectF(15, 30, 150, 90);
    QTest::newRow("a quarter") << 0.25 << QRectF(2.5, 5, 25, 15);
    QTest::newRow("three and an eighth") << 3.125 << QRectF(31.25, 62.5, 313, 188);
}

void tst_ItemPrinting::printSceneAtOtherScalesTakesAPicture()
{
    QFETCH(double, scale);
    QFETCH(QRectF, picture);
    QGraphicsScene scene;
    Block block(QSizeF(100, 60));
    block.setPos(10, 20);
    QVERIFY(block.addItemToPrintScene(&scene, scale));
    QVERIFY(!block.scene());
    const auto *pixmap = onlyPixmap(scene);
    QVERIFY(pixmap);
    QCOMPARE(pixmap->pos(), picture.topLeft());
    QCOMPARE(QSizeF(pixmap->pixmap().size()), picture.size());
}

void tst_ItemPrinting::pictureLiesAtTheScaledPosition()
{
    QGraphicsScene scene;
    Block block(QSizeF(100, 60));
    block.setPos(10, 20);
    block.setItemRotation(90);
    // About (50, 30), a quarter turn takes the rectangle to (20, -20, 60, 100).
    QVERIFY(block.addItemToPrintScene(&scene, 2.0));
    const auto *pixmap = onlyPixmap(scene);
    QVERIFY(pixmap);
    QVERIFY(areNear(pixmap->pos(), QPointF(60, 0)));
    QCOMPARE(pixmap->pixmap().size(), QSize(120, 200));
}

void tst_ItemPrinting::pictureSizeIsRounded()
{
    QGraphicsScene scene;
    Block block(QSizeF(10.25, 10.125));
    QVERIFY(block.addItemToPrintScene(&scene, 2.0));
    const auto *pixmap = onlyPixmap(scene);
    QVERIFY(pixmap);
    // 20.5 and 20.25
    QCOMPARE(pixmap->pixmap().size(), QSize(21, 20));
}

void tst_ItemPrinting::pictureShowsTheItem()
{
    QGraphicsScene scene;
    RectangleItem rectangle;
    makeSolid(rectangle, Qt::red);
    rectangle.setPos(-30, 70);
    QVERIFY(rectangle.addItemToPrintScene(&scene, 2.0));
    const auto *pixmap = onlyPixmap(scene);
    QVERIFY(pixmap);
    const QImage image = pixmap->pixmap().toImage();
    QCOMPARE(image.size(), QSize(200, 200));
    for (const QPoint point :
        { QPoint(0, 0), QPoint(199, 0), QPoint(100, 100), QPoint(0, 199), QPoint(199, 199) })
        QCOMPARE(image.pixel(point), qRgba(255, 0, 0, 255));
}

void tst_ItemPrinting::pictureOfARotatedItemIsTransparentAround()
{
    QGraphicsScene scene;
    scene.setBackgroundBrush(Qt::green);
    RectangleItem rectangle;
    makeSolid(rectangle, Qt::red);
    rectangle.setItemRotation(45);
    QVERIFY(rectangle.addItemToPrintScene(&scene, 2.0));
    const auto *pixmap = onlyPixmap(scene);
    QVERIFY(pixmap);
    const QImage image = pixmap->pixmap().toImage();
    // The diagonal of 100 × 100 is 141.42; twice that is 282.84.
    QCOMPARE(image.size(), QSize(283, 283));
    QCOMPARE(image.pixel(141, 141), qRgba(255, 0, 0, 255));
    QCOMPARE(image.pixel(5, 5), 0U);
    QCOMPARE(image.pixel(277, 277), 0U);
}

void tst_ItemPrinting::pictureKeepsTheStacking()
{
    QGraphicsScene scene;
    Block block;
    block.setZValue(-3.5);
    QVERIFY(block.addItemToPrintScene(&scene, 2.0));
    const auto *pixmap = onlyPixmap(scene);
    QVERIFY(pixmap);
    QCOMPARE(pixmap->zValue(), -3.5);
    QVERIFY(pixmap->flags() & QGraphicsItem::ItemStacksBehindParent);
}

void tst_ItemPrinting::pictureShowsNoSelectionFrame()
{
    QGraphicsScene scene;
    RectangleItem rectangle;
    makeSolid(rectangle, Qt::white);
    rectangle.setSelected(true);
    QVERIFY(rectangle.isSelected());
    QVERIFY(rectangle.addItemToPrintScene(&scene, 2.0));
    const auto *pixmap = onlyPixmap(scene);
    QVERIFY(pixmap);
    QImage white(200, 200, QImage::Format_ARGB32_Premultiplied);
    white.fill(Qt::white);
    QCOMPARE(pixmap->pixmap().toImage().convertToFormat(QImage::Format_ARGB32_Premultiplied), white);
    QVERIFY(rectangle.isSelected());
}

void tst_ItemPrinting::pictureOfAMemberLiesAtItsPlaceInTheScene()
{
    QGraphicsScene scene;
    Block parent;
    parent.setPos(100, 200);
    Block member;
    member.setParentItem(&parent);
    member.setPos(5, 7);
    QVERIFY(member.addItemToPrintScene(&scene, 2.0));
    const auto *pixmap = onlyPixmap(scene);
    QVERIFY(pixmap);
    QCOMPARE(pixmap->pos(), QPointF(210, 414));
    QCOMPARE(pixmap->pixmap().size(), QSize(200, 200));
}

void tst_ItemPrinting::memberKeepsItsPlaceInThePrintScene()
{
    QGraphicsScene scene;
    Block parent;
    parent.setPos(100, 200);
    auto *member = new Block; // the scene becomes its owner
    member->setParentItem(&parent);
    member->setPos(5, 7);
    QVERIFY(!member->addItemToPrintScene(&scene, 1.0));
    QCOMPARE(member->scene(), &scene);
    QVERIFY(!member->parentItem());
    QCOMPARE(member->scenePos(), QPointF(105, 207));
    QCOMPARE(scene.items().size(), 1);
}

void tst_ItemPrinting::itemWithoutASceneToPrintToStays()
{
    QGraphicsScene scene;
    auto *block = new Block;
    scene.addItem(block);
    QVERIFY(!block->addItemToPrintScene(nullptr, 1.0));
    QVERIFY(!block->addItemToPrintScene(nullptr, 2.0));
    QCOMPARE(block->scene(), &scene);
}

void tst_ItemPrinting::pictureWithoutPixelsIsEmpty_data()
{
    QTest::addColumn<QSizeF>("size");
    QTest::addColumn<double>("scale");

    QTest::newRow("scale of zero") << QSizeF(100, 60) << 0.0;
    QTest::newRow("scale that rounds to zero pixels") << QSizeF(100, 60) << 0.001;
    QTest::newRow("negative scale") << QSizeF(100, 60) << -2.0;
    QTest::newRow("scale that is no number") << QSizeF(100, 60) << notANumber;
    QTest::newRow("infinite scale") << QSizeF(100, 60) << infinity;
    QTest::newRow("no width") << QSizeF(0, 60) << 2.0;
    QTest::newRow("wider than any image") << QSizeF(32768, 1) << 2.0;
    QTest::newRow("larger than any image") << QSizeF(10000, 10000) << 2.0;
}

void tst_ItemPrinting::pictureWithoutPixelsIsEmpty()
{
    QFETCH(QSizeF, size);
    QFETCH(double, scale);
    QGraphicsScene scene;
    Block block(size);
    QVERIFY(block.addItemToPrintScene(&scene, scale));
    QVERIFY(!block.scene());
    const auto *pixmap = onlyPixmap(scene);
    QVERIFY(pixmap);
    QVERIFY(pixmap->pixmap().isNull());
}

void tst_ItemPrinting::anyScaleLeavesThePrintSceneFinite_data()
{
    QTest::addColumn<double>("scale");

    for (const double scale : { notANumber, infinity, -infinity, 1e300, -1e300, 1e9, 0.0 })
        QTest::addRow("%g", scale) << scale;
}

void tst_ItemPrinting::anyScaleLeavesThePrintSceneFinite()
{
    QFETCH(const double, scale);
    QGraphicsScene scene;
    Block block(QSizeF(100, 60));
    block.setPos(10, 20);
    QVERIFY(block.addItemToPrintScene(&scene, scale));
    QVERIFY(onlyPixmap(scene));
    QVERIFY(isFinite(scene.itemsBoundingRect()));
    QVERIFY(isFinite(QRectF(onlyPixmap(scene)->pos(), QSizeF())));
    QVERIFY(!block.scene());
}

void tst_ItemPrinting::itemWithoutASizeEndsInNoScene_data()
{
    QTest::addColumn<bool>("inAScene");
    QTest::addColumn<bool>("inThePrintScene");

    QTest::newRow("in no scene") << false << false;
    QTest::newRow("in a scene") << true << false;
    QTest::newRow("in the print scene") << true << true;
}

void tst_ItemPrinting::itemWithoutASizeEndsInNoScene()
{
    QFETCH(const bool, inAScene);
    QFETCH(const bool, inThePrintScene);
    QGraphicsScene page;
    QGraphicsScene scene;
    Block block(QSizeF(0, 0));
    if (inAScene)
        (inThePrintScene ? scene : page).addItem(&block);
    QVERIFY(block.addItemToPrintScene(&scene, 2.0));
    QVERIFY(!block.scene());
    QVERIFY(page.items().isEmpty());
    QVERIFY(onlyPixmap(scene));
}

void tst_ItemPrinting::itemThatThePrintSceneHoldsIsTakenSilently()
{
    // The scene would warn of an item that it holds already.
    QGraphicsScene scene;
    auto *block = new Block; // owned by the scene
    scene.addItem(block);
    block->setItemQFlags(QGraphicsItem::ItemIsSelectable);
    block->setSelected(true);
    QVERIFY(!block->addItemToPrintScene(&scene, 1.0));
    QVERIFY(!block->addItemToPrintScene(&scene, 1.0));
    QCOMPARE(block->scene(), &scene);
    QCOMPARE(scene.items().size(), 1);
    QVERIFY(!block->isSelected());
}

// Any size

void tst_ItemPrinting::anySizeIsPaintedWithoutHarm_data()
{
    addOddSizes();
}

void tst_ItemPrinting::anySizeIsPaintedWithoutHarm()
{
    QFETCH(double, width);
    QFETCH(double, height);
    QImage image(50, 50, QImage::Format_ARGB32_Premultiplied);
    for (const auto style : { Qt::SolidLine, Qt::DashLine }) {
        QGraphicsScene scene;
        auto *rectangle = new RectangleItem;
        rectangle->setItemFillColor(Qt::red);
        rectangle->setItemPenStyle(style);
        scene.addItem(rectangle);
        rectangle->setItemSize(QSizeF(width, height));
        rectangle->setItemRotation(30);
        rectangle->setItemHorizontalMirror(true);
        rectangle->setSelected(true);

        const QRectF bounds = rectangle->boundingRect();
        for (const double side : { bounds.x(), bounds.y(), bounds.width(), bounds.height() })
            QVERIFY2(qAbs(side) <= 1e7, qPrintable(QString::number(side)));

        image.fill(Qt::transparent);
        QPainter painter(&image);
        scene.render(&painter, image.rect(), QRectF(0, 0, 50, 50));
        QVERIFY(isFinite(scene.itemsBoundingRect()));
    }
}

void tst_ItemPrinting::anySizePrintsWithoutHarm_data()
{
    addOddSizes();
}

void tst_ItemPrinting::anySizePrintsWithoutHarm()
{
    QFETCH(double, width);
    QFETCH(double, height);
    QGraphicsScene scene;
    RectangleItem rectangle;
    rectangle.setItemSize(QSizeF(width, height));
    QVERIFY(rectangle.addItemToPrintScene(&scene, 2.0));
    QVERIFY(onlyPixmap(scene));
    QVERIFY(!rectangle.scene());
}

QTEST_MAIN(tst_ItemPrinting)
#include "tst_itemprinting.moc"
