// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QTest>
#include <QVariantMap>

/// The maps that items are saved to.
namespace ItemMaps {

/// Fails the running test where the maps differ in a key, a value or its type.
inline void compare(const QVariantMap &actual, const QVariantMap &expected)
{
    QCOMPARE(actual.keys(), expected.keys());
    for (const QString &key : expected.keys()) {
        QCOMPARE(actual.value(key).typeName(), expected.value(key).typeName());
        QCOMPARE(actual.value(key), expected.value(key));
    }
}

} // namespace ItemMaps
