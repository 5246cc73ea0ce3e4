// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "items/core/item.h"
#include "items/core/itemproperties.h"

#include <QGraphicsItemGroup>
#include <QList>
#include <QObject>

/// Binds items into a unit that is selected, moved, resized and turned as one. The group draws nothing but
/// its selection frame, and neither its record nor its map holds the members: the host saves each as an item
/// of its own and makes the group again with addToGroup().
class VX_EXPORT GroupItem : public QObject, public QGraphicsItemGroup, public Item
{
    Q_OBJECT
    Q_INTERFACES(QGraphicsItem)
    VX_SHAPE_PROPERTY
    Q_PROPERTY(int childrenCount READ getChildrenCount WRITE setChildrenCount)
    VX_IDENTITY_PROPERTIES
    VX_ROTATION_PROPERTIES
    VX_SIZE_PROPERTIES
    VX_TRANSFORM_PROPERTY
    VX_OVERPRINT_PROPERTY
    VX_DATASOURCE_PROPERTIES
    VX_POSITION_PROPERTIES

public:
    GroupItem();
    ~GroupItem() override;

    // QGraphicsItem
    /// Qt does not know the type for that of a group: QGraphicsItem::group() of a member is null.
    enum { Type = MobraTypes::GroupShape };
    int type() const override { return Type; }
    /// The rectangle around the members.
    QRectF boundingRect() const override;
    void paint(QPainter *painter, const QStyleOptionGraphicsItem *option, QWidget *widget = nullptr) override;

    // Members
    /// How many items the group has; without hidden ones if those are not to be counted.
    int getChildrenCount() const;
    bool getCountInvisibleItems() const { return m_countInvisibleItems; }
    void setCountInvisibleItems(bool count) { m_countInvisibleItems = count; }
    /// The number that setChildrenCount() was given, 0 for a new group.
    int getStoredChildrenCount() const { return m_storedChildrenCount; }

    /// Takes the items in, in the order of their z values, and selects the group instead of them. They stay
    /// where they are on the page, and the origin of a group without members moves to their top left corner.
    ///
    /// Of items with one z value only the last joins: give them values of their own first. All members end
    /// with z 0. A group in no scene takes them out of theirs, until it is added to it. Items that the group
    /// lies in, or that would nest deeper than Limits::MaxNesting, do not join. What turns an item on the
    /// page by way of its parents no longer does, or does so anew: its own rotation makes up for it.
    void addToGroup(const QList<QGraphicsItem *> &items);
    /// Takes in one item as QGraphicsItemGroup does: it keeps its z value, and the group its origin, size and
    /// selection. A list of one item in braces means this form, too.
    void addToGroup(QGraphicsItem *item);
    /// Gives all members to the group's parent, in place: turned by the group's rotation, which their own
    /// rotations include from then on.
    void removeFromGroup();
    /// Gives up one item as QGraphicsItemGroup does: the group's rotation goes into its transform only.
    void removeFromGroup(QGraphicsItem *item);

    // Item
    /// Resizes all members by one factor, that of the group's width. Only a width that stays within 0.0005
    /// leaves the height to lead; ratio and leading side of the callers are ignored. Members whose sides
    /// would become shorter than 1 let the group become no smaller than that if they can, and give way where
    /// the size asked for is smaller still. Afterwards the group has the size that its members have, with
    /// both scales at 1, and is turned about the centre of the size asked for. False, changing nothing, for
    /// the present size, where nothing can shrink, and without members.
    bool setItemSize(QSizeF size) override;
    bool setItemSize(QSizeF size, bool keepRatio, bool heightLeads) override;
    bool setItemSize(QSizeF size, bool keepRatio, double minWidth, double minHeight, double maxWidth,
        double maxHeight, bool heightLeads, bool force) override;
    /// The same, however small the members become.
    void updateItemSize(const QSizeF &size) override;
    /// Turns the group about the centre of its size; its position stays as it is.
    void setItemRotation(double degrees) override;
    /// A group of copies of the members that are items, each where its original lies in this group.
    [[nodiscard]] Item *createItemCopy() override;
    QString toDescriptionString() const override;
    bool resetItemColors(const QColor &printColor, bool keepBlack, bool keepOthers) override;
    bool resetItemColorsNegative(const QColor &printColor) override;
    QVariantMap saveItemToJSON() override { return Item::saveItemToJSON(); }
    void loadItemFromJSON(const QVariantMap &map, unsigned int version) override;

public Q_SLOTS:
    /// Notes a number for the host; the group counts for itself.
    void setChildrenCount(int newChildrenCount) { m_storedChildrenCount = newChildrenCount; }

protected:
    void announceGeometryChange() override { prepareGeometryChange(); }
    bool applySize(const QSizeF &size) override;
    QVariant itemChange(GraphicsItemChange change, const QVariant &value) override;

private:
    bool canTake(const QGraphicsItem *item) const;
    void take(QGraphicsItem &graphics);
    void release(QGraphicsItem &member);
    /// Turns about the centre of the size, unless the transform is another one than that of the rotation: a
    /// group that has left another got one that moves nothing.
    void restoreRotation();
    /// Members have joined: the group lies where it was, and turns about the centre of its new size.
    void turnAboutNewCentre();
    bool keepsWidth(const QSizeF &size) const;
    /// Brings the members to the scale that the group has been given, within what they can shrink by.
    bool updateSize(bool checkShrinking);
    /// Lowers the limit to the smallest scale at which no side of a member is shorter than 1. False, leaving
    /// it, without such a scale.
    bool determineMaxShrink(double &limit) const;
    double leastScale() const;
    void scaleMembers(double scale, bool shrinking);
    bool refuseSize();
    void turnAbout(const QPointF &centre);

    int m_storedChildrenCount = 0;
    bool m_countInvisibleItems = true;
    mutable bool m_measuring = false;
};
