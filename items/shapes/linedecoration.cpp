// SPDX-License-Identifier: BSD-3-Clause
#include "items/shapes/linedecoration.h"

#include "items/core/mobratypes.h"

#include <QPainter>
#include <QPen>
#include <QPolygonF>

#include <algorithm>

namespace {

// The bits of each end.
constexpr unsigned int notBars = 0x77;
constexpr unsigned int filledHeads = 0x22;
constexpr unsigned int leftHead = MobraTypes::LeftArrowOpen;
constexpr unsigned int leftChevron = MobraTypes::LeftArrowChevron;
constexpr unsigned int notLeftBar = 0x70;
constexpr unsigned int rightHead = MobraTypes::RightArrowOpen;
constexpr unsigned int rightChevron = MobraTypes::RightArrowChevron;
constexpr unsigned int notRightBar = 0x07;

// In pen widths: a decoration, half of what it takes across the line, and what heads take along it.
constexpr double decorationLength = 4.0;
constexpr double halfHeight = 2.5;
constexpr double halfHeightFilled = 2.82;
constexpr double headAlong = 3.4641; // 4 cos 30°
constexpr double chevronsAlong = 9.8641; // two more at distances of 0.8 × 4

constexpr double chevronDistance = 0.8; // in decoration lengths
constexpr double margin = 5.0;

// The barbs of a head stand at 30° to the line.
constexpr double barbAlong = 0.86602540378443865;
constexpr double barbAcross = 0.5;

} // namespace

/// One end of the line: where it is, the direction from it into the line, and its styles.
struct LineDecoration::End
{
    double x;
    int direction;
    unsigned int filled;
    unsigned int chevron;
};

LineDecoration::LineDecoration(unsigned short arrows, int penWidth)
    : m_arrows(arrows)
    , m_penWidth(penWidth)
{
}

QRectF LineDecoration::boundsOf(double length, bool mitered) const
{
    const double width = m_penWidth;
    double left = width / 2.0;
    double right = left;
    double across = m_arrows == 0 ? left : halfHeight * width;
    Extent extent { 0.0, length };
    if (anyOf(notBars)) {
        // The tip of a mitre reaches further.
        left = mitered && anyOf(notLeftBar) ? width : left;
        right = mitered && anyOf(notRightBar) ? width : right;
        across = anyOf(filledHeads) ? halfHeightFilled * width : across;
        extent = extentOf(length);
    }
    return QRectF(QPointF(extent.left - left, -across), QPointF(extent.right + right, across))
        .adjusted(-margin, -margin, margin, margin);
}

LineDecoration::Extent LineDecoration::extentOf(double length) const
{
    const double head = headAlong * m_penWidth;
    const double chevrons = chevronsAlong * m_penWidth;
    // The decorations of a short line reach beyond its other end.
    const auto endingAt = [](double right, double room) { return Extent { right - room, right }; };

    const double roomForChevrons = 2.0 * chevrons - length;
    if (length >= roomForChevrons)
        return { 0.0, length };
    if (allOf(leftChevron | rightChevron))
        return endingAt(chevrons, roomForChevrons);

    const double roomForHeadAndChevrons = std::max(chevrons, head + chevrons - length);
    if (length < roomForHeadAndChevrons && allOf(leftChevron | rightHead))
        return endingAt(chevrons, roomForHeadAndChevrons);
    if (length < roomForHeadAndChevrons && allOf(leftHead | rightChevron))
        return endingAt(std::max(length, head), roomForHeadAndChevrons);
    if (length < chevrons)
        return extentOfShortLine(length, head, chevrons);
    return { 0.0, length };
}

LineDecoration::Extent LineDecoration::extentOfShortLine(double length, double head, double chevrons) const
{
    if (allOf(leftChevron))
        return { 0.0, chevrons };
    if (allOf(rightChevron))
        return { length - chevrons, length };
    const double roomForHeads = 2.0 * head - length;
    if (length < roomForHeads && allOf(leftHead | rightHead))
        return { head - roomForHeads, head };
    if (length < head && allOf(leftHead))
        return { 0.0, head };
    if (length < head && allOf(rightHead))
        return { length - head, length };
    return { 0.0, length };
}

void LineDecoration::paint(QPainter &painter, double length) const
{
    const End left { 0.0, 1, MobraTypes::LeftArrowFilled, leftChevron };
    const End right { length, -1, MobraTypes::RightArrowFilled, rightChevron };
    if (allOf(leftHead))
        paintHead(painter, left);
    else if (allOf(MobraTypes::LeftArrowBar))
        paintBar(painter, left);
    if (allOf(rightHead))
        paintHead(painter, right);
    else if (allOf(MobraTypes::RightArrowBar))
        paintBar(painter, right);
}

void LineDecoration::paintHead(QPainter &painter, const End &end) const
{
    const double barb = decorationLength * m_penWidth;
    const double back = end.x + end.direction * barbAlong * barb;
    QPolygonF head { { back, -barbAcross * barb }, { end.x, 0.0 }, { back, barbAcross * barb } };
    if (allOf(end.filled)) {
        painter.setBrush(painter.pen().color());
        painter.drawConvexPolygon(head);
        painter.setBrush(Qt::NoBrush);
        return;
    }
    const int heads = allOf(end.chevron) ? 3 : 1;
    for (int i = 0; i < heads; ++i) {
        painter.drawPolyline(head);
        head.translate(end.direction * chevronDistance * barb, 0.0);
    }
}

void LineDecoration::paintBar(QPainter &painter, const End &end) const
{
    const double half = decorationLength * m_penWidth / 2.0 * end.direction;
    painter.drawLine(QPointF(end.x, half), QPointF(end.x, -half));
}
