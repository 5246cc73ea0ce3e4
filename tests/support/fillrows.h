// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "items/core/mobratypes.h"
#include "tests/support/colours.h"

#include <QTest>

/// Fills, and what shows through them.
namespace FillRows {

/// Adds the rows of a fill and whether it lets nothing show through.
inline void add()
{
    QTest::addColumn<QColor>("fill");
    QTest::addColumn<MobraTypes::BrushStyle>("style");
    QTest::addColumn<bool>("opaque");

    using namespace Colours;
    QTest::newRow("transparent") << transparent << MobraTypes::BrushSolid << false;
    QTest::newRow("transparent gradient") << transparent << MobraTypes::BrushLinearGradient << false;
    QTest::newRow("solid") << red << MobraTypes::BrushSolid << true;
    QTest::newRow("none") << red << MobraTypes::BrushNone << false;
    QTest::newRow("dense") << red << MobraTypes::BrushDense1 << false;
    QTest::newRow("cross") << red << MobraTypes::BrushCross << false;
    QTest::newRow("linear") << red << MobraTypes::BrushLinearGradient << true;
    QTest::newRow("radial") << red << MobraTypes::BrushRadialGradient << true;
    QTest::newRow("conical") << red << MobraTypes::BrushConicalGradient << true;
}

} // namespace FillRows
