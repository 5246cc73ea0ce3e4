// SPDX-License-Identifier: BSD-3-Clause
#include "items/containers/groupitem.h"

#include "items/containers/members.h"
#include "items/containers/nesting.h"
#include "items/core/basicconversions.h"
#include "items/core/limits.h"
#include "items/core/resizerotatedhelper.h"

#include <QGraphicsScene>

#include <algorithm>
#include <cmath>
#include <limits>
#include <map>

namespace {

/// Moves the item by a distance in the scene, whatever its parent does to distances.
void moveInScene(QGraphicsItem &item, const QPointF &distance)
{
    QPointF difference = distance;
    if (const QGraphicsItem *parent = item.parentItem())
        difference = parent->mapFromScene(distance) - parent->mapFromScene(QPointF());
    item.setPos(Limits::geometry(item.pos() + difference));
}

/// Takes the item out of a scene that is not to be its own, without moving it on the page: Qt cannot move an
/// item from one scene to a parent in another.
void leaveOtherScene(QGraphicsItem &item, const QGraphicsScene *scene)
{
    if (!item.scene() || item.scene() == scene)
        return;
    const QTransform place = item.sceneTransform();
    const bool hadParent = item.parentItem() != nullptr;
    item.scene()->removeItem(&item);
    if (!hadParent)
        return;
    const QPointF position(place.dx(), place.dy());
    item.setTransform(place * QTransform::fromTranslate(-position.x(), -position.y()));
    item.setPos(position);
}

/// Whether both transforms turn and stretch alike, wherever they move to.
bool areParallel(const QTransform &a, const QTransform &b)
{
    constexpr double epsilon = 1e-9;
    const auto near
        = [](double x, double y) { return std::abs(x - y) <= epsilon * std::max(1.0, std::abs(x)); };
    return near(a.m11(), b.m11()) && near(a.m12(), b.m12()) && near(a.m21(), b.m21())
        && near(a.m22(), b.m22());
}

/// Qt gives a former member a transform that moves nothing and a position for it: an item that scales a
/// content goes on from a transform about its centre. It may land elsewhere.
void restoreTransform(QGraphicsItem &graphics, ResizeRotatedHelper &helper, const Item &item, bool turned)
{
    const QTransform combined = graphics.transform();
    if (turned) {
        const QPointF centre = graphics.boundingRect().center();
        helper.updateTransformOnRotation(&graphics, centre.x(), centre.y(), item.getItemRotation(),
            item.getItemScaleX(), item.getItemScaleY());
        if (areParallel(graphics.transform(), combined))
            return;
    }
    graphics.setTransform(combined
        * QTransform::fromTranslate(
            helper.getOldTransformCoefficientM31(), helper.getOldTransformCoefficientM32()));
}

/// Lays a member's copy in the group's copy where the member lies in the group.
void copyPlace(const QGraphicsItem &member, QGraphicsItem &copy)
{
    copy.setTransform(member.transform());
    copy.setPos(member.pos());
    const auto *from = dynamic_cast<const ResizeRotatedHelper *>(&member);
    auto *to = dynamic_cast<ResizeRotatedHelper *>(&copy);
    if (from && to)
        to->setFirstResizeAfterAddedToGroup(from->getFirstResizeAfterAddedToGroup());
}

} // namespace

GroupItem::GroupItem()
{
    setItemShape(MobraTypes::GroupShape);
    setFlags(ItemIsMovable | ItemIsSelectable | ItemIsFocusable | ItemStacksBehindParent);
    storeItemSize(QSizeF(-1.0, -1.0));
}

GroupItem::~GroupItem() = default;

QString GroupItem::toDescriptionString() const
{
    return QStringLiteral("group %1").arg(itemId());
}

void GroupItem::paint(QPainter *painter, const QStyleOptionGraphicsItem *option, QWidget * /*widget*/)
{
    paintSelectionFrame(painter, option, boundingRect());
}

int GroupItem::getChildrenCount() const
{
    const QList<QGraphicsItem *> members = childItems();
    const auto counts
        = [this](const QGraphicsItem *member) { return m_countInvisibleItems || member->isVisible(); };
    return static_cast<int>(std::ranges::count_if(members, counts));
}

bool GroupItem::resetItemColors(const QColor & /*printColor*/, bool /*keepBlack*/, bool /*keepOthers*/)
{
    return false;
}

bool GroupItem::resetItemColorsNegative(const QColor & /*printColor*/)
{
    return false;
}

// --- members

bool GroupItem::canTake(const QGraphicsItem *item) const
{
    if (!item || !Nesting::isPossible(*this, *item))
        return false;
    bool hasPlace = false;
    static_cast<void>(item->itemTransform(this, &hasPlace));
    return hasPlace;
}

void GroupItem::addToGroup(const QList<QGraphicsItem *> &items)
{
    constexpr double largest = std::numeric_limits<double>::max();
    QPointF corner(largest, largest);
    std::map<double, QGraphicsItem *> stack;
    for (QGraphicsItem *item : items) {
        if (!canTake(item))
            continue;
        stack.insert_or_assign(Limits::finite(item->zValue(), 0.0), item);
        const QPointF itemCorner = item->sceneBoundingRect().topLeft();
        corner = QPointF(std::min(corner.x(), itemCorner.x()), std::min(corner.y(), itemCorner.y()));
    }
    if (stack.empty())
        return;
    // A group with members has its origin, and moving it would move them.
    const QPointF origin = childItems().isEmpty() ? Limits::geometry(corner) : QPointF();
    for (const auto &[z, item] : stack) {
        moveInScene(*item, -origin);
        take(*item);
        item->setZValue(0.0);
        if (auto *helper = dynamic_cast<ResizeRotatedHelper *>(item))
            helper->itemWasJustAddedToGroup();
    }
    setSelected(true);
    moveInScene(*this, origin);
    storeItemSize(childrenBoundingRect().size());
}

void GroupItem::addToGroup(QGraphicsItem *item)
{
    if (canTake(item))
        take(*item);
}

void GroupItem::take(QGraphicsItem &item)
{
    item.setSelected(false);
    leaveOtherScene(item, scene());
    QGraphicsItemGroup::addToGroup(&item);
}

void GroupItem::removeFromGroup()
{
    for (QGraphicsItem *member : childItems())
        release(*member);
}

void GroupItem::removeFromGroup(QGraphicsItem *item)
{
    QGraphicsItemGroup::removeFromGroup(item);
}

void GroupItem::release(QGraphicsItem &member)
{
    QGraphicsItemGroup::removeFromGroup(&member);
    const QPointF place = member.mapToParent(QPointF());
    auto *item = dynamic_cast<Item *>(&member);
    const bool turned = item && m_rotation != 0.0;
    if (turned)
        addRotationTo(*item);
    if (auto *group = dynamic_cast<GroupItem *>(&member))
        group->restoreRotation();
    if (auto *helper = dynamic_cast<ResizeRotatedHelper *>(&member); helper && item) {
        helper->fixPositionOnUngroup(&member);
        restoreTransform(member, *helper, *item, turned);
    }
    member.setPos(Limits::geometry(member.pos() + place - member.mapToParent(QPointF())));
}

/// The member has left with the transforms of both: its rotation becomes the one of those.
void GroupItem::addRotationTo(Item &member) const
{
    const double sum = BasicConversions::normalizeAngle(member.getItemRotation() + m_rotation);
    member.copyPrivatePropeties(sum, member.getItemSize(), member.getItemScaleX(), member.getItemScaleY(),
        false, member.getDatasourceId(), member.getDatasourceField());
}

/// The group has left another, from which Qt gave it a transform that moves nothing.
void GroupItem::restoreRotation()
{
    const QTransform combined = transform();
    turnAbout(sizeRect().center());
    if (!areParallel(transform(), combined))
        setTransform(combined);
}

QVariant GroupItem::itemChange(GraphicsItemChange change, const QVariant &value)
{
    return change == ItemParentChange ? Nesting::checkedParent(*this, value)
                                      : QGraphicsItemGroup::itemChange(change, value);
}

// --- size and place

void GroupItem::setItemRotation(double degrees)
{
    m_rotation = BasicConversions::normalizeAngle(degrees);
    turnAbout(sizeRect().center());
}

void GroupItem::turnAbout(const QPointF &centre)
{
    QTransform transform;
    transform.translate(centre.x(), centre.y());
    transform.rotate(m_rotation);
    transform.translate(-centre.x(), -centre.y());
    setTransform(transform);
}

Item *GroupItem::createItemCopy()
{
    auto copy = std::make_unique<GroupItem>();
    const QList<Members::Copy> members = Members::copiesOf(*this);
    QList<QGraphicsItem *> copies;
    for (const Members::Copy &member : members) {
        member.copy->setZValue(static_cast<double>(copies.size()));
        copies.append(member.copy);
    }
    copy->addToGroup(copies);
    copyItemProperties(copy.get(), true);
    // A new group begins at the corner of its members, which this one no longer has to do.
    for (const Members::Copy &member : members)
        copyPlace(*member.original, *member.copy);
    copy->m_storedChildrenCount = m_storedChildrenCount;
    copy->m_countInvisibleItems = m_countInvisibleItems;
    return copy.release();
}

void GroupItem::loadItemFromJSON(const QVariantMap &map, unsigned int version)
{
    Item::loadItemFromJSON(map, version);
}
