// SPDX-License-Identifier: BSD-3-Clause
#include "items/containers/groupitem.h"
#include "items/containers/layeritem.h"
#include "items/graphics/pixmapitem.h"
#include "items/graphics/svgitem.h"
#include "items/shapes/ellipseitem.h"
#include "items/shapes/righttriangleitem.h"
#include "items/shapes/roundedrectangleitem.h"
#include "items/text/richtextitem.h"
#include "items/text/simpletextitem.h"
#include "label/itemtree.h"
#include "label/proof.h"
#include "tests/label/pdfprobe.h"
#include "tests/label/picturedistance.h"
#include "tests/label/printing.h"

#include <QRegularExpression>
#include <QTest>

#include <random>

using namespace Qt::StringLiterals;
using namespace Printing;

namespace {

std::unique_ptr<SimpleTextItem> textOf(const QString &text, const QString &family, QPointF at)
{
    auto item = std::make_unique<SimpleTextItem>();
    item->setItemText(text);
    item->setItemFontFamily(family);
    item->setItemFontSize(40);
    item->setItemBold(false);
    item->setPos(at);
    return item;
}

template <typename Type> std::unique_ptr<Type> shapeOf(const QRectF &place, const QColor &fill = black)
{
    auto item = std::make_unique<Type>();
    item->setItemSize(place.size());
    item->setItemPenStyle(Qt::NoPen);
    item->setItemFillColor(fill);
    item->setPos(place.topLeft());
    return item;
}

std::unique_ptr<BarcodeItem> barcodeOf(short symbol, const QString &text, const QRectF &place)
{
    auto item = std::make_unique<BarcodeItem>();
    item->setBarcodeSymbol(symbol);
    item->setBarcodeText(text);
    item->setItemSize(place.size());
    item->setPos(place.topLeft());
    return item;
}

template <typename Type, typename... Members> std::unique_ptr<Type> containerOf(Members... members)
{
    std::vector<std::unique_ptr<Item>> items;
    (items.push_back(std::move(members)), ...);
    auto container = std::make_unique<Type>();
    ItemTree::join(*container, std::move(items));
    return container;
}

/// Noise, which a lossy format would show best.
QImage noise(QSize size, QImage::Format format)
{
    QImage image(size, QImage::Format_RGB32);
    std::mt19937 random(11);
    for (int y = 0; y < size.height(); ++y) {
        for (int x = 0; x < size.width(); ++x)
            image.setPixel(x, y, 0xFF000000 | random());
    }
    return image.convertToFormat(format);
}

/// What is seen of a document at 254 dpi, where a pixel is a dot of the documents here.
QImage seen(const LabelDocument &document)
{
    PdfProbe pdf;
    pdf.write(document);
    return pdf.page(1, 254.0);
}

QRgb colourAt(const QImage &page, int x, int y)
{
    return page.pixel(x, y) & 0xFFFFFF;
}

constexpr QRgb blackPixel = 0x000000;
constexpr QRgb whitePixel = 0xFFFFFF;

} // namespace

/// What of a label is in its PDF, and how.
class tst_PdfLabels : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void textsCanBeRead();
    void fontsAreEmbedded();
    void barcodesAreNoPictures();
    void drawingsAreNoPictures();
    void picturesLoseNothing_data();
    void picturesLoseNothing();
    void aPictureOnManyPagesIsWrittenOnce();
    void coloursAreTheItems();
    void higherItemsCoverLowerOnes();
    void hiddenItemsAreAbsent();
    void membersLieWhereTheirContainersShowThem();
    void itemsAreClippedToTheirShapes();
    void selectionsDoNotShow();
    void theDocumentStaysAsItIs();
    void looksLikeTheProof();
};

void tst_PdfLabels::init()
{
    QTest::failOnWarning(QRegularExpression(u".*"_s));
}

void tst_PdfLabels::textsCanBeRead()
{
    LabelDocument document = blackAndRed({ 100, 50 });
    document.addItem(textOf(u"Größe 42 – fünf Stück"_s, u"DejaVu Sans"_s, { 20, 20 }));
    auto rich = std::make_unique<RichTextItem>();
    rich->setItemSize({ 800, 200 });
    rich->setItemHtml(u"<div style='font-family:Loma; font-size:20pt'>rich <b>and bold</b></div>"_s);
    rich->setPos(20, 100);
    document.addItem(std::move(rich));
    document.addItem(barcodeOf(20, u"PART-0042"_s, { 20, 320, 500, 150 })); // Code 128

    PdfProbe pdf;
    pdf.write(document);
    QStringList lines = pdf.text().remove(u'\f').split(u'\n', Qt::SkipEmptyParts);
    for (QString &line : lines)
        line = line.simplified();
    QCOMPARE(lines, QStringList({ u"Größe 42 – fünf Stück"_s, u"rich and bold"_s, u"PART-0042"_s }));
}

void tst_PdfLabels::fontsAreEmbedded()
{
    LabelDocument document = blackAndRed({ 100, 50 });
    document.addItem(textOf(u"TrueType"_s, u"DejaVu Sans"_s, { 20, 20 }));
    document.addItem(textOf(u"outlines of PostScript"_s, u"Loma"_s, { 20, 120 }));
    PdfProbe pdf;
    pdf.write(document);

    QStringList names;
    const QList<QStringList> fonts = pdf.table(u"pdffonts"_s);
    for (const QStringList &font : fonts) {
        // name, type in two words, encoding, embedded, subset, Unicode
        QCOMPARE(font.mid(1, 4), QStringList({ u"CID"_s, u"TrueType"_s, u"Identity-H"_s, u"yes"_s }));
        QCOMPARE(font[6], u"yes"_s);
        names.append(font[0]);
    }
    names.sort();
    QCOMPARE(names, QStringList({ u"DejaVuSans"_s, u"Loma"_s }));
    // Of fonts of 700 kB there are only the letters that are used.
    QVERIFY2(pdf.bytes().size() < 20'000, qPrintable(QString::number(pdf.bytes().size())));
}

void tst_PdfLabels::barcodesAreNoPictures()
{
    LabelDocument document = blackAndRed({ 100, 50 });
    document.addItem(barcodeOf(58, u"https://example.org/42"_s, { 20, 20, 300, 300 })); // QR Code
    document.addItem(barcodeOf(20, u"PART-0042"_s, { 400, 20, 500, 300 })); // Code 128
    PdfProbe pdf;
    pdf.write(document);
    QCOMPARE(pdf.table(u"pdfimages"_s).size(), 0);
    const QImage page = pdf.page(1, 254.0);
    // The corner square of the QR Code of 25 modules of 12 dots: its frame, the white in it, and its core.
    QCOMPARE(colourAt(page, 26, 26), blackPixel);
    QCOMPARE(colourAt(page, 38, 38), whitePixel);
    QCOMPARE(colourAt(page, 20 + 42, 20 + 42), blackPixel);
}

void tst_PdfLabels::drawingsAreNoPictures()
{
    LabelDocument document = blackAndRed({ 20, 10 });
    auto drawing = std::make_unique<SvgItem>();
    QVERIFY(drawing->loadItemFromData("<svg xmlns='http://www.w3.org/2000/svg' width='100' height='50'>"
                                      "<rect width='50' height='50' fill='#ff0000'/>"
                                      "<circle cx='75' cy='25' r='20' fill='#0000ff'/></svg>"));
    drawing->setPos(10, 10);
    document.addItem(std::move(drawing));
    PdfProbe pdf;
    pdf.write(document);
    QCOMPARE(pdf.table(u"pdfimages"_s).size(), 0);
    const QImage page = pdf.page(1, 254.0);
    QCOMPARE(colourAt(page, 20, 20), 0xFF0000U);
    QCOMPARE(colourAt(page, 85, 35), 0x0000FFU);
    QCOMPARE(colourAt(page, 65, 12), whitePixel);
}

void tst_PdfLabels::picturesLoseNothing_data()
{
    QTest::addColumn<QImage::Format>("format");

    QTest::newRow("colours") << QImage::Format_RGB32;
    QTest::newRow("greys") << QImage::Format_Grayscale8;
    QTest::newRow("one bit") << QImage::Format_Mono;
    QTest::newRow("a palette") << QImage::Format_Indexed8;
}

void tst_PdfLabels::picturesLoseNothing()
{
    QFETCH(QImage::Format, format);

    const QImage image = noise({ 300, 200 }, format);
    LabelDocument document = blackAndRed({ 100, 50 });
    auto picture = std::make_unique<PixMapItem>();
    picture->setPixmap(QPixmap::fromImage(image));
    picture->setItemSize({ 450, 300 });
    picture->setPos(10, 10);
    document.addItem(std::move(picture));
    PdfProbe pdf;
    pdf.write(document);

    QVERIFY(!pdf.bytes().contains("DCTDecode"));
    const QList<QStringList> images = pdf.table(u"pdfimages"_s);
    QCOMPARE(images.size(), 1);
    QCOMPARE(images[0].mid(2, 3), QStringList({ u"image"_s, u"300"_s, u"200"_s }));
    QCOMPARE(images[0][8], u"image"_s); // its encoding: not "jpeg"
    pdf.ask(u"pdfimages"_s, { u"-png"_s }, { pdf.path(u"image"_s) });
    const QImage taken(pdf.path(u"image-000.png"_s));
    QCOMPARE(taken.convertToFormat(QImage::Format_RGB32), image.convertToFormat(QImage::Format_RGB32));
}

void tst_PdfLabels::aPictureOnManyPagesIsWrittenOnce()
{
    LabelDocument document = blackAndRed({ 30, 20 });
    auto picture = std::make_unique<PixMapItem>();
    picture->setPixmap(QPixmap::fromImage(noise({ 200, 200 }, QImage::Format_RGB32))); // 120 kB
    document.addItem(std::move(picture));
    PdfProbe pdf;
    pdf.write([&](PdfPages &pages, Problems &problems) {
        bool done = true;
        for (int i = 0; i < 20 && done; ++i)
            done = pages.addPage(document, problems);
        return done;
    });
    QCOMPARE(pdf.bytes().count("/Subtype /Image"), 1);
    QCOMPARE(pdf.table(u"pdfimages"_s).size(), 20); // shown on each page
}

void tst_PdfLabels::coloursAreTheItems()
{
    LabelDocument document = blackAndRed({ 20, 10 });
    document.addItem(shapeOf<RectangleItem>({ 10, 10, 40, 40 }, QColor(18, 52, 86)));
    document.addItem(shapeOf<RectangleItem>({ 60, 10, 40, 40 }, QColor(255, 0, 0, 51))); // a fifth
    document.addItem(shapeOf<RectangleItem>({ 110, 10, 40, 40 }, Qt::transparent));
    const QImage page = seen(document);
    QCOMPARE(colourAt(page, 30, 30), 0x123456U);
    QCOMPARE(colourAt(page, 80, 30), 0xFFCCCCU);
    QCOMPARE(colourAt(page, 130, 30), whitePixel);
}

void tst_PdfLabels::higherItemsCoverLowerOnes()
{
    LabelDocument document = blackAndRed({ 20, 10 });
    document.addItem(shapeOf<RectangleItem>({ 10, 10, 60, 60 }, red))->setItemZValue(5.0);
    document.addItem(shapeOf<RectangleItem>({ 30, 10, 60, 60 }, blue)); // later, and yet lower
    document.addItem(shapeOf<RectangleItem>({ 60, 10, 60, 60 }, black)); // over the blue one
    const QImage page = seen(document);
    QCOMPARE(colourAt(page, 40, 40), 0xFF0000U);
    QCOMPARE(colourAt(page, 65, 40), 0xFF0000U);
    QCOMPARE(colourAt(page, 80, 40), blackPixel);
}

void tst_PdfLabels::hiddenItemsAreAbsent()
{
    LabelDocument document = blackAndRed({ 100, 50 });
    document.addItem(textOf(u"hidden"_s, u"Loma"_s, { 20, 20 }))->setItemIsVisible(false);
    auto hiddenMember = textOf(u"member"_s, u"Loma"_s, { 20, 100 });
    hiddenMember->setItemIsVisible(false);
    document.addItem(
        containerOf<GroupItem>(std::move(hiddenMember), textOf(u"shown"_s, u"Loma"_s, { 20, 200 })));
    auto layer = containerOf<LayerItem>(textOf(u"layered"_s, u"Loma"_s, { 20, 300 }));
    layer->setItemIsVisible(false);
    document.addItem(std::move(layer));
    PdfProbe pdf;
    pdf.write(document);
    QCOMPARE(pdf.text().simplified(), u"shown"_s);
}

void tst_PdfLabels::membersLieWhereTheirContainersShowThem()
{
    LabelDocument document = blackAndRed({ 60, 30 });
    auto group = containerOf<GroupItem>(
        shapeOf<RectangleItem>({ 0, 0, 40, 20 }, red), shapeOf<RectangleItem>({ 20, 0, 20, 20 }, blue));
    group->setPos(100, 50);
    auto outer = containerOf<GroupItem>(std::move(group), shapeOf<RectangleItem>({ 300, 50, 40, 20 }));
    outer->setPos(50, 100);
    document.addItem(containerOf<LayerItem>(std::move(outer)));
    document.addItem(shapeOf<RectangleItem>({ 400, 160, 40, 20 }, red)); // over the groups
    const QImage page = seen(document);
    QCOMPARE(colourAt(page, 155, 160), 0xFF0000U); // 100 + 50, 50 + 100
    QCOMPARE(colourAt(page, 185, 160), 0x0000FFU);
    QCOMPARE(colourAt(page, 145, 160), whitePixel);
    QCOMPARE(colourAt(page, 195, 160), whitePixel);
    QCOMPARE(colourAt(page, 360, 160), blackPixel);
    QCOMPARE(colourAt(page, 420, 170), 0xFF0000U);
}

/// The shape of a rounded rectangle runs along the middle of its pen.
void tst_PdfLabels::itemsAreClippedToTheirShapes()
{
    LabelDocument document = blackAndRed({ 40, 10 });
    for (const bool clips : { false, true }) {
        auto frame = shapeOf<RoundedRectangleItem>({ clips ? 210.0 : 10.0, 10, 150, 80 }, red);
        frame->setItemPenStyle(Qt::SolidLine);
        frame->setItemPenWidth(20);
        frame->setFlag(QGraphicsItem::ItemClipsToShape, clips);
        document.addItem(std::move(frame));
    }
    document.addItem(shapeOf<RectangleItem>({ 380, 10, 10, 80 })); // what follows is not clipped
    const QImage page = seen(document);
    QCOMPARE(colourAt(page, 15, 50), blackPixel);
    QCOMPARE(colourAt(page, 25, 50), blackPixel);
    QCOMPARE(colourAt(page, 215, 50), whitePixel);
    QCOMPARE(colourAt(page, 225, 50), blackPixel);
    QCOMPARE(colourAt(page, 290, 50), 0xFF0000U);
    QCOMPARE(colourAt(page, 385, 50), blackPixel);
    const PictureDistance distance(page, proofOf(separatedAtDesign(document)));
    QVERIFY2(distance.farOff() < 1e-3, qPrintable(QString::number(distance.farOff())));
}

void tst_PdfLabels::selectionsDoNotShow()
{
    const auto bytesOf = [](bool selected) {
        LabelDocument document = blackAndRed({ 20, 10 });
        auto shape = shapeOf<RectangleItem>({ 10, 10, 40, 40 });
        shape->setFlag(QGraphicsItem::ItemIsSelectable);
        shape->setSelected(selected);
        auto group = containerOf<GroupItem>(shapeOf<RectangleItem>({ 60, 10, 40, 40 }));
        group->setFlag(QGraphicsItem::ItemIsSelectable);
        group->setSelected(selected);
        document.addItem(std::move(shape));
        document.addItem(std::move(group));
        PdfProbe pdf;
        pdf.write(document);
        return pdf.bytes();
    };
    QVERIFY(bytesOf(true) == bytesOf(false));
}

void tst_PdfLabels::theDocumentStaysAsItIs()
{
    LabelDocument document = blackAndRed({ 100, 50 });
    document.addItem(textOf(u"text"_s, u"Loma"_s, { 20, 20 }));
    document.addItem(containerOf<GroupItem>(shapeOf<EllipseItem>({ 0, 0, 40, 20 }, red)));
    PdfProbe pdf;
    pdf.write([&](PdfPages &pages, Problems &problems) {
        return pages.addPage(document, problems) && pages.addPage(document, problems);
    });
    QCOMPARE(pdf.page(1, 254.0), pdf.page(2, 254.0));
    QCOMPARE(document.items().size(), 2U);
    QCOMPARE(ItemTree::membersOf(*document.items()[1]).size(), 1);
}

/// All that is turned, mirrored, stretched and nested, beside the dots of the plates. Edges are smooth in one
/// and of whole dots in the other, which is within a dot.
void tst_PdfLabels::looksLikeTheProof()
{
    LabelDocument document = blackAndRed({ 100, 60 });
    auto turned = shapeOf<RectangleItem>({ 50, 50, 150, 80 }, red);
    turned->setItemRotation(30.0);
    auto mirrored = shapeOf<RightTriangleItem>({ 300, 50, 150, 100 });
    mirrored->setItemHorizontalMirror(true);
    auto upsideDown = textOf(u"Mirrored"_s, u"DejaVu Sans"_s, { 500, 50 });
    upsideDown->setItemVerticalMirror(true);
    auto slanted = textOf(u"Slanted"_s, u"Loma"_s, { 700, 200 });
    slanted->setItemRotation(-20.0);
    auto group = containerOf<GroupItem>(shapeOf<EllipseItem>({ 50, 300, 150, 100 }),
        shapeOf<EllipseItem>({ 80, 320, 90, 60 }, red), textOf(u"Group"_s, u"Loma"_s, { 60, 400 }));
    group->setItemRotation(15.0);
    auto layer = containerOf<LayerItem>(std::move(group), barcodeOf(58, u"0123"_s, { 400, 300, 210, 210 }));
    document.addItem(std::move(turned));
    document.addItem(std::move(mirrored));
    document.addItem(std::move(upsideDown));
    document.addItem(std::move(slanted));
    document.addItem(std::move(layer));

    const QImage proof = proofOf(separatedAtDesign(document));
    const QImage page = seen(document);
    QCOMPARE(page.size(), proof.size());
    const PictureDistance distance(page, proof);
    // 600,000 pixels; letters have long edges, and strokes of some dots.
    QVERIFY2(distance.differing() < 0.02, qPrintable(QString::number(distance.differing())));
    QVERIFY2(distance.farOff() < 1e-4, qPrintable(QString::number(distance.farOff())));
    // And the measure sees a label that is off by two dots.
    QVERIFY(PictureDistance(page.copy(2, 0, page.width(), page.height()), proof).farOff() > 1e-3);
}

QTEST_MAIN(tst_PdfLabels)
#include "tst_pdflabels.moc"
