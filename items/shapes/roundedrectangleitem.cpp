// SPDX-License-Identifier: BSD-3-Clause
#include "items/shapes/roundedrectangleitem.h"

#include "items/core/limits.h"
#include "items/core/record.h"

#include <QPainter>
#include <QPainterPath>

RoundedRectangleItem::RoundedRectangleItem()
{
    setItemShape(MobraTypes::RoundedRectangleShape);
}

RoundedRectangleItem::~RoundedRectangleItem() = default;

QString RoundedRectangleItem::toDescriptionString() const
{
    return QStringLiteral("rounded rectangle %1").arg(itemId());
}

void RoundedRectangleItem::setRoundingRadiusX(double radius)
{
    m_radiusX = radius;
    update();
}

void RoundedRectangleItem::setRoundingRadiusY(double radius)
{
    m_radiusY = radius;
    update();
}

QPainterPath RoundedRectangleItem::shape() const
{
    QPainterPath path;
    path.addRoundedRect(rect(), Limits::geometry(m_radiusX), Limits::geometry(m_radiusY));
    return path;
}

QPainterPath RoundedRectangleItem::opaqueArea() const
{
    return itemIsOpaque() ? RoundedRectangleItem::shape() : QPainterPath();
}

void RoundedRectangleItem::paint(
    QPainter *painter, const QStyleOptionGraphicsItem *option, QWidget * /*widget*/)
{
    paintShape(painter, option, [this](QPainter &mirrored) {
        mirrored.drawRoundedRect(rect(), Limits::geometry(m_radiusX), Limits::geometry(m_radiusY));
    });
}

void RoundedRectangleItem::preparePrintImage()
{
    const ScaledDrawing draw = [this](QPainter &painter, double scaling, double penWidth) {
        painter.drawRoundedRect(insideOutline(getItemSize() * scaling, penWidth),
            Limits::geometry(m_radiusX * scaling), Limits::geometry(m_radiusY * scaling));
    };
    prepareShapeImage(draw, draw);
}

Item *RoundedRectangleItem::createItemCopy()
{
    auto copy = copyAs<RoundedRectangleItem>();
    copy->setRect(rect());
    copy->setRoundingRadiusX(m_radiusX);
    copy->setRoundingRadiusY(m_radiusY);
    return copy.release();
}

void RoundedRectangleItem::saveItemToData(QDataStream &stream)
{
    Record::write(stream, m_radiusX, m_radiusY);
    RectangleItem::saveItemToData(stream);
}

void RoundedRectangleItem::loadItemFromData(QDataStream &stream, unsigned int version)
{
    Record::read(stream, std::tie(m_radiusX, m_radiusY));
    RectangleItem::loadItemFromData(stream, version);
}
