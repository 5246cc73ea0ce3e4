// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "items/containers/groupitem.h"
#include "items/shapes/rectangleitem.h"
#include "tests/support/nearness.h"

#include <QGraphicsItem>
#include <QPolygonF>

#include <memory>
#include <vector>

/// Groups and what they are made of.
namespace Groups {

/// A new rectangle without parent and scene.
inline RectangleItem *rectangle(const QRectF &place, double z = 0.0)
{
    auto *item = new RectangleItem;
    item->setItemSize(place.size());
    item->setPos(place.topLeft());
    item->setZValue(z);
    return item;
}

/// Groups the item as the only one of a list, which a pair of braces around it would not do.
inline void takeIn(GroupItem &group, QGraphicsItem *item)
{
    group.addToGroup(QList<QGraphicsItem *> { item });
}

/// Lets a group without parent come apart. The caller owns what was in it.
[[nodiscard]] inline std::vector<std::unique_ptr<QGraphicsItem>> takenApart(GroupItem &group)
{
    std::vector<std::unique_ptr<QGraphicsItem>> members;
    for (QGraphicsItem *member : group.childItems())
        members.emplace_back(member);
    group.removeFromGroup();
    return members;
}

/// The corners of what an item shows, on the page.
inline QPolygonF corners(const QGraphicsItem &item)
{
    return item.mapToScene(item.boundingRect());
}

/// Whether the corners are those of before, to a millionth of a unit.
[[nodiscard]] inline bool stayed(const QPolygonF &before, const QPolygonF &after)
{
    if (before.size() != after.size())
        return false;
    for (qsizetype i = 0; i < before.size(); ++i) {
        if ((before[i] - after[i]).manhattanLength() > 1e-6) {
            qInfo() << before << "became" << after;
            return false;
        }
    }
    return true;
}

/// The group's members as the class that they are all known to be of.
template <typename T> T *memberOf(const QGraphicsItem &group, int index)
{
    return dynamic_cast<T *>(group.childItems().value(index));
}

} // namespace Groups
