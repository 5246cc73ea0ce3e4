// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "items/core/vxexport.h"

#include <QPointF>
#include <QSizeF>

/// Tolerant comparison of numbers and normalisation of angles. The bounds of all comparisons are inclusive; a
/// negative epsilon makes every comparison false.
class VX_EXPORT BasicConversions
{
public:
    static bool almostZero(double value, double epsilon);
    static bool almostEqual(double a, double b, double epsilon);
    static bool almostEqual(const QSizeF &a, const QSizeF &b, double epsilon);
    static bool almostEqual(const QPointF &a, const QPointF &b, double epsilon);

    /// The angle in [0, 360). NaN and infinities give 0.
    static double normalizeAngle(double degrees);
    /// The angle in [0, 359].
    static int normalizeAngle(int degrees);

    /// Moves an angle at or up to 0.0005 above an odd multiple of 45 degrees to 0.001 past that multiple; any
    /// other angle is returned as it is.
    static double adjust45(double degrees);
};
