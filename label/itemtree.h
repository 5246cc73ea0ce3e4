// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "label/vxlabelexport.h"

#include <QList>

#include <memory>
#include <vector>

class Item;
class LabelDocument;
class QGraphicsItem;

/// Items that lie in other items of a document.
namespace ItemTree {

[[nodiscard]] VX_LABEL_EXPORT QGraphicsItem &graphicsOf(Item &item);
[[nodiscard]] VX_LABEL_EXPORT const QGraphicsItem &graphicsOf(const Item &item);

/// Whether the item, or any of the type code, holds others: a group or a layer.
[[nodiscard]] VX_LABEL_EXPORT bool isContainer(const Item &item);
[[nodiscard]] VX_LABEL_EXPORT bool isContainer(unsigned int shape);
/// The items directly in a container, from bottom to top; none in any other item.
[[nodiscard]] VX_LABEL_EXPORT QList<Item *> membersOf(const Item &item);
/// How many items there are, this one and all below it, or those of a document.
[[nodiscard]] VX_LABEL_EXPORT qsizetype count(const Item &item);
[[nodiscard]] VX_LABEL_EXPORT qsizetype count(const LabelDocument &document);
/// Whether the item is to be seen wherever what it lies in is.
[[nodiscard]] VX_LABEL_EXPORT bool isShown(const Item &item);

/// Puts items, from bottom to top, into a new container, which owns them from then on. Each lies within it as
/// it lay on the page, with the transform, the position and the z value that it had.
VX_LABEL_EXPORT void join(Item &container, std::vector<std::unique_ptr<Item>> members);

} // namespace ItemTree
