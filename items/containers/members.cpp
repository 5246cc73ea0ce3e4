// SPDX-License-Identifier: BSD-3-Clause
#include "items/containers/members.h"

#include "items/core/item.h"

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
