// SPDX-License-Identifier: BSD-3-Clause
#include "items/core/resizerotatedhelper.h"

#include "items/core/basicconversions.h"
#include "items/core/limits.h"

#include <QGraphicsItem>
#include <QTransform>

#include <utility>

namespace {

QTransform scaledAndRotated(double cx, double cy, double angle, double scaleX, double scaleY)
{
    const QPointF centre = Limits::geometry(QPointF(cx, cy));
    QTransform transform;
    transform.translate(centre.x(), centre.y());
    transform.rotate(BasicConversions::normalizeAngle(angle));
    transform.translate(-centre.x(), -centre.y());
    transform.scale(Limits::geometry(scaleX), Limits::geometry(scaleY));
    return transform;
}

void moveBy(QGraphicsItem &item, const QPointF &difference)
{
    item.setPos(Limits::geometry(item.pos() + difference));
}

} // namespace

ResizeRotatedHelper::ResizeRotatedHelper() = default;
ResizeRotatedHelper::~ResizeRotatedHelper() = default;

void ResizeRotatedHelper::updateTransformOnResize(
    QGraphicsItem *item, double cx, double cy, double angle, double scaleX, double scaleY)
{
    const bool justJoined = std::exchange(m_firstResizeAfterAddedToGroup, false);
    const QPointF before = justJoined ? QPointF() : QPointF(m_oldM31, m_oldM32);
    updateTransformOnRotation(item, cx, cy, angle, scaleX, scaleY);
    moveBy(*item, before - QPointF(m_oldM31, m_oldM32));
}

void ResizeRotatedHelper::updateTransformOnRotation(
    QGraphicsItem *item, double cx, double cy, double angle, double scaleX, double scaleY)
{
    const QTransform transform = scaledAndRotated(cx, cy, angle, scaleX, scaleY);
    item->setTransform(transform);
    m_oldM31 = transform.m31();
    m_oldM32 = transform.m32();
}

void ResizeRotatedHelper::fixPositionOnUngroup(QGraphicsItem *item)
{
    if (!m_temporaryGroup)
        moveBy(*item, QPointF(-m_oldM31 - m_positionChangeX, -m_oldM32 - m_positionChangeY));
    m_positionChangeX = 0.0;
    m_positionChangeY = 0.0;
    m_firstResizeAfterAddedToGroup = false;
    m_temporaryGroup = false;
}
