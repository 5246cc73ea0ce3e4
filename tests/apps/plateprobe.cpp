// SPDX-License-Identifier: BSD-3-Clause
#include "tests/apps/plateprobe.h"

PlateProbe::PlateProbe(const QString &file)
    : m_image(file)
    , m_dotsPerMillimetre(m_image.dotsPerMeterX() / 1000.0)
{
}

double PlateProbe::coverage(const QRectF &area) const
{
    const QRect dots = dotsOf(area);
    int printing = 0;
    for (int y = dots.top(); y <= dots.bottom(); ++y) {
        for (int x = dots.left(); x <= dots.right(); ++x)
            printing += prints(x, y) ? 1 : 0;
    }
    return 100.0 * printing / (double(dots.width()) * dots.height());
}

QList<std::pair<double, double>> PlateProbe::lines(const QRectF &area) const
{
    const QRect dots = dotsOf(area);
    QList<std::pair<double, double>> found;
    bool inside = false;
    for (int y = dots.top(); y <= dots.bottom(); ++y) {
        const QRectF row(dots.left() / m_dotsPerMillimetre, y / m_dotsPerMillimetre,
            dots.width() / m_dotsPerMillimetre, 1.0 / m_dotsPerMillimetre);
        const bool was = std::exchange(inside, coverage(row) > 0.0);
        if (inside && !was)
            found.append({ row.top(), row.bottom() });
        else if (inside)
            found.last().second = row.bottom();
    }
    return found;
}

QRect PlateProbe::dotsOf(const QRectF &area) const
{
    return QRectF(area.topLeft() * m_dotsPerMillimetre, area.size() * m_dotsPerMillimetre)
        .toRect()
        .intersected(m_image.rect());
}

bool PlateProbe::prints(int x, int y) const
{
    return m_image.pixel(x, y) == qRgb(0, 0, 0);
}

QRectF PlateProbe::extent(const QRectF &area, bool printing) const
{
    const QRect dots = dotsOf(area);
    QRect found;
    for (int y = dots.top(); y <= dots.bottom(); ++y) {
        for (int x = dots.left(); x <= dots.right(); ++x) {
            if (prints(x, y) == printing)
                found |= QRect(x, y, 1, 1);
        }
    }
    return QRectF(QPointF(found.topLeft()) / m_dotsPerMillimetre, QSizeF(found.size()) / m_dotsPerMillimetre);
}
