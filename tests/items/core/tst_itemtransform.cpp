// SPDX-License-Identifier: BSD-3-Clause
#include "items/core/mirrorscope.h"
#include "tests/support/block.h"
#include "tests/support/nearness.h"
#include "tests/support/recordingpaintdevice.h"

#include <QGraphicsScene>
#include <QPainter>
#include <QRegularExpression>
#include <QStyleOptionGraphicsItem>
#include <QTest>

#include <cmath>
#include <limits>

using namespace Qt::StringLiterals;

namespace {

constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

QPointF centreInScene(const Block &block)
{
    return block.mapToScene(QPointF(block.getItemWidth() / 2, block.getItemHeight() / 2));
}

} // namespace

class tst_ItemTransform : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    // Rotation and transform
    void rotationIsStoredNormalised_data();
    void rotationIsStoredNormalised();
    void rotationBecomesTheWholeTransform();
    void rotatingKeepsTheCentreInTheScene_data();
    void rotatingKeepsTheCentreInTheScene();
    void rotatingAPlainItemDoesNotMoveIt();
    void rotatingOutOfAnyTransformKeepsThePositionFinite_data();
    void rotatingOutOfAnyTransformKeepsThePositionFinite();
    void rotatingOutOfNoTransformAtAllKeepsThePosition();
    void unitTransformHasNoScale();
    void unitTransformKeepsTheTranslation();
    void unitTransformOfAZeroScaleIsFinite();

    // Mirrors
    void mirroringStoresTheFlagOnly();
    void mirroredPaintersStayInTheRectangle_data();
    void mirroredPaintersStayInTheRectangle();
    void mirrorScopeRestoresThePainter();

    // Selection frame
    void frameIsDrawnForSelectedItemsOnly();
    void frameIsADottedCosmeticOutline();
    void frameIsOrangeAndTranslucent();
    void frameUsesTheCurrentColourGroup();
};

// Rotation and transform

void tst_ItemTransform::rotationIsStoredNormalised_data()
{
    QTest::addColumn<double>("degrees");
    QTest::addColumn<double>("stored");

    QTest::newRow("zero") << 0.0 << 0.0;
    QTest::newRow("inside") << 30.5 << 30.5;
    QTest::newRow("negative") << -90.0 << 270.0;
    QTest::newRow("full turn") << 360.0 << 0.0;
    QTest::newRow("two turns and five") << 725.0 << 5.0;
    QTest::newRow("no number") << notANumber << 0.0;
}

void tst_ItemTransform::rotationIsStoredNormalised()
{
    QFETCH(double, degrees);
    Block block;
    block.setItemRotation(degrees);
    QTEST(block.getItemRotation(), "stored");
}

void tst_ItemTransform::rotationBecomesTheWholeTransform()
{
    Block block(QSizeF(100, 60));
    block.setTransform(QTransform(2, 1, 0, 3, 4, 0, 50, 60, 1));
    block.setItemRotation(90);
    // About (50, 30), a turn of 90 degrees takes (x, y) to (80 - y, x - 20).
    QVERIFY(areNear(block.transform().map(QPointF(0, 0)), QPointF(80, -20)));
    QVERIFY(areNear(block.transform().map(QPointF(100, 0)), QPointF(80, 80)));
    QVERIFY(areNear(block.transform().map(QPointF(0, 60)), QPointF(20, -20)));
    QCOMPARE(block.rotation(), 0.0);

    block.setItemRotation(0);
    QVERIFY(block.transform().isIdentity());
}

void tst_ItemTransform::rotatingKeepsTheCentreInTheScene_data()
{
    QTest::addColumn<QTransform>("before");
    QTest::addColumn<double>("degrees");
    QTest::addColumn<QPointF>("centre");

    // A block of 100 × 60 at (10, 20): its centre is (50, 30) in its own coordinates.
    QTest::newRow("plain") << QTransform() << 33.0 << QPointF(60, 50);
    QTest::newRow("scaled") << QTransform::fromScale(2, 3) << 90.0 << QPointF(110, 110);
    QTest::newRow("moved") << QTransform::fromTranslate(7, -8) << 200.0 << QPointF(67, 42);
    QTest::newRow("turned about the origin") << QTransform(0, 1, -1, 0, 0, 0) << -45.0 << QPointF(-20, 70);
}

void tst_ItemTransform::rotatingKeepsTheCentreInTheScene()
{
    QFETCH(QTransform, before);
    QFETCH(double, degrees);
    QFETCH(QPointF, centre);
    Block block(QSizeF(100, 60));
    block.setPos(10, 20);
    block.setTransform(before);
    QVERIFY(areNear(centreInScene(block), centre));
    block.setItemRotation(degrees);
    QVERIFY(areNear(centreInScene(block), centre));
    // The new transform keeps the centre at (50, 30), so the position is the centre less that.
    QVERIFY(areNear(block.pos(), centre - QPointF(50, 30)));
}

void tst_ItemTransform::rotatingAPlainItemDoesNotMoveIt()
{
    QGraphicsScene scene;
    auto *block = new Block(QSizeF(100, 60));
    scene.addItem(block);
    block->setPos(10, 20);
    for (const double degrees : { 45.0, 90.0, 123.0, 0.0 }) {
        block->setItemRotation(degrees);
        QVERIFY(areNear(block->pos(), QPointF(10, 20)));
    }
}

void tst_ItemTransform::rotatingOutOfAnyTransformKeepsThePositionFinite_data()
{
    QTest::addColumn<QVariantList>("before");
    QTest::addColumn<QPointF>("position");

    // A block of 100 × 60 at (10, 20). Where its centre (50, 30) was at infinity, there is nothing to keep:
    // the item stays.
    QTest::newRow("centre at infinity")
        << QVariantList { 1.0, 0.0, -0.02, 0.0, 1.0, 0.0, 0.0, 0.0 } << QPointF(10, 20);
    QTest::newRow("vertically at infinity")
        << QVariantList { 1.0, 0.0, 0.0, 0.0, 1.0, -1.0 / 30.0, 0.0, 0.0 } << QPointF(10, 20);
    // All points lay on the position, and so does the centre now.
    QTest::newRow("everything on one point") << QVariantList(8, 0.0) << QPointF(-40, -10);
    // 1 - 0.01 × 50 = 0.5: the centre was at (100, 60) of the item.
    QTest::newRow("perspective") << QVariantList { 1.0, 0.0, -0.01, 0.0, 1.0, 0.0, 0.0, 0.0 }
                                 << QPointF(60, 50);
}

void tst_ItemTransform::rotatingOutOfAnyTransformKeepsThePositionFinite()
{
    QFETCH(const QVariantList, before);
    QFETCH(const QPointF, position);
    for (const double degrees : { 0.0, 30.0, notANumber }) {
        Block block(QSizeF(100, 60));
        block.setPos(10, 20);
        block.setItemTransformFromList(before);
        QCOMPARE(block.getItemTransform(), before);
        block.setItemRotation(degrees);
        QVERIFY(areNear(block.pos(), position));
    }
}

void tst_ItemTransform::rotatingOutOfNoTransformAtAllKeepsThePosition()
{
    // A matrix of nothing but zeros has no point for the centre.
    Block block(QSizeF(100, 60));
    block.setPos(10, 20);
    block.setTransform(QTransform(0, 0, 0, 0, 0, 0, 0, 0, 0));
    block.setItemRotation(30);
    QCOMPARE(block.pos(), QPointF(10, 20));
    QVERIFY(block.transform().isAffine());
}

void tst_ItemTransform::unitTransformHasNoScale()
{
    Block block;
    block.setTransform(QTransform(4, 2, 3, 10, 7, 9));
    block.setItemScaleX(2);
    block.setItemScaleY(5);
    const QTransform unit = block.getItemUnitTransform();
    QCOMPARE(unit.m11(), 2.0);
    QCOMPARE(unit.m12(), 1.0);
    QCOMPARE(unit.m21(), 0.6);
    QCOMPARE(unit.m22(), 2.0);
    QCOMPARE(unit.m33(), 1.0);
    QCOMPARE(block.transform(), QTransform(4, 2, 3, 10, 7, 9));
}

void tst_ItemTransform::unitTransformKeepsTheTranslation()
{
    Block block;
    block.setTransform(QTransform(4, 0, 0, 10, 7, 9));
    block.setItemScaleX(4);
    block.setItemScaleY(10);
    QCOMPARE(block.getItemUnitTransform(), QTransform::fromTranslate(7, 9));
}

void tst_ItemTransform::unitTransformOfAZeroScaleIsFinite()
{
    Block block;
    block.setItemScaleX(0);
    block.setItemScaleY(notANumber);
    const QTransform unit = block.getItemUnitTransform();
    QVERIFY(std::isfinite(unit.m11()));
    QVERIFY(std::isfinite(unit.m22()));
}

// Mirrors

void tst_ItemTransform::mirroringStoresTheFlagOnly()
{
    Block block;
    block.setItemHorizontalMirror(true);
    QVERIFY(block.getItemHorizontalMirror());
    QVERIFY(!block.getItemVerticalMirror());
    block.setItemVerticalMirror(true);
    block.setItemHorizontalMirror(false);
    QVERIFY(!block.getItemHorizontalMirror());
    QVERIFY(block.getItemVerticalMirror());
    QVERIFY(block.transform().isIdentity());
    QCOMPARE(block.pos(), QPointF(0, 0));
}

void tst_ItemTransform::mirroredPaintersStayInTheRectangle_data()
{
    QTest::addColumn<bool>("horizontal");
    QTest::addColumn<bool>("vertical");
    QTest::addColumn<QPointF>("point"); // where (10, 20) of a 100 × 60 rectangle lands

    QTest::newRow("not at all") << false << false << QPointF(10, 20);
    QTest::newRow("horizontally") << true << false << QPointF(90, 20);
    QTest::newRow("vertically") << false << true << QPointF(10, 40);
    QTest::newRow("both") << true << true << QPointF(90, 40);
}

void tst_ItemTransform::mirroredPaintersStayInTheRectangle()
{
    QFETCH(bool, horizontal);
    QFETCH(bool, vertical);
    Block block;
    block.setItemHorizontalMirror(horizontal);
    block.setItemVerticalMirror(vertical);
    RecordingPaintDevice device;
    QPainter painter(&device);
    painter.translate(1000, 2000);
    block.painterMirrorTransform(&painter, 100, 60);
    QTEST(painter.transform().map(QPointF(10, 20)) - QPointF(1000, 2000), "point");
    painter.restore();
    QCOMPARE(painter.transform(), QTransform::fromTranslate(1000, 2000));
}

void tst_ItemTransform::mirrorScopeRestoresThePainter()
{
    Block block;
    block.setItemHorizontalMirror(true);
    RecordingPaintDevice device;
    QPainter painter(&device);
    painter.setPen(Qt::red);
    {
        const MirrorScope mirrored(block, painter, 100, 60);
        QCOMPARE(painter.transform().map(QPointF(10, 20)), QPointF(90, 20));
        painter.setPen(Qt::green);
    }
    QVERIFY(painter.transform().isIdentity());
    QCOMPARE(painter.pen().color(), QColor(Qt::red));
}

// Selection frame

void tst_ItemTransform::frameIsDrawnForSelectedItemsOnly()
{
    RecordingPaintDevice device;
    QPainter painter(&device);
    QStyleOptionGraphicsItem option;
    option.state = QStyle::State_Enabled | QStyle::State_HasFocus;
    Item::drawSelectionRectangle(&painter, &option, QRectF(1, 2, 30, 40));
    QVERIFY(device.drawings().isEmpty());

    option.state |= QStyle::State_Selected;
    Item::drawSelectionRectangle(&painter, &option, QRectF(1, 2, 30, 40));
    QCOMPARE(device.drawings().size(), 1);
    QCOMPARE(device.drawings().first().rect, QRectF(1, 2, 30, 40));
    QCOMPARE(device.otherDrawings(), 0);
}

void tst_ItemTransform::frameIsADottedCosmeticOutline()
{
    RecordingPaintDevice device;
    QPainter painter(&device);
    QStyleOptionGraphicsItem option;
    option.state = QStyle::State_Selected;
    option.palette.setBrush(QPalette::WindowText, QBrush(Qt::magenta, Qt::Dense4Pattern));
    Item::drawSelectionRectangle(&painter, &option, QRectF(0, 0, 30, 40));
    QCOMPARE(device.drawings().size(), 1);
    const QPen pen = device.drawings().first().pen;
    QVERIFY(pen.isCosmetic());
    QCOMPARE(pen.widthF(), 0.0);
    QCOMPARE(pen.style(), Qt::DotLine);
    QCOMPARE(pen.capStyle(), Qt::SquareCap);
    QCOMPARE(pen.joinStyle(), Qt::BevelJoin);
    QCOMPARE(pen.brush(), QBrush(Qt::magenta, Qt::Dense4Pattern));
}

void tst_ItemTransform::frameIsOrangeAndTranslucent()
{
    RecordingPaintDevice device;
    QPainter painter(&device);
    QStyleOptionGraphicsItem option;
    option.state = QStyle::State_Selected;
    Item::drawSelectionRectangle(&painter, &option, QRectF(0, 0, 30, 40));
    QCOMPARE(device.drawings().size(), 1);
    const QBrush brush = device.drawings().first().brush;
    QCOMPARE(brush.style(), Qt::SolidPattern);
    QCOMPARE(brush.color(), QColor(239, 127, 15, 50));
}

void tst_ItemTransform::frameUsesTheCurrentColourGroup()
{
    RecordingPaintDevice device;
    QPainter painter(&device);
    QStyleOptionGraphicsItem option;
    option.state = QStyle::State_Selected;
    option.palette.setBrush(QPalette::Active, QPalette::WindowText, Qt::red);
    option.palette.setBrush(QPalette::Disabled, QPalette::WindowText, Qt::green);
    option.palette.setCurrentColorGroup(QPalette::Disabled);
    Item::drawSelectionRectangle(&painter, &option, QRectF(0, 0, 30, 40));
    option.palette.setCurrentColorGroup(QPalette::Active);
    Item::drawSelectionRectangle(&painter, &option, QRectF(0, 0, 30, 40));
    QCOMPARE(device.drawings().size(), 2);
    QCOMPARE(device.drawings().at(0).pen.color(), QColor(Qt::green));
    QCOMPARE(device.drawings().at(1).pen.color(), QColor(Qt::red));
}

QTEST_MAIN(tst_ItemTransform)
#include "tst_itemtransform.moc"
