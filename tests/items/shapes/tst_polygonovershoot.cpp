// SPDX-License-Identifier: BSD-3-Clause
#include "tests/support/polygons.h"

#include <QPainterPath>
#include <QPainterPathStroker>
#include <QRegularExpression>
#include <QTest>

#include <algorithm>
#include <iterator>
#include <limits>
#include <optional>

using namespace Qt::StringLiterals;

namespace {

struct Join
{
    const char *name;
    Qt::PenJoinStyle style;
};

const Join joins[] = { { "miter", Qt::MiterJoin }, { "bevel", Qt::BevelJoin }, { "round", Qt::RoundJoin },
    { "SVG miter", Qt::SvgMiterJoin } };

QList<QSizeF> sizesOf(const Polygons::Class &kind)
{
    return { kind.size, QSizeF(200, 100), QSizeF(37.5, 81.25), QSizeF(1, 1) };
}

/// The widths of 1 and 5 as far as they are at most a quarter of the smaller side, and that quarter.
QList<double> pensOf(const QSizeF &size)
{
    const double quarter = std::min(size.width(), size.height()) / 4;
    QList<double> pens { quarter };
    for (const double pen : { 1.0, 5.0 }) {
        if (pen < quarter)
            pens << pen;
    }
    return pens;
}

/// How far the stroke of the drawn polygon sticks out of the item on its worst side; negative inside.
double overshootOf(const PolygonItem &item)
{
    const QPen pen = item.getItemPen();
    QPainterPathStroker stroker;
    stroker.setWidth(pen.widthF());
    stroker.setJoinStyle(pen.joinStyle());
    stroker.setMiterLimit(pen.miterLimit());
    stroker.setCapStyle(pen.capStyle());
    stroker.setCurveThreshold(0.01);
    QPainterPath path;
    path.addPolygon(item.polygon());
    path.closeSubpath();
    const QRectF stroke = stroker.createStroke(path).boundingRect();
    const QRectF bounds = item.boundingRect();
    return std::max({ bounds.left() - stroke.left(), bounds.top() - stroke.top(),
        stroke.right() - bounds.right(), stroke.bottom() - bounds.bottom() });
}

/// The worst overshoot over all pens.
double worstOvershoot(const Polygons::Class &kind, const QSizeF &size, Qt::PenJoinStyle join)
{
    double worst = -std::numeric_limits<double>::infinity();
    for (const double pen : pensOf(size)) {
        const auto item = Polygons::made(kind, size);
        Polygons::setPen(*item, pen, join);
        worst = std::max(worst, overshootOf(*item));
    }
    return worst;
}

constexpr double tolerance = 0.75;

/// Where the factors leave more than the tolerance outside, how much: the miter of the worst corner at a pen
/// of a quarter of the smaller side. An SVG miter is moved like a round join, although it reaches as far as a
/// miter up to four times the pen; and the corners at the sides of a hexagon move by half the pen whatever
/// their angle.
struct KnownOvershoot
{
    const Polygons::Class &kind;
    QSizeF size;
    Qt::PenJoinStyle join;
    double figure;
};

const QList<KnownOvershoot> &knownOvershoots()
{
    using namespace Polygons;
    static const QList<KnownOvershoot> known {
        { rightTriangle, { 100, 100 }, Qt::SvgMiterJoin, 17.68 },
        { rightTriangle, { 200, 100 }, Qt::SvgMiterJoin, 6.46 },
        { rightTriangle, { 37.5, 81.25 }, Qt::SvgMiterJoin, 2.19 },
        { equilateralTriangle, equilateralTriangle.size, Qt::SvgMiterJoin, 10.14 },
        { equilateralTriangle, { 200, 100 }, Qt::SvgMiterJoin, 21.30 },
        { equilateralTriangle, { 37.5, 81.25 }, Qt::SvgMiterJoin, 1.01 },
        { diamond, { 100, 100 }, Qt::SvgMiterJoin, 5.18 },
        { diamond, { 200, 100 }, Qt::SvgMiterJoin, 19.24 },
        { diamond, { 37.5, 81.25 }, Qt::SvgMiterJoin, 8.18 },
        { pentagon, pentagon.size, Qt::SvgMiterJoin, 2.40 },
        { pentagon, { 200, 100 }, Qt::SvgMiterJoin, 7.64 },
        { pentagon, { 37.5, 81.25 }, Qt::SvgMiterJoin, 5.72 },
        { hexagon, hexagon.size, Qt::MiterJoin, 1.97 },
        { hexagon, hexagon.size, Qt::SvgMiterJoin, 1.97 },
        { hexagon, { 200, 100 }, Qt::MiterJoin, 7.38 },
        { hexagon, { 200, 100 }, Qt::SvgMiterJoin, 7.38 },
    };
    return known;
}

/// What may stick out; nothing if that is the tolerance.
std::optional<double> knownOvershoot(const Polygons::Class &kind, const QSizeF &size, Qt::PenJoinStyle join)
{
    for (const KnownOvershoot &known : knownOvershoots()) {
        if (known.kind.shape == kind.shape && known.size == size && known.join == join)
            return known.figure;
    }
    return {};
}

} // namespace

/// The stroke of a polygon and the rectangle of its item.
class tst_PolygonOvershoot : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    void strokeStaysInside_data();
    void strokeStaysInside();
    void knownOvershootsAreAllMeasured();
};

void tst_PolygonOvershoot::strokeStaysInside_data()
{
    QTest::addColumn<int>("index");
    QTest::addColumn<QSizeF>("size");
    QTest::addColumn<Qt::PenJoinStyle>("join");
    for (int i = 0; i < Polygons::classes().size(); ++i) {
        const Polygons::Class &kind = Polygons::classes()[i];
        for (const QSizeF &size : sizesOf(kind)) {
            for (const Join &join : joins)
                QTest::addRow("%s, %g x %g, %s", kind.name, size.width(), size.height(), join.name)
                    << i << size << join.style;
        }
    }
}

void tst_PolygonOvershoot::strokeStaysInside()
{
    QFETCH(const int, index);
    QFETCH(const QSizeF, size);
    QFETCH(const Qt::PenJoinStyle, join);
    const Polygons::Class &kind = Polygons::classes()[index];
    const double overshoot = worstOvershoot(kind, size, join);
    const std::optional<double> known = knownOvershoot(kind, size, join);
    const QByteArray text = QByteArray::number(overshoot) + " outside";
    QVERIFY2(overshoot <= known.value_or(tolerance), text);
    // A figure that is too large by more than its rounding hides what would be gained.
    if (known)
        QVERIFY2(overshoot > *known - 0.02, text);
}

void tst_PolygonOvershoot::knownOvershootsAreAllMeasured()
{
    for (const KnownOvershoot &known : knownOvershoots()) {
        QVERIFY(known.figure > tolerance);
        QVERIFY(sizesOf(known.kind).contains(known.size));
        const bool joinIsMeasured = std::any_of(std::begin(joins), std::end(joins),
            [&known](const Join &join) { return join.style == known.join; });
        QVERIFY(joinIsMeasured);
    }
}

QTEST_MAIN(tst_PolygonOvershoot)
#include "tst_polygonovershoot.moc"
