// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QDebug>
#include <QPointF>

/// Whether two points are equal but for the last digits, which nobody promises of floating-point geometry.
[[nodiscard]] inline bool areNear(QPointF a, QPointF b)
{
    if ((a - b).manhattanLength() <= 1e-9)
        return true;
    qInfo() << a << "is not" << b;
    return false;
}

[[nodiscard]] inline bool isNear(double a, double b)
{
    return areNear({ a, 0 }, { b, 0 });
}
