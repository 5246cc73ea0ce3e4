// SPDX-License-Identifier: BSD-3-Clause
#include "items/core/item.h"

#include "items/core/basicconversions.h"
#include "items/core/itemcolors.h"
#include "items/core/limits.h"
#include "items/core/safeimage.h"

#include <QGraphicsItem>
#include <QGraphicsPixmapItem>
#include <QGraphicsScene>
#include <QPainter>
#include <QPalette>
#include <QStyleOptionGraphicsItem>

#include <algorithm>
#include <cmath>
#include <utility>

namespace {

/// value within [least, most]; the lower limit is tested first, so limits in the wrong order are no error.
double limited(double value, double least, double most)
{
    return value < least ? least : std::min(value, most);
}

/// The side that follows in a resize that keeps the ratio. Without a ratio to keep, the requested side
/// stands.
double followingSide(double oldSide, double oldLeading, double leading, double requested)
{
    return qFuzzyIsNull(oldLeading) ? requested : oldSide / oldLeading * leading;
}

void multiplyScale(double &scale, double newSide, double oldSide)
{
    if (!qFuzzyIsNull(oldSide))
        scale *= newSide / oldSide;
}

/// Takes an item out of its parent without moving it on the page.
void detach(QGraphicsItem &item)
{
    if (!item.parentItem())
        return;
    const QPointF position = item.scenePos();
    item.setParentItem(nullptr);
    item.setPos(position);
}

} // namespace

Item::Item()
{
    m_width = 100.0;
    m_height = 100.0;
}

Item::~Item() = default;

QGraphicsItem *Item::graphicsItem() const
{
    // Every operation on the item's place asks for it, and the cast takes longer than most of them.
    if (!m_graphicsItem)
        m_graphicsItem = dynamic_cast<QGraphicsItem *>(const_cast<Item *>(this));
    return m_graphicsItem;
}

void Item::setItemFlags(MobraTypes::Flags flag, bool on)
{
    m_flags = on ? m_flags | flag : m_flags & ~static_cast<unsigned int>(flag);
}

QString Item::printItemFlags() const
{
    return QString::number(m_flags, 2);
}

unsigned int Item::itemQFlags() const
{
    const QGraphicsItem *item = graphicsItem();
    return item ? static_cast<unsigned int>(item->flags().toInt()) : 0U;
}

void Item::setItemQFlags(unsigned int flags)
{
    if (QGraphicsItem *item = graphicsItem())
        item->setFlags(QGraphicsItem::GraphicsItemFlags::fromInt(static_cast<int>(flags)));
}

Item::Rare &Item::rare()
{
    if (!m_rare)
        m_rare = std::make_unique<Rare>();
    return *m_rare;
}

const Item::Rare &Item::rare() const
{
    static const Rare unused;
    return m_rare ? *m_rare : unused;
}

void Item::setBinding(const Binding &binding)
{
    const bool bound = binding.id != Binding().id || !binding.field.isNull();
    if (bound || m_rare)
        rare().binding = binding;
}

void Item::lockBinding(MobraTypes::Flags flag, bool on)
{
    setItemFlags(flag, on);
    if (on)
        rare().savedBinding = std::exchange(rare().binding, Binding());
    else
        rare().binding = rare().savedBinding;
}

void Item::setItemAsReadOnly(bool on)
{
    lockBinding(MobraTypes::FlagReadOnly, on);
}

void Item::setItemAsUserTemplate(bool on)
{
    lockBinding(MobraTypes::FlagUserTemplate, on);
}

double Item::getItemZValue() const
{
    const QGraphicsItem *item = graphicsItem();
    return item ? item->zValue() : 0.0;
}

void Item::setItemZValue(double z)
{
    if (QGraphicsItem *item = graphicsItem())
        item->setZValue(qIsNaN(z) ? 0.0 : z);
}

bool Item::getItemIsVisible() const
{
    const QGraphicsItem *item = graphicsItem();
    return item && item->isVisible();
}

void Item::setItemIsVisible(bool visible)
{
    if (QGraphicsItem *item = graphicsItem())
        item->setVisible(visible);
}

double Item::getItemPositionX() const
{
    const QGraphicsItem *item = graphicsItem();
    return item ? item->pos().x() : 0.0;
}

double Item::getItemPositionY() const
{
    const QGraphicsItem *item = graphicsItem();
    return item ? item->pos().y() : 0.0;
}

void Item::moveItem(const QPointF &position)
{
    QGraphicsItem *item = graphicsItem();
    if (!item)
        return;
    item->setPos(Limits::geometry(position));
    // Qt tells a scene that an item moves, but without one not even its parent, which knows its children's
    // bounds.
    if (item->parentItem() && !item->scene())
        announceGeometryChange();
}

void Item::updateItemPositionAfterLoading()
{
    moveItem(pendingPosition());
}

QSizeF Item::getItemSize() const
{
    return QSizeF(m_width, m_height);
}

QRectF Item::sizeRect() const
{
    return QRectF(0.0, 0.0, Limits::geometry(m_width), Limits::geometry(m_height));
}

void Item::storeItemSize(const QSizeF &size)
{
    announceGeometryChange();
    m_width = size.width();
    m_height = size.height();
}

void Item::setItemWidth(double width)
{
    storeItemSize(QSizeF(width, m_height));
}

void Item::setItemHeight(double height)
{
    storeItemSize(QSizeF(m_width, height));
}

void Item::setPendingPosition(const QPointF &position)
{
    if (m_rare || !position.isNull())
        rare().pendingPosition = position;
}

bool Item::applySize(const QSizeF &size)
{
    const QSizeF old = getItemSize();
    multiplyScale(m_scaleX, size.width(), old.width());
    multiplyScale(m_scaleY, size.height(), old.height());
    storeItemSize(size);
    itemSizeChanged();
    return true;
}

void Item::itemSizeChanged() { }

bool Item::setItemSize(QSizeF size)
{
    if (size == getItemSize())
        return false;
    return applySize(size);
}

bool Item::setItemSize(QSizeF size, bool keepRatio, bool heightLeads)
{
    const QSizeF old = getItemSize();
    if (size == old)
        return false;
    if (keepRatio && heightLeads)
        size.setWidth(followingSide(old.width(), old.height(), size.height(), size.width()));
    else if (keepRatio)
        size.setHeight(followingSide(old.height(), old.width(), size.width(), size.height()));
    return applySize(size);
}

bool Item::setItemSize(QSizeF size, bool keepRatio, double minWidth, double minHeight, double maxWidth,
    double maxHeight, bool heightLeads, bool force)
{
    const QSizeF old = getItemSize();
    if (size == old && !force)
        return false;
    double width = limited(size.width(), minWidth, maxWidth);
    double height = limited(size.height(), minHeight, maxHeight);
    if (keepRatio && heightLeads)
        width = limited(followingSide(old.width(), old.height(), height, width), minWidth, maxWidth);
    else if (keepRatio)
        height = limited(followingSide(old.height(), old.width(), width, height), minHeight, maxHeight);
    if (QSizeF(width, height) == old)
        return false;
    return applySize(QSizeF(width, height));
}

void Item::updateItemSize(const QSizeF &size)
{
    storeItemSize(size);
}

void Item::adjustSizes(double &width, double &height, double minWidth, double maxWidth, double minHeight,
    double maxHeight, double ratio)
{
    height = limited(height, minHeight, maxHeight);
    width = limited(height * ratio, minWidth, maxWidth);
}

void Item::setItemRotation(double degrees)
{
    m_rotation = BasicConversions::normalizeAngle(degrees);
    rotateAbout(QPointF(m_width / 2, m_height / 2), m_rotation);
}

void Item::rotateAbout(const QPointF &point, double degrees)
{
    QGraphicsItem *item = graphicsItem();
    if (!item)
        return;
    const QPointF centre = Limits::geometry(point);
    const QPointF before = item->mapToParent(centre);
    QTransform transform;
    transform.translate(centre.x(), centre.y());
    transform.rotate(degrees);
    transform.translate(-centre.x(), -centre.y());
    item->setTransform(transform);
    const QPointF after = item->mapToParent(centre);
    const QPointF shift = before - after;
    // The transform before may have had the centre at infinity.
    if (before != after && std::isfinite(shift.x()) && std::isfinite(shift.y()))
        moveItem(item->pos() + shift);
}

QVariantList Item::getItemTransform() const
{
    const QGraphicsItem *item = graphicsItem();
    const QTransform t = item ? item->transform() : QTransform();
    return { t.m11(), t.m12(), t.m13(), t.m21(), t.m22(), t.m23(), t.m31(), t.m32() };
}

void Item::setItemTransformFromList(const QList<QVariant> &list)
{
    constexpr int entries = 8;
    if (list.size() < entries)
        return;
    const auto at = [&list](int index) { return list[index].toDouble(); };
    setItemTransform(QTransform(at(0), at(1), at(2), at(3), at(4), at(5), at(6), at(7), 1.0));
}

void Item::setItemTransform(const QTransform &t)
{
    const auto parts = { t.m11(), t.m12(), t.m13(), t.m21(), t.m22(), t.m23(), t.m31(), t.m32(), t.m33() };
    QGraphicsItem *item = graphicsItem();
    if (item && std::ranges::all_of(parts, [](double part) { return std::abs(part) <= Limits::MaxGeometry; }))
        item->setTransform(t);
}

QTransform Item::getItemUnitTransform() const
{
    const QGraphicsItem *item = graphicsItem();
    QTransform t = item ? item->transform() : QTransform();
    const double dx = t.m31();
    const double dy = t.m32();
    t.scale(1.0 / Limits::divisor(m_scaleX), 1.0 / Limits::divisor(m_scaleY));
    t.setMatrix(t.m11(), t.m12(), t.m13(), t.m21(), t.m22(), t.m23(), dx, dy, t.m33());
    return t;
}

void Item::painterMirrorTransform(QPainter *painter, double width, double height) const
{
    painter->save();
    if (m_horizontalMirror) {
        painter->scale(-1, 1);
        painter->translate(-width, 0);
    }
    if (m_verticalMirror) {
        painter->scale(1, -1);
        painter->translate(0, -height);
    }
}

void Item::drawSelectionRectangle(
    QPainter *painter, const QStyleOptionGraphicsItem *option, const QRectF &rect)
{
    if (!(option->state & QStyle::State_Selected))
        return;
    painter->save();
    painter->setPen(QPen(option->palette.windowText(), 0, Qt::DotLine, Qt::SquareCap, Qt::BevelJoin));
    painter->setBrush(QColor(239, 127, 15, 50));
    painter->drawRect(rect);
    painter->restore();
}

void Item::paintSelectionFrame(
    QPainter *painter, const QStyleOptionGraphicsItem *option, const QRectF &rect) const
{
    if (!(option->state & QStyle::State_Selected))
        return; // before the parent is asked for: it runs at every painting
    const QGraphicsItem *item = graphicsItem();
    const QGraphicsItem *parent = item ? item->parentItem() : nullptr;
    if (!parent || parent->type() == MobraTypes::LayerShape)
        drawSelectionRectangle(painter, option, rect);
}

void Item::copyItemProperties(Item *target, bool copySize)
{
    target->setItemId(m_id);
    target->setItemFlags(m_flags);
    target->setItemHorizontalMirror(m_horizontalMirror);
    target->setItemVerticalMirror(m_verticalMirror);
    target->setAllowOverprint(m_allowOverprint);
    target->copyPrivatePropeties(
        m_rotation, getItemSize(), m_scaleX, m_scaleY, copySize, getDatasourceId(), getDatasourceField());

    const QGraphicsItem *from = graphicsItem();
    QGraphicsItem *to = target->graphicsItem();
    if (!from || !to)
        return;
    to->setZValue(from->zValue());
    to->setFlags(from->flags());
    to->setSelected(from->isSelected());
    to->setTransform(from->transform());
    to->setPos(from->pos());
    to->setEnabled(from->isEnabled());
    to->setVisible(from->isVisible());
    to->setAcceptedMouseButtons(from->acceptedMouseButtons());
    to->setAcceptHoverEvents(from->acceptHoverEvents());
    to->setAcceptTouchEvents(from->acceptTouchEvents());
}

void Item::copyPrivatePropeties(double rotation, const QSizeF &size, double scaleX, double scaleY,
    bool copySize, int datasourceId, const QString &datasourceField)
{
    m_rotation = rotation;
    if (copySize) {
        storeItemSize(size);
        m_scaleX = scaleX;
        m_scaleY = scaleY;
    }
    setBinding({ datasourceId, datasourceField });
}

bool Item::addItemToPrintScene(QGraphicsScene *scene, double scale)
{
    QGraphicsItem *item = graphicsItem();
    if (!scene || !item)
        return false;
    detach(*item);
    if (Limits::toInt(scale) == 1) {
        item->setSelected(false);
        if (item->scene() != scene)
            scene->addItem(item);
        return false;
    }
    const QRectF source = item->sceneBoundingRect();
    QGraphicsPixmapItem *picture
        = scene->addPixmap(QPixmap::fromImage(renderedAlone(source, scene->sceneRect(), scale)));
    picture->setPos(Limits::geometry(source.topLeft() * scale));
    picture->setZValue(item->zValue());
    picture->setFlag(QGraphicsItem::ItemStacksBehindParent);
    return true;
}

QImage Item::renderedAlone(const QRectF &source, const QRectF &sceneRect, double scale)
{
    QImage image = SafeImage::create(
        source.width() * scale, source.height() * scale, QImage::Format_ARGB32_Premultiplied);
    QGraphicsItem *item = graphicsItem();
    if (image.isNull()) {
        if (QGraphicsScene *scene = item->scene())
            scene->removeItem(item);
        return image;
    }
    image.fill(ItemColors::transparentRgb);

    const bool selected = item->isSelected();
    QGraphicsScene alone(sceneRect);
    alone.setItemIndexMethod(QGraphicsScene::BspTreeIndex);
    alone.setBackgroundBrush(QBrush(ItemColors::transparent, Qt::SolidPattern));
    alone.addItem(item);
    item->setSelected(false);
    QPainter painter(&image);
    alone.render(&painter, image.rect(), source, Qt::KeepAspectRatio);
    alone.removeItem(item);
    item->setSelected(selected);
    return image;
}
