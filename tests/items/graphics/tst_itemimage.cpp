// SPDX-License-Identifier: BSD-3-Clause
#include "items/graphics/imageableitem.h"
#include "tests/support/block.h"
#include "tests/support/boxes.h"
#include "tests/support/colours.h"
#include "tests/support/images.h"
#include "tests/support/standins.h"

#include <QGraphicsItemGroup>
#include <QGraphicsRectItem>
#include <QGraphicsScene>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QTest>

#include <limits>
#include <tuple>

using namespace Qt::StringLiterals;
using namespace Colours;
using Boxes::addBox;
using Boxes::addContainer;

namespace {

constexpr unsigned int whiteGround = 0xFFFFFFFFU;
const QRectF page(0, 0, 100, 100);

QString orderOf(const QGraphicsScene &scene)
{
    QStringList names;
    for (const QGraphicsItem *item : scene.items(Qt::AscendingOrder))
        names << item->data(0).toString();
    return names.join(u' ');
}

} // namespace

/// The picture of an item and of what lies beneath it.
class tst_ItemImage : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    // Size and place
    void imageCoversWholeUnits_data();
    void imageCoversWholeUnits();
    void contentIsScaledAlikeInBothDirections_data();
    void contentIsScaledAlikeInBothDirections();
    void emptyIntersectionChangesNothing_data();
    void emptyIntersectionChangesNothing();
    void invalidContentIsNotRendered();
    void invalidContentIsRenderedInAGivenRectangle();
    void groundIsTheFillColour_data();
    void groundIsTheFillColour();
    void oddRectanglesAndScalesGiveNoImage_data();
    void oddRectanglesAndScalesGiveNoImage();
    void hugeImagesAreRefused();
    void imageOfNoSizeReplacesTheLastOne();
    void noItemGivesNoImage();

    // What shows
    void neighbourBeneathShowsThroughTheItem();
    void neighboursAboveAndBesideAreLeftOut_data();
    void neighboursAboveAndBesideAreLeftOut();
    void firstNeighbourThatIsNotBelowEndsTheWalk();
    void neighbourOutsideThePrintRectangleStaysWhereItIs();
    void neighbourInTheLastUnitShowsOnlyBeneathTheItem_data();
    void neighbourInTheLastUnitShowsOnlyBeneathTheItem();
    void itemIsPaintedLast();
    void membersOfContainersShowWhereTheyLie_data();
    void membersOfContainersShowWhereTheyLie();
    void itemInTurnedContainerIsRenderedWhereItLies();
    void opacityOfContainersIsKept();
    void hiddenNeighbourDoesNotShow();
    void selectionFramesDoNotShow();
    void itemWithoutSceneIsRenderedAlone();

    // What stays
    void orderOfEqualNeighboursStays();
    void parentsAndGroupsStay();
    void selectionStaysWithoutSignals();
    void focusStays();
    void itemWithoutSceneHasNoneAfterwards();
};

// Size and place

void tst_ItemImage::imageCoversWholeUnits_data()
{
    QTest::addColumn<QRectF>("itemRect");
    QTest::addColumn<QRectF>("printRect");
    QTest::addColumn<double>("scale");
    QTest::addColumn<QSize>("size");
    QTest::addColumn<QPointF>("position");

    const QRectF wide(-1000, -1000, 2000, 2000);
    QTest::newRow("whole numbers") << QRectF(5, 6, 7, 8) << wide << 1.0 << QSize(7, 8) << QPointF(5, 6);
    // 11 columns: 27.5 dots.
    QTest::newRow("from 0.2 to 10.1")
        << QRectF(0.2, 0, 9.9, 4) << wide << 2.5 << QSize(28, 10) << QPointF(0, 0);
    QTest::newRow("between two dots")
        << QRectF(3, -5, 4, 4) << wide << 2.5 << QSize(10, 10) << QPointF(7.5, -12.5);
    QTest::newRow("negative") << QRectF(-3.5, -0.5, 2, 1) << wide << 2.0 << QSize(6, 4) << QPointF(-8, -2);
    QTest::newRow("cut by the print rectangle")
        << QRectF(0, 0, 50, 50) << QRectF(10, 20, 100, 10) << 0.5 << QSize(20, 5) << QPointF(5, 10);
    QTest::newRow("smaller than a unit")
        << QRectF(4.25, 4.25, 0.5, 0.5) << wide << 3.0 << QSize(3, 3) << QPointF(12, 12);
}

void tst_ItemImage::imageCoversWholeUnits()
{
    QFETCH(const QRectF, itemRect);
    QFETCH(const QRectF, printRect);
    QFETCH(const double, scale);
    QFETCH(const QSize, size);
    QFETCH(const QPointF, position);
    Block item;
    ImageableItem imageable;
    const QImage image = imageable.createItemImage(&item, 0xFF123456U, itemRect, printRect, scale);
    QCOMPARE(image.size(), size);
    QCOMPARE(image.format(), QImage::Format_ARGB32_Premultiplied);
    QCOMPARE(imageable.getImageSize(), size);
    QCOMPARE(imageable.getCalculatedItemPosition(), position);
    QCOMPARE(imageable.getRgbFillColor(), 0xFF123456U);
}

void tst_ItemImage::contentIsScaledAlikeInBothDirections_data()
{
    QTest::addColumn<QRectF>("itemRect");
    QTest::addColumn<QRectF>("neighbour");
    QTest::addColumn<QSize>("size");
    QTest::addColumn<QRect>("seen");
    // 11 units give 28 dots, half a dot more than they need. The edge at 9.7 lies at 24.25 dots, and would
    // lie at 24.7, beyond the middle of the next dot, if the content were stretched over all of them.
    QTest::newRow("wide") << QRectF(0, 0, 11, 4) << QRectF(0, 0, 9.7, 4) << QSize(28, 10)
                          << QRect(0, 0, 24, 10);
    QTest::newRow("high") << QRectF(0, 0, 4, 11) << QRectF(0, 0, 4, 9.7) << QSize(10, 28)
                          << QRect(0, 0, 10, 24);
}

void tst_ItemImage::contentIsScaledAlikeInBothDirections()
{
    QFETCH(const QRectF, itemRect);
    QFETCH(const QRectF, neighbour);
    QFETCH(const QSize, size);
    QFETCH(const QRect, seen);
    QGraphicsScene scene;
    addBox(scene, neighbour, blue, 1);
    QGraphicsRectItem *item = addBox(scene, itemRect, transparent, 2);
    ImageableItem imageable;
    const QImage image = imageable.createItemImage(item, whiteGround, page, 2.5);
    const QString difference
        = Images::difference(image, Images::pictureOf(size, { { seen, blue } }), u"scaled"_s);
    QVERIFY2(difference.isEmpty(), qPrintable(difference));
}

void tst_ItemImage::emptyIntersectionChangesNothing_data()
{
    QTest::addColumn<QRectF>("printRect");
    QTest::newRow("beside") << QRectF(20, 0, 10, 10);
    QTest::newRow("touching") << QRectF(10, 0, 10, 10);
    QTest::newRow("without width") << QRectF(5, 0, 0, 10);
    QTest::newRow("none") << QRectF();
}

void tst_ItemImage::emptyIntersectionChangesNothing()
{
    QFETCH(const QRectF, printRect);
    QGraphicsScene scene;
    QGraphicsRectItem *item = addBox(scene, QRectF(0, 0, 10, 10), red, 0);
    ImageableItem imageable;
    imageable.setImageSize(QSize(3, 4));
    imageable.setCalculatedItemPosition(QPointF(5, 6));
    QVERIFY(imageable.createItemImage(item, 0xFF123456U, printRect, 1.0).isNull());
    QCOMPARE(imageable.getImageSize(), QSize(3, 4));
    QCOMPARE(imageable.getCalculatedItemPosition(), QPointF(5, 6));
    QCOMPARE(imageable.getRgbFillColor(), whiteGround);
}

void tst_ItemImage::invalidContentIsNotRendered()
{
    QGraphicsScene scene;
    QGraphicsRectItem *item = addBox(scene, QRectF(0, 0, 10, 10), red, 0);
    ImageableItem imageable;
    imageable.setImageIsInvalid(true);
    QVERIFY(imageable.createItemImage(item, whiteGround, page, 1.0).isNull());
    imageable.setImageIsInvalid(false);
    QCOMPARE(imageable.createItemImage(item, whiteGround, page, 1.0).pixel(5, 5), redPixel);
}

void tst_ItemImage::invalidContentIsRenderedInAGivenRectangle()
{
    QGraphicsScene scene;
    QGraphicsRectItem *item = addBox(scene, QRectF(0, 0, 10, 10), red, 0);
    ImageableItem imageable;
    imageable.setImageIsInvalid(true);
    const QImage image = imageable.createItemImage(item, whiteGround, QRectF(5, 0, 10, 10), page, 1.0);
    QCOMPARE(image, Images::pictureOf(QSize(10, 10), { { QRect(0, 0, 5, 10), red } }));
    QVERIFY(imageable.getImageIsInvalid());
}

void tst_ItemImage::groundIsTheFillColour_data()
{
    QTest::addColumn<QRgb>("fill");
    QTest::addColumn<QRgb>("premultiplied");
    QTest::newRow("white") << whitePixel << whitePixel;
    QTest::newRow("blue") << bluePixel << bluePixel;
    QTest::newRow("clear") << clearPixel << clearPixel;
    QTest::newRow("clear white") << 0x00FFFFFFU << clearPixel;
    QTest::newRow("half transparent") << 0x80FF0000U << 0x80800000U;
}

void tst_ItemImage::groundIsTheFillColour()
{
    QFETCH(const QRgb, fill);
    QFETCH(const QRgb, premultiplied);
    Block item(QSizeF(10, 10));
    ImageableItem imageable;
    const QImage image = imageable.createItemImage(&item, fill, page, 1.0);
    QCOMPARE(image.size(), QSize(10, 10));
    QCOMPARE(Images::coloursOf(image), QSet<QRgb> { premultiplied });
}

void tst_ItemImage::oddRectanglesAndScalesGiveNoImage_data()
{
    QTest::addColumn<QRectF>("itemRect");
    QTest::addColumn<double>("scale");
    constexpr double nan = std::numeric_limits<double>::quiet_NaN();
    constexpr double infinite = std::numeric_limits<double>::infinity();
    QTest::newRow("no number") << QRectF(0, 0, nan, 10) << 1.0;
    QTest::newRow("nowhere") << QRectF(nan, nan, 10, 10) << 1.0;
    QTest::newRow("infinite") << QRectF(0, 0, infinite, infinite) << 1.0;
    QTest::newRow("endless in both directions") << QRectF(-infinite, 0, infinite, 10) << 1.0;
    QTest::newRow("far beyond int") << QRectF(0, 0, 1e12, 1e12) << 1.0;
    QTest::newRow("scale zero") << QRectF(0, 0, 10, 10) << 0.0;
    QTest::newRow("negative scale") << QRectF(0, 0, 10, 10) << -1.0;
    QTest::newRow("scale is no number") << QRectF(0, 0, 10, 10) << nan;
    QTest::newRow("infinite scale") << QRectF(0, 0, 10, 10) << infinite;
    QTest::newRow("less than half a dot") << QRectF(0, 0, 10, 10) << 0.04;
}

void tst_ItemImage::oddRectanglesAndScalesGiveNoImage()
{
    QFETCH(const QRectF, itemRect);
    QFETCH(const double, scale);
    Block item;
    ImageableItem imageable;
    const QRectF everything(-1e300, -1e300, 2e300, 2e300);
    QVERIFY(imageable.createItemImage(&item, whiteGround, itemRect, everything, scale).isNull());
    QCOMPARE(imageable.getImageSize(), QSize(0, 0));
}

void tst_ItemImage::hugeImagesAreRefused()
{
    Block item;
    ImageableItem imageable;
    const QRectF everything(-1e9, -1e9, 2e9, 2e9);
    const auto render
        = [&](const QRectF &rect) { return imageable.createItemImage(&item, 0U, rect, everything, 1.0); };
    QVERIFY(!render(QRectF(0, 0, 65535, 1)).isNull());
    QCOMPARE(imageable.getImageSize(), QSize(65535, 1));
    QVERIFY(render(QRectF(0, 0, 65536, 1)).isNull());
    QVERIFY(render(QRectF(0, 0, 1, 1e9)).isNull());
    QVERIFY(render(QRectF(0, 0, 30'000, 30'000)).isNull());
}

// The next pass must not put the last image's block where this one would have been.
void tst_ItemImage::imageOfNoSizeReplacesTheLastOne()
{
    Block item;
    ImageableItem imageable;
    QVERIFY(!imageable.createItemImage(&item, whiteGround, QRectF(0, 0, 10, 10), page, 1.0).isNull());
    QVERIFY(imageable.createItemImage(&item, 0xFF123456U, QRectF(10, 20, 10, 10), page, 0.04).isNull());
    QCOMPARE(imageable.getImageSize(), QSize(0, 0));
    QCOMPARE(imageable.getRgbFillColor(), 0xFF123456U);
    QCOMPARE(imageable.getCalculatedItemPosition(), QPointF(10 * 0.04, 20 * 0.04));
    QVERIFY(imageable.createItemImage(&item, whiteGround, QRectF(-20, 0, 10, 10), page, 1.0).isNull());
    QCOMPARE(imageable.getRgbFillColor(), 0xFF123456U); // without a common area nothing changes
}

void tst_ItemImage::noItemGivesNoImage()
{
    ImageableItem imageable;
    QVERIFY(imageable.createItemImage(nullptr, whiteGround, page, 1.0).isNull());
    QVERIFY(imageable.createItemImage(nullptr, whiteGround, page, page, 1.0).isNull());
}

// What shows

void tst_ItemImage::neighbourBeneathShowsThroughTheItem()
{
    QGraphicsScene scene;
    addBox(scene, QRectF(0, 0, 15, 40), blue, 1);
    QGraphicsRectItem *item = addBox(scene, QRectF(10, 10, 10, 10), QColor(255, 0, 0, 128), 2);
    ImageableItem imageable;
    const QImage image = imageable.createItemImage(item, whiteGround, page, 1.0);
    QCOMPARE(image.size(), QSize(10, 10));
    // 128/255 of red over blue at the left, over the white ground at the right.
    QVERIFY(Images::largestDifference(image.pixel(2, 5), qRgb(128, 0, 127)) <= 1);
    QVERIFY(Images::largestDifference(image.pixel(7, 5), qRgb(255, 127, 127)) <= 1);
}

void tst_ItemImage::neighboursAboveAndBesideAreLeftOut_data()
{
    QTest::addColumn<double>("z");
    QTest::addColumn<bool>("insertedFirst");
    QTest::addColumn<QRgb>("expected");
    QTest::newRow("below") << 1.0 << true << bluePixel;
    QTest::newRow("below, inserted later") << 1.0 << false << bluePixel;
    QTest::newRow("equal, beneath") << 2.0 << true << whitePixel;
    QTest::newRow("equal, on top") << 2.0 << false << whitePixel;
    QTest::newRow("above") << 3.0 << true << whitePixel;
}

void tst_ItemImage::neighboursAboveAndBesideAreLeftOut()
{
    QFETCH(const double, z);
    QFETCH(const bool, insertedFirst);
    QFETCH(const QRgb, expected);
    QGraphicsScene scene;
    const QRectF rect(10, 10, 10, 10);
    if (insertedFirst)
        addBox(scene, rect, blue, z);
    QGraphicsRectItem *item = addBox(scene, rect, transparent, 2);
    if (!insertedFirst)
        addBox(scene, rect, blue, z);
    ImageableItem imageable;
    QCOMPARE(imageable.createItemImage(item, whiteGround, page, 1.0).pixel(5, 5), expected);
}

void tst_ItemImage::firstNeighbourThatIsNotBelowEndsTheWalk()
{
    QGraphicsScene scene;
    const QRectF rect(0, 0, 10, 10);
    // An item that does not stack behind its parent lies above all that do, whatever the z values.
    addBox(scene, rect, yellow, 5);
    addBox(scene, rect, blue, 1)->setFlag(QGraphicsItem::ItemStacksBehindParent, false);
    QGraphicsRectItem *item = addBox(scene, rect, transparent, 2);
    item->setFlag(QGraphicsItem::ItemStacksBehindParent, false);
    ImageableItem imageable;
    QCOMPARE(imageable.createItemImage(item, whiteGround, page, 1.0).pixel(5, 5), whitePixel);
}

void tst_ItemImage::neighbourOutsideThePrintRectangleStaysWhereItIs()
{
    QGraphicsScene scene;
    const QGraphicsRectItem *outside = addBox(scene, QRectF(0, 30, 40, 10), blue, 1);
    QGraphicsRectItem *item = addBox(scene, QRectF(0, 0, 40, 40), transparent, 2);
    ImageableItem imageable;
    const QImage image = imageable.createItemImage(item, whiteGround, QRectF(0, 0, 40, 20), 1.0);
    QCOMPARE(image.size(), QSize(40, 20));
    QCOMPARE(Images::coloursOf(image), QSet<QRgb> { whitePixel });
    QCOMPARE(outside->scene(), &scene);
}

void tst_ItemImage::neighbourInTheLastUnitShowsOnlyBeneathTheItem_data()
{
    QTest::addColumn<QRectF>("itemRect");
    QTest::addColumn<QRectF>("printRect");
    QTest::addColumn<double>("left");
    QTest::addColumn<bool>("shows");
    const QRectF cut(0, 0, 10.1, 10);
    for (const auto &[name, left, shows] :
        { std::tuple("beneath", 10.05, true), { "beside", 10.4, false } }) {
        QTest::addRow("%s the item", name) << cut << page << left << shows;
        QTest::addRow("%s the part that prints", name) << page << cut << left << shows;
    }
}

// The image reaches up to the next whole unit, what is beneath the item only to its edge.
void tst_ItemImage::neighbourInTheLastUnitShowsOnlyBeneathTheItem()
{
    QFETCH(const QRectF, itemRect);
    QFETCH(const QRectF, printRect);
    QFETCH(const double, left);
    QFETCH(const bool, shows);
    QGraphicsScene scene;
    addBox(scene, QRectF(QPointF(left, 0), QPointF(10.9, 10)), blue, 1);
    QGraphicsRectItem *item = addBox(scene, itemRect, transparent, 2);
    ImageableItem imageable;
    const QImage image = imageable.createItemImage(item, whiteGround, printRect, 1.0);
    const QRect column(10, 0, 1, 10);
    QCOMPARE(image, Images::pictureOf(QSize(11, 10), { { column, shows ? blue : white } }));
}

void tst_ItemImage::itemIsPaintedLast()
{
    QGraphicsScene scene;
    const QRectF rect(0, 0, 10, 10);
    QGraphicsRectItem *item = addBox(scene, rect, red, 2);
    // Lies above the item in the editor, but its z value is below.
    addBox(scene, rect, blue, 1)->setFlag(QGraphicsItem::ItemStacksBehindParent, false);
    ImageableItem imageable;
    QCOMPARE(imageable.createItemImage(item, whiteGround, page, 1.0).pixel(5, 5), redPixel);
}

void tst_ItemImage::membersOfContainersShowWhereTheyLie_data()
{
    QTest::addColumn<int>("kind");
    QTest::newRow("layer") << int(MobraTypes::LayerShape);
    QTest::newRow("group") << int(MobraTypes::GroupShape);
    QTest::newRow("other parent") << int(MobraTypes::RectangleShape);
}

void tst_ItemImage::membersOfContainersShowWhereTheyLie()
{
    QFETCH(const int, kind);
    QGraphicsScene scene;
    ParentStandIn *container = addContainer(scene, MobraTypes::ShapeType(kind));
    container->setPos(20, 0);
    // In the scene from (25, 5) to (35, 15).
    QGraphicsRectItem *member = addBox(scene, QRectF(0, 0, 10, 10), blue, -1);
    member->setParentItem(container);
    member->setPos(5, 5);
    QGraphicsRectItem *item = addBox(scene, QRectF(0, 0, 40, 20), transparent, 2);
    ImageableItem imageable;
    const QImage image = imageable.createItemImage(item, whiteGround, page, 1.0);
    QCOMPARE(image, Images::pictureOf(QSize(40, 20), { { QRect(25, 5, 10, 10), blue } }));
    QCOMPARE(member->parentItem(), container);
    QCOMPARE(member->pos(), QPointF(5, 5));
}

void tst_ItemImage::itemInTurnedContainerIsRenderedWhereItLies()
{
    QGraphicsScene scene;
    ParentStandIn *container = addContainer(scene, MobraTypes::LayerShape);
    container->setRotation(90);
    container->setPos(50, 0);
    // A point (x, y) of the layer lies at (50 - y, x): the item from (30, 20) to (40, 50).
    QGraphicsRectItem *item = addBox(scene, QRectF(0, 0, 30, 10), red, 1);
    item->setParentItem(container);
    item->setPos(20, 10);
    ImageableItem imageable;
    const QImage image = imageable.createItemImage(item, whiteGround, page, 1.0);
    QCOMPARE(image.size(), QSize(10, 30));
    QCOMPARE(imageable.getCalculatedItemPosition(), QPointF(30, 20));
    QCOMPARE(Images::coloursOf(image), QSet<QRgb> { redPixel });
    QCOMPARE(item->parentItem(), container);
    QCOMPARE(item->pos(), QPointF(20, 10));
}

void tst_ItemImage::opacityOfContainersIsKept()
{
    QGraphicsScene scene;
    ParentStandIn *container = addContainer(scene, MobraTypes::LayerShape);
    container->setOpacity(0.5);
    addBox(scene, QRectF(0, 0, 10, 10), black, 1)->setParentItem(container);
    QGraphicsRectItem *item = addBox(scene, QRectF(0, 0, 10, 10), transparent, 2);
    ImageableItem imageable;
    const QRgb seen = imageable.createItemImage(item, whiteGround, page, 1.0).pixel(5, 5);
    QVERIFY(Images::largestDifference(seen, qRgb(127, 127, 127)) <= 1);
}

void tst_ItemImage::hiddenNeighbourDoesNotShow()
{
    QGraphicsScene scene;
    addBox(scene, QRectF(0, 0, 10, 10), blue, 1)->hide();
    QGraphicsRectItem *item = addBox(scene, QRectF(0, 0, 10, 10), transparent, 2);
    ImageableItem imageable;
    const QImage image = imageable.createItemImage(item, whiteGround, page, 1.0);
    QCOMPARE(Images::coloursOf(image), QSet<QRgb> { whitePixel });
}

void tst_ItemImage::selectionFramesDoNotShow()
{
    QGraphicsScene scene;
    QGraphicsRectItem *neighbour = addBox(scene, QRectF(2, 2, 6, 6), blue, 1);
    QGraphicsRectItem *item = addBox(scene, QRectF(0, 0, 20, 20), transparent, 2);
    ImageableItem imageable;
    const QImage expected = imageable.createItemImage(item, whiteGround, page, 1.0);
    item->setSelected(true);
    neighbour->setSelected(true);
    QCOMPARE(imageable.createItemImage(item, whiteGround, page, 1.0), expected);
    scene.removeItem(item);
    QCOMPARE(imageable.createItemImage(item, whiteGround, page, 1.0).pixel(19, 19), whitePixel);
    QVERIFY(item->isSelected());
    delete item;
}

void tst_ItemImage::itemWithoutSceneIsRenderedAlone()
{
    QGraphicsRectItem item(QRectF(0, 0, 10, 10));
    item.setPen(Qt::NoPen);
    item.setBrush(red);
    item.setPos(7, 3);
    ImageableItem imageable;
    const QImage image = imageable.createItemImage(&item, whiteGround, page, 2.0);
    QCOMPARE(image.size(), QSize(20, 20));
    QCOMPARE(Images::coloursOf(image), QSet<QRgb> { redPixel });
    QCOMPARE(imageable.getCalculatedItemPosition(), QPointF(14, 6));
}

// What stays

void tst_ItemImage::orderOfEqualNeighboursStays()
{
    QGraphicsScene scene;
    const QRectF rect(0, 0, 10, 10);
    for (const char *name : { "a", "b", "far", "c" }) {
        const bool far = QLatin1StringView(name) == "far"_L1;
        addBox(scene, far ? rect.translated(200, 0) : rect, blue, 1)->setData(0, QLatin1StringView(name));
    }
    addBox(scene, rect, blue, 3)->setData(0, u"top"_s);
    QGraphicsRectItem *item = addBox(scene, rect, red, 2);
    item->setData(0, u"item"_s);
    addBox(scene, rect, blue, 2)->setData(0, u"equal"_s);
    const QString before = orderOf(scene);
    QCOMPARE(before, u"a b far c item equal top"_s);
    ImageableItem imageable;
    for (int round = 0; round < 3; ++round) {
        QVERIFY(!imageable.createItemImage(item, whiteGround, page, 1.0).isNull());
        QCOMPARE(orderOf(scene), before);
    }
}

void tst_ItemImage::parentsAndGroupsStay()
{
    QGraphicsScene scene;
    QGraphicsRectItem *first = addBox(scene, QRectF(0, 0, 10, 10), blue, 1);
    QGraphicsRectItem *second = addBox(scene, QRectF(5, 5, 10, 10), yellow, 1);
    QGraphicsItemGroup *group = scene.createItemGroup({ first, second });
    group->setFlag(QGraphicsItem::ItemStacksBehindParent);
    group->setPos(3, 3);
    QGraphicsRectItem *item = addBox(scene, QRectF(0, 0, 30, 30), transparent, 2);
    const QRectF bounds = group->boundingRect();
    ImageableItem imageable;
    const QImage image = imageable.createItemImage(item, whiteGround, page, 1.0);
    QCOMPARE(image.pixel(5, 5), bluePixel);
    QCOMPARE(image.pixel(12, 12), yellowPixel);
    QCOMPARE(first->group(), group);
    QCOMPARE(second->group(), group);
    QCOMPARE(group->childItems(), (QList<QGraphicsItem *> { first, second }));
    QCOMPARE(group->boundingRect(), bounds);
    QCOMPARE(first->pos(), QPointF(0, 0));
}

void tst_ItemImage::selectionStaysWithoutSignals()
{
    QGraphicsScene scene;
    QGraphicsRectItem *neighbour = addBox(scene, QRectF(0, 0, 10, 10), blue, 1);
    QGraphicsRectItem *unselected = addBox(scene, QRectF(0, 0, 10, 10), blue, 1);
    QGraphicsRectItem *item = addBox(scene, QRectF(0, 0, 10, 10), transparent, 2);
    QGraphicsRectItem *beside = addBox(scene, QRectF(50, 0, 10, 10), blue, 1);
    for (QGraphicsItem *selected : { neighbour, item, beside })
        selected->setSelected(true);
    const QSignalSpy selectionChanges(&scene, &QGraphicsScene::selectionChanged);
    const QSignalSpy focusChanges(&scene, &QGraphicsScene::focusItemChanged);
    ImageableItem imageable;
    QVERIFY(!imageable.createItemImage(item, whiteGround, page, 1.0).isNull());
    QVERIFY(neighbour->isSelected() && item->isSelected() && beside->isSelected());
    QVERIFY(!unselected->isSelected());
    QCOMPARE(scene.selectedItems().size(), 3);
    QCOMPARE(selectionChanges.size(), 0);
    QCOMPARE(focusChanges.size(), 0);
    QVERIFY(!scene.signalsBlocked());
}

void tst_ItemImage::focusStays()
{
    QGraphicsScene scene;
    QGraphicsRectItem *neighbour = addBox(scene, QRectF(0, 0, 10, 10), blue, 1);
    QGraphicsRectItem *item = addBox(scene, QRectF(0, 0, 10, 10), transparent, 2);
    QEvent activation(QEvent::WindowActivate);
    QCoreApplication::sendEvent(&scene, &activation);
    ImageableItem imageable;
    for (QGraphicsItem *focused : { neighbour, item }) {
        scene.setFocusItem(focused);
        QVERIFY(!imageable.createItemImage(item, whiteGround, page, 1.0).isNull());
        QCOMPARE(scene.focusItem(), focused);
    }
}

void tst_ItemImage::itemWithoutSceneHasNoneAfterwards()
{
    QGraphicsRectItem parent;
    parent.setPos(10, 0);
    QGraphicsRectItem before(&parent);
    QGraphicsRectItem item(QRectF(0, 0, 10, 10), &parent);
    QGraphicsRectItem after(&parent);
    ImageableItem imageable;
    QVERIFY(!imageable.createItemImage(&item, whiteGround, page, 1.0).isNull());
    QCOMPARE(imageable.getCalculatedItemPosition(), QPointF(9, 0)); // with the pen's half width
    QVERIFY(!item.scene());
    QVERIFY(!parent.scene());
    QCOMPARE(parent.childItems(), (QList<QGraphicsItem *> { &before, &item, &after }));
    QCOMPARE(item.pos(), QPointF(0, 0));
}

QTEST_MAIN(tst_ItemImage)
#include "tst_itemimage.moc"
