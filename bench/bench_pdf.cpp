// SPDX-License-Identifier: BSD-3-Clause
#include "bench/boundpdf.h"
#include "bench/itemlabel.h"
#include "bench/pair.h"
#include "bench/support.h"
#include "label/pdf/pdfpages.h"

#include <QFile>
#include <QTemporaryDir>

#include <unistd.h>

// A PDF of labels of which each has its own texts and barcodes, beside plain painting of the same label; and
// what memory grows by from page to page.

namespace {

constexpr double mostTime = 1.0 / 0.70; ///< of that of plain painting

/// Calls a function with the number of each page.
template <typename Pages>
void writeOurs(ItemLabel &label, const QString &path, int labels, benchmark::State &state, Pages &&written)
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
    ItemLabel label(state.range(1) != 0);
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
    ItemLabel label(false);
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
