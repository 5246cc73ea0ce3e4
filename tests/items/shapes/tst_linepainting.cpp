// SPDX-License-Identifier: BSD-3-Clause
#include "items/shapes/lineitem.h"
#include "tests/support/colours.h"
#include "tests/support/images.h"
#include "tests/support/lines.h"
#include "tests/support/recordingpaintdevice.h"

#include <QRegularExpression>
#include <QTest>

#include <algorithm>
#include <cmath>
#include <tuple>

using namespace Qt::StringLiterals;
using namespace Colours;
using Images::coloursOf;

namespace {

using Outline = RecordingPaintDevice::Outline;

QList<Outline> paintedOutlines(LineItem &item)
{
    RecordingPaintDevice device;
    QPainter painter(&device);
    const QStyleOptionGraphicsItem option;
    item.paint(&painter, &option, nullptr);
    painter.end();
    return device.outlines();
}

/// What is drawn, whichever way round its points come.
struct Figure
{
    QList<QPointF> points;
    bool closed = false;
};

bool comesBefore(const QPointF &a, const QPointF &b)
{
    return std::tuple(a.y(), a.x()) < std::tuple(b.y(), b.x());
}

/// The same figure with its points in the one order that comparisons use: an open one starts at its upper
/// or left end, the corners of a triangle are sorted.
Figure normalised(Figure figure)
{
    if (figure.closed)
        std::ranges::sort(figure.points, comesBefore);
    else if (comesBefore(figure.points.last(), figure.points.first()))
        std::ranges::reverse(figure.points);
    return figure;
}

bool isSame(const Figure &a, const Figure &b)
{
    const auto isClose = [](const QPointF &p, const QPointF &q) { return (p - q).manhattanLength() <= 1e-9; };
    return a.closed == b.closed && std::ranges::equal(normalised(a).points, normalised(b).points, isClose);
}

QString text(const Figure &figure)
{
    QString result = figure.closed ? u"closed"_s : u"open"_s;
    for (const QPointF &point : normalised(figure).points)
        result += u" (%1, %2)"_s.arg(point.x()).arg(point.y());
    return result;
}

/// Nothing when the outlines are the figures in the same order; otherwise the first difference in words.
QString difference(const QList<Outline> &outlines, const QList<Figure> &figures)
{
    if (outlines.size() != figures.size())
        return u"%1 outlines instead of %2"_s.arg(outlines.size()).arg(figures.size());
    for (qsizetype i = 0; i < figures.size(); ++i) {
        const Figure drawn { outlines[i].points, outlines[i].closed };
        if (!isSame(drawn, figures[i]))
            return text(drawn) + u" instead of "_s + text(figures[i]);
    }
    return {};
}

bool haveCorner(const QList<Outline> &outlines, const QPointF &corner)
{
    return std::ranges::any_of(outlines, [&corner](const Outline &outline) {
        return std::ranges::any_of(outline.points,
            [&corner](const QPointF &point) { return (point - corner).manhattanLength() <= 1e-9; });
    });
}

// A line of 100 with a pen of 2: barbs, bars and the unit of the chevrons are four pen widths long. A barb
// leaves the line at 30 degrees.
constexpr int penWidth = 2;
const double along = 8 * std::sqrt(3) / 2; // what a barb takes along the line: 6.928…
constexpr double across = 4; // and across
constexpr double chevron = 0.8 * 8; // from a head to its chevron, and on to the next one

const Figure theLine { { { 0, 0 }, { 100, 0 } } };
const Figure leftOpen { { { along, -across }, { 0, 0 }, { along, across } } };
const Figure rightOpen { { { 100 - along, -across }, { 100, 0 }, { 100 - along, across } } };
const Figure leftFilled { leftOpen.points, true };
const Figure rightFilled { rightOpen.points, true };
const Figure leftChevron { { { along + chevron, -across }, { chevron, 0 }, { along + chevron, across } } };
const Figure leftChevron2 { { { along + 2 * chevron, -across }, { 2 * chevron, 0 },
    { along + 2 * chevron, across } } };
const Figure rightChevron { { { 100 - along - chevron, -across }, { 100 - chevron, 0 },
    { 100 - along - chevron, across } } };
const Figure rightChevron2 { { { 100 - along - 2 * chevron, -across }, { 100 - 2 * chevron, 0 },
    { 100 - along - 2 * chevron, across } } };
const Figure leftBar { { { 0, -4 }, { 0, 4 } } };
const Figure rightBar { { { 100, -4 }, { 100, 4 } } };

} // namespace

/// What a line draws: itself and its ends.
class tst_LinePainting : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    void endsAreDrawnWhereTheyBelong_data();
    void endsAreDrawnWhereTheyBelong();
    void endsGrowWithThePen_data();
    void endsGrowWithThePen();
    void shortLineIsDrawnInItsTrueLength_data();
    void shortLineIsDrawnInItsTrueLength();
    void onlyFilledHeadsHaveABrush_data();
    void onlyFilledHeadsHaveABrush();
    void brushOfThePainterIsNeverSeen();
    void endsOfADashedLineAreSolid_data();
    void endsOfADashedLineAreSolid();
    void allPartsHaveThePenOfTheLine();
    void invisibleLineStillHasEnds();
    void painterIsLeftAsItWas_data();
    void painterIsLeftAsItWas();
    void mirrorsDoNotChangeThePicture();
    void pixelsShowLineAndEnds();
};

void tst_LinePainting::endsAreDrawnWhereTheyBelong_data()
{
    QTest::addColumn<int>("arrows");
    QTest::addColumn<QList<Figure>>("figures");

    QTest::newRow("none") << 0x00 << QList<Figure> { theLine };
    QTest::newRow("left open") << 0x10 << QList<Figure> { theLine, leftOpen };
    QTest::newRow("left filled") << 0x30 << QList<Figure> { theLine, leftFilled };
    QTest::newRow("left chevron") << 0x50 << QList<Figure> { theLine, leftOpen, leftChevron, leftChevron2 };
    QTest::newRow("left bar") << 0x80 << QList<Figure> { theLine, leftBar };
    QTest::newRow("right open") << 0x01 << QList<Figure> { theLine, rightOpen };
    QTest::newRow("right filled") << 0x03 << QList<Figure> { theLine, rightFilled };
    QTest::newRow("right chevron") << 0x05
                                   << QList<Figure> { theLine, rightOpen, rightChevron, rightChevron2 };
    QTest::newRow("right bar") << 0x08 << QList<Figure> { theLine, rightBar };
    QTest::newRow("filled and open") << 0x31 << QList<Figure> { theLine, leftFilled, rightOpen };
    QTest::newRow("open and filled") << 0x13 << QList<Figure> { theLine, leftOpen, rightFilled };
    QTest::newRow("filled and bar") << 0x38 << QList<Figure> { theLine, leftFilled, rightBar };
    QTest::newRow("bars") << 0x88 << QList<Figure> { theLine, leftBar, rightBar };
    QTest::newRow("chevrons") << 0x55
                              << QList<Figure> { theLine, leftOpen, leftChevron, leftChevron2, rightOpen,
                                     rightChevron, rightChevron2 };

    // Numbers without a name: a head comes before a bar, a filled head has no chevrons, and neither fill nor
    // chevrons stand without a head.
    QTest::newRow("head and bar at one end") << 0x99 << QList<Figure> { theLine, leftOpen, rightOpen };
    QTest::newRow("filled head and bar at one end")
        << 0xBB << QList<Figure> { theLine, leftFilled, rightFilled };
    QTest::newRow("filled head with chevrons") << 0x77 << QList<Figure> { theLine, leftFilled, rightFilled };
    QTest::newRow("fill without a head") << 0x22 << QList<Figure> { theLine };
    QTest::newRow("chevrons without a head") << 0x44 << QList<Figure> { theLine };
    QTest::newRow("bar and chevrons without a head") << 0xCC << QList<Figure> { theLine, leftBar, rightBar };
    QTest::newRow("bits beyond both ends") << 0xFF00 << QList<Figure> { theLine };
}

void tst_LinePainting::endsAreDrawnWhereTheyBelong()
{
    QFETCH(const int, arrows);
    QFETCH(const QList<Figure>, figures);
    LineItem item;
    Lines::apply(item, { ushort(arrows), 100, penWidth });
    const QString wrong = difference(paintedOutlines(item), figures);
    QVERIFY2(wrong.isEmpty(), qPrintable(wrong));
}

void tst_LinePainting::endsGrowWithThePen_data()
{
    QTest::addColumn<int>("width");
    QTest::addColumn<double>("headLength");

    QTest::newRow("1") << 1 << 4.0;
    QTest::newRow("7") << 7 << 28.0;
    QTest::newRow("72") << 72 << 288.0;
}

void tst_LinePainting::endsGrowWithThePen()
{
    QFETCH(const int, width);
    QFETCH(const double, headLength);
    LineItem item;
    Lines::apply(item, { 0x58, 1000, ushort(width) });
    const double headAlong = headLength * 0.86602540378443865;
    const double half = headLength / 2;
    const auto head = [headAlong, half](double tip) {
        return Figure { { { tip + headAlong, -half }, { tip, 0 }, { tip + headAlong, half } } };
    };
    const QString wrong = difference(paintedOutlines(item),
        { Figure { { { 0, 0 }, { 1000, 0 } } }, head(0), head(0.8 * headLength), head(1.6 * headLength),
            Figure { { { 1000, -half }, { 1000, half } } } });
    QVERIFY2(wrong.isEmpty(), qPrintable(wrong));
}

void tst_LinePainting::shortLineIsDrawnInItsTrueLength_data()
{
    QTest::addColumn<int>("arrows");

    for (const int arrows : { 0x00, 0x10, 0x33, 0x55, 0x51, 0x15, 0x50, 0x05, 0x88 })
        QTest::addRow("arrows 0x%02x", arrows) << arrows;
}

void tst_LinePainting::shortLineIsDrawnInItsTrueLength()
{
    QFETCH(const int, arrows);
    for (const double length : { 1.0, 5.0, 30.0 }) {
        LineItem item;
        Lines::apply(item, { ushort(arrows), length, 12 });
        const QList<Outline> outlines = paintedOutlines(item);
        const QString wrong = difference({ outlines.first() }, { Figure { { { 0, 0 }, { length, 0 } } } });
        QVERIFY2(wrong.isEmpty(), qPrintable(wrong));
        // The ends keep their size, 48 long and 24 to each side, and their places.
        for (const Outline &end : outlines.mid(1)) {
            const QRectF box = end.points.boundingRect();
            QVERIFY(qAbs(box.top() + 24) <= 1e-9);
            QVERIFY(qAbs(box.bottom() - 24) <= 1e-9);
        }
        if (arrows & 0x10)
            QVERIFY(haveCorner(outlines.mid(1), { 0, 0 }));
        if (arrows & 0x01)
            QVERIFY(haveCorner(outlines.mid(1), { length, 0 }));
    }
}

void tst_LinePainting::onlyFilledHeadsHaveABrush_data()
{
    QTest::addColumn<int>("arrows");
    // One digit for each outline: 1 is filled.
    QTest::addColumn<QString>("filled");

    QTest::newRow("none") << 0x00 << u"0"_s;
    QTest::newRow("open") << 0x11 << u"000"_s;
    QTest::newRow("filled") << 0x33 << u"011"_s;
    QTest::newRow("filled and open") << 0x31 << u"010"_s;
    QTest::newRow("open and filled") << 0x13 << u"001"_s;
    QTest::newRow("filled and chevrons") << 0x35 << u"01000"_s;
    QTest::newRow("chevrons and filled") << 0x53 << u"00001"_s;
    QTest::newRow("filled and bar") << 0x38 << u"010"_s;
    QTest::newRow("bar and filled") << 0x83 << u"001"_s;
    QTest::newRow("bars") << 0x88 << u"000"_s;
}

void tst_LinePainting::onlyFilledHeadsHaveABrush()
{
    QFETCH(const int, arrows);
    LineItem item;
    item.setItemPenColor(QColor(10, 200, 30, 128));
    item.setItemArrows(ushort(arrows));
    QString filled;
    for (const Outline &outline : paintedOutlines(item)) {
        const bool hasBrush = outline.brush.style() != Qt::NoBrush;
        filled += hasBrush ? u'1' : u'0';
        if (hasBrush)
            QCOMPARE(outline.brush, QBrush(QColor(10, 200, 30, 128), Qt::SolidPattern));
    }
    QTEST(filled, "filled");
}

void tst_LinePainting::brushOfThePainterIsNeverSeen()
{
    for (const ushort arrows :
        { 0x00, 0x10, 0x01, 0x11, 0x33, 0x31, 0x13, 0x55, 0x88, 0x18, 0x81, 0x38, 0x83 }) {
        LineItem item;
        item.setItemPenColor(red);
        Lines::apply(item, { arrows, 60, 4 });
        QImage image(80, 40, QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::white);
        QPainter painter(&image);
        painter.setBrush(blue);
        painter.translate(10, 20);
        const QStyleOptionGraphicsItem option;
        item.paint(&painter, &option, nullptr);
        QCOMPARE(coloursOf(image), (QSet<QRgb> { redPixel, whitePixel }));
    }
}

void tst_LinePainting::endsOfADashedLineAreSolid_data()
{
    QTest::addColumn<Qt::PenStyle>("style");

    QTest::newRow("solid") << Qt::SolidLine;
    QTest::newRow("dash") << Qt::DashLine;
    QTest::newRow("dot") << Qt::DotLine;
    QTest::newRow("dash, dot") << Qt::DashDotLine;
    QTest::newRow("dash, dot, dot") << Qt::DashDotDotLine;
}

void tst_LinePainting::endsOfADashedLineAreSolid()
{
    QFETCH(const Qt::PenStyle, style);
    for (const ushort arrows : { 0x35, 0x53, 0x81, 0x18 }) {
        LineItem item;
        item.setItemPenStyle(style);
        Lines::apply(item, { arrows, 100, 6 });
        const QList<Outline> outlines = paintedOutlines(item);
        QVERIFY(outlines.size() >= 3);
        QCOMPARE(outlines.first().pen.style(), style);
        for (const Outline &end : outlines.mid(1))
            QCOMPARE(end.pen.style(), Qt::SolidLine);
        QCOMPARE(item.getItemPen().style(), style);
    }
}

void tst_LinePainting::allPartsHaveThePenOfTheLine()
{
    LineItem item;
    item.setItemPenColor(red);
    item.setItemPenCapStyle(Qt::FlatCap);
    Lines::apply(item, { 0x38, 100, 6, Qt::BevelJoin });
    const QList<Outline> outlines = paintedOutlines(item);
    QCOMPARE(outlines.size(), 3);
    for (const Outline &outline : outlines) {
        QCOMPARE(outline.pen.color(), red);
        QCOMPARE(outline.pen.widthF(), 6.0);
        QCOMPARE(outline.pen.capStyle(), Qt::FlatCap);
        QCOMPARE(outline.pen.joinStyle(), Qt::BevelJoin);
    }
}

void tst_LinePainting::invisibleLineStillHasEnds()
{
    LineItem item;
    Lines::apply(item, { 0x10, 100, 6 });
    item.setItemPenStyle(Qt::NoPen);
    const QList<Outline> outlines = paintedOutlines(item);
    QVERIFY(!outlines.isEmpty());
    QCOMPARE(outlines.last().points.size(), 3);
    QCOMPARE(outlines.last().pen.style(), Qt::SolidLine);
    QCOMPARE(outlines.last().pen.widthF(), 6.0);
}

void tst_LinePainting::painterIsLeftAsItWas_data()
{
    QTest::addColumn<int>("arrows");
    QTest::addColumn<QStyle::State>("state");

    for (const int arrows : { 0x00, 0x10, 0x33, 0x55, 0x88, 0x38 }) {
        QTest::addRow("arrows 0x%02x", arrows) << arrows << QStyle::State(QStyle::State_None);
        QTest::addRow("arrows 0x%02x, selected", arrows) << arrows << QStyle::State(QStyle::State_Selected);
    }
}

void tst_LinePainting::painterIsLeftAsItWas()
{
    QFETCH(const int, arrows);
    QFETCH(const QStyle::State, state);
    LineItem item;
    item.setItemPenStyle(Qt::DashLine);
    item.setItemArrows(ushort(arrows));
    item.setItemHorizontalMirror(true);

    QImage image(120, 20, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::white);
    QPainter painter(&image);
    const QPen pen(yellow, 3.5, Qt::DotLine, Qt::SquareCap);
    const QBrush brush(blue, Qt::CrossPattern);
    const QTransform transform = QTransform().translate(3, 4).rotate(10);
    painter.setPen(pen);
    painter.setBrush(brush);
    painter.setOpacity(0.5);
    painter.setTransform(transform);
    QStyleOptionGraphicsItem option;
    option.state = state;
    item.paint(&painter, &option, nullptr);
    QCOMPARE(painter.pen(), pen);
    QCOMPARE(painter.brush(), brush);
    QCOMPARE(painter.opacity(), 0.5);
    QCOMPARE(painter.transform(), transform);
    QVERIFY(!painter.hasClipping());
    QVERIFY(!painter.testRenderHint(QPainter::Antialiasing));
}

void tst_LinePainting::mirrorsDoNotChangeThePicture()
{
    LineItem plain;
    Lines::apply(plain, { 0x38, 60, 2 });
    LineItem mirrored;
    Lines::apply(mirrored, { 0x38, 60, 2 });
    mirrored.setItemHorizontalMirror(true);
    mirrored.setItemVerticalMirror(true);
    const QSize size(70, 20);
    const QString wrong
        = Images::difference(Images::painted(mirrored, size), Images::painted(plain, size), u"mirrored"_s);
    QVERIFY2(wrong.isEmpty(), qPrintable(wrong));
}

void tst_LinePainting::pixelsShowLineAndEnds()
{
    LineItem item;
    item.setItemPenColor(red);
    item.setItemPenCapStyle(Qt::FlatCap);
    Lines::apply(item, { 0x38, 60, 4, Qt::MiterJoin });
    QImage image(80, 40, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::white);
    QPainter painter(&image);
    painter.translate(10, 20);
    const QStyleOptionGraphicsItem option;
    item.paint(&painter, &option, nullptr);
    painter.end();

    // The triangle's corners lie at (10, 20), (23.9, 12) and (23.9, 28) and its outline 2 further out.
    QCOMPARE(image.pixel(20, 20), redPixel);
    QCOMPARE(image.pixel(21, 24), redPixel);
    QCOMPARE(image.pixel(24, 11), redPixel);
    QCOMPARE(image.pixel(27, 12), whitePixel);
    QCOMPARE(image.pixel(12, 13), whitePixel);
    // The line is 4 wide.
    QCOMPARE(image.pixel(50, 18), redPixel);
    QCOMPARE(image.pixel(50, 21), redPixel);
    QCOMPARE(image.pixel(50, 17), whitePixel);
    QCOMPARE(image.pixel(50, 22), whitePixel);
    // The bar is 4 wide about (70, 20) and 16 high.
    QCOMPARE(image.pixel(68, 12), redPixel);
    QCOMPARE(image.pixel(71, 27), redPixel);
    QCOMPARE(image.pixel(70, 11), whitePixel);
    QCOMPARE(image.pixel(70, 28), whitePixel);
    QCOMPARE(image.pixel(72, 20), whitePixel);
}

QTEST_MAIN(tst_LinePainting)
#include "tst_linepainting.moc"
