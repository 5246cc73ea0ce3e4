// SPDX-License-Identifier: BSD-3-Clause
#include "bench/boundlabel.h"
#include "bench/itemlabel.h"
#include "bench/pair.h"
#include "bench/support.h"
#include "label/batch/platecomposer.h"
#include "label/batch/rowdocument.h"
#include "label/platewriter.h"
#include "label/proof.h"

#include <QBuffer>
#include <QPainter>

// One-bit plates of labels of which each has its own texts and barcodes, as PNG: composed, beside separating
// each label whole, beside painting each plainly and letting Qt turn it into one bit, and with more inks.

namespace {

constexpr int labels = 100;
constexpr double mostTimeOfPlain = 1.0 / 2.5;
constexpr double mostTimeOfWhole = 0.7;
constexpr double mostTimeOfFullColor = 1.0 / 5.0;
constexpr double mostTimeOfInks = 4.4; ///< of four of them, beside one

const QList<Ink> inks { { QStringLiteral("black"), Qt::black },
    { QStringLiteral("red"), { 0xD0, 0x10, 0x20 } }, { QStringLiteral("blue"), { 0x10, 0x30, 0xD0 } },
    { QStringLiteral("green"), { 0x10, 0x80, 0x40 } } };

/// A batch that keeps nothing of its files.
class PlateBatch
{
public:
    explicit PlateBatch(int inkCount, benchmark::State &state)
        : m_state(state)
    {
        m_label.bind();
        m_label.document().setInks(inks.first(inkCount));
        Problems problems;
        m_rows = RowDocument::of(m_label.document(), { BatchLabel::columns }, problems);
        m_composer = std::make_unique<PlateComposer>(
            m_rows->document(), m_rows->boundItems(), SeparationOptions { BatchLabel::dpi });
    }

    void printComposed()
    {
        print([this](Problems &problems) { return m_composer->separate(problems); });
        if (m_composer->composed() == 0)
            m_state.SkipWithError("nothing was composed");
    }

    void printWhole()
    {
        print([this](Problems &problems) {
            return separate(m_rows->document(), { BatchLabel::dpi }, problems);
        });
    }

private:
    template <typename Separate> void print(Separate &&separate)
    {
        for (int i = 0; i < labels; ++i) {
            Problems problems;
            const Row row { i + 1, BatchLabel::valuesOf(BatchLabel::rowOf(i)), {} };
            const bool isShown = m_rows->show(row, {}, problems);
            const std::optional<Separation> separation = separate(problems);
            if (!isShown || !separation)
                return m_state.SkipWithError("a row was refused");
            for (const Plate &plate : separation->plates)
                benchmark::DoNotOptimize(PlateWriter::toPng(plate.image));
        }
    }

    ItemLabel m_label;
    std::unique_ptr<RowDocument> m_rows;
    std::unique_ptr<PlateComposer> m_composer;
    benchmark::State &m_state;
};

/// What comes to mind first: the page in colour, turned into one bit, and written as Qt does.
void printPlainly(BoundLabel &label)
{
    const QSize dots = (BatchLabel::millimetres / 25.4 * BatchLabel::dpi).toSize();
    for (int i = 0; i < labels; ++i) {
        QImage page(dots, QImage::Format_ARGB32_Premultiplied);
        page.fill(Qt::white);
        QPainter painter(&page);
        label.paint(painter, BatchLabel::rowOf(i));
        painter.end();
        QBuffer png;
        page.convertToFormat(QImage::Format_Mono, Qt::MonoOnly | Qt::DiffuseAlphaDither).save(&png, "png");
        benchmark::DoNotOptimize(png.data());
    }
}

void besidePlainPainting(benchmark::State &state)
{
    PlateBatch batch(1, state);
    BoundLabel label;
    Pair::compare(
        state, mostTimeOfPlain, labels, [&] { batch.printComposed(); }, [&] { printPlainly(label); });
}
BENCHMARK(besidePlainPainting)->Iterations(9)->Unit(benchmark::kMillisecond);

void besideSeparatingWhole(benchmark::State &state)
{
    PlateBatch batch(int(state.range(0)), state);
    Pair::compare(
        state, mostTimeOfWhole, labels, [&] { batch.printComposed(); }, [&] { batch.printWhole(); });
}
BENCHMARK(besideSeparatingWhole)->Arg(1)->Arg(2)->Arg(4)->Iterations(5)->Unit(benchmark::kMillisecond);

void fourInksBesideOne(benchmark::State &state)
{
    PlateBatch four(4, state);
    PlateBatch one(1, state);
    Pair::compare(
        state, mostTimeOfInks, labels, [&] { four.printComposed(); }, [&] { one.printComposed(); });
}
BENCHMARK(fourInksBesideOne)->Iterations(5)->Unit(benchmark::kMillisecond);

/// The proof of a label in its few colours, beside the same in 32 bits as Qt writes it.
void proofBesideFullColor(benchmark::State &state)
{
    ItemLabel label;
    label.document().setInks(inks.first(2));
    label.show(BatchLabel::rowOf(1));
    Problems problems;
    const std::optional<Separation> separation = separate(label.document(), { BatchLabel::dpi }, problems);
    if (!separation)
        return state.SkipWithError("the label was refused");
    const QImage proof = proofOf(*separation);
    const QImage full = proof.convertToFormat(QImage::Format_ARGB32);
    if (QImage::fromData(PlateWriter::toPng(proof)).convertToFormat(QImage::Format_ARGB32) != full)
        return state.SkipWithError("colours were lost");
    Pair::compare(
        state, mostTimeOfFullColor, 1, [&] { benchmark::DoNotOptimize(PlateWriter::toPng(proof)); },
        [&] {
            QBuffer png;
            full.save(&png, "png");
            benchmark::DoNotOptimize(png.data());
        });
}
BENCHMARK(proofBesideFullColor)->Iterations(15)->Unit(benchmark::kMillisecond);

} // namespace

VX_BENCHMARK_MAIN
