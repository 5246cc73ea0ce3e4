// SPDX-License-Identifier: BSD-3-Clause
#include "tests/support/itemrecords.h"
#include "tests/support/labeltexts.h"
#include "tests/support/texts.h"

#include <QGraphicsScene>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QTest>
#include <QTextBlock>

#include <functional>
#include <memory>

#ifndef __SANITIZE_ADDRESS__
#include <malloc.h>
#endif

using namespace Qt::StringLiterals;

namespace {

const QString marker = u"!!!###VXFUNCTIONDATASOURCE###!!!"_s;
constexpr int changes = 10'000;

/// The n-th value of a datasource: ever another text, in ever another colour and size.
using Value = std::function<QVariant(int)>;

QVariant plain(int n)
{
    return u"value %1"_s.arg(n);
}

QVariant marked(int n)
{
    return QString(marker + u"value %1"_s.arg(n));
}

QVariant html(int n)
{
    return QString(marker
        + u"<p style=\"margin-left:%1px\"><span style=\"color:#%2; font-size:%3pt\">value %1</span></p>"_s
              .arg(n)
              .arg(n, 6, 16, QLatin1Char('0'))
              .arg(8 + n % 30));
}

/// What the process has allocated, or nothing where an allocator does not tell.
qint64 bytesInUse()
{
#ifdef __SANITIZE_ADDRESS__
    return 0; // which finds leaks itself
#else
    return qint64(mallinfo2().uordblks);
#endif
}

qsizetype objectsOf(const TextItem &item)
{
    return item.findChildren<QObject *>().size() + item.document()->findChildren<QObject *>().size();
}

void setData(TextItem &item, const QVariant &data)
{
    QVERIFY(QMetaObject::invokeMethod(&item, "setItemData", Q_ARG(QVariant, data)));
}

} // namespace

/// Values of a datasource, one after the other.
class tst_TextData : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { LabelTexts::useKnownFont(); }
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    void manyChangesLeaveNothingBehind_data();
    void manyChangesLeaveNothingBehind();
    void oldAreaIsRepainted_data();
    void oldAreaIsRepainted();
    void markerIsOnlyLookedForAtTheStartOfABox_data();
    void markerIsOnlyLookedForAtTheStartOfABox();
    void equalDataAreSilent_data();
    void equalDataAreSilent();
    void bindingIsKept_data() { Texts::addRows(); }
    void bindingIsKept();
    void connectionsComeBack_data() { Texts::addRows(); }
    void connectionsComeBack();
};

void tst_TextData::manyChangesLeaveNothingBehind_data()
{
    QTest::addColumn<bool>("rich");
    QTest::addColumn<bool>("vertical");
    QTest::addColumn<Value>("value");
    QTest::newRow("label") << false << false << Value(plain);
    QTest::newRow("label, marked") << false << false << Value(marked);
    QTest::newRow("label, vertical") << false << true << Value(plain);
    QTest::newRow("box") << true << false << Value(plain);
    QTest::newRow("box, marked") << true << false << Value(marked);
    QTest::newRow("box, HTML") << true << false << Value(html);
}

void tst_TextData::manyChangesLeaveNothingBehind()
{
    QFETCH(const bool, rich);
    QFETCH(const bool, vertical);
    QFETCH(const Value, value);
    QGraphicsScene scene;
    const std::unique_ptr<TextItem> item = Texts::made(rich);
    if (vertical)
        dynamic_cast<SimpleTextItem &>(*item).setTextVertical(true);
    scene.addItem(item.get());
    const auto setData = [&](int count) {
        for (int n = 0; n < count; ++n) {
            ::setData(*item, value(n));
            if (n % 100 == 0)
                QCoreApplication::processEvents();
        }
        QCoreApplication::processEvents();
    };
    setData(changes); // which fills the caches
    const qsizetype objects = objectsOf(*item);
    qint64 grown = changes;
    // What is left behind is so each time; a cache of the system may grow once more.
    for (int round = 0; round < 3 && grown >= changes; ++round) {
        const qint64 bytes = bytesInUse();
        setData(changes);
        grown = bytesInUse() - bytes;
    }
    QCOMPARE(objectsOf(*item), objects);
    QVERIFY2(grown < changes, QByteArray::number(grown).constData()); // less than a byte for a change
    QVERIFY(!item->document()->isUndoAvailable());
    QVERIFY(!item->document()->isRedoAvailable());
    QCOMPARE(item->document()->availableUndoSteps(), 0);
    QCOMPARE(item->document()->blockCount(), vertical ? u"value %1"_s.arg(changes - 1).size() : 1);
    scene.removeItem(item.get());
}

void tst_TextData::oldAreaIsRepainted_data()
{
    QTest::addColumn<bool>("rich");
    QTest::addColumn<QString>("first");
    QTest::addColumn<QString>("second");
    for (const bool rich : { false, true }) {
        const char *name = Texts::nameOf(rich);
        QTest::addRow("%s, equal", name) << rich << u"a long text"_s << u"a long text"_s;
        QTest::addRow("%s, shorter", name) << rich << u"a long text"_s << u"i"_s;
        QTest::addRow("%s, shorter, marked", name) << rich << u"a long text"_s << QString(marker + u"i"_s);
    }
}

void tst_TextData::oldAreaIsRepainted()
{
    QFETCH(const bool, rich);
    QFETCH(const QString, first);
    QFETCH(const QString, second);
    QGraphicsScene scene;
    const std::unique_ptr<TextItem> item = Texts::made(rich);
    scene.addItem(item.get());
    item->setPos(40, 50);
    setData(*item, first);
    QRectF repainted;
    connect(&scene, &QGraphicsScene::changed, this, [&repainted](const QList<QRectF> &region) {
        for (const QRectF &rect : region)
            repainted |= rect;
    });
    QCoreApplication::processEvents();
    repainted = QRectF();
    const QRectF old = item->sceneBoundingRect();
    setData(*item, second);
    QCoreApplication::processEvents();
    QVERIFY(repainted.contains(old));
    scene.removeItem(item.get());
}

/// A label drops the marker wherever it is; a box takes text for HTML only when it starts with it.
void tst_TextData::markerIsOnlyLookedForAtTheStartOfABox_data()
{
    QTest::addColumn<QString>("data");
    QTest::addColumn<QString>("inABox");
    QTest::addColumn<QString>("inALabel");
    QTest::newRow("at the start") << QString(marker + u"<b>a</b>"_s) << u"a"_s << u"<b>a</b>"_s;
    QTest::newRow("within") << QString(u"<b>"_s + marker + u"a"_s) << QString(u"<b>"_s + marker + u"a"_s)
                            << u"<b>a"_s;
    QTest::newRow("at the end") << QString(u"a"_s + marker) << QString(u"a"_s + marker) << u"a"_s;
    QTest::newRow("alone") << marker << QString() << QString();
    QTest::newRow("after a space") << QString(u" "_s + marker) << QString(u" "_s + marker) << u" "_s;
    QTest::newRow("cut") << marker.chopped(1) << marker.chopped(1) << marker.chopped(1);
    QTest::newRow("small letters") << marker.toLower() << marker.toLower() << marker.toLower();
}

void tst_TextData::markerIsOnlyLookedForAtTheStartOfABox()
{
    QFETCH(const QString, data);
    RichTextItem box;
    box.setItemText(u"old"_s);
    box.setItemData(data);
    QTEST(box.toPlainText(), "inABox");
    SimpleTextItem label;
    label.setItemData(data);
    QTEST(label.toPlainText(), "inALabel");
}

void tst_TextData::equalDataAreSilent_data()
{
    QTest::addColumn<QString>("data");
    QTest::newRow("plain") << u"same"_s;
    QTest::newRow("marked") << QString(marker + u"same"_s);
}

void tst_TextData::equalDataAreSilent()
{
    QFETCH(const QString, data);
    SimpleTextItem label;
    RichTextItem box;
    label.setPos(3, 4);
    label.setItemRotation(20);
    label.setItemSize(QSizeF(300, 40));
    label.setItemData(data);
    box.setItemData(data);
    const QSignalSpy labelChanges(&label, &TextItem::textItemHasChanged);
    const QSignalSpy boxChanges(&box, &TextItem::textItemHasChanged);
    const QByteArray labelRecord = ItemRecords::saved(label);
    const QByteArray boxRecord = ItemRecords::saved(box);
    label.setItemData(data);
    box.setItemData(data);
    QCOMPARE(labelChanges.count(), 0);
    QCOMPARE(boxChanges.count(), 0);
    QCOMPARE(ItemRecords::saved(label), labelRecord);
    QCOMPARE(ItemRecords::saved(box), boxRecord);
}

void tst_TextData::bindingIsKept()
{
    QFETCH(const bool, rich);
    const std::unique_ptr<TextItem> item = Texts::made(rich);
    QVERIFY(!item->isDatasourceConnected());
    item->setItemDatasourceID(0);
    item->setItemDatasourceField(u"Name"_s);
    QVERIFY(item->isDatasourceConnected());
    setData(*item, u"Ada"_s);
    QGraphicsScene scene;
    scene.addItem(item.get());
    item->startEdit(0);
    item->endEdit();
    QCOMPARE(item->getItemDatasourceID(), 0);
    QCOMPARE(item->getItemDatasourceField(), u"Name"_s);
    QCOMPARE(item->getItemData(), QVariant(u"Ada"_s));
    scene.removeItem(item.get());
}

void tst_TextData::connectionsComeBack()
{
    QFETCH(const bool, rich);
    const std::unique_ptr<TextItem> item = Texts::made(rich);
    item->setItemDatasourceID(7);
    item->setItemDatasourceField(u"Name"_s);
    for (int n = 0; n < 5; ++n)
        setData(*item, plain(n));
    const QSignalSpy changed(item.get(), &TextItem::textItemHasChanged);
    const QSignalSpy data(item.get(), &TextItem::itemDataChanged);
    QTextCursor(item->document()).insertText(u"x"_s);
    // Connected once, however often the data came.
    QCOMPARE(changed.count(), 1);
    QCOMPARE(data, QList<QVariantList>({ { QVariant::fromValue(QVariant(u"xvalue 4"_s)), 7, u"Name"_s } }));
}

QTEST_MAIN(tst_TextData)
#include "tst_textdata.moc"
