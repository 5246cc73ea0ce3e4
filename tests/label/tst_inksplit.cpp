// SPDX-License-Identifier: BSD-3-Clause
#include "tests/label/inksplits.h"

#include <QRegularExpression>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace InkSplits;

namespace {

QImage greyRows(const QList<QList<int>> &rows)
{
    QImage image(int(rows[0].size()), int(rows.size()), QImage::Format_RGB32);
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x)
            image.setPixel(x, y, grey(rows[y][x]));
    }
    return image;
}

QStringList inBlack(const QImage &image, Dither dither)
{
    return rowsOf(splitIntoInks(image, { Qt::black }, Qt::white, dither).at(0));
}

} // namespace

class tst_InkSplit : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void diffusionByHand_data();
    void diffusionByHand();
    void coloursAreDiffusedByHand();
    void thresholdsAreHalfwayAsSeen();
    void orderedDotsAreAsManyAsTheShare();
    void orderedPatternRepeats();
    void singlePixels();
    void translucentPixelsShowThePaper();
    void formatsGiveTheSameDots();
    void paddingOfRowsDoesNotMatter();
    void twoRunsGiveTheSameDots();
    void planesAreOneBitDeep();
    void nothingToSplitIsNothing();
    void namesOfDithers();
};

void tst_InkSplit::init()
{
    QTest::failOnWarning(QRegularExpression(u".*"_s));
}

// 188 is 0.503 of the light, 137 is 0.250 and 150 is 0.305. A dot is black below 0.5.
void tst_InkSplit::diffusionByHand_data()
{
    QTest::addColumn<QImage>("image");
    QTest::addColumn<QStringList>("dots");
    // 0.503 white; -0.497 x 7/16 + 0.503 = 0.285 black; 0.285 x 7/16 + 0.503 = 0.628 white; 0.340; 0.652;
    // 0.350
    QTest::newRow("half a row") << greyRows({ { 188, 188, 188, 188, 188, 188 } }) << QStringList(u".#.#.#"_s);
    // 0.250, 0.360, 0.408, 0.429, 0.438: a single row passes on too little to ever reach 0.5.
    QTest::newRow("quarter of a row") << greyRows({ { 137, 137, 137, 137, 137 } }) << QStringList(u"#####"_s);
    // The first row passes down 0.192, 0.204, 0.354, with what has left it at its ends. The second one comes
    // back: 0.604 white, -0.396 x 7/16 + 0.204 + 0.250 = 0.281 black, 0.123 + 0.192 + 0.250 = 0.566 white.
    QTest::newRow("two rows, to and fro")
        << greyRows({ { 137, 137, 137 }, { 137, 137, 137 } }) << QStringList({ u"###"_s, u".#."_s });
    // A column passes all on: 0.305, 0.61, -0.085, 0.22, 0.525, -0.17, 0.135, 0.44, 0.745.
    QTest::newRow("a column") << greyRows({ { 150 }, { 150 }, { 150 }, { 150 }, { 150 }, { 150 }, { 150 },
        { 150 }, { 150 } }) << u"#.##.###."_s.split(QString(), Qt::SkipEmptyParts);
    // The white pixel drops the 0.129 that it was given, so that the last one is as if it were alone.
    QTest::newRow("nothing passes white") << greyRows({ { 180, 255, 187 } }) << QStringList(u"#.#"_s);
    QTest::newRow("but grey") << greyRows({ { 180, 180, 187 } }) << QStringList(u"#.#"_s);
}

void tst_InkSplit::diffusionByHand()
{
    QFETCH(QImage, image);
    QFETCH(QStringList, dots);
    QCOMPARE(inBlack(image, Dither::Diffusion), dots);
}

// As the half row above, with red in the place of black: green and blue are 0.503 of the light.
void tst_InkSplit::coloursAreDiffusedByHand()
{
    const QImage image = filled({ 6, 1 }, qRgb(255, 188, 188));
    const Planes planes = splitIntoInks(image, { Qt::black, Qt::red }, Qt::white, Dither::Diffusion);
    QCOMPARE(rowsOf(planes[0]), QStringList(u"......"_s));
    QCOMPARE(rowsOf(planes[1]), QStringList(u".#.#.#"_s));
}

// In Oklab, everything is a cube root of light: between black and a colour, halfway is an eighth of its
// light, which lies between the values 99 and 100.
void tst_InkSplit::thresholdsAreHalfwayAsSeen()
{
    QCOMPARE(
        inBlack(greyRows({ { 0, 98, 99, 100, 101, 255 } }), Dither::Threshold), QStringList(u"###..."_s));
    QImage reds(4, 1, QImage::Format_RGB32);
    for (int x = 0; x < 4; ++x)
        reds.setPixel(x, 0, qRgb(98 + x, 0, 0));
    const Planes planes = splitIntoInks(reds, { Qt::black, Qt::red }, Qt::white, Dither::Threshold);
    QCOMPARE(rowsOf(planes[0]), QStringList(u"##.."_s));
    QCOMPARE(rowsOf(planes[1]), QStringList(u"..##"_s));
}

void tst_InkSplit::orderedDotsAreAsManyAsTheShare()
{
    const QRect tile(0, 0, 64, 64);
    for (int value = 0; value < 256; ++value) {
        const Planes planes
            = splitIntoInks(filled(tile.size(), grey(value)), { Qt::black }, Qt::white, Dither::Ordered);
        const double expected = 1.0 - lightOf(value);
        QVERIFY2(std::abs(coverage(planes[0], tile) - expected) < 0.001, qPrintable(QString::number(value)));
    }
}

void tst_InkSplit::orderedPatternRepeats()
{
    const QImage plane
        = splitIntoInks(filled({ 200, 150 }, grey(120)), { Qt::black }, Qt::white, Dither::Ordered)[0];
    const QImage tile = plane.copy(0, 0, 64, 64);
    QCOMPARE(plane.copy(64, 0, 64, 64), tile);
    QCOMPARE(plane.copy(128, 64, 64, 64), tile);
}

void tst_InkSplit::singlePixels()
{
    for (const Dither dither : allDithers) {
        QCOMPARE(inBlack(filled({ 1, 1 }, white), dither), QStringList(u"."_s));
        QCOMPARE(inBlack(filled({ 1, 1 }, black), dither), QStringList(u"#"_s));
        const Planes planes = splitIntoInks(
            filled({ 1, 1 }, qRgb(200, 16, 46)), { Qt::black, QColor(200, 16, 46) }, Qt::white, dither);
        QCOMPARE(planes[0].pixelIndex(0, 0), 0);
        QCOMPARE(planes[1].pixelIndex(0, 0), 1);
    }
    QCOMPARE(inBlack(filled({ 1, 1 }, grey(180)), Dither::Diffusion), QStringList(u"#"_s)); // 0.456
    QCOMPARE(inBlack(filled({ 1, 1 }, grey(200)), Dither::Diffusion), QStringList(u"."_s)); // 0.578
}

void tst_InkSplit::translucentPixelsShowThePaper()
{
    const QList<QColor> inks { Qt::black, Qt::red };
    const QColor paper(255, 209, 0);
    QImage clear(40, 30, QImage::Format_ARGB32);
    clear.fill(qRgba(12, 34, 56, 0));
    // Half of black on the paper: 209 x 127 / 255 = 104.1.
    QImage half(40, 30, QImage::Format_ARGB32);
    half.fill(qRgba(0, 0, 0, 128));
    const QImage halfOnPaper = filled({ 40, 30 }, qRgb(127, 104, 0));
    for (const Dither dither : allDithers) {
        for (const QImage &plane : splitIntoInks(clear, inks, paper, dither))
            QCOMPARE(dotsIn(plane, plane.rect()), 0);
        const Planes expected = splitIntoInks(halfOnPaper, inks, paper, dither);
        QVERIFY(dither == Dither::Threshold || dotsIn(expected[0], half.rect()) > 0);
        QCOMPARE(splitIntoInks(half, inks, paper, dither), expected);
        const QImage premultiplied = half.convertToFormat(QImage::Format_ARGB32_Premultiplied);
        QCOMPARE(splitIntoInks(premultiplied, inks, paper, dither), expected);
    }
}

void tst_InkSplit::formatsGiveTheSameDots()
{
    const QImage image = noise({ 45, 31 }, 3);
    QImage unusedAlpha = image;
    for (int y = 0; y < image.height(); ++y) {
        auto *row = reinterpret_cast<QRgb *>(unusedAlpha.scanLine(y));
        for (int x = 0; x < image.width(); ++x)
            row[x] &= 0x00FFFFFFU; // what RGB32 says nothing about
    }
    for (const Dither dither : allDithers) {
        const Planes expected = splitIntoInks(image, { Qt::black, Qt::red }, Qt::white, dither);
        QCOMPARE(splitIntoInks(unusedAlpha, { Qt::black, Qt::red }, Qt::white, dither), expected);
        for (const auto format : { QImage::Format_ARGB32, QImage::Format_ARGB32_Premultiplied,
                 QImage::Format_RGB888, QImage::Format_RGBA8888, QImage::Format_RGB30 }) {
            const QImage converted = image.convertToFormat(format);
            if (converted.convertToFormat(QImage::Format_RGB32) == image)
                QCOMPARE(splitIntoInks(converted, { Qt::black, Qt::red }, Qt::white, dither), expected);
        }
    }
}

void tst_InkSplit::paddingOfRowsDoesNotMatter()
{
    const QImage image = noise({ 33, 9 }, 5);
    QImage wide = filled({ 50, 9 }, red);
    for (int y = 0; y < 9; ++y)
        std::copy_n(image.constScanLine(y), 33 * 4, wide.scanLine(y));
    const QImage part(wide.constBits(), 33, 9, wide.bytesPerLine(), QImage::Format_RGB32);
    for (const Dither dither : allDithers)
        QCOMPARE(splitIntoInks(part, { Qt::red }, Qt::white, dither),
            splitIntoInks(image, { Qt::red }, Qt::white, dither));
}

void tst_InkSplit::twoRunsGiveTheSameDots()
{
    const QImage image = noise({ 101, 67 }, 8);
    for (const Dither dither : allDithers)
        QCOMPARE(splitIntoInks(image, { Qt::black, Qt::yellow }, Qt::white, dither),
            splitIntoInks(image, { Qt::black, Qt::yellow }, Qt::white, dither));
}

void tst_InkSplit::planesAreOneBitDeep()
{
    const Planes planes
        = splitIntoInks(noise({ 13, 7 }, 1), { Qt::black, Qt::red }, Qt::white, Dither::Diffusion);
    QCOMPARE(planes.size(), 2U);
    for (const QImage &plane : planes) {
        QCOMPARE(plane.format(), QImage::Format_Mono);
        QCOMPARE(plane.size(), QSize(13, 7));
        QCOMPARE(plane.colorTable(), QList<QRgb>({ white, black }));
    }
}

void tst_InkSplit::nothingToSplitIsNothing()
{
    const QImage image = filled({ 4, 4 }, black);
    for (const Dither dither : allDithers) {
        QVERIFY(splitIntoInks(QImage(), { Qt::black }, Qt::white, dither).empty());
        QVERIFY(splitIntoInks(image, {}, Qt::white, dither).empty());
        QVERIFY(splitIntoInks(image, QList<QColor>(9, Qt::black), Qt::white, dither).empty());
        // One more than the longest side of an image.
        QVERIFY(splitIntoInks(filled({ 65536, 1 }, black), { Qt::black }, Qt::white, dither).empty());
        QCOMPARE(splitIntoInks(filled({ 65535, 1 }, black), { Qt::black }, Qt::white, dither).size(), 1U);
    }
}

void tst_InkSplit::namesOfDithers()
{
    QCOMPARE(DitherNames::all(), QStringList({ u"diffusion"_s, u"ordered"_s, u"threshold"_s }));
    for (const Dither dither : allDithers)
        QCOMPARE(DitherNames::find(DitherNames::of(dither)), dither);
    QCOMPARE(DitherNames::of(Dither::Ordered), u"ordered"_s);
    QVERIFY(!DitherNames::find(u"Ordered"_s));
    QVERIFY(!DitherNames::find(QString()));
}

QTEST_APPLESS_MAIN(tst_InkSplit)
#include "tst_inksplit.moc"
