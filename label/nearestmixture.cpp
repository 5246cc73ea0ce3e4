// SPDX-License-Identifier: BSD-3-Clause
#include "label/nearestmixture.h"

#include <algorithm>
#include <utility>

namespace {

using Oklab::Color;

/// Below this share of the squared size of all points, a difference is one of rounding.
constexpr double precision = 1e-12;
/// The algorithm ends long before; rounding must not keep it from ending.
constexpr int mostRounds = 50;

double dot(const Color &left, const Color &right)
{
    return left[0] * right[0] + left[1] * right[1] + left[2] * right[2];
}

Color minus(const Color &left, const Color &right)
{
    return { left[0] - right[0], left[1] - right[1], left[2] - right[2] };
}

struct Corner
{
    std::size_t index;
    double share;
};

/// Solves up to three linear equations by elimination, without exchange of rows, which products of vectors
/// with each other do not need. An unknown that depends on those before it becomes 0.
struct Equations
{
    std::array<std::array<double, 4>, 3> rows {};
    std::size_t count = 0;

    [[nodiscard]] std::array<double, 3> solution(double least)
    {
        for (std::size_t i = 0; i < count; ++i) {
            if (rows[i][i] <= least) {
                for (std::size_t other = 0; other < count; ++other)
                    rows[other][i] = 0.0;
                rows[i] = {};
                rows[i][i] = 1.0;
                continue;
            }
            for (std::size_t other = 0; other < count; ++other) {
                if (other != i)
                    subtract(i, other);
            }
        }
        std::array<double, 3> unknowns {};
        for (std::size_t i = 0; i < count; ++i)
            unknowns[i] = rows[i][3] / rows[i][i];
        return unknowns;
    }

private:
    void subtract(std::size_t pivot, std::size_t from)
    {
        const double factor = rows[from][pivot] / rows[pivot][pivot];
        for (std::size_t column = 0; column < rows[from].size(); ++column)
            rows[from][column] -= factor * rows[pivot][column];
    }
};

class Search
{
public:
    explicit Search(const std::vector<Color> &points)
        : m_points(points)
    {
        for (const Color &point : points)
            m_size = std::max(m_size, dot(point, point));
    }

    [[nodiscard]] Mixture result()
    {
        m_corners = { { nearestPoint(), 1.0 } };
        for (int round = 0; round < mostRounds && addCorner(); ++round)
            settle();
        Mixture mixture {};
        for (const Corner &corner : m_corners)
            mixture[corner.index] += corner.share;
        return mixture;
    }

private:
    [[nodiscard]] std::size_t nearestPoint() const
    {
        std::size_t nearest = 0;
        for (std::size_t i = 1; i < m_points.size(); ++i) {
            if (dot(m_points[i], m_points[i]) < dot(m_points[nearest], m_points[nearest]))
                nearest = i;
        }
        return nearest;
    }

    [[nodiscard]] Color current() const
    {
        Color sum {};
        for (const Corner &corner : m_corners) {
            for (std::size_t i = 0; i < sum.size(); ++i)
                sum[i] += corner.share * m_points[corner.index][i];
        }
        return sum;
    }

    /// Adds the point that leads farthest towards the origin. False if none does.
    [[nodiscard]] bool addCorner()
    {
        const Color here = current();
        std::size_t best = 0;
        for (std::size_t i = 1; i < m_points.size(); ++i) {
            if (dot(here, m_points[i]) < dot(here, m_points[best]))
                best = i;
        }
        const bool isCorner
            = std::ranges::any_of(m_corners, [best](const Corner &corner) { return corner.index == best; });
        if (isCorner || m_corners.size() > 3
            || dot(here, here) - dot(here, m_points[best]) <= precision * m_size)
            return false;
        m_corners.push_back({ best, 0.0 });
        return true;
    }

    /// Goes to the nearest point of the plane through all corners, leaving out those that it lies beyond.
    void settle()
    {
        while (true) {
            const std::vector<double> shares = planeShares();
            double step = 1.0;
            for (std::size_t i = 0; i < shares.size(); ++i) {
                if (shares[i] <= 0.0)
                    step = std::min(step, m_corners[i].share / (m_corners[i].share - shares[i] + 1e-300));
            }
            for (std::size_t i = 0; i < shares.size(); ++i)
                m_corners[i].share += step * (shares[i] - m_corners[i].share);
            const auto isOut = [](const Corner &corner) { return corner.share <= precision; };
            if (std::erase_if(m_corners, isOut) == 0 || m_corners.size() == 1)
                break;
        }
        if (m_corners.size() == 1)
            m_corners.front().share = 1.0;
    }

    [[nodiscard]] std::vector<double> planeShares() const
    {
        const Color &origin = m_points[m_corners[0].index];
        std::array<Color, 3> edges;
        Equations equations;
        equations.count = m_corners.size() - 1;
        for (std::size_t i = 0; i < equations.count; ++i)
            edges[i] = minus(m_points[m_corners[i + 1].index], origin);
        for (std::size_t i = 0; i < equations.count; ++i) {
            for (std::size_t j = 0; j < equations.count; ++j)
                equations.rows[i][j] = dot(edges[i], edges[j]);
            equations.rows[i][3] = -dot(edges[i], origin);
        }
        const std::array<double, 3> found = equations.solution(precision * m_size);
        std::vector<double> shares { 1.0 };
        for (std::size_t i = 0; i < equations.count; ++i) {
            shares.push_back(found[i]);
            shares[0] -= found[i];
        }
        return shares;
    }

    const std::vector<Color> &m_points;
    std::vector<Corner> m_corners;
    double m_size = 0.0;
};

} // namespace

Mixture mixtureNearestToOrigin(const std::vector<Oklab::Color> &points)
{
    return Search(points).result();
}
