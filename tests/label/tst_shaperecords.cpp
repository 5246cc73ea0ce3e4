// SPDX-License-Identifier: BSD-3-Clause
#include "items/barcode/barcodeitem.h"
#include "items/shapes/lineitem.h"
#include "items/text/richtextitem.h"
#include "items/text/simpletextitem.h"
#include "label/binaryformat.h"
#include "tests/support/allitems.h"
#include "tests/support/hexbytes.h"
#include "tests/support/itemrecords.h"

#include <QDataStream>
#include <QRegularExpression>
#include <QTest>
#include <QtEndian>

#include <bit>
#include <limits>

using namespace Qt::StringLiterals;
using MobraTypes::ShapeType;

namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

constexpr int colorBytes = 11;

/// All classes but layers, which write nothing.
QList<ShapeType> shapesWithRecords()
{
    return QList<ShapeType> { MobraTypes::GroupShape } + AllItems::shapes();
}

/// The bytes of a text in a stream.
int bytesOf(const QString &text)
{
    return 4 + 2 * int(text.size());
}

/// The bytes of a record before what all classes have in common.
int bytesBefore(Item &item)
{
    if (auto *label = dynamic_cast<SimpleTextItem *>(&item))
        return bytesOf(label->toPlainText()) + colorBytes + 2 + 8;
    if (auto *rich = dynamic_cast<RichTextItem *>(&item))
        return bytesOf(rich->toHtml()) + 1 + (rich->getDocumentIsEmpty() ? 0 : 8) + colorBytes;
    if (auto *barcode = dynamic_cast<BarcodeItem *>(&item))
        return 2 + bytesOf(barcode->getBarcodeText()) + 2 + 2 + 1 + 2 + 2
            + bytesOf(barcode->getItemFontFamily()) + 2 + 5;
    if (auto *symbol = dynamic_cast<SymbolItem *>(&item))
        return 1 + 1 + 4 + int(QByteArray::fromBase64(symbol->getSvgContentsOriginal().toByteArray()).size())
            + 2 * 8;
    if (auto *svg = dynamic_cast<SvgItem *>(&item))
        return 2 * 8 + 4 + int(QByteArray::fromBase64(svg->getSvgContents().toByteArray()).size()) + 1 + 1;
    if (const auto *picture = dynamic_cast<PixMapItem *>(&item)) {
        const QByteArray bytes = QByteArray::fromBase64(picture->getPixmapItemData().toByteArray());
        return int(bytes.size()) + 2 * 8 + 2;
    }
    switch (item.getItemShape()) {
    case MobraTypes::RoundedRectangleShape:
        return 2 * 8;
    case MobraTypes::PieShape:
        return 4 + 4 + 1;
    default:
        return 0;
    }
}

LabelDocument documentOf(std::unique_ptr<Item> item)
{
    LabelDocument document;
    document.addItem(std::move(item));
    return document;
}

QByteArray bigEndian(quint32 number)
{
    QByteArray bytes(4, '\0');
    qToBigEndian(number, bytes.data());
    return bytes;
}

/// A binary document of one item that has this record; a group is without members.
QByteArray documentOf(ShapeType shape, const QByteArray &record)
{
    const QByteArray withoutCount = BinaryFormat::write(LabelDocument()).chopped(4);
    return withoutCount + bigEndian(1) + bigEndian(shape) + bigEndian(quint32(record.size())) + record
        + (shape == MobraTypes::GroupShape ? bigEndian(0) : QByteArray());
}

QStringList problemsOf(const QByteArray &document)
{
    QStringList texts;
    for (const Problem &problem : BinaryFormat::read(document, {}, BrokenItems::Refuse).problems)
        texts.append(problem.what);
    return texts;
}

/// What reading a binary document tells in which the item's record has another number at an offset; one from
/// the end if negative.
QStringList problemsOfRecord(Item &item, int at, double number, unsigned int version = 6)
{
    QByteArray record = ItemRecords::saved(item);
    qToBigEndian(std::bit_cast<quint64>(number), record.data() + (at < 0 ? record.size() + at : at));
    if (version < 6)
        record.remove(bytesBefore(item) + 6, 3); // mirrors and overprint
    QByteArray data = documentOf(item.getItemShape(), record);
    qToBigEndian(quint32(version), data.data() + 8);
    return problemsOf(data);
}

} // namespace

/// The records of all classes in binary documents.
class tst_ShapeRecords : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    void brokenCommonNumbersAreNamed_data();
    void brokenCommonNumbersAreNamed();
    void brokenOwnNumbersAreNamed_data();
    void brokenOwnNumbersAreNamed();
    void brokenScreenFactorIsNamed();
    void textsThatWouldNotBeKeptAreNamed();
    void weightOfAnEmptyTextComesBack_data();
    void weightOfAnEmptyTextComesBack();
    void eachNumberIsToldOnce();
    void secondPositionOfALineDecides_data();
    void secondPositionOfALineDecides();
    void recordsAreWhole_data() { AllItems::addRows(shapesWithRecords()); }
    void recordsAreWhole();
};

void tst_ShapeRecords::brokenCommonNumbersAreNamed_data()
{
    QTest::addColumn<ShapeType>("shape");
    QTest::addColumn<unsigned int>("version");
    for (const ShapeType shape : shapesWithRecords()) {
        for (const unsigned int version : { 5U, 6U })
            QTest::addRow(
                "%s, version %u", AllItems::object(*AllItems::made(shape)).metaObject()->className(), version)
                << shape << version;
    }
}

void tst_ShapeRecords::brokenCommonNumbersAreNamed()
{
    QFETCH(ShapeType, shape);
    QFETCH(unsigned int, version);
    constexpr std::pair<const char *, int> numbers[]
        = { { "itemZValue", 9 }, { "itemRotation", 22 }, { "itemWidth", 30 }, { "itemHeight", 38 },
              { "itemScaleX", 46 }, { "itemScaleY", 54 }, { "itemTransform", 62 }, { "itemTransform", 126 },
              { "itemPositionX", 134 }, { "itemPositionY", 142 } };
    const std::unique_ptr<Item> item = ItemRecords::settled(AllItems::made(shape));
    if (shape == MobraTypes::GroupShape) {
        // It has no size until it has members, and documents want one.
        item->setItemWidth(20.0);
        item->setItemHeight(10.0);
    }
    const int before = bytesBefore(*item);
    for (const auto &[key, at] : numbers) {
        const QString name = QString::fromLatin1(key);
        QCOMPARE(problemsOfRecord(*item, before + at, notANumber, version),
            QStringList(name + u" nan is no finite number"_s));
        QCOMPARE(problemsOfRecord(*item, before + at, -1e308, version),
            QStringList(name + u" -1e+308 is beyond the drawable range of ±1e+07"_s));
    }
}

void tst_ShapeRecords::brokenOwnNumbersAreNamed_data()
{
    QTest::addColumn<ShapeType>("shape");
    QTest::addColumn<QString>("key");
    QTest::addColumn<int>("at");
    QTest::newRow("radius x") << MobraTypes::RoundedRectangleShape << u"roundingRadiusX"_s << 0;
    QTest::newRow("radius y") << MobraTypes::RoundedRectangleShape << u"roundingRadiusY"_s << 8;
    // A label text begins with "TEXT", its colour and its alignment, and ends in its coefficients, three
    // flags and the limits.
    QTest::newRow("margin") << MobraTypes::LabelTextShape << u"itemDocumentMargin"_s << 12 + 11 + 2;
    QTest::newRow("coefficient x") << MobraTypes::LabelTextShape << u"oldTransformCoefficientM31"_s << -20;
    QTest::newRow("coefficient y") << MobraTypes::LabelTextShape << u"oldTransformCoefficientM32"_s << -12;
    // A line ends in its length, arrows in two bytes, and the position.
    QTest::newRow("length") << MobraTypes::LineShape << u"itemLength"_s << -26;
    QTest::newRow("x of a line") << MobraTypes::LineShape << u"itemPositionX"_s << -16;
    QTest::newRow("y of a line") << MobraTypes::LineShape << u"itemPositionY"_s << -8;
}

void tst_ShapeRecords::brokenOwnNumbersAreNamed()
{
    QFETCH(ShapeType, shape);
    QFETCH(QString, key);
    QFETCH(int, at);
    const std::unique_ptr<Item> item = AllItems::made(shape);
    for (const char *field : { "", "Größe" }) {
        item->setDatasourceField(QString::fromUtf8(field));
        for (const unsigned int version : { 1U, 6U }) {
            for (const double number : { notANumber, infinity, -infinity })
                QCOMPARE(problemsOfRecord(*item, at, number, version),
                    QStringList(key + u" %1 is no finite number"_s.arg(number)));
            QCOMPARE(problemsOfRecord(*item, at, 1e308, version),
                QStringList(key + u" 1e+308 is beyond the drawable range of ±1e+07"_s));
            QCOMPARE(problemsOfRecord(*item, at, 1e7, version), QStringList());
        }
    }
    const QStringList belowOne = key == u"itemLength"
        ? QStringList(u"itemLength 0.5 is below 1, the shortest line"_s)
        : QStringList();
    QCOMPARE(problemsOfRecord(*item, at, 0.5), belowOne);
}

// Only a rich text that is not empty has it.
void tst_ShapeRecords::brokenScreenFactorIsNamed()
{
    RichTextItem rich;
    rich.setEmptyFontWeight(QFont::Normal);
    rich.setItemText(u"Sale"_s);
    QVERIFY(!rich.getDocumentIsEmpty());
    const int at = bytesOf(rich.toHtml()) + 1;
    QCOMPARE(problemsOfRecord(rich, at, notANumber), QStringList(u"screenDpi nan is no finite number"_s));
    QCOMPARE(problemsOfRecord(rich, at, 1.25), QStringList());
}

void tst_ShapeRecords::textsThatWouldNotBeKeptAreNamed()
{
    RichTextItem rich;
    const QByteArray record = ItemRecords::saved(rich);
    const QString html = QString(u"<table><tr><td>"_s).repeated(200);
    QByteArray bad;
    QDataStream stream(&bad, QIODevice::WriteOnly);
    stream << html;
    bad += record.sliced(bytesOf(rich.toHtml()));
    QByteArray data = BinaryFormat::write(documentOf(std::unique_ptr<Item>(rich.createItemCopy())));
    data.chop(record.size() + 4);
    QByteArray length(4, '\0');
    qToBigEndian(quint32(bad.size()), length.data());
    const LoadResult result = BinaryFormat::read(data + length + bad, {}, BrokenItems::Refuse);
    QCOMPARE(result.problems.size(), 1);
    QCOMPARE(result.problems[0].what, u"itemHtml is too complicated to be laid out"_s);
}

void tst_ShapeRecords::weightOfAnEmptyTextComesBack_data()
{
    QTest::addColumn<int>("weight");
    QTest::addColumn<QByteArray>("written"); // with upright, not underlined, aligned to the left
    QTest::addColumn<int>("read");
    QTest::newRow("bold") << 700 << fromHexText("004B 00 00 0001") << 700;
    QTest::newRow("normal") << 400 << fromHexText("0190 00 00 0001") << 400;
    QTest::newRow("black") << 900 << fromHexText("004B 00 00 0001") << 700;
    QTest::newRow("nearer to bold") << 551 << fromHexText("004B 00 00 0001") << 700;
    QTest::newRow("medium") << 500 << fromHexText("0190 00 00 0001") << 400;
    QTest::newRow("thin") << 100 << fromHexText("0190 00 00 0001") << 400;
}

// Records alone lose it, since readers take the weight in an older scale, in which 75 is bold.
void tst_ShapeRecords::weightOfAnEmptyTextComesBack()
{
    QFETCH(int, weight);
    QFETCH(QByteArray, written);
    auto rich = std::make_unique<RichTextItem>();
    rich->setEmptyFontWeight(weight);
    const QByteArray data = BinaryFormat::write(documentOf(std::move(rich)));
    QVERIFY2(data.endsWith(written), toHexText(data.last(6)).constData());
    const LoadResult again = BinaryFormat::read(data, {}, BrokenItems::Refuse);
    QVERIFY(again.document);
    const auto &loaded = dynamic_cast<RichTextItem &>(*again.document->items()[0]);
    QTEST(loaded.getEmptyFontWeight(), "read");
    QCOMPARE(BinaryFormat::write(*again.document), data);
}

// The transform has nine numbers, and a line two positions.
void tst_ShapeRecords::eachNumberIsToldOnce()
{
    LineItem line;
    QByteArray record = ItemRecords::saved(line);
    const QByteArray document = BinaryFormat::write(documentOf(std::unique_ptr<Item>(line.createItemCopy())));
    const QByteArray broken(8, '\xFF'); // no number
    for (const qsizetype at : { qsizetype(62), qsizetype(70), qsizetype(134), record.size() - 16 })
        record.replace(at, 8, broken);
    const LoadResult result
        = BinaryFormat::read(document.chopped(record.size()) + record, {}, BrokenItems::Refuse);
    QStringList texts;
    for (const Problem &problem : result.problems)
        texts.append(problem.what);
    QCOMPARE(texts,
        QStringList(
            { u"itemTransform nan is no finite number"_s, u"itemPositionX nan is no finite number"_s }));
}

// Both are the same in records that a line has written. A scene takes positions that are very near each other
// for equal, wherever the item was before.
void tst_ShapeRecords::secondPositionOfALineDecides_data()
{
    QTest::addColumn<double>("first");
    QTest::addColumn<double>("second");
    QTest::newRow("far") << 1000.0 << -0.5;
    QTest::newRow("origin") << 1000.0 << 0.0;
    QTest::newRow("near") << 100.0 << 100.0 + 1e-11;
    QTest::newRow("tiny") << 1000.0 << 1e-300;
}

void tst_ShapeRecords::secondPositionOfALineDecides()
{
    QFETCH(double, first);
    QFETCH(double, second);
    LineItem line;
    QByteArray record = ItemRecords::saved(line);
    qToBigEndian(std::bit_cast<quint64>(first), record.data() + 134);
    qToBigEndian(std::bit_cast<quint64>(second), record.data() + record.size() - 16);
    LineItem loaded;
    QCOMPARE(ItemRecords::load(loaded, record), QDataStream::Ok);
    QVERIFY2(qAbs(loaded.x() - second) < 1e-12, qPrintable(QString::number(loaded.x(), 'g', 17)));
    LineItem again;
    QCOMPARE(ItemRecords::load(again, ItemRecords::saved(loaded)), QDataStream::Ok);
    QCOMPARE(toHexText(ItemRecords::saved(again)), toHexText(ItemRecords::saved(loaded)));
}

void tst_ShapeRecords::recordsAreWhole()
{
    QFETCH(ShapeType, shape);
    std::unique_ptr<Item> item = AllItems::made(shape);
    item->setItemId(7);
    const QString description = item->toDescriptionString().trimmed();
    const QByteArray record = ItemRecords::saved(*item);
    for (const qsizetype size : { record.size() - 1, record.size() + 1 })
        QCOMPARE(problemsOf(documentOf(shape, (record + '\0').first(size))),
            QStringList(u"the record of this %1 is not whole"_s.arg(description)));
}

QTEST_MAIN(tst_ShapeRecords)
#include "tst_shaperecords.moc"
