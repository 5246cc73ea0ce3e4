// SPDX-License-Identifier: BSD-3-Clause
#include "items/interfaces/fillcoloritem.h"
#include "items/text/richtextbordereffect.h"
#include "items/text/textitem.h"
#include "tests/items/looks.h"
#include "tests/support/allitems.h"
#include "tests/support/images.h"
#include "tests/support/itemrecords.h"
#include "tests/support/standins.h"

#include <QApplication>
#include <QGraphicsScene>
#include <QPainter>
#include <QRegularExpression>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

const QSize cellSize(96, 80);
constexpr int columns = 8;
constexpr int scales[] = { 1, 2 };

/// The folder of the references in the source tree.
QString goldenFolder()
{
    return QStringLiteral(VX_TEST_DATA_DIR "/golden/");
}

/// The sheet that holds all looks of a class, row by row.
QString sheetName(const Subject &subject, int scale)
{
    const QString name = QString::fromLatin1(subject.name);
    return scale == 1 ? name + u".png"_s : name + u"@%1x.png"_s.arg(scale);
}

QSize sheetSize(const Subject &subject, int scale)
{
    const int rows = (int(subject.looks.size()) + columns - 1) / columns;
    return QSize(columns * cellSize.width(), rows * cellSize.height()) * scale;
}

/// Null if it is missing.
QImage sheetOf(const Subject &subject, int scale)
{
    static QHash<QString, QImage> sheets;
    QImage &sheet = sheets[sheetName(subject, scale)];
    if (sheet.isNull())
        sheet.load(goldenFolder() + sheetName(subject, scale));
    return sheet;
}

QRect cellOf(qsizetype look, int scale)
{
    const QPoint cell(int(look) % columns * cellSize.width(), int(look) / columns * cellSize.height());
    return QRect(cell * scale, cellSize * scale);
}

void prepare(QGraphicsItem &item, Look::Place place)
{
    item.setSelected(place == Look::Selected || place == Look::SelectedInGroup);
    auto *text = dynamic_cast<TextItem *>(&item);
    if (place == Look::Edited)
        text->startSelectedEdit(1, 3);
    else if (place == Look::Marked)
        text->showEmptyTextMarker(true);
    else if (place == Look::Bordered)
        RichTextBorderEffect::installEffectOnItems(item.scene());
}

/// The scene's picture of the item, in the middle of a cell.
QImage rendered(Item &item, Look::Place place, int scale)
{
    QGraphicsScene scene(QRectF(QPointF(), cellSize));
    QGraphicsItem &graphics = AllItems::graphics(item);
    ParentStandIn group(MobraTypes::GroupShape);
    scene.addItem(&group);
    if (place == Look::SelectedInGroup)
        graphics.setParentItem(&group);
    else
        scene.addItem(&graphics);
    prepare(graphics, place);
    QImage image(cellSize * scale, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::white);
    QPainter painter(&image);
    scene.render(&painter);
    graphics.setParentItem(nullptr);
    scene.removeItem(&graphics);
    scene.removeItem(&group);
    return image;
}

std::unique_ptr<Item> makeItem(const Subject &subject, const Look &look)
{
    std::unique_ptr<Item> item = AllItems::made(subject.shape);
    item->setItemSize(QSizeF(64.0, 48.0));
    AllItems::graphics(*item).setPos(16.0, 40.0 - item->getItemHeight() / 2.0);
    look.change(*item);
    return item;
}

std::unique_ptr<Item> loadedFromRecord(Item &item)
{
    std::unique_ptr<Item> loaded = AllItems::made(item.getItemShape());
    ItemRecords::load(*loaded, ItemRecords::saved(item));
    return loaded;
}

/// Property maps hold no translucent colours: a host adds them, and so does this.
std::unique_ptr<Item> loadedFromMap(Item &item)
{
    QVariantMap map = item.saveItemToJSON();
    if (const auto *filled = dynamic_cast<FillColorItem *>(&item)) {
        const QColor fill = filled->getItemFillColor();
        map[u"itemFillColor"_s] = fill.isValid() ? fill.name(QColor::HexArgb) : u"transparent"_s;
    }
    std::unique_ptr<Item> loaded = AllItems::made(item.getItemShape());
    loaded->loadItemFromJSON(map, ItemRecords::currentVersion);
    return loaded;
}

void writeSheet(const Subject &subject, int scale)
{
    QImage sheet(sheetSize(subject, scale), QImage::Format_RGB32);
    sheet.fill(Qt::white);
    QPainter painter(&sheet);
    for (qsizetype i = 0; i < subject.looks.size(); ++i) {
        const Look &look = subject.looks[i];
        painter.drawImage(cellOf(i, scale), rendered(*makeItem(subject, look), look.place, scale));
    }
    painter.end();
    QVERIFY(sheet.save(goldenFolder() + sheetName(subject, scale)));
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
    void everyClassHasLooks();
    void everySheetIsFull();
};

void tst_GoldenImages::initTestCase()
{
    QFont::insertSubstitution(u"_Fen Loma"_s, u"Loma"_s);
    QPalette palette;
    palette.setColor(QPalette::WindowText, Qt::black); // the selection frame
    QApplication::setPalette(palette);
    if (qEnvironmentVariableIntValue("VX_UPDATE_REFERENCES") != 1)
        return;
    for (const Subject &subject : subjectsWithLooks()) {
        for (const int scale : scales)
            writeSheet(subject, scale);
    }
}

void tst_GoldenImages::itemPaintsItsReference_data()
{
    QTest::addColumn<Subject>("subject");
    QTest::addColumn<qsizetype>("look");
    QTest::addColumn<int>("scale");
    for (const Subject &subject : subjectsWithLooks()) {
        for (qsizetype i = 0; i < subject.looks.size(); ++i) {
            for (const int scale : scales)
                QTest::addRow(
                    "%s %s @%dx", subject.name.constData(), subject.looks[i].name.constData(), scale)
                    << subject << i << scale;
        }
    }
}

void tst_GoldenImages::itemPaintsItsReference()
{
    QFETCH(const Subject, subject);
    QFETCH(const qsizetype, look);
    QFETCH(const int, scale);
    const auto &[lookName, change, place, tolerance] = subject.looks[look];
    const QImage sheet = sheetOf(subject, scale);
    QVERIFY2(!sheet.isNull(), "the sheet is missing; VX_UPDATE_REFERENCES=1 makes it");
    const QImage reference = sheet.copy(cellOf(look, scale));

    const std::unique_ptr<Item> made = makeItem(subject, subject.looks[look]);
    const std::unique_ptr<Item> copied(made->createItemCopy());
    const std::unique_ptr<Item> fromRecord = loadedFromRecord(*made);
    const std::unique_ptr<Item> fromMap = loadedFromMap(*made);
    const std::pair<QString, Item *> items[] = { { u"made"_s, made.get() }, { u"copied"_s, copied.get() },
        { u"loaded from its record"_s, fromRecord.get() }, { u"loaded from its map"_s, fromMap.get() } };
    for (const auto &[origin, item] : items) {
        const QString name = QString::fromLatin1(subject.name + '-' + lookName) + u'-' + origin;
        const QString difference
            = Images::difference(rendered(*item, place, scale), reference, name, tolerance);
        QVERIFY2(difference.isEmpty(), qPrintable(origin + u": "_s + difference));
    }
}

void tst_GoldenImages::everyClassHasLooks()
{
    QList<MobraTypes::ShapeType> shapes;
    for (const Subject &subject : subjectsWithLooks())
        shapes << subject.shape;
    std::ranges::sort(shapes);
    QCOMPARE(shapes, AllItems::shapes());
}

void tst_GoldenImages::everySheetIsFull()
{
    QStringList files;
    for (const Subject &subject : subjectsWithLooks()) {
        for (const int scale : scales) {
            files << sheetName(subject, scale);
            QCOMPARE(sheetOf(subject, scale).size(), sheetSize(subject, scale));
        }
    }
    files.sort();
    QStringList kept = QDir(goldenFolder()).entryList({ u"*.png"_s }, QDir::Files);
    kept.sort();
    QCOMPARE(kept, files);
}

QTEST_MAIN(tst_GoldenImages)
#include "tst_goldenimages.moc"
