// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "label/separation.h"

class QGraphicsScene;

/// The print scenes of a document without containers: its items as copies that are reduced to one ink. They
/// are all but its pictures, which are dots already.
class PlateScenes
{
public:
    /// The document must outlive it; its items may change.
    PlateScenes(const LabelDocument &document, const SeparationOptions &options);

    [[nodiscard]] QSize dots() const;
    /// Dots per scene unit.
    [[nodiscard]] double scaling() const { return m_scaling; }
    /// What the plate shows where nothing is painted.
    [[nodiscard]] QRgb background() const;

    /// Puts a copy of the item on top of what the scene holds at its z value, unless the item takes no part
    /// in the plate.
    void add(QGraphicsScene &scene, Item &item, qsizetype ink) const;
    /// The same in the numbers of all inks; see PrintCopy::numberInks(). False if that cannot be.
    [[nodiscard]] bool addNumbered(QGraphicsScene &scene, Item &item) const;

private:
    [[nodiscard]] bool takesPart(Item &item, const QColor &ink) const;

    const LabelDocument &m_document;
    SeparationOptions m_options;
    QList<QColor> m_colors; ///< of paper and inks, as plain RGB
    double m_scaling;
};
