// SPDX-License-Identifier: BSD-3-Clause
#include "tests/apps/batchlabels.h"
#include "tests/apps/programfolder.h"
#include "tests/label/pdfprobe.h"

#include <QImage>
#include <QRegularExpression>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace BatchLabels;

namespace {

bool isBlack(const QImage &page, int x, int y)
{
    return qGray(page.pixel(x, y)) == 0;
}

/// The smallest rectangle with all black dots of an area.
QRect blackIn(const QImage &page, const QRect &area)
{
    QRect found;
    for (int y = area.top(); y <= area.bottom(); ++y) {
        for (int x = area.left(); x <= area.right(); ++x) {
            if (isBlack(page, x, y))
                found |= QRect(x, y, 1, 1);
        }
    }
    return found;
}

qint64 countBlack(const QImage &page)
{
    qint64 count = 0;
    for (int y = 0; y < page.height(); ++y) {
        for (int x = 0; x < page.width(); ++x)
            count += isBlack(page, x, y) ? 1 : 0;
    }
    return count;
}

/// Whether two rectangles are the same but for a dot at each edge, to which coordinates are rounded.
bool isNear(const QRect &left, const QRect &right)
{
    return std::abs(left.left() - right.left()) <= 1 && std::abs(left.top() - right.top()) <= 1
        && std::abs(left.right() - right.right()) <= 1 && std::abs(left.bottom() - right.bottom()) <= 1;
}

QByteArray show(const QRect &rect)
{
    return QString(u"%1, %2, %3 x %4"_s)
        .arg(rect.x())
        .arg(rect.y())
        .arg(rect.width())
        .arg(rect.height())
        .toUtf8();
}

QByteArray rowsOf(int count)
{
    QByteArray table = "sku\n";
    for (int i = 1; i <= count; ++i)
        table += 'S' + QByteArray::number(i) + '\n';
    return table;
}

} // namespace

/// Labels that fill sheets.
class tst_VxLabelSheets : public QObject, private ProgramFolder
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void labelsLieWhereTheyAreAsked_data();
    void labelsLieWhereTheyAreAsked();
    void rowsFillCellsInOrder();
    void copiesFillCells();
    void rowsThatFailTakeNoCell();
    void platesFillASheetOfEachInk();
    void platesLieOnWholeDots();
    void cropMarksAreInLineWithTheEdges();
    void nothingReachesOtherLabels();
    void sheetsHaveTheirSize_data();
    void sheetsHaveTheirSize();
    void wrongUsageIsExplained_data();
    void wrongUsageIsExplained();

private:
    /// Prints rows with some arguments, and takes the PDF.
    void print(const QStringList &arguments);
    /// A page at 254 dpi, which are 10 dots for each millimetre.
    [[nodiscard]] QImage page(int number) const { return m_probe->dots(number, 254); }

    std::unique_ptr<PdfProbe> m_probe;
};

void tst_VxLabelSheets::init()
{
    renew();
    // All of 50.8 mm x 25.4 mm is black, but for the frame at the top.
    write(u"a.vxl"_s, toJson(labelWith({ rectangle(2, QRect(0, 4, 200, 96), u"#000000"_s) })));
    write(u"rows.csv"_s, rowsOf(3));
}

void tst_VxLabelSheets::print(const QStringList &arguments)
{
    expect(QStringList { u"batch"_s, u"a.vxl"_s, u"--data"_s, u"rows.csv"_s, u"--pdf"_s, u"all.pdf"_s,
               u"--force"_s }
            + arguments,
        0);
    m_probe = std::make_unique<PdfProbe>();
    m_probe->take(read(u"all.pdf"_s));
}

void tst_VxLabelSheets::labelsLieWhereTheyAreAsked_data()
{
    QTest::addColumn<QString>("arguments");
    QTest::addColumn<QList<QRect>>("expected"); // the labels of the first page, in tenths of a millimetre
    const auto row = [](const char *name, const QString &arguments, const QList<QRect> &expected) {
        QTest::newRow(name) << arguments << expected;
    };
    row("from the margin", u"--nup 3x8 --gap 2mm --margin 10mm"_s,
        { { 100, 100, 508, 254 }, { 628, 100, 508, 254 }, { 1156, 100, 508, 254 } });
    // The fifth of 3 x 8 is the second of the second row.
    row("from the fifth cell", u"--nup 3x8 --gap 2mm --margin 10mm --start 5"_s,
        { { 628, 374, 508, 254 }, { 1156, 374, 508, 254 }, { 100, 648, 508, 254 } });
    row("on the last cell of the first sheet", u"--nup 3x8 --gap 2mm --margin 10mm --start 24"_s,
        { { 1156, 2018, 508, 254 } });
    row("two directions", u"--nup 2x8 --gap 0.5in,4mm --margin 20mm,30mm"_s,
        { { 200, 300, 508, 254 }, { 835, 300, 508, 254 }, { 200, 594, 508, 254 } });
    row("no gap", u"--nup 2x2 --margin 0"_s,
        { { 0, 0, 508, 254 }, { 508, 0, 508, 254 }, { 0, 254, 508, 254 } });
    // (210 - 2 * 50.8 - 4) / 2 = 52.2 and (297 - 2 * 25.4 - 4) / 2 = 121.1
    row("in the middle", u"--nup 2x2 --gap 4mm"_s,
        { { 522, 1211, 508, 254 }, { 1070, 1211, 508, 254 }, { 522, 1505, 508, 254 } });
    // 4 columns and 11 rows, of which are left 6.8 mm and 17.6 mm
    row("as many as fit", u"--sheet A4"_s,
        { { 34, 88, 508, 254 }, { 542, 88, 508, 254 }, { 1050, 88, 508, 254 } });
    row("turned", u"--nup 2x2 --margin 10mm --gap 1mm --rotate 90"_s,
        { { 100, 100, 254, 508 }, { 364, 100, 254, 508 }, { 100, 618, 254, 508 } });
    row("dots of 200 dpi", u"--nup 2x2 --margin 100dot --gap 40dot,0dot --dpi 200"_s,
        { { 127, 127, 508, 254 }, { 686, 127, 508, 254 }, { 127, 381, 508, 254 } });
}

void tst_VxLabelSheets::labelsLieWhereTheyAreAsked()
{
    QFETCH(QString, arguments);
    QFETCH(QList<QRect>, expected);
    for (const QString &format : { u"pdf"_s, u"pdf-plates"_s }) {
        write(u"a.vxl"_s,
            toJson(document({ { u"width"_s, 50.8 }, { u"height"_s, 25.4 }, { u"dpi"_s, 254 } },
                { ink(u"black"_s, u"#000000"_s) }, { rectangle(2, QRect(0, 0, 508, 254), u"#000000"_s) })));
        print(arguments.split(u' ') + QStringList { u"--format"_s, format });
        const QImage sheet = page(1);
        QCOMPARE(sheet.size(), QSize(2100, 2970));
        qint64 dots = 0;
        for (const QRect &label : std::as_const(expected)) {
            // Labels that touch are not told apart by their outline.
            const QRect around = label.adjusted(1, 1, -1, -1);
            QVERIFY2(blackIn(sheet, around) == around, show(blackIn(sheet, around)));
            dots += qint64(label.width()) * label.height();
        }
        QRect all;
        for (const QRect &label : std::as_const(expected))
            all |= label;
        QVERIFY2(isNear(blackIn(sheet, sheet.rect()), all), show(blackIn(sheet, sheet.rect())));
        // A dot more or less along each edge
        QVERIFY2(std::abs(countBlack(sheet) - dots) < expected.size() * 2000,
            QByteArray::number(countBlack(sheet)));
    }
}

/// By what is read where on the page.
void tst_VxLabelSheets::rowsFillCellsInOrder()
{
    write(u"a.vxl"_s, toJson(labelWith({ text(10, 10, u"${sku}"_s) })));
    write(u"rows.csv"_s, rowsOf(9));
    print({ u"--nup"_s, u"2x3"_s, u"--margin"_s, u"10mm"_s, u"--gap"_s, u"5mm"_s, u"--start"_s, u"2"_s });
    QCOMPARE(m_probe->countPages(), 2);
    static const QRegularExpression word(
        uR"-(<word xMin="([0-9.]+)" yMin="([0-9.]+)" xMax="[0-9.]+" yMax="[0-9.]+">(S\d)</word>)-"_s);
    const QStringList pages
        = m_probe->ask(u"pdftotext"_s, { u"-bbox"_s }, { u"-"_s }).split(u"<page "_s).sliced(1);
    QCOMPARE(pages.size(), 2);
    // Five labels from the second cell on, and four from the first
    QStringList found;
    for (qsizetype i = 0; i < pages.size(); ++i) {
        for (const QRegularExpressionMatch &match : word.globalMatch(pages[i])) {
            const double column = (match.captured(1).toDouble() / 72.0 * 25.4 - 10.0) / 55.8;
            const double line = (match.captured(2).toDouble() / 72.0 * 25.4 - 10.0) / 30.4;
            found.append(u"%1 %2,%3 %4"_s.arg(match.captured(3)).arg(int(column)).arg(int(line)).arg(i + 1));
        }
    }
    QCOMPARE(found,
        QStringList({ u"S1 1,0 1"_s, u"S2 0,1 1"_s, u"S3 1,1 1"_s, u"S4 0,2 1"_s, u"S5 1,2 1"_s,
            u"S6 0,0 2"_s, u"S7 1,0 2"_s, u"S8 0,1 2"_s, u"S9 1,1 2"_s }));
    const QByteArrayList lines = read(u"all.manifest.jsonl"_s).split('\n');
    QVERIFY2(
        lines[1].contains(R"("cell":2)") && lines[1].contains(R"("pages":{"first":1,"last":1})"), lines[1]);
    QVERIFY2(
        lines[5].contains(R"("cell":6)") && lines[5].contains(R"("pages":{"first":1,"last":1})"), lines[5]);
    QVERIFY2(
        lines[6].contains(R"("cell":1)") && lines[6].contains(R"("pages":{"first":2,"last":2})"), lines[6]);
}

void tst_VxLabelSheets::copiesFillCells()
{
    write(u"rows.csv"_s, "sku,qty\nA,3\nB,0\nC,4\n");
    const QStringList sheets { u"--copies-field"_s, u"qty"_s, u"--nup"_s, u"2x2"_s, u"--margin"_s, u"0"_s };
    print(sheets + QStringList { u"--map"_s, u"red=black"_s });
    QCOMPARE(m_probe->countPages(), 2);
    QCOMPARE(blackIn(page(1), { 0, 0, 2100, 2970 }), QRect(0, 0, 1016, 508));
    QCOMPARE(countBlack(page(1)), 1016 * 508); // all four
    QCOMPARE(countBlack(page(2)), 1016 * 508 - 508 * 254); // all but the last
    const QByteArrayList lines = read(u"all.manifest.jsonl"_s).split('\n');
    QVERIFY2(lines[1].startsWith(R"({"cell":1,"copies":3,)"), lines[1]);
    QVERIFY2(lines[2].startsWith(R"({"copies":0,)"), lines[2]);
    QVERIFY2(lines[3].startsWith(R"({"cell":4,"copies":4,)")
            && lines[3].contains(R"("pages":{"first":1,"last":2})"),
        lines[3]);
    // Two inks: two pages for each sheet
    print(sheets + QStringList { u"--format"_s, u"pdf-plates"_s });
    QCOMPARE(m_probe->countPages(), 4);
    const QByteArrayList plates = read(u"all.manifest.jsonl"_s).split('\n');
    QVERIFY2(plates[1].contains(R"("pages":{"first":1,"last":2})"), plates[1]);
    QVERIFY2(plates[3].contains(R"("pages":{"first":1,"last":4})"), plates[3]);
}

void tst_VxLabelSheets::rowsThatFailTakeNoCell()
{
    write(u"a.vxl"_s, toJson(labelWith({ text(10, 10, u"${sku}"_s), code(60, u"${sku}"_s) })));
    write(u"rows.csv"_s, "sku\nA1\n\xE2\x82\xAC\nC3\n");
    const ProgramResult result = run({ u"batch"_s, u"a.vxl"_s, u"--data"_s, u"rows.csv"_s, u"--pdf"_s,
        u"all.pdf"_s, u"--nup"_s, u"3x1"_s });
    QCOMPARE(result.code, 1);
    const QByteArrayList lines = read(u"all.manifest.jsonl"_s).split('\n');
    QVERIFY2(lines[1].startsWith(R"({"cell":1,)"), lines[1]);
    QVERIFY2(lines[2].contains(R"("status":"failed")") && !lines[2].contains("cell"), lines[2]);
    QVERIFY2(lines[3].startsWith(R"({"cell":2,)"), lines[3]);
}

void tst_VxLabelSheets::platesFillASheetOfEachInk()
{
    write(u"rows.csv"_s, rowsOf(5));
    print({ u"--nup"_s, u"2x2"_s, u"--margin"_s, u"0"_s, u"--format"_s, u"pdf-plates"_s });
    QCOMPARE(m_probe->countPages(), 4);
    // Of each label 100 dots high, the first 4 are red.
    const auto dots = [this](int number) { return countBlack(m_probe->dots(number, 100)); };
    QCOMPARE(dots(1), 4 * 200 * 96);
    QCOMPARE(dots(2), 4 * 200 * 4);
    QCOMPARE(dots(3), 200 * 96);
    QCOMPARE(dots(4), 200 * 4);
    for (const QStringList &image : m_probe->table(u"pdfimages"_s))
        QCOMPARE(image.mid(6, 2), QStringList({ u"1"_s, u"1"_s })); // channels and bits
}

/// At 203 dpi neither the gap nor the margin are whole dots; those of plates are.
void tst_VxLabelSheets::platesLieOnWholeDots()
{
    write(u"a.vxl"_s, toJson(labelWith({ text(10, 10, u"${sku}"_s), code(60, u"${sku}"_s) })));
    const QStringList batch { u"batch"_s, u"a.vxl"_s, u"--data"_s, u"rows.csv"_s, u"--dpi"_s, u"203"_s };
    expect(batch + QStringList { u"-o"_s, u"out/{sku}.{ink}.png"_s }, 0);
    print({ u"--nup"_s, u"2x2"_s, u"--margin"_s, u"10mm"_s, u"--gap"_s, u"2mm"_s, u"--dpi"_s, u"203"_s,
        u"--format"_s, u"pdf-plates"_s });
    const QImage sheet = m_probe->dots(1, 203);
    QCOMPARE(sheet.size(), QSize(1679, 2374)); // 1678.3 x 2373.7
    // 10 mm are 79.9 dots, 62.8 mm are 501.9, 37.4 mm are 298.9
    const QList<QPoint> corners { { 80, 80 }, { 502, 80 }, { 80, 299 } };
    for (qsizetype i = 0; i < corners.size(); ++i) {
        const QImage plate(path(u"out/S%1.black.png"_s.arg(i + 1)));
        QCOMPARE(plate.size(), QSize(406, 203));
        QVERIFY(countBlack(plate) > 1000);
        QCOMPARE(sheet.copy(QRect(corners[i], plate.size())).convertToFormat(QImage::Format_RGB32),
            plate.convertToFormat(QImage::Format_RGB32));
    }
}

void tst_VxLabelSheets::cropMarksAreInLineWithTheEdges()
{
    write(u"a.vxl"_s,
        toJson(document({ { u"width"_s, 50 }, { u"height"_s, 30 }, { u"dpi"_s, 254 } },
            { ink(u"black"_s, u"#000000"_s) }, { rectangle(2, QRect(0, 0, 500, 300), u"#000000"_s) })));
    // Columns from 20 to 70 and 80 to 130 mm, rows from 10 to 40 and 50 to 80 mm
    for (const QString &format : { u"pdf"_s, u"pdf-plates"_s }) {
        print({ u"--sheet"_s, u"150x90mm"_s, u"--nup"_s, u"2x2"_s, u"--gap"_s, u"10mm"_s, u"--crop-marks"_s,
            u"--format"_s, format });
        // Lines of a quarter of a point at 1270 dpi, 50 dots for each millimetre, are 4 dots wide.
        const QImage sheet = m_probe->dots(1, 1270);
        QCOMPARE(sheet.size(), QSize(7500, 4500));
        // From 1 mm beside the labels on, 4 mm long
        for (const int x : { 20, 70, 80, 130 }) {
            QVERIFY(isNear(blackIn(sheet, { x * 50 - 200, 0, 400, 500 - 5 }), { x * 50 - 2, 250, 4, 200 }));
            QVERIFY(
                isNear(blackIn(sheet, { x * 50 - 200, 4000 + 5, 400, 495 }), { x * 50 - 2, 4050, 4, 200 }));
        }
        for (const int y : { 10, 40, 50, 80 }) {
            QVERIFY(isNear(blackIn(sheet, { 0, y * 50 - 200, 1000 - 5, 400 }), { 750, y * 50 - 2, 200, 4 }));
            QVERIFY(
                isNear(blackIn(sheet, { 6500 + 5, y * 50 - 200, 995, 400 }), { 6550, y * 50 - 2, 200, 4 }));
        }
        // None between the labels, and no others beside them
        QVERIFY(blackIn(sheet, { 3505, 400, 490, 3700 }).isEmpty());
        QVERIFY(blackIn(sheet, { 1250, 0, 2000, 495 }).isEmpty());
        print({ u"--sheet"_s, u"150x90mm"_s, u"--nup"_s, u"2x2"_s, u"--gap"_s, u"10mm"_s, u"--format"_s,
            format });
        QVERIFY(blackIn(m_probe->dots(1, 1270), { 0, 0, 7500, 495 }).isEmpty());
    }
}

/// What is moved or scaled beyond the edge of a label ends there.
void tst_VxLabelSheets::nothingReachesOtherLabels()
{
    for (const QString &format : { u"pdf"_s, u"pdf-plates"_s }) {
        print({ u"--nup"_s, u"1x3"_s, u"--margin"_s, u"20mm"_s, u"--gap"_s, u"20mm"_s, u"--offset"_s,
            u"5.08mm,-2.54mm"_s, u"--rows"_s, u"1"_s, u"--format"_s, format, u"--map"_s, u"red=black"_s,
            u"--dpi"_s, u"254"_s });
        const QRect found = blackIn(page(1), { 0, 0, 2100, 2970 });
        QVERIFY2(isNear(found, { 200 + 51, 200, 508 - 51, 254 - 25 }), show(found));
        print({ u"--nup"_s, u"1x3"_s, u"--margin"_s, u"20mm"_s, u"--gap"_s, u"20mm"_s, u"--scale"_s,
            u"150%"_s, u"--rows"_s, u"1"_s, u"--format"_s, format, u"--map"_s, u"red=black"_s, u"--dpi"_s,
            u"254"_s });
        const QRect scaled = blackIn(page(1), { 0, 0, 2100, 2970 });
        QVERIFY2(isNear(scaled, { 200, 200, 508, 254 }), show(scaled));
    }
}

void tst_VxLabelSheets::sheetsHaveTheirSize_data()
{
    QTest::addColumn<QString>("size");
    QTest::addColumn<QSizeF>("points");
    QTest::newRow("letter") << u"letter"_s << QSizeF(612, 792);
    QTest::newRow("capitals") << u"Letter"_s << QSizeF(612, 792);
    QTest::newRow("legal") << u"legal"_s << QSizeF(612, 1008);
    QTest::newRow("a5") << u"a5"_s << QSizeF(148, 210) / 25.4 * 72.0;
    QTest::newRow("millimetres") << u"127x254mm"_s << QSizeF(360, 720);
    QTest::newRow("a unit for each") << u"5in x 254mm"_s << QSizeF(360, 720);
    QTest::newRow("points") << u"360.5x720pt"_s << QSizeF(360.5, 720);
}

void tst_VxLabelSheets::sheetsHaveTheirSize()
{
    QFETCH(QString, size);
    QFETCH(QSizeF, points);
    print({ u"--sheet"_s, size });
    const QList<QSizeF> boxes = m_probe->boxes();
    QCOMPARE(boxes.size(), 1);
    QVERIFY(std::abs(boxes[0].width() - points.width()) < 1e-5);
    QVERIFY(std::abs(boxes[0].height() - points.height()) < 1e-5);
}

void tst_VxLabelSheets::wrongUsageIsExplained_data()
{
    QTest::addColumn<QString>("arguments"); // beside "batch a.vxl --data rows.csv --pdf all.pdf"
    QTest::addColumn<QByteArray>("err");
    const auto row = [](const char *name, const QString &arguments, const QByteArray &err) {
        QTest::newRow(name) << arguments << err;
    };
    const QByteArray help = "; see vxlabel batch --help";
    row("too wide", u"--nup|4x8|--gap|2mm|--margin|10mm"_s,
        "a.vxl: 4 labels of 50.8 mm with gaps and margins are 229.2 mm wide, 19.2 mm more than the sheet; at "
        "most 3 columns fit");
    row("too high", u"--nup|1x12"_s,
        "a.vxl: 12 labels of 25.4 mm with gaps and margins are 304.8 mm high, 7.8 mm more than the sheet; at "
        "most 11 rows fit");
    row("a hair too wide", u"--nup|2x1|--sheet|101.59x30mm"_s,
        "a.vxl: 2 labels of 50.8 mm with gaps and margins are 101.6 mm wide, 0.01 mm more than the sheet; at "
        "most 1 column fits");
    row("none", u"--sheet|50x30mm"_s,
        "a.vxl: 1 label of 50.8 mm with gaps and margins are 50.8 mm wide, 0.8 mm more than the sheet; use a "
        "larger sheet, smaller margins or --rotate");
    row("no such cell", u"--nup|3x8|--start|25"_s,
        "a.vxl: there is no cell 25 to start in; a sheet has 3 x 8 cells, 24 in all");
    row("cell 0", u"--nup|3x8|--start|0"_s, "--start: Value 0 not in range 1 to 1000000" + help);
    row("no room for marks", u"--nup|4x1|--sheet|206x100mm|--crop-marks"_s,
        "a.vxl: 1.4 mm beside the labels are no room for crop marks; leave a margin of 2 mm at least");
    row("a very large sheet", u"--sheet|11000x100mm"_s,
        "a.vxl: a sheet of 11000 mm x 100 mm is too large; use sides of at most 10000 mm");
    row("too many dots", u"--sheet|10000x10000mm|--format|pdf-plates"_s,
        "a.vxl: a sheet of 10000 mm x 10000 mm has too many dots for plates at 100 dpi; use a smaller sheet "
        "or a "
        "lower resolution");
    row("no columns", u"--nup|8"_s,
        "--nup: \"8\" are no columns and rows; write both, from 1 to 1000, for example 3x8" + help);
    row("no rows", u"--nup|3x0"_s,
        "--nup: \"3x0\" are no columns and rows; write both, from 1 to 1000, for example 3x8" + help);
    row("a mistyped sheet", u"--sheet|leter"_s,
        "--sheet: \"leter\" is no size of a sheet; did you mean \"letter\"?" + help);
    row("no sheet", u"--sheet|tabloid"_s,
        "--sheet: \"tabloid\" is no size of a sheet; use a3, a4, a5, a6, legal, letter, or two sides, for "
        "example 210x297mm"
            + help);
    row("a sheet without unit", u"--sheet|210x297"_s, "--sheet: 210 what?; give mm, in, pt or dot" + help);
    row("a gap without unit", u"--gap|2"_s, "--gap: 2 what?; give mm, in, pt or dot" + help);
    row("a negative gap", u"--gap|-2mm"_s, "--gap: \"-2mm\" is negative; give a length from 0 on" + help);
    row("a margin of another unit", u"--margin|1em"_s,
        "--margin: \"em\" is no unit of length; did you mean mm? There are mm, in, pt or dot" + help);
}

void tst_VxLabelSheets::wrongUsageIsExplained()
{
    QFETCH(QString, arguments);
    QFETCH(QByteArray, err);
    const QStringList before = files();
    expect(QStringList { u"batch"_s, u"a.vxl"_s, u"--data"_s, u"rows.csv"_s, u"--pdf"_s, u"all.pdf"_s }
            + arguments.split(u'|'),
        2, "vxlabel: " + err + '\n');
    QCOMPARE(files(), before);
}

QTEST_MAIN(tst_VxLabelSheets)
#include "tst_vxlabelsheets.moc"
