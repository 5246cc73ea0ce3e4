// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QCoreApplication>
#include <QGraphicsItem>
#include <QGraphicsScene>
#include <QObject>

#include <utility>

/// An item in a scene of its own, which tells whether the item has asked to be painted again.
class Repaints
{
public:
    explicit Repaints(QGraphicsItem &item)
        : m_item(item)
    {
        m_scene.addItem(&item);
        QObject::connect(&m_scene, &QGraphicsScene::changed, [this] { m_wanted = true; });
        static_cast<void>(wanted());
    }
    ~Repaints() { m_scene.removeItem(&m_item); }
    Q_DISABLE_COPY_MOVE(Repaints)

    /// Whether it has since the last time.
    [[nodiscard]] bool wanted()
    {
        // A new item has the scene look for its bounds first, which tells of a change once more.
        for (int round = 0; round < 3; ++round)
            QCoreApplication::processEvents();
        return std::exchange(m_wanted, false);
    }

private:
    QGraphicsItem &m_item;
    QGraphicsScene m_scene;
    bool m_wanted = false;
};
