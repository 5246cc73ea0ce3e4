// SPDX-License-Identifier: BSD-3-Clause
#include "label/documentfile.h"
#include "label/hostfonts.h"
#include "label/labeldocument.h"
#include "label/proof.h"
#include "tests/label/pdfprobe.h"
#include "tests/label/picturedistance.h"

#include <QDir>
#include <QRegularExpression>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

const QString folder = QStringLiteral(VX_SOURCE_DIR "/examples/");

LabelDocument exampleOf(const QString &name)
{
    LoadResult loaded = DocumentFile::load(folder + name + u".vxl"_s);
    if (!loaded.document)
        qFatal("no example: %s", qPrintable(loaded.problems.value(0).text()));
    return std::move(*loaded.document);
}

} // namespace

/// The example labels as PDFs, beside the proofs of their plates.
class tst_PdfExamples : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void allExamplesAreHere();
    void looksLikeItsProof_data();
    void looksLikeItsProof();
    void platesAreThosePrinted_data();
    void platesAreThosePrinted();
};

void tst_PdfExamples::initTestCase()
{
    HostFonts::substituteDefaultFamily();
}

void tst_PdfExamples::init()
{
    QTest::failOnWarning(QRegularExpression(u".*"_s));
}

/// The share of pixels that may be farther than a dot from what the plates have. Plates have
/// - barcodes of modules of whole dots, smaller than their places by the rest;
/// - gradients in scattered dots, and patterns of other dots.
void tst_PdfExamples::looksLikeItsProof_data()
{
    QTest::addColumn<double>("farOff");

    QTest::newRow("address-label") << 0.001;
    QTest::newRow("asset-tag") << 0.05; // a QR Code that is a tenth of the page
    QTest::newRow("bin-label") << 0.003; // patterns
    QTest::newRow("calibration-sheet") << 0.004; // all patterns
    QTest::newRow("hazard-sign") << 0.001;
    QTest::newRow("price-sign") << 0.001;
    QTest::newRow("product-label") << 0.001;
    QTest::newRow("shelf-label") << 0.001;
    QTest::newRow("shipping-label") << 0.03; // a MaxiCode
    QTest::newRow("spare-parts-label") << 0.001;
    QTest::newRow("spine-label") << 0.001;
    QTest::newRow("warning-sign") << 0.001;
    QTest::newRow("wayfinding-sign") << 0.001;
}

void tst_PdfExamples::allExamplesAreHere()
{
    QCOMPARE(QDir(folder).entryList({ u"*.vxl"_s }).size(), 13);
}

void tst_PdfExamples::looksLikeItsProof()
{
    QFETCH(double, farOff);

    const LabelDocument label = exampleOf(QString::fromLatin1(QTest::currentDataTag()));
    PdfProbe pdf;
    pdf.write([&](PdfPages &pages, Problems &problems) {
        return pages.addPage(label, problems, PdfPages::Paper::Painted);
    });
    QVERIFY(!pdf.bytes().contains("DCTDecode"));
    for (const QStringList &font : pdf.table(u"pdffonts"_s))
        QCOMPARE(font[4], u"yes"_s); // embedded

    Problems problems;
    const std::optional<Separation> separation = separate(label, {}, problems);
    QVERIFY(separation.has_value());
    const QImage page = pdf.page(1, 300.0);
    const QImage proof = proofOf(*separation);
    QVERIFY(page.width() - proof.width() <= 1 && page.height() - proof.height() <= 1); // rounded up
    const PictureDistance distance(page, proof);
    QVERIFY2(distance.farOff() < farOff, qPrintable(QString::number(distance.farOff())));
}

void tst_PdfExamples::platesAreThosePrinted_data()
{
    QTest::addColumn<double>("dpi");

    QTest::newRow("address-label") << 300.0;
    QTest::newRow("product-label") << 203.0;
}

void tst_PdfExamples::platesAreThosePrinted()
{
    QFETCH(double, dpi);

    const LabelDocument label = exampleOf(QString::fromLatin1(QTest::currentDataTag()));
    Problems problems;
    SeparationOptions options;
    options.dpi = dpi;
    const std::optional<Separation> separation = separate(label, options, problems);
    QVERIFY(separation.has_value());
    PdfProbe pdf;
    pdf.write([&](PdfPages &pages, Problems &found) {
        bool done = true;
        for (const Plate &plate : separation->plates)
            done = done && pages.addPlate(plate.image, dpi, found);
        return done;
    });
    int number = 0;
    for (const Plate &plate : separation->plates) {
        const QImage seen = pdf.dots(++number, dpi);
        QCOMPARE(seen.size(), plate.image.size());
        QVERIFY(
            seen.convertToFormat(QImage::Format_RGB32) == plate.image.convertToFormat(QImage::Format_RGB32));
    }
    QCOMPARE(number, 2);
}

QTEST_MAIN(tst_PdfExamples)
#include "tst_pdfexamples.moc"
