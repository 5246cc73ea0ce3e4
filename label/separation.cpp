// SPDX-License-Identifier: BSD-3-Clause
#include "label/separation.h"

#include "items/core/item.h"
#include "items/core/itemcolors.h"
#include "items/core/limits.h"
#include "label/flatdocument.h"
#include "label/inkwarnings.h"
#include "label/labellimits.h"
#include "label/onebit.h"
#include "label/platepictures.h"
#include "label/platerenderer.h"
#include "label/printcopy.h"
#include "label/printedbarcodes.h"
#include "label/printlimits.h"

#include <QGraphicsScene>

#include <algorithm>

namespace {

constexpr double millimetresPerInch = 25.4;

/// Dots per scene unit.
double scalingOf(const LabelDocument &document, const SeparationOptions &options)
{
    return options.dpi / document.designDpi();
}

/// Paper and inks, as plain RGB.
QList<QColor> colorsOf(const LabelDocument &document)
{
    QList<QColor> colors { QColor::fromRgb(document.paper().rgb()) };
    for (const Ink &ink : document.inks())
        colors += QColor::fromRgb(ink.color.rgb());
    return colors;
}

/// Whether an item takes part in the plate of an ink: when inks print over each other, one that has nothing
/// in the ink stays out of it.
bool takesPart(Item &item, const QColor &ink, double scaling, bool overprint, const QList<QColor> &colors)
{
    if (!item.getItemIsVisible())
        return false;
    return !overprint || !item.getAllowOverprint()
        || PrintCopy(item, scaling, PrintCopy::Mode::Positive, colors).reduceTo(ink);
}

/// What all plates are made from.
struct Source
{
    const LabelDocument &document;
    const SeparationOptions &options;
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

void fillScene(QGraphicsScene &scene, const Source &source, qsizetype inkIndex)
{
    const auto &[document, options, pictures] = source;
    // The items compare their colours with plain RGB.
    const QColor ink = QColor::fromRgb(document.inks()[inkIndex].color.rgb());
    const double scaling = scalingOf(document, options);
    const auto mode = options.negative ? PrintCopy::Mode::Negative : PrintCopy::Mode::Positive;
    const QList<QColor> colors = colorsOf(document);
    for (const std::unique_ptr<Item> &item : document.items()) {
        const qsizetype index = &item - document.items().data();
        if (pictures.contains(index)) {
            addPicture(scene, source, index, inkIndex);
            continue;
        }
        if (!takesPart(*item, ink, scaling, options.overprint, colors))
            continue;
        PrintCopy copy(*item, scaling, mode, colors);
        copy.reduceTo(ink);
        copy.handTo(scene);
    }
}

QImage plateImage(const Source &source, qsizetype ink)
{
    const auto &[document, options, pictures] = source;
    QGraphicsScene scene(QRectF(QPointF(), document.pageSizeInUnits()));
    scene.setItemIndexMethod(QGraphicsScene::NoIndex);
    fillScene(scene, source, ink);
    const QRgb background = options.negative ? ItemColors::blackRgb : ItemColors::whiteRgb;
    QImage image = renderPlate(scene, document.pageSizeInDots(options.dpi), scalingOf(document, options),
        background, LabelLimits::BandPixels);
    const int dotsPerMetre = Limits::toInt(options.dpi / millimetresPerInch * 1000.0);
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

Problems makePlates(
    const LabelDocument &document, const SeparationOptions &options, std::vector<Plate> &plates)
{
    const PlatePictures pictures(document, options);
    const Source source { document, options, pictures };
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

} // namespace

double Plate::coverage() const
{
    const double all = double(image.width()) * image.height();
    return all > 0.0 ? 100.0 * double(dots) / all : 0.0;
}

double Plate::area() const
{
    const double side = millimetresPerInch / dpi;
    return double(dots) * side * side;
}

std::optional<Separation> separate(
    const LabelDocument &original, const SeparationOptions &options, Problems &problems)
{
    if (const Problems found = original.problems(); !found.isEmpty()) {
        problems += found;
        return {};
    }
    const FlatDocument flat(original, options.layers);
    const LabelDocument &document = flat.document();
    Separation separation { {}, document.paper(), inkWarnings(document), {} };
    Problems found = flat.problems();
    if (found.isEmpty())
        found = printProblems(document, options.dpi);
    if (found.isEmpty())
        found = makePlates(document, options, separation.plates);
    if (!found.isEmpty()) {
        problems += found;
        return {};
    }
    separation.barcodes = PrintedBarcodes::of(document, options.dpi);
    separation.warnings += PrintedBarcodes::warnings(document, separation.barcodes, options.dpi);
    flat.locate(separation.warnings);
    separation.warnings += flat.warnings();
    for (PrintedBarcode &barcode : separation.barcodes)
        barcode.where = flat.pointerOf(std::size_t(barcode.item));
    if (!options.negative && !options.overprint)
        keepDotsOnFirstPlate(separation.plates);
    for (Plate &plate : separation.plates)
        plate.dots = OneBit::countBlack(plate.image);
    return separation;
}
