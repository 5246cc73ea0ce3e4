// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QImage>

#include <algorithm>
#include <cstdlib>

/// How far two pictures of the same thing are apart, of which one is smooth and the other of whole dots.
class PictureDistance
{
public:
    /// Of what both pictures have.
    PictureDistance(const QImage &one, const QImage &other)
        : m_one(one.convertToFormat(QImage::Format_RGB32))
        , m_other(other.convertToFormat(QImage::Format_RGB32))
        , m_size(one.size().boundedTo(other.size()))
    {
        for (int y = 0; y < m_size.height(); ++y) {
            for (int x = 0; x < m_size.width(); ++x)
                count(x, y);
        }
    }

    /// The share of pixels that differ by more than half of a channel's range.
    [[nodiscard]] double differing() const { return shareOf(m_differing); }
    /// The share of those to which no pixel of the other picture within a dot is nearer.
    [[nodiscard]] double farOff() const { return shareOf(m_farOff); }

private:
    static constexpr int half = 128;

    void count(int x, int y)
    {
        const QRgb pixel = m_one.pixel(x, y);
        if (isNear(pixel, m_other.pixel(x, y)))
            return;
        ++m_differing;
        for (int v = std::max(0, y - 1); v <= std::min(y + 1, m_size.height() - 1); ++v) {
            for (int u = std::max(0, x - 1); u <= std::min(x + 1, m_size.width() - 1); ++u) {
                if (isNear(pixel, m_other.pixel(u, v)))
                    return;
            }
        }
        ++m_farOff;
    }

    static bool isNear(QRgb left, QRgb right)
    {
        const auto isFar = [](int one, int other) { return std::abs(one - other) > half; };
        return !isFar(qRed(left), qRed(right)) && !isFar(qGreen(left), qGreen(right))
            && !isFar(qBlue(left), qBlue(right));
    }

    [[nodiscard]] double shareOf(int pixels) const
    {
        return double(pixels) / m_size.width() / m_size.height();
    }

    QImage m_one;
    QImage m_other;
    QSize m_size;
    int m_differing = 0;
    int m_farOff = 0;
};
