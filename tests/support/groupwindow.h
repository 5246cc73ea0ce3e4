// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "items/containers/groupitem.h"

#include <QGraphicsScene>
#include <QGraphicsView>
#include <QImage>
#include <QLineF>
#include <QMouseEvent>
#include <QTest>

/// A window on a group with two handles, as an editor has them: the one at its lower right corner resizes it,
/// with the opposite corner in place, and the one above it turns it. Anything else is up to the view.
class GroupWindow : public QGraphicsView
{
public:
    GroupWindow(GroupItem *group, QSize size)
        : m_group(group)
    {
        setFrameStyle(QFrame::NoFrame);
        setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
        setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
        setRenderHint(QPainter::Antialiasing);
        m_scene.setSceneRect(QRectF(QPointF(), size));
        m_scene.addItem(group);
        setScene(&m_scene);
        resize(size);
        show();
    }

    /// What the window shows.
    [[nodiscard]] QImage shown()
    {
        return viewport()->grab().toImage().convertToFormat(QImage::Format_RGB32);
    }

    [[nodiscard]] QPointF sizeHandle() const
    {
        return m_group->mapToScene(m_group->childrenBoundingRect().bottomRight());
    }
    [[nodiscard]] QPointF turnHandle() const
    {
        const QRectF bounds = m_group->childrenBoundingRect();
        return m_group->mapToScene(QPointF(bounds.center().x(), bounds.top() - 12.0));
    }
    [[nodiscard]] QPointF centre() const
    {
        return m_group->mapToScene(m_group->childrenBoundingRect().center());
    }

    void press(QPointF at)
    {
        QTest::mousePress(viewport(), Qt::LeftButton, Qt::NoModifier, mapFromScene(at));
    }
    void moveTo(QPointF to) { QTest::mouseMove(viewport(), mapFromScene(to)); }
    void release(QPointF at)
    {
        QTest::mouseRelease(viewport(), Qt::LeftButton, Qt::NoModifier, mapFromScene(at));
    }

protected:
    void mousePressEvent(QMouseEvent *event) override
    {
        const QPointF at = mapToScene(event->pos());
        m_held = isNear(at, sizeHandle()) ? Size : isNear(at, turnHandle()) ? Turn : None;
        if (m_held == None)
            QGraphicsView::mousePressEvent(event);
    }
    void mouseMoveEvent(QMouseEvent *event) override
    {
        const QPointF at = mapToScene(event->pos());
        if (m_held == Size)
            resizeTo(at);
        else if (m_held == Turn)
            m_group->setItemRotation(QLineF(at, centre()).angleTo(QLineF(0, 0, 0, 1)));
        else
            QGraphicsView::mouseMoveEvent(event);
    }
    void mouseReleaseEvent(QMouseEvent *event) override
    {
        if (m_held == None)
            QGraphicsView::mouseReleaseEvent(event);
        m_held = None;
    }

private:
    enum Handle { None, Size, Turn };

    static bool isNear(QPointF a, QPointF b) { return QLineF(a, b).length() < 6.0; }
    [[nodiscard]] QPointF fixedCorner() const
    {
        return m_group->mapToScene(m_group->childrenBoundingRect().topLeft());
    }

    void resizeTo(QPointF at)
    {
        const QPointF fixed = fixedCorner();
        const double factor = QLineF(fixed, at).length() / QLineF(fixed, sizeHandle()).length();
        m_group->setItemSize(m_group->getItemSize() * factor);
        m_group->setPos(m_group->pos() + fixed - fixedCorner());
    }

    QGraphicsScene m_scene;
    GroupItem *m_group; ///< in the scene
    Handle m_held = None;
};
