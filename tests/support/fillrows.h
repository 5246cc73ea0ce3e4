// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "items/core/mobratypes.h"
#include "tests/support/colours.h"

#include <QList>
#include <QTest>

/// Fills, and whether they let nothing show through.
namespace FillRows {

struct Fill
{
    const char *name;
    QColor colour;
    MobraTypes::BrushStyle style;
    bool opaque;
};

/// A function, so that data of other files can be built from it whatever is initialised first.
[[nodiscard]] inline QList<Fill> fills()
{
    using namespace Colours;
    return { { "transparent", transparent, MobraTypes::BrushSolid, false },
        { "transparent gradient", transparent, MobraTypes::BrushLinearGradient, false },
        { "solid", red, MobraTypes::BrushSolid, true }, { "none", red, MobraTypes::BrushNone, false },
        { "dense", red, MobraTypes::BrushDense1, false }, { "cross", red, MobraTypes::BrushCross, false },
        { "linear", red, MobraTypes::BrushLinearGradient, true },
        { "radial", red, MobraTypes::BrushRadialGradient, true },
        { "conical", red, MobraTypes::BrushConicalGradient, true } };
}

inline void add()
{
    QTest::addColumn<QColor>("fill");
    QTest::addColumn<MobraTypes::BrushStyle>("style");
    QTest::addColumn<bool>("opaque");

    for (const Fill &fill : fills())
        QTest::newRow(fill.name) << fill.colour << fill.style << fill.opaque;
}

} // namespace FillRows
