// SPDX-License-Identifier: BSD-3-Clause
#include "platform/zint/symbologies.h"
#include "tests/label/barcodedecoder.h"
#include "tests/label/barcoderasters.h"
#include "tests/label/barcodereadings.h"
#include "tests/label/barcodetable.h"
#include "tests/label/barcodetrials.h"
#include "tests/support/barcodesamples.h"

#include <QPainter>
#include <QRegularExpression>
#include <QTest>

#include <algorithm>

using namespace Qt::StringLiterals;
using BarcodeDecoder::Reading;
using BarcodeReadings::Expected;
using BarcodeTrials::Print;
using BarcodeTrials::Subject;
using BarcodeTrials::Trial;

namespace {

constexpr int ultracode = 144;

QString sampleOf(int symbol)
{
    const auto *found = std::ranges::find(BarcodeSamples::all, symbol, &BarcodeSamples::Sample::symbol);
    return found == std::end(BarcodeSamples::all) ? QString() : QString::fromUtf8(found->text);
}

QString textOf(const Expected &expected)
{
    return expected.sample ? QString::fromUtf8(expected.sample) : sampleOf(expected.symbol);
}

QString nameOf(const Expected &expected)
{
    return expected.name ? QString::fromUtf8(expected.name) : Zint::symbologyOf(expected.symbol)->name;
}

/// The name of the first of the formats that the decoder looks for.
QString formatOf(const Expected &expected)
{
    return QString::fromUtf8(expected.formats).remove(u"Extended"_s);
}

QImage enlarged(const QImage &image, int factor)
{
    return factor == 1 ? image : image.scaled(image.size() * factor);
}

/// The plate as the decoder gets it.
QImage prepared(const Print &print, const Expected &expected)
{
    const QImage upright
        = expected.upright ? BarcodeTrials::turned(print.image, -print.rotation) : print.image;
    return enlarged(upright, print.barcode.dots.width() < 2.0 ? expected.enlargement : 1);
}

/// Libzint's raster on white paper, shifted by some pixels.
QImage onPaper(const QImage &raster, int margin, int shift)
{
    QImage paper(raster.size() + QSize(2 * margin + shift, 2 * margin + shift), QImage::Format_RGB32);
    paper.fill(Qt::white);
    QPainter(&paper).drawImage(margin + shift, margin + shift, raster);
    return paper.convertToFormat(QImage::Format_Mono, Qt::ThresholdDither);
}

/// Rasters of libzint to which nothing has been done for the decoder's sake, in the sizes in which something
/// is.
QList<QImage> plainRasters(const Expected &expected)
{
    const int pixels = expected.upright ? 8 : 1;
    // A pixel for each module is no raster of libzint's, which halves one of two.
    const QImage raster = BarcodeRasters::rasterOf(expected.symbol, textOf(expected), std::max(pixels, 2));
    QList<QImage> images;
    for (int shift = 0; shift < 4; ++shift)
        images << onPaper(pixels == 1 ? raster.scaled(raster.size() / 2) : raster, 12 * pixels, shift);
    if (expected.upright) {
        for (QImage &image : images)
            image = BarcodeTrials::turned(image, 90);
    }
    return images;
}

} // namespace

/// Barcodes on plates, read back by a decoder or held against libzint's own drawing.
class tst_BarcodeReadback : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    void everyPlateReadsBack_data();
    void everyPlateReadsBack();
    void decoderNeedsItsHelp_data();
    void decoderNeedsItsHelp();
    void everyModuleIsThatOfLibzint_data();
    void everyModuleIsThatOfLibzint();
    void everySymbologyIsProvedOrExplained();
    void pageOfBarcodesIsTrue();

private:
    BarcodeTable m_table;
};

void tst_BarcodeReadback::everyPlateReadsBack_data()
{
    QTest::addColumn<int>("index");
    for (int index = 0; index < int(std::size(BarcodeReadings::all)); ++index)
        QTest::newRow(qUtf8Printable(nameOf(BarcodeReadings::all[index]))) << index;
}

void tst_BarcodeReadback::everyPlateReadsBack()
{
    QFETCH(int, index);
    const Expected &expected = BarcodeReadings::all[index];
    const Subject subject { .symbol = expected.symbol, .text = textOf(expected), .growth = expected.growth };
    QList<QImage> images;
    QStringList names;
    for (const Trial &trial : BarcodeTrials::all()) {
        for (const Print &print : BarcodeTrials::printed(subject, trial)) {
            QCOMPARE(print.warnings, QString());
            QVERIFY2(print.barcode.sharp, qPrintable(print.name));
            images << prepared(print, expected);
            names << print.name;
        }
    }
    const QList<Reading> readings = BarcodeDecoder::read(images, QString::fromUtf8(expected.formats));
    QCOMPARE(readings.size(), images.size());
    for (qsizetype i = 0; i < readings.size(); ++i) {
        const QString message = u"%1: %2 \"%3\""_s.arg(names[i], readings[i].format, readings[i].text);
        QVERIFY2(readings[i].format == formatOf(expected), qPrintable(message));
        QVERIFY2(readings[i].text == QString::fromUtf8(expected.text), qPrintable(message));
    }
    m_table.addReadings(expected, nameOf(expected), readings.size());
}

void tst_BarcodeReadback::decoderNeedsItsHelp_data()
{
    QTest::addColumn<int>("index");
    for (int index = 0; index < int(std::size(BarcodeReadings::all)); ++index) {
        const Expected &expected = BarcodeReadings::all[index];
        if (expected.enlargement > 1 || expected.upright)
            QTest::newRow(qUtf8Printable(nameOf(expected))) << index;
    }
}

/// Libzint's own raster is not always read either as it is: the plates are not to blame.
void tst_BarcodeReadback::decoderNeedsItsHelp()
{
    QFETCH(int, index);
    const Expected &expected = BarcodeReadings::all[index];
    const QList<QImage> rasters = plainRasters(expected);
    const QList<Reading> readings = BarcodeDecoder::read(rasters, QString::fromUtf8(expected.formats));
    QCOMPARE(readings.size(), rasters.size());
    QVERIFY(std::ranges::any_of(readings, [](const Reading &reading) { return reading.format == u"None"; }));
}

void tst_BarcodeReadback::everyModuleIsThatOfLibzint_data()
{
    QTest::addColumn<int>("symbol");
    for (const BarcodeSamples::Sample &sample : BarcodeSamples::all) {
        const bool isRead = std::ranges::count(BarcodeReadings::all, sample.symbol, &Expected::symbol) > 0;
        if (!isRead && !BarcodeSamples::isComposite(sample) && sample.symbol != ultracode)
            QTest::newRow(qUtf8Printable(Zint::symbologyOf(sample.symbol)->name)) << sample.symbol;
    }
}

void tst_BarcodeReadback::everyModuleIsThatOfLibzint()
{
    QFETCH(int, symbol);
    const Subject subject { .symbol = symbol, .text = sampleOf(symbol), .hideText = true };
    const BarcodeRasters::Bands bands = BarcodeRasters::bandsOf(symbol, subject.text);
    int compared = 0;
    for (const Trial &trial : BarcodeTrials::all()) {
        for (const Print &print : BarcodeTrials::printed(subject, trial)) {
            QCOMPARE(print.warnings, QString());
            QVERIFY2(print.barcode.sharp, qPrintable(print.name));
            const QImage upright = BarcodeTrials::turned(print.image, -print.rotation);
            const int dots = qRound(print.barcode.dots.width());
            const QString difference = BarcodeRasters::difference(upright, bands, dots);
            QVERIFY2(difference.isEmpty(), qPrintable(print.name + u": "_s + difference));
            ++compared;
        }
    }
    m_table.addComparison(symbol, compared);
}

void tst_BarcodeReadback::everySymbologyIsProvedOrExplained()
{
    for (const BarcodeSamples::Sample &sample : BarcodeSamples::all) {
        if (BarcodeSamples::isComposite(sample))
            m_table.addExplanation(sample.symbol, u"needs a second text, which a barcode has not"_s);
        else if (sample.symbol == ultracode)
            m_table.addExplanation(sample.symbol, u"its modules have colours, which one ink has not"_s);
    }
    QCOMPARE(m_table.missing(), QStringList());
}

void tst_BarcodeReadback::pageOfBarcodesIsTrue()
{
    if (qEnvironmentVariableIntValue("VX_UPDATE_REFERENCES") == 1)
        QVERIFY(m_table.update());
    QVERIFY2(
        m_table.isOnThePage(), "docs/barcodes.md has another table; VX_UPDATE_REFERENCES=1 writes it anew");
}

QTEST_MAIN(tst_BarcodeReadback)
#include "tst_barcodereadback.moc"
