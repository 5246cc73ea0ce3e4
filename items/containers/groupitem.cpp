// SPDX-License-Identifier: BSD-3-Clause
#include "items/containers/groupitem.h"

#include "items/containers/members.h"
#include "items/containers/nesting.h"
#include "items/core/basicconversions.h"
#include "items/core/limits.h"
#include "items/core/resizerotatedhelper.h"

#include <QGraphicsScene>
#include <QScopedValueRollback>
#include <QtMath>

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
    Members::place(item, item.pos() + difference);
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

/// How far a transform turns, in degrees.
double angleOf(const QTransform &transform)
{
    return qRadiansToDegrees(std::atan2(transform.m12(), transform.m11()));
}

/// Adds to the rotation that the item says it has; its transform has been turned already.
void turnNominally(Item &item, double degrees)
{
    item.copyPrivatePropeties(BasicConversions::normalizeAngle(item.getItemRotation() + degrees),
        item.getItemSize(), item.getItemScaleX(), item.getItemScaleY(), false, item.getDatasourceId(),
        item.getDatasourceField());
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

/// Sides below this no member is asked to have while it can shrink the less.
constexpr double leastSide = 1.0;

bool isUsableScale(double scale)
{
    return std::isfinite(scale) && scale > 0.0;
}

/// Resizes a member of a group that shrinks.
void shrink(Item &member, QSizeF size)
{
    const bool narrow = size.width() < leastSide;
    const bool low = !narrow && size.height() < leastSide;
    if (narrow)
        size.setWidth(leastSide);
    else if (low)
        size.setHeight(leastSide);
    member.setItemSize(size, true, low);
}

/// Lays a member's copy in the group's copy where the member lies in the group.
void copyPlace(const QGraphicsItem &member, QGraphicsItem &copy)
{
    copy.setTransform(member.transform());
    Members::place(copy, member.pos());
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

QRectF GroupItem::boundingRect() const
{
    // Qt keeps the children's bounds within those of an item whose flags say that it clips its children.
    if (m_measuring) {
        constexpr double most = Limits::MaxGeometry;
        return QRectF(-most, -most, 2 * most, 2 * most);
    }
    const QScopedValueRollback measuring(m_measuring, true);
    return childrenBoundingRect();
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
    turnAboutNewCentre();
}

void GroupItem::turnAboutNewCentre()
{
    const QPointF place = mapToParent(QPointF());
    restoreRotation();
    Members::place(*this, pos() + place - mapToParent(QPointF()));
}

void GroupItem::addToGroup(QGraphicsItem *item)
{
    if (canTake(item))
        take(*item);
}

void GroupItem::take(QGraphicsItem &graphics)
{
    graphics.setSelected(false);
    const QTransform before = graphics.transform();
    leaveOtherScene(graphics, scene());
    QGraphicsItemGroup::addToGroup(&graphics);
    const QTransform after = graphics.transform();
    auto *item = dynamic_cast<Item *>(&graphics);
    if (item && !areParallel(before, after))
        turnNominally(*item, angleOf(after) - angleOf(before));
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
        turnNominally(*item, m_rotation);
    if (auto *group = dynamic_cast<GroupItem *>(&member))
        group->restoreRotation();
    if (auto *helper = dynamic_cast<ResizeRotatedHelper *>(&member); helper && item) {
        helper->fixPositionOnUngroup(&member);
        restoreTransform(member, *helper, *item, turned);
    }
    Members::place(member, member.pos() + place - member.mapToParent(QPointF()));
}

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

bool GroupItem::keepsWidth(const QSizeF &size) const
{
    constexpr double epsilon = 0.0005;
    return BasicConversions::almostEqual(size.width(), getItemWidth(), epsilon);
}

bool GroupItem::setItemSize(QSizeF size)
{
    return Item::setItemSize(size, true, keepsWidth(size));
}

bool GroupItem::setItemSize(QSizeF size, bool /*keepRatio*/, bool /*heightLeads*/)
{
    return setItemSize(size);
}

bool GroupItem::setItemSize(QSizeF size, bool /*keepRatio*/, double minWidth, double minHeight,
    double maxWidth, double maxHeight, bool /*heightLeads*/, bool force)
{
    return Item::setItemSize(size, true, minWidth, minHeight, maxWidth, maxHeight, keepsWidth(size), force);
}

bool GroupItem::applySize(const QSizeF &size)
{
    if (childItems().isEmpty())
        return false;
    setItemScaleX(1.0);
    setItemScaleY(1.0);
    Item::applySize(size);
    return updateSize(true);
}

void GroupItem::updateItemSize(const QSizeF &size)
{
    const double scale = size.width() / getItemWidth();
    if (childItems().isEmpty() || !isUsableScale(scale))
        return;
    setItemScaleX(scale);
    storeItemSize(size);
    updateSize(false);
}

bool GroupItem::updateSize(bool checkShrinking)
{
    constexpr double noLimit = 1000000.0;
    constexpr double noChange = 1e-12;
    constexpr double tolerance = 0.001;
    const QSizeF wanted = getItemSize();
    double scale = getItemScaleX();
    if (!isUsableScale(scale))
        return refuseSize();
    const bool shrinking = checkShrinking && (scale < 1.0 || getItemScaleY() < 1.0);
    double limit = noLimit;
    if (shrinking && determineMaxShrink(limit)) {
        scale = std::max(scale, limit);
        if (std::abs(scale - 1.0) <= noChange)
            return refuseSize();
    }
    scaleMembers(scale, shrinking);
    setItemScaleX(1.0);
    setItemScaleY(1.0);
    turnAbout(sizeRect().center());
    const QSizeF size = childrenBoundingRect().size();
    storeItemSize(size);
    const double rest = wanted.width() / size.width();
    if (!shrinking || BasicConversions::almostEqual(size, wanted, tolerance) || !isUsableScale(rest))
        return true;
    // Once and no more: without a check nothing counts as shrinking.
    setItemScaleX(rest);
    setItemScaleY(rest);
    storeItemSize(wanted);
    return updateSize(false);
}

bool GroupItem::determineMaxShrink(double &limit) const
{
    const double scale = leastScale();
    if (scale == 0.0)
        return false;
    limit = std::min({ limit, scale, 1.0 });
    return true;
}

/// The scale at which the first side of a member becomes as short as can be, 0 if there are no sides. The
/// members of groups in the group count as its own: what one refuses, the rest must not go on with.
double GroupItem::leastScale() const
{
    double least = 0.0;
    for (const QGraphicsItem *member : childItems()) {
        const auto *item = dynamic_cast<const Item *>(member);
        const QSizeF size = item ? item->getItemSize() : QSizeF();
        if (size.width() > 0.0)
            least = std::max(least, leastSide / size.width());
        if (size.height() > 0.0)
            least = std::max(least, leastSide / size.height());
        if (const auto *group = dynamic_cast<const GroupItem *>(member))
            least = std::max(least, group->leastScale());
    }
    return least;
}

void GroupItem::scaleMembers(double scale, bool shrinking)
{
    for (QGraphicsItem *member : childItems()) {
        const QPointF place = member->mapToParent(QPointF());
        auto *item = dynamic_cast<Item *>(member);
        if (item && shrinking)
            shrink(*item, item->getItemSize() * scale);
        else if (item)
            item->updateItemSize(item->getItemSize() * scale);
        // Members may move themselves when they are resized: all places grow from the group's origin.
        Members::place(*member, member->pos() + scale * place - member->mapToParent(QPointF()));
    }
}

/// Has the group as large as its members are.
bool GroupItem::refuseSize()
{
    setItemScaleX(1.0);
    setItemScaleY(1.0);
    storeItemSize(childrenBoundingRect().size());
    return false;
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
