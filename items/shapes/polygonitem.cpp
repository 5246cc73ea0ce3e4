// SPDX-License-Identifier: BSD-3-Clause
#include "items/shapes/polygonitem.h"

#include "items/core/limits.h"
#include "platform/json/qobjecthelper.h"

#include <QPainter>
#include <QPainterPath>
#include <QTransform>

#include <algorithm>
#include <utility>

namespace {

bool isWithinLimits(const QPointF &point)
{
    return Limits::geometry(point) == point;
}

QPolygonF withinLimits(QPolygonF polygon)
{
    // Most are, and a polygon that is not written to stays shared.
    if (!std::ranges::all_of(std::as_const(polygon), isWithinLimits))
        std::ranges::transform(
            polygon, polygon.begin(), [](const QPointF &point) { return Limits::geometry(point); });
    return polygon;
}

} // namespace

PolygonItem::PolygonItem()
{
    takeFirstLook();
    setFlags(ItemIsMovable | ItemIsSelectable | ItemIsFocusable | ItemStacksBehindParent);
}

PolygonItem::~PolygonItem() = default;

void PolygonItem::initialize(MobraTypes::ShapeType shape)
{
    setItemShape(shape);
    setPolygonShape();
    adjustForPen();
}

void PolygonItem::setReference(const QPolygonF &points, const QSizeF &size, double bevelCut, double otherCut)
{
    m_vertexCount = points.size();
    m_originalPolygon = points;
    m_resizedPolygon = points;
    setOutlines({ points, points });
    storeItemSize(size);
    m_overshoot = { 1.0, 1.0, 1.0, 1.0, 1.0, 1.0, 0.0, bevelCut, otherCut };
    calculateOvershoot();
}

QPainterPath PolygonItem::shape() const
{
    QPainterPath path;
    path.addPolygon(m_shapePolygon);
    return path;
}

QPainterPath PolygonItem::opaqueArea() const
{
    return itemIsOpaque() ? PolygonItem::shape() : QPainterPath();
}

void PolygonItem::paint(QPainter *painter, const QStyleOptionGraphicsItem *option, QWidget * /*widget*/)
{
    paintShape(painter, option, [this](QPainter &mirrored) { mirrored.drawConvexPolygon(polygon()); });
}

void PolygonItem::setItemSizeLocal()
{
    m_resizedPolygon = QTransform::fromScale(getItemScaleX(), getItemScaleY()).map(m_originalPolygon);
    setPolygon(withinLimits(m_resizedPolygon));
    updateItemBrush();
    adjustForPen();
    prepareGeometryChange();
}

void PolygonItem::layOut()
{
    calculateOvershoot();
    setItemSizeLocal();
}

void PolygonItem::itemSizeChanged()
{
    const QSizeF reference = m_originalPolygon.boundingRect().size();
    setItemScaleX(Limits::usableScale(getItemScaleX(), getItemWidth(), reference.width()));
    setItemScaleY(Limits::usableScale(getItemScaleY(), getItemHeight(), reference.height()));
    FillableItem::itemSizeChanged();
}

void PolygonItem::updateItemSize(const QSizeF &size)
{
    applySize(size);
}

void PolygonItem::setOutlines(const Outlines &outlines)
{
    setPolygon(withinLimits(outlines.drawn));
    m_shapePolygon = withinLimits(outlines.shape);
}

PolygonItem::JoinClass PolygonItem::joinClass() const
{
    switch (m_penJoinStyle) {
    case Qt::MiterJoin:
        return Mitered;
    case Qt::BevelJoin:
        return Beveled;
    default:
        return OtherwiseJoined;
    }
}

void PolygonItem::insetOutlines(double measure, const Inset &inset)
{
    const bool extended = getItemWidth() != 0.0 && getItemHeight() != 0.0;
    if (measure == 0.0 || !extended || m_resizedPolygon.size() != m_vertexCount)
        setOutlines({ m_resizedPolygon, m_resizedPolygon });
    else
        setOutlines(inset(m_resizedPolygon, measure, joinClass()));
}

QPointF PolygonItem::grown(const QPointF &point, double width, double height) const
{
    const QPointF centre(getItemWidth() / 2.0, getItemHeight() / 2.0);
    const QPointF arm = point - centre;
    return centre
        + QPointF(arm.x() * (getItemWidth() + width) / getItemWidth(),
            arm.y() * (getItemHeight() + height) / getItemHeight());
}

QPolygonF PolygonItem::grown(const QPolygonF &polygon, double width, double height) const
{
    QPolygonF larger;
    for (const QPointF &point : polygon)
        larger << grown(point, width, height);
    return larger;
}

void PolygonItem::preparePrintImage()
{
    const ScaledDrawing draw = [this](QPainter &painter, double scaling, double /*penWidth*/) {
        painter.drawConvexPolygon(withinLimits(QTransform::fromScale(scaling, scaling).map(polygon())));
    };
    const ScaledDrawing drawArea = [&draw](QPainter &painter, double scaling, double penWidth) {
        painter.setPen(Qt::NoPen);
        draw(painter, scaling, penWidth);
    };
    prepareShapeImage(draw, drawArea);
}

QVariantMap PolygonItem::saveItemToJSON()
{
    return QJson::QObjectHelper::qobject2qvariant(this);
}
