// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QBrush>
#include <QList>
#include <QPaintDevice>
#include <QPaintEngine>
#include <QPainterPath>
#include <QPen>
#include <QPolygonF>
#include <QRectF>
#include <QTransform>

/// A paint device of 1000 × 1000 that notes each figure drawn, with its pen and brush.
class RecordingPaintDevice : public QPaintDevice
{
public:
    struct Drawing
    {
        QRectF rect;
        QPen pen;
        QBrush brush;
    };
    enum class Kind { Rect, Ellipse, Path };
    /// A rectangle, ellipse or path, and the painter's state for it.
    struct Figure
    {
        Kind kind;
        QPainterPath path;
        QPen pen;
        QBrush brush;
        QTransform transform;
        bool clipped;
    };

    /// A line, a polyline, a polygon or a part of a path, whichever of Qt's operations drew it; a closed one
    /// does not repeat its first point.
    struct Outline
    {
        QPolygonF points;
        bool closed;
        QPen pen;
        QBrush brush;
    };

    [[nodiscard]] const QList<Drawing> &drawings() const { return m_engine.drawings; }
    [[nodiscard]] const QList<Outline> &outlines() const { return m_engine.outlines; }
    /// Rectangles, ellipses and paths in the order in which they were drawn.
    [[nodiscard]] const QList<Figure> &figures() const { return m_engine.figures; }
    /// How often something other than a rectangle was drawn.
    [[nodiscard]] int otherDrawings() const { return m_engine.otherDrawings; }

    [[nodiscard]] QPaintEngine *paintEngine() const override { return &m_engine; }

protected:
    [[nodiscard]] int metric(PaintDeviceMetric metric) const override
    {
        switch (metric) {
        case PdmWidth:
        case PdmHeight:
            return 1000;
        case PdmDepth:
            return 32;
        case PdmDevicePixelRatio:
            return 1;
        case PdmDevicePixelRatioScaled:
            return int(devicePixelRatioFScale());
        default:
            return 100; // dots per inch, and sizes that no drawing depends on
        }
    }

private:
    class Engine : public QPaintEngine
    {
    public:
        Engine()
            : QPaintEngine(AllFeatures)
        {
        }

        bool begin(QPaintDevice * /*device*/) override { return true; }
        bool end() override { return true; }
        [[nodiscard]] Type type() const override { return User; }
        void updateState(const QPaintEngineState &changed) override
        {
            if (changed.state() & DirtyPen)
                m_pen = changed.pen();
            if (changed.state() & DirtyBrush)
                m_brush = changed.brush();
            if (changed.state() & DirtyTransform)
                m_transform = changed.transform();
            m_clipped = changed.isClipEnabled() && changed.clipOperation() != Qt::NoClip;
        }
        void drawRects(const QRectF *rects, int count) override
        {
            for (int i = 0; i < count; ++i) {
                drawings.append({ rects[i], m_pen, m_brush });
                QPainterPath path;
                path.addRect(rects[i]);
                note(Kind::Rect, path);
            }
        }
        void drawEllipse(const QRectF &rect) override
        {
            ++otherDrawings;
            QPainterPath path;
            path.addEllipse(rect);
            note(Kind::Ellipse, path);
        }
        void drawPath(const QPainterPath &path) override
        {
            ++otherDrawings;
            note(Kind::Path, path);
            for (const QPolygonF &part : path.toSubpathPolygons())
                noteOutline(part, part.isClosed());
        }
        void drawPolygon(const QPointF *points, int count, PolygonDrawMode mode) override
        {
            ++otherDrawings;
            noteOutline(QPolygonF(QList<QPointF>(points, points + count)), mode != PolylineMode);
        }
        void drawPixmap(
            const QRectF & /*rect*/, const QPixmap & /*pixmap*/, const QRectF & /*source*/) override
        {
            ++otherDrawings;
        }

        QList<Drawing> drawings;
        QList<Figure> figures;
        QList<Outline> outlines;
        int otherDrawings = 0;

    private:
        void noteOutline(QPolygonF points, bool closed)
        {
            if (closed && points.isClosed())
                points.removeLast();
            outlines.append({ points, closed, m_pen, m_brush });
        }
        void note(Kind kind, const QPainterPath &path)
        {
            figures.append({ kind, path, m_pen, m_brush, m_transform, m_clipped });
        }

        QPen m_pen;
        QBrush m_brush;
        QTransform m_transform;
        bool m_clipped = false;
    };

    mutable Engine m_engine;
};
