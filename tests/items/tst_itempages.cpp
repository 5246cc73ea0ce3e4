// SPDX-License-Identifier: BSD-3-Clause
#include "tests/items/itempage.h"
#include "tests/items/pagepictures.h"
#include "tests/items/pagevalues.h"
#include "tests/support/allitems.h"
#include "tests/support/hexbytes.h"
#include "tests/support/images.h"
#include "tests/support/itemrecords.h"
#include "tests/support/labeltexts.h"

#include <QApplication>
#include <QDir>
#include <QFileInfo>
#include <QRegularExpression>
#include <QTest>

#include <algorithm>

using namespace Qt::StringLiterals;
using MobraTypes::ShapeType;

namespace {

const QString docs = QStringLiteral(VX_SOURCE_DIR "/docs/");
const QString pages = docs + u"items/"_s;
const QString pictures = docs + u"images/items/"_s;
/// Stands for bytes that Qt decides about.
const QString anything = u"…"_s;

constexpr int mostCompressed = 0;

/// Columns of the tables.
namespace Column {
enum Property { Name, Type, NewValue, Meaning };
enum Field { Offset, Types, Words, NewValues, Bytes };
enum Index { Picture, Kind, Class, Code };
} // namespace Column

const PagePicture &pictureOf(ShapeType shape)
{
    const QList<PagePicture> &all = pagePictures();
    const auto found = std::ranges::find(all, shape, &PagePicture::shape);
    return found == all.end() ? all.first() : *found;
}

ItemPage pageOf(ShapeType shape)
{
    return ItemPage(pages + pictureOf(shape).page + u".md"_s);
}

QString codeOf(ShapeType shape)
{
    return QString::number(shape) + u" (0x"_s + QString::number(shape, 16).toUpper() + u')';
}

QString unticked(const QString &cell)
{
    return QString(cell).remove(u'`');
}

/// The bytes of a cell, or none where anything may stand.
QByteArray bytesOf(const QStringList &row)
{
    return fromHexText(unticked(row[Column::Bytes]).toLatin1());
}

bool mayBeAnything(const QStringList &row)
{
    return unticked(row[Column::Bytes]) == anything;
}

/// The pattern of the record that a table describes.
QString patternOf(const QList<QStringList> &rows)
{
    QString pattern;
    for (const QStringList &row : rows)
        pattern += mayBeAnything(row) ? u"(..)+"_s : unticked(row[Column::Bytes]).remove(u' ');
    return pattern;
}

/// Where a row begins: a number, or what is to be added to the length of a field that nobody knows.
QString offsetText(qsizetype offset, bool behindAnything)
{
    if (!behindAnything)
        return QString::number(offset);
    return offset == 0 ? u"*h*"_s : u"*h* + %1"_s.arg(offset);
}

/// The values of a row's bytes, by its types; what is left of the bytes stands behind them.
QString decoded(const QStringList &row)
{
    const QByteArray bytes = bytesOf(row);
    QDataStream stream(bytes);
    QStringList values;
    for (const QString &type : row[Column::Types].split(u", "_s))
        values << PageValues::ofRecord(stream, type);
    const bool whole = stream.status() == QDataStream::Ok && stream.atEnd();
    return values.join(u", "_s) + (whole ? QString() : u" and other bytes"_s);
}

/// A promise that a property keeps to a range.
struct Range
{
    double low;
    double high = qInf();
};

/// The ranges that a meaning promises.
QList<Range> rangesOf(const QString &meaning)
{
    static const QRegularExpression within(u"\\b(\\d+) to (\\d+)"_s);
    static const QRegularExpression circle(u"at least (\\d+) and below (\\d+)"_s);
    static const QRegularExpression least(u"at least (\\d+)(?! and)"_s);
    static const QRegularExpression always(u"always (\\d+)"_s);
    QList<Range> ranges;
    if (const auto match = within.match(meaning); match.hasMatch())
        ranges << Range { match.captured(1).toDouble(), match.captured(2).toDouble() };
    if (const auto match = circle.match(meaning); match.hasMatch())
        ranges << Range { match.captured(1).toDouble(), match.captured(2).toDouble() - 1.0 };
    if (const auto match = least.match(meaning); match.hasMatch())
        ranges << Range { match.captured(1).toDouble() };
    if (const auto match = always.match(meaning); match.hasMatch())
        ranges << Range { match.captured(1).toDouble(), match.captured(1).toDouble() };
    return ranges;
}

/// Sets values around the ends of the range; nothing if the property takes those within, and others not.
QString departure(QObject &object, const QByteArray &name, const Range &range)
{
    for (const double value : { range.low - 1.0, range.low, range.high, range.high + 1.0 }) {
        if (qIsInf(value))
            continue;
        object.setProperty(name, value);
        const double kept = object.property(name).toDouble();
        const bool inside = value >= range.low && value <= range.high;
        if (kept < range.low || kept > range.high || (inside && kept != value))
            return u"%1 became %2"_s.arg(value).arg(kept);
    }
    return {};
}

} // namespace

/// The pages of the item kinds: everything in them that can be compared with the items.
/// VX_UPDATE_REFERENCES=1 writes the pictures anew: look at every one that changes.
class tst_ItemPages : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    void everyKindHasAPicture();
    void thereAreNoOtherFiles();
    void indexLeadsToThePage_data() { AllItems::addRows(AllItems::shapesAndContainers()); }
    void indexLeadsToThePage();
    void pageTellsClassAndCode_data() { AllItems::addRows(AllItems::shapesAndContainers()); }
    void pageTellsClassAndCode();
    void propertiesAreThoseOfTheClass_data() { AllItems::addRows(AllItems::shapesAndContainers()); }
    void propertiesAreThoseOfTheClass();
    void newItemsHaveTheValues_data() { AllItems::addRows(AllItems::shapesAndContainers()); }
    void newItemsHaveTheValues();
    void propertiesKeepTheirPromises_data();
    void propertiesKeepTheirPromises();
    void listedNumbersAreTaken_data() { AllItems::addRows(AllItems::shapesAndContainers()); }
    void listedNumbersAreTaken();
    void noChangeIsNone_data() { AllItems::addRows(AllItems::shapesAndContainers()); }
    void noChangeIsNone();
    void transparentReadsBlack_data() { AllItems::addRows(AllItems::shapesAndContainers()); }
    void transparentReadsBlack();
    void scalesFollowTheSize_data() { AllItems::addRows(AllItems::shapesAndContainers()); }
    void scalesFollowTheSize();
    void scalesAreLoadedUnlessTold_data() { AllItems::addRows(AllItems::shapesAndContainers()); }
    void scalesAreLoadedUnlessTold();
    void bytesAreTheRecordOfANewItem_data() { AllItems::addRows(AllItems::shapesAndContainers()); }
    void bytesAreTheRecordOfANewItem();
    void offsetsAreSums_data() { AllItems::addRows(AllItems::shapesAndContainers()); }
    void offsetsAreSums();
    void bytesMeanTheValues_data() { AllItems::addRows(AllItems::shapesAndContainers()); }
    void bytesMeanTheValues();
    void sizesAreThoseOfTheRecords_data() { AllItems::addRows(AllItems::shapesAndContainers()); }
    void sizesAreThoseOfTheRecords();
    void linksLeadSomewhere_data() { AllItems::addRows(AllItems::shapesAndContainers()); }
    void linksLeadSomewhere();
    void pictureShowsAnItem_data() { AllItems::addRows(AllItems::shapesAndContainers()); }
    void pictureShowsAnItem();
};

void tst_ItemPages::initTestCase()
{
    LabelTexts::useKnownFont();
    QPalette palette;
    palette.setColor(QPalette::WindowText, Qt::black); // the selection frame
    QApplication::setPalette(palette);
    if (qEnvironmentVariableIntValue("VX_UPDATE_REFERENCES") != 1)
        return;
    for (const PagePicture &picture : pagePictures())
        QVERIFY(rendered(picture).save(pictures + picture.page + u".png"_s, "PNG", mostCompressed));
}

void tst_ItemPages::everyKindHasAPicture()
{
    QList<ShapeType> shown;
    for (const PagePicture &picture : pagePictures()) {
        QCOMPARE(picture.make()->getItemShape(), picture.shape);
        shown << picture.shape;
    }
    QCOMPARE(shown, AllItems::shapesAndContainers());
}

void tst_ItemPages::thereAreNoOtherFiles()
{
    QStringList texts { u"README.md"_s };
    QStringList images;
    for (const PagePicture &picture : pagePictures()) {
        texts << picture.page + u".md"_s;
        images << picture.page + u".png"_s;
    }
    texts.sort();
    images.sort();
    QCOMPARE(QDir(pages).entryList(QDir::Files, QDir::Name), texts);
    QCOMPARE(QDir(pictures).entryList(QDir::Files, QDir::Name), images);
    QCOMPARE(ItemPage(pages + u"README.md"_s).table().size(), AllItems::shapesAndContainers().size());
}

void tst_ItemPages::indexLeadsToThePage()
{
    QFETCH(const ShapeType, shape);
    const QString page = pictureOf(shape).page;
    const QList<QStringList> rows = ItemPage(pages + u"README.md"_s).table();
    const auto row = std::ranges::find(
        rows, codeOf(shape), [](const QStringList &cells) { return cells[Column::Code]; });
    QVERIFY(row != rows.end());
    QCOMPARE(row->at(Column::Kind), u"[%1](%2.md)"_s.arg(pageOf(shape).title(), page));
    QCOMPARE(unticked(row->at(Column::Class)), QString::fromLatin1(AllItems::nameOf(shape)));
    QVERIFY(row->at(Column::Picture).contains(u" src=\"../images/items/%1.png\""_s.arg(page)));
}

void tst_ItemPages::pageTellsClassAndCode()
{
    QFETCH(const ShapeType, shape);
    const ItemPage page = pageOf(shape);
    QVERIFY(!page.isEmpty());
    const QString name = QString::fromLatin1(AllItems::nameOf(shape));
    QVERIFY(page.text().contains(u"Class [`%1`](../../items/"_s.arg(name)));
    QVERIFY(page.text().contains(u"/%1.h) · type code %2 ·"_s.arg(name.toLower(), codeOf(shape))));
    QVERIFY(page.text().contains(u"](../images/items/%1.png)"_s.arg(pictureOf(shape).page)));
}

void tst_ItemPages::propertiesAreThoseOfTheClass()
{
    QFETCH(const ShapeType, shape);
    const std::unique_ptr<Item> item = AllItems::made(shape);
    const QMetaObject &meta = *AllItems::object(*item).metaObject();
    QStringList declared;
    for (const QString &name : AllItems::propertiesOf(*item)) {
        const QMetaProperty property = meta.property(meta.indexOfProperty(name.toLatin1()));
        declared << QString::fromLatin1(property.typeName()) + u' ' + name
                + (property.isWritable() ? QString() : u", read only"_s);
    }
    QStringList told;
    for (const QStringList &row : pageOf(shape).table(u"Properties"_s)) {
        const bool readOnly = row[Column::Meaning].contains(u"read only"_s);
        told << row[Column::Type] + u' ' + unticked(row[Column::Name])
                + (readOnly ? u", read only"_s : QString());
        QVERIFY(!row[Column::Meaning].isEmpty());
    }
    QCOMPARE(told, declared);
}

void tst_ItemPages::newItemsHaveTheValues()
{
    QFETCH(const ShapeType, shape);
    const std::unique_ptr<Item> item = AllItems::made(shape);
    for (const QStringList &row : pageOf(shape).table(u"Properties"_s)) {
        const QByteArray name = unticked(row[Column::Name]).toLatin1();
        if (row[Column::NewValue] == anything) {
            QCOMPARE(shape, MobraTypes::RichTextShape);
            QVERIFY(name == "itemHtml" || name == "screenDpi");
            continue;
        }
        QCOMPARE(name + ": " + PageValues::ofCell(row[Column::NewValue]).toUtf8(),
            name + ": " + PageValues::ofProperty(AllItems::object(*item).property(name)).toUtf8());
    }
}

void tst_ItemPages::propertiesKeepTheirPromises_data()
{
    QTest::addColumn<ShapeType>("shape");
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<double>("low");
    QTest::addColumn<double>("high");
    for (const ShapeType shape : AllItems::shapesAndContainers()) {
        for (const QStringList &row : pageOf(shape).table(u"Properties"_s)) {
            const QByteArray name = unticked(row[Column::Name]).toLatin1();
            for (const Range &range : rangesOf(row[Column::Meaning]))
                QTest::addRow("%s %s", AllItems::nameOf(shape), name.constData())
                    << shape << name << range.low << range.high;
        }
    }
}

void tst_ItemPages::propertiesKeepTheirPromises()
{
    QFETCH(const ShapeType, shape);
    QFETCH(const QByteArray, name);
    QFETCH(const double, low);
    QFETCH(const double, high);
    const std::unique_ptr<Item> item = AllItems::made(shape);
    QCOMPARE(departure(AllItems::object(*item), name, { low, high }), QString());
}

void tst_ItemPages::listedNumbersAreTaken()
{
    QFETCH(const ShapeType, shape);
    for (const QStringList &row : pageOf(shape).table(u"Properties"_s)) {
        const QByteArray name = unticked(row[Column::Name]).toLatin1();
        static const QRegularExpression listed(u"(?<![−\\w/.])(\\d+) (?!to |or less|changes|more)[a-z]"_s);
        for (const QRegularExpressionMatch &match : listed.globalMatch(row[Column::Meaning])) {
            const std::unique_ptr<Item> item = AllItems::made(shape);
            QObject &object = AllItems::object(*item);
            object.setProperty(name, match.captured(1).toInt());
            QCOMPARE(name + object.property(name).toByteArray(), name + match.captured(1).toLatin1());
        }
    }
}

void tst_ItemPages::noChangeIsNone()
{
    QFETCH(const ShapeType, shape);
    for (const QStringList &row : pageOf(shape).table(u"Properties"_s)) {
        const QByteArray name = unticked(row[Column::Name]).toLatin1();
        static const QRegularExpression none(u"; (\\d+) changes nothing"_s);
        const QRegularExpressionMatch match = none.match(row[Column::Meaning]);
        if (!match.hasMatch())
            continue;
        const std::unique_ptr<Item> item = AllItems::made(shape);
        QObject &object = AllItems::object(*item);
        object.setProperty(name, match.captured(1).toInt());
        QCOMPARE(object.property(name), AllItems::object(*AllItems::made(shape)).property(name));
    }
}

void tst_ItemPages::transparentReadsBlack()
{
    QFETCH(const ShapeType, shape);
    for (const QStringList &row : pageOf(shape).table(u"Properties"_s)) {
        const QByteArray name = unticked(row[Column::Name]).toLatin1();
        if (!name.endsWith("Color") || row[Column::Type] != u"QString")
            continue;
        const std::unique_ptr<Item> item = AllItems::made(shape);
        QObject &object = AllItems::object(*item);
        object.setProperty(name, u"#102030"_s);
        QCOMPARE(object.property(name).toString(), u"#102030"_s);
        object.setProperty(name, u"transparent"_s);
        QCOMPARE(object.property(name).toString(), u"#000000"_s);
        QVERIFY(row[Column::Meaning].contains(u"reads black"_s));
    }
}

void tst_ItemPages::scalesFollowTheSize()
{
    QFETCH(const ShapeType, shape);
    const std::unique_ptr<Item> item = AllItems::made(shape);
    item->setItemSize(QSizeF(2.0 * item->getItemWidth(), 3.0 * item->getItemHeight()));
    for (const QStringList &row : pageOf(shape).table(u"Properties"_s)) {
        const QByteArray name = unticked(row[Column::Name]).toLatin1();
        if (!name.startsWith("itemScale"))
            continue;
        const bool isOne = row[Column::Meaning] == u"1, whatever the size";
        const bool isHorizontal = name == "itemScaleX";
        static const QRegularExpression reference(u", ([\\d.]+)$"_s);
        QVERIFY(isOne || row[Column::Meaning].startsWith(isHorizontal ? u"width over" : u"height over"));
        const double scale = isHorizontal ? item->getItemScaleX() : item->getItemScaleY();
        QCOMPARE(scale, isOne ? 1.0 : isHorizontal ? 2.0 : 3.0);
        if (const auto match = reference.match(row[Column::Meaning]); match.hasMatch()) {
            const double size = isHorizontal ? item->getItemWidth() : item->getItemHeight();
            QCOMPARE(size / scale, match.captured(1).toDouble());
        }
    }
}

void tst_ItemPages::scalesAreLoadedUnlessTold()
{
    QFETCH(const ShapeType, shape);
    const ItemPage page = pageOf(shape);
    if (page.table(u"Record"_s).isEmpty())
        return;
    const std::unique_ptr<Item> item = AllItems::made(shape);
    item->setItemScaleX(2.5);
    item->setItemScaleY(0.5);
    const std::unique_ptr<Item> loaded = AllItems::made(shape);
    QCOMPARE(ItemRecords::load(*loaded, ItemRecords::saved(*item)), QDataStream::Ok);
    const bool areSet = page.text().contains(u"Loading sets both scales to 1."_s);
    QCOMPARE(loaded->getItemScaleX(), areSet ? 1.0 : 2.5);
    QCOMPARE(loaded->getItemScaleY(), areSet ? 1.0 : 0.5);
}

void tst_ItemPages::bytesAreTheRecordOfANewItem()
{
    QFETCH(const ShapeType, shape);
    const QList<QStringList> rows = pageOf(shape).table(u"Record"_s);
    const bool hasAnything = std::ranges::any_of(rows, mayBeAnything);
    QCOMPARE(hasAnything, shape == MobraTypes::RichTextShape);

    const QString record = QString::fromLatin1(ItemRecords::saved(*AllItems::made(shape)).toHex().toUpper());
    if (!hasAnything) {
        QCOMPARE(patternOf(rows), record);
        return;
    }
    const QRegularExpression pattern(QRegularExpression::anchoredPattern(patternOf(rows)));
    QVERIFY2(pattern.match(record).hasMatch(), qPrintable(patternOf(rows) + u"\nis not\n"_s + record));
}

void tst_ItemPages::offsetsAreSums()
{
    QFETCH(const ShapeType, shape);
    qsizetype offset = 0;
    bool behindAnything = false;
    for (const QStringList &row : pageOf(shape).table(u"Record"_s)) {
        QCOMPARE(row[Column::Offset], offsetText(offset, behindAnything));
        offset = mayBeAnything(row) ? 0 : offset + bytesOf(row).size();
        behindAnything = behindAnything || mayBeAnything(row);
    }
}

void tst_ItemPages::bytesMeanTheValues()
{
    QFETCH(const ShapeType, shape);
    for (const QStringList &row : pageOf(shape).table(u"Record"_s)) {
        QVERIFY(!row[Column::Words].isEmpty());
        if (row[Column::Bytes].isEmpty())
            QCOMPARE(row[Column::NewValues], u"none"_s);
        else if (!mayBeAnything(row))
            QCOMPARE(PageValues::ofCell(row[Column::NewValues]), decoded(row));
    }
}

void tst_ItemPages::sizesAreThoseOfTheRecords()
{
    QFETCH(const ShapeType, shape);
    const ItemPage page = pageOf(shape);
    qsizetype size = 0;
    for (const QStringList &row : page.table(u"Record"_s))
        size += mayBeAnything(row) ? 0 : bytesOf(row).size();
    const bool isRich = shape == MobraTypes::RichTextShape;
    const QString told = (isRich ? u"has *h* + %1 bytes."_s : u"has %1 bytes."_s).arg(size);
    QCOMPARE(page.text().contains(told), size > 0);

    // The count of the HTML takes four bytes more than the HTML.
    const QString row = isRich ? u" | %1 + HTML |\n"_s.arg(size + 4) : u" | %1 |\n"_s.arg(size);
    const QRegularExpression inFormats(u"\\| \\[[a-zA-Z ]+\\]\\(items/%1\\.md\\) \\| %2 \\|[^|]*"_s.arg(
                                           pictureOf(shape).page, QRegularExpression::escape(codeOf(shape)))
        + QRegularExpression::escape(row));
    QVERIFY(inFormats.match(ItemPage(docs + u"file-formats.md"_s).text()).hasMatch());
}

void tst_ItemPages::linksLeadSomewhere()
{
    QFETCH(const ShapeType, shape);
    const QStringList links = pageOf(shape).links();
    QVERIFY(links.size() >= 4); // the picture, the class, the index and the property map
    for (const QString &link : links) {
        const QString path = pages + link.section(u'#', 0, 0);
        QVERIFY2(QFileInfo(path).isFile(), qPrintable(link));
        if (link.contains(u'#'))
            QVERIFY2(ItemPage(path).anchors().contains(link.section(u'#', 1)), qPrintable(link));
    }
}

void tst_ItemPages::pictureShowsAnItem()
{
    QFETCH(const ShapeType, shape);
    const PagePicture &picture = pictureOf(shape);
    const QString path = pictures + picture.page + u".png"_s;
    const QImage reference(path);
    QVERIFY2(!reference.isNull(), "the picture is missing; VX_UPDATE_REFERENCES=1 makes it");
    QVERIFY(QFileInfo(path).size() < 20000);
    QCOMPARE(Images::difference(rendered(picture), reference, u"page-"_s + picture.page, picture.tolerance),
        QString());
}

QTEST_MAIN(tst_ItemPages)
#include "tst_itempages.moc"
