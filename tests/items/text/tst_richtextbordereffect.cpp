// SPDX-License-Identifier: BSD-3-Clause
#include "items/shapes/rectangleitem.h"
#include "items/text/richtextbordereffect.h"
#include "items/text/richtextitem.h"

#include <QFont>
#include <QGraphicsBlurEffect>
#include <QGraphicsScene>
#include <QGraphicsView>
#include <QImage>
#include <QPainter>
#include <QPointer>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

constexpr QRgb borderPixel = 0xFFEED202;

QImage drawn(QGraphicsScene &scene)
{
    QImage image(200, 600, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::white);
    QPainter painter(&image);
    scene.render(&painter, image.rect(), QRectF(-20, -20, 200, 600));
    return image;
}

bool holds(const QImage &image, QRgb pixel)
{
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (image.pixel(x, y) == pixel)
                return true;
        }
    }
    return false;
}

} // namespace

/// The frame around texts that do not fit.
class tst_RichTextBorderEffect : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup() { m_scene.clear(); }

    void changesAreTold();
    void stateIsToldWhenItChanges();
    void frameIsDrawnWhileTextOverflows();
    void frameIsThatOfTheBounds();
    void colourIsThatOfTheFrame();
    void effectWithoutATextDrawsNoFrame();
    void itemIsKept();
    void anotherItemIsTaken();
    void installedTwiceMakesNoSecondEffect();
    void installingSetsTheTolerance();
    void installingAppliesTheTolerance();
    void otherEffectsAreEnabled();
    void allEffectsAreSwitched();
    void nothingHappensWithoutAScene();
    void effectGoesWithItsItem();
    void viewTellsWhenTheTextGrows();
    void viewTellsEachChangeOnce();
    void viewShowsNoFrameWhileSwitchedOff();

private:
    RichTextItem *addText(const QString &text);
    RichTextBorderEffect *installed(RichTextItem *item);

    const QString m_long = u"a\nb\nc\nd\ne\nf"_s;
    QGraphicsScene m_scene;
};

void tst_RichTextBorderEffect::initTestCase()
{
    QFont::insertSubstitution(u"_Fen Loma"_s, u"Loma"_s);
    // The first state told in a process is told in any case, and only the first.
    RichTextBorderEffect effect(nullptr);
    const QSignalSpy shown(&effect, &RichTextBorderEffect::borderShownChanged);
    effect.setBorderShown(false);
    QCOMPARE(shown, QList<QVariantList>({ { false } }));
    effect.setBorderShown(false);
    QCOMPARE(shown.size(), 1);
}

void tst_RichTextBorderEffect::init()
{
    QTest::failOnWarning(QRegularExpression(u".*"_s));
}

RichTextItem *tst_RichTextBorderEffect::addText(const QString &text)
{
    auto *item = new RichTextItem;
    item->setItemSize(QSizeF(100, 100));
    item->setItemText(text);
    m_scene.addItem(item);
    return item;
}

RichTextBorderEffect *tst_RichTextBorderEffect::installed(RichTextItem *item)
{
    RichTextBorderEffect::installEffectOnItems(&m_scene);
    return qobject_cast<RichTextBorderEffect *>(item->graphicsEffect());
}

void tst_RichTextBorderEffect::changesAreTold()
{
    RichTextBorderEffect effect(nullptr);
    QSignalSpy shown(&effect, &RichTextBorderEffect::borderShownChanged);
    effect.setBorderShown(false);
    QCOMPARE(shown.size(), 0);
    effect.setBorderShown(true);
    effect.setBorderShown(true);
    QCOMPARE(shown, QList<QVariantList>({ { true } }));
    effect.setBorderShown(false);
    QCOMPARE(shown, QList<QVariantList>({ { true }, { false } }));
}

void tst_RichTextBorderEffect::stateIsToldWhenItChanges()
{
    RichTextItem *item = addText(m_long);
    RichTextBorderEffect *effect = installed(item);
    QVERIFY(effect);
    QVERIFY(!item->getTextFitsInBox());
    QSignalSpy shown(effect, &RichTextBorderEffect::borderShownChanged);
    drawn(m_scene);
    drawn(m_scene);
    QCOMPARE(shown, QList<QVariantList>({ { true } }));
    item->setItemText(u"a"_s);
    QVERIFY(item->getTextFitsInBox());
    drawn(m_scene);
    drawn(m_scene);
    QCOMPARE(shown, QList<QVariantList>({ { true }, { false } }));
}

void tst_RichTextBorderEffect::frameIsDrawnWhileTextOverflows()
{
    RichTextItem *item = addText(m_long);
    QVERIFY(!holds(drawn(m_scene), borderPixel));
    QVERIFY(installed(item));
    QVERIFY(holds(drawn(m_scene), borderPixel));
    item->setItemText(u"a"_s);
    QVERIFY(!holds(drawn(m_scene), borderPixel));
    item->setItemText(m_long);
    RichTextBorderEffect::enableEffectOnItems(&m_scene, false);
    QVERIFY(!holds(drawn(m_scene), borderPixel));
}

void tst_RichTextBorderEffect::frameIsThatOfTheBounds()
{
    RichTextItem *item = addText(m_long);
    QVERIFY(installed(item));
    const QImage image = drawn(m_scene);
    QRect frame;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (image.pixel(x, y) == borderPixel)
                frame |= QRect(x, y, 1, 1);
        }
    }
    // The item's point (0, 0) is the pixel (20, 20).
    QCOMPARE(frame.topLeft(), QPoint(20, 20));
    QCOMPARE(frame.bottomRight(), item->boundingRect().bottomRight().toPoint() + QPoint(20, 20));
    QCOMPARE(image.pixel(70, 20), borderPixel);
    QCOMPARE(image.pixel(20, 200), borderPixel);
    QVERIFY(image.pixel(22, 22) != borderPixel);
}

void tst_RichTextBorderEffect::colourIsThatOfTheFrame()
{
    RichTextItem *item = addText(m_long);
    RichTextBorderEffect *effect = installed(item);
    effect->setColor(QColor(0, 128, 255));
    const QImage image = drawn(m_scene);
    QVERIFY(holds(image, 0xFF0080FF));
    QVERIFY(!holds(image, borderPixel));
}

void tst_RichTextBorderEffect::effectWithoutATextDrawsNoFrame()
{
    auto *rectangle = new RectangleItem;
    m_scene.addItem(rectangle);
    auto *effect = new RichTextBorderEffect(nullptr);
    rectangle->setGraphicsEffect(effect);
    effect->setBorderShown(true);
    QSignalSpy shown(effect, &RichTextBorderEffect::borderShownChanged);
    QVERIFY(!holds(drawn(m_scene), borderPixel));
    QCOMPARE(shown, QList<QVariantList>({ { false } }));
}

void tst_RichTextBorderEffect::itemIsKept()
{
    RichTextItem *item = addText(m_long);
    RichTextBorderEffect *effect = installed(item);
    QObject other;
    effect->setRichTextItem(nullptr);
    effect->setRichTextItem(static_cast<QObject *>(nullptr));
    effect->setRichTextItem(static_cast<RichTextItem *>(nullptr));
    effect->setRichTextItem(static_cast<IRichTextItem *>(nullptr));
    effect->setRichTextItem(&other);
    QVERIFY(holds(drawn(m_scene), borderPixel));
}

void tst_RichTextBorderEffect::anotherItemIsTaken()
{
    RichTextItem *item = addText(m_long);
    RichTextBorderEffect *effect = installed(item);
    RichTextItem fitting;
    effect->setRichTextItem(&fitting);
    QVERIFY(!holds(drawn(m_scene), borderPixel));
    effect->setRichTextItem(static_cast<QObject *>(item));
    QVERIFY(holds(drawn(m_scene), borderPixel));
    effect->setRichTextItem(static_cast<IRichTextItem *>(&fitting));
    QVERIFY(!holds(drawn(m_scene), borderPixel));
}

void tst_RichTextBorderEffect::installedTwiceMakesNoSecondEffect()
{
    RichTextItem *item = addText(m_long);
    RichTextBorderEffect *effect = installed(item);
    QVERIFY(effect);
    effect->setEnabled(false);
    QCOMPARE(installed(item), effect);
    QVERIFY(effect->isEnabled());
    QCOMPARE(item->findChildren<RichTextBorderEffect *>().size(), 1);
}

void tst_RichTextBorderEffect::installingSetsTheTolerance()
{
    RichTextItem::setTextFitsTolerance(77.0);
    QGraphicsScene empty;
    RichTextBorderEffect::installEffectOnItems(&empty);
    QCOMPARE(RichTextItem::getTextFitsTolerance(), 4.5);
}

void tst_RichTextBorderEffect::installingAppliesTheTolerance()
{
    RichTextItem::setTextFitsTolerance(0.0);
    RichTextItem *item = addText(m_long);
    const double points = item->getEmptyFontSize() / item->getScreenDpi();
    item->setItemSize(QSizeF(100, item->document()->size().height() - points - 4.0));
    QVERIFY(!item->getTextFitsInBox());
    QVERIFY(installed(item));
    QVERIFY(item->getTextFitsInBox());
    QVERIFY(!holds(drawn(m_scene), borderPixel));
}

void tst_RichTextBorderEffect::otherEffectsAreEnabled()
{
    RichTextItem *item = addText(m_long);
    auto *blur = new QGraphicsBlurEffect;
    item->setGraphicsEffect(blur);
    blur->setEnabled(false);
    QVERIFY(!installed(item));
    QCOMPARE(item->graphicsEffect(), blur);
    QVERIFY(blur->isEnabled());
}

void tst_RichTextBorderEffect::allEffectsAreSwitched()
{
    RichTextItem *item = addText(m_long);
    auto *rectangle = new RectangleItem;
    m_scene.addItem(rectangle);
    auto *blur = new QGraphicsBlurEffect;
    rectangle->setGraphicsEffect(blur);
    RichTextBorderEffect *effect = installed(item);
    RichTextBorderEffect::enableEffectOnItems(&m_scene, false);
    QVERIFY(!effect->isEnabled());
    QVERIFY(!blur->isEnabled());
    RichTextBorderEffect::enableEffectOnItems(&m_scene, true);
    QVERIFY(effect->isEnabled());
    QVERIFY(blur->isEnabled());
}

void tst_RichTextBorderEffect::nothingHappensWithoutAScene()
{
    RichTextItem::setTextFitsTolerance(77.0);
    RichTextBorderEffect::installEffectOnItems(nullptr);
    RichTextBorderEffect::enableEffectOnItems(nullptr, true);
    QCOMPARE(RichTextItem::getTextFitsTolerance(), 77.0);
}

void tst_RichTextBorderEffect::effectGoesWithItsItem()
{
    RichTextItem *item = addText(m_long);
    const QPointer<RichTextBorderEffect> effect = installed(item);
    QVERIFY(effect);
    delete item;
    QVERIFY(!effect);
}

void tst_RichTextBorderEffect::viewTellsWhenTheTextGrows()
{
    RichTextItem *item = addText(u"a"_s);
    RichTextBorderEffect *effect = installed(item);
    QSignalSpy shown(effect, &RichTextBorderEffect::borderShownChanged);
    QGraphicsView view(&m_scene);
    view.resize(300, 600);
    view.show();
    QVERIFY(QTest::qWaitForWindowExposed(&view));
    item->setItemText(m_long);
    QTRY_COMPARE(shown, QList<QVariantList>({ { true } }));
    QVERIFY(holds(view.grab().toImage(), borderPixel));
    item->setItemSize(QSizeF(100, 2000));
    QTRY_COMPARE(shown, QList<QVariantList>({ { true }, { false } }));
}

void tst_RichTextBorderEffect::viewTellsEachChangeOnce()
{
    RichTextItem *item = addText(m_long);
    RichTextBorderEffect *effect = installed(item);
    const QSignalSpy shown(effect, &RichTextBorderEffect::borderShownChanged);
    QGraphicsView view(&m_scene);
    view.setSceneRect(-20, -20, 250, 550);
    view.resize(300, 600);
    view.show();
    QVERIFY(QTest::qWaitForWindowExposed(&view));
    QTRY_COMPARE(shown.size(), 1);
    QList<QVariantList> expected { { true } };
    for (int i = 0; i < 5; ++i) {
        const bool overflows = i % 2 != 0;
        item->setItemText(overflows ? m_long : u"a"_s);
        expected += QVariantList { overflows };
        QTRY_COMPARE(shown, expected);
        // What changes nothing about it is not told.
        item->setPos(i, i);
        item->setItemTextColor(QColor(10 * i, 0, 0));
        QCOMPARE(installed(item), effect);
        view.viewport()->repaint();
        QCoreApplication::processEvents();
        QCOMPARE(shown, expected);
    }
    QCOMPARE(item->findChildren<RichTextBorderEffect *>(), QList<RichTextBorderEffect *> { effect });
}

void tst_RichTextBorderEffect::viewShowsNoFrameWhileSwitchedOff()
{
    RichTextItem *item = addText(m_long);
    RichTextBorderEffect *effect = installed(item);
    const QSignalSpy shown(effect, &RichTextBorderEffect::borderShownChanged);
    QGraphicsView view(&m_scene);
    view.setSceneRect(-20, -20, 250, 550);
    view.resize(300, 600);
    view.show();
    QVERIFY(QTest::qWaitForWindowExposed(&view));
    const auto showsFrame = [&view] { return holds(view.grab().toImage(), borderPixel); };
    QVERIFY(showsFrame());
    for (int i = 0; i < 2; ++i) {
        RichTextBorderEffect::enableEffectOnItems(&m_scene, false);
        QVERIFY(!effect->isEnabled());
        QVERIFY(!showsFrame());
        RichTextBorderEffect::enableEffectOnItems(&m_scene, true);
        QVERIFY(showsFrame());
    }
    // Nothing was drawn that could tell that the frame went.
    QCOMPARE(shown, QList<QVariantList>({ { true } }));
    RichTextBorderEffect::enableEffectOnItems(&m_scene, false);
    item->setItemText(u"a"_s);
    QVERIFY(!showsFrame());
    QCOMPARE(shown.size(), 1);
    QCOMPARE(installed(item), effect); // which enables it
    QVERIFY(!showsFrame());
    QTRY_COMPARE(shown, QList<QVariantList>({ { true }, { false } }));
}

QTEST_MAIN(tst_RichTextBorderEffect)
#include "tst_richtextbordereffect.moc"
