// SPDX-License-Identifier: BSD-3-Clause
#include "tests/support/colours.h"
#include "tests/support/labeltexts.h"
#include "tests/support/texts.h"

#include <QRegularExpression>
#include <QTest>
#include <QTextBlock>

#include <array>
#include <tuple>

using namespace Qt::StringLiterals;
using namespace Colours;

namespace {

const std::array colours { black, red, white, nearWhite, transparent };
const std::array inks { black, red, white, transparent };

struct Flags
{
    bool keep;
    bool contrast;
    const char *name;
};
constexpr std::array flags { Flags { false, false, "" }, Flags { true, false, ", kept" },
    Flags { false, true, ", contrast" }, Flags { true, true, ", kept, contrast" } };

/// Everything of a text that a reduction looks at or changes.
struct Look
{
    QColor text;
    QColor pen;
    QColor fill;
    bool empty = false;
    int penWidth = 2;
    Qt::PenStyle penStyle = Qt::SolidLine;
    MobraTypes::BrushStyle brush = MobraTypes::BrushSolid;
    bool printed = false;
    bool throughImage = false;

    bool operator==(const Look &) const = default;
};

// The rules, worked out step by step on values alone.

bool penShows(const Look &look)
{
    return look.penWidth >= 1 && look.penStyle != Qt::NoPen;
}

bool penIs(const Look &look, const QColor &colour)
{
    return penShows(look) && look.pen == colour;
}

bool fillIs(const Look &look, const QColor &colour)
{
    return look.brush != MobraTypes::BrushNone && look.fill == colour;
}

bool textIs(const Look &look, const QColor &colour)
{
    return !look.empty && look.text == colour;
}

bool isGradient(const Look &look)
{
    return look.brush >= MobraTypes::BrushLinearGradient;
}

bool fillIsNone(const Look &look)
{
    return look.fill == transparent || look.fill == nearWhite;
}

void reduceGradient(Look &look, bool prints)
{
    look.fill = prints ? black : white;
    if (prints || look.printed) {
        look.printed = true;
        look.throughImage = true;
    } else {
        look.brush = MobraTypes::BrushSolid;
    }
}

/// An item reduced to an ink.
Look reduced(Look look, const QColor &ink, bool keep, bool contrast)
{
    const bool penContrast
        = contrast || (penIs(look, ink) && fillIs(look, black)) || (penIs(look, black) && fillIs(look, ink));
    const bool textContrast = contrast || (textIs(look, ink) && fillIs(look, black))
        || (textIs(look, black) && fillIs(look, ink));

    const bool textPrints = look.text == ink || (textContrast && keep && look.text == black);
    look.text = textPrints ? black : white;

    const bool keepsPen = penContrast && keep && look.pen == black && look.penStyle == Qt::SolidLine;
    const bool penPrints = penShows(look) && (look.pen == ink || keepsPen);
    look.pen = penPrints ? black : white;

    look.printed = textPrints || penPrints;
    if (fillIsNone(look)) {
        look.brush = MobraTypes::BrushNone;
    } else if (isGradient(look)) {
        reduceGradient(look, look.fill == ink);
    } else {
        const bool kept = (penContrast || textContrast) && keep && look.fill == black
            && look.brush == MobraTypes::BrushSolid;
        const bool fillPrints = look.fill == ink || kept;
        look.fill = fillPrints ? black : white;
        look.printed = look.printed || fillPrints;
    }
    return look;
}

/// An item reduced for white on black.
Look reducedNegatively(Look look, const QColor &ink)
{
    const bool penPrints = penShows(look) && look.pen != ink;
    look.pen = penPrints ? black : white;
    look.printed = penPrints;
    if (fillIsNone(look)) {
        look.brush = MobraTypes::BrushNone;
    } else if (isGradient(look)) {
        reduceGradient(look, look.fill != ink);
    } else {
        const bool fillPrints = look.fill != ink;
        look.fill = fillPrints ? black : white;
        look.printed = look.printed || fillPrints;
    }

    const QColor paper = ink == transparent ? white : ink;
    const bool textPrints = look.text != paper && !(ink == transparent && look.text == nearWhite);
    look.text = textPrints ? black : white;
    look.printed = look.printed || textPrints;
    return look;
}

// The item.

std::unique_ptr<TextItem> itemOf(bool rich, const Look &look)
{
    std::unique_ptr<TextItem> item = Texts::made(rich, look.empty ? QString() : u"I"_s);
    item->setItemFontSize(8);
    item->setItemTextColor(look.text);
    item->setItemPenColor(look.pen);
    item->setItemPenWidth(static_cast<ushort>(look.penWidth));
    item->setItemPenStyle(look.penStyle);
    item->setItemFillColor(look.fill);
    item->setItemBrushStyle(look.brush);
    return item;
}

/// The look that the item has after a reduction.
Look lookOf(const TextItem &item, const Look &before)
{
    Look look = before;
    look.text = item.getItemTextColor();
    look.pen = item.getItemPenColor();
    look.fill = item.getItemFillColor();
    look.brush = item.getItemBrushStyle();
    look.printed = (item.itemFlags() & 0x01U) != 0;
    look.throughImage = (item.itemFlags() & 0x02U) != 0;
    return look;
}

/// Whether the letters, and the outline and area as they are painted, have the colours that are told.
bool isPaintedAsTold(const TextItem &item, const Look &look)
{
    const QTextBlock block = item.document()->firstBlock();
    const QTextCharFormat letter = look.empty ? QTextCharFormat() : block.begin().fragment().charFormat();
    const bool letters
        = letter.foreground().style() == Qt::NoBrush || letter.foreground() == QBrush(look.text);
    const bool pen = !penShows(look) || item.getItemPen().color() == look.pen;
    const Qt::BrushStyle style = item.getItemBrush().style();
    const bool brush = look.brush == MobraTypes::BrushNone ? style == Qt::NoBrush
        : isGradient(look)                                 ? item.getItemBrush().gradient() != nullptr
                                                           : item.getItemBrush().color() == look.fill;
    return letters && item.defaultTextColor() == look.text && pen && brush;
}

/// Whether a reduction has left the item as told, and answered so.
bool isAsTold(const TextItem &item, bool result, const Look &before, const Look &expected)
{
    return result == expected.printed && lookOf(item, before) == expected && isPaintedAsTold(item, expected)
        && item.getPreprintedImage().isNull() == !expected.throughImage;
}

QByteArray described(const Look &look, const QColor &ink, const char *how)
{
    return u"text %1%2, pen %3 of %4, style %5, fill %6, style %7, in %8%9"_s
        .arg(look.text.name(QColor::HexArgb), look.empty ? u" (none)"_s : QString(),
            look.pen.name(QColor::HexArgb))
        .arg(look.penWidth)
        .arg(look.penStyle)
        .arg(look.fill.name(QColor::HexArgb))
        .arg(look.brush)
        .arg(ink.name(QColor::HexArgb), QString::fromLatin1(how))
        .toLatin1();
}

/// All combinations of colours, with outlines and fills of a kind.
template <typename Check> void forAllColours(Look look, Check &&check)
{
    for (const QColor &text : colours) {
        for (const QColor &pen : colours) {
            for (const QColor &fill : colours) {
                look.text = text;
                look.pen = pen;
                look.fill = fill;
                for (const QColor &ink : inks)
                    check(look, ink);
            }
        }
    }
}

void addKinds()
{
    QTest::addColumn<bool>("rich");
    QTest::addColumn<bool>("empty");
    QTest::addColumn<int>("penWidth");
    QTest::addColumn<int>("penStyle");
    QTest::addColumn<int>("brush");
    for (const bool rich : { false, true }) {
        const char *name = Texts::nameOf(rich);
        const auto row = [&](const char *kind, bool empty, int width, Qt::PenStyle pen, int brush) {
            QTest::addRow("%s, %s", name, kind) << rich << empty << width << int(pen) << brush;
        };
        row("outlined and filled", false, 2, Qt::SolidLine, MobraTypes::BrushSolid);
        row("without an outline", false, 0, Qt::SolidLine, MobraTypes::BrushSolid);
        row("with a pen of no style", false, 2, Qt::NoPen, MobraTypes::BrushSolid);
        row("dashed", false, 2, Qt::DashLine, MobraTypes::BrushSolid);
        row("without a fill", false, 2, Qt::SolidLine, MobraTypes::BrushNone);
        row("with a pattern", false, 2, Qt::SolidLine, Qt::Dense4Pattern);
        row("with a gradient", false, 2, Qt::SolidLine, MobraTypes::BrushLinearGradient);
        row("with a gradient, without an outline", false, 0, Qt::SolidLine, MobraTypes::BrushLinearGradient);
        row("without a text", true, 2, Qt::SolidLine, MobraTypes::BrushSolid);
        row("without a text, dashed", true, 2, Qt::DashLine, MobraTypes::BrushSolid);
    }
}

Look fetchedKind()
{
    Look look;
    look.empty = *static_cast<bool *>(QTest::qData("empty", QMetaType::Bool));
    look.penWidth = *static_cast<int *>(QTest::qData("penWidth", QMetaType::Int));
    look.penStyle = Qt::PenStyle(*static_cast<int *>(QTest::qData("penStyle", QMetaType::Int)));
    look.brush = MobraTypes::BrushStyle(*static_cast<int *>(QTest::qData("brush", QMetaType::Int)));
    return look;
}

} // namespace

/// Texts of all combinations of colours, reduced to each ink: compared with the rules worked out anew.
class tst_TextReduction : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { LabelTexts::useKnownFont(); }
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    void rulesGiveKnownResults();
    void reduction_data() { addKinds(); }
    void reduction();
    void negativeReduction_data() { addKinds(); }
    void negativeReduction();
};

/// Results that are easy to see, so that the rules above are right themselves.
void tst_TextReduction::rulesGiveKnownResults()
{
    const auto result
        = [](const Look &look) { return std::tuple(look.text, look.pen, look.fill, look.printed); };
    // Black letters on red: in red, the area prints and leaves the letters out, or keeps them.
    const Look blackOnRed { black, white, red };
    QCOMPARE(result(reduced(blackOnRed, red, false, false)), std::tuple(white, white, black, true));
    QCOMPARE(result(reduced(blackOnRed, red, true, false)), std::tuple(black, white, black, true));
    QCOMPARE(result(reduced(blackOnRed, black, false, false)), std::tuple(black, white, white, true));
    // Nothing in the ink.
    QCOMPARE(
        result(reduced({ white, white, white }, red, true, true)), std::tuple(white, white, white, false));
    // Black is kept where there is contrast.
    QCOMPARE(
        result(reduced({ black, black, black }, red, true, true)), std::tuple(black, black, black, true));
    QCOMPARE(
        result(reduced({ black, black, black }, red, true, false)), std::tuple(white, white, white, false));
    QCOMPARE(result(reducedNegatively({ red, red, red }, red)), std::tuple(white, white, white, false));
    QCOMPARE(result(reducedNegatively({ black, red, red }, red)), std::tuple(black, white, white, true));
    QCOMPARE(reduced({ red, red, nearWhite }, red, false, false).brush, MobraTypes::BrushNone);
}

void tst_TextReduction::reduction()
{
    QFETCH(const bool, rich);
    int printed = 0;
    forAllColours(fetchedKind(), [&](const Look &look, const QColor &ink) {
        for (const auto &[keep, contrast, how] : flags) {
            const std::unique_ptr<TextItem> item = itemOf(rich, look);
            const bool result = item->resetItemColors(ink, keep, contrast);
            if (!isAsTold(*item, result, look, reduced(look, ink, keep, contrast)))
                QFAIL(described(look, ink, how).constData());
            printed += result ? 1 : 0;
        }
    });
    QVERIFY(printed > 0 && printed < 2000);
}

void tst_TextReduction::negativeReduction()
{
    QFETCH(const bool, rich);
    int printed = 0;
    forAllColours(fetchedKind(), [&](const Look &look, const QColor &ink) {
        const std::unique_ptr<TextItem> item = itemOf(rich, look);
        const bool result = item->resetItemColorsNegative(ink);
        if (!isAsTold(*item, result, look, reducedNegatively(look, ink)))
            QFAIL(described(look, ink, ", negatively").constData());
        printed += result ? 1 : 0;
    });
    QVERIFY(printed > 0 && printed < 500);
}

QTEST_MAIN(tst_TextReduction)
#include "tst_textreduction.moc"
