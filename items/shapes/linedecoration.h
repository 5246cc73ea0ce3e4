// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "items/core/vxexport.h"

#include <QLineF>
#include <QRectF>

class QPainter;

/// What both ends of a horizontal line carry, and the room that it takes. The styles are the bits of
/// MobraTypes::ArrowStyle, the left end in bits 4 to 7.
class VX_EXPORT LineDecoration
{
public:
    LineDecoration() = default;
    /// Decorations in proportion to the pen's width.
    LineDecoration(unsigned short arrows, int penWidth);

    /// The rectangle that covers a line from (0, 0) to (length, 0) with its decorations, and 5 units more on
    /// every side. Mitered joins end in tips that take more room.
    QRectF boundsOf(double length, bool mitered) const;
    /// Paints both ends of the line with the painter's pen. The painter has no brush, before and after.
    void paint(QPainter &painter, double length) const;

private:
    /// What a line takes in x.
    struct Extent
    {
        double left;
        double right;
    };
    struct End;

    bool anyOf(unsigned int bits) const { return (m_arrows & bits) != 0; }
    bool allOf(unsigned int bits) const { return (m_arrows & bits) == bits; }
    Extent extentOf(double length) const;
    Extent extentOfShortLine(double length, double head, double chevrons) const;
    void paintHead(QPainter &painter, const End &end) const;
    void paintBar(QPainter &painter, const End &end) const;

    unsigned short m_arrows = 0;
    int m_penWidth = 1;
};
