// SPDX-License-Identifier: BSD-3-Clause
#include "items/containers/groupitem.h"
#include "items/containers/layeritem.h"
#include "items/shapes/ellipseitem.h"
#include "items/shapes/rectangleitem.h"
#include "label/binaryformat.h"
#include "label/documentfile.h"
#include "label/itemtree.h"
#include "tests/label/jsontexts.h"
#include "tests/label/printing.h"
#include "tests/support/nearness.h"

#include <QGraphicsScene>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace JsonTexts;
using namespace Printing;

namespace {

template <typename T> T &memberOf(const Item &container, int index)
{
    return dynamic_cast<T &>(*ItemTree::membersOf(container).at(index));
}

std::unique_ptr<RectangleItem> box(QRectF place, const QColor &fill)
{
    auto item = std::make_unique<RectangleItem>();
    item->setItemSize(place.size());
    item->setPos(place.topLeft());
    item->setItemPenStyle(Qt::NoPen);
    item->setItemFillColor(fill);
    item->setItemBrushStyle(MobraTypes::BrushSolid);
    return item;
}

std::unique_ptr<GroupItem> groupOf(const QList<QGraphicsItem *> &members)
{
    auto group = std::make_unique<GroupItem>();
    double z = 0.0;
    for (QGraphicsItem *member : members)
        member->setZValue(z++);
    group->addToGroup(members);
    group->setSelected(false);
    return group;
}

/// Two layers: a group of a group and an ellipse, turned; and a red box.
LabelDocument twoLayers()
{
    LabelDocument document = blackAndRed({ 10, 10 });
    auto inner = groupOf(
        { box({ 10, 10, 20, 20 }, Qt::red).release(), box({ 20, 20, 20, 20 }, Qt::black).release() });
    auto ellipse = std::make_unique<EllipseItem>();
    ellipse->setItemSize({ 30, 20 });
    ellipse->setPos(50, 20);
    ellipse->setItemFillColor(Qt::red);
    ellipse->setItemBrushStyle(MobraTypes::BrushSolid);
    auto outer = groupOf({ inner.release(), ellipse.release() });
    outer->setItemRotation(30);
    auto lower = std::make_unique<LayerItem>();
    lower->setItemId(7);
    lower->setObjectName(u"print"_s);
    outer.release()->setParentItem(lower.get());
    auto upper = std::make_unique<LayerItem>();
    upper->setItemId(8);
    upper->setLayerZValue(3);
    box({ 60, 60, 10, 10 }, Qt::red).release()->setParentItem(upper.get());
    document.addItem(std::move(lower));
    document.addItem(std::move(upper));
    return document;
}

LabelDocument again(const LabelDocument &document, DocumentFormat format)
{
    Problems problems;
    LoadResult result = DocumentFile::loadFromData(DocumentFile::toData(document, format, problems), {});
    for (const Problem &problem : problems + result.problems)
        qWarning("%s", qPrintable(problem.text())); // fails the test
    return result.document ? std::move(*result.document) : LabelDocument();
}

QByteArray textOf(const LabelDocument &document)
{
    Problems problems;
    return DocumentFile::toData(document, DocumentFormat::Json, problems);
}

std::vector<QImage> platesOf(const LabelDocument &document)
{
    std::vector<QImage> images;
    const Separation separation = separatedAtDesign(document);
    for (const Plate &plate : separation.plates)
        images.push_back(plate.image);
    return images;
}

} // namespace

/// Groups and layers in documents, and on plates.
class tst_Containers : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    void membersAreWrittenAndRead_data();
    void membersAreWrittenAndRead();
    void typedGroupsHoldTheirMembersInPlace();
    void layersKeepTheirNumberAndPlace();
    void hiddenContainersDoNotHideTheirMembersForGood_data() { membersAreWrittenAndRead_data(); }
    void hiddenContainersDoNotHideTheirMembersForGood();
    void membersArePrintedInPlace();
    void layersAreChosen();
    void brokenMembersAreNamed();
    void nestingIsLimited();
    void itemsAreCountedInAllLevels();
    void membersBeyondThePageCannotBePrinted();
    void whatIsNoItemIsNotLost();
    void otherItemsHoldNone();

private:
    /// A box in so many groups.
    static QByteArray nested(int groups);
};

void tst_Containers::membersAreWrittenAndRead_data()
{
    QTest::addColumn<DocumentFormat>("format");
    QTest::newRow("JSON") << DocumentFormat::Json;
    QTest::newRow("binary") << DocumentFormat::Binary;
}

void tst_Containers::membersAreWrittenAndRead()
{
    QFETCH(DocumentFormat, format);
    const LabelDocument original = twoLayers();
    const LabelDocument document = again(original, format);
    QCOMPARE(document.items().size(), 2U);
    const Item &lower = *document.items()[0];
    const auto &outer = memberOf<GroupItem>(lower, 0);
    QCOMPARE(outer.getItemRotation(), 30.0);
    QCOMPARE(outer.getChildrenCount(), 2);
    QCOMPARE(memberOf<GroupItem>(outer, 0).getChildrenCount(), 2);
    for (int i = 0; i < 2; ++i) {
        const auto corner = [i](const LabelDocument &of) {
            const auto &group = memberOf<GroupItem>(memberOf<GroupItem>(*of.items()[0], 0), 0);
            return memberOf<RectangleItem>(group, i).mapToScene(QPointF(3, 4));
        };
        QCOMPARE(corner(document), corner(original));
    }
    QCOMPARE(textOf(document), textOf(original));
    QCOMPARE(BinaryFormat::write(document), BinaryFormat::write(original));
    QVERIFY(platesOf(document) == platesOf(original));
}

void tst_Containers::typedGroupsHoldTheirMembersInPlace()
{
    const LoadResult result = read(withItems(R"({"itemShape": 65537, "itemPositionX": 100, "children": [
        {"itemShape": 65578, "itemWidth": 20, "itemHeight": 10, "itemPositionX": 5},
        {"itemShape": 65578, "itemWidth": 20, "itemHeight": 10, "itemPositionX": 30, "itemPositionY": 40}]})"));
    QVERIFY2(result.document, qPrintable(shortTexts(result.problems).join(u'\n')));
    const Item &group = *result.document->items()[0];
    QCOMPARE(memberOf<RectangleItem>(group, 0).scenePos(), QPointF(105, 0));
    QCOMPARE(memberOf<RectangleItem>(group, 1).scenePos(), QPointF(130, 40));
    QCOMPARE(group.getItemSize(), QSizeF(45, 50));
}

void tst_Containers::layersKeepTheirNumberAndPlace()
{
    for (const DocumentFormat format : { DocumentFormat::Json, DocumentFormat::Binary }) {
        const LabelDocument document = again(twoLayers(), format);
        const auto &lower = dynamic_cast<const LayerItem &>(*document.items()[0]);
        const auto &upper = dynamic_cast<const LayerItem &>(*document.items()[1]);
        QCOMPARE(lower.itemId(), 7);
        QCOMPARE(lower.objectName(), u"print"_s);
        QCOMPARE(upper.zValue(), 3.0);
        QCOMPARE(upper.objectName(), QString());
    }
}

void tst_Containers::hiddenContainersDoNotHideTheirMembersForGood()
{
    QFETCH(DocumentFormat, format);
    LabelDocument hidden = twoLayers();
    hidden.items()[0]->setItemIsVisible(false);
    memberOf<EllipseItem>(memberOf<GroupItem>(*hidden.items()[0], 0), 1).setVisible(false);
    const LabelDocument document = again(hidden, format);
    QVERIFY(!document.items()[0]->getItemIsVisible());
    document.items()[0]->setItemIsVisible(true);
    const auto &outer = memberOf<GroupItem>(*document.items()[0], 0);
    QVERIFY(memberOf<GroupItem>(outer, 0).isVisible());
    QVERIFY(!memberOf<EllipseItem>(outer, 1).isVisible());
}

void tst_Containers::membersArePrintedInPlace()
{
    LabelDocument document = blackAndRed({ 10, 10 });
    auto group = groupOf(
        { box({ 10, 10, 20, 20 }, Qt::black).release(), box({ 20, 20, 20, 20 }, Qt::red).release() });
    group->setItemRotation(90); // about (25, 25)
    document.addItem(std::move(group));
    const Separation separation = separatedAtDesign(document);
    QVERIFY(separation.warnings.isEmpty());
    // (x, y) goes to (50 - y, x): black on 20 to 40 by 10 to 30, less red on 10 to 30 by 20 to 40.
    const auto isRed = [](int x, int y) { return x >= 10 && x < 30 && y >= 20 && y < 40; };
    QCOMPARE(difference(separation.plates[1].image, isRed), QString());
    QCOMPARE(difference(separation.plates[0].image,
                 [&](int x, int y) { return x >= 20 && x < 40 && y >= 10 && y < 30 && !isRed(x, y); }),
        QString());
}

void tst_Containers::layersAreChosen()
{
    const LabelDocument document = twoLayers();
    Problems problems;
    const double dpi = document.designDpi();
    const auto upper = separate(document, { .dpi = dpi, .layers = { u"8"_s } }, problems);
    QVERIFY(upper && problems.isEmpty());
    QVERIFY(isEmpty(upper->plates[0].image));
    QCOMPARE(difference(
                 upper->plates[1].image, [](int x, int y) { return x >= 60 && x < 70 && y >= 60 && y < 70; }),
        QString());
    QVERIFY(!separate(document, { .dpi = dpi, .layers = { u"prin"_s } }, problems));
    QCOMPARE(problems.size(), 1);
    QCOMPARE(problems[0].text(), u"/items: there is no layer \"prin\"; did you mean \"print\"?"_s);
}

void tst_Containers::brokenMembersAreNamed()
{
    const QByteArray text = withItems(R"({"itemShape": 65538, "children": [
        {"itemShape": 65578, "itemWidth": -5}, {"itemShape": 65578}]})");
    QCOMPARE(problemsOf(text), QStringList { u"/items/0/children/0/itemWidth: -5 is negative"_s });
    const LoadResult rest = read(text, BrokenItems::LeaveOut);
    QVERIFY(rest.document);
    QCOMPARE(ItemTree::membersOf(*rest.document->items()[0]).size(), 1);
    QCOMPARE(problemsOf(withItems(R"({"itemShape": 65537, "children": 5})")),
        QStringList { u"/items/0/children: is a number, not a list"_s });
}

QByteArray tst_Containers::nested(int groups)
{
    QByteArray item = R"({"itemShape": 65578})";
    for (int i = 0; i < groups; ++i)
        item = R"({"itemShape": 65537, "children": [)" + item + "]}";
    return withItems(item);
}

void tst_Containers::nestingIsLimited()
{
    const LoadResult deepest = read(nested(63));
    QVERIFY2(deepest.document, qPrintable(shortTexts(deepest.problems).join(u'\n')));
    QVERIFY(platesOf(*deepest.document)[0].size().isValid());
    const QByteArray binary = BinaryFormat::write(*deepest.document);
    QCOMPARE(textOf(again(*deepest.document, DocumentFormat::Binary)), textOf(*deepest.document));

    const QString problem = u"items within items, more than 64 levels deep"_s;
    const QString innermost = u"/items/0"_s + u"/children/0"_s.repeated(63) + u"/children"_s;
    QCOMPARE(problemsOf(nested(64)), QStringList { innermost + u": "_s + problem });

    // A frame of a group around the outermost one of the binary document.
    const qsizetype head = BinaryFormat::write(LabelDocument()).size() - 4;
    const QByteArray group = BinaryFormat::write(*read(nested(1)).document).mid(head + 4, 4 + 4 + 158 + 4);
    const QByteArray around = binary.first(binary.indexOf(group.first(8))) + group;
    const LoadResult tooDeep
        = BinaryFormat::read(around + binary.sliced(binary.indexOf(group.first(8))), {}, BrokenItems::Refuse);
    QVERIFY(!tooDeep.document);
    QCOMPARE(tooDeep.problems.size(), 1);
    QCOMPARE(tooDeep.problems[0].what, problem);

    // Hosts can build one that no file could be read from.
    LabelDocument document = blackAndRed({ 10, 10 });
    auto *parent = document.addItem(std::make_unique<LayerItem>());
    for (int level = 2; level <= 65; ++level) {
        Item *item = level < 65 ? static_cast<Item *>(new LayerItem) : new RectangleItem;
        ItemTree::graphicsOf(*item).setParentItem(&ItemTree::graphicsOf(*parent));
        parent = item;
    }
    Problems problems;
    QVERIFY(DocumentFile::toData(document, DocumentFormat::Binary, problems).isEmpty());
    QCOMPARE(shortTexts(problems), QStringList { innermost + u": "_s + problem });
}

void tst_Containers::itemsAreCountedInAllLevels()
{
    const QByteArray group
        = R"({"itemShape": 65537, "children": [{"itemShape": 65578}, {"itemShape": 65578}]},)";
    QCOMPARE(
        problemsOf(withItems(group.repeated(6667).chopped(1))), QStringList { u"/items: 20001 items"_s });
}

void tst_Containers::membersBeyondThePageCannotBePrinted()
{
    // Each group is within the range, and the box in all of them is not.
    QByteArray item = R"({"itemShape": 65578})";
    for (int i = 0; i < 3; ++i)
        item = R"({"itemShape": 65537, "itemPositionX": 9000000, "children": [)" + item + "]}";
    const LoadResult result = read(withItems(item));
    QVERIFY2(result.document, qPrintable(shortTexts(result.problems).join(u'\n')));
    Problems problems;
    QVERIFY(!separate(*result.document, { .dpi = 300 }, problems));
    QCOMPARE(shortTexts(problems),
        QStringList { u"/items/0/children/0/children/0/children/0/itemPositionX: 2.7e+07 is beyond the "
                      "drawable range of ±1e+07"_s });
}

void tst_Containers::whatIsNoItemIsNotLost()
{
    LabelDocument document = blackAndRed({ 10, 10 });
    auto *layer = dynamic_cast<LayerItem *>(document.addItem(std::make_unique<LayerItem>()));
    new QGraphicsRectItem(layer);
    Problems problems;
    QVERIFY(DocumentFile::toData(document, DocumentFormat::Json, problems).isEmpty());
    QCOMPARE(shortTexts(problems),
        QStringList { u"/items/0/children: Layer item -1 holds something that is no item of a document"_s });
}

void tst_Containers::otherItemsHoldNone()
{
    QCOMPARE(problemsOf(withItems(R"({"itemShape": 65578, "children": []})")),
        QStringList { u"/items/0/children: this item holds no others"_s });
}

QTEST_MAIN(tst_Containers)
#include "tst_containers.moc"
