// SPDX-License-Identifier: BSD-3-Clause
#include "bench/itemscenes.h"
#include "bench/pair.h"
#include "bench/records.h"
#include "bench/support.h"
#include "items/text/richtextitem.h"
#include "items/text/simpletextitem.h"

#include <QDataStream>
#include <QGraphicsTextItem>
#include <QIODevice>
#include <QTextDocument>

#include <benchmark/benchmark.h>

#include <memory>
#include <type_traits>
#include <vector>

// Text items beside Qt's own text item that shows the same: painting them, changing what they show, and
// loading and saving them.

namespace {

constexpr unsigned int version = 6;
const QString number = QStringLiteral("4711");
const QString html = QStringLiteral("<div style='font-size:8pt'><p align=center><b>Lot</b> "
                                    "<span style='color:#c00000'>4711</span></p>"
                                    "<p>best before <i>12/2031</i></p></div>");

/// What a stock item needs to look like one of ours, but its text.
void dressAlike(QGraphicsTextItem &stock, const TextItem &ours)
{
    stock.setFont(ours.font());
    stock.document()->setDefaultTextOption(ours.document()->defaultTextOption());
    stock.setTextWidth(ours.textWidth());
    stock.setDefaultTextColor(ours.defaultTextColor());
    stock.setFlags(ours.flags());
}

/// Here the side is the font's size in pixels.
struct Label
{
    static SimpleTextItem *make(double side)
    {
        auto *item = new SimpleTextItem;
        item->setItemText(number);
        item->setItemFontSize(int(side));
        return item;
    }
};

struct StockLabel
{
    static QGraphicsTextItem *make(double side)
    {
        return make(*std::unique_ptr<SimpleTextItem>(Label::make(side)), number);
    }
    static QGraphicsTextItem *make(const SimpleTextItem &model, const QString &text)
    {
        auto *item = new QGraphicsTextItem(text);
        dressAlike(*item, model);
        return item;
    }
};

struct Box
{
    static RichTextItem *make(double side)
    {
        auto *item = new RichTextItem;
        item->setItemSize(QSizeF(side, side));
        item->setItemHtml(html);
        return item;
    }
};

struct StockBox
{
    static QGraphicsTextItem *make(double side)
    {
        return make(*std::unique_ptr<RichTextItem>(Box::make(side)), html);
    }
    static QGraphicsTextItem *make(const RichTextItem &model, const QString &text)
    {
        auto *item = new QGraphicsTextItem;
        dressAlike(*item, model);
        item->setHtml(text);
        return item;
    }
};

void paintLabels(benchmark::State &state)
{
    ItemScenes::paintInScene<Label, StockLabel>(state);
}

void paintRichTexts(benchmark::State &state)
{
    ItemScenes::paintInScene<Box, StockBox>(state);
}

BENCHMARK(paintLabels)->Args({ 100, 8, 80 })->Iterations(201);
BENCHMARK(paintLabels)->Args({ 1'000, 8, 80 })->Iterations(61);
BENCHMARK(paintLabels)->Args({ 10'000, 8, 80 })->Iterations(15);
BENCHMARK(paintRichTexts)->Args({ 100, 100, 80 })->Iterations(61);
BENCHMARK(paintRichTexts)->Args({ 1'000, 100, 80 })->Iterations(21);

/// One text in place of another, in the way that each kind of item offers.
void show(SimpleTextItem &label, const QString &text)
{
    label.setItemData(text);
}

void show(QGraphicsTextItem &stock, const QString &text)
{
    stock.setTextWidth(-1);
    stock.setPlainText(text);
    stock.setTextWidth(stock.boundingRect().width());
}

/// The same items with another text each time, on a page that they cover.
template <typename Kind> class Labels
{
public:
    explicit Labels(int count)
        : m_scene(ItemScenes::page())
    {
        ItemScenes::fill<Kind>(m_scene, count, 8.0);
        const QList<QGraphicsItem *> items = m_scene.items();
        for (QGraphicsItem *item : items)
            m_items.push_back(static_cast<decltype(Kind::make(0.0))>(item));
    }

    void change(int round)
    {
        for (auto *item : m_items)
            show(*item, QString::number(4711 + round));
    }
    QImage render()
    {
        QImage image(Bench::pageSize, QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::white);
        QPainter painter(&image);
        paint(painter);
        return image;
    }
    void paint(QPainter &painter) { m_scene.render(&painter, ItemScenes::page(), ItemScenes::page()); }
    [[nodiscard]] const QGraphicsScene &scene() const { return m_scene; }

private:
    QGraphicsScene m_scene;
    std::vector<decltype(Kind::make(0.0))> m_items;
};

/// Arguments: the number of labels, whether they are painted, and the target in percent.
void changeLabels(benchmark::State &state)
{
    const int count = int(state.range(0));
    const bool painted = state.range(1) != 0;
    Labels<Label> ours(count);
    Labels<StockLabel> stock(count);
    const QImage before = ours.render();
    ours.change(1);
    stock.change(1);
    const QImage behind = ours.render();
    if (behind == before || behind != stock.render() || !ItemScenes::allShow(ours.scene(), behind)) {
        state.SkipWithError("the texts are not shown");
        return;
    }
    QImage image(Bench::pageSize, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::white);
    QPainter painter(&image);
    int round = 1;
    const auto work = [&](auto &labels) {
        labels.change(round);
        if (painted)
            labels.paint(painter);
    };
    Pair::compare(
        state, double(state.range(2)) / 100.0, count, [&] { work(ours); },
        [&] {
            ++round;
            work(stock);
        });
}

BENCHMARK(changeLabels)->Args({ 1'000, 0, 85 })->Iterations(41);
BENCHMARK(changeLabels)->Args({ 1'000, 1, 90 })->Iterations(41);

template <typename Item, typename Save> QByteArray recordOf(Item &item, Save &&save)
{
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    save(stream, item);
    return bytes;
}

const auto saveOurs = [](QDataStream &stream, TextItem &item) { item.saveItemToData(stream); };

void saveLabelByOperators(QDataStream &stream, SimpleTextItem &label)
{
    const QFont font = label.font();
    stream << label.toPlainText() << label.getItemTextColor() << qint16(int(label.getItemAlignment()))
           << label.getItemDocumentMargin();
    Records::saveByOperators(stream, label);
    stream << font.family() << qint16(font.pixelSize()) << qint16(font.weight()) << label.getItemItalic()
           << label.getItemUnderline() << label.getOldTransformCoefficientM31()
           << label.getOldTransformCoefficientM32() << label.getTextIsVertical() << label.getItemWasResized()
           << label.getItemPinToCenter() << qint8(label.getItemSizeLimiting());
}

void saveBoxByOperators(QDataStream &stream, RichTextItem &box)
{
    stream << box.toHtml() << box.getDocumentIsEmpty() << box.getScreenDpi() << box.getItemTextColor();
    Records::saveByOperators(stream, box);
    stream << box.getEmptyFontFamily() << qint16(box.getEmptyFontSize()) << qint16(box.getEmptyFontWeight())
           << box.getEmptyFontItalic() << box.getEmptyFontUnderline() << qint16(box.getEmptyAlignment());
}

template <typename Work> void repeat(int count, Work &&work)
{
    for (int i = 0; i < count; ++i)
        work();
}

template <typename Item, typename Save>
void saveRecords(benchmark::State &state, Item &item, double target, Save &&saveOther)
{
    constexpr int count = 1'000;
    if (recordOf(item, saveOurs) != recordOf(item, saveOther)) {
        state.SkipWithError("the records differ");
        return;
    }
    Pair::compare(
        state, target, count,
        [&] { repeat(count, [&] { benchmark::DoNotOptimize(recordOf(item, saveOurs)); }); },
        [&] { repeat(count, [&] { benchmark::DoNotOptimize(recordOf(item, saveOther)); }); });
}

void saveLabels(benchmark::State &state)
{
    const std::unique_ptr<SimpleTextItem> label(Label::make(8.0));
    saveRecords(state, *label, 0.75, saveLabelByOperators);
}

void saveRichTexts(benchmark::State &state)
{
    const std::unique_ptr<RichTextItem> box(Box::make(100.0));
    saveRecords(state, *box, 1.0, saveBoxByOperators);
}

/// Items made from a record beside stock items made alike.
template <typename Kind, typename Stock> void loadRecords(benchmark::State &state, double side, double target)
{
    using Item = std::remove_pointer_t<decltype(Kind::make(0.0))>;
    constexpr int count = 300;
    const auto load = [](const QByteArray &record) {
        auto item = std::make_unique<Item>();
        QDataStream stream(record);
        item->loadItemFromData(stream, version);
        return item;
    };
    const std::unique_ptr<Item> model(Kind::make(side));
    // Qt writes HTML that it has read in another way than HTML that it was given.
    const QByteArray record = recordOf(*load(recordOf(*model, saveOurs)), saveOurs);
    QString text;
    QDataStream stream(record);
    stream >> text;
    if (recordOf(*load(record), saveOurs) != record) {
        state.SkipWithError("the loaded item differs");
        return;
    }
    Pair::compare(
        state, target, count, [&] { repeat(count, [&] { return load(record); }); },
        [&] {
            repeat(count, [&] { return std::unique_ptr<QGraphicsTextItem>(Stock::make(*model, text)); });
        });
}

void loadLabels(benchmark::State &state)
{
    loadRecords<Label, StockLabel>(state, 8.0, 1.8);
}

void loadRichTexts(benchmark::State &state)
{
    loadRecords<Box, StockBox>(state, 100.0, 1.9);
}

BENCHMARK(saveLabels)->Iterations(31);
BENCHMARK(saveRichTexts)->Iterations(31);
BENCHMARK(loadLabels)->Iterations(31);
BENCHMARK(loadRichTexts)->Iterations(31);

} // namespace

VX_BENCHMARK_MAIN
