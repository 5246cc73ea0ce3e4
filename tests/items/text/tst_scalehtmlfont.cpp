// SPDX-License-Identifier: BSD-3-Clause
#include "items/text/richtextitem.h"

#include <QFont>
#include <QRegularExpression>
#include <QTest>

#include <ctime>

using namespace Qt::StringLiterals;

namespace {

/// Expressions that are not compiled to machine code show what searching costs; read before the first is
/// used.
const bool interpreted = qputenv("QT_ENABLE_REGEXP_JIT", "0");

/// Hundreds of times what a text needs that is searched once.
constexpr double mostSeconds = 2.0;

QString span(const QString &style)
{
    return u"<span style=\"%1\">x</span>"_s.arg(style);
}

QString sized(const QString &size)
{
    return span(u"font-size:%1pt;"_s.arg(size));
}

} // namespace

/// The point sizes in HTML, in a program of its own: the first call decides about all later ones.
class tst_ScaleHtmlFont : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    void firstExpressionIsUsedForAllCalls();
    void sizesAreMultiplied_data();
    void sizesAreMultiplied();
    void unfinishedStylesAreSearchedOnce_data();
    void unfinishedStylesAreSearchedOnce();
};

void tst_ScaleHtmlFont::initTestCase()
{
    QFont::insertSubstitution(u"_Fen Loma"_s, u"Loma"_s);
}

/// Runs first.
void tst_ScaleHtmlFont::firstExpressionIsUsedForAllCalls()
{
    QString html = sized(u"10"_s);
    RichTextItem::scaleHtmlFont(html, QRegularExpression(u"tyle=\"(.*);\">"_s), 2.0);
    QCOMPARE(html, sized(u"20.00"_s));
    RichTextItem::scaleHtmlFont(html, QRegularExpression(u"nothing like it"_s), 2.0);
    QCOMPARE(html, sized(u"40.00"_s));
}

void tst_ScaleHtmlFont::sizesAreMultiplied_data()
{
    QTest::addColumn<QString>("html");
    QTest::addColumn<double>("factor");
    QTest::addColumn<QString>("scaled");

    QTest::newRow("nothing") << QString() << 2.0 << QString();
    QTest::newRow("one size") << sized(u"12"_s) << 1.5 << sized(u"18.00"_s);
    QTest::newRow("fraction") << sized(u"7.5"_s) << 3.0 << sized(u"22.50"_s);
    QTest::newRow("two digits") << sized(u"10"_s) << 1.0 / 3.0 << sized(u"3.33"_s);
    QTest::newRow("by one") << sized(u"10"_s) << 1.0 << sized(u"10.00"_s);
    QTest::newRow("to nothing") << sized(u"10"_s) << 0.0 << sized(u"0.00"_s);
    QTest::newRow("equal sizes") << sized(u"9"_s) + sized(u"9"_s) << 2.0
                                 << sized(u"18.00"_s) + sized(u"18.00"_s);
    // The first replacement makes the first size equal to the second.
    QTest::newRow("sizes that become equal")
        << sized(u"10.00"_s) + sized(u"20.00"_s) << 2.0 << sized(u"40.00"_s) + sized(u"40.00"_s);
    QTest::newRow("the other way round")
        << sized(u"20.00"_s) + sized(u"10.00"_s) << 2.0 << sized(u"40.00"_s) + sized(u"20.00"_s);
    QTest::newRow("sizes spelt differently")
        << sized(u"10"_s) + sized(u"20"_s) << 2.0 << sized(u"20.00"_s) + sized(u"40.00"_s);
    QTest::newRow("among other styles")
        << span(u"font-family:'Loma'; font-size:10pt; color:#ff0000;"_s) << 2.0
        << span(u"font-family:'Loma'; font-size:20.00pt; color:#ff0000;"_s);
    // The first style has no end of the usual form: it ends where the second does.
    QTest::newRow("style without an end") << span(u"font-size:10pt; color:red"_s) + sized(u"20"_s) << 2.0
                                          << span(u"font-size:20.00pt; color:red"_s) + sized(u"20"_s);
    QTest::newRow("no later end") << span(u"font-size:10pt"_s) << 2.0 << span(u"font-size:10pt"_s);
    QTest::newRow("end in the next line") << u"style=\"style=\"font-size:10pt\n;\">"_s + sized(u"10"_s) << 2.0
                                          << u"style=\"style=\"font-size:10pt\n;\">"_s + sized(u"20.00"_s);
    QTest::newRow("style within a style") << u"style=\"a style=\"font-size:10pt; b;\">"_s << 2.0
                                          << u"style=\"a style=\"font-size:20.00pt; b;\">"_s;
    QTest::newRow("pixels before points")
        << span(u"font-size:10px; font-size:12pt;"_s) << 2.0 << span(u"font-size:10px; font-size:12pt;"_s);
    QTest::newRow("two sizes") << span(u"font-size:10pt; font-size:12pt;"_s) << 2.0
                               << span(u"font-size:20.00pt; font-size:12pt;"_s);
    QTest::newRow("no size") << span(u"color:red;"_s) << 2.0 << span(u"color:red;"_s);
    QTest::newRow("pixels") << span(u"font-size:10px;"_s) << 2.0 << span(u"font-size:10px;"_s);
    QTest::newRow("no number") << sized(u"large"_s) << 2.0 << sized(u"large"_s);
    QTest::newRow("space before the number") << sized(u" 10"_s) << 2.0 << sized(u"20.00"_s);
    QTest::newRow("outside of a style") << u"font-size:10pt;"_s << 2.0 << u"font-size:10pt;"_s;
    QTest::newRow("upper case") << span(u"FONT-SIZE:10pt;"_s) << 2.0 << span(u"FONT-SIZE:10pt;"_s);
}

void tst_ScaleHtmlFont::sizesAreMultiplied()
{
    QFETCH(QString, html);
    QFETCH(double, factor);
    RichTextItem::scaleHtmlFont(html, QRegularExpression(u"tyle=\"(.*);\">"_s), factor);
    QTEST(html, "scaled");
}

void tst_ScaleHtmlFont::unfinishedStylesAreSearchedOnce_data()
{
    QTest::addColumn<QString>("html");
    QTest::newRow("no end") << u"tyle=\""_s.repeated(16'000);
    QTest::newRow("half an end") << u"tyle=\""_s.repeated(16'000) + u">"_s;
    QTest::newRow("end in the next line") << u"tyle=\""_s.repeated(16'000) + u"\n;\">"_s;
    QTest::newRow("sizes without an end") << span(u"font-size:"_s.repeated(16'000) + u"pt ;"_s);
}

void tst_ScaleHtmlFont::unfinishedStylesAreSearchedOnce()
{
    QVERIFY(interpreted);
    QFETCH(const QString, html);
    QString scaled = html;
    const std::clock_t start = std::clock();
    RichTextItem::scaleHtmlFont(scaled, QRegularExpression(u"tyle=\"(.*);\">"_s), 2.0);
    const double seconds = double(std::clock() - start) / CLOCKS_PER_SEC;
    QVERIFY2(seconds < mostSeconds, qPrintable(QString::number(seconds)));
    QCOMPARE(scaled, html);
}

QTEST_MAIN(tst_ScaleHtmlFont)
#include "tst_scalehtmlfont.moc"
