// SPDX-License-Identifier: BSD-3-Clause
#include "label/itemtree.h"

#include "items/containers/groupitem.h"
#include "items/core/resizerotatedhelper.h"
#include "items/graphics/pixmapitem.h"
#include "label/labeldocument.h"

#include <QGraphicsItem>
#include <QTransform>

namespace {

/// What a group changes of an item that joins it.
class Place
{
public:
    explicit Place(QGraphicsItem &item)
        : m_item(item)
        , m_transform(item.transform())
        , m_position(item.pos())
        , m_z(item.zValue())
    {
        if (const auto *helper = dynamic_cast<ResizeRotatedHelper *>(&item))
            m_firstResize = firstResizeOf(*helper);
    }

    void restore() const
    {
        m_item.setTransform(m_transform);
        m_item.setPos(m_position);
        m_item.setZValue(m_z);
        // The same origin once more tells the group that it has new bounds, which a position does in scenes
        // only.
        m_item.setTransformOriginPoint(m_item.transformOriginPoint());
        if (auto *helper = dynamic_cast<ResizeRotatedHelper *>(&m_item))
            helper->setFirstResizeAfterAddedToGroup(m_firstResize);
    }

private:
    /// Pictures have it in their records. Of the others, joining a group takes the translation out of the
    /// transform, and the first resize puts one back and notes it.
    [[nodiscard]] bool firstResizeOf(const ResizeRotatedHelper &helper) const
    {
        const QPointF noted(helper.getOldTransformCoefficientM31(), helper.getOldTransformCoefficientM32());
        return dynamic_cast<const PixMapItem *>(&m_item)
            ? helper.getFirstResizeAfterAddedToGroup()
            : QPointF(m_transform.dx(), m_transform.dy()) != noted;
    }

    QGraphicsItem &m_item;
    QTransform m_transform;
    QPointF m_position;
    double m_z;
    bool m_firstResize = false;
};

void joinGroup(GroupItem &group, const QList<QGraphicsItem *> &members)
{
    std::vector<Place> places;
    double z = 0.0;
    for (QGraphicsItem *member : members) {
        places.emplace_back(*member);
        member->setZValue(z++); // of equal ones, only one would join
    }
    group.addToGroup(members);
    group.setSelected(false);
    group.setPos(0.0, 0.0);
    for (const Place &place : places)
        place.restore();
}

} // namespace

QGraphicsItem &ItemTree::graphicsOf(Item &item)
{
    return *item.graphicsItem();
}

const QGraphicsItem &ItemTree::graphicsOf(const Item &item)
{
    return *item.graphicsItem();
}

bool ItemTree::isContainer(const Item &item)
{
    return isContainer(item.getItemShapeInt());
}

bool ItemTree::isContainer(unsigned int shape)
{
    return shape == MobraTypes::GroupShape || shape == MobraTypes::LayerShape;
}

QList<Item *> ItemTree::membersOf(const Item &item)
{
    QList<Item *> members;
    if (!isContainer(item))
        return members;
    for (QGraphicsItem *child : graphicsOf(item).childItems()) {
        if (auto *member = dynamic_cast<Item *>(child))
            members.append(member);
    }
    return members;
}

qsizetype ItemTree::count(const Item &item)
{
    qsizetype items = 1;
    for (const Item *member : membersOf(item))
        items += count(*member);
    return items;
}

qsizetype ItemTree::count(const LabelDocument &document)
{
    qsizetype items = 0;
    for (const auto &item : document.items())
        items += count(*item);
    return items;
}

bool ItemTree::isShown(const Item &item)
{
    const QGraphicsItem &graphics = graphicsOf(item);
    return graphics.isVisibleTo(graphics.parentItem());
}

void ItemTree::join(Item &container, std::vector<std::unique_ptr<Item>> members)
{
    QList<QGraphicsItem *> items;
    for (std::unique_ptr<Item> &member : members)
        items.append(&graphicsOf(*member.release()));
    if (auto *group = dynamic_cast<GroupItem *>(&container); group && !items.isEmpty()) {
        joinGroup(*group, items);
        return;
    }
    for (QGraphicsItem *item : items)
        item->setParentItem(&graphicsOf(container));
}
