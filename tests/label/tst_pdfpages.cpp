// SPDX-License-Identifier: BSD-3-Clause
#include "label/atomicfile.h"
#include "tests/label/pdfprobe.h"
#include "tests/label/printing.h"

#include <QBuffer>
#include <QFile>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

#include <cmath>
#include <limits>
#include <random>
#include <unistd.h>

using namespace Qt::StringLiterals;
using namespace Printing;

namespace {

constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

/// A disk that has room for some bytes.
class SmallDisk : public QIODevice
{
public:
    explicit SmallDisk(qint64 room)
        : m_room(room)
    {
        open(QIODevice::WriteOnly | QIODevice::Unbuffered);
    }

protected:
    qint64 readData(char * /*data*/, qint64 /*size*/) override { return -1; }
    qint64 writeData(const char * /*data*/, qint64 size) override
    {
        const qint64 taken = std::min(size, m_room);
        m_room -= taken;
        if (taken > 0)
            return taken;
        setErrorString(u"the disk is full"_s);
        return -1;
    }

private:
    qint64 m_room;
};

/// A plate of random dots, with anything behind the last dot of each row.
QImage randomPlate(QSize dots)
{
    QImage plate(dots, QImage::Format_Mono);
    plate.setColorTable({ 0xFFFFFFFF, 0xFF000000 });
    std::mt19937 random(7);
    for (int y = 0; y < plate.height(); ++y) {
        for (qsizetype i = 0; i < plate.bytesPerLine(); ++i)
            plate.scanLine(y)[i] = uchar(random());
    }
    return plate;
}

/// Nothing if a picture is black where a plate prints, and white elsewhere; otherwise the first other dot.
QString otherDots(const QImage &plate, const QImage &seen)
{
    if (plate.size() != seen.size())
        return u"%1 x %2 dots"_s.arg(seen.width()).arg(seen.height());
    return difference(plate, [&](int x, int y) { return seen.pixel(x, y) == 0xFF000000; });
}

LabelDocument blackSquare()
{
    LabelDocument document = blackAndRed({ 20, 10 });
    addRectangle(document, { 10, 10, 50, 50 }, { black }); // 1 mm to 6 mm
    return document;
}

qint64 memoryInBytes()
{
    QFile file(u"/proc/self/statm"_s);
    if (!file.open(QIODevice::ReadOnly))
        return 0;
    return file.readAll().split(' ').value(1).toLongLong() * sysconf(_SC_PAGESIZE);
}

/// The bytes of a file in which table rows and "startxref" must tell where objects and the table are.
QString tableMistake(const QByteArray &pdf)
{
    const qsizetype table = pdf.lastIndexOf("\nxref\n0 ") + 1;
    const QByteArrayList lines = pdf.sliced(table).split('\n');
    for (qsizetype i = 3; i < lines.size() && lines[i].size() == 19; ++i) {
        const qsizetype at = lines[i].first(10).toLongLong();
        if (!pdf.sliced(at).startsWith(QByteArray::number(i - 2) + " 0 obj\n"))
            return u"object %1 is not at %2"_s.arg(i - 2).arg(at);
    }
    const qsizetype noted = lines.value(lines.indexOf("startxref") + 1).toLongLong();
    return noted == table ? QString() : u"the table is at %1, not %2"_s.arg(table).arg(noted);
}

} // namespace

/// PDF files: their pages, plates and bytes.
class tst_PdfPages : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void pagesHaveTheExactSize_data();
    void pagesHaveTheExactSize();
    void veryLongPagesHaveLargerUnits();
    void pagesAreCounted();
    void platesComeBackDotByDot_data();
    void platesComeBackDotByDot();
    void whatFollowsTheLastDotIsNoPartOfAPlate();
    void sheetsHoldLabelsWhereTheyArePlaced();
    void nothingShowsBeyondALabel();
    void linesAreAsWideAsAsked();
    void platesLieOnSheets();
    void paperIsPaintedWhenAsked();

    void theFileTellsAboutItself();
    void theDateIsTheCallers();
    void theTableOfObjectsIsRight();
    void equalInputGivesEqualBytesInAnyProcess();
    void memoryStaysFlat();

    void fullDisksAreReported_data();
    void fullDisksAreReported();
    void theDeviceTellsItsFile();
    void refusesPages_data();
    void refusesPages();
    void refusesWhatIsNoPlate();
    void refusesDocumentsWithProblems();
    void refusesToPaintWithoutAPage();
    void refusesMoreThanTheWholeFile();
};

void tst_PdfPages::init()
{
    QTest::failOnWarning(QRegularExpression(u".*"_s));
}

void tst_PdfPages::pagesHaveTheExactSize_data()
{
    QTest::addColumn<QSizeF>("millimetres");
    QTest::addColumn<QSizeF>("points"); // millimetres / 25.4 * 72
    QTest::addColumn<QString>("shown"); // by pdfinfo

    QTest::newRow("label") << QSizeF(100, 50) << QSizeF(283.464567, 141.732283) << u"283.465 x 141.732 pts"_s;
    QTest::newRow("A4") << QSizeF(210, 297) << QSizeF(595.275591, 841.889764)
                        << u"595.276 x 841.89 pts (A4)"_s;
    QTest::newRow("odd") << QSizeF(33.3, 17.7) << QSizeF(94.393701, 50.173228) << u"94.3937 x 50.1732 pts"_s;
    QTest::newRow("inch") << QSizeF(25.4, 50.8) << QSizeF(72, 144) << u"72 x 144 pts"_s;
    QTest::newRow("tiny") << QSizeF(0.1, 0.1) << QSizeF(0.283465, 0.283465) << u"0.283464 x 0.283464 pts"_s;
}

void tst_PdfPages::pagesHaveTheExactSize()
{
    QFETCH(QSizeF, millimetres);
    QFETCH(QSizeF, points);
    QFETCH(QString, shown);

    LabelDocument document;
    document.setPageSize(millimetres);
    PdfProbe pdf;
    pdf.write(document);
    QCOMPARE(pdf.boxes().size(), 1);
    QVERIFY(std::abs(pdf.boxes()[0].width() - points.width()) < 2e-6);
    QVERIFY(std::abs(pdf.boxes()[0].height() - points.height()) < 2e-6);
    QVERIFY2(pdf.ask(u"pdfinfo"_s).contains(shown), qPrintable(pdf.ask(u"pdfinfo"_s)));
}

void tst_PdfPages::veryLongPagesHaveLargerUnits()
{
    LabelDocument banner;
    banner.setPageSize({ 10'000, 200 });
    PdfProbe pdf;
    pdf.write(banner);
    static const QRegularExpression unit(u"/UserUnit ([0-9.]+)"_s);
    const double points = unit.match(QString::fromLatin1(pdf.bytes())).captured(1).toDouble();
    QCOMPARE(pdf.boxes().size(), 1);
    QVERIFY(pdf.boxes()[0].width() <= 14'400.0); // what a page may have of any unit
    QVERIFY(std::abs(pdf.boxes()[0].width() * points - 28'346.456693) < 0.01);
    QVERIFY(std::abs(pdf.boxes()[0].height() * points - 566.929134) < 0.01);
}

void tst_PdfPages::pagesAreCounted()
{
    const LabelDocument document = blackSquare();
    PdfProbe pdf;
    pdf.write([&](PdfPages &pages, Problems &problems) {
        return pages.count() == 0 && pages.addPage(document, problems)
            && pages.beginPage({ 30, 30 }, problems) && pages.addPlate(randomPlate({ 9, 9 }), 100, problems)
            && pages.count() == 3;
    });
    QCOMPARE(pdf.countPages(), 3);
    QCOMPARE(pdf.boxes().size(), 3);
}

void tst_PdfPages::platesComeBackDotByDot_data()
{
    QTest::addColumn<QSize>("dots");
    QTest::addColumn<double>("dpi");

    QTest::newRow("100 mm x 50 mm at 300 dpi") << QSize(1181, 591) << 300.0;
    QTest::newRow("33.3 mm x 17.7 mm at 203 dpi") << QSize(266, 141) << 203.0;
    QTest::newRow("a whole number of bytes") << QSize(640, 200) << 600.0;
    QTest::newRow("203.2 dpi") << QSize(801, 403) << 203.2;
    QTest::newRow("one dot") << QSize(1, 1) << 300.0;
    QTest::newRow("A6 at 1200 dpi") << QSize(4961, 6992) << 1200.0;
}

void tst_PdfPages::platesComeBackDotByDot()
{
    QFETCH(QSize, dots);
    QFETCH(double, dpi);

    const QImage plate = randomPlate(dots);
    PdfProbe pdf;
    pdf.write([&](PdfPages &pages, Problems &problems) { return pages.addPlate(plate, dpi, problems); });
    QCOMPARE(otherDots(plate, pdf.dots(1, dpi)), QString());

    pdf.ask(u"pdfimages"_s, { u"-png"_s }, { pdf.path(u"image"_s) });
    QCOMPARE(otherDots(plate, QImage(pdf.path(u"image-000.png"_s))), QString());
    const QList<QStringList> images = pdf.table(u"pdfimages"_s);
    QCOMPARE(images.size(), 1);
    QCOMPARE(images[0].mid(2, 6),
        QStringList({ u"image"_s, QString::number(dots.width()), QString::number(dots.height()), u"gray"_s,
            u"1"_s, u"1"_s }));
}

void tst_PdfPages::whatFollowsTheLastDotIsNoPartOfAPlate()
{
    const auto bytesOf = [](uchar padding) {
        QImage plate(12, 1, QImage::Format_Mono);
        plate.setColorTable({ 0xFFFFFFFF, 0xFF000000 });
        plate.scanLine(0)[0] = 0xA5;
        plate.scanLine(0)[1] = uchar(0xC0 | padding); // of eight bits, four are dots
        PdfProbe pdf;
        pdf.write([&](PdfPages &pages, Problems &problems) { return pages.addPlate(plate, 300, problems); });
        return pdf.bytes();
    };
    QVERIFY(bytesOf(0x0) == bytesOf(0xF));
}

void tst_PdfPages::sheetsHoldLabelsWhereTheyArePlaced()
{
    const LabelDocument label = blackSquare();
    PdfProbe pdf;
    pdf.write([&](PdfPages &pages, Problems &problems) {
        return pages.beginPage({ 60, 30 }, problems) && pages.place(label, { 5, 5 }, problems)
            && pages.place(label, { 32.5, 12 }, problems);
    });
    // At 254 dpi a millimetre is ten pixels: squares at 6 mm and at 33.5 mm, 13 mm.
    const QImage sheet = pdf.page(1, 254.0);
    QCOMPARE(sheet.size(), QSize(600, 300));
    const auto isBlack = [](int x, int y) {
        return QRect(60, 60, 50, 50).contains(x, y) || QRect(335, 130, 50, 50).contains(x, y);
    };
    int others = 0;
    for (int y = 0; y < sheet.height(); ++y) {
        for (int x = 0; x < sheet.width(); ++x)
            others += (qGray(sheet.pixel(x, y)) < 128) != isBlack(x, y) ? 1 : 0;
    }
    QCOMPARE(others, 0);
}

void tst_PdfPages::nothingShowsBeyondALabel()
{
    LabelDocument label = blackAndRed({ 10, 10 });
    addRectangle(label, { -50, -50, 300, 300 }, { black });
    PdfProbe pdf;
    pdf.write([&](PdfPages &pages, Problems &problems) {
        return pages.beginPage({ 30, 30 }, problems) && pages.place(label, { 10, 10 }, problems);
    });
    const QImage sheet = pdf.page(1, 254.0);
    for (const QPoint dot : { QPoint(101, 101), QPoint(198, 101), QPoint(101, 198), QPoint(198, 198) })
        QCOMPARE(sheet.pixel(dot), 0xFF000000U);
    for (const QPoint dot : { QPoint(98, 150), QPoint(201, 150), QPoint(150, 98), QPoint(150, 201) })
        QCOMPARE(sheet.pixel(dot), 0xFFFFFFFFU);
}

void tst_PdfPages::linesAreAsWideAsAsked()
{
    PdfProbe pdf;
    pdf.write([&](PdfPages &pages, Problems &problems) {
        return pages.beginPage({ 20, 20 }, problems)
            && pages.placeLine({ 2, 10, 12, 10 }, PdfPages::Hairline, problems);
    });
    // At 2880 dpi a quarter of a point is ten pixels, and 2 mm to 12 mm are 226.8 to 1360.6.
    const QImage page = pdf.page(1, 2880.0);
    int rows = 0;
    for (int y = 0; y < page.height(); ++y)
        rows += qGray(page.pixel(800, y)) < 128 ? 1 : 0;
    QVERIFY2(rows == 10 || rows == 11, qPrintable(QString::number(rows)));
    QCOMPARE(page.pixel(800, 1134), 0xFF000000U); // 10 mm
    QCOMPARE(page.pixel(222, 1134), 0xFFFFFFFFU); // ends are not longer than asked
    QCOMPARE(page.pixel(230, 1134), 0xFF000000U);
    QCOMPARE(page.pixel(1357, 1134), 0xFF000000U);
    QCOMPARE(page.pixel(1365, 1134), 0xFFFFFFFFU);
}

void tst_PdfPages::platesLieOnSheets()
{
    QImage plate(20, 10, QImage::Format_Mono); // 2 mm x 1 mm at 254 dpi
    plate.setColorTable({ 0xFFFFFFFF, 0xFF000000 });
    plate.fill(1);
    PdfProbe pdf;
    pdf.write([&](PdfPages &pages, Problems &problems) {
        return pages.beginPage({ 10, 10 }, problems) && pages.placePlate(plate, 254.0, { 3, 5 }, problems);
    });
    const QImage sheet = pdf.dots(1, 254.0);
    QCOMPARE(sheet.size(), QSize(100, 100));
    for (int y = 0; y < 100; ++y) {
        for (int x = 0; x < 100; ++x)
            QCOMPARE(sheet.pixel(x, y) == 0xFF000000U, QRect(30, 50, 20, 10).contains(x, y));
    }
}

void tst_PdfPages::paperIsPaintedWhenAsked()
{
    LabelDocument label = blackSquare();
    label.setPaper(QColor(255, 209, 0));
    PdfProbe pdf;
    pdf.write([&](PdfPages &pages, Problems &problems) {
        return pages.addPage(label, problems) && pages.addPage(label, problems, PdfPages::Paper::Painted);
    });
    QCOMPARE(pdf.page(1, 254.0).pixel(150, 50), 0xFFFFFFFFU);
    QCOMPARE(pdf.page(2, 254.0).pixel(150, 50), qRgb(255, 209, 0));
    QCOMPARE(pdf.page(2, 254.0).pixel(30, 30), 0xFF000000U);
}

void tst_PdfPages::theFileTellsAboutItself()
{
    const LabelDocument label = blackSquare();
    PdfProbe pdf;
    pdf.write([&](PdfPages &pages, Problems &problems) { return pages.addPage(label, problems); },
        { u"Étiquettes (1)"_s, u"vxlabel 1.0"_s });
    const QString about = pdf.ask(u"pdfinfo"_s);
    static const QRegularExpression title(u"Title: +Étiquettes \\(1\\)\n"_s);
    static const QRegularExpression creator(u"Creator: +vxlabel 1\\.0\n"_s);
    QVERIFY2(about.contains(title) && about.contains(creator), qPrintable(about));
    QVERIFY2(!about.contains(u"CreationDate"_s), qPrintable(about));
}

void tst_PdfPages::theDateIsTheCallers()
{
    const LabelDocument label = blackSquare();
    // 09:30 in a zone two hours ahead is 07:30.
    const QDateTime when(QDate(2026, 3, 4), QTime(9, 30, 5), Qt::OffsetFromUTC, 7200);
    PdfProbe pdf;
    pdf.write([&](PdfPages &pages, Problems &problems) { return pages.addPage(label, problems); },
        { {}, {}, when });
    QVERIFY(pdf.bytes().contains("\n/CreationDate (D:20260304073005Z)\n"));
    QCOMPARE(tableMistake(pdf.bytes()), QString());
}

void tst_PdfPages::theTableOfObjectsIsRight()
{
    const LabelDocument label = blackSquare();
    PdfProbe pdf;
    pdf.write([&](PdfPages &pages, Problems &problems) {
        bool done = true;
        for (int i = 1; i <= 50 && done; ++i)
            done = pages.beginPage({ i * 7.3, 500.0 / i }, problems) && pages.place(label, {}, problems);
        return done;
    });
    QCOMPARE(tableMistake(pdf.bytes()), QString());
    QCOMPARE(pdf.countPages(), 50);
}

void tst_PdfPages::equalInputGivesEqualBytesInAnyProcess()
{
    // Four fonts, whose order in a hash table is another in almost every process.
    const QString label = QStringLiteral(VX_SOURCE_DIR "/examples/address-label.vxl");
    const QTemporaryDir folder;
    QByteArray first;
    for (int i = 0; i < 6; ++i) {
        QProcess process;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.remove(u"QT_HASH_SEED"_s);
        environment.insert(u"TZ"_s, i % 2 ? u"Asia/Kolkata"_s : u"UTC"_s);
        process.setProcessEnvironment(environment);
        const QString path = folder.filePath(QString::number(i));
        process.start(QStringLiteral(VX_WRITEPDF), { label, path });
        QVERIFY(process.waitForFinished());
        QCOMPARE(process.readAllStandardError(), QByteArray());
        QFile file(path);
        QVERIFY(file.open(QIODevice::ReadOnly));
        const QByteArray bytes = file.readAll();
        if (i == 0)
            first = bytes;
        QVERIFY(bytes.size() > 10'000);
        QVERIFY(bytes == first);
        QTest::qWait(i == 0 ? 1100 : 0); // the time of day goes on
    }
}

void tst_PdfPages::memoryStaysFlat()
{
    const LabelDocument label = blackSquare();
    SmallDisk large(std::numeric_limits<qint64>::max());
    PdfPages pages(large);
    Problems problems;
    const auto add = [&](int count) {
        bool done = true;
        for (int i = 0; i < count && done; ++i)
            done = pages.addPage(label, problems) && pages.addPlate(randomPlate({ 300, 300 }), 300, problems);
        return done;
    };
    QVERIFY(add(200));
    const qint64 before = memoryInBytes();
    QVERIFY(add(2000));
    const qint64 growth = memoryInBytes() - before;
    QVERIFY(before > 0);
    // A plate has 11,400 bytes; 4,000 pages may leave 500 bytes each.
    QVERIFY2(growth < 2'000'000, qPrintable(QString::number(growth)));
    QVERIFY(pages.finish(problems));
}

void tst_PdfPages::fullDisksAreReported_data()
{
    QTest::addColumn<double>("share"); // of the bytes that the file has
    QTest::addColumn<bool>("fits");

    QTest::newRow("no room") << 0.0 << false;
    QTest::newRow("half") << 0.5 << false;
    QTest::newRow("all but the last byte") << 1.0 << false;
    QTest::newRow("just enough") << 1.0 << true;
}

void tst_PdfPages::fullDisksAreReported()
{
    QFETCH(double, share);
    QFETCH(bool, fits);

    constexpr int count = 30;
    const QImage plate = randomPlate({ 300, 300 });
    PdfProbe pdf;
    pdf.write([&](PdfPages &pages, Problems &problems) {
        bool done = true;
        for (int i = 0; i < count && done; ++i)
            done = pages.addPlate(plate.copy(), 300, problems);
        return done;
    });

    const auto room = qint64(share * double(pdf.bytes().size())) - (share == 1.0 && !fits ? 1 : 0);
    SmallDisk disk(room);
    PdfPages pages(disk);
    Problems problems;
    bool done = true;
    for (int i = 0; i < count && done; ++i)
        done = pages.addPlate(plate.copy(), 300, problems);
    done = done && pages.finish(problems);
    QCOMPARE(done, fits);
    QCOMPARE(problems.size(), fits ? 0 : 1);
    QCOMPARE(problems.value(0).text(), fits ? QString() : u"cannot be written: the disk is full"_s);
}

void tst_PdfPages::theDeviceTellsItsFile()
{
    QFile full(u"/dev/full"_s);
    QVERIFY(full.open(QIODevice::WriteOnly | QIODevice::Unbuffered));
    PdfPages pages(full);
    Problems problems;
    QVERIFY(pages.addPage(blackSquare(), problems));
    QVERIFY(!pages.finish(problems));
    QCOMPARE(problems.size(), 1);
    QCOMPARE(problems[0].text(), u"/dev/full: cannot be written: No space left on device; make room there"_s);
}

void tst_PdfPages::refusesPages_data()
{
    QTest::addColumn<QSizeF>("size");
    QTest::addColumn<QString>("what");

    QTest::newRow("nothing") << QSizeF(0, 10) << u"a page of 0 mm x 10 mm is out of range"_s;
    QTest::newRow("negative") << QSizeF(10, -1) << u"a page of 10 mm x -1 mm is out of range"_s;
    QTest::newRow("too long") << QSizeF(10000.5, 10) << u"a page of 10000.5 mm x 10 mm is out of range"_s;
    QTest::newRow("no number") << QSizeF(10, notANumber) << u"a page of 10 mm x nan mm is out of range"_s;
}

void tst_PdfPages::refusesPages()
{
    QFETCH(QSizeF, size);
    QFETCH(QString, what);

    QBuffer buffer;
    QVERIFY(buffer.open(QIODevice::WriteOnly));
    PdfPages pages(buffer);
    Problems problems;
    QVERIFY(!pages.beginPage(size, problems));
    QCOMPARE(problems.size(), 1);
    QCOMPARE(problems[0].what, what);
    QCOMPARE(problems[0].advice, u"use sides from 0.1 to 10000 mm"_s);
    QCOMPARE(pages.count(), 0);
    // What follows is as if nothing had been.
    QVERIFY(pages.addPage(blackSquare(), problems));
    QVERIFY(pages.finish(problems));
    PdfProbe pdf;
    pdf.take(buffer.data());
    QCOMPARE(pdf.countPages(), 1);
}

void tst_PdfPages::refusesWhatIsNoPlate()
{
    QBuffer buffer;
    QVERIFY(buffer.open(QIODevice::WriteOnly));
    PdfPages pages(buffer);
    for (const QImage &image : { QImage(), QImage(8, 8, QImage::Format_RGB32),
             QImage(8, 8, QImage::Format_Indexed8), QImage(8, 8, QImage::Format_MonoLSB) }) {
        Problems problems;
        QVERIFY(!pages.addPlate(image, 300.0, problems));
        QCOMPARE(problems.size(), 1);
        QCOMPARE(problems[0].text(), u"the picture is no plate of one bit per dot"_s);
    }
    for (const double dpi : { 0.0, -300.0, 9.9, 9601.0, notANumber }) {
        Problems problems;
        QVERIFY(!pages.addPlate(randomPlate({ 8, 8 }), dpi, problems));
        QCOMPARE(problems.size(), 1);
        QCOMPARE(problems[0].advice, u"use 10 to 9600 dpi"_s);
    }
    QCOMPARE(pages.count(), 0);
}

void tst_PdfPages::refusesDocumentsWithProblems()
{
    LabelDocument label = blackSquare();
    label.setInks({});
    QBuffer buffer;
    QVERIFY(buffer.open(QIODevice::WriteOnly));
    PdfPages pages(buffer);
    Problems problems;
    QVERIFY(!pages.addPage(label, problems));
    QCOMPARE(pages.count(), 0);
    QVERIFY(pages.beginPage({ 10, 10 }, problems));
    QVERIFY(!pages.place(label, {}, problems));
    QCOMPARE(problems.size(), 2);
    QCOMPARE(problems[0].where, u"/inks"_s);
    QCOMPARE(problems[1].where, u"/inks"_s);
}

void tst_PdfPages::refusesToPaintWithoutAPage()
{
    QBuffer buffer;
    QVERIFY(buffer.open(QIODevice::WriteOnly));
    PdfPages pages(buffer);
    Problems problems;
    QVERIFY(!pages.place(blackSquare(), {}, problems));
    QVERIFY(!pages.placePlate(randomPlate({ 8, 8 }), 300, {}, problems));
    QVERIFY(!pages.placeLine({ 0, 0, 1, 1 }, 1.0, problems));
    QVERIFY(!pages.finish(problems));
    QCOMPARE(problems.size(), 4);
    for (const Problem &problem : std::as_const(problems))
        QCOMPARE(problem.text(), u"no page has been begun"_s);
    QCOMPARE(buffer.size(), 0);
}

void tst_PdfPages::refusesMoreThanTheWholeFile()
{
    QBuffer buffer;
    QVERIFY(buffer.open(QIODevice::WriteOnly));
    PdfPages pages(buffer);
    Problems problems;
    QVERIFY(pages.addPage(blackSquare(), problems));
    QVERIFY(pages.finish(problems));
    const qint64 size = buffer.size();
    QVERIFY(!pages.addPage(blackSquare(), problems));
    QVERIFY(!pages.addPlate(randomPlate({ 8, 8 }), 300, problems));
    QVERIFY(!pages.place(blackSquare(), {}, problems));
    QVERIFY(!pages.finish(problems));
    QCOMPARE(problems.size(), 4);
    for (const Problem &problem : std::as_const(problems))
        QCOMPARE(problem.text(), u"the file is complete"_s);
    QCOMPARE(buffer.size(), size);
}

QTEST_MAIN(tst_PdfPages)
#include "tst_pdfpages.moc"
