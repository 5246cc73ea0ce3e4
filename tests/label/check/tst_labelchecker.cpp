// SPDX-License-Identifier: BSD-3-Clause
#include "items/barcode/barcodeitem.h"
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
void addCode(LabelDocument &document, QPointF place, const QColor &background = nothing)
{
    constexpr short qrCode = 58;
    auto item = std::make_unique<BarcodeItem>();
    item->setBarcodeSymbol(qrCode);
    item->setBarcodeText(u"A"_s);
    addItem(document, std::move(item), { place, QSizeF(84, 84) }, { .fill = background, .pen = black });
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
    void hiddenItemsAreNotChecked();
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
    QTest::addColumn<QStringList>("rules");
    const QStringList inTheWay { u"/items/2 quiet-zone"_s };
    QTest::newRow("a white panel") << white << nothing << QStringList();
    QTest::newRow("no panel") << nothing << nothing << inTheWay;
    QTest::newRow("a background without free space") << nothing << white << inTheWay;
    QTest::newRow("a red panel, which lasers do not see") << red << nothing << QStringList();
}

void tst_LabelChecker::whatLiesBelowIsCovered()
{
    QFETCH(QColor, panel);
    QFETCH(QColor, background);
    QFETCH(QStringList, rules);
    LabelDocument document = page();
    addRectangle(document, { 0, 0, 500, 300 }, { .fill = black });
    addRectangle(document, { 50, 50, 200, 200 }, { .fill = panel });
    addCode(document, { 100, 100 }, background);
    LabelChecker checker(document, dpi, {});
    QCOMPARE(rulesOf(checker.checkAll()), rules);
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

QTEST_MAIN(tst_LabelChecker)
#include "tst_labelchecker.moc"
