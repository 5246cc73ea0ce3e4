// SPDX-License-Identifier: BSD-3-Clause
#include "items/graphics/pixmapitem.h"
#include "items/shapes/ellipseitem.h"
#include "items/shapes/lineitem.h"
#include "items/text/richtextitem.h"
#include "items/text/simpletextitem.h"
#include "label/batch/platecomposer.h"
#include "tests/label/printing.h"

#include <QRandomGenerator>
#include <QTest>
#include <QTransform>

using namespace Qt::StringLiterals;
using namespace Printing;

namespace {

using ItemPointer = std::unique_ptr<Item>;

ItemPointer textItem(const QString &text, const QColor &color)
{
    auto item = std::make_unique<SimpleTextItem>();
    item->setItemText(text);
    item->setItemFontSize(14);
    item->setItemTextColor(color);
    return item;
}

ItemPointer richItem(const QString &html)
{
    auto item = std::make_unique<RichTextItem>();
    item->setItemHtml(html);
    return item;
}

ItemPointer codeItem(const QString &text, short symbol = 20)
{
    auto item = std::make_unique<BarcodeItem>();
    item->setBarcodeSymbol(symbol);
    item->setBarcodeText(text);
    return item;
}

ItemPointer symbolItem(const QByteArray &content, const QColor &color)
{
    auto item = std::make_unique<SymbolItem>();
    item->loadItemFromData("<svg fill=\"#000000\" stroke=\"none\" width=\"40\" height=\"40\" "
                           "xmlns=\"http://www.w3.org/2000/svg\">"
        + content + "</svg>");
    item->setItemPenFillColorPrePrint(color, nothing);
    return item;
}

ItemPointer pictureItem()
{
    QImage image(30, 20, QImage::Format_RGB32);
    image.fill(0xFF909090);
    auto item = std::make_unique<PixMapItem>();
    item->setPixmap(QPixmap::fromImage(image));
    return item;
}

void place(Item &item, QPointF at, double degrees = 0.0)
{
    auto &graphics = dynamic_cast<QGraphicsItem &>(item);
    graphics.setPos(at);
    graphics.setTransform(QTransform().rotate(degrees));
}

/// Shows another content, as a row does: in a copy of the item.
void change(LabelDocument &document, std::size_t index, const QString &text)
{
    ItemPointer item(document.items()[index]->createItemCopy());
    if (auto *label = dynamic_cast<SimpleTextItem *>(item.get()))
        label->setItemText(text);
    if (auto *rich = dynamic_cast<RichTextItem *>(item.get()))
        rich->setItemHtml(u"<b>%1</b> and <span style='color:#ff0000'>red</span>"_s.arg(text));
    if (auto *code = dynamic_cast<BarcodeItem *>(item.get()))
        code->setBarcodeText(text);
    document.replaceItem(index, std::move(item));
}

QString textsOf(const Problems &problems)
{
    QStringList texts;
    for (const Problem &problem : problems)
        texts.append(problem.text());
    return texts.join(u'\n');
}

QString barcodesOf(const Separation &separation)
{
    QStringList texts;
    for (const PrintedBarcode &code : separation.barcodes)
        texts.append(u"%1 %2 %3 %4 error %5, %6 x %7 of %8 x %9, %10 %11"_s.arg(code.item)
                         .arg(code.where, code.name, code.symbology)
                         .arg(code.error)
                         .arg(code.modules.width())
                         .arg(code.modules.height())
                         .arg(code.dots.width())
                         .arg(code.dots.height())
                         .arg(code.sharp)
                         .arg(code.moduleWidth));
    return texts.join(u'\n');
}

/// Nothing when both are the same; otherwise what is not, in words.
QString differenceOf(const Separation &composed, const Separation &separated)
{
    if (composed.plates.size() != separated.plates.size())
        return u"the number of plates"_s;
    for (std::size_t i = 0; i < composed.plates.size(); ++i) {
        const Plate &plate = composed.plates[i];
        const Plate &other = separated.plates[i];
        const QString dots = difference(plate.image, [&](int x, int y) { return prints(other.image, x, y); });
        if (!dots.isEmpty() || plate.image.size() != other.image.size())
            return other.ink.name + u": "_s + dots;
        if (plate.dots != other.dots || plate.ink != other.ink || plate.dpi != other.dpi
            || plate.image.dotsPerMeterX() != other.image.dotsPerMeterX())
            return u"what is told of the plate "_s + other.ink.name;
    }
    if (textsOf(composed.warnings) != textsOf(separated.warnings))
        return textsOf(composed.warnings) + u" instead of "_s + textsOf(separated.warnings);
    if (barcodesOf(composed) != barcodesOf(separated))
        return barcodesOf(composed) + u" instead of "_s + barcodesOf(separated);
    return composed.paper == separated.paper ? QString() : u"the paper"_s;
}

/// Shows each text in the items that change, and tells where the composer's plates are others than those of
/// the separation as a whole.
QString compare(LabelDocument &document, const std::vector<std::size_t> &changing, PlateComposer &composer,
    const SeparationOptions &options, const QStringList &texts)
{
    for (const QString &text : texts) {
        for (const std::size_t index : changing)
            change(document, index, text);
        Problems problems;
        const std::optional<Separation> composed = composer.separate(problems);
        if (!composed)
            return textsOf(problems);
        const QString found = differenceOf(*composed, separated(document, options));
        if (!found.isEmpty())
            return u"%1: %2"_s.arg(text, found);
    }
    return {};
}

const QStringList texts { u"AB 12"_s, u"0123456789"_s, u"x"_s, u""_s };

/// A label of a frame, a bound text in black and one in red, and a bound barcode.
LabelDocument plainLabel()
{
    LabelDocument document = blackAndRed({ 30, 20 });
    addRectangle(document, { 5, 5, 290, 190 }, { nothing, MobraTypes::BrushSolid, black, 3 });
    document.addItem(textItem(u"a"_s, black));
    document.addItem(textItem(u"b"_s, red));
    addItem(document, codeItem(u"1"_s), { 20, 110, 240, 60 }, { nothing, MobraTypes::BrushSolid, black });
    place(*document.items()[1], { 20.4, 20.6 });
    place(*document.items()[2], { 20, 60 });
    return document;
}

const std::vector<std::size_t> plainChanging { 1, 2, 3 };

/// Makes labels of all kinds of items in all sorts of places.
class RandomLabel
{
public:
    explicit RandomLabel(quint32 seed)
        : m_random(seed)
    {
    }

    [[nodiscard]] int below(int limit) { return int(m_random.bounded(limit)); }

    LabelDocument make(std::vector<std::size_t> &changing)
    {
        LabelDocument document = blackAndRed({ 20, 15 });
        if (below(2) == 0)
            document.setInks(document.inks() + QList<Ink> { { u"blue"_s, blue } });
        const int count = 2 + below(6);
        for (int i = 0; i < count; ++i)
            add(document, changing);
        return document;
    }

private:
    QColor color()
    {
        static const QList<QColor> colors { black, black, red, red, white, QColor(0xFF, 0xFF, 0xFE), nothing,
            blue, QColor(0, 128, 0) };
        return colors[below(int(colors.size()))];
    }

    MobraTypes::BrushStyle style()
    {
        static const QList<MobraTypes::BrushStyle> styles { MobraTypes::BrushSolid, MobraTypes::BrushSolid,
            MobraTypes::BrushNone, MobraTypes::BrushDense4, MobraTypes::BrushDiagonalCross,
            MobraTypes::BrushLinearGradient };
        return styles[below(int(styles.size()))];
    }

    ItemPointer item(int kind)
    {
        switch (kind) {
        case 0:
        case 1:
            return textItem(u"Text"_s, color());
        case 2:
            return richItem(u"rich"_s);
        case 3:
            return codeItem(u"17"_s, below(2) ? 58 : 20);
        case 4:
            return std::make_unique<RectangleItem>();
        case 5:
            return std::make_unique<EllipseItem>();
        case 6:
            return std::make_unique<LineItem>();
        case 7:
            return symbolItem("<rect width='30' height='25'/><circle r='9' fill='#FFFFFF'/>", color());
        default:
            return pictureItem();
        }
    }

    void add(LabelDocument &document, std::vector<std::size_t> &changing)
    {
        const int kind = below(below(4) == 0 ? 9 : 8);
        const QRectF where(
            below(150) + below(4) / 4.0, below(110) + below(4) / 4.0, 20 + below(120), 15 + below(80));
        Item *added = addItem(document, item(kind), where, { color(), style(), color(), ushort(below(4)) });
        place(*added, where.topLeft(), below(4) == 0 ? below(8) * 15 : 0);
        added->setItemHorizontalMirror(below(6) == 0);
        added->setAllowOverprint(below(2) == 0);
        added->setItemZValue(below(4) == 0 ? below(3) : 0);
        if (below(10) == 0)
            added->setItemIsVisible(false);
        if ((kind < 4 || kind == 7) && below(3) != 0)
            changing.push_back(document.items().size() - 1);
    }

    QRandomGenerator m_random;
};

} // namespace

class tst_PlateComposer : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void composesWhatIsBound_data();
    void composesWhatIsBound();
    void leavesToSeparationWhatItCannotCompose_data();
    void leavesToSeparationWhatItCannotCompose();
    void triesNoMoreWhenItSeldomSucceeds();
    void composesAgainAfterARowThatCannotBePrinted();
    void givesThePlatesOfSeparation_data();
    void givesThePlatesOfSeparation();
};

void tst_PlateComposer::composesWhatIsBound_data()
{
    QTest::addColumn<SeparationOptions>("options");
    QTest::newRow("at the resolution of the design") << SeparationOptions { 254.0 };
    QTest::newRow("finer") << SeparationOptions { 600.0 };
    QTest::newRow("coarser") << SeparationOptions { 203.0 };
    QTest::newRow("negative") << SeparationOptions { 254.0, true };
    QTest::newRow("overprint") << SeparationOptions { 254.0, false, true };
    QTest::newRow("negative overprint") << SeparationOptions { 300.0, true, true };
}

void tst_PlateComposer::composesWhatIsBound()
{
    QFETCH(const SeparationOptions, options);
    LabelDocument document = plainLabel();
    PlateComposer composer(document, plainChanging, options);
    QCOMPARE(compare(document, plainChanging, composer, options, texts), QString());
    QCOMPARE(composer.composed(), texts.size());
}

void tst_PlateComposer::leavesToSeparationWhatItCannotCompose_data()
{
    using Change = void (*)(LabelDocument &);
    QTest::addColumn<Change>("change");
    QTest::newRow("a bar over a bound text") << Change([](LabelDocument &document) {
        addRectangle(document, { 22, 30, 60, 3 }, { red });
    });
    QTest::newRow("a white bar over a bound text") << Change([](LabelDocument &document) {
        addRectangle(document, { 22, 30, 60, 3 }, { white });
    });
    QTest::newRow("a picture around a bound text") << Change([](LabelDocument &document) {
        addItem(document, pictureItem(), { 15, 25, 200, 80 }, {});
    });
    QTest::newRow("a translucent symbol") << Change([](LabelDocument &document) {
        ItemPointer symbol = symbolItem("<rect width='40' height='40' fill-opacity='0.6'/>", black);
        place(*symbol, { 20, 20 });
        document.replaceItem(1, std::move(symbol));
    });
    QTest::newRow("a bar that is raised over bound texts") << Change([](LabelDocument &document) {
        document.items()[0]->setItemZValue(1.0);
        dynamic_cast<RectangleItem &>(*document.items()[0]).setItemFillColor(red);
    });
}

void tst_PlateComposer::leavesToSeparationWhatItCannotCompose()
{
    using Change = void (*)(LabelDocument &);
    QFETCH(const Change, change);
    LabelDocument document = plainLabel();
    change(document);
    const SeparationOptions options { 254.0 };
    PlateComposer composer(document, plainChanging, options);
    QCOMPARE(compare(document, plainChanging, composer, options, { u"AB 12"_s, u"0123456789"_s }), QString());
    QCOMPARE(composer.composed(), 0);
}

void tst_PlateComposer::triesNoMoreWhenItSeldomSucceeds()
{
    LabelDocument document = plainLabel();
    addRectangle(document, { 100, 20, 100, 40 }, { red });
    const SeparationOptions options { 254.0 };
    PlateComposer composer(document, plainChanging, options);
    const auto show = [&](const QString &text, int times) {
        return compare(document, plainChanging, composer, options, QStringList(times, text));
    };
    QCOMPARE(show(u"1"_s, 2), QString());
    QCOMPARE(composer.composed(), 2);
    QCOMPARE(show(u"wide enough to meet the bar"_s, 11), QString()); // eight more than were composed
    QCOMPARE(show(u"1"_s, 2), QString());
    QCOMPARE(composer.composed(), 2);
}

void tst_PlateComposer::composesAgainAfterARowThatCannotBePrinted()
{
    LabelDocument document = plainLabel();
    const SeparationOptions options { 254.0 };
    PlateComposer composer(document, plainChanging, options);
    for (int i = 0; i < 2; ++i) {
        place(*document.items()[1], { 1e9, 0 });
        Problems problems;
        QVERIFY(!composer.separate(problems));
        QCOMPARE(problems.value(0).where, u"/items/1/itemPositionX"_s);
        place(*document.items()[1], { 20, 20 });
        QCOMPARE(compare(document, plainChanging, composer, options, { u"again"_s }), QString());
        QCOMPARE(composer.composed(), i + 1);
    }
}

void tst_PlateComposer::givesThePlatesOfSeparation_data()
{
    QTest::addColumn<SeparationOptions>("options");
    QTest::addColumn<quint32>("seed");
    QTest::newRow("positive") << SeparationOptions { 254.0 } << 1U;
    QTest::newRow("finer") << SeparationOptions { 381.0 } << 2U;
    QTest::newRow("odd resolution") << SeparationOptions { 211.0 } << 3U;
    QTest::newRow("negative") << SeparationOptions { 254.0, true } << 4U;
    QTest::newRow("overprint") << SeparationOptions { 254.0, false, true } << 5U;
}

void tst_PlateComposer::givesThePlatesOfSeparation()
{
    QFETCH(const SeparationOptions, options);
    QFETCH(const quint32, seed);
    constexpr int labels = 60;
    const QStringList rows { u""_s, u"A7"_s, u""_s, u"longer 12"_s };
    RandomLabel random(seed);
    qint64 composed = 0;
    for (int i = 0; i < labels; ++i) {
        std::vector<std::size_t> changing;
        LabelDocument document = random.make(changing);
        PlateComposer composer(document, changing, options);
        const QString found = compare(document, changing, composer, options, rows);
        QVERIFY2(found.isEmpty(), qPrintable(u"label %1: %2"_s.arg(i).arg(found)));
        composed += composer.composed();
    }
    // Both ways are taken often enough to mean something.
    const qint64 all = labels * rows.size();
    QVERIFY2(composed > all / 4 && composed < all * 3 / 4, qPrintable(QString::number(composed)));
}

QTEST_MAIN(tst_PlateComposer)
#include "tst_platecomposer.moc"
