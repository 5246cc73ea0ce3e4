// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "items/core/itemproperties.h"
#include "items/style/fillableitem.h"

#include <QGraphicsEllipseItem>
#include <QObject>

/// The ellipse inscribed in the logical size, with its outline inside. Both scale factors stay 1: a new size
/// lays the ellipse out again.
class VX_EXPORT EllipseItem : public QObject, public QGraphicsEllipseItem, public FillableItem
{
    Q_OBJECT
    Q_INTERFACES(QGraphicsItem)
    VX_GEOMETRY_PROPERTIES
    VX_DATASOURCE_PROPERTIES
    VX_FILLED_SHAPE_PROPERTIES

public:
    EllipseItem();
    ~EllipseItem() override;

    // QGraphicsItem
    enum { Type = MobraTypes::EllipseShape };
    int type() const override { return Type; }
    QRectF boundingRect() const override { return sizeRect(); }
    QPainterPath shape() const override;
    QPainterPath opaqueArea() const override;
    void paint(QPainter *painter, const QStyleOptionGraphicsItem *option, QWidget *widget = nullptr) override;

    /// Fits the ellipse into the size so that the outline, its width rounded to a whole number, lies inside,
    /// and sets both scale factors to 1.
    void updateRect();

    // Item
    [[nodiscard]] Item *createItemCopy() override;
    QString toDescriptionString() const override;
    void updateItemSize(const QSizeF &size) override;

    // ContouredItem, FillableItem
    void updateItemPen() override;
    void preparePrintImage() override;

protected:
    void announceGeometryChange() override { prepareGeometryChange(); }
    void layOut() override { updateRect(); }
};
