// SPDX-License-Identifier: BSD-3-Clause
#include "items/core/item.h"
#include "items/core/mirrorscope.h"
#include "items/shapes/rectangleitem.h"
#include "tests/support/bareshape.h"
#include "tests/support/oddnumbers.h"
#include "tests/support/recordingpaintdevice.h"

#include <QGraphicsPixmapItem>
#include <QGraphicsScene>
#include <QImage>
#include <QPainter>
#include <QRegularExpression>
#include <QStyleOptionGraphicsItem>
#include <QTest>

#include <cmath>
#include <limits>
#include <memory>

using namespace Qt::StringLiterals;

namespace {

constexpr double tolerance = 1e-9;
constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

using Switch = void (Item::*)(bool);

/// An item and nothing else. It prints in no ink.
class Block final : public BareShape<Item>
{
public:
    Block() = default;
    explicit Block(QSizeF size) { storeItemSize(size); }

    Item *createItemCopy() override { return copyAs<Block>().release(); }
    bool resetItemColors(const QColor & /*printColor*/, bool /*keepBlack*/, bool /*keepOthers*/) override
    {
        return false;
    }
    bool resetItemColorsNegative(const QColor & /*printColor*/) override { return false; }

    void setItemHorizontalMirror(bool mirror) override
    {
        ++horizontalMirrorCalls;
        Item::setItemHorizontalMirror(mirror);
    }
    void setItemVerticalMirror(bool mirror) override
    {
        ++verticalMirrorCalls;
        Item::setItemVerticalMirror(mirror);
    }

    int horizontalMirrorCalls = 0;
    int verticalMirrorCalls = 0;
    QList<QSizeF> sizesAnnounced;

protected:
    void itemSizeChanged() override
    {
        Item::itemSizeChanged();
        sizesAnnounced.append(getItemSize());
    }
};

bool areNear(QPointF a, QPointF b)
{
    if ((a - b).manhattanLength() <= tolerance)
        return true;
    qInfo() << a << "is not" << b;
    return false;
}

bool isNear(double a, double b)
{
    return areNear({ a, 0 }, { b, 0 });
}

QPointF centreInScene(const Block &block)
{
    return block.mapToScene(QPointF(block.getItemWidth() / 2, block.getItemHeight() / 2));
}

QGraphicsPixmapItem *onlyPixmap(const QGraphicsScene &scene)
{
    const auto items = scene.items();
    return items.size() == 1 ? qgraphicsitem_cast<QGraphicsPixmapItem *>(items.first()) : nullptr;
}

void makeSolid(RectangleItem &rectangle, const QColor &color)
{
    rectangle.setItemFillColor(color);
    rectangle.setItemPenStyle(Qt::NoPen);
}

void addOddSizes()
{
    QTest::addColumn<double>("width");
    QTest::addColumn<double>("height");

    for (const auto &[name, side] : oddNumbers) {
        QTest::addRow("width %s", name) << side << 50.0;
        QTest::addRow("height %s", name) << 50.0 << side;
        QTest::addRow("both %s", name) << side << side;
    }
}

} // namespace

class tst_Item : public QObject
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
    void zValueThatIsNoNumberBecomesZero();

    // Size and scale
    void equalSizesChangeNothing_data();
    void equalSizesChangeNothing();
    void barelyDifferentSizesAreAChange_data();
    void barelyDifferentSizesAreAChange();
    void resizingMultipliesTheScales();
    void ratioFollowsTheLeadingSide_data();
    void ratioFollowsTheLeadingSide();
    void limitsClampTheSize_data();
    void limitsClampTheSize();
    void forceReachesTheLimits();
    void sizeClampedToThePresentOneIsRefused_data();
    void sizeClampedToThePresentOneIsRefused();
    void sideOfZeroKeepsItsScale();
    void ratioWithoutADivisorTakesTheRequestedSide();
    void plainSettersStoreOnly();
    void updateItemSizeStoresOnly();
    void sizeChangesAreAnnouncedOnce();
    void adjustedWidthFollowsTheHeight_data();
    void adjustedWidthFollowsTheHeight();

    // Rotation and transform
    void rotationIsStoredNormalised_data();
    void rotationIsStoredNormalised();
    void rotationBecomesTheWholeTransform();
    void rotatingKeepsTheCentreInTheScene_data();
    void rotatingKeepsTheCentreInTheScene();
    void rotatingAPlainItemDoesNotMoveIt();
    void unitTransformHasNoScale();
    void unitTransformKeepsTheTranslation();
    void unitTransformOfAZeroScaleIsFinite();
    void mirroringStoresTheFlagOnly();
    void mirroredPaintersStayInTheRectangle_data();
    void mirroredPaintersStayInTheRectangle();
    void mirrorScopeRestoresThePainter();

    // Selection frame
    void frameIsDrawnForSelectedItemsOnly();
    void frameIsADottedCosmeticOutline();
    void frameIsOrangeAndTranslucent();
    void frameUsesTheCurrentColourGroup();

    // Copying
    void everythingIsCopied();
    void sizeIsCopiedOnRequestOnly();
    void mirrorsAreCopiedThroughTheSetters();
    void parkedBindingIsNotCopied();
    void copiedSizeIsNotAnnounced();
    void privatePropertiesAreStored_data();
    void privatePropertiesAreStored();

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

    // Any number
    void anySizeIsStoredAsItIs_data();
    void anySizeIsStoredAsItIs();
    void anySizeIsPaintedWithoutHarm_data();
    void anySizeIsPaintedWithoutHarm();
    void anySizePrintsWithoutHarm_data();
    void anySizePrintsWithoutHarm();
};

// Identity and flags

void tst_Item::newItemHasTheDefaults()
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

void tst_Item::shapeIsOneFieldInTwoTypes()
{
    Block block;
    block.setItemShape(MobraTypes::PieShape);
    QCOMPARE(block.getItemShapeInt(), 0x1002EU);
    block.setItemShapeInt(0x10037);
    QCOMPARE(block.getItemShape(), MobraTypes::HexagonShape);
}

void tst_Item::flagWordIsReplacedAsAWhole()
{
    Block block;
    block.setItemFlags(0xF0000042U);
    QCOMPARE(block.itemFlags(), 0xF0000042U);
    block.setItemFlags(0U);
    QCOMPARE(block.itemFlags(), 0U);
}

void tst_Item::singleFlagsAreSetAndCleared()
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

void tst_Item::flagsPrintInBinary_data()
{
    QTest::addColumn<uint>("flags");
    QTest::addColumn<QString>("text");

    QTest::newRow("new item") << Block().itemFlags() << u"1"_s;
    QTest::newRow("none") << 0U << u"0"_s;
    QTest::newRow("several") << 0x2AU << u"101010"_s;
    QTest::newRow("gradient") << 0x81U << u"10000001"_s;
    QTest::newRow("all") << 0xFFFFFFFFU << QString(32, u'1');
}

void tst_Item::flagsPrintInBinary()
{
    QFETCH(uint, flags);
    Block block;
    block.setItemFlags(flags);
    QTEST(block.printItemFlags(), "text");
}

void tst_Item::graphicsFlagsAreAnotherWord()
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

void tst_Item::templateAndLockBitsAnswerTheirQuestions_data()
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

void tst_Item::templateAndLockBitsAnswerTheirQuestions()
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

void tst_Item::switchesTouchTheirBitOnly()
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

void tst_Item::lockingParksTheBinding_data()
{
    QTest::addColumn<Switch>("lock");

    QTest::newRow("read-only") << Switch(&Item::setItemAsReadOnly);
    QTest::newRow("user template") << Switch(&Item::setItemAsUserTemplate);
}

void tst_Item::lockingParksTheBinding()
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

void tst_Item::lockingTwiceLosesTheBinding()
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

void tst_Item::unlockingAnItemThatWasNeverLockedLosesTheBinding()
{
    Block block;
    block.setDatasourceId(3);
    block.setDatasourceField(u"Name"_s);
    block.setItemAsReadOnly(false);
    QCOMPARE(block.getDatasourceId(), -1);
    QVERIFY(block.getDatasourceField().isEmpty());
}

void tst_Item::bothLocksShareOneParkedBinding()
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

void tst_Item::otherSwitchesKeepTheBinding()
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

void tst_Item::graphicsStateIsThatOfTheGraphicsItem()
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

void tst_Item::positionIsPendingUntilItIsApplied()
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

void tst_Item::zValueThatIsNoNumberBecomesZero()
{
    Block block;
    block.setItemZValue(7.0);
    block.setItemZValue(notANumber);
    QCOMPARE(block.zValue(), 0.0);
}

// Size and scale

void tst_Item::equalSizesChangeNothing_data()
{
    QTest::addColumn<QSizeF>("size");
    QTest::addColumn<QSizeF>("request");

    QTest::newRow("same") << QSizeF(100, 60) << QSizeF(100, 60);
    // |100 - 100.00000000001| × 1e12 = 10, not above 100
    QTest::newRow("almost the same") << QSizeF(100, 60) << QSizeF(100.00000000001, 60);
    QTest::newRow("zero and almost zero") << QSizeF(0, 60) << QSizeF(1e-12, 60);
    QTest::newRow("almost zero and zero") << QSizeF(60, 1e-12) << QSizeF(60, 0);
}

void tst_Item::equalSizesChangeNothing()
{
    QFETCH(QSizeF, size);
    QFETCH(QSizeF, request);
    Block block(size);
    block.setItemScaleX(3);
    block.setItemScaleY(5);
    QVERIFY(!block.setItemSize(request));
    QVERIFY(!block.setItemSize(request, false, false));
    QVERIFY(!block.setItemSize(request, true, true));
    QVERIFY(!block.setItemSize(request, false, 0, 0, 10, 10, false, false));
    QCOMPARE(block.getItemWidth(), size.width());
    QCOMPARE(block.getItemHeight(), size.height());
    QCOMPARE(block.getItemScaleX(), 3.0);
    QCOMPARE(block.getItemScaleY(), 5.0);
    QVERIFY(block.sizesAnnounced.isEmpty());
}

void tst_Item::barelyDifferentSizesAreAChange_data()
{
    QTest::addColumn<QSizeF>("size");
    QTest::addColumn<QSizeF>("request");

    // |100 - 100.000000001| × 1e12 = 1000, above 100
    QTest::newRow("width") << QSizeF(100, 60) << QSizeF(100.000000001, 60);
    QTest::newRow("height") << QSizeF(100, 60) << QSizeF(100, 60.000000001);
    QTest::newRow("zero") << QSizeF(0, 60) << QSizeF(1.1e-12, 60);
}

void tst_Item::barelyDifferentSizesAreAChange()
{
    QFETCH(QSizeF, size);
    QFETCH(QSizeF, request);
    Block block(size);
    QVERIFY(block.setItemSize(request));
    QVERIFY(block.getItemWidth() == request.width());
    QVERIFY(block.getItemHeight() == request.height());
}

void tst_Item::resizingMultipliesTheScales()
{
    Block block;
    QVERIFY(block.setItemSize(QSizeF(200, 100)));
    QCOMPARE(block.getItemSize(), QSizeF(200, 100));
    QCOMPARE(block.getItemScaleX(), 2.0);
    QCOMPARE(block.getItemScaleY(), 1.0);
    QVERIFY(block.setItemSize(QSizeF(50, 300)));
    QCOMPARE(block.getItemScaleX(), 0.5);
    QCOMPARE(block.getItemScaleY(), 3.0);
    QVERIFY(block.setItemSize(QSizeF(100, 150), false, false));
    QCOMPARE(block.getItemScaleX(), 1.0);
    QCOMPARE(block.getItemScaleY(), 1.5);
    QVERIFY(block.setItemSize(QSizeF(300, 50), false, 0, 0, 1000, 1000, false, false));
    QCOMPARE(block.getItemScaleX(), 3.0);
    QCOMPARE(block.getItemScaleY(), 0.5);
}

void tst_Item::ratioFollowsTheLeadingSide_data()
{
    QTest::addColumn<bool>("keepRatio");
    QTest::addColumn<bool>("heightLeads");
    QTest::addColumn<QSizeF>("result");
    QTest::addColumn<QSizeF>("scale");

    // A block of 100 × 50 asked for 40 × 80.
    QTest::newRow("free") << false << false << QSizeF(40, 80) << QSizeF(0.4, 1.6);
    QTest::newRow("free, height leads") << false << true << QSizeF(40, 80) << QSizeF(0.4, 1.6);
    QTest::newRow("width leads") << true << false << QSizeF(40, 20) << QSizeF(0.4, 0.4);
    QTest::newRow("height leads") << true << true << QSizeF(160, 80) << QSizeF(1.6, 1.6);
}

void tst_Item::ratioFollowsTheLeadingSide()
{
    QFETCH(bool, keepRatio);
    QFETCH(bool, heightLeads);
    QFETCH(QSizeF, result);
    QFETCH(QSizeF, scale);

    Block block(QSizeF(100, 50));
    QVERIFY(block.setItemSize(QSizeF(40, 80), keepRatio, heightLeads));
    QCOMPARE(block.getItemSize(), result);
    QVERIFY(isNear(block.getItemScaleX(), scale.width()));
    QVERIFY(isNear(block.getItemScaleY(), scale.height()));

    Block limited(QSizeF(100, 50));
    QVERIFY(limited.setItemSize(QSizeF(40, 80), keepRatio, 1, 1, 1000, 1000, heightLeads, false));
    QCOMPARE(limited.getItemSize(), result);
    QVERIFY(isNear(limited.getItemScaleX(), scale.width()));
    QVERIFY(isNear(limited.getItemScaleY(), scale.height()));
}

void tst_Item::limitsClampTheSize_data()
{
    QTest::addColumn<QSizeF>("request");
    QTest::addColumn<bool>("keepRatio");
    QTest::addColumn<bool>("heightLeads");
    QTest::addColumn<QSizeF>("smallest");
    QTest::addColumn<QSizeF>("largest");
    QTest::addColumn<QSizeF>("result");

    // A block of 100 × 50.
    const QSizeF low(10, 10);
    const QSizeF high(400, 300);
    QTest::newRow("within") << QSizeF(300, 20) << false << false << low << high << QSizeF(300, 20);
    QTest::newRow("width above") << QSizeF(500, 20) << false << false << low << high << QSizeF(400, 20);
    QTest::newRow("width below") << QSizeF(5, 20) << false << false << low << high << QSizeF(10, 20);
    QTest::newRow("height above") << QSizeF(300, 301) << false << false << low << high << QSizeF(300, 300);
    QTest::newRow("height below") << QSizeF(300, -7) << false << false << low << high << QSizeF(300, 10);
    QTest::newRow("both, each for itself")
        << QSizeF(500, 5) << false << true << low << high << QSizeF(400, 10);
    QTest::newRow("width leads") << QSizeF(500, 5) << true << false << low << high << QSizeF(400, 200);
    QTest::newRow("height leads") << QSizeF(5, 500) << true << true << low << QSizeF(900, 300)
                                  << QSizeF(600, 300);
    QTest::newRow("width leads, height breaks the ratio above")
        << QSizeF(500, 5) << true << false << low << QSizeF(400, 150) << QSizeF(400, 150);
    QTest::newRow("width leads, height breaks the ratio below")
        << QSizeF(5, 500) << true << false << low << high << QSizeF(10, 10);
    QTest::newRow("height leads, width breaks the ratio above")
        << QSizeF(5, 500) << true << true << low << high << QSizeF(400, 300);
    QTest::newRow("height leads, width breaks the ratio below")
        << QSizeF(500, 5) << true << true << QSizeF(30, 10) << high << QSizeF(30, 10);
}

void tst_Item::limitsClampTheSize()
{
    QFETCH(QSizeF, request);
    QFETCH(bool, keepRatio);
    QFETCH(bool, heightLeads);
    QFETCH(QSizeF, smallest);
    QFETCH(QSizeF, largest);
    QFETCH(QSizeF, result);
    Block block(QSizeF(100, 50));
    QVERIFY(block.setItemSize(request, keepRatio, smallest.width(), smallest.height(), largest.width(),
        largest.height(), heightLeads, false));
    QCOMPARE(block.getItemSize(), result);
    QVERIFY(isNear(block.getItemScaleX() * 100, result.width()));
    QVERIFY(isNear(block.getItemScaleY() * 50, result.height()));
}

void tst_Item::forceReachesTheLimits()
{
    Block block;
    QVERIFY(!block.setItemSize(QSizeF(100, 100), false, 0, 0, 80, 50, false, false));
    QCOMPARE(block.getItemSize(), QSizeF(100, 100));
    QVERIFY(block.setItemSize(QSizeF(100, 100), false, 0, 0, 80, 50, false, true));
    QCOMPARE(block.getItemSize(), QSizeF(80, 50));
    QVERIFY(isNear(block.getItemScaleX(), 0.8));
    QVERIFY(isNear(block.getItemScaleY(), 0.5));
}

void tst_Item::sizeClampedToThePresentOneIsRefused_data()
{
    QTest::addColumn<QSizeF>("request");
    QTest::addColumn<bool>("force");

    QTest::newRow("other size") << QSizeF(150, 40) << false;
    QTest::newRow("other size, forced") << QSizeF(150, 40) << true;
    QTest::newRow("same size, forced") << QSizeF(100, 100) << true;
}

void tst_Item::sizeClampedToThePresentOneIsRefused()
{
    QFETCH(QSizeF, request);
    QFETCH(bool, force);
    Block block;
    QVERIFY(!block.setItemSize(request, false, 100, 100, 100, 100, false, force));
    QCOMPARE(block.getItemSize(), QSizeF(100, 100));
    QCOMPARE(block.getItemScaleX(), 1.0);
    QCOMPARE(block.getItemScaleY(), 1.0);
    QVERIFY(block.sizesAnnounced.isEmpty());
}

void tst_Item::sideOfZeroKeepsItsScale()
{
    Block flat(QSizeF(50, 0));
    flat.setItemScaleY(3);
    QVERIFY(flat.setItemSize(QSizeF(100, 100)));
    QCOMPARE(flat.getItemSize(), QSizeF(100, 100));
    QCOMPARE(flat.getItemScaleX(), 2.0);
    QCOMPARE(flat.getItemScaleY(), 3.0);

    Block narrow(QSizeF(0, 50));
    narrow.setItemScaleX(3);
    QVERIFY(narrow.setItemSize(QSizeF(100, 100), false, 0, 0, 500, 500, false, false));
    QCOMPARE(narrow.getItemScaleX(), 3.0);
    QCOMPARE(narrow.getItemScaleY(), 2.0);
}

void tst_Item::ratioWithoutADivisorTakesTheRequestedSide()
{
    Block flat(QSizeF(50, 0));
    QVERIFY(flat.setItemSize(QSizeF(70, 20), true, true));
    QCOMPARE(flat.getItemSize(), QSizeF(70, 20));

    Block narrow(QSizeF(0, 50));
    QVERIFY(narrow.setItemSize(QSizeF(70, 20), true, false));
    QCOMPARE(narrow.getItemSize(), QSizeF(70, 20));

    Block limited(QSizeF(0, 50));
    QVERIFY(limited.setItemSize(QSizeF(70, 20), true, 0, 0, 60, 15, false, false));
    QCOMPARE(limited.getItemSize(), QSizeF(60, 15));
}

void tst_Item::plainSettersStoreOnly()
{
    Block block;
    block.setItemWidth(200);
    block.setItemHeight(-3);
    QCOMPARE(block.getItemSize(), QSizeF(200, -3));
    QCOMPARE(block.getItemScaleX(), 1.0);
    QCOMPARE(block.getItemScaleY(), 1.0);
    QVERIFY(block.sizesAnnounced.isEmpty());
}

void tst_Item::updateItemSizeStoresOnly()
{
    Block block;
    block.updateItemSize(QSizeF(200, 300));
    QCOMPARE(block.getItemSize(), QSizeF(200, 300));
    QCOMPARE(block.getItemScaleX(), 1.0);
    QCOMPARE(block.getItemScaleY(), 1.0);
}

void tst_Item::sizeChangesAreAnnouncedOnce()
{
    Block block;
    block.setItemSize(QSizeF(200, 100));
    block.setItemSize(QSizeF(300, 0), true, false);
    block.setItemSize(QSizeF(0, 500), true, 10, 10, 400, 50, true, false);
    QCOMPARE(block.sizesAnnounced, (QList<QSizeF> { { 200, 100 }, { 300, 150 }, { 100, 50 } }));
}

void tst_Item::adjustedWidthFollowsTheHeight_data()
{
    QTest::addColumn<double>("height");
    QTest::addColumn<double>("minWidth");
    QTest::addColumn<double>("maxWidth");
    QTest::addColumn<double>("minHeight");
    QTest::addColumn<double>("maxHeight");
    QTest::addColumn<double>("ratio");
    QTest::addColumn<QSizeF>("result");

    QTest::newRow("within") << 50.0 << 10.0 << 200.0 << 20.0 << 80.0 << 2.0 << QSizeF(100, 50);
    QTest::newRow("height below") << 5.0 << 10.0 << 200.0 << 20.0 << 80.0 << 2.0 << QSizeF(40, 20);
    QTest::newRow("height above") << 500.0 << 10.0 << 200.0 << 20.0 << 80.0 << 2.0 << QSizeF(160, 80);
    QTest::newRow("width below") << 50.0 << 110.0 << 200.0 << 20.0 << 80.0 << 2.0 << QSizeF(110, 50);
    QTest::newRow("width above") << 50.0 << 10.0 << 90.0 << 20.0 << 80.0 << 2.0 << QSizeF(90, 50);
    QTest::newRow("height limits crossed") << 50.0 << 10.0 << 200.0 << 60.0 << 40.0 << 2.0 << QSizeF(120, 60);
    QTest::newRow("width limits crossed") << 50.0 << 110.0 << 90.0 << 20.0 << 80.0 << 2.0 << QSizeF(110, 50);
    QTest::newRow("tall") << 50.0 << 10.0 << 200.0 << 20.0 << 80.0 << 0.5 << QSizeF(25, 50);
}

void tst_Item::adjustedWidthFollowsTheHeight()
{
    QFETCH(double, height);
    QFETCH(double, minWidth);
    QFETCH(double, maxWidth);
    QFETCH(double, minHeight);
    QFETCH(double, maxHeight);
    QFETCH(double, ratio);
    for (double width : { 0.0, 77.0, 1e6 }) {
        double adjustedHeight = height;
        Item::adjustSizes(width, adjustedHeight, minWidth, maxWidth, minHeight, maxHeight, ratio);
        QTEST(QSizeF(width, adjustedHeight), "result");
    }
}

// Rotation and transform

void tst_Item::rotationIsStoredNormalised_data()
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

void tst_Item::rotationIsStoredNormalised()
{
    QFETCH(double, degrees);
    Block block;
    block.setItemRotation(degrees);
    QTEST(block.getItemRotation(), "stored");
}

void tst_Item::rotationBecomesTheWholeTransform()
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

void tst_Item::rotatingKeepsTheCentreInTheScene_data()
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

void tst_Item::rotatingKeepsTheCentreInTheScene()
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

void tst_Item::rotatingAPlainItemDoesNotMoveIt()
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

void tst_Item::unitTransformHasNoScale()
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

void tst_Item::unitTransformKeepsTheTranslation()
{
    Block block;
    block.setTransform(QTransform(4, 0, 0, 10, 7, 9));
    block.setItemScaleX(4);
    block.setItemScaleY(10);
    QCOMPARE(block.getItemUnitTransform(), QTransform::fromTranslate(7, 9));
}

void tst_Item::unitTransformOfAZeroScaleIsFinite()
{
    Block block;
    block.setItemScaleX(0);
    block.setItemScaleY(notANumber);
    const QTransform unit = block.getItemUnitTransform();
    QVERIFY(std::isfinite(unit.m11()));
    QVERIFY(std::isfinite(unit.m22()));
}

void tst_Item::mirroringStoresTheFlagOnly()
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

void tst_Item::mirroredPaintersStayInTheRectangle_data()
{
    QTest::addColumn<bool>("horizontal");
    QTest::addColumn<bool>("vertical");
    QTest::addColumn<QPointF>("point"); // where (10, 20) of a 100 × 60 rectangle lands

    QTest::newRow("not at all") << false << false << QPointF(10, 20);
    QTest::newRow("horizontally") << true << false << QPointF(90, 20);
    QTest::newRow("vertically") << false << true << QPointF(10, 40);
    QTest::newRow("both") << true << true << QPointF(90, 40);
}

void tst_Item::mirroredPaintersStayInTheRectangle()
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

void tst_Item::mirrorScopeRestoresThePainter()
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

void tst_Item::frameIsDrawnForSelectedItemsOnly()
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

void tst_Item::frameIsADottedCosmeticOutline()
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

void tst_Item::frameIsOrangeAndTranslucent()
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

void tst_Item::frameUsesTheCurrentColourGroup()
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

// Copying

void tst_Item::everythingIsCopied()
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

void tst_Item::sizeIsCopiedOnRequestOnly()
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

void tst_Item::mirrorsAreCopiedThroughTheSetters()
{
    Block source;
    source.setItemHorizontalMirror(true);
    Block target;
    source.copyItemProperties(&target, true);
    QCOMPARE(target.horizontalMirrorCalls, 1);
    QCOMPARE(target.verticalMirrorCalls, 1);
}

void tst_Item::parkedBindingIsNotCopied()
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

void tst_Item::copiedSizeIsNotAnnounced()
{
    Block source(QSizeF(30, 40));
    Block target;
    source.copyItemProperties(&target, true);
    QVERIFY(target.sizesAnnounced.isEmpty());
}

void tst_Item::privatePropertiesAreStored_data()
{
    QTest::addColumn<bool>("copySize");
    QTest::addColumn<QSizeF>("size");
    QTest::addColumn<QSizeF>("scale");

    QTest::newRow("with the size") << true << QSizeF(30, 40) << QSizeF(2, 3);
    QTest::newRow("without the size") << false << QSizeF(100, 100) << QSizeF(1, 1);
}

void tst_Item::privatePropertiesAreStored()
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

// Print scene

void tst_Item::printSceneAtScaleOneTakesTheItem_data()
{
    QTest::addColumn<double>("scale");
    QTest::newRow("one") << 1.0;
    QTest::newRow("one half") << 0.5;
    QTest::newRow("rounded down to one") << 1.4;
    QTest::newRow("just rounded down to one") << 1.4999;
}

void tst_Item::printSceneAtScaleOneTakesTheItem()
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

void tst_Item::printSceneAtOtherScalesTakesAPicture_data()
{
    QTest::addColumn<double>("scale");
    QTest::addColumn<QRectF>("picture");

    // A block of 100 × 60 at (10, 20).
    QTest::newRow("twice") << 2.0 << QRectF(20, 40, 200, 120);
    QTest::newRow("one and a half") << 1.5 << QRectF(15, 30, 150, 90);
    QTest::newRow("a quarter") << 0.25 << QRectF(2.5, 5, 25, 15);
    QTest::newRow("three and an eighth") << 3.125 << QRectF(31.25, 62.5, 313, 188);
}

void tst_Item::printSceneAtOtherScalesTakesAPicture()
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

void tst_Item::pictureLiesAtTheScaledPosition()
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

void tst_Item::pictureSizeIsRounded()
{
    QGraphicsScene scene;
    Block block(QSizeF(10.25, 10.125));
    QVERIFY(block.addItemToPrintScene(&scene, 2.0));
    const auto *pixmap = onlyPixmap(scene);
    QVERIFY(pixmap);
    // 20.5 and 20.25
    QCOMPARE(pixmap->pixmap().size(), QSize(21, 20));
}

void tst_Item::pictureShowsTheItem()
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

void tst_Item::pictureOfARotatedItemIsTransparentAround()
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

void tst_Item::pictureKeepsTheStacking()
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

void tst_Item::pictureShowsNoSelectionFrame()
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

void tst_Item::pictureOfAMemberLiesAtItsPlaceInTheScene()
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

void tst_Item::memberKeepsItsPlaceInThePrintScene()
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

void tst_Item::itemWithoutASceneToPrintToStays()
{
    QGraphicsScene scene;
    auto *block = new Block;
    scene.addItem(block);
    QVERIFY(!block->addItemToPrintScene(nullptr, 1.0));
    QVERIFY(!block->addItemToPrintScene(nullptr, 2.0));
    QCOMPARE(block->scene(), &scene);
}

void tst_Item::pictureWithoutPixelsIsEmpty_data()
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

void tst_Item::pictureWithoutPixelsIsEmpty()
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

// Any number

void tst_Item::anySizeIsStoredAsItIs_data()
{
    addOddSizes();
}

void tst_Item::anySizeIsStoredAsItIs()
{
    QFETCH(double, width);
    QFETCH(double, height);
    Block block;
    QVERIFY(block.setItemSize(QSizeF(width, height)));
    QVERIFY(isSame(block.getItemWidth(), width));
    QVERIFY(isSame(block.getItemHeight(), height));
    RectangleItem rectangle;
    QVERIFY(rectangle.setItemSize(QSizeF(width, height)));
    QVERIFY(isSame(rectangle.getItemWidth(), width));
    QVERIFY(isSame(rectangle.getItemHeight(), height));
}

void tst_Item::anySizeIsPaintedWithoutHarm_data()
{
    addOddSizes();
}

void tst_Item::anySizeIsPaintedWithoutHarm()
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

void tst_Item::anySizePrintsWithoutHarm_data()
{
    addOddSizes();
}

void tst_Item::anySizePrintsWithoutHarm()
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

QTEST_MAIN(tst_Item)
#include "tst_item.moc"
