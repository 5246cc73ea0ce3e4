// SPDX-License-Identifier: BSD-3-Clause
#include "items/core/basicconversions.h"

#include "items/core/limits.h"

#include <cmath>

bool BasicConversions::almostZero(double value, double epsilon)
{
    return std::abs(value) <= epsilon;
}

bool BasicConversions::almostEqual(double a, double b, double epsilon)
{
    return almostZero(a - b, epsilon);
}

bool BasicConversions::almostEqual(const QSizeF &a, const QSizeF &b, double epsilon)
{
    return almostEqual(a.width(), b.width(), epsilon) && almostEqual(a.height(), b.height(), epsilon);
}

bool BasicConversions::almostEqual(const QPointF &a, const QPointF &b, double epsilon)
{
    return almostEqual(a.x(), b.x(), epsilon) && almostEqual(a.y(), b.y(), epsilon);
}

double BasicConversions::normalizeAngle(double degrees)
{
    // fmod truncates the quotient like a conversion to an integer does, without that conversion's range.
    const double remainder = std::fmod(Limits::finite(degrees, 0.0), 360.0);
    if (!(remainder < 0.0))
        return remainder;
    const double positive = remainder + 360.0;
    return positive < 360.0 ? positive : 0.0; // the sum of a tiny negative rounds up to the full circle
}

int BasicConversions::normalizeAngle(int degrees)
{
    const int remainder = degrees % 360;
    return remainder < 0 ? remainder + 360 : remainder;
}

double BasicConversions::adjust45(double degrees)
{
    // 45.0005 - 45 is a little more than 0.0005 in binary: the bound has room for that.
    constexpr double bound = 0.0005 + 1e-9;
    const double whole = std::floor(degrees);
    const bool oddMultiple = std::fmod(whole, 45.0) == 0.0 && std::fmod(whole, 90.0) != 0.0;
    if (!oddMultiple || std::abs(degrees - whole) > bound)
        return degrees;
    return whole + 0.001;
}
