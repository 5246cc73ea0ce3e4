// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "items/core/vxexport.h"

#include <QByteArray>

/// The drawing that stands in for one that cannot be shown: 100 × 100, and nothing of it is seen.
class VX_EXPORT EmptySvg
{
public:
    /// The text of the drawing, made once.
    static QByteArray getEmptySvg();
    /// The same, made anew.
    static QByteArray createEmptySvg();
};
