// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "label/problem.h"
#include "label/vxlabelexport.h"

#include <QJsonObject>
#include <QString>

#include <memory>

class Item;

/// One item as a JSON object: its property map, completed by what the map does not hold (transparent and
/// translucent colours, visibility).
namespace ItemMap {

[[nodiscard]] VX_LABEL_EXPORT QJsonObject toJson(Item &item);

/// Null, with the reasons appended to problems, for an unknown type or an unusable value. pointer is the JSON
/// pointer of the object, fileName its file.
[[nodiscard]] VX_LABEL_EXPORT std::unique_ptr<Item> fromJson(const QJsonObject &object, unsigned int version,
    const QString &fileName, const QString &pointer, Problems &problems);

/// What keeps an item from being drawn or saved: numbers that are not finite or beyond the drawable range.
[[nodiscard]] VX_LABEL_EXPORT Problems geometryProblems(
    Item &item, const QString &fileName, const QString &where);

} // namespace ItemMap
