// SPDX-License-Identifier: BSD-3-Clause
#include "items/shapes/pieitem.h"

#include "items/core/record.h"

#include <QPainter>
#include <QPainterPath>

namespace {

constexpr int unitsPerDegree = 16;
constexpr int quarterTurn = 90 * unitsPerDegree;

} // namespace

PieItem::PieItem()
{
    setItemShape(MobraTypes::PieShape);
    setStartAngle(quarterTurn);
    setSpanAngle(3 * quarterTurn);
    // Stored only: the pen takes them at its next update.
    m_penCapStyle = Qt::FlatCap;
    m_penJoinStyle = Qt::MiterJoin;
}

PieItem::~PieItem() = default;

QString PieItem::toDescriptionString() const
{
    return QStringLiteral("pie %1").arg(itemId());
}

bool PieItem::setDrawCircle(bool drawCircle)
{
    if (drawCircle == m_drawCircle)
        return false;
    m_drawCircle = drawCircle;
    updateRect();
    return true;
}

void PieItem::setStartPieAngle(int angle)
{
    setStartAngle(angle);
}

void PieItem::setSpanPieAngle(int angle)
{
    setSpanAngle(angle);
}

QPainterPath PieItem::wedgeIn(const QRectF &ellipse) const
{
    QPainterPath path(ellipse.center());
    path.arcTo(ellipse, double(startAngle()) / unitsPerDegree, double(spanAngle()) / unitsPerDegree);
    path.closeSubpath();
    return path;
}

QPainterPath PieItem::opaqueArea() const
{
    return itemIsOpaque() ? wedgeIn(rect()) : QPainterPath();
}

void PieItem::paint(QPainter *painter, const QStyleOptionGraphicsItem *option, QWidget * /*widget*/)
{
    // Unlike other shapes a pie stays within its frame and mirrors it, so it does not paint through
    // paintShape().
    const QRectF bounds = boundingRect();
    painterMirrorTransform(painter, bounds.width(), bounds.height());
    painter->setClipRect(bounds);
    painter->setPen(itemPen());
    if (m_drawCircle) {
        painter->setBrush(Qt::NoBrush);
        painter->drawEllipse(rect());
    }
    painter->setBrush(itemBrush());
    painter->drawPath(wedgeIn(rect()));
    paintSelectionFrame(painter, option, bounds);
    painter->restore();
}

void PieItem::preparePrintImage()
{
    const ScaledDrawing draw = [this](QPainter &painter, double scaling, double penWidth) {
        const QRectF ellipse = insideOutline(getItemSize() * scaling, penWidth);
        if (m_drawCircle) {
            const QBrush fill = painter.brush();
            painter.setBrush(Qt::NoBrush);
            painter.drawEllipse(ellipse);
            painter.setBrush(fill);
        }
        painter.drawPath(wedgeIn(ellipse));
    };
    const ScaledDrawing drawArea = [this](QPainter &painter, double scaling, double penWidth) {
        painter.setPen(Qt::NoPen);
        painter.drawPath(wedgeIn(insideOutline(getItemSize() * scaling, penWidth)));
    };
    prepareShapeImage(draw, drawArea);
}

Item *PieItem::createItemCopy()
{
    auto copy = copyAs<PieItem>();
    copy->setStartAngle(startAngle());
    copy->setSpanAngle(spanAngle());
    copy->setRect(rect());
    copy->setDrawCircle(m_drawCircle);
    return copy.release();
}

void PieItem::saveItemToData(QDataStream &stream)
{
    Record::write(stream, qint32(startAngle()), qint32(spanAngle()), m_drawCircle);
    EllipseItem::saveItemToData(stream);
}

void PieItem::loadItemFromData(QDataStream &stream, unsigned int version)
{
    qint32 start;
    qint32 span;
    Record::read(stream, std::tie(start, span, m_drawCircle));
    setStartAngle(start);
    setSpanAngle(span);
    EllipseItem::loadItemFromData(stream, version);
}
