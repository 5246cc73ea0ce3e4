// SPDX-License-Identifier: BSD-3-Clause
#include "items/containers/layeritem.h"
#include "items/graphics/pixmapitem.h"
#include "items/graphics/svgitem.h"
#include "items/graphics/symbolitem.h"
#include "items/shapes/rectangleitem.h"
#include "items/text/richtextitem.h"
#include "label/binaryformat.h"
#include "label/contentbudget.h"
#include "label/documentfile.h"
#include "label/problemlog.h"
#include "tests/label/jsontexts.h"
#include "tests/label/printing.h"
#include "tests/support/drawings.h"
#include "tests/support/itemrecords.h"
#include "tests/support/symbols.h"

#include <QRegularExpression>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

std::unique_ptr<Item> picture(QSize size)
{
    auto item = std::make_unique<PixMapItem>();
    QImage image(size, QImage::Format_ARGB32);
    image.fill(Qt::transparent);
    item->pixmapImportActions(QPixmap::fromImage(image));
    return item;
}

template <typename ItemClass> std::unique_ptr<Item> drawing(const QByteArray &svg)
{
    auto item = std::make_unique<ItemClass>();
    item->loadItemFromData(svg);
    return item;
}

std::unique_ptr<Item> textWithPicture()
{
    auto text = std::make_unique<RichTextItem>();
    text->setItemHtml(u"<img src=\"data:image/png;base64,"_s
        + QString::fromLatin1(Drawings::blackPng(30, 20).toBase64()) + u"\">"_s);
    return text;
}

/// A drawing of thirty million characters, in Base64 and compressed to 29 kilobytes.
QByteArray longDrawing()
{
    return Drawings::compressed(
        Drawings::drawing("<desc>" + QByteArray(30'000'000, 'x') + "</desc><rect width='9' height='9'/>"))
        .toBase64();
}

/// As documents load it: at once.
std::unique_ptr<Item> loadedSymbol(const QByteArray &svg)
{
    auto item = std::make_unique<SymbolItem>();
    ItemRecords::load(*item, ItemRecords::saved(*drawing<SymbolItem>(svg)));
    return item;
}

} // namespace

/// What the pictures and drawings of a document may take together.
class tst_ContentBudget : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    void contentIsCounted_data();
    void contentIsCounted();
    void itemsAreCountedTogether();
    void documentsAreRefused();
    void binaryDocumentsAreRefused();

private:
    static constexpr int accepted = 4; ///< long drawings, of 240 MB each
};

void tst_ContentBudget::contentIsCounted_data()
{
    QTest::addColumn<std::shared_ptr<Item>>("item");
    QTest::addColumn<qint64>("bytes");
    const auto row = [](const char *name, std::unique_ptr<Item> item, qint64 bytes) {
        QTest::newRow(name) << std::shared_ptr<Item>(std::move(item)) << bytes;
    };
    row("rectangle", std::make_unique<RectangleItem>(), 0);
    row("no picture", std::make_unique<PixMapItem>(), 0);
    row("picture", picture({ 30, 20 }), 30 * 20 * 4);
    row("rich text", textWithPicture(), 30 * 20 * 4);
    row("no drawing", std::make_unique<SvgItem>(), 0);
    // Two elements, and the characters.
    const QByteArray plain = "<svg width=\"9\" height=\"9\"><rect width=\"9\" height=\"9\"/></svg>";
    row("drawing", drawing<SvgItem>(plain), 2 * 1'200 + plain.size() * 8);
    row("compressed drawing", drawing<SvgItem>(Drawings::compressed(plain)), 2 * 1'200 + plain.size() * 8);
    const QByteArray withPicture
        = "<svg width=\"9\" height=\"9\">" + Drawings::embedded(Drawings::blackPng(30, 20)) + "</svg>";
    row("drawing with a picture", drawing<SvgItem>(withPicture),
        2 * 1'200 + withPicture.size() * 8 + 30 * 20 * 4);
    // Without a fill its white becomes "none", which is three characters shorter.
    row("symbol", loadedSymbol(Symbols::halves), 3 * 1'200 + (Symbols::halves.size() - 3) * 8);
}

void tst_ContentBudget::contentIsCounted()
{
    QFETCH(std::shared_ptr<Item>, item);
    QFETCH(qint64, bytes);
    ProblemLog log(u"a.vxl"_s);
    QVERIFY(ContentBudget(bytes).take(*item, u"/items/0"_s, log));
    QCOMPARE(log.count(), 0);
    if (bytes > 0)
        QVERIFY(!ContentBudget(bytes - 1).take(*item, u"/items/0"_s, log));
    QCOMPARE(log.count(), bytes > 0 ? 1 : 0);
}

void tst_ContentBudget::itemsAreCountedTogether()
{
    ProblemLog log(u"a.vxl"_s);
    ContentBudget budget(4'000'000);
    const auto large = picture({ 600, 1'000 });
    QVERIFY(budget.take(*large, u"/items/0"_s, log));
    QVERIFY(!budget.take(*large, u"/items/1"_s, log));
    QVERIFY(budget.take(*picture({ 400, 1'000 }), u"/items/2"_s, log)); // what is refused is not counted
    QVERIFY(!budget.take(*picture({ 1, 1 }), u"/items/3"_s, log));
    const Problems problems = log.problems();
    QCOMPARE(problems.size(), 2);
    QCOMPARE(problems[0].text(),
        u"a.vxl: /items/1: Pixmap -1 would take the pictures and drawings of the label to 5 MB of memory; "
        u"use "
        "smaller pictures: a label holds at most 4 MB"_s);
}

void tst_ContentBudget::documentsAreRefused()
{
    const QByteArray item = R"({"itemShape": 65547, "svgContents": ")" + longDrawing() + "\"}";
    const LoadResult result = JsonTexts::read(
        JsonTexts::withItems((item + ",").repeated(accepted + 1).chopped(1)), BrokenItems::LeaveOut);
    QVERIFY(result.document);
    QCOMPARE(result.document->items().size(), std::size_t(accepted));
    QCOMPARE(result.problems.size(), 1);
    QCOMPARE(result.problems[0].where, u"/items/4"_s);
    QVERIFY2(result.problems[0].what.contains(u"to 1201 MB"_s), qPrintable(result.problems[0].what));
}

void tst_ContentBudget::binaryDocumentsAreRefused()
{
    LabelDocument document = Printing::blackAndRed({ 10, 10 });
    for (int i = 0; i <= accepted; ++i) {
        auto layer = std::make_unique<LayerItem>();
        auto *item = new SvgItem;
        item->setSvgContents(longDrawing()); // which does not load it
        item->setParentItem(layer.get());
        document.addItem(std::move(layer));
    }
    const LoadResult result
        = DocumentFile::loadFromData(BinaryFormat::write(document), u"a"_s, BrokenItems::Refuse);
    QVERIFY(!result.document);
    QCOMPARE(result.problems.size(), 1);
    QVERIFY2(result.problems[0].what.contains(u"to 1201 MB"_s), qPrintable(result.problems[0].what));
}

QTEST_MAIN(tst_ContentBudget)
#include "tst_contentbudget.moc"
