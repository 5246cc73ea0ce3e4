// SPDX-License-Identifier: BSD-3-Clause
#include "items/graphics/imageableitem.h"
#include "tests/support/standins.h"

#include <QGraphicsItemGroup>
#include <QGraphicsRectItem>
#include <QGraphicsScene>
#include <QPainter>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QTest>

#include <rapidcheck.h>

using namespace Qt::StringLiterals;

namespace {

constexpr auto behind = QGraphicsItem::ItemStacksBehindParent;
const QRectF page(0, 0, 60, 60);

/// What an editor's scene is made of: boxes on the page, in layers, in groups, and in groups in layers.
struct RandomScene
{
    QGraphicsScene scene { page };
    QList<QGraphicsRectItem *> boxes;
    QList<QGraphicsItem *> containers;
};

double wholeNumber(int from, int to)
{
    return *rc::gen::inRange(from, to);
}

bool oneIn(int count)
{
    return *rc::gen::inRange(0, count) == 0;
}

/// Few z values, so that many are equal.
double anyZ()
{
    return wholeNumber(-2, 3);
}

QGraphicsRectItem *anyBox()
{
    auto *box = new QGraphicsRectItem(0, 0, wholeNumber(1, 40), wholeNumber(1, 40));
    box->setPen(Qt::NoPen);
    box->setBrush(QColor::fromRgb(*rc::gen::inRange<QRgb>(0, 0x1000000) | 0xFF000000U));
    box->setPos(wholeNumber(-10, 60), wholeNumber(-10, 60));
    box->setZValue(anyZ());
    box->setFlag(behind, !oneIn(8));
    box->setFlag(QGraphicsItem::ItemIsSelectable);
    box->setFlag(QGraphicsItem::ItemIsFocusable);
    return box;
}

QGraphicsItem *anyContainer()
{
    QGraphicsItem *container = nullptr;
    if (oneIn(2))
        container = new QGraphicsItemGroup;
    else
        container = new ParentStandIn(MobraTypes::LayerShape);
    container->setFlag(behind);
    container->setPos(wholeNumber(-10, 10), wholeNumber(-10, 10));
    container->setZValue(anyZ());
    container->setRotation(90 * wholeNumber(0, 4));
    return container;
}

/// Puts a child of the scene into a container, unless that would lie in itself.
void moveInto(QGraphicsItem &container, QGraphicsItem &child)
{
    if (&container == &child || child.isAncestorOf(&container))
        return;
    if (auto *group = dynamic_cast<QGraphicsItemGroup *>(&container))
        group->addToGroup(&child);
    else
        child.setParentItem(&container);
}

void fill(RandomScene &random)
{
    for (int i = *rc::gen::inRange(0, 5); i > 0; --i)
        random.containers.append(anyContainer());
    for (int i = *rc::gen::inRange(1, 16); i > 0; --i)
        random.boxes.append(anyBox());
    QList<QGraphicsItem *> items = random.containers;
    for (QGraphicsRectItem *box : std::as_const(random.boxes))
        items.append(box);
    for (QGraphicsItem *item : std::as_const(items))
        random.scene.addItem(item);
    for (QGraphicsItem *item : std::as_const(items)) {
        if (!random.containers.isEmpty() && !oneIn(3))
            moveInto(*random.containers[*rc::gen::inRange<qsizetype>(0, random.containers.size())], *item);
    }
    for (QGraphicsRectItem *box : std::as_const(random.boxes)) {
        if (!box->group())
            box->setSelected(oneIn(2));
        if (oneIn(8))
            box->setVisible(false);
        if (oneIn(8))
            random.scene.setFocusItem(box);
    }
}

/// Everything about an item that an editor sees.
struct ItemState
{
    const QGraphicsItem *item;
    const QGraphicsItem *parent;
    const QGraphicsItem *group;
    const QGraphicsScene *scene;
    QPointF position;
    QTransform transform;
    QTransform sceneTransform;
    QRectF bounds;
    double z;
    QGraphicsItem::GraphicsItemFlags flags;
    bool selected;
    bool visible;
    bool focused;
    QList<QGraphicsItem *> children;

    bool operator==(const ItemState &) const = default;
};

/// The items of the scene from the bottom.
QList<ItemState> stateOf(const QGraphicsScene &scene)
{
    QList<ItemState> states;
    for (const QGraphicsItem *item : scene.items(Qt::AscendingOrder)) {
        states.append({ item, item->parentItem(), item->group(), item->scene(), item->pos(),
            item->transform(), item->sceneTransform(), item->boundingRect(), item->zValue(), item->flags(),
            item->isSelected(), item->isVisible(), item->hasFocus(), item->childItems() });
    }
    return states;
}

/// What is to be seen within the whole pixels of the item, painted without a scene.
QImage expectedImage(const RandomScene &random, const QGraphicsRectItem &item)
{
    const QRectF covered = item.sceneBoundingRect() & page;
    if (covered.isEmpty())
        return {};
    const QRect pixels = covered.toAlignedRect();
    QImage image(pixels.size(), QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::white);
    QPainter painter(&image);
    painter.translate(-pixels.topLeft());
    const QTransform view = painter.transform();
    const auto paint = [&](const QGraphicsRectItem &box) {
        painter.setTransform(box.sceneTransform() * view);
        painter.fillRect(box.rect(), box.brush());
    };
    for (const QGraphicsItem *below : random.scene.items(Qt::AscendingOrder)) {
        const auto *box = qgraphicsitem_cast<const QGraphicsRectItem *>(below);
        if (!box || !box->isVisible() || !box->sceneBoundingRect().intersects(covered))
            continue;
        if (box->zValue() >= item.zValue())
            break;
        paint(*box);
    }
    if (item.isVisible())
        paint(item);
    return image;
}

} // namespace

/// What holds for any scene. The cases are drawn at random from a fixed seed, so every run tries the same;
/// RC_PARAMS in the environment chooses others.
class tst_ItemImageProperties : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    void renderingShowsWhatLiesBeneath();
    void renderingLeavesTheSceneAsItWas();
};

void tst_ItemImageProperties::initTestCase()
{
    if (!qEnvironmentVariableIsSet("RC_PARAMS"))
        qputenv("RC_PARAMS", "seed=20230401 max_success=1000");
}

void tst_ItemImageProperties::renderingShowsWhatLiesBeneath()
{
    int rendered = 0;
    QVERIFY(rc::check([&rendered] {
        RandomScene random;
        fill(random);
        QGraphicsRectItem *item = random.boxes.first();
        ImageableItem imageable;
        const QImage image = imageable.createItemImage(item, 0xFFFFFFFFU, page, 1.0);
        RC_ASSERT(image == expectedImage(random, *item));
        rendered += image.isNull() ? 0 : 1;
    }));
    QVERIFY(rendered > 500);
}

void tst_ItemImageProperties::renderingLeavesTheSceneAsItWas()
{
    QVERIFY(rc::check([] {
        RandomScene random;
        QEvent activation(QEvent::WindowActivate);
        QCoreApplication::sendEvent(&random.scene, &activation);
        fill(random);
        const QList<ItemState> before = stateOf(random.scene);
        const QSignalSpy selectionChanges(&random.scene, &QGraphicsScene::selectionChanged);
        for (QGraphicsRectItem *item : std::as_const(random.boxes)) {
            ImageableItem imageable;
            (void)imageable.createItemImage(item, 0U, page, 0.5);
            RC_ASSERT(stateOf(random.scene) == before);
        }
        RC_ASSERT(selectionChanges.isEmpty());
    }));
}

QTEST_MAIN(tst_ItemImageProperties)
#include "tst_itemimageproperties.moc"
