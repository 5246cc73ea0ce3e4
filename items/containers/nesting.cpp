// SPDX-License-Identifier: BSD-3-Clause
#include "items/containers/nesting.h"

#include "items/core/limits.h"

#include <QGraphicsItem>
#include <QList>
#include <QVariant>

namespace {

/// The levels from the outermost ancestor down to the item itself, at most as many as one too many.
int levelsAbove(const QGraphicsItem &item)
{
    int levels = 1;
    for (const QGraphicsItem *ancestor = item.parentItem(); ancestor && levels <= Limits::MaxNesting;
         ancestor = ancestor->parentItem())
        ++levels;
    return levels;
}

/// The levels from the item itself down to its innermost descendant, likewise.
int levelsBelow(const QGraphicsItem &item)
{
    int levels = 1;
    QList<QGraphicsItem *> row = item.childItems();
    while (!row.isEmpty() && levels <= Limits::MaxNesting) {
        ++levels;
        QList<QGraphicsItem *> next;
        for (const QGraphicsItem *child : std::as_const(row))
            next += child->childItems();
        row = next;
    }
    return levels;
}

} // namespace

bool Nesting::isPossible(const QGraphicsItem &parent, const QGraphicsItem &child)
{
    if (&parent == &child || child.isAncestorOf(&parent))
        return false;
    return levelsAbove(parent) + levelsBelow(child) <= Limits::MaxNesting;
}

QVariant Nesting::checkedParent(const QGraphicsItem &container, const QVariant &parent)
{
    const auto *wanted = parent.value<QGraphicsItem *>();
    return !wanted || isPossible(*wanted, container) ? parent : QVariant::fromValue(container.parentItem());
}
