// SPDX-License-Identifier: BSD-3-Clause
#include "items/graphics/svgguard.h"
#include "tests/support/drawings.h"

#include <QRegularExpression>
#include <QTest>

#include <algorithm>
#include <ctime>
#include <sys/resource.h>

using namespace Qt::StringLiterals;
using Drawings::compressed;
using Drawings::drawing;

namespace {

#ifdef __SANITIZE_ADDRESS__
constexpr double mostSeconds = 20.0;
constexpr double mostGuardSeconds = 5.0;
constexpr long mostMebibytes = 4'096; // shadow memory, and freed blocks that stay reserved
#else
constexpr double mostSeconds = 2.0;
constexpr double mostGuardSeconds = 1.0;
constexpr long mostMebibytes = 512;
#endif

double processorSeconds()
{
    return double(std::clock()) / CLOCKS_PER_SEC;
}

double secondsFor(const QByteArray &bytes, SvgGuard::Answer &answer)
{
    const double start = processorSeconds();
    answer = SvgGuard::check(bytes);
    Drawings::rendered(answer.drawing);
    return processorSeconds() - start;
}

/// How much slower this machine is now than the one for which two seconds are promised, which takes that long
/// for a plain drawing: it may be another, or busy with something else.
double slowness()
{
    constexpr double promised = 0.17;
    SvgGuard::Answer answer;
    return std::max(secondsFor(drawing(QByteArray("<g/>").repeated(100'000)), answer) / promised, 1.0);
}

long mebibytes()
{
    rusage usage {};
    getrusage(RUSAGE_SELF, &usage);
    return usage.ru_maxrss / 1024;
}

QByteArray nested(int depth)
{
    return QByteArray("<g>").repeated(depth) + QByteArray("</g>").repeated(depth);
}

/// Each level refers to the one before that often.
QByteArray referring(int levels, int references)
{
    QByteArray text = "<g id='l0'><circle r='1'/></g>";
    for (int level = 1; level <= levels; ++level)
        text += "<g id='l" + QByteArray::number(level) + "'>"
            + ("<use xlink:href='#l" + QByteArray::number(level - 1) + "'/>").repeated(references) + "</g>";
    return drawing(text, "");
}

/// Drawings in drawings: each level has the one before that often.
QByteArray drawingsInDrawings(int levels, int copies)
{
    QByteArray text = drawing("<circle r='1'/>");
    for (int level = 0; level < levels; ++level)
        text = compressed(drawing(Drawings::embedded(text, "image/svg+xml").repeated(copies)));
    return text;
}

QByteArray zigzag(int lines)
{
    QByteArray points;
    for (int i = 0; i < lines; ++i)
        points += QByteArray::number(i * 7919 % 400) + (i % 2 == 0 ? " 0 " : " 400 ");
    return points;
}

QByteArray attributes(int count)
{
    QByteArray text;
    for (int i = 0; i < count; ++i)
        text += " a" + QByteArray::number(i) + "=''";
    return text;
}

QByteArray chain(int links)
{
    QByteArray text = "<rect width='9' height='9' fill='url(#g0)'/>";
    for (int i = 0; i < links; ++i)
        text += "<linearGradient id='g" + QByteArray::number(i) + "' xlink:href='#g"
            + QByteArray::number(i + 1) + "'/>";
    return text;
}

/// Parts of definitions that stand for eight of the part before.
QByteArray laughs(const QByteArray &mark)
{
    QByteArray text = "<!ENTITY " + mark + "e0 'xxxxxxxxxx'>";
    const QByteArray sign = mark.isEmpty() ? "&" : "%";
    for (int i = 1; i < 10; ++i)
        text += "<!ENTITY " + mark + "e" + QByteArray::number(i) + " '"
            + (sign + "e" + QByteArray::number(i - 1) + ";").repeated(8) + "'>";
    return "<!DOCTYPE svg [" + text + (mark.isEmpty() ? "" : "%e9;") + "]><svg><desc>&e9;</desc></svg>";
}

} // namespace

/// Drawings that are hard to read or to draw.
class tst_SvgHostile : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void hostileDrawingsAreRefused_data();
    void hostileDrawingsAreRefused();
    void acceptedDrawingsAreDrawnInTime_data();
    void acceptedDrawingsAreDrawnInTime();
};

void tst_SvgHostile::hostileDrawingsAreRefused_data()
{
    const QByteArray wide = "width='400' height='400'";
    QTest::addColumn<QByteArray>("bytes");
    QTest::newRow("deep") << drawing(nested(18'000));
    QTest::newRow("deep and unclosed") << "<svg>" + QByteArray("<g>").repeated(20'000);
    QTest::newRow("deeper") << drawing(nested(100'000));
    QTest::newRow("entities") << "<!DOCTYPE svg [<!ENTITY e '" + QByteArray(4'000, 'z') + "'>]><svg><desc>"
            + QByteArray("&e;").repeated(30'000) + "</desc></svg>";
    QTest::newRow("small entities") << "<!DOCTYPE svg [<!ENTITY e '" + QByteArray(3'000, 'z')
            + "'>]><svg><desc>" + QByteArray("&e;").repeated(3'000) + "</desc></svg>";
    QTest::newRow("attributes") << drawing("<g" + attributes(100'000) + "/>");
    QTest::newRow("defined attributes") << "<!DOCTYPE svg [<!ATTLIST x"
            + attributes(100'000).replace("=''", " CDATA ''") + ">]>" + drawing({});
    QTest::newRow("references of references") << referring(10, 10);
    QTest::newRow("references by two") << referring(26, 2);
    QTest::newRow("wide references") << referring(3, 1'000);
    QTest::newRow("deep references") << compressed(drawing([] {
        QByteArray text;
        for (int i = 0; i < 100; ++i)
            text += "<g id='p" + QByteArray::number(i) + "'>" + QByteArray("<g>").repeated(400)
                + "<use xlink:href='#p" + QByteArray::number(i + 1) + "'/>" + QByteArray("</g>").repeated(400)
                + "</g>";
        return text;
    }()));
    QTest::newRow("pictures") << compressed(
        drawing(Drawings::embedded(Drawings::blackPng(5'780, 5'780)).repeated(40)));
    QTest::newRow("picture of a wrong size") << drawing(
        Drawings::embedded(Drawings::blackPng(9'000, 9'000)).replace("width='20'", "width='100000px'"));
    QTest::newRow("inflated spaces") << compressed(drawing(QByteArray(40'000'000, ' ')));
    QTest::newRow("inflated elements") << compressed(drawing(QByteArray("<g/>").repeated(6'300'000)));
    QTest::newRow("dashes") << compressed(drawing(
        QByteArray("<path d='M0 0L400 400' stroke='red' stroke-dasharray='0.001'/>").repeated(2'000)));
    QTest::newRow("dashes of a wide stroke") << drawing("<path stroke='red' stroke-width='20' "
                                                        "stroke-dasharray='0.1,0.1' d='M0 0"
            + QByteArray("L400 400L0 10").repeated(50) + "'/>",
        wide);
    QTest::newRow("dashes by style") << drawing(
        "<g style='stroke:red;/**/stroke-d\\61sharray:0.1,0.1;stroke-width:20'><path d='M0 0"
            + QByteArray("L400 400L0 10").repeated(50) + "'/></g>",
        wide);
    QTest::newRow("dashes by sheet") << drawing(
        "<style>path{stroke:red;stroke-dasharray:0.1,0.1;stroke-width:20}</style><path d='M0 0"
            + QByteArray("L400 400L0 10").repeated(50) + "'/>",
        wide);
    QTest::newRow("dashes by reference") << drawing("<defs><path id='a' d='M0 0"
            + QByteArray("L400 400L0 10").repeated(50)
            + "'/></defs><use xlink:href='#a' stroke='red' stroke-width='20' stroke-dasharray='0.1,0.1'/>",
        wide);
    QTest::newRow("far curves") << drawing(
        QByteArray("<path stroke='red' stroke-width='40' fill='none' d='M0 0C9e4 900 7000 9e5 -500 0'/>")
            .repeated(5'000),
        wide);
    QTest::newRow("crossing lines") << drawing("<polygon points='" + zigzag(32'000) + "'/>", wide);
    QTest::newRow("crossing lines of an enlarged part")
        << drawing("<defs><polygon id='a' transform='scale(0.001)' points='" + zigzag(4'000)
                   + "'/></defs><use xlink:href='#a' transform='scale(1000)'/>",
               wide);
    QTest::newRow("crossing lines without a page")
        << drawing("<polygon points='" + zigzag(4'000) + "'/>", "");
    QTest::newRow("crossing lines in a small view")
        << drawing("<polygon points='" + zigzag(4'000) + "'/>", "viewBox='0 0 400 1e-6'");
    QTest::newRow("crossing strokes") << drawing(
        "<polyline fill='none' stroke='red' stroke-width='2' points='" + zigzag(8'000) + "'/>", wide);
    QTest::newRow("selectors") << drawing("<style>" + QByteArray("g g g a{fill:red}").repeated(5'000)
        + "</style>" + QByteArray("<g>").repeated(100) + QByteArray("<rect/>").repeated(2'000)
        + QByteArray("</g>").repeated(100));
    QTest::newRow("declarations") << drawing("<style>rect{" + QByteArray("fill:red;").repeated(10'000)
        + "}</style>" + QByteArray("<rect/>").repeated(2'000));
    QTest::newRow("stops") << drawing(
        "<linearGradient>" + QByteArray("<stop/>").repeated(50'000) + "</linearGradient>");
    QTest::newRow("chained gradients") << drawing(chain(50'000));
    QTest::newRow("parts of a text") << drawing(
        "<text>" + QByteArray("<tspan>a</tspan>").repeated(100'000) + "</text>");
    QTest::newRow("enlarged text") << drawing(
        QByteArray("<text font-size='400' y='400'>abc</text>").repeated(9'000), wide);
}

void tst_SvgHostile::hostileDrawingsAreRefused()
{
    QFETCH(const QByteArray, bytes);
    const double start = processorSeconds();
    const SvgGuard::Answer answer = SvgGuard::check(bytes);
    const double seconds = processorSeconds() - start;
    QCOMPARE(answer.verdict, SvgGuard::Verdict::Refused);
    QVERIFY2(seconds < mostGuardSeconds, qPrintable(QString::number(seconds)));
    QVERIFY2(mebibytes() < mostMebibytes, qPrintable(QString::number(mebibytes())));
}

/// As hard as may be, and what only looks hard.
void tst_SvgHostile::acceptedDrawingsAreDrawnInTime_data()
{
    const QByteArray wide = "width='400' height='400'";
    QTest::addColumn<QByteArray>("bytes");
    QTest::newRow("drawings in drawings") << drawingsInDrawings(8, 8);
    QTest::newRow("laughs") << laughs({});
    QTest::newRow("laughs within definitions") << laughs("% ");
    QTest::newRow("elements") << drawing(QByteArray("<g/>").repeated(199'999));
    QTest::newRow("elements at the deepest") << drawing(QByteArray("<g>").repeated(500)
        + QByteArray("<rect width='1' height='1'/>").repeated(85'000) + QByteArray("</g>").repeated(500));
    QTest::newRow("attributes") << drawing(("<g" + attributes(2'000) + "/>").repeated(12));
    QTest::newRow("references") << referring(4, 7);
    QTest::newRow("pictures") << drawing(Drawings::embedded(Drawings::blackPng(8'000, 4'000)).repeated(2));
    QTest::newRow("crossing lines") << drawing("<polygon points='" + zigzag(190) + "'/>", wide);
    QTest::newRow("small crossing lines")
        << drawing("<polygon transform='scale(0.1)' points='" + zigzag(18'800) + "'/>", wide);
    QTest::newRow("full pages") << drawing(
        QByteArray("<rect width='400' height='400' opacity='0.5'/>").repeated(12'000), wide);
    QTest::newRow("dashes") << drawing(
        QByteArray("<path d='M0 0L400 400' stroke='red' stroke-dasharray='4,2'/>").repeated(100), wide);
    QTest::newRow("texts") << drawing(QByteArray("<text y='9'>abc</text>").repeated(7'900), wide);
    QTest::newRow("parts of a text") << drawing(
        "<text>" + QByteArray("<tspan>a</tspan>").repeated(13'300) + "</text>", wide);
    QTest::newRow("rules") << drawing("<style>" + QByteArray("a{fill:red}").repeated(500) + "</style>"
        + QByteArray("<g/>").repeated(4'000));
    QTest::newRow("stops") << drawing("<linearGradient id='g1'>" + QByteArray("<stop/>").repeated(30'000)
        + "</linearGradient><rect fill='url(#g1)' width='9' height='9'/>");
    QTest::newRow("chained gradients") << drawing(chain(10'000));
    for (const char *side : { "1e9", "2147483647", "1e9in", "nan", "inf", "-5", "0", "100%", "1e308", "" })
        QTest::addRow("sides of %s", side) << drawing("<rect width='9' height='9' stroke='red'/>",
            QByteArray("width='") + side + "' height='" + side + "'");
    for (const char *box :
        { "0 0 4294967296 4294967296", "nan nan nan nan", "0 0 0 0", "0 0 -5 -5", "1e308 0 1e308 9" })
        QTest::addRow("view of %s", box)
            << drawing("<rect width='9' height='9' stroke='red'/>", QByteArray("viewBox='") + box + "'");
    for (const char *number : { "nan", "inf", "1e308", "-1e308", "1e999" })
        QTest::addRow("numbers of %s", number) << drawing("<g transform='scale(" + QByteArray(number)
            + ")'><path d='M0 0L" + number + " 9A9 " + number + " 0 0 1 5 5'/><rect width='" + number
            + "' height='9' stroke-width='" + number + "' stroke='red'/></g>");
    QTest::newRow("escapes beyond Unicode") << drawing("<rect style='\\222222:\\ffffff;\\:\\'/>");
    QTest::newRow("things that are not drawn") << drawing(
        QByteArray("<pattern id='a'><mask><filter><marker><rect/></marker></filter></mask></pattern>")
            .repeated(5'000));
    QTest::newRow("animations") << drawing(
        QByteArray("<rect><animate attributeName='x' from='0' to='9' dur='1s'/></rect>").repeated(5'000));
}

void tst_SvgHostile::acceptedDrawingsAreDrawnInTime()
{
    QFETCH(const QByteArray, bytes);
    SvgGuard::Answer answer;
    const double seconds = secondsFor(bytes, answer);
    QVERIFY2(answer.verdict != SvgGuard::Verdict::Refused, qPrintable(answer.reason));
    if (seconds >= mostSeconds) {
        const double most = mostSeconds * slowness();
        QVERIFY2(seconds < most, qPrintable(u"%1 of %2"_s.arg(seconds).arg(most)));
    }
    QVERIFY2(mebibytes() < mostMebibytes, qPrintable(QString::number(mebibytes())));
}

QTEST_MAIN(tst_SvgHostile)
#include "tst_svghostile.moc"
