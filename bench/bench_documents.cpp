// SPDX-License-Identifier: BSD-3-Clause
// Whole documents of 10 to 10,000 items in groups on layers: how the time grows with their number. The
// counter "exponent" is the slope of the logarithm of the time over that of the number, by least squares: 1
// is linear.
#include "bench/support.h"
#include "items/containers/groupitem.h"
#include "items/containers/layeritem.h"
#include "items/shapes/ellipseitem.h"
#include "items/shapes/hexagonitem.h"
#include "items/shapes/lineitem.h"
#include "items/shapes/rectangleitem.h"
#include "items/text/simpletextitem.h"
#include "label/documentfile.h"
#include "label/separation.h"

#include <QFont>

#include <chrono>
#include <cmath>

namespace {

using Clock = std::chrono::steady_clock;

constexpr double mostGrowth = 1.1;
constexpr int sizes[] = { 10, 100, 1'000, 10'000 };
constexpr int itemsOfAGroup = 10;
constexpr int groupsOfALayer = 100;

std::unique_ptr<Item> itemOf(int number)
{
    switch (number % 5) {
    case 0: {
        auto text = std::make_unique<SimpleTextItem>();
        text->setItemText(QString::number(number));
        return text;
    }
    case 1:
        return std::make_unique<EllipseItem>();
    case 2:
        return std::make_unique<HexagonItem>();
    case 3:
        return std::make_unique<LineItem>();
    default:
        return std::make_unique<RectangleItem>();
    }
}

/// A group of items in a grid of its own.
std::unique_ptr<GroupItem> groupOf(int first, int count)
{
    QList<QGraphicsItem *> members;
    for (int i = first; i < first + count; ++i) {
        std::unique_ptr<Item> item = itemOf(i);
        item->setItemSize(QSizeF(8, 6));
        auto *graphics = dynamic_cast<QGraphicsItem *>(item.release());
        graphics->setPos(10 * (i % itemsOfAGroup), 8 * (i / itemsOfAGroup % groupsOfALayer));
        graphics->setZValue(i);
        members.append(graphics);
    }
    auto group = std::make_unique<GroupItem>();
    group->addToGroup(members);
    group->setSelected(false);
    return group;
}

LabelDocument documentOf(int items)
{
    LabelDocument document;
    document.setPageSize(QSizeF(100, 100));
    document.setDesignDpi(203);
    document.setInks({ { QStringLiteral("black"), Qt::black }, { QStringLiteral("red"), Qt::red } });
    for (int first = 0; first < items;) {
        auto layer = std::make_unique<LayerItem>();
        for (int group = 0; group < groupsOfALayer && first < items; ++group, first += itemsOfAGroup) {
            std::unique_ptr<GroupItem> made = groupOf(first, std::min(itemsOfAGroup, items - first));
            made->setPos(made->pos() + QPointF(100.0 * (first / (itemsOfAGroup * groupsOfALayer)), 0));
            made.release()->setParentItem(layer.get());
        }
        document.addItem(std::move(layer));
    }
    return document;
}

/// The shortest of some runs, in seconds.
template <typename Work> double secondsFor(Work work)
{
    constexpr int runs = 3;
    double shortest = std::numeric_limits<double>::infinity();
    for (int run = 0; run < runs; ++run) {
        const auto start = Clock::now();
        work();
        shortest = std::min(shortest, std::chrono::duration<double>(Clock::now() - start).count());
    }
    return shortest;
}

double slopeOf(const QList<QPointF> &points)
{
    QPointF middle;
    for (const QPointF &point : points)
        middle += point / double(points.size());
    double both = 0.0;
    double across = 0.0;
    for (const QPointF &point : points) {
        both += (point.x() - middle.x()) * (point.y() - middle.y());
        across += (point.x() - middle.x()) * (point.x() - middle.x());
    }
    return both / across;
}

/// prepare(number of items) gives what is to be measured.
template <typename Prepare> void measureGrowth(benchmark::State &state, Prepare prepare)
{
    QList<QPointF> times;
    for (auto _ : state) {
        times.clear();
        for (const int items : sizes) {
            const double seconds = secondsFor(prepare(items));
            times.append(QPointF(std::log(items), std::log(seconds)));
            state.counters["ms_" + std::to_string(items)] = 1000.0 * seconds;
        }
    }
    state.counters["exponent"] = slopeOf(times);
    state.counters["target"] = mostGrowth;
}

QByteArray dataOf(const LabelDocument &document, DocumentFormat format)
{
    Problems problems;
    return DocumentFile::toData(document, format, problems);
}

void load(benchmark::State &state, DocumentFormat format)
{
    measureGrowth(state, [format](int items) {
        const QByteArray data = dataOf(documentOf(items), format);
        return [data] {
            const LoadResult result = DocumentFile::loadFromData(data, {});
            if (!result.document)
                std::abort();
        };
    });
}

void save(benchmark::State &state, DocumentFormat format)
{
    measureGrowth(state, [format](int items) {
        return [document = documentOf(items), format] {
            if (dataOf(document, format).isEmpty())
                std::abort();
        };
    });
}

void separateDocument(benchmark::State &state)
{
    measureGrowth(state, [](int items) {
        return [document = documentOf(items)] {
            Problems problems;
            if (!separate(document, { .dpi = document.designDpi() }, problems))
                std::abort();
        };
    });
}

/// One group of them all, a little larger and back.
void resizeGroup(benchmark::State &state)
{
    const std::unique_ptr<GroupItem> group = groupOf(0, int(state.range(0)));
    const QSizeF size = group->getItemSize();
    for (auto _ : state) {
        group->setItemSize(size * 1.25);
        group->setItemSize(size);
    }
    state.SetItemsProcessed(2 * state.iterations() * state.range(0));
}

BENCHMARK_CAPTURE(load, JSON, DocumentFormat::Json)->Iterations(1)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(load, binary, DocumentFormat::Binary)->Iterations(1)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(save, JSON, DocumentFormat::Json)->Iterations(1)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(save, binary, DocumentFormat::Binary)->Iterations(1)->Unit(benchmark::kMillisecond);
BENCHMARK(separateDocument)->Iterations(1)->Unit(benchmark::kMillisecond);
BENCHMARK(resizeGroup)->Arg(100)->Arg(1'000)->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char **argv)
{
    QFont::insertSubstitution(QStringLiteral("_Fen Loma"), QStringLiteral("Loma"));
    return Bench::run(argc, argv);
}
