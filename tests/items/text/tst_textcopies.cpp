// SPDX-License-Identifier: BSD-3-Clause
#include "items/text/simpletextitem.h"
#include "tests/support/images.h"
#include "tests/support/itemrecords.h"
#include "tests/support/labeltexts.h"

#include <QRandomGenerator>
#include <QTest>

#include <array>
#include <memory>

using namespace Qt::StringLiterals;

namespace {

const QStringList texts { u"Bolt M8"_s, u""_s, u"a"_s, u"two\nlines of text"_s, u"  "_s,
    u"WWWWWWWWWWWWWW"_s };

using Change = void (*)(SimpleTextItem &item, QRandomGenerator &random);

const std::array<Change, 21> changes {
    [](SimpleTextItem &item, QRandomGenerator &random) { item.setItemPinToCenter(random.bounded(2) == 0); },
    [](SimpleTextItem &item, QRandomGenerator &random) { item.setItemData(texts[random.bounded(6)]); },
    [](SimpleTextItem &item, QRandomGenerator &random) { item.setItemText(texts[random.bounded(6)]); },
    [](SimpleTextItem &item, QRandomGenerator &random) { item.setItemFontSize(random.bounded(5, 90)); },
    [](SimpleTextItem &item, QRandomGenerator &random) { item.setItemBold(random.bounded(2) == 0); },
    [](SimpleTextItem &item, QRandomGenerator &random) { item.setItemItalic(random.bounded(2) == 0); },
    [](SimpleTextItem &item, QRandomGenerator &random) { item.setItemUnderline(random.bounded(2) == 0); },
    [](SimpleTextItem &item, QRandomGenerator &random) {
        item.setItemFontFamily(random.bounded(2) == 0 ? u"DejaVu Sans"_s : u"Loma"_s);
    },
    [](SimpleTextItem &item, QRandomGenerator &random) {
        constexpr std::array alignments { Qt::AlignLeft, Qt::AlignRight, Qt::AlignHCenter };
        item.setItemAlignment(alignments[std::size_t(random.bounded(3))] | Qt::AlignVCenter);
    },
    [](SimpleTextItem &item, QRandomGenerator &random) { item.setItemDocumentMargin(random.bounded(20)); },
    [](SimpleTextItem &item, QRandomGenerator &random) {
        item.setItemSize(QSizeF(random.bounded(1, 300), random.bounded(1, 200)));
    },
    [](SimpleTextItem &item, QRandomGenerator &random) { item.setItemWidth(random.bounded(1, 300)); },
    [](SimpleTextItem &item, QRandomGenerator &random) { item.setItemRotation(random.bounded(360)); },
    [](SimpleTextItem &item, QRandomGenerator &random) {
        item.setItemHorizontalMirror(random.bounded(2) == 0);
        item.setItemVerticalMirror(random.bounded(2) == 0);
    },
    [](SimpleTextItem &item, QRandomGenerator &random) { item.setTextVertical(random.bounded(2) == 0); },
    [](SimpleTextItem &item, QRandomGenerator &random) {
        item.setPos(random.bounded(90), random.bounded(90));
    },
    [](SimpleTextItem &item, QRandomGenerator &random) {
        item.setItemTextColor(QColor::fromRgb(random.generate()));
    },
    [](SimpleTextItem &item, QRandomGenerator &random) {
        item.setItemFillColor(QColor::fromRgb(random.generate()));
        item.setItemBrushStyle(MobraTypes::BrushLinearGradient);
    },
    [](SimpleTextItem &item, QRandomGenerator &random) {
        item.setItemPenColor(QColor::fromRgb(random.generate()));
        item.setItemPenWidth(short(random.bounded(12)));
    },
    [](SimpleTextItem &item, QRandomGenerator &random) {
        item.setItemZValue(random.bounded(9));
        item.setItemFlags(MobraTypes::FlagReadOnly, random.bounded(2) == 0);
        item.setAllowOverprint(random.bounded(2) == 0);
    },
    [](SimpleTextItem &item, QRandomGenerator &random) {
        item.setItemId(short(random.bounded(99)));
        item.setDatasourceId(random.bounded(9));
        item.setDatasourceField(u"name"_s);
    },
};

std::unique_ptr<SimpleTextItem> anyText(QRandomGenerator &random)
{
    auto item = std::make_unique<SimpleTextItem>();
    for (int i = random.bounded(25); i > 0; --i)
        changes[random.bounded(quint32(changes.size()))](*item, random);
    return item;
}

} // namespace

/// What becomes of a text that is made another one.
class tst_TextCopies : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void usedTextsBecomeAsNewOnes_data();
    void usedTextsBecomeAsNewOnes();
    void copiesBreakLongWordsAsTheirOriginals();
};

void tst_TextCopies::initTestCase()
{
    LabelTexts::useKnownFont();
}

void tst_TextCopies::usedTextsBecomeAsNewOnes_data()
{
    QTest::addColumn<quint32>("seed");
    for (quint32 seed = 1; seed <= 300; ++seed)
        QTest::addRow("%u", seed) << seed;
}

void tst_TextCopies::usedTextsBecomeAsNewOnes()
{
    QFETCH(const quint32, seed);
    QRandomGenerator random(seed);
    const std::unique_ptr<SimpleTextItem> designed = anyText(random);
    const std::unique_ptr<SimpleTextItem> used = anyText(random);
    std::unique_ptr<SimpleTextItem> fresh(dynamic_cast<SimpleTextItem *>(designed->createItemCopy()));
    QVERIFY(fresh);
    const auto compare = [&] {
        QCOMPARE(ItemRecords::saved(*used), ItemRecords::saved(*fresh));
        QCOMPARE(used->textWidth(), fresh->textWidth());
        QCOMPARE(used->boundingRect(), fresh->boundingRect());
        QCOMPARE(used->sceneTransform(), fresh->sceneTransform());
        QCOMPARE(Images::painted(*used, { 320, 240 }), Images::painted(*fresh, { 320, 240 }));
    };
    designed->copyTo(*used);
    compare();
    for (const QString &text : texts) {
        used->setItemData(text);
        fresh->setItemData(text);
        compare();
        if (QTest::currentTestFailed())
            return;
    }
    for (const QString &text : texts) {
        designed->copyTo(*used, text);
        fresh.reset(dynamic_cast<SimpleTextItem *>(designed->createItemCopy()));
        fresh->setItemData(text);
        compare();
        if (QTest::currentTestFailed())
            return;
    }
}

// Anywhere, if a word has more than 20,000 letters; it would be looked through for its end at each line.
void tst_TextCopies::copiesBreakLongWordsAsTheirOriginals()
{
    const auto wrapModeOf
        = [](const SimpleTextItem &item) { return item.document()->defaultTextOption().wrapMode(); };
    SimpleTextItem longWord;
    longWord.setItemText(QString(20'001, u'x'));
    SimpleTextItem shortWord;
    shortWord.setItemText(u"x"_s);

    SimpleTextItem copy;
    longWord.copyTo(copy);
    QCOMPARE(wrapModeOf(copy), QTextOption::WrapAnywhere);
    shortWord.copyTo(copy);
    QCOMPARE(wrapModeOf(copy), QTextOption::WrapAtWordBoundaryOrAnywhere);
    shortWord.copyTo(copy, longWord.getItemText());
    QCOMPARE(wrapModeOf(copy), QTextOption::WrapAnywhere);
}

QTEST_MAIN(tst_TextCopies)
#include "tst_textcopies.moc"
