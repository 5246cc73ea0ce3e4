// SPDX-License-Identifier: BSD-3-Clause
#include "label/separation.h"

#include "items/core/item.h"
#include "items/core/itemcolors.h"
#include "items/core/limits.h"
#include "label/inkwarnings.h"
#include "label/labellimits.h"
#include "label/onebit.h"
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
    if (!item.getItemIsVisible() || isPicture(item))
        return false;
    return !overprint || !item.getAllowOverprint()
        || PrintCopy(item, scaling, PrintCopy::Mode::Positive, colors).reduceTo(ink);
}

void fillScene(
    QGraphicsScene &scene, const LabelDocument &document, const QColor &ink, const SeparationOptions &options)
{
    const double scaling = scalingOf(document, options);
    const auto mode = options.negative ? PrintCopy::Mode::Negative : PrintCopy::Mode::Positive;
    const QList<QColor> colors = colorsOf(document);
    for (const std::unique_ptr<Item> &item : document.items()) {
        if (!takesPart(*item, ink, scaling, options.overprint, colors))
            continue;
        PrintCopy copy(*item, scaling, mode, colors);
        copy.reduceTo(ink);
        copy.handTo(scene);
    }
}

QImage plateImage(const LabelDocument &document, const QColor &ink, const SeparationOptions &options)
{
    QGraphicsScene scene(QRectF(QPointF(), document.pageSizeInUnits()));
    scene.setItemIndexMethod(QGraphicsScene::NoIndex);
    // The items compare their colours with plain RGB.
    fillScene(scene, document, QColor::fromRgb(ink.rgb()), options);
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
    const LabelDocument &document, const SeparationOptions &options, Problems &problems)
{
    Problems found = document.problems();
    if (found.isEmpty())
        found = printProblems(document, options.dpi);
    Separation separation { {}, document.paper(), inkWarnings(document), {} };
    for (qsizetype i = 0; i < document.inks().size() && found.isEmpty(); ++i) {
        const Ink &ink = document.inks()[i];
        separation.plates.push_back({ ink, plateImage(document, ink.color, options), 0, options.dpi });
        if (separation.plates.back().image.isNull())
            found.append({ {}, {}, QStringLiteral("not enough memory for the plates"),
                QStringLiteral("use a lower resolution") });
    }
    if (!found.isEmpty()) {
        problems += found;
        return {};
    }
    separation.barcodes = PrintedBarcodes::of(document, options.dpi);
    separation.warnings += PrintedBarcodes::warnings(document, separation.barcodes, options.dpi);
    if (!options.negative && !options.overprint)
        keepDotsOnFirstPlate(separation.plates);
    for (Plate &plate : separation.plates)
        plate.dots = OneBit::countBlack(plate.image);
    return separation;
}
