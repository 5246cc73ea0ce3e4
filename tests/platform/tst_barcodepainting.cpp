// SPDX-License-Identifier: BSD-3-Clause
#include "platform/zint/barcodeencoder.h"
#include "platform/zint/geometryof.h"
#include "tests/support/barcodes.h"
#include "tests/support/recordingpaintdevice.h"

#include <QImage>
#include <QPainter>
#include <QRegularExpression>
#include <QTest>

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

using namespace Qt::StringLiterals;
using Barcodes::barcode;
using Zint::QZint;
using Figure = RecordingPaintDevice::Figure;
using Kind = RecordingPaintDevice::Kind;

namespace {

constexpr double NaN = std::numeric_limits<double>::quiet_NaN();
constexpr double Infinity = std::numeric_limits<double>::infinity();

QList<Figure> recorded(
    const QZint &code, const QRectF &rect, QZint::AspectRatioMode mode = QZint::IgnoreAspectRatio)
{
    RecordingPaintDevice device;
    QPainter painter(&device);
    code.render(painter, rect, mode);
    painter.end();
    return device.figures();
}

QRectF placeOf(const Figure &figure)
{
    return figure.transform.map(figure.path).boundingRect();
}

QRectF placeOf(const QList<Figure> &figures)
{
    QRectF place;
    for (const Figure &figure : figures)
        place |= placeOf(figure);
    return place;
}

bool areEqual(const QRectF &a, const QRectF &b)
{
    return std::abs(a.left() - b.left()) < 1e-6 && std::abs(a.top() - b.top()) < 1e-6
        && std::abs(a.right() - b.right()) < 1e-6 && std::abs(a.bottom() - b.bottom()) < 1e-6;
}

QZint qrCode()
{
    return barcode(58, u"A"_s); // 21 × 21 modules
}

QImage paper(int width, int height)
{
    QImage image(width, height, QImage::Format_RGB32);
    image.fill(Qt::white);
    return image;
}

} // namespace

/// Where and how symbols are painted.
class tst_BarcodePainting : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    void modesPlaceTheSymbol_data();
    void modesPlaceTheSymbol();
    void everyBarIsARectangle();
    void painterStaysAsItWas_data();
    void painterStaysAsItWas();
    void impossibleRectanglesPaintNothing_data();
    void impossibleRectanglesPaintNothing();
    void backgroundIsPaintedIfThereIsOne_data();
    void backgroundIsPaintedIfThereIsOne();
    void errorsLeaveTheBackground();
    void foregroundIsBlackUnlessItIsGiven();
    void colouredModulesKeepTheirColours();
    void hexagonsStandOnACorner();
    void ringsHaveTheirWidth();
    void dotsAreDiscs();
};

void tst_BarcodePainting::modesPlaceTheSymbol_data()
{
    QTest::addColumn<QRectF>("rect");
    QTest::addColumn<int>("mode");
    QTest::addColumn<QRectF>("symbol");
    QTest::addColumn<QRectF>("firstBar"); // seven modules

    const QRectF wide(10, 20, 210, 105);
    const QRectF high(-5, 0.5, 42, 210);
    QTest::newRow("stretched") << wide << 0 << wide << QRectF(10, 20, 70, 5);
    QTest::newRow("stretched, high") << high << 0 << high << QRectF(-5, 0.5, 14, 10);
    QTest::newRow("top left, wide") << wide << 1 << QRectF(10, 20, 105, 105) << QRectF(10, 20, 35, 5);
    QTest::newRow("top left, high") << high << 1 << QRectF(-5, 0.5, 42, 42) << QRectF(-5, 0.5, 14, 2);
    QTest::newRow("centred, wide") << wide << 2 << QRectF(62.5, 20, 105, 105) << QRectF(62.5, 20, 35, 5);
    QTest::newRow("centred, high") << high << 2 << QRectF(-5, 84.5, 42, 42) << QRectF(-5, 84.5, 14, 2);
    QTest::newRow("3") << wide << 3 << wide << QRectF(10, 20, 70, 5);
    QTest::newRow("-1") << wide << -1 << wide << QRectF(10, 20, 70, 5);
    QTest::newRow("greatest") << wide << std::numeric_limits<int>::max() << wide << QRectF(10, 20, 70, 5);
}

void tst_BarcodePainting::modesPlaceTheSymbol()
{
    QFETCH(QRectF, rect);
    QFETCH(int, mode);
    QFETCH(QRectF, symbol);
    QFETCH(QRectF, firstBar);
    const QList<Figure> figures = recorded(qrCode(), rect, static_cast<QZint::AspectRatioMode>(mode));
    QVERIFY(areEqual(placeOf(figures), symbol));
    QVERIFY(areEqual(placeOf(figures.first()), firstBar));
}

void tst_BarcodePainting::everyBarIsARectangle()
{
    const QZint code = qrCode();
    const QList<Figure> figures = recorded(code, QRectF(0, 0, 100, 100));
    QCOMPARE(figures.size(), qsizetype(Zint::geometryOf(code)->bars.front().rects.size()));
    QVERIFY(figures.size() > 20);
    for (const Figure &figure : figures) {
        QVERIFY(figure.kind == Kind::Rect);
        QCOMPARE(figure.pen.style(), Qt::NoPen);
        QVERIFY(!figure.clipped);
    }
}

void tst_BarcodePainting::painterStaysAsItWas_data()
{
    QTest::addColumn<int>("symbol");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QRectF>("rect");

    const QRectF rect(1, 2, 80, 60);
    QTest::newRow("bars and text") << 20 << u"A"_s << rect;
    QTest::newRow("hexagons") << 57 << u"A"_s << rect;
    QTest::newRow("dots") << 115 << u"A"_s << rect;
    QTest::newRow("error") << 13 << u"A"_s << rect;
    QTest::newRow("empty rectangle") << 20 << u"A"_s << QRectF();
}

void tst_BarcodePainting::painterStaysAsItWas()
{
    QFETCH(int, symbol);
    QFETCH(QString, text);
    QFETCH(QRectF, rect);
    QZint code = barcode(symbol, text);
    code.setBgColor(Qt::yellow);
    code.setFgColor(Qt::blue);
    code.setFontSize(20);

    QImage image = paper(100, 100);
    QPainter painter(&image);
    const QPen pen(Qt::green, 3.5, Qt::DashLine);
    const QBrush brush(Qt::cyan, Qt::Dense3Pattern);
    QFont font;
    font.setPixelSize(31);
    const QTransform transform(0.5, 0.1, -0.1, 0.5, 7, 8);
    painter.setPen(pen);
    painter.setBrush(brush);
    painter.setFont(font);
    painter.setTransform(transform);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setOpacity(0.5);
    const QPainter::RenderHints hints = painter.renderHints();
    code.render(painter, rect, QZint::CenterBarCode);
    QCOMPARE(painter.pen(), pen);
    QCOMPARE(painter.brush(), brush);
    QCOMPARE(painter.font(), font);
    QCOMPARE(painter.transform(), transform);
    QCOMPARE(painter.renderHints(), hints);
    QCOMPARE(painter.opacity(), 0.5);
}

void tst_BarcodePainting::impossibleRectanglesPaintNothing_data()
{
    QTest::addColumn<QRectF>("rect");

    QTest::newRow("null") << QRectF();
    QTest::newRow("no width") << QRectF(0, 0, 0, 10);
    QTest::newRow("no height") << QRectF(0, 0, 10, 0);
    QTest::newRow("negative width") << QRectF(0, 0, -10, 10);
    QTest::newRow("negative height") << QRectF(0, 0, 10, -10);
    for (const double odd : { NaN, Infinity, -Infinity, 1.1e7, -1e300 }) {
        QTest::addRow("left %g", odd) << QRectF(odd, 0, 10, 10);
        QTest::addRow("top %g", odd) << QRectF(0, odd, 10, 10);
        QTest::addRow("width %g", odd) << QRectF(0, 0, odd, 10);
        QTest::addRow("height %g", odd) << QRectF(0, 0, 10, odd);
    }
    QTest::newRow("sums beyond all numbers") << QRectF(1e308, 1e308, 1e308, 1e308);
}

void tst_BarcodePainting::impossibleRectanglesPaintNothing()
{
    QFETCH(QRectF, rect);
    QZint code = barcode(20, u"A"_s);
    code.setBgColor(Qt::yellow);
    QVERIFY(recorded(code, rect).isEmpty());
    QVERIFY(!recorded(code, QRectF(0, 0, 1e7, 1e7)).isEmpty());
}

void tst_BarcodePainting::backgroundIsPaintedIfThereIsOne_data()
{
    QTest::addColumn<QColor>("background");
    QTest::addColumn<bool>("isPainted");

    QTest::newRow("none") << QColor() << false;
    QTest::newRow("transparent") << QColor(Qt::transparent) << false;
    QTest::newRow("transparent yellow") << QColor(255, 255, 0, 0) << false;
    QTest::newRow("translucent") << QColor(255, 255, 0, 1) << true;
    QTest::newRow("yellow") << QColor(Qt::yellow) << true;
    QTest::newRow("white") << QColor(Qt::white) << true;
}

void tst_BarcodePainting::backgroundIsPaintedIfThereIsOne()
{
    QFETCH(QColor, background);
    QFETCH(bool, isPainted);
    QZint code = qrCode();
    code.setBgColor(background);
    const QRectF rect(10, 20, 200, 100);
    const QList<Figure> figures = recorded(code, rect, QZint::CenterBarCode);
    const bool isFirst = areEqual(placeOf(figures.first()), rect)
        && figures.first().brush == QBrush(background) && figures.first().pen.style() == Qt::NoPen;
    QCOMPARE(isFirst, isPainted);
    QVERIFY(figures.at(1).brush == QBrush(Qt::black));
}

void tst_BarcodePainting::errorsLeaveTheBackground()
{
    QZint code = barcode(13, u"no figures"_s);
    const QRectF rect(10, 20, 200, 100);
    QVERIFY(recorded(code, rect).isEmpty());
    code.setBgColor(Qt::yellow);
    const QList<Figure> figures = recorded(code, rect);
    QCOMPARE(figures.size(), 1);
    QVERIFY(areEqual(placeOf(figures.first()), rect));
}

void tst_BarcodePainting::foregroundIsBlackUnlessItIsGiven()
{
    const std::array<std::pair<QColor, QColor>, 3> colours { { { QColor(), Qt::black }, { Qt::red, Qt::red },
        { QColor(1, 2, 3, 4), QColor(1, 2, 3, 4) } } };
    for (const auto &[given, expected] : colours) {
        QZint code = qrCode();
        code.setFgColor(given);
        for (const Figure &figure : recorded(code, QRectF(0, 0, 100, 100)))
            QCOMPARE(figure.brush, QBrush(expected));
    }
}

void tst_BarcodePainting::colouredModulesKeepTheirColours()
{
    QZint code = barcode(144, u"Ultracode"_s);
    code.setFgColor(Qt::darkRed);
    QSet<QRgb> colours;
    for (const Figure &figure : recorded(code, QRectF(0, 0, 170, 130)))
        colours.insert(figure.brush.color().rgb());
    // Cyan, magenta, yellow, green, black and white: all that the symbology has.
    QCOMPARE(colours, QSet<QRgb>({ 0xFF00FFFF, 0xFFFF00FF, 0xFFFFFF00, 0xFF00FF00, 0xFF000000, 0xFFFFFFFF }));
}

void tst_BarcodePainting::hexagonsStandOnACorner()
{
    const QZint code = barcode(57, u"MaxiCode 12345"_s);
    RecordingPaintDevice device;
    QPainter painter(&device);
    code.render(painter, QRectF(0, 0, 300, 1000), QZint::KeepAspectRatio); // ten units a module
    painter.end();
    QCOMPARE(device.outlines().size(), qsizetype(Zint::geometryOf(code)->hexagons.size()));
    // The first dark module of this text is the third of the first row.
    const QPolygonF &first = device.outlines().first().points;
    QCOMPARE(first.size(), 6);
    QVERIFY(areEqual(first.boundingRect(), QRectF(2, 0, 1, 2.0 / std::sqrt(3.0))));
    const auto corners = std::ranges::count_if(first, [](QPointF p) { return std::abs(p.x() - 2.5) < 1e-6; });
    QCOMPARE(corners, 2);
}

void tst_BarcodePainting::ringsHaveTheirWidth()
{
    const QZint code = barcode(57, u"A"_s);
    QList<Figure> rings;
    for (const Figure &figure : recorded(code, QRectF(0, 0, 300, 1000), QZint::KeepAspectRatio)) {
        if (figure.kind == Kind::Ellipse)
            rings.append(figure);
    }
    QCOMPARE(rings.size(), 3);
    for (const Figure &ring : rings) {
        QCOMPARE(ring.brush.style(), Qt::NoBrush);
        QVERIFY(ring.pen.widthF() > 0.7 && ring.pen.widthF() < 0.8);
        QCOMPARE(ring.pen.isCosmetic(), false);
        QCOMPARE(ring.transform.m11(), 10.0);
    }
}

void tst_BarcodePainting::dotsAreDiscs()
{
    const QZint code = barcode(115, u"DotCode"_s);
    const QList<Figure> figures = recorded(code, QRectF(0, 0, 210, 140)); // 21 × 14 modules
    QVERIFY(figures.size() > 50);
    for (const Figure &figure : figures) {
        QVERIFY(figure.kind == Kind::Ellipse);
        QCOMPARE(figure.pen.style(), Qt::NoPen);
        QCOMPARE(figure.brush, QBrush(Qt::black));
        const QRectF place = placeOf(figure);
        QVERIFY(std::abs(place.width() - 8.0) < 1e-3 && std::abs(place.height() - 8.0) < 1e-3);
    }
}

QTEST_MAIN(tst_BarcodePainting)
#include "tst_barcodepainting.moc"
