// SPDX-License-Identifier: BSD-3-Clause
#include "label/plates.h"

#include "items/core/item.h"
#include "items/core/limits.h"
#include "label/labellimits.h"
#include "label/onebit.h"
#include "label/platepictures.h"
#include "label/platerenderer.h"
#include "label/platescenes.h"

#include <QGraphicsScene>

#include <algorithm>

namespace {

constexpr double millimetresPerInch = 25.4;

/// What all plates are made from.
struct Source
{
    const LabelDocument &document;
    const SeparationOptions &options;
    const PlateScenes &scenes;
    const PlatePictures &pictures;
};

/// Puts a picture into the scene of a plate, if it takes part in it.
void addPicture(QGraphicsScene &scene, const Source &source, qsizetype item, qsizetype ink)
{
    const bool mayStayOut
        = source.options.overprint && source.document.items()[std::size_t(item)]->getAllowOverprint();
    if (!mayStayOut || source.pictures.prints(item, ink))
        source.pictures.place(item, ink, scene);
}

void fillScene(QGraphicsScene &scene, const Source &source, qsizetype ink)
{
    const std::vector<std::unique_ptr<Item>> &items = source.document.items();
    for (qsizetype i = 0; i < qsizetype(items.size()); ++i) {
        if (source.pictures.contains(i))
            addPicture(scene, source, i, ink);
        else
            source.scenes.add(scene, *items[std::size_t(i)], ink);
    }
}

QImage plateImage(const Source &source, qsizetype ink)
{
    QGraphicsScene scene(QRectF(QPointF(), source.document.pageSizeInUnits()));
    scene.setItemIndexMethod(QGraphicsScene::NoIndex);
    fillScene(scene, source, ink);
    QImage image = renderPlate(scene, source.scenes.dots(), source.scenes.scaling(),
        source.scenes.background(), LabelLimits::BandPixels);
    const int dotsPerMetre = Limits::toInt(source.options.dpi / millimetresPerInch * 1000.0);
    image.setDotsPerMeterX(dotsPerMetre);
    image.setDotsPerMeterY(dotsPerMetre);
    return image;
}

/// Rounding at slanted edges may give a dot to two inks: it stays with the first.
void keepDotsOnFirstPlate(std::vector<Plate> &plates)
{
    const QImage &first = plates.front().image;
    const auto bytes = std::size_t(first.bytesPerLine());
    std::vector<uchar> taken(bytes);
    for (int y = 0; y < first.height(); ++y) {
        std::fill(taken.begin(), taken.end(), 0);
        for (Plate &plate : plates) {
            uchar *dots = plate.image.scanLine(y);
            for (std::size_t i = 0; i < bytes; ++i) {
                dots[i] &= ~taken[i];
                taken[i] |= dots[i];
            }
        }
    }
}

} // namespace

Problems Plates::make(
    const LabelDocument &document, const SeparationOptions &options, std::vector<Plate> &plates)
{
    const PlateScenes scenes(document, options);
    const PlatePictures pictures(document, options);
    const Source source { document, options, scenes, pictures };
    bool complete = pictures.isValid();
    for (qsizetype i = 0; i < document.inks().size() && complete; ++i) {
        plates.push_back({ document.inks()[i], plateImage(source, i), 0, options.dpi });
        complete = !plates.back().image.isNull();
    }
    if (complete)
        return {};
    return { { {}, {}, QStringLiteral("not enough memory for the plates"),
        QStringLiteral("use a lower resolution") } };
}

void Plates::finish(std::vector<Plate> &plates, const SeparationOptions &options)
{
    if (!options.negative && !options.overprint)
        keepDotsOnFirstPlate(plates);
    for (Plate &plate : plates)
        plate.dots = OneBit::countBlack(plate.image);
}
