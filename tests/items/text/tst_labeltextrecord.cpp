// SPDX-License-Identifier: BSD-3-Clause
#include "items/text/simpletextitem.h"
#include "tests/support/colours.h"
#include "tests/support/itemrecords.h"
#include "tests/support/labeltexts.h"
#include "tests/support/nearness.h"

#include <QRegularExpression>
#include <QSignalSpy>
#include <QTest>

#include <functional>
#include <memory>

using namespace Qt::StringLiterals;

namespace {

using Change = std::function<void(SimpleTextItem &)>;

/// Labels that differ from a new one in a way that a record has to keep.
void addLabels()
{
    QTest::addColumn<Change>("change");
    const auto row = [](const char *name, const Change &change) { QTest::newRow(name) << change; };

    row("new", [](SimpleTextItem &) {});
    row("text", [](SimpleTextItem &label) { label.setItemText(u"Größe €😀\nzweite Zeile"_s); });
    row("empty", [](SimpleTextItem &label) { label.setItemText(QString()); });
    row("rotated", [](SimpleTextItem &label) {
        label.setPos(11, 22);
        label.setItemRotation(30);
    });
    row("resized", [](SimpleTextItem &label) { label.setItemSize(QSizeF(300, 40)); });
    row("resized, rotated and outlined", [](SimpleTextItem &label) {
        label.setItemPenWidth(3);
        label.setItemSize(QSizeF(300, 40));
        label.setItemRotation(200);
        label.setItemSize(QSizeF(150, 90));
    });
    row("pinned", [](SimpleTextItem &label) {
        label.setItemPinToCenter(true);
        label.setItemRotation(75);
        label.setItemText(u"A longer text"_s);
    });
    row("vertical", [](SimpleTextItem &label) {
        label.setItemText(u"A B"_s);
        label.setTextVertical(true);
    });
    row("fixed width", [](SimpleTextItem &label) {
        label.setItemSizeFixedWidth(true);
        label.setItemText(u"A longer text"_s);
    });
    row("fixed both ways", [](SimpleTextItem &label) {
        label.setItemSizeLimiting(3);
        label.setItemText(u"A longer text\nof two lines"_s);
    });
    row("font and colours", [](SimpleTextItem &label) {
        label.setItemFontSize(17);
        label.setItemBold(false);
        label.setItemItalic(true);
        label.setItemUnderline(true);
        label.setItemTextColor(QColor(1, 2, 3, 4));
        label.setItemPenColor(Colours::red);
        label.setItemFillColor(Colours::yellow);
        label.setItemAlignment(Qt::AlignRight | Qt::AlignTop);
        label.setItemDocumentMargin(9.5);
    });
    row("data", [](SimpleTextItem &label) {
        label.setItemDatasourceID(7);
        label.setItemDatasourceField(u"Name"_s);
        label.setItemId(42);
    });
}

SimpleTextItem *labelWith(const Change &change)
{
    auto *label = new SimpleTextItem;
    change(*label);
    return label;
}

} // namespace

/// The binary record and the property map of label texts.
class tst_LabelTextRecord : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { LabelTexts::useKnownFont(); }
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    void newLabelIsSavedAsTold();
    void recordIsReadToItsEndAndNoFurther();
    void oldRecordHasNoMirrors();
    void recordReturnsAsItWas_data() { addLabels(); }
    void recordReturnsAsItWas();
    void weightsAreMapped_data();
    void weightsAreMapped();
    void alignmentIsCutToItsBits_data();
    void alignmentIsCutToItsBits();
    void flagsAreRead();
    void positionIsKept();
    void textIsAsWideAsTheItemBeforeStretching();
    void loadingIsSilentAndCannotBeUndone();
    void truncatedRecordLeavesAUsableItem();
    void newMapHoldsTheProperties();
    void mapReturnsAsItWas_data() { addLabels(); }
    void mapReturnsAsItWas();
    void shrunkLabelWithAnOutlineStaysOnItsLine();
    void labelWhoseOutlineChangedStaysOnItsLine_data();
    void labelWhoseOutlineChangedStaysOnItsLine();
    void storedWidthOfAnotherTextIsKept();
    void mapOfVerticalTextIsHorizontal();
    void mapKeepsTheSpacesOfVerticalText_data();
    void mapKeepsTheSpacesOfVerticalText();
    void mapOfAResizedLabelHasNoFontSize_data();
    void mapOfAResizedLabelHasNoFontSize();
};

void tst_LabelTextRecord::newLabelIsSavedAsTold()
{
    const QByteArray expected = LabelTexts::newLabel(LabelTexts::naturalSize(u"TEXT"_s));
    QCOMPARE(expected.size(), 277);
    SimpleTextItem label;
    QCOMPARE(toHexText(ItemRecords::saved(label)), toHexText(expected));
}

void tst_LabelTextRecord::recordIsReadToItsEndAndNoFurther()
{
    const QByteArray record = LabelTexts::newLabel(QSizeF(200, 100)) + "more";
    QDataStream stream(record);
    SimpleTextItem label;
    label.loadItemFromData(stream, ItemRecords::currentVersion);
    QCOMPARE(stream.status(), QDataStream::Ok);
    QCOMPARE(stream.device()->pos(), 277);
}

void tst_LabelTextRecord::oldRecordHasNoMirrors()
{
    const QByteArray record = LabelTexts::newLabel(LabelTexts::naturalSize(u"TEXT"_s));
    SimpleTextItem label;
    QCOMPARE(ItemRecords::load(label, QByteArray(record).remove(LabelTexts::Offset::mirrors, 3), 5),
        QDataStream::Ok);
    QCOMPARE(toHexText(ItemRecords::saved(label)), toHexText(record));
}

void tst_LabelTextRecord::recordReturnsAsItWas()
{
    QFETCH(const Change, change);
    const std::unique_ptr<SimpleTextItem> source(labelWith(change));
    const QByteArray record = ItemRecords::saved(*source);
    SimpleTextItem loaded;
    loaded.setItemText(u"something else"_s);
    loaded.setItemSize(QSizeF(33, 44));
    QCOMPARE(ItemRecords::load(loaded, record), QDataStream::Ok);
    QCOMPARE(toHexText(ItemRecords::saved(loaded)), toHexText(record));
    QCOMPARE(loaded.toPlainText(), source->toPlainText());
    QCOMPARE(loaded.textWidth(), source->textWidth());
    QCOMPARE(loaded.transform(), source->transform());
    QCOMPARE(loaded.pos(), source->pos());
    QCOMPARE(loaded.getFramePads(), source->getFramePads());
    QCOMPARE(loaded.defaultTextColor(), source->getItemTextColor());
}

void tst_LabelTextRecord::weightsAreMapped_data()
{
    QTest::addColumn<QByteArray>("stored");
    QTest::addColumn<int>("weight");

    const int untouched = QFont().weight();
    QTest::newRow("negative") << QByteArray("FFFF") << 400;
    QTest::newRow("50") << QByteArray("0032") << 400;
    QTest::newRow("400") << QByteArray("0190") << 400;
    QTest::newRow("401") << QByteArray("0191") << 700;
    QTest::newRow("700") << QByteArray("02BC") << 700;
    QTest::newRow("701") << QByteArray("02BD") << untouched;
    QTest::newRow("900") << QByteArray("0384") << untouched;
}

void tst_LabelTextRecord::weightsAreMapped()
{
    QFETCH(const QByteArray, stored);
    QFETCH(const int, weight);
    const QByteArray record = LabelTexts::newLabel(QSizeF(200, 100));
    SimpleTextItem label;
    QCOMPARE(
        ItemRecords::load(label, LabelTexts::patched(record, LabelTexts::Offset::weight, stored.constData())),
        QDataStream::Ok);
    QCOMPARE(int(label.font().weight()), weight);
    QCOMPARE(label.getItemBold(), weight == 700);
}

void tst_LabelTextRecord::alignmentIsCutToItsBits_data()
{
    QTest::addColumn<QByteArray>("stored");
    QTest::addColumn<QByteArray>("saved");

    QTest::newRow("left and top") << QByteArray("0021") << QByteArray("0021");
    QTest::newRow("higher bits") << QByteArray("0E84") << QByteArray("0084");
    QTest::newRow("negative") << QByteArray("F002") << QByteArray("0002");
    QTest::newRow("ninth bit") << QByteArray("0384") << QByteArray("0184");
}

void tst_LabelTextRecord::alignmentIsCutToItsBits()
{
    QFETCH(const QByteArray, stored);
    QFETCH(const QByteArray, saved);
    const QByteArray record = LabelTexts::newLabel(QSizeF(200, 100));
    SimpleTextItem label;
    QCOMPARE(ItemRecords::load(
                 label, LabelTexts::patched(record, LabelTexts::Offset::alignment, stored.constData())),
        QDataStream::Ok);
    QCOMPARE(ItemRecords::saved(label).sliced(LabelTexts::Offset::alignment, 2), fromHexText(saved));
    QCOMPARE(uint(label.getItemAlignment()), saved.toUInt(nullptr, 16));
}

void tst_LabelTextRecord::flagsAreRead()
{
    const QByteArray record = LabelTexts::newLabel(QSizeF(200, 100));
    SimpleTextItem label;
    QCOMPARE(ItemRecords::load(label, LabelTexts::patched(record, LabelTexts::Offset::flags, "01 00 01 02")),
        QDataStream::Ok);
    QVERIFY(label.getTextIsVertical());
    QVERIFY(!label.getItemWasResized());
    QVERIFY(label.getItemPinToCenter());
    QVERIFY(!label.getItemFixedSizeWidth());
    QVERIFY(label.getItemFixedSizeHeight());
    // The text is recorded as it is shown, so it is not turned over again.
    QCOMPARE(label.toPlainText(), u"TEXT"_s);

    QCOMPARE(ItemRecords::load(label, LabelTexts::patched(record, LabelTexts::Offset::flags, "00 01 00 01")),
        QDataStream::Ok);
    QVERIFY(!label.getTextIsVertical());
    QVERIFY(label.getItemWasResized());
    QVERIFY(!label.getItemPinToCenter());
    QCOMPARE(label.getItemSizeLimitingInt(), 1);
    QCOMPARE(label.getItemFontSize(), -1);
    QCOMPARE(label.getItemPositiveFontSize(), 48);
}

void tst_LabelTextRecord::positionIsKept()
{
    const QByteArray record = LabelTexts::newLabel(QSizeF(200, 100));
    const QByteArray place = LabelTexts::hexOf(-12.5) + LabelTexts::hexOf(70);
    SimpleTextItem label;
    label.setItemPinToCenter(true);
    QCOMPARE(ItemRecords::load(label, LabelTexts::patched(record, LabelTexts::Offset::x, place.constData())),
        QDataStream::Ok);
    QCOMPARE(label.pos(), QPointF(-12.5, 70));
    QCOMPARE(label.getItemSize(), QSizeF(200, 100));
}

void tst_LabelTextRecord::textIsAsWideAsTheItemBeforeStretching()
{
    const QByteArray scales = LabelTexts::hexOf(2.5) + LabelTexts::hexOf(0.5);
    const QByteArray record = LabelTexts::patched(
        LabelTexts::newLabel(QSizeF(500, 25)), LabelTexts::Offset::width + 16, scales.constData());
    SimpleTextItem label;
    QCOMPARE(ItemRecords::load(label, record), QDataStream::Ok);
    QCOMPARE(label.textWidth(), 200.0);
}

void tst_LabelTextRecord::loadingIsSilentAndCannotBeUndone()
{
    SimpleTextItem source;
    source.setItemText(u"another"_s);
    SimpleTextItem label;
    const QSignalSpy changes(&label, &TextItem::textItemHasChanged);
    const QSignalSpy data(&label, &TextItem::itemDataChanged);
    QCOMPARE(ItemRecords::load(label, ItemRecords::saved(source)), QDataStream::Ok);
    QCOMPARE(changes.count(), 0);
    QCOMPARE(data.count(), 0);
    QVERIFY(!label.document()->isUndoAvailable());
    label.loadItemFromJSON(source.saveItemToJSON(), ItemRecords::currentVersion);
    QCOMPARE(changes.count(), 0);
    QVERIFY(!label.document()->isUndoAvailable());
    // Afterwards changes are told again.
    label.setItemText(u"one more"_s);
    QVERIFY(changes.count() >= 1);
    QCOMPARE(data.last().first().toString(), u"one more"_s);
}

void tst_LabelTextRecord::truncatedRecordLeavesAUsableItem()
{
    const QByteArray record = LabelTexts::newLabel(LabelTexts::naturalSize(u"TEXT"_s));
    for (qsizetype length = 0; length < record.size(); ++length) {
        SimpleTextItem label;
        QVERIFY2(ItemRecords::load(label, record.first(length)) != QDataStream::Ok,
            QByteArray::number(length).constData());
        const QRectF bounds = label.sceneBoundingRect();
        QVERIFY(qIsFinite(bounds.width()) && qIsFinite(bounds.height()));
        QCOMPARE(ItemRecords::load(label, record), QDataStream::Ok);
        QCOMPARE(toHexText(ItemRecords::saved(label)), toHexText(record));
    }
}

void tst_LabelTextRecord::newMapHoldsTheProperties()
{
    SimpleTextItem label;
    const QVariantMap map = label.saveItemToJSON();
    const QSizeF size = LabelTexts::naturalSize(u"TEXT"_s);
    const QVariantMap expected { { u"itemTextVertical"_s, false }, { u"itemPinToCenter"_s, false },
        { u"itemWasResized"_s, false }, { u"itemSizeLimiting"_s, 0 }, { u"itemDocumentMargin"_s, 4.0 },
        { u"oldTransformCoefficientM31"_s, 0.0 }, { u"oldTransformCoefficientM32"_s, 0.0 },
        { u"itemText"_s, u"TEXT"_s }, { u"itemAlignment"_s, 0x84U }, { u"itemFontSize"_s, 48 },
        { u"itemFontFamily"_s, u"_Fen Loma"_s }, { u"itemFontBold"_s, true }, { u"itemItalic"_s, false },
        { u"itemUnderline"_s, false }, { u"itemTextColor"_s, Colours::black }, { u"itemShape"_s, 0x10015U },
        { u"itemQFlags"_s, 0x107U }, { u"itemWidth"_s, size.width() }, { u"itemHeight"_s, size.height() },
        { u"itemScaleX"_s, 1.0 }, { u"itemScaleY"_s, 1.0 }, { u"itemRotation"_s, 0.0 },
        { u"itemPenWidth"_s, QVariant::fromValue<ushort>(0) } };
    for (auto value = expected.begin(); value != expected.end(); ++value)
        QVERIFY2(map.value(value.key()) == value.value(), qPrintable(value.key()));
}

void tst_LabelTextRecord::mapReturnsAsItWas()
{
    QFETCH(const Change, change);
    const std::unique_ptr<SimpleTextItem> source(labelWith(change));
    const QVariantMap map = source->saveItemToJSON();
    SimpleTextItem loaded;
    loaded.loadItemFromJSON(map, ItemRecords::currentVersion);
    const QVariantMap again = loaded.saveItemToJSON();
    QCOMPARE(again.keys(), map.keys());
    for (const QString &key : map.keys()) {
        const bool isNumber = map.value(key).typeId() == QMetaType::Double;
        QVERIFY2(isNumber ? isNear(again.value(key).toDouble(), map.value(key).toDouble())
                          : again.value(key) == map.value(key),
            qPrintable(key));
    }
    QCOMPARE(loaded.toPlainText(), source->toPlainText());
    QCOMPARE(loaded.getItemPositiveFontSize(), source->getItemPositiveFontSize());
    QCOMPARE(loaded.transform(), source->transform());
    QVERIFY(areNear(loaded.pos(), source->pos()));
    QCOMPARE(loaded.textWidth(), source->textWidth());
}

// Without the outline, the stored sizes tell less than the words need: the line would break.
void tst_LabelTextRecord::shrunkLabelWithAnOutlineStaysOnItsLine()
{
    SimpleTextItem label;
    label.setItemText(u"Sale now"_s);
    label.setItemPenWidth(6);
    label.setItemSize(label.getItemSize() * 0.4);
    const double height = label.document()->size().height();
    SimpleTextItem fromRecord;
    QCOMPARE(ItemRecords::load(fromRecord, ItemRecords::saved(label)), QDataStream::Ok);
    SimpleTextItem fromMap;
    fromMap.loadItemFromJSON(label.saveItemToJSON(), ItemRecords::currentVersion);
    for (const SimpleTextItem *loaded : { &fromRecord, &fromMap }) {
        QCOMPARE(loaded->document()->size().height(), height);
        QCOMPARE(loaded->QGraphicsTextItem::boundingRect(), label.QGraphicsTextItem::boundingRect());
    }
}

void tst_LabelTextRecord::labelWhoseOutlineChangedStaysOnItsLine_data()
{
    QTest::addColumn<int>("before");
    QTest::addColumn<double>("stretch");
    QTest::newRow("came, and the label shrank") << 0 << 0.5;
    QTest::newRow("came, and the label grew") << 0 << 1.3;
    QTest::newRow("grew") << 2 << 0.5;
    QTest::newRow("shrank") << 9 << 0.5;
}

void tst_LabelTextRecord::labelWhoseOutlineChangedStaysOnItsLine()
{
    QFETCH(int, before);
    QFETCH(double, stretch);
    SimpleTextItem label;
    label.setItemText(u"Sale now"_s);
    label.setItemPenWidth(static_cast<unsigned short>(before));
    label.setItemSize(label.getItemSize() * 0.8);
    label.setItemPenWidth(6);
    label.setItemSize(label.getItemSize() * stretch);
    SimpleTextItem loaded;
    QCOMPARE(ItemRecords::load(loaded, ItemRecords::saved(label)), QDataStream::Ok);
    QCOMPARE(loaded.QGraphicsTextItem::boundingRect(), label.QGraphicsTextItem::boundingRect());
}

// A record of another font, or by another hand: the text flows in the width that it tells.
void tst_LabelTextRecord::storedWidthOfAnotherTextIsKept()
{
    SimpleTextItem label;
    label.setItemText(u"Sale now"_s);
    label.setItemWidth(90.0);
    SimpleTextItem loaded;
    QCOMPARE(ItemRecords::load(loaded, ItemRecords::saved(label)), QDataStream::Ok);
    QCOMPARE(loaded.textWidth(), 90.0);
}

void tst_LabelTextRecord::mapOfVerticalTextIsHorizontal()
{
    SimpleTextItem source;
    source.setItemText(u"A B"_s);
    source.setTextVertical(true);
    const QVariantMap map = source.saveItemToJSON();
    QCOMPARE(map.value(u"itemText"_s).toString(), u"A B"_s);
    QCOMPARE(map.value(u"itemTextVertical"_s), QVariant(true));
    // Saving leaves the item as it is.
    QCOMPARE(source.toPlainText(), u"A\n \nB"_s);
    SimpleTextItem loaded;
    loaded.loadItemFromJSON(map, ItemRecords::currentVersion);
    QCOMPARE(loaded.toPlainText(), u"A\n \nB"_s);
    QCOMPARE(loaded.getItemSize(), source.getItemSize());
}

void tst_LabelTextRecord::mapKeepsTheSpacesOfVerticalText_data()
{
    QTest::addColumn<QString>("vertical");
    QTest::addColumn<QString>("horizontal");

    QTest::newRow("at the ends") << u" \nA\n "_s << u" A "_s;
    QTest::newRow("two between") << u"A\n \n \nB"_s << u"A  B"_s;
    QTest::newRow("only spaces") << u" \n "_s << u"  "_s;
    QTest::newRow("nothing") << QString() << QString();
    QTest::newRow("joined emoji") << u"\U0001F468\u200D\U0001F469\nA"_s << u"\U0001F468\u200D\U0001F469A"_s;
}

void tst_LabelTextRecord::mapKeepsTheSpacesOfVerticalText()
{
    QFETCH(const QString, vertical);
    QFETCH(const QString, horizontal);
    SimpleTextItem source;
    source.setTextVertical(true);
    source.setItemText(vertical);
    QCOMPARE(source.toPlainText(), vertical);
    const QVariantMap map = source.saveItemToJSON();
    QCOMPARE(map.value(u"itemText"_s).toString(), horizontal);
    SimpleTextItem loaded;
    loaded.loadItemFromJSON(map, ItemRecords::currentVersion);
    QCOMPARE(loaded.toPlainText(), vertical);
    QVERIFY(loaded.getTextIsVertical());
    QCOMPARE(loaded.getItemSize(), source.getItemSize());
}

void tst_LabelTextRecord::mapOfAResizedLabelHasNoFontSize_data()
{
    QTest::addColumn<int>("pixelSize");
    QTest::addColumn<QString>("text");
    for (const int pixelSize : { 9, 20, 48, 133 }) {
        QTest::addRow("%d, a line", pixelSize) << pixelSize << u"TEXT"_s;
        QTest::addRow("%d, three lines", pixelSize) << pixelSize << u"A\nlonger\ntext"_s;
    }
}

void tst_LabelTextRecord::mapOfAResizedLabelHasNoFontSize()
{
    QFETCH(const int, pixelSize);
    QFETCH(const QString, text);
    SimpleTextItem source;
    source.setItemFontSize(pixelSize);
    source.setItemText(text);
    QVERIFY(source.setItemSize(QSizeF(321, 123)));
    const QVariantMap map = source.saveItemToJSON();
    QCOMPARE(map.value(u"itemFontSize"_s), QVariant(-1));
    SimpleTextItem loaded;
    loaded.loadItemFromJSON(map, ItemRecords::currentVersion);
    QCOMPARE(loaded.getItemPositiveFontSize(), pixelSize);
    QCOMPARE(loaded.getItemFontSize(), -1);
    QCOMPARE(loaded.getItemSize(), QSizeF(321, 123));
}

QTEST_MAIN(tst_LabelTextRecord)
#include "tst_labeltextrecord.moc"
