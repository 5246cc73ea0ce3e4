// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QPointF>
#include <QRectF>
#include <QStringView>
#include <QTransform>

#include <limits>

/// How long an outline is, and how much of the page it spans. All numbers but the length along the outline
/// are in pages: 1 is the width or the height of the drawing.
class SvgOutline
{
public:
    /// Of a drawing in which a transform leads to pages; what is farther away than the reach counts as if it
    /// were there. An outline that is not to be turned has lines along rows of pixels, which cost nothing.
    SvgOutline(const QTransform &toPage, double reach, bool mayTurn);

    void addPath(QStringView data);
    void addPoints(QStringView data);
    void addRect(const QRectF &rect);
    void addEllipse(QPointF centre, double radiusX, double radiusY);
    void addLine(QPointF from, QPointF to);

    /// Along the outline, in the units in which it is given; never below the true one.
    [[nodiscard]] double length() const { return m_length; }
    /// The longer side of its bounds in the same units.
    [[nodiscard]] double extent() const;
    /// Along the outline in pages, within reach: across and down.
    [[nodiscard]] double run() const { return m_run; }
    [[nodiscard]] double rise() const { return m_rise; }
    [[nodiscard]] double width() const { return m_bounds.width(); }
    [[nodiscard]] double height() const { return m_bounds.height(); }
    [[nodiscard]] int points() const { return m_points; }
    /// Points for which the renderer has to cut the outline.
    [[nodiscard]] int farPoints() const { return m_farPoints; }

private:
    struct Bounds
    {
        double left = std::numeric_limits<double>::infinity();
        double top = left;
        double right = -left;
        double bottom = -left;

        void add(QPointF point);
        [[nodiscard]] double width() const { return right > left ? right - left : 0.0; }
        [[nodiscard]] double height() const { return bottom > top ? bottom - top : 0.0; }
    };

    void moveTo(QPointF point);
    void lineTo(QPointF point);
    QPointF placed(QPointF point);
    class PathReader;

    QTransform m_toPage;
    double m_reach;
    bool m_mayTurn;
    QPointF m_last;
    QPointF m_lastPlaced;
    Bounds m_bounds;
    Bounds m_local;
    double m_length = 0.0;
    double m_run = 0.0;
    double m_rise = 0.0;
    int m_points = 0;
    int m_farPoints = 0;
};
