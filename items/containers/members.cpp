// SPDX-License-Identifier: BSD-3-Clause
#include "items/containers/members.h"

#include "items/core/item.h"
#include "items/core/limits.h"

#include <QGraphicsItem>

QList<Members::Copy> Members::copiesOf(const QGraphicsItem &container)
{
    QList<Copy> copies;
    for (QGraphicsItem *member : container.childItems()) {
        auto *item = dynamic_cast<Item *>(member);
        if (!item)
            continue;
        auto *copy = dynamic_cast<QGraphicsItem *>(item->createItemCopy());
        copy->setVisible(member->isVisibleTo(&container));
        copies.append(Copy { member, copy });
    }
    return copies;
}

void Members::place(QGraphicsItem &member, const QPointF &position)
{
    member.setPos(Limits::geometry(position));
    // The same origin once more announces a change of the geometry, which a position does in scenes only.
    if (!member.scene())
        member.setTransformOriginPoint(member.transformOriginPoint());
}
