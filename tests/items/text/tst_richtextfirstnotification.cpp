// SPDX-License-Identifier: BSD-3-Clause
#include "items/text/richtextbordereffect.h"
#include "items/text/richtextitem.h"

#include <QFont>
#include <QGraphicsScene>
#include <QImage>
#include <QPainter>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;

/// The first listener of the process hears the state in any case: once, therefore a program of its own.
class tst_RichTextFirstNotification : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { QFont::insertSubstitution(u"_Fen Loma"_s, u"Loma"_s); }
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    void firstDrawingTellsTheStateAndLaterOnesDoNot();
};

void tst_RichTextFirstNotification::firstDrawingTellsTheStateAndLaterOnesDoNot()
{
    QGraphicsScene scene;
    auto *item = new RichTextItem;
    item->setItemSize(QSizeF(300, 300));
    item->setItemText(u"x"_s);
    scene.addItem(item);
    QCOMPARE(RichTextItem::getTextFitsTolerance(), 0.0);
    RichTextBorderEffect::installEffectOnItems(&scene);
    QCOMPARE(RichTextItem::getTextFitsTolerance(), 4.5);
    QVERIFY(item->getTextFitsInBox());
    auto *effect = qobject_cast<RichTextBorderEffect *>(item->graphicsEffect());
    QVERIFY(effect);
    QSignalSpy shown(effect, &RichTextBorderEffect::borderShownChanged);
    const auto draw = [&scene] {
        QImage image(100, 100, QImage::Format_ARGB32_Premultiplied);
        QPainter painter(&image);
        scene.render(&painter);
    };
    draw();
    QCOMPARE(shown.size(), 1);
    QCOMPARE(shown.first().first().toBool(), false);
    draw();
    QCOMPARE(shown.size(), 1);

    RichTextBorderEffect another(nullptr);
    QSignalSpy ofAnother(&another, &RichTextBorderEffect::borderShownChanged);
    another.setBorderShown(false);
    QCOMPARE(ofAnother.size(), 0);
}

QTEST_MAIN(tst_RichTextFirstNotification)
#include "tst_richtextfirstnotification.moc"
