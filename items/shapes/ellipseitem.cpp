// SPDX-License-Identifier: BSD-3-Clause
#include "items/shapes/ellipseitem.h"

#include <QPainter>
#include <QPainterPath>

namespace {

QPainterPath ellipseIn(const QRectF &rect)
{
    QPainterPath path;
    path.addEllipse(rect);
    return path;
}

} // namespace

EllipseItem::EllipseItem()
{
    setItemShape(MobraTypes::EllipseShape);
    takeFirstLook();
    updateRect();
    setFlags(ItemIsMovable | ItemIsSelectable | ItemIsFocusable | ItemStacksBehindParent);
}

EllipseItem::~EllipseItem() = default;

QString EllipseItem::toDescriptionString() const
{
    return QStringLiteral("ellipse %1").arg(itemId());
}

QPainterPath EllipseItem::shape() const
{
    return ellipseIn(sizeRect());
}

QPainterPath EllipseItem::opaqueArea() const
{
    return itemIsOpaque() ? EllipseItem::shape() : QPainterPath();
}

void EllipseItem::paint(QPainter *painter, const QStyleOptionGraphicsItem *option, QWidget * /*widget*/)
{
    paintShape(painter, option, [this](QPainter &mirrored) { mirrored.drawEllipse(rect()); });
}

void EllipseItem::updateItemPen()
{
    FillableItem::updateItemPen();
    updateRect();
}

void EllipseItem::updateRect()
{
    setRect(insideOutline(getItemSize(), itemPen().width()));
    setItemScaleX(1.0);
    setItemScaleY(1.0);
    prepareGeometryChange();
}

void EllipseItem::updateItemSize(const QSizeF &size)
{
    FillableItem::updateItemSize(size);
    itemSizeChanged();
}

void EllipseItem::preparePrintImage()
{
    const ScaledDrawing draw = [this](QPainter &painter, double scaling, double penWidth) {
        painter.drawEllipse(insideOutline(getItemSize() * scaling, penWidth));
    };
    const ScaledDrawing drawArea = [this](QPainter &painter, double scaling, double /*penWidth*/) {
        // As a path: drawEllipse() covers other pixels along the edge than clipping to the ellipse does.
        painter.setPen(Qt::NoPen);
        painter.drawPath(ellipseIn(insideOutline(getItemSize() * scaling, 0.0)));
    };
    prepareShapeImage(draw, drawArea);
}

Item *EllipseItem::createItemCopy()
{
    auto copy = copyAs<EllipseItem>();
    copy->setRect(rect());
    return copy.release();
}
