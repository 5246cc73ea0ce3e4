// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QDebug>
#include <QPointF>

/// Comparing results of floating-point geometry, whose last digits nobody promises.

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
