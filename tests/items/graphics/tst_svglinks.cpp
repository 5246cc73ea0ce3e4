// SPDX-License-Identifier: BSD-3-Clause
#include "items/graphics/svgguard.h"
#include "items/graphics/svgitem.h"
#include "items/graphics/symbolitem.h"
#include "tests/support/drawings.h"
#include "tests/support/images.h"
#include "tests/support/itemrecords.h"
#include "tests/support/tracedrun.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <QStringConverter>
#include <QTemporaryDir>
#include <QTest>

#include <cstdlib>
#include <memory>

using namespace Qt::StringLiterals;
using Drawings::compressed;
using Drawings::drawing;

namespace {

using SvgGuard::Verdict;

const QByteArray secret = "vx_referred_file";
const QByteArray area = "width='20' height='20'";

struct Spelling
{
    const char *name;
    Verdict verdict;
    QByteArray bytes;
};

QByteArray image(const QByteArray &name)
{
    return "<image " + area + " xlink:href='" + name + "'/>";
}

QByteArray inUtf16(const QByteArray &text)
{
    QStringEncoder encoder(QStringEncoder::Utf16LE, QStringConverter::Flag::WriteBom);
    return encoder(QString::fromLatin1(text));
}

QByteArray withProlog(const QByteArray &prolog, const QByteArray &content)
{
    return prolog + drawing(content);
}

/// A picture whose header is sound.
QByteArray brokenPng()
{
    return Drawings::blackPng(20, 20).first(45);
}

/// Ways in which an image can refer to a file of this name, with its folder or without.
QList<Spelling> imagesOf(const QByteArray &name)
{
    const QByteArray linked = drawing(image(name));
    return {
        { "image", Verdict::Links, linked },
        { "spaces around", Verdict::Links, drawing(image(" \n" + name + "\t")) },
        { "bound prefix", Verdict::Links,
            drawing("<v:image " + area + " xlink:href='" + name + "'/>",
                area + " xmlns:v='http://www.w3.org/2000/svg'") },
        { "unbound prefix", Verdict::Links, drawing("<v:image " + area + " xlink:href='" + name + "'/>") },
        { "prefixed root", Verdict::Links,
            "<v:svg " + area + "><v:image " + area + " xlink:href='" + name + "'/></v:svg>" },
        { "compressed", Verdict::Links, compressed(linked) },
        { "compressed in members", Verdict::Links,
            compressed(linked.first(30)) + compressed(linked.sliced(30)) },
        { "in UTF-16", Verdict::Links, inUtf16(linked) },
        { "junk behind", Verdict::Links, linked + "<junk" },
        { "second root", Verdict::Links, linked + linked },
        { "unclosed", Verdict::Links, linked.chopped(6) },
        { "broken behind", Verdict::Links, drawing(image(name) + "<g a='1' a='2'/>") },
        { "attribute by default", Verdict::Links,
            withProlog("<!DOCTYPE svg [<!ATTLIST image xlink:href CDATA '" + name + "'>]>",
                "<image " + area + "/>") },
        { "entity in the name", Verdict::Links,
            withProlog("<!DOCTYPE svg [<!ENTITY e '" + name + "'>]>", image("&e;")) },
        { "entity of an element", Verdict::Clean,
            withProlog("<!DOCTYPE svg [<!ENTITY e \"" + image(name) + "\">]>", "&e;") },
        { "character references", Verdict::Links, drawing(image("&#118;&#x78;" + name.sliced(2))) },
        { "nested drawing", Verdict::Links, drawing("<svg>" + image(name) + "</svg>") },
        { "unknown element", Verdict::Links, drawing("<mask>" + image(name) + "</mask>") },
        { "definitions", Verdict::Links, drawing("<defs>" + image(name) + "</defs>") },
        { "name like data", Verdict::Links, drawing(image("data/../" + name)) },
        { "data without Base64", Verdict::Links, drawing(image("data:image/png," + name)) },
        { "data that are none", Verdict::Links, drawing(image("data:image/png;base64,/../../" + name)) },
        { "broken picture", Verdict::Links, drawing(Drawings::embedded(brokenPng())) },
        { "drawing in data", Verdict::Links, drawing(Drawings::embedded(linked, "image/svg+xml")) },
        { "drawing as picture", Verdict::Links, drawing(Drawings::embedded(linked)) },
        { "compressed drawing in data", Verdict::Links, drawing(Drawings::embedded(compressed(linked))) },
        { "other attribute", Verdict::Clean, drawing("<image " + area + " href='" + name + "'/>") },
        { "other prefix", Verdict::Clean, drawing("<image " + area + " x:href='" + name + "'/>") },
        { "other case", Verdict::Clean, drawing("<IMAGE " + area + " xlink:href='" + name + "'/>") },
        { "reference to a drawing", Verdict::Clean, drawing("<use xlink:href='" + name + "#a'/>") },
        { "font", Verdict::Clean,
            drawing("<font><font-face><font-face-src><font-face-uri xlink:href='" + name
                + "'/></font-face-src></font-face></font>") },
        { "media", Verdict::Clean,
            drawing("<video xlink:href='" + name + "'/><audio xlink:href='" + name + "'/><script xlink:href='"
                + name + "'/>") },
    };
}

QList<Spelling> sheetsOf(const QByteArray &name)
{
    const QByteArray instruction = "<?xml-stylesheet type=\"text/css\" href=\"" + name + "\"?>";
    const QByteArray turned = "<?xml-stylesheet href=\"" + name + "\" type=\"text/css\"?>";
    const QByteArray sheet = drawing("<rect " + area + "/>" + instruction);
    return {
        { "before the root", Verdict::Links, withProlog(instruction, "<rect " + area + "/>") },
        { "attributes turned", Verdict::Links, withProlog(turned, "<rect " + area + "/>") },
        { "within", Verdict::Links, sheet },
        { "compressed", Verdict::Links, compressed(sheet) },
        { "in data", Verdict::Links, drawing(Drawings::embedded(sheet)) },
        { "in UTF-16", Verdict::Links, inUtf16(sheet) },
        { "import", Verdict::Clean,
            drawing(
                "<style>@import url(" + name + "); @import \"" + name + "\";</style><rect " + area + "/>") },
        { "font face", Verdict::Clean,
            drawing("<style>@font-face{font-family:a;src:url(" + name + ")}</style><rect " + area + "/>") },
        { "paint", Verdict::Clean, drawing("<rect " + area + " fill='url(" + name + ")'/>") },
        { "external definitions", Verdict::Clean,
            withProlog("<!DOCTYPE svg SYSTEM '" + name + "'>", "<rect " + area + "/>") },
        { "external entity", Verdict::Clean,
            withProlog("<!DOCTYPE svg [<!ENTITY e SYSTEM '" + name + "'>]>", "<desc>&e;</desc>") },
    };
}

QList<Spelling> spellings(const QByteArray &folder)
{
    QList<Spelling> all;
    for (const QByteArray &place : { QByteArray(), folder, "file://" + folder }) {
        all += imagesOf(place + secret + ".png");
        all += imagesOf(place + secret + ".svg");
        all += sheetsOf(place + secret + ".css");
    }
    return all;
}

QByteArray folderIn(const QString &argument)
{
    return argument.toLocal8Bit();
}

/// What the traced child does. The folder ends with a slash.
int showAll(const QString &folder)
{
    QDir::setCurrent(folder);
    for (const Spelling &spelling : spellings(folderIn(folder)))
        Drawings::rendered(SvgGuard::check(spelling.bytes).drawing);
    return 0;
}

/// Shows the drawing in an item of the class, in each way in which it can get there.
template <typename ItemClass> void showIn(const char *contentsProperty, const QByteArray &bytes)
{
    const QSize size(40, 40);
    QFile file(u"shown.svg"_s);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
        std::exit(2);
    file.close();
    ItemClass fromFile;
    fromFile.loadItemFromFile("shown.svg");
    Images::painted(fromFile, size);
    ItemClass fromDatasource;
    fromDatasource.setItemData(bytes);
    Images::painted(fromDatasource, size);

    ItemClass holder;
    holder.setProperty(contentsProperty, QString::fromLatin1(bytes.toBase64()));
    ItemClass fromRecord;
    ItemRecords::load(fromRecord, ItemRecords::saved(holder));
    Images::painted(fromRecord, size);
    ItemClass fromMap;
    fromMap.loadItemFromJSON(holder.saveItemToJSON(), 6);
    Images::painted(fromMap, size);
    const std::unique_ptr<Item> copy(fromMap.createItemCopy());
    Images::painted(dynamic_cast<QGraphicsItem &>(*copy), size);
}

int showInItems(const QString &folder)
{
    QDir::setCurrent(folder);
    for (const Spelling &spelling : spellings(folderIn(folder))) {
        showIn<SvgItem>("svgContents", spelling.bytes);
        showIn<SymbolItem>("svgContentsOriginal", spelling.bytes);
    }
    return 0;
}

/// For comparison: the renderer without the guard.
int showUnsafely(const QString &folder)
{
    QDir::setCurrent(folder);
    for (const Spelling &spelling : spellings(folderIn(folder)))
        Drawings::rendered(spelling.bytes);
    return 0;
}

} // namespace

/// Drawings that refer to files.
class tst_SvgLinks : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();

    void noFileIsOpened();
    void linksAreFound_data();
    void linksAreFound();
    void withoutItsLinksADrawingHasNone_data() { linksAreFound_data(); }
    void withoutItsLinksADrawingHasNone();
    void blankingLeavesTheRest_data();
    void blankingLeavesTheRest();
    void embeddedPicturesAreShown_data();
    void embeddedPicturesAreShown();

private:
    QTemporaryDir m_folder;
};

void tst_SvgLinks::initTestCase()
{
    QVERIFY(m_folder.isValid());
    const QList<std::pair<QByteArray, QByteArray>> files { { ".png", Drawings::blackPng(9, 9) },
        { ".svg", drawing("<rect width='9' height='9'/>") }, { ".css", "rect { fill: red }" } };
    for (const auto &[suffix, content] : files) {
        QFile file(m_folder.filePath(QString::fromLatin1(secret + suffix)));
        QVERIFY(file.open(QIODevice::WriteOnly) && file.write(content) == content.size());
    }
}

void tst_SvgLinks::init()
{
    QTest::failOnWarning(QRegularExpression(u".*"_s));
}

void tst_SvgLinks::noFileIsOpened()
{
    const QByteArray unsafe = TracedRun::openCalls(u"--show-unsafely"_s, m_folder.path());
    for (const char *suffix : { ".png", ".svg", ".css" })
        QVERIFY2(unsafe.contains(secret + suffix), suffix);
    for (const QString &mode : { u"--show-all"_s, u"--show-in-items"_s }) {
        const QByteArray safe = TracedRun::openCalls(mode, m_folder.path());
        QVERIFY(safe.contains("open"));
        const qsizetype found = safe.indexOf(secret);
        QVERIFY2(found < 0, safe.sliced(std::max<qsizetype>(found - 40, 0)).first(80));
        QVERIFY(!safe.contains(" data"));
        QVERIFY(!safe.contains("connect"));
    }
}

void tst_SvgLinks::linksAreFound_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<SvgGuard::Verdict>("verdict");
    const QByteArray folder = m_folder.path().toLocal8Bit() + '/';
    for (const Spelling &spelling : imagesOf(secret + ".png") + imagesOf(folder + secret + ".svg"))
        QTest::newRow(spelling.name) << spelling.bytes << spelling.verdict;
    for (const Spelling &spelling : sheetsOf(secret + ".css"))
        QTest::addRow("sheet %s", spelling.name) << spelling.bytes << spelling.verdict;
}

void tst_SvgLinks::linksAreFound()
{
    QFETCH(const QByteArray, bytes);
    QFETCH(const SvgGuard::Verdict, verdict);
    const SvgGuard::Answer answer = SvgGuard::check(bytes);
    QVERIFY2(answer.verdict == verdict, qPrintable(answer.reason));
    QCOMPARE(answer.reason.isEmpty(), verdict == Verdict::Clean);
    QVERIFY(!answer.drawing.isEmpty());
}

void tst_SvgLinks::withoutItsLinksADrawingHasNone()
{
    QFETCH(const QByteArray, bytes);
    const SvgGuard::Answer answer = SvgGuard::check(bytes);
    QCOMPARE(SvgGuard::check(answer.drawing).verdict, Verdict::Clean);
    QVERIFY(answer.verdict == Verdict::Clean || !answer.drawing.contains(secret));
}

void tst_SvgLinks::blankingLeavesTheRest_data()
{
    QTest::addColumn<QByteArray>("content");
    const QByteArray link = image("vx_missing.png");
    QTest::newRow("shapes") << link + "<rect x='3' y='4' width='20' height='9' fill='red'/>" + link;
    QTest::newRow("children of the image") << "<image " + area
            + " xlink:href='vx_missing.png'><rect width='9' height='9' fill='blue'/></image><circle r='9'/>";
    QTest::newRow("special characters") << link
            + "<text y='30' font-family='Loma'>a &lt;b&gt; &amp;amp; \"c\" &#233;</text>"
              "<rect id='&quot;&lt;' width='9' height='9'/>";
    QTest::newRow("style sheet in parts") << link
            + "<style>rect{fill:red}<!-- -->circle{fill:blue}<![CDATA[ rect > a, ellipse{fill:lime} "
              "]]></style>"
              "<rect width='9' height='9'/><circle cx='20' cy='20' r='9'/><ellipse rx='3' ry='9' cy='30'/>";
    QTest::newRow("line breaks in attributes") << link + "<path d='M1 1\n L30\t30\r\n L1 30'/>";
    QTest::newRow("spaces in text") << link
            + "<text y='30' font-family='Loma' xml:space='preserve'>  a \n b  </text>";
    QTest::newRow("references") << link
            + "<defs><g id='a'><rect width='9' height='9'/></g></defs><use xlink:href='#a' x='9' y='9'/>";
    QTest::newRow("gradients") << link
            + "<linearGradient id='a'><stop offset='0' stop-color='red'/><stop offset='1'/></linearGradient>"
              "<rect width='30' height='30' fill='url(#a)'/>";
    QTest::newRow("embedded picture") << link + Drawings::embedded(Drawings::blackPng(9, 9));
}

void tst_SvgLinks::blankingLeavesTheRest()
{
    QFETCH(const QByteArray, content);
    const QByteArray text = drawing(content);
    const SvgGuard::Answer answer = SvgGuard::check(text);
    QCOMPARE(answer.verdict, Verdict::Links);
    const QImage blanked = Drawings::rendered(answer.drawing);
    // The renderer warns of the missing file.
    QTest::ignoreMessage(
        QtWarningMsg, QRegularExpression(u"Could not create image from \"vx_missing.png\""_s));
    if (text.count("vx_missing.png") > 1)
        QTest::ignoreMessage(
            QtWarningMsg, QRegularExpression(u"Could not create image from \"vx_missing.png\""_s));
    const QImage original = Drawings::rendered(text);
    QVERIFY(!original.isNull());
    QCOMPARE(Images::difference(blanked, original, u"svg-blanked"_s), QString());
    QVERIFY(Images::coloursOf(blanked).size() > 1);
}

void tst_SvgLinks::embeddedPicturesAreShown_data()
{
    QTest::addColumn<QByteArray>("format");
    for (const char *format : { "PNG", "JPEG", "BMP" })
        QTest::newRow(format) << QByteArray(format);
}

void tst_SvgLinks::embeddedPicturesAreShown()
{
    QFETCH(const QByteArray, format);
    QImage green(9, 9, QImage::Format_RGB32);
    green.fill(Qt::green);
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    QVERIFY(green.save(&buffer, format.constData()));
    const QByteArray text = drawing(Drawings::embedded(bytes), area);
    const SvgGuard::Answer answer = SvgGuard::check(text);
    QCOMPARE(answer.verdict, Verdict::Clean);
    const QColor middle = Drawings::rendered(answer.drawing).pixelColor(200, 200);
    QVERIFY2(middle.green() > 250 && middle.red() < 5 && middle.blue() < 5, qPrintable(middle.name()));
}

int main(int argc, char *argv[])
{
    QApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.value(1) == u"--show-all"_s)
        return showAll(arguments.value(2));
    if (arguments.value(1) == u"--show-in-items"_s)
        return showInItems(arguments.value(2));
    if (arguments.value(1) == u"--show-unsafely"_s)
        return showUnsafely(arguments.value(2));
    tst_SvgLinks test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_svglinks.moc"
