// SPDX-License-Identifier: BSD-3-Clause
#include "items/containers/layeritem.h"

#include "items/containers/members.h"
#include "items/containers/nesting.h"

#include <QPainterPath>

LayerItem::LayerItem()
{
    setItemShape(MobraTypes::LayerShape);
    setFlags(ItemStacksBehindParent | ItemHasNoContents);
}

LayerItem::~LayerItem() = default;

QString LayerItem::toDescriptionString() const
{
    return QStringLiteral("Layer item %1").arg(itemId());
}

QPainterPath LayerItem::shape() const
{
    return {};
}

void LayerItem::paint(
    QPainter * /*painter*/, const QStyleOptionGraphicsItem * /*option*/, QWidget * /*widget*/)
{
}

int LayerItem::getChildrenCount() const
{
    return static_cast<int>(childItems().size());
}

int LayerItem::childrenOfLayerAndGroupCount() const
{
    const QList<QGraphicsItem *> members = childItems();
    qsizetype count = members.size();
    for (const QGraphicsItem *member : members) {
        if (member->type() == MobraTypes::GroupShape)
            count += member->childItems().size();
    }
    return static_cast<int>(count);
}

bool LayerItem::setItemSize(QSizeF /*size*/)
{
    return false;
}

bool LayerItem::setItemSize(QSizeF /*size*/, bool /*keepRatio*/, bool /*heightLeads*/)
{
    return false;
}

bool LayerItem::setItemSize(QSizeF /*size*/, bool /*keepRatio*/, double /*minWidth*/, double /*minHeight*/,
    double /*maxWidth*/, double /*maxHeight*/, bool /*heightLeads*/, bool /*force*/)
{
    return false;
}

void LayerItem::updateItemSize(const QSizeF & /*size*/) { }

bool LayerItem::resetItemColors(const QColor & /*printColor*/, bool /*keepBlack*/, bool /*keepOthers*/)
{
    return false;
}

bool LayerItem::resetItemColorsNegative(const QColor & /*printColor*/)
{
    return false;
}

void LayerItem::saveItemToData(QDataStream & /*stream*/) { }

void LayerItem::loadItemFromData(QDataStream & /*stream*/, unsigned int /*version*/) { }

void LayerItem::loadItemFromJSON(const QVariantMap & /*map*/, unsigned int /*version*/) { }

Item *LayerItem::createItemCopy()
{
    auto copy = std::make_unique<LayerItem>();
    copy->setZValue(zValue());
    copy->setItemId(itemId());
    copy->setVisible(isVisible());
    for (const Members::Copy &member : Members::copiesOf(*this))
        member.copy->setParentItem(copy.get());
    return copy.release();
}

QVariant LayerItem::itemChange(GraphicsItemChange change, const QVariant &value)
{
    return change == ItemParentChange ? Nesting::checkedParent(*this, value)
                                      : QGraphicsItem::itemChange(change, value);
}
