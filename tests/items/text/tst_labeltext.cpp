// SPDX-License-Identifier: BSD-3-Clause
#include "items/text/simpletextitem.h"
#include "tests/support/colours.h"
#include "tests/support/images.h"
#include "tests/support/itemrecords.h"
#include "tests/support/labeltexts.h"
#include "tests/support/nearness.h"

#include <QGraphicsScene>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QTest>

#include <memory>

using namespace Qt::StringLiterals;

namespace {

const QString marker = u"!!!###VXFUNCTIONDATASOURCE###!!!"_s;

} // namespace

/// Label texts: how they are made, what they show and how large they are.
class tst_LabelText : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { LabelTexts::useKnownFont(); }
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    void newLabelIsAsToldAndAsLargeAsItsText();
    void accessorsReturnWhatWasSet();
    void fontChangesFitTheItem();
    void fontSizeIsUnknownWhileResized();
    void fontSizeKeepsTheRotation();
    void impossibleFontSizesAreIgnored();
    void sizeBecomesScales();
    void outlineCountsWhenSizesBecomeScales();
    void evenScalesGiveEvenPads();
    void equalSizeChangesNothing();
    void ratioIsKept();
    void limitsAreKept();
    void boundsHoldTheOutline();
    void editingWidensTheBounds();
    void dataBecomeText_data();
    void dataBecomeText();
    void dataFitTheItemAndAreTold();
    void equalDataOnlyRepaint();
    void verticalTextIsStacked();
    void blankTextIsClearedWhenTurned();
    void equalTextChangesNothing();
    void changesCannotBeUndone();
    void copiesAreEqual();
    void textColourIsPainted();
    void lineBreaksAreCounted();
    void verticalCursorFollowsTheAddedCharacters();
};

void tst_LabelText::newLabelIsAsToldAndAsLargeAsItsText()
{
    SimpleTextItem label;
    QCOMPARE(label.type(), 0x10015);
    QCOMPARE(uint(label.getItemShape()), 0x10015U);
    QCOMPARE(int(label.flags()), 0x107);
    QCOMPARE(label.textInteractionFlags(), Qt::NoTextInteraction);
    QVERIFY(!label.acceptDrops());
    QCOMPARE(label.toDescriptionString(), u"Label Text -1"_s);
    QCOMPARE(label.getItemText(), u"TEXT"_s);
    QVERIFY(!label.getDocumentIsEmpty());
    QCOMPARE(label.getItemFontFamily(), u"_Fen Loma"_s);
    QCOMPARE(label.getItemFontSize(), 48);
    QCOMPARE(int(label.font().weight()), 700);
    QVERIFY(label.getItemBold());
    QVERIFY(!label.getItemItalic());
    QVERIFY(!label.getItemUnderline());
    QCOMPARE(uint(label.getItemAlignment()), 0x84U);
    QCOMPARE(label.getItemTextColor(), Colours::black);
    QCOMPARE(label.defaultTextColor(), Colours::black);
    QCOMPARE(label.getItemPen().widthF(), 0.0);
    QCOMPARE(label.getItemPenStyle(), ushort(1));
    QVERIFY(!label.getTextIsVertical());
    QVERIFY(!label.getItemWasResized());
    QVERIFY(!label.getItemPinToCenter());
    QCOMPARE(label.getItemSizeLimitingInt(), 0);
    QCOMPARE(label.getOldTransformCoefficientM31(), 0.0);
    QCOMPARE(label.getOldTransformCoefficientM32(), 0.0);
    QCOMPARE(label.getFramePads(), QSizeF(0, 0));
    QCOMPARE(label.isShownEmptyTextMarker(), false);
    QCOMPARE(label.isDatasourceConnected(), false);
    const QSizeF natural = LabelTexts::naturalSize(u"TEXT"_s);
    QCOMPARE(label.getItemSize(), natural);
    QCOMPARE(label.textWidth(), natural.width());
    QCOMPARE(label.boundingRect(), QRectF(QPointF(), natural));
    QVERIFY(label.opaqueArea().isEmpty());
}

void tst_LabelText::accessorsReturnWhatWasSet()
{
    SimpleTextItem label;
    label.setItemAlignment(Qt::AlignRight | Qt::AlignTop);
    QCOMPARE(label.getItemAlignment(), Qt::AlignRight | Qt::AlignTop);
    label.setItemSizeFixedHeight(true);
    QCOMPARE(label.getItemSizeLimitingInt(), 2);
    label.setItemSizeFixedWidth(true);
    QCOMPARE(label.getItemSizeLimitingInt(), 3);
    label.setItemSizeFixedHeight(false);
    QCOMPARE(label.getItemSizeLimitingInt(), 1);
    QVERIFY(label.getItemFixedSizeWidth());
    QVERIFY(!label.getItemFixedSizeHeight());
    label.setItemDatasourceID(0);
    QVERIFY(label.isDatasourceConnected());
    label.setItemDatasourceField(u"Name"_s);
    QCOMPARE(label.getItemDatasourceField(), u"Name"_s);
    QCOMPARE(label.getItemData(), QVariant(u"TEXT"_s));
    QCOMPARE(TextItem::getTextEditPad(), 10);
    label.setItemText(QString());
    QVERIFY(label.getDocumentIsEmpty());
}

void tst_LabelText::fontChangesFitTheItem()
{
    SimpleTextItem label;
    QFont font = LabelTexts::fontOf(48);
    label.setItemFontSize(31);
    font.setPixelSize(31);
    QCOMPARE(label.getItemFontSize(), 31);
    QCOMPARE(label.getItemSize(), LabelTexts::naturalSize(u"TEXT"_s, font));
    label.setItemBold(false);
    font.setBold(false);
    QVERIFY(!label.getItemBold());
    QCOMPARE(label.getItemSize(), LabelTexts::naturalSize(u"TEXT"_s, font));
    label.setItemItalic(true);
    font.setItalic(true);
    QVERIFY(label.getItemItalic());
    QCOMPARE(label.getItemSize(), LabelTexts::naturalSize(u"TEXT"_s, font));
    label.setItemUnderline(true);
    QVERIFY(label.getItemUnderline());
    label.setItemFontFamily(u"DejaVu Sans Mono"_s);
    font.setFamily(u"DejaVu Sans Mono"_s);
    font.setUnderline(true);
    QCOMPARE(label.getItemFontFamily(), u"DejaVu Sans Mono"_s);
    QCOMPARE(label.getItemSize(), LabelTexts::naturalSize(u"TEXT"_s, font));
    label.setItemDocumentMargin(12);
    QCOMPARE(label.getItemDocumentMargin(), 12.0);
    QCOMPARE(label.getItemSize(), LabelTexts::naturalSize(u"TEXT"_s, font, 12));
    QVERIFY(!label.getItemWasResized());

    SimpleTextItem imported;
    imported.importTextProperties(u"_Fen Loma"_s, 20, false, false, true, Qt::AlignLeft);
    font = LabelTexts::fontOf(20, QFont::Normal);
    font.setUnderline(true);
    QCOMPARE(imported.font(), font);
    QCOMPARE(imported.getItemAlignment(), Qt::AlignLeft);
    QCOMPARE(imported.getItemSize(), LabelTexts::naturalSize(u"TEXT"_s, font));
}

void tst_LabelText::fontSizeIsUnknownWhileResized()
{
    SimpleTextItem label;
    QVERIFY(label.setItemSize(QSizeF(300, 40)));
    label.setItemSizeFixedWidth(true);
    QCOMPARE(label.getItemFontSize(), -1);
    QCOMPARE(label.getItemPositiveFontSize(), 48);
    label.setItemFontSize(24);
    QCOMPARE(label.getItemFontSize(), 24);
    QCOMPARE(label.getItemSizeLimitingInt(), 0);
    QCOMPARE(label.getItemScaleX(), 1.0);
    QCOMPARE(label.getItemScaleY(), 1.0);
    QCOMPARE(label.getItemSize(), LabelTexts::naturalSize(u"TEXT"_s, LabelTexts::fontOf(24)));
    QCOMPARE(label.transform(), QTransform());
}

void tst_LabelText::fontSizeKeepsTheRotation()
{
    SimpleTextItem label;
    label.setItemSize(QSizeF(200, 100));
    label.setItemRotation(90);
    label.setItemFontSize(20);
    // A quarter turn about (100, 50) takes (x, y) to (150 - y, x - 50).
    QVERIFY(isNear(label.getOldTransformCoefficientM31(), 150));
    QVERIFY(isNear(label.getOldTransformCoefficientM32(), -50));
    QVERIFY(areNear(label.transform().map(QPointF(0, 0)), QPointF(150, -50)));
    QVERIFY(areNear(label.transform().map(QPointF(10, 20)), QPointF(130, -40)));
}

void tst_LabelText::impossibleFontSizesAreIgnored()
{
    SimpleTextItem label;
    label.setItemSizeFixedWidth(true);
    for (const int size : { 0, -1, -48 }) {
        label.setItemFontSize(size);
        QCOMPARE(label.getItemPositiveFontSize(), 48);
        QVERIFY(label.getItemFixedSizeWidth());
    }
}

void tst_LabelText::sizeBecomesScales()
{
    SimpleTextItem label;
    const QSizeF natural = LabelTexts::naturalSizeOf(label);
    QVERIFY(label.setItemSize(QSizeF(natural.width() * 2, natural.height() * 3)));
    QVERIFY(label.getItemWasResized());
    QVERIFY(isNear(label.getItemScaleX(), 2));
    QVERIFY(isNear(label.getItemScaleY(), 3));
    QVERIFY(areNear(label.transform().map(QPointF(10, 10)), QPointF(20, 30)));
    QCOMPARE(label.textWidth(), natural.width());
    QCOMPARE(label.getFramePads(), QSizeF(0, 0));
    QCOMPARE(label.pos(), QPointF(0, 0));
    // The next size multiplies on.
    QVERIFY(label.setItemSize(natural));
    QVERIFY(isNear(label.getItemScaleX(), 1));
    QVERIFY(isNear(label.getItemScaleY(), 1));
    QVERIFY(label.getItemWasResized());
}

void tst_LabelText::outlineCountsWhenSizesBecomeScales()
{
    SimpleTextItem label;
    const QSizeF natural = LabelTexts::naturalSizeOf(label);
    label.setItemPenWidth(4);
    QCOMPARE(label.getItemSize(), natural);
    QVERIFY(label.setItemSize(QSizeF(200, 100)));
    QCOMPARE(label.getItemSize(), QSizeF(200, 100));
    const double sx = 204 / (natural.width() + 4);
    const double sy = 104 / (natural.height() + 4);
    QVERIFY(isNear(label.getItemScaleX(), sx));
    QVERIFY(isNear(label.getItemScaleY(), sy));
    QVERIFY(isNear(label.getFramePads().width(), 4 / sx));
    QVERIFY(isNear(label.getFramePads().height(), 4 / sy));

    QVERIFY(label.setItemSize(QSizeF(400, 50)));
    QVERIFY(isNear(label.getItemScaleX(), 404 / (natural.width() + 4)));
    QVERIFY(isNear(label.getItemScaleY(), 54 / (natural.height() + 4)));
}

void tst_LabelText::evenScalesGiveEvenPads()
{
    SimpleTextItem label;
    const QSizeF natural = LabelTexts::naturalSizeOf(label);
    label.setItemPenWidth(4);
    QVERIFY(label.setItemSize((natural + QSizeF(4, 4)) * 2.0 - QSizeF(4, 4)));
    QVERIFY(isNear(label.getItemScaleX(), 2));
    QVERIFY(isNear(label.getFramePads().width(), 2));
    QVERIFY(isNear(label.getFramePads().height(), 2));
}

void tst_LabelText::equalSizeChangesNothing()
{
    SimpleTextItem label;
    const QByteArray before = ItemRecords::saved(label);
    QVERIFY(!label.setItemSize(label.getItemSize()));
    QVERIFY(!label.setItemSize(label.getItemSize(), true, false));
    QVERIFY(!label.setItemSize(label.getItemSize(), false, 1, 1, 1000, 1000, false, false));
    QVERIFY(!label.getItemWasResized());
    QCOMPARE(toHexText(ItemRecords::saved(label)), toHexText(before));
}

void tst_LabelText::ratioIsKept()
{
    const QSizeF natural = LabelTexts::naturalSize(u"TEXT"_s);
    SimpleTextItem wide;
    QVERIFY(wide.setItemSize(QSizeF(natural.width() * 2, 17), true, false));
    QCOMPARE(wide.getItemSize(), natural * 2);
    QVERIFY(isNear(wide.getItemScaleY(), 2));
    SimpleTextItem high;
    QVERIFY(high.setItemSize(QSizeF(17, natural.height() * 2), true, true));
    QCOMPARE(high.getItemSize(), natural * 2);
    QVERIFY(isNear(high.getItemScaleX(), 2));
    SimpleTextItem limited;
    QVERIFY(limited.setItemSize(QSizeF(natural.width() / 2, 17), true, 1, 1, 1000, 1000, false, false));
    QCOMPARE(limited.getItemSize(), natural / 2);
    QVERIFY(limited.getItemWasResized());
}

void tst_LabelText::limitsAreKept()
{
    SimpleTextItem label;
    const QSizeF natural = LabelTexts::naturalSizeOf(label);
    QVERIFY(label.setItemSize(QSizeF(5000, 10), false, 20, 20, 1000, 800, false, false));
    QCOMPARE(label.getItemSize(), QSizeF(1000, 20));
    QVERIFY(isNear(label.getItemScaleX(), 1000 / natural.width()));
    QVERIFY(isNear(label.getItemScaleY(), 20 / natural.height()));
    QVERIFY(label.getItemWasResized());
}

void tst_LabelText::boundsHoldTheOutline()
{
    SimpleTextItem label;
    const QSizeF natural = LabelTexts::naturalSizeOf(label);
    label.setItemPenWidth(3);
    QCOMPARE(label.boundingRect(), QRectF(-3, -3, natural.width() + 6, natural.height() + 6));
    QVERIFY(label.setItemSize(QSizeF(300, 40)));
    const double mx = 3 / label.getItemScaleX();
    const double my = 3 / label.getItemScaleY();
    QCOMPARE(label.boundingRect(), QRectF(-mx, -my, natural.width() + 2 * mx, natural.height() + 2 * my));
    QCOMPARE(label.shape().boundingRect(), label.boundingRect());
}

void tst_LabelText::editingWidensTheBounds()
{
    SimpleTextItem label;
    const QSizeF natural = LabelTexts::naturalSizeOf(label);
    label.startEdit(0);
    QCOMPARE(label.boundingRect(), QRectF(-10, 0, natural.width() + 20, natural.height()));
    label.setItemPenWidth(12);
    QCOMPARE(label.boundingRect(), QRectF(-12, -12, natural.width() + 24, natural.height() + 24));
    label.setItemPenWidth(3);
    QCOMPARE(label.boundingRect(), QRectF(-10, -3, natural.width() + 20, natural.height() + 6));
    label.endEdit();
    QCOMPARE(label.boundingRect(), QRectF(-3, -3, natural.width() + 6, natural.height() + 6));
    for (const Qt::TextInteractionFlag flag : { Qt::TextSelectableByMouse, Qt::TextSelectableByKeyboard }) {
        label.setTextInteractionFlags(flag);
        QCOMPARE(label.boundingRect().left(), -10.0);
    }
}

void tst_LabelText::dataBecomeText_data()
{
    QTest::addColumn<QVariant>("data");
    QTest::addColumn<bool>("vertical");
    QTest::addColumn<QString>("text");

    QTest::newRow("text") << QVariant(u"Ada"_s) << false << u"Ada"_s;
    QTest::newRow("marked") << QVariant(marker + u"Name"_s) << false << u"Name"_s;
    QTest::newRow("marker within") << QVariant(u"a"_s + marker + u"b"_s) << false << u"ab"_s;
    QTest::newRow("marked twice") << QVariant(marker + u"a"_s + marker) << false << u"a"_s;
    QTest::newRow("marker in small letters")
        << QVariant(marker.toLower() + u"a"_s) << false << QString(marker.toLower() + u"a"_s);
    QTest::newRow("number") << QVariant(42) << false << u"42"_s;
    QTest::newRow("nothing") << QVariant() << false << QString();
    QTest::newRow("vertical") << QVariant(u"A B\n"_s) << true << u"A\n \nB"_s;
    QTest::newRow("vertical, marked") << QVariant(marker + u"AB"_s) << true << u"A\nB"_s;
}

void tst_LabelText::dataBecomeText()
{
    QFETCH(const QVariant, data);
    QFETCH(const bool, vertical);
    QFETCH(const QString, text);
    SimpleTextItem label;
    label.setTextVertical(vertical);
    label.setItemData(data);
    QCOMPARE(label.toPlainText(), text);
    QCOMPARE(label.getTextIsVertical(), vertical);
    QCOMPARE(label.getItemSize(), LabelTexts::naturalSizeOf(label));
}

void tst_LabelText::dataFitTheItemAndAreTold()
{
    SimpleTextItem label;
    const QSignalSpy changes(&label, &TextItem::textItemHasChanged);
    const QSignalSpy data(&label, &TextItem::itemDataChanged);
    label.setItemData(u"A much longer text"_s);
    QCOMPARE(changes.count(), 1);
    QCOMPARE(data.count(), 0);
    label.setItemData(marker + u"A much longer text"_s);
    QCOMPARE(changes.count(), 1);

    label.setItemDatasourceID(3);
    label.setItemDatasourceField(u"Name"_s);
    label.setItemText(u"by hand"_s);
    QVERIFY(data.count() >= 1);
    QCOMPARE(data.last(), QVariantList({ QVariant::fromValue(QVariant(u"by hand"_s)), 3, u"Name"_s }));
}

void tst_LabelText::equalDataOnlyRepaint()
{
    QGraphicsScene scene;
    auto *label = new SimpleTextItem;
    scene.addItem(label);
    label->setPos(40, 50);
    QList<QRectF> repainted;
    connect(&scene, &QGraphicsScene::changed, this,
        [&repainted](const QList<QRectF> &region) { repainted += region; });
    QCoreApplication::processEvents();
    repainted.clear();
    const QByteArray before = ItemRecords::saved(*label);
    label->setItemData(u"TEXT"_s);
    QCoreApplication::processEvents();
    QVERIFY(repainted.contains(label->sceneBoundingRect()));
    QCOMPARE(toHexText(ItemRecords::saved(*label)), toHexText(before));
}

void tst_LabelText::verticalTextIsStacked()
{
    SimpleTextItem label;
    label.setItemText(u"A\tB  D\n"_s);
    const QSignalSpy changes(&label, &TextItem::textItemHasChanged);
    QVERIFY(label.setTextVertical(true));
    QVERIFY(!label.setTextVertical(true));
    QCOMPARE(label.toPlainText(), u"A\n \nB\n \nD"_s);
    QCOMPARE(label.document()->blockCount(), 5);
    QCOMPARE(label.getItemSize(), LabelTexts::naturalSizeOf(label));
    QVERIFY(label.setTextVertical(false));
    QCOMPARE(label.toPlainText(), u"A B D"_s);
    QCOMPARE(label.getItemSize(), LabelTexts::naturalSizeOf(label));
    QCOMPARE(changes.count(), 0);

    label.setTextVertical(true);
    label.setItemText(u"A\n\nB"_s);
    QCOMPARE(label.convertVerticalTextToHorizontal(), u"A B"_s);
}

void tst_LabelText::blankTextIsClearedWhenTurned()
{
    SimpleTextItem label;
    label.setItemText(u" \n\t "_s);
    QVERIFY(label.setTextVertical(true));
    QCOMPARE(label.toPlainText(), QString());
    QVERIFY(label.setTextVertical(false));
    QCOMPARE(label.toPlainText(), QString());
    QCOMPARE(label.getItemSize(), LabelTexts::naturalSizeOf(label));
}

void tst_LabelText::equalTextChangesNothing()
{
    SimpleTextItem label;
    label.setPos(40, 50);
    label.setItemPinToCenter(true);
    label.setItemRotation(30);
    label.setItemSize(QSizeF(300, 40));
    const QByteArray before = ItemRecords::saved(label);
    const QPointF place = label.pos();
    label.setItemText(u"TEXT"_s);
    QVERIFY(areNear(label.pos(), place));
    label.setPos(place);
    QCOMPARE(toHexText(ItemRecords::saved(label)), toHexText(before));
}

void tst_LabelText::changesCannotBeUndone()
{
    SimpleTextItem label;
    for (int i = 0; i < 10000; ++i)
        label.setItemText(QString::number(i));
    QCOMPARE(label.toPlainText(), u"9999"_s);
    QCOMPARE(label.document()->availableUndoSteps(), 0);
    label.setItemData(u"data"_s);
    label.setItemFontSize(20);
    label.setTextVertical(true);
    QVERIFY(!label.document()->isUndoAvailable());
}

void tst_LabelText::copiesAreEqual()
{
    SimpleTextItem label;
    label.setItemText(u"A B"_s);
    label.setTextVertical(true);
    label.setItemFontSize(17);
    label.setItemItalic(true);
    label.setItemDocumentMargin(7);
    label.setItemTextColor(Colours::blue);
    label.setItemFillColor(Colours::yellow);
    label.setItemPenColor(Colours::red);
    label.setItemPenWidth(3);
    label.setItemAlignment(Qt::AlignRight);
    label.setItemPinToCenter(true);
    label.setPos(11, 22);
    label.setItemRotation(30);
    label.setItemSize(QSizeF(60, 140));
    label.setItemSizeLimiting(2);
    label.showEmptyTextMarker(true);

    const std::unique_ptr<Item> copied(label.createItemCopy());
    auto *copy = dynamic_cast<SimpleTextItem *>(copied.get());
    QVERIFY(copy);
    QCOMPARE(toHexText(ItemRecords::saved(*copy)), toHexText(ItemRecords::saved(label)));
    QCOMPARE(copy->boundingRect(), label.boundingRect());
    QCOMPARE(copy->getFramePads(), label.getFramePads());
    QCOMPARE(copy->pos(), label.pos());
    QCOMPARE(copy->transform(), label.transform());
    QVERIFY(!copy->isShownEmptyTextMarker());
    QVERIFY(!copy->document()->isUndoAvailable());
    const QImage image = Images::painted(label, QSize(60, 160));
    QVERIFY(Images::coloursOf(image).contains(Colours::bluePixel));
    QCOMPARE(Images::difference(Images::painted(*copy, QSize(60, 160)), image, u"label-copy"_s), QString());
    // The copy is fitted to its own text.
    copy->setItemText(u"X"_s);
    QVERIFY(copy->getItemSize() != label.getItemSize());
    QCOMPARE(label.toPlainText(), u"A\n \nB"_s);
}

void tst_LabelText::textColourIsPainted()
{
    SimpleTextItem label;
    label.setItemTextColor(Colours::red);
    QCOMPARE(label.getItemTextColor(), Colours::red);
    QCOMPARE(label.defaultTextColor(), Colours::red);
    const QSet<QRgb> colours = Images::coloursOf(Images::painted(label, QSize(150, 80)));
    QVERIFY(colours.contains(Colours::redPixel));
    QVERIFY(!colours.contains(Colours::blackPixel));
    // The outline's colour is not the text's.
    label.setItemPenColor(Colours::blue);
    QVERIFY(!Images::coloursOf(Images::painted(label, QSize(150, 80))).contains(Colours::blackPixel));
}

void tst_LabelText::lineBreaksAreCounted()
{
    QCOMPARE(SimpleTextItem::countNewLinesInText(QString()), 0);
    QCOMPARE(SimpleTextItem::countNewLinesInText(u"A"_s), 0);
    QCOMPARE(SimpleTextItem::countNewLinesInText(u"A\nB\n"_s), 2);
}

void tst_LabelText::verticalCursorFollowsTheAddedCharacters()
{
    const auto position = &SimpleTextItem::determineCursorPositionForVerticalText;
    QCOMPARE(position(0, 0, u"A\nB\nC"_s), 0);
    QCOMPARE(position(0, 1, u"A\nB\nC"_s), 2);
    QCOMPARE(position(2, 1, u"A\nB\nC"_s), 4);
    QCOMPARE(position(1, 1, u"A\nB\nC"_s), 4);
    QCOMPARE(position(3, 1, u"\U0001F600\nB\nC"_s), 5);
    QCOMPARE(position(4, 1, u"A\nB\nC"_s), 5);
}

QTEST_MAIN(tst_LabelText)
#include "tst_labeltext.moc"
