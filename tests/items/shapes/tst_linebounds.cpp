// SPDX-License-Identifier: BSD-3-Clause
#include "items/shapes/lineitem.h"
#include "tests/support/lines.h"

#include <QCoreApplication>
#include <QFile>
#include <QGraphicsScene>
#include <QImage>
#include <QPainter>
#include <QPainterPath>
#include <QRegularExpression>
#include <QStyleOptionGraphicsItem>
#include <QTest>

#include <algorithm>

using namespace Qt::StringLiterals;
using Lines::Look;

namespace {

// How many ends of each kind, lengths, pens and joins tests/tools/line_bounds.py combines.
constexpr int calculatedLines = 5 * 5 * 5 * 4 * 3;

struct CalculatedLine
{
    Look look;
    QRectF bounds;
};

/// The output of tests/tools/line_bounds.py, which knows nothing of the library.
QList<CalculatedLine> readCalculatedLines()
{
    QFile file(QStringLiteral(VX_TEST_DATA_DIR "/linebounds.csv"));
    QList<CalculatedLine> lines;
    if (!file.open(QIODevice::ReadOnly))
        return lines;
    file.readLine(); // licence
    file.readLine(); // names of the columns
    while (!file.atEnd()) {
        const QByteArrayList cells = file.readLine().trimmed().split(',');
        if (cells.size() != 8)
            return {};
        const auto number = [&cells](int column) { return cells[column].toDouble(); };
        lines << CalculatedLine { { cells[0].toUShort(), number(1), cells[2].toUShort(),
                                      static_cast<Qt::PenJoinStyle>(cells[3].toInt()) },
            QRectF(number(4), number(5), number(6), number(7)) };
    }
    return lines;
}

bool isNear(const QRectF &a, const QRectF &b)
{
    const double differences[]
        = { a.x() - b.x(), a.y() - b.y(), a.width() - b.width(), a.height() - b.height() };
    return std::ranges::all_of(differences, [](double difference) { return qAbs(difference) <= 1e-9; });
}

QString text(const Look &look)
{
    return u"arrows 0x%1, length %2, pen %3, join %4"_s.arg(look.arrows, 2, 16, QChar(u'0'))
        .arg(look.length)
        .arg(look.penWidth)
        .arg(int(look.join));
}

QString text(const QRectF &rect)
{
    return u"(%1, %2, %3 x %4)"_s.arg(rect.x(), 0, 'g', 12)
        .arg(rect.y(), 0, 'g', 12)
        .arg(rect.width(), 0, 'g', 12)
        .arg(rect.height(), 0, 'g', 12);
}

/// Whether pixels outside the rectangle change when the line is painted with smooth edges and no clip; a
/// pixel that the rectangle's edge cuts counts as inside.
bool paintsOutside(LineItem &item, const QRectF &rect)
{
    constexpr int around = 100; // more than the widest pen reaches
    const QRect inside = rect.toAlignedRect();
    const QRect whole = inside.adjusted(-around, -around, around, around);
    QImage image(whole.size(), QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    const QImage blank = image;
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.translate(-whole.topLeft());
    const QStyleOptionGraphicsItem option;
    item.paint(&painter, &option, nullptr);
    Q_ASSERT(image != blank);
    painter.setCompositionMode(QPainter::CompositionMode_Clear);
    painter.fillRect(inside, Qt::black);
    return image != blank;
}

/// The only lines whose tips reach out of their bounds: with the other mitered join, which the bounds take
/// for one without miters, an arrow head's tip lies a full pen width before the line's end, but the bounds
/// have room for half a width and 5 units more. A head at the other end of a short line may reach further
/// than the tip, and make room for it.
bool tipReachesOut(const Look &look, const QRectF &bounds)
{
    if (look.join != Qt::SvgMiterJoin)
        return false;
    const bool leftOut = (look.arrows & 0x10) && -look.penWidth < bounds.left();
    const bool rightOut = (look.arrows & 0x01) && look.length + look.penWidth > bounds.right();
    return leftOut || rightOut;
}

} // namespace

/// The bounding rectangle of a line: its numbers, and that it holds what the line paints.
class tst_LineBounds : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    void boundsHaveRoomForPenAndEnds_data();
    void boundsHaveRoomForPenAndEnds();
    void boundsEqualTheCalculatedOnes();
    void shapeIsTheBoundingRectangle();
    void everyChangeUpdatesTheBounds();
    void changesAreAnnouncedToTheScene();
    void paintedPixelsLieInsideTheBounds();

private:
    QList<CalculatedLine> m_lines;
};

void tst_LineBounds::initTestCase()
{
    m_lines = readCalculatedLines();
    QCOMPARE(m_lines.size(), calculatedLines);
}

void tst_LineBounds::boundsHaveRoomForPenAndEnds_data()
{
    QTest::addColumn<int>("arrows");
    QTest::addColumn<double>("length");
    QTest::addColumn<int>("penWidth");
    QTest::addColumn<Qt::PenJoinStyle>("join");
    QTest::addColumn<QRectF>("bounds");

    const auto round = Qt::RoundJoin;
    const auto miter = Qt::MiterJoin;
    const auto bevel = Qt::BevelJoin;

    // Plain lines: half the pen and 5 on every side.
    QTest::newRow("plain") << 0x00 << 100.0 << 1 << round << QRectF(-5.5, -5.5, 111, 11);
    QTest::newRow("plain, wide") << 0x00 << 50.0 << 10 << round << QRectF(-10, -10, 70, 20);
    QTest::newRow("plain, mitered") << 0x00 << 50.0 << 10 << miter << QRectF(-10, -10, 70, 20);
    QTest::newRow("plain, shortest") << 0x00 << 1.0 << 72 << round << QRectF(-41, -41, 83, 82);

    // Bars are four pen widths high and have caps: 2.5 pen widths from the line.
    QTest::newRow("left bar") << 0x80 << 100.0 << 4 << round << QRectF(-7, -15, 114, 30);
    QTest::newRow("right bar") << 0x08 << 100.0 << 4 << round << QRectF(-7, -15, 114, 30);
    QTest::newRow("both bars, short") << 0x88 << 1.0 << 4 << round << QRectF(-7, -15, 15, 30);
    QTest::newRow("both bars, mitered") << 0x88 << 100.0 << 4 << miter << QRectF(-7, -15, 114, 30);

    // Heads on long lines: barbs 2.5 pen widths from the line, corners of filled heads 2.82; a mitered tip
    // takes a full pen width instead of half of one.
    QTest::newRow("open left") << 0x10 << 100.0 << 2 << round << QRectF(-6, -10, 112, 20);
    QTest::newRow("open left, mitered") << 0x10 << 100.0 << 2 << miter << QRectF(-7, -10, 113, 20);
    QTest::newRow("open right, mitered") << 0x01 << 100.0 << 2 << miter << QRectF(-6, -10, 113, 20);
    QTest::newRow("open right, bevelled") << 0x01 << 100.0 << 2 << bevel << QRectF(-6, -10, 112, 20);
    QTest::newRow("filled left") << 0x30 << 100.0 << 10 << round << QRectF(-10, -33.2, 120, 66.4);
    QTest::newRow("filled right, mitered") << 0x03 << 100.0 << 10 << miter << QRectF(-10, -33.2, 125, 66.4);
    QTest::newRow("both filled, mitered") << 0x33 << 100.0 << 10 << miter << QRectF(-15, -33.2, 130, 66.4);
    QTest::newRow("filled and bar, mitered") << 0x38 << 100.0 << 10 << miter << QRectF(-15, -33.2, 125, 66.4);
    QTest::newRow("bar and open, mitered") << 0x81 << 100.0 << 2 << miter << QRectF(-6, -10, 113, 20);

    // Short lines, pen of 10: a head takes 34.641 along the line, a head with chevrons 98.641.
    QTest::newRow("chevrons that fit") << 0x55 << 98.75 << 10 << round << QRectF(-10, -30, 118.75, 60);
    // From 50 - 98.641 to 98.641.
    QTest::newRow("both chevrons") << 0x55 << 50.0 << 10 << round << QRectF(-58.641, -30, 167.282, 60);
    // The right head from 50 - 34.641 lies within the chevrons' 98.641.
    QTest::newRow("chevrons over a head") << 0x51 << 50.0 << 10 << round << QRectF(-10, -30, 118.641, 60);
    // From 20 - 34.641 to 98.641.
    QTest::newRow("chevrons before a head")
        << 0x51 << 20.0 << 10 << round << QRectF(-24.641, -30, 133.282, 60);
    QTest::newRow("chevrons and filled head")
        << 0x53 << 20.0 << 10 << miter << QRectF(-29.641, -33.2, 143.282, 66.4);
    // From 50 - 98.641 to 50; and from 20 - 98.641 to 34.641.
    QTest::newRow("head over chevrons") << 0x15 << 50.0 << 10 << round << QRectF(-58.641, -30, 118.641, 60);
    QTest::newRow("head beyond chevrons") << 0x15 << 20.0 << 10 << round << QRectF(-88.641, -30, 133.282, 60);
    QTest::newRow("left chevrons alone") << 0x50 << 50.0 << 10 << round << QRectF(-10, -30, 118.641, 60);
    QTest::newRow("left chevrons and bar") << 0x58 << 50.0 << 10 << round << QRectF(-10, -30, 118.641, 60);
    QTest::newRow("right chevrons alone") << 0x05 << 50.0 << 10 << round << QRectF(-58.641, -30, 118.641, 60);
    // From 20 - 34.641 to 34.641.
    QTest::newRow("both heads") << 0x11 << 20.0 << 10 << round << QRectF(-24.641, -30, 69.282, 60);
    QTest::newRow("both heads that fit") << 0x11 << 35.0 << 10 << round << QRectF(-10, -30, 55, 60);
    QTest::newRow("left head") << 0x10 << 20.0 << 10 << round << QRectF(-10, -30, 54.641, 60);
    QTest::newRow("left head and bar") << 0x18 << 20.0 << 10 << round << QRectF(-10, -30, 54.641, 60);
    QTest::newRow("right head") << 0x01 << 20.0 << 10 << round << QRectF(-24.641, -30, 54.641, 60);
    QTest::newRow("left head, mitered") << 0x10 << 20.0 << 10 << miter << QRectF(-15, -30, 59.641, 60);

    // Bits without a head paint nothing, but take the room of one.
    QTest::newRow("chevron bit alone") << 0x40 << 20.0 << 10 << miter << QRectF(-15, -30, 45, 60);
    QTest::newRow("fill bit alone") << 0x02 << 20.0 << 10 << miter << QRectF(-10, -33.2, 45, 66.4);
}

void tst_LineBounds::boundsHaveRoomForPenAndEnds()
{
    QFETCH(const int, arrows);
    QFETCH(const double, length);
    QFETCH(const int, penWidth);
    QFETCH(const Qt::PenJoinStyle, join);
    QFETCH(const QRectF, bounds);
    LineItem item;
    Lines::apply(item, { ushort(arrows), length, ushort(penWidth), join });
    QVERIFY2(isNear(item.boundingRect(), bounds), qPrintable(text(item.boundingRect())));
    QCOMPARE(item.getItemSize(), QSizeF(length, 0));
    QCOMPARE(item.line(), QLineF(0, 0, length, 0));
}

void tst_LineBounds::boundsEqualTheCalculatedOnes()
{
    QStringList wrong;
    for (const auto &[look, bounds] : m_lines) {
        LineItem item;
        Lines::apply(item, look);
        if (!isNear(item.boundingRect(), bounds))
            wrong << text(look) + u": "_s + text(item.boundingRect()) + u" instead of "_s + text(bounds);
    }
    QVERIFY2(wrong.isEmpty(), qPrintable(wrong.mid(0, 20).join(u'\n')));
}

void tst_LineBounds::shapeIsTheBoundingRectangle()
{
    for (const ushort arrows : { 0x00, 0x53, 0x88 }) {
        LineItem item;
        Lines::apply(item, { arrows, 20, 10 });
        QPainterPath expected;
        expected.addRect(item.boundingRect());
        QCOMPARE(item.shape(), expected);
    }
}

void tst_LineBounds::everyChangeUpdatesTheBounds()
{
    LineItem item;
    item.setItemLength(50);
    QCOMPARE(item.boundingRect(), QRectF(-5.5, -5.5, 61, 11));
    item.setItemPenWidth(4);
    QCOMPARE(item.boundingRect(), QRectF(-7, -7, 64, 14));
    item.setItemArrows(MobraTypes::LeftArrowOpen, MobraTypes::RightArrowBar);
    QCOMPARE(item.boundingRect(), QRectF(-7, -15, 64, 30));
    item.setItemPenJoinStyle(Qt::MiterJoin);
    QCOMPARE(item.boundingRect(), QRectF(-9, -15, 66, 30));
    QVERIFY(item.setItemArrowRight(MobraTypes::RightArrowOpen));
    QCOMPARE(item.boundingRect(), QRectF(-9, -15, 68, 30));
    QVERIFY(item.setItemArrowLeft(MobraTypes::ArrowNone));
    QCOMPARE(item.boundingRect(), QRectF(-7, -15, 66, 30));
    item.setItemArrows(0);
    QCOMPARE(item.boundingRect(), QRectF(-7, -7, 64, 14));
    QVERIFY(item.setItemSize(QSizeF(80, 0)));
    QCOMPARE(item.boundingRect(), QRectF(-7, -7, 94, 14));
    item.updateItemSize(QSizeF(70, 30));
    QCOMPARE(item.boundingRect(), QRectF(-7, -7, 84, 14));
}

void tst_LineBounds::changesAreAnnouncedToTheScene()
{
    // The scene looks items up in an index that only announced changes keep up to date.
    QGraphicsScene scene(-1000, -1000, 4000, 2000);
    auto *item = new LineItem;
    scene.addItem(item);
    const auto isFoundAt = [&scene, item](double x, double y) {
        QCoreApplication::processEvents();
        return scene.items(QPointF(x, y)).contains(item);
    };
    QVERIFY(isFoundAt(50, 0));
    QVERIFY(!isFoundAt(900, 0));
    item->setItemLength(1000);
    QVERIFY(isFoundAt(900, 0));
    QVERIFY(!isFoundAt(900, 35));
    item->setItemPenWidth(72);
    QVERIFY(isFoundAt(900, 35));
    QVERIFY(!isFoundAt(900, 180));
    item->setItemArrows(0x80);
    QVERIFY(isFoundAt(900, 180));
    item->setItemPoint2({ 0, 900 });
    QVERIFY(isFoundAt(0, 900));
    QVERIFY(!isFoundAt(900, 0));
}

void tst_LineBounds::paintedPixelsLieInsideTheBounds()
{
    int reachingOut = 0;
    QStringList wrong;
    for (const auto &[look, bounds] : m_lines) {
        LineItem item;
        Lines::apply(item, look);
        const bool expected = tipReachesOut(look, bounds);
        reachingOut += expected ? 1 : 0;
        if (paintsOutside(item, item.boundingRect()) != expected)
            wrong << text(look) + (expected ? u" should reach out"_s : u" reaches out"_s);
    }
    QVERIFY2(wrong.isEmpty(), qPrintable(wrong.mid(0, 20).join(u'\n')));
    QVERIFY(reachingOut > 0);
}

QTEST_MAIN(tst_LineBounds)
#include "tst_linebounds.moc"
