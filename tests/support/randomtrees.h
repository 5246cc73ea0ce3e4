// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "items/containers/groupitem.h"
#include "items/containers/layeritem.h"
#include "items/text/richtextitem.h"
#include "tests/support/allitems.h"
#include "tests/support/groups.h"

#include <QPolygonF>
#include <QSet>

#include <rapidcheck.h>

#include <memory>

/// Trees of items of all kinds as rapidcheck draws them, so that it can look for a smaller one that fails
/// too.
namespace RandomTrees {

[[nodiscard]] inline int number(int from, int to)
{
    return *rc::gen::inRange(from, to);
}

[[nodiscard]] inline bool oneIn(int count)
{
    return number(0, count) == 0;
}

/// What a tree is made of.
struct Kinds
{
    QList<MobraTypes::ShapeType> shapes = AllItems::shapes();
    bool evenTexts = false; ///< without frames, and boxes of text with letters so small that all stay inside
};

inline void makeEven(Item &item)
{
    if (auto *text = dynamic_cast<TextItem *>(&item))
        text->setItemPenWidth(0);
    if (auto *text = dynamic_cast<RichTextItem *>(&item))
        text->setItemFontSize(1);
}

/// An item with a content, of one of the kinds.
[[nodiscard]] inline std::unique_ptr<Item> leaf(const Kinds &kinds)
{
    std::unique_ptr<Item> item
        = AllItems::madeOrChanged(kinds.shapes[number(0, int(kinds.shapes.size()))], true);
    if (kinds.evenTexts)
        makeEven(*item);
    item->setItemAsReadOnly(false);
    item->setItemHorizontalMirror(oneIn(2));
    item->setItemVerticalMirror(oneIn(2));
    item->setItemSize(QSizeF(number(20, 120), number(20, 120)));
    item->setItemRotation(15 * number(0, 24));
    AllItems::graphics(*item).setPos(number(0, 300), number(0, 300));
    return item;
}

/// Makes a group of items, from bottom to top, which it owns.
[[nodiscard]] inline std::unique_ptr<GroupItem> grouped(std::vector<std::unique_ptr<Item>> members)
{
    auto group = std::make_unique<GroupItem>();
    QList<QGraphicsItem *> items;
    for (std::unique_ptr<Item> &member : members) {
        items.append(&AllItems::graphics(*member.release()));
        items.last()->setZValue(double(items.size()));
    }
    group->addToGroup(items);
    group->setSelected(false);
    return group;
}

[[nodiscard]] inline std::unique_ptr<Item> tree(int depth, const Kinds &kinds);

/// One to four trees.
[[nodiscard]] inline std::vector<std::unique_ptr<Item>> trees(int depth, const Kinds &kinds)
{
    std::vector<std::unique_ptr<Item>> some;
    for (int count = number(1, 5); count > 0; --count)
        some.push_back(tree(depth, kinds));
    return some;
}

/// A group of trees, turned and stretched.
[[nodiscard]] inline std::unique_ptr<GroupItem> group(int depth, const Kinds &kinds)
{
    std::unique_ptr<GroupItem> made = grouped(trees(depth - 1, kinds));
    if (oneIn(2))
        made->setItemSize(made->getItemSize() * (1.0 + number(1, 9) / 8.0));
    made->setItemRotation(15 * number(0, 24));
    return made;
}

/// An item, or a group that is so many levels deep at most.
[[nodiscard]] inline std::unique_ptr<Item> tree(int depth, const Kinds &kinds)
{
    if (depth <= 0 || oneIn(2))
        return leaf(kinds);
    return group(depth, kinds);
}

/// All items of a tree, from the root on and from bottom to top.
[[nodiscard]] inline QList<QGraphicsItem *> itemsOf(QGraphicsItem &root)
{
    QList<QGraphicsItem *> items { &root };
    for (QGraphicsItem *child : root.childItems())
        items += itemsOf(*child);
    return items;
}

/// Those of them that show something.
[[nodiscard]] inline QList<QGraphicsItem *> leavesOf(QGraphicsItem &root)
{
    QList<QGraphicsItem *> leaves = itemsOf(root);
    leaves.removeIf([](QGraphicsItem *item) {
        return AllItems::isContainer(static_cast<MobraTypes::ShapeType>(item->type()));
    });
    return leaves;
}

[[nodiscard]] inline QList<QPolygonF> cornersOf(const QList<QGraphicsItem *> &items)
{
    QList<QPolygonF> corners;
    for (const QGraphicsItem *item : items)
        corners.append(Groups::corners(*item));
    return corners;
}

/// The largest way that a corner has gone.
[[nodiscard]] inline double wayBetween(const QList<QPolygonF> &before, const QList<QPolygonF> &after)
{
    double way = before.size() == after.size() ? 0.0 : qInf();
    for (qsizetype i = 0; qIsFinite(way) && i < before.size(); ++i) {
        for (qsizetype corner = 0; corner < before[i].size(); ++corner)
            way = std::max(way, (before[i][corner] - after[i].value(corner)).manhattanLength());
    }
    return way;
}

} // namespace RandomTrees
