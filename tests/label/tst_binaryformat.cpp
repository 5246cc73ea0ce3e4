// SPDX-License-Identifier: BSD-3-Clause
#include "items/shapes/rectangleitem.h"
#include "label/binaryformat.h"
#include "label/labellimits.h"
#include "tests/support/hexbytes.h"

#include <QRegularExpression>
#include <QTest>
#include <QtEndian>

#include <bit>
#include <limits>

using namespace Qt::StringLiterals;

namespace {

constexpr const char *magic = "56 58 4C 41 42 45 4C 00";
constexpr const char *version = "00 00 00 06";
// 62 mm × 29.5 mm at 300 dpi
constexpr const char *page = "404F000000000000 403D800000000000 4072C00000000000";
// "black", "rot": byte count, UTF-16; RGB: specification, alpha, red, green, blue, padding
constexpr const char *inks = "00 00 00 02"
                             "0000000A 0062 006C 0061 0063 006B  01 FFFF 0000 0000 0000 0000"
                             "00000006 0072 006F 0074  01 FFFF D4D4 0000 0000 0000";
constexpr const char *paper = "01 FFFF FFFF FFFF F0F0 0000";
constexpr const char *oneItem = "00 00 00 01";
// The type code and the length of the record: 196 bytes.
constexpr const char *frame = "00 01 00 2A  00 00 00 C4";
constexpr const char *identity = "0007 00000001";
constexpr const char *mirrors = "01 00 01";
constexpr const char *behindMirrors = "3FF8000000000000" // z 1.5
                                      "00000107 00" // flags, hidden
                                      "0000000000000000" // rotation
                                      "4044000000000000 4034400000000000" // 40 × 20.25
                                      "3FF0000000000000 3FF0000000000000" // scales
                                      "3FF0000000000000 0000000000000000 0000000000000000"
                                      "0000000000000000 3FF0000000000000 0000000000000000"
                                      "0000000000000000 0000000000000000 3FF0000000000000"
                                      "C029000000000000 3FB999999999999A" // at (-12.5, 0.1)
                                      "00000004 FFFFFFFF" // datasource 4, no field
                                      "01 FFFF D4D4 0000 0000 0000" // pen colour
                                      "0003 00000002 00000000 00000040" // pen
                                      "0001 01 8080 0A0A 1414 1E1E 0000"; // brush, fill colour

// Offsets in the document that these make.
constexpr int versionAt = 8;
constexpr int widthAt = 12;
constexpr int heightAt = 20;
constexpr int dpiAt = 28;
constexpr int inksAt = 36;
constexpr int firstNameAt = 40;
constexpr int firstColorAt = 54;
constexpr int secondNameAt = 65;
constexpr int paperAt = 86;
constexpr int itemsAt = 97;
constexpr int frameAt = 101;
constexpr int recordAt = 109;
constexpr int wholeSize = 305;

QByteArray head()
{
    return fromHexText(magic) + fromHexText(version) + fromHexText(page) + fromHexText(inks)
        + fromHexText(paper);
}

QByteArray record()
{
    return fromHexText(identity) + fromHexText(mirrors) + fromHexText(behindMirrors);
}

QByteArray whole()
{
    return head() + fromHexText(oneItem) + fromHexText(frame) + record();
}

/// The document with some bytes replaced.
QByteArray patched(int at, const QByteArray &bytes)
{
    return whole().replace(at, bytes.size(), bytes);
}

QByteArray bigEndian(quint32 number)
{
    QByteArray bytes(4, '\0');
    qToBigEndian(number, bytes.data());
    return bytes;
}

QByteArray bigEndian(double number)
{
    QByteArray bytes(8, '\0');
    qToBigEndian(std::bit_cast<quint64>(number), bytes.data());
    return bytes;
}

LoadResult read(const QByteArray &data, BrokenItems broken = BrokenItems::Refuse)
{
    return BinaryFormat::read(data, u"a.vxb"_s, broken);
}

QStringList shortTexts(const Problems &problems)
{
    QStringList texts;
    for (const Problem &problem : problems)
        texts.append(problem.where + u": "_s + problem.what);
    return texts;
}

QStringList problemsOf(const QByteArray &data)
{
    const LoadResult result = read(data);
    return result.document ? QStringList(u"accepted"_s) : shortTexts(result.problems);
}

LabelDocument sampleDocument()
{
    LabelDocument document;
    document.setPageSize(QSizeF(62, 29.5));
    document.setInks({ { u"black"_s, QColor(0, 0, 0) }, { u"rot"_s, QColor(0xD4, 0, 0) } });
    document.setPaper(QColor(255, 255, 240));
    auto item = std::make_unique<RectangleItem>();
    item->setItemId(7);
    item->setItemSize(QSizeF(40, 20.25));
    item->setItemZValue(1.5);
    item->setItemHorizontalMirror(true);
    item->setItemPenColor(QColor(0xD4, 0, 0));
    item->setItemFillColor(QColor(10, 20, 30, 128));
    item->setItemPenWidth(3);
    item->setItemPenStyle(Qt::DashLine);
    item->setItemPenCapStyle(Qt::FlatCap);
    item->setItemPenJoinStyle(Qt::BevelJoin);
    item->setPos(-12.5, 0.1);
    item->setDatasourceId(4);
    item->setVisible(false);
    document.addItem(std::move(item));
    return document;
}

} // namespace

class tst_BinaryFormat : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    void bytesAreFixed();
    void bytesGiveTheDocument();
    void magicTellsTheFormat();
    void olderRecordsAreShorter();
    void ditheringIsAboveTheNumberOfInks();
    void everyTruncationIsRefused();
    void headMistakesAreNamed_data();
    void headMistakesAreNamed();
    void frameMistakesAreNamed_data();
    void frameMistakesAreNamed();
    void brokenGeometryIsNamed_data();
    void brokenGeometryIsNamed();
    void brokenGeometryOfOldRecordsIsNamed();
    void allProblemsAreReported();
    void brokenItemsCanBeLeftOut();
    void brokenFramesAreRefusedAnyway();
    void countsAreCheckedBeforeAnythingIsRead();
    void itemsAreLimited();
};

void tst_BinaryFormat::bytesAreFixed()
{
    QCOMPARE(whole().size(), wholeSize);
    QCOMPARE(toHexText(BinaryFormat::write(sampleDocument())), toHexText(whole()));
}

void tst_BinaryFormat::bytesGiveTheDocument()
{
    const LoadResult result = read(whole());
    QCOMPARE(shortTexts(result.problems), QStringList());
    QVERIFY(result.document);
    const LabelDocument &document = *result.document;
    QCOMPARE(document.pageSize(), QSizeF(62, 29.5));
    QCOMPARE(document.designDpi(), 300.0);
    QCOMPARE(document.inks(), sampleDocument().inks());
    QCOMPARE(document.paper(), QColor(255, 255, 240));
    QCOMPARE(document.items().size(), 1U);
    auto *item = dynamic_cast<RectangleItem *>(document.items()[0].get());
    QVERIFY(item);
    QCOMPARE(item->itemId(), short(7));
    QCOMPARE(item->pos(), QPointF(-12.5, 0.1));
    QCOMPARE(item->getItemFillColor(), QColor(10, 20, 30, 128));
    QCOMPARE(item->getSceneBackgroundColor(), QColor(255, 255, 240));
    QVERIFY(item->getItemHorizontalMirror());
    QVERIFY(!item->isVisible());
    QCOMPARE(toHexText(BinaryFormat::write(document)), toHexText(whole()));
}

void tst_BinaryFormat::magicTellsTheFormat()
{
    QVERIFY(BinaryFormat::hasMagic(whole()));
    QVERIFY(BinaryFormat::hasMagic(fromHexText(magic)));
    QVERIFY(!BinaryFormat::hasMagic(fromHexText(magic).chopped(1)));
    QVERIFY(!BinaryFormat::hasMagic("VXLABEL "));
    QVERIFY(!BinaryFormat::hasMagic({}));
}

void tst_BinaryFormat::olderRecordsAreShorter()
{
    // Before version 6 there were no mirrors and no overprint: three bytes less.
    const QByteArray old = fromHexText(identity) + fromHexText(behindMirrors);
    QByteArray data = head() + fromHexText(oneItem) + fromHexText("00 01 00 2A  00 00 00 C1") + old;
    data.replace(versionAt, 4, bigEndian(5U));
    const LoadResult result = read(data);
    QVERIFY(result.document);
    Item &item = *result.document->items()[0];
    QCOMPARE(item.itemId(), short(7));
    QVERIFY(!item.getItemHorizontalMirror());
    QVERIFY(item.getAllowOverprint());
    QCOMPARE(item.getItemWidth(), 40.0);

    data.replace(versionAt, 4, bigEndian(6U));
    QCOMPARE(problemsOf(data), QStringList(u"byte 101: the record of this rectangle 7 is not whole"_s));
}

void tst_BinaryFormat::ditheringIsAboveTheNumberOfInks()
{
    QCOMPARE(read(whole()).document->dither(), Dither::Diffusion);
    LabelDocument document = sampleDocument();
    const auto bytesWith = [&document](Dither dither) {
        document.setDither(dither);
        return toHexText(BinaryFormat::write(document));
    };
    QCOMPARE(bytesWith(Dither::Diffusion), toHexText(whole()));
    for (const auto &[dither, bytes] :
        { std::pair(Dither::Ordered, "01 00 00 02"), std::pair(Dither::Threshold, "02 00 00 02") }) {
        const QByteArray data = patched(inksAt, fromHexText(bytes));
        QCOMPARE(bytesWith(dither), toHexText(data));
        const LoadResult result = read(data);
        QVERIFY(result.document);
        QCOMPARE(result.document->dither(), dither);
        QCOMPARE(result.document->inks().size(), 2);
    }
}

void tst_BinaryFormat::everyTruncationIsRefused()
{
    // What a document cut at each byte lacks begins at one of these offsets.
    const QList<int> fields { versionAt, widthAt, heightAt, dpiAt, inksAt, firstNameAt, firstColorAt,
        secondNameAt, 75, paperAt, itemsAt, frameAt };
    for (int size = versionAt; size < wholeSize; ++size) {
        int cut = versionAt;
        for (const int field : fields)
            cut = field <= size ? field : cut;
        QCOMPARE(problemsOf(whole().first(size)),
            QStringList(u"byte %1: the file ends too early or is damaged"_s.arg(cut)));
        QVERIFY(!read(whole().first(size), BrokenItems::LeaveOut).document);
    }
    QVERIFY(read(whole()).document);
}

void tst_BinaryFormat::headMistakesAreNamed_data()
{
    QTest::addColumn<QByteArray>("data");
    QTest::addColumn<QString>("problem");

    const auto row = [](const char *name, int at, const QByteArray &bytes, const QString &problem) {
        QTest::newRow(name) << patched(at, bytes) << problem;
    };
    const double nan = std::numeric_limits<double>::quiet_NaN();
    row("version 0", versionAt, bigEndian(0U), u"byte 8: 0 is no version of the format"_s);
    row("version 7", versionAt, bigEndian(7U),
        u"byte 8: version 7 was made by a newer version of the program"_s);
    row("version -1", versionAt, bigEndian(0xFFFFFFFFU),
        u"byte 8: version 4294967295 was made by a newer version of the program"_s);
    row("width NaN", widthAt, bigEndian(nan), u"byte 12: nan is out of range"_s);
    row("width 0", widthAt, bigEndian(0.0), u"byte 12: 0 is out of range"_s);
    row("height 1e308", heightAt, bigEndian(1e308), u"byte 20: 1e+308 is out of range"_s);
    row("dpi 9", dpiAt, bigEndian(9.0), u"byte 28: 9 is out of range"_s);
    row("9 inks", inksAt, bigEndian(9U), u"byte 36: 9 inks"_s);
    row("4294967295 inks", inksAt, bigEndian(0xFFFFFFFFU), u"byte 36: 4294967295 inks"_s);
    row("unknown dithering", inksAt, bigEndian(0x03000002U), u"byte 36: 50331650 inks"_s);
    row("9 inks, ordered", inksAt, bigEndian(0x01000009U), u"byte 36: 9 inks"_s);
    row("ink named ?", firstNameAt + 4, fromHexText("003F"),
        u"byte 40: \"?lack\" holds a character that file names do not take everywhere"_s);
    row("ink of another specification", firstColorAt, fromHexText("02"),
        u"byte 54: the ink's colour is no opaque RGB colour"_s);
    row("translucent ink", firstColorAt + 1, fromHexText("FEFE"),
        u"byte 54: the ink's colour is no opaque RGB colour"_s);
    row("endless name", firstNameAt, bigEndian(0x7FFFFFFEU),
        u"byte 40: the file ends too early or is damaged"_s);
    row("name of an odd length", firstNameAt, bigEndian(9U),
        u"byte 40: the file ends too early or is damaged"_s);
    row("paper of an ink", paperAt + 3, fromHexText("D4D4 0000 0000"),
        u"byte 75: #d40000 is the paper's colour"_s);
    row("translucent paper", paperAt + 1, fromHexText("8080"),
        u"byte 86: the paper's colour is no opaque RGB colour"_s);
    row("20001 items", itemsAt, bigEndian(20001U), u"byte 97: 20001 items"_s);
    row("10 million items", itemsAt, bigEndian(10'000'000U), u"byte 97: 10000000 items"_s);
    row("4294967295 items", itemsAt, bigEndian(0xFFFFFFFFU), u"byte 97: 4294967295 items"_s);
    row("2 items", itemsAt, bigEndian(2U), u"byte 305: the file ends too early or is damaged"_s);
    row("no items", itemsAt, bigEndian(0U), u"byte 101: 204 bytes follow the last item"_s);
    QTest::newRow("a byte more") << whole() + 'x' << u"byte 305: 1 bytes follow the last item"_s;
    QTest::newRow("no inks") << QByteArray(whole()).replace(inksAt, paperAt - inksAt, bigEndian(0U))
                             << u"byte 36: there is no ink to print in"_s;
}

void tst_BinaryFormat::headMistakesAreNamed()
{
    QFETCH(QByteArray, data);
    QFETCH(QString, problem);
    QCOMPARE(problemsOf(data), QStringList(problem));
}

void tst_BinaryFormat::frameMistakesAreNamed_data()
{
    QTest::addColumn<QByteArray>("frame");
    QTest::addColumn<QString>("what");

    const QByteArray rectangle = bigEndian(0x1002AU);
    const auto row = [](const char *name, const QByteArray &type, const QByteArray &bytes, const char *what) {
        QTest::newRow(name) << type + bigEndian(quint32(bytes.size())) + bytes << QString::fromUtf8(what);
    };
    row("unknown type", bigEndian(0x10040U), record(), "65600 is no known type of item");
    row("short record", rectangle, record().chopped(1), "the record of this rectangle 7 is not whole");
    row("long record", rectangle, record() + '\0', "the record of this rectangle 7 is not whole");
    row("empty record", rectangle, {}, "the record of this rectangle 0 is not whole");
    QTest::newRow("length beyond the file")
        << rectangle + bigEndian(197U) + record() << u"the file ends too early or is damaged"_s;
    QTest::newRow("endless length") << rectangle + bigEndian(0xFFFFFFFEU) + record()
                                    << u"the file ends too early or is damaged"_s;
    QTest::newRow("length of a null")
        << rectangle + bigEndian(0xFFFFFFFFU) << u"the record of this rectangle 0 is not whole"_s;
}

void tst_BinaryFormat::frameMistakesAreNamed()
{
    QFETCH(QByteArray, frame);
    QFETCH(QString, what);
    QCOMPARE(problemsOf(head() + fromHexText(oneItem) + frame), QStringList(u"byte 101: "_s + what));
}

void tst_BinaryFormat::brokenGeometryIsNamed_data()
{
    QTest::addColumn<int>("at");
    QTest::addColumn<double>("number");
    QTest::addColumn<QString>("what");

    const double infinity = std::numeric_limits<double>::infinity();
    const double nan = std::numeric_limits<double>::quiet_NaN();
    struct Field
    {
        const char *key;
        int offset;
    };
    constexpr Field fields[]
        = { { "itemZValue", 9 }, { "itemRotation", 22 }, { "itemWidth", 30 }, { "itemHeight", 38 },
              { "itemScaleX", 46 }, { "itemScaleY", 54 }, { "itemTransform", 62 }, { "itemTransform", 118 },
              { "itemTransform", 126 }, { "itemPositionX", 134 }, { "itemPositionY", 142 } };
    for (const auto &[key, offset] : fields) {
        const QString name = QString::fromLatin1(key);
        QTest::addRow("%s NaN at %d", key, offset) << offset << nan << name + u" nan is no finite number"_s;
        QTest::addRow("%s inf at %d", key, offset)
            << offset << -infinity << name + u" -inf is no finite number"_s;
        QTest::addRow("%s huge at %d", key, offset)
            << offset << 1e308 << name + u" 1e+308 is beyond the drawable range of ±1e+07"_s;
    }
    QTest::newRow("negative width") << 30 << -1.0 << u"itemWidth -1 is negative"_s;
    QTest::newRow("negative height") << 38 << -1.0 << u"itemHeight -1 is negative"_s;
}

void tst_BinaryFormat::brokenGeometryIsNamed()
{
    QFETCH(int, at);
    QFETCH(double, number);
    QFETCH(QString, what);
    QCOMPARE(problemsOf(patched(recordAt + at, bigEndian(number))), QStringList(u"byte 101: "_s + what));
}

void tst_BinaryFormat::brokenGeometryOfOldRecordsIsNamed()
{
    QByteArray data = patched(recordAt + 134, bigEndian(1e9));
    data.remove(recordAt + 6, 3)
        .replace(frameAt + 4, 4, bigEndian(193U))
        .replace(versionAt, 4, bigEndian(5U));
    QCOMPARE(problemsOf(data),
        QStringList(u"byte 101: itemPositionX 1e+09 is beyond the drawable range of ±1e+07"_s));
}

void tst_BinaryFormat::allProblemsAreReported()
{
    QByteArray data = patched(recordAt + 30, bigEndian(-1.0));
    data.replace(dpiAt, 8, bigEndian(1.0)).replace(itemsAt, 4, bigEndian(2U));
    data += bigEndian(1U) + bigEndian(0U);
    QCOMPARE(problemsOf(data),
        QStringList({ u"byte 28: 1 is out of range"_s, u"byte 101: itemWidth -1 is negative"_s,
            u"byte 305: 1 is no known type of item"_s }));
}

void tst_BinaryFormat::brokenItemsCanBeLeftOut()
{
    const QByteArray unknown = bigEndian(1U) + bigEndian(3U) + "abc";
    const QByteArray good = fromHexText(frame) + record();
    const LoadResult result = read(head() + bigEndian(3U) + good + unknown + good, BrokenItems::LeaveOut);
    QVERIFY(result.document);
    QCOMPARE(result.document->items().size(), 2U);
    QCOMPARE(shortTexts(result.problems), QStringList(u"byte 305: 1 is no known type of item"_s));
}

void tst_BinaryFormat::brokenFramesAreRefusedAnyway()
{
    QVERIFY(!read(whole() + 'x', BrokenItems::LeaveOut).document);
    QVERIFY(!read(patched(itemsAt, bigEndian(2U)), BrokenItems::LeaveOut).document);
    QVERIFY(!read(patched(dpiAt, bigEndian(1.0)), BrokenItems::LeaveOut).document);
}

void tst_BinaryFormat::countsAreCheckedBeforeAnythingIsRead()
{
    // 20,000 items are allowed; that there is only one shows when the second is read.
    QCOMPARE(problemsOf(patched(itemsAt, bigEndian(20000U))),
        QStringList(u"byte 305: the file ends too early or is damaged"_s));
}

void tst_BinaryFormat::itemsAreLimited()
{
    const QByteArray item = fromHexText(frame) + record();
    const LoadResult most = read(head() + bigEndian(20000U) + item.repeated(20000));
    QVERIFY(most.document);
    QCOMPARE(most.document->items().size(), 20000U);
    QCOMPARE(problemsOf(head() + bigEndian(20001U) + item.repeated(20001)),
        QStringList(u"byte 97: 20001 items"_s));
}

QTEST_MAIN(tst_BinaryFormat)
#include "tst_binaryformat.moc"
