// SPDX-License-Identifier: BSD-3-Clause
#include "tests/apps/plateprobe.h"
#include "tests/apps/programfolder.h"

#include <QImage>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSet>
#include <QTest>
#include <QTransform>

#include <cmath>

using namespace Qt::StringLiterals;

namespace {

const auto helloProgram = QStringLiteral(VX_HELLO);
const QString hazardSign = u"hazard-sign"_s;
const QString wayfindingSign = u"wayfinding-sign"_s;

constexpr double millimetresPerInch = 25.4;
constexpr int lineShape = 0x1001F;
constexpr int pieShape = 0x1002E;

QJsonObject labelOf(const QString &name)
{
    return QJsonDocument::fromJson(ProgramFolder::readExample(name)).object();
}

/// All items of both signs that are made of shapes.
QList<QJsonObject> itemsOfSigns()
{
    QList<QJsonObject> items;
    for (const QString &name : { hazardSign, wayfindingSign }) {
        for (const QJsonValue item : labelOf(name)[u"items"].toArray())
            items.append(item.toObject());
    }
    return items;
}

/// What an item may paint, in its own coordinates. The widest end of a line is the outline of a filled head:
/// its corners are two widths off the line, and a mitre reaches one width further.
QRectF paintedPart(const QJsonObject &item)
{
    const QRectF size(0.0, 0.0, item[u"itemWidth"].toDouble(), item[u"itemHeight"].toDouble());
    if (item[u"itemShape"].toInt() != lineShape)
        return size;
    const double width = item[u"itemPenWidth"].toDouble();
    return size.adjusted(-width, -3.0 * width, width, 3.0 * width);
}

QTransform toPage(const QJsonObject &item)
{
    const QJsonArray m = item[u"itemTransform"].toArray();
    const QTransform turn(m[0].toDouble(), m[1].toDouble(), m[2].toDouble(), m[3].toDouble(), m[4].toDouble(),
        m[5].toDouble(), m[6].toDouble(), m[7].toDouble(), 1.0);
    return turn
        * QTransform::fromTranslate(item[u"itemPositionX"].toDouble(), item[u"itemPositionY"].toDouble());
}

} // namespace

/// The signs of examples/ and the program that the manual begins with.
class tst_Examples : public QObject, private ProgramFolder
{
    Q_OBJECT

private Q_SLOTS:
    void init() { renew(); }

    void examplesAreWhatTheirToolMakes();
    void examplePlatesAreRight_data();
    void examplePlatesAreRight();
    void signsUseEveryShape();
    void signsUseEveryLineEnd();
    void signsUseEveryJoinAndDashes();
    void signsUsePiesWithAndWithoutCircle();
    void itemsOfSignsLieOnThePage_data();
    void itemsOfSignsLieOnThePage();
    void platesCoverWhatTheSignWasDrawnWith_data();
    void platesCoverWhatTheSignWasDrawnWith();
    void gradientOfTheHazardSignFades();
    void helloSavesItsItemPlatesAndProof();
};

void tst_Examples::examplesAreWhatTheirToolMakes()
{
    const ProgramResult result
        = runCommand(u"python3"_s, { u"-B"_s, sourceFile(u"examples/tools/make_examples.py"_s), path() });
    QCOMPARE(result.err, QByteArray());
    QCOMPARE(result.code, 0);
    for (const QString &name : exampleNames()) {
        QVERIFY(!readExample(name).isEmpty());
        QCOMPARE(read(name + u".vxl"_s), readExample(name));
    }
}

void tst_Examples::examplePlatesAreRight_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("dpi");
    QTest::addColumn<QStringList>("options");
    for (const QString &name : exampleNames()) {
        const QStringList options
            = name == u"calibration-sheet"_s ? QStringList { u"--rulers"_s } : QStringList();
        QStringList resolutions { u"203.2"_s, u"300"_s };
        // The others have too many dots for it to be worth the time.
        if (QStringList({ u"asset-tag"_s, u"bin-label"_s, u"calibration-sheet"_s }).contains(name))
            resolutions.append(u"600"_s);
        for (const QString &dpi : resolutions)
            QTest::addRow("%s at %s dpi", qPrintable(name), qPrintable(dpi)) << name << dpi << options;
    }
}

void tst_Examples::examplePlatesAreRight()
{
    QFETCH(QString, name);
    QFETCH(QString, dpi);
    QFETCH(QStringList, options);
    const ProgramResult separated
        = run({ u"separate"_s, exampleFile(name), u"-o"_s, u"plates"_s, u"--dpi"_s, dpi });
    QCOMPARE(separated.err, QByteArray());
    QCOMPARE(separated.code, 0);
    const ProgramResult checked = runCommand(u"python3"_s,
        QStringList { toolFile(u"check_plates.py"_s), exampleFile(name), u"plates"_s, dpi } + options);
    QCOMPARE(checked.err, QByteArray());
    QCOMPARE(checked.out, QByteArray());
    QCOMPARE(checked.code, 0);
}

void tst_Examples::signsUseEveryShape()
{
    QSet<int> shapes;
    for (const QJsonObject &item : itemsOfSigns())
        shapes.insert(item[u"itemShape"].toInt());
    QCOMPARE(shapes,
        QSet<int>({ 0x1001F, 0x1002A, 0x1002B, 0x1002C, 0x1002E, 0x10033, 0x10034, 0x10035, 0x10036, 0x10037,
            0x10038 }));
}

void tst_Examples::signsUseEveryLineEnd()
{
    QSet<int> left;
    QSet<int> right;
    for (const QJsonObject &item : itemsOfSigns()) {
        if (item[u"itemShape"].toInt() != lineShape)
            continue;
        left.insert(item[u"itemArrows"].toInt() & 0xF0);
        right.insert(item[u"itemArrows"].toInt() & 0x0F);
    }
    QCOMPARE(left, QSet<int>({ 0x00, 0x10, 0x30, 0x50, 0x80 }));
    QCOMPARE(right, QSet<int>({ 0x00, 0x01, 0x03, 0x05, 0x08 }));
}

void tst_Examples::signsUseEveryJoinAndDashes()
{
    QSet<int> joins;
    QSet<int> styles;
    for (const QJsonObject &item : itemsOfSigns()) {
        const int style = item[u"itemPenStyle"].toInt();
        styles.insert(style);
        if (style != Qt::NoPen && item[u"itemShape"].toInt() != lineShape)
            joins.insert(item[u"itemPenJoinStyle"].toInt());
    }
    QCOMPARE(joins, QSet<int>({ Qt::MiterJoin, Qt::BevelJoin, Qt::RoundJoin }));
    QCOMPARE(styles, QSet<int>({ Qt::NoPen, Qt::SolidLine, Qt::DashLine, Qt::DotLine, Qt::DashDotLine }));
}

void tst_Examples::signsUsePiesWithAndWithoutCircle()
{
    QSet<bool> circles;
    for (const QJsonObject &item : itemsOfSigns()) {
        if (item[u"itemShape"].toInt() == pieShape)
            circles.insert(item[u"drawCircle"].toBool());
    }
    QCOMPARE(circles, QSet<bool>({ false, true }));
}

void tst_Examples::itemsOfSignsLieOnThePage_data()
{
    QTest::addColumn<QString>("name");
    for (const QString &name : { hazardSign, wayfindingSign })
        QTest::newRow(qPrintable(name)) << name;
}

void tst_Examples::itemsOfSignsLieOnThePage()
{
    QFETCH(QString, name);
    const QJsonObject label = labelOf(name);
    const QJsonObject page = label[u"page"].toObject();
    const double unitsPerMillimetre = page[u"dpi"].toDouble() / millimetresPerInch;
    const QRectF paper(0.0, 0.0, page[u"width"].toDouble() * unitsPerMillimetre,
        page[u"height"].toDouble() * unitsPerMillimetre);
    const QJsonArray items = label[u"items"].toArray();
    QVERIFY(!items.isEmpty());
    for (const QJsonValue value : items) {
        const QJsonObject item = value.toObject();
        QVERIFY2(paper.contains(toPage(item).mapRect(paintedPart(item))),
            qPrintable(u"item %1"_s.arg(item[u"itemId"].toInt())));
    }
}

void tst_Examples::platesCoverWhatTheSignWasDrawnWith_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("ink");
    QTest::addColumn<double>("area");
    // mm², from the sizes in which the parts were drawn; letters are counted by their cells.
    QTest::newRow("black: lines of the warnings, stripes, pictograms, headline, dimension, rules, footer")
        << hazardSign << u"black"_s << 1380. + 480. + 760. + 1220. + 1540. + 350. + 1960. + 2930.;
    QTest::newRow("red: header, three diamonds, half of the gradient's bar, octagon, prohibition")
        << hazardSign << u"red"_s << 6140. + 3 * 540. + 166. * 15. / 2. + 1250. + 630.;
    QTest::newRow("yellow: both triangles within their outlines, stripes")
        << hazardSign << u"yellow"_s << 530. + 460. + 760.;
    QTest::newRow("black: names of the stops, minutes and metres, dimensions")
        << wayfindingSign << u"black"_s << 365. + 300. + 120.;
    QTest::newRow("blue: header, three tiles, their arrows, their labels, route, lanes")
        << wayfindingSign << u"blue"_s << 6630. + 3130. + 420. + 690. + 1350. + 3280.;
    QTest::newRow("green: tile, arrow, label") << wayfindingSign << u"green"_s << 1070. + 140. + 180.;
}

void tst_Examples::platesCoverWhatTheSignWasDrawnWith()
{
    QFETCH(QString, name);
    QFETCH(QString, ink);
    QFETCH(double, area);
    QCOMPARE(run({ u"separate"_s, exampleFile(name), u"-o"_s, u"."_s }).code, 0);
    const QStringList inks = name == hazardSign
        ? QStringList({ u"black"_s, u"proof"_s, u"red"_s, u"yellow"_s })
        : QStringList({ u"black"_s, u"blue"_s, u"green"_s, u"proof"_s });
    QStringList expected;
    for (const QString &plate : inks)
        expected.append(u"%1.%2.png"_s.arg(name, plate));
    QCOMPARE(files(), expected);

    const QJsonObject page = labelOf(name)[u"page"].toObject();
    const QSizeF size(page[u"width"].toDouble(), page[u"height"].toDouble());
    const PlateProbe plate(path(u"%1.%2.png"_s.arg(name, ink)));
    const double printed = plate.coverage(QRectF(QPointF(), size)) / 100.0 * size.width() * size.height();
    QVERIFY2(printed > 0.94 * area && printed < 1.06 * area, qPrintable(QString::number(printed)));
}

void tst_Examples::gradientOfTheHazardSignFades()
{
    QCOMPARE(run({ u"separate"_s, exampleFile(hazardSign), u"-o"_s, u"."_s }).code, 0);
    const PlateProbe red(path(u"hazard-sign.red.png"_s));
    // From 34 mm to 200 mm, red to white: a tenth of it has on average the tone of its middle.
    for (const auto &[tenth, tone] :
        { std::pair(0, 95.0), std::pair(3, 65.0), std::pair(6, 35.0), std::pair(9, 5.0) }) {
        const double covered = red.coverage(QRectF(34.0 + 16.6 * tenth, 171.0, 16.6, 13.0));
        QVERIFY2(std::abs(covered - tone) < 2.0, qPrintable(u"%1: %2"_s.arg(tenth).arg(covered)));
    }
}

void tst_Examples::helloSavesItsItemPlatesAndProof()
{
    const ProgramResult result
        = runCommand(u"/usr/bin/env"_s, { u"QT_QPA_PLATFORM=offscreen"_s, helloProgram });
    QCOMPARE(result.code, 0);
    QCOMPARE(files(),
        QStringList({ u"hello.black.png"_s, u"hello.item.png"_s, u"hello.proof.png"_s, u"hello.red.png"_s }));
    // The outline of 24 lies inside the 300 x 300 of the square.
    const QImage item(path(u"hello.item.png"_s));
    QCOMPARE(item.pixelColor(150, 150), QColor(Qt::red));
    QCOMPARE(item.pixelColor(150, 20), QColor(Qt::black));
    QCOMPARE(item.pixelColor(150, 28), QColor(Qt::red));
    // The diamond's centre is at (590, 295), and its upper corner 300 / 2 x sqrt(2) = 212 dots above.
    const QImage proof(path(u"hello.proof.png"_s));
    QCOMPARE(proof.size(), QSize(1181, 591));
    QCOMPARE(proof.pixelColor(590, 295), QColor(Qt::red));
    QCOMPARE(proof.pixelColor(590, 295 - 190), QColor(Qt::black));
    QCOMPARE(proof.pixelColor(590, 295 - 220), QColor(Qt::white));
}

QTEST_GUILESS_MAIN(tst_Examples)

#include "tst_examples.moc"
