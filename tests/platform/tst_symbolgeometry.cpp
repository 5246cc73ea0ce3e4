// SPDX-License-Identifier: BSD-3-Clause
#include "platform/zint/matrixgeometry.h"
#include "platform/zint/symbologies.h"
#include "platform/zint/vectorgeometry.h"
#include "tests/support/barcodesamples.h"
#include "tests/support/nearness.h"
#include "tests/support/rawsymbols.h"

#include <QRegularExpression>
#include <QTest>

#include <algorithm>
#include <cmath>
#include <initializer_list>
#include <set>
#include <vector>

using namespace Qt::StringLiterals;
using BarcodeSamples::Sample;
using Zint::SymbolGeometry;

namespace {

constexpr double sameHeight = 1e-3; // libzint calculates in single precision

SymbolGeometry geometryOf(zint_symbol &symbol)
{
    if (Zint::isPlainMatrix(symbol))
        return Zint::matrixGeometry(symbol);
    SymbolGeometry geometry;
    const int error = Zint::vectorGeometry(symbol, geometry);
    return error == 0 ? geometry : SymbolGeometry();
}

/// How many bars lie over each module of a horizontal line.
std::vector<int> barsAt(double y, const SymbolGeometry &geometry)
{
    std::vector<int> counts(std::size_t(geometry.size.width()));
    for (const QRectF &bar : geometry.bars.at(0).rects) {
        if (bar.top() > y || bar.bottom() <= y)
            continue;
        for (auto x = std::size_t(bar.left()); x < std::size_t(bar.right()); ++x)
            ++counts.at(x);
    }
    return counts;
}

/// The places between all upper and lower edges of the bars.
std::vector<double> bandsOf(std::initializer_list<const SymbolGeometry *> geometries)
{
    std::set<double> edges;
    for (const SymbolGeometry *geometry : geometries) {
        for (const QRectF &bar : geometry->bars.at(0).rects)
            edges.insert({ bar.top(), bar.bottom() });
    }
    std::vector<double> middles;
    for (auto edge = edges.begin(); std::next(edge) != edges.end(); ++edge) {
        if (*std::next(edge) - *edge > sameHeight)
            middles.push_back((*edge + *std::next(edge)) / 2.0);
    }
    return middles;
}

bool coverTheSame(const SymbolGeometry &a, const SymbolGeometry &b)
{
    if (a.size.width() != b.size.width() || std::abs(a.size.height() - b.size.height()) > sameHeight)
        return false;
    return std::ranges::all_of(bandsOf({ &a, &b }), [&](double y) { return barsAt(y, a) == barsAt(y, b); });
}

/// What libzint writes for a colour in the bytes of a raster that is no image yet.
char rasterCharacter(int colour)
{
    return colour == SymbolGeometry::Foreground ? '1' : QByteArray("CBMRYGKW").at(colour - 1);
}

/// The geometry's bars as the bytes of a raster; '!' where two bars lie over one another.
QByteArray rasterOf(const SymbolGeometry &geometry, double pixelsPerModule)
{
    const auto pixels = [&](double length) { return int(std::lround(length * pixelsPerModule)); };
    const int width = pixels(geometry.size.width());
    QByteArray raster(width * pixels(geometry.size.height()), '0');
    for (const SymbolGeometry::Bars &bars : geometry.bars) {
        for (const QRectF &bar : bars.rects) {
            for (int y = pixels(bar.top()); y < pixels(bar.bottom()); ++y) {
                for (int x = pixels(bar.left()); x < pixels(bar.right()); ++x) {
                    char &pixel = raster[y * width + x];
                    pixel = pixel == '0' ? rasterCharacter(bars.colour) : '!';
                }
            }
        }
    }
    return raster;
}

bool isWhole(double value)
{
    return value == std::floor(value);
}

bool isDark(const zint_symbol &symbol, int row, int column)
{
    return ((symbol.encoded_data[row][column / 8] >> (column % 8)) & 1) != 0;
}

/// The dark modules of the matrix, each at the place that a function gives for row and column.
template <typename PlaceOf> std::vector<QPointF> darkModules(const zint_symbol &symbol, PlaceOf placeOf)
{
    std::vector<QPointF> places;
    for (int row = 0; row < symbol.rows; ++row) {
        for (int column = 0; column < symbol.width; ++column) {
            if (isDark(symbol, row, column))
                places.push_back(placeOf(row, column));
        }
    }
    return places;
}

/// Rows of hexagons are shifted by half a one in turn and reach between one another.
QPointF hexagonPlace(int row, int column)
{
    const double side = 1.0 / std::sqrt(3.0);
    return { column + (row % 2 == 0 ? 0.5 : 1.0), side + row * 1.5 * side };
}

bool areAllNear(std::vector<QPointF> a, std::vector<QPointF> b)
{
    const auto isBefore = [](QPointF p, QPointF q) {
        return std::pair(std::lround(p.y() * 100), p.x()) < std::pair(std::lround(q.y() * 100), q.x());
    };
    std::ranges::sort(a, isBefore);
    std::ranges::sort(b, isBefore);
    return std::ranges::equal(
        a, b, [](QPointF p, QPointF q) { return (p - q).manhattanLength() < sameHeight; });
}

bool anySample(const Sample & /*sample*/)
{
    return true;
}

void addSampleRows(bool (*isWanted)(const Sample &) = anySample)
{
    QTest::addColumn<int>("index");
    for (int index = 0; index < int(std::size(BarcodeSamples::all)); ++index) {
        if (!isWanted(BarcodeSamples::all[index]))
            continue;
        const Zint::Symbology *symbology = Zint::symbologyOf(BarcodeSamples::all[index].symbol);
        QTest::newRow(symbology ? qPrintable(symbology->name) : "unknown") << index;
    }
}

} // namespace

/// The geometry of symbols against libzint's own drawing and raster, for every symbology.
class tst_SymbolGeometry : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    void thereIsASampleOfEverySymbology();
    void matrixCoversWhatLibzintDraws_data() { addSampleRows(); }
    void matrixCoversWhatLibzintDraws();
    void everyPixelOfLibzintsRasterIsMet_data();
    void everyPixelOfLibzintsRasterIsMet();
    void barsStandOnWholeModules_data() { addSampleRows(); }
    void barsStandOnWholeModules();
    void bordersAreBars();
    void runsBelowOneAnotherAreOneBar();
    void hexagonsAreTheDarkModulesOfMaxiCode();
    void ringsOfMaxiCodeLieInTheMiddle();
    void dotsAreTheDarkModulesOfDotCode();
    void nothingIsDrawnInTheBackgroundColour();
    void vectorsErrorLeavesTheGeometry();
};

void tst_SymbolGeometry::thereIsASampleOfEverySymbology()
{
    const auto known = Zint::symbologies();
    QVERIFY(std::ranges::equal(known, BarcodeSamples::all, {}, &Zint::Symbology::number, &Sample::symbol));
}

void tst_SymbolGeometry::matrixCoversWhatLibzintDraws()
{
    QFETCH(int, index);
    const Sample &sample = BarcodeSamples::all[index];
    for (const float height :
        { 0.0F, 0.1F, 0.5F, 1.0F, 3.0F, 7.0F, 10.0F, 25.0F, 50.0F, 77.7F, 500.0F, 2000.0F }) {
        for (const int whitespace : { 0, 3, 100 }) {
            const RawSymbols::Symbol symbol = RawSymbols::make(sample.symbol, sample.primary);
            symbol->height = height;
            symbol->whitespace_width = whitespace;
            QVERIFY(
                RawSymbols::encode(*symbol, sample.text) < ZINT_ERROR); // some heights are against the rules
            if (!Zint::isPlainMatrix(*symbol))
                continue;
            const SymbolGeometry ours = Zint::matrixGeometry(*symbol);
            SymbolGeometry theirs;
            QCOMPARE(Zint::vectorGeometry(*symbol, theirs), 0);
            QVERIFY2(coverTheSame(ours, theirs), qPrintable(u"height %1"_s.arg(height)));
        }
    }
}

/// Without hexagons and dots, which libzint rasters in its own way; they have tests of their own.
void tst_SymbolGeometry::everyPixelOfLibzintsRasterIsMet_data()
{
    addSampleRows([](const Sample &sample) {
        return sample.symbol != BARCODE_MAXICODE && sample.symbol != BARCODE_DOTCODE;
    });
}

void tst_SymbolGeometry::everyPixelOfLibzintsRasterIsMet()
{
    QFETCH(int, index);
    const Sample &sample = BarcodeSamples::all[index];
    const RawSymbols::Symbol symbol = RawSymbols::make(sample.symbol, sample.primary);
    QCOMPARE(RawSymbols::encode(*symbol, sample.text), 0);
    const SymbolGeometry geometry = geometryOf(*symbol);

    constexpr int pixelsPerModule = 4;
    symbol->scale = pixelsPerModule / 2.0F;
    symbol->output_options |= OUT_BUFFER_INTERMEDIATE;
    QCOMPARE(ZBarcode_Buffer(symbol.get(), 0), 0);
    const auto *bitmap = reinterpret_cast<const char *>(symbol->bitmap);
    const QByteArray raster = QByteArray::fromRawData(bitmap, symbol->bitmap_width * symbol->bitmap_height);
    QCOMPARE(geometry.size.width() * pixelsPerModule, double(symbol->bitmap_width));
    QVERIFY(rasterOf(geometry, pixelsPerModule) == raster);
}

void tst_SymbolGeometry::barsStandOnWholeModules()
{
    QFETCH(int, index);
    const Sample &sample = BarcodeSamples::all[index];
    const RawSymbols::Symbol symbol = RawSymbols::make(sample.symbol, sample.primary);
    QCOMPARE(RawSymbols::encode(*symbol, sample.text), 0);
    const SymbolGeometry geometry = geometryOf(*symbol);
    QVERIFY(!geometry.isEmpty());
    for (const SymbolGeometry::Bars &bars : geometry.bars) {
        for (const QRectF &bar : bars.rects) {
            QVERIFY(isWhole(bar.left()) && isWhole(bar.width()));
            QVERIFY(bar.width() >= 1.0 && bar.height() > 0.0);
            QVERIFY(bar.left() >= 0.0 && bar.right() <= geometry.size.width());
            QVERIFY(bar.top() >= 0.0 && bar.bottom() <= geometry.size.height() + sameHeight);
        }
    }
}

void tst_SymbolGeometry::bordersAreBars()
{
    const RawSymbols::Symbol symbol = RawSymbols::make(BARCODE_CODE128);
    symbol->output_options |= BARCODE_BOX;
    symbol->border_width = 3;
    symbol->height = 10;
    QCOMPARE(RawSymbols::encode(*symbol, "A"), 0); // 46 modules: start, A, check character, stop
    QVERIFY(!Zint::isPlainMatrix(*symbol));
    const SymbolGeometry geometry = geometryOf(*symbol);
    QCOMPARE(geometry.size, QSizeF(46 + 6, 10 + 6));
    QCOMPARE(barsAt(1.0, geometry), std::vector<int>(52, 1));
    QCOMPARE(barsAt(15.0, geometry), std::vector<int>(52, 1));
    const std::vector<int> middle = barsAt(8.0, geometry);
    QCOMPARE(std::vector<int>(middle.begin(), middle.begin() + 6), std::vector<int>({ 1, 1, 1, 1, 1, 0 }));
    QCOMPARE(std::vector<int>(middle.end() - 5, middle.end()), std::vector<int>({ 1, 1, 1, 1, 1 }));
}

void tst_SymbolGeometry::runsBelowOneAnotherAreOneBar()
{
    const RawSymbols::Symbol symbol = RawSymbols::make(BARCODE_PDF417);
    symbol->height = 60;
    QCOMPARE(RawSymbols::encode(*symbol, "PDF417"), 0);
    const SymbolGeometry geometry = Zint::matrixGeometry(*symbol);
    QCOMPARE(geometry.size.height(), 60.0);
    // The first bars of start and stop pattern go through all rows.
    const auto &rects = geometry.bars.at(0).rects;
    QVERIFY(std::ranges::count(rects, QRectF(0, 0, 8, 60)) == 1);
    QVERIFY(std::ranges::count(rects, QRectF(geometry.size.width() - 18, 0, 7, 60)) == 1);
}

void tst_SymbolGeometry::hexagonsAreTheDarkModulesOfMaxiCode()
{
    const RawSymbols::Symbol symbol = RawSymbols::make(BARCODE_MAXICODE);
    QCOMPARE(RawSymbols::encode(*symbol, "MaxiCode 12345"), 0);
    const SymbolGeometry geometry = geometryOf(*symbol);
    QCOMPARE(geometry.size.width(), 30.0);
    QVERIFY(std::abs(geometry.size.height() - (32 * 1.5 + 2) / std::sqrt(3.0)) < sameHeight);
    QVERIFY(geometry.bars.empty());
    std::vector<QPointF> centres;
    for (const SymbolGeometry::Hexagon &hexagon : geometry.hexagons) {
        centres.push_back(hexagon.centre);
        QCOMPARE(hexagon.width, 1.0);
    }
    QVERIFY(areAllNear(centres, darkModules(*symbol, hexagonPlace)));
}

void tst_SymbolGeometry::ringsOfMaxiCodeLieInTheMiddle()
{
    const RawSymbols::Symbol symbol = RawSymbols::make(BARCODE_MAXICODE);
    QCOMPARE(RawSymbols::encode(*symbol, "MaxiCode 12345"), 0);
    const SymbolGeometry geometry = geometryOf(*symbol);
    QCOMPARE(geometry.circles.size(), std::size_t(3));
    double outside = 100.0;
    for (const SymbolGeometry::Circle &ring : geometry.circles) {
        QVERIFY((ring.centre - hexagonPlace(16, 14)).manhattanLength() < sameHeight);
        QVERIFY(ring.lineWidth > 0.7 && ring.lineWidth < 0.8); // 0.67 mm of 0.88 mm
        QVERIFY(ring.diameter + ring.lineWidth < outside);
        outside = ring.diameter - ring.lineWidth;
    }
    QVERIFY(outside > 1.0);
}

void tst_SymbolGeometry::dotsAreTheDarkModulesOfDotCode()
{
    const RawSymbols::Symbol symbol = RawSymbols::make(BARCODE_DOTCODE);
    symbol->whitespace_width = 2;
    QCOMPARE(RawSymbols::encode(*symbol, "DotCode 12345"), 0);
    const SymbolGeometry geometry = geometryOf(*symbol);
    QCOMPARE(geometry.size, QSizeF(symbol->width + 4, symbol->rows));
    std::vector<QPointF> centres;
    for (const SymbolGeometry::Circle &dot : geometry.circles) {
        centres.push_back(dot.centre);
        QVERIFY(std::abs(dot.diameter - 0.8) < sameHeight);
        QCOMPARE(dot.lineWidth, 0.0);
    }
    QVERIFY(areAllNear(
        centres, darkModules(*symbol, [](int row, int column) { return QPointF(column + 2.5, row + 0.5); })));
}

void tst_SymbolGeometry::nothingIsDrawnInTheBackgroundColour()
{
    for (const int symbology : { BARCODE_MAXICODE, BARCODE_DOTCODE }) {
        const RawSymbols::Symbol symbol = RawSymbols::make(symbology);
        QCOMPARE(RawSymbols::encode(*symbol, "12345"), 0);
        QCOMPARE(ZBarcode_Buffer_Vector(symbol.get(), 0), 0);
        for (const auto *circle = symbol->vector->circles; circle != nullptr; circle = circle->next)
            QCOMPARE(circle->colour, 0);
    }
}

void tst_SymbolGeometry::vectorsErrorLeavesTheGeometry()
{
    const RawSymbols::Symbol symbol = RawSymbols::make(BARCODE_CODE128);
    QCOMPARE(RawSymbols::encode(*symbol, "A"), 0);
    SymbolGeometry geometry;
    geometry.size = QSizeF(1, 2);
    symbol->fgcolour[0] = '?';
    QCOMPARE(Zint::vectorGeometry(*symbol, geometry), ZINT_ERROR_INVALID_OPTION);
    QCOMPARE(geometry.size, QSizeF(1, 2));
}

QTEST_APPLESS_MAIN(tst_SymbolGeometry)
#include "tst_symbolgeometry.moc"
