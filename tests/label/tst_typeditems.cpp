// SPDX-License-Identifier: BSD-3-Clause
#include "items/graphics/pixmapitem.h"
#include "items/shapes/lineitem.h"
#include "items/shapes/polygonitem.h"
#include "tests/label/typeditems.h"
#include "tests/support/nearness.h"
#include "tests/support/pictures.h"

#include <QRegularExpression>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace TypedItems;

/// What follows from the members that people leave out, and members that contradict each other.
class tst_TypedItems : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    void sizeOfALineIsItsLength_data();
    void sizeOfALineIsItsLength();
    void typedPolygonsFillTheirSize_data();
    void typedPolygonsFillTheirSize();
    void typedScalesStay();
    void typedPictureFillsItsSize_data();
    void typedPictureFillsItsSize();
    void whatIsNoPictureIsNamed_data();
    void whatIsNoPictureIsNamed();
    void typedItemsTurnAboutTheirCentre_data() { AllItems::addRows(); }
    void typedItemsTurnAboutTheirCentre();
    void mirroredLineStaysInPlace();
};

void tst_TypedItems::sizeOfALineIsItsLength_data()
{
    QTest::addColumn<QByteArray>("members");
    QTest::addColumn<QStringList>("problems");

    const auto row = [](const char *members, const QStringList &problems) {
        QTest::newRow(members) << QByteArray(members) << problems;
    };
    const QStringList accepted { u"accepted"_s };
    row("", accepted);
    row(R"("itemWidth": 100)", accepted);
    row(R"("itemWidth": 100, "itemHeight": 0)", accepted);
    row(R"("itemLength": 62.5, "itemWidth": 62.5)", accepted);
    row(R"("itemWidth": 200)", { u"/items/0/itemWidth: is not the length of the line, which is 100"_s });
    row(R"("itemLength": 62.5, "itemWidth": 100)",
        { u"/items/0/itemWidth: is not the length of the line, which is 62.5"_s });
    row(R"("itemHeight": 20)", { u"/items/0/itemHeight: a line has no height"_s });
    row(R"("itemWidth": 0, "itemHeight": 20)",
        { u"/items/0/itemHeight: a line has no height"_s,
            u"/items/0/itemWidth: is not the length of the line, which is 100"_s });
}

void tst_TypedItems::sizeOfALineIsItsLength()
{
    QFETCH(QByteArray, members);
    QTEST(problemsOfItem(MobraTypes::LineShape, members), "problems");
}

void tst_TypedItems::typedPolygonsFillTheirSize_data()
{
    QTest::addColumn<ShapeType>("shape");
    for (const ShapeType shape :
        { MobraTypes::RightTriangleShape, MobraTypes::EquilateralTriangleShape, MobraTypes::DiamondShape,
            MobraTypes::PentagonShape, MobraTypes::HexagonShape, MobraTypes::OctagonShape })
        QTest::addRow("%x", shape) << shape;
}

void tst_TypedItems::typedPolygonsFillTheirSize()
{
    QFETCH(ShapeType, shape);
    const auto item = itemOf<PolygonItem>(shape, R"("itemWidth": 600, "itemHeight": 250, "itemPenStyle": 0)");
    QCOMPARE(item->getItemSize(), QSizeF(600, 250));
    const QRectF outline = item->polygon().boundingRect();
    QVERIFY(areNear(outline.topLeft(), { 0, 0 }));
    // The reference points have ten digits.
    QVERIFY(qAbs(outline.width() - 600) < 1e-6 && qAbs(outline.height() - 250) < 1e-6);
}

void tst_TypedItems::typedScalesStay()
{
    const auto item = itemOf<PolygonItem>(MobraTypes::DiamondShape,
        R"("itemWidth": 600, "itemScaleX": 1.5, "itemHeight": 50, "itemPenStyle": 0)");
    QCOMPARE(item->getItemScaleX(), 1.5);
    QCOMPARE(item->getItemScaleY(), 0.5);
    QCOMPARE(item->polygon().boundingRect(), QRectF(0, 0, 150, 50));
}

void tst_TypedItems::typedPictureFillsItsSize_data()
{
    QTest::addColumn<QByteArray>("members");
    QTest::addColumn<QRectF>("place");
    QTest::newRow("size") << QByteArray(R"("itemWidth": 600, "itemHeight": 50)") << QRectF(0, 0, 600, 50);
    QTest::newRow("width") << QByteArray(R"("itemWidth": 600)") << QRectF(0, 0, 600, 25);
    QTest::newRow("scales") << QByteArray(R"("itemScaleX": 2, "itemScaleY": 3)") << QRectF(0, 0, 120, 75);
    QTest::newRow("none") << QByteArray(R"("itemPositionX": 7)") << QRectF(7, 0, 60, 25);
}

void tst_TypedItems::typedPictureFillsItsSize()
{
    QFETCH(QByteArray, members);
    QFETCH(QRectF, place);
    const auto item
        = itemOf<PixMapItem>(MobraTypes::PixmapShape, members + contentOf(MobraTypes::PixmapShape));
    QCOMPARE(item->getItemSize(), place.size());
    QVERIFY(areNear(item->sceneBoundingRect().topLeft(), place.topLeft()));
    QVERIFY(areNear(item->sceneBoundingRect().bottomRight(), place.bottomRight()));
}

void tst_TypedItems::whatIsNoPictureIsNamed_data()
{
    QTest::addColumn<QByteArray>("value");
    QTest::addColumn<QString>("problem");
    const QString none = u"is no picture"_s;
    QTest::newRow("number") << QByteArray("5") << u"is a number, not text"_s;
    QTest::newRow("no Base64") << QByteArray(R"("no Base64!")") << none;
    QTest::newRow("empty") << QByteArray(R"("")") << none;
    QTest::newRow("no picture") << QByteArray(R"("AAAAAXh4eHg=")") << none;
    QTest::newRow("more than a picture") << QByteArray(R"("AAAAAHg=")") << none;
    const QByteArray large = QByteArray("\0\0\0\1", 4) + Pictures::pngHeader(65'536, 65'536);
    QTest::newRow("too large") << '"' + large.toBase64() + '"' << u"is too large a picture"_s;
}

void tst_TypedItems::whatIsNoPictureIsNamed()
{
    QFETCH(QByteArray, value);
    QFETCH(QString, problem);
    const QStringList problems = problemsOfItem(MobraTypes::PixmapShape, R"("pixmapItemData": )" + value);
    QCOMPARE(problems.size(), 1);
    QVERIFY2(
        problems[0].contains(u"pixmapItemData"_s) && problems[0].contains(problem), qPrintable(problems[0]));
}

// However an item is written, rotating it leaves its centre where it is.
void tst_TypedItems::typedItemsTurnAboutTheirCentre()
{
    QFETCH(ShapeType, shape);
    const bool isLine = shape == MobraTypes::LineShape;
    const QByteArray size = isLine ? R"("itemLength": 600)" : R"("itemWidth": 600, "itemHeight": 250)";
    const QByteArray place = R"(, "itemRotation": 30, "itemPositionX": 100, "itemPositionY": -40)";
    const auto item = itemOf<Item>(shape, size + place + contentOf(shape));
    const double middle = isLine ? 0 : 125;
    const auto mapped = [&](double x, double y) {
        return AllItems::graphics(*item).mapToParent(AllItems::pointIn(*item, x, y));
    };
    QCOMPARE(item->getItemSize(), QSizeF(600, 2 * middle));
    const QPointF centre = QPointF(100, -40) + QPointF(300, middle);
    QVERIFY(areNear(mapped(300, middle), centre));
    // A point to the right of the centre turns clockwise.
    QVERIFY(areNear(mapped(310, middle) - centre, { 8.6602540378443865, 5 }));
}

void tst_TypedItems::mirroredLineStaysInPlace()
{
    const auto line = itemOf<LineItem>(MobraTypes::LineShape,
        R"("itemHorizontalMirror": 1, "itemLength": 200, "itemPositionX": 10, "itemPositionY": 20)");
    QVERIFY(areNear(line->getItemPoint1(), { 210, 20 }));
    QVERIFY(areNear(line->getItemPoint2(), { 10, 20 }));
}

QTEST_MAIN(tst_TypedItems)
#include "tst_typeditems.moc"
