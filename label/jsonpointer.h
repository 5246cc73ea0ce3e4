// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QString>

/// Places in a JSON document: "/items/3/itemWidth".
namespace JsonPointer {

/// The member of an object; very long keys are cut, for a pointer is shown to a person.
[[nodiscard]] QString member(const QString &object, const QString &key);

[[nodiscard]] QString element(const QString &array, qsizetype index);

} // namespace JsonPointer
