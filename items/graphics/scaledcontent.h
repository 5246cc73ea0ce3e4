// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "items/core/item.h"

#include <QPointF>
#include <QSizeF>

/// What items have in common that are an Item and a ResizeRotatedHelper and scale a content of a size of its
/// own, their bounding rectangle, into their logical size. The item itself announces the change.
namespace ScaledContent {

/// After a resize: rotation and scales become the transform, and the item keeps its place.
template <typename T> void followSize(T &item)
{
    const QPointF centre = item.boundingRect().center();
    item.updateTransformOnResize(
        &item, centre.x(), centre.y(), item.getItemRotation(), item.getItemScaleX(), item.getItemScaleY());
}

/// After a rotation: the same, about the centre of the content.
template <typename T> void followRotation(T &item)
{
    const QPointF centre = item.boundingRect().center();
    item.updateTransformOnRotation(
        &item, centre.x(), centre.y(), item.getItemRotation(), item.getItemScaleX(), item.getItemScaleY());
}

/// Scales a content that has just taken another's place into a frame. Returns whether the item's size has
/// changed. The scales of the old content do not count: the new one is at its own size.
template <typename T> bool fit(T &item, const QSizeF &frame)
{
    const QSizeF before = item.getItemSize();
    item.Item::updateItemSize(item.boundingRect().size()); // stores it only
    item.setItemScaleX(1.0);
    item.setItemScaleY(1.0);
    item.setItemSize(frame);
    followSize(item);
    return item.getItemSize() != before;
}

} // namespace ScaledContent
