// SPDX-License-Identifier: BSD-3-Clause
#include "label/printedbarcodes.h"

#include "items/barcode/barcodeitem.h"
#include "label/barcodeencoding.h"
#include "label/wording.h"
#include "platform/zint/dotrendering.h"
#include "platform/zint/geometryof.h"
#include "platform/zint/symbologies.h"

#include <QLineF>

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

using namespace Qt::StringLiterals;

namespace {

constexpr double millimetresPerInch = 25.4;
/// Decoders expect square modules, and put up with less.
constexpr double mostStretched = 1.5;

// The numbers by which the encoder knows symbols.
constexpr int maxiCode = 57;
constexpr int ultracode = 144;

/// In modules; 0 without bars.
double lowestBarOf(const Zint::SymbolGeometry &geometry)
{
    double lowest = std::numeric_limits<double>::infinity();
    for (const Zint::SymbolGeometry::Bars &bars : geometry.bars) {
        for (const QRectF &bar : bars.rects)
            lowest = std::min(lowest, bar.height());
    }
    return geometry.bars.empty() ? 0.0 : lowest;
}

using PrintedBarcodes::Fault;

PrintedBarcode printed(const BarcodeItem &item, double dpi, double scaling)
{
    const Zint::QZint barcode = BarcodeEncoding::of(item);
    const QTransform toDots = item.sceneTransform() * QTransform::fromScale(scaling, scaling);
    const Zint::ModuleDots modules
        = Zint::moduleDots(barcode, item.boundingRect(), BarcodeEncoding::modeOf(item), toDots);
    const Zint::Symbology *symbology = Zint::symbologyOf(barcode.symbol());
    return { .where = {},
        .name = Wording::item(item),
        .symbology = symbology ? symbology->name : QString(),
        .error = barcode.error_int(),
        .message = barcode.errorText(),
        .place = modules.place,
        .modules = modules.modules,
        .dots = modules.dots,
        .squareModules = modules.squareModules,
        .sharp = modules.sharp,
        .lowestBar = lowestBarOf(*Zint::geometryOf(barcode)) * modules.dots.height(),
        .moduleWidth = modules.dots.width() * millimetresPerInch / dpi };
}

QString reasonOf(int error)
{
    switch (error) {
    case 5:
        return u"the text is too long for the symbology"_s;
    case 6:
        return u"the symbology does not take the text"_s;
    case 7:
        return u"the check digit of the text is wrong"_s;
    case 8:
        return u"the symbology does not take its level, option or white space"_s;
    default:
        return u"the encoder refuses it with error %1"_s.arg(error);
    }
}

QString adviceFor(int error)
{
    return error == 8 ? u"change that or the symbology"_s : u"change the text or the symbology"_s;
}

QString nameOf(const BarcodeItem &item, const PrintedBarcode &barcode)
{
    return barcode.symbology.isEmpty() ? Wording::item(item)
                                       : u"%1 (%2)"_s.arg(Wording::item(item), barcode.symbology);
}

/// The resolutions of label printers.
double usualResolution(double least)
{
    constexpr std::array<double, 5> resolutions { 203.0, 300.0, 600.0, 1200.0, 2400.0 };
    const auto found = std::ranges::find_if(resolutions, [least](double dpi) { return dpi >= least; });
    return found == resolutions.end() ? std::ceil(least) : *found;
}

struct Side
{
    QString adjective;
    double modules;
    double dots; ///< of a module
    double length; ///< of the item, in dots

    [[nodiscard]] double dotsInReach() const { return length / modules; }
};

double lengthInDots(const BarcodeItem &item, QPointF end, double scaling)
{
    const QTransform toScene = item.sceneTransform();
    return QLineF(toScene.map(QPointF()), toScene.map(end)).length() * scaling;
}

/// The side that keeps modules from being larger.
const Side &smallerOf(const Side &width, const Side &height, const BarcodeItem &item, bool squareModules)
{
    const auto mode = BarcodeEncoding::modeOf(item);
    const bool keepsProportions = mode == Zint::QZint::KeepAspectRatio || mode == Zint::QZint::CenterBarCode;
    if (keepsProportions)
        return height.dotsInReach() < width.dotsInReach() ? height : width;
    return squareModules && height.dots < width.dots ? height : width;
}

/// The fewest dots of a module. The rows of hexagons lie closer than they are wide: of a single dot, they run
/// into each other.
double leastDots(const BarcodeItem &item)
{
    return item.getBarcodeSymbol() == maxiCode ? 2.0 : 1.0;
}

QString adviceOf(const Side &side, double leastLength, double dpi, double leastDpi)
{
    const double least = std::ceil(leastLength * millimetresPerInch / dpi * 10.0 - 1e-6) / 10.0;
    return u"make it at least %1 mm %2 or print at %3 dpi"_s.arg(least)
        .arg(side.adjective)
        .arg(usualResolution(leastDpi));
}

/// A side with too few dots for each module cannot be read.
Problem tooSmall(const Side &side, double dpi, double needed)
{
    // From one dot on they are whole, and the item has more.
    const double dots = side.dots < 1.0 ? side.dots : side.dotsInReach();
    const QString counted
        = u"%1 modules in %2 dots"_s.arg(side.modules).arg(std::floor(side.modules * side.dots + 1e-6));
    return { {}, {}, needed > 1.0 ? counted + u"; each needs %1"_s.arg(needed) : counted,
        adviceOf(side, side.length * needed / dots, dpi, dpi * needed / dots) };
}

/// Rows of less than a dot may have none.
Problem tooLow(const Side &height, double lowestBar, double dpi)
{
    return { {}, {}, u"its lowest bars have %1 of a dot"_s.arg(lowestBar),
        adviceOf(height, height.length / lowestBar, dpi, dpi / lowestBar) };
}

std::optional<Fault> findFault(
    const BarcodeItem &item, const PrintedBarcode &barcode, double dpi, double scaling)
{
    if (barcode.isRefused())
        return Fault { Fault::Refused, { {}, {}, reasonOf(barcode.error), adviceFor(barcode.error) } };
    if (item.getBarcodeSymbol() == ultracode)
        return Fault { Fault::Coloured,
            { {}, {}, u"its modules have colours of their own, which no plate has"_s,
                u"choose another symbology"_s } };
    if (item.boundingRect().isEmpty())
        return Fault { Fault::NoRoom, { {}, {}, u"there is no room for the symbol"_s, u"make it larger"_s } };
    if (barcode.modules.isEmpty())
        return Fault { Fault::NoBars,
            { {}, {}, u"the text has no bars"_s, u"change the text or the symbology"_s } };
    const Side width { u"wide"_s, barcode.modules.width(), barcode.dots.width(),
        lengthInDots(item, { item.getItemWidth(), 0.0 }, scaling) };
    const Side height { u"high"_s, barcode.modules.height(), barcode.dots.height(),
        lengthInDots(item, { 0.0, item.getItemHeight() }, scaling) };
    const Side &smaller = smallerOf(width, height, item, barcode.squareModules);
    if (smaller.dots < leastDots(item))
        return Fault { Fault::TooSmall, tooSmall(smaller, dpi, leastDots(item)) };
    if (barcode.lowestBar > 0.0 && barcode.lowestBar < 1.0)
        return Fault { Fault::TooLow, tooLow(height, barcode.lowestBar, dpi) };
    const double ratio = width.dots / height.dots;
    if (barcode.squareModules && std::max(ratio, 1.0 / ratio) >= mostStretched)
        return Fault { Fault::Stretched,
            { {}, {}, u"its modules are stretched to %1 x %2 dots"_s.arg(width.dots).arg(height.dots),
                width.modules == height.modules
                    ? u"make it square"_s
                    : u"give it the proportions %1 to %2"_s.arg(width.modules).arg(height.modules) } };
    if (!barcode.sharp)
        return Fault { Fault::Turned,
            { {}, {}, u"turned as it is, its modules do not fall on whole dots"_s,
                u"turn it by right angles"_s } };
    return {};
}

const BarcodeItem &itemOf(const LabelDocument &document, std::size_t item)
{
    return dynamic_cast<const BarcodeItem &>(*document.items()[item]);
}

} // namespace

PrintedBarcode PrintedBarcodes::of(const LabelDocument &document, std::size_t item, double dpi)
{
    PrintedBarcode barcode = printed(itemOf(document, item), dpi, dpi / document.designDpi());
    barcode.item = qsizetype(item);
    return barcode;
}

std::vector<PrintedBarcode> PrintedBarcodes::of(const LabelDocument &document, double dpi)
{
    std::vector<PrintedBarcode> barcodes;
    for (std::size_t i = 0; i < document.items().size(); ++i) {
        const Item &item = *document.items()[i];
        if (dynamic_cast<const BarcodeItem *>(&item) && item.getItemIsVisible())
            barcodes.push_back(of(document, i, dpi));
    }
    return barcodes;
}

std::optional<Fault> PrintedBarcodes::faultOf(
    const LabelDocument &document, const PrintedBarcode &barcode, double dpi)
{
    const BarcodeItem &item = itemOf(document, std::size_t(barcode.item));
    std::optional<Fault> fault = findFault(item, barcode, dpi, dpi / document.designDpi());
    if (fault) {
        fault->problem.where = u"/items/%1"_s.arg(barcode.item);
        fault->problem.what.prepend(nameOf(item, barcode) + u": "_s);
    }
    return fault;
}

Problems PrintedBarcodes::warnings(
    const LabelDocument &document, const std::vector<PrintedBarcode> &barcodes, double dpi)
{
    Problems warnings;
    for (const PrintedBarcode &barcode : barcodes) {
        if (const std::optional<Fault> fault = faultOf(document, barcode, dpi))
            warnings.append(fault->problem);
    }
    return warnings;
}
