// SPDX-License-Identifier: BSD-3-Clause
#pragma once

class QGraphicsItem;
class QVariant;

/// How items may lie within one another. Qt accepts any parent: it never returns from a circle of parents,
/// and runs out of stack in a deep tree.
namespace Nesting {

/// Whether child can become a child of parent: without a circle, and without more than Limits::MaxNesting
/// levels.
[[nodiscard]] bool isPossible(const QGraphicsItem &parent, const QGraphicsItem &child);

/// For QGraphicsItem::itemChange() of a container that gets another parent: the parent that it is to have,
/// which is the present one if the other is not possible.
[[nodiscard]] QVariant checkedParent(const QGraphicsItem &container, const QVariant &parent);

} // namespace Nesting
