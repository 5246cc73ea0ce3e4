// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "items/core/item.h"
#include "items/core/itemproperties.h"

#include <QGraphicsItem>
#include <QObject>

/// Holds the items of one layer of a design: gives them a parent, a z value and a count, and shows and
/// records nothing itself. Its members behave as if they had no parent.
class VX_EXPORT LayerItem : public QObject, public QGraphicsItem, public Item
{
    Q_OBJECT
    Q_INTERFACES(QGraphicsItem)
    VX_SHAPE_PROPERTY
    Q_PROPERTY(int childrenCount READ getChildrenCount)

public:
    LayerItem();
    ~LayerItem() override;

    // QGraphicsItem
    enum { Type = MobraTypes::LayerShape };
    int type() const override { return Type; }
    QRectF boundingRect() const override { return {}; }
    QPainterPath shape() const override;
    void paint(QPainter *painter, const QStyleOptionGraphicsItem *option, QWidget *widget = nullptr) override;

    // Members
    /// How many items the layer has, hidden ones included.
    int getChildrenCount() const;
    /// The same and the members of groups among them; not those of groups in groups.
    int childrenOfLayerAndGroupCount() const;
    void setLayerZValue(double z) { setItemZValue(z); }

    // Item
    /// A layer has no size: all forms are refused.
    bool setItemSize(QSizeF size) override;
    bool setItemSize(QSizeF size, bool keepRatio, bool heightLeads) override;
    bool setItemSize(QSizeF size, bool keepRatio, double minWidth, double minHeight, double maxWidth,
        double maxHeight, bool heightLeads, bool force) override;
    void updateItemSize(const QSizeF &size) override;
    /// A layer of the same id, z value and visibility with copies of the members that are items.
    [[nodiscard]] Item *createItemCopy() override;
    QString toDescriptionString() const override;
    bool resetItemColors(const QColor &printColor, bool keepBlack, bool keepOthers) override;
    bool resetItemColorsNegative(const QColor &printColor) override;
    void saveItemToData(QDataStream &stream) override;
    void loadItemFromData(QDataStream &stream, unsigned int version) override;
    QVariantMap saveItemToJSON() override { return Item::saveItemToJSON(); }
    void loadItemFromJSON(const QVariantMap &map, unsigned int version) override;

protected:
    void announceGeometryChange() override { prepareGeometryChange(); }
    QVariant itemChange(GraphicsItemChange change, const QVariant &value) override;
};
