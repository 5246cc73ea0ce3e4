// SPDX-License-Identifier: BSD-3-Clause
#include "items/graphics/svgguard.h"
#include "tests/support/drawings.h"

#include <QRegularExpression>
#include <QTest>

using namespace Qt::StringLiterals;
using Drawings::compressed;
using Drawings::drawing;

namespace {

constexpr qsizetype mostBytes = 33'554'432;

QByteArray padded(const QByteArray &text, qsizetype size)
{
    return text + QByteArray(size - text.size(), ' ');
}

QByteArray numbered(int count, const QByteArray &before, const QByteArray &behind)
{
    QByteArray text;
    for (int i = 0; i < count; ++i)
        text += before + QByteArray::number(i) + behind;
    return text;
}

QByteArray nested(int depth, const QByteArray &inside = {})
{
    return QByteArray("<g>").repeated(depth) + inside + QByteArray("</g>").repeated(depth);
}

/// In a comment of the prolog, so that the first element ends at that byte.
QByteArray beginningAt(qsizetype size)
{
    const QByteArray begin = "<svg>";
    const qsizetype comment = QByteArray("<!---->").size();
    return "<!--" + QByteArray(size - comment - begin.size(), ' ') + "-->" + begin + "<g/></svg>";
}

QByteArray withAttributes(int count, int elements)
{
    return drawing(("<g" + numbered(count, " a", "=''") + "/>").repeated(elements));
}

/// References to an entity that is longer than the part of it which counts.
QByteArray withReferences(int count)
{
    return "<!DOCTYPE svg [<!ENTITY e \"" + QByteArray(100, 'x') + "\">]><svg><desc>"
        + QByteArray("&e;").repeated(count) + "</desc></svg>";
}

/// With a definition of 8,000 characters, in which a thousand attributes have room.
QByteArray withDefinition(int elements)
{
    const QByteArray begin = "<!DOCTYPE svg [<!ATTLIST g";
    const QByteArray end = " a CDATA 'b'>]>";
    return begin + QByteArray(8'000 - begin.size() - end.size(), ' ') + end
        + drawing(QByteArray("<g/>").repeated(elements - 1));
}

/// Rules for three thousand elements, with the drawing and the style among them.
QByteArray withRules(int rules)
{
    return drawing(
        "<style>" + QByteArray("a{}").repeated(rules) + "</style>" + QByteArray("<g/>").repeated(2'998));
}

/// References to a thousand elements, and to one more.
QByteArray referring(int toThousand, int toOne)
{
    return drawing("<defs><g id='a'>" + QByteArray("<g/>").repeated(999) + "</g><g id='b'/></defs>"
        + QByteArray("<use xlink:href='#a'/>").repeated(toThousand)
        + QByteArray("<use xlink:href='#b'/>").repeated(toOne));
}

/// Levels by way of two references: the drawing, 499 groups and the first; 499 and the second; the last.
QByteArray referringDeep(int last)
{
    const QByteArray groups = "<g id='b'>" + nested(498, "<use xlink:href='#c'/>") + "</g>";
    return drawing(groups + "<g id='c'>" + nested(last - 1) + "</g>" + nested(499, "<use xlink:href='#b'/>"));
}

/// Letters of no size, at half a unit each. The text takes five more, and the drawing a half.
QByteArray withLetters(int count)
{
    return drawing("<text font-size='0'>" + QByteArray(count, 'x') + "</text>");
}

/// Two pictures of 32 million pixels, which is nearly the most that Qt decodes, and perhaps one of one.
QByteArray withPixels(bool oneMore)
{
    return drawing(Drawings::embedded(Drawings::blackPng(8'000, 4'000)).repeated(2)
        + (oneMore ? Drawings::embedded(Drawings::blackPng(1, 1)) : QByteArray()));
}

struct Pair
{
    const char *name;
    QByteArray atLimit;
    QByteArray above;
    const char *limit; // as the reason has it
};

QList<Pair> pairs()
{
    const QByteArray empty = drawing({});
    const QByteArray gradient = "<linearGradient xlink:href='#a'/>";
    return {
        { "bytes", padded(empty, mostBytes), padded(empty, mostBytes + 1), "33554432" },
        { "inflated bytes", compressed(padded(empty, mostBytes)), compressed(padded(empty, mostBytes + 1)),
            "33554432" },
        { "prolog", beginningAt(65'536), beginningAt(65'537), "65536" },
        { "attributes", withAttributes(2'048, 1), withAttributes(2'049, 1), "2048" },
        { "attributes of all", withAttributes(2'000, 12), withAttributes(2'000, 13), "2048" },
        { "characters in entities", withReferences(976), withReferences(977), "4000000" },
        { "defined attributes", withDefinition(50'000), withDefinition(50'001), "50000000" },
        { "depth", drawing(nested(511)), drawing(nested(512)), "512" },
        { "elements", drawing(QByteArray("<g/>").repeated(199'999)),
            drawing(QByteArray("<g/>").repeated(200'000)), "200000" },
        { "path data", drawing("<path d='" + padded("M0 0", 4'194'304) + "'/>"),
            drawing("<path d='" + padded("M0 0", 4'194'305) + "'/>"), "4194304" },
        { "points", drawing("<polygon points='" + padded("0 0", 4'194'304) + "'/>"),
            drawing("<polygon points='" + padded("0 0", 4'194'305) + "'/>"), "4194304" },
        { "style sheets", withRules(1'000), withRules(1'001), "3000000" },
        { "pixels", withPixels(false), withPixels(true), "64000000" },
        { "stops", drawing("<linearGradient>" + QByteArray("<stop/>").repeated(30'000) + "</linearGradient>"),
            drawing("<linearGradient>" + QByteArray("<stop/>").repeated(30'001) + "</linearGradient>"),
            "30000" },
        { "linked gradients", drawing(gradient.repeated(10'000)), drawing(gradient.repeated(10'001)),
            "10000" },
        { "referred elements", referring(50, 0), referring(50, 1), "50000" },
        { "referred levels", referringDeep(499), referringDeep(500), "1500" },
        { "effort", withLetters(199'989), withLetters(199'990), "100000" },
    };
}

} // namespace

/// What may be drawn, and what may not.
class tst_SvgGuard : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    void limitsAreReached_data();
    void limitsAreReached();
    void limitsAreNotExceeded_data();
    void limitsAreNotExceeded();
    void cleanTextIsShared();
    void compressedDrawingIsInflated();
    void membersAreInflatedTogether();
    void brokenCompressionIsRefused_data();
    void brokenCompressionIsRefused();
    void whatIsNoDrawingIsHarmless_data();
    void whatIsNoDrawingIsHarmless();
    void circlesOfReferencesAreRefused_data();
    void circlesOfReferencesAreRefused();
    void lineOfReferencesIsClean();
    void unknownEncodingsAreRefused_data();
    void unknownEncodingsAreRefused();
};

void tst_SvgGuard::limitsAreReached_data()
{
    QTest::addColumn<QByteArray>("bytes");
    for (const Pair &pair : pairs())
        QTest::newRow(pair.name) << pair.atLimit;
}

void tst_SvgGuard::limitsAreReached()
{
    QFETCH(const QByteArray, bytes);
    const SvgGuard::Answer answer = SvgGuard::check(bytes);
    QVERIFY2(answer.verdict == SvgGuard::Verdict::Clean, qPrintable(answer.reason));
    QVERIFY(answer.reason.isEmpty());
}

void tst_SvgGuard::limitsAreNotExceeded_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("limit");
    for (const Pair &pair : pairs())
        QTest::newRow(pair.name) << pair.above << QString::fromLatin1(pair.limit);
}

void tst_SvgGuard::limitsAreNotExceeded()
{
    QFETCH(const QByteArray, bytes);
    QFETCH(const QString, limit);
    const SvgGuard::Answer answer = SvgGuard::check(bytes);
    QCOMPARE(answer.verdict, SvgGuard::Verdict::Refused);
    QVERIFY(answer.drawing.isEmpty());
    QVERIFY2(answer.reason.contains(limit), qPrintable(answer.reason));
}

void tst_SvgGuard::cleanTextIsShared()
{
    const QByteArray text = drawing("<rect width='9' height='9'/>");
    const SvgGuard::Answer answer = SvgGuard::check(text);
    QCOMPARE(answer.verdict, SvgGuard::Verdict::Clean);
    QCOMPARE(answer.drawing.constData(), text.constData());
}

void tst_SvgGuard::compressedDrawingIsInflated()
{
    const QByteArray text = drawing("<rect width='9' height='9'/>");
    QCOMPARE(SvgGuard::inflated(compressed(text)), std::optional(text));
    QCOMPARE(SvgGuard::inflated(text), std::optional(text));
    const SvgGuard::Answer answer = SvgGuard::check(compressed(text));
    QCOMPARE(answer.verdict, SvgGuard::Verdict::Clean);
    QCOMPARE(Drawings::rendered(answer.drawing), Drawings::rendered(text));
}

void tst_SvgGuard::membersAreInflatedTogether()
{
    QCOMPARE(SvgGuard::inflated(compressed("<svg") + compressed("/>")), std::optional<QByteArray>("<svg/>"));
}

void tst_SvgGuard::brokenCompressionIsRefused_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QByteArray wrong = compressed(drawing("<rect width='9' height='9'/>"));
    QTest::newRow("mark only") << wrong.first(2);
    QTest::newRow("cut off") << wrong.chopped(1);
    QTest::newRow("more behind it") << wrong + "x";
    QTest::newRow("broken member behind it") << wrong + wrong.first(20);
    wrong[wrong.size() - 6] = char(wrong[wrong.size() - 6] ^ 1);
    QTest::newRow("wrong checksum") << wrong;
}

void tst_SvgGuard::brokenCompressionIsRefused()
{
    QFETCH(const QByteArray, bytes);
    QVERIFY(!SvgGuard::inflated(bytes).has_value());
    const SvgGuard::Answer answer = SvgGuard::check(bytes);
    QCOMPARE(answer.verdict, SvgGuard::Verdict::Refused);
    QVERIFY(answer.drawing.isEmpty() && !answer.reason.isEmpty());
}

void tst_SvgGuard::whatIsNoDrawingIsHarmless_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::newRow("nothing") << QByteArray();
    QTest::newRow("words") << QByteArray("words");
    QTest::newRow("another root") << QByteArray("<html/>");
    QTest::newRow("unclosed") << QByteArray("<svg><g>");
    QTest::newRow("zeros") << QByteArray(100, '\0');
}

void tst_SvgGuard::whatIsNoDrawingIsHarmless()
{
    QFETCH(const QByteArray, bytes);
    const SvgGuard::Answer answer = SvgGuard::check(bytes);
    QCOMPARE(answer.verdict, SvgGuard::Verdict::Clean);
    QCOMPARE(answer.drawing, bytes);
}

void tst_SvgGuard::circlesOfReferencesAreRefused_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::newRow("to itself") << drawing("<g id='a'><use xlink:href='#a'/></g>");
    QTest::newRow("to each other") << drawing(
        "<g id='a'><use xlink:href='#b'/></g><g id='b'><g><use xlink:href='#a'/></g></g>");
    QTest::newRow("from within") << drawing("<g id='a'><g id='b'><use xlink:href='#a'/></g></g>");
    QTest::newRow("by another mark") << drawing("<g id='a'><use xlink:href='xa'/></g>");
    QTest::newRow("by xml:id") << drawing("<g xml:id='a'><use xlink:href='#a'/></g>");
    QTest::newRow("by the second of a name")
        << drawing("<g id='a'/><g id='b'><use xlink:href='#a'/></g><g id='a'><use xlink:href='#b'/></g>");
    QTest::newRow("not drawn") << drawing("<defs><g id='a'><use xlink:href='#a'/></g></defs>");
    QTest::newRow("with a prefix") << drawing("<g id='a'><x:use xlink:href='#a'/></g>");
}

void tst_SvgGuard::circlesOfReferencesAreRefused()
{
    QFETCH(const QByteArray, bytes);
    const SvgGuard::Answer answer = SvgGuard::check(bytes);
    QCOMPARE(answer.verdict, SvgGuard::Verdict::Refused);
    QCOMPARE(answer.reason, u"one of its elements refers to itself"_s);
}

void tst_SvgGuard::lineOfReferencesIsClean()
{
    const QByteArray text = drawing("<g id='a'/>" + numbered(99, "<use xlink:href='#a' x='", "'/>")
        + "<g id='b'><use xlink:href='#a'/></g><use xlink:href='#b'/><use xlink:href='#c'/>");
    QCOMPARE(SvgGuard::check(text).verdict, SvgGuard::Verdict::Clean);
}

void tst_SvgGuard::unknownEncodingsAreRefused_data()
{
    QTest::addColumn<QByteArray>("encoding");
    QTest::addColumn<bool>("isRefused");
    QTest::newRow("UTF-8") << QByteArray("UTF-8") << false;
    QTest::newRow("Latin 1") << QByteArray("ISO-8859-1") << false;
    QTest::newRow("ASCII") << QByteArray("us-ascii") << false;
    QTest::newRow("Windows") << QByteArray("windows-1252") << false;
    QTest::newRow("EBCDIC") << QByteArray("IBM037") << true;
    QTest::newRow("UTF-7") << QByteArray("UTF-7") << true;
    QTest::newRow("shifted") << QByteArray("ISO-2022-JP") << true;
}

void tst_SvgGuard::unknownEncodingsAreRefused()
{
    QFETCH(const QByteArray, encoding);
    QFETCH(const bool, isRefused);
    const QByteArray text = "<?xml version='1.0' encoding='" + encoding + "'?>" + drawing("<g/>");
    QCOMPARE(SvgGuard::check(text).verdict == SvgGuard::Verdict::Refused, isRefused);
}

QTEST_MAIN(tst_SvgGuard)
#include "tst_svgguard.moc"
