// SPDX-License-Identifier: BSD-3-Clause
#include "items/graphics/svgoutline.h"

#include "items/graphics/svgnumbers.h"

#include <algorithm>
#include <array>
#include <cmath>

void SvgOutline::Bounds::add(QPointF point)
{
    left = std::min(left, point.x());
    top = std::min(top, point.y());
    right = std::max(right, point.x());
    bottom = std::max(bottom, point.y());
}

SvgOutline::SvgOutline(const QTransform &toPage, double reach, bool mayTurn)
    : m_toPage(toPage)
    , m_reach(reach)
    , m_mayTurn(mayTurn)
{
}

double SvgOutline::extent() const
{
    return std::max(m_local.width(), m_local.height());
}

QPointF SvgOutline::placed(QPointF point)
{
    constexpr double far = 50.0;
    // Faster than QTransform, which asks for its kind first.
    const QPointF page(m_toPage.m11() * point.x() + m_toPage.m21() * point.y() + m_toPage.dx(),
        m_toPage.m12() * point.x() + m_toPage.m22() * point.y() + m_toPage.dy());
    // Written so that it is true of what is no number.
    if (!(std::abs(page.x()) < far && std::abs(page.y()) < far))
        ++m_farPoints;
    const auto within = [this](double value) {
        return std::isnan(value) ? 0.0 : std::clamp(value, -m_reach, 1.0 + m_reach);
    };
    return QPointF(within(page.x()), within(page.y()));
}

void SvgOutline::moveTo(QPointF point)
{
    m_last = point;
    m_lastPlaced = placed(point);
    m_bounds.add(m_lastPlaced);
    m_local.add(point);
}

void SvgOutline::lineTo(QPointF point)
{
    const QPointF from = m_last;
    const QPointF fromPlaced = m_lastPlaced;
    moveTo(point);
    m_length += (point - from).manhattanLength();
    const QPointF step = m_lastPlaced - fromPlaced;
    if (m_mayTurn || step.y() != 0.0)
        m_run += std::abs(step.x());
    m_rise += std::abs(step.y());
    ++m_points;
}

void SvgOutline::addLine(QPointF from, QPointF to)
{
    moveTo(from);
    lineTo(to);
}

void SvgOutline::addRect(const QRectF &rect)
{
    moveTo(rect.topLeft());
    lineTo(rect.topRight());
    lineTo(rect.bottomRight());
    lineTo(rect.bottomLeft());
    lineTo(rect.topLeft());
}

void SvgOutline::addEllipse(QPointF centre, double radiusX, double radiusY)
{
    addRect(QRectF(centre.x() - radiusX, centre.y() - radiusY, 2.0 * radiusX, 2.0 * radiusY));
}

void SvgOutline::addPoints(QStringView data)
{
    SvgNumbers numbers(data);
    bool isFirst = true;
    QPointF begin;
    while (numbers.hasNumber()) {
        const double x = numbers.number();
        if (!numbers.hasNumber())
            break;
        const QPointF point(x, numbers.number());
        if (isFirst)
            moveTo(begin = point);
        else
            lineTo(point);
        isFirst = false;
    }
    if (!isFirst)
        lineTo(begin);
}

/// Follows the commands of a path.
class SvgOutline::PathReader
{
public:
    PathReader(SvgOutline &outline, QStringView data)
        : m_outline(outline)
        , m_numbers(data)
    {
    }

    void read()
    {
        for (QChar command = m_numbers.command(); !command.isNull(); command = m_numbers.command()) {
            const char16_t kind = command.toLower().unicode();
            m_relative = command.isLower();
            if (kind == u'z')
                close();
            else
                readAll(kind);
        }
        close();
    }

private:
    void close()
    {
        m_outline.lineTo(m_begin);
        m_at = m_begin;
    }

    void readAll(char16_t kind)
    {
        while (m_numbers.hasNumber()) {
            switch (kind) {
            case u'm':
                m_begin = point();
                m_at = m_begin;
                m_outline.moveTo(m_at);
                kind = u'l';
                break;
            case u'h':
                lineTo(QPointF(m_numbers.number() + (m_relative ? m_at.x() : 0.0), m_at.y()));
                break;
            case u'v':
                lineTo(QPointF(m_at.x(), m_numbers.number() + (m_relative ? m_at.y() : 0.0)));
                break;
            case u'c':
                curve(3);
                break;
            case u's':
            case u'q':
                curve(2);
                break;
            case u'a':
                arc();
                break;
            default:
                // Smooth curves too: what goes beyond their points goes as far as the curve before.
                lineTo(point());
            }
        }
    }

    double next() { return m_numbers.hasNumber() ? m_numbers.number() : 0.0; }

    QPointF point()
    {
        const double x = next();
        const double y = next();
        return m_relative ? m_at + QPointF(x, y) : QPointF(x, y);
    }

    void lineTo(QPointF point)
    {
        m_outline.lineTo(point);
        m_at = point;
    }

    void curve(int points)
    {
        QPointF last;
        for (int i = 0; i < points; ++i) {
            last = point();
            m_outline.lineTo(last);
        }
        m_at = last;
    }

    void arc()
    {
        const double radiusX = std::abs(next());
        const double radiusY = std::abs(next());
        next();
        m_numbers.flag();
        m_numbers.flag();
        const QPointF end = point();
        // Radii that are too small grow until they reach.
        const double chord = (end - m_at).manhattanLength();
        const double radius = std::max({ radiusX, radiusY, chord });
        const QPointF across(radius, radius);
        lineTo(m_at + across);
        lineTo(end - across);
        lineTo(end);
    }

    SvgOutline &m_outline;
    SvgNumbers m_numbers;
    QPointF m_at;
    QPointF m_begin;
    bool m_relative = false;
};

void SvgOutline::addPath(QStringView data)
{
    PathReader(*this, data).read();
}
