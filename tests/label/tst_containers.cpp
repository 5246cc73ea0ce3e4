// SPDX-License-Identifier: BSD-3-Clause
#include "items/barcode/barcodeitem.h"
#include "items/containers/groupitem.h"
#include "items/containers/layeritem.h"
#include "items/graphics/pixmapitem.h"
#include "items/shapes/ellipseitem.h"
#include "items/shapes/rectangleitem.h"
#include "label/binaryformat.h"
#include "label/documentfile.h"
#include "label/itemtree.h"
#include "tests/label/jsontexts.h"
#include "tests/label/printing.h"
#include "tests/support/allitems.h"
#include "tests/support/labeltexts.h"
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
    void initTestCase() { LabelTexts::useKnownFont(); }
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    void membersAreWrittenAndRead_data();
    void membersAreWrittenAndRead();
    void typedGroupsHoldTheirMembersInPlace();
    void membersKeepTheirZValues();
    void layersKeepTheirNumberAndPlace();
    void hiddenContainersDoNotHideTheirMembersForGood_data() { membersAreWrittenAndRead_data(); }
    void hiddenContainersDoNotHideTheirMembersForGood();
    void membersArePrintedInPlace();
    void whatIsHiddenIsNotPrinted();
    void rootsAreStackedByTheirZValues();
    void membersStayWithinTheirRoot();
    void membersPrintOnThePaperAndInTheDitherOfTheirLabel();
    void warningsNameTheMember();
    void layersAreChosen();
    void layersAreChosenByNameAndNumber();
    void groupsOfSingleItemsAreWhole();
    void layersThatNoDocumentHoldsAreNamed_data();
    void layersThatNoDocumentHoldsAreNamed();
    void membersGoOnResizingAsBefore_data();
    void membersGoOnResizingAsBefore();
    void brokenMembersAreNamed();
    void nestingIsLimited();
    void itemsAreCountedInAllLevels();
    void binaryItemsAreCountedInAllLevels();
    void membersBeyondThePageCannotBePrinted();
    void whatIsNoItemIsNotLost();
    void whatTextCannotHoldIsNamed();
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
    // What is typed of its size is not believed, and a rotation is about the centre of the members.
    const LoadResult turned = read(withItems(R"({"itemShape": 65537, "itemWidth": 500, "itemRotation": 180,
        "children": [{"itemShape": 65578, "itemWidth": 20, "itemHeight": 10}]})"));
    QVERIFY2(turned.document, qPrintable(shortTexts(turned.problems).join(u'\n')));
    QCOMPARE(turned.document->items()[0]->getItemSize(), QSizeF(20, 10));
    const QPointF corner
        = memberOf<RectangleItem>(*turned.document->items()[0], 0).mapToScene(QPointF(20, 10));
    QVERIFY(corner.manhattanLength() < 1e-9);
}

void tst_Containers::membersKeepTheirZValues()
{
    LabelDocument document = blackAndRed({ 10, 10 });
    auto group
        = groupOf({ box({ 0, 0, 10, 10 }, Qt::black).release(), box({ 5, 0, 10, 10 }, Qt::red).release() });
    memberOf<RectangleItem>(*group, 0).setItemZValue(2.0); // now the black one is above
    document.addItem(std::move(group));
    for (const DocumentFormat format : { DocumentFormat::Json, DocumentFormat::Binary }) {
        const LabelDocument loaded = again(document, format);
        const Item &loadedGroup = *loaded.items()[0];
        QCOMPARE(memberOf<RectangleItem>(loadedGroup, 0).zValue(), 0.0);
        QCOMPARE(memberOf<RectangleItem>(loadedGroup, 1).zValue(), 2.0);
        QCOMPARE(dotsIn(platesOf(loaded)[0], { 0, 0, 10, 10 }), 100);
    }
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

void tst_Containers::whatIsHiddenIsNotPrinted()
{
    const auto hide = [](Item &item) { item.setItemIsVisible(false); };
    for (const int level : { 0, 1, 2, 3 }) {
        LabelDocument document = blackAndRed({ 10, 10 });
        auto inner = groupOf({ box({ 10, 10, 20, 20 }, Qt::red).release() });
        auto outer = groupOf({ inner.release() });
        auto layer = std::make_unique<LayerItem>();
        outer.release()->setParentItem(layer.get());
        Item *item = document.addItem(std::move(layer));
        for (int i = 0; i < level; ++i)
            item = ItemTree::membersOf(*item).first();
        QVERIFY(!isEmpty(platesOf(document)[1]));
        hide(*item);
        QVERIFY(isEmpty(platesOf(document)[1]));
    }
}

void tst_Containers::rootsAreStackedByTheirZValues()
{
    LabelDocument document = blackAndRed({ 10, 10 });
    for (const double z : { 3.0, 1.0 }) {
        auto layer = std::make_unique<LayerItem>();
        layer->setLayerZValue(z);
        box({ 10, 10, 20, 20 }, z > 2.0 ? Qt::red : Qt::black).release()->setParentItem(layer.get());
        document.addItem(std::move(layer));
    }
    document.addItem(box({ 10, 10, 10, 10 }, Qt::black))->setItemZValue(2.0);
    const std::vector<QImage> plates = platesOf(document);
    QVERIFY(isEmpty(plates[0]));
    QCOMPARE(dotsIn(plates[1], { 10, 10, 20, 20 }), 400);
}

void tst_Containers::membersStayWithinTheirRoot()
{
    // However high a member of the lower layer is, what is in the upper one covers it.
    LabelDocument document = blackAndRed({ 10, 10 });
    for (const bool upper : { false, true }) {
        auto layer = std::make_unique<LayerItem>();
        auto item = box({ 10, 10, 20, 20 }, upper ? Qt::red : Qt::black);
        item->setItemZValue(upper ? 0.0 : 100.0);
        item.release()->setParentItem(layer.get());
        document.addItem(std::move(layer));
    }
    QVERIFY(isEmpty(platesOf(document)[0]));
}

void tst_Containers::membersPrintOnThePaperAndInTheDitherOfTheirLabel()
{
    // Gradients begin in the paper's colour, and pictures become dots as the label tells.
    auto gradient = box({ 10, 10, 40, 40 }, Qt::red);
    gradient->setItemBrushStyle(MobraTypes::BrushLinearGradient);
    auto picture = std::make_unique<PixMapItem>();
    QPixmap grey(40, 40);
    grey.fill(QColor(60, 60, 60));
    picture->pixmapImportActions(grey);
    picture->setPos(50, 50);
    const auto labelOf = [&](bool inLayer) {
        LabelDocument document = blackAndRed({ 10, 10 });
        document.setPaper(QColor(255, 255, 128));
        document.setDither(Dither::Threshold);
        auto layer = std::make_unique<LayerItem>();
        for (Item *item : { static_cast<Item *>(gradient.get()), static_cast<Item *>(picture.get()) }) {
            std::unique_ptr<Item> copy(item->createItemCopy());
            if (inLayer)
                ItemTree::graphicsOf(*copy.release()).setParentItem(layer.get());
            else
                document.addItem(std::move(copy));
        }
        if (inLayer)
            document.addItem(std::move(layer));
        return document;
    };
    const std::vector<QImage> plates = platesOf(labelOf(true));
    QVERIFY(plates == platesOf(labelOf(false)));
    QCOMPARE(separatedAtDesign(labelOf(true)).paper, QColor(255, 255, 128));
    QVERIFY(!isEmpty(plates[1]));
    QCOMPARE(dotsIn(plates[0], { 50, 50, 40, 40 }), 1600);
    const auto groundOf = [](const Item &item) {
        return dynamic_cast<const RectangleItem &>(*ItemTree::membersOf(item).first())
            .getSceneBackgroundColor();
    };
    QCOMPARE(groundOf(*labelOf(true).items()[0]), QColor(255, 255, 128));
}

void tst_Containers::warningsNameTheMember()
{
    LabelDocument document = blackAndRed({ 10, 10 });
    document.addItem(box({ 0, 0, 10, 10 }, Qt::red));
    auto code = std::make_unique<BarcodeItem>();
    code->setItemSize(QSizeF(5, 5));
    document.addItem(groupOf({ box({ 0, 0, 10, 10 }, Qt::black).release(),
        box({ 5, 0, 10, 10 }, Qt::green).release(), code.release() }));
    const Separation separation = separatedAtDesign(document);
    QStringList places;
    for (const Problem &warning : separation.warnings)
        places.append(warning.where);
    QCOMPARE(places, QStringList({ u"/items/1/children/1"_s, u"/items/1/children/2"_s }));
    QCOMPARE(separation.barcodes.size(), 1U);
    QCOMPARE(separation.barcodes[0].where, u"/items/1/children/2"_s);
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
    QVERIFY(!separate(document, { .dpi = dpi, .layers = { u"prin"_s, u"prin"_s } }, problems));
    QCOMPARE(problems.size(), 1);
    QCOMPARE(problems[0].text(), u"/items: there is no layer \"prin\"; did you mean \"print\"?"_s);
}

void tst_Containers::layersAreChosenByNameAndNumber()
{
    LabelDocument document = blackAndRed({ 10, 10 });
    document.addItem(box({ 0, 0, 10, 10 }, Qt::red)); // on no layer
    const std::pair<short, QString> layers[] = { { -1, u"a"_s }, { 2, u"b"_s }, { -1, QString() } };
    for (int i = 0; i < 3; ++i) {
        auto layer = std::make_unique<LayerItem>();
        layer->setItemId(layers[i].first);
        layer->setObjectName(layers[i].second);
        box({ 10.0 * (i + 1), 0, 10, 10 }, Qt::red).release()->setParentItem(layer.get());
        document.addItem(std::move(layer));
    }
    // Which tens of dots print.
    const auto printed = [&document](const QStringList &names) {
        Problems problems;
        const auto separation
            = separate(document, { .dpi = document.designDpi(), .layers = names }, problems);
        QString tens;
        for (int i = 0; separation && i < 4; ++i)
            tens += dotsIn(separation->plates[1].image, { 10 * i, 0, 10, 10 }) > 0 ? QString::number(i)
                                                                                   : QString();
        return separation ? tens : problems.value(0).what;
    };
    QCOMPARE(printed({}), u"0123"_s);
    QCOMPARE(printed({ u"a"_s }), u"1"_s);
    QCOMPARE(printed({ u"2"_s }), u"2"_s);
    QCOMPARE(printed({ u"2"_s, u"a"_s }), u"12"_s);
    // No name and no number are no choice.
    QCOMPARE(printed({ QString(u""_s) }), u"there is no layer \"\""_s);
    QCOMPARE(printed({ u"-1"_s }), u"there is no layer \"-1\""_s);

    document.items()[1]->setItemIsVisible(false);
    const Separation hidden = separated(document, { .dpi = document.designDpi(), .layers = { u"a"_s } });
    QCOMPARE(shortTexts(hidden.warnings),
        QStringList { u"/items/1: Layer item -1 is hidden: nothing of it is printed"_s });
}

void tst_Containers::groupsOfSingleItemsAreWhole()
{
    // Joining singly leaves the group without a size.
    LabelDocument document = blackAndRed({ 10, 10 });
    auto group = std::make_unique<GroupItem>();
    group->addToGroup(box({ 10, 10, 20, 30 }, Qt::red).release());
    document.addItem(std::move(group));
    QVERIFY(!isEmpty(platesOf(document)[1]));
    for (const DocumentFormat format : { DocumentFormat::Json, DocumentFormat::Binary }) {
        const LabelDocument loaded = again(document, format);
        QCOMPARE(loaded.items()[0]->getItemSize(), QSizeF(20, 30));
        QVERIFY(platesOf(loaded) == platesOf(document));
    }
}

void tst_Containers::layersThatNoDocumentHoldsAreNamed_data()
{
    using Change = void (*)(LayerItem &);
    QTest::addColumn<Change>("change");
    QTest::addColumn<QString>("problem");
    const auto row = [](const char *name, Change change, const QString &problem) {
        QTest::newRow(name) << change << problem;
    };
    row(
        "z value", [](LayerItem &layer) { layer.setLayerZValue(1e8); },
        u"/items/0/itemZValue: 1e+08 is beyond the drawable range of ±1e+07"_s);
    row(
        "place", [](LayerItem &layer) { layer.setPos(100, 0); },
        u"/items/0: Layer item -1 does not lie where its parent does"_s);
    row(
        "transform", [](LayerItem &layer) { layer.setTransform(QTransform().rotate(1)); },
        u"/items/0: Layer item -1 does not lie where its parent does"_s);
    row(
        "control character", [](LayerItem &layer) { layer.setObjectName(u"a\nb"_s); },
        u"/items/0/name: \"a\nb\" is no name of a layer"_s);
    row(
        "long name", [](LayerItem &layer) { layer.setObjectName(QString(257, u'a')); },
        u"/items/0/name: \"%1…\" is no name of a layer"_s.arg(QString(39, u'a')));
}

void tst_Containers::layersThatNoDocumentHoldsAreNamed()
{
    using Change = void (*)(LayerItem &);
    QFETCH(Change, change);
    QFETCH(QString, problem);
    LabelDocument document = blackAndRed({ 10, 10 });
    auto layer = std::make_unique<LayerItem>();
    change(*layer);
    document.addItem(std::move(layer));
    Problems problems;
    QVERIFY(DocumentFile::toData(document, DocumentFormat::Binary, problems).isEmpty());
    QCOMPARE(shortTexts(problems), QStringList { problem });
}

void tst_Containers::membersGoOnResizingAsBefore_data()
{
    AllItems::addRows();
}

void tst_Containers::membersGoOnResizingAsBefore()
{
    QFETCH(MobraTypes::ShapeType, shape);
    for (const bool wasResized : { false, true }) {
        for (const DocumentFormat format : { DocumentFormat::Json, DocumentFormat::Binary }) {
            LabelDocument document = blackAndRed({ 10, 10 });
            std::unique_ptr<Item> member = AllItems::madeOrChanged(shape, true);
            member->setItemAsReadOnly(false);
            auto &item = dynamic_cast<Item &>(
                *document.addItem(groupOf({ &AllItems::graphics(*member.release()) })));
            const auto resize = [](Item &group, double factor) {
                Item &inner = *ItemTree::membersOf(group).first();
                inner.setItemSize(inner.getItemSize() * factor);
                return AllItems::graphics(inner).mapToScene(AllItems::graphics(inner).boundingRect());
            };
            if (wasResized)
                (void)resize(item, 1.5);
            const LabelDocument loaded = again(document, format);
            const QPolygonF expected = resize(item, 1.3);
            const QPolygonF found = resize(*loaded.items()[0], 1.3);
            for (int corner = 0; corner < 4; ++corner)
                QVERIFY((expected[corner] - found[corner]).manhattanLength() < 1e-6);
        }
    }
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

void tst_Containers::binaryItemsAreCountedInAllLevels()
{
    LabelDocument document = blackAndRed({ 10, 10 });
    for (int i = 0; i < 6667; ++i) {
        auto layer = std::make_unique<LayerItem>();
        for (int member = 0; member < 2; ++member)
            (new LayerItem)->setParentItem(layer.get());
        document.addItem(std::move(layer));
    }
    const LoadResult result
        = BinaryFormat::read(BinaryFormat::write(document), u"a.vxb"_s, BrokenItems::LeaveOut);
    QVERIFY(!result.document);
    QCOMPARE(result.problems.size(), 1);
    QCOMPARE(result.problems[0].what, u"20001 items"_s);
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

void tst_Containers::whatTextCannotHoldIsNamed()
{
    LabelDocument document = blackAndRed({ 10, 10 });
    document.addItem(groupOf({ box({ 0, 0, 10, 10 }, Qt::black).release(),
        box({ 5, 0, 10, 10 }, QColor::fromHsv(10, 20, 30)).release() }));
    Problems problems;
    QVERIFY(DocumentFile::toData(document, DocumentFormat::Json, problems).isEmpty());
    QCOMPARE(shortTexts(problems),
        QStringList { u"/items/0/children/1: the JSON form cannot hold all of rectangle -1"_s });
}

void tst_Containers::otherItemsHoldNone()
{
    QCOMPARE(problemsOf(withItems(R"({"itemShape": 65578, "children": []})")),
        QStringList { u"/items/0/children: this item holds no others"_s });
}

QTEST_MAIN(tst_Containers)
#include "tst_containers.moc"
