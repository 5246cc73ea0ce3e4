// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QRectF>
#include <QTest>

#include <cmath>
#include <limits>

/// The numbers that a damaged or hostile document holds.
struct OddNumber
{
    const char *name;
    double value;
};

inline constexpr OddNumber oddNumbers[] = {
    { "no number", std::numeric_limits<double>::quiet_NaN() },
    { "infinite", std::numeric_limits<double>::infinity() },
    { "negative infinite", -std::numeric_limits<double>::infinity() },
    { "1e308", 1e308 },
    { "-1e308", -1e308 },
    { "1e9", 1e9 },
    { "smallest", std::numeric_limits<double>::denorm_min() },
    { "zero", 0.0 },
    { "negative", -5.0 },
};

/// Equal, also when both are no numbers.
[[nodiscard]] inline bool isSame(double a, double b)
{
    return a == b || (std::isnan(a) && std::isnan(b));
}

[[nodiscard]] inline bool isFinite(const QRectF &rect)
{
    return std::isfinite(rect.x()) && std::isfinite(rect.y()) && std::isfinite(rect.width())
        && std::isfinite(rect.height());
}

/// Adds one row for each odd number as the width, the height and both.
inline void addOddSizes()
{
    QTest::addColumn<double>("width");
    QTest::addColumn<double>("height");

    for (const auto &[name, side] : oddNumbers) {
        QTest::addRow("width %s", name) << side << 50.0;
        QTest::addRow("height %s", name) << 50.0 << side;
        QTest::addRow("both %s", name) << side << side;
    }
}
