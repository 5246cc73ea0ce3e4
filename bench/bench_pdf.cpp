// SPDX-License-Identifier: BSD-3-Clause
#include "bench/boundpdf.h"
#include "bench/pair.h"
#include "bench/support.h"
#include "items/barcode/barcodeitem.h"
#include "items/containers/groupitem.h"
#include "items/graphics/pixmapitem.h"
#include "items/shapes/rectangleitem.h"
#include "items/text/simpletextitem.h"
#include "label/itemtree.h"
#include "label/labeldocument.h"
#include "label/pdf/pdfpages.h"

#include <QFile>
#include <QTemporaryDir>

#include <unistd.h>

// A PDF of labels of which each has its own texts and barcodes, beside plain painting of the same label; and
// what memory grows by from page to page.

namespace {

constexpr double mostTime = 1.0 / 0.70; ///< of that of plain painting

template <typename Type> Type *add(std::vector<std::unique_ptr<Item>> &items, QPointF at)
{
    auto item = std::make_unique<Type>();
    item->setPos(at);
    Type *added = item.get();
    items.push_back(std::move(item));
    return added;
}

/// The label as items of a document, on the page or all in a group.
class Label
{
public:
    explicit Label(bool grouped)
    {
        m_document.setPageSize(BatchLabel::millimetres);
        m_document.setDesignDpi(BatchLabel::dpi);
        std::vector<std::unique_ptr<Item>> items;
        addFrame(items);
        addLogo(items);
        for (const BatchLabel::TextPlace &place : BatchLabel::textPlaces)
            addText(items, place);
        addBarcode(items, 58, BatchLabel::qr);
        addBarcode(items, 20, BatchLabel::bars);
        if (grouped) {
            auto group = std::make_unique<GroupItem>();
            ItemTree::join(*group, std::move(items));
            m_document.addItem(std::move(group));
            return;
        }
        for (std::unique_ptr<Item> &item : items)
            m_document.addItem(std::move(item));
    }

    void show(const BatchLabel::Row &row)
    {
        for (std::size_t i = 0; i < row.texts.size(); ++i)
            m_values[i]->setItemData(row.texts[i]);
        m_values[3]->setItemData(row.qr);
        m_values[4]->setItemData(row.bars);
    }

    [[nodiscard]] const LabelDocument &document() const { return m_document; }

private:
    using Items = std::vector<std::unique_ptr<Item>>;

    static void addFrame(Items &items)
    {
        auto *frame = add<RectangleItem>(items, BatchLabel::frame.topLeft());
        frame->setItemSize(BatchLabel::frame.size());
        frame->setItemPenWidth(BatchLabel::frameWidth);
        frame->setItemFillColor(Qt::transparent);
    }

    static void addLogo(Items &items)
    {
        add<PixMapItem>(items, BatchLabel::logoAt)->setPixmap(QPixmap::fromImage(BatchLabel::logo()));
    }

    void addText(Items &items, const BatchLabel::TextPlace &place)
    {
        auto *text = add<SimpleTextItem>(items, place.topLeft);
        text->setItemFontFamily(BatchLabel::fontFamily);
        text->setItemFontSize(place.pixels);
        text->setItemBold(false);
        m_values.push_back(text);
    }

    void addBarcode(Items &items, short symbol, const QRectF &place)
    {
        auto *barcode = add<BarcodeItem>(items, place.topLeft());
        barcode->setBarcodeSymbol(symbol);
        barcode->setBarcodeHideText(true);
        barcode->setItemSize(place.size());
        m_values.push_back(barcode);
    }

    LabelDocument m_document;
    std::vector<IDatasourceItem *> m_values;
};

/// Calls a function with the number of each page.
template <typename Pages>
void writeOurs(Label &label, const QString &path, int labels, benchmark::State &state, Pages &&written)
{
    QFile file(path);
    Problems problems;
    bool done = file.open(QIODevice::WriteOnly);
    PdfPages pages(file);
    for (int i = 0; i < labels && done; ++i) {
        label.show(BatchLabel::rowOf(i));
        done = pages.addPage(label.document(), problems);
        written(i);
    }
    if (!done || !pages.finish(problems))
        state.SkipWithError("the PDF was refused");
}

void writeBound(const QString &path, int labels)
{
    BoundPdf pdf(path);
    for (int i = 0; i < labels; ++i)
        pdf.addPage(BatchLabel::rowOf(i));
    pdf.finish();
}

/// How many labels, and whether they are grouped.
void labels(benchmark::State &state)
{
    const QTemporaryDir folder;
    Label label(state.range(1) != 0);
    const int count = int(state.range(0));
    Pair::compare(
        state, mostTime, count,
        [&] { writeOurs(label, folder.filePath(QStringLiteral("ours.pdf")), count, state, [](int) {}); },
        [&] { writeBound(folder.filePath(QStringLiteral("bound.pdf")), count); });
}
BENCHMARK(labels)->Args({ 1000, 0 })->Args({ 1000, 1 })->Iterations(5)->Unit(benchmark::kMillisecond);

/// What the process has in memory, in KiB.
double memory()
{
    QFile file(QStringLiteral("/proc/self/statm"));
    const bool open = file.open(QIODevice::ReadOnly);
    return open ? double(file.readAll().split(' ')[1].toLongLong()) * double(sysconf(_SC_PAGESIZE)) / 1024
                : 0;
}

/// Of 10,000 pages after 1,000: what Qt notes of each is some hundred bytes.
void memoryOfPages(benchmark::State &state)
{
    const QTemporaryDir folder;
    Label label(false);
    for (auto _ : state) {
        double before = 0.0;
        writeOurs(label, folder.filePath(QStringLiteral("ours.pdf")), 11'000, state, [&](int page) {
            if (page == 1'000)
                before = memory();
            else if (page == 10'999)
                state.counters["growth_KiB"] = memory() - before;
        });
    }
}
BENCHMARK(memoryOfPages)->Iterations(1)->Unit(benchmark::kMillisecond);

} // namespace

VX_BENCHMARK_MAIN
