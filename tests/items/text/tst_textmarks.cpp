// SPDX-License-Identifier: BSD-3-Clause
#include "tests/support/colours.h"
#include "tests/support/images.h"
#include "tests/support/labeltexts.h"
#include "tests/support/recordingpaintdevice.h"
#include "tests/support/standins.h"
#include "tests/support/texts.h"

#include <QGraphicsScene>
#include <QRegularExpression>
#include <QTest>

#include <algorithm>
#include <memory>

using namespace Qt::StringLiterals;

namespace {

using Figure = RecordingPaintDevice::Figure;

const QColor orange(0xE9, 0x54, 0x20);
/// A fill whose colour no mark and no text has.
const QColor fillColour(40, 80, 160);
const QColor foreground(12, 34, 56);

/// Paints the item on the device; the palette's foreground differs from group to group.
void paint(QGraphicsItem &item, RecordingPaintDevice &device, QStyle::State state = QStyle::State_None)
{
    QPainter painter(&device);
    QStyleOptionGraphicsItem option;
    option.state = state;
    option.exposedRect = item.boundingRect();
    option.palette.setColor(QPalette::Active, QPalette::WindowText, Qt::green);
    option.palette.setColor(QPalette::Inactive, QPalette::WindowText, foreground);
    option.palette.setCurrentColorGroup(QPalette::Inactive);
    item.paint(&painter, &option, nullptr);
}

QList<Figure> recorded(QGraphicsItem &item, QStyle::State state = QStyle::State_None)
{
    RecordingPaintDevice device;
    paint(item, device, state);
    return device.figures();
}

bool isCosmeticRect(const Figure &figure, const QRectF &rect, Qt::PenStyle style)
{
    QPainterPath path;
    path.addRect(rect);
    return figure.kind == RecordingPaintDevice::Kind::Rect && figure.path == path
        && figure.pen.style() == style && figure.pen.widthF() == 0.0 && figure.pen.isCosmetic()
        && figure.pen.color() == foreground && figure.pen.capStyle() == Qt::SquareCap
        && figure.pen.joinStyle() == Qt::BevelJoin;
}

int markersIn(const QList<Figure> &figures, const TextItem &item)
{
    const QRectF bounds = item.boundingRect();
    return int(std::count_if(figures.begin(), figures.end(), [&bounds](const Figure &figure) {
        return isCosmeticRect(figure, bounds, Qt::DashDotDotLine) && figure.brush.style() == Qt::NoBrush;
    }));
}

int editOutlinesIn(const QList<Figure> &figures, const QRectF &rect)
{
    return int(std::count_if(figures.begin(), figures.end(), [&rect](const Figure &figure) {
        return isCosmeticRect(figure, rect, Qt::DotLine) && figure.brush == QColor(244, 166, 9, 25);
    }));
}

/// The item's picture, as large as its size.
QImage painted(TextItem &item)
{
    const QSize size(qFloor(item.getItemWidth()), qFloor(item.getItemHeight()));
    return Images::painted(item, size);
}

/// A colour below the wash over an edited text: (244, 166, 9) with alpha 25.
QRgb washed(const QColor &colour)
{
    const auto channel = [](int below, int wash) { return qRound((25.0 * wash + 230.0 * below) / 255.0); };
    return qRgb(channel(colour.red(), 244), channel(colour.green(), 166), channel(colour.blue(), 9));
}

/// Whether some pixels have the colour but for rounding.
bool holds(const QImage &image, QRgb colour)
{
    const QSet<QRgb> colours = Images::coloursOf(image);
    return std::any_of(colours.begin(), colours.end(),
        [colour](QRgb pixel) { return Images::largestDifference(pixel, colour) <= 1; });
}

} // namespace

/// What an editor shows on texts: empty ones, selected ones, edited ones.
class tst_TextMarks : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { LabelTexts::useKnownFont(); }
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    void blankTextIsMarked_data();
    void blankTextIsMarked();
    void selectedTextIsHighlighted_data();
    void selectedTextIsHighlighted();
    void restOfASelectedTextKeepsItsColour_data() { Texts::addRows(); }
    void restOfASelectedTextKeepsItsColour();
    void cursorAloneHighlightsNothing_data() { Texts::addRows(); }
    void cursorAloneHighlightsNothing();
    void editedTextHasAnOutline_data();
    void editedTextHasAnOutline();
    void outlineOfAnEditedBoxHoldsItsText();
    void nothingOfQtsOwnFramesIsDrawn_data() { Texts::addRows(); }
    void nothingOfQtsOwnFramesIsDrawn();
    void backgroundIsBelowAll_data() { Texts::addRows(); }
    void backgroundIsBelowAll();
    void evenFrameIsARectangle();
    void unevenFrameHasSidesOfTheirOwn();
};

void tst_TextMarks::blankTextIsMarked_data()
{
    QTest::addColumn<bool>("rich");
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("flag");
    QTest::addColumn<bool>("selected");
    QTest::addColumn<bool>("marked");
    for (const bool rich : { false, true }) {
        const char *name = Texts::nameOf(rich);
        QTest::addRow("%s, empty", name) << rich << QString() << true << false << true;
        QTest::addRow("%s, spaces", name) << rich << u"   "_s << true << false << true;
        QTest::addRow("%s, line breaks", name) << rich << u"\n\n"_s << true << false << true;
        QTest::addRow("%s, tab and em space", name) << rich << u"\t\u2003"_s << true << false << true;
        QTest::addRow("%s, a letter", name) << rich << u" \nI "_s << true << false << false;
        QTest::addRow("%s, empty, selected", name) << rich << QString() << true << true << false;
        QTest::addRow("%s, spaces, selected", name) << rich << u"  "_s << true << true << false;
        QTest::addRow("%s, empty without the flag", name) << rich << QString() << false << false << false;
        QTest::addRow("%s, spaces without the flag", name) << rich << u"  "_s << false << false << false;
    }
}

void tst_TextMarks::blankTextIsMarked()
{
    QFETCH(const bool, rich);
    QFETCH(const QString, text);
    QFETCH(const bool, flag);
    QFETCH(const bool, selected);
    QFETCH(const bool, marked);
    const std::unique_ptr<TextItem> item = Texts::made(rich, text);
    item->setItemPenWidth(4);
    item->showEmptyTextMarker(flag);
    QCOMPARE(item->isShownEmptyTextMarker(), flag);
    const QStyle::State state = selected ? QStyle::State_Selected : QStyle::State_Enabled;
    QCOMPARE(markersIn(recorded(*item, state), *item), marked ? 1 : 0);
    // Also in a group, where no selection shows.
    ParentStandIn group(MobraTypes::GroupShape);
    item->setParentItem(&group);
    QCOMPARE(markersIn(recorded(*item, state), *item), marked ? 1 : 0);
    item->setParentItem(nullptr);
}

void tst_TextMarks::selectedTextIsHighlighted_data()
{
    QTest::addColumn<bool>("rich");
    QTest::addColumn<QColor>("text");
    QTest::addColumn<QColor>("shown");
    for (const bool rich : { false, true }) {
        const char *name = Texts::nameOf(rich);
        QTest::addRow("%s, black", name) << rich << Colours::black << Colours::white;
        QTest::addRow("%s, red", name) << rich << Colours::red << Colours::white;
        QTest::addRow("%s, near white", name) << rich << Colours::nearWhite << Colours::white;
        QTest::addRow("%s, white", name) << rich << Colours::white << Colours::black;
    }
}

void tst_TextMarks::selectedTextIsHighlighted()
{
    QFETCH(const bool, rich);
    QFETCH(const QColor, text);
    QFETCH(const QColor, shown);
    QGraphicsScene scene;
    const std::unique_ptr<TextItem> item = Texts::made(rich);
    scene.addItem(item.get());
    item->setItemFillColor(fillColour);
    item->setItemTextColor(text);
    QVERIFY(holds(painted(*item), text.rgb()));
    item->selectOnStart();
    const QImage selected = painted(*item);
    QVERIFY(holds(selected, washed(orange)));
    QVERIFY(holds(selected, washed(shown)));
    QVERIFY(!holds(selected, washed(shown == Colours::white ? Colours::black : Colours::white)));
    QVERIFY(text == Colours::nearWhite || !holds(selected, washed(text)));
    item->endEdit();
    QVERIFY(!holds(painted(*item), orange.rgb()));
    QVERIFY(holds(painted(*item), text.rgb()));
    scene.removeItem(item.get());
}

void tst_TextMarks::restOfASelectedTextKeepsItsColour()
{
    QFETCH(const bool, rich);
    QGraphicsScene scene;
    const std::unique_ptr<TextItem> item = Texts::made(rich);
    scene.addItem(item.get());
    item->setItemFillColor(fillColour);
    item->setItemText(u"MMMM"_s);
    item->setItemTextColor(Colours::yellow);
    item->startSelectedEdit(0, 1);
    const QImage image = painted(*item);
    QVERIFY(holds(image, washed(orange)));
    QVERIFY(holds(image, washed(Colours::white)));
    QVERIFY(holds(image, washed(Colours::yellow)));
    QVERIFY(!holds(image, washed(Colours::black)));
    scene.removeItem(item.get());
}

void tst_TextMarks::cursorAloneHighlightsNothing()
{
    QFETCH(const bool, rich);
    QGraphicsScene scene;
    const std::unique_ptr<TextItem> item = Texts::made(rich);
    scene.addItem(item.get());
    item->setItemFillColor(fillColour);
    item->setItemTextColor(Colours::yellow);
    item->startEdit(2);
    QVERIFY(!holds(painted(*item), washed(orange)));
    QVERIFY(holds(painted(*item), washed(Colours::yellow)));
    scene.removeItem(item.get());
}

void tst_TextMarks::editedTextHasAnOutline_data()
{
    QTest::addColumn<bool>("rich");
    QTest::addColumn<QString>("parent");
    for (const bool rich : { false, true }) {
        for (const char *parent : { "none", "layer", "group" })
            QTest::addRow("%s in %s", Texts::nameOf(rich), parent) << rich << QString::fromLatin1(parent);
    }
}

void tst_TextMarks::editedTextHasAnOutline()
{
    QFETCH(const bool, rich);
    QFETCH(const QString, parent);
    QGraphicsScene scene;
    ParentStandIn layer(MobraTypes::LayerShape);
    ParentStandIn group(MobraTypes::GroupShape);
    const std::unique_ptr<TextItem> item = Texts::made(rich);
    const QRectF text(QPointF(), item->getItemSize());
    if (parent == u"none"_s)
        scene.addItem(item.get());
    else
        item->setParentItem(parent == u"layer"_s ? &layer : &group);
    for (const QStyle::State state : { QStyle::State_None, QStyle::State_Selected }) {
        QCOMPARE(editOutlinesIn(recorded(*item, state), text), 0);
        item->startEdit(0);
        const QList<Figure> figures = recorded(*item, state);
        QCOMPARE(editOutlinesIn(figures, text), 1);
        QCOMPARE(editOutlinesIn({ figures.last() }, text), 1);
        // It takes the place of the selection's outline.
        QCOMPARE(std::count_if(figures.begin(), figures.end(),
                     [](const Figure &figure) { return figure.pen.style() == Qt::DotLine; }),
            1);
        item->endEdit();
    }
    item->setParentItem(nullptr);
    if (item->scene())
        scene.removeItem(item.get());
}

void tst_TextMarks::outlineOfAnEditedBoxHoldsItsText()
{
    RichTextItem box;
    box.setItemText(u"a\nb\nc"_s);
    box.setItemSize(QSizeF(200, 20));
    box.startEdit(0);
    const double height = box.document()->size().height();
    QVERIFY(height > 20.0);
    QCOMPARE(editOutlinesIn(recorded(box), QRectF(0, 0, 200, height)), 1);
}

void tst_TextMarks::nothingOfQtsOwnFramesIsDrawn()
{
    QFETCH(const bool, rich);
    const std::unique_ptr<TextItem> item = Texts::made(rich);
    const QStyle::State focus = QStyle::State_HasFocus | QStyle::State_Enabled;
    QCOMPARE(recorded(*item, focus).size(), recorded(*item).size());
    ParentStandIn group(MobraTypes::GroupShape);
    item->setParentItem(&group);
    const QStyle::State selected = focus | QStyle::State_Selected;
    QCOMPARE(recorded(*item, selected).size(), recorded(*item).size());
    item->setParentItem(nullptr);
}

void tst_TextMarks::backgroundIsBelowAll()
{
    QFETCH(const bool, rich);
    const std::unique_ptr<TextItem> item = Texts::made(rich);
    item->setItemFillColor(fillColour);
    item->setItemPenWidth(6);
    const Figure first = recorded(*item, QStyle::State_Selected).first();
    QPainterPath path;
    path.addRect(QRectF(QPointF(), item->getItemSize()));
    QCOMPARE(first.path, path);
    QCOMPARE(first.pen.style(), Qt::NoPen);
    QCOMPARE(first.brush, QBrush(fillColour));
}

void tst_TextMarks::evenFrameIsARectangle()
{
    SimpleTextItem label;
    const QSizeF natural = label.getItemSize();
    label.setItemPenWidth(4);
    label.setItemPenColor(Colours::red);
    for (const double scale : { 1.0, 2.0 }) {
        if (scale != 1.0)
            QVERIFY(label.setItemSize((natural + QSizeF(4, 4)) * scale - QSizeF(4, 4)));
        QCOMPARE(label.getItemScaleX(), scale);
        const double width = 4.0 / scale;
        const Figure last = recorded(label).last();
        QPainterPath path;
        path.addRect(QRectF(-width / 2, -width / 2, natural.width() + width, natural.height() + width));
        QCOMPARE(last.path, path);
        QCOMPARE(last.pen.widthF(), width);
        QCOMPARE(last.pen.color(), Colours::red);
        QCOMPARE(last.pen.capStyle(), Qt::FlatCap);
        QCOMPARE(last.pen.joinStyle(), Qt::MiterJoin);
        QCOMPARE(last.brush.style(), Qt::NoBrush);
    }
}

void tst_TextMarks::unevenFrameHasSidesOfTheirOwn()
{
    SimpleTextItem label;
    label.setItemText(QString());
    const QSizeF natural = label.getItemSize();
    label.setItemPenWidth(4);
    label.setItemPenColor(Colours::red);
    QVERIFY(label.setItemSize(QSizeF(natural.width() * 2 + 4, natural.height() * 4 + 12)));
    // The scales are 2 and 4, so the pads are 2 and 1.
    QCOMPARE(label.getFramePads(), QSizeF(2, 1));
    const double right = natural.width();
    const double bottom = natural.height();
    const QList<std::pair<QLineF, double>> expected { { { -1, -1, -1, bottom + 1 }, 2 },
        { { right + 1, -1, right + 1, bottom + 1 }, 2 }, { { -2, -0.5, right + 2, -0.5 }, 1 },
        { { -2, bottom + 0.5, right + 2, bottom + 0.5 }, 1 } };
    RecordingPaintDevice device;
    paint(label, device);
    for (const auto &[line, width] : expected) {
        const auto found = std::count_if(device.outlines().begin(), device.outlines().end(),
            [&, line = line, width = width](const auto &side) {
                const QPolygonF points { line.p1(), line.p2() };
                const QPolygonF backwards { line.p2(), line.p1() };
                return (side.points == points || side.points == backwards) && side.pen.widthF() == width
                    && side.pen.color() == Colours::red && side.pen.capStyle() == Qt::FlatCap
                    && side.pen.joinStyle() == Qt::MiterJoin;
            });
        QCOMPARE(found, 1);
    }
    QCOMPARE(device.outlines().size(), expected.size());
}

QTEST_MAIN(tst_TextMarks)
#include "tst_textmarks.moc"
