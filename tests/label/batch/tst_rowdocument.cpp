// SPDX-License-Identifier: BSD-3-Clause
#include "items/barcode/barcodeitem.h"
#include "items/graphics/pixmapitem.h"
#include "items/text/richtextitem.h"
#include "items/text/simpletextitem.h"
#include "label/batch/rowdocument.h"
#include "label/documentfile.h"
#include "label/separation.h"

#include <QImage>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

const QStringList columns { u"name"_s, u"price"_s, u"logo"_s };

Row rowOf(const QString &name, const QString &price = u"1"_s, const QString &logo = {})
{
    return { 4, { name, price, logo }, u"rows.csv:5"_s };
}

const RowContent::Context context { QDateTime(QDate(2026, 1, 30), QTime(8, 15)), 3 };

LabelDocument label(const QByteArray &items)
{
    LoadResult result = DocumentFile::loadFromData(
        R"({"format": "vxlabel", "version": 6, "page": {"width": 50, "height": 25, "dpi": 200},
            "paper": "#ffffff", "inks": [{"name": "black", "color": "#000000"}],
            "sources": [{"id": 1, "kind": "csv", "location": "a.csv"},
                        {"id": 2, "kind": "counter", "start": 100, "step": 5, "form": "%06d"},
                        {"id": 3, "kind": "date", "form": "dd.MM.yy", "days": 2},
                        {"id": 4, "kind": "concatenation", "text": "${name}<${#}"}],
            "items": [)"
            + items + "]}",
        u"label"_s);
    if (!result.document)
        qFatal("%s", qPrintable(result.problems.value(0).text()));
    return std::move(*result.document);
}

QByteArray text(const QByteArray &keys)
{
    return R"({"itemShape": 65557, "itemFontFamily": "Loma", "itemFontSize": 30, )" + keys + '}';
}

template <typename Kind> const Kind &itemOf(const RowDocument &document, std::size_t index = 0)
{
    return dynamic_cast<const Kind &>(*document.document().items().at(index));
}

QString firstText(const Problems &problems)
{
    return problems.value(0).text();
}

} // namespace

/// Labels that show rows.
class tst_RowDocument : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    void textsShowRows_data();
    void textsShowRows();
    void richTextsKeepTheirForm();
    void richTextsKeepLines();
    void functionsOfRichTextsAreHtml();
    void barcodesShowRows();
    void picturesShowFiles();
    void graphicsWithoutContentHaveTheirPlace_data();
    void graphicsWithoutContentHaveTheirPlace();
    void rowsDoNotDependOnThoseBefore();
    void itemsThatCannotShowARowAreAsDesigned();
    void membersOfGroupsShowRows();
    void theLabelStaysAsItIs();
    void labelsKnowWhatTheyDependOn();
    void whatCannotBeBound_data();
    void whatCannotBeBound();
    void whatCannotBeShown_data();
    void whatCannotBeShown();

private:
    [[nodiscard]] std::unique_ptr<RowDocument> bound(const LabelDocument &document) const
    {
        Problems problems;
        auto made = RowDocument::of(
            document, { .columns = columns, .assets = AssetPaths({ m_folder.path() }) }, problems);
        if (!made)
            qFatal("%s", qPrintable(firstText(problems)));
        return made;
    }

    QTemporaryDir m_folder;
};

void tst_RowDocument::textsShowRows_data()
{
    QTest::addColumn<QByteArray>("keys");
    QTest::addColumn<QString>("shown");
    const auto row = [](const char *name, const QByteArray &keys, const QString &shown) {
        QTest::newRow(name) << keys << shown;
    };
    row("column", R"("itemText": "x", "itemDatasourceId": 1, "itemDatasourceField": "name")", u"Tea & <b>"_s);
    row("column of whatever source", R"("itemDatasourceId": 9, "itemDatasourceField": "price")", u"2.5"_s);
    row("template", R"("itemText": "${name}: ${price:%.2f} ${logo|none}")", u"Tea & <b>: 2.50 none"_s);
    row("template from top to bottom", R"("itemText": "${price}", "itemTextVertical": true)", u"2\n.\n5"_s);
    row("counter", R"("itemDatasourceId": 2)", u"000110"_s); // 100, 105, 110
    row("date", R"("itemDatasourceId": 3)", u"01.02.26"_s); // January has 31 days
    row("concatenation", R"("itemDatasourceId": 4)", u"Tea & <b><3"_s);
    row("neither", R"("itemText": "name $${price}")", u"name $${price}"_s);
}

void tst_RowDocument::textsShowRows()
{
    QFETCH(QByteArray, keys);
    QFETCH(QString, shown);
    if (QByteArray(QTest::currentDataTag()) == "neither")
        shown = u"name ${price}"_s;
    const LabelDocument document = label(text(keys));
    const auto rows = bound(document);
    Problems problems;
    QVERIFY2(rows->show(rowOf(u"Tea & <b>"_s, u"2.5"_s), context, problems), qPrintable(firstText(problems)));
    QCOMPARE(itemOf<SimpleTextItem>(*rows).toPlainText(), shown);
}

void tst_RowDocument::richTextsKeepTheirForm()
{
    const LabelDocument document = label(
        R"({"itemShape": 65558, "itemWidth": 300, "itemHeight": 100,
            "itemHtml": "<p>Only <span style='color:#d40000'>${price:%.2f}</span> for ${name}</p>"})");
    const auto rows = bound(document);
    Problems problems;
    QVERIFY(rows->show(rowOf(u"<i>&"_s, u"2.5"_s), context, problems));
    const auto &item = itemOf<RichTextItem>(*rows);
    QCOMPARE(item.toPlainText(), u"Only 2.50 for <i>&"_s);
    QVERIFY2(item.itemHtml().contains(u"color:#d40000;\">2.50</span>"_s), qPrintable(item.itemHtml()));
}

void tst_RowDocument::richTextsKeepLines()
{
    const LabelDocument document = label(
        R"({"itemShape": 65558, "itemWidth": 300, "itemHeight": 100, "itemHtml": "<p>[${name}]</p>"},
           {"itemShape": 65558, "itemWidth": 300, "itemHeight": 100, "itemHtml": "x", "itemDatasourceId": 4})");
    const auto rows = bound(document);
    Problems problems;
    QVERIFY(rows->show(rowOf(u"two\nlines"_s), context, problems));
    QCOMPARE(itemOf<RichTextItem>(*rows, 0).toPlainText(), u"[two\nlines]"_s);
    QVERIFY(itemOf<RichTextItem>(*rows, 1).toPlainText().startsWith(u"two\nlines"_s));
}

void tst_RowDocument::functionsOfRichTextsAreHtml()
{
    const LabelDocument document = label(R"({"itemShape": 65558, "itemWidth": 300, "itemHeight": 100,
        "itemHtml": "x", "itemDatasourceId": 4})");
    const auto rows = bound(document);
    Problems problems;
    QVERIFY(rows->show(rowOf(u"<b>&"_s), context, problems));
    // The text of the function is HTML, the value in it is not.
    QVERIFY(itemOf<RichTextItem>(*rows).toPlainText().startsWith(u"<b>&"_s));
}

void tst_RowDocument::barcodesShowRows()
{
    const LabelDocument document = label(
        R"({"itemShape": 65565, "barcodeSymbol": 20, "itemDatasourceId": 1, "itemDatasourceField": "name"},
           {"itemShape": 65565, "barcodeSymbol": 20, "barcodeText": "${name}/${#:%03d}"},
           {"itemShape": 65565, "barcodeSymbol": 20, "itemDatasourceId": 2})");
    const auto rows = bound(document);
    Problems problems;
    QVERIFY(rows->show(rowOf(u"A7"_s), context, problems));
    QCOMPARE(itemOf<BarcodeItem>(*rows, 0).getBarcodeText(), u"A7"_s);
    QCOMPARE(itemOf<BarcodeItem>(*rows, 1).getBarcodeText(), u"A7/003"_s);
    QCOMPARE(itemOf<BarcodeItem>(*rows, 2).getBarcodeText(), u"000110"_s);
}

void tst_RowDocument::picturesShowFiles()
{
    QImage red(2, 1, QImage::Format_RGB32);
    red.fill(Qt::red);
    QVERIFY(red.save(m_folder.filePath(u"red.png"_s)));
    LabelDocument document = label({});
    auto picture = std::make_unique<PixMapItem>();
    picture->setItemSize(QSizeF(40, 30));
    picture->setItemDatasourceID(1);
    picture->setItemDatasourceField(u"logo"_s);
    document.addItem(std::move(picture));
    const auto rows = bound(document);
    Problems problems;
    QVERIFY2(rows->show(rowOf({}, {}, u"red.png"_s), context, problems), qPrintable(firstText(problems)));
    const auto &shown = itemOf<PixMapItem>(*rows);
    QCOMPARE(shown.pixmap().toImage().pixelColor(1, 0), QColor(Qt::red));
    QCOMPARE(shown.getItemSize(), QSizeF(40, 30));
    QVERIFY(shown.isVisible());
    QVERIFY(rows->show(rowOf({}, {}, {}), context, problems)); // no picture
    QVERIFY(!itemOf<PixMapItem>(*rows).isVisible());
    QVERIFY(rows->show(rowOf({}, {}, u"red.png"_s), context, problems));
    QVERIFY(itemOf<PixMapItem>(*rows).isVisible());
}

void tst_RowDocument::graphicsWithoutContentHaveTheirPlace_data()
{
    QTest::addColumn<QByteArray>("shape");
    QTest::addColumn<int>("rotation");
    QTest::addColumn<QPointF>("corner"); // of the upper left, turned with the rest about 95, 70
    QTest::addColumn<DocumentFormat>("format");
    for (const auto format : { DocumentFormat::Json, DocumentFormat::Binary }) {
        for (const auto &[name, shape] :
            { std::pair("picture", 65548), { "drawing", 65547 }, { "symbol", 65549 } }) {
            const char *written = format == DocumentFormat::Json ? "JSON" : "binary";
            const auto row = [&](int rotation, QPointF corner) {
                QTest::addRow("%s, %d\u00B0, %s", name, rotation, written)
                    << QByteArray::number(shape) << rotation << corner << format;
            };
            row(0, { 20, 20 });
            row(90, { 145, -5 });
            row(180, { 170, 120 });
            // 95 - 75 cos 30 + 50 sin 30 and 70 - 75 sin 30 - 50 cos 30 degrees
            row(30, { 55.0480947, -10.8012702 });
        }
    }
}

void tst_RowDocument::graphicsWithoutContentHaveTheirPlace()
{
    QFETCH(const QByteArray, shape);
    QFETCH(const int, rotation);
    QFETCH(const QPointF, corner);
    QFETCH(const DocumentFormat, format);
    QImage red(20, 10, QImage::Format_RGB32);
    red.fill(Qt::red);
    QVERIFY(red.save(m_folder.filePath(u"red.png"_s)));
    QFile drawing(m_folder.filePath(u"red.svg"_s));
    QVERIFY(drawing.open(QIODevice::WriteOnly));
    drawing.write(
        "<svg xmlns='http://www.w3.org/2000/svg' width='20' height='10'><path d='M0 0h20v10H0z'/></svg>");
    drawing.close();

    const LabelDocument typed
        = label(R"({"itemShape": )" + shape + R"(, "itemPositionX": 20, "itemPositionY": 20,
        "itemWidth": 150, "itemHeight": 100, "itemDatasourceId": 1, "itemDatasourceField": "logo", "itemRotation": )"
            + QByteArray::number(rotation) + '}');
    Problems problems;
    const LoadResult saved
        = DocumentFile::loadFromData(DocumentFile::toData(typed, format, problems), u"saved"_s);
    QVERIFY2(saved.document, qPrintable(firstText(saved.problems)));
    const auto rows = bound(*saved.document);
    const QString file = shape == "65548" ? u"red.png"_s : u"red.svg"_s;
    QVERIFY2(rows->show(rowOf({}, {}, file), context, problems), qPrintable(firstText(problems)));
    const auto &shown = itemOf<QGraphicsItem>(*rows);
    const QPointF found = shown.mapToScene(shown.boundingRect().topLeft());
    QVERIFY2(QLineF(found, corner).length() < 1e-6, qPrintable(u"%1, %2"_s.arg(found.x()).arg(found.y())));
    QCOMPARE(itemOf<Item>(*rows).getItemSize(), QSizeF(150, 100));
}

void tst_RowDocument::rowsDoNotDependOnThoseBefore()
{
    const LabelDocument document
        = label(text(R"("itemText": "x", "itemWidth": 200, "itemHeight": 60, "itemDatasourceId": 1,
                "itemDatasourceField": "name")"));
    const auto plateOf = [](const RowDocument &rows) {
        Problems problems;
        return separate(rows.document(), { .dpi = 200 }, problems)->plates[0].image;
    };
    Problems problems;
    const auto fresh = bound(document);
    QVERIFY(fresh->show(rowOf(u"Tea"_s), context, problems));
    const auto used = bound(document);
    QVERIFY(used->show(rowOf(u"A text of many words and\nlines"_s), context, problems));
    const QImage other = plateOf(*used);
    QVERIFY(used->show(rowOf(u"Tea"_s), context, problems));
    QCOMPARE(plateOf(*used), plateOf(*fresh));
    QVERIFY(other != plateOf(*fresh));
}

void tst_RowDocument::itemsThatCannotShowARowAreAsDesigned()
{
    const LabelDocument document = label(text(R"("itemText": "${price:%.2f}")"));
    const auto rows = bound(document);
    Problems problems;
    QVERIFY(rows->show(rowOf(u"Apple"_s, u"2"_s), context, problems));
    QCOMPARE(itemOf<SimpleTextItem>(*rows).getItemText(), u"2.00"_s);
    QVERIFY(!rows->show(rowOf(u"Apple"_s, u"cheap"_s), context, problems));
    QCOMPARE(itemOf<SimpleTextItem>(*rows).getItemText(), u"${price:%.2f}"_s);
    QVERIFY(rows->show(rowOf(u"Apple"_s, u"3"_s), context, problems));
    QCOMPARE(itemOf<SimpleTextItem>(*rows).getItemText(), u"3.00"_s);
}

void tst_RowDocument::membersOfGroupsShowRows()
{
    const LabelDocument document = label(R"({"itemShape": 65537, "children": [)"
        + text(R"("itemText": "${name}")") + ',' + text(R"("itemText": "${skew}")") + "]}");
    Problems problems;
    QVERIFY(!RowDocument::of(document, { .columns = columns }, problems));
    QCOMPARE(problems.size(), 1);
    QVERIFY2(firstText(problems).startsWith(u"/items/0/children/1: "_s), qPrintable(firstText(problems)));

    const LabelDocument sound
        = label(R"({"itemShape": 65537, "children": [)" + text(R"("itemText": "${name}")") + "]}");
    const auto rows = bound(sound);
    problems.clear();
    QVERIFY(rows->show(rowOf(u"Tea"_s), context, problems));
    QCOMPARE(itemOf<SimpleTextItem>(*rows).toPlainText(), u"Tea"_s);
}

void tst_RowDocument::theLabelStaysAsItIs()
{
    const LabelDocument document = label(text(R"("itemText": "${name}")"));
    Problems problems;
    const QByteArray before = DocumentFile::toData(document, DocumentFormat::Json, problems);
    const auto rows = bound(document);
    QVERIFY(rows->show(rowOf(u"Tea"_s), context, problems));
    QCOMPARE(DocumentFile::toData(document, DocumentFormat::Json, problems), before);
}

void tst_RowDocument::labelsKnowWhatTheyDependOn()
{
    const LabelDocument plain = label(text(R"("itemText": "plain")"));
    QVERIFY(!bound(plain)->isBound());
    const LabelDocument named = label(text(R"("itemText": "${name}")"));
    QVERIFY(bound(named)->isBound() && !bound(named)->countsLabels() && !bound(named)->tellsTime());
    const LabelDocument counted = label(text(R"("itemDatasourceId": 2)"));
    QVERIFY(bound(counted)->countsLabels() && !bound(counted)->tellsTime());
    const LabelDocument numbered = label(text(R"("itemDatasourceId": 4)"));
    QVERIFY(bound(numbered)->countsLabels());
    const LabelDocument dated = label(text(R"("itemDatasourceId": 3)"));
    QVERIFY(bound(dated)->tellsTime() && !bound(dated)->countsLabels());
    const LabelDocument timed = label(text(R"("itemText": "${time}")"));
    QVERIFY(bound(timed)->tellsTime());
}

void tst_RowDocument::whatCannotBeBound_data()
{
    QTest::addColumn<QByteArray>("keys");
    QTest::addColumn<QString>("problem");
    const auto row = [](const char *name, const QByteArray &keys, const QString &problem) {
        QTest::newRow(name) << keys << u"/items/0: "_s + problem;
    };
    row("unknown column", R"("itemText": "x", "itemDatasourceId": 1, "itemDatasourceField": "nam")",
        u"Label Text -1: there is no column \"nam\"; did you mean \"name\"?"_s);
    row("no column", R"("itemText": "x", "itemDatasourceId": 1)",
        u"Label Text -1: there is no column \"\"; there are name, price, logo"_s);
    row("template", R"("itemText": "${prise}")",
        u"Label Text -1: there is no column \"prise\"; did you mean \"price\"?"_s);
    row("open template", R"("itemText": "a ${price")",
        u"Label Text -1: \"${price\" is not closed; write } behind the name of the column, or $${ for the "
        u"two "
        "characters"_s);
    row("other source", R"("itemText": "x", "itemDatasourceId": 8, "itemDatasourceField": "name")",
        u"Label Text -1: takes its content from source 8; the rows come from source 1: bind it to that, or "
        u"give "
        "--data"_s);
}

void tst_RowDocument::whatCannotBeBound()
{
    QFETCH(QByteArray, keys);
    QFETCH(QString, problem);
    const LabelDocument document = label(text(keys));
    Problems problems;
    QVERIFY(!RowDocument::of(document, { .columns = columns, .rowSource = 1 }, problems));
    QCOMPARE(problems.size(), 1);
    QCOMPARE(firstText(problems), problem);
}

void tst_RowDocument::whatCannotBeShown_data()
{
    QTest::addColumn<QByteArray>("item");
    QTest::addColumn<Row>("row");
    QTest::addColumn<QString>("problem");
    const QByteArray picture
        = R"({"itemShape": 65548, "itemWidth": 40, "itemHeight": 30, "itemDatasourceId": 1,
             "itemDatasourceField": "logo"})";
    const QByteArray drawing
        = R"({"itemShape": 65547, "itemWidth": 40, "itemHeight": 30, "itemDatasourceId": 1,
             "itemDatasourceField": "logo"})";
    QTest::newRow("no number") << text(R"("itemText": "${name:%d}")") << rowOf(u"Tea"_s)
                               << u"/items/0: Label Text -1: \"Tea\" is no number for %d"_s;
    QTest::newRow("no file") << picture << rowOf({}, {}, u"gone.png"_s) << u"there is no file \"gone.png\""_s;
    QTest::newRow("elsewhere") << picture << rowOf({}, {}, u"/etc/passwd"_s)
                               << u"\"/etc/passwd\" lies outside the folders for pictures"_s;
    QTest::newRow("no picture") << picture << rowOf({}, {}, u"text.png"_s)
                                << u"\"text.png\" holds nothing that can be shown; use a PNG or JPEG file"_s;
    QTest::newRow("no drawing") << drawing << rowOf({}, {}, u"text.png"_s)
                                << u"\"text.png\" holds nothing that can be shown; use an SVG file"_s;
    QTest::newRow("no drawing in the value")
        << drawing << rowOf({}, {}, u"<svg"_s) << u"the value is no drawing that can be shown"_s;
}

void tst_RowDocument::whatCannotBeShown()
{
    QFETCH(QByteArray, item);
    QFETCH(Row, row);
    QFETCH(QString, problem);
    QFile file(m_folder.filePath(u"text.png"_s));
    QVERIFY(file.open(QIODevice::WriteOnly) && file.write("text") == 4);
    file.close();
    const LabelDocument document = label(item);
    const auto rows = bound(document);
    Problems problems;
    QVERIFY(!rows->show(row, context, problems));
    QCOMPARE(problems.size(), 1);
    QVERIFY2(firstText(problems).contains(problem), qPrintable(firstText(problems)));
    QVERIFY2(firstText(problems).contains(u"/items/0: "_s), qPrintable(firstText(problems)));
    // The next row is none the worse for it.
    problems.clear();
    QVERIFY2(rows->show(rowOf(u"7"_s), context, problems), qPrintable(firstText(problems)));
}

QTEST_MAIN(tst_RowDocument)
#include "tst_rowdocument.moc"
