// SPDX-License-Identifier: BSD-3-Clause
#include "items/graphics/imageableitem.h"
#include "items/text/simpletextitem.h"
#include "tests/support/boxes.h"
#include "tests/support/colours.h"
#include "tests/support/fillableshape.h"
#include "tests/support/images.h"

#include <QGraphicsScene>
#include <QRegularExpression>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace Colours;
using Boxes::addBox;
using Boxes::addContainer;

namespace {

constexpr unsigned int whiteGround = 0xFFFFFFFFU;
const QRectF page(0, 0, 100, 100);

/// Paints a blue block whatever its fill.
class BlueShape final : public FillableShape
{
public:
    void paint(QPainter *painter, const QStyleOptionGraphicsItem * /*option*/, QWidget * /*widget*/) override
    {
        painter->fillRect(boundingRect(), blue);
    }
};

/// Makes the shape a gradient that is laid down in two inks. Its print image is a single black dot.
void prepareGradient(FillableShape &shape)
{
    shape.setFlag(QGraphicsItem::ItemStacksBehindParent);
    shape.setItemPenStyle(Qt::NoPen);
    shape.setItemFillColor(red);
    shape.setItemBrushStyle(MobraTypes::BrushLinearGradient);
    shape.setItemPalette({ red, yellow });
    shape.setZValue(1);
}

FillableShape *addGradient(QGraphicsScene &scene, const QPointF &position)
{
    auto *gradient = new FillableShape;
    prepareGradient(*gradient);
    gradient->setPos(position);
    scene.addItem(gradient);
    return gradient;
}

/// The rectangle around all pixels that are not white.
QRect boundsOfContent(const QImage &image)
{
    QRect bounds;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (image.pixel(x, y) != whitePixel)
                bounds |= QRect(x, y, 1, 1);
        }
    }
    return bounds;
}

} // namespace

/// The picture of an item above others that are laid down one ink after the other.
class tst_ItemImageInks : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    void gradientShowsInItsInks();
    void gradientKeepsItsPlaceAmongNeighbours();
    void neighbourWithoutInksShowsItself_data();
    void neighbourWithoutInksShowsItself();
    void gradientInTurnedContainerLiesWhereItLies();
    void renderingOfATextIsShiftedByItsPads();
};

void tst_ItemImageInks::gradientShowsInItsInks()
{
    QGraphicsScene scene;
    FillableShape *gradient = addGradient(scene, QPointF(3, 4));
    QGraphicsRectItem *item = addBox(scene, QRectF(0, 0, 20, 20), transparent, 2);
    ImageableItem imageable;
    const QImage image = imageable.createItemImage(item, whiteGround, page, 1.0);
    // The palette makes the dot red.
    QCOMPARE(image, Images::pictureOf(QSize(20, 20), { { QRect(3, 4, 1, 1), red } }));
    QCOMPARE(gradient->scene(), &scene);
    QCOMPARE(gradient->getItemFillColor(), red);
}

void tst_ItemImageInks::gradientKeepsItsPlaceAmongNeighbours()
{
    QGraphicsScene scene;
    // Later ones lie above earlier ones by their z values alone.
    QGraphicsRectItem *item = addBox(scene, QRectF(12, 0, 4, 20), black, 2);
    addBox(scene, QRectF(10, 6, 8, 4), yellow, 1.5);
    // The dot is stretched to 11 x 10.
    addGradient(scene, QPointF(3, 4))->setTransform(QTransform::fromScale(11, 10));
    addBox(scene, QRectF(0, 0, 8, 20), blue, 0.5);
    ImageableItem imageable;
    const QImage image = imageable.createItemImage(item, whiteGround, QRectF(0, 0, 20, 20), page, 1.0);
    const QImage expected = Images::pictureOf(QSize(20, 20),
        { { QRect(0, 0, 8, 20), blue }, { QRect(3, 4, 11, 10), red }, { QRect(10, 6, 8, 4), yellow },
            { QRect(12, 0, 4, 20), black } });
    const QString difference = Images::difference(image, expected, u"neighbours"_s);
    QVERIFY2(difference.isEmpty(), qPrintable(difference));
}

void tst_ItemImageInks::neighbourWithoutInksShowsItself_data()
{
    QTest::addColumn<MobraTypes::BrushStyle>("style");
    QTest::addColumn<QList<QColor>>("palette");
    QTest::newRow("gradient without a palette") << MobraTypes::BrushLinearGradient << QList<QColor>();
    QTest::newRow("gradient on paper alone") << MobraTypes::BrushLinearGradient << QList<QColor> { yellow };
    QTest::newRow("plain fill") << MobraTypes::BrushSolid << QList<QColor> { red, yellow };
}

void tst_ItemImageInks::neighbourWithoutInksShowsItself()
{
    QFETCH(const MobraTypes::BrushStyle, style);
    QFETCH(const QList<QColor>, palette);
    QGraphicsScene scene;
    auto *neighbour = new BlueShape;
    prepareGradient(*neighbour);
    neighbour->setItemBrushStyle(style);
    neighbour->setItemPalette(palette);
    neighbour->setItemSize(QSizeF(5, 6));
    neighbour->setPos(3, 4);
    scene.addItem(neighbour);
    QGraphicsRectItem *item = addBox(scene, QRectF(0, 0, 20, 20), transparent, 2);
    ImageableItem imageable;
    const QImage image = imageable.createItemImage(item, whiteGround, page, 1.0);
    QCOMPARE(image, Images::pictureOf(QSize(20, 20), { { QRect(3, 4, 5, 6), blue } }));
    QCOMPARE(neighbour->scene(), &scene);
}

void tst_ItemImageInks::gradientInTurnedContainerLiesWhereItLies()
{
    QGraphicsScene scene;
    ParentStandIn *container = addContainer(scene, MobraTypes::LayerShape);
    container->setRotation(90);
    container->setPos(50, 0);
    addGradient(scene, QPointF(10, 20))->setParentItem(container);
    QGraphicsRectItem *item = addBox(scene, QRectF(0, 0, 40, 40), transparent, 2);
    ImageableItem imageable;
    const QImage image = imageable.createItemImage(item, whiteGround, page, 1.0);
    // The dot from (10, 20) to (11, 21) of the layer.
    QCOMPARE(image, Images::pictureOf(QSize(40, 40), { { QRect(29, 10, 1, 1), red } }));
}

void tst_ItemImageInks::renderingOfATextIsShiftedByItsPads()
{
    QGraphicsScene scene;
    auto *text = new SimpleTextItem;
    text->setItemText(u"x"_s);
    text->setItemFillColor(red);
    text->setItemPenColor(red);
    text->setItemPenWidth(6);
    text->setItemBrushStyle(MobraTypes::BrushLinearGradient);
    text->setItemPalette({ red, yellow });
    text->setPos(20, 20);
    text->setZValue(1);
    scene.addItem(text);
    QGraphicsRectItem *item = addBox(scene, QRectF(0, 0, 90, 90), transparent, 2);
    ImageableItem imageable;
    const QImage image = imageable.createItemImage(item, whiteGround, page, 1.0);
    QVERIFY(Images::coloursOf(image) == (QSet<QRgb> { redPixel, yellowPixel, whitePixel }));

    // The outline of six units lies outside the text, whose corner is at (20, 20).
    const QRect seen = boundsOfContent(image);
    QCOMPARE(seen.topLeft(), QPoint(14, 14));
    QCOMPARE(seen.size(), text->getItemSize().toSize() + QSize(12, 12));
}

QTEST_MAIN(tst_ItemImageInks)
#include "tst_itemimageinks.moc"
