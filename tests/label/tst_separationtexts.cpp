// SPDX-License-Identifier: BSD-3-Clause
#include "items/text/richtextitem.h"
#include "items/text/simpletextitem.h"
#include "label/hostfonts.h"
#include "tests/label/printing.h"

#include <QBuffer>
#include <QGraphicsScene>
#include <QGuiApplication>
#include <QPainter>
#include <QRegularExpression>
#include <QTest>
#include <QTextCursor>
#include <QTextDocument>

using namespace Qt::StringLiterals;
using namespace Printing;

namespace {

using Change = std::function<void(SimpleTextItem &)>;

constexpr double scaling = 2.0;
constexpr double dpi = 254.0 * scaling;

/// The document's two inks are black and red.
LabelDocument documentWith(std::unique_ptr<Item> item)
{
    LabelDocument document = blackAndRed({ 30, 15 });
    document.addItem(std::move(item));
    return document;
}

std::unique_ptr<SimpleTextItem> label(const QString &text, const QColor &color, const Change &change = {})
{
    auto item = std::make_unique<SimpleTextItem>();
    item->setItemText(text);
    item->setItemTextColor(color);
    item->setPos(20, 15);
    if (change)
        change(*item);
    return item;
}

std::unique_ptr<RichTextItem> box(const QString &html)
{
    auto item = std::make_unique<RichTextItem>();
    item->setItemSize(QSizeF(260, 120));
    item->setItemHtml(u"<div style='font-family:Loma; font-size:20pt'>"_s + html + u"</div>"_s);
    item->setPos(20, 15);
    return item;
}

int distance(QRgb left, const QColor &right)
{
    const auto square = [](int difference) { return difference * difference; };
    return square(qRed(left) - right.red()) + square(qGreen(left) - right.green())
        + square(qBlue(left) - right.blue());
}

/// An item whose letters are not smoothed.
QGraphicsItem *sharpCopy(Item &item)
{
    auto *copy = dynamic_cast<QGraphicsItem *>(item.createItemCopy());
    if (auto *text = dynamic_cast<QGraphicsTextItem *>(copy)) {
        QTextCharFormat sharp;
        sharp.setFontStyleStrategy(QFont::NoAntialias);
        QTextCursor all(text->document());
        all.select(QTextCursor::Document);
        all.mergeCharFormat(sharp);
    }
    return copy;
}

/// The page as a view shows it, a pixel for each dot, and each in the nearest of black, red and white: at the
/// edges of large letters they are mixed.
QImage screenOf(const LabelDocument &document)
{
    QImage image(document.pageSizeInDots(dpi), QImage::Format_RGB32);
    image.fill(Qt::white);
    const QRectF page(QPointF(), document.pageSizeInUnits());
    QGraphicsScene scene(page);
    for (const auto &item : document.items())
        scene.addItem(sharpCopy(*item));
    QPainter painter(&image);
    painter.scale(scaling, scaling);
    scene.render(&painter, page, page, Qt::IgnoreAspectRatio);
    painter.end();
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            const QColor *nearest = &white;
            for (const QColor *color : { &black, &red }) {
                if (distance(image.pixel(x, y), *color) < distance(image.pixel(x, y), *nearest))
                    nearest = color;
            }
            image.setPixel(x, y, nearest->rgb());
        }
    }
    return image;
}

int dotsOf(const QImage &screen, const QColor &color)
{
    int dots = 0;
    for (int y = 0; y < screen.height(); ++y) {
        for (int x = 0; x < screen.width(); ++x)
            dots += screen.pixel(x, y) == color.rgb() ? 1 : 0;
    }
    return dots;
}

/// How many dots of a plate are none of the colour on the screen, or the other way round.
int strayDots(const QImage &plate, const QImage &screen, const QColor &color, bool negative = false)
{
    int dots = 0;
    for (int y = 0; y < plate.height(); ++y) {
        for (int x = 0; x < plate.width(); ++x)
            dots += prints(plate, x, y) == ((screen.pixel(x, y) == color.rgb()) == negative) ? 1 : 0;
    }
    return dots;
}

/// Nothing if every plate has the dots of its colour on the screen, or the others if negative.
QString differenceOfPlates(const LabelDocument &document, bool negative = false)
{
    const QImage screen = screenOf(document);
    for (const Plate &plate : separated(document, { dpi, negative }).plates) {
        const int stray = strayDots(plate.image, screen, plate.ink.color, negative);
        if (stray > 0)
            return u"%1 of %2 dots of %3 differ"_s.arg(stray)
                .arg(dotsOf(screen, plate.ink.color))
                .arg(plate.ink.name);
    }
    return {};
}

} // namespace

/// The plates of texts.
class tst_SeparationTexts : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { HostFonts::substituteDefaultFamily(); }
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    void labelPrintsAsItShows_data();
    void labelPrintsAsItShows();
    void colorsOfARichTextHaveTheirPlates_data();
    void colorsOfARichTextHaveTheirPlates();
    void originalKeepsItsColors();
    void picturesInTextsAreSplit();
    void lettersOverAGradientAreWhole();
    void invisibleLettersHideNothing();
    void overprintOfARichText();
    void colorsWithoutInkAreWarnedAbout_data();
    void colorsWithoutInkAreWarnedAbout();
};

void tst_SeparationTexts::labelPrintsAsItShows_data()
{
    QTest::addColumn<QColor>("color");
    QTest::addColumn<Change>("change");
    QTest::addColumn<bool>("negative");
    const QColor none(Qt::transparent);
    const auto filled = [](const QColor &fill) {
        return Change([fill](SimpleTextItem &item) {
            item.setItemFillColor(fill);
            item.setItemBrushStyle(MobraTypes::BrushSolid);
        });
    };
    const std::pair<const char *, std::pair<QColor, Change>> labels[] = {
        { "black", { black, {} } },
        { "red", { red, {} } },
        { "black on red", { black, filled(red) } },
        { "red on black", { red, filled(black) } },
        { "white on black", { white, filled(black) } },
        { "white on red", { white, filled(red) } },
        { "black in a red frame",
            { black,
                [](SimpleTextItem &item) {
                    item.setItemPenColor(red);
                    item.setItemPenWidth(6);
                } } },
        { "rotated", { red, [](SimpleTextItem &item) { item.setItemRotation(25.0); } } },
        { "mirrored", { red, [](SimpleTextItem &item) { item.setItemHorizontalMirror(true); } } },
        { "stretched", { red, [](SimpleTextItem &item) { item.setItemSize(QSizeF(260, 50)); } } },
        { "vertical",
            { red,
                [](SimpleTextItem &item) {
                    item.setItemFontSize(16);
                    item.setTextVertical(true);
                } } },
    };
    for (const auto &[name, look] : labels) {
        for (const bool negative : { false, true })
            QTest::addRow("%s%s", name, negative ? ", negative" : "")
                << look.first << look.second << negative;
    }
}

void tst_SeparationTexts::labelPrintsAsItShows()
{
    QFETCH(const QColor, color);
    QFETCH(const Change, change);
    QFETCH(const bool, negative);
    const LabelDocument document = documentWith(label(u"Ägfi 42"_s, color, change));
    QVERIFY(dotsOf(screenOf(document), color) > 500);
    QCOMPARE(differenceOfPlates(document, negative), QString());
}

void tst_SeparationTexts::colorsOfARichTextHaveTheirPlates_data()
{
    QTest::addColumn<QString>("html");
    QTest::newRow("letters") << u"Now <b style='color:#ff0000'>9.99</b> only"_s;
    QTest::newRow("background of letters")
        << u"<span style='background:#ff0000'>new</span> <span style='background:#000000; color:#ff0000'>in</span>"_s;
    QTest::newRow("white letters") << u"<span style='background:#ff0000; color:#ffffff'>sale</span> today"_s;
    QTest::newRow("paragraph") << u"<p style='background:#ff0000'>sale</p><p>today</p>"_s;
    QTest::newRow("list") << u"<ul style='color:#ff0000'><li>one</li><li>two</li></ul>"_s;
    QTest::newRow("table")
        << u"<table border='2' cellspacing='0' style='border-color:#ff0000; border-style:solid'>"
           "<tr><td>a</td><td bgcolor='#000000' style='color:#ffffff'>b</td></tr></table>"_s;
    QTest::newRow("underline") << u"<u style='color:#ff0000'>sale</u> <s>10</s>"_s;
}

void tst_SeparationTexts::colorsOfARichTextHaveTheirPlates()
{
    QFETCH(const QString, html);
    const LabelDocument document = documentWith(box(html));
    const QImage screen = screenOf(document);
    QVERIFY(dotsOf(screen, red) > 500);
    QVERIFY(dotsOf(screen, black) > 300);
    QCOMPARE(differenceOfPlates(document), QString());
    QCOMPARE(differenceOfPlates(document, true), QString());
}

void tst_SeparationTexts::originalKeepsItsColors()
{
    const LabelDocument document = documentWith(box(u"Now <b style='color:#ff0000'>9.99</b>"_s));
    const auto &text = dynamic_cast<const RichTextItem &>(*document.items()[0]);
    const QString before = text.itemHtml();
    QVERIFY(before.contains(u"#ff0000"_s));
    separated(document, { dpi });
    QCOMPARE(text.itemHtml(), before);
}

void tst_SeparationTexts::picturesInTextsAreSplit()
{
    // Left column red, right column black.
    QImage picture(2, 1, QImage::Format_RGB32);
    picture.setPixelColor(0, 0, red);
    picture.setPixelColor(1, 0, black);
    QByteArray png;
    QBuffer buffer(&png);
    picture.save(&buffer, "PNG");
    const QString address = u"data:image/png;base64,"_s + QString::fromLatin1(png.toBase64());
    const LabelDocument document = documentWith(
        box(u"<img src='%1' width='100' height='50'><img src='%1' width='60' height='50'>"_s.arg(address)));
    const QImage screen = screenOf(document);
    // 100 x 50 and 60 x 50 units in four dots each, but for the blend in the middle.
    QVERIFY(dotsOf(screen, red) > 15000);
    QCOMPARE(differenceOfPlates(document), QString());
}

void tst_SeparationTexts::lettersOverAGradientAreWhole()
{
    const auto gradient = [](const QColor &fill) {
        return [fill](SimpleTextItem &item) {
            item.setItemSize(QSizeF(240, 90));
            item.setItemRotation(10.0);
            item.setItemFillColor(fill);
            item.setItemBrushStyle(MobraTypes::BrushLinearGradient);
        };
    };
    const QImage letters = screenOf(documentWith(label(u"SALE"_s, black, gradient(Qt::transparent))));
    const int dots = dotsOf(letters, black);
    QVERIFY(dots > 2000);
    const auto plates = separated(documentWith(label(u"SALE"_s, black, gradient(red))), { dpi }).plates;
    QVERIFY(strayDots(plates[0].image, letters, black) == 0);
    // The red dots leave the letters out, and are neither all nor none of the rest of the label.
    int inLetters = 0;
    for (int y = 0; y < letters.height(); ++y) {
        for (int x = 0; x < letters.width(); ++x)
            inLetters += prints(plates[1].image, x, y) && letters.pixel(x, y) == black.rgb() ? 1 : 0;
    }
    QVERIFY(inLetters == 0);
    const double background = 240 * 90 * scaling * scaling;
    QVERIFY(double(plates[1].dots) > 0.1 * background && double(plates[1].dots) < 0.9 * background);
}

void tst_SeparationTexts::invisibleLettersHideNothing()
{
    LabelDocument document = blackAndRed({ 30, 15 });
    addRectangle(document, { 0, 0, 300, 150 }, { red });
    document.addItem(label(u"SALE"_s, Qt::transparent));
    const Separation separation = separated(document, { dpi });
    QCOMPARE(separation.plates[1].dots, qint64(600) * 300);
    QCOMPARE(separation.plates[0].dots, qint64(0));
}

void tst_SeparationTexts::overprintOfARichText()
{
    // Below, a red field; above it, black letters: they take part in the plate of red only if they knock out.
    for (const bool overprint : { false, true }) {
        LabelDocument document = blackAndRed({ 30, 15 });
        addRectangle(document, { 0, 0, 300, 150 }, { red });
        document.addItem(box(u"black letters"_s));
        SeparationOptions options { dpi };
        options.overprint = overprint;
        const Separation separation = separated(document, options);
        QVERIFY(separation.plates[0].dots > 500);
        QCOMPARE(separation.plates[1].dots == qint64(600) * 300, overprint);
    }
}

void tst_SeparationTexts::colorsWithoutInkAreWarnedAbout_data()
{
    QTest::addColumn<QString>("html");
    QTest::addColumn<QString>("colors");
    QTest::newRow("inks") << u"black <span style='color:#ff0000'>red</span>"_s << QString();
    QTest::newRow("white") << u"<span style='color:#ffffff'>w</span>"_s << QString();
    QTest::newRow("letters") << u"a <span style='color:#00ff00'>b</span>"_s << u"text #00ff00"_s;
    QTest::newRow("background") << u"<span style='background:#0000ff'>b</span>"_s << u"text #0000ff"_s;
    QTest::newRow("two") << u"<span style='color:#00ff00; background:#0000ff'>b</span>"_s
                         << u"text #0000ff and the text #00ff00"_s;
    QTest::newRow("rule in black") << u"a<hr style='background-color:#000000'>b"_s << QString();
    const QString grey = QGuiApplication::palette().color(QPalette::Dark).name();
    QTest::newRow("rule") << u"a<hr>b"_s << u"text "_s + grey;
    QTest::newRow("link") << u"<a href='x'>b</a>"_s << u"text #0000ff"_s;
}

void tst_SeparationTexts::colorsWithoutInkAreWarnedAbout()
{
    QFETCH(const QString, html);
    QFETCH(const QString, colors);
    const Problems warnings = separated(documentWith(box(html)), { dpi }).warnings;
    QCOMPARE(warnings.size(), colors.isEmpty() ? 0 : 1);
    if (!colors.isEmpty())
        QCOMPARE(warnings[0].what, u"no ink prints the %1 of Rich Text -1"_s.arg(colors));
}

QTEST_MAIN(tst_SeparationTexts)
#include "tst_separationtexts.moc"
