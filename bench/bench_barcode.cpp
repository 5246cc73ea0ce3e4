// SPDX-License-Identifier: BSD-3-Clause
#include "bench/pair.h"
#include "bench/support.h"
#include "platform/zint/barcodeencoder.h"
#include "platform/zint/matrixgeometry.h"
#include "platform/zint/vectorgeometry.h"

#include <QPainter>

#include <benchmark/benchmark.h>
#include <zint.h>

#include <array>
#include <cmath>
#include <memory>

// Barcodes: painting a symbol again beside what the obvious code does for every paint, and the bars from the
// module matrix beside libzint's own drawing.

namespace {

/// A text of capitals, figures and spaces; its first character tells two of the same length apart.
QString textOf(int length, QChar first)
{
    return first + QStringLiteral("ITEM 4711 LOT ").repeated(length / 14 + 1).left(length - 1);
}

using Symbol = std::unique_ptr<zint_symbol, decltype(&ZBarcode_Delete)>;

Symbol encoded(int symbology, const QString &text)
{
    Symbol symbol(ZBarcode_Create(), &ZBarcode_Delete);
    symbol->symbology = symbology;
    symbol->height = 50;
    symbol->show_hrt = 0;
    const QByteArray utf8 = text.toUtf8();
    ZBarcode_Encode(
        symbol.get(), reinterpret_cast<const unsigned char *>(utf8.constData()), int(utf8.size()));
    return symbol;
}

/// Encodes, lets libzint draw, and paints that bar by bar.
void paintObviously(QImage &paper, int symbology, const QString &text)
{
    const Symbol symbol = encoded(symbology, text);
    ZBarcode_Buffer_Vector(symbol.get(), 0);
    QPainter painter(&paper);
    painter.scale(
        paper.width() / double(symbol->vector->width), paper.height() / double(symbol->vector->height));
    for (const auto *bar = symbol->vector->rectangles; bar != nullptr; bar = bar->next)
        painter.fillRect(QRectF(bar->x, bar->y, bar->width, bar->height), Qt::black);
}

void paint(QImage &paper, const Zint::QZint &barcode)
{
    QPainter painter(&paper);
    barcode.render(painter, paper.rect(), Zint::QZint::IgnoreAspectRatio);
}

/// Symbology, length of the text, target in hundredths, width and height in dots.
void repaint(benchmark::State &state)
{
    constexpr int rounds = 100;
    const int symbology = int(state.range(0));
    QImage paper(int(state.range(3)), int(state.range(4)), QImage::Format_ARGB32_Premultiplied);
    paper.fill(Qt::white);
    const std::array<QString, 2> texts { textOf(int(state.range(1)), u'A'),
        textOf(int(state.range(1)), u'B') };
    Zint::QZint barcode;
    barcode.setSymbol(symbology);
    barcode.setHeight(50);
    barcode.setText(texts[0]);
    QImage obvious = paper;
    paintObviously(obvious, symbology, texts[0]);
    paint(paper, barcode);
    if (paper.pixel(0, 0) != qRgb(0, 0, 0) || obvious.pixel(0, 0) != qRgb(0, 0, 0)) {
        state.SkipWithError("nothing was painted");
        return;
    }
    const auto again = [&] {
        for (int i = 0; i < rounds; ++i)
            paint(paper, barcode);
    };
    const auto changed = [&] {
        for (int i = 0; i < rounds; ++i)
            paintObviously(paper, symbology, texts[std::size_t(i) % 2]);
    };
    Pair::compare(state, double(state.range(2)) / 100.0, rounds, again, changed);
}

bool haveTheSameBars(zint_symbol &symbol)
{
    Zint::SymbolGeometry drawn;
    if (Zint::vectorGeometry(symbol, drawn) != 0 || drawn.bars.empty())
        return false;
    const auto area = [](const Zint::SymbolGeometry &bars) {
        double sum = 0.0;
        for (const QRectF &bar : bars.bars.at(0).rects)
            sum += bar.width() * bar.height();
        return sum;
    };
    return std::abs(area(Zint::matrixGeometry(symbol)) - area(drawn)) < 1.0;
}

/// Symbology, length of the text.
void geometry(benchmark::State &state)
{
    constexpr int rounds = 20;
    const Symbol symbol = encoded(int(state.range(0)), textOf(int(state.range(1)), u'A'));
    if (!haveTheSameBars(*symbol)) {
        state.SkipWithError("the module matrix and libzint's drawing differ");
        return;
    }
    const auto fromMatrix = [&symbol] {
        for (int i = 0; i < rounds; ++i)
            benchmark::DoNotOptimize(Zint::matrixGeometry(*symbol));
    };
    const auto drawing = [&symbol] {
        for (int i = 0; i < rounds; ++i)
            benchmark::DoNotOptimize(ZBarcode_Buffer_Vector(symbol.get(), 0));
    };
    Pair::compare(state, 0.2, rounds, fromMatrix, drawing);
}

BENCHMARK(repaint)->Args({ BARCODE_QRCODE, 47, 25, 100, 100 })->Iterations(61);
BENCHMARK(repaint)->Args({ BARCODE_QRCODE, 200, 10, 100, 100 })->Iterations(31);
BENCHMARK(repaint)->Args({ BARCODE_PDF417, 200, 10, 200, 80 })->Iterations(31);
BENCHMARK(repaint)->Args({ BARCODE_PDF417, 200, 30, 600, 240 })->Iterations(31);
BENCHMARK(geometry)->Args({ BARCODE_PDF417, 200 })->Iterations(101);
BENCHMARK(geometry)->Args({ BARCODE_QRCODE, 200 })->Iterations(101);
BENCHMARK(geometry)->Args({ BARCODE_DATAMATRIX, 200 })->Iterations(101);

} // namespace

VX_BENCHMARK_MAIN
