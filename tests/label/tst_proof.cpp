// SPDX-License-Identifier: BSD-3-Clause
#include "label/proof.h"
#include "tests/label/printing.h"

#include <QRegularExpression>
#include <QTest>

#include <random>

using namespace Qt::StringLiterals;
using namespace Printing;

namespace {

/// A plate with the dots of a text of rows: "#" prints.
Plate plateOf(const QString &name, const QColor &color, const QStringList &rows)
{
    QImage image(int(rows[0].size()), int(rows.size()), QImage::Format_Mono);
    image.setColorTable({ 0xFFFFFFFF, 0xFF000000 });
    image.fill(0);
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x)
            image.setPixel(x, y, rows[y][x] == u'#' ? 1 : 0);
    }
    image.setDotsPerMeterX(11811);
    image.setDotsPerMeterY(11811);
    return { { name, color }, image, 0, 300.0 };
}

} // namespace

class tst_Proof : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void dotsHaveTheColorsOfTheirInks();
    void overprintedInksMultiply();
    void eightInksHaveTheirBits();
    void everyDotOfThePlatesIsInTheProof();
    void nothingToProofIsNull();
};

void tst_Proof::init()
{
    QTest::failOnWarning(QRegularExpression(u".*"_s));
}

void tst_Proof::dotsHaveTheColorsOfTheirInks()
{
    Separation separation;
    separation.paper = QColor(255, 209, 0);
    separation.plates.push_back(
        plateOf(u"black"_s, QColor(20, 20, 20), { u"#..#......#"_s, u"..........."_s }));
    separation.plates.push_back(
        plateOf(u"red"_s, QColor(200, 16, 46), { u".#........."_s, u"#.......#.."_s }));
    const QImage proof = proofOf(separation);
    QCOMPARE(proof.format(), QImage::Format_Indexed8);
    QCOMPARE(proof.size(), QSize(11, 2));
    QCOMPARE(proof.dotsPerMeterX(), 11811);
    QCOMPARE(proof.dotsPerMeterY(), 11811);
    const QByteArray first("\1\2\0\1\0\0\0\0\0\0\1", 11);
    const QByteArray second("\2\0\0\0\0\0\0\0\2\0\0", 11);
    QCOMPARE(QByteArray(reinterpret_cast<const char *>(proof.constScanLine(0)), 11), first);
    QCOMPARE(QByteArray(reinterpret_cast<const char *>(proof.constScanLine(1)), 11), second);
    QCOMPARE(proof.pixel(0, 0), 0xFF141414U);
    QCOMPARE(proof.pixel(1, 0), 0xFFC8102EU);
    QCOMPARE(proof.pixel(2, 0), 0xFFFFD100U);
}

// 128 x 200 / 255 = 100.39, 255 x 100 / 255 = 100, 64 x 128 / 255 = 32.13; then x 51, 51, 204 / 255.
void tst_Proof::overprintedInksMultiply()
{
    Separation separation;
    separation.paper = QColor(250, 250, 250);
    separation.plates.push_back(plateOf(u"a"_s, QColor(128, 255, 64), { u"#.#.#"_s }));
    separation.plates.push_back(plateOf(u"b"_s, QColor(200, 100, 128), { u"##..#"_s }));
    separation.plates.push_back(plateOf(u"c"_s, QColor(51, 51, 204), { u"....#"_s }));
    const QImage proof = proofOf(separation);
    QCOMPARE(proof.colorTable(),
        QList<QRgb>({ qRgb(250, 250, 250), qRgb(128, 255, 64), qRgb(200, 100, 128), qRgb(100, 100, 32),
            qRgb(51, 51, 204), qRgb(26, 51, 51), qRgb(40, 20, 102), qRgb(20, 20, 26) }));
    QCOMPARE(proof.pixelIndex(0, 0), 3);
    QCOMPARE(proof.pixelIndex(1, 0), 2);
    QCOMPARE(proof.pixelIndex(2, 0), 1);
    QCOMPARE(proof.pixelIndex(3, 0), 0);
    QCOMPARE(proof.pixelIndex(4, 0), 7);
}

void tst_Proof::eightInksHaveTheirBits()
{
    Separation separation;
    separation.paper = white;
    for (int ink = 0; ink < 8; ++ink)
        separation.plates.push_back(plateOf(
            QString::number(ink), QColor(ink, 0, 0), { QString(ink, u'.') + u'#' + QString(7 - ink, u'.') }));
    const QImage proof = proofOf(separation);
    QCOMPARE(proof.colorCount(), 256);
    for (int ink = 0; ink < 8; ++ink)
        QCOMPARE(proof.pixelIndex(ink, 0), 1 << ink);
}

void tst_Proof::everyDotOfThePlatesIsInTheProof()
{
    std::mt19937 random(11);
    LabelDocument document = blackAndRed({ 13.1, 7 });
    for (int i = 0; i < 30; ++i) {
        const QRectF place(
            double(random() % 100), double(random() % 50), 1 + random() % 40, 1 + random() % 30);
        addRectangle(
            document, place, { i % 2 ? red : black, static_cast<MobraTypes::BrushStyle>(random() % 18) });
    }
    Problems problems;
    const auto separation = separate(document, { 254.0, false, true }, problems);
    QVERIFY(separation);
    const QImage proof = proofOf(*separation);
    QCOMPARE(proof.size(), QSize(131, 70));
    for (int y = 0; y < proof.height(); ++y) {
        for (int x = 0; x < proof.width(); ++x)
            QCOMPARE(proof.pixelIndex(x, y),
                (prints(separation->plates[0].image, x, y) ? 1 : 0)
                    + (prints(separation->plates[1].image, x, y) ? 2 : 0));
    }
}

void tst_Proof::nothingToProofIsNull()
{
    QVERIFY(proofOf(Separation()).isNull());
}

QTEST_MAIN(tst_Proof)
#include "tst_proof.moc"
