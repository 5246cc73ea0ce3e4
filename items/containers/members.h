// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QList>

class QGraphicsItem;
class QPointF;

/// What containers do alike with the items in them.
namespace Members {

struct Copy
{
    const QGraphicsItem *original;
    QGraphicsItem *copy;
};

/// Copies of the container's direct members that are items, from the bottom, without parents. A
/// member that only its container hides is not hidden in its copy.
[[nodiscard]] QList<Copy> copiesOf(const QGraphicsItem &container);

/// Moves a member. Its container has new bounds then, also without a scene to tell it.
void place(QGraphicsItem &member, const QPointF &position);

} // namespace Members
