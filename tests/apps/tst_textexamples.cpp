// SPDX-License-Identifier: BSD-3-Clause
#include "tests/apps/plateprobe.h"
#include "tests/apps/programfolder.h"

#include <QDir>
#include <QImage>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTest>

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>
#include <utility>

using namespace Qt::StringLiterals;

namespace {

const QString addressLabel = u"address-label"_s;
const QString priceSign = u"price-sign"_s;
const QString spineLabel = u"spine-label"_s;
const QString black = u"black"_s;
const QString red = u"red"_s;
const QString blue = u"blue"_s;

constexpr double millimetresPerPoint = 25.4 / 72.0;
constexpr double millimetresPerUnit = 25.4 / 300.0; // of all three labels
constexpr double dot = millimetresPerUnit; // they are printed at their own resolution
constexpr double any = std::numeric_limits<double>::quiet_NaN();

/// The two fonts, of a size of 1: how far it is from the top of a line to its baseline and to its bottom, and
/// how high capital letters are.
constexpr double lomaAscent = 1.149;
constexpr double lomaLine = 1.589;
constexpr double lomaCapital = 0.708;
constexpr double serifAscent = 0.939;
constexpr double serifLine = 1.175;

/// Where something printed begins and ends; what is not told may be anywhere.
struct Edges
{
    double left = any;
    double top = any;
    double right = any;
    double bottom = any;
};

/// The capitals of Loma on a baseline.
Edges capitals(double baseline, double points)
{
    return { .top = baseline - lomaCapital * points * millimetresPerPoint, .bottom = baseline };
}

/// The same, turned by a quarter: the baseline is left of the letters.
Edges turnedCapitals(double left, double points)
{
    const double baseline = left + (lomaLine - lomaAscent) * points * millimetresPerPoint;
    return { .left = baseline, .right = baseline + lomaCapital * points * millimetresPerPoint };
}

bool isAt(const Edges &expected, const QRectF &found)
{
    // Round letters reach a little beyond straight ones, and no edge is sharper than a dot.
    constexpr double tolerance = 0.3;
    const auto fits
        = [](double should, double is) { return std::isnan(should) || std::abs(is - should) < tolerance; };
    return fits(expected.left, found.left()) && fits(expected.top, found.top())
        && fits(expected.right, found.right()) && fits(expected.bottom, found.bottom());
}

QString placeOf(const QRectF &found)
{
    return u"%1 %2 to %3 %4"_s.arg(found.left()).arg(found.top()).arg(found.right()).arg(found.bottom());
}

QJsonArray itemsOf(const QByteArray &json)
{
    return QJsonDocument::fromJson(json).object()[u"items"_s].toArray();
}

/// Whether saving writes a key in other words: Qt has its own HTML, and where a turned text lies is told by
/// its position and its transform together.
bool isReworded(const QString &key, const QJsonObject &item)
{
    return key == u"itemHtml"_s || (key.startsWith(u"itemPosition"_s) && item.contains(u"itemRotation"_s));
}

/// The picture of a property map: a marker of four bytes and its file, in Base64.
QImage pixelsOf(const QJsonValue &value)
{
    const QByteArray data = QByteArray::fromBase64(value.toString().toLatin1());
    return QImage::fromData(data.sliced(4), "PNG").convertToFormat(QImage::Format_ARGB32);
}

QString lostOf(const QJsonArray &typed, const QJsonArray &completed);

/// Nothing if a key of an item has the value that was typed, or one that says the same; otherwise both.
QString lostOf(const QString &key, const QJsonObject &typed, const QJsonObject &completed)
{
    const QJsonValue before = typed[key];
    const QJsonValue after = completed[key];
    if (key == u"children")
        return lostOf(before.toArray(), after.toArray());
    // Qt compresses pictures otherwise.
    const bool isKept = key == u"pixmapItemData"
        ? !pixelsOf(before).isNull() && pixelsOf(after) == pixelsOf(before)
        : after == before;
    return isKept || isReworded(key, typed)
        ? QString()
        : u"%1: %2, not %3"_s.arg(key, after.toVariant().toString(), before.toVariant().toString());
}

/// Nothing if all items of a label or a container have what was typed.
QString lostOf(const QJsonArray &typed, const QJsonArray &completed)
{
    if (typed.isEmpty() || typed.size() != completed.size())
        return u"%1 items of %2"_s.arg(completed.size()).arg(typed.size());
    QString lost;
    for (qsizetype i = 0; i < typed.size(); ++i) {
        const QJsonObject item = typed[i].toObject();
        for (const QString &key : item.keys())
            lost += lostOf(key, item, completed[i].toObject());
    }
    return lost;
}

} // namespace

/// The examples with texts: their plates hold what was designed, and nothing else.
class tst_TextExamples : public QObject, private ProgramFolder
{
    Q_OBJECT

private Q_SLOTS:
    void init() { renew(); }

    void lettersStandWhereTheirFontPutsThem_data();
    void lettersStandWhereTheirFontPutsThem();
    void nothingPrintsWhereNothingIs_data();
    void nothingPrintsWhereNothingIs();
    void partsAreSolid_data();
    void partsAreSolid();
    void redLettersFillTheirGapsInBlack();
    void redWordLeavesAGapInItsLine();
    void gradientsRunFromThePaper_data();
    void gradientsRunFromThePaper();
    void verticalTextHasALineForEachLetter();
    void centsAreRaised();
    void oldPriceIsStruck();
    void listHasRoundBullets();
    void factsAreRuled();
    void conversionKeepsWhatPeopleTyped_data();
    void conversionKeepsWhatPeopleTyped();
    void convertedLabelsPrintAlike_data();
    void convertedLabelsPrintAlike();

private:
    PlateProbe plate(const QString &name, const QString &ink) const;
    static void textExamples();
};

PlateProbe tst_TextExamples::plate(const QString &name, const QString &ink) const
{
    const ProgramResult result
        = run({ u"separate"_s, exampleFile(name), u"-o"_s, u"plates"_s, u"--force"_s });
    return PlateProbe(
        result.code == 0 && result.err.isEmpty() ? path(u"plates/%1.%2.png"_s.arg(name, ink)) : QString());
}

void tst_TextExamples::textExamples()
{
    QTest::addColumn<QString>("name");
    for (const QString &name : textExampleNames())
        QTest::newRow(qPrintable(name)) << name;
}

void tst_TextExamples::lettersStandWhereTheirFontPutsThem_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("ink");
    QTest::addColumn<bool>("knockedOut");
    QTest::addColumn<QRectF>("area");
    QTest::addColumn<Edges>("expected");

    const auto row = [](const char *tag, const QString &name, const QString &ink, const QRectF &area,
                         const Edges &expected, bool knockedOut = false) {
        QTest::newRow(tag) << name << ink << knockedOut << area << expected;
    };
    const QRectF city(3, 27.2, 66, 6);
    row("city", addressLabel, black, city, capitals(32.4, 18));
    row("city at the left edge", addressLabel, black, city, { .left = 4.5 });
    row("country", addressLabel, black, { 3, 34, 66, 4 }, capitals(36.9, 10));
    row("service", addressLabel, red, { 73, 4.5, 22, 6 }, capitals(9, 12), true);
    row("routing code", addressLabel, black, { 73, 13.2, 22, 12 }, capitals(22, 20), true);
    row("Thai at the left edge", addressLabel, black, { 3, 44, 45, 14 }, { .left = 4.4 });
    row("Arabic name at the right edge", addressLabel, black, { 50, 44.8, 47, 4.6 }, { .right = 95.5 });
    row("Arabic street at the right edge", addressLabel, black, { 50, 50, 47, 3.8 }, { .right = 95.5 });
    row("Arabic city at the right edge", addressLabel, black, { 50, 54.2, 47, 3.8 }, { .right = 95.5 });
    row("Arabic heading at the right edge", addressLabel, red, { 50, 40.5, 47, 4 }, { .right = 95.5 });
    row("offer", priceSign, red, { 0, 0, 148, 20 }, capitals(14.4, 35));
    const QRectF besideTheRule(18.5, 34.5, 9.5, 81);
    row("turned title", spineLabel, blue, besideTheRule, turnedCapitals(21.6, 14));
    row("turned title along the spine", spineLabel, blue, besideTheRule,
        { .top = 41.0, .bottom = 40.7 + 67 - 0.3 });
    row("turned subtitle", spineLabel, black, { 17.4, 34.5, 6, 81 }, turnedCapitals(17, 11));
}

void tst_TextExamples::lettersStandWhereTheirFontPutsThem()
{
    QFETCH(QString, name);
    QFETCH(QString, ink);
    QFETCH(bool, knockedOut);
    QFETCH(QRectF, area);
    QFETCH(Edges, expected);
    const PlateProbe probe = plate(name, ink);
    QVERIFY(!probe.isNull());
    const QRectF found = knockedOut ? probe.blank(area) : probe.printed(area);
    QVERIFY2(isAt(expected, found), qPrintable(placeOf(found)));
}

void tst_TextExamples::nothingPrintsWhereNothingIs_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("ink");
    QTest::addColumn<QRectF>("area");

    const auto row = [](const QString &name, const QString &ink, const char *what, const QRectF &area) {
        QTest::addRow("%s %s: %s", qPrintable(name), qPrintable(ink), what) << name << ink << area;
    };
    for (const QString &ink : { black, red }) {
        row(addressLabel, ink, "above the frame", { 0, 0, 100, 1.4 });
        row(addressLabel, ink, "left of the frame", { 0, 0, 1.4, 62 });
        row(addressLabel, ink, "right of the frame", { 98.6, 0, 1.4, 62 });
        row(addressLabel, ink, "below the frame", { 0, 60.6, 100, 1.4 });
        row(addressLabel, ink, "between the frame and the texts", { 2.2, 4, 1.9, 54 });
        row(addressLabel, ink, "between the texts and the frame", { 95.9, 4, 1.9, 54 });
        row(priceSign, ink, "left margin", { 0, 20.2, 7.8, 84.8 });
        row(priceSign, ink, "right margin", { 140.9, 20.2, 7.1, 84.8 });
        row(priceSign, ink, "bottom margin", { 0, 98, 148, 7 });
        row(priceSign, ink, "gutter", { 76.2, 20.2, 5, 84.8 });
    }
    for (const QString &ink : { black, blue }) {
        row(spineLabel, ink, "left of the title", { 0, 34.3, 3.5, 81.5 });
        row(spineLabel, ink, "right of the title", { 28, 34.3, 2, 81.5 });
    }
    row(addressLabel, black, "the service, which is red", { 71.8, 3.8, 24.2, 7.4 });
    row(addressLabel, red, "the address, which is black", { 0, 11.6, 100, 29 });
    row(addressLabel, red, "the other scripts, which are black", { 0, 44.2, 100, 18 });
    row(spineLabel, black, "the compass, which is blue", { 0, 0, 30, 34 });
    row(spineLabel, blue, "behind the number", { 6.2, 134.5, 17.6, 7 });
    row(priceSign, red, "behind the foot of the price", { 91, 72.3, 16, 3.3 });
    row(priceSign, red, "apples, reasons but one, and facts", { 0, 48.5, 80, 56.5 });
    row(priceSign, black, "the saving, which is white on red", { 82, 88, 58, 9 });
}

void tst_TextExamples::nothingPrintsWhereNothingIs()
{
    QFETCH(QString, name);
    QFETCH(QString, ink);
    QFETCH(QRectF, area);
    const PlateProbe probe = plate(name, ink);
    QVERIFY(!probe.isNull());
    QCOMPARE(probe.coverage(area), 0.0);
}

void tst_TextExamples::partsAreSolid_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("ink");
    QTest::addColumn<QRectF>("area");

    QTest::newRow("above the service") << addressLabel << red << QRectF(73, 4.1, 22, 1.6);
    QTest::newRow("below the service") << addressLabel << red << QRectF(73, 9.4, 22, 1.4);
    QTest::newRow("above the routing code") << addressLabel << black << QRectF(73, 12.8, 22, 3.9);
    QTest::newRow("above the offer") << priceSign << black << QRectF(0.1, 0.1, 147.8, 5);
    QTest::newRow("below the offer") << priceSign << black << QRectF(0.1, 14.9, 147.8, 5);
    QTest::newRow("foot of the price") << priceSign << black << QRectF(91, 72.3, 16, 3.3);
    QTest::newRow("right of the facts' names") << priceSign << black << QRectF(26, 67.5, 4.8, 27);
    QTest::newRow("above the number") << spineLabel << black << QRectF(12, 129.3, 6, 3);
    QTest::newRow("beside the compass") << spineLabel << blue << QRectF(0.1, 0.1, 4.2, 33.8);
}

void tst_TextExamples::partsAreSolid()
{
    QFETCH(QString, name);
    QFETCH(QString, ink);
    QFETCH(QRectF, area);
    const PlateProbe probe = plate(name, ink);
    QVERIFY(!probe.isNull());
    QCOMPARE(probe.coverage(area), 100.0);
}

void tst_TextExamples::redLettersFillTheirGapsInBlack()
{
    const QRectF band(0.1, 0.1, 147.8, 19.7);
    const double blackShare = plate(priceSign, black).coverage(band);
    const double redShare = plate(priceSign, red).coverage(band);
    QVERIFY2(redShare > 10.0 && redShare < 30.0, qPrintable(QString::number(redShare)));
    QCOMPARE(blackShare + redShare, 100.0);
}

void tst_TextExamples::redWordLeavesAGapInItsLine()
{
    const QRectF reasons(8, 41, 68, 7.2);
    const QRectF word = plate(priceSign, red).printed(reasons);
    QVERIFY2(word.left() > 20.0 && word.width() > 9.0 && word.width() < 15.0, qPrintable(placeOf(word)));
    const PlateProbe blackPlate = plate(priceSign, black);
    const QRectF gap(word.left(), reasons.top(), word.width(), reasons.height());
    QCOMPARE(blackPlate.coverage(gap), 0.0);
    for (const double x : { word.left() - 7.0, word.right() + 3.0 })
        QVERIFY(blackPlate.coverage(QRectF(x, reasons.top(), 4.0, reasons.height())) > 0.0);
}

void tst_TextExamples::gradientsRunFromThePaper_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("ink");
    QTest::addColumn<QRectF>("strip"); // beside what lies on the gradient
    QTest::newRow("rectangle") << spineLabel << blue << QRectF(0.3, 116, 5.4, 34);
    // A gradient behind a text also lies behind its frame.
    const double frame = 8 * millimetresPerUnit;
    QTest::newRow("text") << priceSign << red << QRectF(82.8, 27 - frame, 5, 70 + 2 * frame);
}

void tst_TextExamples::gradientsRunFromThePaper()
{
    QFETCH(QString, name);
    QFETCH(QString, ink);
    QFETCH(QRectF, strip);
    const PlateProbe probe = plate(name, ink);
    QVERIFY(!probe.isNull());
    const double tenth = strip.height() / 10.0;
    // A tenth has on average the tone of its middle; the first and the last may have a frame.
    for (int i = 1; i < 9; ++i) {
        const double tone
            = probe.coverage(QRectF(strip.left(), strip.top() + i * tenth, strip.width(), tenth));
        QVERIFY2(std::abs(tone - (10.0 * i + 5.0)) < 2.0, qPrintable(u"%1: %2"_s.arg(i).arg(tone)));
    }
}

void tst_TextExamples::verticalTextHasALineForEachLetter()
{
    const auto lines = plate(spineLabel, black).lines(QRectF(3.6, 34.5, 11, 81));
    QCOMPARE(lines.size(), qsizetype(5));
    // Five lines fill the 74 mm from 38 mm on, whatever they were stretched by.
    constexpr double line = 74.0 / 5.0;
    for (int i = 0; i < 5; ++i) {
        const double baseline = 38.0 + line * (i + serifAscent / serifLine);
        QVERIFY2(std::abs(lines[i].second - baseline) < 0.4, qPrintable(QString::number(lines[i].second)));
    }
}

void tst_TextExamples::centsAreRaised()
{
    const PlateProbe probe = plate(priceSign, black);
    const QRectF euros = probe.printed({ 86, 42, 24, 35 });
    const QRectF cents = probe.printed({ 111, 42, 28, 35 });
    // Digits are as high as capitals, and raised ones have two thirds of their size.
    const double digit = lomaCapital * 120 * millimetresPerPoint;
    QVERIFY2(std::abs(euros.height() - digit) < 0.6, qPrintable(placeOf(euros)));
    const double raised = lomaCapital * 85 * millimetresPerPoint * 2.0 / 3.0;
    QVERIFY2(std::abs(cents.height() - raised) < 0.6, qPrintable(placeOf(cents)));
    QVERIFY2(std::abs(cents.top() - euros.top()) < 0.5, qPrintable(placeOf(cents)));
}

void tst_TextExamples::oldPriceIsStruck()
{
    const PlateProbe probe = plate(priceSign, black);
    const auto darkestRow = [&probe](double left, double right) {
        double darkest = 0.0;
        const int rows = int(6.0 / dot);
        for (int row = 0; row < rows; ++row)
            darkest = std::max(darkest, probe.coverage(QRectF(left, 32.0 + row * dot, right - left, dot)));
        return darkest;
    };
    const QRectF line = probe.printed({ 83, 31, 56, 8 });
    QCOMPARE(darkestRow(line.right() - 11.5, line.right() - 0.5), 100.0);
    QVERIFY(darkestRow(line.left(), line.left() + 11.0) < 90.0);
}

void tst_TextExamples::listHasRoundBullets()
{
    const PlateProbe probe = plate(priceSign, black);
    const QRectF column(7.5, 41, 3.6, 20);
    const auto bullets = probe.lines(column);
    QCOMPARE(bullets.size(), qsizetype(3));
    const double pitch = 0.85 * lomaLine * 13 * millimetresPerPoint;
    for (int i = 0; i < 3; ++i) {
        const auto [top, bottom] = bullets[i];
        const QRectF bullet = probe.printed({ column.left(), top, column.width(), bottom - top });
        QVERIFY2(std::abs(bullet.width() - bullet.height()) < 2 * dot, qPrintable(placeOf(bullet)));
        QVERIFY(std::abs(probe.coverage(bullet) - 25.0 * std::numbers::pi) < 5.0); // π/4, in percent
        QVERIFY(std::abs(top - (bullets[0].first + i * pitch)) < 2 * dot);
    }
}

void tst_TextExamples::factsAreRuled()
{
    const auto rules = plate(priceSign, black).lines({ 72, 67, 3, 30 });
    QCOMPARE(rules.size(), qsizetype(3));
    // A line of 13 points, 10 units above and below it, and a rule of 3.
    const double row = lomaLine * 13 * millimetresPerPoint + (10 + 10 + 3) * millimetresPerUnit;
    for (int i = 0; i < 3; ++i) {
        QVERIFY(std::abs(rules[i].second - rules[i].first - 3 * millimetresPerUnit) < 0.5 * dot);
        QVERIFY(std::abs(rules[i].first - (rules[0].first + i * row)) < 2 * dot);
    }
}

void tst_TextExamples::conversionKeepsWhatPeopleTyped_data()
{
    textExamples();
}

void tst_TextExamples::conversionKeepsWhatPeopleTyped()
{
    QFETCH(QString, name);
    convert({ exampleFile(name), u"completed.vxl"_s });
    QCOMPARE(lostOf(itemsOf(readExample(name)), itemsOf(read(u"completed.vxl"_s))), QString());
}

void tst_TextExamples::convertedLabelsPrintAlike_data()
{
    textExamples();
}

void tst_TextExamples::convertedLabelsPrintAlike()
{
    QFETCH(QString, name);
    QVERIFY(QDir(path()).mkdir(u"completed"_s));
    const QString binary = name + u".vxb"_s;
    const QString completed = u"completed/%1.vxl"_s.arg(name);
    convert({ exampleFile(name), binary, completed });
    for (const auto &[label, folder] : { std::pair(exampleFile(name), u"typed"_s),
             std::pair(binary, u"fromBinary"_s), std::pair(completed, u"fromJson"_s) })
        QCOMPARE(run({ u"separate"_s, label, u"-o"_s, folder }).code, 0);
    const QStringList plates = files(u"typed"_s);
    QCOMPARE(plates.size(), qsizetype(3)); // two inks and the proof
    for (const QString &plate : plates) {
        QCOMPARE(read(u"fromBinary/"_s + plate), read(u"typed/"_s + plate));
        QCOMPARE(read(u"fromJson/"_s + plate), read(u"typed/"_s + plate));
    }
}

QTEST_GUILESS_MAIN(tst_TextExamples)

#include "tst_textexamples.moc"
