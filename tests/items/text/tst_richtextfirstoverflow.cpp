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

/// The first state of a process is a change as well: it is told once, therefore a program of its own.
class tst_RichTextFirstOverflow : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { QFont::insertSubstitution(u"_Fen Loma"_s, u"Loma"_s); }
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    void firstChangeIsToldOnce();
};

void tst_RichTextFirstOverflow::firstChangeIsToldOnce()
{
    QGraphicsScene scene;
    for (int i = 0; i < 2; ++i) {
        auto *item = new RichTextItem;
        item->setItemSize(QSizeF(100, 50));
        item->setItemText(u"a\nb\nc"_s);
        scene.addItem(item);
    }
    RichTextBorderEffect::installEffectOnItems(&scene);
    QList<bool> told;
    for (QGraphicsItem *item : scene.items()) {
        auto *effect = qobject_cast<RichTextBorderEffect *>(item->graphicsEffect());
        QVERIFY(effect);
        connect(effect, &RichTextBorderEffect::borderShownChanged, this,
            [&told](bool shown) { told.append(shown); });
    }
    for (int i = 0; i < 2; ++i) {
        QImage image(100, 100, QImage::Format_ARGB32_Premultiplied);
        QPainter painter(&image);
        scene.render(&painter);
    }
    QCOMPARE(told, QList<bool>({ true, true }));
}

QTEST_MAIN(tst_RichTextFirstOverflow)
#include "tst_richtextfirstoverflow.moc"
