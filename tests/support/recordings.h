// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "tests/support/recordingpaintdevice.h"

#include <QColor>
#include <QGraphicsItem>
#include <QList>
#include <QPainter>
#include <QPainterPath>
#include <QStyleOptionGraphicsItem>

/// What items draw, taken down instead of painted.
namespace Recordings {

/// What the item draws, figure by figure.
inline QList<RecordingPaintDevice::Figure> recorded(
    QGraphicsItem &item, QStyle::State state = QStyle::State_None)
{
    RecordingPaintDevice device;
    QPainter painter(&device);
    QStyleOptionGraphicsItem option;
    option.state = state;
    item.paint(&painter, &option, nullptr);
    painter.end();
    return device.figures();
}

/// Whether the figure is the selection frame about the rectangle.
inline bool isFrame(const RecordingPaintDevice::Figure &figure, const QRectF &rect)
{
    QPainterPath path;
    path.addRect(rect);
    return figure.kind == RecordingPaintDevice::Kind::Rect && figure.path == path
        && figure.pen.style() == Qt::DotLine && figure.pen.isCosmetic()
        && figure.brush == QBrush(QColor(239, 127, 15, 50));
}

} // namespace Recordings
