// SPDX-License-Identifier: BSD-3-Clause
#include "tests/support/block.h"

#include <QGraphicsRectItem>
#include <QRegularExpression>
#include <QTest>

#include <limits>

using namespace Qt::StringLiterals;

namespace {

constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

using Switch = void (Item::*)(bool);

} // namespace

class tst_ItemIdentity : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    // Identity and flags
    void newItemHasTheDefaults();
    void shapeIsOneFieldInTwoTypes();
    void flagWordIsReplacedAsAWhole();
    void singleFlagsAreSetAndCleared();
    void flagsPrintInBinary_data();
    void flagsPrintInBinary();
    void graphicsFlagsAreAnotherWord();
    void templateAndLockBitsAnswerTheirQuestions_data();
    void templateAndLockBitsAnswerTheirQuestions();
    void switchesTouchTheirBitOnly();

    // Datasource binding
    void lockingParksTheBinding_data();
    void lockingParksTheBinding();
    void lockingTwiceLosesTheBinding();
    void unlockingAnItemThatWasNeverLockedLosesTheBinding();
    void bothLocksShareOneParkedBinding();
    void otherSwitchesKeepTheBinding();

    // Graphics-item state
    void graphicsStateIsThatOfTheGraphicsItem();
    void positionIsPendingUntilItIsApplied();
    void parentsKnowOfMovesWithoutAScene();
    void zValueThatIsNoNumberBecomesZero();

    // Copying
    void everythingIsCopied();
    void sizeIsCopiedOnRequestOnly();
    void mirrorsAreCopiedThroughTheSetters();
    void parkedBindingIsNotCopied();
    void copiedSizeIsNotAnnounced();
    void privatePropertiesAreStored_data();
    void privatePropertiesAreStored();
};

// Identity and flags

void tst_ItemIdentity::newItemHasTheDefaults()
{
    const Block block;
    QCOMPARE(block.getItemSize(), QSizeF(100, 100));
    QCOMPARE(block.getItemWidth(), 100.0);
    QCOMPARE(block.getItemHeight(), 100.0);
    QCOMPARE(block.getItemRotation(), 0.0);
    QVERIFY(!block.getItemHorizontalMirror());
    QVERIFY(!block.getItemVerticalMirror());
    QCOMPARE(block.itemId(), short(-1));
    QCOMPARE(uint(block.getItemShape()), 0x1002AU);
    QCOMPARE(block.itemFlags(), 1U);
    QCOMPARE(block.getItemScaleX(), 1.0);
    QCOMPARE(block.getItemScaleY(), 1.0);
    QVERIFY(block.getAllowOverprint());
    QCOMPARE(block.getDatasourceId(), -1);
    QVERIFY(block.getDatasourceField().isNull());
    QVERIFY(!block.itemIsNonModifiable());
    QVERIFY(!block.scene());
}

void tst_ItemIdentity::shapeIsOneFieldInTwoTypes()
{
    Block block;
    block.setItemShape(MobraTypes::PieShape);
    QCOMPARE(block.getItemShapeInt(), 0x1002EU);
    block.setItemShapeInt(0x10037);
    QCOMPARE(block.getItemShape(), MobraTypes::HexagonShape);
}

void tst_ItemIdentity::flagWordIsReplacedAsAWhole()
{
    Block block;
    block.setItemFlags(0xF0000042U);
    QCOMPARE(block.itemFlags(), 0xF0000042U);
    block.setItemFlags(0U);
    QCOMPARE(block.itemFlags(), 0U);
}

void tst_ItemIdentity::singleFlagsAreSetAndCleared()
{
    Block block;
    block.setItemFlags(MobraTypes::FlagGradient, true);
    QCOMPARE(block.itemFlags(), 0x81U);
    block.setItemFlags(MobraTypes::FlagGradient, true);
    QCOMPARE(block.itemFlags(), 0x81U);
    block.setItemFlags(MobraTypes::FlagVisibleInPrint, false);
    QCOMPARE(block.itemFlags(), 0x80U);
    block.setItemFlags(MobraTypes::FlagVisibleInPrint, false);
    QCOMPARE(block.itemFlags(), 0x80U);
    block.setItemFlags(static_cast<MobraTypes::Flags>(0x12), true);
    QCOMPARE(block.itemFlags(), 0x92U);
    block.setItemFlags(static_cast<MobraTypes::Flags>(0x90), false);
    QCOMPARE(block.itemFlags(), 0x02U);
}

void tst_ItemIdentity::flagsPrintInBinary_data()
{
    QTest::addColumn<uint>("flags");
    QTest::addColumn<QString>("text");

    QTest::newRow("new item") << Block().itemFlags() << u"1"_s;
    QTest::newRow("none") << 0U << u"0"_s;
    QTest::newRow("several") << 0x2AU << u"101010"_s;
    QTest::newRow("gradient") << 0x81U << u"10000001"_s;
    QTest::newRow("all") << 0xFFFFFFFFU << QString(32, u'1');
}

void tst_ItemIdentity::flagsPrintInBinary()
{
    QFETCH(uint, flags);
    Block block;
    block.setItemFlags(flags);
    QTEST(block.printItemFlags(), "text");
}

void tst_ItemIdentity::graphicsFlagsAreAnotherWord()
{
    Block block;
    QCOMPARE(block.itemQFlags(), 0U);
    block.setItemQFlags(0x107);
    QCOMPARE(block.itemQFlags(), 0x107U);
    QCOMPARE(block.flags(),
        QGraphicsItem::ItemIsMovable | QGraphicsItem::ItemIsSelectable | QGraphicsItem::ItemIsFocusable
            | QGraphicsItem::ItemStacksBehindParent);
    QCOMPARE(block.itemFlags(), 1U);
}

void tst_ItemIdentity::templateAndLockBitsAnswerTheirQuestions_data()
{
    QTest::addColumn<uint>("flags");
    QTest::addColumn<bool>("userTemplate");
    QTest::addColumn<bool>("supplyTemplate");
    QTest::addColumn<bool>("readOnly");
    QTest::addColumn<bool>("multiLock");
    QTest::addColumn<bool>("nonModifiable");

    QTest::newRow("none") << 0x00U << false << false << false << false << false;
    QTest::newRow("visible in print") << 0x01U << false << false << false << false << false;
    QTest::newRow("image print") << 0x02U << false << false << false << false << false;
    QTest::newRow("unused bit") << 0x04U << false << false << false << false << false;
    QTest::newRow("user template") << 0x08U << true << false << false << false << true;
    QTest::newRow("supply template") << 0x10U << false << true << false << false << true;
    QTest::newRow("read-only") << 0x20U << false << false << true << false << true;
    QTest::newRow("multiple lock") << 0x40U << false << false << false << true << false;
    QTest::newRow("gradient") << 0x80U << false << false << false << false << false;
    QTest::newRow("all locks") << 0x78U << true << true << true << true << true;
    QTest::newRow("all but the locks") << 0xFFFFFF87U << false << false << false << false << false;
}

void tst_ItemIdentity::templateAndLockBitsAnswerTheirQuestions()
{
    QFETCH(uint, flags);
    Block block;
    block.setItemFlags(flags);
    QTEST(block.itemIsUserTemplate(), "userTemplate");
    QTEST(block.itemIsSupplyTemplate(), "supplyTemplate");
    QTEST(block.itemIsReadOnly(), "readOnly");
    QTEST(block.itemHasMultiLock(), "multiLock");
    QTEST(block.itemIsNonModifiable(), "nonModifiable");
}

void tst_ItemIdentity::switchesTouchTheirBitOnly()
{
    Block block;
    block.setItemFlags(0x80000085U);
    block.setItemAsSupplyTemplate(true);
    QCOMPARE(block.itemFlags(), 0x80000095U);
    block.setItemHasMultiLock(true);
    QCOMPARE(block.itemFlags(), 0x800000D5U);
    block.setItemAsReadOnly(true);
    QCOMPARE(block.itemFlags(), 0x800000F5U);
    block.setItemAsUserTemplate(true);
    QCOMPARE(block.itemFlags(), 0x800000FDU);
    block.setItemAsSupplyTemplate(false);
    QCOMPARE(block.itemFlags(), 0x800000EDU);
    block.setItemAsReadOnly(false);
    QCOMPARE(block.itemFlags(), 0x800000CDU);
    block.setItemAsUserTemplate(false);
    QCOMPARE(block.itemFlags(), 0x800000C5U);
    block.setItemHasMultiLock(false);
    QCOMPARE(block.itemFlags(), 0x80000085U);
}

// Datasource binding

void tst_ItemIdentity::lockingParksTheBinding_data()
{
    QTest::addColumn<Switch>("lock");

    QTest::newRow("read-only") << Switch(&Item::setItemAsReadOnly);
    QTest::newRow("user template") << Switch(&Item::setItemAsUserTemplate);
}

void tst_ItemIdentity::lockingParksTheBinding()
{
    QFETCH(Switch, lock);
    Block block;
    block.setDatasourceId(3);
    block.setDatasourceField(u"Name"_s);
    (block.*lock)(true);
    QCOMPARE(block.getDatasourceId(), -1);
    QVERIFY(block.getDatasourceField().isNull());
    (block.*lock)(false);
    QCOMPARE(block.getDatasourceId(), 3);
    QCOMPARE(block.getDatasourceField(), u"Name"_s);
}

void tst_ItemIdentity::lockingTwiceLosesTheBinding()
{
    Block block;
    block.setDatasourceId(3);
    block.setDatasourceField(u"Name"_s);
    block.setItemAsReadOnly(true);
    block.setItemAsReadOnly(true);
    block.setItemAsReadOnly(false);
    QCOMPARE(block.getDatasourceId(), -1);
    QVERIFY(block.getDatasourceField().isEmpty());
}

void tst_ItemIdentity::unlockingAnItemThatWasNeverLockedLosesTheBinding()
{
    Block block;
    block.setDatasourceId(3);
    block.setDatasourceField(u"Name"_s);
    block.setItemAsReadOnly(false);
    QCOMPARE(block.getDatasourceId(), -1);
    QVERIFY(block.getDatasourceField().isEmpty());
}

void tst_ItemIdentity::bothLocksShareOneParkedBinding()
{
    Block block;
    block.setDatasourceId(3);
    block.setDatasourceField(u"Name"_s);
    block.setItemAsReadOnly(true);
    block.setItemAsUserTemplate(false);
    QCOMPARE(block.getDatasourceId(), 3);
    QCOMPARE(block.getDatasourceField(), u"Name"_s);
    QVERIFY(block.itemIsReadOnly());
}

void tst_ItemIdentity::otherSwitchesKeepTheBinding()
{
    Block block;
    block.setDatasourceId(3);
    block.setDatasourceField(u"Name"_s);
    block.setItemAsSupplyTemplate(true);
    block.setItemHasMultiLock(true);
    block.setItemFlags(MobraTypes::FlagReadOnly, true);
    QCOMPARE(block.getDatasourceId(), 3);
    QCOMPARE(block.getDatasourceField(), u"Name"_s);
}

// Graphics-item state

void tst_ItemIdentity::graphicsStateIsThatOfTheGraphicsItem()
{
    Block block;
    block.setItemZValue(2.5);
    QCOMPARE(block.zValue(), 2.5);
    block.setZValue(-4.0);
    QCOMPARE(block.getItemZValue(), -4.0);
    block.setItemIsVisible(false);
    QVERIFY(!block.isVisible());
    QVERIFY(!block.getItemIsVisible());
    block.setVisible(true);
    QVERIFY(block.getItemIsVisible());
    block.setPos(12, -3);
    QCOMPARE(block.getItemPositionX(), 12.0);
    QCOMPARE(block.getItemPositionY(), -3.0);
}

void tst_ItemIdentity::positionIsPendingUntilItIsApplied()
{
    Block block;
    block.setPos(12, -3);
    block.setItemPositionX(50);
    block.setItemPositionY(60);
    QCOMPARE(block.pos(), QPointF(12, -3));
    QCOMPARE(block.getItemPositionX(), 12.0);
    block.updateItemPositionAfterLoading();
    QCOMPARE(block.pos(), QPointF(50, 60));

    // The pending position stays: another x comes with the y stored last, not with the present one.
    block.setPos(1, 2);
    block.setItemPositionX(70);
    block.updateItemPositionAfterLoading();
    QCOMPARE(block.pos(), QPointF(70, 60));

    Block other;
    other.setPos(12, -3);
    other.updateItemPositionAfterLoading();
    QCOMPARE(other.pos(), QPointF(0, 0));
}

void tst_ItemIdentity::parentsKnowOfMovesWithoutAScene()
{
    QGraphicsRectItem parent;
    auto *block = new Block(QSizeF(10, 10));
    block->setParentItem(&parent);
    QCOMPARE(parent.childrenBoundingRect(), QRectF(0, 0, 10, 10));
    block->setItemPositionX(50);
    block->setItemPositionY(60);
    block->updateItemPositionAfterLoading();
    QCOMPARE(parent.childrenBoundingRect(), QRectF(50, 60, 10, 10));
}

void tst_ItemIdentity::zValueThatIsNoNumberBecomesZero()
{
    Block block;
    block.setItemZValue(7.0);
    block.setItemZValue(notANumber);
    QCOMPARE(block.zValue(), 0.0);
}

// Copying

void tst_ItemIdentity::everythingIsCopied()
{
    Block source(QSizeF(30, 40));
    source.setItemRotation(90);
    source.setItemId(-300);
    source.setItemFlags(0xF00000A3U);
    source.setItemHorizontalMirror(true);
    source.setItemVerticalMirror(true);
    source.setAllowOverprint(false);
    source.setZValue(-2.5);
    source.setItemQFlags(0x10F);
    source.setSelected(true);
    source.setItemScaleX(2.5);
    source.setItemScaleY(0.25);
    source.setDatasourceId(3);
    source.setDatasourceField(u"Name"_s);
    source.setTransform(QTransform(1.5, 0.25, 0.5, -0.5, 2, 0.75, 12, -7, 4));
    source.setPos(-12, 34);
    source.setVisible(false);
    source.setAcceptedMouseButtons(Qt::RightButton);
    source.setAcceptHoverEvents(true);
    source.setAcceptTouchEvents(true);

    Block target;
    target.setTransform(QTransform::fromScale(9, 9));
    source.copyItemProperties(&target, true);
    QCOMPARE(target.itemId(), short(-300));
    QCOMPARE(target.itemFlags(), 0xF00000A3U);
    QVERIFY(target.getItemHorizontalMirror());
    QVERIFY(target.getItemVerticalMirror());
    QVERIFY(!target.getAllowOverprint());
    QCOMPARE(target.zValue(), -2.5);
    QCOMPARE(target.itemQFlags(), 0x10FU);
    QCOMPARE(target.getItemRotation(), 90.0);
    QCOMPARE(target.getItemSize(), QSizeF(30, 40));
    QCOMPARE(target.getItemScaleX(), 2.5);
    QCOMPARE(target.getItemScaleY(), 0.25);
    QCOMPARE(target.getDatasourceId(), 3);
    QCOMPARE(target.getDatasourceField(), u"Name"_s);
    QCOMPARE(target.transform(), QTransform(1.5, 0.25, 0.5, -0.5, 2, 0.75, 12, -7, 4));
    QCOMPARE(target.pos(), QPointF(-12, 34));
    QVERIFY(!target.isVisible());
    QCOMPARE(target.acceptedMouseButtons(), Qt::MouseButtons(Qt::RightButton));
    QVERIFY(target.acceptHoverEvents());
    QVERIFY(target.acceptTouchEvents());
    QVERIFY(target.isEnabled());
    // The shape code is the class's own.
    QCOMPARE(target.getItemShape(), MobraTypes::RectangleShape);

    Block disabled;
    disabled.setEnabled(false);
    disabled.copyItemProperties(&target, true);
    QVERIFY(!target.isEnabled());
    QVERIFY(target.isVisible());
    QVERIFY(!target.acceptHoverEvents());
    QVERIFY(!target.acceptTouchEvents());

    Block selected;
    selected.setItemQFlags(QGraphicsItem::ItemIsSelectable);
    selected.setSelected(true);
    QVERIFY(selected.isSelected());
    Block other;
    selected.copyItemProperties(&other, false);
    QVERIFY(other.isSelected());
    Block unselected;
    unselected.setItemQFlags(QGraphicsItem::ItemIsSelectable);
    unselected.copyItemProperties(&other, false);
    QVERIFY(!other.isSelected());
}

void tst_ItemIdentity::sizeIsCopiedOnRequestOnly()
{
    Block source(QSizeF(30, 40));
    source.setItemScaleX(2);
    source.setItemScaleY(3);
    source.setItemId(8);
    Block target(QSizeF(70, 80));
    target.setItemScaleX(4);
    target.setItemScaleY(5);
    source.copyItemProperties(&target, false);
    QCOMPARE(target.itemId(), short(8));
    QCOMPARE(target.getItemSize(), QSizeF(70, 80));
    QCOMPARE(target.getItemScaleX(), 4.0);
    QCOMPARE(target.getItemScaleY(), 5.0);
}

void tst_ItemIdentity::mirrorsAreCopiedThroughTheSetters()
{
    Block source;
    source.setItemHorizontalMirror(true);
    Block target;
    source.copyItemProperties(&target, true);
    QCOMPARE(target.horizontalMirrorCalls, 1);
    QCOMPARE(target.verticalMirrorCalls, 1);
}

void tst_ItemIdentity::parkedBindingIsNotCopied()
{
    Block source;
    source.setDatasourceId(3);
    source.setDatasourceField(u"Name"_s);
    source.setItemAsReadOnly(true);
    Block target;
    source.copyItemProperties(&target, true);
    QVERIFY(target.itemIsReadOnly());
    QCOMPARE(target.getDatasourceId(), -1);
    target.setItemAsReadOnly(false);
    QCOMPARE(target.getDatasourceId(), -1);
    QVERIFY(target.getDatasourceField().isEmpty());
}

void tst_ItemIdentity::copiedSizeIsNotAnnounced()
{
    Block source(QSizeF(30, 40));
    Block target;
    source.copyItemProperties(&target, true);
    QVERIFY(target.sizesAnnounced.isEmpty());
}

void tst_ItemIdentity::privatePropertiesAreStored_data()
{
    QTest::addColumn<bool>("copySize");
    QTest::addColumn<QSizeF>("size");
    QTest::addColumn<QSizeF>("scale");

    QTest::newRow("with the size") << true << QSizeF(30, 40) << QSizeF(2, 3);
    QTest::newRow("without the size") << false << QSizeF(100, 100) << QSizeF(1, 1);
}

void tst_ItemIdentity::privatePropertiesAreStored()
{
    QFETCH(bool, copySize);
    Block block;
    block.copyPrivatePropeties(725.5, QSizeF(30, 40), 2, 3, copySize, 17, u"Größe"_s);
    QCOMPARE(block.getItemRotation(), 725.5);
    QVERIFY(block.transform().isIdentity());
    QTEST(block.getItemSize(), "size");
    QTEST(QSizeF(block.getItemScaleX(), block.getItemScaleY()), "scale");
    QCOMPARE(block.getDatasourceId(), 17);
    QCOMPARE(block.getDatasourceField(), u"Größe"_s);
}

QTEST_MAIN(tst_ItemIdentity)
#include "tst_itemidentity.moc"
