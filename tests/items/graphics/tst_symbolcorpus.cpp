// SPDX-License-Identifier: BSD-3-Clause
#include "items/graphics/emptysvg.h"
#include "items/graphics/symbolcolors.h"
#include "tests/support/colours.h"
#include "tests/support/images.h"
#include "tests/support/symbols.h"

#include <QDirIterator>
#include <QFile>
#include <QRegularExpression>
#include <QSvgRenderer>
#include <QTest>
#include <QXmlStreamReader>

using namespace Qt::StringLiterals;
using namespace Colours;

namespace {

// Colours that no symbol has.
const QColor slate(0x13, 0x57, 0x9B);
const QColor ochre(0xCA, 0x86, 0x42);
const QColor moss(0x24, 0x68, 0x2C);

struct Pair
{
    QColor pen;
    QColor fill;
};

const QList<Pair> pairs { { slate, ochre }, { white, black }, { black, white }, { moss, transparent },
    { ochre, ochre }, { white, transparent } };

bool isXml(const QByteArray &svg)
{
    QXmlStreamReader reader(svg);
    while (!reader.atEnd())
        reader.readNext();
    return !reader.hasError();
}

QByteArray normal(const QByteArray &svg)
{
    return SymbolColors::withCapitalWhite(SymbolColors::withNormalRoots(svg));
}

void setColors(SymbolItem &item, const Pair &colors)
{
    item.setItemPenFillColorPrePrint(colors.pen, colors.fill);
}

} // namespace

/// Symbols of all kinds, recoloured.
class tst_SymbolCorpus : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    void recolouredSymbolsCanBeShown_data() { addRows(); }
    void recolouredSymbolsCanBeShown();
    void earlierColoursLeaveNothing_data() { addRows(); }
    void earlierColoursLeaveNothing();
    void coloursAreTurnedBack_data() { addRows(); }
    void coloursAreTurnedBack();
    void copiesRecordsAndMapsLookTheSame_data() { addRows(); }
    void copiesRecordsAndMapsLookTheSame();

private:
    void addRows();

    QMap<QString, QByteArray> m_symbols;
};

void tst_SymbolCorpus::initTestCase()
{
    QDirIterator files(QStringLiteral(VX_TEST_DATA_DIR "/symbols"), { u"*.svg"_s });
    while (files.hasNext()) {
        QFile file(files.next());
        QVERIFY(file.open(QIODevice::ReadOnly));
        m_symbols.insert(files.fileInfo().completeBaseName(), file.readAll());
    }
    QVERIFY(m_symbols.size() >= 40);
}

void tst_SymbolCorpus::addRows()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QByteArray>("svg");
    for (auto symbol = m_symbols.cbegin(); symbol != m_symbols.cend(); ++symbol)
        QTest::addRow("%s", qPrintable(symbol.key())) << symbol.key() << symbol.value();
}

void tst_SymbolCorpus::recolouredSymbolsCanBeShown()
{
    QFETCH(QString, name);
    QFETCH(QByteArray, svg);
    for (const Pair &colors : pairs) {
        SymbolItem item;
        QVERIFY(item.loadItemFromData(svg, true, "#13579B", "#CA8642"));
        setColors(item, { moss, moss });
        setColors(item, colors);
        QVERIFY2(isXml(item.getSvgContents()), item.getSvgContents());
        QCOMPARE(item.getItemSize(), QSizeF(64, 48));
        const bool breaks = name.startsWith(u"breaks-") && colors.fill == transparent;
        QCOMPARE(item.getSvgContents() == EmptySvg::getEmptySvg(), breaks);
        QCOMPARE(item.boundingRect(), breaks ? QRectF(0, 0, 100, 100) : QRectF(0, 0, 64, 48));
        QVERIFY(item.renderer()->isValid());
        // Where one of the colours may be the ground, or hide the other, there may be nothing to see.
        const bool seen = Images::coloursOf(Images::painted(item, QSize(64, 48))).size() > 1;
        QVERIFY(seen || breaks || colors.pen == white || name.startsWith(u"background-behind-")
            || colors.fill == white || colors.pen == colors.fill);
    }
}

void tst_SymbolCorpus::earlierColoursLeaveNothing()
{
    QFETCH(QByteArray, svg);
    for (const Pair &earlier : pairs) {
        for (const Pair &later : pairs) {
            SymbolItem item;
            QVERIFY(item.loadItemFromData(svg, true, "#13579B", "#CA8642"));
            setColors(item, { moss, moss });
            setColors(item, earlier);
            static_cast<void>(Images::painted(item, QSize(64, 48)));
            setColors(item, later);
            SymbolItem direct;
            QVERIFY(direct.loadItemFromData(svg, true, "#13579B", "#CA8642"));
            setColors(direct, { moss, moss });
            setColors(direct, later);
            QCOMPARE(item.getSvgContents(), direct.getSvgContents());
            QCOMPARE(item.boundingRect(), direct.boundingRect());
            QCOMPARE(item.getItemSize(), direct.getItemSize());
            QCOMPARE(Images::painted(item, QSize(64, 48)), Images::painted(direct, QSize(64, 48)));
        }
    }
}

void tst_SymbolCorpus::coloursAreTurnedBack()
{
    QFETCH(QString, name);
    QFETCH(QByteArray, svg);
    const QByteArray original = normal(svg);
    SymbolItem item;
    QVERIFY(item.loadItemFromData(svg, true, "#FFFFFF", "#000000"));
    setColors(item, { slate, ochre });
    // The first opacity of 1 is taken for that of a background.
    const bool opaque = name.startsWith(u"opaque-");
    QCOMPARE(SymbolColors::uncolored(item.getSvgContents(), SymbolColors::inksOf(slate, ochre)) != original,
        opaque);
    QByteArray again = SymbolColors::uncolored(item.getSvgContents(), SymbolColors::inksOf(slate, ochre));
    again = SymbolColors::colored(again, SymbolColors::inksOf(moss, slate));
    const QByteArray direct = SymbolColors::colored(original, SymbolColors::inksOf(moss, slate));
    QCOMPARE(again != direct, opaque);

    const SymbolColors::Inks noFill = SymbolColors::inksOf(slate, transparent);
    const QByteArray turned = SymbolColors::uncolored(SymbolColors::colored(original, noFill), noFill);
    const bool lost = name.startsWith(u"none-") || original.contains("Gradient>");
    QCOMPARE(turned != original, lost);
}

void tst_SymbolCorpus::copiesRecordsAndMapsLookTheSame()
{
    QFETCH(QByteArray, svg);
    for (const Pair &colors : pairs) {
        SymbolItem item;
        QVERIFY(item.loadItemFromData(svg, true, "#13579B", "#CA8642"));
        setColors(item, { moss, moss });
        setColors(item, colors);
        item.setItemSize(QSizeF(32, 48));
        const QImage expected = Images::painted(item, QSize(64, 48));

        const std::unique_ptr<Item> copy(item.createItemCopy());
        QCOMPARE(Images::painted(dynamic_cast<SymbolItem &>(*copy), QSize(64, 48)), expected);

        QByteArray record;
        QDataStream out(&record, QIODevice::WriteOnly);
        item.saveItemToData(out);
        SymbolItem loaded;
        QDataStream in(record);
        loaded.loadItemFromData(in, 6);
        QCOMPARE(Images::painted(loaded, QSize(64, 48)), expected);
        QCOMPARE(loaded.sceneBoundingRect(), item.sceneBoundingRect());

        SymbolItem mapped;
        QVariantMap map = item.saveItemToJSON();
        if (item.getItemFillColor() == transparent)
            map.insert(u"itemFillColor"_s, u"transparent"_s); // the map's own is black
        mapped.loadItemFromJSON(map, 6);
        QCOMPARE(Images::painted(mapped, QSize(64, 48)), expected);
        QCOMPARE(mapped.sceneBoundingRect(), item.sceneBoundingRect());
    }
}

QTEST_MAIN(tst_SymbolCorpus)
#include "tst_symbolcorpus.moc"
