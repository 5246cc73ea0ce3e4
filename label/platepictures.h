// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "label/separation.h"

#include <QGraphicsScene>

#include <map>
#include <memory>
#include <vector>

class ImageableItem;

/// The pictures of a document as dots of its inks, made once for all plates. A picture shows what lies
/// beneath it where it is translucent; where nothing of it is to be seen, the plate stays as it is, so that
/// letters and barcodes beneath are not dithered.
class PlatePictures
{
public:
    PlatePictures(const LabelDocument &document, const SeparationOptions &options);
    ~PlatePictures();
    Q_DISABLE_COPY_MOVE(PlatePictures)

    /// False if there was not enough memory.
    [[nodiscard]] bool isValid() const { return m_isValid; }
    /// Whether the item of the document is one of the pictures.
    [[nodiscard]] bool contains(qsizetype item) const { return m_pictures.contains(item); }
    /// Whether a picture has dots of the ink.
    [[nodiscard]] bool prints(qsizetype item, qsizetype ink) const;
    /// Puts the dots of the ink on top of what a print scene holds at the item's z value.
    void place(qsizetype item, qsizetype ink, QGraphicsScene &scene) const;

private:
    struct Picture
    {
        ImageableItem *item = nullptr;
        double z = 0.0;
        QImage covered; ///< One bit for each dot; null if all are.
        std::vector<bool> prints; ///< ink by ink
    };

    void copyItems(const LabelDocument &document);
    void split(Picture &picture, const LabelDocument &document, const SeparationOptions &options);

    QGraphicsScene m_scene; ///< Copies of all items: what lies beneath the pictures.
    std::map<qsizetype, Picture> m_pictures;
    double m_scaling;
    bool m_isValid = true;
};
