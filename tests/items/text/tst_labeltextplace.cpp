// SPDX-License-Identifier: BSD-3-Clause
#include "items/text/simpletextitem.h"
#include "tests/support/labeltexts.h"
#include "tests/support/nearness.h"

#include <QRegularExpression>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

QPointF centreOf(const SimpleTextItem &label)
{
    return label.mapToScene(label.boundingRect().center());
}

bool isWithinAMillionth(QPointF a, QPointF b)
{
    return qAbs(a.x() - b.x()) <= 1e-6 && qAbs(a.y() - b.y()) <= 1e-6;
}

} // namespace

/// Where label texts stay when they are turned, stretched, squeezed and written anew.
class tst_LabelTextPlace : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { LabelTexts::useKnownFont(); }
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    void resizingKeepsTheCornerOfARotatedLabel();
    void rotationKeepsTheCentre_data();
    void rotationKeepsTheCentre();
    void rotationIsNormalised();
    void pinnedCentreStays_data();
    void pinnedCentreStays();
    void pinnedCentreStaysWhenTheFontSizeIsSet_data();
    void pinnedCentreStaysWhenTheFontSizeIsSet();
    void unpinnedCornerStays();
    void fixedWidthSqueezesTheText();
    void fixedHeightSqueezesTheText();
    void fixedSidesSqueezeTheText();
    void freeTextIsNotStretched();
    void resetTransformReturnsToTheNaturalSize();
};

void tst_LabelTextPlace::resizingKeepsTheCornerOfARotatedLabel()
{
    for (const double degrees : { 0.0, 30.0, 90.0, 200.0 }) {
        SimpleTextItem label;
        label.setPos(40, 50);
        label.setItemRotation(degrees);
        const QPointF corner = label.mapToScene(QPointF(0, 0));
        QVERIFY(label.setItemSize(QSizeF(300, 40)));
        QVERIFY(areNear(label.mapToScene(QPointF(0, 0)), corner));
        QVERIFY(label.setItemSize(QSizeF(55, 222)));
        QVERIFY(areNear(label.mapToScene(QPointF(0, 0)), corner));
    }
}

void tst_LabelTextPlace::rotationKeepsTheCentre_data()
{
    QTest::addColumn<double>("degrees");
    QTest::addColumn<QSizeF>("size");
    for (const double degrees : { 1.0, 45.0, 90.0, 180.0, 270.0, 333.0 }) {
        for (const QSizeF size : { QSizeF(), QSizeF(300, 40), QSizeF(20, 200) })
            QTest::addRow("%g degrees, %g x %g", degrees, size.width(), size.height()) << degrees << size;
    }
}

void tst_LabelTextPlace::rotationKeepsTheCentre()
{
    QFETCH(const double, degrees);
    QFETCH(const QSizeF, size);
    SimpleTextItem label;
    label.setPos(70, 80);
    label.setItemPenWidth(2);
    if (size.isValid())
        label.setItemSize(size);
    const QPointF centre = centreOf(label);
    label.setItemRotation(degrees);
    QCOMPARE(label.getItemRotation(), degrees);
    QVERIFY(areNear(centreOf(label), centre));
    // Where the text runs to.
    const QPointF along = label.mapToScene(QPointF(1, 0)) - label.mapToScene(QPointF(0, 0));
    QVERIFY(isNear(QLineF(QPointF(), along).length(), label.getItemScaleX()));
    label.setItemRotation(0);
    QVERIFY(areNear(centreOf(label), centre));
}

void tst_LabelTextPlace::rotationIsNormalised()
{
    SimpleTextItem label;
    label.setItemRotation(450);
    QCOMPARE(label.getItemRotation(), 90.0);
    QVERIFY(areNear(label.mapToScene(QPointF(1, 0)) - label.mapToScene(QPointF(0, 0)), QPointF(0, 1)));
    label.setItemRotation(-90);
    QCOMPARE(label.getItemRotation(), 270.0);
}

void tst_LabelTextPlace::pinnedCentreStays_data()
{
    QTest::addColumn<double>("degrees");
    QTest::addColumn<QSizeF>("size");
    for (const double degrees : { 0.0, 17.0, 90.0, 135.0, 180.0, 300.5 }) {
        for (const QSizeF size : { QSizeF(), QSizeF(300, 40), QSizeF(20, 200), QSizeF(700, 900) })
            QTest::addRow("%g degrees, %g x %g", degrees, size.width(), size.height()) << degrees << size;
    }
}

void tst_LabelTextPlace::pinnedCentreStays()
{
    QFETCH(const double, degrees);
    QFETCH(const QSizeF, size);
    SimpleTextItem label;
    label.setPos(70, 80);
    label.setItemPinToCenter(true);
    const QPointF centre = centreOf(label);
    const auto stays = [&label, &centre] { return isWithinAMillionth(centreOf(label), centre); };
    label.setItemRotation(degrees);
    QVERIFY(stays());
    if (size.isValid())
        label.setItemSize(size);
    QVERIFY(stays());
    for (const QString &text : { u"I"_s, u"A much longer text"_s, u"two\nlines"_s, QString(), u"TEXT"_s }) {
        label.setItemText(text);
        QVERIFY2(stays(), qPrintable(text));
    }
    label.setItemBold(false);
    QVERIFY(stays());
    label.setTextVertical(true);
    QVERIFY(stays());
    label.setItemData(u"data"_s);
    QVERIFY(stays());
}

void tst_LabelTextPlace::pinnedCentreStaysWhenTheFontSizeIsSet_data()
{
    pinnedCentreStays_data();
}

void tst_LabelTextPlace::pinnedCentreStaysWhenTheFontSizeIsSet()
{
    QFETCH(const double, degrees);
    QFETCH(const QSizeF, size);
    for (const int limiting : { 0, 1, 2, 3 }) {
        SimpleTextItem label;
        label.setPos(70, 80);
        label.setItemPenWidth(3);
        label.setItemPinToCenter(true);
        label.setItemRotation(degrees);
        if (size.isValid())
            label.setItemSize(size);
        label.setItemSizeLimiting(static_cast<signed char>(limiting));
        const QPointF centre = centreOf(label);
        for (const int pixels : { 20, 90, 48 }) {
            label.setItemFontSize(pixels);
            QVERIFY(isWithinAMillionth(centreOf(label), centre));
            QCOMPARE(label.getItemFontSize(), pixels);
            QCOMPARE(label.getItemSize(), LabelTexts::naturalSizeOf(label));
        }
        label.setItemSize(QSizeF(200, 100));
        QVERIFY(isWithinAMillionth(centreOf(label), centre));
    }
}

void tst_LabelTextPlace::unpinnedCornerStays()
{
    SimpleTextItem label;
    label.setPos(70, 80);
    const QPointF corner = label.mapToScene(QPointF(0, 0));
    label.setItemText(u"A much longer text"_s);
    QCOMPARE(label.mapToScene(QPointF(0, 0)), corner);
    QCOMPARE(label.pos(), QPointF(70, 80));
}

void tst_LabelTextPlace::fixedWidthSqueezesTheText()
{
    SimpleTextItem label;
    const QSizeF natural = LabelTexts::naturalSizeOf(label);
    label.setItemSizeFixedWidth(true);
    label.setItemText(u"A much longer text"_s);
    const QSizeF longer = LabelTexts::naturalSizeOf(label);
    QVERIFY(longer.width() > natural.width());
    QVERIFY(isNear(label.getItemWidth(), natural.width()));
    QVERIFY(isNear(label.getItemHeight(), longer.height()));
    QVERIFY(isNear(label.getItemScaleX(), natural.width() / longer.width()));
    QCOMPARE(label.getItemScaleY(), 1.0);
    QVERIFY(label.getItemWasResized());
    QVERIFY(isNear(label.mapRectToScene(label.boundingRect()).width(), natural.width()));
    // A shorter text is stretched.
    label.setItemText(u"I"_s);
    QVERIFY(isNear(label.getItemWidth(), natural.width()));
    QVERIFY(label.getItemScaleX() > 1.0);
}

void tst_LabelTextPlace::fixedHeightSqueezesTheText()
{
    SimpleTextItem label;
    const QSizeF natural = LabelTexts::naturalSizeOf(label);
    label.setItemSizeFixedHeight(true);
    label.setItemText(u"TEXT\nTEXT"_s);
    const QSizeF higher = LabelTexts::naturalSizeOf(label);
    QVERIFY(isNear(label.getItemHeight(), natural.height()));
    QVERIFY(isNear(label.getItemWidth(), natural.width()));
    QVERIFY(isNear(label.getItemScaleY(), natural.height() / higher.height()));
    QCOMPARE(label.getItemScaleX(), 1.0);
    QVERIFY(isNear(label.mapRectToScene(label.boundingRect()).height(), natural.height()));
}

void tst_LabelTextPlace::fixedSidesSqueezeTheText()
{
    SimpleTextItem label;
    QVERIFY(label.setItemSize(QSizeF(300, 40)));
    label.setItemSizeLimiting(3);
    label.setItemText(u"two\nlonger lines"_s);
    const QSizeF natural = LabelTexts::naturalSizeOf(label);
    QVERIFY(isNear(label.getItemWidth(), 300));
    QVERIFY(isNear(label.getItemHeight(), 40));
    QVERIFY(isNear(label.getItemScaleX(), 300 / natural.width()));
    QVERIFY(isNear(label.getItemScaleY(), 40 / natural.height()));
}

void tst_LabelTextPlace::freeTextIsNotStretched()
{
    SimpleTextItem label;
    const QSizeF natural = LabelTexts::naturalSizeOf(label);
    QVERIFY(label.setItemSize(natural * 2));
    label.setItemText(u"A much longer text"_s);
    QVERIFY(isNear(label.getItemWidth(), LabelTexts::naturalSizeOf(label).width() * 2));
    QVERIFY(isNear(label.getItemHeight(), natural.height() * 2));
    QVERIFY(isNear(label.getItemScaleX(), 2));
}

void tst_LabelTextPlace::resetTransformReturnsToTheNaturalSize()
{
    SimpleTextItem label;
    label.setItemPenWidth(3);
    label.setItemRotation(30);
    label.setItemSize(QSizeF(300, 40));
    label.setItemSizeLimiting(3);
    label.resetTransform();
    QCOMPARE(label.getItemRotation(), 0.0);
    QCOMPARE(label.getItemScaleX(), 1.0);
    QCOMPARE(label.getItemScaleY(), 1.0);
    QVERIFY(!label.getItemWasResized());
    QCOMPARE(label.getItemSizeLimitingInt(), 0);
    QCOMPARE(label.getFramePads(), QSizeF(0, 0));
    QCOMPARE(label.transform(), QTransform());
    QCOMPARE(label.getOldTransformCoefficientM31(), 0.0);
    QCOMPARE(label.getOldTransformCoefficientM32(), 0.0);
    QCOMPARE(label.getItemSize(), LabelTexts::naturalSizeOf(label));
    QCOMPARE(label.getItemFontSize(), 48);
}

QTEST_MAIN(tst_LabelTextPlace)
#include "tst_labeltextplace.moc"
