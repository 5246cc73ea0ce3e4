// SPDX-License-Identifier: BSD-3-Clause
#include "items/text/richtextitem.h"
#include "items/text/simpletextitem.h"
#include "tests/support/colours.h"
#include "tests/support/images.h"
#include "tests/support/labeltexts.h"

#include <QApplication>
#include <QGraphicsScene>
#include <QRegularExpression>
#include <QTest>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextFrame>

#include <array>
#include <functional>

using namespace Qt::StringLiterals;

namespace {

constexpr QSize pictureSize(320, 200);
const QFont smallFont = LabelTexts::fontOf(20);

struct Named
{
    const char *name;
    QString value;
};

const std::array texts {
    Named { "one line", u"Lot 4711"_s },
    Named { "lines", u"Best before\n\n  12/2031\nwide wide wide"_s },
    Named { "empty", u""_s },
    Named { "blank", u"   "_s },
    Named { "tabs", u"a\tbc\td\n\t|"_s },
    Named { "Thai", u"ป้ายชื่อ น้ำ ที่นี่"_s },
    Named { "Hebrew", u"שלום עולם"_s },
    Named { "Arabic", u"مرحبا بالعالم\nلا"_s },
    Named { "both directions", u"abc שלום 123 مرحبا (x)"_s },
    Named { "several fonts", u"Aא\u0E01\u4E2D\U0001F600e\u0301"_s },
    Named { "separators", u"one\u2028two\u00ADthree\u00A0four"_s },
};

const std::array rich {
    Named { "formats", u"<b>bold</b> <i>it</i> <u>under</u> <s>out</s> x<sub>2</sub>y<sup>3</sup>"_s },
    Named { "colours",
        u"<span style='color:red; background:yellow'>red</span> plain <font color=blue>b</font>"_s },
    Named { "sizes and families", u"<span style='font:30px serif'>A</span>b<tt>c</tt><p>d</p>"_s },
    Named {
        "centred", u"<p align=center>middle</p><p align=right>right</p><p align=justify>a b c d e</p>"_s },
    Named { "from the right", u"<p dir=rtl>שלום abc</p>"_s },
    Named { "margins", u"<p style='margin:12px 30px; text-indent:20px'>in</p>"_s },
    Named { "background of a paragraph", u"<p style='background:cyan'>p</p>q"_s },
    Named { "background of all", u"<body bgcolor='#00ff00'>x</body>"_s },
    Named { "rule", u"above<hr>below<hr width='50%'>"_s },
    Named { "list", u"<ul><li>one<li>two</ul><ol start=3><li>three</ol>"_s },
    Named { "table", u"<table border=1 bgcolor=yellow><tr><td>1<td bgcolor=red>2</table>"_s },
    Named { "float", u"<table align=right border=2><tr><td>f</table>beside it"_s },
    Named { "picture",
        u"a<img src='data:image/png;base64,iVBORw0KGgoAAAANSUhEUgAAAAEAAAABCAYAAAAfFcSJAAAADUlEQVR42mP8"
        "z8BQDwAEhQGAhKmMIQAAAABJRU5ErkJggg==' width=20 height=10>b"_s },
    Named { "long", u"<p>"_s + u"many words "_s.repeated(60) },
};

const std::array<std::pair<const char *, QTransform>, 6> transforms { {
    { "upright", QTransform() },
    { "between pixels", QTransform::fromTranslate(10.37, 5.62) },
    { "turned", QTransform().translate(60, 10).rotate(33) },
    { "turned by a quarter", QTransform().translate(150, 0).rotate(90) },
    { "scaled", QTransform().scale(1.7, 0.6) },
    { "large and sheared", QTransform().scale(3, 3).shear(0.1, 0.1) },
} };

/// Nothing is told to be exposed; a part; more than all.
const std::array exposures { QRectF(), QRectF(11.5, 7.25, 30, 13), QRectF(-50, -50, 2000, 2000) };

/// What the stock item shows beside one of ours: set up in the same way by the test.
void showAlike(QGraphicsTextItem &stock, const TextItem &ours)
{
    QTextOption option = stock.document()->defaultTextOption();
    option.setAlignment(ours.document()->defaultTextOption().alignment());
    stock.document()->setDefaultTextOption(option);
    stock.document()->setDocumentMargin(ours.document()->documentMargin());
    stock.setFont(ours.font());
    stock.setDefaultTextColor(ours.getItemTextColor());
    stock.setTextWidth(ours.textWidth());
    stock.setFlags(ours.flags());
}

QImage picture(QGraphicsItem &item, const QTransform &transform, const QRectF &exposed)
{
    QImage image(pictureSize, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::white);
    QPainter painter(&image);
    painter.setTransform(transform);
    QStyleOptionGraphicsItem option;
    option.exposedRect = exposed;
    item.paint(&painter, &option, nullptr);
    return image;
}

/// The scene's picture of an area that shows a part of the item.
QImage pictureInScene(QGraphicsItem &item, const QRectF &area)
{
    QGraphicsScene scene;
    scene.addItem(&item);
    QImage image(pictureSize, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::white);
    QPainter painter(&image);
    scene.render(&painter, image.rect(), area);
    scene.removeItem(&item);
    return image;
}

bool hasInk(const QImage &image)
{
    QImage blank(image.size(), image.format());
    blank.fill(Qt::white);
    return image != blank;
}

} // namespace

/// Idle texts are drawn pixel for pixel as Qt's own text item draws them, whatever has changed.
class tst_TextPainting : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { LabelTexts::useKnownFont(); }
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    void labelsLookLikeQtsText_data();
    void labelsLookLikeQtsText();
    void stylesLookLikeQts_data();
    void stylesLookLikeQts();
    void richTextsLookLikeQts_data();
    void richTextsLookLikeQts();
    void partsLookLikeQts_data();
    void partsLookLikeQts();
    void changesAreShown_data();
    void changesAreShown();
    void opacityAndPainterCount();
    void painterIsLeftAsItWas_data();
    void painterIsLeftAsItWas();
    void paletteIsThatOfQtsText();
    void hiddenParagraphsStayHidden();
    void printsWithoutTheSelection();

private:
    /// Both items in each exposure, and once again with the glyphs that were kept the first time.
    static void compare(TextItem &ours, QGraphicsTextItem &stock, const QTransform &transform);
};

void tst_TextPainting::compare(TextItem &ours, QGraphicsTextItem &stock, const QTransform &transform)
{
    for (int round = 0; round < 2; ++round) {
        for (const QRectF &exposed : exposures) {
            const QImage expected = picture(stock, transform, exposed);
            const QImage seen = picture(ours, transform, exposed);
            if (seen != expected)
                QFAIL(qPrintable(Images::difference(seen, expected, u"text-painting"_s)));
        }
    }
}

void tst_TextPainting::labelsLookLikeQtsText_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QTransform>("transform");
    for (const Named &text : texts) {
        for (const auto &[name, transform] : transforms)
            QTest::addRow("%s, %s", text.name, name) << text.value << transform;
    }
}

void tst_TextPainting::labelsLookLikeQtsText()
{
    QFETCH(const QString, text);
    QFETCH(const QTransform, transform);
    SimpleTextItem label;
    label.setItemText(text);
    label.setItemFontSize(smallFont.pixelSize());
    QGraphicsTextItem stock;
    stock.setPlainText(text);
    showAlike(stock, label);
    compare(label, stock, transform);
    QCOMPARE(hasInk(picture(label, transform, {})), !text.trimmed().isEmpty());
}

void tst_TextPainting::stylesLookLikeQts_data()
{
    using Style = std::function<void(SimpleTextItem &)>;
    QTest::addColumn<Style>("style");
    const auto row = [](const char *name, const Style &style) { QTest::newRow(name) << style; };
    row("left", [](SimpleTextItem &label) { label.setItemAlignment(Qt::AlignLeft); });
    row("right", [](SimpleTextItem &label) { label.setItemAlignment(Qt::AlignRight | Qt::AlignBottom); });
    row("justified", [](SimpleTextItem &label) { label.setItemAlignment(Qt::AlignJustify); });
    row("wrapped", [](SimpleTextItem &label) { label.setTextWidth(60); });
    row("wide", [](SimpleTextItem &label) { label.setTextWidth(250); });
    row("red", [](SimpleTextItem &label) { label.setItemTextColor(Colours::red); });
    row("half seen", [](SimpleTextItem &label) { label.setItemTextColor(QColor(10, 20, 200, 120)); });
    row("unseen", [](SimpleTextItem &label) { label.setItemTextColor(QColor(10, 20, 200, 0)); });
    row("no margin", [](SimpleTextItem &label) { label.setItemDocumentMargin(0); });
    row("broken margin", [](SimpleTextItem &label) { label.setItemDocumentMargin(2.3); });
    row("wide margin", [](SimpleTextItem &label) { label.setItemDocumentMargin(40); });
    row("italic without margin", [](SimpleTextItem &label) {
        label.setItemItalic(true);
        label.setItemDocumentMargin(0);
    });
    row("underlined", [](SimpleTextItem &label) { label.setItemUnderline(true); });
    row("normal weight", [](SimpleTextItem &label) { label.setItemBold(false); });
    row("small", [](SimpleTextItem &label) { label.setItemFontSize(6); });
    row("drawn as paths", [](SimpleTextItem &label) { label.setItemFontSize(90); });
    row("another font", [](SimpleTextItem &label) { label.setItemFontFamily(u"DejaVu Serif"_s); });
}

void tst_TextPainting::stylesLookLikeQts()
{
    QFETCH(const std::function<void(SimpleTextItem &)>, style);
    const QString text = u"jAVf gy fl\nאבג 12\tx"_s;
    SimpleTextItem label;
    label.setItemFontSize(smallFont.pixelSize());
    label.setItemText(text);
    style(label);
    QGraphicsTextItem stock;
    stock.setPlainText(text);
    showAlike(stock, label);
    for (const auto &[name, transform] : transforms)
        compare(label, stock, transform);
    QCOMPARE(hasInk(picture(label, {}, {})), label.getItemTextColor().alpha() > 0);
}

void tst_TextPainting::richTextsLookLikeQts_data()
{
    QTest::addColumn<QString>("html");
    QTest::addColumn<QTransform>("transform");
    for (const Named &html : rich) {
        for (const auto &[name, transform] : transforms)
            QTest::addRow("%s, %s", html.name, name) << html.value << transform;
    }
}

void tst_TextPainting::richTextsLookLikeQts()
{
    QFETCH(const QString, html);
    QFETCH(const QTransform, transform);
    RichTextItem box;
    box.setItemSize(QSizeF(100, 60));
    box.setItemHtml(html);
    QGraphicsTextItem stock;
    showAlike(stock, box);
    stock.setHtml(html);
    compare(box, stock, transform);
    QVERIFY(hasInk(picture(box, transform, {})));
    // HTML that has strayed into a label.
    SimpleTextItem label;
    label.setItemHtml(html);
    QGraphicsTextItem stockLabel;
    showAlike(stockLabel, label);
    stockLabel.setHtml(html);
    compare(label, stockLabel, transform);
}

void tst_TextPainting::partsLookLikeQts_data()
{
    QTest::addColumn<bool>("exact");
    QTest::addColumn<QRectF>("area");
    for (const bool exact : { false, true }) {
        const char *kind = exact ? "only what is exposed" : "all of the item";
        QTest::addRow("all, %s", kind) << exact << QRectF(-10, -10, 320, 200);
        QTest::addRow("a corner, %s", kind) << exact << QRectF(20, 15, 320, 200);
        QTest::addRow("enlarged, %s", kind) << exact << QRectF(20, 15, 32, 20);
        QTest::addRow("an edge, %s", kind) << exact << QRectF(-300.5, -100, 320, 200);
    }
}

void tst_TextPainting::partsLookLikeQts()
{
    QFETCH(const bool, exact);
    QFETCH(const QRectF, area);
    const QString text = u"fjord\njAVf gy\nשלום"_s;
    SimpleTextItem label;
    label.setItemItalic(true);
    label.setItemDocumentMargin(0); // the letters lean out of the item
    label.setItemText(text);
    label.setFlag(QGraphicsItem::ItemUsesExtendedStyleOption, exact);
    QGraphicsTextItem stock;
    stock.setPlainText(text);
    showAlike(stock, label);
    const QImage expected = pictureInScene(stock, area);
    for (int round = 0; round < 2; ++round)
        QCOMPARE(Images::difference(pictureInScene(label, area), expected, u"text-part"_s), QString());
    QVERIFY(hasInk(expected));
}

void tst_TextPainting::changesAreShown_data()
{
    using Change = std::function<void(QTextCursor &)>;
    QTest::addColumn<Change>("change");
    const auto row = [](const char *name, const Change &change) { QTest::newRow(name) << change; };
    const auto characters = [](int from, int to, const auto &set) {
        return [=](QTextCursor &cursor) {
            cursor.setPosition(from);
            cursor.setPosition(to, QTextCursor::KeepAnchor);
            QTextCharFormat change;
            set(change);
            cursor.mergeCharFormat(change);
        };
    };
    row("insertion", [](QTextCursor &cursor) { cursor.insertText(u"fi"_s); });
    row("insertion of lines", [](QTextCursor &cursor) { cursor.insertText(u"x\ny\n"_s); });
    row("removal", [](QTextCursor &cursor) { cursor.deleteChar(); });
    row("joined lines", [](QTextCursor &cursor) {
        cursor.movePosition(QTextCursor::EndOfBlock);
        cursor.deleteChar();
    });
    row("colour of a part", characters(1, 3, [](QTextCharFormat &change) { change.setForeground(Qt::red); }));
    row("size of a part", characters(0, 2, [](QTextCharFormat &change) { change.setFontPointSize(31); }));
    row("outline of a part",
        characters(0, 9, [](QTextCharFormat &change) { change.setTextOutline(QPen(Qt::red)); }));
    row("underline of all", characters(0, 9, [](QTextCharFormat &change) { change.setFontUnderline(true); }));
    row("background of a paragraph", [](QTextCursor &cursor) {
        QTextBlockFormat block;
        block.setBackground(Qt::yellow);
        cursor.mergeBlockFormat(block);
    });
    row("list", [](QTextCursor &cursor) { cursor.createList(QTextListFormat::ListSquare); });
    row("table", [](QTextCursor &cursor) { cursor.insertTable(2, 2); });
    const auto frame = [](const auto &set) {
        return [=](QTextCursor &cursor) {
            QTextFrameFormat format;
            set(format);
            cursor.movePosition(QTextCursor::EndOfBlock, QTextCursor::KeepAnchor);
            cursor.insertFrame(format);
        };
    };
    row("frame with a border", frame([](QTextFrameFormat &format) { format.setBorder(3); }));
    row("frame with a margin", frame([](QTextFrameFormat &format) { format.setLeftMargin(13); }));
    row("frame with a background", frame([](QTextFrameFormat &format) { format.setBackground(Qt::cyan); }));
    const auto root = [](const auto &set) {
        return [=](QTextCursor &cursor) {
            QTextFrameFormat format = cursor.document()->rootFrame()->frameFormat();
            set(format);
            cursor.document()->rootFrame()->setFrameFormat(format);
        };
    };
    row("border of the document", root([](QTextFrameFormat &format) { format.setBorder(3); }));
    row("padding of the document", root([](QTextFrameFormat &format) { format.setPadding(9); }));
    row("margins of the document", root([](QTextFrameFormat &format) { format.setTopMargin(19); }));
    row("font of the document",
        [](QTextCursor &cursor) { cursor.document()->setDefaultFont(QFont(u"DejaVu Serif"_s, 17)); });
    row("alignment",
        [](QTextCursor &cursor) { cursor.document()->setDefaultTextOption(QTextOption(Qt::AlignRight)); });
    row("and back", [](QTextCursor &cursor) {
        cursor.createList(QTextListFormat::ListSquare);
        cursor.document()->undo();
    });
}

void tst_TextPainting::changesAreShown()
{
    QFETCH(const std::function<void(QTextCursor &)>, change);
    const QString text = u"offices AV\nשלום"_s;
    SimpleTextItem label;
    label.setItemText(text);
    label.setItemFontSize(smallFont.pixelSize());
    QGraphicsTextItem stock;
    stock.setPlainText(text);
    showAlike(stock, label);
    const QImage before = picture(label, {}, {});
    QTextCursor cursor(label.document());
    QTextCursor stockCursor(stock.document());
    change(cursor);
    change(stockCursor);
    stock.setTextWidth(label.textWidth()); // which the change has fitted
    compare(label, stock, {});
    const bool restored = QString::fromLatin1(QTest::currentDataTag()) == u"and back"_s;
    QCOMPARE(picture(label, {}, {}) == before, restored);
}

void tst_TextPainting::opacityAndPainterCount()
{
    SimpleTextItem label;
    label.setItemFontSize(smallFont.pixelSize());
    QGraphicsTextItem stock;
    stock.setPlainText(label.getItemText());
    showAlike(stock, label);
    const auto shown = [](QGraphicsItem &item) {
        QImage image(pictureSize, QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::white);
        QPainter painter(&image);
        painter.setPen(QPen(Qt::green, 7, Qt::DotLine));
        painter.setBrush(Qt::Dense3Pattern);
        painter.setRenderHint(QPainter::TextAntialiasing, false);
        painter.setCompositionMode(QPainter::CompositionMode_Multiply);
        painter.setClipRegion(QRegion(20, 10, 9, 90) + QRegion(35, 3, 30, 20));
        painter.setOpacity(0.4);
        QStyleOptionGraphicsItem option;
        option.exposedRect = item.boundingRect();
        item.paint(&painter, &option, nullptr);
        return image;
    };
    const QImage expected = shown(stock);
    QVERIFY(hasInk(expected));
    QCOMPARE(Images::difference(shown(label), expected, u"text-opacity"_s), QString());
}

void tst_TextPainting::painterIsLeftAsItWas_data()
{
    QTest::addColumn<bool>("mirrored");
    QTest::addColumn<bool>("outlined");
    QTest::newRow("upright") << false << false;
    QTest::newRow("mirrored") << true << false;
    QTest::newRow("outlined") << false << true;
    QTest::newRow("both") << true << true;
}

void tst_TextPainting::painterIsLeftAsItWas()
{
    QFETCH(const bool, mirrored);
    QFETCH(const bool, outlined);
    SimpleTextItem label;
    label.setItemHorizontalMirror(mirrored);
    label.setItemPenWidth(outlined ? 3 : 0);
    label.setItemFillColor(Qt::yellow);
    QImage image(pictureSize, QImage::Format_ARGB32_Premultiplied);
    QPainter painter(&image);
    const QPen pen(Qt::green, 7);
    const QTransform turned = QTransform().rotate(12);
    painter.setPen(pen);
    painter.setBrush(Qt::Dense3Pattern);
    painter.setTransform(turned);
    painter.setBrushOrigin(3, 4);
    QStyleOptionGraphicsItem option;
    option.exposedRect = label.boundingRect();
    label.paint(&painter, &option, nullptr);
    QCOMPARE(painter.pen(), pen);
    QCOMPARE(painter.brush(), QBrush(Qt::Dense3Pattern));
    QCOMPARE(painter.transform(), turned);
    QCOMPARE(painter.brushOrigin(), QPoint(3, 4));
    QVERIFY(!painter.hasClipping());
}

void tst_TextPainting::paletteIsThatOfQtsText()
{
    const QString html = u"rule<hr>"_s;
    const QPalette old = QApplication::palette();
    const auto compareBoth = [&](RichTextItem &box, QGraphicsTextItem &stock) {
        box.setItemHtml(html);
        stock.setHtml(html);
        showAlike(stock, box);
        compare(box, stock, {});
    };
    RichTextItem before;
    QGraphicsTextItem stockBefore;
    stockBefore.setPlainText(u"."_s); // which makes its palette
    compareBoth(before, stockBefore);
    QPalette other = old;
    other.setColor(QPalette::Dark, Qt::red);
    other.setColor(QPalette::Text, Qt::blue);
    QApplication::setPalette(other);
    compareBoth(before, stockBefore);
    RichTextItem behind;
    QGraphicsTextItem stockBehind;
    compareBoth(behind, stockBehind);
    QApplication::setPalette(old);
    QVERIFY(picture(before, {}, {}) != picture(behind, {}, {}));
}

void tst_TextPainting::hiddenParagraphsStayHidden()
{
    const QString text = u"one\ntwo"_s;
    SimpleTextItem label;
    label.setItemFontSize(smallFont.pixelSize());
    label.setItemText(text);
    QGraphicsTextItem stock;
    stock.setPlainText(text);
    showAlike(stock, label);
    const QImage all = picture(label, {}, {});
    label.document()->begin().setVisible(false);
    stock.document()->begin().setVisible(false);
    compare(label, stock, {});
    QVERIFY(picture(label, {}, {}) != all);
}

void tst_TextPainting::printsWithoutTheSelection()
{
    const auto printed = [](RichTextItem &box) {
        box.preparePrintImage();
        return box.getPreprintedImage();
    };
    RichTextItem box;
    box.setItemHtml(u"printed"_s);
    const QImage expected = printed(box);
    QVERIFY(hasInk(expected));
    QTextCursor cursor = box.textCursor();
    cursor.select(QTextCursor::Document);
    box.setTextCursor(cursor);
    QCOMPARE(Images::difference(printed(box), expected, u"text-print-selected"_s), QString());
}

QTEST_MAIN(tst_TextPainting)
#include "tst_textpainting.moc"
