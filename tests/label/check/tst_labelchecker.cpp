// SPDX-License-Identifier: BSD-3-Clause
#include "items/barcode/barcodeitem.h"
#include "items/text/richtextitem.h"
#include "label/check/labelchecker.h"
#include "tests/label/printing.h"

#include <QRegularExpression>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace Printing;

namespace {

constexpr double dpi = 254.0;

/// A page of 500 x 300 dots.
LabelDocument page()
{
    return blackAndRed({ 50, 30 });
}

/// A QR Code of 21 modules of four dots, which needs 16 free dots on each side.
Item *addCode(LabelDocument &document, QPointF place, const QColor &background = nothing)
{
    constexpr short qrCode = 58;
    auto item = std::make_unique<BarcodeItem>();
    item->setBarcodeSymbol(qrCode);
    item->setBarcodeText(u"A"_s);
    return addItem(
        document, std::move(item), { place, QSizeF(84, 84) }, { .fill = background, .pen = black });
}

QStringList rulesOf(const Findings &findings)
{
    QStringList rules;
    for (const Finding &finding : findings)
        rules.append(finding.problem.where + u' ' + finding.rule);
    return rules;
}

} // namespace

/// What is checked once, what for each label, and what is no fault.
class tst_LabelChecker : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    void boundItemsAreCheckedOnEachLabel();
    void codesAndObstaclesAreCheckedTogether_data();
    void codesAndObstaclesAreCheckedTogether();
    void freeSpaceIsMeasured_data();
    void freeSpaceIsMeasured();
    void whatLiesBelowIsCovered_data();
    void whatLiesBelowIsCovered();
    void turnedCodesHaveTurnedFreeSpace_data();
    void turnedCodesHaveTurnedFreeSpace();
    void hiddenItemsAreNotChecked();
    void mirroredTextsLieElsewhere_data();
    void mirroredTextsLieElsewhere();
    void whatHasNoSizeLiesNowhere();
};

void tst_LabelChecker::boundItemsAreCheckedOnEachLabel()
{
    LabelDocument document = page();
    addRectangle(document, { 10, 10, 20, 20 }, { .fill = blue });
    addRectangle(document, { 50, 10, 20, 20 }, { .fill = blue });
    LabelChecker checker(document, dpi, { 1 });
    const QStringList once { u"/items/0 unprintable-colour"_s };
    const QStringList each { u"/items/1 unprintable-colour"_s };
    QCOMPARE(rulesOf(checker.checkAll()), once);
    QCOMPARE(rulesOf(checker.checkShown()), each);
    auto other = std::make_unique<RectangleItem>();
    other->setItemFillColor(red);
    other->setItemPenStyle(Qt::NoPen);
    document.replaceItem(1, std::move(other));
    QCOMPARE(rulesOf(checker.checkShown()), QStringList());
    QCOMPARE(rulesOf(checker.checkAll()), once);
}

void tst_LabelChecker::codesAndObstaclesAreCheckedTogether_data()
{
    QTest::addColumn<std::vector<std::size_t>>("bound"); // the code is 0, what lies beside it 1
    QTest::addColumn<bool>("isFoundOnce");
    using Items = std::vector<std::size_t>;
    QTest::newRow("nothing is bound") << Items {} << true;
    QTest::newRow("the code is bound") << Items { 0 } << false;
    QTest::newRow("the obstacle is bound") << Items { 1 } << false;
    QTest::newRow("both are bound") << Items { 0, 1 } << false;
}

void tst_LabelChecker::codesAndObstaclesAreCheckedTogether()
{
    QFETCH(std::vector<std::size_t>, bound);
    QFETCH(bool, isFoundOnce);
    LabelDocument document = page();
    addCode(document, { 100, 100 });
    addRectangle(document, { 190, 100, 20, 20 }, { .fill = black });
    LabelChecker checker(document, dpi, bound);
    const QStringList found { u"/items/0 quiet-zone"_s };
    QCOMPARE(rulesOf(checker.checkAll()), isFoundOnce ? found : QStringList());
    QCOMPARE(rulesOf(checker.checkShown()), isFoundOnce ? QStringList() : found);
}

/// The symbol takes 100 to 184 in both directions, its free space 84 to 200.
void tst_LabelChecker::freeSpaceIsMeasured_data()
{
    QTest::addColumn<QRectF>("obstacle");
    QTest::addColumn<bool>("isInTheWay");
    QTest::newRow("right of it") << QRectF(200, 100, 20, 84) << false;
    QTest::newRow("a dot into it") << QRectF(199, 100, 20, 84) << true;
    QTest::newRow("left of it") << QRectF(64, 100, 20, 84) << false;
    QTest::newRow("a dot into it from the left") << QRectF(65, 100, 20, 84) << true;
    QTest::newRow("above it") << QRectF(100, 64, 84, 20) << false;
    QTest::newRow("a dot into it from above") << QRectF(100, 65, 84, 20) << true;
    QTest::newRow("below it") << QRectF(100, 200, 84, 20) << false;
    QTest::newRow("a dot into it from below") << QRectF(100, 199, 84, 20) << true;
}

void tst_LabelChecker::freeSpaceIsMeasured()
{
    QFETCH(QRectF, obstacle);
    QFETCH(bool, isInTheWay);
    LabelDocument document = page();
    addCode(document, { 100, 100 });
    addRectangle(document, obstacle, { .fill = black });
    LabelChecker checker(document, dpi, {});
    QCOMPARE(
        rulesOf(checker.checkAll()), isInTheWay ? QStringList { u"/items/0 quiet-zone"_s } : QStringList());
}

void tst_LabelChecker::whatLiesBelowIsCovered_data()
{
    QTest::addColumn<QColor>("panel"); // between a black page and the code
    QTest::addColumn<QColor>("background"); // of the code
    QTest::addColumn<QString>("words"); // of what is in the way; nothing for none
    QTest::newRow("a white panel") << white << nothing << QString();
    QTest::newRow("no panel") << nothing << nothing << u"on the symbol"_s;
    QTest::newRow("a background without free space") << nothing << white << u"in the free space"_s;
    QTest::newRow("a red panel, which lasers do not see") << red << nothing << QString();
}

void tst_LabelChecker::whatLiesBelowIsCovered()
{
    QFETCH(QColor, panel);
    QFETCH(QColor, background);
    QFETCH(QString, words);
    LabelDocument document = page();
    addRectangle(document, { 0, 0, 500, 300 }, { .fill = black });
    addRectangle(document, { 50, 50, 200, 200 }, { .fill = panel });
    addCode(document, { 100, 100 }, background);
    LabelChecker checker(document, dpi, {});
    const Findings found = checker.checkAll();
    QCOMPARE(rulesOf(found), words.isEmpty() ? QStringList() : QStringList { u"/items/2 quiet-zone"_s });
    if (!words.isEmpty())
        QVERIFY2(found[0].problem.what.contains(words), qPrintable(found[0].problem.what));
}

/// The symbol stands on a corner, with its centre at (250, 150): its other corners are 42 * 1.414 = 59.4 from
/// there, those of its free space 58 * 1.414 = 82. A place is as far as its distances in both directions are
/// together; what is told of a row is that of its nearest corner.
void tst_LabelChecker::turnedCodesHaveTurnedFreeSpace_data()
{
    QTest::addColumn<QRectF>("obstacle");
    QTest::addColumn<QString>("words"); // nothing: it is not in the way
    QTest::newRow("120 away") << QRectF(170, 70, 20, 20) << QString();
    QTest::newRow("70 away") << QRectF(285, 185, 20, 20) << u"in the free space"_s;
    QTest::newRow("84 away") << QRectF(292, 192, 20, 20) << QString();
    QTest::newRow("60 away") << QRectF(212, 112, 8, 8) << u"in the free space"_s;
    QTest::newRow("30 away") << QRectF(225, 125, 10, 10) << u"on the symbol"_s;
}

void tst_LabelChecker::turnedCodesHaveTurnedFreeSpace()
{
    QFETCH(QRectF, obstacle);
    QFETCH(QString, words);
    LabelDocument document = page();
    auto &code = dynamic_cast<QGraphicsItem &>(*addCode(document, { 208, 108 }));
    code.setTransformOriginPoint(42, 42);
    code.setRotation(45);
    addRectangle(document, obstacle, { .fill = black });
    LabelChecker checker(document, dpi, {});
    QStringList told;
    for (const Finding &finding : checker.checkAll()) {
        if (finding.rule == "quiet-zone"_L1)
            told.append(finding.problem.what);
    }
    QCOMPARE(told.size(), words.isEmpty() ? 0 : 1);
    QVERIFY2(words.isEmpty() || told[0].contains(words), qPrintable(told.value(0)));
}

void tst_LabelChecker::hiddenItemsAreNotChecked()
{
    LabelDocument document = page();
    addRectangle(document, { 10, 10, 20, 20 }, { .fill = blue })->setItemIsVisible(false);
    addCode(document, { 100, 100 });
    addRectangle(document, { 190, 100, 20, 20 }, { .fill = black })->setItemIsVisible(false);
    LabelChecker checker(document, dpi, {});
    QCOMPARE(rulesOf(checker.checkAll()), QStringList());
}

/// A short line at the beginning of a box that reaches over an edge of the label, of 500 x 300 dots.
void tst_LabelChecker::mirroredTextsLieElsewhere_data()
{
    QTest::addColumn<QRectF>("box");
    QTest::addColumn<bool>("horizontal");
    QTest::addColumn<bool>("vertical");
    QTest::addColumn<bool>("isOnLabel");
    const QRectF right(400, 100, 200, 80);
    const QRectF left(-100, 100, 200, 80);
    const QRectF bottom(100, 220, 200, 200);
    QTest::newRow("over the right edge") << right << false << false << true;
    QTest::newRow("mirrored over it") << right << true << false << false;
    QTest::newRow("upside down over it") << right << false << true << true;
    QTest::newRow("over the left edge") << left << false << false << false;
    QTest::newRow("mirrored back from it") << left << true << false << true;
    QTest::newRow("over the lower edge") << bottom << false << false << true;
    QTest::newRow("upside down beyond it") << bottom << false << true << false;
}

void tst_LabelChecker::mirroredTextsLieElsewhere()
{
    QFETCH(QRectF, box);
    QFETCH(bool, horizontal);
    QFETCH(bool, vertical);
    QFETCH(bool, isOnLabel);
    LabelDocument document = page();
    auto text = std::make_unique<RichTextItem>();
    text->setItemHtml(u"<p style=\"font-family:'DejaVu Sans'; font-size:20px\">AB</p>"_s);
    text->setItemHorizontalMirror(horizontal);
    text->setItemVerticalMirror(vertical);
    addItem(document, std::move(text), box, {});
    LabelChecker checker(document, dpi, {});
    QCOMPARE(
        rulesOf(checker.checkAll()), isOnLabel ? QStringList() : QStringList { u"/items/0 off-label"_s });
}

void tst_LabelChecker::whatHasNoSizeLiesNowhere()
{
    LabelDocument document = page();
    addRectangle(document, { 50, 50, 0, 20 }, { .fill = black });
    LabelChecker checker(document, dpi, {});
    QCOMPARE(rulesOf(checker.checkAll()), QStringList { u"/items/0 hairline"_s });
}

QTEST_MAIN(tst_LabelChecker)
#include "tst_labelchecker.moc"
