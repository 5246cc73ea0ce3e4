// SPDX-License-Identifier: BSD-3-Clause
#include "items/graphics/symbolcolors.h"
#include "tests/support/literalrecolouring.h"

#include <QRegularExpression>
#include <QTest>

#include <array>
#include <ctime>
#include <random>

using namespace Qt::StringLiterals;
using SymbolColors::Inks;

Q_DECLARE_METATYPE(SymbolColors::Inks)

namespace {

const Inks redOnBlue { "#FF0000", "#0000FF", true };
const Inks redOnNothing { "#FF0000", "#000000", false };

/// A text of a gradient with the stops given.
QByteArray gradient(const QByteArray &stops)
{
    return "<radialGradient>" + stops + "</radialGradient>";
}

double secondsOf(const auto &work)
{
    const std::clock_t start = std::clock();
    work();
    return double(std::clock() - start) / CLOCKS_PER_SEC;
}

/// What the random texts are made of: everything that the exchange looks for, whole and in pieces.
constexpr std::array<const char *, 38> parts { "=\"#000000\"", "=\"#FFFFFF\"", ":#000000", ":#FFFFFF",
    "=\"#MMMMMM\"", ":#MMMMMM", "#000000", "#FFFFFF", "#MMMMMM", "=\"", "\"", "#", ":", "0", "F", "M",
    "=\"none\"", ":none", "<stop offset=\"0\"", "<stop offset=", "<stop offset=\"0.5\" ",
    "stop-color=\"none\"", " stop-color=\"none\"", "stop-color:none", "stop-color:#FFFFFF",
    "stop-opacity=\"1\"", " stop-opacity=\"0.5\"", "stop-opacity:1", "stop-opacity", "/>", "/>", ">",
    "</radialGradient>", "</linearGradient>", "<rect ", "id=\"background_fix\"", " ", ";" };

/// Half of the texts are mostly gradients.
QByteArray randomText(std::mt19937 &random)
{
    constexpr unsigned int firstOfGradients = 16;
    const bool gradients = random() % 2 == 0;
    const unsigned int first = gradients ? firstOfGradients : 0;
    QByteArray text;
    for (unsigned int count = random() % 32; count > 0; --count)
        text += parts[first + random() % (parts.size() - first)];
    return gradients ? text + "/></linearGradient>" : text;
}

} // namespace

/// The exchange of a symbol's colours in its text.
class tst_SymbolColors : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    void coloursAreWrittenInCapitals_data();
    void coloursAreWrittenInCapitals();
    void onlyTransparentIsNoFill();
    void rootsBeginWithOnePair_data();
    void rootsBeginWithOnePair();
    void whiteInSmallLettersBecomesCapitals();
    void backgroundIsFoundAfterTheFirstByte();
    void firstClearFillBecomesOpaqueAndBack();
    void backgroundIsTakenOut_data();
    void backgroundIsTakenOut();
    void blackAndWhiteAreExchanged_data();
    void blackAndWhiteAreExchanged();
    void stopsWithoutColourBecomeClear_data();
    void stopsWithoutColourBecomeClear();
    void inksBecomeBlackAndWhiteAgain_data();
    void inksBecomeBlackAndWhiteAgain();
    void randomTextsAreTheSameAsStepByStep();
    void textsThatAreNoColoursAreTheSameAsStepByStep();
    void resultsBeyondTheLimitAreEmpty();
    void hostileTextsTakeNoTime_data();
    void hostileTextsTakeNoTime();
};

void tst_SymbolColors::coloursAreWrittenInCapitals_data()
{
    QTest::addColumn<QColor>("color");
    QTest::addColumn<QByteArray>("text");
    QTest::newRow("capitals") << QColor(0xAB, 0xCD, 0xEF) << "#ABCDEF"_ba;
    QTest::newRow("leading noughts") << QColor(0x01, 0x02, 0x0F) << "#01020F"_ba;
    QTest::newRow("translucent") << QColor(0x12, 0x34, 0x56, 0x78) << "#123456"_ba;
    QTest::newRow("transparent") << QColor(Qt::transparent) << "#000000"_ba;
    QTest::newRow("invalid") << QColor() << "#000000"_ba;
    QTest::newRow("HSV") << QColor::fromHsv(120, 255, 255) << "#00FF00"_ba;
}

void tst_SymbolColors::coloursAreWrittenInCapitals()
{
    QFETCH(QColor, color);
    QTEST(SymbolColors::textOf(color), "text");
}

void tst_SymbolColors::onlyTransparentIsNoFill()
{
    QVERIFY(!SymbolColors::inksOf(Qt::black, Qt::transparent).hasFill);
    QVERIFY(SymbolColors::inksOf(Qt::black, QColor(255, 255, 255, 0)).hasFill);
    QVERIFY(SymbolColors::inksOf(Qt::black, QColor()).hasFill);
    const Inks inks = SymbolColors::inksOf(Qt::red, Qt::blue);
    QCOMPARE(inks.pen, "#FF0000"_ba);
    QCOMPARE(inks.fill, "#0000FF"_ba);
    QVERIFY(inks.hasFill);
}

void tst_SymbolColors::rootsBeginWithOnePair_data()
{
    QTest::addColumn<QByteArray>("svg");
    QTest::addColumn<QByteArray>("normal");
    const QByteArray normal = "<svg fill=\"#000000\" stroke=\"none\" width=\"5\"/>";
    QTest::newRow("plain") << "<svg width=\"5\"/>"_ba << normal;
    QTest::newRow("normal") << normal << normal;
    QTest::newRow("black stroke") << "<svg fill=\"#000000\" stroke=\"#000000\" width=\"5\"/>"_ba << normal;
    QTest::newRow("both")
        << "<svg fill=\"#000000\" stroke=\"#000000\" fill=\"#000000\" stroke=\"none\" width=\"5\"/>"_ba
        << normal;
    QTest::newRow("the other way round keeps the inner pair")
        << "<svg fill=\"#000000\" stroke=\"none\" fill=\"#000000\" stroke=\"#000000\" width=\"5\"/>"_ba
        << "<svg fill=\"#000000\" stroke=\"none\" fill=\"#000000\" stroke=\"#000000\" width=\"5\"/>"_ba;
    QTest::newRow("inner ones too")
        << "<svg ><svg ></svg></svg>"_ba
        << "<svg fill=\"#000000\" stroke=\"none\" ><svg fill=\"#000000\" stroke=\"none\" >"
           "</svg></svg>"_ba;
    QTest::newRow("no blank") << "<svg>"_ba
                              << "<svg>"_ba;
    QTest::newRow("line break") << "<svg\nwidth=\"5\"/>"_ba
                                << "<svg\nwidth=\"5\"/>"_ba;
    QTest::newRow("empty") << QByteArray() << QByteArray();
}

void tst_SymbolColors::rootsBeginWithOnePair()
{
    QFETCH(QByteArray, svg);
    QTEST(SymbolColors::withNormalRoots(svg), "normal");
}

void tst_SymbolColors::whiteInSmallLettersBecomesCapitals()
{
    QCOMPARE(
        SymbolColors::withCapitalWhite("a=\"#ffffff\" b=\"x:#ffffff\" c='#ffffff' d=\"#FFffff\" e:#fffffe"),
        "a=\"#FFFFFF\" b=\"x:#FFFFFF\" c='#ffffff' d=\"#FFffff\" e:#fffffe"_ba);
}

void tst_SymbolColors::backgroundIsFoundAfterTheFirstByte()
{
    QVERIFY(SymbolColors::hasBackground(" id=\"background_fix\""));
    QVERIFY(!SymbolColors::hasBackground("id=\"background_fix\""));
    QVERIFY(!SymbolColors::hasBackground("<rect id='background_fix'/>"));
    QVERIFY(!SymbolColors::hasBackground({}));
}

void tst_SymbolColors::firstClearFillBecomesOpaqueAndBack()
{
    const QByteArray clear = "a fill-opacity=\"0\" b fill-opacity=\"0\"";
    const QByteArray opaque = "a fill-opacity=\"1\" b fill-opacity=\"0\"";
    QCOMPARE(SymbolColors::withOpaqueBackground(clear), opaque);
    QCOMPARE(SymbolColors::withClearBackground(opaque), clear);
    QCOMPARE(SymbolColors::withOpaqueBackground("fill-opacity=\"0.5\""), "fill-opacity=\"0.5\""_ba);
}

void tst_SymbolColors::backgroundIsTakenOut_data()
{
    QTest::addColumn<QByteArray>("svg");
    QTest::addColumn<QByteArray>("rest");
    QTest::newRow("between others") << "<svg><rect a/><rect id=\"background_fix\" b/><rect c/></svg>"_ba
                                    << "<svg><rect a/>><rect c/></svg>"_ba;
    QTest::newRow("id last") << "<svg><rect x=\"1\" id=\"background_fix\"/></svg>"_ba
                             << "<svg>></svg>"_ba;
    QTest::newRow("no id") << "<svg><rect a/></svg>"_ba
                           << "<svg><rect a/></svg>"_ba;
    QTest::newRow("no end") << "<svg><rect id=\"background_fix\"></rect></svg>"_ba
                            << "<svg><rect id=\"background_fix\"></rect></svg>"_ba;
    QTest::newRow("no start") << "<svg><path id=\"background_fix\"/></svg>"_ba
                              << "<svg><path id=\"background_fix\"/></svg>"_ba;
    QTest::newRow("start after the id") << "<path id=\"background_fix\"/><rect />"_ba
                                        << "<path id=\"background_fix\"/><rect />"_ba;
    QTest::newRow("end before the id") << "<a/><rect id=\"background_fix\">"_ba
                                       << "<a/><rect id=\"background_fix\">"_ba;
    QTest::newRow("another rectangle before") << "<rect a/><path id=\"background_fix\"/>b"_ba
                                              << ">b"_ba;
    QTest::newRow("empty") << QByteArray() << QByteArray();
}

void tst_SymbolColors::backgroundIsTakenOut()
{
    QFETCH(QByteArray, svg);
    QTEST(SymbolColors::withoutBackground(svg), "rest");
}

void tst_SymbolColors::blackAndWhiteAreExchanged_data()
{
    QTest::addColumn<QByteArray>("svg");
    QTest::addColumn<Inks>("inks");
    QTest::addColumn<QByteArray>("result");
    const QByteArray both = "a=\"#000000\" b=\"#FFFFFF\" style=\"c:#000000;d:#FFFFFF\"";
    QTest::newRow("both") << both << redOnBlue
                          << "a=\"#FF0000\" b=\"#0000FF\" style=\"c:#FF0000;d:#0000FF\""_ba;
    QTest::newRow("swapped") << both << Inks { "#FFFFFF", "#000000", true }
                             << "a=\"#FFFFFF\" b=\"#000000\" style=\"c:#FFFFFF;d:#000000\""_ba;
    QTest::newRow("no fill") << both << redOnNothing
                             << "a=\"#FF0000\" b=\"none\" style=\"c:#FF0000;d:none\""_ba;
    QTest::newRow("names") << both << Inks { "red", "blue", true }
                           << "a=\"red\" b=\"blue\" style=\"c:red;d:blue\""_ba;
    QTest::newRow("placeholders take the pen")
        << "a=\"#MMMMMM\" b:#MMMMMM"_ba << redOnBlue << "a=\"#FF0000\" b:#FF0000"_ba;
    const QByteArray others
        = "a='#000000' b=\"#fff\" c = \"#000000 \" d: #000000 e=\"#ffffff\" f=\"#FFFFFf\" "
          "#000000 g=\"#000\" h=\"black\"";
    QTest::newRow("other writings stay") << others << redOnBlue << others;
    QTest::newRow("styles need no end") << ":#0000000:#FFFFFFF"_ba << redOnBlue << ":#FF00000:#0000FFF"_ba;
    QTest::newRow("cut at the end") << ":#00000"_ba << redOnBlue << ":#00000"_ba;
    QTest::newRow("cut before the quote") << "=\"#000000"_ba << redOnBlue << "=\"#000000"_ba;
    QTest::newRow("cut at the start") << "\"#000000\""_ba << redOnBlue << "\"#000000\""_ba;
    QTest::newRow("nothing before") << "#000000"_ba << redOnBlue << "#000000"_ba;
    QTest::newRow("empty") << QByteArray() << redOnBlue << QByteArray();
    QTest::newRow("fill that is the placeholder")
        << both << Inks { "#00FF00", "#MMMMMM", true }
        << "a=\"#00FF00\" b=\"#00FF00\" style=\"c:#00FF00;d:#00FF00\""_ba;
}

void tst_SymbolColors::blackAndWhiteAreExchanged()
{
    QFETCH(QByteArray, svg);
    QFETCH(Inks, inks);
    QTEST(SymbolColors::colored(svg, inks), "result");
}

void tst_SymbolColors::stopsWithoutColourBecomeClear_data()
{
    QTest::addColumn<QByteArray>("svg");
    QTest::addColumn<QByteArray>("result");
    const auto row = [](const char *name, const QByteArray &stops, const QByteArray &fixed) {
        QTest::newRow(name) << gradient(stops) << gradient(fixed);
    };
    row("attribute", "<stop offset=\"0\" stop-color=\"none\"/>",
        "<stop offset=\"0\" stop-color=\"#FFFFFF\" stop-opacity=\"0\"/>");
    row("attribute, opacity behind", "<stop offset=\"0\" stop-color=\"none\" stop-opacity=\"1\"/>",
        "<stop offset=\"0\" stop-color=\"#FFFFFF\" stop-opacity=\"0\"/>");
    row("attribute, opacity before", "<stop offset=\"0\" stop-opacity=\"1\" stop-color=\"none\"/>",
        "<stop offset=\"0\" stop-opacity=\"0\" stop-color=\"#FFFFFF\"/>");
    row("a longer opacity leaves its end behind",
        "<stop offset=\"0\" stop-color=\"none\" stop-opacity=\"0.5\"/>",
        "<stop offset=\"0\" stop-color=\"#FFFFFF\" stop-opacity=\"0\"5\"/>");
    row("style", "<stop offset=\"0\" style=\"stop-color:none\"/>",
        "<stop offset=\"0\" style=\"stop-color:#FFFFFF;stop-opacity:0\"/>");
    row("style, opacity behind", "<stop offset=\"0\" style=\"stop-color:none;stop-opacity:1\"/>",
        "<stop offset=\"0\" style=\"stop-color:#FFFFFF;stop-opacity:0\"/>");
    row("style, opacity before", "<stop offset=\"0\" style=\"stop-opacity:1;stop-color:none\"/>",
        "<stop offset=\"0\" style=\"stop-opacity:0;stop-color:#FFFFFF\"/>");
    row("several", "<stop offset=\"0\" stop-color=\"none\"/><stop offset=\"1\" stop-color=\"none\"/>",
        "<stop offset=\"0\" stop-color=\"#FFFFFF\" stop-opacity=\"0\"/>"
        "<stop offset=\"1\" stop-color=\"#FFFFFF\" stop-opacity=\"0\"/>");
    row("a coloured stop without a style behind it ends the pass",
        "<stop offset=\"0\" stop-color=\"red\"/><stop offset=\"1\" stop-color=\"none\"/>",
        "<stop offset=\"0\" stop-color=\"red\"/><stop offset=\"1\" stop-color=\"none\"/>");
    row("a coloured stop with a style behind it does not",
        "<stop offset=\"0\" stop-color=\"red\"/><stop offset=\"1\" style=\"stop-color:none\"/>",
        "<stop offset=\"0\" stop-color=\"red\"/><stop offset=\"1\" "
        "style=\"stop-color:#FFFFFF;stop-opacity:0\"/>");
    row("the colour right behind the offset is found from its seventeenth byte",
        "<stop offset=\"\" stop-color=\"none\"/>", "<stop offset=\"\" stop-color=\"none\"/>");
    row("offset after the colour", "<stop stop-color=\"none\" offset=\"0\"/>",
        "<stop stop-color=\"none\" offset=\"0\"/>");
    QTest::newRow("no gradient") << "<a><stop offset=\"0\" stop-color=\"none\"/>"_ba
                                 << "<a><stop offset=\"0\" stop-color=\"none\"/>"_ba;
    QTest::newRow("gradient's end first") << "</linearGradient><stop offset=\"0\" stop-color=\"none\"/>"_ba
                                          << "</linearGradient><stop offset=\"0\" stop-color=\"none\"/>"_ba;
    QTest::newRow("stop behind the gradient")
        << "<a></linearGradient><stop offset=\"0\" stop-color=\"none\"/>"_ba
        << "<a></linearGradient><stop offset=\"0\" stop-color=\"none\"/>"_ba;
    QTest::newRow("first byte")
        << "<stop offset=\"10\"stop-color=\"none\"/></linearGradient>"_ba
        << "<stop offset=\"10\"stop-color=\"#FFFFFF\" stop-opacity=\"0\"/></linearGradient>"_ba;
    QTest::newRow("linear")
        << "<linearGradient><stop offset=\"0\" stop-color=\"none\"/></linearGradient>"_ba
        << "<linearGradient><stop offset=\"0\" stop-color=\"#FFFFFF\" stop-opacity=\"0\"/>"
           "</linearGradient>"_ba;
}

void tst_SymbolColors::stopsWithoutColourBecomeClear()
{
    QFETCH(QByteArray, svg);
    QTEST(SymbolColors::withFixedStops(svg), "result");
}

void tst_SymbolColors::inksBecomeBlackAndWhiteAgain_data()
{
    QTest::addColumn<QByteArray>("svg");
    QTest::addColumn<Inks>("inks");
    QTest::addColumn<QByteArray>("result");
    QTest::newRow("both") << "a=\"#FF0000\" b=\"#0000FF\" c:#FF0000 d:#0000FF"_ba << redOnBlue
                          << "a=\"#000000\" b=\"#FFFFFF\" c:#000000 d:#FFFFFF"_ba;
    QTest::newRow("swapped") << "a=\"#FFFFFF\" b=\"#000000\" c:#FFFFFF d:#000000"_ba
                             << Inks { "#FFFFFF", "#000000", true }
                             << "a=\"#000000\" b=\"#FFFFFF\" c:#000000 d:#FFFFFF"_ba;
    QTest::newRow("no fill") << "a=\"#FF0000\" b=\"none\" c:#FF0000 d:none fill-opacity=\"1\""_ba
                             << redOnNothing
                             << "a=\"#000000\" b=\"#FFFFFF\" c:#000000 d:#FFFFFF fill-opacity=\"1\""_ba;
    QTest::newRow("background") << "fill-opacity=\"1\" fill-opacity=\"1\""_ba << redOnBlue
                                << "fill-opacity=\"0\" fill-opacity=\"1\""_ba;
    QTest::newRow("the root keeps its stroke of none")
        << "<svg fill=\"#FF0000\" stroke=\"none\" width=\"1\">"_ba << redOnNothing
        << "<svg fill=\"#000000\" stroke=\"none\" width=\"1\">"_ba;
    QTest::newRow("one colour for both becomes black")
        << "a=\"#FF0000\""_ba << Inks { "#FF0000", "#FF0000", true } << "a=\"#000000\""_ba;
    QTest::newRow("empty") << QByteArray() << redOnBlue << QByteArray();
}

void tst_SymbolColors::inksBecomeBlackAndWhiteAgain()
{
    QFETCH(QByteArray, svg);
    QFETCH(Inks, inks);
    QTEST(SymbolColors::uncolored(svg, inks), "result");
}

void tst_SymbolColors::randomTextsAreTheSameAsStepByStep()
{
    const std::array<Inks, 6> choices { redOnBlue, redOnNothing, Inks { "#FFFFFF", "#000000", true },
        Inks { "#000000", "#000000", false }, Inks { "#FFFFFF", "", false },
        Inks { "red", "#ffffff", true } };
    std::mt19937 random(20240217);
    int fixed = 0;
    for (int i = 0; i < 100'000; ++i) {
        const QByteArray text = randomText(random);
        const Inks &inks = choices[random() % choices.size()];
        const QByteArray literal = LiteralRecolouring::colored(text, inks.pen, inks.fill, inks.hasFill);
        if (SymbolColors::colored(text, inks) != literal)
            QFAIL(("recoloured otherwise: " + text).constData());
        const QByteArray stops = LiteralRecolouring::withFixedStops(text);
        if (SymbolColors::withFixedStops(text) != stops)
            QFAIL(("stops fixed otherwise: " + text).constData());
        if (SymbolColors::withoutBackground(text) != LiteralRecolouring::withoutBackground(text))
            QFAIL(("background taken out otherwise: " + text).constData());
        fixed += stops != text;
    }
    QVERIFY2(fixed > 5000, QByteArray::number(fixed).constData()); // else the texts would prove nothing
}

void tst_SymbolColors::textsThatAreNoColoursAreTheSameAsStepByStep()
{
    constexpr std::array<const char *, 12> texts { "", "#", "#MMM", "#MMMMMM", ":#MMMMMM", "=\"#MMMMMM\"",
        "#FF", "red\" x=\"#MMMMMM", "none", "rgb(1, 2, 3)", "#000000", "#12345G" };
    std::mt19937 random(4711);
    for (int i = 0; i < 20'000; ++i) {
        const QByteArray text = randomText(random);
        const Inks inks { texts[random() % texts.size()], texts[random() % texts.size()], random() % 2 == 0 };
        if (SymbolColors::colored(text, inks)
            != LiteralRecolouring::colored(text, inks.pen, inks.fill, inks.hasFill))
            QFAIL(("recoloured otherwise: " + text + " with " + inks.pen + " and " + inks.fill).constData());
    }
}

void tst_SymbolColors::resultsBeyondTheLimitAreEmpty()
{
    const QByteArray text = QByteArray(":#000000").repeated(100'000);
    QVERIFY(SymbolColors::colored(text, { QByteArray(20'000, '#'), "", false }).isEmpty());
    // The fill holds the pen's place as often as may be: neither is too long by itself.
    const Inks nested { QByteArray(300, '#'), QByteArray(":#MMMMMM").repeated(40), true };
    QVERIFY(SymbolColors::colored(QByteArray(":#FFFFFF").repeated(5'000), nested).isEmpty());
    const Inks fits { QByteArray(300, '#'), "#", true };
    QCOMPARE(SymbolColors::colored(QByteArray(":#000000").repeated(1'000), fits).size(), 301'000);
}

void tst_SymbolColors::hostileTextsTakeNoTime_data()
{
    QTest::addColumn<QByteArray>("svg");
    constexpr int count = 50'000;
    const auto row = [](const char *name, const QByteArray &part, const QByteArray &end = {}) {
        QTest::newRow(name) << " " + part.repeated(count) + end;
    };
    row("stops without colour", "<stop offset=\"0\" stop-color=\"none\"/>", "</linearGradient>");
    row("styles without colour", "<stop offset=\"0\" style=\"stop-color:none\"/>", "</linearGradient>");
    row("coloured stops", "<stop offset=\"0\" stop-color=\"red\"/>", "stop-color:none</linearGradient>");
    row("ends of gradients", "<stop offset=\"0\" stop-color=\"none\"/></linearGradient>");
    row("stops without end", "<stop offset=\"0\" ", "/></linearGradient>");
    row("opacities", "stop-opacity", "<stop offset=\"0\" stop-color=\"none\"/></linearGradient>");
    row("roots", "<svg ");
    row("roots with pairs", "<svg fill=\"#000000\" stroke=\"#000000\" fill=\"#000000\" stroke=\"none\" ");
    row("small whites", "=\"#ffffff\"");
    row("whites", ":#FFFFFF");
    row("hash signs", "########");
    row("backgrounds", "<rect id=\"background_fix\"");
}

void tst_SymbolColors::hostileTextsTakeNoTime()
{
    QFETCH(QByteArray, svg);
    QByteArray result;
    const double seconds = secondsOf([&] {
        result = SymbolColors::withoutBackground(
            SymbolColors::withCapitalWhite(SymbolColors::withNormalRoots(svg)));
        result = SymbolColors::uncolored(SymbolColors::colored(result, redOnNothing), redOnNothing);
    });
    QVERIFY(!result.isEmpty());
    QVERIFY2(seconds < 1.0, QByteArray::number(seconds).constData());
}

QTEST_GUILESS_MAIN(tst_SymbolColors)
#include "tst_symbolcolors.moc"
