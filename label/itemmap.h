// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "items/core/item.h"
#include "label/problem.h"
#include "label/vxlabelexport.h"

#include <QJsonObject>
#include <QString>

#include <memory>
#include <vector>

class ProblemLog;

/// One item as a JSON object: its property map, completed by what the map does not hold (transparent and
/// translucent colours, visibility, the members of a container).
namespace ItemMap {

[[nodiscard]] VX_LABEL_EXPORT QJsonObject toJson(Item &item);

/// The key of a container's members, which is an array of such objects from bottom to top.
inline const QString childrenKey = QStringLiteral("children");

/// Whether the object is one of a container, whose members may be read.
[[nodiscard]] VX_LABEL_EXPORT bool isContainer(const QJsonObject &object);

/// Null, with the reasons in the log, for an unknown type, an unknown key or an unusable value. pointer is
/// the JSON pointer of the object. Members have been read from the object's children before, and only a
/// container has any.
[[nodiscard]] VX_LABEL_EXPORT std::unique_ptr<Item> fromJson(const QJsonObject &object, unsigned int version,
    const QString &pointer, ProblemLog &log, std::vector<std::unique_ptr<Item>> members = {});

/// What keeps an item from being drawn or saved: numbers that are not finite or beyond the drawable range,
/// and negative sizes. Each problem lies at its key below pointer. Members of a container are not looked at.
[[nodiscard]] VX_LABEL_EXPORT Problems geometryProblems(Item &item, const QString &pointer);
/// Logs the same of an item at a level and of all that it holds, and what of this no document can hold.
void checkTree(Item &item, const QString &pointer, int level, ProblemLog &log);

} // namespace ItemMap
