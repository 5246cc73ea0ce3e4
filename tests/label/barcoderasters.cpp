// SPDX-License-Identifier: BSD-3-Clause
#include "tests/label/barcoderasters.h"

#include <cmath>

using namespace Qt::StringLiterals;

namespace BarcodeRasters {

namespace {

constexpr int pixelsPerModule = 8;
constexpr double edgeTolerance = 1.25; ///< in dots: both ends of the symbol and the edge are rounded

constexpr char dark = 0;
constexpr char light = char(255);

/// The row of an image in 8-bit grey.
QByteArray rowOf(const QImage &grey, int y)
{
    return { reinterpret_cast<const char *>(grey.constScanLine(y)), grey.width() };
}

QImage greyOf(const QImage &image)
{
    return image.convertToFormat(QImage::Format_Grayscale8);
}

/// The smallest rectangle with all that is dark.
QRect darkPart(const QImage &grey)
{
    QRect part;
    for (int y = 0; y < grey.height(); ++y) {
        const QByteArray row = rowOf(grey, y);
        const qsizetype left = row.indexOf(dark);
        if (left >= 0)
            part |= QRect(QPoint(int(left), y), QPoint(int(row.lastIndexOf(dark)), y));
    }
    return part;
}

/// The bands of pixels.
Bands bandsOfPixels(const QImage &grey)
{
    Bands found;
    for (int y = 0; y < grey.height(); ++y) {
        const QByteArray row = rowOf(grey, y);
        if (found.bands.empty() || found.bands.back().modules != row)
            found.bands.push_back({ row, double(y) / grey.height() });
    }
    return found;
}

/// One of a row of pixels for each module.
QByteArray modulesOf(const QByteArray &pixels)
{
    QByteArray modules;
    for (qsizetype x = 0; x < pixels.size(); x += pixelsPerModule)
        modules += pixels[x];
    return modules;
}

QByteArray dotsOf(const QByteArray &modules, int dotsPerModule)
{
    QByteArray dots;
    for (const char module : modules)
        dots.append(dotsPerModule, module);
    return dots;
}

Bands bandsOfDots(const zint_symbol &symbol)
{
    Bands dots;
    dots.areDots = true;
    for (int row = 0; row < symbol.rows; ++row) {
        QByteArray modules;
        for (int column = 0; column < symbol.width; ++column)
            modules += ((symbol.encoded_data[row][column / 8] >> (column % 8)) & 1) != 0 ? dark : light;
        dots.bands.push_back({ modules, double(row) / symbol.rows });
    }
    return dots;
}

/// Round modules need not reach the edges of the symbol, but lie in its middle.
QString differenceOfDots(const QImage &grey, const QRect &part, const Bands &symbol, int dotsPerModule)
{
    const auto columns = symbol.bands[0].modules.size();
    const auto rows = qsizetype(symbol.bands.size());
    const QPointF middle = QRectF(part).center();
    const double left = std::round(middle.x() - double(columns * dotsPerModule) / 2.0);
    const double top = std::round(middle.y() - double(rows * dotsPerModule) / 2.0);
    for (qsizetype row = 0; row < rows; ++row) {
        const QByteArray dots = rowOf(grey, int(top + (double(row) + 0.5) * dotsPerModule));
        for (qsizetype column = 0; column < columns; ++column) {
            const auto x = qsizetype(left + (double(column) + 0.5) * dotsPerModule);
            if (dots.at(x) != symbol.bands[std::size_t(row)].modules[column])
                return u"module %1 of row %2 is another"_s.arg(column).arg(row);
        }
    }
    return {};
}

} // namespace

RawSymbols::Symbol encoded(int symbology, const QString &text)
{
    RawSymbols::Symbol symbol = RawSymbols::make(symbology);
    symbol->height = 50.0F;
    symbol->option_1 = symbology == BARCODE_MAXICODE ? -1 : 0; // 0 needs a second text there
    if (RawSymbols::encode(*symbol, qUtf8Printable(text)) >= ZINT_ERROR)
        qFatal("no symbol of %s: %s", qPrintable(text), symbol->errtxt);
    return symbol;
}

QImage rasterOf(int symbology, const QString &text, int pixels)
{
    const RawSymbols::Symbol symbol = encoded(symbology, text);
    symbol->scale = float(pixels) / 2.0F;
    symbol->output_options |= OUT_BUFFER_INTERMEDIATE;
    if (ZBarcode_Buffer(symbol.get(), 0) != 0)
        qFatal("no raster of %s: %s", qPrintable(text), symbol->errtxt);
    QImage raster(symbol->bitmap_width, symbol->bitmap_height, QImage::Format_Mono);
    raster.setColorTable({ qRgb(255, 255, 255), qRgb(0, 0, 0) });
    for (int y = 0; y < raster.height(); ++y) {
        for (int x = 0; x < raster.width(); ++x)
            raster.setPixel(x, y, symbol->bitmap[y * raster.width() + x] == '1' ? 1 : 0);
    }
    return raster;
}

Bands bandsOf(int symbology, const QString &text)
{
    if (symbology == BARCODE_DOTCODE)
        return bandsOfDots(*encoded(symbology, text));
    const QImage raster = greyOf(rasterOf(symbology, text, pixelsPerModule));
    Bands symbol = bandsOfPixels(raster.copy(darkPart(raster)));
    for (Bands::Band &band : symbol.bands)
        band.modules = modulesOf(band.modules);
    return symbol;
}

QString difference(const QImage &image, const Bands &symbol, int dotsPerModule)
{
    const QImage grey = greyOf(image);
    const QRect part = darkPart(grey);
    if (symbol.areDots)
        return differenceOfDots(grey, part, symbol, dotsPerModule);
    const Bands found = bandsOfPixels(grey.copy(part));
    if (found.bands.size() != symbol.bands.size())
        return u"%1 bands instead of %2"_s.arg(found.bands.size()).arg(symbol.bands.size());
    for (std::size_t i = 0; i < symbol.bands.size(); ++i) {
        const Bands::Band &band = symbol.bands[i];
        if (found.bands[i].modules != dotsOf(band.modules, dotsPerModule))
            return u"band %1 has other modules"_s.arg(i);
        if (std::abs(found.bands[i].top - band.top) * part.height() > edgeTolerance)
            return u"band %1 is at %2 instead of %3"_s.arg(i).arg(found.bands[i].top).arg(band.top);
    }
    return {};
}

} // namespace BarcodeRasters
