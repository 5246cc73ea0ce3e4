// SPDX-License-Identifier: BSD-3-Clause
#include "items/graphics/pixmapitem.h"
#include "tests/apps/batchlabels.h"
#include "tests/apps/programfolder.h"
#include "tests/label/pdfprobe.h"

#include <QImage>
#include <QTest>

#include <functional>

using namespace Qt::StringLiterals;
using namespace BatchLabels;

namespace {

/// Whether a dot prints; beyond the plate none does.
using Dots = std::function<bool(int x, int y)>;

Dots dotsOf(const QImage &plate)
{
    return [plate](int x, int y) { return plate.rect().contains(x, y) && qGray(plate.pixel(x, y)) == 0; };
}

/// Empty if a plate has a size and the dots that are expected; otherwise the first other dot.
QString difference(const QImage &plate, QSize size, const Dots &expected)
{
    if (plate.size() != size)
        return u"%1 x %2 dots"_s.arg(plate.width()).arg(plate.height());
    const Dots dots = dotsOf(plate);
    for (int y = 0; y < size.height(); ++y) {
        for (int x = 0; x < size.width(); ++x) {
            if (dots(x, y) != expected(x, y))
                return u"dot %1, %2"_s.arg(x).arg(y);
        }
    }
    return {};
}

Dots inside(const QRect &area)
{
    return [area](int x, int y) { return area.contains(x, y); };
}

/// 203 x 101 dots at 100 dpi: no whole bytes.
QByteArray labelOf(const QJsonArray &items)
{
    return toJson(document({ { u"width"_s, 51.562 }, { u"height"_s, 25.654 }, { u"dpi"_s, 100 } },
        { ink(u"black"_s, u"#000000"_s), ink(u"red"_s, u"#ff0000"_s), ink(u"blue"_s, u"#0000ff"_s) }, items));
}

/// A frame around all of the page, letters and a code in black, and two areas that overlap.
QByteArray crowdedLabel()
{
    return labelOf({ rectangle(1, QRect(0, 0, 203, 3), u"#ff0000"_s), text(8, 6, u"Rg7"_s), code(40, u"A1"_s),
        rectangle(2, QRect(100, 62, 60, 30), u"#ff0000"_s),
        rectangle(3, QRect(140, 70, 50, 25), u"#0000ff"_s),
        rectangle(4, QRect(150, 80, 30, 6), u"#000000"_s) });
}

} // namespace

/// What is changed between a label and its print.
class tst_VxLabelAdjust : public QObject, private ProgramFolder
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void platesAreTurnedDotByDot_data();
    void platesAreTurnedDotByDot();
    void platesAreMovedByLengths_data();
    void platesAreMovedByLengths();
    void labelsAreScaledAboutTheirMiddle_data();
    void labelsAreScaledAboutTheirMiddle();
    void scaledCodesHaveWholeDots();
    void bareEdgesOfNegativePlatesPrint();
    void adjustmentsComeInOrder();
    void inksAreReplaced_data();
    void inksAreReplaced();
    void negativePlatesAreThoseOfTheInksPrinted();
    void blackIsKept();
    void proofsAreAdjusted();
    void batchesAreAdjustedLikeLabels_data();
    void batchesAreAdjustedLikeLabels();
    void pdfsAreAdjustedLikePlates_data();
    void pdfsAreAdjustedLikePlates();
    void colorsArePrintedWithOtherInks();
    void picturesInColorKeepTheirs();
    void otherAdjustmentsAreNotResumed();
    void wrongUsageIsExplained_data();
    void wrongUsageIsExplained();

private:
    /// The plate of a label that is separated with some arguments; null if there is none.
    [[nodiscard]] QImage plate(const QString &ink, const QStringList &arguments = {}) const;
};

void tst_VxLabelAdjust::init()
{
    renew();
    write(u"a.vxl"_s, crowdedLabel());
}

QImage tst_VxLabelAdjust::plate(const QString &ink, const QStringList &arguments) const
{
    const ProgramResult result
        = run(QStringList { u"separate"_s, u"a.vxl"_s, u"-o"_s, u"plates"_s, u"--force"_s } + arguments);
    return result.code == 0 && result.err.isEmpty() ? QImage(path(u"plates/a.%1.png"_s.arg(ink))) : QImage();
}

void tst_VxLabelAdjust::platesAreTurnedDotByDot_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<int>("kind");
    QTest::newRow("not at all") << QStringList { u"--rotate"_s, u"0"_s } << 0;
    QTest::newRow("right") << QStringList { u"--rotate"_s, u"90"_s } << 1;
    QTest::newRow("upside down") << QStringList { u"--rotate"_s, u"180"_s } << 2;
    QTest::newRow("left") << QStringList { u"--rotate"_s, u"270"_s } << 3;
    QTest::newRow("mirrored") << QStringList { u"--mirror"_s } << 4;
    QTest::newRow("mirrored, then right") << QStringList { u"--rotate"_s, u"90"_s, u"--mirror"_s } << 5;
}

void tst_VxLabelAdjust::platesAreTurnedDotByDot()
{
    QFETCH(QStringList, arguments);
    QFETCH(int, kind);
    constexpr int right = 202;
    constexpr int bottom = 100;
    for (const QString &ink : { u"black"_s, u"red"_s }) {
        const QImage upright = plate(ink);
        QCOMPARE(upright.size(), QSize(203, 101));
        const Dots dots = dotsOf(upright);
        // Where the dot was that is to be at x, y
        const QList<Dots> expected { dots, [&](int x, int y) { return dots(y, bottom - x); },
            [&](int x, int y) { return dots(right - x, bottom - y); },
            [&](int x, int y) { return dots(right - y, x); },
            [&](int x, int y) { return dots(right - x, y); },
            [&](int x, int y) { return dots(right - y, bottom - x); } };
        const QSize size = kind % 2 == 1 ? QSize(101, 203) : QSize(203, 101);
        const QImage turned = plate(ink, arguments);
        QCOMPARE(difference(turned, size, expected[kind]), QString());
        QCOMPARE(turned.dotsPerMeterX(), 3937);
    }
}

void tst_VxLabelAdjust::platesAreMovedByLengths_data()
{
    QTest::addColumn<QString>("offset");
    QTest::addColumn<int>("dpi");
    QTest::addColumn<QPoint>("by"); // dots
    QTest::newRow("dots") << u"3dot,-2dot"_s << 100 << QPoint(3, -2);
    QTest::newRow("left") << u"-13dot,0"_s << 100 << QPoint(-13, 0);
    QTest::newRow("whole bytes") << u"16dot,8dot"_s << 100 << QPoint(16, 8);
    QTest::newRow("millimetres") << u"1mm,2 mm"_s << 254 << QPoint(10, 20);
    QTest::newRow("inches") << u"0.25in,-.1in"_s << 100 << QPoint(25, -10);
    QTest::newRow("points") << u"7pt,9pt"_s << 144 << QPoint(14, 18);
    QTest::newRow("the nearest dot") << u"0.3mm,0.1mm"_s << 100 << QPoint(1, 0); // 1.18 and 0.39
}

void tst_VxLabelAdjust::platesAreMovedByLengths()
{
    QFETCH(QString, offset);
    QFETCH(int, dpi);
    QFETCH(QPoint, by);
    const QStringList resolution { u"--dpi"_s, QString::number(dpi) };
    const QImage before = plate(u"black"_s, resolution);
    const Dots dots = dotsOf(before);
    const QImage moved = plate(u"black"_s, resolution + QStringList { u"--offset"_s, offset });
    QCOMPARE(difference(moved, before.size(), [&](int x, int y) { return dots(x - by.x(), y - by.y()); }),
        QString());
}

void tst_VxLabelAdjust::labelsAreScaledAboutTheirMiddle_data()
{
    QTest::addColumn<QString>("scale");
    QTest::addColumn<QRect>("expected");
    // A page of 200 x 100 dots, with an area of 20 x 10 at 80, 40
    QTest::newRow("half") << u"50%"_s << QRect(90, 45, 10, 5);
    QTest::newRow("twice") << u"2"_s << QRect(60, 30, 40, 20);
    QTest::newRow("ten times") << u"10"_s << QRect(0, 0, 100, 50); // from -100, -50 to 100, 50
    QTest::newRow("a little more") << u"110%"_s << QRect(78, 39, 22, 11);
    QTest::newRow("as it is") << u"100%"_s << QRect(80, 40, 20, 10);
}

void tst_VxLabelAdjust::labelsAreScaledAboutTheirMiddle()
{
    QFETCH(QString, scale);
    QFETCH(QRect, expected);
    write(u"a.vxl"_s, toJson(labelWith({ rectangle(2, QRect(80, 40, 20, 10), u"#000000"_s) })));
    QCOMPARE(
        difference(plate(u"black"_s, { u"--scale"_s, scale }), QSize(200, 100), inside(expected)), QString());
}

/// Whatever the scale: a code is made of bars and gaps of whole modules.
void tst_VxLabelAdjust::scaledCodesHaveWholeDots()
{
    write(u"a.vxl"_s, toJson(labelWith({ code(60, u"A1"_s) })));
    for (const QString &scale : { u"73%"_s, u"98%"_s, u"104%"_s }) {
        const QStringList arguments { u"--dpi"_s, u"600"_s, u"--scale"_s, scale };
        const QImage image = plate(u"black"_s, arguments);
        QVERIFY(!image.isNull());
        QList<int> runs;
        const Dots dots = dotsOf(image);
        const int y = 300 + qRound((65.0 - 50.0) * 6.0 * scale.chopped(1).toDouble() / 100.0);
        for (int x = 1; x < image.width(); ++x) {
            if (runs.isEmpty() ? dots(x, y) : dots(x, y) != dots(x - 1, y))
                runs.append(0);
            if (!runs.isEmpty())
                ++runs.last();
        }
        runs.removeLast(); // what follows the code
        // Start, two letters and check sum have six bars and gaps each, the stop seven.
        QCOMPARE(runs.size(), 4 * 6 + 7);
        const int module = *std::min_element(runs.cbegin(), runs.cend());
        QVERIFY(module > 4);
        for (const int run : std::as_const(runs))
            QCOMPARE(run % module, 0);
        // The report tells the module as it is printed.
        const ProgramResult report = run({ u"separate"_s, u"a.vxl"_s, u"-o"_s, u"plates"_s, u"--force"_s,
            u"--dpi"_s, u"600"_s, u"--scale"_s, scale });
        const QByteArray width = QByteArray::number(module * 25.4 / 600.0, 'f', 3);
        QVERIFY2(report.out.contains("X " + width + " mm"), report.out);
    }
}

void tst_VxLabelAdjust::bareEdgesOfNegativePlatesPrint()
{
    write(u"a.vxl"_s, toJson(labelWith({ rectangle(2, QRect(80, 40, 20, 10), u"#000000"_s) })));
    const auto isNegative
        = [](const QRect &area) { return [area](int x, int y) { return !area.contains(x, y); }; };
    QCOMPARE(difference(plate(u"black"_s, { u"--negative"_s, u"--scale"_s, u"50%"_s }), QSize(200, 100),
                 isNegative({ 90, 45, 10, 5 })),
        QString());
    QCOMPARE(difference(plate(u"black"_s, { u"--negative"_s, u"--offset"_s, u"21dot,-35dot"_s }),
                 QSize(200, 100), isNegative({ 101, 5, 20, 10 })),
        QString());
}

/// Scaled, mirrored, turned, moved.
void tst_VxLabelAdjust::adjustmentsComeInOrder()
{
    write(u"a.vxl"_s, toJson(labelWith({ rectangle(2, QRect(40, 20, 20, 10), u"#000000"_s) })));
    // Scaled to half: 70, 35, 10, 5; mirrored: 120, 35, 10, 5; turned, on a page of 100 x 200: 60, 120, 5, 10
    const QStringList all { u"--offset"_s, u"7dot,-20dot"_s, u"--rotate"_s, u"90"_s, u"--mirror"_s,
        u"--scale"_s, u"50%"_s };
    QCOMPARE(difference(plate(u"black"_s, all), QSize(100, 200), inside({ 67, 100, 5, 10 })), QString());
}

void tst_VxLabelAdjust::inksAreReplaced_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QStringList>("printed"); // for each ink, by what is on which plates of the label
    QTest::newRow("one with another")
        << QStringList { u"--map"_s, u"red=black"_s } << QStringList { u"black=black red"_s, u"blue=blue"_s };
    QTest::newRow("both change places") << QStringList { u"--map"_s, u"red=black,black=red"_s }
                                        << QStringList { u"black=red"_s, u"red=black"_s, u"blue=blue"_s };
    QTest::newRow("in a circle") << QStringList { u"--map"_s, u"red=black"_s, u"--map"_s, u"black=blue"_s,
        u"--map"_s, u"blue=red"_s }
                                 << QStringList { u"black=red"_s, u"red=blue"_s, u"blue=black"_s };
    QTest::newRow("all with one") << QStringList { u"--map"_s, u"red=blue, black=blue"_s }
                                  << QStringList { u"blue=black red blue"_s };
    QTest::newRow("a chain") << QStringList { u"--map"_s, u"red=black,black=blue"_s }
                             << QStringList { u"black=red"_s, u"blue=black blue"_s };
    QTest::newRow("with itself") << QStringList { u"--map"_s, u"red=red"_s }
                                 << QStringList { u"black=black"_s, u"red=red"_s, u"blue=blue"_s };
}

void tst_VxLabelAdjust::inksAreReplaced()
{
    QFETCH(QStringList, arguments);
    QFETCH(QStringList, printed);
    expect({ u"separate"_s, u"a.vxl"_s, u"-o"_s, u"plain"_s }, 0);
    expect(QStringList { u"separate"_s, u"a.vxl"_s, u"-o"_s, u"mapped"_s } + arguments, 0);
    QCOMPARE(files(u"mapped"_s).size(), printed.size() + 1); // and the proof
    for (const QString &ink : std::as_const(printed)) {
        QList<Dots> sources;
        for (const QString &source : ink.section(u'=', 1).split(u' '))
            sources.append(dotsOf(QImage(path(u"plain/a.%1.png"_s.arg(source)))));
        const QImage mapped(path(u"mapped/a.%1.png"_s.arg(ink.section(u'=', 0, 0))));
        QCOMPARE(difference(mapped, QSize(203, 101),
                     [&](int x, int y) {
                         return std::ranges::any_of(sources, [&](const Dots &dots) { return dots(x, y); });
                     }),
            QString());
    }
}

void tst_VxLabelAdjust::negativePlatesAreThoseOfTheInksPrinted()
{
    const QImage both = plate(u"black"_s, { u"--map"_s, u"red=black"_s });
    const Dots dots = dotsOf(both);
    QCOMPARE(difference(plate(u"black"_s, { u"--map"_s, u"red=black"_s, u"--negative"_s }), both.size(),
                 [&](int x, int y) { return !dots(x, y); }),
        QString());
}

void tst_VxLabelAdjust::blackIsKept()
{
    const QImage black = plate(u"black"_s);
    const QImage red = plate(u"red"_s);
    const QStringList keeping { u"--negative"_s, u"--keep-black"_s };
    QCOMPARE(plate(u"black"_s, keeping), black);
    const auto isKept = dotsOf(black);
    QVERIFY(isKept(160, 82));
    const auto wasRed = dotsOf(red);
    // What is black is not printed over.
    QCOMPARE(difference(plate(u"red"_s, keeping), red.size(),
                 [&](int x, int y) { return !wasRed(x, y) && !isKept(x, y); }),
        QString());
    QVERIFY(plate(u"black"_s, { u"--negative"_s }) != black);

    // Overprint lets red print below black, unless that is kept.
    const QImage over = plate(u"red"_s, { u"--overprint"_s });
    QVERIFY(dotsOf(over)(155, 82));
    QVERIFY(isKept(155, 82));
    const auto wasOver = dotsOf(over);
    QCOMPARE(difference(plate(u"red"_s, { u"--overprint"_s, u"--keep-black"_s }), red.size(),
                 [&](int x, int y) { return wasOver(x, y) && !isKept(x, y); }),
        QString());
    // Moved like the others
    QCOMPARE(plate(u"black"_s, { u"--keep-black"_s, u"--negative"_s, u"--rotate"_s, u"90"_s }),
        plate(u"black"_s, { u"--rotate"_s, u"90"_s }));
    QCOMPARE(plate(u"black"_s, { u"--keep-black"_s, u"--negative"_s, u"--offset"_s, u"9dot,4dot"_s }),
        plate(u"black"_s, { u"--offset"_s, u"9dot,4dot"_s }));
}

void tst_VxLabelAdjust::proofsAreAdjusted()
{
    write(u"a.vxl"_s, toJson(labelWith({ rectangle(2, QRect(80, 40, 20, 10), u"#000000"_s) })));
    expect({ u"render"_s, u"a.vxl"_s, u"-o"_s, u"a.png"_s, u"--rotate"_s, u"90"_s, u"--map"_s,
               u"red=black,black=red"_s },
        0);
    const QImage proof(path(u"a.png"_s));
    QCOMPARE(proof.size(), QSize(100, 200));
    QCOMPARE(proof.pixelColor(98, 100), QColor(Qt::black)); // the frame, which was red and at the top
    QCOMPARE(proof.pixelColor(55, 90), QColor(Qt::red)); // from 50, 80 to 59, 99
    QCOMPARE(proof.pixelColor(49, 90), QColor(Qt::white));
    QCOMPARE(proof.pixelColor(60, 90), QColor(Qt::white));
}

void tst_VxLabelAdjust::batchesAreAdjustedLikeLabels_data()
{
    QTest::addColumn<QStringList>("arguments");
    const auto row
        = [](const char *name, const QString &arguments) { QTest::newRow(name) << arguments.split(u' '); };
    row("turned", u"--rotate 270"_s);
    row("mirrored", u"--mirror"_s);
    row("moved", u"--offset 2mm,-1mm"_s);
    row("scaled", u"--scale 97%"_s);
    row("other inks", u"--map red=black"_s);
    row("black kept", u"--negative --keep-black"_s);
    row("all", u"--rotate 90 --mirror --offset 1pt,2pt --scale 1.1 --map red=blue --keep-black --dpi 203"_s);
}

void tst_VxLabelAdjust::batchesAreAdjustedLikeLabels()
{
    QFETCH(QStringList, arguments);
    write(u"rows.csv"_s, "sku\nB2\n");
    const auto items = [](const QString &content) {
        return QJsonArray { rectangle(1, QRect(0, 0, 203, 3), u"#ff0000"_s), code(40, content),
            rectangle(2, QRect(100, 62, 60, 30), u"#0000ff"_s) };
    };
    write(u"bound.vxl"_s, labelOf(items(u"${sku}"_s)));
    write(u"B2.vxl"_s, labelOf(items(u"B2"_s)));
    expect(QStringList { u"separate"_s, u"B2.vxl"_s, u"-o"_s, u"typed"_s } + arguments, 0);
    expect(QStringList { u"batch"_s, u"bound.vxl"_s, u"--data"_s, u"rows.csv"_s, u"-o"_s,
               u"typed2/{sku}.{ink}.png"_s }
            + arguments,
        0);
    auto typed = contentsOf(u"typed"_s);
    auto printed = contentsOf(u"typed2"_s);
    QCOMPARE(typed.erase(u"B2.proof.png"_s), 1U);
    QCOMPARE(printed.erase(u"manifest.jsonl"_s), 1U);
    QVERIFY(!typed.empty());
    QVERIFY(typed == printed);
}

void tst_VxLabelAdjust::pdfsAreAdjustedLikePlates_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QSize>("size"); // in dots of 100 dpi
    QTest::addColumn<QRect>("area"); // of 20 x 10 at 40, 20 on a page of 200 x 100
    const auto row = [](const char *name, const QString &arguments, const QSize &size, const QRect &area) {
        QTest::newRow(name) << arguments.split(u' ') << size << area;
    };
    const QSize upright(200, 100);
    const QSize turned(100, 200);
    row("not at all", u"--rotate 0"_s, upright, { 40, 20, 20, 10 });
    row("right", u"--rotate 90"_s, turned, { 70, 40, 10, 20 });
    row("upside down", u"--rotate 180"_s, upright, { 140, 70, 20, 10 });
    row("left", u"--rotate 270"_s, turned, { 20, 140, 10, 20 });
    row("mirrored", u"--mirror"_s, upright, { 140, 20, 20, 10 });
    row("moved", u"--offset 0.1in,-5dot"_s, upright, { 50, 15, 20, 10 });
    row("scaled", u"--scale 50%"_s, upright, { 70, 35, 10, 5 });
    row("all", u"--offset 7dot,-20dot --rotate 90 --mirror --scale 50%"_s, turned, { 67, 100, 5, 10 });
}

void tst_VxLabelAdjust::pdfsAreAdjustedLikePlates()
{
    QFETCH(QStringList, arguments);
    QFETCH(QSize, size);
    QFETCH(QRect, area);
    write(u"rows.csv"_s, "sku\nB2\n");
    // An item reaches beyond the page, where nothing shows.
    write(u"a.vxl"_s,
        toJson(document({ { u"width"_s, 50.8 }, { u"height"_s, 25.4 }, { u"dpi"_s, 100 } },
            { ink(u"black"_s, u"#000000"_s) },
            { rectangle(2, QRect(40, 20, 20, 10), u"#000000"_s),
                rectangle(3, QRect(210, -40, 300, 30), u"#000000"_s) })));
    for (const QString &format : { u"pdf"_s, u"pdf-plates"_s }) {
        expect(QStringList { u"batch"_s, u"a.vxl"_s, u"--data"_s, u"rows.csv"_s, u"--pdf"_s, u"all.pdf"_s,
                   u"--force"_s, u"--format"_s, format }
                + arguments,
            0);
        PdfProbe pdf;
        pdf.take(read(u"all.pdf"_s));
        QCOMPARE(difference(pdf.dots(1, 100), size, inside(area)), QString());
    }
    // Exact to a point: 50.8 mm x 25.4 mm
    PdfProbe pdf;
    expect(QStringList { u"batch"_s, u"a.vxl"_s, u"--data"_s, u"rows.csv"_s, u"--pdf"_s, u"all.pdf"_s,
               u"--force"_s }
            + arguments,
        0);
    pdf.take(read(u"all.pdf"_s));
    QCOMPARE(pdf.boxes(), QList<QSizeF> { QSizeF(size) * 0.72 });
}

void tst_VxLabelAdjust::colorsArePrintedWithOtherInks()
{
    const QJsonObject html { { u"itemShape"_s, 0x10016 }, { u"itemPositionX"_s, 8 },
        { u"itemPositionY"_s, 40 }, { u"itemWidth"_s, 150 }, { u"itemHeight"_s, 60 },
        { u"itemHtml"_s, u"<p style=\"color:#ff0000;font-size:30px\">\u2588\u2588</p>"_s } };
    QJsonObject letters = text(100, 10, u"\u2588\u2588"_s);
    letters[u"itemTextColor"_s] = u"#ff0000"_s;
    write(u"a.vxl"_s,
        labelOf({ rectangle(1, QRect(0, 0, 50, 30), u"#ff0000"_s),
            rectangle(2, QRect(50, 0, 40, 30), u"#00ff00"_s), letters, html }));
    write(u"rows.csv"_s, "sku\nB2\n");
    const QStringList arguments { u"batch"_s, u"a.vxl"_s, u"--data"_s, u"rows.csv"_s, u"--force"_s,
        u"--pdf"_s, u"all.pdf"_s };
    const auto colorsOf = [&] {
        PdfProbe pdf;
        pdf.take(read(u"all.pdf"_s));
        const QImage page = pdf.page(1, 100);
        QSet<QRgb> colors;
        for (int y = 0; y < page.height(); ++y) {
            for (int x = 0; x < page.width(); ++x)
                colors.insert(page.pixel(x, y));
        }
        return colors;
    };
    const QByteArray warning
        = "vxlabel: warning: a.vxl: /items/1: no ink prints the fill #00ff00 of rectangle 2; use an "
          "ink's colour or add an ink\n";
    expect(arguments, 0, warning);
    QVERIFY(colorsOf().contains(0xFFFF0000));
    expect(arguments + QStringList { u"--map"_s, u"red=blue"_s }, 0, warning);
    const QSet<QRgb> mapped = colorsOf();
    QVERIFY(mapped.contains(0xFF0000FF));
    QVERIFY(mapped.contains(0xFF00FF00)); // of no ink
    for (const QRgb color : mapped)
        QVERIFY2(qRed(color) <= qBlue(color) || qGreen(color) > 0, qPrintable(QString::number(color, 16)));
}

/// Their dots are mixed of several inks: on plates they are replaced, in colour they stay.
void tst_VxLabelAdjust::picturesInColorKeepTheirs()
{
    QPixmap red(20, 20);
    red.fill(Qt::red);
    PixMapItem picture;
    picture.pixmapImportActions(red);
    picture.setPos(20, 20);
    write(u"a.vxl"_s, labelOf({ QJsonObject::fromVariantMap(picture.saveItemToJSON()) }));
    write(u"rows.csv"_s, "sku\nB2\n");
    const QStringList batch { u"batch"_s, u"a.vxl"_s, u"--data"_s, u"rows.csv"_s, u"--pdf"_s, u"all.pdf"_s,
        u"--map"_s, u"red=blue"_s, u"--force"_s };
    const ProgramResult colored = run(batch);
    QCOMPARE(colored.code, 0);
    QVERIFY2(isOneLine(colored.err) && colored.err.contains("keeps its colours"), colored.err);
    expect(batch + QStringList { u"--format"_s, u"pdf-plates"_s }, 0);
}

void tst_VxLabelAdjust::otherAdjustmentsAreNotResumed()
{
    write(u"rows.csv"_s, "sku\nB2\n");
    const QStringList batch { u"batch"_s, u"a.vxl"_s, u"--data"_s, u"rows.csv"_s, u"-o"_s,
        u"out/{sku}.{ink}.png"_s };
    expect(batch + QStringList { u"--rotate"_s, u"90"_s, u"--map"_s, u"red=blue"_s }, 0);
    const auto refused = [&](const QStringList &arguments, const QByteArray &what) {
        expect(batch + QStringList { u"--resume"_s } + arguments, 5,
            "vxlabel: out/manifest.jsonl: the batch was begun with another " + what
                + "; resume it as it was begun, or give --force to begin again\n");
    };
    refused({ u"--map"_s, u"red=blue"_s }, "rotation");
    refused({ u"--rotate"_s, u"90"_s }, "replacement of inks (--map)");
    refused({ u"--rotate"_s, u"90"_s, u"--map"_s, u"red=blue"_s, u"--mirror"_s }, "choice of --mirror");
    refused({ u"--rotate"_s, u"90"_s, u"--map"_s, u"red=blue"_s, u"--offset"_s, u"1mm,0"_s }, "offset");
    refused({ u"--rotate"_s, u"90"_s, u"--map"_s, u"red=blue"_s, u"--scale"_s, u"99%"_s }, "scale");
    refused(
        { u"--rotate"_s, u"90"_s, u"--map"_s, u"red=blue"_s, u"--keep-black"_s }, "choice of --keep-black");
    const ProgramResult same
        = run(batch + QStringList { u"--resume"_s, u"--rotate"_s, u"90"_s, u"--map"_s, u"red=blue"_s });
    QCOMPARE(same.out, QByteArray("0 rows printed, 1 kept\n"));
}

void tst_VxLabelAdjust::wrongUsageIsExplained_data()
{
    QTest::addColumn<QString>("arguments"); // beside "separate a.vxl -o out"
    QTest::addColumn<QByteArray>("err");
    const auto row = [](const char *name, const QString &arguments, const QByteArray &err) {
        QTest::newRow(name) << arguments << err;
    };
    const QByteArray help = "; see vxlabel separate --help";
    row("a length without unit", u"--offset|10,2mm"_s, "--offset: 10 what?; give mm, in, pt or dot" + help);
    row("an unknown unit", u"--offset|1cm,2mm"_s,
        "--offset: \"cm\" is no unit of length; did you mean mm? There are mm, in, pt or dot" + help);
    row("another unknown unit", u"--offset|1furlong,2mm"_s,
        "--offset: \"furlong\" is no unit of length; give mm, in, pt or dot" + help);
    row("no number", u"--offset|xmm,2mm"_s,
        "--offset: \"xmm\" is no length; write a number and a unit, for example 2.5mm" + help);
    row("one length", u"--offset|1mm"_s,
        "--offset: \"1mm\" are no two lengths; write one to the right and one down, for example 2mm,-1mm"
            + help);
    row("too far", u"--offset|0,26mm"_s,
        "a.vxl: the offset moves everything off the label; the label is 51.562 mm x 25.654 mm as it is "
        "printed");
    row("too far when turned", u"--offset|26mm,0|--rotate|90"_s,
        "a.vxl: the offset moves everything off the label; the label is 25.654 mm x 51.562 mm as it is "
        "printed");
    row("a slant", u"--rotate|45"_s, "--rotate: takes 0, 90, 180 or 270, not 45" + help);
    row("no scale", u"--scale|0"_s,
        "--scale: \"0\" is no scale; use a factor from 0.1 to 10, or a percentage, for example 98%" + help);
    row("percentage of words", u"--scale|half%"_s,
        "--scale: \"half%\" is no scale; use a factor from 0.1 to 10, or a percentage, for example 98%"
            + help);
    row("too coarse", u"--scale|10%|--dpi|50"_s,
        "a.vxl: 50 dpi cannot be scaled by 0.1; the product of both has to be from 10 to 9600");
    row("too large", u"--scale|10|--dpi|900"_s,
        "a.vxl: 900 dpi, scaled by 10, are too many dots for the label; use a lower resolution or a smaller "
        "scale");
    row("no two inks", u"--map|red"_s,
        "--map: \"red\" names no two inks; write the ink of the label and the one to print, for example "
        "red=black"
            + help);
    row("an unknown ink", u"--map|rde=black"_s, "a.vxl: the label has no ink \"rde\"; did you mean \"red\"?");
    row("another unknown ink", u"--map|red=magenta"_s,
        "a.vxl: the label has no ink \"magenta\"; there are black, red, blue");
    row("twice", u"--map|red=black,red=blue"_s,
        "a.vxl: ink \"red\" is replaced twice; name the one ink that it is printed with");
    row("kept and mapped", u"--map|black=red|--keep-black"_s,
        "a.vxl: ink \"black\" is to be kept and to be mapped; leave out --keep-black or the ink in --map");
    row("kept and mapped to", u"--map|red=black|--keep-black"_s,
        "a.vxl: ink \"black\" is to be kept and to be mapped; leave out --keep-black or the ink in --map");
}

void tst_VxLabelAdjust::wrongUsageIsExplained()
{
    QFETCH(QString, arguments);
    QFETCH(QByteArray, err);
    expect(QStringList { u"separate"_s, u"a.vxl"_s, u"-o"_s, u"out"_s } + arguments.split(u'|'), 2,
        "vxlabel: " + err + '\n');
    QVERIFY(!files().contains(u"out"_s));
}

QTEST_MAIN(tst_VxLabelAdjust)
#include "tst_vxlabeladjust.moc"
