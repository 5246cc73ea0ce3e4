// SPDX-License-Identifier: BSD-3-Clause
#include "items/text/richtextitem.h"
#include "items/text/simpletextitem.h"
#include "tests/support/images.h"
#include "tests/support/itemrecords.h"
#include "tests/support/labeltexts.h"

#include <QRegularExpression>
#include <QTest>

#include <rapidcheck.h>

#include <cmath>
#include <string>

using namespace Qt::StringLiterals;

namespace {

const QString marker = u"!!!###VXFUNCTIONDATASOURCE###!!!"_s;

template <typename T> T oneOf(const QList<T> &values)
{
    return values[*rc::gen::inRange<qsizetype>(0, values.size())];
}

bool either()
{
    return *rc::gen::arbitrary<bool>();
}

double eighths(int lowest, int highest)
{
    return *rc::gen::inRange(8 * lowest, 8 * highest + 1) / 8.0;
}

double angle()
{
    return *rc::gen::inRange(-720'000, 720'001) / 1000.0;
}

QSizeF anySize()
{
    return { eighths(50, 4000), eighths(50, 4000) };
}

QColor colour(int lowestAlpha)
{
    const auto channel = [] { return *rc::gen::inRange(0, 256); };
    return QColor(channel(), channel(), channel(), *rc::gen::inRange(lowestAlpha, 256));
}

QString text(const QStringList &pieces, int most)
{
    QString text;
    for (int count = *rc::gen::inRange(0, most + 1); count > 0; --count)
        text += oneOf(pieces);
    return text;
}

/// Empty and blank ones, line breaks, right to left, characters of several units.
QString anyText()
{
    return text({ u"A"_s, u"W"_s, u"ill"_s, u"4711"_s, u" "_s, u"  "_s, u"\n"_s, u"\n\n"_s, u"€"_s,
                    u"\U0001F600"_s, u"e\u0301"_s, u"שלום"_s, u"ที่"_s, u"\t"_s, u"long words"_s },
        8);
}

QVariant anyData()
{
    return either() ? anyText() : QString(marker + anyText());
}

QString anyFamily()
{
    return oneOf<QString>({ LabelTexts::family, u"Loma"_s, u"DejaVu Serif"_s, u"DejaVu Sans Mono"_s });
}

Qt::Alignment anyAlignment()
{
    return oneOf<Qt::Alignment>({ Qt::AlignLeft, Qt::AlignRight, Qt::AlignHCenter, Qt::AlignJustify })
        | oneOf<Qt::Alignment>({ Qt::AlignTop, Qt::AlignVCenter, Qt::AlignBottom });
}

using Change = void (*)(SimpleTextItem &);

/// Changes of what is written, after which a label is fitted anew.
const QList<Change> textChanges {
    [](SimpleTextItem &label) { label.setItemText(anyText()); },
    [](SimpleTextItem &label) { label.setItemData(anyData()); },
    [](SimpleTextItem &label) { label.setTextVertical(either()); },
    [](SimpleTextItem &label) { label.setItemFontFamily(anyFamily()); },
    [](SimpleTextItem &label) { label.setItemBold(either()); },
    [](SimpleTextItem &label) { label.setItemItalic(either()); },
    [](SimpleTextItem &label) { label.setItemUnderline(either()); },
    [](SimpleTextItem &label) { label.setItemAlignment(anyAlignment()); },
    [](SimpleTextItem &label) { label.setItemDocumentMargin(eighths(0, 20)); },
};

void changeFontSize(SimpleTextItem &label)
{
    label.setItemFontSize(*rc::gen::inRange(1, 120));
}

void resize(SimpleTextItem &label)
{
    const QSizeF size = anySize();
    switch (*rc::gen::inRange(0, 3)) {
    case 0:
        label.setItemSize(size);
        return;
    case 1:
        label.setItemSize(size, either(), either());
        return;
    default:
        label.setItemSize(size, either(), 10.0, 5.0, 3000.0, 2000.0, either(), either());
    }
}

const QList<Change> sizeChanges {
    resize,
    [](SimpleTextItem &label) { label.setItemSizeFixedWidth(either()); },
    [](SimpleTextItem &label) { label.setItemSizeFixedHeight(either()); },
};

void outline(SimpleTextItem &label)
{
    label.setItemPenWidth(*rc::gen::inRange<ushort>(0, 20));
}

void turn(SimpleTextItem &label)
{
    label.setItemRotation(angle());
}

void place(TextItem &item)
{
    item.setPos(eighths(-100'000, 100'000), eighths(-100'000, 100'000));
}

void pin(SimpleTextItem &label)
{
    label.setItemPinToCenter(either());
}

/// Any label: turned, stretched, squeezed, written anew, outlined.
void changeAnyhow(SimpleTextItem &label, bool outlines = true)
{
    QList<Change> changes = textChanges + sizeChanges + QList<Change> { changeFontSize, turn, pin };
    if (outlines)
        changes.append(outline);
    for (int count = *rc::gen::inRange(0, 8); count > 0; --count)
        oneOf(changes)(label);
    place(label);
}

void colourAnyhow(TextItem &item, int lowestAlpha)
{
    const bool rich = item.type() == RichTextItem::Type;
    item.setItemTextColor(colour(rich ? 255 : lowestAlpha));
    item.setItemPenColor(colour(lowestAlpha));
    item.setItemFillColor(colour(lowestAlpha));
    item.setItemBrushStyleInt(*rc::gen::inRange(0, 18));
    item.setItemPenWidth(*rc::gen::inRange<ushort>(0, 20));
}

/// The centre of the text in the scene.
QPointF centreOf(const SimpleTextItem &label)
{
    return label.mapToScene(label.QGraphicsTextItem::boundingRect().center());
}

/// The corner where the text begins, in the scene.
QPointF cornerOf(const SimpleTextItem &label)
{
    return label.mapToScene(label.QGraphicsTextItem::boundingRect().topLeft());
}

bool isWithinAMillionth(const QPointF &left, const QPointF &right)
{
    return std::hypot(left.x() - right.x(), left.y() - right.y()) <= 1e-6;
}

bool isAbout(double left, double right)
{
    return std::abs(left - right) <= 1e-9 * std::max(std::abs(left), std::abs(right));
}

void assertLookAlike(const SimpleTextItem &left, const SimpleTextItem &right)
{
    RC_ASSERT(left.toPlainText() == right.toPlainText());
    RC_ASSERT(left.font() == right.font());
    RC_ASSERT(left.boundingRect() == right.boundingRect());
    RC_ASSERT(left.document()->size() == right.document()->size());
    RC_ASSERT(left.transform() == right.transform());
    RC_ASSERT(left.pos() == right.pos());
    RC_ASSERT(left.getFramePads() == right.getFramePads());
}

QString anyHtml()
{
    return text({ u"plain"_s, u" "_s, u"<b>bold</b>"_s, u"<i>italic</i>"_s, u"<u>under</u>"_s,
                    u"&lt;tag&gt; &amp; more"_s, u"<p align=\"center\">middle</p>"_s,
                    u"<span style=\"font-size:11pt;\">eleven</span>"_s,
                    u"<span style=\"font-size:7.5pt;\">small</span>"_s,
                    u"<span style=\"color:#ff0000;\">red</span>"_s,
                    u"<span style=\"font-family:'DejaVu Serif';\">serif</span>"_s,
                    u"<ul><li>one</li><li>two</li></ul>"_s, u"שלום"_s, u"many words to break lines"_s },
        8);
}

using BoxChange = void (*)(RichTextItem &);

const QList<BoxChange> textChangesOfABox {
    [](RichTextItem &box) { box.setItemText(anyText()); },
    [](RichTextItem &box) { box.setItemHtml(anyHtml()); },
    [](RichTextItem &box) { box.setItemData(anyText()); },
    [](RichTextItem &box) { box.setItemData(marker + anyHtml()); },
    [](RichTextItem &box) { box.setItemAlignment(anyAlignment()); },
    [](RichTextItem &box) { box.setItemPenWidth(*rc::gen::inRange<ushort>(0, 20)); },
};

const QList<BoxChange> fontChangesOfABox {
    [](RichTextItem &box) { box.setItemFontFamily(anyFamily()); },
    [](RichTextItem &box) { box.setItemFontSize(*rc::gen::inRange(1, 120)); },
    [](RichTextItem &box) { box.setItemBold(either()); },
    [](RichTextItem &box) { box.setItemItalic(either()); },
    [](RichTextItem &box) { box.setItemUnderline(either()); },
    [](RichTextItem &box) { box.setItemTextColor(colour(255)); },
    [](RichTextItem &box) { box.setEmptyFontFamily(anyFamily()); },
    [](RichTextItem &box) { box.setEmptyFontSize(*rc::gen::inRange(1, 120)); },
    [](RichTextItem &box) { box.setEmptyFontItalic(either()); },
    [](RichTextItem &box) { box.setEmptyFontUnderline(either()); },
};

const QList<BoxChange> placeChangesOfABox {
    [](RichTextItem &box) { box.setItemRotation(angle()); },
    [](RichTextItem &box) { box.setItemSize(anySize()); },
    [](RichTextItem &box) { box.adjustBoxSizeToContent(eighths(1, 400)); },
};

void changeAnyhow(RichTextItem &box, const QList<BoxChange> &changes)
{
    for (int count = *rc::gen::inRange(0, 8); count > 0; --count)
        oneOf(changes)(box);
    place(box);
}

void assertEqual(RichTextItem &left, RichTextItem &right)
{
    RC_ASSERT(left.toPlainText() == right.toPlainText());
    RC_ASSERT(left.getDocumentIsEmpty() == right.getDocumentIsEmpty());
    RC_ASSERT(left.getItemTextColor() == right.getItemTextColor());
    RC_ASSERT(left.getItemFontSize() == right.getItemFontSize());
    RC_ASSERT(left.getItemSize() == right.getItemSize());
    RC_ASSERT(left.transform() == right.transform());
    RC_ASSERT(left.pos() == right.pos());
    RC_ASSERT(left.getFramePads() == right.getFramePads());
    RC_ASSERT(left.getEmptyFontSize() == right.getEmptyFontSize());
    RC_ASSERT(left.getEmptyFontFamily() == right.getEmptyFontFamily());
}

/// For boxes of the same HTML: where that is told in another way, neighbours of one look may be kerned.
void assertLookAlike(RichTextItem &left, RichTextItem &right)
{
    assertEqual(left, right);
    const QSize size(250, 150);
    constexpr int gradientTolerance = 8;
    RC_ASSERT(left.getTextFitsInBox() == right.getTextFitsInBox());
    RC_ASSERT(left.boundingRect() == right.boundingRect());
    RC_ASSERT(Images::difference(
        Images::painted(left, size), Images::painted(right, size), u"text-properties"_s, gradientTolerance)
                  .isEmpty());
}

} // namespace

/// What holds for any text, in any font, place and size. The cases are drawn at random from a fixed seed, so
/// every run tries the same; RC_PARAMS in the environment chooses others.
class tst_TextProperties : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    void pinnedLabelKeepsItsCentre();
    void freeLabelKeepsItsCorner();
    void turnedLabelKeepsItsCentre();
    void fontSizeLeavesTheItemWhereItIs();
    void fixedSidesAreKept();
    void unlimitedLabelsStretchAsBefore();
    void labelRecordRoundTripIsIdentity();
    void labelMapRoundTripIsIdentity();
    void labelCopiesAreEqual();
    void boxRecordSettles();
    void boxMapSettles();
    void boxCopiesAreEqual();
    void boxKeepsItsSize();
};

void tst_TextProperties::initTestCase()
{
    LabelTexts::useKnownFont();
    if (!qEnvironmentVariableIsSet("RC_PARAMS"))
        qputenv("RC_PARAMS", "seed=20230401 max_success=500");
}

void tst_TextProperties::pinnedLabelKeepsItsCentre()
{
    QVERIFY(rc::check([] {
        SimpleTextItem label;
        changeAnyhow(label);
        label.setItemPinToCenter(true);
        const QPointF centre = centreOf(label);
        const QList<Change> changes
            = textChanges + sizeChanges + QList<Change> { changeFontSize, outline, turn };
        for (int count = *rc::gen::inRange(1, 8); count > 0; --count) {
            oneOf(changes)(label);
            RC_ASSERT(isWithinAMillionth(centreOf(label), centre));
        }
    }));
}

void tst_TextProperties::freeLabelKeepsItsCorner()
{
    QVERIFY(rc::check([] {
        SimpleTextItem label;
        changeAnyhow(label);
        label.setItemPinToCenter(false);
        const QPointF corner = cornerOf(label);
        for (int count = *rc::gen::inRange(1, 8); count > 0; --count) {
            oneOf(textChanges + sizeChanges + QList<Change> { outline })(label);
            RC_ASSERT(isWithinAMillionth(cornerOf(label), corner));
        }
    }));
}

void tst_TextProperties::turnedLabelKeepsItsCentre()
{
    QVERIFY(rc::check([] {
        SimpleTextItem label;
        changeAnyhow(label);
        const QPointF centre = centreOf(label);
        for (int count = *rc::gen::inRange(1, 4); count > 0; --count) {
            turn(label);
            RC_ASSERT(isWithinAMillionth(centreOf(label), centre));
        }
    }));
}

/// A stretched label gets a new transform, without its stretching, about the centre that it had.
void tst_TextProperties::fontSizeLeavesTheItemWhereItIs()
{
    QVERIFY(rc::check([] {
        SimpleTextItem label;
        changeAnyhow(label);
        label.setItemPinToCenter(false);
        const QPointF position = label.pos();
        const bool stretched = label.getItemWasResized();
        const QPointF centre(label.getItemWidth() / 2.0, label.getItemHeight() / 2.0);
        QTransform expected = label.transform();
        if (stretched) {
            expected = QTransform::fromTranslate(centre.x(), centre.y());
            expected.rotate(label.getItemRotation());
            expected.translate(-centre.x(), -centre.y());
        }
        changeFontSize(label);
        RC_ASSERT(label.pos() == position);
        RC_ASSERT(label.transform() == expected);
        RC_ASSERT(!label.getItemWasResized());
        RC_ASSERT(label.getItemSizeLimitingInt() == 0);
        if (stretched) {
            RC_ASSERT(label.getItemScaleX() == 1.0);
            RC_ASSERT(label.getItemScaleY() == 1.0);
            RC_ASSERT(label.getOldTransformCoefficientM31() == expected.m31());
            RC_ASSERT(label.getOldTransformCoefficientM32() == expected.m32());
        }
    }));
}

void tst_TextProperties::fixedSidesAreKept()
{
    QVERIFY(rc::check([] {
        SimpleTextItem label;
        changeAnyhow(label);
        label.setItemSizeFixedWidth(either());
        label.setItemSizeFixedHeight(!label.getItemFixedSizeWidth() || either());
        const QSizeF size = label.getItemSize();
        for (int count = *rc::gen::inRange(1, 8); count > 0; --count) {
            const double outline = label.getItemPen().width();
            oneOf(textChanges)(label);
            const QSizeF natural = LabelTexts::naturalSizeOf(label);
            if (label.getItemFixedSizeWidth()) {
                RC_ASSERT(isAbout(label.getItemWidth(), size.width()));
                if (natural.width() > 0.0) {
                    const double whole = label.getItemScaleX() * (natural.width() + outline);
                    RC_ASSERT(isAbout(whole, size.width() + outline));
                }
            }
            if (label.getItemFixedSizeHeight()) {
                RC_ASSERT(isAbout(label.getItemHeight(), size.height()));
                const double whole = label.getItemScaleY() * (natural.height() + outline);
                RC_ASSERT(isAbout(whole, size.height() + outline));
            }
        }
    }));
}

void tst_TextProperties::unlimitedLabelsStretchAsBefore()
{
    QVERIFY(rc::check([] {
        SimpleTextItem label;
        changeAnyhow(label);
        label.setItemSizeLimiting(0);
        const double scaleX = label.getItemScaleX();
        const double scaleY = label.getItemScaleY();
        oneOf(textChanges)(label);
        const QSizeF natural = LabelTexts::naturalSizeOf(label);
        RC_ASSERT(label.getItemScaleX() == scaleX);
        RC_ASSERT(label.getItemScaleY() == scaleY);
        RC_ASSERT(label.textWidth() == natural.width());
    }));
}

void tst_TextProperties::labelRecordRoundTripIsIdentity()
{
    QVERIFY(rc::check([] {
        SimpleTextItem label;
        changeAnyhow(label);
        colourAnyhow(label, 0);
        const QByteArray record = ItemRecords::saved(label);
        SimpleTextItem loaded;
        changeAnyhow(loaded);
        RC_ASSERT(ItemRecords::load(loaded, record) == QDataStream::Ok);
        RC_ASSERT(ItemRecords::saved(loaded) == record);
        assertLookAlike(loaded, label);
    }));
}

/// A vertical text is mapped as the line that it stands for.
/// Without outlines: a map does not tell the font size of a stretched label, nor the outline that it had
/// then.
void tst_TextProperties::labelMapRoundTripIsIdentity()
{
    QVERIFY(rc::check([] {
        SimpleTextItem label;
        changeAnyhow(label, false);
        colourAnyhow(label, 255);
        label.setItemPenWidth(0);
        if (label.setTextVertical(false))
            label.setTextVertical(true);
        const QVariantMap map = label.saveItemToJSON();
        SimpleTextItem loaded;
        changeAnyhow(loaded);
        loaded.loadItemFromJSON(map, ItemRecords::currentVersion);
        RC_ASSERT(loaded.saveItemToJSON() == map);
        assertLookAlike(loaded, label);
    }));
}

void tst_TextProperties::labelCopiesAreEqual()
{
    QVERIFY(rc::check([] {
        SimpleTextItem label;
        changeAnyhow(label);
        colourAnyhow(label, 0);
        const std::unique_ptr<Item> copied(label.createItemCopy());
        auto *copy = dynamic_cast<SimpleTextItem *>(copied.get());
        RC_ASSERT(ItemRecords::saved(*copy) == ItemRecords::saved(label));
        RC_ASSERT(copy->saveItemToJSON() == label.saveItemToJSON());
        assertLookAlike(*copy, label);
    }));
}

/// HTML tells neighbours of one look as one: after loading once, a box is told in the same way for ever.
void tst_TextProperties::boxRecordSettles()
{
    QVERIFY(rc::check([] {
        RichTextItem box;
        changeAnyhow(box, textChangesOfABox + fontChangesOfABox + placeChangesOfABox);
        colourAnyhow(box, 0);
        RichTextItem settled;
        RC_ASSERT(ItemRecords::load(settled, ItemRecords::saved(box)) == QDataStream::Ok);
        assertEqual(settled, box);
        const QByteArray record = ItemRecords::saved(settled);
        RichTextItem loaded;
        changeAnyhow(loaded, textChangesOfABox + placeChangesOfABox);
        RC_ASSERT(ItemRecords::load(loaded, record) == QDataStream::Ok);
        assertLookAlike(loaded, settled);
        RC_ASSERT(ItemRecords::saved(loaded) == record);
    }));
}

void tst_TextProperties::boxMapSettles()
{
    QVERIFY(rc::check([] {
        RichTextItem box;
        changeAnyhow(box, textChangesOfABox + fontChangesOfABox + placeChangesOfABox);
        colourAnyhow(box, 255);
        RichTextItem settled;
        settled.loadItemFromJSON(box.saveItemToJSON(), ItemRecords::currentVersion);
        assertEqual(settled, box);
        const QVariantMap map = settled.saveItemToJSON();
        RichTextItem loaded;
        changeAnyhow(loaded, textChangesOfABox);
        loaded.loadItemFromJSON(map, ItemRecords::currentVersion);
        assertLookAlike(loaded, settled);
        RC_ASSERT(loaded.saveItemToJSON() == map);
    }));
}

void tst_TextProperties::boxCopiesAreEqual()
{
    QVERIFY(rc::check([] {
        RichTextItem box;
        changeAnyhow(box, textChangesOfABox + fontChangesOfABox + placeChangesOfABox);
        colourAnyhow(box, 0);
        const std::unique_ptr<Item> first(box.createItemCopy());
        auto &copy = dynamic_cast<RichTextItem &>(*first);
        assertEqual(copy, box);
        const std::unique_ptr<Item> second(copy.createItemCopy());
        assertLookAlike(dynamic_cast<RichTextItem &>(*second), copy);
        RC_ASSERT(ItemRecords::saved(*second) == ItemRecords::saved(copy));
        RC_ASSERT(second->saveItemToJSON() == copy.saveItemToJSON());
    }));
}

void tst_TextProperties::boxKeepsItsSize()
{
    QVERIFY(rc::check([] {
        RichTextItem box;
        changeAnyhow(box, textChangesOfABox + fontChangesOfABox + placeChangesOfABox);
        const QSizeF size = anySize();
        box.setItemSize(size);
        const QPointF corner = box.mapToScene(QPointF(0, 0));
        for (int count = *rc::gen::inRange(1, 8); count > 0; --count) {
            oneOf(textChangesOfABox + fontChangesOfABox)(box);
            RC_ASSERT(box.getItemSize() == size);
            RC_ASSERT(box.textWidth() == size.width());
            RC_ASSERT(box.getItemScaleX() == 1.0);
            RC_ASSERT(box.getItemScaleY() == 1.0);
            RC_ASSERT(box.mapToScene(QPointF(0, 0)) == corner);
        }
    }));
}

QTEST_MAIN(tst_TextProperties)
#include "tst_textproperties.moc"
