// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QImage>
#include <QList>
#include <QRectF>

#include <utility>

/// A plate that a program has written, measured in millimetres.
class PlateProbe
{
public:
    explicit PlateProbe(const QString &file);

    [[nodiscard]] bool isNull() const { return m_image.isNull(); }
    /// The share of dots within an area that print, in percent.
    [[nodiscard]] double coverage(const QRectF &area) const;
    /// The smallest rectangle with all dots of an area that print, or with all that do not.
    [[nodiscard]] QRectF printed(const QRectF &area) const { return extent(area, true); }
    [[nodiscard]] QRectF blank(const QRectF &area) const { return extent(area, false); }
    /// Where the rows of an area in which anything prints begin and end.
    [[nodiscard]] QList<std::pair<double, double>> lines(const QRectF &area) const;

private:
    [[nodiscard]] QRect dotsOf(const QRectF &area) const;
    [[nodiscard]] bool prints(int x, int y) const;
    [[nodiscard]] QRectF extent(const QRectF &area, bool printing) const;

    QImage m_image;
    double m_dotsPerMillimetre;
};
