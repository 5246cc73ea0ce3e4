// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "items/core/vxexport.h"

#include <QStringList>
#include <QVariantMap>

class QObject;

namespace QJson {

/// Between the Qt properties of an object and a map of their values.
class VX_EXPORT QObjectHelper
{
public:
    /// Every readable property by name, less the ignored ones. Values keep their declared types.
    [[nodiscard]] static QVariantMap qobject2qvariant(
        const QObject *object, const QStringList &ignoredProperties = { QStringLiteral("objectName") });

    /// Writes each value of the map, in key order, to the property of that name, converting it where the
    /// types differ. Unknown keys, read-only properties, invalid values and values that cannot be converted
    /// are skipped.
    static void qvariant2qobject(const QVariantMap &map, QObject *object);
};

} // namespace QJson
