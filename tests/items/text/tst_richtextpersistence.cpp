// SPDX-License-Identifier: BSD-3-Clause
#include "items/text/richtextitem.h"
#include "tests/support/itemrecords.h"

#include <QDataStream>
#include <QFont>
#include <QRegularExpression>
#include <QTest>
#include <QTextCursor>
#include <QTextDocument>

#include <cmath>
#include <memory>

using namespace Qt::StringLiterals;

namespace {

struct Tail
{
    qint16 size = 30;
    qint16 weight = 400;
    qint16 alignment = 1;
    unsigned int version = ItemRecords::currentVersion;
};

/// A record written field by field.
QByteArray record(const QString &html, int emptyByte, double factor, const Tail &tail = {})
{
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    stream << html;
    if (emptyByte >= 0)
        stream << qint8(emptyByte);
    if (emptyByte == 0)
        stream << factor;
    stream << QColor(255, 0, 0);
    QByteArray base;
    QDataStream baseStream(&base, QIODevice::WriteOnly);
    RichTextItem().FillableItem::saveItemToData(baseStream); // what both kinds of text share
    if (tail.version < 6)
        base.remove(6, 3); // mirrors and overprint, after the id and the flags
    stream.writeRawData(base.constData(), int(base.size()));
    stream << u"Loma"_s << tail.size << tail.weight << qint8(1) << qint8(0) << tail.alignment;
    return bytes;
}

} // namespace

/// Records, property maps and copies of the rich text.
class tst_RichTextPersistence : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { QFont::insertSubstitution(u"_Fen Loma"_s, u"Loma"_s); }
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    void emptyBoxWritesNoFactor();
    void recordsOfAllVersionsLoad();
    void weightsAreOfTheOldScale_data();
    void weightsAreOfTheOldScale();
    void noAlignmentIsSavedAsLeft();
    void emptyBodyIsAnEmptyDocument_data();
    void emptyBodyIsAnEmptyDocument();
    void textOfAnEmptyBoxIsNotScaled();
    void textWinsOverTheEmptyByte();
    void emptyBoxOfAnOddFontStaysEmpty_data();
    void emptyBoxOfAnOddFontStaysEmpty();
    void cutRecordsLoad();
    void mapRoundTrip();
    void mapOfAnotherScreenIsScaled_data();
    void mapOfAnotherScreenIsScaled();
    void mapKeepsTheFormatsOfTheText_data();
    void mapKeepsTheFormatsOfTheText();
    void mapOfAnEmptyBoxHasItsFormats();
    void copyIsEqual();
};

void tst_RichTextPersistence::emptyBoxWritesNoFactor()
{
    RichTextItem item;
    QByteArray bytes = ItemRecords::saved(item);
    QDataStream stream(bytes);
    QString html;
    qint8 empty = 0;
    QColor colour;
    stream >> html >> empty >> colour;
    QCOMPARE(int(empty), 1);
    QCOMPARE(colour, QColor(0, 0, 0));
    item.setItemText(u"x"_s);
    bytes = ItemRecords::saved(item);
    QDataStream filled(bytes);
    double factor = 0;
    filled >> html >> empty >> factor >> colour;
    QCOMPARE(int(empty), 0);
    QCOMPARE(factor, item.getScreenDpi());
    QCOMPARE(colour, QColor(0, 0, 0));
}

void tst_RichTextPersistence::recordsOfAllVersionsLoad()
{
    const QString html = u"<p><span style=\"font-size:10pt;\">x</span></p>"_s;
    RichTextItem item;
    const double doubled = 2.0 * item.getScreenDpi();
    for (const unsigned int version : { 1U, 2U, 6U }) {
        const Tail tail { 30, 400, 1, version };
        const int emptyByte = version < 2 ? -1 : 0;
        QCOMPARE(ItemRecords::load(item, record(html, emptyByte, doubled, tail), version), QDataStream::Ok);
        QCOMPARE(item.toPlainText(), u"x"_s);
        QVERIFY(!item.getDocumentIsEmpty());
        QCOMPARE(item.getItemTextColor(), QColor(255, 0, 0));
        QCOMPARE(item.getEmptyFontSize(), 30);
        QCOMPARE(item.getEmptyFontFamily(), u"Loma"_s);
        QVERIFY(item.getEmptyFontItalic());
        QTextCursor cursor(item.document());
        cursor.setPosition(1);
        QVERIFY(std::abs(cursor.charFormat().fontPointSize() - (version < 2 ? 10.0 : 20.0)) < 0.01);
        QCOMPARE(ItemRecords::load(item, record(QString(), version < 2 ? -1 : 1, 0, tail), version),
            QDataStream::Ok);
        QVERIFY(item.getDocumentIsEmpty());
    }
}

void tst_RichTextPersistence::weightsAreOfTheOldScale_data()
{
    QTest::addColumn<int>("stored");
    QTest::addColumn<int>("weight");

    QTest::newRow("50") << 50 << 400;
    QTest::newRow("51") << 51 << 700;
    QTest::newRow("75") << 75 << 700;
    QTest::newRow("76") << 76 << int(QFont().weight());
    QTest::newRow("700") << 700 << int(QFont().weight());
}

void tst_RichTextPersistence::weightsAreOfTheOldScale()
{
    QFETCH(int, stored);
    RichTextItem item;
    ItemRecords::load(item, record(QString(), 1, 0, { 30, qint16(stored), 1, 6 }));
    QTEST(item.getEmptyFontWeight(), "weight");
}

void tst_RichTextPersistence::noAlignmentIsSavedAsLeft()
{
    RichTextItem item;
    item.setEmptyAlignment(0);
    QVERIFY(ItemRecords::saved(item).endsWith(QByteArray::fromHex("0001")));
    item.setEmptyAlignment(2);
    QVERIFY(ItemRecords::saved(item).endsWith(QByteArray::fromHex("0002")));
}

void tst_RichTextPersistence::emptyBodyIsAnEmptyDocument_data()
{
    QTest::addColumn<QString>("html");
    QTest::addColumn<bool>("empty");

    QTest::newRow("nothing") << QString() << true;
    QTest::newRow("body") << u"<html><body></body></html>"_s << true;
    QTest::newRow("paragraph") << u"<html><body><p></p></body></html>"_s << true;
    QTest::newRow("as saved") << QTextDocument().toHtml() << true;
    QTest::newRow("text") << u"<html><body>x</body></html>"_s << false;
    QTest::newRow("space that is kept") << u"<html><body><p>&nbsp;</p></body></html>"_s << false;
    QTest::newRow("two paragraphs") << u"<p><br/></p><p><br/></p>"_s << false;
}

/// Records of the first version have no byte that tells.
void tst_RichTextPersistence::emptyBodyIsAnEmptyDocument()
{
    QFETCH(const QString, html);
    QFETCH(const bool, empty);
    RichTextItem item;
    item.setItemText(u"old"_s);
    QCOMPARE(ItemRecords::load(item, record(html, -1, 0, { 30, 400, 1, 1 }), 1), QDataStream::Ok);
    QCOMPARE(item.getDocumentIsEmpty(), empty);
    QCOMPARE(item.toPlainText().isEmpty(), empty);
}

void tst_RichTextPersistence::textOfAnEmptyBoxIsNotScaled()
{
    RichTextItem item;
    const QString html = u"<p><span style=\"font-size:10pt;\">x</span></p>"_s;
    QCOMPARE(ItemRecords::load(item, record(html, 1, 0)), QDataStream::Ok);
    QTextCursor cursor(item.document());
    cursor.setPosition(1);
    QCOMPARE(cursor.charFormat().fontPointSize(), 10.0);
}

void tst_RichTextPersistence::textWinsOverTheEmptyByte()
{
    RichTextItem item;
    QCOMPARE(ItemRecords::load(item, record(u"<p>x</p>"_s, 1, 0)), QDataStream::Ok);
    QCOMPARE(item.toPlainText(), u"x"_s);
    QVERIFY(!item.getDocumentIsEmpty());
    QCOMPARE(item.getEmptyFontSize(), 30);
}

void tst_RichTextPersistence::emptyBoxOfAnOddFontStaysEmpty_data()
{
    QTest::addColumn<QString>("family");
    QTest::newRow("ordinary") << u"Loma"_s;
    QTest::newRow("backslash") << u"Lo\\"_s;
    QTest::newRow("both quotes") << u"Lo'm\"a"_s;
    QTest::newRow("line feed") << u"Lo\nma"_s;
    QTest::newRow("zero") << u"Lo"_s + QChar(0) + u"ma"_s;
}

// Qt writes such names into its HTML in a way that it cannot read.
void tst_RichTextPersistence::emptyBoxOfAnOddFontStaysEmpty()
{
    QFETCH(const QString, family);
    RichTextItem box;
    box.setEmptyFontFamily(family);
    RichTextItem fromRecord;
    ItemRecords::load(fromRecord, ItemRecords::saved(box));
    RichTextItem fromMap;
    fromMap.loadItemFromJSON(box.saveItemToJSON(), ItemRecords::currentVersion);
    const std::unique_ptr<Item> copied(box.createItemCopy());
    for (const auto *const again : { &fromRecord, &fromMap, dynamic_cast<RichTextItem *>(copied.get()) }) {
        QVERIFY(again->document()->isEmpty() && again->getDocumentIsEmpty());
        QCOMPARE(again->getItemText(), QString());
        QCOMPARE(again->document()->blockCount(), 1);
    }
    QCOMPARE(fromRecord.getEmptyFontFamily(), family);
    RichTextItem onceMore;
    ItemRecords::load(onceMore, ItemRecords::saved(fromRecord));
    QCOMPARE(ItemRecords::saved(onceMore), ItemRecords::saved(fromRecord));
}

void tst_RichTextPersistence::cutRecordsLoad()
{
    RichTextItem item;
    const QByteArray whole = record(u"<p>x</p>"_s, 0, item.getScreenDpi());
    ItemRecords::load(item, whole);
    const QByteArray expected = ItemRecords::saved(item);
    for (qsizetype length = 0; length < whole.size(); ++length) {
        RichTextItem cut;
        ItemRecords::load(cut, whole.first(length));
        QVERIFY(std::isfinite(cut.boundingRect().height()));
        // Nothing of the failure stays.
        QCOMPARE(ItemRecords::load(cut, whole), QDataStream::Ok);
        QCOMPARE(ItemRecords::saved(cut), expected);
    }
}

void tst_RichTextPersistence::mapRoundTrip()
{
    RichTextItem item;
    item.setItemText(u"text"_s);
    item.setItemFontSize(30);
    item.setItemSize(QSizeF(150, 70));
    RichTextItem loaded;
    loaded.loadItemFromJSON(item.saveItemToJSON(), 6);
    QCOMPARE(loaded.toPlainText(), u"text"_s);
    QCOMPARE(loaded.getItemFontSize(), 30);
    QCOMPARE(loaded.getItemSize(), QSizeF(150, 70));
    QCOMPARE(loaded.textWidth(), 150.0);
    QVERIFY(!loaded.getDocumentIsEmpty());
}

void tst_RichTextPersistence::mapOfAnotherScreenIsScaled_data()
{
    QTest::addColumn<QVariant>("factor");
    QTest::addColumn<double>("points");

    const double own = RichTextItem().getScreenDpi();
    QTest::newRow("this screen") << QVariant(own) << 10.0;
    QTest::newRow("twice the pixels") << QVariant(2.0 * own) << 20.0;
    QTest::newRow("half the pixels") << QVariant(0.5 * own) << 5.0;
    QTest::newRow("no pixels") << QVariant(0.0) << 10.0;
    QTest::newRow("fewer than none") << QVariant(-own) << 10.0;
    QTest::newRow("no number") << QVariant(u"large"_s) << 10.0;
}

void tst_RichTextPersistence::mapOfAnotherScreenIsScaled()
{
    QFETCH(const QVariant, factor);
    QFETCH(const double, points);
    RichTextItem item;
    item.setItemHtml(u"<p><span style=\"font-size:10pt;\">x</span></p>"_s);
    item.setEmptyFontSize(30);
    item.setItemSize(QSizeF(150, 70));
    QVariantMap map = item.saveItemToJSON();
    QCOMPARE(map.value(u"screenDpi"_s), QVariant(item.getScreenDpi()));
    map.insert(u"screenDpi"_s, factor);
    RichTextItem loaded;
    loaded.loadItemFromJSON(map, 6);
    QTextCursor cursor(loaded.document());
    cursor.setPosition(1);
    QVERIFY(std::abs(cursor.charFormat().fontPointSize() - points) < 0.01);
    // Those of the empty box are pixels.
    QCOMPARE(loaded.getEmptyFontSize(), 30);
    QCOMPARE(loaded.getItemSize(), QSizeF(150, 70));
    QCOMPARE(loaded.getScreenDpi(), item.getScreenDpi());
}

void tst_RichTextPersistence::mapKeepsTheFormatsOfTheText_data()
{
    QTest::addColumn<bool>("hasFactor");
    QTest::newRow("with a factor") << true;
    QTest::newRow("without") << false;
}

void tst_RichTextPersistence::mapKeepsTheFormatsOfTheText()
{
    QFETCH(const bool, hasFactor);
    RichTextItem item;
    item.setItemHtml(
        u"<p><span style=\"color:#ff0000\">r</span><span style=\"color:#0000ff\">b</span></p>"_s);
    QVariantMap map = item.saveItemToJSON();
    if (!hasFactor)
        map.remove(u"screenDpi"_s);
    RichTextItem loaded;
    loaded.loadItemFromJSON(map, 6);
    QTextCursor cursor(loaded.document());
    cursor.setPosition(1);
    QCOMPARE(cursor.charFormat().foreground().color(), QColor(255, 0, 0));
    cursor.setPosition(2);
    QCOMPARE(cursor.charFormat().foreground().color(), QColor(0, 0, 255));
    QCOMPARE(loaded.getItemTextColor(), QColor(0, 0, 0));
}

void tst_RichTextPersistence::mapOfAnEmptyBoxHasItsFormats()
{
    RichTextItem item;
    item.setEmptyFontSize(30);
    item.setEmptyFontItalic(true);
    item.setEmptyAlignment(Qt::AlignRight);
    RichTextItem loaded;
    loaded.setItemText(u"text"_s);
    loaded.loadItemFromJSON(item.saveItemToJSON(), 6);
    QVERIFY(loaded.getDocumentIsEmpty());
    QTextCursor(loaded.document()).insertText(u"x"_s);
    QCOMPARE(loaded.getItemFontSize(), 30);
    QVERIFY(loaded.getItemItalic());
    QCOMPARE(loaded.getItemAlignment(), Qt::AlignRight);
}

void tst_RichTextPersistence::copyIsEqual()
{
    RichTextItem item;
    item.setItemHtml(u"<b>bold</b> text"_s);
    item.setItemSize(QSizeF(150, 70));
    item.setEmptyFontSize(22);
    const std::unique_ptr<Item> copy(item.createItemCopy());
    QCOMPARE(ItemRecords::saved(*copy), ItemRecords::saved(item));
}

QTEST_MAIN(tst_RichTextPersistence)
#include "tst_richtextpersistence.moc"
