// SPDX-License-Identifier: BSD-3-Clause
#include "tests/support/allitems.h"
#include "tests/support/images.h"
#include "tests/support/itemrecords.h"

#include <QApplication>
#include <QGraphicsScene>
#include <QPainter>
#include <QRegularExpression>
#include <QTest>

#include <functional>

using namespace Qt::StringLiterals;

namespace {

/// Qt rounds gradients differently on processors with other vector instructions; everything else is exact.
constexpr int gradientTolerance = 2;

const QColor orange(0xF0, 0x90, 0x20);

/// How a picture comes about: the changes to a new item of 64 x 48, and whether it is drawn as selected.
struct Look
{
    QByteArray name;
    std::function<void(FillableItem &)> change;
    bool selected = false;
    int tolerance = 0;
};

/// A class whose items are drawn in every look.
struct Subject
{
    const char *name;
    MobraTypes::ShapeType shape;
};

constexpr Subject subjects[] = { { "rectangle", MobraTypes::RectangleShape } };

void paint(FillableItem &item, int penWidth, int brushStyle, const QColor &fill = orange)
{
    item.setItemPenColor(QColor(0x20, 0x40, 0xC0));
    item.setItemPenWidth(static_cast<ushort>(penWidth));
    item.setItemFillColor(fill);
    item.setItemBrushStyleInt(brushStyle);
}

void paintRotated(FillableItem &item, int brushStyle)
{
    paint(item, 3, brushStyle);
    item.setItemRotation(30.0);
}

QList<Look> plainLooks()
{
    const QColor translucent(0xF0, 0x90, 0x20, 0x60);
    return {
        { "new", [](FillableItem &) {} },
        { "solid", [](FillableItem &item) { paint(item, 3, 1); } },
        { "translucent", [=](FillableItem &item) { paint(item, 3, 1, translucent); } },
        { "without-pen", [](FillableItem &item) { paint(item, 0, 1); } },
        { "without-brush", [](FillableItem &item) { paint(item, 6, 0); } },
        { "pen-limited", [](FillableItem &item) { paint(item, 72, 1); } },
        { "rotated", [](FillableItem &item) { paintRotated(item, 1); } },
        { "selected-new", [](FillableItem &) {}, true },
        { "selected", [](FillableItem &item) { paint(item, 3, 1); }, true },
        { "rotated-selected", [](FillableItem &item) { paintRotated(item, 11); }, true },
    };
}

QList<Look> joinLooks()
{
    const auto joined = [](Qt::PenJoinStyle join) {
        return [join](FillableItem &item) {
            paint(item, 12, 1);
            item.setItemPenJoinStyle(join);
        };
    };
    return { { "join-miter", joined(Qt::MiterJoin) }, { "join-bevel", joined(Qt::BevelJoin) },
        { "join-round", joined(Qt::RoundJoin) } };
}

QList<Look> dashLooks()
{
    const std::pair<QByteArray, Qt::PenStyle> pens[] = { { "dash", Qt::DashLine }, { "dot", Qt::DotLine },
        { "dash-dot", Qt::DashDotLine }, { "dash-dot-dot", Qt::DashDotDotLine } };
    const std::pair<QByteArray, Qt::PenCapStyle> caps[]
        = { { "flat", Qt::FlatCap }, { "round", Qt::RoundCap } };
    QList<Look> looks;
    for (const auto &pen : pens) {
        for (const auto &cap : caps)
            looks << Look { "pen-" + pen.first + '-' + cap.first,
                [style = pen.second, end = cap.second](FillableItem &item) {
                    paint(item, 4, 1);
                    item.setItemPenCapStyle(end);
                    item.setItemPenStyle(style);
                } };
    }
    return looks;
}

QList<Look> patternLooks()
{
    const QByteArrayList names { "dense1", "dense2", "dense3", "dense4", "dense5", "dense6", "dense7",
        "horizontal", "vertical", "cross", "backward-diagonal", "forward-diagonal", "diagonal-cross" };
    QList<Look> looks;
    int style = MobraTypes::BrushDense1;
    for (const QByteArray &name : names) {
        looks << Look { "brush-" + name, [style](FillableItem &item) { paint(item, 2, style); } };
        ++style;
    }
    return looks;
}

QList<Look> gradientLooks()
{
    const QByteArrayList mirrors { "", "-mirrored-horizontally", "-mirrored-vertically", "-mirrored-both" };
    QList<Look> looks;
    int style = MobraTypes::BrushLinearGradient;
    for (const QByteArray &name : { QByteArray("linear"), QByteArray("radial"), QByteArray("conical") }) {
        for (int mirrored = 0; mirrored < mirrors.size(); ++mirrored)
            looks << Look { name + mirrors[mirrored],
                [style, mirrored](FillableItem &item) {
                    paint(item, 2, style);
                    item.setItemHorizontalMirror(mirrored & 1);
                    item.setItemVerticalMirror(mirrored & 2);
                },
                false, gradientTolerance };
        ++style;
    }
    return looks;
}

QList<Look> allLooks()
{
    return plainLooks() + joinLooks() + dashLooks() + patternLooks() + gradientLooks();
}

QString nameOf(const Subject &subject, const Look &look)
{
    return QString::fromLatin1(subject.name) + u'-' + QString::fromLatin1(look.name);
}

/// The scene's picture of the item alone, in the middle of 96 x 80 pixels.
QImage rendered(Item &item, bool selected)
{
    QGraphicsScene scene(0.0, 0.0, 96.0, 80.0);
    QGraphicsItem &graphics = AllItems::graphics(item);
    scene.addItem(&graphics);
    graphics.setSelected(selected);
    QImage image(96, 80, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::white);
    QPainter painter(&image);
    scene.render(&painter);
    scene.removeItem(&graphics);
    return image;
}

/// The folder of the references in the source tree.
QString goldenFolder()
{
    return QStringLiteral(VX_TEST_DATA_DIR "/golden/");
}

} // namespace

/// What each class paints, as made, as copied and as saved and loaded. VX_UPDATE_REFERENCES=1 writes the
/// references anew: look at every picture that changes.
class tst_GoldenImages : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    void itemPaintsItsReference_data();
    void itemPaintsItsReference();
    void everyReferenceHasALook();
};

void tst_GoldenImages::initTestCase()
{
    QVERIFY(QDir(goldenFolder()).exists());
    QPalette palette;
    palette.setColor(QPalette::WindowText, Qt::black); // the selection frame
    QApplication::setPalette(palette);
}

void tst_GoldenImages::itemPaintsItsReference_data()
{
    QTest::addColumn<Subject>("subject");
    QTest::addColumn<Look>("look");
    for (const Subject &subject : subjects) {
        for (const Look &look : allLooks())
            QTest::newRow(qPrintable(nameOf(subject, look))) << subject << look;
    }
}

void tst_GoldenImages::itemPaintsItsReference()
{
    QFETCH(const Subject, subject);
    QFETCH(const Look, look);
    const QString name = nameOf(subject, look);
    const QString path = goldenFolder() + name + u".png"_s;
    const std::unique_ptr<Item> made = AllItems::made(subject.shape);
    made->setItemSize(QSizeF(64.0, 48.0));
    AllItems::graphics(*made).setPos(16.0, 16.0);
    look.change(dynamic_cast<FillableItem &>(*made));
    if (qEnvironmentVariableIntValue("VX_UPDATE_REFERENCES") == 1)
        QVERIFY(rendered(*made, look.selected).save(path));

    const QImage reference(path);
    QVERIFY2(!reference.isNull(), qPrintable(path + u" is missing; VX_UPDATE_REFERENCES=1 makes it"_s));
    const std::unique_ptr<Item> copied(made->createItemCopy());
    const std::unique_ptr<Item> loaded = AllItems::made(subject.shape);
    QCOMPARE(ItemRecords::load(*loaded, ItemRecords::saved(*made)), QDataStream::Ok);

    const std::pair<QString, Item *> items[]
        = { { u"made"_s, made.get() }, { u"copied"_s, copied.get() }, { u"loaded"_s, loaded.get() } };
    for (const auto &[origin, item] : items) {
        const QString difference = Images::difference(
            rendered(*item, look.selected), reference, name + u'-' + origin, look.tolerance);
        QVERIFY2(difference.isEmpty(), qPrintable(origin + u": "_s + difference));
    }
}

void tst_GoldenImages::everyReferenceHasALook()
{
    QStringList files;
    for (const Subject &subject : subjects) {
        for (const Look &look : allLooks())
            files << nameOf(subject, look) + u".png"_s;
    }
    files.sort();
    QStringList kept = QDir(goldenFolder()).entryList({ u"*.png"_s }, QDir::Files);
    kept.sort();
    QCOMPARE(kept, files);
}

QTEST_MAIN(tst_GoldenImages)
#include "tst_goldenimages.moc"
