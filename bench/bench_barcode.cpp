// SPDX-License-Identifier: BSD-3-Clause
#include "bench/pair.h"
#include "bench/support.h"
#include "items/barcode/barcodeitem.h"
#include "items/shapes/rectangleitem.h"
#include "platform/zint/matrixgeometry.h"
#include "platform/zint/vectorgeometry.h"

#include <QPainter>
#include <QStyleOptionGraphicsItem>

#include <benchmark/benchmark.h>
#include <malloc.h>
#include <zint.h>

#include <array>
#include <cmath>
#include <memory>
#include <vector>

// Barcodes: painting a symbol beside what the obvious code does for every paint, copies, memory, and the bars
// from the module matrix beside libzint's own drawing.

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

void paint(QImage &paper, BarcodeItem &item)
{
    QPainter painter(&paper);
    const QStyleOptionGraphicsItem option;
    item.paint(&painter, &option, nullptr);
}

/// A barcode, and two texts of one length for it.
struct Sample
{
    explicit Sample(const benchmark::State &state)
        : paper(int(state.range(3)), int(state.range(4)), QImage::Format_ARGB32_Premultiplied)
        , symbology(int(state.range(0)))
        , texts { textOf(int(state.range(1)), u'A'), textOf(int(state.range(1)), u'B') }
    {
        paper.fill(Qt::white);
        item.setItemSize(paper.size());
        item.setBarcodeSymbol(short(symbology));
        item.setBarcodeText(texts[0]);
        paint(paper, item);
    }

    QImage paper;
    int symbology;
    std::array<QString, 2> texts;
    BarcodeItem item;
};

constexpr int repaints = 100;

bool isPainted(const QImage &paper)
{
    return paper.pixel(0, 0) == qRgb(0, 0, 0);
}

/// Symbology, length of the text, target in hundredths, width and height in dots.
void repaint(benchmark::State &state)
{
    Sample sample(state);
    QImage obvious = sample.paper;
    obvious.fill(Qt::white);
    paintObviously(obvious, sample.symbology, sample.texts[0]);
    if (!isPainted(sample.paper) || !isPainted(obvious)) {
        state.SkipWithError("nothing was painted");
        return;
    }
    const auto again = [&] {
        for (int i = 0; i < repaints; ++i)
            paint(sample.paper, sample.item);
    };
    const auto changed = [&] {
        for (int i = 0; i < repaints; ++i)
            paintObviously(obvious, sample.symbology, sample.texts[std::size_t(i) % 2]);
    };
    Pair::compare(state, double(state.range(2)) / 100.0, repaints, again, changed);
}

/// The same arguments; the item with another text each time beside the obvious code.
void paintAfterChange(benchmark::State &state)
{
    Sample sample(state);
    if (!isPainted(sample.paper)) {
        state.SkipWithError("nothing was painted");
        return;
    }
    const auto changed = [&] {
        for (int i = 0; i < repaints; ++i) {
            sample.item.setBarcodeText(sample.texts[std::size_t(i + 1) % 2]);
            paint(sample.paper, sample.item);
        }
    };
    const auto obviously = [&] {
        for (int i = 0; i < repaints; ++i)
            paintObviously(sample.paper, sample.symbology, sample.texts[std::size_t(i) % 2]);
    };
    Pair::compare(state, double(state.range(2)) / 100.0, repaints, changed, obviously);
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

/// A copy and its end, beside the beginning and end of a rectangle.
void copyItem(benchmark::State &state)
{
    constexpr int rounds = 10'000;
    BarcodeItem item;
    item.setBarcodeText(textOf(200, u'A'));
    if (!item.isValidInput()) {
        state.SkipWithError("there is no symbol to share");
        return;
    }
    const auto copies = [&item] {
        for (int i = 0; i < rounds; ++i)
            benchmark::DoNotOptimize(std::unique_ptr<Item>(item.createItemCopy()));
    };
    const auto rectangles = [] {
        for (int i = 0; i < rounds; ++i)
            benchmark::DoNotOptimize(std::make_unique<RectangleItem>());
    };
    Pair::compare(state, 1.5, rounds, copies, rectangles);
}

/// The bytes of heap of one barcode among 1,000.
template <typename Make> double bytesOf(const Make &make)
{
    constexpr std::size_t count = 1'000;
    std::vector<std::unique_ptr<Item>> items;
    items.reserve(count);
    const auto before = mallinfo2().uordblks;
    for (std::size_t i = 0; i < count; ++i)
        items.push_back(make(int(i)));
    return double(mallinfo2().uordblks - before) / double(count);
}

void memory(benchmark::State &state)
{
    QImage paper(100, 100, QImage::Format_ARGB32_Premultiplied);
    const auto painted = [&paper](int number) {
        auto item = std::make_unique<BarcodeItem>();
        item->setBarcodeText(textOf(47, u'A') + QString::number(number));
        paint(paper, *item);
        return item;
    };
    const std::unique_ptr<BarcodeItem> original = painted(0);
    for (auto _ : state) {
        state.counters["new"] = bytesOf([](int /*number*/) { return std::make_unique<BarcodeItem>(); });
        state.counters["painted"] = bytesOf(painted);
        state.counters["copy"] = bytesOf(
            [&original](int /*number*/) { return std::unique_ptr<Item>(original->createItemCopy()); });
        state.counters["rectangle"]
            = bytesOf([](int /*number*/) { return std::make_unique<RectangleItem>(); });
    }
}

BENCHMARK(repaint)->Args({ BARCODE_QRCODE, 47, 25, 100, 100 })->Iterations(61);
BENCHMARK(repaint)->Args({ BARCODE_QRCODE, 200, 10, 100, 100 })->Iterations(31);
BENCHMARK(repaint)->Args({ BARCODE_PDF417, 200, 10, 200, 80 })->Iterations(31);
BENCHMARK(repaint)->Args({ BARCODE_PDF417, 200, 30, 600, 240 })->Iterations(31);
BENCHMARK(paintAfterChange)->Args({ BARCODE_QRCODE, 200, 80, 100, 100 })->Iterations(31);
BENCHMARK(paintAfterChange)->Args({ BARCODE_PDF417, 200, 25, 200, 80 })->Iterations(31);
BENCHMARK(copyItem)->Iterations(61);
BENCHMARK(memory)->Iterations(1);
BENCHMARK(geometry)->Args({ BARCODE_PDF417, 200 })->Iterations(101);
BENCHMARK(geometry)->Args({ BARCODE_QRCODE, 200 })->Iterations(101);
BENCHMARK(geometry)->Args({ BARCODE_DATAMATRIX, 200 })->Iterations(101);

} // namespace

VX_BENCHMARK_MAIN
