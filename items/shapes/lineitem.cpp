// SPDX-License-Identifier: BSD-3-Clause
#include "items/shapes/lineitem.h"

#include "items/core/basicconversions.h"
#include "items/core/limits.h"
#include "items/core/penandbrushscope.h"
#include "items/core/record.h"

#include <QPainter>
#include <QPainterPath>

#include <algorithm>

namespace {

constexpr double leastLength = 1.0;
constexpr unsigned short leastPenWidth = 1;
constexpr double penMiterLimit = 2.0; // what the tips of the heads, at 60°, just need
constexpr unsigned int leftEnd = 0xF0;
constexpr unsigned int rightEnd = 0x0F;

} // namespace

LineItem::LineItem()
{
    setItemShape(MobraTypes::LineShape);
    LineItem::setItemLength(100.0);
    LineItem::updateItemPen();
    setFlags(ItemIsMovable | ItemIsSelectable | ItemIsFocusable | ItemClipsToShape | ItemStacksBehindParent);
}

LineItem::~LineItem() = default;

QString LineItem::toDescriptionString() const
{
    return QStringLiteral("line %1").arg(itemId());
}

QPainterPath LineItem::shape() const
{
    QPainterPath path;
    path.addRect(m_bounds);
    return path;
}

void LineItem::paint(QPainter *painter, const QStyleOptionGraphicsItem *option, QWidget * /*widget*/)
{
    {
        const PenAndBrushScope scope(*painter);
        const double length = Limits::geometry(line().length());
        painter->setPen(itemPen());
        painter->setBrush(Qt::NoBrush);
        painter->drawLine(QPointF(), QPointF(length, 0.0));
        if (m_arrows != MobraTypes::ArrowNone) {
            QPen solid = itemPen();
            solid.setStyle(Qt::SolidLine);
            painter->setPen(solid);
            m_decoration.paint(*painter, length);
        }
    }
    paintSelectionFrame(painter, option, m_bounds);
}

void LineItem::updateLineItem()
{
    m_decoration = LineDecoration(m_arrows, itemPen().width());
    const double length = line().length();
    storeItemSize(QSizeF(length, 0.0));
    m_bounds = m_decoration.boundsOf(Limits::geometry(length), m_penJoinStyle == Qt::MiterJoin);
    update();
}

void LineItem::setItemArrows(MobraTypes::ArrowStyle left, MobraTypes::ArrowStyle right)
{
    setItemArrows(static_cast<unsigned short>((left & leftEnd) | (right & rightEnd)));
}

void LineItem::setItemArrows(unsigned short arrows)
{
    replaceArrows(arrows);
}

bool LineItem::replaceArrows(unsigned int arrows)
{
    if (arrows == m_arrows)
        return false;
    m_arrows = static_cast<unsigned short>(arrows);
    updateLineItem();
    return true;
}

bool LineItem::setItemArrowLeft(MobraTypes::ArrowStyle style)
{
    return replaceArrows((m_arrows & rightEnd) | (style & leftEnd));
}

MobraTypes::ArrowStyle LineItem::getItemArrowLeft()
{
    return static_cast<MobraTypes::ArrowStyle>(m_arrows & leftEnd);
}

bool LineItem::setItemArrowRight(MobraTypes::ArrowStyle style)
{
    return replaceArrows((m_arrows & leftEnd) | (style & rightEnd));
}

MobraTypes::ArrowStyle LineItem::getItemArrowRight()
{
    return static_cast<MobraTypes::ArrowStyle>(m_arrows & rightEnd);
}

void LineItem::setLength(double length)
{
    setLine(QLineF(0.0, 0.0, length > leastLength ? length : leastLength, 0.0));
}

void LineItem::setItemLength(double length)
{
    setLength(length);
    updateLineItem();
}

QPointF LineItem::getItemPoint1() const
{
    return mapToScene(line().p1());
}

QPointF LineItem::getItemPoint2() const
{
    return mapToScene(line().p2());
}

void LineItem::setItemPoint1(const QPointF &point)
{
    runBetween(Limits::geometry(point), getItemPoint2());
}

void LineItem::setItemPoint2(const QPointF &point)
{
    runBetween(getItemPoint1(), Limits::geometry(point));
}

void LineItem::runBetween(const QPointF &sceneStart, const QPointF &sceneEnd)
{
    const QGraphicsItem *parent = parentItem();
    const QPointF start = parent ? parent->mapFromScene(sceneStart) : sceneStart;
    const QPointF end = parent ? parent->mapFromScene(sceneEnd) : sceneEnd;
    const QLineF wanted(start, end);
    const QPointF centre = m_bounds.center();
    setLength(wanted.length());
    m_rotation = BasicConversions::normalizeAngle(-wanted.angle());
    QTransform turned;
    turned.translate(centre.x(), centre.y());
    turned.rotate(m_rotation);
    turned.translate(-centre.x(), -centre.y());
    setItemTransform(turned);
    moveItem(pos() + start - mapToParent(line().p1()));
    updateLineItem();
}

void LineItem::setItemRotation(double degrees)
{
    m_rotation = BasicConversions::normalizeAngle(degrees);
    rotateAbout(m_bounds.center(), m_horizontalMirror ? m_rotation + 180.0 : m_rotation);
    updateLineItem();
}

void LineItem::setItemHorizontalMirror(bool mirror)
{
    ContouredItem::setItemHorizontalMirror(mirror);
    setItemRotation(getItemRotation());
}

void LineItem::setItemVerticalMirror(bool /*mirror*/) { }

bool LineItem::setItemSize(QSizeF size)
{
    if (size == getItemSize())
        return false;
    setItemLength(size.width());
    return true;
}

bool LineItem::setItemSize(QSizeF size, bool /*keepRatio*/, bool /*heightLeads*/)
{
    return setItemSize(size);
}

bool LineItem::setItemSize(QSizeF size, bool /*keepRatio*/, double /*minWidth*/, double /*minHeight*/,
    double /*maxWidth*/, double /*maxHeight*/, bool /*heightLeads*/, bool /*force*/)
{
    return setItemSize(size);
}

void LineItem::updateItemSize(const QSizeF &size)
{
    setItemLength(size.width());
}

void LineItem::setItemPenWidth(unsigned short newPenWidth)
{
    if (newPenWidth == m_penWidth)
        return;
    m_penWidth = std::clamp(newPenWidth, leastPenWidth, maxPenWidth);
    QPen pen = itemPen();
    pen.setWidth(m_penWidth);
    replacePen(pen);
}

void LineItem::setItemPenStyle(Qt::PenStyle style)
{
    if (style == m_penStyle)
        return;
    m_penStyle = style;
    QPen pen = itemPen();
    pen.setStyle(paintedPenStyle());
    replacePen(pen);
}

void LineItem::updateItemPen()
{
    replacePen(sharedPen(getItemPenColor(), m_penWidth, paintedPenStyle(), getItemPenCapStyle(),
        paintedPenJoinStyle(), penMiterLimit));
}

Item *LineItem::createItemCopy()
{
    auto copy = copyAs<LineItem>();
    copy->m_arrows = m_arrows;
    copy->setItemLength(getItemLength());
    return copy.release();
}

void LineItem::saveItemToData(QDataStream &stream)
{
    ContouredItem::saveItemToData(stream);
    Record::write(stream, getItemLength(), qint16(m_arrows), pos().x(), pos().y());
}

void LineItem::loadItemFromData(QDataStream &stream, unsigned int version)
{
    ContouredItem::loadItemFromData(stream, version);
    double length;
    qint16 arrows;
    QPointF position;
    Record::read(stream, std::tie(length, arrows, position.rx(), position.ry()));
    m_arrows = static_cast<unsigned short>(arrows);
    setItemLength(length);
    // A graphics item does not move to where it very nearly is: the first position must not show.
    moveItem(QPointF());
    moveItem(position);
}

QVariantMap LineItem::saveItemToJSON()
{
    return ContouredItem::saveItemToJSON();
}

void LineItem::loadItemFromJSON(const QVariantMap &map, unsigned int version)
{
    ContouredItem::loadItemFromJSON(map, version);
    updateItemPen(); // styles that no setter takes
    updateLineItem(); // the size, whose keys come after that of the length
}
