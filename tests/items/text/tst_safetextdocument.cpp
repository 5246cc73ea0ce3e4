// SPDX-License-Identifier: BSD-3-Clause
#include "items/text/richtextitem.h"
#include "items/text/safetextdocument.h"
#include "tests/support/tracedrun.h"

#include <QAbstractTextDocumentLayout>
#include <QApplication>
#include <QBuffer>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFont>
#include <QImage>
#include <QPainter>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>
#include <QTextDocument>
#include <QTextFrame>
#include <QThread>
#include <QUrl>

#include <memory>
#include <sys/stat.h>

using namespace Qt::StringLiterals;

namespace {

constexpr QSize placeholderSize(1, 1);
const QString secret = u"vx_referred_file"_s;

QByteArray encoded(const QImage &image, const char *format)
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, format);
    return bytes;
}

QUrl dataUrl(const QByteArray &bytes, const QByteArray &type)
{
    return QUrl::fromEncoded("data:" + type + ";base64," + bytes.toBase64());
}

QImage green(QSize size, QImage::Format format = QImage::Format_RGB32)
{
    QImage image(size, format);
    image.fill(Qt::green);
    return image;
}

/// A one-bit picture, which is small in spite of its many pixels.
QUrl largePicture(int width, int height, Qt::GlobalColor colour)
{
    QImage image(width, height, QImage::Format_Mono);
    image.setColorTable({ 0xFF000000, QColor(colour).rgb() });
    image.fill(1);
    return dataUrl(encoded(image, "PNG"), "image/png");
}

QImage shown(const QTextDocument &document, const QUrl &url)
{
    return document.resource(QTextDocument::ImageResource, url).value<QImage>();
}

struct Spelling
{
    const char *name;
    QString html; // %1 is the folder, with a slash at its end
};

/// All ways in which a text can refer to a file. The names that stand behind %1 exist.
const QList<Spelling> spellings {
    { "file address", u"<img src=\"file://%1vx_referred_file.png\">"_s },
    { "address without slashes", u"<img src='file:%1vx_referred_file.png'>"_s },
    { "absolute path", u"<img src=\"%1vx_referred_file.png\">"_s },
    { "relative path", u"<img src=\"vx_referred_file.png\">"_s },
    { "relative path with dots", u"<img src=\"./sub/../vx_referred_file.png\">"_s },
    { "extra slashes", u"<img src=\"//%1vx_referred_file.png\">"_s },
    { "picture without a suffix", u"<img src=\"%1vx_referred_file\" width=20 height=20>"_s },
    { "high resolution", u"<img src=\"%1vx_referred_file@2x.png\">"_s },
    { "sibling of high resolution", u"<img src=\"vx_referred_file.png\" width=200 height=200>"_s },
    { "body background", u"<body background=\"%1vx_referred_file.png\">x</body>"_s },
    { "table background", u"<table background=\"%1vx_referred_file.png\"><tr><td>x</table>"_s },
    { "cell background", u"<table><tr><td background=\"%1vx_referred_file.png\">x</table>"_s },
    { "style background", u"<p style=\"background-image: url(%1vx_referred_file.png)\">x</p>"_s },
    { "style background of a file address",
        u"<p style=\"background: url('file://%1vx_referred_file.png')\">x</p>"_s },
    { "sheet background", u"<style>p { background-image: url(%1vx_referred_file.png) }</style><p>x</p>"_s },
    { "list mark", u"<ul style=\"list-style-image: url(%1vx_referred_file.png)\"><li>x</ul>"_s },
    { "link", u"<link rel=stylesheet type=\"text/css\" href=\"%1vx_referred_file.css\"/><p>x</p>"_s },
    { "link of a file address",
        u"<head><link type=text/css href=\"file://%1vx_referred_file.css\"></head><p>x</p>"_s },
    { "import", u"<style>@import url(%1vx_referred_file.css);</style><p>x</p>"_s },
    { "quoted import", u"<style>@import \"%1vx_referred_file.css\"; p { color: red }</style><p>x</p>"_s },
    { "import for paper", u"<style>@import url(file://%1vx_referred_file.css) print;</style><p>x</p>"_s },
    { "object", u"<object data=\"%1vx_referred_file.png\">x</object>"_s },
    { "base", u"<base href=\"file://%1\"><img src=\"vx_referred_file.png\">"_s },
    { "drawing in a data address",
        u"<img src=\"data:image/svg+xml,%3Csvg xmlns='http://www.w3.org/2000/svg' "
        "xmlns:x='http://www.w3.org/1999/xlink' width='9' height='9'%3E%3Cimage width='9' height='9' "
        "x:href='%1vx_referred_file.png'/%3E%3C/svg%3E\">"_s },
};

QString htmlOf(const Spelling &spelling, const QString &folder)
{
    return QString(spelling.html).replace(u"%1"_s, folder);
}

/// Lays the text out and paints it on ordinary paper and on that of a screen with small pixels.
void show(QTextDocument &document, const QString &html)
{
    document.setHtml(html);
    document.setTextWidth(200);
    for (const double ratio : { 1.0, 2.0 }) {
        QImage paper(400, 400, QImage::Format_ARGB32_Premultiplied);
        paper.setDevicePixelRatio(ratio);
        paper.fill(Qt::white);
        QPainter painter(&paper);
        document.drawContents(&painter);
    }
}

/// What the traced child does: everything that a text item does with each spelling.
int showAll(const QString &folder)
{
    QDir::setCurrent(folder);
    for (const Spelling &spelling : spellings) {
        SafeTextDocument document;
        show(document, htmlOf(spelling, folder));
        RichTextItem item;
        item.setItemHtml(htmlOf(spelling, folder));
        const std::unique_ptr<Item> copy(item.createItemCopy());
        item.setItemText(u"x"_s);
    }
    return 0;
}

/// For comparison: Qt's own document.
int showUnsafely(const QString &folder)
{
    QTextDocument document;
    show(document, htmlOf(spellings.first(), folder));
    return 0;
}

} // namespace

/// The document that opens nothing.
class tst_SafeTextDocument : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    void opensNoFile();
    void pictureOfAReferenceIsAPixel_data();
    void pictureOfAReferenceIsAPixel();
    void otherReferencesHoldNothing_data();
    void otherReferencesHoldNothing();
    void referredSheetChangesNothing_data();
    void referredSheetChangesNothing();
    void pipesDoNotBlock_data();
    void pipesDoNotBlock();
    void picturesInDataAreShown_data();
    void picturesInDataAreShown();
    void drawingsInDataAreNotShown_data();
    void drawingsInDataAreNotShown();
    void largePicturesAreNotShown_data();
    void largePicturesAreNotShown();
    void picturesTogetherHaveALimit();
    void picturesShownAgainCostNothing();
    void newTextHasANewBudget();

private:
    QTemporaryDir m_folder;
};

void tst_SafeTextDocument::initTestCase()
{
    QFont::insertSubstitution(u"_Fen Loma"_s, u"Loma"_s);
    QVERIFY(m_folder.isValid());
    const QDir folder(m_folder.path());
    const QByteArray picture = encoded(green(QSize(9, 7)), "PNG");
    const QStringList pictures { secret, secret + u".png"_s, secret + u"@2x.png"_s };
    for (const QString &name : pictures) {
        QFile file(folder.filePath(name));
        QVERIFY(file.open(QIODevice::WriteOnly) && file.write(picture) > 0);
    }
    QFile sheet(folder.filePath(secret + u".css"_s));
    QVERIFY(sheet.open(QIODevice::WriteOnly) && sheet.write("p { margin-left: 123px }") > 0);
    QVERIFY(folder.mkdir(u"sub"_s));
}

void tst_SafeTextDocument::opensNoFile()
{
    // What is counted is seen where a file is opened.
    QVERIFY(TracedRun::openCalls(u"--show-unsafely"_s, m_folder.path()).contains(secret.toLatin1()));
    const QByteArray safe = TracedRun::openCalls(u"--show-all"_s, m_folder.path());
    QVERIFY(safe.contains("open"));
    QVERIFY(!safe.contains(secret.toLatin1()));
    QVERIFY(!safe.contains("connect"));
}

void tst_SafeTextDocument::pictureOfAReferenceIsAPixel_data()
{
    QTest::addColumn<QString>("address");

    QTest::newRow("file address") << u"file://%1vx_referred_file.png"_s;
    QTest::newRow("absolute") << u"%1vx_referred_file.png"_s;
    QTest::newRow("relative") << u"vx_referred_file.png"_s;
    QTest::newRow("web") << u"http://localhost/picture.png"_s;
    QTest::newRow("resource") << u":/qt-project.org/styles/commonstyle/images/file-16.png"_s;
    QTest::newRow("resource address") << u"qrc:/qt-project.org/styles/commonstyle/images/file-16.png"_s;
    QTest::newRow("missing") << u"%1missing.png"_s;
    QTest::newRow("empty") << QString();
    QTest::newRow("data without a comma") << u"data:image/png;base64"_s;
    QTest::newRow("data that are none") << u"data:image/png;base64,////"_s;
    QTest::newRow("data without bytes") << u"data:image/png;base64,"_s;
}

void tst_SafeTextDocument::pictureOfAReferenceIsAPixel()
{
    QFETCH(QString, address);
    const QString folder = m_folder.path() + u'/';
    const QString before = QDir::currentPath();
    QVERIFY(QDir::setCurrent(folder));
    const SafeTextDocument document;
    const QImage image = shown(document, QUrl(address.replace(u"%1"_s, folder)));
    QVERIFY(QDir::setCurrent(before));
    QCOMPARE(image.size(), placeholderSize);
    QCOMPARE(qAlpha(image.pixel(0, 0)), 0);
}

void tst_SafeTextDocument::otherReferencesHoldNothing_data()
{
    QTest::addColumn<int>("type");

    QTest::newRow("unknown") << int(QTextDocument::UnknownResource);
    QTest::newRow("HTML") << int(QTextDocument::HtmlResource);
    QTest::newRow("style sheet") << int(QTextDocument::StyleSheetResource);
    QTest::newRow("Markdown") << int(QTextDocument::MarkdownResource);
    QTest::newRow("of a user") << int(QTextDocument::UserResource);
}

void tst_SafeTextDocument::otherReferencesHoldNothing()
{
    QFETCH(int, type);
    const SafeTextDocument document;
    const QVariant content
        = document.resource(type, QUrl::fromLocalFile(m_folder.filePath(secret + u".css"_s)));
    QCOMPARE(content.toByteArray(), QByteArray());
}

void tst_SafeTextDocument::referredSheetChangesNothing_data()
{
    QTest::addColumn<QString>("html");

    for (const Spelling &spelling : spellings) {
        if (spelling.html.contains(u".css"_s))
            QTest::newRow(spelling.name) << htmlOf(spelling, m_folder.path() + u'/');
    }
}

void tst_SafeTextDocument::referredSheetChangesNothing()
{
    QFETCH(QString, html);
    SafeTextDocument document;
    document.setHtml(html);
    QVERIFY(document.toPlainText().contains(u'x'));
    QVERIFY(!document.toHtml().contains(u"123px"_s));
}

void tst_SafeTextDocument::pipesDoNotBlock_data()
{
    QTest::addColumn<QString>("html");

    for (const Spelling &spelling : spellings)
        QTest::newRow(spelling.name) << spelling.html;
}

void tst_SafeTextDocument::pipesDoNotBlock()
{
    QFETCH(QString, html);
    const QTemporaryDir pipes;
    const QStringList suffixes { QString(), u".png"_s, u"@2x.png"_s, u".css"_s };
    for (const QString &suffix : suffixes)
        QCOMPARE(mkfifo(pipes.filePath(secret + suffix).toLocal8Bit().constData(), 0600), 0);
    const QString before = QDir::currentPath();
    QVERIFY(QDir::setCurrent(pipes.path()));
    // Opening a pipe that nobody writes to never returns, so that another thread has to look.
    const std::unique_ptr<QThread> thread(QThread::create([&] {
        SafeTextDocument document;
        show(document, html.replace(u"%1"_s, pipes.path() + u'/'));
    }));
    thread->start();
    const bool ended = thread->wait(10000);
    if (!ended)
        qFatal("a reference to a pipe blocks");
    QVERIFY(QDir::setCurrent(before));
    QVERIFY(ended);
}

void tst_SafeTextDocument::picturesInDataAreShown_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QByteArray>("type");

    const QImage image = green(QSize(9, 7));
    QTest::newRow("PNG") << encoded(image, "PNG") << QByteArray("image/png");
    QTest::newRow("JPEG") << encoded(image, "JPEG") << QByteArray("image/jpeg");
    QTest::newRow("BMP") << encoded(image, "BMP") << QByteArray("image/bmp");
    QTest::newRow("mistaken type") << encoded(image, "PNG") << QByteArray("image/gif");
    // Qt writes no GIF: nine by seven pixels, all of colour 0, in codes of three bits with a clear code
    // before every third pixel so that the code width never grows.
    QByteArray gif = QByteArray::fromHex("474946383961 0900 0700 80 00 00 00FF00 000000"
                                         "2C 0000 0000 0900 0700 00 02");
    QList<int> codes;
    for (int pixel = 0; pixel < 63; ++pixel) {
        if (pixel % 2 == 0)
            codes << 4;
        codes << 0;
    }
    codes << 5;
    QByteArray packed;
    for (qsizetype bit = 0; bit < codes.size() * 3; ++bit) {
        if (bit % 8 == 0)
            packed.append('\0');
        if (codes[bit / 3] >> (bit % 3) & 1)
            packed.back() = char(packed.back() | 1 << (bit % 8));
    }
    gif += char(packed.size()) + packed + QByteArray::fromHex("00 3B");
    QTest::newRow("GIF") << gif << QByteArray("image/gif");
}

void tst_SafeTextDocument::picturesInDataAreShown()
{
    QFETCH(QByteArray, bytes);
    QFETCH(QByteArray, type);
    const SafeTextDocument document;
    const QImage image = shown(document, dataUrl(bytes, type));
    QCOMPARE(image.size(), QSize(9, 7));
    const QColor pixel = image.pixelColor(8, 6);
    QVERIFY2(pixel.green() > 250 && pixel.red() < 5 && pixel.blue() < 5, qPrintable(pixel.name()));
}

void tst_SafeTextDocument::drawingsInDataAreNotShown_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QByteArray>("type");

    const QByteArray svg = "<svg xmlns='http://www.w3.org/2000/svg' width='9' height='7'>"
                           "<rect width='9' height='7' fill='#00ff00'/></svg>";
    QTest::newRow("SVG") << svg << QByteArray("image/svg+xml");
    QTest::newRow("SVG as PNG") << svg << QByteArray("image/png");
    QTest::newRow("PPM") << encoded(green(QSize(9, 7)), "PPM") << QByteArray("image/x-portable-pixmap");
    QTest::newRow("XPM") << encoded(green(QSize(9, 7)), "XPM") << QByteArray("image/x-xpixmap");
}

void tst_SafeTextDocument::drawingsInDataAreNotShown()
{
    QFETCH(QByteArray, bytes);
    QFETCH(QByteArray, type);
    QVERIFY(!bytes.isEmpty());
    const SafeTextDocument document;
    QCOMPARE(shown(document, dataUrl(bytes, type)).size(), placeholderSize);
}

void tst_SafeTextDocument::largePicturesAreNotShown_data()
{
    QTest::addColumn<int>("width");
    QTest::addColumn<int>("height");
    QTest::addColumn<bool>("isShown");

    QTest::newRow("at the limit") << 4000 << 4000 << true;
    QTest::newRow("one row above") << 4000 << 4001 << false;
    QTest::newRow("wide, at the limit") << 16000 << 1000 << true;
    QTest::newRow("wide, one row above") << 16000 << 1001 << false;
}

void tst_SafeTextDocument::largePicturesAreNotShown()
{
    QFETCH(int, width);
    QFETCH(int, height);
    QFETCH(bool, isShown);
    const SafeTextDocument document;
    const QSize size = shown(document, largePicture(width, height, Qt::white)).size();
    QCOMPARE(size, isShown ? QSize(width, height) : placeholderSize);
}

void tst_SafeTextDocument::picturesTogetherHaveALimit()
{
    const SafeTextDocument document;
    QCOMPARE(shown(document, largePicture(4000, 4000, Qt::red)).size(), QSize(4000, 4000));
    QCOMPARE(shown(document, largePicture(4000, 3999, Qt::blue)).size(), QSize(4000, 3999));
    // 4,000 pixels are left of the 32 million.
    QCOMPARE(shown(document, largePicture(4001, 1, Qt::red)).size(), placeholderSize);
    QCOMPARE(shown(document, largePicture(4000, 1, Qt::red)).size(), QSize(4000, 1));
    QCOMPARE(shown(document, largePicture(1, 2, Qt::red)).size(), placeholderSize);
    const SafeTextDocument another;
    QCOMPARE(shown(another, largePicture(4001, 1, Qt::red)).size(), QSize(4001, 1));
}

void tst_SafeTextDocument::picturesShownAgainCostNothing()
{
    const SafeTextDocument document;
    const QUrl url = largePicture(4000, 4000, Qt::red);
    for (int i = 0; i < 4; ++i)
        QCOMPARE(shown(document, url).size(), QSize(4000, 4000));
}

void tst_SafeTextDocument::newTextHasANewBudget()
{
    RichTextItem item;
    const QString html = u"<img src=\"%1\">"_s;
    for (const Qt::GlobalColor colour : { Qt::red, Qt::green, Qt::blue, Qt::yellow }) {
        const QUrl url = largePicture(4000, 4000, colour);
        item.setItemHtml(html.arg(QString::fromLatin1(url.toEncoded())));
        QCOMPARE(shown(*item.document(), url).size(), QSize(4000, 4000));
    }
}

int main(int argc, char *argv[])
{
    QApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.value(1) == u"--show-all"_s)
        return showAll(arguments.value(2));
    if (arguments.value(1) == u"--show-unsafely"_s)
        return showUnsafely(arguments.value(2));
    tst_SafeTextDocument test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_safetextdocument.moc"
