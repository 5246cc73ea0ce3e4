// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "items/core/mobratypes.h"
#include "tests/support/standins.h"

#include <QColor>
#include <QGraphicsRectItem>
#include <QGraphicsScene>

/// Plain items that lie beside, beneath and above others in a scene.
namespace Boxes {

/// A rectangle of one colour without outline, which stacks like the items of the library.
inline QGraphicsRectItem *addBox(QGraphicsScene &scene, const QRectF &rect, const QColor &colour, double z)
{
    auto *box = new QGraphicsRectItem(rect);
    box->setPen(Qt::NoPen);
    box->setBrush(colour);
    box->setZValue(z);
    box->setFlags(QGraphicsItem::ItemStacksBehindParent | QGraphicsItem::ItemIsSelectable
        | QGraphicsItem::ItemIsFocusable);
    scene.addItem(box);
    return box;
}

/// A parent that stacks like the containers of the library.
inline ParentStandIn *addContainer(QGraphicsScene &scene, MobraTypes::ShapeType shape)
{
    auto *container = new ParentStandIn(shape);
    container->setFlag(QGraphicsItem::ItemStacksBehindParent);
    scene.addItem(container);
    return container;
}

} // namespace Boxes
