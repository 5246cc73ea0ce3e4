// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "label/nearestmixture.h"

#include <QColor>
#include <QList>

#include <vector>

/// The colours that a dot can have: that of the paper, number 0, and those of the inks from 1 on. Of equal
/// ones, only the first is ever used.
class VX_LABEL_EXPORT InkPalette
{
public:
    InkPalette(const QList<QColor> &inks, const QColor &paper);

    [[nodiscard]] std::size_t count() const { return m_colors.size(); }
    [[nodiscard]] QRgb color(std::size_t index) const { return m_colors[index]; }
    [[nodiscard]] const Oklab::Color &light(std::size_t index) const { return m_lights[index]; }

    /// The number of exactly this opaque colour, or count().
    [[nodiscard]] std::size_t indexOf(QRgb color) const
    {
        return m_mayBe[placeOf(color)] ? search(color) : m_colors.size();
    }

    /// The colour that people see as the nearest.
    [[nodiscard]] std::size_t nearest(const Oklab::Color &light) const;

    /// The light of a mixture of dots.
    [[nodiscard]] Oklab::Color lightOf(const Mixture &mixture) const;

    /// The mixture of dots that makes a colour, or that people see as the nearest if none makes it.
    [[nodiscard]] Mixture mixtureFor(const Oklab::Color &light) const;

private:
    [[nodiscard]] static std::size_t placeOf(QRgb color)
    {
        return (color ^ color >> 8 ^ color >> 16) & 0xFFU;
    }
    [[nodiscard]] std::size_t search(QRgb color) const;
    [[nodiscard]] Mixture nearestInLight(const Oklab::Color &light) const;
    [[nodiscard]] Mixture stepTowards(const Oklab::Color &lab, const Oklab::Color &from) const;
    [[nodiscard]] double distance(const Mixture &mixture, const Oklab::Color &lab) const;

    std::array<bool, 256> m_mayBe {}; ///< whether there may be a colour with this mixture of its bits
    std::vector<QRgb> m_colors;
    std::vector<Oklab::Color> m_lights;
    std::vector<Oklab::Color> m_labs;
};
