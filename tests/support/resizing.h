// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "items/core/item.h"

#include <QTest>

#include <utility>

/// The three forms of a resize, told apart by how many parameters they take.
namespace Resizing {

inline constexpr std::pair<const char *, int> forms[]
    = { { "size", 1 }, { "size and ratio", 3 }, { "size, ratio and limits", 8 } };

inline void addRows()
{
    QTest::addColumn<int>("parameters");

    for (const auto &[name, parameters] : forms)
        QTest::newRow(name) << parameters;
}

/// Resizes the item freely; the limits are 1 and 1000.
inline bool resize(Item &item, int parameters, const QSizeF &size)
{
    switch (parameters) {
    case 1:
        return item.setItemSize(size);
    case 3:
        return item.setItemSize(size, false, false);
    default:
        return item.setItemSize(size, false, 1, 1, 1000, 1000, false, false);
    }
}

} // namespace Resizing
