// SPDX-License-Identifier: BSD-3-Clause
#include "label/documentfile.h"
#include "label/itemtree.h"
#include "label/separation.h"
#include "tests/support/labeltexts.h"
#include "tests/support/randomtrees.h"

#include <QFile>
#include <QGraphicsScene>
#include <QPainter>
#include <QRegularExpression>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace RandomTrees;

namespace {

/// Layers, groups and items of all kinds; the inks are the colours that AllItems::change() gives them.
LabelDocument randomDocument()
{
    LabelDocument document;
    document.setPageSize(QSizeF(100, 100));
    document.setDesignDpi(100);
    document.setInks({ { u"blue"_s, QColor(0x20, 0x60, 0xA0) }, { u"amber"_s, QColor(0xE0, 0x90, 0x10) } });
    for (int roots = number(1, 4); roots > 0; --roots) {
        if (oneIn(2)) {
            document.addItem(tree(2, {}));
            continue;
        }
        auto layer = std::make_unique<LayerItem>();
        layer->setItemId(short(number(-1, 9)));
        layer->setLayerZValue(number(-2, 3));
        layer->setObjectName(oneIn(2) ? u"Größe %1"_s.arg(roots) : QString());
        for (std::unique_ptr<Item> &item : trees(2, {})) {
            item->setItemZValue(number(-2, 3));
            AllItems::graphics(*item.release()).setParentItem(layer.get());
        }
        document.addItem(std::move(layer));
    }
    for (const auto &root : document.items()) {
        for (QGraphicsItem *item : itemsOf(AllItems::graphics(*root)))
            item->setVisible(!oneIn(8));
    }
    return document;
}

QByteArray written(const LabelDocument &document, DocumentFormat format)
{
    Problems problems;
    const QByteArray data = DocumentFile::toData(document, format, problems);
    for (const Problem &problem : problems)
        qWarning("%s", qPrintable(problem.text())); // fails the test
    return data;
}

LabelDocument readAgain(const QByteArray &data)
{
    LoadResult result = DocumentFile::loadFromData(data, {});
    for (const Problem &problem : result.problems)
        qWarning("%s", qPrintable(problem.text()));
    return result.document ? std::move(*result.document) : LabelDocument();
}

std::vector<QImage> platesOf(const LabelDocument &document, double dpi)
{
    Problems problems;
    std::vector<QImage> images;
    if (const auto separation = separate(document, { .dpi = dpi }, problems)) {
        for (const Plate &plate : separation->plates)
            images.push_back(plate.image);
    }
    return images;
}

/// What a screen shows.
QImage pictureOf(const LabelDocument &document, QSize size)
{
    QGraphicsScene scene;
    for (const auto &item : document.items())
        scene.addItem(&AllItems::graphics(*item->createItemCopy()));
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    image.fill(document.paper());
    QPainter painter(&image);
    scene.render(&painter, image.rect(), QRectF(QPointF(), document.pageSizeInUnits()));
    return image;
}

/// From text to text over the binary form; gives the document that comes out.
LabelDocument afterTheTrip(const QByteArray &text, QByteArray &textAfter)
{
    const LabelDocument fromText = readAgain(text);
    const LabelDocument fromBinary = readAgain(written(fromText, DocumentFormat::Binary));
    textAfter = written(fromBinary, DocumentFormat::Json);
    return readAgain(textAfter);
}

int levelsOf(const Item &item)
{
    int below = 0;
    for (const Item *member : ItemTree::membersOf(item))
        below = std::max(below, levelsOf(*member));
    return below + 1;
}

} // namespace

/// Whole documents from one form to the other and back. The cases are drawn at random from a fixed seed, so
/// every run tries the same; RC_PARAMS in the environment chooses others.
class tst_DocumentTrips : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    void labelOfAllKinds();
    void randomDocuments();
};

void tst_DocumentTrips::initTestCase()
{
    LabelTexts::useKnownFont();
    if (!qEnvironmentVariableIsSet("RC_PARAMS"))
        qputenv("RC_PARAMS", "seed=20230401 max_success=1000");
}

void tst_DocumentTrips::labelOfAllKinds()
{
    QFile file(QStringLiteral(VX_SOURCE_DIR "/examples/spare-parts-label.vxl"));
    QVERIFY(file.open(QIODevice::ReadOnly));
    const LabelDocument document = readAgain(file.readAll());

    QSet<int> kinds;
    int levels = 0;
    for (const auto &root : document.items()) {
        QCOMPARE(root->getItemShape(), MobraTypes::LayerShape);
        levels = std::max(levels, levelsOf(*root));
        for (QGraphicsItem *item : itemsOf(AllItems::graphics(*root)))
            kinds.insert(dynamic_cast<Item &>(*item).getItemShape());
    }
    QCOMPARE(document.items().size(), 3U);
    QCOMPARE(levels, 5); // a layer, three groups, an item
    QCOMPARE(kinds.size(), 19);
    for (const MobraTypes::ShapeType kind : AllItems::shapesAndContainers())
        QVERIFY2(kinds.contains(kind), AllItems::nameOf(kind));

    const QByteArray text = written(document, DocumentFormat::Json);
    QByteArray textAfter;
    const LabelDocument after = afterTheTrip(text, textAfter);
    QCOMPARE(textAfter, text);
    QVERIFY(pictureOf(after, QSize(874, 620)) == pictureOf(document, QSize(874, 620)));
    const std::vector<QImage> plates = platesOf(document, document.designDpi());
    QCOMPARE(plates.size(), 2U);
    QVERIFY(platesOf(after, document.designDpi()) == plates);
}

void tst_DocumentTrips::randomDocuments()
{
    qsizetype itemsSeen = 0;
    QVERIFY(rc::check([&itemsSeen] {
        const LabelDocument document = randomDocument();
        itemsSeen += ItemTree::count(document);
        const QByteArray text = written(document, DocumentFormat::Json);
        QByteArray textAfter;
        const LabelDocument after = afterTheTrip(text, textAfter);
        RC_ASSERT(!text.isEmpty());
        RC_ASSERT(textAfter == text);
        RC_ASSERT(pictureOf(after, QSize(100, 100)) == pictureOf(document, QSize(100, 100)));
        RC_ASSERT(platesOf(after, 25) == platesOf(document, 25));
    }));
    QVERIFY(itemsSeen > 5'000);
}

QTEST_MAIN(tst_DocumentTrips)
#include "tst_documenttrips.moc"
