// SPDX-License-Identifier: BSD-3-Clause
#include "items/shapes/rectangleitem.h"

#include "items/core/itemcolors.h"

#include <QPainter>
#include <QPainterPath>

namespace {

QPainterPath pathOf(const QRectF &rect)
{
    QPainterPath path;
    path.addRect(rect);
    return path;
}

} // namespace

RectangleItem::RectangleItem()
{
    setItemShape(MobraTypes::RectangleShape);
    takeFirstLook();
    updateRect();
    setFlags(ItemIsMovable | ItemIsSelectable | ItemIsFocusable | ItemStacksBehindParent);
}

RectangleItem::~RectangleItem() = default;

QString RectangleItem::toDescriptionString() const
{
    return QStringLiteral("rectangle %1").arg(itemId());
}

QPainterPath RectangleItem::shape() const
{
    return pathOf(sizeRect());
}

QPainterPath RectangleItem::opaqueArea() const
{
    return itemIsOpaque() ? pathOf(sizeRect()) : QPainterPath();
}

void RectangleItem::paint(QPainter *painter, const QStyleOptionGraphicsItem *option, QWidget * /*widget*/)
{
    paintShape(painter, option, [this](QPainter &mirrored) { mirrored.drawRect(rect()); });
}

void RectangleItem::setItemPenColor(const QColor &color)
{
    FillableItem::setItemPenColor(color);
    if (m_colorCopies)
        m_colorCopies->pen = color;
}

void RectangleItem::setItemFillColor(const QColor &color)
{
    FillableItem::setItemFillColor(color);
    if (m_colorCopies)
        m_colorCopies->fill = color;
}

void RectangleItem::copyPrivatePropeties(const QColor &fill, const QColor &pen)
{
    const bool differ = fill != getItemFillColor() || pen != getItemPenColor();
    m_colorCopies = differ ? std::make_unique<ColorCopies>(ColorCopies { fill, pen }) : nullptr;
}

void RectangleItem::updateRect()
{
    setRect(insideOutline(getItemSize(), itemPen().widthF()));
    setItemScaleX(1.0);
    setItemScaleY(1.0);
    prepareGeometryChange();
}

void RectangleItem::updateItemSize(const QSizeF &size)
{
    FillableItem::updateItemSize(size);
    itemSizeChanged();
}

bool RectangleItem::resetItemPenColorsNegative(const QColor &printColor)
{
    const QColor color = getItemPenColor();
    return reducePen(penIsVisible() && color != printColor && color != ItemColors::transparent);
}

void RectangleItem::preparePrintImage()
{
    const ScaledDrawing draw = [this](QPainter &painter, double scaling, double penWidth) {
        painter.drawRect(insideOutline(getItemSize() * scaling, penWidth));
    };
    prepareShapeImage(draw, draw);
}

Item *RectangleItem::createItemCopy()
{
    auto copy = copyAs<RectangleItem>();
    copy->setRect(rect());
    if (m_colorCopies)
        copy->copyPrivatePropeties(m_colorCopies->fill, m_colorCopies->pen);
    return copy.release();
}

void RectangleItem::loadItemFromData(QDataStream &stream, unsigned int version)
{
    FillableItem::loadItemFromData(stream, version);
    m_colorCopies.reset();
}

void RectangleItem::loadItemFromJSON(const QVariantMap &map, unsigned int version)
{
    FillableItem::loadItemFromJSON(map, version);
    m_colorCopies.reset();
}
