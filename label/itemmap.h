// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "label/problem.h"
#include "label/vxlabelexport.h"

#include <QJsonObject>
#include <QString>

#include <memory>

class Item;
class ProblemLog;

/// One item as a JSON object: its property map, completed by what the map does not hold (transparent and
/// translucent colours, visibility).
namespace ItemMap {

[[nodiscard]] VX_LABEL_EXPORT QJsonObject toJson(Item &item);

/// Null, with the reasons in the log, for an unknown type, an unknown key or an unusable value. pointer is
/// the JSON pointer of the object.
[[nodiscard]] VX_LABEL_EXPORT std::unique_ptr<Item> fromJson(
    const QJsonObject &object, unsigned int version, const QString &pointer, ProblemLog &log);

/// What keeps an item from being drawn or saved: numbers that are not finite or beyond the drawable range,
/// and negative sizes. Each problem lies at its key below pointer.
[[nodiscard]] VX_LABEL_EXPORT Problems geometryProblems(Item &item, const QString &pointer);

} // namespace ItemMap
