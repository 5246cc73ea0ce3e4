// SPDX-License-Identifier: BSD-3-Clause
#include "tests/label/barcodetrials.h"

#include "items/barcode/barcodeitem.h"
#include "label/onebit.h"
#include "tests/label/barcoderasters.h"
#include "tests/label/printing.h"

#include <QTransform>

#include <array>
#include <cmath>

using namespace Qt::StringLiterals;

namespace BarcodeTrials {

namespace {

constexpr double designDpi = 300.0;
constexpr double millimetresPerInch = 25.4;
constexpr std::array resolutions { 203.0, 300.0, 600.0 };
/// At 203, 300 and 600 dpi 1.02, 1.5 and 3 dots; 1.76, 2.6 and 5.2; 2.7, 4 and 8.
constexpr std::array moduleUnits { 1.5, 2.6, 4.0 };
constexpr double quietModules = 12.0;
constexpr double lineUnits = 12.0; ///< what the text beside the symbol takes
constexpr double barModules = 20.0; ///< enough for a single row

/// The symbol's size in units, with a line for its text. It is libzint's, except that bars of one row may
/// have any height.
QSizeF sizeOf(const Subject &subject, double units)
{
    const RawSymbols::Symbol symbol = BarcodeRasters::encoded(subject.symbol, subject.text);
    symbol->scale = 0.5F; // two units a module otherwise
    if (ZBarcode_Buffer_Vector(symbol.get(), 0) >= ZINT_ERROR)
        qFatal("no drawing of %s: %s", qPrintable(subject.text), symbol->errtxt);
    const double modules = symbol->rows == 1 ? barModules : double(symbol->vector->height);
    const double line = subject.hideText || symbol->text[0] == 0 ? 0.0 : lineUnits;
    return { double(symbol->vector->width) * units, modules * units + line };
}

/// A barcode with its middle at the point.
void addBarcode(LabelDocument &document, const Subject &subject, const Trial &trial, const QSizeF &size,
    const QPointF &middle, const QColor &colour)
{
    auto item = std::make_unique<BarcodeItem>();
    item->setBarcodeSymbol(short(subject.symbol));
    item->setBarcodeText(subject.text);
    item->setBarcodeHideText(subject.hideText);
    item->setItemFillColor(Printing::nothing);
    item->setItemTextColor(colour);
    item->setItemSize(size);
    item->setPos(middle - QPointF(size.width() / 2.0, size.height() / 2.0));
    item->setItemRotation(trial.rotation);
    item->setItemHorizontalMirror(trial.mirrored);
    document.addItem(std::move(item));
}

LabelDocument documentOf(const Subject &subject, const Trial &trial)
{
    const double units = trial.units * subject.growth;
    const QSizeF size = sizeOf(subject, units);
    const bool lies = trial.rotation % 180 != 0;
    const double margin = 2.0 * quietModules * units;
    const double width = std::ceil((lies ? size.height() : size.width()) + margin);
    const double height = std::ceil((lies ? size.width() : size.height()) + margin);

    LabelDocument document
        = Printing::blackAndRed(QSizeF(2.0 * width, height) * millimetresPerInch / designDpi);
    document.setDesignDpi(designDpi);
    // Not on whole dots, as people place items.
    addBarcode(document, subject, trial, size, { width * 0.5 + 0.3, height / 2.0 + 0.7 }, Printing::black);
    addBarcode(document, subject, trial, size, { width * 1.5 - 0.4, height / 2.0 + 0.1 }, Printing::red);
    return document;
}

} // namespace

QString Trial::name() const
{
    return u"%1 dpi, %2 units a module, turned by %3%4"_s.arg(dpi).arg(units).arg(rotation).arg(
        mirrored ? u", mirrored"_s : QString());
}

QList<Trial> all()
{
    QList<Trial> trials;
    for (const double dpi : resolutions) {
        for (const double units : moduleUnits) {
            for (const int rotation : { 0, 90, 180, 270 })
                trials << Trial { dpi, units, rotation, false } << Trial { dpi, units, rotation, true };
        }
    }
    return trials;
}

QList<Print> printed(const Subject &subject, const Trial &trial)
{
    const Separation separation = Printing::separated(documentOf(subject, trial), { trial.dpi });
    QString warnings;
    for (const Problem &problem : separation.warnings)
        warnings += problem.what + u'\n';
    QList<Print> prints;
    for (std::size_t i = 0; i < separation.plates.size(); ++i) {
        const Plate &plate = separation.plates[i];
        const int half = plate.image.width() / 2;
        const QImage image = plate.image.copy(i == 0 ? 0 : half, 0, half, plate.image.height());
        if (OneBit::countBlack(image) != plate.dots)
            qFatal("the plates print in each other's halves: %s", qPrintable(trial.name()));
        // What is mirrored back turns the other way round.
        prints << Print { trial.mirrored ? -trial.rotation : trial.rotation,
            trial.mirrored ? image.mirrored(true, false) : image, separation.barcodes[i], warnings,
            trial.name() + u", "_s + plate.ink.name };
    }
    return prints;
}

QImage turned(const QImage &image, int degrees)
{
    // Qt would turn single bits as a picture.
    const QImage grey = image.convertToFormat(QImage::Format_Grayscale8);
    return OneBit::fromGreys(grey.transformed(QTransform().rotate(degrees)));
}

} // namespace BarcodeTrials
