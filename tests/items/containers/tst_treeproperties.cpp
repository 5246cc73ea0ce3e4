// SPDX-License-Identifier: BSD-3-Clause
#include "tests/support/block.h"
#include "tests/support/labeltexts.h"
#include "tests/support/randomtrees.h"

#include <QGraphicsScene>
#include <QImage>
#include <QPainter>
#include <QPointer>
#include <QRegularExpression>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace RandomTrees;

namespace {

constexpr int depth = 4;

/// A tree whose bounds are as many times larger as its items are. Lines and frames of texts keep their
/// thickness, and letters their size, so that a group of them that shrinks to a size reaches it with items
/// that are smaller yet.
std::unique_ptr<GroupItem> evenGroup()
{
    Kinds kinds { .evenTexts = true };
    kinds.shapes.removeOne(MobraTypes::LineShape);
    return group(depth, kinds);
}

/// Watches that what was made is there, once, and that nothing of it outlives its end.
class Census
{
public:
    void add(QGraphicsItem &root)
    {
        for (QGraphicsItem *item : itemsOf(root))
            m_items.append(
                item->toGraphicsObject() ? item->toGraphicsObject() : dynamic_cast<QObject *>(item));
    }
    [[nodiscard]] bool isGone() const
    {
        return !m_items.isEmpty()
            && std::ranges::all_of(m_items, [](const auto &item) { return item.isNull(); });
    }

private:
    QList<QPointer<QObject>> m_items;
};

template <typename T> QSet<T> setOf(const QList<T> &list)
{
    return QSet<T>(list.begin(), list.end());
}

/// The kinds of a tree, with brackets around the members of each container.
QString shapeOf(QGraphicsItem &root)
{
    QString members;
    for (QGraphicsItem *child : root.childItems())
        members += shapeOf(*child);
    return u"%1(%2)"_s.arg(root.type(), 0, 16).arg(members);
}

QImage picture(QGraphicsItem &root)
{
    QGraphicsScene scene;
    scene.addItem(&root);
    QImage image(120, 120, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::white);
    QPainter painter(&image);
    scene.render(&painter, image.rect(), QRectF(-100, -100, 700, 700));
    painter.end();
    scene.removeItem(&root);
    return image;
}

/// Lets a group without parent come apart, and makes sure that it gives away what was in it.
bool comesApart(GroupItem &group)
{
    const QList<QGraphicsItem *> members = group.childItems();
    group.removeFromGroup();
    return group.childItems().isEmpty()
        && std::ranges::none_of(members, [](const QGraphicsItem *member) { return member->parentItem(); });
}

} // namespace

/// What holds for groups of groups of items of all kinds. The cases are drawn at random from a fixed seed, so
/// every run tries the same; RC_PARAMS in the environment chooses others.
class tst_TreeProperties : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    void groupingAndUngroupingMovesNothing();
    void growingAndShrinkingBackMovesNothing();
    void shrinkingAndGrowingBackMovesNothing();
    void shrinkingEnds();
    void copiesAreEqual();
    void layersCopyTheirTrees();
};

void tst_TreeProperties::initTestCase()
{
    LabelTexts::useKnownFont();
    if (!qEnvironmentVariableIsSet("RC_PARAMS"))
        qputenv("RC_PARAMS", "seed=20230401 max_success=1000");
}

void tst_TreeProperties::groupingAndUngroupingMovesNothing()
{
    QVERIFY(rc::check([] {
        Census census;
        {
            std::vector<std::unique_ptr<Item>> roots = trees(depth - 1, {});
            QList<QGraphicsItem *> leaves;
            for (const std::unique_ptr<Item> &root : roots) {
                census.add(AllItems::graphics(*root));
                leaves += leavesOf(AllItems::graphics(*root));
            }
            const QList<QPolygonF> before = cornersOf(leaves);
            const auto members = qsizetype(roots.size());
            const std::unique_ptr<GroupItem> group = grouped(std::move(roots));
            RC_ASSERT(group->childItems().size() == members);
            RC_ASSERT(leavesOf(*group) == leaves);
            RC_ASSERT(wayBetween(before, cornersOf(leaves)) < 1e-6);

            const QList<QGraphicsItem *> items = group->childItems();
            RC_ASSERT(comesApart(*group));
            RC_ASSERT(wayBetween(before, cornersOf(leaves)) < 1e-6);
            QList<QGraphicsItem *> found;
            for (QGraphicsItem *item : items)
                found += leavesOf(*item);
            RC_ASSERT(found.size() == leaves.size());
            RC_ASSERT(setOf(found) == setOf(leaves));
            qDeleteAll(items);
        }
        RC_ASSERT(census.isGone());
    }));
}

void tst_TreeProperties::growingAndShrinkingBackMovesNothing()
{
    QVERIFY(rc::check([] {
        const std::unique_ptr<GroupItem> group = evenGroup();
        const QList<QGraphicsItem *> leaves = leavesOf(*group);
        const QList<QPolygonF> before = cornersOf(leaves);
        const double factor = 1.0 + number(1, 17) / 8.0;
        RC_ASSERT(group->setItemSize(group->getItemSize() * factor));
        RC_ASSERT(group->setItemSize(group->getItemSize() / factor));
        RC_ASSERT(wayBetween(before, cornersOf(leaves)) < 1e-3);
    }));
}

void tst_TreeProperties::shrinkingAndGrowingBackMovesNothing()
{
    QVERIFY(rc::check([] {
        const std::unique_ptr<GroupItem> group = evenGroup();
        const QList<QGraphicsItem *> leaves = leavesOf(*group);
        const QList<QPolygonF> before = cornersOf(leaves);
        const double factor = number(5, 8) / 8.0; // less, and margins of texts no longer fit
        RC_ASSERT(group->setItemSize(group->getItemSize() * factor));
        RC_ASSERT(group->setItemSize(group->getItemSize() / factor));
        RC_ASSERT(wayBetween(before, cornersOf(leaves)) < 1e-3);
    }));
}

void tst_TreeProperties::shrinkingEnds()
{
    QVERIFY(rc::check([] {
        std::vector<std::unique_ptr<Item>> members = trees(depth - 1, {});
        auto *block = new Block(QSizeF(number(1, 100), number(1, 100)));
        members.emplace_back(block);
        std::unique_ptr<GroupItem> group = grouped(std::move(members));
        int levels = 1;
        for (; levels < number(1, depth + 1); ++levels) {
            std::vector<std::unique_ptr<Item>> one;
            one.push_back(std::move(group));
            group = grouped(std::move(one));
        }
        block->sizesAnnounced.clear();
        (void)group->setItemSize(group->getItemSize() * (number(1, 1000) / 100'000.0));
        RC_ASSERT(block->sizesAnnounced.size() <= levels + 1);
        if (!block->sizesAnnounced.isEmpty()) {
            const QSizeF first = block->sizesAnnounced.first();
            RC_ASSERT(first.width() > 1.0 - 1e-9 && first.height() > 1.0 - 1e-9);
        }
        for (QGraphicsItem *item : leavesOf(*group)) {
            const QSizeF size = dynamic_cast<Item &>(*item).getItemSize();
            RC_ASSERT(qIsFinite(size.width()) && qIsFinite(size.height()) && !size.isNull());
        }
    }));
}

void tst_TreeProperties::copiesAreEqual()
{
    QVERIFY(rc::check([] {
        const std::unique_ptr<Item> root = tree(depth, {});
        QGraphicsItem &original = AllItems::graphics(*root);
        Census census;
        {
            const std::unique_ptr<Item> made(root->createItemCopy());
            QGraphicsItem &copy = AllItems::graphics(*made);
            census.add(copy);
            RC_ASSERT(shapeOf(copy) == shapeOf(original));
            RC_ASSERT(wayBetween(cornersOf(leavesOf(original)), cornersOf(leavesOf(copy))) < 1e-6);
            RC_ASSERT(picture(copy) == picture(original));
        }
        RC_ASSERT(census.isGone());
    }));
}

void tst_TreeProperties::layersCopyTheirTrees()
{
    QVERIFY(rc::check([] {
        LayerItem layer;
        layer.setItemId(short(number(0, 100)));
        layer.setLayerZValue(number(-5, 5));
        for (std::unique_ptr<Item> &item : trees(depth, {})) {
            item->setItemZValue(number(-2, 3));
            AllItems::graphics(*item.release()).setParentItem(&layer);
        }
        const std::unique_ptr<Item> made(layer.createItemCopy());
        QGraphicsItem &copy = AllItems::graphics(*made);
        RC_ASSERT(made->itemId() == layer.itemId());
        RC_ASSERT(copy.zValue() == layer.zValue());
        RC_ASSERT(shapeOf(copy) == shapeOf(layer));
        RC_ASSERT(picture(copy) == picture(layer));
    }));
}

QTEST_MAIN(tst_TreeProperties)
#include "tst_treeproperties.moc"
