// SPDX-License-Identifier: BSD-3-Clause
#include "tests/apps/batchlabels.h"
#include "tests/apps/programfolder.h"
#include "tests/label/pdfprobe.h"

#include <QDir>
#include <QImage>
#include <QTest>

#include <csignal>
#include <sys/resource.h>

using namespace Qt::StringLiterals;
using namespace BatchLabels;

namespace {

const QStringList batchOfPrices { u"batch"_s, u"a.vxl"_s };

/// Rows of which the second and the fourth fail.
const QByteArray someFail
    = "sku,name,price\nA1,Apple,1\nB2,Banana,none\nC3,Cherry,3\n\xE2\x82\xAC,x,1\nE5,Elder,5\n";

QStringList pagesOf(const PdfProbe &pdf)
{
    QStringList pages;
    for (const QString &page : pdf.text().split(u'\f', Qt::SkipEmptyParts))
        pages.append(page.simplified());
    return pages;
}

/// How often the programs so far have been given a page of memory.
long pageFaults()
{
    rusage used {};
    getrusage(RUSAGE_CHILDREN, &used);
    return used.ru_minflt;
}

/// For a page of a PDF. Freed memory that is given back to the system costs 20 and more.
#ifdef __SANITIZE_ADDRESS__
constexpr double mostPageFaults = 10'000; // freed memory is kept for a while, to see whether it is used
#else
constexpr double mostPageFaults = 2;
#endif

} // namespace

/// Batches that are written into PDFs.
class tst_VxLabelPdf : public QObject, private ProgramFolder
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void labelsAreVectors();
    void platesArePagesOfOneBit();
    void rowsHaveFilesOfTheirOwn();
    void platesHaveFilesOfTheirOwn();
    void rowsThatFailHaveNoPage_data();
    void rowsThatFailHaveNoPage();
    void copiesArePages();
    void copiesOfPlatesAreStoredOnce();
    void noCopyOfARowThatFailsIsPrinted();
    void manifestsTellThePages();
    void theSameTwiceGivesTheSameBytes_data();
    void theSameTwiceGivesTheSameBytes();
    void filesAreKeptUnlessForced();
    void aBatchOfNoLabelsLeavesNoPdf();
    void whatDoesNotEndLeavesNothing_data();
    void whatDoesNotEndLeavesNothing();
    void interruptedBatchesLeaveNothing();
    void fullDisksLeaveNothing();
    void wrongUsageIsExplained_data();
    void wrongUsageIsExplained();
    void rowsOfTheirOwnAreResumed();
    void memoryIsKeptFromPageToPage();

private:
    [[nodiscard]] PdfProbe *probe(const QString &file);

    std::unique_ptr<PdfProbe> m_probe;
};

void tst_VxLabelPdf::init()
{
    renew();
    write(u"a.vxl"_s, priceLabel());
    write(u"prices.csv"_s, prices);
}

PdfProbe *tst_VxLabelPdf::probe(const QString &file)
{
    m_probe = std::make_unique<PdfProbe>();
    m_probe->take(read(file));
    return m_probe.get();
}

void tst_VxLabelPdf::labelsAreVectors()
{
    expect(batchOfPrices + QStringList { u"--pdf"_s, u"out/all.pdf"_s }, 0);
    QCOMPARE(files(u"out"_s), QStringList({ u"all.manifest.jsonl"_s, u"all.pdf"_s }));
    const PdfProbe *pdf = probe(u"out/all.pdf"_s);
    // 50.8 mm x 25.4 mm
    QCOMPARE(pdf->boxes(), QList<QSizeF>(3, { 144.0, 72.0 }));
    QCOMPARE(pagesOf(*pdf),
        QStringList({ u"Apple 1.50 EUR A1"_s, u"Banana 22.00 EUR B2"_s, u"Cherry 0.13 EUR C3"_s }));
    QVERIFY(pdf->table(u"pdfimages"_s).isEmpty());
    const QList<QStringList> fonts = pdf->table(u"pdffonts"_s);
    QVERIFY(!fonts.isEmpty());
    for (const QStringList &font : fonts) {
        QVERIFY2(font[0].contains(u"DejaVu"_s), qPrintable(font.join(u' ')));
        QCOMPARE(font[font.size() - 5], u"yes"_s); // embedded
    }
    // The red frame lies at the top, 4 dots of 100 high.
    const QImage page = pdf->page(2, 100);
    QCOMPARE(page.size(), QSize(200, 100));
    QCOMPARE(page.pixelColor(100, 2), QColor(255, 0, 0));
    QCOMPARE(page.pixelColor(100, 6), QColor(255, 255, 255));
}

void tst_VxLabelPdf::platesArePagesOfOneBit()
{
    expect(batchOfPrices + QStringList { u"-o"_s, u"out/{sku}.{ink}.png"_s, u"--dpi"_s, u"300"_s }, 0);
    expect(batchOfPrices
            + QStringList { u"--pdf"_s, u"all.pdf"_s, u"--format"_s, u"pdf-plates"_s, u"--dpi"_s, u"300"_s },
        0);
    const PdfProbe *pdf = probe(u"all.pdf"_s);
    QCOMPARE(pdf->countPages(), 6);
    for (const QStringList &image : pdf->table(u"pdfimages"_s)) {
        QCOMPARE(image.mid(2, 7),
            QStringList({ u"image"_s, u"600"_s, u"300"_s, u"gray"_s, u"1"_s, u"1"_s, u"image"_s }));
        QCOMPARE(image.mid(12, 2), QStringList({ u"300"_s, u"300"_s }));
    }
    QVERIFY(!pdf->bytes().contains("DCTDecode"));
    const QStringList plates { u"A1.black"_s, u"A1.red"_s, u"B2.black"_s, u"B2.red"_s, u"C3.black"_s,
        u"C3.red"_s };
    for (qsizetype i = 0; i < plates.size(); ++i) {
        const QImage plate(path(u"out/%1.png"_s.arg(plates[i])));
        QCOMPARE(plate.size(), QSize(600, 300));
        QCOMPARE(pdf->dots(int(i) + 1, 300).convertToFormat(QImage::Format_RGB32),
            plate.convertToFormat(QImage::Format_RGB32));
    }
}

void tst_VxLabelPdf::rowsHaveFilesOfTheirOwn()
{
    expect(batchOfPrices + QStringList { u"-o"_s, u"out/{sku}.pdf"_s, u"--format"_s, u"pdf"_s }, 0);
    QCOMPARE(files(u"out"_s), QStringList({ u"A1.pdf"_s, u"B2.pdf"_s, u"C3.pdf"_s, u"manifest.jsonl"_s }));
    const PdfProbe *pdf = probe(u"out/B2.pdf"_s);
    QCOMPARE(pagesOf(*pdf), QStringList { u"Banana 22.00 EUR B2"_s });
    QCOMPARE(pdf->boxes(), QList<QSizeF>({ { 144.0, 72.0 } }));
}

void tst_VxLabelPdf::platesHaveFilesOfTheirOwn()
{
    const QStringList asPlates
        = batchOfPrices + QStringList { u"--rows"_s, u"2"_s, u"--format"_s, u"pdf-plates"_s, u"-o"_s };
    expect(asPlates + QStringList { u"each/{sku}.{ink}.pdf"_s }, 0);
    QCOMPARE(files(u"each"_s), QStringList({ u"B2.black.pdf"_s, u"B2.red.pdf"_s, u"manifest.jsonl"_s }));
    expect(asPlates + QStringList { u"both/{sku}.pdf"_s }, 0);
    QCOMPARE(files(u"both"_s), QStringList({ u"B2.pdf"_s, u"manifest.jsonl"_s }));
    expect(batchOfPrices + QStringList { u"-o"_s, u"out/{sku}.{ink}.png"_s }, 0);
    const QImage red = QImage(path(u"out/B2.red.png"_s)).convertToFormat(QImage::Format_RGB32);
    QCOMPARE(red.pixel(100, 2), 0xFF000000U); // in the frame
    QCOMPARE(probe(u"each/B2.red.pdf"_s)->countPages(), 1);
    QCOMPARE(m_probe->dots(1, 100).convertToFormat(QImage::Format_RGB32), red);
    QCOMPARE(probe(u"both/B2.pdf"_s)->countPages(), 2);
    QCOMPARE(m_probe->dots(2, 100).convertToFormat(QImage::Format_RGB32), red);
}

void tst_VxLabelPdf::rowsThatFailHaveNoPage_data()
{
    QTest::addColumn<QString>("format");
    QTest::addColumn<int>("pages");
    QTest::newRow("in colour") << u"pdf"_s << 3;
    QTest::newRow("plates") << u"pdf-plates"_s << 6;
}

void tst_VxLabelPdf::rowsThatFailHaveNoPage()
{
    QFETCH(QString, format);
    QFETCH(int, pages);
    write(u"prices.csv"_s, someFail);
    const ProgramResult result
        = run(batchOfPrices + QStringList { u"--pdf"_s, u"all.pdf"_s, u"--format"_s, format });
    QCOMPARE(result.code, 1);
    QCOMPARE(result.out, QByteArray("3 rows printed, 2 failed\n"));
    // The barcode is refused although no plate of it is made.
    QVERIFY2(result.err.contains("prices.csv:5: /items/3: ")
            && result.err.contains("the symbology does not take the text"),
        result.err);
    QCOMPARE(probe(u"all.pdf"_s)->countPages(), pages);
    if (format == u"pdf"_s)
        QCOMPARE(pagesOf(*m_probe),
            QStringList({ u"Apple 1.00 EUR A1"_s, u"Cherry 3.00 EUR C3"_s, u"Elder 5.00 EUR E5"_s }));
    const QByteArrayList lines = read(u"all.manifest.jsonl"_s).split('\n');
    QVERIFY2(lines[2].contains(R"("row":2,"status":"failed")"), lines[2]);
    const QByteArray third
        = pages == 3 ? R"("pages":{"first":2,"last":2},"row":3)" : R"("pages":{"first":3,"last":4},"row":3)";
    QVERIFY2(lines[3].contains(third), lines[3]);
}

void tst_VxLabelPdf::copiesArePages()
{
    write(u"a.vxl"_s, toJson(labelWith({ text(10, 10, u"${sku} no. ${#}"_s) })));
    write(u"prices.csv"_s, "sku,qty\nA,2\nB,0\nC,3\n");
    expect(batchOfPrices
            + QStringList { u"--data"_s, u"prices.csv"_s, u"--pdf"_s, u"all.pdf"_s, u"--copies-field"_s,
                u"qty"_s },
        0);
    QCOMPARE(pagesOf(*probe(u"all.pdf"_s)),
        QStringList({ u"A no. 1"_s, u"A no. 2"_s, u"C no. 3"_s, u"C no. 4"_s, u"C no. 5"_s }));
    // Those that are equal as well
    write(u"a.vxl"_s, toJson(labelWith({ text(10, 10, u"${sku}"_s) })));
    expect(batchOfPrices
            + QStringList { u"--data"_s, u"prices.csv"_s, u"--pdf"_s, u"all.pdf"_s, u"--copies-field"_s,
                u"qty"_s, u"--force"_s },
        0);
    QCOMPARE(pagesOf(*probe(u"all.pdf"_s)), QStringList({ u"A"_s, u"A"_s, u"C"_s, u"C"_s, u"C"_s }));
}

void tst_VxLabelPdf::copiesOfPlatesAreStoredOnce()
{
    write(u"prices.csv"_s, "sku,name,price\nA1,Apple,4\nB2,Banana,2\n");
    expect(batchOfPrices
            + QStringList { u"--pdf"_s, u"all.pdf"_s, u"--format"_s, u"pdf-plates"_s, u"--copies-field"_s,
                u"price"_s },
        0);
    QStringList objects;
    for (const QStringList &image : probe(u"all.pdf"_s)->table(u"pdfimages"_s))
        objects.append(image[10]);
    QCOMPARE(objects.size(), 6 * 2); // black and red of each copy
    QCOMPARE(objects[2], objects[0]);
    QCOMPARE(objects[7], objects[1]);
    QCOMPARE(QSet<QString>(objects.cbegin(), objects.cend()).size(), 4);
}

/// EAN-13 takes 12 digits: the number of the label makes it one more from the tenth on.
void tst_VxLabelPdf::noCopyOfARowThatFailsIsPrinted()
{
    QJsonObject ean = code(60, u"12345678901${#}"_s);
    ean[u"barcodeSymbol"_s] = 13;
    write(u"a.vxl"_s, toJson(labelWith({ text(10, 10, u"${sku} ${#}"_s), ean })));
    write(u"prices.csv"_s, "sku,qty\nA,8\nB,120\nC,1\n");
    for (const QString &format : { u"pdf"_s, u"pdf-plates"_s }) {
        const ProgramResult result = run(batchOfPrices
            + QStringList { u"--data"_s, u"prices.csv"_s, u"--pdf"_s, u"all.pdf"_s, u"--copies-field"_s,
                u"qty"_s, u"--force"_s, u"--format"_s, format, u"--rows"_s, u"1,2"_s });
        QCOMPARE(result.code, 1);
        QCOMPARE(result.out, QByteArray("1 row printed on 8 labels, 1 failed\n"));
        QCOMPARE(probe(u"all.pdf"_s)->countPages(), format == u"pdf"_s ? 8 : 16);
    }
}

void tst_VxLabelPdf::manifestsTellThePages()
{
    write(u"prices.csv"_s, "sku,name,price\nA1,Apple,2\nB2,Banana,1\n");
    expect(batchOfPrices
            + QStringList { u"--pdf"_s, u"all.pdf"_s, u"--copies-field"_s, u"price"_s, u"--key"_s, u"name"_s,
                u"--manifest"_s, u"record.jsonl"_s },
        0);
    const QByteArrayList lines = read(u"record.jsonl"_s).split('\n');
    QCOMPARE(lines.size(), 5);
    QVERIFY2(lines[0].contains(R"("format":"pdf")") && lines[0].contains(R"("pdf":"all.pdf")"), lines[0]);
    QVERIFY2(lines[1].contains(R"("key":"Apple","pages":{"first":1,"last":2},"row":1,"status":"printed")"),
        lines[1]);
    QVERIFY2(lines[2].contains(R"("key":"Banana","pages":{"first":3,"last":3},"row":2,"status":"printed")"),
        lines[2]);
    QVERIFY2(lines[3].contains(R"("rows":2)"), lines[3]);
}

void tst_VxLabelPdf::theSameTwiceGivesTheSameBytes_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::newRow("one") << QStringList { u"--pdf"_s, u"@/all.pdf"_s };
    QTest::newRow("one of plates") << QStringList { u"--pdf"_s, u"@/all.pdf"_s, u"--format"_s,
        u"pdf-plates"_s };
    QTest::newRow("each") << QStringList { u"-o"_s, u"@/{sku}.pdf"_s, u"--format"_s, u"pdf"_s };
    QTest::newRow("each by jobs") << QStringList { u"-o"_s, u"@/{sku}.pdf"_s, u"--format"_s, u"pdf"_s,
        u"--jobs"_s, u"3"_s };
}

void tst_VxLabelPdf::theSameTwiceGivesTheSameBytes()
{
    QFETCH(QStringList, arguments);
    expect(batchOfPrices + QStringList(arguments).replaceInStrings(u"@"_s, u"first"_s), 0);
    QTest::qWait(1100); // another second
    expect(batchOfPrices + QStringList(arguments).replaceInStrings(u"@"_s, u"second"_s), 0);
    QVERIFY(files(u"first"_s).size() >= 2);
    QVERIFY(contentsOf(u"first"_s) == contentsOf(u"second"_s));
}

void tst_VxLabelPdf::filesAreKeptUnlessForced()
{
    write(u"all.pdf"_s, "mine");
    const QStringList arguments = batchOfPrices + QStringList { u"--pdf"_s, u"all.pdf"_s };
    expect(arguments, 5, "vxlabel: all.pdf: exists already; give --force to replace it\n");
    QCOMPARE(read(u"all.pdf"_s), QByteArray("mine"));
    QVERIFY(!files().contains(u"all.manifest.jsonl"_s));
    expect(arguments + QStringList { u"--force"_s }, 0);
    QVERIFY(read(u"all.pdf"_s).startsWith("%PDF"));
    QVERIFY(QFile::remove(path(u"all.pdf"_s)));
    expect(arguments, 5,
        "vxlabel: ./all.manifest.jsonl: is there from an earlier batch; give --force to begin again\n");
    QVERIFY(!files().contains(u"all.pdf"_s));
}

/// Nor one of an earlier batch.
void tst_VxLabelPdf::aBatchOfNoLabelsLeavesNoPdf()
{
    write(u"all.pdf"_s, "earlier");
    write(u"prices.csv"_s, "sku,name,price\nA,b,none\n");
    const ProgramResult result = run(batchOfPrices + QStringList { u"--pdf"_s, u"all.pdf"_s, u"--force"_s });
    QCOMPARE(result.code, 1);
    QVERIFY2(result.err.endsWith("vxlabel: all.pdf: is not written, for no label is printed\n"), result.err);
    QVERIFY(!files().contains(u"all.pdf"_s));
    QVERIFY(read(u"all.manifest.jsonl"_s).contains("\"status\":\"failed\""));
}

void tst_VxLabelPdf::whatDoesNotEndLeavesNothing_data()
{
    QTest::addColumn<QByteArray>("table");
    QTest::addColumn<int>("code");
    QTest::newRow("stopped at a row") << QByteArray("sku,name,price\nA,b,1\nC,d,none\n") << 1;
    QTest::newRow("data that end in the middle") << QByteArray("sku,name,price\nA,b,1\n\"C,d,1\n") << 4;
}

void tst_VxLabelPdf::whatDoesNotEndLeavesNothing()
{
    QFETCH(QByteArray, table);
    QFETCH(int, code);
    write(u"prices.csv"_s, table);
    const QStringList before = files();
    const ProgramResult result
        = run(batchOfPrices + QStringList { u"--pdf"_s, u"all.pdf"_s, u"--on-error"_s, u"stop"_s });
    QCOMPARE(result.code, code);
    QCOMPARE(files(), before);
}

void tst_VxLabelPdf::interruptedBatchesLeaveNothing()
{
    QByteArray many = "sku,name,price\n";
    for (int i = 0; i < 40'000; ++i)
        many += "S,Article,1\n";
    write(u"prices.csv"_s, many);
    const QStringList before = files();
    const auto process = start(program(), batchOfPrices + QStringList { u"--pdf"_s, u"all.pdf"_s });
    QTRY_VERIFY_WITH_TIMEOUT(read(u"all.manifest.jsonl"_s).count('\n') > 5, 60'000);
    ::kill(pid_t(process->processId()), SIGINT);
    QVERIFY(process->waitForFinished(patience));
    QCOMPARE(process->exitStatus(), QProcess::NormalExit);
    QCOMPARE(process->exitCode(), 130);
    QCOMPARE(process->readAllStandardError(), QByteArray("vxlabel: interrupted\n"));
    QCOMPARE(files(), before);
}

void tst_VxLabelPdf::fullDisksLeaveNothing()
{
    const QStringList before = files();
    // Files of more than eight blocks of 512 bytes cannot be written.
    const auto process = start(u"/bin/sh"_s,
        { u"-c"_s, u"trap '' XFSZ; ulimit -f 8; exec \"$0\" batch a.vxl --pdf all.pdf"_s, program() });
    QVERIFY(process->waitForFinished(patience));
    QCOMPARE(process->exitCode(), 5);
    const QByteArray err = process->readAllStandardError();
    QVERIFY2(isOneLine(err) && err.contains("all.pdf") && err.contains("cannot be written: "), err);
    QCOMPARE(files(), before);
}

void tst_VxLabelPdf::wrongUsageIsExplained_data()
{
    QTest::addColumn<QStringList>("arguments"); // beside "batch a.vxl"
    QTest::addColumn<QByteArray>("err");
    const auto row = [](const char *name, const QStringList &arguments, const QByteArray &err) {
        QTest::newRow(name) << arguments << err;
    };
    const QStringList pdf { u"--pdf"_s, u"all.pdf"_s };
    row("no place to write to", {}, "--output or --pdf is required; see vxlabel batch --help");
    row("two places", pdf + QStringList { u"-o"_s, u"{sku}.pdf"_s },
        "--output excludes --pdf; see vxlabel batch --help");
    row("a name of something else", { u"--pdf"_s, u"a.vxl"_s, u"--force"_s },
        "a.vxl: the output is a PDF; let its name end in .pdf");
    row("the manifest", pdf + QStringList { u"--manifest"_s, u"./all.pdf"_s },
        "all.pdf: cannot be the manifest as well; choose another name for it");
    row("pictures in a PDF", pdf + QStringList { u"--format"_s, u"png"_s },
        "--pdf does not write this format; give --format pdf or --format pdf-plates, or leave it out");
    row("several processes", pdf + QStringList { u"--jobs"_s, u"2"_s },
        "one PDF is written by one process; leave out --jobs and --shard, or write a PDF for each row with "
        "-o");
    row("a share", pdf + QStringList { u"--shard"_s, u"0/2"_s },
        "one PDF is written by one process; leave out --jobs and --shard, or write a PDF for each row with "
        "-o");
    row("going on", pdf + QStringList { u"--resume"_s },
        "one PDF is written as a whole; give --force to begin again, or write a PDF for each row with -o");
    row("failed rows only", pdf + QStringList { u"--only-failed"_s },
        "one PDF is written as a whole; give --force to begin again, or write a PDF for each row with -o");
    row("negative colours", pdf + QStringList { u"--negative"_s },
        "--negative changes plates, and a PDF in colour has none; give --format pdf-plates");
    row("overprint of colours", pdf + QStringList { u"--overprint"_s },
        "--overprint changes plates, and a PDF in colour has none; give --format pdf-plates");
    row("dots of colours", pdf + QStringList { u"--dither"_s, u"ordered"_s },
        "--dither changes plates, and a PDF in colour has none; give --format pdf-plates");
    row("sheets of pictures", { u"-o"_s, u"{sku}.{ink}.png"_s, u"--nup"_s, u"2x2"_s },
        "sheets are pages of one PDF; give --pdf instead of --output");
    row("names of PDFs for pictures", { u"-o"_s, u"{sku}.{ink}.pdf"_s },
        "a.vxl: \"{sku}.{ink}.pdf\" names PDFs; give --format pdf or --format pdf-plates");
    row("names of pictures for PDFs", { u"-o"_s, u"{sku}.png"_s, u"--format"_s, u"pdf"_s },
        "a.vxl: \"{sku}.png\" names no PDFs; let the names end in .pdf");
    row("an ink of colours", { u"-o"_s, u"{sku}.{ink}.pdf"_s, u"--format"_s, u"pdf"_s },
        "a.vxl: \"{sku}.{ink}.pdf\" asks for the ink, but a PDF in colour has all of them; leave out {ink}, "
        "or give --format pdf-plates");
}

void tst_VxLabelPdf::wrongUsageIsExplained()
{
    QFETCH(QStringList, arguments);
    QFETCH(QByteArray, err);
    const QStringList before = files();
    expect(batchOfPrices + arguments, 2, "vxlabel: " + err + '\n');
    QCOMPARE(files(), before);
}

void tst_VxLabelPdf::rowsOfTheirOwnAreResumed()
{
    const QStringList arguments
        = batchOfPrices + QStringList { u"-o"_s, u"out/{sku}.pdf"_s, u"--format"_s, u"pdf"_s };
    expect(arguments, 0);
    const auto whole = contentsOf(u"out"_s);
    write(u"out/B2.pdf"_s, "damaged");
    const ProgramResult resumed = run(arguments + QStringList { u"--resume"_s });
    QCOMPARE(resumed.out, QByteArray("1 row printed, 2 kept\n"));
    QVERIFY(contentsOf(u"out"_s) == whole);
}

void tst_VxLabelPdf::memoryIsKeptFromPageToPage()
{
    const auto faultsOf = [this](int rows) {
        QByteArray data = "sku,name,price\n";
        for (int row = 0; row < rows; ++row)
            data += "A" + QByteArray::number(row) + ",Apple,1\n";
        write(u"prices.csv"_s, data);
        const long before = pageFaults();
        expect(batchOfPrices + QStringList { u"--pdf"_s, u"all.pdf"_s, u"--force"_s }, 0);
        return pageFaults() - before;
    };
    const long few = faultsOf(20);
    const double each = double(faultsOf(220) - few) / 200.0;
    QVERIFY2(each < mostPageFaults, qPrintable(u"%1 page faults for each page"_s.arg(each)));
}

QTEST_MAIN(tst_VxLabelPdf)
#include "tst_vxlabelpdf.moc"
