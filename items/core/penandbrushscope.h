// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QBrush>
#include <QPainter>
#include <QPen>

/// Puts the painter's pen and brush back when it goes out of scope. Saving the painter's whole state for them
/// would cost several times as much.
class PenAndBrushScope
{
public:
    explicit PenAndBrushScope(QPainter &painter)
        : m_painter(painter)
        , m_pen(painter.pen())
        , m_brush(painter.brush())
    {
    }
    ~PenAndBrushScope()
    {
        m_painter.setPen(m_pen);
        m_painter.setBrush(m_brush);
    }
    Q_DISABLE_COPY_MOVE(PenAndBrushScope)

private:
    QPainter &m_painter;
    QPen m_pen;
    QBrush m_brush;
};
