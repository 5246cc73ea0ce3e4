// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "label/separation.h"

#include <QImage>

#include <vector>

class QGraphicsScene;

/// A clear page on which print scenes are painted, and from which their dots are then taken. It has 32 bits
/// for each dot.
class DotCanvas
{
public:
    explicit DotCanvas(QSize dots);
    Q_DISABLE_COPY_MOVE(DotCanvas)

    /// False if there is not enough memory for it.
    [[nodiscard]] bool isValid() const { return !m_page.isNull(); }

    /// Renders the items of a scene as renderPlate() does.
    void paint(QGraphicsScene &scene, double scaling);

    /// Puts what is painted in black and white on a plate of the same size, where it covers what the plate
    /// shows, and clears the canvas. False, and the plate is of no use, if a dot lies where the picture of
    /// taken bits has one, or lets what is below it shine through: then its order among other things matters.
    [[nodiscard]] bool moveTo(QImage &plate, const QImage &taken);
    /// The same for all plates, of what is painted in the numbers of their inks; see
    /// PrintCopy::numberInks(). False for any other colour as well.
    [[nodiscard]] bool moveNumbersTo(std::vector<Plate> &plates, const QImage &taken);
    /// Adds a dot to a picture of bits wherever anything is painted, and clears the canvas.
    void moveCoverTo(QImage &bits);

private:
    template <typename Take> void takeGroups(QSize size, Take take);

    std::vector<QRgb> m_pixels; ///< rows of whole words of bits
    std::size_t m_rowPixels;
    QImage m_page; ///< of m_pixels
    std::vector<QRect> m_painted; ///< all that may be painted lies in these
};
