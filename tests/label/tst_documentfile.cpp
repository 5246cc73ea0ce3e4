// SPDX-License-Identifier: BSD-3-Clause
#include "items/shapes/rectangleitem.h"
#include "label/documentfile.h"
#include "label/labellimits.h"

#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>
#include <QtEndian>

#include <ctime>
#include <sys/stat.h>

using namespace Qt::StringLiterals;

namespace {

constexpr const char *smallText = R"({"format": "vxlabel", "version": 6,)"
                                  R"( "page": {"width": 100, "height": 50, "dpi": 300},)"
                                  R"( "inks": [{"name": "black", "color": "#000000"}],)"
                                  R"( "paper": "#ffffff", "items": []})";

QByteArray withItems(const QByteArray &items)
{
    return QByteArray(smallText).replace("[]", "[" + items + "]");
}

QStringList texts(const Problems &problems)
{
    QStringList lines;
    for (const Problem &problem : problems)
        lines.append(problem.text());
    return lines;
}

/// A document of one rectangle that the caller has changed.
template <typename Change> LabelDocument documentWith(Change change)
{
    LabelDocument document;
    auto item = std::make_unique<RectangleItem>();
    change(*item);
    document.addItem(std::move(item));
    return document;
}

QByteArray contentOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("unreadable");
}

QByteArray rectangleOfUnknownKeys(int count)
{
    QByteArray text = R"({"itemShape": 65578)";
    for (int i = 0; i < count; ++i)
        text += ",\"key" + QByteArray::number(i) + "\":0";
    return text + '}';
}

QByteArray rectangleWithPenColor(const QByteArray &color)
{
    return R"({"itemShape": 65578, "itemPenColor": ")" + color + R"("})";
}

QByteArray tenMillionBinaryItems()
{
    return QByteArray::fromHex(
        "56584C4142454C00 00000006 4059000000000000 4049000000000000 4072C00000000000"
        "00000001 00000002 0061 01FFFF0000000000000000 01FFFFFFFFFFFFFFFF0000 00989680");
}

using Maker = QByteArray (*)();

#ifdef __SANITIZE_ADDRESS__
constexpr qint64 allowedMebibytes = 2048; // shadow memory, and freed blocks that stay reserved
constexpr qint64 allowedMilliseconds = 40'000;
#else
constexpr qint64 allowedMebibytes = 512;
constexpr qint64 allowedMilliseconds = 10'000;
#endif

/// Lets the kernel measure the peak of this process from here on.
void forgetPeak()
{
    QFile file(u"/proc/self/clear_refs"_s);
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write("5"), 1);
}

/// The most memory that this process has held since forgetPeak(), in MiB.
qint64 peakMebibytes()
{
    for (const QByteArray &line : contentOf(u"/proc/self/status"_s).split('\n')) {
        if (line.startsWith("VmHWM:"))
            return line.mid(6).trimmed().split(' ').first().toLongLong() / 1024;
    }
    return -1;
}

} // namespace

class tst_DocumentFile : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void hostileSizesCostLittle_data();
    void hostileSizesCostLittle();
    void suffixTellsTheFormat_data();
    void suffixTellsTheFormat();
    void contentTellsTheFormat();
    void unreadableFilesAreNamed_data();
    void unreadableFilesAreNamed();
    void linksToFilesAreRead();
    void fileSizeIsLimited();
    void otherContentIsRefused_data();
    void otherContentIsRefused();
    void bothFormsHoldTheSame_data();
    void bothFormsHoldTheSame();
    void losslessThroughBothForms();
    void jsonThatWouldLoseSomethingIsRefused_data();
    void jsonThatWouldLoseSomethingIsRefused();
    void zerosHaveNoSignInJson();
    void unseenColorsLeaveNoTraceInJson_data();
    void unseenColorsLeaveNoTraceInJson();
    void brokenDocumentsAreNotSaved();
    void savingWritesWhatTheNameAsksFor();
    void savingRefusesOtherNames();
    void savingReportsWhyItFailed();
    void hugeDocumentsAreNotSaved();

private:
    [[nodiscard]] QString pathOf(const QString &name) const { return m_folder->filePath(name); }
    QString makeFile(const QString &name, const QByteArray &content) const;

    std::unique_ptr<QTemporaryDir> m_folder;
};

void tst_DocumentFile::init()
{
    QTest::failOnWarning(QRegularExpression(u".*"_s));
    m_folder = std::make_unique<QTemporaryDir>();
    QVERIFY(m_folder->isValid());
}

QString tst_DocumentFile::makeFile(const QString &name, const QByteArray &content) const
{
    QFile file(pathOf(name));
    return file.open(QIODevice::WriteOnly) && file.write(content) == content.size() ? file.fileName()
                                                                                    : QString();
}

void tst_DocumentFile::hostileSizesCostLittle_data()
{
    QTest::addColumn<Maker>("make");
    QTest::addColumn<QString>("problem");

    const auto row = [](const char *name, Maker make, const QString &problem) {
        QTest::newRow(name) << make << problem;
    };
    row("ten million items, binary", &tenMillionBinaryItems,
        u"a: byte 68: 10000000 items; a label holds at most 20000"_s);
    // The head takes 164 bytes and 13 values, each item 3 bytes and 2 values: the comma behind item 999,994
    // is too much.
    row(
        "ten million items, JSON",
        [] { return withItems(QByteArray("{},").repeated(10'000'000).chopped(1)); },
        u"a: line 1, column 3000147: more than 2000000 values; split the file into several"_s);
    row(
        "nearly two million items", [] { return withItems(QByteArray("0,").repeated(1'999'980).chopped(1)); },
        u"a: /items: 1999980 items; a label holds at most 20000"_s);
    row("nearly two million unknown keys", [] { return withItems(rectangleOfUnknownKeys(1'999'980)); }, {});
    row(
        "a long text", [] { return withItems(rectangleWithPenColor(QByteArray(60'000'000, 'x'))); },
        u"a: /items/0/itemPenColor: \""_s + QString(39, u'x')
            + u"…\" is no colour; write it as \"#rrggbb\", \"#aarrggbb\" or \"transparent\""_s);
}

void tst_DocumentFile::hostileSizesCostLittle()
{
    QFETCH(Maker, make);
    QFETCH(QString, problem);
    const QByteArray data = make();
    forgetPeak();
    // Processor time: it does not count what else the machine is doing.
    const std::clock_t start = std::clock();
    const LoadResult result = DocumentFile::loadFromData(data, u"a"_s);
    const qint64 milliseconds = qint64(std::clock() - start) * 1000 / CLOCKS_PER_SEC;
    QVERIFY(!result.document);
    if (problem.isEmpty())
        QCOMPARE(result.problems.last().text(), u"a: and 1999880 more problems"_s);
    else
        QCOMPARE(texts(result.problems), QStringList(problem));
    QVERIFY2(milliseconds < allowedMilliseconds, qPrintable(QString::number(milliseconds)));
    QVERIFY2(peakMebibytes() > 0 && peakMebibytes() < allowedMebibytes,
        qPrintable(QString::number(peakMebibytes())));
}

void tst_DocumentFile::suffixTellsTheFormat_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<int>("format");

    constexpr int none = -1;
    QTest::newRow("JSON") << u"a.vxl"_s << int(DocumentFormat::Json);
    QTest::newRow("binary") << u"/x.y/a.b.vxb"_s << int(DocumentFormat::Binary);
    QTest::newRow("capitals") << u"A.VXB"_s << int(DocumentFormat::Binary);
    QTest::newRow("other") << u"a.json"_s << none;
    QTest::newRow("nothing") << u"vxl"_s << none;
    QTest::newRow("folder") << u"a.vxl/b"_s << none;
}

void tst_DocumentFile::suffixTellsTheFormat()
{
    QFETCH(QString, path);
    const std::optional<DocumentFormat> format = DocumentFile::formatOf(path);
    QTEST(format ? int(*format) : -1, "format");
}

void tst_DocumentFile::contentTellsTheFormat()
{
    Problems problems;
    const QByteArray binary = DocumentFile::toData(LabelDocument(), DocumentFormat::Binary, problems);
    QVERIFY(DocumentFile::load(makeFile(u"binary.vxl"_s, binary)).document);
    QVERIFY(DocumentFile::load(makeFile(u"json.vxb"_s, smallText)).document);
    QVERIFY(DocumentFile::load(makeFile(u"blanks"_s, " \r\n\t" + QByteArray(smallText))).document);
}

void tst_DocumentFile::unreadableFilesAreNamed_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("what");

    QTest::newRow("missing") << u"missing.vxl"_s << u"does not exist"_s;
    QTest::newRow("no folder") << u"missing/a.vxl"_s << u"does not exist"_s;
    QTest::newRow("folder") << u"."_s << u"is a folder"_s;
    QTest::newRow("pipe") << u"pipe"_s << u"is no ordinary file"_s;
    QTest::newRow("empty") << u"empty"_s << u"is empty"_s;
    QTest::newRow("endless device") << u"/dev/zero"_s << u"is no ordinary file"_s;
    QTest::newRow("memory of the process") << u"/proc/self/mem"_s << u"cannot be read: Input/output error"_s;
}

void tst_DocumentFile::unreadableFilesAreNamed()
{
    QFETCH(QString, path);
    QFETCH(QString, what);
    QCOMPARE(mkfifo(pathOf(u"pipe"_s).toLocal8Bit().constData(), 0600), 0);
    QVERIFY(!makeFile(u"empty"_s, {}).isEmpty());
    if (!path.startsWith(u'/'))
        path = pathOf(path);
    const LoadResult result = DocumentFile::load(path);
    QVERIFY(!result.document);
    QCOMPARE(texts(result.problems), QStringList(path + u": "_s + what));
}

void tst_DocumentFile::linksToFilesAreRead()
{
    QVERIFY(QFile::link(makeFile(u"a.vxl"_s, smallText), pathOf(u"link"_s)));
    QVERIFY(DocumentFile::load(pathOf(u"link"_s)).document);
}

void tst_DocumentFile::fileSizeIsLimited()
{
    QFile file(makeFile(u"sparse.vxl"_s, smallText));
    QVERIFY(file.resize(64 * 1024 * 1024 + 1));
    LoadResult result = DocumentFile::load(file.fileName());
    QVERIFY(!result.document);
    QCOMPARE(texts(result.problems),
        QStringList(file.fileName() + u": is larger than 67108864 bytes (67108865)"_s));

    const QByteArray atLimit = QByteArray(smallText).leftJustified(64 * 1024 * 1024, ' ');
    QVERIFY(DocumentFile::load(makeFile(u"limit.vxl"_s, atLimit)).document);
    result = DocumentFile::loadFromData(atLimit + ' ', u"a"_s);
    QCOMPARE(texts(result.problems), QStringList(u"a: is larger than 67108864 bytes (67108865)"_s));
}

void tst_DocumentFile::otherContentIsRefused_data()
{
    QTest::addColumn<QByteArray>("data");

    QTest::newRow("picture") << QByteArray("\x89PNG\r\n\x1A\n");
    QTest::newRow("markup") << QByteArray("<svg/>");
    QTest::newRow("half a magic text") << QByteArray("VXLABE");
    QTest::newRow("zeros") << QByteArray(100, '\0');
    QTest::newRow("blanks") << QByteArray(" \n");
}

void tst_DocumentFile::otherContentIsRefused()
{
    QFETCH(QByteArray, data);
    const LoadResult result = DocumentFile::loadFromData(data, u"a"_s);
    QVERIFY(!result.document);
    QCOMPARE(texts(result.problems), QStringList(u"a: is no label document; open a .vxl or .vxb file"_s));
}

void tst_DocumentFile::bothFormsHoldTheSame_data()
{
    QTest::addColumn<QColor>("pen");
    QTest::addColumn<QColor>("fill");
    QTest::addColumn<int>("brush");
    QTest::addColumn<QString>("field");

    QTest::newRow("plain") << QColor(1, 2, 3) << QColor(4, 5, 6) << 1 << QString();
    QTest::newRow("transparent") << QColor(Qt::transparent) << QColor(Qt::transparent) << 1 << QString();
    QTest::newRow("translucent") << QColor(1, 2, 3, 4) << QColor(250, 251, 252, 253) << 17 << u"price"_s;
    QTest::newRow("gradient") << QColor(255, 0, 0) << QColor(0, 255, 0) << 15 << u"Größe \"\\\n\u2028😀"_s;
    QTest::newRow("unknown brush") << QColor(255, 0, 0) << QColor(0, 255, 0) << 255 << QString(1, QChar(0));
    QTest::newRow("half a character")
        << QColor(255, 0, 0) << QColor(0, 255, 0) << 0 << QString(QChar(0xD800));
}

void tst_DocumentFile::bothFormsHoldTheSame()
{
    QFETCH(QColor, pen);
    QFETCH(QColor, fill);
    QFETCH(int, brush);
    QFETCH(QString, field);
    const LabelDocument document = documentWith([&](RectangleItem &item) {
        item.setItemPenColor(pen);
        item.setItemFillColor(fill);
        item.setItemBrushStyle(MobraTypes::BrushStyle(brush));
        item.setDatasourceField(field);
        item.setItemRotation(33.3);
        item.setVisible(false);
    });
    Problems problems;
    const QByteArray binary = DocumentFile::toData(document, DocumentFormat::Binary, problems);
    const QByteArray json = DocumentFile::toData(document, DocumentFormat::Json, problems);
    QCOMPARE(texts(problems), QStringList());
    const LoadResult fromJson = DocumentFile::loadFromData(json, u"a.vxl"_s);
    QVERIFY(fromJson.document);
    QCOMPARE(DocumentFile::toData(*fromJson.document, DocumentFormat::Binary, problems).toHex(' '),
        binary.toHex(' '));
}

void tst_DocumentFile::losslessThroughBothForms()
{
    LabelDocument document;
    document.setPageSize(QSizeF(57.15, 31.75));
    document.setDesignDpi(203.2);
    document.setInks({ { u"Größe"_s, QColor(1, 2, 3) }, { u"b.2"_s, QColor(0, 0, 255) } });
    document.setPaper(QColor(250, 240, 230));
    for (int i = 0; i < 100; ++i) {
        auto item = std::make_unique<RectangleItem>();
        item->setItemId(short(i));
        item->setItemSize(QSizeF(0.1 * i, 1.0 / 3.0 * i));
        item->setPos(i * 0.7, -i / 7.0);
        item->setItemRotation(i * 3.6);
        item->setItemFillColor(QColor(i, 255 - i, 2 * i, i % 3 ? 255 : i));
        item->setItemBrushStyle(MobraTypes::BrushStyle(i % 18));
        item->setItemVerticalMirror(i % 2 != 0);
        document.addItem(std::move(item));
    }
    Problems problems;
    const QByteArray json = DocumentFile::toData(document, DocumentFormat::Json, problems);
    QCOMPARE(texts(problems), QStringList());
    QVERIFY(!json.isEmpty());

    const LoadResult first = DocumentFile::loadFromData(json, u"a.vxl"_s);
    QVERIFY(first.document);
    const QByteArray binary = DocumentFile::toData(*first.document, DocumentFormat::Binary, problems);
    const LoadResult second = DocumentFile::loadFromData(binary, u"a.vxb"_s);
    QVERIFY(second.document);
    QCOMPARE(DocumentFile::toData(*second.document, DocumentFormat::Json, problems), json);
    QCOMPARE(DocumentFile::toData(*second.document, DocumentFormat::Binary, problems), binary);
}

void tst_DocumentFile::jsonThatWouldLoseSomethingIsRefused_data()
{
    using Change = void (*)(RectangleItem &);
    QTest::addColumn<Change>("change");

    const auto row = [](const char *name, Change change) { QTest::newRow(name) << change; };
    row("HSV pen", [](RectangleItem &item) { item.setItemPenColor(QColor::fromHsv(10, 20, 30)); });
    row("CMYK fill", [](RectangleItem &item) { item.setItemFillColor(QColor::fromCmyk(1, 2, 3, 4)); });
    row("sixteen bits", [](RectangleItem &item) { item.setItemFillColor(QColor::fromRgba64(0x1234, 0, 0)); });
    row("perspective", [](RectangleItem &item) { item.setTransform(QTransform(1, 0, 0, 0, 1, 0, 0, 0, 2)); });
    row("negative pen style", [](RectangleItem &item) { item.setItemPenStyle(Qt::PenStyle(-2)); });
}

void tst_DocumentFile::jsonThatWouldLoseSomethingIsRefused()
{
    using Change = void (*)(RectangleItem &);
    QFETCH(Change, change);
    const LabelDocument document = documentWith(change);
    Problems problems;
    QCOMPARE(DocumentFile::toData(document, DocumentFormat::Json, problems), QByteArray());
    QCOMPARE(texts(problems),
        QStringList(u"/items/0: the JSON form cannot hold all of rectangle -1; save it as .vxb"_s));

    problems.clear();
    const QByteArray binary = DocumentFile::toData(document, DocumentFormat::Binary, problems);
    QVERIFY(problems.isEmpty());
    const LoadResult again = DocumentFile::loadFromData(binary, u"a.vxb"_s);
    QVERIFY(again.document);
    QCOMPARE(DocumentFile::toData(*again.document, DocumentFormat::Binary, problems), binary);
}

void tst_DocumentFile::zerosHaveNoSignInJson()
{
    const LabelDocument document = documentWith([](RectangleItem &item) {
        item.setTransform(QTransform(-1, -0.0, -0.0, 1, 0, 0));
        item.setPos(-0.0, -0.0);
    });
    Problems problems;
    QVERIFY(!DocumentFile::toData(document, DocumentFormat::Json, problems).isEmpty());
    QCOMPARE(texts(problems), QStringList());
}

void tst_DocumentFile::unseenColorsLeaveNoTraceInJson_data()
{
    QTest::addColumn<QColor>("fill");

    QTest::newRow("transparent") << QColor(Qt::transparent);
    QTest::newRow("transparent white") << QColor(255, 255, 255, 0);
    QTest::newRow("invalid") << QColor();
}

void tst_DocumentFile::unseenColorsLeaveNoTraceInJson()
{
    // A gradient of an unseen colour sets the gradient flag, which one of Qt::transparent does not.
    QFETCH(QColor, fill);
    const LabelDocument document = documentWith([&](RectangleItem &item) {
        item.setItemFillColor(fill);
        item.setItemBrushStyle(MobraTypes::BrushRadialGradient);
    });
    Problems problems;
    const QByteArray json = DocumentFile::toData(document, DocumentFormat::Json, problems);
    QCOMPARE(texts(problems), QStringList());
    QVERIFY(json.contains("\"itemFillColor\": \"transparent\""));
    QVERIFY(json.contains("\"itemFlags\": 1,"));
    const LoadResult again = DocumentFile::loadFromData(json, u"a.vxl"_s);
    QVERIFY(again.document);
    QCOMPARE(DocumentFile::toData(*again.document, DocumentFormat::Json, problems), json);
}

void tst_DocumentFile::brokenDocumentsAreNotSaved()
{
    const LabelDocument document = documentWith([](RectangleItem &item) { item.setItemWidth(-1); });
    for (const QString &name : { u"a.vxl"_s, u"a.vxb"_s }) {
        Problems problems;
        QVERIFY(!DocumentFile::save(document, pathOf(name), false, problems));
        QCOMPARE(texts(problems), QStringList(pathOf(name) + u": /items/0/itemWidth: -1 is negative"_s));
        QVERIFY(!QFile::exists(pathOf(name)));
    }
}

void tst_DocumentFile::savingWritesWhatTheNameAsksFor()
{
    const LabelDocument document = documentWith([](RectangleItem &item) { item.setItemId(3); });
    for (const QString &name : { u"a.vxl"_s, u"a.vxb"_s, u"B.VXL"_s }) {
        Problems problems;
        QVERIFY(DocumentFile::save(document, pathOf(name), false, problems));
        QVERIFY(problems.isEmpty());
        const LoadResult result = DocumentFile::load(pathOf(name));
        QVERIFY(result.document);
        QCOMPARE(result.document->items()[0]->itemId(), short(3));
    }
    QVERIFY(contentOf(pathOf(u"a.vxl"_s)).startsWith('{'));
    QVERIFY(contentOf(pathOf(u"a.vxb"_s)).startsWith("VXLABEL"));
    QVERIFY(contentOf(pathOf(u"B.VXL"_s)).startsWith('{'));
}

void tst_DocumentFile::savingRefusesOtherNames()
{
    Problems problems;
    QVERIFY(!DocumentFile::save(LabelDocument(), pathOf(u"a.json"_s), true, problems));
    QCOMPARE(texts(problems),
        QStringList(pathOf(u"a.json"_s) + u": is no name of a document; let it end in .vxl or .vxb"_s));
}

void tst_DocumentFile::savingReportsWhyItFailed()
{
    const QString path = makeFile(u"a.vxl"_s, "mine");
    Problems problems;
    QVERIFY(!DocumentFile::save(LabelDocument(), path, false, problems));
    QCOMPARE(
        texts(problems), QStringList(path + u": exists already; choose another name or allow overwriting"_s));
    QCOMPARE(contentOf(path), QByteArray("mine"));
    QVERIFY(DocumentFile::save(LabelDocument(), path, true, problems));
    QVERIFY(DocumentFile::load(path).document);
}

void tst_DocumentFile::hugeDocumentsAreNotSaved()
{
    const LabelDocument document
        = documentWith([](RectangleItem &item) { item.setDatasourceField(QString(64 * 1024 * 1024, u'x')); });
    Problems problems;
    QCOMPARE(DocumentFile::toData(document, DocumentFormat::Json, problems), QByteArray());
    QCOMPARE(problems.size(), 1);
    QVERIFY(problems[0].what.startsWith(u"is larger than 67108864 bytes"_s));
}

QTEST_MAIN(tst_DocumentFile)
#include "tst_documentfile.moc"
